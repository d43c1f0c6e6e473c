// What is wrong with a line that is no TOML, in the words of who wrote it.
#pragma once

#include "components/element.h"

#include <string_view>

namespace tarvane::app {

using namespace vessel;

// The fault of a line (from 1 on) that the parser refuses: a text without quotation marks, one whose second
// mark is missing, a number with its unit, and so on. `description` is what the parser says; it stands where
// the line tells nothing.
Fault syntax_fault(std::string_view file, int line, std::string_view description);

} // namespace tarvane::app
