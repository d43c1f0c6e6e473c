// The keys of a [[flange]] and where their values are.
#pragma once

#include "fields/keys.h"

namespace tarvane::vessel {

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
    pwht,
    inspection_first,
    inspection_second,
    material_metric,
    force_div1,
    d2_class,
    material_year,
    material_reference,
    standard_wall,
    rating,
    rating_cold,
    bolt_size,
    elevation,
    external_pressure,
    count
};

enum class TextSetting {
    description,
    from_node,
    to_node,
    flange_class,
    flange_grade,
    standard_class,
    standard_size,
    material_name,
    bolt_material_name,
    attached_to,
    mates_with,
    waive,
    gasket_type,
    count
};

inline constexpr int BOLT_LISTED = 0, BOLT_NEAREST = 1;
inline constexpr int KIND_RATED = 4; // after the kinds of the engine
inline constexpr int EDITION_CURRENT = 0, EDITION_OLDER = 1, EDITION_A98 = 2;

const KeyTable& flange_keys();

// Whether the columns of Table 2-5.2 differ for a facing sketch: the other sketches read neither.
bool columns_differ(int sketch);

// Text offsets of the flange text.
namespace slot {
inline constexpr int flange_material = 0, bolt_material = 15, description = 30, external_loads = 45,
                     mating_loads = 60, channel_cover = 75, use_corrosion = 90,
                     partition_gasket = 105, chart = 120;
}

} // namespace tarvane::vessel
