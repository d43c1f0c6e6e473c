#include "keys.h"

#include "text.h"

#include <string>

namespace tarvane::app {

namespace {

constexpr Choice CODES[] = {
    {"VIII-1", 1},      {"VIII-2", 2},      {"PD 5500", 3}, {"EN 13445", 4},
    {"ASME VIII-1", 1}, {"ASME VIII-2", 2}, {"BS 5500", 3}, {"EN 13445-3", 4},
};
constexpr Choice EDITIONS[] = {
    {"current", EDITION_CURRENT}, {"older", EDITION_OLDER}, {"A98", EDITION_A98}};
constexpr Choice TYPES[] = {{"weld neck", 1},
                            {"slip on", 2},
                            {"ring", 3},
                            {"loose slip on", 4},
                            {"loose ring", 5},
                            {"lap joint", 6},
                            {"blind", 7},
                            {"reverse weld neck", 8},
                            {"loose reverse", 9},
                            {"welding neck", 1},
                            {"integral weld neck", 1},
                            {"integral slip on", 2},
                            {"integral ring", 3},
                            {"blind flange", 7},
                            {"reverse", 8}};
constexpr Choice KINDS[] = {
    {"analyse", 1}, {"thickness", 2}, {"design", 3}, {"analyze", 1}, {"analysis", 1}};
constexpr Choice SERIES[] = {{"TEMA", 1},          {"UNC", 2},        {"special", 3},
                             {"TEMA metric", 4},   {"BS 3643", 5},    {"SABS 1700", 6},
                             {"3P M30 metric", 7}, {"user table", 8}, {"TEMA imperial", 1},
                             {"root area", 3},     {"3P M30", 7},     {"user", 8}};
constexpr Choice FACINGS[] = {{"1a", 1}, {"1b", 2}, {"1c", 3}, {"1d", 4}, {"2", 5},
                              {"3", 6},  {"4", 7},  {"5", 8},  {"6", 9}};
constexpr Choice COLUMNS[] = {{"I", 1}, {"II", 2}};
constexpr Choice SEATING_RULES[] = {{"mean", 0}, {"bolt area", 1}};

constexpr int at(Setting setting) { return static_cast<int>(setting); }
constexpr int at(TextSetting setting) { return static_cast<int>(setting); }

using enum Quantity;
using P = Place;

// Steel, 7850 kg/m3, in pounds a cubic inch.
constexpr double STEEL_DENSITY = 0.283599;

constexpr Key KEYS[] = {
    // ---- the call ----------------------------------------------------------------------------
    {"description", P::slot, slot::description, text, "description of the flange", {}, 15},
    {"type", P::record, 2, choice, "flange type", TYPES},
    {"kind", P::record, 3, choice, "analysis kind", KINDS, 0, 1},
    {"code", P::setting, at(Setting::code), choice, "design code", CODES, 0, 1},
    {"edition", P::setting, at(Setting::edition), choice,
     "edition of the code: older for VIII-2, A98 for VIII-1", EDITIONS},
    // ---- design conditions -------------------------------------------------------------------
    {"P", P::record, 4, pressure, "design pressure, negative for external pressure"},
    {"T", P::record, 5, temperature, "design temperature"},
    {"P_operating", P::setting, at(Setting::design_pressure_operating), pressure,
     "vessel pressure at the flange; P when it is not given"},
    {"ci", P::record, 9, thickness, "internal corrosion allowance"},
    {"ce", P::record, 63, thickness, "external corrosion allowance"},
    {"use_corrosion",
     P::slot_flag,
     slot::use_corrosion,
     flag,
     "use the corrosion allowance in thickness calculations",
     {},
     0,
     1},
    {"E", P::setting, at(Setting::joint_efficiency), number, "joint efficiency", {}, 0, 1},
    // ---- flange ------------------------------------------------------------------------------
    {"B", P::record, 10, diameter, "flange inside diameter"},
    {"A", P::record, 11, diameter, "flange outside diameter"},
    {"t", P::record, 8, thickness, "flange thickness"},
    {"keep_thickness", P::setting, at(Setting::keep_thickness), flag,
     "rate the flange at the given t, not at the thickness that was found"},
    {"g0", P::record, 16, thickness, "thickness of hub at small end"},
    {"g1", P::record, 17, thickness, "thickness of hub at large end"},
    {"h", P::record, 18, thickness, "length of hub"},
    {"tw", P::record, 42, thickness, "length of weld leg at back of ring"},
    {"splits", P::record, 41, whole, "number of splits in a ring flange: 0, 1 or 2"},
    {"LjID", P::record, 39, diameter, "lap joint contact inside diameter"},
    {"LjOD", P::record, 40, diameter, "lap joint contact outside diameter"},
    {"material", P::slot, slot::flange_material, text, "flange material", {}, 15},
    {"material_name",
     P::text_setting,
     at(TextSetting::material_name),
     text,
     "long name of the flange material",
     {},
     40},
    {"Sfo", P::record, 6, stress, "flange allowable stress at design temperature"},
    {"Sfa", P::record, 7, stress, "flange allowable stress at ambient temperature"},
    {"material_class",
     P::record,
     34,
     whole,
     "reference number of the elastic modulus table",
     {},
     0,
     1},
    {"chart", P::slot, slot::chart, text, "external pressure chart of the material", {}, 8},
    {"chart_yield", P::setting, at(Setting::chart_yield), stress,
     "yield stress of the material, for charts that depend on it"},
    {"density",
     P::record,
     53,
     Quantity::density,
     "density of the flange material",
     {},
     0,
     STEEL_DENSITY},
    // ---- bolting -----------------------------------------------------------------------------
    {"bolting", P::record, 23, choice, "thread series of the bolts", SERIES},
    {"C", P::record, 21, diameter, "diameter of bolt circle"},
    {"a", P::record, 22, diameter, "nominal bolt diameter"},
    {"n", P::record, 24, whole, "number of bolts"},
    {"root_area", P::record, 51, area, "root area of a single bolt"},
    {"bolt_material", P::slot, slot::bolt_material, text, "bolt material", {}, 15},
    {"bolt_material_name",
     P::text_setting,
     at(TextSetting::bolt_material_name),
     text,
     "long name of the bolt material",
     {},
     40},
    {"Sb", P::record, 19, stress, "bolt allowable stress at design temperature"},
    {"Sa", P::record, 20, stress, "bolt allowable stress at ambient temperature"},
    {"bolt_reference", P::record, 75, whole, "reference number of the bolt material"},
    {"bolt_correction",
     P::setting,
     at(Setting::bolt_correction),
     flag,
     "apply the bolt spacing correction factor",
     {},
     0,
     1},
    {"seating_rule", P::record, 73, choice,
     "design bolt load of gasket seating: Sa times the mean of Am and Ab, or Sa times Ab",
     SEATING_RULES},
    // ---- gasket ------------------------------------------------------------------------------
    {"Fod", P::record, 12, diameter, "flange face outside diameter"},
    {"Fid", P::record, 13, diameter, "flange face inside diameter"},
    {"Go", P::record, 14, diameter, "gasket outside diameter"},
    {"Gi", P::record, 15, diameter, "gasket inside diameter"},
    {"m", P::record, 25, number, "gasket factor"},
    {"y", P::record, 26, stress, "gasket design seating stress"},
    {"facing", P::record, 27, choice,
     "facing sketch of the code; a number is its place in the list", FACINGS},
    {"column", P::record, 28, choice, "column for gasket seating", COLUMNS, 0, 1},
    {"tg", P::record, 29, thickness, "gasket thickness"},
    {"w", P::record, 30, thickness, "flange face nubbin width"},
    {"partition_gasket", P::slot_flag, slot::partition_gasket, flag,
     "there is a partition gasket; true when one of its keys is given"},
    {"lp", P::record, 31, thickness, "length of partition gasket", {}, 0, 0, "partition_gasket"},
    {"tp", P::record, 52, thickness, "width of partition gasket", {}, 0, 0, "partition_gasket"},
    {"mPart", P::record, 55, number, "partition gasket factor", {}, 0, 0, "partition_gasket"},
    {"yPart",
     P::record,
     56,
     stress,
     "partition gasket design seating stress",
     {},
     0,
     0,
     "partition_gasket"},
    {"facing_part", P::record, 57, choice, "facing sketch of the partition gasket", FACINGS, 0, 1,
     "partition_gasket"},
    {"column_part", P::record, 58, choice, "column of the partition gasket", COLUMNS, 0, 1,
     "partition_gasket"},
    // ---- loads -------------------------------------------------------------------------------
    {"external_loads", P::slot_flag, slot::external_loads, flag,
     "external loads are in force; true when one of its keys is given"},
    {"axial_force", P::record, 48, force, "axial force on flange", {}, 0, 0, "external_loads"},
    {"bending_moment",
     P::record,
     50,
     moment,
     "bending moment on flange",
     {},
     0,
     0,
     "external_loads"},
    {"mating_loads", P::slot_flag, slot::mating_loads, flag,
     "mating flange loads are in force; true when one of its keys is given"},
    {"mating_operating",
     P::record,
     44,
     force,
     "mating flange operating bolt load",
     {},
     0,
     0,
     "mating_loads"},
    {"mating_seating",
     P::record,
     45,
     force,
     "mating flange seating bolt load",
     {},
     0,
     0,
     "mating_loads"},
    {"mating_design",
     P::record,
     46,
     force,
     "mating flange design bolt load",
     {},
     0,
     0,
     "mating_loads"},
    // ---- blind flange ------------------------------------------------------------------------
    {"D", P::record, 35, diameter, "diameter of the load reaction, long span"},
    {"d", P::record, 36, diameter, "diameter of the load reaction, short span"},
    {"L", P::record, 38, diameter, "perimeter along the center of the bolts"},
    {"channel_cover", P::slot_flag, slot::channel_cover, flag,
     "this blind flange is a TEMA channel cover"},
    {"Ecover", P::setting, at(Setting::cover_modulus), stress,
     "elastic modulus of a channel cover; from the modulus tables when it is not given"},
    {"dfAllow", P::record, 37, thickness, "allowed channel cover deflection"},
    {"opening_factor", P::setting, at(Setting::opening_factor), flag,
     "cover with an opening by UG-39(d)(2): stress doubled, thickness times the root of two"},
    {"patterned_holes", P::record, 69, flag,
     "check multiple openings in the cover by UG-39; true when one of its keys is given"},
    {"D1", P::record, 64, diameter, "hole diameter D1", {}, 0, 0, "patterned_holes"},
    {"D2", P::record, 65, diameter, "hole diameter D2", {}, 0, 0, "patterned_holes"},
    {"edge1", P::record, 66, diameter, "edge distance to D1", {}, 0, 0, "patterned_holes"},
    {"edge2", P::record, 67, diameter, "edge distance to D2", {}, 0, 0, "patterned_holes"},
    {"pitch", P::record, 68, diameter, "pitch distance", {}, 0, 0, "patterned_holes"},
    // ---- attached shell ----------------------------------------------------------------------
    {"tShell", P::record, 71, thickness, "nominal thickness of the attached shell"},
    {"caShell", P::record, 74, thickness, "corrosion allowance of the attached shell"},
    {"Dshell", P::record, 54, diameter, "inside diameter of the attached shell"},
    {"Sn", P::record, 60, stress,
     "allowable stress of the attached shell or nozzle at design temperature"},
    {"Sna", P::record, 61, stress,
     "allowable stress of the attached shell or nozzle at ambient temperature"},
    {"hub_shell_stress", P::record, 72, flag, "check the small end of the hub with Sn"},
    {"attachment", P::record, 70, whole,
     "kind of the attachment to the shell; 1 to 4: a shell of known thickness"},
    // ---- checks ------------------------------------------------------------------------------
    {"rigidity", P::setting, at(Setting::rigidity), flag, "evaluate the rigidity index"},
    {"corroded_rigidity", P::setting, at(Setting::corroded_rigidity), flag,
     "the rigidity index takes the corroded thickness"},
    {"quiet_overstress", P::setting, at(Setting::quiet_overstress), flag,
     "no overstress message and no overstress line"},
    {"failure_corrosion", P::setting, at(Setting::failure_corrosion), flag,
     "find the corrosion allowance at failure"},
    {"inspection_first", P::setting, at(Setting::inspection_first), thickness,
     "thickness at the first inspection"},
    {"inspection_second", P::setting, at(Setting::inspection_second), thickness,
     "thickness at the second inspection"},
    {"per_element_ratio", P::setting, at(Setting::per_element_ratio), flag,
     "the stress ratio of the attached shell counts too"},
    {"p_number", P::setting, at(Setting::p_number), whole, "P-number of the flange material"},
    // ---- standard flange ---------------------------------------------------------------------
    {"standard_flange", P::setting, at(Setting::standard_flange), flag,
     "a rated standard flange, without stress calculations"},
    {"class",
     P::text_setting,
     at(TextSetting::flange_class),
     text,
     "class of a standard flange",
     {},
     15},
    {"grade",
     P::text_setting,
     at(TextSetting::flange_grade),
     text,
     "grade of a standard flange",
     {},
     15},
    // ---- place in the vessel, material files -------------------------------------------------
    {"from_node",
     P::text_setting,
     at(TextSetting::from_node),
     text,
     "node where the flange begins",
     {},
     16},
    {"to_node",
     P::text_setting,
     at(TextSetting::to_node),
     text,
     "node where the flange ends",
     {},
     16},
    {"material_metric", P::setting, at(Setting::material_metric), flag,
     "bolt materials from the metric files"},
    {"force_div1", P::setting, at(Setting::force_div1), flag,
     "bolt materials from the Division 1 file"},
    {"d2_class", P::setting, at(Setting::d2_class), whole, "Division 2 class of the materials"},
    {"material_year", P::setting, at(Setting::material_year), whole,
     "edition index of the material files"},
};

struct Synonym {
    std::string_view other, ours;
};
constexpr Synonym SYNONYMS[] = {
    {"go", "g0"},          {"G0", "g0"},           {"e", "t"},           {"f", "Sfo"},
    {"fa", "Sfa"},         {"fb", "Sb"},           {"fba", "Sa"},        {"db", "a"},
    {"series", "bolting"}, {"threads", "bolting"}, {"sketch", "facing"}, {"name", "description"},
    {"analysis", "kind"},  {"ns", "splits"},       {"tn", "tShell"}};

} // namespace

std::span<const Key> all_keys() { return KEYS; }

const Key* find_key(std::string_view name) {
    for (const Key& key : KEYS) {
        if (key.name == name) return &key;
    }
    return nullptr;
}

std::string_view synonym(std::string_view name) {
    for (const Synonym& s : SYNONYMS) {
        if (s.other == name) return s.ours;
    }
    return {};
}

std::string choice_names(std::span<const Choice> choices) {
    std::string names;
    int last = -1;
    for (const Choice& c : choices) {
        if (c.number <= last) break; // further names of the same numbers
        last = c.number;
        names += (names.empty() ? "" : ", ") + quoted(c.name);
    }
    return names;
}

std::string expected(const Key& key, const UnitSystem& units) {
    switch (key.quantity) {
    case flag:
        return "true or false";
    case whole:
        return "a whole number";
    case number:
        return "a number";
    case text:
        return "a text of up to " + std::to_string(key.width) + " characters";
    case choice:
        return "one of " + choice_names(key.choices);
    default:
        return "a number in " + to_utf8(units.label(key.quantity));
    }
}

} // namespace tarvane::app
