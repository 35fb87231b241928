/// Overlay graphic objects: vector graphics over the picture, kept in image coordinates.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <Qt>

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

class CDrawObjArray;

namespace tavix {
class KeyWriter;
class ObjectCanvas;
struct KeyEntry;
} // namespace tavix

/// Pen styles.
inline constexpr int PS_SOLID = 0;
inline constexpr int PS_DASH = 1;
inline constexpr int PS_DOT = 2;
inline constexpr int PS_DASHDOT = 3;
inline constexpr int PS_DASHDOTDOT = 4;
inline constexpr int PS_NULL = 5; ///< Draws nothing.

/// One overlay object: what all kinds have in common, and the behaviour of a kind that adds
/// nothing.
///
/// A point object lies on a pixel of the image and is drawn at the centre of the block that this
/// pixel covers on the screen. Handles are numbered from 1. Where an operation would leave the
/// 32-bit range, the object stops at its end.
class TAVIX_API CDrawObj {
public:
    /// Half the side of the square around a handle that a press takes for it; image pixels.
    static constexpr int HIT_RADIUS = 12;

    CDrawObj(const CDrawObj &) = delete;
    CDrawObj &operator=(const CDrawObj &) = delete;

    /// Takes over name, anchor, pen, colour and font, then through CopyShape what the class adds.
    virtual void CopyFrom(const CDrawObj &other);
    virtual bool IsValid() const { return true; }
    virtual ~CDrawObj() = default;
    virtual void Draw(tavix::ObjectCanvas &canvas) const;
    /// A new object of the same class made with CopyFrom. It belongs to no array.
    virtual std::unique_ptr<CDrawObj> Clone() const;
    /// The number of the handle at the image point, the nearest one; 0 when there is none.
    virtual int HitTest(int x, int y) const;
    virtual int GetHandleCount() const { return 1; }
    virtual Qt::CursorShape GetHandleCursor(int handle) const;
    /// Where handle number index lies. Numbers below 1 mean the first; (-1, -1) above the count.
    virtual CPoint GetHandle(int index) const;
    /// Brings the anchor to the point and the whole object with it.
    virtual void MoveTo(const tagPOINT &point);
    virtual void Offset(const tagPOINT &delta);
    virtual void MoveHandleTo(int handle, const tagPOINT &point);
    /// True when a press at the image point means the object or one of its handles.
    virtual bool HitTest(const tagPOINT &point) const;
    /// The image pixels that the object lies on; all four edges belong to it.
    virtual CRect GetBoundRect() const;
    /// The object's key list (object_keys.h); the empty string for a class without keys.
    virtual CString GetObjectString() const;
    virtual void OnReserved() {} ///< Keeps its place among the operations; does nothing.
    /// Sets pen width (client pixels, at least 1), PS_ style and colour.
    virtual void SetStyle(int width, int style, COLORREF colour);
    virtual void SetColor(COLORREF colour);
    /// Takes over what this class adds to CDrawObj; another class's object has nothing to give.
    virtual void CopyShape(const CDrawObj &) {}
    /// How many client pixels beyond the block of GetBoundRect drawing may reach: pens, heads,
    /// text.
    virtual int GetDrawMargin() const;

    /// Applies a key list (object_keys.h).
    void SetObjectString(std::string_view list);
    /// The name by which the object is selected and removed; cut to 63 bytes.
    void SetName(const char *name);
    const char *GetName() const { return m_name.data(); }
    CPoint GetAnchor() const { return m_anchor; }
    COLORREF GetColor() const { return m_colour; }
    int GetPenWidth() const { return m_penWidth; }
    int GetPenStyle() const { return m_penStyle; }
    /// Size in points of a 96 dpi screen (drawn from 1 to 1,000) and the face's name, cut to 31
    /// bytes. A face that does not exist is replaced by a similar one when text is drawn.
    void SetFont(int size, const char *face);
    int GetFontSize() const { return m_fontSize; }
    const char *GetFontFace() const { return m_fontFace.data(); }

protected:
    CDrawObj() = default;
    explicit CDrawObj(const tagPOINT &anchor) : m_anchor(anchor) {}

    virtual void WriteKeys(tavix::KeyWriter &writer) const;
    virtual void ReadKey(const tavix::KeyEntry &entry);
    /// The keys of pen and colour.
    void WritePenKeys(tavix::KeyWriter &writer) const;

    std::array<char, 64> m_name{};
    CPoint m_anchor; ///< Image coordinates.
    std::int32_t m_penWidth = 1;
    std::int32_t m_penStyle = PS_SOLID;
    COLORREF m_colour = 0x00FF00;
    [[maybe_unused]] std::array<std::int32_t, 4> m_extra{}; ///< Free; not copied.
    std::int32_t m_fontSize = 10;
    std::array<char, 32> m_fontFace{"Verdana"};

    /// Every operation that changes what is drawn, or where, ends with this.
    void Changed();

private:
    friend class CDrawObjArray;

    CDrawObjArray *m_array = nullptr; ///< The array that holds the object.
    std::uint32_t m_slot = 0;         ///< Its place there.
    bool m_placedLoosely = false;     ///< Changed since the place index of the array was built.
    CDrawObj *m_previousOfName = nullptr;
    CDrawObj *m_nextOfName = nullptr;
};

namespace tavix {

/// Clone for the class Object, derived from Base.
template <typename Object, typename Base = CDrawObj>
class Cloneable : public Base {
public:
    using Base::Base;
    std::unique_ptr<CDrawObj> Clone() const override {
        auto copy = std::make_unique<Object>();
        copy->CopyFrom(*this);
        return copy;
    }
};

} // namespace tavix
