// External pressure by the charts (UG-28 to UG-33): factor A from the shape, factor B from the chart's
// curve, the pressure from B; and the two searches, for the thickness and the length.
#pragma once

#include "external/results.h"
#include "frame/types.h"
#include "materials/modulus.h"

namespace tarvane {

// Factor A of an element, from Table G where the switch asks for it and the table has it, else by
// formula. dt and ld return the ratios used, L/D of a cylinder or cone held within 0.05 and 50. An
// element outside 1 to 5 leaves A as it is. A cone's length is kept in the record.
void FACTOR_A(Real tc, Real Do, Real L, Real k, Int Element, Real& dt, Real& ld, Real& A);
// Factor A of a cylinder by the equations of the geometric chart.
Real FACTOR_A_FORMULA(Real dt, Real ld);
// Stress B (psi) at A, and the part of the curve that it is on.
struct CURVE_POINT {
    Real B;
    B_SOURCE by;
};
CURVE_POINT CURVE_AT(Real A, const CHART_CURVE& curve);
Real FACTOR_B(Real A, const CHART_CURVE& curve);
// Equivalent factor of an elliptical head of aspect ratio k (Table UG-33.1).
Real ELLIPSE_K0(Real k);
// The two pressures of a thick cylinder, D/t below 10 (UG-28(c)(2)); the lesser one holds.
struct THICK_CYLINDER {
    Real Pa1, Pa2;
};
THICK_CYLINDER THICK_PRESSURES(Real dt, Real B, Real S);

// One element by the charts. t, c and u measure the wall as the chart method takes it: for a cone
// each times cosA.
struct CHART_CALL {
    // Given
    Int Element = 0;
    Real Do = 0.0f;                    // outside diameter, or crown radius
    Real t = 0.0f, c = 0.0f, u = 0.0f; // thickness, corrosion allowance, under-tolerance
    Real k = 0.0f, L = 0.0f, S = 0.0f; // aspect ratio, stiffened length, allowable stress
    Real cosA = 1.0f;
    // Returned
    Real A = 0.0f, B = 0.0f, EMAP = 0.0f;
    Int evaluations = 0;
    SEARCH_END search = NO_SEARCH;
};

// Allowable pressure at t and L; the record keeps the evaluation.
void EMAP_AT(CHART_CALL& call, const CHART_CURVE& curve);
// t for the pressure P; t, c and u are returned along the wall, divided by cosA.
void TCA_SOLVE(CHART_CALL& call, const CHART_CURVE& curve, Real P);
// L for the pressure P; 0 when there is no pressure to carry.
void SLEN_SOLVE(CHART_CALL& call, const CHART_CURVE& curve, Real P);

} // namespace tarvane
