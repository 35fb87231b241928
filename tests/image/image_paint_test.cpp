#include "image/image_samples.h"

#include "TAVIX20/platform/gdiplus.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

using namespace tavix_test;

QImage Canvas(int width, int height) {
    QImage canvas(width, height, QImage::Format_RGB32);
    canvas.fill(qRgb(1, 254, 77));
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

/// How the painter is set up, and which device pixels it may reach.
struct PainterCase {
    const char *name;
    QTransform toDevice;
    QRect clip;
    double pixelRatio = 1;
};

const PainterCase PAINTERS[] = {
    {"plain", {}, {0, 0, 60, 50}},
    {"translated by fractions", {1, 0, 0, 1, 1.25, -0.75}, {0, 0, 60, 50}},
    {"scaled by 2, translated, clipped", {2, 0, 0, 2, -2.25, 1.75}, {3, 5, 40, 30}},
    {"on a screen of pixel ratio 2", {}, {0, 0, 60, 50}, 2},
};

/// Each pixel under whose centre the picture lies shows the source pixel there.
template <typename Image>
QImage Expected(const Image &image, const CRect &rect, const PainterCase &how) {
    QImage expected = Canvas(60, 50);
    const QTransform toLogical = how.toDevice.inverted();
    for (int y = how.clip.top(); y <= how.clip.bottom(); ++y)
        for (int x = how.clip.left(); x <= how.clip.right(); ++x) {
            const QPointF at = toLogical.map(QPointF(x + 0.5, y + 0.5) / how.pixelRatio);
            const double column = (at.x() - rect.left) * image.GetWidth() / rect.Width();
            const double row = (at.y() - rect.top) * image.GetHeight() / rect.Height();
            if (column >= 0 && column < image.GetWidth() && row >= 0 && row < image.GetHeight())
                expected.setPixel(x, y,
                                  PixelAt(image, static_cast<int>(column), static_cast<int>(row)));
        }
    return expected;
}

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
        canvas.setDevicePixelRatio(how.pixelRatio);
        QPainter painter(&canvas);
        if (how.clip != canvas.rect())
            painter.setClipRect(how.clip);
        painter.setTransform(how.toDevice);
        CDC dc(&painter);
        dc.SetStretchBltMode(HALFTONE);
        Gdiplus::Graphics graphics(&painter);
        if (round % 2 == 0)
            image.PaintImage(graphics, rect);
        else
            image.PaintImage(&dc, rect);
        painter.end();
        EXPECT_EQ(dc.GetStretchBltMode(), round % 2 == 0 ? HALFTONE : COLORONCOLOR);
        canvas.setDevicePixelRatio(1);
        ASSERT_EQ(canvas, Expected(image, rect, how))
            << image.GetWidth() << " x " << image.GetHeight() << " into " << rect.Width() << " x "
            << rect.Height();
    }
}

TEST(ImagePaintTest, ShowsTheSourcePixelUnderEachTargetCentre) {
    for (const PainterCase &how : PAINTERS) {
        ExpectNearestPixels<CTavixImage8>(how);
        ExpectNearestPixels<CTavixImage24>(how);
    }
}

TEST(ImagePaintTest, WithoutPixelsOrContextNothingIsPainted) {
    QImage canvas = Canvas(5, 5);
    QPainter painter(&canvas);
    CDC dc(&painter);
    CTavixImage24(4, 0).PaintImage(&dc, CRect(0, 0, 5, 5));
    CTavixImage8(4, 4).PaintImage(&dc, CRect(2, 2, 2, 2));
    CTavixImage8(4, 4).PaintImage(nullptr, CRect(0, 0, 5, 5));
    painter.end();
    EXPECT_EQ(canvas, Canvas(5, 5));
}

} // namespace
