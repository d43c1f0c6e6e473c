// Changes of a TOML text that replace the bytes of a value and leave every other byte as it is: comments, order, line
// ends, a byte order mark, inline tables.
#pragma once

#include "values/value.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarvane::app {

// "flange[0].standard.class": names and places in lists.
using TomlStep = std::variant<std::string, std::size_t>;
using TomlPath = std::vector<TomlStep>;

// Nothing for what is no path.
std::optional<TomlPath> path_named(std::string_view name);

// The text can't be changed so; `what` is for people.
struct EditRefused : std::runtime_error {
    using runtime_error::runtime_error;
};

// A value as TOML writes it on one line. Throws EditRefused for one that TOML does not have.
std::string toml_of(const vessel::Value& value);

// The text with a value, in TOML, at a path. What isn't there yet is added: a key after the last value of its
// table, an item after the last one of its list, a table of the whole text as [name] or [[name]]. Throws EditRefused.
std::string with_value(std::string_view text, const TomlPath& path, const vessel::Value& value);
// The same where the value is written already: "1.50".
std::string with_written(std::string_view text, const TomlPath& path, std::string_view written);

// The text without what is at a path, a value, an item or a table; what isn't there changes nothing. An inline table
// goes with its last member. Throws EditRefused.
std::string without(std::string_view text, const TomlPath& path);

} // namespace tarvane::app
