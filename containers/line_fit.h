/// Straight lines through points.
#pragma once

#include "TAVIX20/platform/export.h"

#include <optional>
#include <span>

/// A point with real coordinates.
struct tagPOINTD {
    double x;
    double y;
};

namespace tavix {

/// A segment of a line.
struct FittedLine {
    tagPOINTD start;
    tagPOINTD end;
};

/// The line with the smallest sum of squared distances at right angles to it (total least squares,
/// Pearson, "On lines and planes of closest fit to systems of points in space", 1901), so that
/// vertical lines are lines like any other. It is cut at the outermost of the points' feet on it
/// and runs to the right, a vertical one downwards. Nothing for fewer than 2 points, points that
/// all coincide or prefer no direction, and coordinates that are not finite.
std::optional<FittedLine> FitLine(std::span<const tagPOINTD> points);

} // namespace tavix
