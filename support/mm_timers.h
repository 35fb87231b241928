/// CMMTimers: a periodic or one-shot timer.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <atomic>

/// A timer that calls a registered function on the thread of the timer service, which all timers of
/// the process share: the function should be short, must not throw, and takes care itself of the
/// data that it shares. All operations may be called from any thread and from within the callback.
///
/// Periods and resolutions are whole milliseconds from 1 to 1,000,000. A periodic timer does not
/// drift, and makes up for calls that it missed by less than a second.
///
/// In a forked child no timer runs; objects that ran in the parent are to be stopped before they
/// can be started.
class TAVIX_API CMMTimers {
public:
    /// What a timer calls, with the user data that was registered; the result is not used.
    using CallBack = int (*)(void *userData);

    /// Brings the resolution into the range that the system offers and asks the system for it.
    explicit CMMTimers(unsigned int resolution);
    /// Holds no resolution (0): the timer runs with the system's best accuracy. Unlike
    /// CMMTimers(0), which holds the smallest resolution.
    CMMTimers();
    /// Stops the timer as StopTimer does and gives the resolution back.
    virtual ~CMMTimers();
    CMMTimers(const CMMTimers &) = delete;
    CMMTimers &operator=(const CMMTimers &) = delete;

    /// Starts the timer: one call after period milliseconds when oneShot is not 0, else a call
    /// every period milliseconds. Returns 1, or 0 when
    /// - a periodic timer is asked for while the timer counts as running (nothing changes), or
    /// - the system refuses: a period out of range, or no thread left. The timer then counts as
    ///   running all the same until StopTimer.
    /// A timer counts as running from StartTimer to StopTimer, also after a one-shot call. A
    /// one-shot start of a running timer starts a second event beside the first; StopTimer ends
    /// both.
    int StartTimer(unsigned int period, int oneShot);

    /// Stops the timer. When this returns, no call is under way and none will come; from within the
    /// callback it returns at once, and that call is the last. Do not call it while holding a lock
    /// that the callback waits for. Returns 1, or 0 when the event started last is over already:
    /// never started, stopped, or a one-shot event whose call has returned.
    int StopTimer();

    /// Sets what the timer calls; null calls nothing. Takes effect from the next call on.
    void RegisterCallBack(CallBack callback, void *userData);

    /// Calls the callback with the user data if one is registered; what the timer does when it is
    /// due.
    void TimerProc();

    /// The resolution in milliseconds that this object asked the system for, 0 when it holds none.
    unsigned int GetTimerRes() const;

private:
    bool EndEvents(DWORD id);

    DWORD m_resolution = 0;
    std::atomic<DWORD> m_timerId = 0;
    std::atomic<LONG> m_running = 0;
    std::atomic<void *> m_userData = nullptr;
    std::atomic<CallBack> m_callback = nullptr;
    /// Counts the changes of callback and user data twice: odd while one is under way.
    std::atomic<DWORD> m_registrations = 0;
};
