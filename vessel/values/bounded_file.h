// Files that come from outside and can be anything: a pipe that nobody writes into, a device without an end.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// The path that a name in UTF-8 means, whatever the code page of the process; elsewhere than on Windows its bytes.
std::filesystem::path path_of(std::string_view name);

// All of a file, a pipe or a device, up to one character beyond the limit, by which the caller sees that
// there is more. Throws std::runtime_error.
std::string read_bounded(const std::string& path, std::size_t limit);

// The same of a regular file alone.
std::string read_regular(const std::string& path, std::size_t limit);

} // namespace tarvane::vessel
