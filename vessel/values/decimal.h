// Numbers as text and back with a decimal point, whatever locale the host of the library has set.
#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// Decimals after the point: "0.50".
std::string fixed_text(double value, int decimals);
// Significant digits, with an exponent where it is shorter: "0.5", "1e-07".
std::string general_text(double value, int digits = 6);
// Decimals after the point, and an exponent: "5.000e-01".
std::string exponent_text(double value, int decimals);

// The number that a text begins with, after blanks; it goes from the text. Nothing, and the same text, without one
// or for one out of range.
template <class Number>
std::optional<Number> take_decimal(std::string_view& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return std::nullopt;
    std::string_view rest = text.substr(first);
    if (rest.front() == '+' && rest.substr(1, 1) != "-") rest.remove_prefix(1);
    Number value{};
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (error != std::errc()) return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    text = rest;
    return value;
}

} // namespace tarvane::vessel
