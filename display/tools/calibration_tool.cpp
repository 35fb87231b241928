#include "TAVIX20/display/tools/calibration_tool.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/draw_measures.h"
#include "TAVIX20/display/object_geometry.h"
#include "TAVIX20/display/tavix_view.h"

#include <QInputDialog>

#include <span>
#include <utility>

namespace {

constexpr double LEAST_LENGTH = 0.0001;
constexpr double MOST_LENGTH = 1e9;
constexpr int DECIMALS = 4;

std::optional<double> AskInDialog(CTavixView &view, double length) {
    bool isAccepted = false;
    const double answer =
        QInputDialog::getDouble(&view, "Calibration", "Length of the line (um):", length,
                                LEAST_LENGTH, MOST_LENGTH, DECIMALS, &isAccepted);
    return isAccepted ? std::optional(answer) : std::nullopt;
}

} // namespace

CCalibrationTool::CCalibrationTool() : DragMeasureTool(tavix::CALIBRATION), m_ask(AskInDialog) {}

void CCalibrationTool::SetAsk(Ask ask) {
    m_ask = ask ? std::move(ask) : AskInDialog;
}

void CCalibrationTool::Take(CTavixView &view, CPoint point, const std::vector<POINT> &points) {
    const double pixels = tavix::Distance(points[0], points[1]);
    if (pixels <= 0)
        return;
    const QPointer<CTavixView> alive(&view);
    if (!Finish(view, point, TavixArray::CPointArray(std::span<const POINT>(points))))
        return;
    m_asked = points;
    m_view = alive;
    const std::optional<double> length = m_ask(view, pixels * view.Calibration());
    m_asked.clear();
    if (!alive)
        return;
    view.Repaint();
    if (!length)
        return;
    view.SetCalibration(*length / pixels);
    view.RaiseStatusChanged();
}

bool CCalibrationTool::IsAskedIn(const CTavixView &view) const {
    return !m_asked.empty() && m_view == &view;
}

bool CCalibrationTool::HasStrokeIn(const CTavixView &view) const {
    return IsAskedIn(view) || DragMeasureTool::HasStrokeIn(view);
}

// The line stays while its length is asked for.
void CCalibrationTool::OnDraw(CTavixView &view, QPainter &painter) {
    if (IsAskedIn(view))
        DrawLive(view, painter, m_asked);
    else
        DragMeasureTool::OnDraw(view, painter);
}

MeasureTool::ObjectPtr CCalibrationTool::NewObject(const std::vector<POINT> &points,
                                                   double calibration) const {
    auto line = std::make_unique<CMeasureDistanceObj>(points[0], points[1]);
    line->SetCalibration(calibration);
    return line;
}
