// Echo of the flange's input at the head of the report.
#pragma once

#include "flange/state.h"

namespace tarvane {

// The trimmed format of a numbered line, empty when the number is not in the table.
std::string_view FLANGE_LABEL(Int code, Int number);
// Writes the echo; derives ct anew and clears ci (types 4 to 6) and ct (type 6) in the state.
void FLANGE_INPUT_REPORT(FLANGE_STATE& s);

} // namespace tarvane
