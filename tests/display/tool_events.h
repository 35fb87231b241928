// Mouse and keys for the tools, and what the host hears of their results.
#pragma once

#include "display/shown_window.h"

#include "TAVIX20/containers/point_array.h"

#include <vector>

/// One result as the host's function got it.
struct ToolResult {
    int tool;
    int x;
    int y;
    std::vector<POINT> points;

    bool operator==(const ToolResult &) const = default;
};

class ToolTest : public ShownWindowTest {
protected:
    void SetUp() override {
        results.clear();
        statusChanges = 0;
        window.RegToolFinishProc([](int tool, int x, int y, LPARAM points) {
            const auto &list = *reinterpret_cast<const TavixArray::CPointArray *>(points);
            results.push_back(
                {tool, x, y, {list.GetBufPtr(), list.GetBufPtr() + list.GetElementCount()}});
            return 0;
        });
        window.RegStatusChangedProc([] { return ++statusChanges, 0; });
        window.EnableContextMenu(0);
    }

    /// A picture of 100 x 80 pixels that fills the window from its corner on.
    void ShowPicture(double zoom = 2.0) {
        Show(100, 80);
        const CTavixImage8 image = Noise(100, 80);
        window.SetImage(&image);
        window.Zoom(zoom);
    }

    static void Send(CTavixWnd &target, QEvent::Type type, QPoint point, Qt::MouseButton button,
                     Qt::MouseButtons buttons) {
        QMouseEvent event(type, point, point, button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(ViewOf(target).viewport(), &event);
    }
    void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        Send(window, QEvent::MouseButtonPress, {x, y}, button, button);
    }
    void Move(int x, int y, Qt::MouseButtons buttons = Qt::NoButton) {
        Send(window, QEvent::MouseMove, {x, y}, Qt::NoButton, buttons);
    }
    void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        Send(window, QEvent::MouseButtonRelease, {x, y}, button, Qt::NoButton);
    }
    void DoubleClick(int x, int y) {
        Send(window, QEvent::MouseButtonDblClick, {x, y}, Qt::LeftButton, Qt::LeftButton);
        Release(x, y);
    }
    void Click(int x, int y) { ClickIn(window, {x, y}); }
    void Drag(QPoint from, QPoint to) {
        Press(from.x(), from.y());
        Move((from.x() + to.x()) / 2, (from.y() + to.y()) / 2, Qt::LeftButton);
        Move(to.x(), to.y(), Qt::LeftButton);
        Release(to.x(), to.y());
    }

    /// Another window with the same picture at the zoom 1.
    static void ShowOther(CTavixWnd &other) {
        other.resize(100, 80);
        other.show();
        const CTavixImage8 image = Noise(100, 80);
        other.SetImage(&image);
        other.Zoom(1.0);
    }
    static void ClickIn(CTavixWnd &target, QPoint point) {
        Send(target, QEvent::MouseButtonPress, point, Qt::LeftButton, Qt::LeftButton);
        Send(target, QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton);
    }

    static inline std::vector<ToolResult> results;
    static inline int statusChanges = 0;
};
