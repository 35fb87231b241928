#include "TAVIX20/display/view_scroll_bar.h"

#include <QTimerEvent>

#include <utility>

namespace tavix {

namespace {

constexpr int FRAME = 16; ///< Milliseconds, of a screen with 60 frames a second.

} // namespace

void ViewScrollBar::sliderChange(SliderChange change) {
    if (change == SliderValueChange) {
        m_isStale = m_frame.isActive();
        if (m_isStale)
            return;
        m_frame.start(FRAME, Qt::PreciseTimer, this);
    }
    QScrollBar::sliderChange(change);
}

void ViewScrollBar::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_frame.timerId())
        return QScrollBar::timerEvent(event);
    m_frame.stop();
    if (std::exchange(m_isStale, false))
        sliderChange(SliderValueChange);
}

} // namespace tavix
