/// Overlay objects that fill a box of image pixels: rectangles and ellipses.
#pragma once

#include "TAVIX20/display/draw_obj.h"

namespace tavix {

/// What all of them share: the image pixels left to left + width - 1 and top to top + height - 1
/// with the anchor as left and top; negative sizes extend to the other side. Eight handles,
/// clockwise from the top-left corner, 1, over the middle of the top edge, 2, to the middle of the
/// left edge, 8.
class TAVIX_API BoxObj : public CDrawObj {
public:
    static constexpr int HANDLES = 8;

    BoxObj() = default;
    BoxObj(int left, int top, int width, int height)
        : CDrawObj(CPoint(left, top)), m_size(width, height) {}

    int HitTest(int x, int y) const override;
    int GetHandleCount() const override { return HANDLES; }
    Qt::CursorShape GetHandleCursor(int handle) const override;
    CPoint GetHandle(int index) const override;
    void Offset(const tagPOINT &delta) override;
    void MoveTo(const tagPOINT &point) override;
    /// Moves the edges of the handle. They stop at the opposite edge: a box keeps at least one
    /// pixel.
    void MoveHandleTo(int handle, const tagPOINT &point) override;
    /// True inside the box, too.
    bool HitTest(const tagPOINT &point) const override;
    CRect GetBoundRect() const override;
    void CopyShape(const CDrawObj &other) override;
    CSize GetSize() const { return m_size; }

protected:
    void WriteKeys(KeyWriter &writer) const override;
    void ReadKey(const KeyEntry &entry) override;
    virtual const char *Shape() const = 0;

    CSize m_size;

private:
    void Shift(std::int64_t dx, std::int64_t dy);
};

} // namespace tavix

/// The outline of the box: on the outermost client pixels of the block that its image pixels cover,
/// growing inwards with the pen.
class TAVIX_API CDrawRectObj : public tavix::Cloneable<CDrawRectObj, tavix::BoxObj> {
public:
    using Cloneable::Cloneable;
    CDrawRectObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "RECTANGLE"; }
};

/// All client pixels of the box.
class TAVIX_API CFillRectObj : public tavix::Cloneable<CFillRectObj, tavix::BoxObj> {
public:
    using Cloneable::Cloneable;
    CFillRectObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "FILL_RECTANGLE"; }
};

/// The outline of the ellipse that touches the box's edges, growing inwards with the pen.
class TAVIX_API CDrawEllipseObj : public tavix::Cloneable<CDrawEllipseObj, tavix::BoxObj> {
public:
    using Cloneable::Cloneable;
    CDrawEllipseObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "ELLIPSE"; }
};

/// The client pixels whose centres lie in that ellipse.
class TAVIX_API CFillEllipseObj : public tavix::Cloneable<CFillEllipseObj, tavix::BoxObj> {
public:
    using Cloneable::Cloneable;
    CFillEllipseObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "FILL_ELLIPSE"; }
};
