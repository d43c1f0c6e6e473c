// The result that flanges, shells and heads share.
#pragma once

#include "fields/results.h"

namespace tarvane::vessel {

inline constexpr ResultField RATED_PRESSURE{
    .name = "rated_pressure",
    .symbol = "",
    .quantity = Quantity::pressure,
    .label = "Rated pressure",
    .meaning =
        "the greatest P at which every check passes that depends on it, of the digits that are "
        "shown, rounded down; the engine's own MAWP does not count, and external pressure stays"};

} // namespace tarvane::vessel
