// TEMA channel cover deflection.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Fills dfActual and tChannelMin, with their lines; pCover is for the lines only.
void TEMA_COVER_CHECK(FLANGE_STATE& s);

} // namespace tarvane
