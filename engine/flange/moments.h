// Moments (2-6, 4.16.7) with the summary table and the split ring multipliers.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Md, Mg, Mt, Matm, Mr, Moe, Mop.
void FLANGE_MOMENTS(FLANGE_STATE& s);

} // namespace tarvane
