#include "TAVIX20/display/picture_kernels.h"
#include "image/image_samples.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <hwy/targets.h>

#include <array>
#include <functional>

namespace {

using namespace tavix_test;
using Words = std::vector<std::uint16_t>;
using Pixels = std::vector<std::uint32_t>;

/// Runs each test once for every instruction set that this machine has.
class PictureKernelsTest : public testing::TestWithParam<std::int64_t> {
protected:
    PictureKernelsTest() { hwy::SetSupportedTargetsForTest(GetParam()); }
    ~PictureKernelsTest() override { hwy::SetSupportedTargetsForTest(0); }

    Bytes Random(std::size_t count, int highest = 255) {
        return RandomBytes(static_cast<int>(count), m_random, highest);
    }

    Pixels RandomPixels(std::size_t count) {
        Pixels pixels(count);
        for (std::uint32_t &pixel : pixels)
            pixel = m_random() % 3 == 0 ? 0 : static_cast<std::uint32_t>(m_random());
        return pixels;
    }

    std::mt19937 m_random{5};
};

INSTANTIATE_TEST_SUITE_P(Targets, PictureKernelsTest,
                         testing::ValuesIn(hwy::SupportedAndGeneratedTargets()),
                         [](const auto &param) {
                             return std::string(hwy::TargetName(param.param));
                         });

constexpr std::uint32_t BEHIND = 0x12345678; ///< Must stay behind every result.

TEST_P(PictureKernelsTest, ExpandAndChannels) {
    for (std::size_t count = 0; count <= 150; ++count) {
        const Bytes bytes = Random(4 * count + 1);
        Pixels grey(count + 1, BEHIND);
        Pixels colour = grey;
        tavix::ExpandGrey(bytes.data() + 1, count, grey.data());
        tavix::ExpandColour(bytes.data(), count, colour.data());
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(grey[i], qRgb(bytes[i + 1], bytes[i + 1], bytes[i + 1]));
            ASSERT_EQ(colour[i], qRgb(bytes[3 * i + 2], bytes[3 * i + 1], bytes[3 * i]));
        }
        ASSERT_EQ(grey[count], BEHIND);
        ASSERT_EQ(colour[count], BEHIND);
        for (const std::size_t channels : {1U, 3U, 4U}) {
            std::array<Bytes, 4> planes;
            std::array<std::uint8_t *, 4> rows{};
            for (std::size_t channel = 0; channel < channels; ++channel) {
                planes[channel].assign(count + 1, 77);
                rows[channel] = planes[channel].data();
            }
            tavix::SplitChannels(bytes.data(), count, static_cast<int>(channels), rows.data());
            for (std::size_t i = 0; i < count * channels; ++i)
                ASSERT_EQ(planes[i % channels][i / channels], bytes[i]);
            ASSERT_EQ(planes[channels - 1][count], 77);
            Bytes joined(bytes.size(), 0);
            joined[count * channels] = bytes[count * channels];
            tavix::JoinChannels(rows.data(), count, static_cast<int>(channels), joined.data());
            ASSERT_TRUE(std::equal(joined.begin(),
                                   joined.begin() + static_cast<long>(count * channels) + 1,
                                   bytes.begin()));
        }
    }
}

TEST_P(PictureKernelsTest, AlphaAsQtDoes) {
    for (std::size_t count = 0; count <= 70; ++count) {
        const Pixels straight = RandomPixels(count);
        Pixels multiplied(count + 1, BEHIND);
        tavix::Premultiply(straight.data(), count, multiplied.data());
        Pixels screen = RandomPixels(count + 1);
        for (std::uint32_t &pixel : screen)
            pixel |= 0xFF000000U;
        const Pixels old = screen;
        tavix::ComposeOver(multiplied.data(), count, screen.data());
        Pixels expected = old;
        QImage target(reinterpret_cast<uchar *>(expected.data()), static_cast<int>(count + 1), 1,
                      QImage::Format_RGB32);
        QPainter(&target).drawImage(0, 0,
                                    QImage(reinterpret_cast<const uchar *>(multiplied.data()),
                                           static_cast<int>(count), 1,
                                           QImage::Format_ARGB32_Premultiplied));
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(multiplied[i], qPremultiply(straight[i]));
            ASSERT_EQ(screen[i], expected[i]);
        }
        ASSERT_EQ(multiplied[count], BEHIND);
        ASSERT_EQ(screen[count], old[count]);
    }
}

