// What is refused in a text before it goes to the parser: what would exhaust it or break it, and what only
// a file that describes no vessel has.
#pragma once

#include "components/element.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace tarvane::app {

using namespace vessel;

inline constexpr std::size_t LARGEST_INPUT = 4 * 1024 * 1024;
inline constexpr std::size_t LONGEST_KEY = 100; // with its parts and points
inline constexpr int MOST_KEY_PARTS = 10;
inline constexpr int DEEPEST_NESTING = 20;

// The first fault of the text. All others are found by the parser.
std::optional<Fault> check_limits(std::string_view toml_text);

} // namespace tarvane::app
