// The lines of a shell or head under internal pressure. SHLINT itself writes none.
#pragma once

#include "shell/shlint.h"

namespace tarvane {

// A head under external pressure, whose check by UG-33(a)(1) is shown.
struct CONVEX_REPORT {
    Real P, MAEP, Tca; // as CONVEX_HEAD_ARGUMENTS
};

// Runs the stages of SHLINT and shows their formulas, with the lines of UG-39 and Appendix 1-4(f).
// TempLimit is that of Table 1-4.3. With `convex` P of the arguments is the pressure inside, and what is
// shown is the check by UG-33(a)(1). Nothing with the report off or for an unknown element.
void SHELL_REPORT(SHLINT_ARGUMENTS& s, Real TempLimit, const CONVEX_REPORT* convex);

} // namespace tarvane
