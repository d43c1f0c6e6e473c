// What `tarvane run` writes to standard output, UTF-8.
#pragma once

#include "components/calculation.h"

#include <string>

namespace tarvane::app {

using namespace vessel;

// The report of a component with its checks and its rated pressure.
std::string component_text(const Calculated& component, const UnitSystem& units, bool colour);

// After the last of them: tables of all components, what their data are, the verdict.
std::string closing_text(const Request& request, const Calculation& calculation, bool colour);

} // namespace tarvane::app
