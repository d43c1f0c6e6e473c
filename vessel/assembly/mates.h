// Two flanges that are bolted together: the bolts carry the greater loads, and both flanges hold what they do.
#pragma once

#include "components/flange_input.h"
#include "components/request.h"

#include <string>

namespace tarvane::vessel {

// Puts the greater Wm1, Wm2 and W of the pair into both, until they stay as they are. Why not, after too many
// rounds; else nothing. The engine is left as at load.
std::string settle_mates(FlangeInput& flange, FlangeInput& mate, const Request& request);

} // namespace tarvane::vessel
