#include "frame/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace tarvane {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_sign(char c) { return c == '+' || c == '-'; }
bool ends_item(char c) { return is_blank(c) || c == ',' || c == '/' || c == ';'; }

bool is_exponent_letter(char c) {
    switch (c) {
    case 'e':
    case 'E':
    case 'd':
    case 'D':
    case 'q':
    case 'Q':
        return true;
    default:
        return false;
    }
}

using Place = std::size_t;

// Whole number of digits, limited to a bound that no sensible text reaches.
constexpr std::int64_t BOUND = 1'000'000'000;
std::int64_t digits(std::string_view text, Place& at) {
    std::int64_t value = 0;
    while (at < text.size() && is_digit(text[at])) {
        if (value < BOUND) value = value * 10 + (text[at] - '0');
        ++at;
    }
    return value;
}

// A decimal number as digits and a power of ten. A halfway case between two singles has at most 112
// digits; what follows the digits kept counts only as zero or not.
class Decimal {
  public:
    void add(char digit) {
        if (count == 0 && digit == '0') return;
        if (count < KEPT)
            text[count++] = digit;
        else {
            ++exponent;
            rest = rest || digit != '0';
        }
    }

    std::int64_t exponent = 0; // of the digit kept last

    // The nearest single; infinite beyond the largest one, zero below the smallest.
    Real value() {
        if (count == 0) return 0.0f;
        if (count <= FEW && exponent >= -LAST_POWER && exponent <= LAST_POWER) return few_digits();
        if (rest) {
            text[count++] = '1';
            --exponent;
        }
        const std::int64_t magnitude = exponent + static_cast<std::int64_t>(count);
        if (magnitude > 60) return std::numeric_limits<Real>::infinity();
        if (magnitude < -60) return 0.0f;

        text[count++] = 'e';
        const auto written = std::to_chars(text + count, text + sizeof text, exponent);
        Real result = 0.0f;
        const auto read = std::from_chars(text, written.ptr, result);
        if (read.ec == std::errc::result_out_of_range)
            return magnitude > 0 ? std::numeric_limits<Real>::infinity() : 0.0f;
        return result;
    }

  private:
    // Digits and power are exact singles, so that one operation gives the nearest one.
    Real few_digits() const {
        Int digits = 0;
        for (std::size_t i = 0; i < count; ++i)
            digits = digits * 10 + (text[i] - '0');
        const auto whole = static_cast<Real>(digits);
        return exponent < 0 ? whole / POWERS[-exponent] : whole * POWERS[exponent];
    }
    static constexpr std::size_t FEW = 7;
    static constexpr std::int64_t LAST_POWER = 10;
    static constexpr Real POWERS[] = {1.0f,   1.0e1f, 1.0e2f, 1.0e3f, 1.0e4f, 1.0e5f,
                                      1.0e6f, 1.0e7f, 1.0e8f, 1.0e9f, 1.0e10f};

    static constexpr std::size_t KEPT = 128;
    char text[KEPT + 24]; // digits, one for the rest, exponent
    std::size_t count = 0;
    bool rest = false;
};

// One number from `at` on, which moves to the character that ends the item. False when the item is
// no number.
bool number(std::string_view text, Place& at, Real& value) {
    bool negative = false;
    if (at < text.size() && is_sign(text[at])) negative = text[at++] == '-';

    Decimal decimal;
    bool any = false;
    for (; at < text.size() && is_digit(text[at]); ++at) {
        decimal.add(text[at]);
        any = true;
    }
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && is_digit(text[at]); ++at) {
            decimal.add(text[at]);
            --decimal.exponent;
            any = true;
        }
    }
    if (!any) return false;

    if (at < text.size() && (is_exponent_letter(text[at]) || is_sign(text[at]))) {
        if (is_exponent_letter(text[at])) ++at;
        bool down = false;
        if (at < text.size() && is_sign(text[at])) down = text[at++] == '-';
        if (at == text.size() || !is_digit(text[at])) return false;
        const std::int64_t power = digits(text, at);
        decimal.exponent += down ? -power : power;
    }
    if (at < text.size() && !ends_item(text[at])) return false;

    const Real magnitude = decimal.value();
    value = negative ? -magnitude : magnitude;
    return true;
}

// "r*" in front of an item: the repeat count, and `at` after the asterisk; else 1. A count of zero
// is no count.
bool repeat_count(std::string_view text, Place& at, std::int64_t& repeat) {
    repeat = 1;
    Place behind = at;
    if (behind == text.size() || !is_digit(text[behind])) return true;
    const std::int64_t count = digits(text, behind);
    if (behind == text.size() || text[behind] != '*') return true;
    repeat = count;
    at = behind + 1;
    return count > 0;
}

void pass_blanks(std::string_view text, Place& at) {
    while (at < text.size() && is_blank(text[at]))
        ++at;
}

} // namespace

Int PARSE_REALS(std::string_view text, Real* values, Int count) {
    Int done = 0;
    Place at = 0;
    while (done < count) {
        pass_blanks(text, at);
        if (at == text.size()) return done;
        if (text[at] == '/') return count;

        std::int64_t repeat = 1;
        if (!repeat_count(text, at, repeat)) return done;
        const bool null_value = at == text.size() || ends_item(text[at]);
        Real value = 0.0f;
        if (!null_value && !number(text, at, value)) return done;
        for (; repeat > 0 && done < count; --repeat, ++done)
            if (!null_value) values[done] = value;

        pass_blanks(text, at);
        if (at < text.size() && (text[at] == ',' || text[at] == ';')) ++at;
    }
    return done;
}

bool PARSE_REAL(std::string_view text, Real& value, Int& whole) {
    value = 0.0f;
    const bool read = PARSE_REALS(text, &value, 1) == 1;
    whole = truncated(value);
    return read;
}

Real LINEAR_INTERP(Real x1, Real x, Real x2, Real y1, Real y2) {
    return y1 + (y2 - y1) * (x - x1) / (x2 - x1);
}

Real LOG_INTERP(Real x1, Real x, Real x2, Real y1, Real y2) {
    const Real exponent = LINEAR_INTERP(log10(x1), log10(x), log10(x2), log10(y1), log10(y2));
    return pow(10.0f, exponent);
}

void NEWTON_SOLVE(double (*f)(double), double (*df)(double), double x0, double tolerance,
                  Int& count, double& x) {
    constexpr Int LIMIT = 501;
    if (x0 == 0.0) x0 = 1.0;
    count = 0;
    bool close = false;
    do {
        x = x0 - f(x0) / df(x0);
        close = std::fabs(x - x0) <= tolerance;
        x0 = x;
        ++count;
    } while (!close && count < LIMIT);
}

void SQUEEZE_TEXT(std::string_view source, char* target, Int target_len, Int keep) {
    constexpr Int LAST_COLUMN = 73;
    for (Int i = 0; i < target_len; ++i)
        target[i] = ' ';
    const Int end = min(target_len, LAST_COLUMN);
    Int column = 0;
    Int from = 0;
    for (const char c : trimmed(source)) {
        if (column >= end) return;
        if (from < keep || c != ' ') target[column++] = c;
        ++from;
    }
}

} // namespace tarvane
