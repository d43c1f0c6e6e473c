// The checks of a flange: the engine's findings, and input that it uses without a check.
#pragma once

#include "components/flange_session.h"

namespace tarvane::vessel {

// All but the size of its material, which is known to the reading.
Checks flange_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                     const UnitSystem& units);

} // namespace tarvane::vessel
