// Texts in columns of equal characters, for tables whose rows are many.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace tarvane::vessel {

struct TextColumn {
    std::size_t width;
    bool right = false;
};

// The lines of a row: a text that is longer than its column goes on below.
std::vector<std::string> row_lines(std::span<const TextColumn> columns,
                                   std::span<const std::string> texts);

} // namespace tarvane::vessel
