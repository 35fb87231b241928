#include "TAVIX20/support/stop_watch.h"

#include <ctime>

namespace {

/// Counts per second. With a power of two, seconds are exact in double precision (for spans of up
/// to 2^53 counts, 97 days), and so are their sums: reading a paused watch leaves no rounding
/// behind.
constexpr std::int64_t FREQUENCY = std::int64_t{1} << 30;

std::int64_t ReadCounter() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * FREQUENCY + now.tv_nsec * FREQUENCY / 1'000'000'000;
}

} // namespace

CStopWatch::~CStopWatch() = default;

void CStopWatch::Begin(double offset) {
    m_startOffset = offset;
    m_pausedSeconds = 0.0;
    m_start = ReadCounter();
    m_started = 1;
}

void CStopWatch::Stop() {
    m_stop = ReadCounter();
    m_started = 0;
}

void CStopWatch::Pause() {
    if (!m_started || m_paused)
        return;
    m_pauseStart = ReadCounter();
    m_paused = 1;
}

void CStopWatch::Resume() {
    if (!m_started || !m_paused)
        return;
    CountPause(ReadCounter());
    m_paused = 0;
}

int CStopWatch::IsStarted() const {
    return m_started;
}

double CStopWatch::GetElapsedTime() {
    const std::int64_t now = ReadCounter();
    m_frequency = FREQUENCY;
    if (m_started)
        m_stop = now;
    if (m_paused) {
        // The pause goes on from here, so that it is not counted twice.
        CountPause(now);
        m_pauseStart = now;
    }
    const auto frequency = static_cast<double>(m_frequency);
    return (static_cast<double>(m_stop - m_start) / frequency - m_pausedSeconds + m_startOffset) *
           1000.0;
}

/// Adds the pause up to now to the paused seconds.
void CStopWatch::CountPause(std::int64_t now) {
    m_resume = now;
    m_frequency = FREQUENCY;
    m_pausedSeconds +=
        static_cast<double>(m_resume - m_pauseStart) / static_cast<double>(m_frequency);
}
