// Shape factors: hub ratios, hub factors F, V, f (Figures 2-7.1 to 2-7.6, Table 4-16.4), ring factors
// K, T, U, Y, Z, reverse flange factors, divisors d and e, stress factors.
#pragma once

#include "flange/state.h"

namespace tarvane {

void FLANGE_HUB_RATIOS(FLANGE_STATE& s);      // Bcor, ho, hRatio, gRatio
void HUB_COEFFICIENTS(FLANGE_STATE& s);       // raises gRatio and hRatio to their floors
void FIGURE_FACTORS(FLANGE_STATE& s);         // F, V, f; behind HUB_COEFFICIENTS, on the same hub
void TABLE_4164_FACTORS(FLANGE_STATE& s);     // F, V, f by the fits of Division 2
void FLANGE_FACTORS(FLANGE_STATE& s);         // K, T, U, Y, Z
void REVERSE_FLANGE_FACTORS(FLANGE_STATE& s); // K, T, U, Y, Z, Yr, Alphar
void HUB_FACTORS(FLANGE_STATE& s);            // d, e
void REVERSE_HUB_FACTORS(FLANGE_STATE& s);    // d, e
void STRESS_FACTORS(FLANGE_STATE& s);         // alpha, beta, gamma, delta, lambda

// Hub coefficients back to their state at load.
void RESET_SHAPE_FACTORS();

} // namespace tarvane
