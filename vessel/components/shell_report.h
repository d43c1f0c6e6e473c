// The report of one shell, line by line through the engine's report channel.
#pragma once

#include "components/shell_session.h"

#include <string>

namespace tarvane::vessel {

// The report is on; `outcome` is what the calls have given.
void write_shell_report(const ShellInput& shell, const ShellOutcome& outcome,
                        const UnitSystem& units);

// For a head that another check tests by the same rules, too.
void write_head_warnings(const ShellInput& shell, const ShellOutcome& outcome);

// Lines of the report on a failure, in the error style.
inline constexpr std::string_view THICKNESS_WARNING =
    "Warning: Required Thickness Exceeds the Given Thickness!";
inline constexpr std::string_view PRESSURE_WARNING =
    "Warning: Maximum Allowable Working Pressure is below the Design Pressure!";

} // namespace tarvane::vessel
