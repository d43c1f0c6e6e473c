// What is wrong with a line that is no TOML, in a user's words.
#pragma once

#include "components/element.h"

#include <string_view>

namespace tarvane::app {

using namespace vessel;

// The fault of a line (from 1 on) that the parser refuses: a text without quotation marks, one whose second
// mark is missing, a number with its unit, and so on. `description` is what the parser says; it is used where
// the line shows no cause.
Fault syntax_fault(std::string_view file, int line, std::string_view description);

} // namespace tarvane::app
