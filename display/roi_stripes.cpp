// A line one pixel wide that is upright or level is a rectangle. Where the painter draws pixel by
// pixel into an image, as it does into a window, the rectangles are written there; filling them
// with a textured brush gives the same pixels and takes ten times as long.

#include "TAVIX20/display/roi_stripes.h"

#include "TAVIX20/display/plain_image.h"

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QRect>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace tavix {

namespace {

constexpr int SIDE = 8;
/// Row by row, the leftmost pixel in bit 7 of the low byte; set bits are white.
constexpr std::array<std::uint16_t, SIDE> PATTERN{0x00F0, 0x0078, 0x003C, 0x001E,
                                                  0x000F, 0x0087, 0x00C3, 0x00E1};

using Tile = std::array<std::array<QRgb, SIDE>, SIDE>;

Tile PatternTile(int phase) {
    Tile tile{};
    for (std::size_t y = 0; y < SIDE; ++y) {
        const unsigned row = PATTERN[(static_cast<std::size_t>(phase) + y) % SIDE];
        for (std::size_t x = 0; x < SIDE; ++x)
            tile[y][x] = (row >> (SIDE - 1 - x) & 1) != 0 ? 0xFFFFFFFF : 0xFF000000;
    }
    return tile;
}

QBrush PatternBrush(const Tile &tile) {
    QImage image(SIDE, SIDE, QImage::Format_RGB32);
    for (int y = 0; y < SIDE; ++y)
        std::copy_n(tile[static_cast<std::size_t>(y)].begin(), SIDE,
                    reinterpret_cast<QRgb *>(image.scanLine(y)));
    QBrush brush;
    brush.setTextureImage(image);
    return brush;
}

void WriteLine(const PlainImage &image, const QRect &line, const Tile &tile) {
    for (int y = line.top(); y <= line.bottom(); ++y) {
        const auto &pattern = tile[static_cast<std::size_t>(y) % SIDE];
        std::uint32_t *const row = image.At(0, y);
        for (int x = line.left(); x <= line.right(); ++x)
            row[x] = pattern[static_cast<std::size_t>(x) % SIDE];
    }
}

QRect LineBetween(const POINT &from, const POINT &to) {
    const auto [left, right] = std::minmax(from.x, to.x);
    const auto [top, bottom] = std::minmax(from.y, to.y);
    return {QPoint(left, top), QPoint(right, bottom)};
}

} // namespace

void RoiStripes::Advance() {
    m_phase = m_phase < LAST_PHASE ? m_phase + 1 : 0;
}

void RoiStripes::Draw(QPainter &painter, const TavixArray::CPointArrayArray &outlines,
                      const QRect &visible) const {
    const Tile tile = PatternTile(m_phase);
    const std::optional<PlainImage> image = PlainImage::Under(painter);
    std::vector<QRect> lines;
    for (int i = 0; i < outlines.GetElementCount(); ++i) {
        const TavixArray::CPointArray &points = outlines[i];
        for (int k = 1; k < points.GetElementCount(); ++k) {
            const QRect line = LineBetween(points[k - 1], points[k]) & visible;
            if (line.isEmpty())
                continue;
            if (!image)
                lines.push_back(line);
            else
                for (const QRect &part : image->Writable())
                    WriteLine(*image, line & part, tile);
        }
    }
    if (lines.empty())
        return;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(PatternBrush(tile));
    painter.setBrushOrigin(0, 0);
    painter.drawRects(lines.data(), static_cast<int>(lines.size()));
    painter.restore();
}

} // namespace tavix
