/// CStopWatch: a stopwatch with pause and resume.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <cstdint>

/// Measures on the monotonic clock, to about a nanosecond. A watch that was never begun reads 0.
/// Not for use by several threads at once.
class TAVIX_API CStopWatch {
public:
    virtual ~CStopWatch();

    /// Starts at offset seconds. A paused watch stays paused, since the time of the pause, until
    /// Resume: it then reads less than the offset.
    void Begin(double offset);
    /// Ends the measurement. A paused watch stays paused: its pause goes on being taken off the
    /// time.
    void Stop();
    /// Pauses a started watch that is not paused.
    void Pause();
    /// Goes on after a pause. Does nothing unless the watch is started and paused.
    void Resume();
    /// 1 from Begin to Stop, else 0.
    int IsStarted() const;
    /// Elapsed time in milliseconds, without pauses, with the offset: up to now while the watch is
    /// started, else up to Stop. Exactly the same whenever it is read in one pause.
    double GetElapsedTime();

private:
    void CountPause(std::int64_t now);

    std::int64_t m_stop = 0;
    std::int64_t m_start = 0;
    std::int64_t m_pauseStart = 0;
    std::int64_t m_resume = 0;
    std::int64_t m_frequency = 0;
    double m_pausedSeconds = 0.0;
    LONG m_started = 0;
    LONG m_paused = 0;
    double m_startOffset = 0.0;
};
