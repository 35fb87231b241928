#include "TAVIX20/display/layer.h"

#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/display/object_canvas.h"

#include "shown_window.h"

#include <QTemporaryDir>

#include <climits>
#include <cmath>
#include <functional>
#include <vector>

namespace {

constexpr unsigned long RED = 0x0000FF;
constexpr int W = 60;
constexpr int H = 50;

bool InBox(int x, int y, int left, int top, int right, int bottom) {
    return x >= left && x <= right && y >= top && y <= bottom;
}

class LayerTest : public ShownWindowTest {
protected:
    void SetUp() override {
        window.SetImage(&black);
        window.ShowLayer(1);
    }
    void TearDown() override { CTavixWnd::SetLayerAlpha(255); }

    /// Calls see(x, y, pixel) for the whole picture.
    template <typename See>
    void ForEach(See see) {
        const QImage frame = window.GetFrame();
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                see(x, y, frame.pixel(x, y));
    }

    const CTavixImage24 black{W, H};
    QTemporaryDir folder;
};

TEST_F(LayerTest, PointsAreStoredWithTheAlphaOfTheirTime) {
    tavix::Layer layer;
    layer.Reset({4, 3});
    const tagPOINT outside[] = {{-1, 0}, {4, 0}, {0, 3}, {INT_MIN, 1}, {1, INT_MAX}};
    layer.SetPoints(outside, RED);
    layer.Paint({4, 0, INT_MAX, 2}, [](tavix::ObjectCanvas &) { FAIL(); });
    EXPECT_TRUE(layer.Pixels().isNull()) << "nothing was painted, nothing is allocated";

    const tagPOINT points[] = {{1, 1}, {-1, 0}, {2, 1}};
    layer.SetPoints(points, RED);
    tavix::Layer::SetAlpha(0x7F80); // The low 8 bits: 128.
    layer.SetPoints({points, 1}, RED);
    EXPECT_EQ(layer.Pixels().pixel(1, 1), qRgba(255, 0, 0, 128));
    EXPECT_EQ(layer.Pixels().pixel(2, 1), qRgba(255, 0, 0, 255));
    EXPECT_EQ(layer.Pixels().pixel(0, 0), 0u);
    layer.Clear();
    EXPECT_TRUE(layer.Pixels().isNull());
}

TEST_F(LayerTest, ShapesAreLaidOverWhatIsThere) {
    tavix::Layer layer;
    layer.Reset({1, 1});
    const tagPOINT pixel{0, 0};
    for (const int under : {0, 1, 77, 255})
        for (const int over : {3, 128, 255}) {
            tavix::Layer::SetAlpha(under);
            layer.SetPoints({&pixel, 1}, 0xC8);
            tavix::Layer::SetAlpha(over);
            layer.Paint({0, 0, 0, 0}, [](tavix::ObjectCanvas &canvas) {
                canvas.Fill({0, 0, 1, 1}, 0x55);
                canvas.Line({-5, 0.5}, {5, 0.5}, {0x55, 1, PS_SOLID});
            });
            const double a = over / 255.0;
            const double b = under / 255.0 * (1 - a);
            EXPECT_NEAR(qAlpha(layer.Pixels().pixel(0, 0)), 255 * (a + b), 0.51);
            EXPECT_NEAR(qRed(layer.Pixels().pixel(0, 0)), (0x55 * a + 0xC8 * b) / (a + b), 0.51);
        }
}

TEST_F(LayerTest, ShapesCoverExactlyTheirPixels) {
    const tagPOINT box[] = {{5, 5}, {20, 5}, {20, 15}, {5, 15}};
    const TavixArray::CPointArray array(box, 4);
    const auto onFrame = [](int x, int y) {
        return InBox(x, y, 5, 5, 20, 15) && !InBox(x, y, 6, 6, 19, 14);
    };
    const struct {
        std::function<void(CTavixWnd &)> paint;
        std::function<bool(int x, int y)> isPainted;
    } shapes[] = {
        {[&](auto &w) { w.AddPointsLayerObject(array, RED); },
         [](int x, int y) { return (x == 5 || x == 20) && (y == 5 || y == 15); }},
        {[](auto &w) { w.AddLineLayerObject(INT_MIN, 7, 30, 7, 3, RED); },
         [](int x, int y) { return InBox(x, y, 0, 6, 31, 8); }},
        {[](auto &w) { w.AddLineLayerObject(3, 3, 40, 40, 0, RED); },
         [](int x, int y) { return x == y && x >= 3 && x <= 40; }},
        {[](auto &w) { w.AddFillRectangleLayerObject(10, 3, -4, 5, RED); },
         [](int x, int y) { return InBox(x, y, 6, 3, 9, 7); }},
        {[](auto &w) { w.AddFillRectangleLayerObject(30, INT_MIN / 2, INT_MAX, INT_MAX, RED); },
         [](int x, int) { return x >= 30; }},
        {[](auto &w) {
             w.AddFillRectangleLayerObject(2, 3, 0, 5, RED);
             w.AddEllipseLayerObject(INT_MAX, INT_MAX, INT_MAX, INT_MAX, 5, RED);
             w.AddFillEllipseLayerObject(INT_MIN, INT_MIN, 9, 9, RED);
             w.AddPointsLayerObject(nullptr, 5, RED);
             w.AddPolylineLayerObject(nullptr, 5, 1, RED);
             w.AddHatchFillPolygonLayerObject(nullptr, -1, RED, RED);
             w.AddTextLayerObject(1, 1, nullptr, 10, RED, nullptr);
             w.AddImageLayerObject(0, 0, 9, 9, nullptr);
         },
         [](int, int) { return false; }},
        {[](auto &w) { w.AddRectangleLayerObject(5, 5, 16, 11, std::nan(""), RED); }, onFrame},
        {[](auto &w) { w.AddRectangleLayerObject(5, 6, 10, 12, 2.6, RED); },
         [](int x, int y) { return InBox(x, y, 5, 6, 14, 17) && !InBox(x, y, 8, 9, 11, 14); }},
        {[](auto &w) { w.AddFillEllipseLayerObject(4, 6, 30, 21, RED); },
         [](int x, int y) { return std::hypot((x - 18.5) / 15, (y - 16) / 10.5) < 1; }},
        {[](auto &w) { w.AddEllipseLayerObject(4, 6, 30, 22, 4, RED); },
         [](int x, int y) {
             return std::hypot((x - 18.5) / 15, (y - 16.5) / 11) < 1 &&
                    std::hypot((x - 18.5) / 11, (y - 16.5) / 7) >= 1;
         }},
        {[](auto &w) { w.AddCrossPointLayerObject(8, 9, 2, 1, RED); },
         [](int x, int y) { return InBox(x, y, 6, 9, 10, 9) || InBox(x, y, 8, 8, 8, 10); }},
        {[](auto &w) { w.AddCrossPointLayerObject(8, 9, INT_MIN, INT_MAX, RED); },
         [](int x, int) { return x == 8; }},
        {[&](auto &w) { w.AddPolylineLayerObject(array, 1, RED); },
         [&](int x, int y) { return onFrame(x, y) && (x > 5 || y == 5 || y == 15); }},
        {[&](auto &w) { w.AddPolygonLayerObject(array, 1, RED); }, onFrame},
        {[&](auto &w) { w.AddFillPolygonLayerObject(array, RED); },
         [](int x, int y) { return InBox(x, y, 5, 5, 20, 15); }},
        {[&](auto &w) { w.AddPolygonLayerObject(box, 1, 3, RED); },
         [](int x, int y) { return InBox(x, y, 4, 4, 6, 6); }}};
    for (const auto &shape : shapes)
        for (const int alpha : {255, 128}) {
            window.RemoveAllLayers();
            CTavixWnd::SetLayerAlpha(alpha);
            shape.paint(window);
            ForEach([&](int x, int y, QRgb pixel) {
                ASSERT_EQ(pixel, qRgb(shape.isPainted(x, y) ? alpha : 0, 0, 0))
                    << "shape " << &shape - shapes << " at " << x << ", " << y;
            });
        }
}

TEST_F(LayerTest, HatchAndText) {
    const tagPOINT corners[] = {{5, 5}, {40, 5}, {40, 35}, {5, 35}};
    CTavixWnd::SetLayerAlpha(128);
    window.AddHatchFillPolygonLayerObject(corners, 4, RED, 0xFF0000);
    int lines = 0;
    ForEach([&](int x, int y, QRgb pixel) {
        const bool isLine = pixel == qRgb(128, 0, 0);
        ASSERT_EQ(isLine || pixel == qRgb(0, 0, 128), InBox(x, y, 5, 5, 40, 35)) << x << ", " << y;
        lines += isLine && InBox(x, y, 6, 6, 39, 34);
    });
    EXPECT_NEAR(lines, 34 * 29 / 8, 10) << "one pixel in eight of each row";

    for (const char *face : {static_cast<const char *>(nullptr), "No Such Face 4711"}) {
        window.RemoveAllLayers();
        window.AddTextLayerObject(10, 8, "HH", 12, RED, face);
        int full = 0;
        ForEach([&](int x, int y, QRgb pixel) {
            ASSERT_EQ(pixel & 0x00FFFF, 0u) << "red, and soft to black only";
            ASSERT_TRUE(qRed(pixel) == 0 || InBox(x, y, 9, 8, 59, 35)) << x << ", " << y;
            full += qRed(pixel) == 128;
        });
        EXPECT_GT(full, 20);
    }
}

TEST_F(LayerTest, PicturesAreFittedIntoTheirBox) {
    CTavixImage24 picture(20, 10); // All blue.
    std::fill_n(reinterpret_cast<std::array<unsigned char, 3> *>(picture.GetImagePtr()), 200,
                std::array<unsigned char, 3>{255, 0, 0});
    const std::string path = folder.filePath("picture.png").toStdString();
    picture.SaveImage(path.c_str());
    const struct {
        int x, y, w, h;
        CRect painted;
    } cases[] = {{4, 5, 40, 40, {4, 15, 43, 34}},
                 {44, 45, -40, -40, {4, 15, 43, 34}},
                 {4, 5, 20, 10, {4, 5, 23, 14}},
                 {0, 0, 50, 4, {21, 0, 28, 3}},
                 {3, 3, 1, 50, {3, 27, 3, 27}},
                 {4, 5, 0, 40, {0, 0, -1, -1}},
                 {-100, -50, 200, 100, {0, 0, W, H}},
                 {INT_MIN / 2, INT_MIN / 2, INT_MAX, INT_MAX, {0, 0, W, H}}};
    for (const auto &[left, top, width, height, to] : cases)
        for (const int alpha : {255, 128}) {
            window.RemoveAllLayers();
            CTavixWnd::SetLayerAlpha(alpha);
            window.AddImageLayerObject(left, top, width, height, path.c_str());
            ForEach([&, &rect = to](int x, int y, QRgb pixel) {
                const bool inside = InBox(x, y, rect.left, rect.top, rect.right, rect.bottom);
                ASSERT_EQ(qBlue(pixel), inside ? alpha : 0) << rect.left << ": " << x << ", " << y;
            });
        }
}

TEST_F(LayerTest, GoesWithItsImage) {
    const std::string path = folder.filePath("image.bmp").toStdString();
    const struct {
        const char *name;
        std::function<void(CTavixWnd &)> operation;
        bool keeps;
    } cases[] = {{"SetImage", [this](auto &w) { w.SetImage(&black); }, false},
                 {"CreateImage", [](auto &w) { w.CreateImage(W, H, 24); }, false},
                 {"LoadImageA", [&](auto &w) { w.LoadImageA(path.c_str()); }, false},
                 {"RemoveAllLayers", [](auto &w) { w.RemoveAllLayers(); }, false},
                 {"RemoveAll", [](auto &w) { w.RemoveAll(); }, false},
                 {"hidden", [](auto &w) { w.ShowLayer(0); }, false},
                 {"shown again", [](auto &w) { w.ShowLayer(0), w.ShowLayer(1); }, true},
                 {"Blur", [](auto &w) { w.Blur(); }, true}};
    for (const auto &[name, operation, keeps] : cases) {
        window.SetImage(nullptr);
        window.AddPointLayerObject(7, 3, RED); // Nothing to paint into.
        window.SetImage(&black);
        window.ShowLayer(1);
        EXPECT_EQ(window.GetFrame().pixel(7, 3), qRgb(0, 0, 0)) << name;
        window.AddPointLayerObject(7, 3, RED);
        EXPECT_EQ(window.GetFrame().pixel(7, 3), qRgb(255, 0, 0)) << name;
        window.SaveImage(path.c_str(), false);
        operation(window);
        EXPECT_EQ(window.GetFrame().pixel(7, 3), qRgb(keeps ? 255 : 0, 0, 0)) << name;
        window.SaveImage(path.c_str(), true);
        const std::unique_ptr<CTavixImage24> saved(CTavixImage::LoadImage24(path.c_str()));
        EXPECT_EQ(saved->GetPixel(7, 3), keeps ? RED : 0u) << name;
    }
}

TEST_F(LayerTest, LiesOverThePictureAtEveryZoom) {
    CTavixImage8 grey(200, 100);
    std::fill_n(grey.GetImagePtr(), grey.GetImageLen(), std::uint8_t{100});
    window.SetImage(&grey);
    Show(400, 300);
    CTavixWnd::SetLayerAlpha(128);
    for (const double zoom : {1.0, 3.0, 0.5}) {
        window.RemoveAllLayers();
        window.Zoom(zoom);
        const auto redAt = [&](int x, int y) {
            CPoint client(x, y);
            window.ImagePtToClientPoint(client);
            return qRed(Grab(window).pixel(client));
        };
        for (const int x : {20, 24}) { // The second after the first was shown.
            EXPECT_EQ(redAt(x, 10), 100) << zoom;
            window.AddFillRectangleLayerObject(x, 10, 2, 2, RED);
            EXPECT_NEAR(redAt(x, 10), 100 * 127 / 255.0 + 128, 1.0) << zoom;
            for (const CPoint other : {CPoint(x - 2, 10), CPoint(x + 2, 10), CPoint(x, 12)})
                EXPECT_EQ(redAt(other.x, other.y), 100) << zoom;
        }
    }
}

TEST_F(LayerTest, LongImagesAndManyPoints) {
    constexpr int length = 70000;
    window.CreateImage(length, 3, 8);
    CTavixWnd::SetLayerAlpha(128);
    std::vector<tagPOINT> points(1000000);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {static_cast<int>(i % length), 1};
    window.AddPolylineLayerObject(points.data(), static_cast<int>(points.size()), 1, RED);
    CTavixWnd::SetLayerAlpha(255);
    window.AddFillRectangleLayerObject(0, 0, length, 1, RED);
    ForEach([](int x, int y, QRgb pixel) {
        ASSERT_EQ(pixel, qRgb((2 - y) * 255 / 2 + y % 2, 0, 0)) << x << ", " << y;
    });
}

} // namespace
