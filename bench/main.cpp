#include "comparison.h"

#include <QApplication>
#include <opencv2/core.hpp>

int main(int argc, char **argv) {
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
