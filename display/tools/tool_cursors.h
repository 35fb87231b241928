/// The library's own cursors.
#pragma once

class QCursor;

namespace tavix {

QCursor EllipseCursor(); ///< A circle around the point.
QCursor DropperCursor(); ///< A dropper whose tip is the point.

} // namespace tavix
