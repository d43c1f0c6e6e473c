// The units of a request: the name of a system, or a table of factors and labels.
#pragma once

#include "catalogue/units.h"
#include "components/fault_list.h"
#include "values/value.h"

#include <span>
#include <string_view>

namespace tarvane::vessel {

// A unit of a table of units: its name, and what it is of.
struct UnitName {
    std::string_view name;
    Quantity quantity;
};
std::span<const UnitName> unit_names();

UnitSystem read_units(const Value& value, FaultList& faults);

} // namespace tarvane::vessel
