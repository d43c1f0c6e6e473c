// The checks of a flange under external pressure, beside those under internal pressure.
#pragma once

#include "components/flange_session.h"

namespace tarvane::vessel {

// Rows of the case "external". What does not depend on the pressure has its row already.
void add_external_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                         const UnitSystem& units, Checks& checks);

} // namespace tarvane::vessel
