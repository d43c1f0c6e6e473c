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

// The same columns, the first one wider where its texts (UTF-8, of each row the first ones) need it and where the page
// and the other columns have room.
std::vector<TextColumn> fitted(std::span<const TextColumn> columns,
                               std::span<const std::vector<std::string>> rows, std::size_t page);

// The lines of a row: a text that is longer than its column goes on below. At the right it may begin in room that the
// texts before it leave.
std::vector<std::string> row_lines(std::span<const TextColumn> columns,
                                   std::span<const std::string> texts);

} // namespace tarvane::vessel
