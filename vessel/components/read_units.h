// The units of a request: the name of a system, or a table of factors and labels.
#pragma once

#include "catalogue/units.h"
#include "components/fault_list.h"
#include "values/value.h"

namespace tarvane::vessel {

UnitSystem read_units(const Value& value, FaultList& faults);

} // namespace tarvane::vessel
