// Units that a single value may have, "10 bar": a closed table of names, each with one factor.
#pragma once

#include "catalogue/units.h"

#include <string>
#include <string_view>

namespace tarvane::vessel {

struct ValueUnit {
    // A pressure in a unit of stress is a gauge pressure.
    enum class Of {
        length,
        area,
        stress,
        gauge_pressure,
        absolute_pressure,
        force,
        moment,
        mass,
        density,
        temperature
    };

    std::string_view name; // UTF-8
    Of of;
    float factor;         // a value is divided by it; a temperature is multiplied
    float offset = 0.0f;  // of a temperature, in degrees F
    bool further = false; // another spelling of the name before it

    // In single precision: the factor, then the offset or the atmosphere.
    float to_engine(float value, Quantity quantity) const;
};

// The unit of the name for values of the quantity; none: a null pointer.
const ValueUnit* find_value_unit(std::string_view name, Quantity quantity);
// The same for any quantity.
const ValueUnit* find_value_unit(std::string_view name);

// "a pressure"; empty: its values have no unit.
std::string_view quantity_words(Quantity quantity);
std::string_view quantity_words(ValueUnit::Of of);
// "psi, psig, psia": what values of a quantity may be in, further spellings left out.
std::string value_unit_names(Quantity quantity);
// "; barr is not a unit, the nearest is bar"
std::string unknown_unit(std::string_view name, Quantity quantity);

// The external pressure of an evacuated vessel by its name.
inline constexpr std::string_view FULL_VACUUM = "full vacuum";
inline constexpr float FULL_VACUUM_PRESSURE = 15.0f; // psi

} // namespace tarvane::vessel
