#include "TAVIX20/containers/double_array.h"

namespace TavixArray {

double CDoubleArray::GetStdDev(double mean) const {
    if (m_count <= 0)
        return 0.0;
    double sum = 0.0;
    for (const double value : *this)
        sum += (value - mean) * (value - mean);
    return std::sqrt(sum / m_count);
}

double CDoubleArray::GetStdDev() const {
    return GetStdDev(GetAverage());
}

} // namespace TavixArray
