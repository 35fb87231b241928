// Every level is made of exact sums, never of rounded means, so that each of its pixels is the
// rounded mean of its block. The sums of two rows make a row of level 1; as soon as two of those
// are there, they make one of level 2, and so on: nothing but the picture and the levels leaves the
// cache. Sums of 16 by 16 bytes just fit 16 bits; above that few pixels are left, and 32 bits do.

#include "TAVIX20/display/picture_pyramid.h"

#include "TAVIX20/display/picture_kernels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tavix {

namespace {

constexpr int HIGHEST_LEVEL = 12; ///< 2^12 by 2^12 bytes of 255 sum to less than 2^32.
constexpr int HIGHEST_WORD_LEVEL = 4;
constexpr std::size_t MOST_CHANNELS = 4;

/// Two neighbouring rows of sums of one level; of no use are the words or the long ones.
struct SumRows {
    std::vector<std::uint16_t> words[2];
    std::vector<std::uint32_t> longs[2];
};

/// Sums of blocks of two by two; at an odd width the last one has a single column.
template <typename From, typename To>
void SumPlainly(const From *upper, const From *lower, std::size_t width, To *sums) {
    for (std::size_t x = 0; x < width; x += 2) {
        sums[x / 2] = static_cast<To>(To{upper[x]} + To{lower[x]});
        if (x + 1 < width)
            sums[x / 2] = static_cast<To>(sums[x / 2] + upper[x + 1] + lower[x + 1]);
    }
}

template <typename From>
void SumToWords(const From *upper, const From *lower, std::size_t width, std::uint16_t *sums) {
    SumBlocks(upper, lower, width / 2, sums);
    if (width % 2 != 0)
        sums[width / 2] = static_cast<std::uint16_t>(upper[width - 1] + lower[width - 1]);
}

template <typename Sum>
std::uint8_t RoundedMean(Sum sum, std::size_t count) {
    return static_cast<std::uint8_t>((sum + count / 2) / count);
}

} // namespace

class PicturePyramid::Builder {
public:
    Builder(const PixelRows &picture, const std::vector<Size> &sizes,
            std::vector<std::unique_ptr<std::uint8_t[]>> &levels)
        : m_picture(picture),
          m_channels(static_cast<std::size_t>(picture.Channels())),
          m_width(static_cast<std::size_t>(picture.width)),
          m_sizes(sizes),
          m_levels(levels),
          m_nothing(m_width),
          m_sums(sizes.size() * m_channels) {
        for (std::size_t level = 1; level <= m_sizes.size(); ++level)
            for (std::size_t channel = 0; channel < m_channels; ++channel)
                for (int slot : {0, 1}) {
                    if (level <= HIGHEST_WORD_LEVEL)
                        SumsOf(level, channel).words[slot].resize(WidthOf(level));
                    else
                        SumsOf(level, channel).longs[slot].resize(WidthOf(level));
                }
        if (m_channels == 1)
            return;
        for (auto &row : m_planes)
            for (std::size_t channel = 0; channel < m_channels; ++channel)
                row[channel].resize(m_width);
        for (std::size_t channel = 0; channel < m_channels; ++channel)
            m_means[channel].resize(WidthOf(1));
        if (m_picture.kind == PixelKind::Straight)
            m_premultiplied.resize(m_width);
    }

    void Run() {
        for (int y = 0; y < m_picture.height; y += 2) {
            const Planes upper = PlanesOf(y, 0);
            const Planes lower = PlanesOf(y + 1, 1);
            for (std::size_t channel = 0; channel < m_channels; ++channel)
                SumToWords(upper[channel], lower[channel], m_width,
                           SumsOf(1, channel).words[y / 2 % 2].data());
            Finish(1, y / 2);
        }
    }

private:
    using Planes = std::array<const std::uint8_t *, MOST_CHANNELS>;

    std::size_t WidthOf(std::size_t level) const {
        return static_cast<std::size_t>(m_sizes[level - 1].width);
    }
    SumRows &SumsOf(std::size_t level, std::size_t channel) {
        return m_sums[(level - 1) * m_channels + channel];
    }

    /// The channels of a row of the picture; zeros below it.
    Planes PlanesOf(int y, std::size_t slot) {
        Planes planes{};
        planes.fill(m_nothing.data());
        if (y >= m_picture.height)
            return planes;
        const std::uint8_t *row = m_picture.Row(y);
        if (m_channels == 1) {
            planes[0] = row;
            return planes;
        }
        if (m_picture.kind == PixelKind::Straight) {
            Premultiply(reinterpret_cast<const std::uint32_t *>(row), m_width,
                        m_premultiplied.data());
            row = reinterpret_cast<const std::uint8_t *>(m_premultiplied.data());
        }
        std::array<std::uint8_t *, MOST_CHANNELS> targets{};
        for (std::size_t channel = 0; channel < m_channels; ++channel)
            planes[channel] = targets[channel] = m_planes[slot][channel].data();
        SplitChannels(row, m_width, static_cast<int>(m_channels), targets.data());
        return planes;
    }

