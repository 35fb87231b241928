/// The window of tavix-inspect: the picture with a rectangle around each blob.
#pragma once

#include "inspection.h"

/// True when windows can be shown.
bool HasDisplay();

/// Shows the window until it is closed; returns the program's exit code.
int ShowWindow(const Options &options, const Inspection &inspection, int argc, char **argv);

/// Renders the window to options.screenshot without a display; returns the program's exit code.
int RenderScreenshot(const Options &options, const Inspection &inspection, int argc, char **argv);
