// What the host writes around the engine's tables in the report of an element under external pressure.
#pragma once

#include "components/external_session.h"

namespace tarvane::vessel {

// Begins the report; the lines of the engine follow.
void write_external_inputs(const ExternalInput& element, const UnitSystem& units);
void write_external_results(const ExternalInput& element, const ExternalOutcome& outcome);

} // namespace tarvane::vessel
