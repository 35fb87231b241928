// A program of somebody else: uses the installed library through its umbrella header only.

#include <TAVIX20.h>

#include <QApplication>
#include <opencv2/core/core_c.h>

#include <cstdio>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);

    CTavixImage8 image(64, 48);
    for (int y = 10; y < 20; ++y)
        for (int x = 30; x < 50; ++x)
            image.SetPixel(x, y, 200);
    image.Threshold(0);
    CBlobRectArray blobs;
    const int count = image.GetBlobList(255, 1, 64, 1, 48, blobs);

    auto *structure = static_cast<IplImage *>(image.GetIplImage());
    const bool hasStructure = structure && structure->nChannels == 1;
    cvReleaseImage(&structure);

    CTavixWnd window;
    window.resize(320, 240);
    window.SetImage(&image);
    window.AddRectangle(30, 10, 20, 10, 0, 1, RGB(255, 0, 0), "blob");
    const bool painted = !window.grab().isNull();
    bool signalled = false;
    QObject::connect(&window, &CTavixWnd::imagePositionChanged, [&] { signalled = true; });
    window.ZoomPlus();

    const bool right = count == 1 && blobs[0].left == 30 && blobs[0].pixelCount == 200;
    std::printf("%d blob(s), structure %d, painted %d, signalled %d\n", count, hasStructure,
                painted, signalled);
    return right && hasStructure && painted && signalled ? 0 : 1;
}
