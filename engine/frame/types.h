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
inline constexpr Real QUARTER_PI = PI / 4.0f;
// The single next to 3.14159, which some formulas take.
inline constexpr Real PI_IN_FIVE_DECIMALS = 3.14159012f;

inline constexpr Real MM_PER_INCH = 25.4f;

// "No value": in a record element on input, in a pressure on output.
inline constexpr Real NO_VALUE = -1.0101f;
static_assert(std::bit_cast<std::uint32_t>(NO_VALUE) == 0xBF814AF5u);

// The first operand is kept unless another is strictly greater (less), so a not-a-number survives
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
template <typename Function>
Real nearest(Function function, Real argument) {
    double x = static_cast<double>(argument);
#ifdef __i386__
    // The C library works them out by the x87, whose control word is the host's: 24 bits of precision
    // there, or another rounding, must not reach the result.
    constexpr std::uint16_t EXTENDED = 0x037F; // 64 bits, to nearest, no exception
    std::uint16_t given;
    __asm__ volatile("fnstcw %0\n\tfldcw %2" : "=m"(given), "+m"(x) : "m"(EXTENDED));
    x = function(x);
    __asm__ volatile("fldcw %1" : "+m"(x) : "m"(given));
    return static_cast<Real>(x);
#else
    return static_cast<Real>(function(x));
#endif
}

inline Real log(Real x) {
    return nearest([](double a) { return std::log(a); }, x);
}
inline Real log10(Real x) {
    return nearest([](double a) { return std::log10(a); }, x);
}
inline Real exp(Real x) {
    return nearest([](double a) { return std::exp(a); }, x);
}
inline Real sin(Real x) {
    return nearest([](double a) { return std::sin(a); }, x);
}
inline Real cos(Real x) {
    return nearest([](double a) { return std::cos(a); }, x);
}
inline Real acos(Real x) {
    return nearest([](double a) { return std::acos(a); }, x);
}
inline Real cbrt(Real x) {
    return nearest([](double a) { return std::cbrt(a); }, x);
}
inline Real pow(Real x, Real y) {
    return nearest([y](double a) { return std::pow(a, static_cast<double>(y)); }, x);
}

// Conversion towards zero. What an INTEGER cannot hold, and a not-a-number, gives the least
// INTEGER, as the processor's conversion does.
constexpr Int truncated(Real x) {
    if (x > -2147483648.0f && x < 2147483648.0f) return static_cast<Int>(x);
    return INT32_MIN;
}

} // namespace tarvane
