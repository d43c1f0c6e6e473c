// The elements of SHLINT, one routine each.
#pragma once

#include "shell/results.h"
#include "shell/shlint.h"
#include "shell/trace.h"

#include <cmath>

namespace tarvane {

struct ELEMENT_RESULT {
    Real Treq, MAWP, MAPnc, Stress;
};

// Of SHELL_RESULTS: a thick wall, a high pressure, or both.
inline Int thick_by(bool wall, bool pressure) { return (wall ? 1 : 0) + (pressure ? 2 : 0); }

// The thickness before the minima: under AD-204 the raw one already includes them.
inline Real formula_thickness(const SHLINT_ARGUMENTS& s) {
    return SHELL.formula == AD_204 ? max(SHELL.t_crown, SHELL.t_knuckle) : s.TreqRaw;
}

// What the formulas rest on, and the thickness that governs.
void TRACE_ARGUMENTS(TRACE& trace, const SHLINT_ARGUMENTS& s);
void TRACE_CORRODED_THICKNESS(TRACE& trace, const SHLINT_ARGUMENTS& s);
void TRACE_GOVERNING(TRACE& trace, const SHLINT_ARGUMENTS& s, Real TminS);

// The same four as a report shows them.
struct ELEMENT_TEXTS {
    std::string_view Treq, MAWP, MAPnc, Stress;
};
void TRACE_ELEMENT(TRACE& trace, const ELEMENT_TEXTS& texts, const ELEMENT_RESULT& result);
// Without the thickness.
void TRACE_RATING(TRACE& trace, const ELEMENT_TEXTS& texts, const ELEMENT_RESULT& result);
// The radii of cylinders and spheres: Rn and R, or Ro, Ru and, of thick ones, Ri.
void TRACE_INSIDE_RADII(TRACE& trace, Real Rn, Real R);
void TRACE_OUTSIDE_RADII(TRACE& trace, Real Rn, Real Ro, Real u);

inline Real corroded_thickness(const SHLINT_ARGUMENTS& s) { return (s.t - s.c) - s.u; }
// Outside diameter less the tolerance on both sides, for the outside forms.
inline Real reduced_outside_diameter(const SHLINT_ARGUMENTS& s) { return s.D - 2.0f * s.u; }

inline Real cosine_of_degrees(Real alpha) { return cos(alpha * PI / 180.0f); }

// K of an elliptical head by its aspect ratio D/2h, and M of a torispherical head or a knuckle by
// the ratio of its radii (Appendix 1-4(c), (d)).
inline Real ellipse_factor(Real k) { return (square(k) + 2.0f) / 6.0f; }
inline Real knuckle_factor(Real L, Real r) { return (std::sqrt(L / r) + 3.0f) / 4.0f; }

// Each passes its formulas to a trace, where there is one.
ELEMENT_RESULT CYLINDRICAL_SHELL(const SHLINT_ARGUMENTS& s, TRACE* trace); // UG-27(c), App. 1-2(a)
ELEMENT_RESULT SPHERICAL_SHELL(const SHLINT_ARGUMENTS& s, TRACE* trace);   // UG-27(d), App. 1-3
ELEMENT_RESULT CONICAL_SECTION(const SHLINT_ARGUMENTS& s, TRACE* trace);   // UG-32(g), (h)
ELEMENT_RESULT FLAT_HEAD_PLATE(const SHLINT_ARGUMENTS& s, TRACE* trace);   // UG-34(c)(2), (3)
// The two formed heads without Appendix 1-4(f). The elliptical one gives its equivalent crown
// radius, new, in L.
ELEMENT_RESULT ELLIPTICAL_HEAD(SHLINT_ARGUMENTS& s, TRACE* trace);          // UG-32(d), App. 1-4(c)
ELEMENT_RESULT TORISPHERICAL_HEAD(const SHLINT_ARGUMENTS& s, TRACE* trace); // UG-32(e), App. 1-4(d)

// Formed heads by the older rules of Division 2 (AD-204). True when they gave the results; otherwise
// a required thickness may have been written, and the ordinary formulas are to follow.
bool OLD_DIVISION_2_HEAD(SHLINT_ARGUMENTS& s, Real TminS, TRACE* trace);
// Factors of AD-204 by the corroded thickness ratio t/L and by r/D. K keeps the column of the call
// before when r/D is above 0.20.
Real DIV2_M_FACTOR(Real D, Real r, Real t, Real L, Real c, Int Element, Real u);
Real DIV2_K_FACTOR(Real D, Real r, Real t, Real L, Real c, Int Element, Real u);
// The column that K keeps, and the one that it had when OLD_DIVISION_2_HEAD was last begun.
extern Int K_COLUMN, K_COLUMN_AT_ENTRY;

// Thin formed heads: T14f, MAWP14f, MAPnc14f and Status14f, and the two pressures limited by them.
void APPENDIX_1_4F_LIMITS(SHLINT_ARGUMENTS& s, TRACE* trace);
// The lines of Appendix 1-4(f) for the head, by a HEAD_MODE that prints. False for a head without
// solution.
bool APPENDIX_1_4F_REPORT(const SHLINT_ARGUMENTS& s, Int Mode, Real TempLimit);

// SHLINT with a trace, or with none.
void SHELL_ELEMENT(SHLINT_ARGUMENTS& s, TRACE* trace);

} // namespace tarvane
