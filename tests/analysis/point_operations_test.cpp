#include "image/image_samples.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>

namespace {

using namespace tavix_test;
using Counts = std::array<long, 256>;
using Levels = std::function<double(int)>;

/// Random images of odd widths, of which some have few levels.
CTavixImage8 Sample(int round, std::mt19937 &random) {
    constexpr int highest[] = {255, 255, 1, 0, 60, 2};
    auto image =
        RandomImage<CTavixImage8>(1 + static_cast<int>(random() % 90),
                                  1 + static_cast<int>(random() % 20), random, highest[round % 6]);
    if (round % 4 == 1) // Some levels do not occur.
        image.Marking(0, 90, 40);
    return image;
}

Counts CountsOf(const CTavixImage8 &image) {
    Counts counts{};
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            ++counts[image.GetPixel(x, y)];
    return counts;
}

/// The image with every pixel (every byte, where the padding takes part) replaced.
Bytes Mapped(const CTavixImage8 &image, bool withPadding, const Levels &level) {
    Bytes bytes = BytesOf(image);
    const int stride = PaddedRow(image.GetWidth(), 1);
    for (int i = 0; i < image.GetImageLen(); ++i)
        if (withPadding || i % stride < image.GetWidth()) {
            auto &byte = bytes[static_cast<std::size_t>(i)];
            byte = static_cast<unsigned char>(std::clamp(level(byte), 0.0, 255.0));
        }
    return bytes;
}

/// First and last level of which the running count, from below or above, is enough.
std::pair<int, int> Range(const Counts &counts, const std::function<bool(double)> &isEnough) {
    double running = 0;
    int low = 0, high = 255;
    while (!isEnough(running += static_cast<double>(counts[static_cast<std::size_t>(low)])))
        ++low;
    running = 0;
    while (high > 0 &&
           !isEnough(running += static_cast<double>(counts[static_cast<std::size_t>(high)])))
        --high;
    return {low, high};
}

TEST(PointOperationsTest, LightAndGammaChangeEveryByte) {
    std::mt19937 random(1);
    const auto image = RandomImage<CTavixImage8>(37, 9, random);
    constexpr int lights[][2] = {{0, 0},   {255, 100}, {-255, -100}, {17, -33}, {-9, 71},
                                 {256, 0}, {0, 101},   {-256, 0},    {0, -101}};
    for (const auto &[b, c] : lights) {
        CTavixImage8 changed = image;
        changed.Light(b, c);
        const bool acts = std::abs(b) <= 255 && std::abs(c) <= 100;
        const auto level = [acts, shift = b + 128.5, k = (c + 100) / 100.0](int p) {
            return acts ? std::trunc((p - 128) * k + shift) : p;
        };
        EXPECT_EQ(BytesOf(changed), Mapped(image, true, level)) << b << ", " << c;
    }
    for (const double g : {1.0, 2.2, 0.45, 1e-4, 1e9, 0.0, -1.0, double{NAN}}) {
        CTavixImage8 changed = image;
        changed.Gamma(g);
        const auto level = [g](int p) {
            const double value = std::pow(p, 1 / g) / (std::pow(255, 1 / g) / 255);
            return !(g > 0) ? p : std::isnan(value) ? 0 : std::trunc(value);
        };
        EXPECT_EQ(BytesOf(changed), Mapped(image, true, level)) << g;
    }
}

TEST(PointOperationsTest, HistogramStretchesFollowTheirRules) {
    std::mt19937 random(2);
    for (int round = 0; round < 300; ++round) {
        const CTavixImage8 image = Sample(round, random);
        const Counts counts = CountsOf(image);
        const double pixels = image.GetWidth() * image.GetHeight();
        SCOPED_TRACE(round);
        const auto made = [&image](void (CTavixImage::*operation)()) {
            CTavixImage8 changed = image;
            (changed.*operation)();
            return changed;
        };
        const auto expectMapped = [&](void (CTavixImage::*operation)(), const Levels &level) {
            EXPECT_EQ(BytesOf(made(operation)), Mapped(image, false, level));
        };
        const auto above = [](double clip) { return [clip](double n) { return n > clip; }; };
        auto [low, high] = Range(counts, above(image.GetImageLen() / 100));
        if (low == high)
            std::tie(low, high) = Range(counts, above(0));
        expectMapped(&CTavixImage::HistoNormalize, [l = low, h = high](int p) {
            return l == h ? p : p < l ? 0 : p > h ? 255 : (p - l) * 254 / (h - l);
        });
        std::tie(low, high) = Range(counts, above(0));
        expectMapped(&CTavixImage::HistoStretch, [l = low, h = high](int p) {
            return l < h ? (255 * p - 255 * l) / (h - l) : p;
        });
        std::tie(low, high) = Range(counts, [pixels](double n) { return n / pixels * 100 >= 3.0; });
        expectMapped(&CTavixImage::AutoContrast, [l = low, h = high](int p) {
            const double stretched = std::nearbyint((p - l) * (255.0 / (h - l)));
            return l == h ? p : p < l ? 0 : p > h ? 255 : stretched;
        });
        int brightest = 255;
        while (brightest > 1 && counts[static_cast<std::size_t>(brightest)] == 0)
            --brightest;
        const double m = std::log(brightest);
        expectMapped(&CTavixImage::HistoLog, [m](int p) {
            return p == 0 || m == 0 ? 0 : std::nearbyint(std::log(p) * (255 / m));
        });
        expectMapped(&CTavixImage::HistoRoot,
                     [m](int p) { return m == 0 ? 0 : std::trunc(std::sqrt(p) * (128 / m)); });
        cv::Mat expected;
        cv::equalizeHist(PixelsOf(image), expected);
        EXPECT_TRUE(SamePixels(PixelsOf(made(&CTavixImage::HistoEqualize)), expected));
    }
}

TEST(PointOperationsTest, CountsLeavePaddingOutAndTheMeanTakesItIn) {
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        const CTavixImage8 image = Sample(round, random);
        const Counts counts = CountsOf(image);
        Counts histogram, none;
        image.GetHistogramData(ColorLevelGray, histogram.data());
        image.GetHistogramData(ColorLevelRed, none.data());
        EXPECT_EQ(histogram, counts);
        EXPECT_EQ(none, Counts{});
        EXPECT_EQ(image.GetGrayLevelCount(40), counts[40]);
        EXPECT_EQ(image.GetGrayLevelCountAsRange(40, 60),
                  std::accumulate(&counts[40], &counts[61], 0L));
        double sum = 0;
        for (const unsigned char byte : BytesOf(image))
            sum += byte;
        EXPECT_EQ(image.GetGrayLevelAverage(), sum / image.GetImageLen());
    }
    const unsigned char padded[] = {90, 90, 90, 0};
    EXPECT_EQ(CTavixImage8(3, 1, padded).GetGrayLevelAverage(), 67.5);
    EXPECT_EQ(CTavixImage8().GetGrayLevelAverage(), 0);
    EXPECT_EQ(CTavixImage8().GetGrayLevelCount(0), 0);
}

