#include "values/decimal.h"

#include <array>

namespace tarvane::vessel {

namespace {

std::string decimal(double value, std::chars_format format, int precision) {
    std::array<char, 400> text; // the largest has 309 digits before its point
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, format, precision);
    return error == std::errc() ? std::string(text.data(), end) : std::string();
}

} // namespace

std::string fixed_text(double value, int decimals) {
    return decimal(value, std::chars_format::fixed, decimals);
}

std::string general_text(double value, int digits) {
    return decimal(value, std::chars_format::general, digits);
}

std::string exponent_text(double value, int decimals) {
    return decimal(value, std::chars_format::scientific, decimals);
}

} // namespace tarvane::vessel
