/// The points of a series of clicks.
#pragma once

#include "TAVIX20/platform/geometry.h"

#include <QPointer>

#include <vector>

class CTavixView;

namespace tavix {

/// Image points, and the view that was clicked on: each chain belongs to one view. Whatever changes
/// the chain repaints that view.
class ClickChain {
public:
    /// Starts anew where the chain is in another view.
    void Add(CTavixView &view, CPoint imagePoint);
    void DropLast();
    void Clear();
    /// The points, which the chain then has no more; of a chain in another view none.
    std::vector<POINT> Take(const CTavixView &view);

    bool IsIn(const CTavixView &view) const;
    bool IsEmpty() const { return m_points.empty(); }
    const std::vector<POINT> &Points() const { return m_points; }

private:
    void Repaint() const;

    std::vector<POINT> m_points;
    QPointer<CTavixView> m_view;
};

} // namespace tavix
