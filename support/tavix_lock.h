/// CTavixLock: a guard against re-entry on the thread of the user interface.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <atomic>

/// A flag that one thread takes and gives back. A second entry on that thread can only happen while
/// the first dispatches messages; it waits, dispatching messages itself so that windows stay alive,
/// until one of them unlocks. It is no mutex: of two threads that wait for it, both may take it.
class TAVIX_API CTavixLock {
public:
    /// While the lock is held, dispatches the calling thread's messages one at a time
    /// (CStdlib::DoEvents(1)), resting for a millisecond when there are none; then takes it.
    /// Without an event loop only another thread's Unlock can end the wait.
    void Lock();
    /// Frees the lock, held or not.
    void Unlock();

private:
    std::atomic<LONG> m_held = 0;
};
