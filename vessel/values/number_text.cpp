#include "values/number_text.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace tarvane::vessel {

namespace {

constexpr std::string_view BLANKS[] = {" ", "\t", "\xC2\xA0", "\xE2\x80\x89", "\xE2\x80\xAF"};
// So that the product of three is exact in a double.
constexpr std::size_t MOST_FRACTION_DIGITS = 5;
constexpr double INCHES_IN_A_FOOT = 12.0;
constexpr std::string_view COMMA =
                               "numbers have a decimal point and no mark of thousands: 1.5, 1500",
                           RANGE = "the number is too great, or too near to 0",
                           FRACTION = "a fraction has whole numbers of up to 5 digits, and is "
                                      "below 1 after a whole number: 1 1/2",
                           FEET = "feet with inches are written as 2' 6 1/2\", the feet whole and "
                                  "the inches below 12";

bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::size_t blank_at_begin(std::string_view text) {
    for (const std::string_view blank : BLANKS) {
        if (text.starts_with(blank)) return blank.size();
    }
    return 0;
}

std::string_view without_blanks_at_end(std::string_view text) {
    for (bool found = true; found;) {
        found = false;
        for (const std::string_view blank : BLANKS) {
            if (!text.ends_with(blank)) continue;
            text.remove_suffix(blank.size());
            found = true;
        }
    }
    return text;
}

class Scanner {
  public:
    explicit Scanner(std::string_view text) : rest(text) {}

    std::string_view rest;

    bool skip_blanks() {
        const std::size_t before = rest.size();
        while (const std::size_t length = blank_at_begin(rest))
            rest.remove_prefix(length);
        return rest.size() < before;
    }
    bool take(char c) {
        if (!rest.starts_with(c)) return false;
        rest.remove_prefix(1);
        return true;
    }
    std::string_view take_digits() {
        const std::string_view from = rest;
        while (!rest.empty() && is_digit(rest.front()))
            rest.remove_prefix(1);
        return from.substr(0, from.size() - rest.size());
    }
};

// (whole + numerator / denominator), all exact.
struct Magnitude {
    double whole = 0.0, numerator = 0.0, denominator = 1.0;
    bool integer = false; // digits alone

    double value() const { return (whole * denominator + numerator) / denominator; }
    double value_with(double feet) const {
        return ((feet * INCHES_IN_A_FOOT + whole) * denominator + numerator) / denominator;
    }
};

// Nothing for what is beyond the range of a double.
std::optional<double> number_of(std::string_view decimal) {
    double number = 0.0;
    const auto read = std::from_chars(decimal.data(), decimal.data() + decimal.size(), number);
    return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

// Digits, point, digits, exponent; nothing when there is no digit.
std::optional<Magnitude> scan_decimal(Scanner& scanner) {
    const std::string_view from = scanner.rest;
    std::size_t digits = scanner.take_digits().size();
    Magnitude found{.integer = true};
    if (scanner.take('.')) {
        found.integer = false;
        digits += scanner.take_digits().size();
    }
    if (digits == 0) return std::nullopt;
    Scanner exponent(scanner.rest);
    if (exponent.take('e') || exponent.take('E')) {
        if (!exponent.take('-')) exponent.take('+');
        if (!exponent.take_digits().empty()) {
            found.integer = false;
            scanner = exponent;
        }
    }
    const std::optional<double> number =
        number_of(from.substr(0, from.size() - scanner.rest.size()));
    found.whole = number.value_or(HUGE_VAL);
    return found;
}

// The fraction at the beginning of the text; false: it is malformed.
bool scan_fraction(Scanner& scanner, std::string_view numerator, Magnitude& into) {
    const std::string_view denominator = scanner.take_digits();
    if (numerator.size() > MOST_FRACTION_DIGITS || denominator.empty() ||
        denominator.size() > MOST_FRACTION_DIGITS)
        return false;
    into.numerator = *number_of(numerator);
    into.denominator = *number_of(denominator);
    into.integer = false;
    return into.denominator > 0.0 && !scanner.rest.starts_with('.') &&
           !scanner.rest.starts_with('/');
}

// A decimal, a fraction or a mixed number. Nothing without a digit; `sound` is false for a fraction at fault.
std::optional<Magnitude> scan_magnitude(Scanner& scanner, bool& sound) {
    const std::string_view from = scanner.rest;
    std::optional<Magnitude> found = scan_decimal(scanner);
    if (!found) return found;
    const std::string_view digits = from.substr(0, from.size() - scanner.rest.size());
    if (scanner.take('/')) {
        if (!found->integer) {
            sound = false;
            return found;
        }
        found->whole = 0.0;
        sound = scan_fraction(scanner, digits, *found);
        return found;
    }
    // "1-1/2" would be one of two numbers.
    Scanner after = scanner;
    if (after.skip_blanks() || after.take('-')) {
        const bool hyphen = scanner.rest.starts_with('-');
        const std::string_view numerator = after.take_digits();
        if (!numerator.empty() && after.take('/')) {
            sound = !hyphen && found->integer && digits.size() <= MOST_FRACTION_DIGITS &&
                    scan_fraction(after, numerator, *found) &&
                    found->numerator < found->denominator;
            scanner = after;
        }
    }
    return found;
}

} // namespace

NumberReading read_number_text(std::string_view utf8) {
    Scanner scanner(utf8);
    scanner.skip_blanks();
    const bool negative = scanner.take('-');
    if (!negative) scanner.take('+');
    bool sound = true;
    std::optional<Magnitude> found = scan_magnitude(scanner, sound);
    if (!found) return {{}, scanner.rest.starts_with(',') ? std::string(COMMA) : std::string()};
    if (!sound) return {{}, std::string(FRACTION)};
    double number = found->value();
    if (!std::isfinite(number)) return {{}, std::string(RANGE)};
    scanner.skip_blanks();
    std::string_view unit = scanner.rest;
    if (scanner.take('\'')) {
        scanner.skip_blanks();
        const bool whole = found->integer;
        if (const auto inches = scan_magnitude(scanner, sound)) {
            scanner.skip_blanks();
            const bool closed = scanner.take('"');
            scanner.skip_blanks();
            if (!sound || !whole || !closed || !scanner.rest.empty() ||
                !(inches->value() < INCHES_IN_A_FOOT))
                return {{}, std::string(FEET)};
            number = inches->value_with(number);
            unit = "in";
        }
    }
    unit = without_blanks_at_end(unit);
    if (!unit.empty()) {
        if (unit.front() == ',' || is_digit(unit.front())) return {{}, std::string(COMMA)};
        if (unit.front() == '.' || unit.front() == '-' || unit.front() == '+') return {};
    }
    return {NumberText{negative ? -number : number, unit}, {}};
}

} // namespace tarvane::vessel
