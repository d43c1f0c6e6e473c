// The keys of an element that names a material: what the record of the data files gives.
#pragma once

#include "components/element.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarvane::vessel {

// A material as the file names it.
struct MaterialKeys {
    std::string_view name_key, reference_key;
    std::string name;  // Western; blank: none
    int reference = 0; // 0: not given
    MaterialSelection selection;
    std::optional<float> size = {}; // of a bolt, by which records can differ
    // Of the wall: a record of another thickness does not apply, whether named or not.
    std::optional<float> thickness = {};
    std::optional<float> temperature = {}; // design temperature, for messages
};

// The record. A null pointer without one: with a fault when the element needs it, that is when the
// file doesn't give one of the keys of `needed`; these count as supplied then.
const Material* find_material(Reading& reading, const MaterialKeys& keys,
                              std::initializer_list<std::string_view> needed);

// The allowable stress for a key that the file does not give. Nothing when it gives the key, without a
// temperature (which is a fault of its own), and, with a fault, where the record has no stress.
std::optional<float> supply_stress(Reading& reading, const MaterialKeys& keys,
                                   const Material& material, std::string_view stress_key,
                                   std::optional<float> temperature);

// "material SA-105", "material SA-105 at 300 °F": where a value comes from.
std::string origin_of(const Material& material);
std::string origin_of(const Material& material, float temperature, const UnitSystem& units);

inline constexpr float AMBIENT = 70.0f; // degrees F

// A note where a temperature is below the range of the first figure of a record.
void note_cold(Reading& reading, const Material& material, std::string_view file,
               float temperature);

// "9A" is 9; 0 without a number.
int p_number_of(const Material& material);

} // namespace tarvane::vessel
