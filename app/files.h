// Whole files.
#pragma once

#include <string>
#include <string_view>

namespace tarvane::app {

// Throws std::runtime_error.
std::string read_whole(const std::string& path);

// The whole file or nothing: written under another name in the same folder, then renamed. Throws
// std::runtime_error.
void write_whole(const std::string& path, std::string_view bytes);

} // namespace tarvane::app
