/// A picture and its reductions to 1/2, 1/4, 1/8 ..., from which it is shown below zoom 1.
#pragma once

#include "TAVIX20/platform/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tavix {

enum class PixelKind {
    Grey,          ///< 1 byte.
    Colour,        ///< Blue, green, red.
    Premultiplied, ///< Blue, green, red, alpha; the colours are multiplied by alpha.
    Straight,      ///< The same, not multiplied.
};

/// Rows of pixels in memory, not owned, from the top down.
struct PixelRows {
    const std::uint8_t *data = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;
    PixelKind kind = PixelKind::Grey;

    int Channels() const { return kind == PixelKind::Grey ? 1 : kind == PixelKind::Colour ? 3 : 4; }
    const std::uint8_t *Row(int y) const { return data + y * stride; }
};

/// Level k holds the mean of each block of 2^k by 2^k pixels, rounded to the nearest; blocks at the
/// right and lower edge are as large as the picture leaves them. All levels are built together, in
/// one pass over the picture, when the first of them is asked for. They take a third of its memory.
/// Straight alpha becomes premultiplied, which is what can be averaged.
class TAVIX_API PicturePyramid {
public:
    /// Another picture, or other pixels in it: the levels are dropped.
    void Reset(const PixelRows &picture);
    const PixelRows &Picture() const { return m_picture; }

    /// The highest level; 0 is the picture itself. The last one is a single pixel wide or high, or
    /// 2^12 times smaller.
    int HighestLevel() const { return static_cast<int>(m_sizes.size()); }
    /// Level 0 to HighestLevel().
    PixelRows Level(int level);
    /// True when no level is built yet.
    bool IsBare() const { return m_levels.empty(); }

private:
    struct Size {
        int width;
        int height;
    };
    class Builder;

    PixelRows m_picture;
    std::vector<Size> m_sizes; ///< Of level 1 and up.
    std::vector<std::unique_ptr<std::uint8_t[]>> m_levels;
};

} // namespace tavix
