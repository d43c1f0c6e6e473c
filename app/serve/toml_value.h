// Paths of values in a TOML text, and values as TOML writes them.
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

// A key, in quotation marks where it needs them.
std::string key_of(std::string_view name);

} // namespace tarvane::app
