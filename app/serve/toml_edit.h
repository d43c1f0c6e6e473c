// Changes of a TOML text that replace the bytes of a value and leave every other byte as it is: comments, order, line
// ends, a byte order mark, inline tables.
#pragma once

#include "serve/toml_value.h"

#include <string>
#include <string_view>

namespace tarvane::app {

// The text with a value, in TOML, at a path. What isn't there yet is added: a key after the last value of its
// table, an item after the last one of its list, a table of the whole text as [name] or [[name]]. Throws EditRefused.
std::string with_value(std::string_view text, const TomlPath& path, const vessel::Value& value);
// The same where the value is written already: "1.50".
std::string with_written(std::string_view text, const TomlPath& path, std::string_view written);

// The text without what is at a path, a value, an item or a table; what isn't there changes nothing. An inline table
// goes with its last member. Throws EditRefused.
std::string without(std::string_view text, const TomlPath& path);

} // namespace tarvane::app
