// Input tests of a flange, and the numbered messages.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Runs the tests on the state, presents the failures; fatalCount 0: the analysis may go on.
void CHECK_FLANGE_INPUT(FLANGE_STATE& s, Int& fatalCount);
void FLANGE_MESSAGE(Int number, Real value, Int& fatal, Int elementNumber, Int code);

} // namespace tarvane
