// Worker processes that share the items of a batch.
#pragma once

#include "batch/items.h"
#include "batch/worker.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tarvane::app {

struct PoolTask {
    std::span<const Item> items;
    unsigned workers = 1;
    std::vector<int>
        connections; // if any: with processes that are there already, in place of workers
    Ways ways;
    // Called as each item is done, by several threads, with the SHA-256 of what was read; empty: nothing.
    std::function<void(const Item&, const std::string& input_sha256, Answer, double seconds)> done;
    // 1 lets no further item begin, 2 ends those that run. For any thread.
    std::function<int()> stop;
    // Called now and then by the caller's own thread.
    std::function<void()> look;
};

// Returns as all items are done, or those that ran when it was stopped. An item whose process ended after the pool was
// stopped is not done. Throws what `done` throws, or where no process can be started; the other items are not begun
// then.
void run_pool(const PoolTask& task);

} // namespace tarvane::app
