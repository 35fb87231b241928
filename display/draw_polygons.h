/// Overlay objects through any number of image pixels.
#pragma once

#include "TAVIX20/display/draw_obj.h"

#include <QPointF>

#include <optional>
#include <span>
#include <vector>

namespace tavix {

struct Pen;

/// What all of them share: the points, with the first one as anchor, and a handle on each. Without
/// points there is nothing to draw, to hit or to move but the anchor.
class TAVIX_API PointListObj : public CDrawObj {
public:
    PointListObj() = default;
    explicit PointListObj(std::span<const tagPOINT> points);

    bool IsValid() const override { return !m_points.empty(); }
    int GetHandleCount() const override { return static_cast<int>(m_points.size()); }
    Qt::CursorShape GetHandleCursor(int handle) const override;
    CPoint GetHandle(int index) const override;
    void MoveTo(const tagPOINT &point) override;
    void Offset(const tagPOINT &delta) override;
    void MoveHandleTo(int handle, const tagPOINT &point) override;
    using CDrawObj::HitTest;
    bool HitTest(const tagPOINT &point) const override;
    CRect GetBoundRect() const override;
    void CopyShape(const CDrawObj &other) override;
    std::span<const tagPOINT> GetPoints() const { return m_points; }

protected:
    void WriteKeys(KeyWriter &writer) const override;
    void ReadKey(const KeyEntry &entry) override;
    virtual const char *Shape() const = 0;
    virtual bool IsClosed() const { return true; }
    /// The points on the screen.
    std::span<const QPointF> ClientPoints(ObjectCanvas &canvas, int penWidth) const;
    double Length() const; ///< Along all lines, in image pixels.
    Pen LinePen() const;

private:
    void PointsMoved();
    void Shift(std::int64_t dx, std::int64_t dy);

    std::vector<tagPOINT> m_points;
    mutable std::optional<CRect> m_bounds; ///< Computed when it is asked for.
};

} // namespace tavix

/// Lines from point to point.
class TAVIX_API CDrawPolylineObj : public tavix::Cloneable<CDrawPolylineObj, tavix::PointListObj> {
public:
    using Cloneable::Cloneable;
    CDrawPolylineObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "POLYLINE"; }
    bool IsClosed() const override { return false; }
};

/// The same, and back to the first point.
class TAVIX_API CDrawPolygonObj : public tavix::Cloneable<CDrawPolygonObj, tavix::PointListObj> {
public:
    using Cloneable::Cloneable;
    CDrawPolygonObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "POLYGON"; }
};

/// The polygon's outline and its inside by the winding rule.
class TAVIX_API CFillPolygonObj : public tavix::Cloneable<CFillPolygonObj, tavix::PointListObj> {
public:
    using Cloneable::Cloneable;
    CFillPolygonObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;

protected:
    const char *Shape() const override { return "FILL_POLYGON"; }
};

/// The polygon's outline, and inside it hatch lines, between which the picture is seen.
class TAVIX_API CFillHatchPolygonObj
    : public tavix::Cloneable<CFillHatchPolygonObj, tavix::PointListObj> {
public:
    CFillHatchPolygonObj() = default;
    /// The hatch is a HATCH_ style (object_canvas.h); any other number means rising lines.
    CFillHatchPolygonObj(std::span<const tagPOINT> points, int hatch)
        : Cloneable(points), m_hatch(hatch) {}
    void Draw(tavix::ObjectCanvas &canvas) const override;
    void CopyShape(const CDrawObj &other) override;

protected:
    const char *Shape() const override { return "HATCH_POLYGON"; }
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;

private:
    std::int32_t m_hatch = 0;
};
