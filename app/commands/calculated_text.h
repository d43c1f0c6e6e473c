// The result of an input file as programs read it.
#pragma once

#include <string>

namespace tarvane::app {

// JSON, without the lines of reports. `path` is named in messages. Throws std::runtime_error with the faults of the
// text, and where the calculation was not completed.
std::string calculated_json(const std::string& path, const std::string& text);

} // namespace tarvane::app
