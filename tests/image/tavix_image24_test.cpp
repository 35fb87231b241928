#include "image/image_object_tests.h"

namespace {

using tavix_test::Bytes;
using tavix_test::BytesOf;
using tavix_test::RandomImage;

INSTANTIATE_TYPED_TEST_SUITE_P(Colour, ImageObjectTest, CTavixImage24);

TEST(TavixImage24Test, PixelsAreStoredBlueGreenRed) {
    CTavixImage24 image(3, 2);
    image.SetPixel(2, 0, 0x000000FF);
    image.SetPixel(1, 1, 0x00112233);
    image.SetPixel(0, 1, 10, 20, 30);
    EXPECT_EQ(BytesOf(image), (Bytes{0,  0,  0,  0,    0,    0,    0, 0, 0xFF, 0, 0, 0, //
                                     30, 20, 10, 0x11, 0x22, 0x33, 0, 0, 0,    0, 0, 0}));
    EXPECT_EQ(image.GetPixel(2, 0), 0x000000FFUL);
    EXPECT_EQ(image.GetPixel(1, 1), 0x00112233UL);
    EXPECT_EQ(image.GetPixel(0, 1), 0x001E140AUL);
}

TEST(TavixImage24Test, WritesAreAddressedByOffsetAndDroppedWhole) {
    std::vector<int> coordinates{INT_MIN, -1000000, 1000000, INT_MAX};
    for (int value = -14; value <= 22; ++value)
        coordinates.push_back(value);
    std::mt19937 random(1);
    auto image = RandomImage<CTavixImage24>(5, 3, random);
    Bytes expected = BytesOf(image);
    ASSERT_EQ(expected.size(), 48U);
    unsigned char value = 0;
    for (const int y : coordinates) {
        for (const int x : coordinates) {
            value = static_cast<unsigned char>(value + 3);
            const std::int64_t offset = std::int64_t{16} * y + std::int64_t{3} * x;
            if (offset >= 0 && offset + 2 < 48)
                for (int i = 0; i < 3; ++i)
                    expected[static_cast<std::size_t>(offset + i)] =
                        static_cast<unsigned char>(value + i);
            const auto green = static_cast<unsigned char>(value + 1);
            const auto red = static_cast<unsigned char>(value + 2);
            if (y % 2 == 0)
                image.SetPixel(x, y, red, green, value);
            else
                image.SetPixel(x, y, RGB(red, green, value));
            ASSERT_EQ(BytesOf(image), expected) << x << ',' << y;
        }
    }
    CTavixImage24 empty;
    empty.SetPixel(0, 0, 1, 2, 3);
    EXPECT_EQ(empty.IsEmpty(), 1);
}

TEST(TavixImage24Test, FillLeavesPaddingAlone) {
    std::mt19937 random(2);
    for (const int width : {1, 2, 3, 4, 7}) {
        auto image = RandomImage<CTavixImage24>(width, 3, random);
        Bytes expected = BytesOf(image);
        const std::size_t stride = expected.size() / 3;
        for (std::size_t y = 0; y < 3; ++y)
            for (std::size_t i = 0; i < 3 * static_cast<std::size_t>(width); ++i)
                expected[y * stride + i] = Bytes{0xAB, 0xCD, 0xEF}[i % 3];
        image.Fill(0x00ABCDEF);
        EXPECT_EQ(BytesOf(image), expected) << width;
    }
    CTavixImage24 empty;
    empty.Fill(1);
    EXPECT_EQ(empty.IsEmpty(), 1);
}

TEST(TavixImage24Test, FillToReplacesExactMatchesOnly) {
    std::mt19937 random(3);
    auto image = RandomImage<CTavixImage24>(37, 29, random, 1);
    Bytes expected = BytesOf(image);
    int replaced = 0;
    for (std::size_t y = 0; y < 29; ++y)
        for (std::size_t x = 0; x < 37; ++x) {
            unsigned char *pixel = &expected[y * 112 + 3 * x];
            if (pixel[0] == 1 && pixel[1] == 0 && pixel[2] == 1) {
                std::copy_n(Bytes{7, 8, 9}.begin(), 3, pixel);
                ++replaced;
            }
        }
    ASSERT_GT(replaced, 50);
    image.FillTo(0x00010001, 0x00070809);
    EXPECT_EQ(BytesOf(image), expected);
}

} // namespace
