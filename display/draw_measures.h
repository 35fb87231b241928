/// Overlay objects that measure the picture and write the result beside it.
///
/// Lengths are image pixels times the calibration, in units per pixel. Results follow the geometry:
/// they are computed whenever they are asked for.
#pragma once

#include "TAVIX20/display/draw_lines.h"
#include "TAVIX20/display/draw_polygons.h"

#include "TAVIX20/containers/line_fit.h"

#include <string>

namespace tavix {

/// What measurement objects add to the shape they measure.
template <typename Shape>
class TAVIX_API MeasureObj : public Shape {
public:
    using Shape::Shape;
    MeasureObj() = default;

    /// Units per image pixel; nothing happens for what is not positive and finite.
    void SetCalibration(double unitsPerPixel);
    double GetCalibration() const { return m_calibration; }
    void SetTextColor(COLORREF colour);
    /// Without a label the object shows its shape only.
    void ShowLabel(bool show);
    void CopyShape(const CDrawObj &other) override;
    int GetDrawMargin() const override;
    /// The result as it is written beside the object.
    virtual std::string GetLabel() const = 0;

protected:
    void WriteKeys(KeyWriter &writer) const override;
    void ReadKey(const KeyEntry &entry) override;
    void DrawLabel(ObjectCanvas &canvas, const QPointF &position) const;

    double m_calibration = 1.0;
    COLORREF m_textColour = 0xFFFFFF;
    bool m_labelled = true;
};

} // namespace tavix

/// A pixel: a small cross with the pixel's coordinates.
class TAVIX_API CMeasurePointObj
    : public tavix::Cloneable<CMeasurePointObj, tavix::MeasureObj<CDrawObj>> {
public:
    CMeasurePointObj() = default;
    explicit CMeasurePointObj(const tagPOINT &point) { m_anchor = point; }
    void Draw(tavix::ObjectCanvas &canvas) const override;
    int GetDrawMargin() const override;
    std::string GetLabel() const override;

protected:
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;
};

/// The distance of two pixels' centres: a line with bars across its ends.
class TAVIX_API CMeasureDistanceObj
    : public tavix::Cloneable<CMeasureDistanceObj, tavix::MeasureObj<tavix::SegmentObj>> {
public:
    CMeasureDistanceObj() = default;
    CMeasureDistanceObj(const tagPOINT &start, const tagPOINT &end);
    void Draw(tavix::ObjectCanvas &canvas) const override;
    int GetDrawMargin() const override;
    std::string GetLabel() const override;
    double GetDistance() const;

protected:
    const char *Shape() const override { return "MEASURE_DISTANCE"; }
    void WriteKeys(tavix::KeyWriter &writer) const override;
};

/// A circle, or an arc of one, by its centre and radius in image pixels. Angles are in degrees,
/// counter-clockwise as the picture is seen, 0 at the right. The anchor is the pixel of the centre.
/// Handle 1 is the centre, handle 2 the circle's rightmost pixel, by which it is resized.
class TAVIX_API CMeasureCycleObj
    : public tavix::Cloneable<CMeasureCycleObj, tavix::MeasureObj<CDrawObj>> {
public:
    CMeasureCycleObj() = default;
    /// Nothing is drawn for a radius that is not positive; values that are not finite become 0.
    CMeasureCycleObj(const tagPOINTD &centre, double radius, double startAngle = 0.0,
                     double endAngle = 360.0);
    bool IsValid() const override { return m_radius > 0.0; }
    void Draw(tavix::ObjectCanvas &canvas) const override;
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
    int GetDrawMargin() const override;
    std::string GetLabel() const override;
    double GetRadius() const { return m_radius * m_calibration; }
    double GetLength() const; ///< Along the arc.
    double GetArea() const;   ///< Of the circle, or of the arc's sector.

protected:
    void WriteKeys(tavix::KeyWriter &writer) const override;
    void ReadKey(const tavix::KeyEntry &entry) override;

private:
    void SetCentre(double x, double y);
    double Sweep() const;

    tagPOINTD m_centre{};
    double m_radius = 0.0;
    double m_startAngle = 0.0;
    double m_endAngle = 360.0;
};

/// The length of a way, written at its end.
class TAVIX_API CMeasurePolylineObj
    : public tavix::Cloneable<CMeasurePolylineObj, tavix::MeasureObj<tavix::PointListObj>> {
public:
    using Cloneable::Cloneable;
    CMeasurePolylineObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;
    std::string GetLabel() const override;

protected:
    const char *Shape() const override { return "MEASURE_POLYLINE"; }
    bool IsClosed() const override { return false; }
    void WriteKeys(tavix::KeyWriter &writer) const override;
};

/// The area of a polygon through pixel centres, written in its middle. Where it crosses itself,
/// parts that run against each other cancel out.
class TAVIX_API CMeasurePolygonObj
    : public tavix::Cloneable<CMeasurePolygonObj, tavix::MeasureObj<tavix::PointListObj>> {
public:
    using Cloneable::Cloneable;
    CMeasurePolygonObj() = default;
    void Draw(tavix::ObjectCanvas &canvas) const override;
    std::string GetLabel() const override;
    double GetArea() const;

protected:
    const char *Shape() const override { return "MEASURE_POLYGON"; }
    void WriteKeys(tavix::KeyWriter &writer) const override;
};
