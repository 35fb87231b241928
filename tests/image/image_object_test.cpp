#include "image/image_test.h"

#include <opencv2/core/core_c.h>

#include <algorithm>
#include <array>
#include <climits>
#include <memory>

namespace {

using namespace tavix_test;

/// These coordinates and some far off.
std::vector<int> Coordinates(int first, int last) {
    std::vector<int> values{INT_MIN, INT_MIN + 1, -1000000, 1000000, INT_MAX - 1, INT_MAX};
    for (int value = first; value <= last; ++value)
        values.push_back(value);
    return values;
}

/// Width, height, bit count, bytes and whether there is no buffer.
using Shape = std::array<int, 5>;

Shape ShapeOf(const CTavixImage &image) {
    EXPECT_EQ(image.IsEmpty(), image.GetImagePtr() ? 0 : 1);
    return {image.GetWidth(), image.GetHeight(), image.GetBitCount(), image.GetImageLen(),
            image.IsEmpty()};
}

template <typename Image>
class ImageObjectTest : public ImageTest<Image> {
protected:
    static constexpr Shape EMPTY{0, 0, 8 * ImageTest<Image>::PIXEL_BYTES, 0, 1};
};
TYPED_TEST_SUITE(ImageObjectTest, ImageTypes);

TYPED_TEST(ImageObjectTest, CreateGivesClearedPaddedRowsOrNothing) {
    const struct {
        int width, height, length8, length24;
    } cases[] = {{3, 2, 8, 24},        {1, 1, 4, 4},         {4, 3, 12, 36},
                 {33, 1, 36, 100},     {0, 7, 0, 0},         {-1, 5, -1, -1},
                 {5, -1, -1, -1},      {-5, -5, -1, -1},     {65536, 65536, -1, -1},
                 {1 << 30, 4, -1, -1}, {4, 1 << 29, -1, -1}, {INT_MAX, INT_MAX, -1, -1}};
    for (const auto &[width, height, length8, length24] : cases) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        const int length = this->PIXEL_BYTES == 1 ? length8 : length24;
        const bool isMade = length >= 0;
        const Shape shape{width, height, 8 * this->PIXEL_BYTES, length, 0};
        TypeParam image = this->Random(9, 9), taken = image;
        EXPECT_EQ(image.Create(width, height), isMade ? 1 : 0);
        EXPECT_EQ(ShapeOf(image), isMade ? shape : this->EMPTY);
        EXPECT_EQ(BytesOf(image), Bytes(static_cast<std::size_t>(std::max(length, 0)), 0));
        taken.SetImagePtr(width, height, taken.GetImagePtr());
        EXPECT_EQ(ShapeOf(taken), isMade ? shape : this->EMPTY);
    }
}

TYPED_TEST(ImageObjectTest, ReleaseForgetsTheBitCount) {
    auto image = this->Random(5, 3);
    const auto other = image;
    image.Release();
    EXPECT_EQ(ShapeOf(image), (Shape{0, 0, 0, 0, 1}));
    EXPECT_EQ(image.GetImagePtr(0, 0, 1, 1), nullptr);
    EXPECT_EQ(image.Create(10, 10), 1);
    EXPECT_EQ(ShapeOf(image), (Shape{10, 10, 0, 0, 0}));
    EXPECT_EQ(ShapeOf(TypeParam(image)), this->EMPTY);
    image.Fill(0xFF);
    image.SetPixel(0, 0, 1);
    EXPECT_EQ(image.GetIplImage(), nullptr);
    image = other;
    EXPECT_EQ(ShapeOf(image), (Shape{5, 3, 0, 0, 0}));
}

TYPED_TEST(ImageObjectTest, PixelsAreAddressedByOffsetAndWrittenWhole) {
    using Pixel = decltype(TypeParam().GetPixel(0, 0));
    const int size = this->PIXEL_BYTES;
    const auto coordinates = Coordinates(-20, 30);
    auto image = this->Random(5, 3);
    Bytes expected = BytesOf(image);
    const std::int64_t stride = PaddedRow(5, size);
    unsigned colour = 0;
    for (const int y : coordinates)
        for (const int x : coordinates) {
            colour = (colour + 0x030507) & (size == 1 ? 0xFF : 0xFFFFFF);
            image.SetPixel(x, y, static_cast<Pixel>(colour));
            const std::int64_t offset = stride * y + std::int64_t{size} * x;
            const bool isInside = offset >= 0 && offset + size <= image.GetImageLen();
            for (int i = 0; isInside && i < size; ++i)
                expected[static_cast<std::size_t>(offset + i)] =
                    static_cast<unsigned char>(colour >> 8 * (size - 1 - i));
            ASSERT_EQ(BytesOf(image), expected) << x << ',' << y;
            if (isInside || size == 1) {
                ASSERT_EQ(image.GetPixel(x, y), isInside ? colour : 0) << x << ',' << y;
            }
        }
    TypeParam().SetPixel(0, 0, 1);
}

