// Lines and brackets of a TOML text.
#pragma once

#include "serve/toml_tree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

// Of the line around a place: its first byte after a byte order mark, and that of the next one.
std::size_t line_begin(std::string_view text, std::size_t at);
std::size_t after_line(std::string_view text, std::size_t at);

// How the lines of the text end, by the first one.
std::string_view line_end_of(std::string_view text);

// The blanks before what is written in a line.
std::string indentation(std::string_view text, std::size_t at);
// Whether a line that begins there is empty; false at the end of the text.
bool blank_line(std::string_view text, std::size_t begin);

// Commas between the items of an array or an inline table, not those within the items.
std::vector<std::size_t> commas(std::string_view text, const TextRange& brackets);

} // namespace tarvane::app
