// The results of a [[shell]] under internal pressure, by the symbols of the report.
#pragma once

#include "fields/external_results.h"
#include "fields/shell_keys.h"
#include "tarvane/shell.h"

namespace tarvane::vessel {

// What they are taken from, in the engine's units: values by keys, GETSHELLRESULTS, what routines other than
// SHLINT returned.
struct ShellFound {
    const Settings<ShellNumber, ShellText>& given;
    const TARVANE_SHELL_RESULTS& block;
    float fail_ca, fail_ca_knuckle, strain;
    bool stopped;
    const ExternalFound* external; // none: a null pointer
    Got rated_pressure;
};

// "UG-27(c)(1)" of a formula of TARVANE_UG_27_C_1 and its companions; empty: none.
std::string_view formula_name(int formula);

inline constexpr std::string_view SHELL_TABLE = "Shells and heads";

// Those under internal pressure, then those under external pressure under their own names.
std::span<const ResultField> shell_result_fields();
std::vector<Result> shell_results(const ShellFound& found);

} // namespace tarvane::vessel
