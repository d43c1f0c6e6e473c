// A request that can't be answered as it asks, with the status of the answer.
#pragma once

#include <stdexcept>
#include <string>

namespace tarvane::app {

struct RequestRefused : std::runtime_error {
    RequestRefused(unsigned http_status, const std::string& words, std::string member = {},
                   std::string value = {})
        : runtime_error(words), status(http_status), name(std::move(member)),
          more(std::move(value)) {}

    unsigned status;
    std::string name, more; // a further member of the answer: "conflict", "changed"; empty: none
};

} // namespace tarvane::app
