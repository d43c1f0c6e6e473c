#pragma once

#include "flange/state.h"

namespace tarvane {

// The block of corroded dimensions; it has no results.
void CORRODED_DIMENSIONS(const FLANGE_STATE& s);

} // namespace tarvane
