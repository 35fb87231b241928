/// Overlay objects between two pixels of the image.
#pragma once

#include "TAVIX20/display/draw_obj.h"

#include <QPointF>

namespace tavix {

struct Pen;

/// What all of them share: the anchor as start, an end, and a handle at each.
class TAVIX_API SegmentObj : public CDrawObj {
public:
    SegmentObj() = default;
    SegmentObj(const tagPOINT &start, const tagPOINT &end) : CDrawObj(start), m_end(end) {}

    int GetHandleCount() const override { return 2; }
    Qt::CursorShape GetHandleCursor(int handle) const override;
    CPoint GetHandle(int index) const override;
    void MoveTo(const tagPOINT &point) override;
    void Offset(const tagPOINT &delta) override;
    void MoveHandleTo(int handle, const tagPOINT &point) override;
    using CDrawObj::HitTest;
    bool HitTest(const tagPOINT &point) const override;
    CRect GetBoundRect() const override;
    void CopyShape(const CDrawObj &other) override;
    CPoint GetEnd() const { return m_end; }

protected:
    void WriteKeys(KeyWriter &writer) const override;
    void ReadKey(const KeyEntry &entry) override;
    virtual const char *Shape() const = 0;
    Pen LinePen() const;
    /// A line of the object's pen across the segment at a client position.
    void DrawTick(ObjectCanvas &canvas, const QPointF &at, double halfLength) const;

    CPoint m_end;

private:
    void Shift(std::int64_t dx, std::int64_t dy);
};

} // namespace tavix

/// A straight line; both end pixels belong to it.
class TAVIX_API CDrawLineObj : public tavix::Cloneable<CDrawLineObj, tavix::SegmentObj> {
public:
    using Cloneable::Cloneable;
    CDrawLineObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "LINE"; }
};

/// A line with a bar across each end, like a letter H on its side.
class TAVIX_API CDrawHStyleLineObj
    : public tavix::Cloneable<CDrawHStyleLineObj, tavix::SegmentObj> {
public:
    CDrawHStyleLineObj() = default;
    /// The bars are tick client pixels long; 0 or less leaves them out.
    CDrawHStyleLineObj(const tagPOINT &start, const tagPOINT &end, int tick);
    void Draw(tavix::ObjectCanvas &canvas) const override;
    void CopyShape(const CDrawObj &other) override;
    int GetDrawMargin() const override;

protected:
    const char *Shape() const override { return "H_STYLE_LINE"; }
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;

private:
    std::int32_t m_tick = 0;
};

/// A line with filled heads, which grow with the pen.
class TAVIX_API CDrawArrowLineObj : public tavix::Cloneable<CDrawArrowLineObj, tavix::SegmentObj> {
public:
    static constexpr int HEAD_AT_END = 1;
    static constexpr int HEAD_AT_START = 2;
    static constexpr int MAX_HEAD = 1000; ///< Pen widths.

    CDrawArrowLineObj() = default;
    /// Length and breadth of a head in pen widths, limited to 1 to MAX_HEAD; heads is a sum of the
    /// HEAD_ flags.
    CDrawArrowLineObj(const tagPOINT &start, const tagPOINT &end, int headLength, int headBreadth,
                      int heads);
    void Draw(tavix::ObjectCanvas &canvas) const override;
    void CopyShape(const CDrawObj &other) override;
    int GetDrawMargin() const override;

protected:
    const char *Shape() const override { return "ARROW_LINE"; }
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;

private:
    CSize m_head{10, 6};
    std::int32_t m_heads = HEAD_AT_END;
};

/// A line with graduation marks across it, counted from its middle: every 1, 2 or 5 times a power
/// of ten image pixels, whichever leaves room between them, each fifth longer.
class TAVIX_API CDrawReticleLineObj
    : public tavix::Cloneable<CDrawReticleLineObj, tavix::SegmentObj> {
public:
    using Cloneable::Cloneable;
    CDrawReticleLineObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;
    int GetDrawMargin() const override;

protected:
    const char *Shape() const override { return "RETICLE_LINE"; }
};
