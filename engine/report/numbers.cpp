// Number text: decimal digits of the exact stored single, rounded once.
#include "report/renderer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace tarvane {
namespace {

constexpr Int FIELD_LIMIT = 64;   // the longest text that a NumberText holds
constexpr Int DECIMAL_LIMIT = 20; // 39 digits, sign, point and these stay below it

constexpr std::uint64_t POWER_OF_TEN[] = {1,      10,      100,      1000,      10000,
                                          100000, 1000000, 10000000, 100000000, 1000000000};
constexpr Int SHORT_DECIMALS = 9; // 24 bits of mantissa times 10^9 fit 64 bits with room to spare

// magnitude * 10^decimals as a whole number, an exact tie to the even one. False when that needs
// more than 64 bits.
bool scaled_magnitude(Real magnitude, Int decimals, std::uint64_t& scaled) {
    if (decimals > SHORT_DECIMALS) return false;
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(magnitude);
    const std::uint32_t exponent = bits >> 23;
    const std::uint64_t mantissa = (bits & 0x7FFFFFu) | (exponent != 0 ? 0x800000u : 0u);
    const std::uint64_t product = mantissa * POWER_OF_TEN[decimals];
    const Int shift = static_cast<Int>(exponent != 0 ? exponent : 1u) - 150;
    if (shift >= 0) {
        if (shift >= 64 || product > (std::numeric_limits<std::uint64_t>::max() >> shift))
            return false;
        scaled = product << shift;
        return true;
    }
    if (shift <= -64) { // below 2^54 / 2^64
        scaled = 0;
        return true;
    }
    const std::uint64_t rest = product & ((std::uint64_t{1} << -shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (-shift - 1);
    scaled = product >> -shift;
    if (rest > half || (rest == half && (scaled & 1) != 0)) ++scaled;
    return true;
}

// Fixed notation of a finite magnitude without a zero before the point; no point without decimals.
std::string_view fixed_digits(Real magnitude, Int decimals, char (&buffer)[FIELD_LIMIT]) {
    std::uint64_t scaled = 0;
    if (!scaled_magnitude(magnitude, decimals, scaled)) {
        const auto end = std::to_chars(buffer, buffer + FIELD_LIMIT, magnitude,
                                       std::chars_format::fixed, decimals)
                             .ptr;
        std::string_view digits(buffer, static_cast<std::size_t>(end - buffer));
        if (digits.starts_with("0.")) digits.remove_prefix(1);
        return digits;
    }
    char* const end = buffer + FIELD_LIMIT;
    char* first = end;
    for (Int i = 0; i < decimals; ++i) {
        *--first = static_cast<char>('0' + scaled % 10);
        scaled /= 10;
    }
    if (decimals > 0) *--first = '.';
    if (scaled == 0 && decimals == 0) *--first = '0';
    for (; scaled != 0; scaled /= 10)
        *--first = static_cast<char>('0' + scaled % 10);
    return {first, static_cast<std::size_t>(end - first)};
}

// Sign and digits right-aligned in `width` columns (as few as needed for 0). Where a column is to
// spare, digits that begin with a point get a zero before it; where one lacks, asterisks.
NumberText in_field(bool negative, std::string_view digits, Int width) {
    const Int limit = std::clamp(width, 0, FIELD_LIMIT);
    const Int needed = static_cast<Int>(digits.size()) + (negative ? 1 : 0);
    NumberText field;
    field.length = limit == 0 ? needed : limit;
    if (needed > field.length) {
        std::memset(field.chars, '*', static_cast<std::size_t>(field.length));
        return field;
    }
    Int blanks = field.length - needed;
    const bool zero = blanks > 0 && digits.front() == '.';
    if (zero) --blanks;
    char* to = field.chars;
    std::memset(to, ' ', static_cast<std::size_t>(blanks));
    to += blanks;
    if (negative) *to++ = '-';
    if (zero) *to++ = '0';
    std::memcpy(to, digits.data(), digits.size());
    return field;
}

} // namespace

NumberText fixed_number(Real value, Int width, Int decimals) {
    if (std::isnan(value)) return in_field(false, "NaN", width);
    if (std::isinf(value)) return in_field(value < 0.0f, "Infinity", width);
    char buffer[FIELD_LIMIT];
    if (decimals <= 0) {
        const Real whole = std::round(value); // halves away from zero
        return in_field(whole < 0.0f, fixed_digits(std::fabs(whole), 0, buffer), width);
    }
    // A negative value that rounds to zero keeps its sign; a negative zero never had one.
    return in_field(value < 0.0f,
                    fixed_digits(std::fabs(value), min(decimals, DECIMAL_LIMIT), buffer), width);
}

NumberText pointed_number(Real value, Int width) {
    if (!std::isfinite(value)) return fixed_number(value, width, 0);
    char digits[FIELD_LIMIT], pointed[FIELD_LIMIT];
    const std::string_view whole = fixed_digits(std::fabs(value), 0, digits);
    std::memcpy(pointed, whole.data(), whole.size());
    pointed[whole.size()] = '.';
    return in_field(value < 0.0f, {pointed, whole.size() + 1}, width);
}

NumberText bare_number(Real value, Int decimals) { return fixed_number(value, 0, decimals); }

NumberText exponent_number(Real value, Int width, Int decimals) {
    if (std::isnan(value)) return in_field(false, "NaN", width);
    if (std::isinf(value)) return in_field(value < 0.0f, "Infinity", width);
    const Int digits = std::clamp(decimals, 1, DECIMAL_LIMIT);
    // d.ddde+xx becomes .ddddE+xx with an exponent one higher
    char scientific[FIELD_LIMIT];
    const char* const end = std::to_chars(scientific, scientific + FIELD_LIMIT, std::fabs(value),
                                          std::chars_format::scientific, digits - 1)
                                .ptr;
    const char* const mark = std::find(static_cast<const char*>(scientific), end, 'e');
    Int exponent = 0;
    std::from_chars(mark + (mark[1] == '+' ? 2 : 1), end, exponent);
    if (value != 0.0f) ++exponent;

    char text[FIELD_LIMIT];
    char* to = text;
    *to++ = '.';
    for (const char* from = scientific; from != mark; ++from) {
        if (*from != '.') *to++ = *from;
    }
    *to++ = 'E';
    *to++ = exponent < 0 ? '-' : '+';
    const Int size = exponent < 0 ? -exponent : exponent;
    *to++ = static_cast<char>('0' + size / 10);
    *to++ = static_cast<char>('0' + size % 10);
    return in_field(value < 0.0f, {text, static_cast<std::size_t>(to - text)}, width);
}

NumberText whole_number(Int value, Int width) {
    char buffer[16];
    const std::uint32_t magnitude =
        value < 0 ? 0u - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
    const char* const end = std::to_chars(buffer, buffer + sizeof buffer, magnitude).ptr;
    return in_field(value < 0, {buffer, static_cast<std::size_t>(end - buffer)}, width);
}

} // namespace tarvane
