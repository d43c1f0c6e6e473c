#include "batch/pool.h"

#include "input/toml_limits.h"
#include "values/bounded_file.h"
#include "values/sha256.h"
#include "values/text.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tarvane::app {

namespace {

// Nothing, and a row with the reason, for a file that can't be read.
std::optional<Input> read(const Item& item, Row& row) {
    const std::string file = item.path.string();
    try {
        return Input{.file = file, .text = read_regular(file, LARGEST_INPUT)};
    } catch (const std::runtime_error& problem) {
        row = Row::without_result(FAULTY, Status::bad_input, printable(problem.what()));
        return std::nullopt;
    }
}

class Pool {
  public:
    explicit Pool(const PoolTask& of) : task(of) {
        const std::size_t most = task.connections.empty() ? task.workers : task.connections.size();
        for (std::size_t i = 0; i < std::min(most, task.items.size()); ++i) {
            std::optional<int> socket;
            if (!task.connections.empty()) socket = task.connections[i];
            workers.push_back(std::make_unique<Worker>(task.ways, socket));
        }
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
        Answer answer;
        const std::optional<Input> input = read(item, answer.row);
        if (input) answer = worker.calculate(*input);
        // What ends a batch may end its processes, too.
        if (answer.row.status == DIED && task.stop() > 0) return;
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        task.done(item, input ? sha256(input->text) : std::string(), std::move(answer), seconds);
    }
};

} // namespace

void run_pool(const PoolTask& task) { Pool(task).run(); }

} // namespace tarvane::app
