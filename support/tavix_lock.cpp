#include "TAVIX20/support/tavix_lock.h"

#include "TAVIX20/support/do_events.h"

#include <chrono>
#include <thread>

void CTavixLock::Lock() {
    while (m_held == 1)
        if (!tavix::DispatchMessage())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    m_held = 1;
}

void CTavixLock::Unlock() {
    m_held = 0;
}
