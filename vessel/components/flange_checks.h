// What a flange is checked for: the engine's findings, and what it takes as it comes.
#pragma once

#include "components/flange_session.h"

namespace tarvane::vessel {

// All but the size of its material, which the reading knows.
Checks flange_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units);

} // namespace tarvane::vessel
