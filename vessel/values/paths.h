// Values of a tree by their paths, as faults and sweeps name them: "flange[0].P", "flange[0].results.designed.C".
#pragma once

#include "values/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// None: a null pointer. An empty path is the tree itself. Of keys that have points in their names the longest one that
// is there counts.
const Value* value_at(const Value& tree, std::string_view path);

// Puts a value in the place of that which may be there, and makes the objects and lists on the way. A list grows by one
// place at a time. Otherwise nothing is changed, and the reason is returned.
std::optional<std::string> put_at(Value& tree, std::string_view path, Value value);

} // namespace tarvane::vessel
