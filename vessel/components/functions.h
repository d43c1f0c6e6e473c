// Functions as the engine calculates them: in double precision, rounded once, so that a report has the
// same digits on every platform.
#pragma once

#include <cmath>

namespace tarvane::vessel {

inline float log(float x) { return static_cast<float>(std::log(static_cast<double>(x))); }
inline float exp(float x) { return static_cast<float>(std::exp(static_cast<double>(x))); }
inline float cos(float x) { return static_cast<float>(std::cos(static_cast<double>(x))); }

} // namespace tarvane::vessel
