// The elements of SHLINT, one routine each.
#pragma once

#include "shell/shlint.h"

#include <cmath>

namespace tarvane {

struct ELEMENT_RESULT {
    Real Treq, MAWP, MAPnc, Stress;
};

inline Real corroded_thickness(const SHLINT_ARGUMENTS& s) { return (s.t - s.c) - s.u; }
// Outside diameter less the tolerance on both sides, for the outside forms.
inline Real reduced_outside_diameter(const SHLINT_ARGUMENTS& s) { return s.D - 2.0f * s.u; }

inline Real cosine_of_degrees(Real alpha) { return cos(alpha * 3.1415927f / 180.0f); }

// K of an elliptical head by its aspect ratio D/2h, and M of a torispherical head or a knuckle by
// the ratio of its radii (Appendix 1-4(c), (d)).
inline Real ellipse_factor(Real k) { return (square(k) + 2.0f) / 6.0f; }
inline Real knuckle_factor(Real L, Real r) { return (std::sqrt(L / r) + 3.0f) / 4.0f; }

ELEMENT_RESULT CYLINDRICAL_SHELL(const SHLINT_ARGUMENTS& s); // UG-27(c), Appendix 1-2(a)
ELEMENT_RESULT SPHERICAL_SHELL(const SHLINT_ARGUMENTS& s);   // UG-27(d), Appendix 1-3
ELEMENT_RESULT CONICAL_SECTION(const SHLINT_ARGUMENTS& s);   // UG-32(g), (h)
ELEMENT_RESULT FLAT_HEAD_PLATE(const SHLINT_ARGUMENTS& s);   // UG-34(c)(2)
// The two formed heads without Appendix 1-4(f). The elliptical one gives its equivalent crown
// radius, new, in L.
ELEMENT_RESULT ELLIPTICAL_HEAD(SHLINT_ARGUMENTS& s);          // UG-32(d), Appendix 1-4(c)
ELEMENT_RESULT TORISPHERICAL_HEAD(const SHLINT_ARGUMENTS& s); // UG-32(e), Appendix 1-4(d)

// Formed heads by the older rules of Division 2 (AD-204). True when they gave the results; otherwise
// a required thickness may have been written, and the ordinary formulas are to follow.
bool OLD_DIVISION_2_HEAD(SHLINT_ARGUMENTS& s, Real TminS);
// Factors of AD-204 by the corroded thickness ratio t/L and by r/D. K keeps the column of the call
// before when r/D is above 0.20.
Real DIV2_M_FACTOR(Real D, Real r, Real t, Real L, Real c, Int Element, Real u);
Real DIV2_K_FACTOR(Real D, Real r, Real t, Real L, Real c, Int Element, Real u);

// Thin formed heads: T14f, MAWP14f, MAPnc14f and Status14f, and the two pressures limited by them.
void APPENDIX_1_4F_LIMITS(SHLINT_ARGUMENTS& s, Real ambient);

} // namespace tarvane
