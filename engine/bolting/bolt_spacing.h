// Bolt spacing, its correction factor, and the table of spacings and radial distances.
#pragma once

#include "frame/types.h"

namespace tarvane {

struct BOLT_SPACING_CALL {
    // given, lengths in inches
    Real a;         // nominal bolt diameter; may be corrected to the table's
    Int series;     // thread series
    Int n;          // number of bolts
    Real areaGiven; // root area of one bolt, series 3
    Real C, t, m, tw;
    Int type;
    Real B, ct, g1, go, A, ce, Am;
    Int noCorrection; // not 0: the spacing correction is turned off
    Int code;
    // results: bolt area, least spacing, least distances hub to bolt and bolt to edge, correction
    Real Ab = 0.0f, Bmin = 0.0f, Rmin = 0.0f, Emin = 0.0f, CF = 1.0f;
    // and the actual spacing and distances, with the largest spacing
    Real Deltab = 0.0f, BsMax = 0.0f, Ractual = 0.0f, Eactual = 0.0f;
};

// Larger of sqrt(Deltab / cfDen) and 1, Deltab being the actual circumferential spacing. Form 1 (and
// below) and 2: cfDen = 2a + t, 3 and 4: 2a + 6t/(m + 0.5), t less the allowance cTotal.
// Appendix 2, 2-6 eq. (7); PD 5500 3.8; EN 13445 11.4.3.
Real BOLT_CORRECTION_FACTOR(Int form, Real C, Int n, Real a, Real t, Real cTotal, Real m,
                            Real& Deltab, Real& cfDen);

// Bolt area, correction factor and the check of the actual bolting, with their report.
void BOLT_SPACING(BOLT_SPACING_CALL& call);

// Least, actual and largest values of the bolting, inches and square inches.
struct BOLT_LIMITS {
    Int type;
    Real Am, Ab;
    Real Rmin, Ractual; // hub to bolts
    Real Emin, Eactual; // bolts to edge
    Real Bmin, Deltab, BsMax;
};
void BOLT_LIMITS_TABLE(const BOLT_LIMITS& limits);

// Hide rows of the limits table, 0 unless a form of the host's own sets them: the rows of area and
// hub; all rows of distances.
extern Int QUIET_BOLT_AREA, QUIET_BOLT_DISTANCES;

} // namespace tarvane
