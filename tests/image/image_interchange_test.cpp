#include "image/image_samples.h"

#include "TAVIX20/platform/gdiplus.h"

#include <QColor>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>

namespace {

using namespace tavix_test;

using ImagePtr = std::unique_ptr<CTavixImage>;

/// A picture with all colours of a format, and translucent pixels where it has them.
QImage Picture(QImage::Format format, int width = 37, int height = 5) {
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgba(x * 6, y * 50, 255 - x * 3, x % 2 ? 255 : 90));
    return picture.convertToFormat(format);
}

TEST(ImageInterchangeTest, BitmapsAndHandlesOfEveryFormatBecomeTheirColoursOrTheirIndices) {
    const struct {
        QImage::Format format;
        Gdiplus::PixelFormat pixelFormat;
    } cases[] = {
        {QImage::Format_Mono, PixelFormat1bppIndexed},
        {QImage::Format_Indexed8, PixelFormat8bppIndexed},
        {QImage::Format_Grayscale8, PixelFormat8bppIndexed},
        {QImage::Format_RGB16, PixelFormat16bppRGB565},
        {QImage::Format_RGB555, PixelFormat16bppRGB555},
        {QImage::Format_BGR888, PixelFormat24bppRGB},
        {QImage::Format_RGB32, PixelFormat32bppRGB},
        {QImage::Format_ARGB32, PixelFormat32bppARGB},
        {QImage::Format_ARGB32_Premultiplied, PixelFormat32bppPARGB},
        {QImage::Format_RGB888, PixelFormat32bppARGB},
    };
    for (const auto &[format, pixelFormat] : cases) {
        SCOPED_TRACE(format);
        const QImage picture = Picture(format);
        Gdiplus::Bitmap bitmap(picture);
        EXPECT_EQ(bitmap.GetPixelFormat(), pixelFormat);
        const HBITMAP handle = CreateBitmapHandle(picture);
        for (const ImagePtr &image : {ImagePtr(CTavixImage::LoadImageA(&bitmap)),
                                      ImagePtr(CTavixImage::LoadImageA(handle))}) {
            ASSERT_TRUE(image);
            EXPECT_EQ(image->GetBitCount(), pixelFormat == PixelFormat8bppIndexed ? 8 : 24);
            for (int y = 0; y < picture.height(); ++y)
                for (int x = 0; x < picture.width(); ++x) {
                    const QColor colour = picture.pixelColor(x, y);
                    if (auto *const grey = dynamic_cast<CTavixImage8 *>(image.get()))
                        ASSERT_EQ(grey->GetPixel(x, y), format == QImage::Format_Indexed8
                                                            ? picture.pixelIndex(x, y)
                                                            : colour.red());
                    else
                        ASSERT_EQ(static_cast<CTavixImage24 &>(*image).GetPixel(x, y),
                                  RGB(colour.red(), colour.green(), colour.blue()));
                }
        }
        EXPECT_EQ(DeleteObject(handle), 1);
    }
}

TEST(ImageInterchangeTest, BitmapsOverMemoryHaveItsStrideAndABadOneNoPixels) {
    std::mt19937 random(3);
    Bytes memory = RandomBytes(16 * 4, random);
    Gdiplus::Bitmap bitmap(3, 4, 16, PixelFormat24bppRGB, memory.data());
    const ImagePtr image(CTavixImage::LoadImageA(&bitmap));
    EXPECT_TRUE(SamePixels(PixelsOf(*image), cv::Mat(4, 3, CV_8UC3, memory.data(), 16)));
    const Gdiplus::Bitmap bad[] = {Gdiplus::Bitmap(0, 4),
                                   Gdiplus::Bitmap(3, 4, 77),
                                   Gdiplus::Bitmap(3, 4, 9, PixelFormat24bppRGB, memory.data()),
                                   Gdiplus::Bitmap(9, 4, 16, PixelFormat24bppRGB, memory.data()),
                                   Gdiplus::Bitmap(3, 4, 12, PixelFormat24bppRGB, nullptr),
                                   Gdiplus::Bitmap(HBITMAP{})};
    for (Gdiplus::Bitmap without : bad) {
        EXPECT_EQ(without.GetWidth(), 0U);
        EXPECT_EQ(CTavixImage::LoadImageA(&without), nullptr);
    }
    EXPECT_EQ(CTavixImage::LoadImageA(static_cast<Gdiplus::Bitmap *>(nullptr)), nullptr);
    EXPECT_EQ(CreateBitmapHandle(QImage()), nullptr);
    EXPECT_EQ(DeleteObject(HBITMAP{}), 0);
}

