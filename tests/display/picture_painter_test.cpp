#include "TAVIX20/display/picture_painter.h"
#include "TAVIX20/display/pixel_grid.h"
#include "image/image_samples.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace tavix_test;
using tavix::PicturePainter;
using tavix::PicturePyramid;
using tavix::PixelKind;
using tavix::PixelRows;

constexpr QRgb BACKGROUND = qRgb(1, 2, 3);

/// Random pixels whose rows are three bytes farther apart than they need be.
struct Sample {
    Sample(int width, int height, PixelKind kind, unsigned seed = 1)
        : rows{nullptr, width, height, 0, kind} {
        std::mt19937 random(seed);
        // Rows of 32-bit pixels stay aligned.
        rows.stride = width * rows.Channels() + (rows.Channels() == 4 ? 4 : 3);
        bytes = RandomBytes(static_cast<int>(rows.stride) * height, random);
        rows.data = bytes.data();
    }

    /// A channel of a pixel, multiplied by alpha.
    int Level(int x, int y, int channel) const {
        const std::uint8_t *const pixel = rows.Row(y) + x * rows.Channels();
        if (rows.kind != PixelKind::Straight)
            return pixel[channel];
        return static_cast<int>(
            qPremultiply(qRgba(pixel[2], pixel[1], pixel[0], pixel[3])) >> 8 * channel & 255U);
    }

    /// An opaque pixel.
    QRgb Screen(int x, int y) const {
        return rows.kind == PixelKind::Grey ? qRgb(Level(x, y, 0), Level(x, y, 0), Level(x, y, 0))
                                            : qRgb(Level(x, y, 2), Level(x, y, 1), Level(x, y, 0));
    }

    Bytes bytes;
    PixelRows rows;
};

/// A few opaque, half transparent and many empty pixels.
QImage RandomLayer(int width, int height, QImage::Format format) {
    QImage layer(width, height, QImage::Format_ARGB32);
    std::mt19937 random(9);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            layer.setPixel(x, y, random() % 3 == 0 ? static_cast<QRgb>(random()) : 0);
    return layer.convertToFormat(format);
}

/// The picture with the layer over it, one to one.
QImage Composed(const Sample &sample, const QImage &layer) {
    QImage composed(sample.rows.width, sample.rows.height, QImage::Format_RGB32);
    for (int y = 0; y < composed.height(); ++y)
        for (int x = 0; x < composed.width(); ++x)
            composed.setPixel(x, y, sample.Screen(x, y));
    QPainter(&composed).drawImage(0, 0, layer);
    return composed;
}

QImage Screen(QSize size, double ratio) {
    QImage screen(size * ratio, QImage::Format_RGB32);
    screen.setDevicePixelRatio(ratio);
    screen.fill(Qt::magenta);
    return screen;
}

void Paint(PicturePainter &picture, QPaintDevice &device, QPointF corner, double zoom,
           const QRegion &exposed = QRect(0, 0, 4000, 4000)) {
    QPainter painter(&device);
    picture.Paint(painter, exposed & painter.window(), corner, zoom, BACKGROUND);
}

} // namespace

TEST(PicturePyramidTest, LevelsAreTheRoundedMeansOfBlocks) {
    for (const PixelKind kind :
         {PixelKind::Grey, PixelKind::Colour, PixelKind::Premultiplied, PixelKind::Straight})
        for (const QSize size :
             {QSize(1, 9), QSize(2, 2), QSize(64, 64), QSize(167, 93), QSize(95, 150)}) {
            const Sample sample(size.width(), size.height(), kind);
            PicturePyramid pyramid;
            pyramid.Reset(sample.rows);
            EXPECT_TRUE(pyramid.IsBare());
            for (int number = 1; number <= pyramid.HighestLevel(); ++number) {
                const PixelRows level = pyramid.Level(number);
                const int side = 1 << number;
                ASSERT_EQ(level.width, (size.width() + side - 1) / side);
                ASSERT_EQ(level.height, (size.height() + side - 1) / side);
                for (int i = 0; i < level.width * level.height * level.Channels(); ++i) {
                    const int channel = i % level.Channels();
                    const int x = i / level.Channels() % level.width;
                    const int y = i / level.Channels() / level.width;
                    int sum = 0;
                    int count = 0;
                    for (int v = y * side; v < std::min((y + 1) * side, size.height()); ++v)
                        for (int u = x * side; u < std::min((x + 1) * side, size.width());
                             ++u, ++count)
                            sum += sample.Level(u, v, channel);
                    ASSERT_EQ(level.Row(y)[x * level.Channels() + channel],
                              (2 * sum + count) / (2 * count))
                        << "level " << number << " at " << x << ", " << y;
                }
            }
        }
}

