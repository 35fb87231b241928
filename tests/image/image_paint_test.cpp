#include "image/image_samples.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

using tavix_test::RandomImage;

constexpr QRgb BACKGROUND = qRgb(1, 254, 77);

QImage Canvas(int width, int height) {
    QImage canvas(width, height, QImage::Format_RGB32);
    canvas.fill(BACKGROUND);
    return canvas;
}

QRgb PixelAt(const CTavixImage8 &image, int x, int y) {
    const int level = image.GetPixel(x, y);
    return qRgb(level, level, level);
}

QRgb PixelAt(const CTavixImage24 &image, int x, int y) {
    const auto colour = static_cast<COLORREF>(image.GetPixel(x, y));
    return qRgb(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

/// The part of an axis that the picture covers, in quarters of a device pixel.
struct QuarterSpan {
    int begin;
    int size;

    /// The source pixel that device pixel i shows: that under its centre; -1 outside.
    int SourceOf(int i, int sourceSize) const {
        const int centre = 4 * i + 2 - begin;
        return centre < 0 || centre >= size ? -1 : centre * sourceSize / size;
    }
};

template <typename Image>
QImage Expected(const Image &image, const QImage &canvas, QuarterSpan across, QuarterSpan down,
                const QRect &clip) {
    QImage expected = Canvas(canvas.width(), canvas.height());
    for (int y = clip.top(); y <= clip.bottom(); ++y)
        for (int x = clip.left(); x <= clip.right(); ++x) {
            const int sourceX = across.SourceOf(x, image.GetWidth());
            const int sourceY = down.SourceOf(y, image.GetHeight());
            if (sourceX >= 0 && sourceY >= 0)
                expected.setPixel(x, y, PixelAt(image, sourceX, sourceY));
        }
    return expected;
}

/// How the painter is set up: device = (logical * scale + offset), the offset in quarters.
struct PainterCase {
    const char *name;
    int scale;
    int offsetX;
    int offsetY;
    QRect clip;
    bool byPixelRatio = false;
};

const PainterCase PAINTERS[] = {
    {"plain", 1, 0, 0, {0, 0, 60, 50}},
    {"clipped", 1, 0, 0, {7, 9, 20, 11}},
    {"translated", 1, 12, -20, {0, 0, 60, 50}},
    {"translated by fractions", 1, 5, -3, {0, 0, 60, 50}},
    {"scaled by 2", 2, 0, 0, {0, 0, 60, 50}},
    {"scaled by 2, translated, clipped", 2, -9, 7, {3, 5, 40, 30}},
    {"on a screen of pixel ratio 2", 2, 0, 0, {0, 0, 60, 50}, true},
};

template <typename Image>
void ExpectNearestPixels(const PainterCase &how) {
    SCOPED_TRACE(how.name);
    std::mt19937 random(11);
    std::uniform_int_distribution<int> size(1, 12), targetSize(1, 40), corner(-9, 20);
    for (int round = 0; round < 150; ++round) {
        const auto image = RandomImage<Image>(size(random), size(random), random);
        const CRect rect(CPoint(corner(random), corner(random)),
                         CSize(targetSize(random), targetSize(random)));
        QImage canvas = Canvas(60, 50);
        if (how.byPixelRatio)
            canvas.setDevicePixelRatio(how.scale);
        {
            QPainter painter(&canvas);
            if (how.clip != QRect(0, 0, 60, 50))
                painter.setClipRect(how.clip);
            painter.translate(how.offsetX / 4.0, how.offsetY / 4.0);
            if (!how.byPixelRatio)
                painter.scale(how.scale, how.scale);
            CDC dc(&painter);
            image.PaintImage(&dc, rect);
        }
        canvas.setDevicePixelRatio(1);
        const int quarters = 4 * how.scale;
        const QuarterSpan across{rect.left * quarters + how.offsetX, rect.Width() * quarters};
        const QuarterSpan down{rect.top * quarters + how.offsetY, rect.Height() * quarters};
        ASSERT_EQ(canvas, Expected(image, canvas, across, down, how.clip))
            << image.GetWidth() << " x " << image.GetHeight() << " into " << rect.left << ','
            << rect.top << ' ' << rect.Width() << " x " << rect.Height();
    }
}

TEST(ImagePaintTest, ShowsTheSourcePixelUnderEachTargetCentre) {
    for (const PainterCase &how : PAINTERS) {
        ExpectNearestPixels<CTavixImage8>(how);
        ExpectNearestPixels<CTavixImage24>(how);
    }
}

TEST(ImagePaintTest, RowZeroIsAtTheTop) {
    const unsigned char pixels[] = {10, 20, 30, 0, 40, 50, 60, 0};
    QImage canvas = Canvas(6, 4);
    QPainter painter(&canvas);
    CDC dc(&painter);
    CTavixImage8(3, 2, pixels).PaintImage(&dc, CRect(0, 0, 6, 4));
    painter.end();
    const int rows[4][6] = {{10, 10, 20, 20, 30, 30},
                            {10, 10, 20, 20, 30, 30},
                            {40, 40, 50, 50, 60, 60},
                            {40, 40, 50, 50, 60, 60}};
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(qGray(canvas.pixel(x, y)), rows[y][x]) << x << ',' << y;
}

TEST(ImagePaintTest, SelectsTheNearestPixelMode) {
    std::mt19937 random(12);
    const auto image = RandomImage<CTavixImage24>(9, 9, random);
    QImage canvas = Canvas(5, 5);
    QPainter painter(&canvas);
    CDC dc(&painter);
    SetStretchBltMode(&dc, HALFTONE);
    image.PaintImage(&dc, CRect(0, 0, 3, 3));
    painter.end();
    EXPECT_EQ(dc.GetStretchBltMode(), COLORONCOLOR);
    EXPECT_EQ(canvas, Expected(image, canvas, {0, 12}, {0, 12}, canvas.rect()));
}

TEST(ImagePaintTest, WithoutPixelsOrContextNothingIsPainted) {
    QImage canvas = Canvas(5, 5);
    QPainter painter(&canvas);
    CDC dc(&painter);
    CTavixImage8().PaintImage(&dc, CRect(0, 0, 5, 5));
    CTavixImage24(4, 0).PaintImage(&dc, CRect(0, 0, 5, 5));
    CTavixImage8(4, 4).PaintImage(&dc, CRect(2, 2, 2, 2));
    CTavixImage8(4, 4).PaintImage(nullptr, CRect(0, 0, 5, 5));
    painter.end();
    EXPECT_EQ(canvas, Canvas(5, 5));
}

} // namespace
