/// The part of a reduced picture that was last on the screen, kept for the next paint.
#pragma once

#include "TAVIX20/platform/export.h"

#include <QRect>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace tavix {

/// Coordinates are those of the reduced picture, never negative. The pixel (x, y) is kept at (x mod
/// width, y mod height) of a block as large as the largest window so far, so a window that moves
/// keeps what stays visible where it is, and only the strips that it uncovers are made.
class TAVIX_API PictureFrame {
public:
    /// Makes the pixels of a rectangle from the target on; the stride is in pixels.
    using FillGrey = std::function<void(const QRect &, std::uint8_t *, std::ptrdiff_t)>;
    using FillScreen = std::function<void(const QRect &, std::uint32_t *, std::ptrdiff_t)>;

    /// Forgets the pixels.
    void Drop() { m_valid = {}; }
    /// Makes what the window shows and the frame does not hold yet: grey levels, a quarter of the
    /// memory, or screen pixels. A change between both forgets what there was.
    void Show(const QRect &window, const FillGrey &fill);
    void Show(const QRect &window, const FillScreen &fill);

    /// Copies a part of the window last shown as screen pixels.
    void Render(const QRect &part, std::uint32_t *target, std::ptrdiff_t stride) const;

private:
    template <typename Pixel, typename Fill>
    void Show(const QRect &window, std::vector<Pixel> &pixels, const Fill &fill);

    int m_width = 0;
    int m_height = 0;
    QRect m_valid;
    std::vector<std::uint8_t> m_grey;    ///< One of both is empty.
    std::vector<std::uint32_t> m_screen; ///< 0xFFRRGGBB.
};

} // namespace tavix
