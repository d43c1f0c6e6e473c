// A result as programs read it: in the units of the request, a choice by its name.
#pragma once

#include "catalogue/units.h"
#include "fields/results.h"

#include <string_view>
#include <variant>

namespace tarvane::vessel {

// Nothing where there is no value or none that is finite.
using ResultValue = std::variant<std::monostate, bool, float, std::string_view>;
ResultValue value_of(const Result& result, const UnitSystem& units);

// Why it has none.
std::string_view why_none(const Result& result);

} // namespace tarvane::vessel
