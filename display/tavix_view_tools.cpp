// The interactive tools of the view: which one is current, and what it hears.

#include "TAVIX20/display/tavix_view.h"

#include "TAVIX20/display/selection.h"
#include "TAVIX20/display/tools/draw_tool.h"
#include "TAVIX20/display/tools/tool_messages.h"
#include "TAVIX20/display/tools/tool_registry.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

using tavix::ToolRegistry;
using tavix::ToolState;

void CTavixView::Tool(int type) {
    LeaveTool();
    const auto choice = tavix::ChoiceOf(type);
    m_tool = ToolState::Shared().currentTool = choice ? choice->id : tavix::SELECT;
    if (choice && choice->isResetOnEntry)
        ToolRegistry::Instance().Current()->OnReset(*this);
    Repaint();
    TakeFocus();
}

/// Whichever window it was at work in.
void CTavixView::LeaveTool() {
    CDrawTool *const left = CurrentTool();
    if (!left)
        return;
    left->OnReset(*this);
    left->OnCancel(*this);
}

int CTavixView::GetTool() const {
    return tavix::TypeOf(m_tool);
}

void CTavixView::SendToolResult() {
    if (CDrawTool *const tool = ToolRegistry::Instance().Current())
        tool->OnSendResult(*this);
}

void CTavixView::Undo() {
    const int current = ToolState::Shared().currentTool;
    if (current == tavix::POLYLINE_FOCUS || current == tavix::POLYGON_FOCUS)
        ToolRegistry::Instance().Current()->OnUndo(*this);
}

/// The global current tool, which may be none, while it is this view's; else the select tool.
CDrawTool *CTavixView::OwnTool() const {
    const ToolRegistry &registry = ToolRegistry::Instance();
    return m_tool == ToolState::Shared().currentTool ? registry.Current() : &registry.Select();
}

CDrawTool *CTavixView::CurrentTool() {
    return ToolRegistry::Instance().Current();
}

unsigned CTavixView::ToolFlags(const QMouseEvent &event) {
    const auto flag = [](bool isSet, unsigned bit) { return isSet ? bit : 0; };
    return flag(event.buttons() & Qt::LeftButton, MK_LBUTTON) |
           flag(event.buttons() & Qt::RightButton, MK_RBUTTON) |
           flag(event.modifiers() & Qt::ShiftModifier, MK_SHIFT) |
           flag(event.modifiers() & Qt::ControlModifier, MK_CONTROL);
}

/// False when the tool's work has destroyed the view.
bool CTavixView::TellTool(CDrawTool *tool, ToolOperation operation, const QMouseEvent &event,
                          CPoint point) {
    const QPointer<CTavixView> alive(this);
    const bool nested = std::exchange(m_inMouseEvent, true);
    if (tool)
        (tool->*operation)(*this, ToolFlags(event), point);
    if (!alive)
        return false;
    m_inMouseEvent = nested;
    return true;
}

bool CTavixView::TellToolOfMove(const QMouseEvent &event, CPoint point) {
    const ToolState &state = ToolState::Shared();
    if (point == state.press || point == state.last)
        return true;
    return TellTool(OwnTool(), &CDrawTool::OnMouseMove, event, point);
}

/// No button is down any more, and no release has told of it.
void CTavixView::LoseButtons() {
    if (CDrawTool *const tool = OwnTool(); tool && CDrawTool::IsDragIn(*this))
        tool->DropDrag();
    ReleaseMouse();
}

/// Whether the tool has something to draw.
bool CTavixView::HasStroke() const {
    const CDrawTool *const tool = OwnTool();
    return tool && tool->HasStrokeIn(*this);
}

void CTavixView::PaintTool(QPainter &painter) {
    if (!HasStroke())
        return;
    painter.save();
    OwnTool()->OnDraw(*this, painter);
    painter.restore();
}

bool CTavixView::HandleToolMessage(QEvent &event) {
    if (event.type() == tavix::ToolFinishEvent::TYPE) {
        const auto &message = static_cast<const tavix::ToolFinishEvent &>(event);
        RaiseToolFinish(GetTool(), {message.X(), message.Y()}, message.Result());
        return true;
    }
    if (event.type() == tavix::ToolCancelledEvent::TYPE) {
        Repaint();
        return true;
    }
    return false;
}

void CTavixView::SetToolCursor(const QCursor &cursor) {
    viewport()->setCursor(cursor);
}

void CTavixView::TakeFocus() {
    setFocus(Qt::OtherFocusReason);
}

void CTavixView::ScrollTo(CPoint position) {
    m_transform.SetScroll(position);
    ApplyTransform();
}

CDrawObj *CTavixView::SelectedObject() {
    return tavix::Selection::Array() == &m_objects ? tavix::Selection::Object() : nullptr;
}

/// Tools are process-wide; what the last window left behind is not this one's.
void CTavixView::showEvent(QShowEvent *event) {
    QAbstractScrollArea::showEvent(event);
    if (std::exchange(m_wasShown, true))
        return;
    LeaveTool();
    m_tool = ToolState::Shared().currentTool = tavix::SELECT;
}
