// The crew is the part of a pool that a fork cannot carry over: in the child the worker threads do
// not exist and their condition variables are in an unknown state. So all pools are registered in
// one list; before a fork every crew's turn is taken (no operation is under way then), and the
// child abandons the crews it inherited and makes new ones at the next call.

#include "TAVIX20/support/worker_pool.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <pthread.h>

namespace tavix {

namespace {

enum class Order { Wait, Start, Stop };

/// What a fork replaces as a whole: the threads with their job records.
struct WorkerThreads {
    struct Worker {
        std::mutex mutex;
        std::condition_variable changed;
        Order order = Order::Wait;
        bool done = true;
        WorkerPool::Slice slice{};
        const std::function<void(const WorkerPool::Slice &)> *process = nullptr;
        std::thread thread;

        void Give(Order newOrder) {
            {
                const std::lock_guard lock(mutex);
                order = newOrder;
                done = newOrder == Order::Stop;
            }
            changed.notify_all();
        }

        void WaitUntilDone() {
            std::unique_lock lock(mutex);
            changed.wait(lock, [this] { return done; });
        }

        void Loop() {
            std::unique_lock lock(mutex);
            for (;;) {
                changed.wait(lock, [this] { return order != Order::Wait; });
                if (order == Order::Stop)
                    return;
                lock.unlock();
                (*process)(slice);
                lock.lock();
                order = Order::Wait;
                done = true;
                changed.notify_all();
            }
        }
    };

    explicit WorkerThreads(int count) : workers(static_cast<std::size_t>(count)) {
        for (Worker &worker : workers)
            worker.thread = std::thread([&worker] { worker.Loop(); });
    }

    ~WorkerThreads() {
        for (Worker &worker : workers)
            worker.Give(Order::Stop);
        for (Worker &worker : workers)
            worker.thread.join();
    }

    WorkerThreads(const WorkerThreads &) = delete;
    WorkerThreads &operator=(const WorkerThreads &) = delete;

    std::vector<Worker> workers;
};

} // namespace

class WorkerPool::Crew {
public:
    explicit Crew(int count)
        : m_count(std::max(1, count)), m_threads(std::make_unique<WorkerThreads>(m_count)) {
        Registry::Instance().Add(this);
    }

    ~Crew() { Registry::Instance().Remove(this); }

    Crew(const Crew &) = delete;
    Crew &operator=(const Crew &) = delete;

    int Count() const { return m_count; }

    void Run(int total, const std::function<void(const Slice &)> &process) {
        const std::lock_guard turn(m_turn);
        if (!m_threads)
            m_threads = std::make_unique<WorkerThreads>(m_count);
        const int share = total / m_count;
        for (int k = 0; k < m_count; ++k) {
            auto &worker = m_threads->workers[static_cast<std::size_t>(k)];
            worker.slice = {k, share * k, k + 1 == m_count ? total : share * (k + 1)};
            worker.process = &process;
        }
        for (auto &worker : m_threads->workers)
            worker.Give(Order::Start);
        for (auto &worker : m_threads->workers)
            worker.WaitUntilDone();
    }

private:
    /// All crews of the process, for the fork handlers.
    class Registry {
    public:
        // Never destroyed: a fork may come after the static destructors have begun.
        static Registry &Instance() {
            static auto *const registry = new Registry;
            return *registry;
        }

        void Add(Crew *crew) {
            const std::lock_guard lock(m_mutex);
            m_crews.push_back(crew);
        }

        void Remove(Crew *crew) {
            const std::lock_guard lock(m_mutex);
            std::erase(m_crews, crew);
        }

    private:
        Registry() { pthread_atfork(BeforeFork, InParent, InChild); }

        static void BeforeFork() {
            Instance().m_mutex.lock();
            for (Crew *crew : Instance().m_crews)
                crew->m_turn.lock();
        }

        static void InParent() {
            for (Crew *crew : Instance().m_crews)
                crew->m_turn.unlock();
            Instance().m_mutex.unlock();
        }

        static void InChild() {
            for (Crew *crew : Instance().m_crews) {
                // Leaked on purpose: joining or destroying threads that do not exist here would
                // hang or abort.
                static_cast<void>(crew->m_threads.release());
                crew->m_turn.unlock();
            }
            Instance().m_mutex.unlock();
        }

        std::mutex m_mutex;
        std::vector<Crew *> m_crews;
    };

    const int m_count;
    std::mutex m_turn;
    std::unique_ptr<WorkerThreads> m_threads;
};

WorkerPool::WorkerPool(int workerCount) : m_crew(std::make_unique<Crew>(workerCount)) {}

WorkerPool::~WorkerPool() = default;

int WorkerPool::GetWorkerCount() const {
    return m_crew->Count();
}

void WorkerPool::Run(int total, const std::function<void(const Slice &)> &process) {
    m_crew->Run(total, process);
}

} // namespace tavix
