#include "image/image_object_tests.h"

namespace {

using tavix_test::Bytes;
using tavix_test::BytesOf;
using tavix_test::PaddedRow;
using tavix_test::RandomImage;

INSTANTIATE_TYPED_TEST_SUITE_P(Grey, ImageObjectTest, CTavixImage8);

constexpr int FAR_OFF[] = {INT_MIN, INT_MIN + 1, -1000000, 1000000, INT_MAX - 1, INT_MAX};

std::vector<int> Coordinates(int first, int last) {
    std::vector<int> values(std::begin(FAR_OFF), std::end(FAR_OFF));
    for (int value = first; value <= last; ++value)
        values.push_back(value);
    return values;
}

TEST(TavixImage8Test, PixelsAreAddressedByOffsetOnly) {
    std::mt19937 random(1);
    auto image = RandomImage<CTavixImage8>(6, 3, random);
    Bytes expected = BytesOf(image);
    unsigned char value = 0;
    for (const int y : Coordinates(-4, 5)) {
        for (const int x : Coordinates(-20, 30)) {
            const std::int64_t offset = std::int64_t{8} * y + x;
            const bool inBuffer = offset >= 0 && offset < 24;
            const auto index = static_cast<std::size_t>(offset);
            ASSERT_EQ(image.GetPixel(x, y), inBuffer ? expected[index] : 0) << x << ',' << y;
            image.SetPixel(x, y, ++value);
            if (inBuffer)
                expected[index] = value;
            ASSERT_EQ(BytesOf(image), expected) << x << ',' << y;
        }
    }
    CTavixImage8 empty;
    empty.SetPixel(0, 0, 1);
    EXPECT_EQ(empty.GetPixel(0, 0), 0);
}

TEST(TavixImage8Test, FillSetsPaddingToo) {
    CTavixImage8 image(5, 3);
    image.Fill(200);
    EXPECT_EQ(BytesOf(image), Bytes(24, 200));
    CTavixImage8 empty;
    empty.Fill(200);
    EXPECT_EQ(empty.IsEmpty(), 1);
}

TEST(TavixImage8Test, RectangleIsFilledOutsideTheImage) {
    const unsigned char pixels[] = {1, 2, 3, 0, 4, 5, 6, 0};
    const CTavixImage8 image(3, 2, pixels);
    const std::unique_ptr<unsigned char[]> copy(image.GetImagePtr(3, 2, -1, 1, 9));
    EXPECT_EQ(Bytes(copy.get(), copy.get() + 16),
              (Bytes{9, 4, 5, 6, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}));
    EXPECT_EQ(CTavixImage8().GetImagePtr(0, 0, 1, 1, 9), nullptr);
}

/// Pastes pixel by pixel, in 64 bits; the buffers may be the same one.
void PasteLiterally(Bytes &target, int width, int height, const Bytes &source, int sourceWidth,
                    int sourceHeight, std::int64_t x, std::int64_t y) {
    for (int sy = 0; sy < sourceHeight; ++sy)
        for (int sx = 0; sx < sourceWidth; ++sx) {
            if (sx + x >= width || sy + y >= height)
                continue;
            const std::int64_t offset = PaddedRow(width, 1) * (sy + y) + sx + x;
            if (offset >= 0 && offset < static_cast<std::int64_t>(target.size()))
                target[static_cast<std::size_t>(offset)] =
                    source[static_cast<std::size_t>(PaddedRow(sourceWidth, 1) * sy + sx)];
        }
}

TEST(TavixImage8Test, CopyPastesByLinearOffset) {
    std::mt19937 random(2);
    for (const auto &[width, height] : {std::pair{1, 1}, {3, 2}, {5, 4}, {14, 3}}) {
        const auto source = RandomImage<CTavixImage8>(width, height, random);
        for (const int y : Coordinates(-5, 6)) {
            for (const int x : Coordinates(-30, 10)) {
                auto image = RandomImage<CTavixImage8>(6, 4, random);
                Bytes expected = BytesOf(image);
                PasteLiterally(expected, 6, 4, BytesOf(source), width, height, x, y);
                image.Copy(x, y, source);
                ASSERT_EQ(BytesOf(image), expected)
                    << width << " x " << height << " at " << x << ',' << y;
            }
        }
    }
}

TEST(TavixImage8Test, CopyIntoItselfReadsWhatWasPasted) {
    std::mt19937 random(3);
    for (const int y : Coordinates(-6, 6)) {
        for (const int x : Coordinates(-20, 8)) {
            auto image = RandomImage<CTavixImage8>(7, 5, random);
            Bytes expected = BytesOf(image);
            PasteLiterally(expected, 7, 5, expected, 7, 5, x, y);
            image.Copy(x, y, &image);
            ASSERT_EQ(BytesOf(image), expected) << x << ',' << y;
        }
    }
}

TEST(TavixImage8Test, CopyOfNothingChangesNothing) {
    std::mt19937 random(4);
    auto image = RandomImage<CTavixImage8>(6, 4, random);
    const Bytes before = BytesOf(image);
    image.Copy(0, 0, nullptr);
    image.Copy(0, 0, CTavixImage8());
    image.Copy(0, 0, CTavixImage8(0, 3));
    EXPECT_EQ(BytesOf(image), before);
    CTavixImage8 empty;
    empty.Copy(0, 0, image);
    EXPECT_EQ(empty.IsEmpty(), 1);
}

} // namespace
