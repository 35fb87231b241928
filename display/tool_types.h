/// The numbers of the interactive tools, and the messages between tools and views.
#pragma once

/// The tools of CTavixWnd::Tool.
enum _TOOL_TYPE : int {
    TOOL_TYPE_SELECT = 0,
    TOOL_TYPE_CLICK = 1,
    TOOL_TYPE_SPOIDE = 2,
    TOOL_TYPE_ELLIPSE_CURSOR = 3,
    TOOL_TYPE_CALIBRATION = 4,
    TOOL_TYPE_ROI_RECTANGLE = 5,
    TOOL_TYPE_ROI_ELLIPSE = 6,
    TOOL_TYPE_ROI_POLYGON = 7,
    TOOL_TYPE_ROI_FREELINE = 8,
    TOOL_TYPE_ROI_MAGICWAND = 9,
    TOOL_TYPE_LINE_FOCUS = 10,
    TOOL_TYPE_POLYLINE_FOCUS = 11,
    TOOL_TYPE_MEASURE_CYCLE = 12,
    TOOL_TYPE_MEASURE_POLYLINE = 13,
    TOOL_TYPE_MEASURE_POLYGON = 14,
    TOOL_TYPE_MEASURE_POINT = 15,
    TOOL_TYPE_MSR_DISTANCE = 16,
    TOOL_TYPE_MEASURE_HLINE = 17,
    TOOL_TYPE_MEASURE_VLINE = 18,
    TOOL_TYPE_RETICLE_MOVE = 19,
    TOOL_TYPE_RETICLE_ROTATE = 20,
    TOOL_TYPE_RESERVED_43 = 21, ///< No tool: only the host's callbacks run.
    TOOL_TYPE_RESERVED_44 = 22, ///< The same.
};

/// What the next stroke of a region-of-interest tool does to the regions that are there.
enum _ROI_TOOL_MODE : int {
    ROI_TOOL_MODE_NEW = 0,      ///< Replaces them.
    ROI_TOOL_MODE_ADD = 1,      ///< Adds to them.
    ROI_TOOL_MODE_SUBTRACT = 2, ///< Takes away from them.
};
