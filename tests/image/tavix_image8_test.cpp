#include "image/image_object_tests.h"

namespace {

using namespace tavix_test;

INSTANTIATE_TYPED_TEST_SUITE_P(Grey, ImageObjectTest, CTavixImage8);

TEST(TavixImage8Test, FillSetsPaddingToo) {
    CTavixImage8 image(5, 3);
    image.Fill(200);
    EXPECT_EQ(BytesOf(image), Bytes(24, 200));
}

TEST(TavixImage8Test, RectangleIsFilledOutsideTheImage) {
    const unsigned char pixels[] = {1, 2, 3, 0, 4, 5, 6, 0};
    const CTavixImage8 image(3, 2, pixels);
    const std::unique_ptr<unsigned char[]> copy(image.GetImagePtr(3, 2, -1, 1, 9));
    EXPECT_EQ(Bytes(copy.get(), copy.get() + 16),
              (Bytes{9, 4, 5, 6, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}));
}

struct Picture {
    Bytes &bytes;
    int width, height;
};

/// Pastes pixel by pixel, in 64 bits; the buffers may be the same one.
void PasteLiterally(const Picture &target, const Picture &source, std::int64_t x, std::int64_t y) {
    for (int sy = 0; sy < source.height; ++sy)
        for (int sx = 0; sx < source.width; ++sx) {
            if (sx + x >= target.width || sy + y >= target.height)
                continue;
            const std::int64_t offset = PaddedRow(target.width, 1) * (sy + y) + sx + x;
            if (offset >= 0 && offset < static_cast<std::int64_t>(target.bytes.size()))
                target.bytes[static_cast<std::size_t>(offset)] =
                    source.bytes[static_cast<std::size_t>(PaddedRow(source.width, 1) * sy + sx)];
        }
}

TEST(TavixImage8Test, CopyPastesByLinearOffsetAlsoIntoItself) {
    std::mt19937 random(2);
    for (const auto &[width, height] : {std::pair{0, 3}, {1, 1}, {3, 2}, {5, 4}, {14, 3}, {6, 4}}) {
        const bool itself = width == 6;
        const auto other = RandomImage<CTavixImage8>(width, height, random);
        Bytes otherBytes = BytesOf(other);
        for (const int y : Coordinates(-5, 6))
            for (const int x : Coordinates(-30, 10)) {
                auto image = RandomImage<CTavixImage8>(6, 4, random);
                Bytes expected = BytesOf(image);
                PasteLiterally({expected, 6, 4}, {itself ? expected : otherBytes, width, height}, x,
                               y);
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
