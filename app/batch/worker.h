// The calculation of single items, in processes of their own.
#pragma once

#include "batch/child_process.h"
#include "batch/row.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvane::app {

// The hidden command of the program that makes a worker of it.
inline constexpr const char* WORKER_COMMAND = "batch-worker";
inline constexpr const char* RELAY_COMMAND = "batch-relay";

// How items are calculated, all in the same way.
struct Ways {
    std::string key;  // of all that results depend on beside their inputs (Conditions)
    std::string data; // folder of the data files, as it is named; empty: the one that is found
    bool strict = false;
    bool html = false;
};

struct Input {
    std::string file; // its name
    std::string text;
};

// What a worker gives back: a row without its names, and the files of its results by their extensions.
struct Answer {
    Row row;
    std::vector<std::pair<std::string, std::string>> files;
};

// The other side of a worker: starts processes as they are needed, or has one that another process has started and
// that does the same for each item. For one thread.
class Worker {
  public:
    // `socket`: of the connection with that process.
    explicit Worker(Ways of, std::optional<int> socket = std::nullopt)
        : ways(std::move(of)), connection(socket) {}

    // An item whose process ends has that as its reason. Throws std::runtime_error where no process can be started, or
    // where the connection has ended.
    Answer calculate(const Input& input);
    // Ends the process, which costs its item. Any thread may.
    void kill();

  private:
    Ways ways;
    std::optional<int> connection;
    std::mutex changing;
    std::unique_ptr<Channel> process;
    std::atomic<bool> killed = false;

    void start();
    std::string stop();
    std::optional<Answer> ask(const Input& input);
};

// The command: items from standard input until there are no more.
int serve_as_worker();
// The same by workers, so that it outlasts its items; refused where the results would be those of another program or
// of other data files. Such a process is what a cluster has for each of its own workers.
int serve_as_relay(const std::string& program);

} // namespace tarvane::app
