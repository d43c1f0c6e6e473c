// Stress limits and the summary of actual against allowed stresses.
#pragma once

#include "flange/state.h"

namespace tarvane {

void FLANGE_ALLOWABLES(FLANGE_STATE& s); // ALLOWED, kf
void STRESS_SUMMARY(FLANGE_STATE& s);    // RATIO and the table

} // namespace tarvane
