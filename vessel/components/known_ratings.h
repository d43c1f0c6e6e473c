// The calculation of a request by a host that keeps rated pressures: their search takes more time than all the rest.
#pragma once

#include "components/calculation.h"

#include <functional>
#include <optional>

namespace tarvane::vessel {

// In place of find_rated_pressure, with the same result.
using Rating = std::function<std::optional<RatedPressure>(const Element&, const Outcome&,
                                                          const Request& request)>;

Calculation calculate(const Request& request, const Rating& rating);

} // namespace tarvane::vessel
