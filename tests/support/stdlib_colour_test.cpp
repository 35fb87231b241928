#include "TAVIX20/platform/types.h"
#include "TAVIX20/support/stdlib.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

int LargestDifference(COLORREF a, COLORREF b) {
    return std::max({std::abs(GetRValue(a) - GetRValue(b)), std::abs(GetGValue(a) - GetGValue(b)),
                     std::abs(GetBValue(a) - GetBValue(b))});
}

TEST(CStdlibTest, ColourCodes) {
    const struct {
        COLORREF colour, yuv, hls;
    } cases[] = {{RGB(255, 255, 255), RGB(255, 128, 128), RGB(0, 255, 0)},
                 {RGB(0, 0, 0), RGB(0, 128, 128), RGB(0, 0, 0)},
                 {RGB(255, 0, 0), RGB(76, 85, 255), RGB(255, 127, 255)}, // 128 + 179 * .713 = 255.6
                 {RGB(0, 255, 0), RGB(149, 43, 21), RGB(85, 127, 255)},
                 {RGB(0, 0, 255), RGB(29, 255, 107), RGB(170, 127, 255)},
                 {RGB(200, 100, 50), RGB(124, 86, 182), RGB(14, 125, 153)},    // hue 20, 150 / 250
                 {RGB(200, 50, 100), RGB(100, 128, 199), RGB(240, 125, 153)},  // hue 340
                 {RGB(250, 240, 200), RGB(238, 106, 136), RGB(34, 225, 212)}}; // hue 48, 50 / 60
    for (const auto &[colour, yuv, hls] : cases) {
        EXPECT_EQ(CStdlib::RGBtoYUV(colour), yuv) << std::hex << colour;
        EXPECT_EQ(CStdlib::RGBtoHLS(colour), hls) << std::hex << colour;
        EXPECT_EQ(CStdlib::RGBtoCMYK(colour) | CStdlib::CMYKtoRGB(colour), 0u);
    }
    // 100 + 1.403 * 100, 100 - 34.4 - 71.4, 100 + 177; 0 - 1.403 * 128, 0 + 44.0 + 91.4.
    EXPECT_EQ(CStdlib::YUVtoRGB(RGB(100, 228, 228)), RGB(240, 0, 255));
    EXPECT_EQ(CStdlib::YUVtoRGB(RGB(0, 0, 0)), RGB(0, 135, 0));
}

TEST(CStdlibTest, ColourCodesGoThereAndBack) {
    int hlsOff = 0;
    int yuvOff = 0;
    for (int red = 0; red < 256; red += 3)
        for (int green = 0; green < 256; green += 5)
            for (int blue = 0; blue < 256; blue += 5) {
                const COLORREF colour = RGB(red, green, blue);
                const COLORREF yuv = CStdlib::RGBtoYUV(colour);
                hlsOff = std::max(
                    hlsOff,
                    LargestDifference(colour, CStdlib::HLStoRGB(CStdlib::RGBtoHLS(colour))));
                const bool isCut = GetGValue(yuv) == 255 || GetBValue(yuv) == 255;
                if (!isCut)
                    yuvOff = std::max(yuvOff, LargestDifference(colour, CStdlib::YUVtoRGB(yuv)));
            }
    EXPECT_LE(hlsOff, 6);
    EXPECT_LE(yuvOff, 4);
    for (int level = 0; level < 256; ++level)
        EXPECT_EQ(CStdlib::HLStoRGB(CStdlib::RGBtoHLS(RGB(level, level, level))),
                  RGB(level, level, level));
    for (const COLORREF pure : {0xFFu, 0xFF00u, 0xFF0000u, 0xFFFFu, 0xFFFF00u, 0xFF00FFu, 1u})
        EXPECT_EQ(CStdlib::HLStoRGB(CStdlib::RGBtoHLS(pure)), pure) << std::hex << pure;
}

} // namespace
