// The report of a flange of kind "rated": the host writes all of it.
#pragma once

#include "components/flange_input.h"

namespace tarvane::vessel {

// Through the report channel, after RESET_ENGINE and the units.
void write_rated_report(const FlangeInput& flange, const UnitSystem& units);

} // namespace tarvane::vessel
