/// The callback slots of a view.
#pragma once

#include "TAVIX20/display/callback_types.h"

namespace tavix {

/// One slot each; null while nobody listens.
struct ViewCallbacks {
    MouseProc leftButtonDown = nullptr;
    MouseProc mouseMove = nullptr;
    MouseProc leftButtonUp = nullptr;
    MouseProc doubleClick = nullptr;
    MouseProc rightButtonDown = nullptr;
    MouseProc rightButtonUp = nullptr;
    ToolFinishProc toolFinish = nullptr;
    NotifyProc statusChanged = nullptr;
    NotifyProc roiStatusChanged = nullptr;
    NotifyProc imagePositionChanged = nullptr;
};

} // namespace tavix
