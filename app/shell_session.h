// The calls of one shell: what the host sets, SHLINT and its companions, and what comes back.
#pragma once

#include "external_session.h"
#include "input_file.h"
#include "shell_input.h"
#include "shell_rules.h"

namespace tarvane::app {

struct ShellOutcome final : Outcome {
    ExternalOutcome external; // of a shell under external pressure too

    // What SHLINT returns.
    float t_req = 0.0f, t_req_raw = 0.0f, mawp = 0.0f, map_nc = 0.0f, stress = 0.0f;
    float t_14f = 0.0f, mawp_14f = 0.0f, map_nc_14f = 0.0f;
    int status_14f = 0; // TARVANE_HEAD_...
    float L = 0.0f;     // crown radius, of an elliptical head the equivalent one
    float Sy_cold = 0.0f;

    bool limits_14f = false;  // Appendix 1-4(f) was asked for, and its moduli are known
    bool thin = false;        // a formed head with (t - c - Ut)/(L + c) up to 0.002
    bool thin_new = false;    // the same of t/L
    float t_governing = 0.0f; // with neither allowance
    float t_required = 0.0f;  // with c and Ut
    float fail_ca = 0.0f;     // corrosion at failure; not by the older Division 2
    float fail_ca_knuckle = -1.0f;
    float strain = 0.0f; // of forming, per cent; 0.0: no limit
    OpeningFactors openings{};
    ShellRules rules;
};

// SHLINT with what belongs to it, without a report: behind RESET_ENGINE and the units.
void calculate_pressures(const ShellInput& shell, ShellOutcome& outcome);

// All calls without a report, behind RESET_ENGINE and the units.
void calculate_shell(const ShellInput& shell, ShellOutcome& outcome);

// Runs a shell of the file. Throws std::runtime_error when the report file cannot be opened or read.
ShellOutcome run_shell(const ShellInput& shell, const InputFile& file);

// What UG-39 makes of the openings of a flat head, with the lines of the check when the report is on.
OpeningFactors check_openings(const ShellInput& shell);

} // namespace tarvane::app
