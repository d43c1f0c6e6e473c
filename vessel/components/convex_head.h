// UG-33(a)(1) requires more of an ellipsoidal or torispherical head with the pressure on its convex side than
// the chart: the thickness by UG-32 too, for 1.67 times the pressure and with a joint efficiency of 1.
#pragma once

#include "components/external_input.h"
#include "components/shell_session.h"

namespace tarvane::vessel {

struct ConvexHead {
    ShellInput head; // under 1.67 P inside
    ShellOutcome results;
    float maep = 0.0f; // MAWP of the head / 1.67
};

// CONVEX_HEAD: by an external pressure, what the chart gives, and what SHLINT found.
struct ConvexRating {
    float Pi, t_inside, maep_i, maep_g, t_g;
};
ConvexRating convex_rating(const ConvexCheck& chart, const TARVANE_SHELL_RESULTS& found);

// The head as one under internal pressure. Without an external pressure it gets one of 1 psi: the rated
// pressure does not depend on it, and Appendix 1-4(f) finds no thickness for none.
ShellInput internal_head(const ExternalInput& element);

// The keys, "S and r", without which the check cannot be made; empty when it can.
std::string_view missing_for_convex_head(const ExternalInput& element);

// After RESET_ENGINE and the units. It changes the globals and writes no report.
ConvexHead check_convex_head(const ExternalInput& element);

// The lines of the report, after those of the chart; `chart` has their results.
void write_convex_head(const ConvexHead& convex, const ExternalInput& element,
                       const ExternalOutcome& chart);

// Its rows, whether it was made or not.
void convex_checks(const ExternalInput& element, const ExternalOutcome& outcome,
                   const UnitSystem& units, Checks& checks);

} // namespace tarvane::vessel