    /// The sums of a row of a level are there: writes its means and goes on with the next level.
    void Finish(std::size_t level, int row) {
        WriteMeans(level, row);
        const bool isLast = row + 1 == m_sizes[level - 1].height;
        if (level == m_sizes.size() || (row % 2 == 0 && !isLast))
            return;
        for (std::size_t channel = 0; channel < m_channels; ++channel) {
            SumRows &sums = SumsOf(level, channel);
            SumRows &next = SumsOf(level + 1, channel);
            if (row % 2 == 0) {
                std::fill(sums.words[1].begin(), sums.words[1].end(), std::uint16_t{0});
                std::fill(sums.longs[1].begin(), sums.longs[1].end(), 0U);
            }
            const int slot = row / 2 % 2;
            if (level < HIGHEST_WORD_LEVEL)
                SumToWords(sums.words[0].data(), sums.words[1].data(), WidthOf(level),
                           next.words[slot].data());
            else if (level == HIGHEST_WORD_LEVEL)
                SumPlainly(sums.words[0].data(), sums.words[1].data(), WidthOf(level),
                           next.longs[slot].data());
            else
                SumPlainly(sums.longs[0].data(), sums.longs[1].data(), WidthOf(level),
                           next.longs[slot].data());
        }
        Finish(level + 1, row / 2);
    }

    void WriteMeans(std::size_t level, int row) {
        const std::size_t width = WidthOf(level);
        std::uint8_t *const target =
            m_levels[level - 1].get() + static_cast<std::size_t>(row) * width * m_channels;
        std::array<std::uint8_t *, MOST_CHANNELS> means{};
        for (std::size_t channel = 0; channel < m_channels; ++channel) {
            means[channel] = m_channels == 1 ? target : m_means[channel].data();
            const SumRows &sums = SumsOf(level, channel);
            if (level <= HIGHEST_WORD_LEVEL)
                WriteMeans(sums.words[row % 2].data(), level, row, means[channel]);
            else
                WriteMeans(sums.longs[row % 2].data(), level, row, means[channel]);
        }
        if (m_channels > 1)
            JoinChannels(means.data(), width, static_cast<int>(m_channels), target);
    }

    template <typename Sum>
    void WriteMeans(const Sum *sums, std::size_t level, int row, std::uint8_t *means) const {
        const std::size_t side = std::size_t{1} << level;
        const std::size_t top = static_cast<std::size_t>(row) << level;
        const std::size_t rows = std::min(side, static_cast<std::size_t>(m_picture.height) - top);
        std::size_t x = 0;
        if constexpr (sizeof(Sum) == 2) {
            if (rows == side) {
                x = m_width >> level;
                MeanOfSums(sums, x, static_cast<int>(2 * level), means);
            }
        }
        for (; x < WidthOf(level); ++x)
            means[x] = RoundedMean(sums[x], rows * std::min(side, m_width - (x << level)));
    }

    const PixelRows &m_picture;
    std::size_t m_channels;
    std::size_t m_width;
    const std::vector<Size> &m_sizes;
    std::vector<std::unique_ptr<std::uint8_t[]>> &m_levels;
    std::vector<std::uint8_t> m_nothing;
    std::vector<SumRows> m_sums;
    std::vector<std::uint32_t> m_premultiplied;
    std::vector<std::uint8_t> m_planes[2][MOST_CHANNELS];
    std::vector<std::uint8_t> m_means[MOST_CHANNELS];
};

void PicturePyramid::Reset(const PixelRows &picture) {
    m_picture = picture;
    m_levels.clear();
    m_sizes.clear();
    Size size{picture.width, picture.height};
    while (size.width > 1 && size.height > 1 && HighestLevel() < HIGHEST_LEVEL) {
        size = {(size.width + 1) / 2, (size.height + 1) / 2};
        m_sizes.push_back(size);
    }
}

PixelRows PicturePyramid::Level(int level) {
    if (level == 0)
        return m_picture;
    const auto channels = static_cast<std::size_t>(m_picture.Channels());
    if (IsBare()) {
        for (const Size size : m_sizes)
            m_levels.emplace_back(
                new std::uint8_t[static_cast<std::size_t>(size.width) *
                                 static_cast<std::size_t>(size.height) * channels]);
        Builder(m_picture, m_sizes, m_levels).Run();
    }
    const auto index = static_cast<std::size_t>(level - 1);
    const PixelKind kind =
        m_picture.kind == PixelKind::Straight ? PixelKind::Premultiplied : m_picture.kind;
    return {m_levels[index].get(), m_sizes[index].width, m_sizes[index].height,
            static_cast<std::ptrdiff_t>(channels) * m_sizes[index].width, kind};
}

} // namespace tavix
