#include "comparison.h"

#include <QGuiApplication>

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int applicationArguments = 1;
    const QGuiApplication application(applicationArguments, argv);

    AddImageComparisons();
    AddTransformComparisons();
    AddBlobComparisons();
    AddContainerComparisons();
    AddDisplayComparisons();
    return RunComparisons(argc, argv);
}
