/// CDrawTool: what all interactive tools have in common.
#pragma once

#include "TAVIX20/display/tools/tool_ids.h"
#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <QPointer>

class CTavixView;
class QPainter;

namespace TavixArray {
class CPointArray;
}

/// The buttons and keys that are down during a mouse event.
inline constexpr unsigned MK_LBUTTON = 0x0001;
inline constexpr unsigned MK_RBUTTON = 0x0002;
inline constexpr unsigned MK_SHIFT = 0x0004;
inline constexpr unsigned MK_CONTROL = 0x0008;

namespace tavix {

/// What all tools of the process share.
struct TAVIX_API ToolState {
    int currentTool = SELECT; ///< The global current tool.
    CPoint press;             ///< The press point and the last point; client coordinates.
    CPoint last;
    CPoint imagePress; ///< The press point of the left button in image coordinates, then.
    bool isDragging = false;
    QPointer<CTavixView> view; ///< Where the press was.

    static ToolState &Shared();
};

} // namespace tavix

/// A tool turns a press, a drag or a series of clicks into a list of image points, and draws what
/// it has of it meanwhile. There is one object of each tool in the process; all views share them.
///
/// Points are in client coordinates unless it is said otherwise. A host's function may destroy the
/// view in the course of Finish; whoever calls it touches the view no more unless it returns true.
class TAVIX_API CDrawTool {
public:
    explicit CDrawTool(tavix::ToolId id) : m_id(id) {}
    virtual ~CDrawTool() = default;
    CDrawTool(const CDrawTool &) = delete;
    CDrawTool &operator=(const CDrawTool &) = delete;

    /// Captures the mouse, notes the press, gives the view the focus.
    virtual void OnLButtonDown(CTavixView &view, unsigned flags, CPoint point);
    virtual void OnLButtonUp(CTavixView &view, unsigned flags, CPoint point);
    virtual void OnMouseMove(CTavixView &view, unsigned flags, CPoint point);
    /// Drops a drag, makes the select tool current and tells the view.
    virtual void OnCancel(CTavixView &view);
    virtual void OnLButtonDblClk(CTavixView &, unsigned, CPoint) {}
    virtual void OnRButtonDown(CTavixView &view, unsigned flags, CPoint point);
    virtual void OnRButtonUp(CTavixView &view, unsigned flags, CPoint point);
    virtual void OnReserved() {} ///< Keeps its place among the operations; does nothing.
    virtual void OnUndo(CTavixView &) {}
    virtual void OnSendResult(CTavixView &) {}
    /// Whether something is under way in the view that OnDraw shows: by default a drag.
    virtual bool HasStrokeIn(const CTavixView &view) const { return IsDragIn(view); }
    /// Draws the tool's feedback over a view in which it has a stroke.
    virtual void OnDraw(CTavixView &, QPainter &) {}
    /// Forgets the points collected, in whichever view they were; called when the tool is left and
    /// when it is entered.
    virtual void OnReset(CTavixView &) {}

    /// Ends a drag that no release will finish, in whichever view it is. Nothing of it stays.
    virtual void DropDrag();

    /// The Escape key; false where the tool has no use for it.
    virtual bool OnEscape(CTavixView &) { return false; }

    /// Whether the left button is held after a press in this view.
    static bool IsDragIn(const CTavixView &view);

    tavix::ToolId Id() const { return m_id; }

protected:
    /// Half the side, in client pixels, of the square that a click must not leave.
    static constexpr int CLICK_REACH = 3;

    static tavix::ToolState &State() { return tavix::ToolState::Shared(); }
    /// Whether the release of a button is a click: less than 3 pixels from the press on both axes.
    static bool IsClick(CPoint release);
    /// Whether the drag from the press to the point is under 2 pixels on both axes.
    static bool IsTooShort(CPoint point);

    /// Hands the result, image points, to the host with the client point of the event that finished
    /// the tool, then raises the status-changed event. False when the view is gone.
    static bool Finish(CTavixView &view, CPoint point, const TavixArray::CPointArray &result);

private:
    const tavix::ToolId m_id;
};
