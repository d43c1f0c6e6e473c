// Rigidity index (2-14, Table 4.16.10) and the inertias of Table 4.16.7.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Report modes of RIGIDITY_INDEX.
inline constexpr Int RIGIDITY_FULL = 0, RIGIDITY_SHORT = 1, RIGIDITY_SILENT = 2;

// What the index takes of the shape factors of an evaluation, the current or a stored one.
struct RIGIDITY_FACTORS {
    Real V = 0, lambda = 0, ho = 0, K = 0;
};
RIGIDITY_FACTORS FACTORS_IN_HAND(const FACTOR_STATE& s);

struct RIGIDITY_CALL {
    Real Mop, Matm, V, lambda, ho, K, t, CF;
    Real Jmax = 0.0f;
};
// The moments in hand with factors, thickness and bolt spacing correction.
RIGIDITY_CALL RIGIDITY_ARGUMENTS(const MOMENT_STATE& s, const RIGIDITY_FACTORS& factors, Real t,
                                 Real CF);
// Fills s.J (seating, operating; left as it was where no rule applies) and Jmax.
void RIGIDITY_INDEX(FLANGE_STATE& s, RIGIDITY_CALL& call, Int rigidityPrint);

void FLANGE_INERTIA(FLANGE_STATE& s); // I, Ip

} // namespace tarvane