/// A packed bitmap of random bytes in a block of exactly the size that it needs.
struct PackedDib {
    PackedDib(int width, int height, int bitCount) {
        const int stride = (bitCount * width + 31) / 32 * 4;
        std::mt19937 random(8);
        pixels = RandomBytes(stride * height, random);
        header = {
            sizeof header, width, height, 1, static_cast<WORD>(bitCount), BI_RGB, 0, 0, 0, 0, 0};
    }

    ImagePtr Load() const {
        Bytes packed(sizeof header + pixels.size());
        std::memcpy(packed.data(), &header, sizeof header);
        std::copy(pixels.begin(), pixels.end(), packed.begin() + sizeof header);
        return ImagePtr(
            CTavixImage::LoadImageA(reinterpret_cast<const BITMAPINFOHEADER *>(packed.data())));
    }

    BITMAPINFOHEADER header;
    Bytes pixels;
};

TEST(ImageInterchangeTest, PackedBitmapsStartRightBehindTheHeader) {
    for (const int width : {1, 2, 3, 4, 37}) {
        for (const int bitCount : {8, 24}) {
            const PackedDib dib(width, 3, bitCount);
            const ImagePtr image = dib.Load();
            ASSERT_TRUE(image);
            EXPECT_EQ(image->GetBitCount(), bitCount);
            EXPECT_EQ(BytesOf(*image), dib.pixels);
        }
        PackedDib dib(width, 3, 32);
        for (const int size : {0, 4 * width * 3, 4 * width + 2, 7, 1}) {
            dib.header.biSizeImage = static_cast<DWORD>(size);
            cv::Mat expected(3, width, CV_8UC3, cv::Scalar());
            for (int i = 0; i < 3 * width; ++i)
                if (size == 0 || 4 * i + 4 <= size)
                    std::copy_n(&dib.pixels[static_cast<std::size_t>(4 * i)], 3,
                                expected.data + std::ptrdiff_t{3} * i);
            const ImagePtr image = dib.Load();
            ASSERT_TRUE(image);
            EXPECT_TRUE(SamePixels(PixelsOf(*image), expected)) << size;
        }
    }
}

TEST(ImageInterchangeTest, HeadersThatCannotBeAreRefused) {
    const std::function<void(BITMAPINFOHEADER &)> damages[] = {
        [](auto &header) { header.biSize = 12; },
        [](auto &header) { header.biSize = 124; },
        [](auto &header) { header.biWidth = 0; },
        [](auto &header) { header.biWidth = -3; },
        [](auto &header) { header.biHeight = 0; },
        [](auto &header) { header.biHeight = -3; },
        [](auto &header) { header.biHeight = INT32_MIN; },
        [](auto &header) { header.biWidth = header.biHeight = INT32_MAX; },
        [](auto &header) { header.biPlanes = 2; },
        [](auto &header) { header.biCompression = 1; },
        [](auto &header) { header.biBitCount = 0; },
        [](auto &header) { header.biBitCount = 16; },
    };
    for (const int bitCount : {8, 24, 32}) {
        for (const auto &damage : damages) {
            PackedDib dib(3, 3, bitCount);
            damage(dib.header);
            EXPECT_FALSE(dib.Load()) << bitCount << ", case " << &damage - damages;
        }
    }
    EXPECT_EQ(CTavixImage::LoadImageA(static_cast<BITMAPINFOHEADER *>(nullptr)), nullptr);
    EXPECT_EQ(CTavixImage::LoadImageA(static_cast<void *>(nullptr)), nullptr);
}

} // namespace
