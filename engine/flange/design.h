// Design mode: selection of the geometry, search for the thickness.
#pragma once

#include "flange/rigidity.h"
#include "flange/state.h"

namespace tarvane {

// Up to the next n-th, unless x is within a hundredth of one above it.
Real ROUND_TO_FRACTION(Real x, Int n);
// Up to k decimals; a value that has no more of them goes up too.
Real ROUND_UP_DECIMALS(Real x, Int k);

// Hub, bolts, bolt circle, gasket, outside diameter. designFlag counts the calls from -1 on; from 30
// on the gasket is fixed.
void SELECT_FLANGE_GEOMETRY(FLANGE_STATE& s, Int& designFlag);
// Next thickness by the square root of the stress ratios; t is left as it is once it has converged.
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
    RIGIDITY_FACTORS factors; // where the stress search converged
};
// One round of the search, under kind 2 while not converged, on the stress ratios of thickness t. When
// it has not converged, t, Mop, Matm and CF are those for the next stresses, and the report is off.
// At round 200 it gives up with two warning lines.
void THICKNESS_ROUND(FLANGE_STATE& s, THICKNESS_SEARCH& search);
// Mop, Matm and CF back to the first values, rescaled for thickness t.
void RESCALE_FIRST_MOMENTS(FLANGE_STATE& s, Real t);

} // namespace tarvane
