// tavix-inspect: the library's main job on one picture. Loads it, finds the automatic threshold,
// makes it two-level, collects the blobs, all or those in regions of interest, and shows the
// picture with a rectangle around each.
//
// Exit codes: 0 done; 1 nothing to show it on, or a file that cannot be written; 2 a picture that
// cannot be read, or a wrong command line.

#include "inspection.h"
#include "window.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv) {
    int exitCode = 0;
    const std::optional<Options> options = ParseOptions(argc, argv, exitCode);
    if (!options)
        return exitCode;

    const bool isShown = ChoosePlatform(*options);
    const QApplication application(argc, argv);
    CTavixWnd window;
    RegionHandle region;
    if (!options->roi.empty()) {
        region = OpenRoi(window, options->roi);
        if (!region)
            return 2;
    }
    const std::optional<Inspection> inspection = Inspect(*options, region.get());
    if (!inspection)
        return 2;
    PrintReport(*inspection);
    if (!options->csv.empty() && !WriteCsv(inspection->blobs, options->csv)) {
        std::fprintf(stderr, "tavix-inspect: cannot write '%s'\n", options->csv.c_str());
        return 1;
    }

    if (!options->points.empty() && !WritePoints(inspection->points, options->points)) {
        std::fprintf(stderr, "tavix-inspect: cannot write '%s'\n", options->points.c_str());
        return 1;
    }

    if (!options->screenshot.empty())
        return RenderScreenshot(window, *options, *inspection);
    if (!isShown) {
        std::fputs("tavix-inspect: there is no display to show the window on; "
                   "--screenshot FILE renders it to a file\n",
                   stderr);
        return 1;
    }
    return ShowWindow(window, *options, *inspection);
}
