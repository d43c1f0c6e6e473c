// Curves A to D of Fig. UCS-66: the lowest temperature without impact testing over the governing
// thickness, as polynomials and as a table.
#pragma once

#include "frame/types.h"

namespace tarvane {

// Curve numbers: A to D, and the values for materials without a curve.
inline constexpr Int CURVE_A = 1, CURVE_B = 2, CURVE_C = 3, CURVE_D = 4;
inline constexpr Int IMPACT_TESTED_CURVE = 5, EXEMPT_CURVE = 6;

inline constexpr bool has_curve(Int Curve) { return Curve >= CURVE_A && Curve <= CURVE_D; }

// 0.25 in to 6.0 in in steps of 1/16 in.
inline constexpr Int UCS66_ROWS = 93;
struct UCS66_ROW {
    Real thickness;
    Real curve[4]; // A to D
};
extern const UCS66_ROW UCS66_TABLE[UCS66_ROWS];

// T = a + b t + c sqrt(t) + d cbrt(t) of curve A to D, without the limits of the figure.
Real UCS66_POLYNOMIAL(Int Curve, Real t);

// Between the two rows that enclose t; false outside the table, and T stays.
bool UCS66_INTERPOLATED(Int Curve, Real t, Real& T);

// The nearer of the two rows that enclose t, the lower one in the middle, up to `rows` and the row
// after it; false outside, and T is left as it is.
bool UCS66_NEARER_ROW(Int Curve, Real t, Int rows, Real& T);

} // namespace tarvane
