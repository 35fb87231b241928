/// The step of CStdlib::DoEvents.
#pragma once

namespace tavix {

/// Dispatches one message of the calling thread as CStdlib::DoEvents(1) does. Returns false
/// when there was none; also after a message that was a timer, as far as Qt counts them.
bool DispatchMessage();

} // namespace tavix
