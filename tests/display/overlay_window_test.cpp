#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/tavix_wnd.h"
#include "TAVIX20/image/tavix_image8.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <set>
#include <string>

namespace {

constexpr unsigned long RED = 0x0000FF;
constexpr int IMAGE_WIDTH = 60;
constexpr int IMAGE_HEIGHT = 50;

/// A place on the screen, and the image pixel or the position there.
class Screen {
public:
    Screen(CTavixWnd &window, double zoom) : m_zoom(zoom) { window.ImagePtToClientPoint(m_corner); }
    /// First client pixel of an image pixel: the first whose centre lies in it.
    int X(int i) const { return First(m_corner.x, i); }
    int Y(int i) const { return First(m_corner.y, i); }
    /// The client pixel in the middle of an image pixel's block.
    CPoint Middle(int x, int y) const {
        return {(X(x) + X(x + 1) - 1) / 2, (Y(y) + Y(y + 1) - 1) / 2};
    }

private:
    int First(int corner, int i) const {
        int c = static_cast<int>(corner + i * m_zoom) - 3;
        while ((c + 0.5 - corner) / m_zoom < i)
            ++c;
        return c;
    }

    CPoint m_corner;
    double m_zoom;
};

using Pixels = std::set<std::pair<int, int>>;

class OverlayWindowTest : public testing::Test {
protected:
    void SetUp() override {
        window.resize(400, 300);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        const CTavixImage8 image(IMAGE_WIDTH, IMAGE_HEIGHT);
        window.SetImage(&image);
    }

    /// The client pixels that are red.
    Pixels RedPixels() {
        const QImage shown = window.grab().toImage();
        Pixels pixels;
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x)
                if (shown.pixel(x, y) == qRgb(255, 0, 0))
                    pixels.emplace(x, y);
        return pixels;
    }

    CTavixWnd window;
};

void AddBlock(Pixels &pixels, int left, int top, int right, int bottom) {
    for (int y = top; y <= bottom; ++y)
        for (int x = left; x <= right; ++x)
            pixels.emplace(x, y);
}

bool InEllipse(const CRect &box, int x, int y) {
    const double dx = (x + 0.5 - (box.left + box.right) / 2.0) / (box.Width() / 2.0);
    const double dy = (y + 0.5 - (box.top + box.bottom) / 2.0) / (box.Height() / 2.0);
    return dx * dx + dy * dy <= 1.0;
}

} // namespace

