#include "comparison.h"

#include <QApplication>
#include <opencv2/core.hpp>

#include <cstdio>
#include <sched.h>

namespace {

/// Both sides of a row on the same single core, Qt's drawing threads and our worker pool included:
/// how fast a row is then does not hang on the machine's idle cores and on how they are woken.
void BindToOneCore() {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(static_cast<unsigned>(sched_getcpu()), &cores);
    if (sched_setaffinity(0, sizeof cores, &cores) != 0)
        std::fputs("cannot stay on one core: rows with threads vary\n", stderr);
}

} // namespace

int main(int argc, char **argv) {
    BindToOneCore();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int applicationArguments = 1;
    const QApplication application(applicationArguments, argv);

    cv::setNumThreads(1); // OpenCV's own threads would hide what its kernels cost.
    AddImageComparisons();
    AddTransformComparisons();
    AddAnalysisComparisons();
    AddBlobComparisons();
    AddContainerComparisons();
    AddDisplayComparisons();
    AddFileComparisons();
    AddStringComparisons();
    AddOverlayComparisons();
    AddRoiComparisons();
    AddXmlComparisons();
    return RunComparisons(argc, argv);
}
