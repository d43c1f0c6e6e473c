// Results of a flange, and the tables of the flanges that close the output.
#pragma once

#include "components/flange_session.h"
#include "fields/flange_results.h"

#include <span>
#include <string>

namespace tarvane::vessel {

FlangeFound found_of(const FlangeInput& flange, const FlangeOutcome& outcome);

// Results side by side in the units of the file, UTF-8; "none" where there is none. After them the geometry
// that was selected, of the flanges of kind design, as it is and rounded, and the ratings of those of kind rated.
std::string flange_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::vessel
