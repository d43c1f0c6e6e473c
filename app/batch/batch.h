// A batch: inputs calculated by worker processes into one folder.
#pragma once

#include "batch/summary.h"
#include "batch/worker.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace tarvane::app {

struct BatchOptions {
    std::vector<std::string> paths; // files and folders
    std::string out;                // the folder of the results
    unsigned jobs = 1;              // worker processes
    std::vector<int> connections;   // sockets of others that are used in their place
    std::string program;            // its version
    bool resume = false;
    bool quiet = false;
    Ways ways;
};

// Of the data files that are in use.
Conditions conditions_of(const std::string& program, const Ways& ways);

// The exit status: the worst of the items, or that of a process that was interrupted. Throws std::runtime_error where the
// batch as a whole can't go on.
int run_batch(const BatchOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
