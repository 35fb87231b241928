/// The command line of tavix-inspect.
#pragma once

#include <optional>
#include <string>

struct Options {
    std::string image;
    std::string csv;        ///< Empty: no CSV file.
    std::string points;     ///< Empty: no file of pixels.
    std::string roi;        ///< Empty: the whole picture.
    std::string screenshot; ///< Empty: open a window.
    int width = 1280;       ///< Of the window or the screenshot.
    int height = 960;
    bool dark = false; ///< Look for dark blobs instead of bright ones.
    std::optional<long> minWidth;
    std::optional<long> maxWidth;
    std::optional<long> minHeight;
    std::optional<long> maxHeight;
};

/// The options of a command line; nothing when it is wrong or asks for help, with exitCode set and
/// the reason or the help printed.
std::optional<Options> ParseOptions(int argc, char **argv, int &exitCode);
