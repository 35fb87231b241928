/// How the pixels on the screen get their colour from those of the picture.
///
/// At scales of 1 and above each takes the picture pixel under its centre, exactly by
/// FirstTargetPixel. Below 1 it takes the mean of what it covers:
///
/// - at 1/2^k of level k of the pyramid, which is that mean, rounded;
/// - else the mean, weighted by the covered area, of pixels of the highest level that is still at
///   least 1.5 times as fine as the screen. Down to 1/3 that is the picture, and the result exact
///   but for rounding. Below, pixels of the level that a screen pixel covers in part count as if
///   they were uniform. They count between 1.5 and 3 a screen pixel, so the result lies within 2/3
///   of the local contrast of the exact mean in the worst case, and far closer in any real picture.
///
/// The weights of all screen pixels add up to the same for every picture pixel, so nothing vanishes
/// however thin, and nothing counts twice. The ratio of 1.5 matters: nearer 1 some screen pixels
/// would show one pixel of the level and others the mean of two, a beat that shows in any texture.
#pragma once

#include "TAVIX20/display/picture_pyramid.h"

#include <QRect>

#include <vector>

namespace tavix {

/// Where the picture is on the screen: the position of its corner and the size of a picture pixel,
/// in screen (device) pixels.
struct Placement {
    double x = 0.0;
    double y = 0.0;
    double scale = 1.0;

    /// The screen pixels that show the picture.
    TAVIX_API QRect Target(const PixelRows &picture) const;
};

/// Samples at scales from 1 on: rows of screen pixels, the layer laid over the picture.
class TAVIX_API BlockSampler {
public:
    /// The part lies in the target of the placement. The layer is of the picture's size or has no
    /// data.
    BlockSampler(const PixelRows &picture, const PixelRows &layer, const Placement &place,
                 const QRect &part);

    /// Writes the rows [first, first + count) of the part, counted from its top; the stride is in
    /// pixels.
    void Render(int first, int count, std::uint32_t *target, std::ptrdiff_t stride);

private:
    void SampleRow(int y, std::uint32_t *target);

    PixelRows m_picture;
    PixelRows m_layer;
    std::vector<std::int32_t> m_rows;    ///< The picture row of each row.
    std::vector<std::int32_t> m_columns; ///< Counted from the first.
    int m_firstColumn;
    int m_columnCount; ///< In the picture.
    std::vector<std::uint32_t> m_line;
    std::vector<std::uint32_t> m_layerLine;
};

/// The level of the pyramid that is sampled at the scale, which is below 1.
TAVIX_API int LevelForScale(double scale, int highestLevel);

/// Samples the part, in the target of the placement, at scales below 1: grey levels from grey
/// pictures, screen pixels from all others, with premultiplied alpha where there is one. The
/// stride is in target pixels.
TAVIX_API void SampleArea(PicturePyramid &pyramid, const Placement &place, const QRect &part,
                          std::uint8_t *target, std::ptrdiff_t stride);
TAVIX_API void SampleArea(PicturePyramid &pyramid, const Placement &place, const QRect &part,
                          std::uint32_t *target, std::ptrdiff_t stride);

} // namespace tavix
