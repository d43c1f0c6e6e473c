// Verdict on a shell, and the table of the shells that closes the output.
#pragma once

#include "components/shell_session.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// By more than a thousandth; a value that is no number falls short.
bool is_short_of_thickness(const ShellInput& shell, const ShellOutcome& outcome);
bool is_short_of_pressure(const ShellInput& shell, const ShellOutcome& outcome);

// Limits of VIII-1 on the form of the element that it does not keep; its formulas do not know them.
std::vector<std::string_view> form_warnings(const ShellInput& shell, const ShellOutcome& outcome);

Verdict judge_shell(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units);

std::string shell_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::vessel
