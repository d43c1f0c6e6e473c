// The calculation of single items, in processes of their own.
#pragma once

#include "batch/child_process.h"
#include "batch/row.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvane::app {

// The hidden command of the program that makes a worker of it.
inline constexpr const char* WORKER_COMMAND = "batch-worker";

// How items are calculated, all in the same way.
struct Ways {
    std::string data; // folder of the data files, as it is named; empty: the one that is found
    bool strict = false;
    bool html = false;
};

// What a worker gives back: a row without its names, and the files of its results by their extensions.
struct Answer {
    Row row;
    std::string input_sha256; // of what was read; empty: nothing
    std::vector<std::pair<std::string, std::string>> files;
};

// The other side of a worker: starts processes as they are needed. For one thread.
class Worker {
  public:
    explicit Worker(Ways of) : ways(std::move(of)) {}

    // An item whose process ends has that as its reason. Throws std::runtime_error where no process can be started.
    Answer calculate(const std::filesystem::path& path);
    // Ends the process, which costs its item. Any thread may.
    void kill();

  private:
    Ways ways;
    std::mutex changing;
    std::unique_ptr<ChildProcess> process;

    void start();
    std::string stop();
    std::optional<Answer> ask(const std::filesystem::path& path);
};

// The command: items from standard input until there are no more.
int serve_as_worker();

} // namespace tarvane::app
