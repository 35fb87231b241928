#include "TAVIX20/containers/sort_byte_array.h"

#include <array>

namespace TavixArray {

void CSortByteArray::DiffValue(unsigned char from, unsigned char to, int limit,
                               CSortByteArray &out) const {
    std::array<bool, 256> isHeld{};
    for (const unsigned char value : *this)
        isHeld[value] = true;
    for (unsigned char value = from; value < to && out.m_count < limit; ++value)
        if (!isHeld[value])
            out.Add(value);
}

} // namespace TavixArray
