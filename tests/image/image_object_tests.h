/// Tests of what grey and colour images have in common, instantiated for each class in its own
/// file.
#pragma once

#include "image/image_samples.h"

#include <opencv2/core/core_c.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <type_traits>
#include <utility>

template <typename Image>
class ImageObjectTest : public testing::Test {
protected:
    static constexpr int PIXEL_BYTES = std::is_same_v<Image, CTavixImage8> ? 1 : 3;

    static void ExpectEmpty(const CTavixImage &image) {
        EXPECT_EQ(image.IsEmpty(), 1);
        EXPECT_EQ(image.GetImagePtr(), nullptr);
        EXPECT_EQ(image.GetWidth(), 0);
        EXPECT_EQ(image.GetHeight(), 0);
        EXPECT_EQ(image.GetImageLen(), 0);
    }

    std::mt19937 m_random{20};
};

TYPED_TEST_SUITE_P(ImageObjectTest);

TYPED_TEST_P(ImageObjectTest, CreateGivesClearedPaddedRows) {
    const struct {
        int width, height, length8, length24;
    } cases[] = {{3, 2, 8, 24},    {1, 1, 4, 4}, {4, 3, 12, 36}, {5, 3, 24, 48},
                 {33, 1, 36, 100}, {0, 7, 0, 0}, {7, 0, 0, 0}};
    TypeParam image;
    this->ExpectEmpty(image);
    for (const auto &[width, height, length8, length24] : cases) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        image = tavix_test::RandomImage<TypeParam>(9, 9, this->m_random);
        const int length = this->PIXEL_BYTES == 1 ? length8 : length24;
        ASSERT_EQ(image.Create(width, height), 1);
        for (const TypeParam &made : {image, TypeParam(width, height)}) {
            EXPECT_EQ(made.IsEmpty(), 0);
            EXPECT_EQ(made.GetWidth(), width);
            EXPECT_EQ(made.GetHeight(), height);
            EXPECT_EQ(made.GetBitCount(), 8 * this->PIXEL_BYTES);
            ASSERT_EQ(made.GetImageLen(), length);
            const tavix_test::Bytes bytes = tavix_test::BytesOf(made);
            EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 0), length);
        }
    }
}

TYPED_TEST_P(ImageObjectTest, RefusedSizesLeaveItEmpty) {
    const std::pair<int, int> sizes[] = {{-1, 5},        {5, -1},         {-5, -5},
                                         {INT_MIN, 1},   {1, INT_MIN},    {INT_MAX, INT_MAX},
                                         {65536, 65536}, {0x40000000, 4}, {INT_MAX, 1},
                                         {4, 0x20000000}};
    for (const auto &[width, height] : sizes) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        TypeParam image(3, 2);
        EXPECT_EQ(image.Create(width, height), 0);
        this->ExpectEmpty(image);
        this->ExpectEmpty(TypeParam(width, height));
        image.Create(3, 2);
        image.SetImagePtr(width, height, image.GetImagePtr());
        this->ExpectEmpty(image);
        EXPECT_EQ(image.Create(3, 2), 1);
        EXPECT_EQ(image.GetImageLen(), 8 * this->PIXEL_BYTES);
    }
}

TYPED_TEST_P(ImageObjectTest, ReleaseForgetsTheBitCount) {
    auto image = tavix_test::RandomImage<TypeParam>(5, 3, this->m_random);
    const auto other = image;
    image.Release();
    this->ExpectEmpty(image);
    EXPECT_EQ(image.GetBitCount(), 0);
    EXPECT_EQ(image.GetImagePtr(0, 0, 1, 1), nullptr);

    const auto expectNoBytes = [&image](int width, int height) {
        EXPECT_EQ(image.IsEmpty(), 0);
        EXPECT_EQ(image.GetBitCount(), 0);
        EXPECT_EQ(image.GetImageLen(), 0);
        EXPECT_EQ(image.GetWidth(), width);
        EXPECT_EQ(image.GetHeight(), height);
    };
    EXPECT_EQ(image.Create(10, 10), 1);
    expectNoBytes(10, 10);
    image.Fill(0xFF);
    image.SetPixel(0, 0, 1);
    const std::unique_ptr<unsigned char[]> rect(image.GetImagePtr(0, 0, 3, 3));
    EXPECT_EQ(image.GetIplImage(), nullptr);
    image = other;
    expectNoBytes(5, 3);
}

