// Input and events of the view: keys, wheel, mouse, dropped files, and who hears of them.

#include "TAVIX20/display/tavix_view.h"

#include "TAVIX20/display/tavix_wnd.h"
#include "TAVIX20/display/tools/draw_tool.h"
#include "TAVIX20/image/image_files.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>
#include <utility>

namespace {

constexpr double WHEEL_ZOOM_STEP = 1.0;
constexpr int ROI_OPEN_COMMAND = 6000;
constexpr int ROI_SAVE_COMMAND = 6001;

bool IsArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

/// The client pixel in which the event happened.
CPoint ClientPoint(const QMouseEvent &event) {
    const QPointF position = event.position();
    return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

/// The one local file that is dragged; empty for anything else.
QString DraggedFile(const QDropEvent &event) {
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

unsigned long ValueAt(const CTavixImage &image, CPoint pixel) {
    if (image.GetBitCount() == 8)
        return static_cast<const CTavixImage8 &>(image).GetPixel(pixel.x, pixel.y);
    return static_cast<const CTavixImage24 &>(image).GetPixel(pixel.x, pixel.y);
}

} // namespace

// Keys

bool CTavixView::event(QEvent *event) {
    if (HandleToolMessage(*event))
        return true;
    // The arrow keys belong to the view, even where the host has shortcuts on them.
    if (event->type() == QEvent::ShortcutOverride &&
        IsArrow(static_cast<QKeyEvent *>(event)->key())) {
        event->accept();
        return true;
    }
    return QAbstractScrollArea::event(event);
}

void CTavixView::keyPressEvent(QKeyEvent *event) {
    const auto scroll = [](QScrollBar *bar, QAbstractSlider::SliderAction action) {
        bar->triggerAction(action);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return scroll(horizontalScrollBar(), QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Right:
        return scroll(horizontalScrollBar(), QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_Up:
        return scroll(verticalScrollBar(), QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Down:
        return scroll(verticalScrollBar(), QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_Escape:
        if (CDrawTool *const tool = OwnTool(); tool && tool->OnEscape(*this))
            return;
        [[fallthrough]];
    default:
        event->ignore(); // All other keys are the host's.
    }
}

// Mouse. Each event is handled by the view, then by the host.

// The direction is the reverse of what most programs do; operators of this window know it so.
void CTavixView::wheelEvent(QWheelEvent *event) {
    event->accept();
    const QPoint delta = event->angleDelta();
    const bool touchpadPhase = event->phase() == Qt::ScrollBegin || event->phase() == Qt::ScrollEnd;
    if (delta.isNull() && touchpadPhase)
        return;
    if (delta.y() == 0 && delta.x() != 0)
        return QAbstractScrollArea::wheelEvent(event); // A wheel of its own, which scrolls.
    if (delta.y() > 0)
        ZoomOut(WHEEL_ZOOM_STEP);
    else
        ZoomIn(WHEEL_ZOOM_STEP);
}

void CTavixView::mousePressEvent(QMouseEvent *event) {
    const CPoint point = ClientPoint(*event);
    switch (event->button()) {
    case Qt::LeftButton:
        setFocus(Qt::MouseFocusReason);
        if (TellTool(OwnTool(), &CDrawTool::OnLButtonDown, *event, point))
            RaiseMouse(m_callbacks.leftButtonDown, &CTavixWnd::leftButtonPressed, point);
        break;
    case Qt::RightButton:
        setFocus(Qt::MouseFocusReason);
        if (TellTool(CurrentTool(), &CDrawTool::OnRButtonDown, *event, point))
            RaiseMouse(m_callbacks.rightButtonDown, &CTavixWnd::rightButtonPressed, point);
        break;
    default:
        event->ignore();
    }
}

void CTavixView::mouseMoveEvent(QMouseEvent *event) {
    const CPoint point = ClientPoint(*event);
    m_cursor = point;
    if (event->buttons() == Qt::NoButton)
        LoseButtons(); // A dialog, for example, has taken the release.
    if (!TellToolOfMove(*event, point))
        return;
    const bool left = event->buttons() & Qt::LeftButton;
    const bool right = event->buttons() & Qt::RightButton;
    const QPointer<CTavixView> self(this);
    if ((IsMouseCaptured() && left) || !right)
        RaiseMouse(m_callbacks.mouseMove, &CTavixWnd::mouseMoved, point);
    if (self)
        UpdateReadOut();
}

void CTavixView::mouseReleaseEvent(QMouseEvent *event) {
    const CPoint point = ClientPoint(*event);
    switch (event->button()) {
    case Qt::LeftButton:
        if (TellTool(OwnTool(), &CDrawTool::OnLButtonUp, *event, point))
            RaiseMouse(m_callbacks.leftButtonUp, &CTavixWnd::leftButtonReleased, point);
        break;
    case Qt::RightButton:
        if (TellTool(CurrentTool(), &CDrawTool::OnRButtonUp, *event, point))
            RaiseMouse(m_callbacks.rightButtonUp, &CTavixWnd::rightButtonReleased, point);
        break;
    default:
        event->ignore();
    }
}

void CTavixView::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return mousePressEvent(event); // Only the left button has double clicks.
    const CPoint point = ClientPoint(*event);
    if (TellTool(OwnTool(), &CDrawTool::OnLButtonDblClk, *event, point))
        RaiseMouse(m_callbacks.doubleClick, &CTavixWnd::doubleClicked, point);
}

bool CTavixView::viewportEvent(QEvent *event) {
    const bool handled = QAbstractScrollArea::viewportEvent(event);
    if (event->type() == QEvent::Leave) {
        m_cursor.reset();
        QMetaObject::invokeMethod(
            this, [this] { UpdateReadOut(); }, Qt::QueuedConnection);
    }
    return handled;
}

// Context menu

void CTavixView::contextMenuEvent(QContextMenuEvent *event) {
    if (!m_contextMenuEnabled)
        return event->ignore();
    // A press of the right button has opened the menu already.
    if (event->reason() != QContextMenuEvent::Mouse)
        PopUpContextMenu(event->globalPos());
}

void CTavixView::PopUpContextMenu() {
    if (m_contextMenuEnabled)
        PopUpContextMenu(QCursor::pos());
}

void CTavixView::PopUpContextMenu(const QPoint &globalPosition) {
    if (!m_contextMenu)
        m_contextMenu = NewContextMenu();
    for (QAction *action : m_contextMenu->actions()) {
        if (action->data() == ROI_SAVE_COMMAND)
            action->setVisible(m_rois.GetCount() > 0);
        else if (action->data() != ROI_OPEN_COMMAND)
            action->setEnabled(m_transform.HasImage());
    }
    LoseButtons(); // The menu takes the mouse, and the button's release.
    m_contextMenu->popup(globalPosition);
}

// The actions run after the menu is done: they may destroy it with the window.
QMenu *CTavixView::NewContextMenu() {
    auto *menu = new QMenu(this);
    const auto add = [&](const char *text, auto action) {
        return menu->addAction(text, this, action, Qt::QueuedConnection);
    };
    add("ROI Open(&O) ...", &CTavixView::AskForRoiFileToOpen)->setData(ROI_OPEN_COMMAND);
    add("ROI Save(&S) ...", &CTavixView::AskForRoiFileToSave)->setData(ROI_SAVE_COMMAND);
    menu->addSeparator();
    add("Zoom In(&I)", &CTavixView::ZoomPlus);
    add("Zoom Out(&U)", &CTavixView::ZoomMinus);
    add("Fit to Window(&F)", &CTavixView::ZoomFitTo);
    add("Copy Picture(&C)", [this] { QGuiApplication::clipboard()->setImage(Frame(1.0)); });
    return menu;
}

// Dropped files

void CTavixView::EnableFileDrop(bool enable) {
    viewport()->setAcceptDrops(enable);
}

void CTavixView::dragEnterEvent(QDragEnterEvent *event) {
    if (!DraggedFile(*event).isEmpty())
        event->acceptProposedAction();
}

void CTavixView::dragMoveEvent(QDragMoveEvent *event) {
    event->acceptProposedAction();
}

void CTavixView::dropEvent(QDropEvent *event) {
    const QString path = DraggedFile(*event);
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    auto image = tavix::LoadFileToShow(QFile::encodeName(path).constData());
    const bool loaded = image != nullptr;
    const QPointer<CTavixWnd> window(m_window);
    if (loaded)
        TakeImage(std::move(image));
    if (window)
        Q_EMIT window->fileDropped(path, loaded);
}

// Who hears of it

void CTavixView::RaiseMouse(MouseProc proc, MouseSignal signal, CPoint point) {
    const QPointer<CTavixView> self(this);
    const bool nested = std::exchange(m_inMouseEvent, true);
    if (proc)
        proc(point.x, point.y, reinterpret_cast<LPARAM>(m_window));
    if (self)
        Q_EMIT(m_window->*signal)(point.x, point.y);
    if (self)
        m_inMouseEvent = nested;
}

void CTavixView::Raise(NotifyProc proc, NotifySignal signal) {
    const QPointer<CTavixWnd> window(m_window);
    if (proc)
        proc();
    if (window)
        Q_EMIT(window->*signal)();
}

void CTavixView::RaiseToolFinish(int tool, CPoint point, const TavixArray::CPointArray &points) {
    const QPointer<CTavixWnd> window(m_window);
    if (m_callbacks.toolFinish)
        m_callbacks.toolFinish(tool, point.x, point.y, reinterpret_cast<LPARAM>(&points));
    if (window)
        Q_EMIT window->toolFinished(tool, point.x, point.y, points);
}

void CTavixView::RaiseStatusChanged() {
    Raise(m_callbacks.statusChanged, &CTavixWnd::statusChanged);
}

void CTavixView::RaiseRoiStatusChanged() {
    Raise(m_callbacks.roiStatusChanged, &CTavixWnd::roiStatusChanged);
}

void CTavixView::RaiseImagePositionChanged() {
    Raise(m_callbacks.imagePositionChanged, &CTavixWnd::imagePositionChanged);
}

/// Once for all changes until the event loop runs again, and not from among them.
void CTavixView::TellViewChanged() {
    if (m_viewChangePending)
        return;
    m_viewChangePending = true;
    const auto tell = [this] {
        m_viewChangePending = false;
        const QPointer<CTavixView> self(this);
        Q_EMIT m_window->viewChanged();
        if (self)
            UpdateReadOut();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

/// Tells what lies under the cursor when that is something else than before.
void CTavixView::UpdateReadOut() {
    const std::optional<CPoint> pixel =
        m_image && m_cursor ? m_transform.PixelAt(*m_cursor) : std::nullopt;
    if (!pixel) {
        if (m_lastReadOut) {
            m_lastReadOut.reset();
            Q_EMIT m_window->pixelLeft();
        }
        return;
    }
    const unsigned long value = ValueAt(*m_image, *pixel);
    if (m_lastReadOut && m_lastReadOut->position == *pixel && m_lastReadOut->value == value)
        return;
    m_lastReadOut = ReadOut{*pixel, value};
    Q_EMIT m_window->pixelHovered(pixel->x, pixel->y, value);
}
