/// Which pixels of an image are of the class that blobs are made of, as bits: a row at a time, bit
/// x of the row's words for pixel x, bits beyond the width 0.
#pragma once

#include "TAVIX20/analysis/byte_kernels.h"
#include "TAVIX20/image/tavix_image8.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

class CTavixImage24;

namespace tavix {

inline constexpr int WORD_BITS = 64;

/// Words of a row.
constexpr std::size_t WordsOf(int width) {
    return (static_cast<std::size_t>(width) + WORD_BITS - 1) / WORD_BITS;
}

/// Calls process(x) for every set bit, in order.
template <typename Process>
void ForEachBit(const std::uint64_t *words, std::size_t wordCount, Process process) {
    for (std::size_t word = 0; word < wordCount; ++word)
        for (std::uint64_t bits = words[word]; bits != 0; bits &= bits - 1)
            process(static_cast<int>(word) * WORD_BITS + std::countr_zero(bits));
}

/// Calls process(start, end) for every stretch of set bits, end exclusive, in order.
template <typename Process>
void ForEachRun(const std::uint64_t *words, std::size_t wordCount, int width, Process process) {
    std::uint64_t carry = 0;
    int start = 0;
    for (std::size_t word = 0; word < wordCount; ++word) {
        const std::uint64_t bits = words[word];
        // The bits that differ from the one before them.
        std::uint64_t edges = bits ^ (bits << 1 | carry);
        const int base = static_cast<int>(word) * WORD_BITS;
        bool inRun = carry != 0;
        for (; edges != 0; edges &= edges - 1) {
            const int edge = base + std::countr_zero(edges);
            if (inRun)
                process(start, edge);
            else
                start = edge;
            inRun = !inRun;
        }
        carry = bits >> (WORD_BITS - 1);
    }
    if (carry != 0)
        process(start, width);
}

class PixelClass {
public:
    virtual ~PixelClass() = default;
    /// Sets the WordsOf(width) words of row y.
    virtual void MarkRow(int y, std::uint64_t *words) const = 0;
};

/// The rows of an image, which stays as it is.
class PixelRows {
public:
    explicit PixelRows(const CTavixImage &image);

    const std::uint8_t *operator[](int y) const { return m_first + m_stride * y; }
    /// In pixels.
    std::size_t Width() const { return m_width; }

private:
    const std::uint8_t *m_first;
    std::ptrdiff_t m_stride;
    std::size_t m_width;
};

/// Levels low to high, in int: none when low is above high.
class BandClass : public PixelClass {
public:
    BandClass(const CTavixImage8 &image, int low, int high);
    void MarkRow(int y, std::uint64_t *words) const override;

private:
    PixelRows m_rows;
    ByteBand m_band;
};

/// The levels above the threshold for a value of 255, the others for 0, none for any other value.
BandClass ThresholdClass(const CTavixImage8 &image, int threshold, int value);

/// Levels with a table entry that is not 0.
class ListedClass : public PixelClass {
public:
    ListedClass(const CTavixImage8 &image, const ByteTable &isListed)
        : m_rows(image), m_isListed(isListed) {}
    void MarkRow(int y, std::uint64_t *words) const override;

private:
    PixelRows m_rows;
    ByteTable m_isListed;
};

/// Pixels of another class that lie in one of the rectangles, right and bottom edges included.
class MaskedClass : public PixelClass {
public:
    MaskedClass(const PixelClass &of, int width, const RECT *rects, int count)
        : m_of(of), m_width(width), m_rects(rects), m_count(count) {}
    void MarkRow(int y, std::uint64_t *words) const override;

private:
    const PixelClass &m_of;
    int m_width;
    const RECT *m_rects;
    int m_count;
};

/// The ellipse inscribed in the rectangle between the centres of two corner pixels, which are in
/// order; pixels whose centres lie on it belong to it.
struct Ellipse {
    int x1;
    int y1;
    int x2;
    int y2;

    bool Contains(int x, int y) const;
    /// The first and last x of a row that belong to it, limited to 0 to last; first > last without.
    void RowSpan(int y, int last, int &first, int &end) const;
};

/// Pixels of another class that lie in an ellipse.
class EllipticClass : public PixelClass {
public:
    EllipticClass(const PixelClass &of, int width, const Ellipse &ellipse)
        : m_of(of), m_width(width), m_ellipse(ellipse) {}
    void MarkRow(int y, std::uint64_t *words) const override;

private:
    const PixelClass &m_of;
    int m_width;
    Ellipse m_ellipse;
};

/// A band for each stored channel: blue, green, red.
class ColourClass : public PixelClass {
public:
    struct Bounds {
        int low;
        int high;
    };

    ColourClass(const CTavixImage24 &image, const std::array<Bounds, 3> &bounds);
    void MarkRow(int y, std::uint64_t *words) const override;

private:
    PixelRows m_rows;
    std::array<ByteBand, 3> m_bands;
};

/// The bits of first to last within a word whose bit 0 is pixel base.
std::uint64_t SpanBits(std::int64_t base, int first, int last);
/// Keeps the bits of first to last (limited to the row) and clears the others.
void KeepSpan(std::uint64_t *words, std::size_t wordCount, int first, int last);

} // namespace tavix
