#include "image/image_object_tests.h"

namespace {

using namespace tavix_test;

INSTANTIATE_TYPED_TEST_SUITE_P(Colour, ImageObjectTest, CTavixImage24);

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

} // namespace
