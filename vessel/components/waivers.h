// Checks that the user waives: the key `waive` of every kind, a list of their ids.
#pragma once

#include "components/element.h"
#include "components/read_value.h"

#include <span>
#include <string>
#include <string_view>

namespace tarvane::vessel {

inline constexpr std::string_view WAIVE = "waive";

// The ids of a list, or one id, with a comma between them. Each is that of a check of one of the kinds, and of
// one that can be waived.
Taken<std::string> take_waivers(const Value& value, std::span<const ElementKind* const> kinds);

// Whether the ids, with a comma between them, have this one.
bool has_waiver(std::string_view ids, std::string_view id);

} // namespace tarvane::vessel
