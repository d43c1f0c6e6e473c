// The calls of one shell: what the host sets, SHLINT and its companions, and their results.
#pragma once

#include "components/external_session.h"
#include "components/request.h"
#include "components/shell_input.h"
#include "tarvane/tarvane.h"

namespace tarvane::vessel {

struct ShellOutcome final : Outcome {
    ExternalOutcome external; // of a shell under external pressure too
    bool refused() const override { return external.refused(); }

    TARVANE_SHELL_RESULTS found{}; // by SHLINT
    float fail_ca = 0.0f;          // corrosion at failure; not by the older Division 2
    float fail_ca_knuckle = -1.0f;
    float strain = 0.0f; // of forming, per cent; 0.0: no limit
    bool by_older_division_2() const { return found.formula == TARVANE_AD_204; }
};

// What SHLINT finds for a shell, before anything is reset: its input is still being read.
TARVANE_SHELL_RESULTS look_at(const ShellInput& shell);

// SHLINT and the calls that belong to it, without a report: after RESET_ENGINE and the units.
void calculate_pressures(const ShellInput& shell, ShellOutcome& outcome);

// All calls without a report, after RESET_ENGINE and the units.
void calculate_shell(const ShellInput& shell, ShellOutcome& outcome);

// Runs a shell of the file. Throws std::runtime_error when the report file cannot be opened or read.
ShellOutcome run_shell(const ShellInput& shell, const Request& file);

// The formulas in the report, after calculate_pressures for the same shell.
void report_formulas(const ShellInput& shell);

// A formed head whose convex side has the pressure, UG-33(a)(1): with that pressure (0: none), and what
// the chart gives.
struct ConvexCheck {
    float P, maep, tca;
};
void report_convex_check(const ShellInput& head, const ConvexCheck& check);

} // namespace tarvane::vessel
