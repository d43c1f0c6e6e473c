// External pressure by the charts (UG-28 to UG-33): factor A from the shape, factor B from the chart's
// curve, the pressure from B.
#pragma once

#include "frame/types.h"

namespace tarvane {

// A chart's curve at one temperature, as READ_CHART gives it: a straight line up to Aelastic, then a
// quadratic in log10(A) up to Amax.
struct CHART_CURVE {
    Real t_used = 0.0f; // temperature of the curve: the one asked for, at most the chart's highest
    Real E = 0.0f;      // modulus, millions of psi
    Real Aelastic = 0.0f; // end of the straight line
    Real second = 0.0f;   // not used
    Real Amax = 0.0f, Bmax = 0.0f;
    Real c0 = 0.0f, c1 = 0.0f, c2 = 0.0f;
};

// Stress B (psi) at A.
Real FACTOR_B(Real A, const CHART_CURVE& curve);

} // namespace tarvane
