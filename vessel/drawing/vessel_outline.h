// A vessel from outside: its shells and heads where their elevations put them, and at what elevation each other
// component is. On which side a nozzle is, nobody says: a leader ends at its elevation.
#pragma once

#include "components/request.h"
#include "drawing/frame.h"

#include <optional>

namespace tarvane::vessel {

// Nothing without a cylinder at an elevation, and something else that has one.
std::optional<Draft> draw_vessel(const Request& request);

} // namespace tarvane::vessel
