#include "TAVIX20/display/tools/magic_wand_tool.h"

#include "TAVIX20/analysis/similar_area.h"
#include "TAVIX20/containers/outline_tracer.h"
#include "TAVIX20/display/tavix_view.h"

#include <QActionGroup>
#include <QCursor>
#include <QMenu>

#include <array>
#include <cstdlib>

namespace {

constexpr int FIRST_COMMAND = 6100;
constexpr std::array TOLERANCES{0, 3, 5, 10, 20, 30, 40};

} // namespace

void CROIMagicWandTool::OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isClick = IsDragIn(view) && IsClick(point);
    StrokeTool::OnLButtonUp(view, flags, point);
    if (!isClick || !view.Image())
        return;
    const tavix::RunRegion area =
        tavix::SimilarArea(*view.Image(), view.Transform().ClientToImage(point), m_tolerance);
    if (!area.IsEmpty())
        view.AddRoiStroke(tavix::JoinOutlines(tavix::TraceOutlines(area.Rects())));
}

void CROIMagicWandTool::OnRButtonUp(CTavixView &view, unsigned flags, CPoint point) {
    const bool isClick = State().view == &view && IsClick(point);
    StrokeTool::OnRButtonUp(view, flags, point);
    if (isClick)
        PopUpTolerances(view);
}

void CROIMagicWandTool::PopUpTolerances(CTavixView &view) {
    auto *const menu = new QMenu(&view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto *const group = new QActionGroup(menu);
    for (std::size_t i = 0; i < TOLERANCES.size(); ++i) {
        const int percent = TOLERANCES[i];
        QAction *const action = group->addAction(QString::number(percent) + " %");
        action->setData(FIRST_COMMAND + static_cast<int>(i));
        action->setCheckable(true);
        action->setChecked(percent == std::max(0, m_tolerance));
        QObject::connect(action, &QAction::triggered, menu,
                         [this, percent] { SetTolerance(percent); });
        menu->addAction(action);
    }
    menu->popup(QCursor::pos());
}
