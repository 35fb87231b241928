#include "TAVIX20/display/tools/tool_registry.h"

#include "TAVIX20/display/tools/calibration_tool.h"
#include "TAVIX20/display/tools/chain_focus_tools.h"
#include "TAVIX20/display/tools/drag_focus_tools.h"
#include "TAVIX20/display/tools/ellipse_cursor_tool.h"
#include "TAVIX20/display/tools/magic_wand_tool.h"
#include "TAVIX20/display/tools/measure_tools.h"
#include "TAVIX20/display/tools/pick_tools.h"
#include "TAVIX20/display/tools/reticle_tools.h"
#include "TAVIX20/display/tools/roi_tools.h"
#include "TAVIX20/display/tools/select_tool.h"

#include <algorithm>

namespace tavix {

ToolRegistry::ToolRegistry() {
    const auto add = [this]<typename... Tools>() {
        (m_tools.push_back(std::make_unique<Tools>()), ...);
    };
    add.operator()<CSelectTool, CEllipseCursorTool, CSpoideTool>();
    add.operator()<CMeasureRectTool, CMeasurePointTool, CMsrDistanceTool, CMeasureHLineTool,
                   CMeasureVLineTool, CMeasureCycleTool, CMeasurePolygonTool, CMeasurePolylineTool,
                   CCalibrationTool>();
    add.operator()<CROIRectangleTool, CROIEllipseTool, CROIPolygonTool, CROIFreelineTool,
                   CROIMagicWandTool>();
    add.operator()<CClickTool, CLineFocusTool, CRectangleFocusTool, CEllipseFocusTool,
                   CPolylineFocusTool, CPolygonFocusTool>();
    add.operator()<CReticleMoveTool, CReticleRotateTool>();
}

ToolRegistry::~ToolRegistry() = default;

ToolRegistry &ToolRegistry::Instance() {
    static ToolRegistry registry;
    return registry;
}

namespace {

[[maybe_unused]] const ToolRegistry &madeAtLoad = ToolRegistry::Instance();

} // namespace

CDrawTool *ToolRegistry::Find(int id) const {
    const auto found =
        std::ranges::find_if(m_tools, [id](const auto &tool) { return tool->Id() == id; });
    return found != m_tools.end() ? found->get() : nullptr;
}

CDrawTool *ToolRegistry::Current() const {
    return Find(ToolState::Shared().currentTool);
}

} // namespace tavix