// Into an image directly, and into a pixmap through QPainter, at several device pixel ratios.
TEST(PicturePainterTest, BlocksShowThePixelUnderTheCentreWithTheLayerOver) {
    const QSize client(90, 70);
    for (const PixelKind kind : {PixelKind::Grey, PixelKind::Colour})
        for (const QImage::Format format :
             {QImage::Format_Invalid, QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied})
            for (const double ratio : {1.0, 1.5, 2.0})
                for (const double zoom : {1.0, 1.25, 1.7, 3.0, 3.14159, 25.0})
                    for (const QPoint corner : {QPoint(0, 0), QPoint(-37, -21), QPoint(13, 8)}) {
                        const Sample sample(53, 41, kind);
                        const QImage layer = format == QImage::Format_Invalid
                                                 ? QImage()
                                                 : RandomLayer(53, 41, format);
                        const QImage composed = Composed(sample, layer);
                        PicturePainter picture;
                        picture.SetPicture(sample.rows);
                        picture.SetLayer(&layer);
                        QImage screen = Screen(client, ratio);
                        QPixmap pixmap(screen.size());
                        pixmap.setDevicePixelRatio(ratio);
                        Paint(picture, screen, corner, zoom);
                        Paint(picture, pixmap, corner, zoom);
                        EXPECT_EQ(pixmap.toImage().convertToFormat(screen.format()), screen);
                        EXPECT_FALSE(picture.HasPyramid());
                        int wrong = 0;
                        for (int c = 0; c < screen.width() * screen.height(); ++c) {
                            const int cx = c % screen.width();
                            const int cy = c / screen.width();
                            const double scale = zoom * ratio;
                            const auto x = static_cast<int>(
                                std::floor((cx + 0.5 - corner.x() * ratio) / scale));
                            const auto y = static_cast<int>(
                                std::floor((cy + 0.5 - corner.y() * ratio) / scale));
                            const bool inside = x >= 0 && y >= 0 && x < 53 && y < 41;
                            const QRgb expected = inside ? composed.pixel(x, y) : BACKGROUND;
                            wrong += screen.pixel(cx, cy) != expected;
                        }
                        ASSERT_EQ(wrong, 0) << zoom << " * " << ratio;
                    }
}

// The bounds that picture_sampler.h states, with one level for each rounding.
TEST(PicturePainterTest, BelowOneEachPixelIsTheMeanOfWhatItCovers) {
    struct Case {
        double zoom;
        double contrast; ///< The error allowed in parts of the range of 255.
        double levels;   ///< And besides.
    };
    for (const PixelKind kind : {PixelKind::Grey, PixelKind::Colour})
        for (const Case &c :
             {Case{0.93, 0, 2}, Case{0.6, 0, 2}, Case{0.5, 0, 0.501}, Case{0.43, 0, 2},
              Case{0.34, 0, 2}, Case{0.3, 0.67, 2}, Case{0.25, 0, 0.501}, Case{0.17, 0.67, 2},
              Case{0.125, 0, 0.501}, Case{0.0625, 0, 0.501}, Case{0.03, 0.67, 2}}) {
            const Sample sample(301, 203, kind);
            PicturePainter picture;
            picture.SetPicture(sample.rows);
            QImage screen = Screen({300, 200}, 1.0);
            const QPoint corner(5, -4);
            Paint(picture, screen, corner, c.zoom);
            double shownSum = 0;
            double exactSum = 0;
            for (int cy = 0; corner.y() + 203 * c.zoom >= cy + 1; ++cy)
                for (int cx = corner.x(); corner.x() + 301 * c.zoom >= cx + 1 && cx < 300; ++cx) {
                    double sum = 0;
                    double area = 0;
                    const double left = (cx - corner.x()) / c.zoom;
                    const double top = (cy - corner.y()) / c.zoom;
                    for (int y = static_cast<int>(top); y < top + 1 / c.zoom && y < 203; ++y)
                        for (int x = static_cast<int>(left); x < left + 1 / c.zoom && x < 301;
                             ++x) {
                            const double covered =
                                (std::min(x + 1.0, left + 1 / c.zoom) - std::max<double>(x, left)) *
                                (std::min(y + 1.0, top + 1 / c.zoom) - std::max<double>(y, top));
                            sum += covered * sample.Level(x, y, 0);
                            area += covered;
                        }
                    const int shown = qBlue(screen.pixel(cx, cy));
                    shownSum += shown;
                    exactSum += sum / area;
                    ASSERT_LE(std::abs(shown - sum / area), c.contrast * 255 + c.levels)
                        << c.zoom << " at " << cx << ", " << cy;
                }
            EXPECT_NEAR(shownSum / exactSum, 1.0, 0.02) << c.zoom;
            EXPECT_EQ(picture.HasPyramid(), c.zoom <= 0.3 || c.zoom == 0.5);
        }
}

