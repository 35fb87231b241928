/// A scroll bar that keeps up with the screen, not with every step of scrolling.
#pragma once

#include <QBasicTimer>
#include <QScrollBar>

namespace tavix {

/// A style takes longer to paint the two bars than the view to paint the picture, and QScrollBar
/// has them painted for every value. This one shows a value at once, and those that follow faster
/// than a screen shows frames together, the last of them at the latest a frame later.
class ViewScrollBar : public QScrollBar {
public:
    using QScrollBar::QScrollBar;

protected:
    void sliderChange(SliderChange change) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_frame; ///< Runs for as long as the screen takes to show the last paint.
    bool m_isStale = false;
};

} // namespace tavix
