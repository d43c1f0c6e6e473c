// Thickness and pressure of a flat bolted cover (UG-34, EN 13445-3 10.5).
#pragma once

#include "flange/state.h"

namespace tarvane {

struct BLIND_CALL {
    // given
    Real d;  // span: the short span of a non-circular cover, else G
    Real Zf; // shape factor
    Real P, S, W;
    Real ca; // allowance
    Real tGiven;
    // results
    Real tOut = 0.0f;  // at the centre
    Real tEdge = 0.0f; // at the gasket
    Real pOut = 0.0f;  // pressure that tGiven carries
};
// Takes Cf, hg, L, CF, coverFactor, coverFlag, fullFace, code, C, jointE, m, b, Sa from the state.
void BLIND_THICKNESS(const FLANGE_STATE& s, BLIND_CALL& call);

} // namespace tarvane
