// One thread sleeps until the earliest entry of a queue ordered by time. Everything is guarded by
// one mutex, which is free while a call is under way; whoever ends an event that is being called
// waits for the end of that call on a condition variable.
//
// What a fork cannot carry over (the thread, its condition variables, the call under way) is one
// record, Crew. The child abandons it and makes a new one with its next event. The thread works on
// the crew it was started with, so a child that was forked from within a call leaves the loop when
// that call returns.

#include "TAVIX20/platform/multimedia_timer.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include <csignal>
#include <pthread.h>
#include <sys/prctl.h>

namespace tavix {

namespace {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

constexpr TimerCapabilities CAPABILITIES{1, 1'000'000};
/// An event that is further behind drops calls.
constexpr auto LARGEST_BACKLOG = std::chrono::seconds(1);

bool IsPeriod(DWORD period) {
    return period >= CAPABILITIES.minimumPeriod && period <= CAPABILITIES.maximumPeriod;
}

/// Keeps the host's signal handlers off threads that are started meanwhile. The signals of a
/// thread's own faults still arrive.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t blocked;
        sigfillset(&blocked);
        for (int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS})
            sigdelset(&blocked, fault);
        pthread_sigmask(SIG_SETMASK, &blocked, &m_before);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsBlocked(const SignalsBlocked &) = delete;
    SignalsBlocked &operator=(const SignalsBlocked &) = delete;

private:
    sigset_t m_before;
};

class TimerService {
public:
    // Never destroyed: objects that outlive it still end their events.
    static TimerService &Instance() {
        static auto *const service = new TimerService;
        return *service;
    }

    bool Begin(DWORD period) {
        const std::lock_guard lock(m_mutex);
        ++m_periods[period];
        return true;
    }

    bool End(DWORD period) {
        const std::lock_guard lock(m_mutex);
        const auto begun = m_periods.find(period);
        if (begun == m_periods.end())
            return false;
        if (--begun->second == 0)
            m_periods.erase(begun);
        return true;
    }

    bool Start(DWORD period, TimerKind kind, TimerProcedure procedure, void *data,
               std::atomic<DWORD> &id) {
        const auto interval = std::chrono::milliseconds(period);
        const std::lock_guard lock(m_mutex);
        if (m_stopped)
            return false;
        if (!m_crew)
            StartCrew();
        do
            ++m_lastId;
        while (m_lastId == 0 || m_events.contains(m_lastId));
        const Time due = Clock::now() + interval;
        const Event event{interval, kind, procedure, data, due, due};
        const auto entry = m_queue.emplace(due, m_lastId).first;
        try {
            m_events.emplace(m_lastId, event);
        } catch (...) {
            m_queue.erase(entry);
            throw;
        }
        id = m_lastId;
        if (entry == m_queue.begin())
            m_crew->wake.notify_one();
        return true;
    }

    bool Kill(DWORD id) {
        std::unique_lock lock(m_mutex);
        const auto event = m_events.find(id);
        if (event == m_events.end())
            return false;
        Erase(event);
        WaitForCall(lock, [id](const Crew &crew) { return crew.calledId == id; });
        return true;
    }

    int KillOf(const void *data) {
        std::unique_lock lock(m_mutex);
        int count = 0;
        do {
            for (auto event = m_events.begin(); event != m_events.end();) {
                const bool isOfData = event->second.data == data;
                count += isOfData;
                event = isOfData ? Erase(event) : std::next(event);
            }
        } while (WaitForCall(lock, [data](const Crew &crew) { return crew.calledData == data; }));
        return count;
    }

    /// Lets a call under way finish, then ends the thread. Called from within a call, it leaves the
    /// thread to end after it.
    void Stop() {
        std::unique_lock lock(m_mutex);
        m_stopped = true;
        m_events.clear();
        m_queue.clear();
        if (!m_crew)
            return;
        m_crew->wake.notify_one();
        std::thread thread = std::move(m_crew->thread);
        lock.unlock();
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();
        else
            thread.join();
    }

private:
    struct Event {
        Clock::duration period;
        TimerKind kind;
        TimerProcedure procedure;
        void *data;
        Time due;  ///< On the grid of its periods.
        Time next; ///< In the queue.
    };
    using Events = std::map<DWORD, Event>;
    /// When an event is called next, and its id.
    using Entry = std::pair<Time, DWORD>;

    struct Crew {
        std::condition_variable wake;
        std::condition_variable callEnded;
        DWORD calledId = 0;               ///< The event being called, 0 when none.
        const void *calledData = nullptr; ///< Its data.
        unsigned callsEnded = 0;
        std::thread::id id; ///< That of the thread, also while Stop joins it.
        std::thread thread;
    };

