// CTavixWnd: tools and regions of interest.

#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tavix_wnd.h"

void CTavixWnd::Tool(_TOOL_TYPE type) {
    m_view->ReticleToolChosen(type);
    m_view->Tool(type);
}

int CTavixWnd::GetTool() const {
    return m_view->GetTool();
}

void CTavixWnd::SendToolResult() {
    m_view->SendToolResult();
}

void CTavixWnd::Undo() {
    m_view->Undo();
}

void CTavixWnd::SetRoiToolMode(_ROI_TOOL_MODE mode) {
    m_view->SetRoiToolMode(mode);
}

_ROI_TOOL_MODE CTavixWnd::GetRoiToolMode() const {
    return static_cast<_ROI_TOOL_MODE>(m_view->RoiToolMode());
}

int CTavixWnd::IsRoiContext() const {
    return m_view->Rois().GetCount() > 0 ? 1 : 0;
}

void CTavixWnd::ResetRoiContext() {
    m_view->ResetRoiContext();
}

int CTavixWnd::RoiFileOpen(const char *path) {
    return m_view->RoiFileOpen(path) ? 1 : 0;
}

int CTavixWnd::RoiFileSave(const char *path) const {
    return m_view->RoiFileSave(path) ? 1 : 0;
}

HRGN CTavixWnd::GetROI() const {
    return m_view->Rois().CreateRegion();
}

int CTavixWnd::GetROIArray(CPtrArray &regions) const {
    return m_view->Rois().CreateRegions(regions);
}

void CTavixWnd::GetRoiPointArray(TavixArray::CPointArrayArray &outer,
                                 TavixArray::CPointArrayArray &holes) const {
    outer = m_view->Rois().OuterOutlines();
    holes = m_view->Rois().HoleOutlines();
}

double CTavixWnd::GetRoiToPixelCount() const {
    return m_view->Rois().PixelCount();
}
