#include "TAVIX20/platform/dc.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

/// A bitmap with random content. Its header is followed by a full palette.
struct Bitmap {
    BITMAPINFOHEADER header{};
    RGBQUAD palette[256];
    std::vector<unsigned char> bits;

    Bitmap(int width, int height, int bitCount, std::mt19937 &random) {
        header.biSize = 40;
        header.biWidth = width;
        header.biHeight = height;
        header.biPlanes = 1;
        header.biBitCount = static_cast<WORD>(bitCount);
        const auto byte = [&] { return static_cast<unsigned char>(random() >> 8); };
        for (RGBQUAD &entry : palette)
            entry = {byte(), byte(), byte(), byte()};
        bits.resize(static_cast<std::size_t>(Stride() * std::abs(height)));
        std::generate(bits.begin(), bits.end(), byte);
    }

    int Stride() const { return (header.biWidth * header.biBitCount / 8 + 3) / 4 * 4; }
    const BITMAPINFO *Info() const { return reinterpret_cast<const BITMAPINFO *>(&header); }

    /// The colour in column x of the row that is stored at place row.
    QRgb At(int x, int row) const {
        const unsigned char *pixel = bits.data() + row * Stride() + x * header.biBitCount / 8;
        if (header.biBitCount != 8)
            return qRgb(pixel[2], pixel[1], pixel[0]);
        if (header.biClrUsed != 0 && *pixel >= header.biClrUsed)
            return qRgb(0, 0, 0);
        const RGBQUAD &entry = palette[*pixel];
        return qRgb(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
    }
};

struct Box {
    int x, y, width, height;
};

QImage Canvas() {
    QImage canvas(40, 40, QImage::Format_RGB32);
    canvas.fill(qRgb(1, 254, 77));
    return canvas;
}

int Stretch(QImage &canvas, const Bitmap &bitmap, const Box &target, const Box &source,
            int mode = COLORONCOLOR) {
    QPainter painter(&canvas);
    CDC dc(&painter);
    dc.SetStretchBltMode(mode);
    return StretchDIBits(&dc, target.x, target.y, target.width, target.height, source.x, source.y,
                         source.width, source.height, bitmap.bits.data(), bitmap.Info(),
                         DIB_RGB_COLORS, SRCCOPY);
}

/// Index along one axis of the source pixel that shows at target pixel i; -1 outside the target.
int SourceIndex(int i, int start, int extent, int sourceSize) {
    const int size = std::abs(extent);
    const int inside = i - (extent < 0 ? start - size : start);
    if (inside < 0 || inside >= size)
        return -1;
    const int index = (2 * inside + 1) * sourceSize / (2 * size);
    return extent < 0 ? sourceSize - 1 - index : index;
}

QImage Expected(const Bitmap &bitmap, const Box &target, const Box &source) {
    QImage expected = Canvas();
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x) {
            const int column = SourceIndex(x, target.x, target.width, source.width);
            const int down = SourceIndex(y, target.y, target.height, source.height);
            const int row = bitmap.header.biHeight > 0 ? source.height - 1 - down : down;
            if (column >= 0 && down >= 0)
                expected.setPixel(x, y, bitmap.At(source.x + column, source.y + row));
        }
    return expected;
}

TEST(StretchDIBitsTest, PutsEverySourcePixelInItsPlace) {
    std::mt19937 random(1);
    const Box targets[] = {{3, 4, 7, 5},    {2, 1, 21, 15},     {5, 6, 4, 3},    {30, 4, -20, 9},
                           {3, 30, 11, -8}, {33, 35, -29, -31}, {-4, 30, 50, 20}};
    // Odd source sizes: no target centre falls on the border between two source pixels.
    const Box sources[] = {{0, 0, 7, 5}, {1, 0, 5, 3}, {2, 3, 3, 1}, {6, 4, 1, 1}, {0, 2, 7, 3}};
    for (const int bitCount : {8, 24, 32})
        for (const int height : {5, -5})
            for (const DWORD used : {0U, 100U, 256U}) {
                Bitmap bitmap(7, height, bitCount, random);
                bitmap.header.biClrUsed = used;
                for (const Box &target : targets)
                    for (const Box &source : sources) {
                        QImage canvas = Canvas();
                        ASSERT_EQ(Stretch(canvas, bitmap, target, source), 5);
                        ASSERT_EQ(canvas, Expected(bitmap, target, source))
                            << bitCount << " bits, height " << height << ", target width "
                            << target.width << ", source width " << source.width;
                    }
            }
}

