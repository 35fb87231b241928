// What CTavixView does with the layer.

#include "TAVIX20/display/tavix_view.h"

#include <utility>

/// An empty layer of the image's size.
void CTavixView::ResetLayer() {
    m_layer.Reset(m_transform.ImageSize());
    LayerChanged();
}

/// One repaint for any number of changes: another is scheduled only after the pixels were handed to
/// a paint.
void CTavixView::LayerChanged() {
    if (!std::exchange(m_layerChanged, true) && m_showLayer)
        Repaint();
}

void CTavixView::ShowLayer(bool show) {
    m_showLayer = show;
    m_layerChanged = true;
    Repaint();
}

/// Tells the picture's painter of what was painted since the last paint.
void CTavixView::HandOverLayer() const {
    if (std::exchange(m_layerChanged, false))
        m_picture.SetLayer(m_showLayer ? &m_layer.Pixels() : nullptr);
}
