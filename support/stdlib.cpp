#include "TAVIX20/support/stdlib.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <vector>

#include <sched.h>
#include <unistd.h>

int CStdlib::GetNumOfProcessors() {
    constexpr std::size_t mostSets = 1024; // of 1,024 processors each
    for (std::size_t sets = 1; sets <= mostSets; sets *= 2) {
        std::vector<cpu_set_t> allowed(sets);
        const std::size_t size = sets * sizeof(cpu_set_t);
        // By the number of the process, or it were the processors of the calling thread.
        if (sched_getaffinity(getpid(), size, allowed.data()) == 0)
            return std::max(1, CPU_COUNT_S(size, allowed.data()));
        if (errno != EINVAL) // which means that the system has room for more processors
            break;
    }
    return 1;
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
