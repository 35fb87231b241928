/// The functions that a host registers with a CTavixWnd. They run synchronously on the window's
/// thread; their results are ignored. They may destroy the window; only one that is not part of
/// another widget has to outlive a press of the right button (deleteLater), as Qt asks for it.
#pragma once

#include "TAVIX20/platform/types.h"

#include <cstdint>

/// Mouse: the position in client coordinates, and the CTavixWnd as an integer.
using MouseProc = std::int32_t (*)(int x, int y, LPARAM window);
/// A tool has finished: the tool's public number, the client point of the event that finished it,
/// and its result, a CPointArray in image coordinates that lives for the duration of the call.
using ToolFinishProc = std::int32_t (*)(int tool, int x, int y, LPARAM points);
/// A change of which the host asks the window for the details.
using NotifyProc = std::int32_t (*)();