TEST_P(PictureKernelsTest, SumsAndMeansOfBlocks) {
    for (std::size_t count = 0; count <= 150; ++count) {
        const Bytes bytes = Random(4 * count, count % 2 == 0 ? 255 : 1);
        const std::uint8_t *const lower = bytes.data() + 2 * count;
        Words sums(count + 1, 0xBEEF);
        tavix::SumBlocks(bytes.data(), lower, count, sums.data());
        Words wide(bytes.begin(), bytes.end());
        for (std::uint16_t &value : wide)
            value = static_cast<std::uint16_t>(value * 64); // As large as sums of 8 by 8 bytes.
        Words wideSums = sums;
        tavix::SumBlocks(wide.data(), wide.data() + 2 * count, count, wideSums.data());
        Bytes means(count + 1, 77);
        for (const int shift : {2, 8}) {
            tavix::MeanOfSums(shift == 2 ? sums.data() : wideSums.data(), count, shift,
                              means.data());
            for (std::size_t i = 0; i < count; ++i) {
                const int sum = bytes[2 * i] + bytes[2 * i + 1] + lower[2 * i] + lower[2 * i + 1];
                ASSERT_EQ(sums[i], sum);
                ASSERT_EQ(wideSums[i], 64 * sum);
                ASSERT_EQ(means[i], (sum + 2) / 4);
            }
        }
        ASSERT_EQ(sums[count], 0xBEEF);
        ASSERT_EQ(wideSums[count], 0xBEEF);
        ASSERT_EQ(means[count], 77);
    }
}

/// Weights that sum to the total.
std::vector<int> RandomWeights(std::size_t count, int total, std::mt19937 &random) {
    std::vector<int> weights(count);
    for (std::size_t i = 0; i + 1 < count; ++i) {
        weights[i] = static_cast<int>(random() % static_cast<unsigned>(total + 1));
        total -= weights[i];
    }
    weights.back() = total;
    return weights;
}

TEST_P(PictureKernelsTest, WeighsRowsAndColumns) {
    constexpr std::size_t width = 120;
    for (const std::size_t channels : {1U, 3U, 4U})
        for (std::size_t quads = 1; quads <= 3; ++quads) {
            std::vector<Bytes> bytes;
            std::vector<const std::uint8_t *> rows;
            for (std::size_t row = 0; row < 3; ++row)
                bytes.push_back(Random(width * channels, row == 0 ? 1 : 255));
            for (const Bytes &row : bytes)
                rows.push_back(row.data());
            const std::vector<int> rowWeights = RandomWeights(3, 256, m_random);
            const Words weights(rowWeights.begin(), rowWeights.end());
            std::vector<std::int16_t> sums(width * channels + 2, 99);
            tavix::WeighRows(rows.data(), weights.data(), 3, width * channels, sums.data());
            for (std::size_t i = 0; i < width * channels; ++i)
                ASSERT_EQ(sums[i] + 32768, bytes[0][i] * rowWeights[0] +
                                               bytes[1][i] * rowWeights[1] +
                                               bytes[2][i] * rowWeights[2]);
            ASSERT_EQ(sums[width * channels], 99);

            for (std::size_t count = 1; count <= 70; ++count) {
                std::vector<std::int32_t> first(count);
                std::vector<std::int16_t> weightsOf(4 * quads * count);
                Pixels expected(count);
                for (std::size_t i = 0; i < count; ++i) {
                    const std::vector<int> taps = RandomWeights(4 * quads, 16384, m_random);
                    first[i] = static_cast<std::int32_t>(m_random() % (width - 4 * quads + 1));
                    for (std::size_t tap = 0; tap < taps.size(); ++tap)
                        weightsOf[(tap / 4 * count + i) * 4 + tap % 4] =
                            static_cast<std::int16_t>(taps[tap]);
                    for (std::size_t channel = 0; channel < channels; ++channel) {
                        std::int64_t sum = 1 << 21;
                        for (std::size_t tap = 0; tap < taps.size(); ++tap) {
                            const std::size_t column = static_cast<std::size_t>(first[i]) + tap;
                            sum += std::int64_t{taps[tap]} *
                                   (sums[column * channels + channel] + 32768);
                        }
                        expected[i] |= static_cast<std::uint32_t>(sum >> 22) << 8 * channel;
                    }
                    expected[i] |= channels == 3 ? 0xFF000000U : 0;
                }
                const tavix::ColumnWeights columns{first.data(), weightsOf.data(), quads, count};
                if (channels == 1) {
                    Bytes grey(count + 1, 77);
                    tavix::WeighGreyColumns(sums.data(), columns, grey.data());
                    ASSERT_EQ(Pixels(grey.begin(), grey.end() - 1), expected);
                    ASSERT_EQ(grey[count], 77);
                } else {
                    Pixels screen(count + 1, BEHIND);
                    tavix::WeighColourColumns(sums.data(), columns, static_cast<int>(channels),
                                              screen.data());
                    expected.push_back(BEHIND);
                    ASSERT_EQ(screen, expected);
                }
            }
        }
}

} // namespace
