/// A pool of worker threads that runs one operation in equal slices.
#pragma once

#include "TAVIX20/platform/export.h"

#include <functional>
#include <memory>

namespace tavix {

/// One pool serves one operation: a static object beside it, so that its threads start when the
/// library is loaded and end when it is unloaded. Each worker owns a job record and the states
/// start, stop and done; it sleeps until it is started.
///
/// Callers from several threads take turns. A child process made by fork starts workers of its own
/// at its first call. An operation must not call its own pool again from a worker.
class TAVIX_API WorkerPool {
public:
    /// A slice of the work: worker number and the range [first, end).
    struct Slice {
        int worker;
        int first;
        int end;
    };

    /// Starts the workers: workerCount of them, at least 1.
    explicit WorkerPool(int workerCount);
    /// Stops and joins the workers.
    ~WorkerPool();
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    int GetWorkerCount() const;

    /// Splits [0, total) into one slice per worker: worker k of N gets
    /// [total / N * k, total / N * (k + 1)), the last one takes the remainder. Returns when every
    /// worker has finished. The function must not throw.
    void Run(int total, const std::function<void(const Slice &)> &process);

private:
    class Crew;
    std::unique_ptr<Crew> m_crew;
};

} // namespace tavix
