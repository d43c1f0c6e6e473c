// Input files to start from: complete, commented, and fit to run as they are.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// "flange", "heads", "drum".
std::span<const std::string_view> new_file_names();

// The text of one of them, in US or SI units. UTF-8.
std::string new_file(std::string_view name, bool si);

} // namespace tarvane::vessel
