// The engine's number types and the arithmetic rules that every formula shares: single precision,
// conversions to whole numbers as the processor makes them, powers as products.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tarvane {

using Real = float;
using Int = std::int32_t;

static_assert(sizeof(Real) == 4, "REAL is IEEE single precision");

inline constexpr Real PI = 3.14159274f;

// "No value": in a record element on input, in a pressure on output.
inline constexpr Real NO_VALUE = -1.0101f;
static_assert(std::bit_cast<std::uint32_t>(NO_VALUE) == 0xBF814AF5u);

// The first operand stays unless another is strictly greater (less), so a not-a-number survives
// only in the first place.
constexpr Real max(Real first, Real second) { return second > first ? second : first; }
constexpr Real min(Real first, Real second) { return second < first ? second : first; }
constexpr Int max(Int first, Int second) { return second > first ? second : first; }
constexpr Int min(Int first, Int second) { return second < first ? second : first; }

template <typename Number, typename... More>
constexpr Number max(Number first, Number second, More... more) {
    return max(max(first, second), more...);
}
template <typename Number, typename... More>
constexpr Number min(Number first, Number second, More... more) {
    return min(min(first, second), more...);
}

// Whole powers are products: x3 = (x*x)*x, x4 = (x*x)*(x*x).
constexpr Real square(Real x) { return x * x; }
constexpr Real cube(Real x) { return (x * x) * x; }
constexpr Real fourth(Real x) { return (x * x) * (x * x); }

// The functions of single precision. C libraries differ in their last bits (glibc for 32 and for 64
// bits, Windows), and a report shows it. So each is worked out in double precision and rounded once,
// which gives the single nearest to the exact value everywhere.
inline Real log(Real x) { return static_cast<Real>(std::log(static_cast<double>(x))); }
inline Real log10(Real x) { return static_cast<Real>(std::log10(static_cast<double>(x))); }
inline Real exp(Real x) { return static_cast<Real>(std::exp(static_cast<double>(x))); }
inline Real sin(Real x) { return static_cast<Real>(std::sin(static_cast<double>(x))); }
inline Real cos(Real x) { return static_cast<Real>(std::cos(static_cast<double>(x))); }
inline Real acos(Real x) { return static_cast<Real>(std::acos(static_cast<double>(x))); }
inline Real cbrt(Real x) { return static_cast<Real>(std::cbrt(static_cast<double>(x))); }
inline Real pow(Real x, Real y) {
    return static_cast<Real>(std::pow(static_cast<double>(x), static_cast<double>(y)));
}

// Conversion towards zero. What an INTEGER cannot hold, and a not-a-number, gives the least
// INTEGER, as the processor's conversion does.
constexpr Int truncated(Real x) {
    if (x > -2147483648.0f && x < 2147483648.0f) return static_cast<Int>(x);
    return INT32_MIN;
}

} // namespace tarvane
