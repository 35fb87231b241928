#include "TAVIX20/support/stdlib.h"

#include <algorithm>
#include <cmath>

#include <sched.h>

int CStdlib::GetNumOfProcessors() {
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    if (sched_getaffinity(0, sizeof allowed, &allowed) != 0)
        return 1;
    return std::max(1, CPU_COUNT(&allowed));
}

long CStdlib::Distance(int x1, int y1, int x2, int y2) {
    const double dx = static_cast<double>(x2) - x1;
    const double dy = static_cast<double>(y2) - y1;
    return static_cast<long>(std::sqrt(dx * dx + dy * dy));
}

double CStdlib::PointToMM(double points) {
    return points * 25.4 / 72.0;
}

double CStdlib::MMToPoint(double millimetres) {
    return millimetres * 72.0 / 25.4;
}

int CStdlib::Zip(const char *, const char *) {
    return 0;
}

int CStdlib::UnZip(const char *, const char *) {
    return 0;
}