TEST(PicturePainterTest, ScrolledAndPartlyExposedFramesEqualFullPaints) {
    std::mt19937 random(4);
    for (const PixelKind kind : {PixelKind::Grey, PixelKind::Colour})
        for (const bool layered : {false, true}) {
            const Sample sample(700, 600, kind);
            const QImage layer = RandomLayer(700, 600, QImage::Format_ARGB32);
            const auto set = [&](PicturePainter &picture) {
                picture.SetPicture(sample.rows);
                picture.SetLayer(layered ? &layer : nullptr);
            };
            PicturePainter kept;
            set(kept);
            double zoom = 0.4;
            double ratio = 1.0;
            QSize client(120, 90);
            QPoint corner(-20, -10);
            for (int step = 0; step < 120; ++step) {
                if (step % 20 == 19) {
                    zoom = std::array{0.9, 0.25, 0.11, 1.5, 0.3}[random() % 5];
                    ratio = random() % 2 == 0 ? 1.0 : 1.5;
                    client = QSize(60 + static_cast<int>(random() % 80), 90);
                }
                corner += QPoint(static_cast<int>(random() % 41) - 20,
                                 static_cast<int>(random() % 31) - 15);
                PicturePainter fresh;
                set(fresh);
                QImage expected = Screen(client, ratio);
                Paint(fresh, expected, corner, zoom);
                QImage shown = Screen(client, ratio);
                // A stripe now and again, as when something over the picture has moved.
                if (step % 3 == 0)
                    Paint(kept, shown, corner, zoom, QRect(10, 0, 20, 90));
                Paint(kept, shown, corner, zoom);
                ASSERT_EQ(shown, expected) << step << " zoom " << zoom;
            }
        }
}

TEST(PicturePainterTest, ObeysClipsOpacityAndRotation) {
    const Sample sample(4, 2, PixelKind::Grey);
    PicturePainter picture;
    picture.SetPicture(sample.rows);
    QImage screen = Screen({20, 40}, 1.0);
    const QRgb untouched = screen.pixel(0, 0);
    {
        QPainter painter(&screen);
        painter.setClipRect(0, 0, 5, 5);
        picture.Paint(painter, QRect(0, 0, 20, 10), {0, 0}, 5, BACKGROUND);
        painter.setClipping(false);
        painter.setOpacity(0.0);
        picture.Paint(painter, QRect(0, 10, 20, 10), {0, 10}, 5, BACKGROUND);
        painter.setOpacity(1.0);
        painter.translate(10, 20);
        painter.rotate(90);
        picture.Paint(painter, QRect(0, 0, 20, 10), {0, 0}, 5, BACKGROUND);
    }
    EXPECT_EQ(screen.pixel(4, 4), sample.Screen(0, 0));
    EXPECT_EQ(screen.pixel(5, 4), untouched);
    EXPECT_EQ(screen.pixel(4, 12), untouched);
    for (int x = 0; x < 4; ++x)
        for (int y = 0; y < 2; ++y)
            EXPECT_EQ(screen.pixel(10 - 5 * y - 3, 20 + 5 * x + 2), sample.Screen(x, y));
    // A layer of another size than the picture's has nothing to lie on.
    const QImage layer(9, 9, QImage::Format_ARGB32);
    const Sample large(9, 9, PixelKind::Grey);
    PicturePainter layered;
    layered.SetPicture(large.rows);
    layered.SetLayer(&layer);
    layered.SetPicture(sample.rows);
    Paint(layered, screen, {0, 0}, 1);
    EXPECT_EQ(screen.pixel(3, 1), sample.Screen(3, 1));
    PicturePainter nothing;
    Paint(nothing, screen, {0, 0}, 1);
    EXPECT_EQ(screen.pixel(3, 3), BACKGROUND);
}

TEST(PixelGridTest, LinesOnPixelEdgesAndAContrastingNumberInEachPixel) {
    const Sample sample(6, 5, PixelKind::Grey);
    for (const double ratio : {1.0, 2.0}) {
        const double zoom = 30.5;
        const QPoint corner(4, -7);
        QImage screen = Screen({190, 140}, ratio);
        PicturePainter picture;
        picture.SetPicture(sample.rows);
        Paint(picture, screen, corner, zoom);
        const QImage plain = screen;
        tavix::PixelGrid grid;
        const auto paintGrid = [&](double at) {
            QPainter painter(&screen);
            grid.Paint(painter, QRect(0, 0, 190, 140), sample.rows, corner, at);
        };
        paintGrid(23.9 / ratio);
        EXPECT_EQ(screen, plain);
        paintGrid(zoom);
        const auto edge = [&](int start, int i) {
            return static_cast<int>(std::ceil((start + i * zoom) * ratio - 0.5));
        };
        const QRgb line = screen.pixel(edge(4, 1), edge(-7, 1) + 1);
        EXPECT_NE(line, plain.pixel(edge(4, 1), edge(-7, 1) + 1));
        for (int y = 1; y < 4; ++y)
            for (int x = 0; x < 6; ++x) {
                const QRect block(QPoint(edge(4, x), edge(-7, y)),
                                  QPoint(edge(4, x + 1) - 1, edge(-7, y + 1) - 1));
                const int level = sample.Level(x, y, 0);
                int ink = 0;
                for (int v = block.top(); v <= block.bottom(); ++v)
                    for (int u = block.left(); u <= block.right(); ++u) {
                        const bool onLine = u == block.left() || v == block.top();
                        const QRgb pixel = screen.pixel(u, v);
                        ASSERT_EQ(pixel == line, onLine) << u << ", " << v;
                        ink += !onLine && std::abs(qGreen(pixel) - level) > 100;
                    }
                EXPECT_GT(ink, 10 * ratio) << level;
            }
    }
}
