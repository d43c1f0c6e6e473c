// Design mode: selection of the geometry, search for the thickness.
#pragma once

#include "flange/state.h"

namespace tarvane {

Real ROUND_TO_FRACTION(Real x, Int n); // up to the next n-th
Real ROUND_UP_DECIMALS(Real x, Int k); // up to k decimals

// Hub, bolts, bolt circle, gasket, outside diameter; designFlag as the kernel keeps it.
void SELECT_FLANGE_GEOMETRY(FLANGE_STATE& s, Int& designFlag);
// Next thickness by the square root of the stress ratios.
void NEXT_FLANGE_THICKNESS(FLANGE_STATE& s, bool& converged);

// Working values of the thickness search, kept by the kernel.
struct THICKNESS_SEARCH {
    Int thicknessRounds = 0;
    bool converged = false;
    bool rigidityStage = false;
    bool firstRigidityRound = true;
    Real step = 0.3125f; // rigidity increment
    Real previousJ = 0.0f;
    Real tStress = 0.0f, tRigid = 0.0f;
    Real V = 0, lambda = 0, ho = 0, K = 0; // factors where the stress search converged
};
// One round of the search, under kind 2 while not converged.
void THICKNESS_ROUND(FLANGE_STATE& s, THICKNESS_SEARCH& search);
// Mop, Matm and CF back to the first values, rescaled for thickness t.
void RESCALE_FIRST_MOMENTS(FLANGE_STATE& s, Real t);

} // namespace tarvane
