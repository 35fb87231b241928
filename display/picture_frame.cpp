#include "TAVIX20/display/picture_frame.h"

#include "TAVIX20/display/picture_kernels.h"

#include <QRegion>

#include <algorithm>
#include <cstring>

namespace tavix {

namespace {

/// Calls process(from, count, at) for the pieces of [begin, end) that are kept in one piece from at
/// on.
template <typename Process>
void ForPieces(int begin, int end, int period, Process process) {
    while (begin < end) {
        const int at = begin % period;
        const int count = std::min(end - begin, period - at);
        process(begin, count, at);
        begin += count;
    }
}

template <typename Pixel>
void Free(std::vector<Pixel> &pixels) {
    std::vector<Pixel>().swap(pixels);
}

} // namespace

void PictureFrame::Show(const QRect &window, const FillGrey &fill) {
    Free(m_screen);
    Show(window, m_grey, fill);
}

void PictureFrame::Show(const QRect &window, const FillScreen &fill) {
    Free(m_grey);
    Show(window, m_screen, fill);
}

template <typename Pixel, typename Fill>
void PictureFrame::Show(const QRect &window, std::vector<Pixel> &pixels, const Fill &fill) {
    if (pixels.empty() || window.width() > m_width || window.height() > m_height) {
        m_width = std::max(m_width, window.width());
        m_height = std::max(m_height, window.height());
        pixels.resize(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height));
        m_valid = {};
    }
    // What is to be seen is made whole, also where only a part is painted now, so that what the
    // frame holds is one rectangle.
    for (const QRect &strip : QRegion(window) - (m_valid & window))
        ForPieces(strip.top(), strip.bottom() + 1, m_height, [&](int top, int rows, int atRow) {
            ForPieces(strip.left(), strip.right() + 1, m_width, [&](int left, int columns, int at) {
                fill(QRect(left, top, columns, rows),
                     pixels.data() + std::ptrdiff_t{atRow} * m_width + at, m_width);
            });
        });
    m_valid = window;
}

void PictureFrame::Render(const QRect &part, std::uint32_t *target, std::ptrdiff_t stride) const {
    for (int y = part.top(); y <= part.bottom(); ++y, target += stride) {
        const std::ptrdiff_t row = std::ptrdiff_t{y % m_height} * m_width;
        ForPieces(part.left(), part.right() + 1, m_width, [&](int left, int columns, int at) {
            std::uint32_t *const piece = target + (left - part.left());
            const auto count = static_cast<std::size_t>(columns);
            if (m_screen.empty())
                ExpandGrey(m_grey.data() + row + at, count, piece);
            else
                std::memcpy(piece, m_screen.data() + row + at, count * sizeof *piece);
        });
    }
}

} // namespace tavix
