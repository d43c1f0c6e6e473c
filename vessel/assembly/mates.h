// Two flanges that are bolted together: the bolts carry the greater loads, and both flanges hold what they do.
#pragma once

#include "components/flange_input.h"
#include "components/request.h"

#include <array>
#include <functional>
#include <optional>
#include <string>

namespace tarvane::vessel {

using MateLoads = std::array<float, 3>; // Wm1, Wm2, W

// Loads that are not the same after as many rounds as there may be: those of the last two.
struct Unsettled {
    MateLoads before, after;
};

// Puts the greater loads of a pair into both flanges, until they stay as they are. Those of a given geometry stay from
// the third round on: the engine takes the greater one of a load and that of the mate, and W alone follows from
// others. A flange that is designed may select other bolts for other loads. `greater` gives nothing where a flange has
// none, and the calculation says why.
std::optional<Unsettled> settle_loads(const std::function<std::optional<MateLoads>()>& greater,
                                      const std::function<void(const MateLoads&)>& put);

std::string words_of(const Unsettled& loads, const std::string& flange, const std::string& mate,
                     const UnitSystem& units);

// The same of two flanges. Why they do not settle; else nothing. The engine is left as at load.
std::string settle_mates(FlangeInput& flange, FlangeInput& mate, const Request& request);

} // namespace tarvane::vessel
