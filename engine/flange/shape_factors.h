// Shape factors: hub ratios, hub factors F, V, f (Figures 2-7.1 to 2-7.6, Table 4-16.4), ring factors
// K, T, U, Y, Z, reverse flange factors, divisors d and e, stress factors.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Closed solution of a hub; C[1] to C[37] and E[1] to E[6] as Table 2-7.1 numbers them.
struct HUB_SOLUTION {
    Real Ah = 0.0f, Ch = 0.0f;
    Real C[38] = {};
    Real E[7] = {};
};

void FLANGE_HUB_RATIOS(FLANGE_STATE& s); // Bcor, ho, hRatio, gRatio
// Raises gRatio and hRatio to their floors.
void HUB_COEFFICIENTS(FACTOR_STATE& s, HUB_SOLUTION& hub);
// F, V, f from the solution of the same hub; by the fits of Division 2.
void FIGURE_FACTORS(FLANGE_STATE& s, const HUB_SOLUTION& hub);
void TABLE_4164_FACTORS(FLANGE_STATE& s);
void FLANGE_FACTORS(FLANGE_STATE& s);         // K, T, U, Y, Z
void REVERSE_FLANGE_FACTORS(FLANGE_STATE& s); // K, T, U, Y, Z, Yr, Alphar
void HUB_FACTORS(FLANGE_STATE& s);            // d, e
void REVERSE_HUB_FACTORS(FLANGE_STATE& s);    // d, e
void STRESS_FACTORS(FLANGE_STATE& s);         // alpha, beta, gamma, delta, lambda

} // namespace tarvane
