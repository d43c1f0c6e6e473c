// The keys of an input file: one table that the reader, the messages and `tarvane keys` share.
#pragma once

#include "units.h"

#include <span>
#include <string_view>

namespace tarvane::app {

// Where the value of a key goes.
enum class Place {
    record,    // element of the flange record
    slot,      // text slot of the flange text, by its offset
    slot_flag, // "Y" or "N" in a text slot
    setting,   // number of the call, see Setting
    text_setting
};

// Numbers of the call that have no element in the record.
enum class Setting {
    code,
    edition,
    design_pressure_operating, // the vessel's pressure at the flange
    joint_efficiency,
    rigidity,
    corroded_rigidity,
    quiet_overstress,
    standard_flange,
    keep_thickness,
    bolt_correction,
    opening_factor,
    cover_modulus,
    chart_yield,
    failure_corrosion,
    per_element_ratio,
    p_number,
    inspection_first,
    inspection_second,
    material_metric,
    force_div1,
    d2_class,
    material_year,
    count
};

enum class TextSetting {
    from_node,
    to_node,
    flange_class,
    flange_grade,
    material_name,
    bolt_material_name,
    count
};

inline constexpr int EDITION_CURRENT = 0, EDITION_OLDER = 1, EDITION_A98 = 2;

// A name and the number that it stands for. The first name of a number is the one that lists show.
struct Choice {
    std::string_view name;
    int number;
};

struct Key {
    std::string_view name;
    Place place;
    int index; // element, offset, Setting or TextSetting
    Quantity quantity;
    std::string_view meaning;
    std::span<const Choice> choices = {};
    int width = 0;               // longest text
    double fallback = 0.0;       // in the engine's units, for a key that is not given
    std::string_view group = {}; // the flag that this key switches on
};

std::span<const Key> all_keys();
const Key* find_key(std::string_view name);
// A key that users of other notations type for one of ours: "go" for g0, "e" for t.
std::string_view synonym(std::string_view name);

// "a number in mm", "true or false", "one of ...": what belongs behind a key.
std::string expected(const Key& key, const UnitSystem& units);
// The list of names of a choice, in double quotes.
std::string choice_names(std::span<const Choice> choices);

// Text offsets of the flange text.
namespace slot {
inline constexpr int flange_material = 0, bolt_material = 15, description = 30, external_loads = 45,
                     mating_loads = 60, channel_cover = 75, use_corrosion = 90,
                     partition_gasket = 105, chart = 120;
}

} // namespace tarvane::app
