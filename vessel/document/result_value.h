// A result as programs read it: in the units of the request, a choice by its name.
#pragma once

#include "catalogue/units.h"
#include "fields/results.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tarvane::vessel {

// Nothing where there is no value or none that is finite.
using ResultValue = std::variant<std::monostate, bool, float, std::string_view>;
ResultValue value_of(const Result& result, const UnitSystem& units);

// Its label where it stands alone: of "The same, new and cold" with what is the same, without the factor of the closing
// table, and whether it is of a selected or a rounded design.
std::string label_of(const ResultField& field, std::span<const ResultField> all);

// Why it has none.
std::string_view why_none(const Result& result);

} // namespace tarvane::vessel
