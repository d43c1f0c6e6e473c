// Results and checks of a shell, and the tables of the shells that close the output.
#pragma once

#include "components/shell_session.h"

#include <span>
#include <string>

namespace tarvane::vessel {

// Also true of a value that is not a number.
bool is_short_of_thickness(const ShellInput& shell, const ShellOutcome& outcome);
bool is_short_of_pressure(const ShellInput& shell, const ShellOutcome& outcome);

// Limits of VIII-1 on the form of the element, which its formulas do not contain.
Checks form_checks(const ShellInput& shell, const ShellOutcome& outcome);
// Of Appendix 1-4(f), with the allowances.
float thickness_14f(const ShellInput& head, const TARVANE_SHELL_RESULTS& found);
// No element but a head that is thinner than 0.0005 L is outside the rules of Appendix 1-4(f).
void check_very_thin(const ShellOutcome& outcome, Checks& checks);

// Without those under external pressure.
Checks shell_checks(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units);

std::string shell_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::vessel
