/// CCalibrationTool: from a length that is known to the view's calibration.
#pragma once

#include "TAVIX20/display/tools/measure_tool.h"

#include <functional>
#include <optional>

/// The operator drags over something of known length. The tool reports the two ends, then asks for
/// the length; the calibration becomes that length divided by the line's length in image pixels,
/// and the status-changed event tells of it. Cancelling changes nothing. While it is drawn, the
/// line shows its length by the calibration so far; it leaves no object.
class TAVIX_API CCalibrationTool : public DragMeasureTool {
public:
    /// Asks for the real length of a line that has the given length so far; both in units. Nothing
    /// when the operator cancels. It may destroy the view.
    using Ask = std::function<std::optional<double>(CTavixView &view, double length)>;

    CCalibrationTool();
    /// Replaces the question, which is a dialog at first; null brings the dialog back.
    void SetAsk(Ask ask);

    bool HasStrokeIn(const CTavixView &view) const override;
    void OnDraw(CTavixView &view, QPainter &painter) override;

protected:
    ObjectPtr NewObject(const std::vector<POINT> &points, double calibration) const override;
    void Take(CTavixView &view, CPoint point, const std::vector<POINT> &points) override;

private:
    void DropStroke() override { m_asked.clear(); }
    bool IsAskedIn(const CTavixView &view) const;

    Ask m_ask;
    std::vector<POINT> m_asked; ///< The line whose length is being asked for; else empty.
    QPointer<CTavixView> m_view;
};