    TimerService() { pthread_atfork(BeforeFork, InParent, InChild); }

    static void BeforeFork() { Instance().m_mutex.lock(); }
    static void InParent() { Instance().m_mutex.unlock(); }
    static void InChild() {
        TimerService &service = Instance();
        // Leaked on purpose: destroying a thread and waits that do not exist here would hang or
        // abort.
        static_cast<void>(service.m_crew.release());
        service.m_events.clear();
        service.m_queue.clear();
        service.m_mutex.unlock();
    }

    void StartCrew() {
        auto crew = std::make_unique<Crew>();
        const SignalsBlocked signalsBlocked;
        crew->thread = std::thread([this, mine = crew.get()] { Serve(*mine); });
        m_crew = std::move(crew);
    }

    Events::iterator Erase(Events::iterator event) {
        m_queue.erase({event->second.next, event->first}); // No entry while it is being called.
        return m_events.erase(event);
    }

    /// Waits for the end of the call under way if it is one that is asked for, unless the caller is
    /// within that call. Returns whether it waited.
    template <typename IsAskedFor>
    bool WaitForCall(std::unique_lock<std::mutex> &lock, IsAskedFor isAskedFor) {
        Crew *const crew = m_crew.get();
        if (!crew || crew->calledId == 0 || !isAskedFor(*crew) ||
            crew->id == std::this_thread::get_id())
            return false;
        crew->callEnded.wait(
            lock, [crew, ended = crew->callsEnded] { return crew->callsEnded != ended; });
        return true;
    }

    void Serve(Crew &crew) {
        // Otherwise the system may add 50 microseconds to each sleep.
        prctl(PR_SET_TIMERSLACK, 1UL);
        std::unique_lock lock(m_mutex);
        crew.id = std::this_thread::get_id();
        while (!m_stopped && m_crew.get() == &crew) {
            if (m_queue.empty()) {
                crew.wake.wait(lock);
                continue;
            }
            const auto [time, id] = *m_queue.begin();
            if (Clock::now() < time)
                crew.wake.wait_until(lock, time);
            else
                Call(crew, lock, id);
        }
    }

    void Call(Crew &crew, std::unique_lock<std::mutex> &lock, DWORD id) {
        // The queue keeps the entry's memory for the event's next time.
        auto entry = m_queue.extract(m_queue.begin());
        const Event called = m_events.find(id)->second;
        crew.calledId = id;
        crew.calledData = called.data;
        lock.unlock();
        called.procedure(called.data);
        lock.lock();
        if (m_crew.get() != &crew)
            return;
        crew.calledId = 0;
        ++crew.callsEnded;
        crew.callEnded.notify_all();
        const auto event = m_events.find(id);
        if (event == m_events.end())
            return;
        if (event->second.kind == TimerKind::OneShot) {
            m_events.erase(event);
            return;
        }
        const Time now = Clock::now();
        Time &due = event->second.due;
        due += called.period;
        if (now - due > LARGEST_BACKLOG)
            due += (now - due) / called.period * called.period;
        // A call that is overdue takes its turn behind the other events that are due by now.
        event->second.next = std::max(due, now);
        entry.value() = {event->second.next, id};
        m_queue.insert(std::move(entry));
    }

    std::mutex m_mutex;
    std::map<DWORD, int> m_periods;
    Events m_events;
    std::set<Entry> m_queue;
    DWORD m_lastId = 0;
    bool m_stopped = false;
    std::unique_ptr<Crew> m_crew;
};

/// Ends the service when the library is unloaded.
const struct ServiceStopper {
    ~ServiceStopper() { TimerService::Instance().Stop(); }
} stopper;

} // namespace

TimerCapabilities GetTimerCapabilities() {
    return CAPABILITIES;
}

bool BeginTimerPeriod(DWORD period) try {
    return IsPeriod(period) && TimerService::Instance().Begin(period);
} catch (const std::exception &) {
    return false;
}

bool EndTimerPeriod(DWORD period) {
    return TimerService::Instance().End(period);
}

bool StartTimerEvent(DWORD period, TimerKind kind, TimerProcedure procedure, void *data,
                     std::atomic<DWORD> &id) try {
    return IsPeriod(period) && procedure &&
           TimerService::Instance().Start(period, kind, procedure, data, id);
} catch (const std::exception &) {
    return false;
}

bool KillTimerEvent(DWORD id) {
    return TimerService::Instance().Kill(id);
}

int KillTimerEventsOf(const void *data) {
    return TimerService::Instance().KillOf(data);
}

} // namespace tavix
