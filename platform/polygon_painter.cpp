// A bit for each pixel: whoever comes last decides, and what was there before costs nothing. As
// many rows as the processor's cache holds are painted at a time.

#include "TAVIX20/platform/polygon_painter.h"

#include "TAVIX20/platform/polygon_filler.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace tavix {

namespace {

using Word = std::uint64_t;

constexpr LONG BITS = 64;
constexpr std::size_t MOST_WORDS = std::size_t{1} << 16;
constexpr Word ALL = ~Word{0};

/// Rows of bits, each begun by a word of its own.
class BitRows {
public:
    /// So many rows of the area from its top on.
    BitRows(const RECT &area, LONG height)
        : m_left(area.left),
          m_stride(WordsOf(area)),
          m_words(m_stride * static_cast<std::size_t>(height)) {}

    static std::size_t WordsOf(const RECT &area) {
        return (static_cast<std::size_t>(area.right - area.left) + BITS - 1) / BITS;
    }

    void Clear() { std::fill(m_words.begin(), m_words.end(), Word{0}); }

    void Write(LONG row, const PixelRun &run, bool isSet) {
        Word *const words = m_words.data() + static_cast<std::size_t>(row) * m_stride;
        const LONG left = run.left - m_left;
        const LONG last = run.right - m_left - 1;
        Word *const firstWord = words + left / BITS;
        Word *const lastWord = words + last / BITS;
        const Word firstMask = ALL << (left % BITS);
        const Word lastMask = ALL >> (BITS - 1 - last % BITS);
        if (firstWord == lastWord) {
            Put(*firstWord, firstMask & lastMask, isSet);
            return;
        }
        Put(*firstWord, firstMask, isSet);
        std::fill(firstWord + 1, lastWord, isSet ? ALL : Word{0});
        Put(*lastWord, lastMask, isSet);
    }

    /// The runs of a row, from left to right.
    void Read(LONG row, std::vector<PixelRun> &runs) const {
        runs.clear();
        const Word *const words = m_words.data() + static_cast<std::size_t>(row) * m_stride;
        Word last = 0; // The bit before the word.
        LONG column = m_left;
        for (std::size_t i = 0; i < m_stride; ++i, column += BITS) {
            Word changes = words[i] ^ (words[i] << 1 | last);
            last = words[i] >> (BITS - 1);
            for (; changes != 0; changes &= changes - 1)
                Change(runs, column + std::countr_zero(changes));
        }
        if (last != 0)
            Change(runs, column);
    }

private:
    static void Put(Word &word, Word mask, bool isSet) {
        word = isSet ? word | mask : word & ~mask;
    }

    static void Change(std::vector<PixelRun> &runs, LONG column) {
        if (runs.empty() || runs.back().right != OPEN)
            runs.push_back({column, OPEN});
        else
            runs.back().right = column;
    }

    static constexpr LONG OPEN = INT32_MIN;

    LONG m_left;
    std::size_t m_stride;
    std::vector<Word> m_words;
};

/// Paints the rows of the area, which there are bits for.
void Paint(std::span<const PolygonLayer> layers, const RECT &area, PolygonFiller &filler,
           BitRows &bits) {
    for (const PolygonLayer &layer : layers) {
        const RECT clip{
            std::max(area.left, layer.bounds.left), std::max(area.top, layer.bounds.top),
            std::min(area.right, layer.bounds.right), std::min(area.bottom, layer.bounds.bottom)};
        if (clip.left >= clip.right || clip.top >= clip.bottom)
            continue;
        for (filler.Start({&layer.points, 1}, ALTERNATE, clip); filler.Next();)
            for (LONG y = filler.Top(); y < filler.Bottom(); ++y)
                for (const PixelRun &run : filler.Runs())
                    bits.Write(y - area.top, run, layer.isSet);
    }
}

} // namespace

RunRegion PaintPolygons(std::span<const PolygonLayer> layers, const RECT &area) {
    RunRegion region;
    if (area.left >= area.right || area.top >= area.bottom)
        return region;
    const std::size_t fitting = std::max<std::size_t>(MOST_WORDS / BitRows::WordsOf(area), 1);
    const auto height =
        static_cast<LONG>(std::min(fitting, static_cast<std::size_t>(area.bottom - area.top)));
    BitRows bits(area, height);
    PolygonFiller filler;
    std::vector<PixelRun> runs;
    for (RECT part = area; part.top < area.bottom; part.top = part.bottom) {
        part.bottom = std::min(part.top + height, area.bottom);
        bits.Clear();
        Paint(layers, part, filler, bits);
        for (LONG y = part.top; y < part.bottom; ++y) {
            bits.Read(y - part.top, runs);
            region.AppendBand(y, y + 1, runs);
        }
    }
    return region;
}

} // namespace tavix
