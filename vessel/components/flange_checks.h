// The checks of a flange: the engine's findings, and input that it uses without a check.
#pragma once

#include "components/flange_session.h"

#include <string_view>

namespace tarvane::vessel {

// All but the size of its material, which is known to the reading.
Checks flange_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units);

// The paragraph of the code of a flange for one of VIII-1.
std::string_view flange_paragraph(std::string_view viii_1, const FlangeInput& flange);

} // namespace tarvane::vessel
