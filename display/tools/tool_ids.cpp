#include "TAVIX20/display/tools/tool_ids.h"

#include <algorithm>
#include <array>

namespace tavix {

namespace {

constexpr std::array CHOICES{
    ToolChoice{TOOL_TYPE_SELECT, SELECT, false},
    ToolChoice{TOOL_TYPE_CLICK, CLICK, true},
    ToolChoice{TOOL_TYPE_SPOIDE, SPOIDE, false},
    ToolChoice{TOOL_TYPE_ELLIPSE_CURSOR, ELLIPSE_CURSOR, false},
    ToolChoice{TOOL_TYPE_CALIBRATION, CALIBRATION, true},
    ToolChoice{TOOL_TYPE_ROI_RECTANGLE, ROI_RECTANGLE, true},
    ToolChoice{TOOL_TYPE_ROI_ELLIPSE, ROI_ELLIPSE, true},
    ToolChoice{TOOL_TYPE_ROI_POLYGON, ROI_POLYGON, true},
    ToolChoice{TOOL_TYPE_ROI_FREELINE, ROI_FREELINE, true},
    ToolChoice{TOOL_TYPE_ROI_MAGICWAND, ROI_MAGICWAND, true},
    ToolChoice{TOOL_TYPE_LINE_FOCUS, LINE_FOCUS, false},
    ToolChoice{TOOL_TYPE_POLYLINE_FOCUS, POLYLINE_FOCUS, false},
    ToolChoice{TOOL_TYPE_MEASURE_CYCLE, MEASURE_CYCLE, true},
    ToolChoice{TOOL_TYPE_MEASURE_POLYLINE, MEASURE_POLYLINE, true},
    ToolChoice{TOOL_TYPE_MEASURE_POLYGON, MEASURE_POLYGON, true},
    ToolChoice{TOOL_TYPE_MEASURE_POINT, MEASURE_POINT, true},
    ToolChoice{TOOL_TYPE_MSR_DISTANCE, MSR_DISTANCE, true},
    ToolChoice{TOOL_TYPE_MEASURE_HLINE, MEASURE_HLINE, true},
    ToolChoice{TOOL_TYPE_MEASURE_VLINE, MEASURE_VLINE, true},
    ToolChoice{TOOL_TYPE_RETICLE_MOVE, RETICLE_MOVE, false},
    ToolChoice{TOOL_TYPE_RETICLE_ROTATE, RETICLE_ROTATE, false},
    ToolChoice{TOOL_TYPE_RESERVED_43, RESERVED_43, false},
    ToolChoice{TOOL_TYPE_RESERVED_44, RESERVED_44, false},
};

/// The number by which hosts know identifier 45, which none of theirs selects.
constexpr int TYPE_OF_RESERVED_45 = 23;

} // namespace

std::optional<ToolChoice> ChoiceOf(int type) {
    const auto found = std::ranges::find(CHOICES, type, &ToolChoice::type);
    return found != CHOICES.end() ? std::optional(*found) : std::nullopt;
}

int TypeOf(int id) {
    if (id == RESERVED_45)
        return TYPE_OF_RESERVED_45;
    const auto found = std::ranges::find(CHOICES, id, &ToolChoice::id);
    return found != CHOICES.end() ? found->type : TOOL_TYPE_SELECT;
}

} // namespace tavix
