// The vertical sides of the rectangles are the pieces from which outlines are made: a left side
// runs upwards, a right side downwards. On every line between two bands the pieces that arrive
// there are linked to those that leave: straight on where two sides of one kind meet, otherwise
// along the stretches of the line that have the set on one side only. Where four stretches meet in
// a point, each piece turns into the stretch of its own rectangle, which keeps parts that touch at
// a corner apart. One pass over the bands links everything, in time linear in the number of
// rectangles.

#include "TAVIX20/containers/outline_tracer.h"

#include <algorithm>
#include <utility>

namespace tavix {

namespace {

constexpr std::int32_t NONE = -1;

/// The pieces of rectangle i: 2 i is its left side, 2 i + 1 its right side.
std::int32_t LeftPiece(std::size_t rect) {
    return static_cast<std::int32_t>(2 * rect);
}

bool IsLeft(std::int32_t piece) {
    return piece % 2 == 0;
}

/// A place on a line where a side of the band above or below, or of both, ends.
struct Corner {
    LONG x;
    std::int32_t above = NONE;
    std::int32_t below = NONE;
};

class Tracer {
public:
    explicit Tracer(std::span<const RECT> rects) : m_rects(rects), m_next(2 * rects.size(), NONE) {}

    void Trace(const std::function<void(std::span<const POINT>, bool)> &visit) {
        LinkAllLines();
        std::vector<POINT> corners;
        for (std::size_t first = 0; first < m_next.size(); ++first)
            if (m_next[first] != NONE) {
                const auto piece = static_cast<std::int32_t>(first);
                Follow(piece, corners);
                visit(corners, !IsLeft(piece));
            }
    }

private:
    /// The rectangles [first, end) of a band.
    struct Band {
        std::size_t first = 0;
        std::size_t end = 0;
    };

    void LinkAllLines() {
        Band above;
        for (std::size_t first = 0; first < m_rects.size();) {
            Band band{first, first};
            while (band.end < m_rects.size() && m_rects[band.end].top == m_rects[first].top)
                ++band.end;
            const bool touches =
                above.end > above.first && m_rects[above.first].bottom == m_rects[first].top;
            if (!touches)
                LinkLine(above, {});
            LinkLine(touches ? above : Band{}, band);
            above = band;
            first = band.end;
        }
        LinkLine(above, {});
    }

    /// All corners on the line between the two bands, from left to right.
    void CollectCorners(Band above, Band below) {
        m_corners.clear();
        const auto side = [this](const Band &band, std::size_t i) {
            const RECT &rect = m_rects[band.first + i / 2];
            return i % 2 == 0 ? rect.left : rect.right;
        };
        const std::size_t countAbove = 2 * (above.end - above.first);
        const std::size_t countBelow = 2 * (below.end - below.first);
        for (std::size_t a = 0, b = 0; a < countAbove || b < countBelow;) {
            const bool takeAbove =
                a < countAbove && (b == countBelow || side(above, a) <= side(below, b));
            const bool takeBelow =
                b < countBelow && (a == countAbove || side(below, b) <= side(above, a));
            Corner corner{takeAbove ? side(above, a) : side(below, b)};
            if (takeAbove)
                corner.above = LeftPiece(above.first) + static_cast<std::int32_t>(a++);
            if (takeBelow)
                corner.below = LeftPiece(below.first) + static_cast<std::int32_t>(b++);
            m_corners.push_back(corner);
        }
    }

    void LinkLine(Band above, Band below) {
        CollectCorners(above, below);
        bool isSetAbove = false;
        bool isSetBelow = false;
        for (std::size_t i = 0; i < m_corners.size(); ++i) {
            const Corner &corner = m_corners[i];
            if (corner.above != NONE)
                isSetAbove = IsLeft(corner.above);
            if (corner.below != NONE)
                isSetBelow = IsLeft(corner.below);
            LinkStraight(corner);
            // A stretch with the set below only runs to the right, with the set above only to the
            // left.
            if (isSetBelow && !isSetAbove)
                Link(ArrivingBeforeTop(corner), LeavingAfterTop(m_corners[i + 1]));
            else if (isSetAbove && !isSetBelow)
                Link(ArrivingBeforeBottom(m_corners[i + 1]), LeavingAfterBottom(corner));
        }
    }

    void LinkStraight(const Corner &corner) {
        if (corner.above == NONE || corner.below == NONE ||
            IsLeft(corner.above) != IsLeft(corner.below))
            return;
        if (IsLeft(corner.above))
            Link(corner.below, corner.above);
        else
            Link(corner.above, corner.below);
    }

