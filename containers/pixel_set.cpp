// Holes are found among the gaps between runs: gaps of neighbouring rows that touch, also at a
// corner, are united, and so is every gap with the outside that touches what lies left of the first
// or right of the last run of a neighbouring row. What is not united with the outside is a hole.

#include "TAVIX20/containers/pixel_set.h"

#include "TAVIX20/platform/region.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace tavix {

namespace {

bool IsBefore(const tagPOINT &a, const tagPOINT &b) {
    return a.y != b.y ? a.y < b.y : a.x < b.x;
}

/// Disjoint sets of numbers, each named by its smallest.
class DisjointSets {
public:
    std::size_t Add() {
        m_parents.push_back(m_parents.size());
        return m_parents.size() - 1;
    }

    std::size_t Find(std::size_t i) {
        while (m_parents[i] != i) {
            m_parents[i] = m_parents[m_parents[i]];
            i = m_parents[i];
        }
        return i;
    }

    void Unite(std::size_t a, std::size_t b) {
        const auto [low, high] = std::minmax({Find(a), Find(b)});
        m_parents[high] = low;
    }

private:
    std::vector<std::size_t> m_parents;
};

/// The gaps of one row: those numbered [firstGap, endGap), between the row's first and last run.
struct Row {
    LONG y;
    LONG left;
    LONG right;
    std::size_t firstGap;
    std::size_t endGap;
};

class HoleFinder {
public:
    explicit HoleFinder(std::span<const RECT> runs) {
        m_gaps.emplace_back(); // Number 0 stands for the outside.
        m_sets.Add();
        for (std::size_t first = 0; first < runs.size();) {
            std::size_t end = first + 1;
            Row row{runs[first].top, runs[first].left, 0, m_gaps.size(), 0};
            for (; end < runs.size() && runs[end].top == row.y; ++end) {
                m_gaps.push_back({runs[end - 1].right, row.y, runs[end].left, row.y + 1});
                m_sets.Add();
            }
            row.right = runs[end - 1].right;
            row.endGap = m_gaps.size();
            m_rows.push_back(row);
            first = end;
        }
    }

    std::vector<std::vector<RECT>> Find() {
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            const bool hasAbove = i > 0 && m_rows[i - 1].y + 1 == m_rows[i].y;
            const bool hasBelow = i + 1 < m_rows.size() && m_rows[i].y + 1 == m_rows[i + 1].y;
            if (!hasAbove || !hasBelow)
                UniteWithOutside(m_rows[i], nullptr);
            if (hasAbove) {
                UniteWithOutside(m_rows[i], &m_rows[i - 1]);
                UniteWithOutside(m_rows[i - 1], &m_rows[i]);
                UniteNeighbours(m_rows[i - 1], m_rows[i]);
            }
        }
        return Collect();
    }

private:
    /// Unites the row's gaps with the outside where they touch it in the neighbouring row; a row
    /// without runs, null, is outside altogether.
    void UniteWithOutside(const Row &row, const Row *neighbour) {
        for (std::size_t gap = row.firstGap; gap < row.endGap; ++gap)
            if (!neighbour || m_gaps[gap].left <= neighbour->left ||
                m_gaps[gap].right >= neighbour->right)
                m_sets.Unite(gap, 0);
    }

    void UniteNeighbours(const Row &above, const Row &below) {
        std::size_t a = above.firstGap;
        std::size_t b = below.firstGap;
        while (a < above.endGap && b < below.endGap) {
            if (m_gaps[a].left <= m_gaps[b].right && m_gaps[b].left <= m_gaps[a].right)
                m_sets.Unite(a, b);
            if (m_gaps[a].right < m_gaps[b].right)
                ++a;
            else
                ++b;
        }
    }

    std::vector<std::vector<RECT>> Collect() {
        std::vector<std::vector<RECT>> holes;
        std::map<std::size_t, std::size_t> holeOfSet;
        for (std::size_t gap = 1; gap < m_gaps.size(); ++gap) {
            const std::size_t set = m_sets.Find(gap);
            if (set == 0)
                continue;
            const auto [found, isNew] = holeOfSet.try_emplace(set, holes.size());
            if (isNew)
                holes.emplace_back();
            holes[found->second].push_back(m_gaps[gap]);
        }
        return holes;
    }

    std::vector<RECT> m_gaps;
    std::vector<Row> m_rows;
    DisjointSets m_sets;
};

} // namespace

PixelSet::PixelSet(std::span<const tagPOINT> points) {
    std::vector<tagPOINT> sorted;
    sorted.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(sorted), IsRegionPoint);
    std::sort(sorted.begin(), sorted.end(), IsBefore);
    for (const tagPOINT &point : sorted) {
        const bool continues =
            !m_runs.empty() && m_runs.back().top == point.y && m_runs.back().right >= point.x;
        if (continues)
            m_runs.back().right = std::max(m_runs.back().right, point.x + 1);
        else
            m_runs.push_back({point.x, point.y, point.x + 1, point.y + 1});
    }
}

bool PixelSet::Contains(int x, int y) const {
    const auto after = std::upper_bound(m_runs.begin(), m_runs.end(), tagPOINT{x, y},
                                        [](const tagPOINT &point, const RECT &run) {
                                            return IsBefore(point, {run.left, run.top});
                                        });
    return after != m_runs.begin() && (after - 1)->top == y && x < (after - 1)->right;
}

std::vector<std::vector<RECT>> PixelSet::Holes() const {
    return HoleFinder(m_runs).Find();
}

std::int64_t AreaOf(std::span<const RECT> runs) {
    return std::accumulate(runs.begin(), runs.end(), std::int64_t{0},
                           [](std::int64_t sum, const RECT &run) {
                               return sum + (std::int64_t{run.right} - run.left) *
                                                (std::int64_t{run.bottom} - run.top);
                           });
}

} // namespace tavix
