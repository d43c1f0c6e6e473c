#include "batch/pool.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tarvane::app {

namespace {

class Pool {
  public:
    explicit Pool(const PoolTask& of) : task(of) {
        const std::size_t count = std::min<std::size_t>(task.workers, task.items.size());
        for (std::size_t i = 0; i < count; ++i)
            workers.push_back(std::make_unique<Worker>(task.ways));
    }

    void run() {
        constexpr std::chrono::milliseconds LOOK{50};
        std::vector<std::thread> threads;
        running = workers.size();
        for (const auto& worker : workers)
            threads.emplace_back([this, &worker] { work(*worker); });
        {
            std::unique_lock lock(changing);
            while (running > 0) {
                one_ended.wait_for(lock, LOOK);
                lock.unlock();
                task.look();
                if (task.stop() >= 2)
                    for (const auto& worker : workers)
                        worker->kill();
                lock.lock();
            }
        }
        for (std::thread& thread : threads)
            thread.join();
        if (problem) std::rethrow_exception(problem);
    }

  private:
    const PoolTask& task;
    std::vector<std::unique_ptr<Worker>> workers;
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> failed = false;
    std::mutex changing;
    std::condition_variable one_ended;
    std::size_t running = 0;
    std::exception_ptr problem;

    void work(Worker& worker) {
        try {
            while (task.stop() == 0 && !failed) {
                const std::size_t i = next++;
                if (i >= task.items.size()) break;
                calculate(task.items[i], worker);
            }
        } catch (...) {
            const std::lock_guard lock(changing);
            if (!problem) problem = std::current_exception();
            failed = true;
        }
        const std::lock_guard lock(changing);
        --running;
        one_ended.notify_all();
    }

    void calculate(const Item& item, Worker& worker) const {
        using Clock = std::chrono::steady_clock;
        const Clock::time_point start = Clock::now();
        Answer answer = worker.calculate(item.path);
        // What ends a batch may end its processes, too.
        if (answer.row.status == DIED && task.stop() > 0) return;
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        task.done(item, std::move(answer), seconds);
    }
};

} // namespace

void run_pool(const PoolTask& task) { Pool(task).run(); }

} // namespace tarvane::app