    // The piece that arrives at or leaves a stretch's end: of the stretch's own band if that has
    // one there, else of the other band.
    static std::int32_t ArrivingBeforeTop(const Corner &corner) {
        return corner.below != NONE && IsLeft(corner.below) ? corner.below : corner.above;
    }
    static std::int32_t LeavingAfterTop(const Corner &corner) {
        return corner.below != NONE && !IsLeft(corner.below) ? corner.below : corner.above;
    }
    static std::int32_t ArrivingBeforeBottom(const Corner &corner) {
        return corner.above != NONE && !IsLeft(corner.above) ? corner.above : corner.below;
    }
    static std::int32_t LeavingAfterBottom(const Corner &corner) {
        return corner.above != NONE && IsLeft(corner.above) ? corner.above : corner.below;
    }

    void Link(std::int32_t from, std::int32_t to) { m_next[static_cast<std::size_t>(from)] = to; }

    POINT EndOf(std::int32_t piece) const {
        const RECT &rect = m_rects[static_cast<std::size_t>(piece / 2)];
        return IsLeft(piece) ? POINT{rect.left, rect.top} : POINT{rect.right, rect.bottom};
    }
    POINT StartOf(std::int32_t piece) const {
        const RECT &rect = m_rects[static_cast<std::size_t>(piece / 2)];
        return IsLeft(piece) ? POINT{rect.left, rect.bottom} : POINT{rect.right, rect.top};
    }

    // The first piece in raster order lies at the outline's top left: a left side of a part, a
    // right side (of what lies left of it) of a hole.
    // Takes the pieces of the outline out of their links.
    void Follow(std::int32_t first, std::vector<POINT> &corners) {
        corners.clear();
        std::int32_t piece = first;
        do {
            const std::int32_t next = std::exchange(m_next[static_cast<std::size_t>(piece)], NONE);
            if (EndOf(piece) != StartOf(next)) {
                corners.push_back(EndOf(piece));
                corners.push_back(StartOf(next));
            }
            piece = next;
        } while (piece != first);
        // A hole's first side runs downwards: its top-left corner is the start, which came last.
        if (!IsLeft(first))
            std::rotate(corners.begin(), corners.end() - 1, corners.end());
    }

    std::span<const RECT> m_rects;
    std::vector<std::int32_t> m_next; ///< The piece that follows each piece.
    std::vector<Corner> m_corners;    ///< Of the line being linked.
};

} // namespace

std::vector<Outline> TraceOutlines(std::span<const RECT> rects) {
    std::vector<Outline> outlines;
    TraceOutlines(rects, [&outlines](std::span<const POINT> corners, bool isHole) {
        outlines.push_back({{corners.begin(), corners.end()}, isHole});
    });
    return outlines;
}

void TraceOutlines(std::span<const RECT> rects,
                   const std::function<void(std::span<const POINT> corners, bool isHole)> &visit) {
    Tracer(rects).Trace(visit);
}

std::vector<POINT> JoinOutlines(std::span<const Outline> outlines) {
    std::vector<POINT> polygon;
    for (const Outline &outline : outlines) {
        polygon.insert(polygon.end(), outline.corners.begin(), outline.corners.end());
        polygon.push_back(outline.corners.front());
        if (outline.corners.front() != polygon.front())
            polygon.push_back(polygon.front());
    }
    if (!polygon.empty())
        polygon.pop_back(); // The polygon closes by itself.
    return polygon;
}

void WalkBorderPixels(const Outline &outline, const std::function<void(POINT)> &visit) {
    const std::vector<POINT> &corners = outline.corners;
    bool any = false;
    POINT last{};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const POINT from = corners[i];
        const POINT to = corners[(i + 1) % corners.size()];
        const POINT step{(to.x > from.x) - (to.x < from.x), (to.y > from.y) - (to.y < from.y)};
        // The pixel on the right of a step: below a step to the right, left of a step down, above a
        // step to the left, right of a step up.
        POINT pixel{from.x - (step.x < 0 || step.y > 0), from.y - (step.x < 0 || step.y < 0)};
        for (POINT at = from; at != to; at = {at.x + step.x, at.y + step.y}) {
            if (!any || pixel != last)
                visit(pixel);
            any = true;
            last = pixel;
            pixel = {pixel.x + step.x, pixel.y + step.y};
        }
    }
}

} // namespace tavix
