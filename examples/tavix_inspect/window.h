/// The window of tavix-inspect: the picture with a rectangle around each blob.
#pragma once

#include "inspection.h"

/// Makes the application object start without a display where none is needed or there is none.
/// Returns whether windows can be shown.
bool ChoosePlatform(const Options &options);

/// The region of interest of the file; null, with the reason on standard error, when the file
/// cannot be read or holds no pixel.
RegionHandle OpenRoi(CTavixWnd &window, const std::string &path);

/// Shows the window until it is closed; returns the program's exit code.
int ShowWindow(CTavixWnd &window, const Options &options, const Inspection &inspection);

/// Renders the window to options.screenshot without a display; returns the program's exit code.
int RenderScreenshot(CTavixWnd &window, const Options &options, const Inspection &inspection);
