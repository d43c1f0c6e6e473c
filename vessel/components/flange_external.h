// The checks of a flange under external pressure, beside those under internal pressure.
#pragma once

#include "components/flange_session.h"

namespace tarvane::vessel {

// The second calculation, and its report after that of the first one. None where the first one found no geometry.
void run_external_flange(const FlangeInput& flange, const Request& file, FlangeOutcome& outcome);

// Rows of the case "external". What does not depend on the pressure has its row already.
void add_external_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                         const UnitSystem& units, Checks& checks);

} // namespace tarvane::vessel
