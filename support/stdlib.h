/// CStdlib: the static helpers that the library and its host programs share.
#pragma once

#include "TAVIX20/platform/export.h"

class TAVIX_API CStdlib {
public:
    /// Number of processors that this process may run on; at least 1.
    static int GetNumOfProcessors();

    /// Euclidean distance of two points, computed in double precision and truncated toward 0.
    static long Distance(int x1, int y1, int x2, int y2);
};
