// Input tests of a flange, and the numbered messages.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Runs the tests on the state and presents the failures: all of them, or up to the first fatal one in
// the stand-alone form (element number negative). fatalCount 0: the analysis may go on; 1: it may not.
// A blind flange loses go, g1, h and B, and mating loads that are not asked for become 0.
void CHECK_FLANGE_INPUT(FLANGE_STATE& s, Int& fatalCount);
// Shows message `number` with its value in report units, in a box too when elementNumber is above 0.
// fatal: 1 when it ends the analysis. The wording of some messages depends on the design code.
void FLANGE_MESSAGE(Int number, Real value, Int& fatal, Int elementNumber, Int code);

} // namespace tarvane
