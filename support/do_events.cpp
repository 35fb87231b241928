// Messages are the events of the calling thread's Qt event dispatcher. It cannot be asked for a
// single event, so one message is one pass of it without waiting: what is pending when the pass
// begins (posted events, window system events, sockets, timers that are due), but not what that
// brings about.

#include "TAVIX20/support/do_events.h"

#include "TAVIX20/support/stdlib.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace tavix {

namespace {

/// Handlers that dispatch messages nest. A handler that always finds a message for itself would go
/// on until the stack ends; at this depth the innermost gets none.
constexpr int DEEPEST_NESTING = 100;

thread_local int nesting = 0;

bool Dispatch(QEventLoop::ProcessEventsFlags flags) {
    QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance();
    if (!dispatcher || !QCoreApplication::instance() || nesting >= DEEPEST_NESTING)
        return false;
    struct Nesting {
        Nesting() { ++nesting; }
        ~Nesting() { --nesting; }
    } const deeper;
    return dispatcher->processEvents(flags);
}

} // namespace

bool DispatchMessage() {
    return Dispatch(QEventLoop::AllEvents);
}

} // namespace tavix

void CStdlib::DoEvents(int count) {
    if (count == -1) {
        // A timer without interval is always due, so timers have one turn only, after the others.
        const auto dispatchAllButTimers = [] {
            while (tavix::Dispatch(QEventLoop::X11ExcludeTimers)) {
            }
        };
        dispatchAllButTimers();
        tavix::Dispatch(QEventLoop::AllEvents);
        dispatchAllButTimers();
        return;
    }
    // A pass may say that there was nothing though it served a timer; what that brought about is
    // seen by the next one. After two of them further tries would find nothing either.
    for (int i = 0, empty = 0; i < count && empty < 2; ++i)
        empty = tavix::DispatchMessage() ? 0 : empty + 1;
}