// Each shape against the pixels that it should have, at zooms with blocks of even, odd and changing
// sizes.
TEST_F(OverlayWindowTest, ShapesPixelByPixel) {
    struct Shape {
        const char *name;
        std::function<void()> add;
        std::function<void(const Screen &, Pixels &)> expect;
    };
    const auto ellipse = [](const Screen &screen, Pixels &pixels, bool filled) {
        const CRect box(screen.X(8), screen.Y(9), screen.X(31), screen.Y(26));
        for (int y = box.top; y < box.bottom; ++y)
            for (int x = box.left; x < box.right; ++x) {
                const bool inner = InEllipse(box, x - 1, y) && InEllipse(box, x + 1, y) &&
                                   InEllipse(box, x, y - 1) && InEllipse(box, x, y + 1);
                if (InEllipse(box, x, y) && (filled || !inner))
                    pixels.emplace(x, y);
            }
    };
    const Shape shapes[] = {
        {"point", [&] { window.AddPoint(7, 9, RED, ""); },
         [](const Screen &screen, Pixels &pixels) {
             const CPoint at = screen.Middle(7, 9);
             pixels.emplace(at.x, at.y);
         }},
        {"lines",
         [&] {
             window.AddLine(5, 6, 20, 6, 0, 1, RED, "");
             window.AddLine(CPoint(30, 30), CPoint(30, 12), 0, 3, RED, "");
         },
         [](const Screen &screen, Pixels &pixels) {
             const CPoint from = screen.Middle(5, 6);
             AddBlock(pixels, from.x, from.y, screen.Middle(20, 6).x, from.y);
             const CPoint top = screen.Middle(30, 12);
             AddBlock(pixels, top.x - 1, top.y - 1, top.x + 1, screen.Middle(30, 30).y + 1);
         }},
        {"cross", [&] { window.AddCrossPoint(20, 15, 6, 4, 0, 1, RED, ""); },
         [](const Screen &screen, Pixels &pixels) {
             const CPoint at = screen.Middle(20, 15);
             AddBlock(pixels, screen.Middle(14, 15).x, at.y, screen.Middle(26, 15).x, at.y);
             AddBlock(pixels, at.x, screen.Middle(20, 11).y, at.x, screen.Middle(20, 19).y);
         }},
        {"filled rectangle", [&] { window.AddFillRectangle(3, 4, 10, 7, RED, ""); },
         [](const Screen &screen, Pixels &pixels) {
             AddBlock(pixels, screen.X(3), screen.Y(4), screen.X(13) - 1, screen.Y(11) - 1);
         }},
        {"ellipse", [&] { window.AddEllipse(8, 9, 23, 17, 0, 1, RED, ""); },
         [&](const Screen &screen, Pixels &pixels) { ellipse(screen, pixels, false); }},
        {"filled ellipse", [&] { window.AddFillEllipse(8, 9, 23, 17, RED, ""); },
         [&](const Screen &screen, Pixels &pixels) { ellipse(screen, pixels, true); }},
    };
    for (const Shape &shape : shapes)
        for (double zoom : {1.0, 1.5, 3.0, 3.7, 4.0}) {
            SCOPED_TRACE(testing::Message() << shape.name << " at " << zoom);
            window.RemoveAllGraphics();
            shape.add();
            window.Zoom(zoom);
            Pixels expected;
            shape.expect(Screen(window, zoom), expected);
            EXPECT_EQ(RedPixels(), expected);
        }
}

// Diagonal lines and polygons: within half a pixel of the line, connected, and all of the inside.
TEST_F(OverlayWindowTest, DiagonalsFollowTheLine) {
    constexpr tagPOINT triangle[] = {{6, 7}, {52, 20}, {20, 44}};
    for (double zoom : {1.0, 2.5, 5.0}) {
        SCOPED_TRACE(zoom);
        window.Zoom(zoom);
        const Screen screen(window, zoom);
        CPoint corners[3];
        for (int i = 0; i < 3; ++i)
            corners[i] = screen.Middle(triangle[i].x, triangle[i].y);
        // Distance to the line through corners i and i + 1; positive inside.
        const auto inside = [&](int i, const std::pair<int, int> &pixel) {
            const CSize way = corners[(i + 1) % 3] - corners[i];
            const CSize to = CPoint(pixel.first, pixel.second) - corners[i];
            return (way.cx * to.cy - way.cy * to.cx) / std::hypot(way.cx, way.cy);
        };
        window.RemoveAllGraphics();
        window.AddLine(triangle[0], triangle[1], 0, 1, RED, "");
        const Pixels line = RedPixels();
        EXPECT_EQ(line.size(), static_cast<std::size_t>(corners[1].x - corners[0].x + 1));
        EXPECT_TRUE(line.contains({corners[0].x, corners[0].y}));
        EXPECT_TRUE(line.contains({corners[1].x, corners[1].y}));
        for (const auto &pixel : line)
            EXPECT_LE(std::abs(inside(0, pixel)), 0.75);

        window.RemoveAllGraphics();
        window.AddFillPolygon(triangle, 3, RED, "");
        const Pixels filled = RedPixels();
        for (int y = 0; y < 250; ++y)
            for (int x = 0; x < 300; ++x) {
                const std::pair<int, int> at(x, y);
                const double depth = std::min({inside(0, at), inside(1, at), inside(2, at)});
                EXPECT_TRUE(depth < 0.0 || filled.contains(at));
                EXPECT_TRUE(depth >= -0.75 || !filled.contains(at));
            }
    }
}

