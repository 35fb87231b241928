#include "TAVIX20/containers/pixel_array_array.h"

namespace TavixArray {

int CPixelArrayArray::GetTotalPixelCount() const {
    int total = 0;
    for (const CPixelArray &pixels : *this)
        total += pixels.GetElementCount();
    return total;
}

} // namespace TavixArray
