// The analysis kernel: one flange once through the bolted flange procedure.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Arguments are members of the state: reportKernel, quietOverstress, rigidity, code, Dshell,
// coverFactor, coverFlag, materialClass, corrodedRigidity, standardFlange, jointE, looseReverse.
// Results: error, fullFace, tOut, record values 137 to 141, rigidityOut, and the state.
void ANALYZE_FLANGE(FLANGE_STATE& s);

} // namespace tarvane
