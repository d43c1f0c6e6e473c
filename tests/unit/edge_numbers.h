// Numbers that tests ask with at an edge: what is no number, and the next number on either side.
#pragma once

#include "frame/types.h"

#include <cmath>
#include <limits>

namespace tarvane {

inline constexpr Real NOT_A_NUMBER = std::numeric_limits<Real>::quiet_NaN();
inline constexpr Real UNBOUNDED = std::numeric_limits<Real>::infinity();

inline Real above(Real x) { return std::nextafter(x, UNBOUNDED); }
inline Real below(Real x) { return std::nextafter(x, -UNBOUNDED); }

} // namespace tarvane
