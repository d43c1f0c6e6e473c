// The closing block of the kernel: required thickness, estimated pressures, weights.
#pragma once

#include "flange/design.h"
#include "flange/state.h"

namespace tarvane {

// Working values that the kernel keeps between its back edges.
struct KERNEL_STATE {
    bool kindIsAnalysis = false; // the kind at entry was 1
    Real tStart = 0.0f;          // thickness given, kind 2; 0.0 for kinds 1 and 3
    Real tBlindStart = 0.0f;     // thickness of a blind flange at entry
    Int evaluations = 0;         // times through the evaluation entry
    Int designRounds = 0;
    Int designFlag = -1;
    bool firstFactorsKept = false;
    RIGIDITY_FACTORS firstFactors; // of the first evaluation
    THICKNESS_SEARCH search;
    Real blindPressure = 0.0f, blindSeatingPressure = 0.0f; // of the bare blind flange
};

// Required thickness with its lines; thickness and pressure of a blind flange; Pbolt.
void THICKNESS_LINES(FLANGE_STATE& s, KERNEL_STATE& k);
// Rigidity at the given thickness, MAWP estimate, overstress and MAWP lines.
void RATE_FLANGE(FLANGE_STATE& s, const KERNEL_STATE& k);
// A stress above its limit by more than the tolerance of the overstress warning: 0.25 psi, under external
// pressure none.
bool STRESS_EXCEEDS(const FLANGE_STATE& s, Int row, Int place);
// Weights, and the rigidity index of the final state.
void CLOSE_EVALUATION(FLANGE_STATE& s, const KERNEL_STATE& k);

} // namespace tarvane
