#include "TAVIX20/support/mm_timers.h"

#include "TAVIX20/platform/multimedia_timer.h"

#include <algorithm>

CMMTimers::CMMTimers(unsigned int resolution) {
    const auto [minimum, maximum] = tavix::GetTimerCapabilities();
    const DWORD clamped = std::clamp(resolution, minimum, maximum);
    if (tavix::BeginTimerPeriod(clamped))
        m_resolution = clamped;
}

CMMTimers::CMMTimers() {
    const DWORD minimum = tavix::GetTimerCapabilities().minimumPeriod;
    if (tavix::BeginTimerPeriod(minimum))
        tavix::EndTimerPeriod(minimum);
}

CMMTimers::~CMMTimers() {
    EndEvents(m_timerId);
    if (m_resolution != 0)
        tavix::EndTimerPeriod(m_resolution);
}

int CMMTimers::StartTimer(unsigned int period, int oneShot) {
    const bool wasRunning = m_running.exchange(1) != 0;
    if (wasRunning && oneShot == 0)
        return 0;
    const auto kind = oneShot != 0 ? tavix::TimerKind::OneShot : tavix::TimerKind::Periodic;
    const auto procedure = [](void *timer) { static_cast<CMMTimers *>(timer)->TimerProc(); };
    return tavix::StartTimerEvent(period, kind, procedure, this, m_timerId) ? 1 : 0;
}

int CMMTimers::StopTimer() {
    DWORD id = m_timerId;
    if (!EndEvents(id))
        return 0;
    // Unless the timer was started again meanwhile.
    m_timerId.compare_exchange_strong(id, 0);
    return 1;
}

/// Ends all events of this object, and says whether the one with this id was among them.
bool CMMTimers::EndEvents(DWORD id) {
    m_running = 0;
    const bool ended = tavix::KillTimerEvent(id);
    // Others are left when a one-shot start replaced the id, or when a call that was under way just
    // now started the timer again.
    if (tavix::KillTimerEventsOf(this) > 0)
        m_running = 0;
    return ended;
}

// The two values belong together, and a call may come while they change. A lock could be left taken
// in a forked child, so the reader takes none: it reads again when the count of changes moved.
void CMMTimers::RegisterCallBack(CallBack callback, void *userData) {
    DWORD count = m_registrations & ~DWORD{1};
    while (!m_registrations.compare_exchange_weak(count, count + 1))
        count &= ~DWORD{1};
    m_callback = callback;
    m_userData = userData;
    ++m_registrations;
}

void CMMTimers::TimerProc() {
    DWORD count;
    CallBack callback;
    void *userData;
    do {
        count = m_registrations;
        callback = m_callback;
        userData = m_userData;
    } while (count % 2 != 0 || count != m_registrations);
    if (callback)
        callback(userData);
}

unsigned int CMMTimers::GetTimerRes() const {
    return m_resolution;
}
