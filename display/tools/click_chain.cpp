#include "TAVIX20/display/tools/click_chain.h"

#include "TAVIX20/display/tavix_view.h"

#include <utility>

namespace tavix {

void ClickChain::Add(CTavixView &view, CPoint imagePoint) {
    if (m_view != &view)
        Clear();
    m_view = &view;
    m_points.push_back(imagePoint);
    Repaint();
}

void ClickChain::DropLast() {
    if (!m_points.empty())
        m_points.pop_back();
    Repaint();
}

void ClickChain::Clear() {
    m_points.clear();
    Repaint();
}

std::vector<POINT> ClickChain::Take(const CTavixView &view) {
    if (m_view != &view)
        return {};
    Repaint();
    return std::exchange(m_points, {});
}

bool ClickChain::IsIn(const CTavixView &view) const {
    return !m_points.empty() && m_view == &view;
}

void ClickChain::Repaint() const {
    if (m_view)
        m_view->Repaint();
}

} // namespace tavix
