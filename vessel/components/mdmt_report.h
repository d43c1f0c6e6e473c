// What the host writes around the engine's lines in the report of a metal temperature.
#pragma once

#include "components/mdmt_session.h"

namespace tarvane::vessel {

// Begins the report; behind it follow the lines of the engine.
void write_mdmt_inputs(const MdmtInput& element, const UnitSystem& units);
void write_mdmt_results(const MdmtInput& element, const MdmtOutcome& outcome,
                        const UnitSystem& units);

} // namespace tarvane::vessel
