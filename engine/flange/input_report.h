// Echo of the flange's input at the head of the report.
#pragma once

#include "flange/state.h"

namespace tarvane {

// The trimmed format of a numbered line, empty when the number is not in the table.
std::string_view FLANGE_LABEL(Int code, Int number);
// Writes the echo.
void FLANGE_INPUT_REPORT(const FLANGE_STATE& s);

} // namespace tarvane
