// Units of an input file: one factor and one label a kind of quantity. The factor turns the
// engine's unit (inch, pound, psi, degree Fahrenheit) into the file's; a value of the file is
// divided by it, in single precision, when it is read, and the report multiplies it back.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// The first eleven are in the order in which the engine takes its unit factors.
enum class Quantity {
    thickness,
    pressure,
    diameter,
    stress,
    further, // kept with the unit factors, used by no key
    force,
    moment,
    area,
    temperature,       // offset and scale: two places in the engine's order
    temperature_scale, // as the quantity of a key: a temperature difference
    weight,
    density,
    number, // without a unit
    whole,
    choice,
    flag,
    text,
    designation, // a text, or a number used as one: class = 150, class = "PN16"
    waivers      // a list of ids of checks
};

inline constexpr std::size_t FACTORS = 11;
inline constexpr std::size_t LABELS = 10;

struct UnitSystem {
    std::string name;
    // Thickness, pressure, diameter, stress, further, force, moment, area, temperature offset,
    // temperature scale, weight.
    std::array<float, FACTORS> factors;
    // The same without the temperature scale. Western characters.
    std::array<std::string, LABELS> labels;
    float density_factor;
    std::string density_label;
    bool decimal_comma = false; // in numbers for people

    bool metric() const { return factors[0] > 1.1f; }
    std::string_view label(Quantity quantity) const;
    float factor(Quantity quantity) const;
    float to_engine(float value, Quantity quantity) const;
    float to_file(float value, Quantity quantity) const;
};

// Degrees F. A temperature of a file reaches it in single precision.
inline constexpr float ABSOLUTE_ZERO = -459.67f;
constexpr bool below_absolute_zero(float fahrenheit) { return fahrenheit < ABSOLUTE_ZERO - 0.001f; }

UnitSystem us_units();
UnitSystem si_units();

// Width in which the engine keeps the label of a quantity.
std::size_t label_width(Quantity quantity);

} // namespace tarvane::vessel