TEST(PointOperationsTest, ColourImagesChannelByChannel) {
    std::mt19937 random(4);
    const auto image = RandomImage<CTavixImage24>(53, 31, random, 200);
    cv::Mat planes[3];
    cv::split(PixelsOf(image), planes);
    for (int level = 0; level <= 4; ++level) {
        Counts histogram, expected{};
        image.GetHistogramData(static_cast<ColorLevel>(level), histogram.data());
        for (int y = 0; y < 31; ++y)
            for (int x = 0; x < 53; ++x) {
                const int b = planes[0].at<uchar>(y, x), g = planes[1].at<uchar>(y, x),
                          r = planes[2].at<uchar>(y, x);
                const int values[] = {(b + g + r) / 3, r, g, b};
                if (level < 4)
                    ++expected[static_cast<std::size_t>(values[level])];
            }
        EXPECT_EQ(histogram, expected) << level;
    }
    const struct {
        const char *name;
        std::function<void(CTavixImage &)> apply;
    } operations[] = {{"Light", [](auto &any) { any.Light(20, 30); }},
                      {"Gamma", [](auto &any) { any.Gamma(1.7); }},
                      {"AutoContrast", [](auto &any) { any.AutoContrast(); }},
                      {"OpenBox", [](auto &any) { any.OpenBox(); }}};
    for (const auto &[name, apply] : operations) {
        CTavixImage24 changed = image;
        apply(changed);
        for (int channel = 0; channel < 3; ++channel) {
            cv::Mat plane;
            cv::extractChannel(PixelsOf(changed), plane, channel);
            CTavixImage8 grey(53, 31);
            planes[channel].copyTo(cv::Mat(31, 53, CV_8U, grey.GetImagePtr(), 56));
            apply(grey);
            EXPECT_TRUE(SamePixels(plane, PixelsOf(grey))) << name << ", channel " << channel;
        }
    }
}

TEST(PointOperationsTest, InvertPassesOnTheErrorOfOpenCV) {
    CTavixImage8 grey(4, 4);
    CTavixImage24 colour(3, 3);
    EXPECT_THROW(grey.Invert(), cv::Exception);
    EXPECT_THROW(colour.Invert(), cv::Exception);
    EXPECT_NO_THROW(CTavixImage8().Invert());
}

} // namespace
