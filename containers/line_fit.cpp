// The direction is the main axis of the points' second moments about their mean. Its angle has a
// closed form: tan 2a = 2 sxy / (sxx - syy).

#include "TAVIX20/containers/line_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavix {

namespace {

tagPOINTD MeanOf(std::span<const tagPOINTD> points) {
    tagPOINTD sum{0.0, 0.0};
    for (const tagPOINTD &point : points)
        sum = {sum.x + point.x, sum.y + point.y};
    const auto count = static_cast<double>(points.size());
    return {sum.x / count, sum.y / count};
}

struct Moments {
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
};

Moments MomentsOf(std::span<const tagPOINTD> points, const tagPOINTD &mean) {
    Moments moments;
    for (const tagPOINTD &point : points) {
        const double dx = point.x - mean.x;
        const double dy = point.y - mean.y;
        moments.xx += dx * dx;
        moments.xy += dx * dy;
        moments.yy += dy * dy;
    }
    return moments;
}

} // namespace

std::optional<FittedLine> FitLine(std::span<const tagPOINTD> points) {
    if (points.size() < 2)
        return std::nullopt;
    const tagPOINTD mean = MeanOf(points);
    const Moments moments = MomentsOf(points, mean);
    const double preference = std::hypot(moments.xx - moments.yy, 2 * moments.xy);
    constexpr double leastPreference = 1e-12; // Of the whole spread: rounding errors lie below.
    if (!std::isfinite(preference) || preference <= leastPreference * (moments.xx + moments.yy))
        return std::nullopt;

    const double angle = std::atan2(2 * moments.xy, moments.xx - moments.yy) / 2;
    const tagPOINTD direction{std::cos(angle), std::sin(angle)};
    double first = std::numeric_limits<double>::infinity();
    double last = -first;
    for (const tagPOINTD &point : points) {
        const double foot = (point.x - mean.x) * direction.x + (point.y - mean.y) * direction.y;
        first = std::min(first, foot);
        last = std::max(last, foot);
    }
    const auto at = [&](double foot) {
        return tagPOINTD{mean.x + foot * direction.x, mean.y + foot * direction.y};
    };
    // The angle lies between -90 and 90 degrees: at -90 the line is vertical and would run upwards.
    FittedLine line{at(first), at(last)};
    if (line.start.x > line.end.x || (moments.xx == 0.0 && line.start.y > line.end.y))
        std::swap(line.start, line.end);
    return line;
}

} // namespace tavix
