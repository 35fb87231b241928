#include "TAVIX20/display/picture_sampler.h"

#include "TAVIX20/display/picture_kernels.h"
#include "TAVIX20/platform/dib_painter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tavix {

namespace {

/// The source pixel of each of count target pixels from first on, by FirstTargetPixel.
std::vector<std::int32_t> SourcePixels(double origin, double scale, int size, int first,
                                       int count) {
    const double guess = std::floor((first + 0.5 - origin) / scale);
    int source = static_cast<int>(std::clamp(guess, 0.0, static_cast<double>(size - 1)));
    while (source > 0 && FirstTargetPixel(origin, scale, source) > first)
        --source;
    std::vector<std::int32_t> sources(static_cast<std::size_t>(count));
    int end = FirstTargetPixel(origin, scale, source + 1);
    for (int i = 0; i < count; ++i) {
        while (end <= first + i && source < size - 1)
            end = FirstTargetPixel(origin, scale, ++source + 1);
        sources[static_cast<std::size_t>(i)] = source;
    }
    return sources;
}

/// The pixels of a level that a run of target pixels covers along one axis, with their weights.
struct AreaAxis {
    int origin = 0; ///< First pixel of the level that takes part.
    int size = 0;   ///< How many do.
    std::size_t mostTaps = 1;
    std::vector<std::int32_t> first;    ///< Of each target pixel, counted from the origin.
    std::vector<std::size_t> weightsAt; ///< Where its weights begin; one more than pixels.
    std::vector<std::uint16_t> weights;
};

struct LevelAxis {
    double origin; ///< Of the picture, in target pixels.
    double scale;  ///< Target pixels per pixel of the level.
    double end;    ///< Where the picture ends, in pixels of the level.
    int size;      ///< Of the level.
};

AreaAxis WeighAxis(const LevelAxis &axis, int firstTarget, int count, int weightBits) {
    AreaAxis run;
    run.first.reserve(static_cast<std::size_t>(count));
    run.weightsAt.reserve(static_cast<std::size_t>(count) + 1);
    int end = 0;
    for (int target = firstTarget; target < firstTarget + count; ++target) {
        const double low = std::clamp((target - axis.origin) / axis.scale, 0.0, axis.end);
        const double high = std::clamp((target + 1 - axis.origin) / axis.scale, low, axis.end);
        const int first = std::min(static_cast<int>(low), axis.size - 1);
        const int last = std::clamp(static_cast<int>(std::ceil(high)) - 1, first, axis.size - 1);
        // Rounding where each pixel ends, not its weight, keeps the sum.
        const double unit = (1 << weightBits) / std::max(high - low, 1e-9);
        int before = 0;
        run.weightsAt.push_back(run.weights.size());
        for (int pixel = first; pixel <= last; ++pixel) {
            const int upTo =
                pixel == last ? 1 << weightBits : static_cast<int>((pixel + 1 - low) * unit + 0.5);
            run.weights.push_back(static_cast<std::uint16_t>(upTo - before));
            before = upTo;
        }
        run.first.push_back(first);
        run.mostTaps = std::max(run.mostTaps, static_cast<std::size_t>(last - first + 1));
        end = std::max(end, last + 1);
    }
    run.weightsAt.push_back(run.weights.size());
    run.origin = run.first.front();
    run.size = end - run.origin;
    for (std::int32_t &first : run.first)
        first -= run.origin;
    return run;
}

/// The weights of columns as the kernels read them.
std::vector<std::int16_t> QuadWeights(const AreaAxis &columns, std::size_t quads) {
    const std::size_t count = columns.first.size();
    std::vector<std::int16_t> weights(4 * quads * count);
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t at = columns.weightsAt[i]; at < columns.weightsAt[i + 1]; ++at) {
            const std::size_t tap = at - columns.weightsAt[i];
            weights[(tap / 4 * count + i) * 4 + tap % 4] =
                static_cast<std::int16_t>(columns.weights[at]);
        }
    return weights;
}

void WeighColumns(const std::int16_t *sums, const ColumnWeights &columns, int,
                  std::uint8_t *target) {
    WeighGreyColumns(sums, columns, target);
}

void WeighColumns(const std::int16_t *sums, const ColumnWeights &columns, int channels,
                  std::uint32_t *target) {
    WeighColourColumns(sums, columns, channels, target);
}

/// Rows of a picture from a column on; straight alpha is multiplied on the way.
class RowReader {
public:
    RowReader(const PixelRows &pixels, const AreaAxis &columns, std::size_t mostRows)
        : m_pixels(pixels),
          m_first(columns.origin),
          m_width(static_cast<std::size_t>(columns.size)) {
        if (m_pixels.kind == PixelKind::Straight)
            m_premultiplied.resize(m_width * mostRows);
    }

    /// The row, valid until the same slot is used again.
    const std::uint8_t *Read(int y, std::size_t slot) {
        const std::uint8_t *const row = m_pixels.Row(y) + m_first * m_pixels.Channels();
        if (m_pixels.kind != PixelKind::Straight)
            return row;
        std::uint32_t *const multiplied = m_premultiplied.data() + slot * m_width;
        Premultiply(reinterpret_cast<const std::uint32_t *>(row), m_width, multiplied);
        return reinterpret_cast<const std::uint8_t *>(multiplied);
    }

private:
    PixelRows m_pixels;
    std::ptrdiff_t m_first;
    std::size_t m_width;
    std::vector<std::uint32_t> m_premultiplied;
};