// Exposed parts in one piece and in two, painted where they lie and on an image that begins there.
TEST_F(OverlayWindowTest, ExposedPartsMeetTheWholeAndNothingElseIsPainted) {
    constexpr tagPOINT corners[] = {{2, 3}, {55, 9}, {30, 48}};
    window.AddRectangle(4, 5, 50, 40, 0, 3, RED, "");
    window.AddPolygon(corners, 3, 0, 1, RED, "");
    window.AddFillPolygon(corners, 2, RED, "");
    window.AddFillEllipse(20, 20, 15, 9, RED, "");
    window.AddText(10, 10, false, false, false, 12, RED, "text", "");
    window.SetViewCrossLine(true);
    window.Zoom(5.0);
    QWidget &view = *window.findChild<QAbstractScrollArea *>()->viewport();
    const auto shown = [&](const QRegion &part, QPoint to) {
        QImage screen(400, 300, QImage::Format_RGB32);
        screen.fill(Qt::magenta);
        view.render(&screen, to, part);
        return screen;
    };
    const QImage whole = shown(view.rect(), {0, 0});
    const QRegion one(60, 50, 130, 90);
    for (const QRegion &part : {one, one + QRect(170, 20, 90, 200)})
        for (const QPoint &to : {part.boundingRect().topLeft(), QPoint(0, 0)}) {
            const QImage some = shown(part, to);
            const QPoint shift = part.boundingRect().topLeft() - to;
            int wrong = 0;
            for (int y = 0; y < 300; ++y)
                for (int x = 0; x < 400; ++x) {
                    const QPoint at = QPoint(x, y) + shift;
                    wrong += some.pixelColor(x, y) !=
                             (part.contains(at) ? whole.pixelColor(at) : QColor(Qt::magenta));
                }
            EXPECT_EQ(wrong, 0);
        }
}

TEST_F(OverlayWindowTest, NamesSelectRemoveAndEdit) {
    window.AddPoint(1, 1, RED, "a");
    window.AddLine(1, 2, 3, 4, 0, 1, RED, "b");
    window.AddPoint(2, 2, RED, "b");
    window.AddCycle(10, 20, 7, 0, 1, RED, "odd");
    EXPECT_TRUE(window.GetObjectString().IsEmpty());
    EXPECT_EQ(window.Select("b"), 1);
    EXPECT_EQ(window.Select("B"), 0); // The selection stays.
    EXPECT_NE(window.GetObjectString().Find("SHAPE=LINE;START=1.00, 2.00;END=3.00, 4.00"), -1);
    EXPECT_NE(window.GetObjectString("odd").Find("POINT=7.00, 17.00;SIZE=7.00, 7.00"), -1);
    EXPECT_EQ(window.SetObjectString("b", "END=9, 9"), 1);
    EXPECT_NE(window.GetObjectString().Find("END=9.00, 9.00"), -1);
    EXPECT_EQ(window.SetObjectString("none", "END=9, 9"), 0);

    window.RemoveAllGraphics();
    EXPECT_TRUE(window.GetObjectString().IsEmpty());
    for (const char *name : {"x", "y", "x", "z", "x"})
        window.AddPoint(0, 0, RED, name);
    EXPECT_EQ(window.RemoveObject(5), 0);
    EXPECT_EQ(window.RemoveObject(3), 1);
    EXPECT_TRUE(window.GetObjectString("z").IsEmpty());
    EXPECT_EQ(window.RemoveObject("x"), 1);
    EXPECT_EQ(window.RemoveGraphics("x"), 2);
    window.SetCalibration(0.5);
    window.AddScaleBar(5, 5, 40, 4, 0, 1, RED, "bar");
    EXPECT_NE(window.GetObjectString("bar").Find("DISTANCE=20.00 um"), -1);
    EXPECT_EQ(window.RemoveGraphics("bar"), 5);
    EXPECT_EQ(window.RemoveAllGraphics(), 1);
}