TYPED_TEST_P(ImageObjectTest, RectangleIsCopiedWithZeroOutside) {
    std::uniform_int_distribution<int> size(1, 9);
    std::uniform_int_distribution<int> corner(-4, 12);
    for (int round = 0; round < 400; ++round) {
        const auto image = tavix_test::RandomImage<TypeParam>(size(this->m_random),
                                                              size(this->m_random), this->m_random);
        const int x1 = corner(this->m_random), y1 = corner(this->m_random);
        const int x2 = corner(this->m_random), y2 = corner(this->m_random);
        const int left = std::min(x1, x2), top = std::min(y1, y2);
        const int right = std::max(x1, x2), bottom = std::max(y1, y2);
        const int pixel = this->PIXEL_BYTES;
        const int stride = tavix_test::PaddedRow(right - left + 1, pixel);
        const int sourceStride = tavix_test::PaddedRow(image.GetWidth(), pixel);
        tavix_test::Bytes expected(static_cast<std::size_t>(stride * (bottom - top + 1)), 0);
        for (int y = top; y <= bottom; ++y)
            for (int x = left; x <= right; ++x)
                if (0 <= x && x < image.GetWidth() && 0 <= y && y < image.GetHeight())
                    std::copy_n(image.GetImagePtr() + y * sourceStride + x * pixel, pixel,
                                &expected[static_cast<std::size_t>((y - top) * stride +
                                                                   (x - left) * pixel)]);
        const std::unique_ptr<unsigned char[]> copy(image.GetImagePtr(x1, y1, x2, y2));
        ASSERT_TRUE(copy);
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), copy.get()))
            << x1 << ',' << y1 << ' ' << x2 << ',' << y2 << " of " << image.GetWidth() << " x "
            << image.GetHeight();
    }
    EXPECT_EQ(TypeParam(3, 3).GetImagePtr(INT_MIN, INT_MIN, INT_MAX, INT_MAX), nullptr);
    EXPECT_EQ(TypeParam(3, 3).GetImagePtr(0, 0, INT_MAX, 0), nullptr);
    EXPECT_EQ(TypeParam().GetImagePtr(0, 0, 1, 1), nullptr);
}

TYPED_TEST_P(ImageObjectTest, TakesBytes) {
    auto image = tavix_test::RandomImage<TypeParam>(7, 5, this->m_random);
    const tavix_test::Bytes before = tavix_test::BytesOf(image);
    image.SetImagePtr(7, 5, image.GetImagePtr());
    EXPECT_EQ(tavix_test::BytesOf(image), before);
    image.SetImagePtr(3, 2, image.GetImagePtr() + 5);
    ASSERT_EQ(image.GetImageLen(), 8 * this->PIXEL_BYTES);
    EXPECT_TRUE(std::equal(before.begin() + 5, before.begin() + 5 + image.GetImageLen(),
                           image.GetImagePtr()));
    const unsigned char *none = nullptr;
    image.SetImagePtr(3, 2, none);
    this->ExpectEmpty(image);
    this->ExpectEmpty(TypeParam(3, 2, none));
}

TYPED_TEST_P(ImageObjectTest, TakesIplImagesOfItsChannelCount) {
    for (const int channels : {1, 2, 3, 4}) {
        SCOPED_TRACE(channels);
        IplImage *structure = cvCreateImage(cvSize(5, 3), IPL_DEPTH_8U, channels);
        const tavix_test::Bytes bytes =
            tavix_test::RandomBytes(structure->imageSize, this->m_random);
        std::copy(bytes.begin(), bytes.end(), structure->imageData);
        auto image = tavix_test::RandomImage<TypeParam>(2, 2, this->m_random);
        const tavix_test::Bytes before = tavix_test::BytesOf(image);
        image.SetImagePtr(structure);
        const TypeParam made(static_cast<void *>(structure));
        cvReleaseImage(&structure);
        if (channels != this->PIXEL_BYTES) {
            EXPECT_EQ(tavix_test::BytesOf(image), before);
            this->ExpectEmpty(made);
            continue;
        }
        for (const TypeParam *taken : {&std::as_const(image), &made}) {
            EXPECT_EQ(taken->GetWidth(), 5);
            EXPECT_EQ(taken->GetHeight(), 3);
            EXPECT_EQ(tavix_test::BytesOf(*taken), bytes);
        }
        image.SetImagePtr(static_cast<void *>(nullptr));
        EXPECT_EQ(tavix_test::BytesOf(image), bytes);
    }
}