TEST(StretchDIBitsTest, HalftoneTakesMeansOnlyWhereTheTargetIsSmaller) {
    std::mt19937 random(2);
    const Bitmap bitmap(12, -6, 24, random);
    for (const auto &[width, height] : {std::pair{6, 3}, {4, 6}, {12, 2}, {3, 1}, {-4, 3}}) {
        QImage expected = Canvas(), canvas = Canvas();
        const int size = std::abs(width), columns = 12 / size, rows = 6 / height;
        const int count = columns * rows;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < size; ++x) {
                int red = count / 2, green = red, blue = red;
                for (int i = 0; i < count; ++i) {
                    const QRgb pixel = bitmap.At(x * columns + i % columns, y * rows + i / columns);
                    red += qRed(pixel);
                    green += qGreen(pixel);
                    blue += qBlue(pixel);
                }
                expected.setPixel(width < 0 ? 20 - x : 21 + x, 3 + y,
                                  qRgb(red / count, green / count, blue / count));
            }
        Stretch(canvas, bitmap, {21, 3, width, height}, {0, 0, 12, 6}, HALFTONE);
        EXPECT_EQ(canvas, expected) << width << " x " << height;
    }
    QImage enlarged = Canvas();
    Stretch(enlarged, bitmap, {1, 1, 31, 17}, {0, 0, 12, 6}, HALFTONE);
    EXPECT_EQ(enlarged, Expected(bitmap, {1, 1, 31, 17}, {0, 0, 12, 6}));
}

TEST(StretchDIBitsTest, RefusesWhatItCannotDraw) {
    std::mt19937 random(3);
    QImage canvas = Canvas();
    const Bitmap good(7, 5, 24, random);
    for (int spoiled = 0; spoiled < 5; ++spoiled) {
        Bitmap bitmap = good;
        BITMAPINFOHEADER &header = bitmap.header;
        header.biSize = spoiled == 0 ? 12 : 40;
        header.biBitCount = spoiled == 1 ? 16 : 24;
        header.biCompression = spoiled == 2 ? 1 : 0;
        header.biWidth = spoiled == 3 ? -7 : 7;
        header.biHeight = spoiled == 4 ? 0 : 5;
        EXPECT_EQ(Stretch(canvas, bitmap, {0, 0, 20, 20}, {0, 0, 7, 5}), 0) << spoiled;
    }
    const Box sources[] = {{-1, 0, 7, 5},        {0, -1, 7, 5}, {1, 0, 7, 5}, {0, 1, 7, 5},
                           {INT32_MAX, 0, 7, 5}, {0, 0, 0, 5},  {0, 0, 7, -5}};
    for (const Box &source : sources)
        EXPECT_EQ(Stretch(canvas, good, {0, 0, 20, 20}, source), 0) << source.x << source.y;

    QPainter painter(&canvas);
    CDC dc(&painter), noPainter(nullptr);
    const auto stretch = [&](CDC *context, const void *bits, const BITMAPINFO *info,
                             DWORD use = DIB_RGB_COLORS, DWORD operation = SRCCOPY) {
        return StretchDIBits(context, 0, 0, 20, 20, 0, 0, 7, 5, bits, info, use, operation);
    };
    const void *bits = good.bits.data();
    EXPECT_EQ(stretch(nullptr, bits, good.Info()), 0);
    EXPECT_EQ(stretch(&noPainter, bits, good.Info()), 0);
    EXPECT_EQ(stretch(&dc, nullptr, good.Info()), 0);
    EXPECT_EQ(stretch(&dc, bits, nullptr), 0);
    EXPECT_EQ(stretch(&dc, bits, good.Info(), 1), 0);
    EXPECT_EQ(stretch(&dc, bits, good.Info(), DIB_RGB_COLORS, 0x00EE0086), 0);
    painter.end();
    EXPECT_EQ(canvas, Canvas());
}

TEST(DeviceContextTest, KeepsTheStretchMode) {
    CDC dc(nullptr);
    EXPECT_EQ(SetStretchBltMode(&dc, HALFTONE), COLORONCOLOR);
    EXPECT_EQ(SetStretchBltMode(&dc, 1), 0);
    EXPECT_EQ(dc.SetStretchBltMode(COLORONCOLOR), HALFTONE);
    EXPECT_EQ(SetStretchBltMode(nullptr, HALFTONE), 0);
}

} // namespace
