#include "TAVIX20/display/place_index.h"

#include "TAVIX20/display/view_transform.h"

#include <algorithm>

namespace tavix {

namespace {

constexpr std::size_t FAN_OUT = 16;
/// The centre and the block of an image pixel may differ by this much from exact arithmetic.
constexpr double SLACK = 2.0;

Placed Around(std::span<const Placed> boxes) {
    Placed around = boxes.front();
    for (const Placed &box : boxes.subspan(1)) {
        around.pixels.left = std::min(around.pixels.left, box.pixels.left);
        around.pixels.top = std::min(around.pixels.top, box.pixels.top);
        around.pixels.right = std::max(around.pixels.right, box.pixels.right);
        around.pixels.bottom = std::max(around.pixels.bottom, box.pixels.bottom);
        around.margin = std::max(around.margin, box.margin);
    }
    return around;
}

/// The low 16 bits, each followed by a zero.
std::uint32_t Spread(std::uint32_t bits) {
    bits &= 0xFFFF;
    bits = (bits | (bits << 8)) & 0x00FF00FF;
    bits = (bits | (bits << 4)) & 0x0F0F0F0F;
    bits = (bits | (bits << 2)) & 0x33333333;
    return (bits | (bits << 1)) & 0x55555555;
}

/// Places along the Morton curve over an area.
class Curve {
public:
    explicit Curve(const CRect &area)
        : m_left(area.left),
          m_top(area.top),
          m_scaleX(CELLS / Extent(area.left, area.right)),
          m_scaleY(CELLS / Extent(area.top, area.bottom)) {}

    std::uint32_t At(const CRect &box) const {
        const double x = (box.left * 0.5 + box.right * 0.5 - m_left) * m_scaleX;
        const double y = (box.top * 0.5 + box.bottom * 0.5 - m_top) * m_scaleY;
        return Spread(static_cast<std::uint32_t>(x)) | Spread(static_cast<std::uint32_t>(y)) << 1;
    }

private:
    static constexpr double CELLS = 65535.0;
    static double Extent(int first, int last) {
        return std::max(1.0, static_cast<double>(last) - first);
    }

    double m_left;
    double m_top;
    double m_scaleX;
    double m_scaleY;
};

} // namespace

PlaceQuery::PlaceQuery(const ViewTransform &view, const CRect &client)
    : m_zoom(view.Zoom()),
      m_corner(view.Origin().x - view.Scroll().x, view.Origin().y - view.Scroll().y),
      m_client(client) {}

bool PlaceQuery::Touches(const Placed &placed) const {
    const double margin = placed.margin + SLACK;
    const CRect &pixels = placed.pixels;
    return m_corner.x + pixels.left * m_zoom - margin < m_client.right &&
           m_corner.x + (pixels.right + 1.0) * m_zoom + margin > m_client.left &&
           m_corner.y + pixels.top * m_zoom - margin < m_client.bottom &&
           m_corner.y + (pixels.bottom + 1.0) * m_zoom + margin > m_client.top;
}

void PlaceIndex::Clear() {
    m_numbers.clear();
    m_levels.clear();
}

void PlaceIndex::Build(std::span<const Placed> boxes, std::span<const std::uint32_t> numbers) {
    Clear();
    if (boxes.empty())
        return;
    const Curve curve(Around(boxes).pixels);
    std::vector<std::uint64_t> order; // The place along the curve above the position in boxes.
    order.reserve(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i)
        order.push_back(std::uint64_t{curve.At(boxes[i].pixels)} << 32 | i);
    std::sort(order.begin(), order.end());

    std::vector<Placed> level;
    level.reserve(boxes.size());
    m_numbers.reserve(boxes.size());
    for (const std::uint64_t key : order) {
        const auto i = static_cast<std::uint32_t>(key);
        level.push_back(boxes[i]);
        m_numbers.push_back(numbers[i]);
    }
    m_levels.push_back(std::move(level));
    while (m_levels.back().size() > 1) {
        const std::span<const Placed> below = m_levels.back();
        std::vector<Placed> nodes;
        nodes.reserve((below.size() + FAN_OUT - 1) / FAN_OUT);
        for (std::size_t i = 0; i < below.size(); i += FAN_OUT)
            nodes.push_back(Around(below.subspan(i, std::min(FAN_OUT, below.size() - i))));
        m_levels.push_back(std::move(nodes));
    }
}

void PlaceIndex::Find(const PlaceQuery &query, std::span<std::uint64_t> bits) const {
    if (!m_levels.empty())
        FindBelow(m_levels.size() - 1, 0, query, bits);
}

void PlaceIndex::FindBelow(std::size_t level, std::size_t node, const PlaceQuery &query,
                           std::span<std::uint64_t> bits) const {
    if (!query.Touches(m_levels[level][node]))
        return;
    if (level == 0) {
        bits[m_numbers[node] / 64] |= std::uint64_t{1} << (m_numbers[node] % 64);
        return;
    }
    const std::size_t end = std::min((node + 1) * FAN_OUT, m_levels[level - 1].size());
    for (std::size_t child = node * FAN_OUT; child < end; ++child)
        FindBelow(level - 1, child, query, bits);
}

} // namespace tavix