TEST_F(OverlayWindowTest, HandlesAreShownInTheWindowOfTheSelectedObject) {
    CTavixWnd other;
    other.resize(400, 300);
    const CTavixImage8 image(IMAGE_WIDTH, IMAGE_HEIGHT);
    other.SetImage(&image);
    const auto whitePixels = [](CTavixWnd &shown) {
        const QImage picture = shown.grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixel(x, y) == qRgb(255, 255, 255);
        return count;
    };
    for (CTavixWnd *each : {&window, &other})
        each->AddRectangle(10, 10, 30, 25, 0, 1, RED, "box");
    window.Select("box");
    EXPECT_EQ(whitePixels(window), 8 * 25);
    EXPECT_EQ(whitePixels(other), 0);
    other.Select("box");
    EXPECT_EQ(whitePixels(window), 0);
    EXPECT_EQ(whitePixels(other), 8 * 25);
    window.DeSelect();
    EXPECT_EQ(whitePixels(other), 0);
}

TEST_F(OverlayWindowTest, HostileArgumentsAreHarmless) {
    std::vector<tagPOINT> many(1000000);
    for (std::size_t i = 0; i < many.size(); ++i)
        many[i] = {static_cast<int>(i * 7919 % 90) - 10, static_cast<int>(i * 104729 % 70) - 10};
    const tagPOINT far[] = {
        {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MAX, INT_MIN}, {3, INT_MAX}};
    const auto lists = [&](const tagPOINT *points, int count) {
        window.AddPolyline(points, count, 0, 1, RED, nullptr);
        window.AddPolygon(points, count, 1, 3, RED, nullptr);
        window.AddFillPolygon(points, count, RED, nullptr);
        window.AddFillHatchPolygon(points, count, 99, 0, RED, nullptr);
    };
    lists(nullptr, 5);
    lists(many.data(), -1);
    lists(many.data(), 1);
    lists(far, 4);
    window.AddPolygon(TavixArray::CPointArray(), 0, 1, RED, "");
    window.AddPolyline(many.data(), static_cast<int>(many.size()), 0, 1, RED, "");
    window.AddArrowLine(INT_MIN, 5, INT_MAX, 9, INT_MAX, INT_MIN, -1, 0, INT_MAX, RED, "");
    window.AddReticleLine(INT_MIN, 5, INT_MAX, 9, 0, 1, RED, "");
    window.AddHStyleLine(0, 0, 0, 0, INT_MAX, 0, 5, RED, "");
    window.AddCrossPoint(INT_MAX, 0, INT_MAX, INT_MIN, 0, 1, RED, "");
    window.AddEllipse(INT_MIN, INT_MIN, INT_MAX, INT_MAX, 2, INT_MAX, RED, "");
    window.AddCycle(INT_MIN, INT_MIN, INT_MAX, 1, 1, RED, "");
    window.AddFillCycle(INT_MAX, INT_MAX, INT_MIN, RED, "");
    window.AddText(5, 5, true, true, true, INT_MAX, RED, nullptr, "");
    window.AddText(5, 5, true, true, true, 10, RED, std::string(100000, 'W').c_str(), "text");
    window.SetObjectString("text", "FONT_FACE=No such font;FONT_SIZE=-5;TEXT=%3B%25%2");
    EXPECT_NE(window.GetObjectString("text").Find(";TEXT=%3B%25%252"), -1);
    window.AddScaleBar(INT_MAX, 5, INT_MAX, INT_MAX, 0, 1, RED, "");
    window.SetCalibration(std::nan(""));
    EXPECT_EQ(window.GetCalibration(), 1.0);
    window.Select("");
    for (double zoom : {0.05, 1.0, 25.0, 1e6, 1e300, 1e306}) {
        window.Zoom(zoom);
        EXPECT_FALSE(window.grab().isNull());
    }
    window.resize(0, 0);
    window.RemoveAll();
}
