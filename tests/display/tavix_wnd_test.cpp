#include "display/shown_window.h"

#include <QImage>
#include <QScreen>
#include <QScrollBar>

#include <climits>
#include <cmath>
#include <string>

namespace {

constexpr QRgb FRAME = qRgb(255, 0, 0);
constexpr unsigned long RED = 0x0000FF;

/// Where the picture starts: the origin less the scroll position.
CPoint Corner(CTavixWnd &window) {
    CPoint corner(0, 0);
    window.ImagePtToClientPoint(corner);
    return corner;
}

} // namespace

using CTavixWndTest = ShownWindowTest;

TEST_F(CTavixWndTest, FitsTheImageAndFollowsTheWindowUntilAnExplicitZoom) {
    Show(645, 245);
    const CTavixImage8 image(640, 480);
    window.SetImage(&image);
    EXPECT_DOUBLE_EQ(window.GetZoomRatio(), 0.5);
    EXPECT_EQ(window.GetZoomFitToMode(), 1);
    EXPECT_EQ(window.GetBitCount(), 8);

    window.resize(1285, 965);
    EXPECT_DOUBLE_EQ(window.GetZoomRatio(), 2.0);
    window.Zoom(3.0);
    window.resize(645, 245);
    EXPECT_DOUBLE_EQ(window.GetZoomRatio(), 3.0);
    EXPECT_EQ(window.GetZoomFitToMode(), 0);

    window.SetImage(nullptr);
    EXPECT_EQ(window.GetWidth(), 0);
    EXPECT_EQ(window.GetBitCount(), 24);
    window.Zoom(4.0);
    EXPECT_DOUBLE_EQ(window.GetZoomRatio(), 1.0);
}

TEST_F(CTavixWndTest, ScrollsByBars) {
    Show(300, 200);
    const CTavixImage8 image = Noise(100, 80);
    window.SetImage(&image);
    EXPECT_FALSE(ViewOf(window).horizontalScrollBar()->isVisible());
    window.Zoom(10.0);
    const QSize client = ViewOf(window).viewport()->size();
    EXPECT_EQ(ViewOf(window).horizontalScrollBar()->maximum(), 1000 - client.width());
    EXPECT_EQ(ViewOf(window).verticalScrollBar()->maximum(), 800 - client.height());

    window.SetScrollPos(SB_HORZ, 123);
    window.SetScrollPos(SB_VERT, 45);
    EXPECT_EQ(Corner(window), CPoint(-123, -45));
    CRect rect(17, 5, 40, 20);
    window.ImagePtToClientPoint(rect);
    EXPECT_EQ(rect, CRect(47, 5, 277, 155));
    window.ClientPtToImagePoint(rect);
    EXPECT_EQ(rect, CRect(17, 5, 40, 20));
}

// The bars leave out values that no screen shows; the last of them must arrive there.
TEST_F(CTavixWndTest, ScreenShowsWhereScrollingEnded) {
    Show(300, 200);
    const CTavixImage8 image = Noise(100, 80);
    window.SetImage(&image);
    window.Zoom(10.0);
    const auto onScreen = [this] {
        return window.screen()
            ->grabWindow(window.winId())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    };
    for (int last : {600, 310, 0}) {
        for (int i = 20; i >= 0; --i) {
            window.SetScrollPos(SB_HORZ, last + i);
            window.SetScrollPos(SB_VERT, last / 2 + i);
            QCoreApplication::processEvents();
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return onScreen() == Grab(window); })) << last;
    }
}

// Every client pixel at every zoom: the picture is the nearest image pixel at the client pixel's
// centre, and the frame lies exactly on the outermost client pixels of the block it names.
TEST_F(CTavixWndTest, PictureAndRectanglesAgreeToThePixel) {
    Show(260, 190);
    const CTavixImage8 grey = Noise(53, 41);
    const std::unique_ptr<CTavixImage24> colour(grey.GetImage24());
    const CRect box(7, 9, 30, 25); // Image pixels 7 to 29 and 9 to 24.
    for (const CTavixImage *image : {static_cast<const CTavixImage *>(&grey),
                                     static_cast<const CTavixImage *>(colour.get())}) {
        window.SetImage(image);
        window.RemoveAllGraphics();
        window.AddRectangle(box.left, box.top, box.Width(), box.Height(), 0, 1, RED, "box");
        for (double zoom : {1.0, 1.25, 1.5, 2.0, 3.14159, 4.75, 9.0}) {
            SCOPED_TRACE(zoom);
            window.Zoom(zoom);
            window.SetScrollPos(SB_HORZ, 21);
            window.SetScrollPos(SB_VERT, 13);
            const CPoint corner = Corner(window);
            const QImage shown = Grab(window);
            const QSize client = ViewOf(window).viewport()->size();
            const auto sample = [&](int c, int start) {
                return static_cast<int>(std::floor((c + 0.5 - start) / zoom));
            };
            const auto inBox = [&](int x, int y) {
                return x >= box.left && x < box.right && y >= box.top && y < box.bottom;
            };
            int wrong = 0;
            for (int cy = 0; cy < client.height(); ++cy)
                for (int cx = 0; cx < client.width(); ++cx) {
                    const int x = sample(cx, corner.x);
                    const int y = sample(cy, corner.y);
                    if (x < 0 || y < 0 || x >= 53 || y >= 41)
                        continue;
                    const bool isFrame = inBox(x, y) && (sample(cx - 1, corner.x) < box.left ||
                                                         sample(cx + 1, corner.x) >= box.right ||
                                                         sample(cy - 1, corner.y) < box.top ||
                                                         sample(cy + 1, corner.y) >= box.bottom);
                    const int level = grey.GetPixel(x, y);
                    const QRgb expected = isFrame ? FRAME : qRgb(level, level, level);
                    wrong += shown.pixel(cx, cy) != expected;
                }
            EXPECT_EQ(wrong, 0);
        }
    }
    window.ShowObject(0);
    window.Zoom(2.0);
    const QImage hidden = Grab(window);
    for (int y = 0; y < hidden.height(); ++y)
        for (int x = 0; x < hidden.width(); ++x)
            ASSERT_NE(hidden.pixel(x, y), FRAME);
}

TEST_F(CTavixWndTest, AverageBelowZoomOneKeepsThinLines) {
    Show(105, 105);
    CTavixImage8 image(400, 400);
    for (int y = 0; y < 400; ++y)
        image.SetPixel(201, y, 255);
    window.SetImage(&image);
    ASSERT_DOUBLE_EQ(window.GetZoomRatio(), 0.25);
    // Columns 200 to 203 fall on one client column: a quarter of 255 each.
    CPoint column(200, 100);
    window.ImagePtToClientPoint(column);
    EXPECT_EQ(qRed(Grab(window).pixel(column.x, column.y)), 64);
}

TEST_F(CTavixWndTest, OddRectanglesAndNamesAreHarmless) {
    Show(120, 90);
    const CTavixImage8 image = Noise(30, 20);
    window.SetImage(&image);
    window.AddRectangle(5, 5, 1, 1, 0, 9, RED, std::string(5000, 'n').c_str());
    window.AddRectangle(INT_MAX, INT_MIN, INT_MAX, INT_MAX, 0, 3, RED, nullptr);
    window.AddRectangle(10, 10, -4, -4, 2, 0, RED, "");
    window.Zoom(1e300);
    EXPECT_FALSE(Grab(window).isNull());
    window.Zoom(1e-300);
    EXPECT_FALSE(Grab(window).isNull());
    window.resize(0, 0);
    window.ZoomFitTo();
    EXPECT_DOUBLE_EQ(window.GetZoomRatio(), 1.0);
}
