#include "image/image_samples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace tavix_test;

TEST(ColourBalanceTest, GainsChangeOneChannelAndLeavePadding) {
    std::mt19937 random(9);
    const auto image = RandomImage<CTavixImage24>(7, 20, random);
    for (const double gain : {0.0, 0.5, 1.7, 300.0, -1.0, double{NAN}, double{INFINITY}}) {
        for (int channel = 0; channel < 3; ++channel) {
            CTavixImage24 changed = image;
            const std::function<void()> calls[] = {[&] { changed.SetBlueGain(gain); },
                                                   [&] { changed.SetGreenGain(gain); },
                                                   [&] { changed.SetRedGain(gain); }};
            calls[channel]();
            Bytes expected = BytesOf(image);
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < 7 && gain >= 0 && std::isfinite(gain); ++x) {
                    auto &level = expected[static_cast<std::size_t>(y * 24 + 3 * x + channel)];
                    level =
                        static_cast<unsigned char>(std::min(255.0, std::nearbyint(level * gain)));
                }
            EXPECT_EQ(BytesOf(changed), expected) << gain << ", channel " << channel;
        }
    }
}

TEST(ColourBalanceTest, WhiteBalanceGivesAllChannelsTheSameMean) {
    CTavixImage24 image(2, 1);
    image.SetPixel(0, 0, RGB(40, 100, 20));
    image.SetPixel(1, 0, RGB(80, 140, 40));
    image.WhiteBalance(); // Means 60, 120, 30; all become 70.
    EXPECT_EQ(image.GetPixel(0, 0), RGB(47, 58, 47));
    EXPECT_EQ(image.GetPixel(1, 0), RGB(93, 82, 93));
    CTavixImage24 black(3, 3), empty;
    black.WhiteBalance();
    empty.WhiteBalance();
    EXPECT_EQ(BytesOf(black), BytesOf(CTavixImage24(3, 3)));
}

TEST(ColourBalanceTest, OneColourIsTakenOut) {
    const struct {
        ColorLevel level;
        COLORREF left;
    } cases[] = {{ColorLevelRed, RGB(0, 2, 3)},
                 {ColorLevelGreen, RGB(1, 0, 3)},
                 {ColorLevelBlue, RGB(1, 2, 0)},
                 {ColorLevelGray, RGB(1, 2, 3)}};
    for (const auto &[level, left] : cases) {
        CTavixImage24 image(1, 1);
        image.Fill(RGB(1, 2, 3));
        image.AbandonColorCell(level);
        EXPECT_EQ(image.GetPixel(0, 0), left);
    }
}

} // namespace
