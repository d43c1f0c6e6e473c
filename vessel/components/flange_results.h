// Verdict on a flange, and the tables of the flanges that close the output.
#pragma once

#include "components/flange_session.h"

#include <span>
#include <string>
#include <vector>

namespace tarvane::vessel {

Verdict judge_flange(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units);

struct FlangeResult {
    const FlangeInput* flange;
    const FlangeOutcome* outcome;
};

// Results side by side in the units of the file, UTF-8; "none" where there is none.
std::string results_table(const std::vector<FlangeResult>& results, const UnitSystem& units);
// The geometry that was selected, of the flanges of kind design; empty when there are none.
std::string design_table(const std::vector<FlangeResult>& results, const UnitSystem& units);

// Both tables.
std::string flange_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::vessel
