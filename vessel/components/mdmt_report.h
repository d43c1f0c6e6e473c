// What the host writes around the engine's lines in the report of a metal temperature.
#pragma once

#include "components/mdmt_session.h"

namespace tarvane::vessel {

// Begins the report; the lines of the engine follow.
void write_mdmt_inputs(const MdmtInput& element, const UnitSystem& units);
void write_mdmt_results(const MdmtInput& element, const MdmtOutcome& outcome,
                        const UnitSystem& units);

} // namespace tarvane::vessel