TYPED_TEST_P(ImageObjectTest, IplImageWithShortRowsIsTakenByteForByte) {
    tavix_test::Bytes bytes = tavix_test::RandomBytes(5 * 3 * this->PIXEL_BYTES, this->m_random);
    IplImage structure;
    cvInitImageHeader(&structure, cvSize(5, 3), IPL_DEPTH_8U, this->PIXEL_BYTES);
    structure.imageData = reinterpret_cast<char *>(bytes.data());
    structure.widthStep = 5 * this->PIXEL_BYTES;
    structure.imageSize = static_cast<int>(bytes.size());
    const TypeParam image(static_cast<void *>(&structure));
    bytes.resize(static_cast<std::size_t>(tavix_test::PaddedRow(5, this->PIXEL_BYTES) * 3), 0);
    EXPECT_EQ(tavix_test::BytesOf(image), bytes);
}

TYPED_TEST_P(ImageObjectTest, CopiesAreDeep) {
    const auto source = tavix_test::RandomImage<TypeParam>(7, 5, this->m_random);
    const tavix_test::Bytes bytes = tavix_test::BytesOf(source);
    TypeParam assigned(2, 2);
    EXPECT_EQ(&(assigned = source), &assigned);
    const TypeParam &itself = assigned;
    assigned = itself;
    TypeParam copied(source);
    const std::unique_ptr<CTavixImage> cloned(source.Clone());
    ASSERT_NE(dynamic_cast<TypeParam *>(cloned.get()), nullptr);
    for (CTavixImage *copy : {static_cast<CTavixImage *>(&assigned),
                              static_cast<CTavixImage *>(&copied), cloned.get()}) {
        EXPECT_EQ(copy->GetWidth(), 7);
        EXPECT_EQ(copy->GetHeight(), 5);
        EXPECT_EQ(copy->GetBitCount(), 8 * this->PIXEL_BYTES);
        EXPECT_EQ(tavix_test::BytesOf(*copy), bytes);
        std::fill_n(copy->GetImagePtr(), copy->GetImageLen(), static_cast<unsigned char>(0));
    }
    EXPECT_EQ(tavix_test::BytesOf(source), bytes);
}

TYPED_TEST_P(ImageObjectTest, CopyOfAnEmptyImageHasABufferWithoutBytes) {
    const TypeParam empty;
    TypeParam assigned(4, 4);
    assigned = empty;
    const std::unique_ptr<CTavixImage> cloned(empty.Clone());
    for (const CTavixImage *copy : {static_cast<const CTavixImage *>(&assigned),
                                    static_cast<const CTavixImage *>(cloned.get())}) {
        EXPECT_NE(copy->GetImagePtr(), nullptr);
        EXPECT_EQ(copy->IsEmpty(), 0);
        EXPECT_EQ(copy->GetImageLen(), 0);
        EXPECT_EQ(copy->GetWidth(), 0);
        EXPECT_EQ(copy->GetBitCount(), 8 * this->PIXEL_BYTES);
    }
}

REGISTER_TYPED_TEST_SUITE_P(ImageObjectTest, CreateGivesClearedPaddedRows, RefusedSizesLeaveItEmpty,
                            ReleaseForgetsTheBitCount, RectangleIsCopiedWithZeroOutside, TakesBytes,
                            TakesIplImagesOfItsChannelCount,
                            IplImageWithShortRowsIsTakenByteForByte, CopiesAreDeep,
                            CopyOfAnEmptyImageHasABufferWithoutBytes);
