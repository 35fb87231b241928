/// CROIMagicWandTool: the area of similar pixels around a click as a region of interest.
#pragma once

#include "TAVIX20/display/tools/roi_tools.h"

/// A click of the left button adds the outline of the area, holes included, as a stroke; a click of
/// the right button opens the menu of tolerances.
class TAVIX_API CROIMagicWandTool : public StrokeTool {
public:
    CROIMagicWandTool() : StrokeTool(tavix::ROI_MAGICWAND) {}

    void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point) override;
    void OnRButtonUp(CTavixView &view, unsigned flags, CPoint point) override;

    /// In percent of the grey range, for each channel.
    int Tolerance() const { return m_tolerance; }
    void SetTolerance(int percent) { m_tolerance = percent; }

private:
    void PopUpTolerances(CTavixView &view);

    int m_tolerance = 0;
};
