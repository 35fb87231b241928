/// Multimedia timers: one-shot and periodic events that one service thread calls on the monotonic
/// clock. The thread starts with the first event and ends when the library is unloaded.
///
/// All calls on events come from that one thread, so a slow call delays the others. A periodic
/// event is due at its start plus whole multiples of its period: it does not drift. Calls that a
/// delay made it miss are made up for, in turn with the other events, so that counted calls keep
/// time with the clock; an event that is more than a second behind drops the missed ones but the
/// last.
///
/// A forked child has no events: as with the system's own timers, they stay with the parent. Its
/// first event starts a thread of its own. The periods begun are inherited.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <atomic>

namespace tavix {

/// What the timers can do, in milliseconds.
struct TimerCapabilities {
    DWORD minimumPeriod;
    DWORD maximumPeriod;
};

/// 1 to 1,000,000 ms on this platform.
TAVIX_API TimerCapabilities GetTimerCapabilities();

/// Announces that the caller relies on a resolution of period milliseconds, until an EndTimerPeriod
/// with the same period. Events are always as exact as the system's clock; the announcement is only
/// counted. False for a period out of the range of the capabilities.
TAVIX_API bool BeginTimerPeriod(DWORD period);
/// False when no such announcement is open.
TAVIX_API bool EndTimerPeriod(DWORD period);

enum class TimerKind { OneShot, Periodic };

/// What an event calls on the service thread; it must not throw.
using TimerProcedure = void (*)(void *data);

/// Starts an event whose first call is due in period milliseconds. Its id, which is never 0, is
/// stored in id before that call can happen. False (id unchanged) for a period out of the range of
/// the capabilities, a null procedure, when the system has no thread or memory left and after the
/// library's static objects were destroyed.
TAVIX_API bool StartTimerEvent(DWORD period, TimerKind kind, TimerProcedure procedure, void *data,
                               std::atomic<DWORD> &id);

/// Ends an event. When this returns, no call of it is under way and none will come; only from
/// within the event's own call it returns at once, and that call is the last. False when there is
/// no such event: a one-shot event ends by itself with the return of its call.
TAVIX_API bool KillTimerEvent(DWORD id);

/// Ends all events that were started with data, also those that their calls start meanwhile, with
/// the same promise. Returns how many there were.
TAVIX_API int KillTimerEventsOf(const void *data);

} // namespace tavix
