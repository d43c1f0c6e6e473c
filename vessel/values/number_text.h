// A number as engineers write it, with what comes after it: "1.5e-3", "7/8", "1 1/2 in", "2' 6 1/2\"".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvane::vessel {

struct NumberText {
    double number; // a fraction, and feet with inches, by one division in double precision
    std::string_view
        unit; // the rest, without blanks around it; empty: nothing comes after the number
};

struct NumberReading {
    std::optional<NumberText> number;
    std::string hint; // why not, for what is nearly a number
};

// Decimals with a point and perhaps an exponent, fractions and mixed numbers; feet with inches are returned in inches.
// Blanks may be those of typography.
NumberReading read_number_text(std::string_view utf8);

} // namespace tarvane::vessel
