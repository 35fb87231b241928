/// Overlay graphic objects: vector graphics over the picture, kept in image coordinates.
#pragma once

#include "TAVIX20/platform/dc.h"
#include "TAVIX20/platform/geometry.h"

#include <memory>
#include <vector>

namespace tavix {
class ViewTransform;
}

/// Pen styles.
inline constexpr int PS_SOLID = 0;
inline constexpr int PS_DASH = 1;
inline constexpr int PS_DOT = 2;
inline constexpr int PS_DASHDOT = 3;
inline constexpr int PS_DASHDOTDOT = 4;
inline constexpr int PS_NULL = 5; ///< Draws nothing.

/// One overlay object: what all kinds have in common.
class CDrawObj {
public:
    virtual ~CDrawObj() = default;
    CDrawObj(const CDrawObj &) = delete;
    CDrawObj &operator=(const CDrawObj &) = delete;

    /// Draws the object in client coordinates through the view's mapping.
    virtual void Draw(CDC &dc, const tavix::ViewTransform &view) const = 0;

    /// Sets pen width (client pixels), PS_ style and colour.
    void SetStyle(int width, int style, COLORREF colour);
    /// The name by which the object is selected and removed; cut to 63 bytes.
    void SetName(const char *name);
    const char *GetName() const { return m_name; }

protected:
    explicit CDrawObj(const tagPOINT &anchor) : m_anchor(anchor) {}

    char m_name[64] = {};
    CPoint m_anchor; ///< Image coordinates.
    int m_penWidth = 1;
    int m_penStyle = PS_SOLID;
    COLORREF m_colour = 0x00FF00;
};

/// The outline of a rectangle of image pixels. It lies on the outermost client pixels of the block
/// that these image pixels cover and grows inwards with the pen.
class CDrawRectObj : public CDrawObj {
public:
    /// The image pixels left to left + width - 1 and top to top + height - 1; negative sizes extend
    /// to the other side.
    CDrawRectObj(int left, int top, int width, int height);
    void Draw(CDC &dc, const tavix::ViewTransform &view) const override;

private:
    CSize m_size;
};

/// The overlay objects of a view, in insertion order.
using CDrawObjArray = std::vector<std::unique_ptr<CDrawObj>>;
