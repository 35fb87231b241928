// Scan conversion of polygons. An edge covers the rows from its upper end to the one above its
// lower end; in row y it stands at the first column at or right of its exact crossing, which
// Bresenham's steps give without a division. The edges of a row, from left to right, bound its
// runs. Rows in which all edges are upright repeat until the next edge begins or ends, so that they
// cost nothing. Where a row has more crossings than sorting is good for, they are counted column by
// column.

#include "TAVIX20/platform/polygon_filler.h"

#include <algorithm>

namespace tavix {

namespace {

constexpr std::size_t MOST_TO_KEEP_SORTED = 64;
constexpr std::size_t MOST_TO_SORT = 256;

} // namespace

PolygonFiller::Edge::Edge(const POINT &upper, const POINT &lower, int turn)
    : top(upper.y),
      bottom(lower.y),
      column(upper.x),
      height(std::int64_t{lower.y} - upper.y),
      slack(0),
      winding(turn) {
    const std::int64_t dx = std::int64_t{lower.x} - upper.x;
    std::int64_t whole = dx / height;
    if (dx % height < 0)
        --whole;
    step = static_cast<LONG>(whole);
    part = dx - whole * height;
}

/// Begins or ends a run where the column's edges lead into the polygon or out of it.
inline void PolygonFiller::Turn(int before, int behind, LONG column) {
    const bool wasInside = (before & m_mask) != 0;
    const bool isInside = (behind & m_mask) != 0;
    if (!wasInside && isInside)
        m_row[m_runs].left = column;
    else if (wasInside && !isInside)
        m_row[m_runs++].right = column;
}

inline void PolygonFiller::Edge::StepDown() {
    column += step;
    slack -= part;
    if (slack < 0) {
        slack += height;
        ++column;
    }
}

void PolygonFiller::Edge::StepDown(std::int64_t rows) {
    const std::int64_t behind = slack - rows * part;
    const std::int64_t more = behind < 0 ? (-behind + height - 1) / height : 0;
    column = static_cast<LONG>(column + rows * step + more);
    slack = behind + more * height;
}

void PolygonFiller::Start(std::span<const std::span<const POINT>> contours, int fillMode,
                          const RECT &clip) {
    m_mask = fillMode == ALTERNATE ? 1 : ~0;
    m_clip = clip;
    m_edges.clear();
    m_active.clear();
    m_next = 0;
    for (const std::span<const POINT> &points : contours)
        AddContour(points);
    std::sort(m_edges.begin(), m_edges.end(),
              [](const Edge &a, const Edge &b) { return a.top < b.top; });
    m_bottom = clip.top;
}

void PolygonFiller::AddContour(std::span<const POINT> points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        const POINT &from = points[i];
        const POINT &to = points[i + 1 < points.size() ? i + 1 : 0];
        if (from.y < to.y)
            Add({from, to, 1});
        else if (from.y > to.y)
            Add({to, from, -1});
    }
}

void PolygonFiller::Add(Edge edge) {
    if (edge.bottom <= m_clip.top || edge.top >= m_clip.bottom)
        return;
    if (edge.top < m_clip.top) {
        edge.StepDown(std::int64_t{m_clip.top} - edge.top);
        edge.top = m_clip.top;
    }
    edge.bottom = std::min(edge.bottom, m_clip.bottom);
    m_edges.push_back(edge);
}

bool PolygonFiller::Next() {
    m_top = m_bottom;
    if (!m_active.empty() && m_firstBottom <= m_top)
        std::erase_if(m_active, [this](const Edge &edge) { return edge.bottom <= m_top; });
    if (m_active.empty()) {
        if (m_next == m_edges.size())
            return false;
        m_top = std::max(m_top, m_edges[m_next].top);
    }
    for (; m_next < m_edges.size() && m_edges[m_next].top <= m_top; ++m_next)
        m_active.push_back(m_edges[m_next]);
    m_bottom = TakeCrossings(m_top);
    MakeRow();
    return true;
}

