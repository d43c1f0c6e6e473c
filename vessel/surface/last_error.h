// The texts of tarvane_last_error.
#pragma once

#include "surface/result_json.h"

#include <string>

namespace tarvane::vessel {

inline constexpr char NO_MEMORY[] =
    R"([{"path":"","value":"","reason":"there is no memory left"}])";

// Of a handle, or of a thread for calls without one.
struct LastError {
    std::string error;
    const char* last_error = "[]";

    void put(const Faults& faults) {
        last_error = NO_MEMORY; // in case the next line finds no memory
        error = faults_json(faults);
        last_error = error.c_str();
    }
};

// Why the latest call of this thread that has no handle failed.
LastError& error_of_thread();

} // namespace tarvane::vessel