template <typename Target>
void Sample(PicturePyramid &pyramid, const Placement &place, const QRect &part, Target *target,
            std::ptrdiff_t stride) {
    const int number = LevelForScale(place.scale, pyramid.HighestLevel());
    const PixelRows level = pyramid.Level(number);
    const double side = std::ldexp(1.0, number);
    const double scale = place.scale * side;
    const AreaAxis columns =
        WeighAxis({place.x, scale, pyramid.Picture().width / side, level.width}, part.left(),
                  part.width(), COLUMN_WEIGHT_BITS);
    const AreaAxis rows = WeighAxis({place.y, scale, pyramid.Picture().height / side, level.height},
                                    part.top(), part.height(), ROW_WEIGHT_BITS);

    const std::size_t quads = (columns.mostTaps + 3) / 4;
    const std::vector<std::int16_t> quadWeights = QuadWeights(columns, quads);
    const ColumnWeights weights{columns.first.data(), quadWeights.data(), quads,
                                columns.first.size()};
    const auto channels = static_cast<std::size_t>(level.Channels());
    const std::size_t lineSize = static_cast<std::size_t>(columns.size) * channels;
    // Pixels with fewer taps than the most have weights of 0 behind them.
    std::vector<std::int16_t> sums(lineSize + 4 * quads * channels + 2);
    RowReader reader(level, columns, rows.mostTaps);
    std::vector<const std::uint8_t *> lines(rows.mostTaps);
    for (std::size_t y = 0; y < rows.first.size(); ++y) {
        const std::size_t taps = rows.weightsAt[y + 1] - rows.weightsAt[y];
        for (std::size_t tap = 0; tap < taps; ++tap)
            lines[tap] = reader.Read(rows.origin + rows.first[y] + static_cast<int>(tap), tap);
        WeighRows(lines.data(), rows.weights.data() + rows.weightsAt[y], taps, lineSize,
                  sums.data());
        WeighColumns(sums.data(), weights, level.Channels(),
                     target + static_cast<std::ptrdiff_t>(y) * stride);
    }
}

} // namespace

QRect Placement::Target(const PixelRows &picture) const {
    const int left = FirstTargetPixel(x, scale, 0);
    const int top = FirstTargetPixel(y, scale, 0);
    return {left, top, FirstTargetPixel(x, scale, picture.width) - left,
            FirstTargetPixel(y, scale, picture.height) - top};
}

BlockSampler::BlockSampler(const PixelRows &picture, const PixelRows &layer, const Placement &place,
                           const QRect &part)
    : m_picture(picture),
      m_layer(layer),
      m_rows(SourcePixels(place.y, place.scale, picture.height, part.top(), part.height())),
      m_columns(SourcePixels(place.x, place.scale, picture.width, part.left(), part.width())),
      m_firstColumn(m_columns.front()),
      m_columnCount(m_columns.back() - m_firstColumn + 1),
      m_line(static_cast<std::size_t>(m_columnCount)),
      m_layerLine(layer.kind == PixelKind::Straight ? m_line.size() : 0) {
    for (std::int32_t &column : m_columns)
        column -= m_firstColumn;
}

void BlockSampler::Render(int first, int count, std::uint32_t *target, std::ptrdiff_t stride) {
    const std::size_t width = m_columns.size();
    const bool oneToOne = width == m_line.size();
    for (int row = first; row < first + count; ++row, target += stride) {
        const std::int32_t source = m_rows[static_cast<std::size_t>(row)];
        if (row > first && source == m_rows[static_cast<std::size_t>(row) - 1]) {
            std::memcpy(target, target - stride, width * sizeof *target);
        } else if (oneToOne) {
            SampleRow(source, target);
        } else {
            SampleRow(source, m_line.data());
            for (std::size_t x = 0; x < width; ++x)
                target[x] = m_line[static_cast<std::size_t>(m_columns[x])];
        }
    }
}

/// The picture's row with the layer over it, each pixel once.
void BlockSampler::SampleRow(int y, std::uint32_t *target) {
    const std::size_t width = m_line.size();
    const std::ptrdiff_t first = m_firstColumn;
    if (m_picture.kind == PixelKind::Grey)
        ExpandGrey(m_picture.Row(y) + first, width, target);
    else
        ExpandColour(m_picture.Row(y) + 3 * first, width, target);
    if (!m_layer.data)
        return;
    const auto *pixels = reinterpret_cast<const std::uint32_t *>(m_layer.Row(y)) + first;
    if (m_layer.kind == PixelKind::Straight) {
        Premultiply(pixels, width, m_layerLine.data());
        pixels = m_layerLine.data();
    }
    ComposeOver(pixels, width, target);
}

int LevelForScale(double scale, int highestLevel) {
    constexpr double FINENESS = 1.5;
    int level = 0;
    while (level < highestLevel && std::ldexp(scale, level + 1) * FINENESS <= 1.0)
        ++level;
    // The level above shows 1/2^k as it is.
    return level < highestLevel && std::ldexp(scale, level + 1) == 1.0 ? level + 1 : level;
}

void SampleArea(PicturePyramid &pyramid, const Placement &place, const QRect &part,
                std::uint8_t *target, std::ptrdiff_t stride) {
    Sample(pyramid, place, part, target, stride);
}

void SampleArea(PicturePyramid &pyramid, const Placement &place, const QRect &part,
                std::uint32_t *target, std::ptrdiff_t stride) {
    Sample(pyramid, place, part, target, stride);
}

} // namespace tavix
