// Whole files.
#pragma once

#include <string>
#include <string_view>

namespace tarvane::app {

// Throws std::runtime_error.
std::string read_whole(const std::string& path);

} // namespace tarvane::app
