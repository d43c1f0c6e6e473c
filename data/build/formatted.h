// Numbers as text, for the data files that are text.
#pragma once

#include <cmath>
#include <cstdio>
#include <string>

namespace tarvane::data {

// `value` by a printf format for one floating number.
template <typename Number>
std::string formatted(const char* format, Number value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, static_cast<double>(value));
    return buffer;
}

template <typename Value, typename Expected>
bool within(Value value, Expected expected, double relative) {
    const double wide = static_cast<double>(expected);
    return std::abs(static_cast<double>(value) - wide) <= relative * std::abs(wide);
}

} // namespace tarvane::data
