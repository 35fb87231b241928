/// The internal identifiers of the tools, by which the registry and the views know them.
#pragma once

#include "TAVIX20/display/tool_types.h"

#include <optional>

namespace tavix {

enum ToolId : int {
    SELECT = 0,
    ELLIPSE_CURSOR = 1,
    SPOIDE = 2,
    CLICK = 3,
    LINE_FOCUS = 4,
    RECTANGLE_FOCUS = 6,
    ELLIPSE_FOCUS = 7,
    POLYLINE_FOCUS = 8,
    POLYGON_FOCUS = 9,
    MEASURE_POINT = 13,
    MSR_DISTANCE = 14,
    MEASURE_HLINE = 16,
    MEASURE_VLINE = 17,
    MEASURE_CYCLE = 18,
    MEASURE_POLYLINE = 20,
    MEASURE_POLYGON = 21,
    MEASURE_RECT = 22,
    CALIBRATION = 30,
    ROI_RECTANGLE = 31,
    ROI_ELLIPSE = 32,
    ROI_POLYGON = 33,
    ROI_FREELINE = 34,
    ROI_MAGICWAND = 35,
    RETICLE_MOVE = 41,
    RETICLE_ROTATE = 42,
    RESERVED_43 = 43,
    RESERVED_44 = 44,
    RESERVED_45 = 45,
};

/// What a public tool number selects.
struct ToolChoice {
    _TOOL_TYPE type;
    ToolId id;
    bool isResetOnEntry; ///< The tool forgets its points when it is chosen.
};

/// Nothing for a number that selects no tool.
std::optional<ToolChoice> ChoiceOf(int type);

/// The public number of an identifier: 23 for 45, 0 for those that no number selects.
int TypeOf(int id);

} // namespace tavix