TYPED_TEST(ImageObjectTest, RectangleIsCopiedWithZeroOutside) {
    this->ForRandomImages(400, 9, [this](const TypeParam &image) {
        const int x1 = this->Within(-4, 12), y1 = this->Within(-4, 12);
        const int x2 = this->Within(-4, 12), y2 = this->Within(-4, 12);
        const cv::Rect rect(std::min(x1, x2), std::min(y1, y2), std::abs(x2 - x1) + 1,
                            std::abs(y2 - y1) + 1);
        cv::Mat surrounded, expected;
        cv::copyMakeBorder(PixelsOf(image), surrounded, 13, 13, 13, 13, cv::BORDER_CONSTANT);
        const cv::Mat cut = surrounded(rect + cv::Point(13, 13)).clone().reshape(1);
        cv::copyMakeBorder(cut, expected, 0, 0, 0,
                           PaddedRow(rect.width, this->PIXEL_BYTES) - cut.cols,
                           cv::BORDER_CONSTANT);
        const std::unique_ptr<unsigned char[]> copy(image.GetImagePtr(x1, y1, x2, y2));
        ASSERT_TRUE(copy && std::equal(expected.datastart, expected.dataend, copy.get())) << rect;
    });
    EXPECT_EQ(TypeParam(3, 3).GetImagePtr(INT_MIN, INT_MIN, INT_MAX, INT_MAX), nullptr);
    EXPECT_EQ(TypeParam(3, 3).GetImagePtr(0, 0, INT_MAX, 0), nullptr);
}

TYPED_TEST(ImageObjectTest, TakesBytesAlsoOfItself) {
    auto image = this->Random(7, 5);
    const Bytes before = BytesOf(image);
    image.SetImagePtr(3, 2, image.GetImagePtr() + 5);
    EXPECT_EQ(ShapeOf(image), (Shape{3, 2, 8 * this->PIXEL_BYTES, 8 * this->PIXEL_BYTES, 0}));
    EXPECT_EQ(BytesOf(image), Bytes(&before[5], &before[5] + image.GetImageLen()));
    EXPECT_EQ(ShapeOf(TypeParam(3, 2, nullptr)), this->EMPTY);
}

TYPED_TEST(ImageObjectTest, TakesIplImagesOfItsChannelCountByteForByte) {
    for (const int channels : {1, 2, 3, 4})
        for (const int step : {5 * channels, PaddedRow(5, channels)}) {
            SCOPED_TRACE(testing::Message() << channels << " channels, step " << step);
            Bytes bytes = RandomBytes(3 * step, this->m_random);
            IplImage structure;
            cvInitImageHeader(&structure, cvSize(5, 3), IPL_DEPTH_8U, channels);
            structure.imageData = reinterpret_cast<char *>(bytes.data());
            structure.imageSize = 3 * step;
            auto image = this->Random(2, 2);
            const Bytes before = BytesOf(image);
            image.SetImagePtr(&structure);
            image.SetImagePtr(static_cast<void *>(nullptr));
            Bytes expected = bytes;
            expected.resize(static_cast<std::size_t>(3 * PaddedRow(5, channels)), 0);
            const bool isTaken = channels == this->PIXEL_BYTES;
            EXPECT_EQ(BytesOf(image), isTaken ? expected : before);
            EXPECT_EQ(image.GetWidth(), isTaken ? 5 : 2);
            EXPECT_EQ(TypeParam(static_cast<void *>(&structure)).IsEmpty(), isTaken ? 0 : 1);
            const std::unique_ptr<CTavixImage> loaded(
                CTavixImage::LoadImageA(static_cast<void *>(&structure)));
            EXPECT_EQ(loaded != nullptr, channels % 2 == 1);
            EXPECT_TRUE(!isTaken || (loaded && BytesOf(*loaded) == expected));
        }
}

TYPED_TEST(ImageObjectTest, CopiesAreDeepAndOfAnEmptyImageABufferWithoutBytes) {
    for (const TypeParam &source : {this->Random(7, 5), TypeParam()}) {
        const Bytes bytes = BytesOf(source);
        const Shape shape{source.GetWidth(), source.GetHeight(), source.GetBitCount(),
                          source.GetImageLen(), 0};
        TypeParam assigned(2, 2), copied(source);
        assigned = source;
        const std::unique_ptr<CTavixImage> cloned(source.Clone());
        ASSERT_NE(dynamic_cast<TypeParam *>(cloned.get()), nullptr);
        for (CTavixImage *copy :
             std::initializer_list<CTavixImage *>{&assigned, &copied, cloned.get()}) {
            EXPECT_EQ(ShapeOf(*copy), shape);
            EXPECT_EQ(BytesOf(*copy), bytes);
            std::fill_n(copy->GetImagePtr(), copy->GetImageLen(), static_cast<unsigned char>(0));
        }
        EXPECT_EQ(BytesOf(source), bytes);
    }
}

