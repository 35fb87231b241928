/// Measures of a shape given by the outlines of its pixels.
#pragma once

#include "TAVIX20/containers/outline_tracer.h"

namespace tavix {

/// Area inside the outline, holes included, in pixels.
double EnclosedArea(const Outline &outline);

/// Length of the outline as a smooth curve: Vossepoel and Smeulders' estimate over the chain of
/// border pixels, 0.980 even + 1.406 odd - 0.091 corners ("Vector code probability and metrication
/// error in the representation of straight lines of finite length", 1982), plus pi for the half
/// pixel between the centres of the border pixels and the edge.
double Perimeter(const Outline &outline);

/// The largest and smallest distance between two parallel lines that touch the shape.
struct FeretDiameters {
    double largest = 0.0;
    POINT first{}; ///< The two corners that lie farthest apart.
    POINT second{};
    double smallest = 0.0;
    POINT edgeStart{}; ///< The hull edge on which one line of the smallest pair lies.
    POINT edgeEnd{};
};

/// By rotating calipers over the convex hull of the corners (Toussaint, "Solving geometric problems
/// with the rotating calipers", 1983). There must be corners.
FeretDiameters MeasureFeret(std::vector<POINT> corners);

} // namespace tavix
