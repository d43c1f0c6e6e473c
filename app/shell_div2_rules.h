// Formed heads by the rules of Division 2 before its 2007 edition, AD-204.
#pragma once

#include "shell_rules.h"

namespace tarvane::app {

// False, and nothing is done, when they are not asked for or when the head lies outside their tables:
// SHLINT takes the ordinary formulas then.
bool older_division_2_rules(const ShellInput& shell, ShellRules& rules);

} // namespace tarvane::app
