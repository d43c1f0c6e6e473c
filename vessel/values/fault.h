// What is wrong with a request: where, what was given, and why it can't be accepted.
#pragma once

#include <string>
#include <vector>

namespace tarvane::vessel {

struct Fault {
    int line = 0;             // of the input file; 0: the request has no lines
    std::string key = {};     // as it is written there; empty: the request as a whole
    std::string message = {}; // the reason, with what was given, without a point
    std::string path = {};    // "flange[0].P"
    std::string value = {};   // as it was given, shortened; empty: nothing was
};
using Faults = std::vector<Fault>;

} // namespace tarvane::vessel
