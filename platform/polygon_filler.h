/// The scan conversion of polygons, band by band.
#pragma once

#include "TAVIX20/platform/run_region.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tavix {

/// Fills as FillPolygons does. What it needs of memory serves one polygon after the other.
///
///     for (filler.Start(contours, ALTERNATE, clip); filler.Next();)
///         Use(filler.Top(), filler.Bottom(), filler.Runs());
class PolygonFiller {
public:
    void Start(std::span<const std::span<const POINT>> contours, int fillMode, const RECT &clip);
    /// Goes to the next band of the polygon, from the top down; false behind the last one. Two
    /// bands may have equal runs, and one may have none.
    bool Next();

    // The band: the rows [top, bottom) and their runs.
    LONG Top() const { return m_top; }
    LONG Bottom() const { return m_bottom; }
    std::span<const PixelRun> Runs() const { return {m_row.data(), m_runs}; }

private:
    /// An edge on its way down: the column at row y is start + ceil((y - top) * dx / dy).
    struct Edge {
        LONG top;
        LONG bottom;
        LONG column;
        LONG step;           ///< floor(dx / dy).
        std::int64_t part;   ///< dx - step * dy, what the whole steps leave.
        std::int64_t height; ///< dy.
        std::int64_t slack;  ///< How far the column lies beyond the crossing, in units of 1 / dy.
        int winding;         ///< 1 for an edge that was drawn downwards, -1 upwards.

        Edge(const POINT &upper, const POINT &lower, int turn);
        bool IsUpright() const { return step == 0 && part == 0; }
        void StepDown();
        /// The same as so many steps.
        void StepDown(std::int64_t rows);
    };

    struct Crossing {
        LONG column;
        int winding;
    };

    void AddContour(std::span<const POINT> points);
    void Add(Edge edge);
    LONG TakeCrossings(LONG y);
    void SortActive();
    void MakeRow();
    void SortCrossings();
    void CountCrossings();
    void Turn(int before, int behind, LONG column);

    int m_mask = 0; ///< The bits of a winding number that decide.
    RECT m_clip{};
    std::vector<Edge> m_edges; ///< From the upper ends down.
    std::size_t m_next = 0;    ///< The first edge below the rows so far.
    std::vector<Edge> m_active;
    LONG m_firstBottom = 0; ///< Where the first of the active edges ends.
    std::vector<Crossing> m_crossings;
    std::vector<int> m_turns;
    LONG m_top = 0;
    LONG m_bottom = 0;
    std::vector<PixelRun> m_row; ///< Room for the band's runs.
    std::size_t m_runs = 0;
};

} // namespace tavix
