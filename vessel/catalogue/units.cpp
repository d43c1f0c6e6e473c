#include "catalogue/units.h"

namespace tarvane::vessel {

namespace {

constexpr auto OFFSET = static_cast<std::size_t>(Quantity::temperature);
constexpr auto SCALE = static_cast<std::size_t>(Quantity::temperature_scale);

// Label of the quantity in the engine's order, which has one place for the temperature.
std::size_t label_place(Quantity quantity) {
    const auto place = static_cast<std::size_t>(quantity);
    return place > OFFSET ? place - 1 : place;
}

} // namespace

std::string_view UnitSystem::label(Quantity quantity) const {
    if (quantity == Quantity::density) return density_label;
    const std::size_t place = label_place(quantity);
    return place < LABELS ? std::string_view(labels[place]) : std::string_view();
}

float UnitSystem::factor(Quantity quantity) const {
    if (quantity == Quantity::density) return density_factor;
    const auto place = static_cast<std::size_t>(quantity);
    return place < FACTORS ? factors[place] : 1.0f;
}

float UnitSystem::to_engine(float value, Quantity quantity) const {
    if (quantity == Quantity::temperature) return value * factors[SCALE] + factors[OFFSET];
    if (quantity == Quantity::temperature_scale) return value * factors[SCALE];
    return value / factor(quantity);
}

float UnitSystem::to_file(float value, Quantity quantity) const {
    if (quantity == Quantity::temperature) return (value - factors[OFFSET]) / factors[SCALE];
    if (quantity == Quantity::temperature_scale) return value / factors[SCALE];
    return value * factor(quantity);
}

UnitSystem us_units() {
    return {"US",
            {1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 0.0f, 1.0f, 1.0f},
            {"in.", "psig", "in.", "psi", "", "lbf", "ft-lbs", "in\xB2",
             "\xB0"
             "F",
             "lbm"},
            1.0f,
            "lbm/in\xB3"};
}

UnitSystem si_units() {
    return {"SI",
            {25.4f, 0.00689475729f, 25.4f, 0.00689475729f, 1.0f, 4.44822162f, 1.35581795f, 645.16f,
             32.0f, 1.8f, 0.45359237f},
            {"mm", "MPa", "mm", "MPa", "", "N", "N-m", "mm\xB2",
             "\xB0"
             "C",
             "kg"},
            27679.9047f,
            "kg/m\xB3"};
}

std::size_t label_width(Quantity quantity) {
    switch (quantity) {
    case Quantity::pressure:
    case Quantity::stress:
    case Quantity::further:
        return 10;
    case Quantity::moment:
    case Quantity::area:
        return 6;
    case Quantity::temperature:
        return 5;
    default:
        return 3;
    }
}

} // namespace tarvane::vessel
