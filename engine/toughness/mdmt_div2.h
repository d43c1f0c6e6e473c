// Minimum design metal temperature by the newer Division 2: Figures 3.7 and 3.8 (3.11.2.3) and the
// reductions of Figures 3.12 and 3.13 (3.11.2.5).
#pragma once

#include "frame/types.h"

namespace tarvane {

struct MDMT_DIV2_CALL {
    Real Sy = 0.0f;        // yield stress, psi
    Real Estar = 0.0f;     // joint efficiency
    Real Tnom = 0.0f;      // nominal thickness, in
    Real Ci = 0.0f;        // inside corrosion allowance, in
    Real Cext = 0.0f;      // outside corrosion allowance, in
    Int Pwht = 0;          // 1: heat treated
    Int Curve = 0;         // 1 to 4: A to D; below 1: no calculation; others take curve A
    Real Tr = 0.0f;        // required thickness, in; zero or negative: minus the ratio
    Real Tcurve = 0.0f;    // out: temperature from the figure; 1.0101 not computed
    Real Mdmt = 0.0f;      // out: temperature after reduction; 1.0101 not computed
    Real Tuser = 0.0f;     // the user's minimum design temperature
    Real Sr = 0.0f;        // out: stress ratio; -1.0 not computed
    Real EstarUsed = 0.0f; // out: Estar within 0.8 and 1.0
};

void MDMT_DIV2_FIGURES(MDMT_DIV2_CALL& call);
// The same within MDMT_ELEMENT, which has begun the results.
void MDMT_DIV2_STAGES(MDMT_DIV2_CALL& call);

// Temperature from Figure 3.7 (not heat treated) or 3.8 (heat treated) at a thickness in inches.
Real FIGURE_3_7(Int Curve, Real t);
Real FIGURE_3_8(Int Curve, Real t);

} // namespace tarvane
