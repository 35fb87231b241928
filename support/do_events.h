/// The step of CStdlib::DoEvents.
#pragma once

namespace tavix {

/// Dispatches one message of the calling thread as CStdlib::DoEvents(1) does. Returns whether there
/// was any.
bool DispatchMessage();

} // namespace tavix
