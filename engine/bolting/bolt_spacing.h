// Bolt spacing, its correction factor, and the table of spacings and radial distances.
#pragma once

#include "frame/types.h"

namespace tarvane {

struct BOLT_SPACING_CALL {
    // given
    Real a;          // nominal bolt diameter; may be corrected to the table's
    Int series;      // thread series
    Int n;           // number of bolts
    Real areaGiven;  // root area of one bolt, series 3
    Real C, t, m, tw;
    Int type;
    Real B, ct, g1, go, A, ce, Am;
    Int noCorrection;
    Int code;
    // results
    Real Ab = 0.0f, Bmin = 0.0f, Rmin = 0.0f, Emin = 0.0f, CF = 1.0f;
};

// Larger of sqrt(Deltab / cfDen) and 1; form 1 and 2: cfDen = 2a + t, 3 and 4: 2a + 6t/(m + 0.5).
Real BOLT_CORRECTION_FACTOR(Int form, Real C, Int n, Real a, Real t, Real cTotal, Real m,
                            Real& Deltab, Real& cfDen);
void BOLT_SPACING(BOLT_SPACING_CALL& call);

} // namespace tarvane
