// Verdict on a shell, and the table of the shells that closes the output.
#pragma once

#include "shell_session.h"

#include <span>
#include <string>

namespace tarvane::app {

// By more than a thousandth; a value that is no number falls short.
bool is_short_of_thickness(const ShellInput& shell, const ShellOutcome& outcome);
bool is_short_of_pressure(const ShellInput& shell, const ShellOutcome& outcome);

Verdict judge_shell(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units);

std::string shell_tables(std::span<const Calculated> elements, const UnitSystem& units);

} // namespace tarvane::app