/// Takes the crossings of row y, brings the edges to the first row that may differ and returns it.
LONG PolygonFiller::TakeCrossings(LONG y) {
    if (m_active.size() <= MOST_TO_KEEP_SORTED)
        SortActive();
    m_firstBottom = m_clip.bottom;
    bool areUpright = true;
    m_crossings.resize(m_active.size());
    Crossing *crossing = m_crossings.data();
    for (Edge &edge : m_active) {
        *crossing++ = {std::clamp(edge.column, m_clip.left, m_clip.right), edge.winding};
        areUpright &= edge.IsUpright();
        m_firstBottom = std::min(m_firstBottom, edge.bottom);
        edge.StepDown(); // An upright one stays where it is.
    }
    if (!areUpright)
        return y + 1;
    return std::min(m_firstBottom, m_next < m_edges.size() ? m_edges[m_next].top : m_clip.bottom);
}

/// From left to right. From one row to the next few edges change places.
void PolygonFiller::SortActive() {
    for (std::size_t i = 1; i < m_active.size(); ++i) {
        if (m_active[i - 1].column <= m_active[i].column)
            continue;
        const Edge edge = m_active[i];
        std::size_t k = i;
        for (; k > 0 && edge.column < m_active[k - 1].column; --k)
            m_active[k] = m_active[k - 1];
        m_active[k] = edge;
    }
}

void PolygonFiller::MakeRow() {
    m_runs = 0;
    m_row.resize(std::max(m_row.size(), m_crossings.size() / 2 + 1));
    const auto width = static_cast<std::size_t>(m_clip.right - m_clip.left);
    if (m_crossings.size() > MOST_TO_SORT && m_crossings.size() > width / 16)
        CountCrossings();
    else
        SortCrossings();
}

void PolygonFiller::SortCrossings() {
    if (m_crossings.size() > MOST_TO_KEEP_SORTED)
        std::sort(m_crossings.begin(), m_crossings.end(),
                  [](const Crossing &a, const Crossing &b) { return a.column < b.column; });
    int winding = 0;
    for (auto at = m_crossings.begin(); at != m_crossings.end();) {
        const LONG column = at->column;
        int turned = winding;
        for (; at != m_crossings.end() && at->column == column; ++at)
            turned += at->winding;
        Turn(winding, turned, column);
        winding = turned;
    }
}

void PolygonFiller::CountCrossings() {
    m_turns.assign(static_cast<std::size_t>(m_clip.right - m_clip.left) + 1, 0);
    for (const Crossing &crossing : m_crossings)
        m_turns[static_cast<std::size_t>(crossing.column - m_clip.left)] += crossing.winding;
    int winding = 0;
    for (std::size_t i = 0; i < m_turns.size(); ++i)
        if (m_turns[i] != 0) {
            Turn(winding, winding + m_turns[i], m_clip.left + static_cast<LONG>(i));
            winding += m_turns[i];
        }
}

RunRegion FillPolygons(std::span<const std::span<const POINT>> contours, int fillMode,
                       const RECT &clip) {
    RECT bounds{clip.right, clip.bottom, clip.left, clip.top};
    for (const std::span<const POINT> &points : contours)
        for (const POINT &point : points)
            bounds = {std::min(bounds.left, point.x), std::min(bounds.top, point.y),
                      std::max(bounds.right, point.x), std::max(bounds.bottom, point.y)};
    const RECT area{std::max(bounds.left, clip.left), std::max(bounds.top, clip.top),
                    std::min(bounds.right, clip.right), std::min(bounds.bottom, clip.bottom)};
    if (area.left >= area.right || area.top >= area.bottom)
        return {};
    RunRegion region;
    PolygonFiller filler;
    for (filler.Start(contours, fillMode, area); filler.Next();)
        region.AppendBand(filler.Top(), filler.Bottom(), filler.Runs());
    return region;
}

} // namespace tavix
