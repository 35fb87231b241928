/// The marching stripes along the outlines of regions of interest.
#pragma once

#include "TAVIX20/containers/point_array_array.h"

class QPainter;
class QRect;

namespace tavix {

/// Diagonal stripes, four pixels black and four white. The phase takes the nine values 0 to 8 in
/// turn; 8 looks like 0, a pause of one step in the march that operators know. An Advance goes
/// before each step that is drawn; the first one makes the phase 0.
class TAVIX_API RoiStripes {
public:
    int Phase() const { return m_phase; }
    void Advance();

    /// Draws the outlines, upright and level lines in client coordinates, one pixel wide. Only what
    /// lies in the visible rectangle is touched; it must lie in the picture that is painted on and
    /// have no negative coordinates.
    void Draw(QPainter &painter, const TavixArray::CPointArrayArray &outlines,
              const QRect &visible) const;

private:
    static constexpr int LAST_PHASE = 8;

    int m_phase = LAST_PHASE;
};

} // namespace tavix