TEST(TavixImage24Test, PixelsAreStoredBlueGreenRed) {
    CTavixImage24 image(3, 2);
    image.SetPixel(2, 0, 0x000000FF);
    image.SetPixel(1, 1, 0x00112233);
    image.SetPixel(0, 1, 10, 20, 30);
    EXPECT_EQ(BytesOf(image), (Bytes{0,  0,  0,  0,    0,    0,    0, 0, 0xFF, 0, 0, 0, //
                                     30, 20, 10, 0x11, 0x22, 0x33, 0, 0, 0,    0, 0, 0}));
    EXPECT_EQ(image.GetPixel(0, 1), 0x001E140AUL);
}

TEST(TavixImage24Test, FillAndFillToLeavePaddingAlone) {
    std::mt19937 random(2);
    for (const std::size_t width : {1, 2, 3, 4, 37}) {
        auto image = RandomImage<CTavixImage24>(static_cast<int>(width), 29, random, 1);
        Bytes filled = BytesOf(image), replaced = filled;
        const std::size_t stride = filled.size() / 29;
        for (std::size_t y = 0; y < 29; ++y)
            for (std::size_t i = y * stride; i < y * stride + 3 * width; i += 3) {
                if (replaced[i] == 1 && replaced[i + 1] == 0 && replaced[i + 2] == 1)
                    std::copy_n(Bytes{7, 8, 9}.data(), 3, &replaced[i]);
                std::copy_n(Bytes{0xAB, 0xCD, 0xEF}.data(), 3, &filled[i]);
            }
        image.FillTo(0x00010001, 0x00070809);
        EXPECT_EQ(BytesOf(image), replaced) << width;
        image.Fill(0x00ABCDEF);
        EXPECT_EQ(BytesOf(image), filled) << width;
    }
}

TEST(TavixImage8Test, FillsWhatLiesOutsideAndThePadding) {
    const unsigned char pixels[] = {1, 2, 3, 0, 4, 5, 6, 0};
    CTavixImage8 image(3, 2, pixels);
    const std::unique_ptr<unsigned char[]> copy(image.GetImagePtr(3, 2, -1, 1, 9));
    EXPECT_EQ(Bytes(copy.get(), copy.get() + 16),
              (Bytes{9, 4, 5, 6, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}));
    image.CropImage(3, 2, 1, 0, 9);
    EXPECT_EQ(BytesOf(image), (Bytes{2, 3, 9, 9, 5, 6, 9, 9, 9, 9, 9, 9}));
    image.Fill(200);
    EXPECT_EQ(BytesOf(image), Bytes(12, 200));
}

TEST(TavixImage8Test, CopyPastesByLinearOffsetAlsoIntoItself) {
    std::mt19937 random(2);
    for (const auto &[width, height] : {std::pair{0, 3}, {1, 1}, {3, 2}, {5, 4}, {14, 3}, {6, 4}}) {
        const bool itself = width == 6;
        const auto other = RandomImage<CTavixImage8>(width, height, random);
        const Bytes otherBytes = BytesOf(other);
        for (const int y : Coordinates(-5, 6))
            for (const int x : Coordinates(-30, 10)) {
                auto image = RandomImage<CTavixImage8>(6, 4, random);
                Bytes expected = BytesOf(image);
                // Pixel by pixel, in 64 bits; the buffers may be the same one.
                const Bytes &source = itself ? expected : otherBytes;
                for (std::int64_t sy = 0; sy < height; ++sy)
                    for (std::int64_t sx = 0; sx < width; ++sx) {
                        const std::int64_t offset = 8 * (sy + y) + sx + x;
                        if (sx + x < 6 && sy + y < 4 && offset >= 0 && offset < 32)
                            expected[static_cast<std::size_t>(offset)] =
                                source[static_cast<std::size_t>(PaddedRow(width, 1) * sy + sx)];
                    }
                image.Copy(x, y, itself ? &image : &other);
                ASSERT_EQ(BytesOf(image), expected)
                    << width << " x " << height << " at " << x << ',' << y;
            }
    }
    CTavixImage8 image;
    image.Copy(0, 0, nullptr);
    image.Copy(0, 0, CTavixImage8(1, 1));
    EXPECT_EQ(image.IsEmpty(), 1);
}

} // namespace
