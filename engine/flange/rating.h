// Estimated pressures and weights.
#pragma once

#include "flange/state.h"

namespace tarvane {

void FLANGE_MAWP(FLANGE_STATE& s); // MAWPop, MAWPseat
// Weights of the forging and of the finished flange.
void FLANGE_WEIGHT(Real bore, Real A, Real t, Real g1, Real Pi, Real go, Real h, Real& finished,
                   Real& forging, Real density);

} // namespace tarvane
