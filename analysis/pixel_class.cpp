#include "TAVIX20/analysis/pixel_class.h"

#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"

#include <algorithm>

namespace tavix {

namespace {

/// Wide enough for squares of differences of ints, four times over.
__extension__ typedef __int128 Wide;

ByteBand BandOf(int low, int high) {
    if (low > high || low > 255 || high < 0)
        return {1, 0};
    return {static_cast<std::uint8_t>(std::max(low, 0)),
            static_cast<std::uint8_t>(std::min(high, 255))};
}

} // namespace

PixelRows::PixelRows(const CTavixImage &image)
    : m_first(image.GetImagePtr()),
      m_stride(RowStride(image.GetBitCount(), image.GetWidth())),
      m_width(static_cast<std::size_t>(image.GetWidth())) {}

std::uint64_t SpanBits(std::int64_t base, int first, int last) {
    const std::int64_t from = std::max<std::int64_t>(first - base, 0);
    const std::int64_t to = std::min<std::int64_t>(last - base, WORD_BITS - 1);
    if (from > to)
        return 0;
    return ~std::uint64_t{0} >> (WORD_BITS - 1 - (to - from)) << from;
}

void KeepSpan(std::uint64_t *words, std::size_t wordCount, int first, int last) {
    for (std::size_t word = 0; word < wordCount; ++word)
        words[word] &= SpanBits(static_cast<std::int64_t>(word) * WORD_BITS, first, last);
}

BandClass::BandClass(const CTavixImage8 &image, int low, int high)
    : m_rows(image), m_band(BandOf(low, high)) {}

void BandClass::MarkRow(int y, std::uint64_t *words) const {
    MarkBand(m_rows[y], m_rows.Width(), m_band, words);
}

BandClass ThresholdClass(const CTavixImage8 &image, int threshold, int value) {
    if (value == 255)
        return {image, threshold < 0 ? 0 : std::min(threshold, 255) + 1, 255};
    return {image, 0, value == 0 ? threshold : -1};
}

void ListedClass::MarkRow(int y, std::uint64_t *words) const {
    const std::size_t width = m_rows.Width();
    const std::uint8_t *row = m_rows[y];
    for (std::size_t at = 0; at < width; at += WORD_BITS) {
        const std::size_t count = std::min<std::size_t>(width - at, WORD_BITS);
        std::array<std::uint8_t, WORD_BITS> listed;
        std::copy_n(row + at, count, listed.begin());
        LookUp(listed.data(), count, m_isListed);
        MarkBand(listed.data(), count, {1, 255}, words + at / WORD_BITS);
    }
}

void MaskedClass::MarkRow(int y, std::uint64_t *words) const {
    m_of.MarkRow(y, words);
    for (std::size_t word = 0; word < WordsOf(m_width); ++word) {
        std::uint64_t inside = 0;
        for (int i = 0; i < m_count && words[word] != 0; ++i)
            if (m_rects[i].top <= y && y <= m_rects[i].bottom)
                inside |= SpanBits(static_cast<std::int64_t>(word) * WORD_BITS, m_rects[i].left,
                                   m_rects[i].right);
        words[word] &= inside;
    }
}

// With twice the distances from the centre, all numbers are whole. Those of pictures fit 60 bits,
// and their squares are compared exactly; beyond, a rounding error decides.
bool Ellipse::Contains(int x, int y) const {
    const Wide width = Wide{x2} - x1;
    const Wide height = Wide{y2} - y1;
    const Wide dx = (2 * Wide{x} - x1 - x2) * height;
    const Wide dy = (2 * Wide{y} - y1 - y2) * width;
    const Wide radii = width * height;
    if (radii == 0) // A line or a point.
        return x >= x1 && x <= x2 && y >= y1 && y <= y2;
    if (radii < Wide{1} << 60)
        return dx * dx + dy * dy <= radii * radii;
    const auto scaled = [radii](Wide distance) {
        return static_cast<long double>(distance) / static_cast<long double>(radii);
    };
    return scaled(dx) * scaled(dx) + scaled(dy) * scaled(dy) <= 1;
}

void Ellipse::RowSpan(int y, int last, int &first, int &end) const {
    first = std::max(x1, 0);
    end = std::min(x2, last);
    const std::int64_t middle = (std::int64_t{x1} + x2) / 2;
    // Both halves are narrowed by bisection: whether a pixel belongs changes once along each.
    const auto bisect = [&](std::int64_t outside, std::int64_t inside) {
        while (std::abs(outside - inside) > 1) {
            const std::int64_t half = (outside + inside) / 2;
            (Contains(static_cast<int>(half), y) ? inside : outside) = half;
        }
        return static_cast<int>(inside);
    };
    if (y < y1 || y > y2 || !Contains(static_cast<int>(middle), y)) {
        end = first - 1;
        return;
    }
    first = std::max(first, bisect(std::int64_t{x1} - 1, middle));
    end = std::min(end, bisect(std::int64_t{x2} + 1, middle));
}

void EllipticClass::MarkRow(int y, std::uint64_t *words) const {
    m_of.MarkRow(y, words);
    int first = 0;
    int last = 0;
    m_ellipse.RowSpan(y, m_width - 1, first, last);
    KeepSpan(words, WordsOf(m_width), first, last);
}

ColourClass::ColourClass(const CTavixImage24 &image, const std::array<Bounds, 3> &bounds)
    : m_rows(image) {
    std::ranges::transform(bounds, m_bands.begin(),
                           [](const Bounds &channel) { return BandOf(channel.low, channel.high); });
}

void ColourClass::MarkRow(int y, std::uint64_t *words) const {
    MarkColourBands(m_rows[y], m_rows.Width(), m_bands.data(), words);
}

} // namespace tavix
