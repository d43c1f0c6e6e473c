// What a flange is checked for beyond the engine's own checks, by its input and results.
#pragma once

#include "components/flange_session.h"

namespace tarvane::vessel {

// The engine calculates with any bolt circle.
void check_bolt_circle(const FlangeInput& flange, const UnitSystem& units, Verdict& verdict);
// It takes another size where the thread series does not have the given one.
void check_bolt_size(const FlangeInput& flange, const UnitSystem& units, Verdict& verdict);
// It calculates without a contact width, and with a gasket that its face does not carry as a whole.
void check_gasket(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Verdict& verdict);
// Of a standard flange it makes no stress calculation: the pressure rating decides.
void check_rating(const FlangeInput& flange, const FlangeOutcome& outcome, const UnitSystem& units,
                  Verdict& verdict);

} // namespace tarvane::vessel
