// Which formulas of VIII-1 (or of the older VIII-2) hold for a shell: those that SHLINT takes, chosen by
// the same tests, as the report shows them.
#pragma once

#include "shell_formula.h"
#include "shell_input.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvane::app {

// What UG-39 makes of a flat head with openings.
struct OpeningFactors {
    float C;        // attachment factor
    float F = 1.0f; // h of UG-39(e)(2)
};

// A value that the formulas rest on, for a column line: "Corroded Inside Radius   R = D / 2 + c", or
// without an expression.
struct RuleColumn {
    std::string label, symbol, expression;
    float value;
    int kind;
};

struct ShellRules {
    std::vector<RuleColumn> columns;
    std::vector<Formula> factors;
    // The last formula of each gives what SHLINT returns, before the minima of UG-16(b) and the limits
    // of Appendix 1-4(f).
    std::vector<Formula> thickness, mawp, map_nc, stress;
    bool older_division_2 = false; // AD-204; thickness holds the minima already
};

// Elastic moduli (psi) that Appendix 1-4(f) goes by: at design temperature, and new and cold.
struct HeadModuli {
    float design, cold;
};
HeadModuli head_moduli(const ShellInput& shell);

ShellRules rules_of(const ShellInput& shell, const OpeningFactors& openings);

} // namespace tarvane::app
