#include "fields/flange_keys.h"

namespace tarvane::vessel {

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
constexpr Choice KINDS[] = {{"analyse", 1},        {"thickness", 2}, {"design", 3},
                            {"rated", KIND_RATED}, {"analyze", 1},   {"analysis", 1}};
// The kinds whose stresses the engine calculates; a rated flange has its rating alone.
constexpr Condition STRESSED = among("kind", {1, 2, 3});
constexpr Choice SERIES[] = {{"TEMA", 1},          {"UNC", 2},        {"special", 3},
                             {"TEMA metric", 4},   {"BS 3643", 5},    {"SABS 1700", 6},
                             {"3P M30 metric", 7}, {"user table", 8}, {"TEMA imperial", 1},
                             {"root area", 3},     {"3P M30", 7},     {"user", 8}};
constexpr Choice FACINGS[] = {{"1a", 1}, {"1b", 2}, {"1c", 3}, {"1d", 4}, {"2", 5},
                              {"3", 6},  {"4", 7},  {"5", 8},  {"6", 9}};
constexpr Choice COLUMNS[] = {{"I", 1}, {"II", 2}};
constexpr Choice SEATING_RULES[] = {{"mean", 0}, {"bolt area", 1}};

constexpr Choice BOLT_SIZES[] = {{"listed", BOLT_LISTED}, {"nearest", BOLT_NEAREST}};

constexpr int at(Setting setting) { return static_cast<int>(setting); }
constexpr int at(TextSetting setting) { return static_cast<int>(setting); }

using enum Quantity;
using P = Place;

// Steel, 7850 kg/m3, in pounds a cubic inch.
constexpr double STEEL_DENSITY = 0.283599;

constexpr Key ROWS[] = {
    // ---- the call ----------------------------------------------------------------------------
    Key{"description", P::text_setting, at(TextSetting::description), text,
        "description of the flange; the report has its first 15 characters", "Description"}
        .label("Description")
        .up_to(MOST_DESCRIPTION),
    Key{"waive", P::text_setting, at(TextSetting::waive), waivers,
        "checks that are waived; the verdict names them"}
        .label("Waived checks"),
    Key{"type", P::record, 2, choice, "flange type"}.of(TYPES).needs(),
    Key{"kind", P::record, 3, choice,
        "analysis kind; \"rated\" is for a flange accepted by its pressure rating, without "
        "stresses"}
        .label("Analysis kind")
        .of(KINDS)
        .otherwise(1),
    Key{"code", P::setting, at(Setting::code), choice, "design code"}.of(CODES).otherwise(1).to(
        "FLANGE_CALC code"),
    Key{"edition", P::setting, at(Setting::edition), choice,
        "edition of the code: older for VIII-2, A98 for VIII-1"}
        .label("Edition of the code")
        .of(EDITIONS)
        .to("SET_EDITION"),
    // ---- design conditions -------------------------------------------------------------------
    Key{"P", P::record, 4, pressure, "design pressure, negative for external pressure", "P"}
        .label("Design pressure")
        .needs(),
    Key{"T", P::record, 5, temperature, "design temperature"}.needs(),
    Key{"P_operating", P::setting, at(Setting::design_pressure_operating), pressure,
        "vessel pressure at the flange; P when it is not given"}
        .label("Operating pressure")
        .to("FLANGE_CALC p_operating"),
    Key{"P_external", P::setting, at(Setting::external_pressure), pressure,
        "external design pressure, for a second calculation with it in place of P"}
        .label("External design pressure")
        .to("record 4"),
    Key{"ci", P::record, 9, thickness, "internal corrosion allowance", "ci"},
    Key{"ce", P::record, 63, thickness, "external corrosion allowance", "ce"},
    Key{"use_corrosion", P::slot_flag, slot::use_corrosion, flag,
        "use the corrosion allowance in thickness calculations"}
        .label("Use the corrosion allowance")
        .otherwise(1),
    Key{"E", P::setting, at(Setting::joint_efficiency), number, "joint efficiency"}.otherwise(1).to(
        "FLANGE_CALC joint_e"),
    // ---- flange ------------------------------------------------------------------------------
    Key{"B", P::record, 10, diameter, "flange inside diameter", "B"}.needs(
        among("type", {1, 2, 3, 4, 5, 6, 8, 9}) && STRESSED),
    Key{"A", P::record, 11, diameter, "flange outside diameter", "A"}.needs(
        by_rule("outside_diameter")),
    Key{"t", P::record, 8, thickness, "flange thickness", "t"}.needs(among("kind", {1})),
    Key{"keep_thickness", P::setting, at(Setting::keep_thickness), flag,
        "rate the flange at the given t, not at the thickness that was found"}
        .label("Rate at the given thickness")
        .to("flange text, column 45"),
    Key{"g0", P::record, 16, thickness, "thickness of hub at small end", "go"}.needs(
        by_rule("hub")),
    Key{"g1", P::record, 17, thickness, "thickness of hub at large end", "g1"}.needs(
        by_rule("hub")),
    Key{"h", P::record, 18, thickness, "length of hub", "h"}.needs(by_rule("hub")),
    Key{"tw", P::record, 42, thickness, "length of weld leg at back of ring", "tw"},
    Key{"splits", P::record, 41, whole, "number of splits in a ring flange: 0, 1 or 2"}.label(
        "Splits in a ring flange"),
    Key{"LjID", P::record, 39, diameter, "lap joint contact inside diameter", "LjID"}
        .reads(among("type", {6}))
        .needs(),
    Key{"LjOD", P::record, 40, diameter, "lap joint contact outside diameter", "LjOD"}
        .reads(among("type", {6}))
        .needs(),
    Key{"material", P::slot, slot::flange_material, text,
        "flange material; the material files give what the file leaves out"}
        .label("Flange material")
        .up_to(15),
    Key{"material_reference", P::setting, at(Setting::material_reference), whole,
        "reference number of the flange material, where a name has several"}
        .label("Reference of the material"),
    Key{"material_name", P::text_setting, at(TextSetting::material_name), text,
        "long name of the flange material"}
        .up_to(40)
        .to("SET_MATERIAL_ITEM"),
    Key{"Sfo", P::record, 6, stress, "flange allowable stress at design temperature", "Sfo"}
        .label("Allowable stress at design temperature")
        .needs(),
    Key{"Sfa", P::record, 7, stress, "flange allowable stress at ambient temperature", "Sfa"}
        .label("Allowable stress at ambient temperature")
        .needs(),
    Key{"material_class", P::record, 34, whole, "reference number of the elastic modulus table"}
        .label("Elastic modulus table")
        .otherwise(1),
    Key{"chart", P::slot, slot::chart, text, "external pressure chart of the material"}
        .label("External pressure chart")
        .up_to(8),
    Key{"chart_yield", P::setting, at(Setting::chart_yield), stress,
        "yield stress of the material, for charts that depend on it"}
        .label("Yield stress of the material")
        .to("SET_YIELD"),
    Key{"density", P::record, 53, Quantity::density, "density of the flange material"}.otherwise(
        STEEL_DENSITY),
    // ---- bolting -----------------------------------------------------------------------------
    Key{"bolting", P::record, 23, choice, "thread series of the bolts"}.of(SERIES).needs(),
    Key{"C", P::record, 21, diameter, "diameter of bolt circle", "C"}.needs(among("kind", {1, 2})),
    Key{"a", P::record, 22, diameter, "nominal bolt diameter", "a"}.needs(among("kind", {1, 2})),
    Key{"n", P::record, 24, whole, "number of bolts", "n"}.needs(among("kind", {1, 2})),
    Key{"bolt_size", P::setting, at(Setting::bolt_size), choice,
        "whether a must be a size of the thread series, or is replaced by the next smaller one"}
        .label("Bolt size")
        .of(BOLT_SIZES)
        .reads(among("kind", {1, 2}) && among("bolting", {1, 2, 4, 5, 6, 7, 8})),
    Key{"root_area", P::record, 51, area, "root area of a single bolt"}
        .reads(among("bolting", {3}))
        .needs(),
    Key{"bolt_material", P::slot, slot::bolt_material, text,
        "bolt material; the material files give what the file leaves out"}
        .label("Bolt material")
        .up_to(15),
    Key{"bolt_material_name", P::text_setting, at(TextSetting::bolt_material_name), text,
        "long name of the bolt material"}
        .up_to(40)
        .to("SET_MATERIAL_ITEM"),
    Key{"Sb", P::record, 19, stress, "bolt allowable stress at design temperature", "Sb"}
        .label("Bolt allowable stress at design temperature")
        .needs(),
    Key{"Sa", P::record, 20, stress, "bolt allowable stress at ambient temperature", "Sa"}
        .label("Bolt allowable stress at ambient temperature")
        .needs(),
    Key{"bolt_reference", P::record, 75, whole, "reference number of the bolt material"}.label(
        "Reference of the bolt material"),
    Key{"bolt_correction", P::setting, at(Setting::bolt_correction), flag,
        "apply the bolt spacing correction factor"}
        .label("Bolt spacing correction factor")
        .otherwise(1)
        .to("GETSETUP no_correction"),
    Key{"seating_rule", P::record, 73, choice,
        "design bolt load of gasket seating: Sa times the mean of Am and Ab, or Sa times Ab"}
        .label("Design bolt load of gasket seating")
        .of(SEATING_RULES),
    // ---- gasket ------------------------------------------------------------------------------
    Key{"Fod", P::record, 12, diameter, "flange face outside diameter", "Fod"}.needs(STRESSED),
    Key{"Fid", P::record, 13, diameter, "flange face inside diameter", "Fid"}.needs(),
    Key{"Go", P::record, 14, diameter, "gasket outside diameter", "Go"}.needs(),
    Key{"Gi", P::record, 15, diameter, "gasket inside diameter", "Gi"}.needs(),
    Key{"gasket.type", P::text_setting, at(TextSetting::gasket_type), text,
        "gasket of the gasket table, which gives m and y where the file leaves them out"}
        .label("Gasket")
        .up_to(40),
    Key{"m", P::record, 25, number, "gasket factor", "m"}.shows(4).needs(),
    Key{"y", P::record, 26, stress, "gasket design seating stress", "y"}.needs(),
    Key{"facing", P::record, 27, choice,
        "facing sketch of the code; a number is its place in the list"}
        .label("Facing sketch")
        .of(FACINGS)
        .needs(),
    Key{"column", P::record, 28, choice,
        "column for gasket seating; required for the facings 2 to 5, whose columns differ"}
        .label("Column for gasket seating")
        .of(COLUMNS)
        .otherwise(1)
        .reads(among("facing", {5, 6, 7, 8}))
        .needs(),
    Key{"tg", P::record, 29, thickness, "gasket thickness", "tg"},
    Key{"w", P::record, 30, thickness, "flange face nubbin width", "w"},
    Key{"partition_gasket", P::slot_flag, slot::partition_gasket, flag,
        "there is a partition gasket; true when one of its keys is given"}
        .label("Partition gasket"),
    Key{"lp", P::record, 31, thickness, "length of partition gasket", "lp"}
        .opens("partition_gasket")
        .needs(),
    Key{"tp", P::record, 52, thickness, "width of partition gasket", "tp"}
        .opens("partition_gasket")
        .needs(),
    Key{"mPart", P::record, 55, number, "partition gasket factor", "mPart"}
        .opens("partition_gasket")
        .shows(4)
        .needs(),
    Key{"yPart", P::record, 56, stress, "partition gasket design seating stress", "yPart"}
        .label("Partition gasket seating stress")
        .opens("partition_gasket")
        .needs(),
    Key{"facing_part", P::record, 57, choice, "facing sketch of the partition gasket"}
        .of(FACINGS)
        .otherwise(1)
        .opens("partition_gasket"),
    Key{"column_part", P::record, 58, choice,
        "column of the partition gasket; required for its facings 2 to 5"}
        .label("Column of the partition gasket")
        .of(COLUMNS)
        .otherwise(1)
        .opens("partition_gasket", among("facing_part", {5, 6, 7, 8}))
        .needs(),
    // ---- loads -------------------------------------------------------------------------------
    Key{"external_loads", P::slot_flag, slot::external_loads, flag,
        "external loads are in force; true when one of its keys is given"}
        .label("External loads"),
    Key{"axial_force", P::record, 48, force, "axial force on flange"}.opens("external_loads"),
    Key{"bending_moment", P::record, 50, moment, "bending moment on flange"}.opens(
        "external_loads"),
    Key{"mating_loads", P::slot_flag, slot::mating_loads, flag,
        "mating flange loads are in force; true when one of its keys is given"}
        .label("Mating flange loads"),
    Key{"mating_operating", P::record, 44, force, "mating flange operating bolt load"}
        .opens("mating_loads")
        .needs(),
    Key{"mating_seating", P::record, 45, force, "mating flange seating bolt load"}
        .opens("mating_loads")
        .needs(),
    Key{"mating_design", P::record, 46, force, "mating flange design bolt load"}
        .opens("mating_loads")
        .needs(),
    // ---- blind flange ------------------------------------------------------------------------
    Key{"D", P::record, 35, diameter, "diameter of the load reaction, long span", "D"}
        .label("Long span")
        .reads(among("type", {7}))
        .needs(given("d")),
    Key{"d", P::record, 36, diameter, "diameter of the load reaction, short span", "d"}
        .label("Short span")
        .reads(among("type", {7}))
        .needs(given("D")),
    Key{"L", P::record, 38, diameter, "perimeter along the center of the bolts", "L"}
        .label("Perimeter of the bolts")
        .reads(among("type", {7})),
    Key{"channel_cover", P::slot_flag, slot::channel_cover, flag,
        "this blind flange is a TEMA channel cover"}
        .label("TEMA channel cover"),
    Key{"Ecover", P::setting, at(Setting::cover_modulus), stress,
        "elastic modulus of a channel cover; from the modulus tables when it is not given"}
        .label("Modulus of the channel cover")
        .reads(on("channel_cover"))
        .to("record 10"),
    Key{"dfAllow", P::record, 37, thickness, "allowed channel cover deflection", "dfAllow"}.reads(
        on("channel_cover")),
    Key{"opening_factor", P::setting, at(Setting::opening_factor), flag,
        "cover with an opening by UG-39(d)(2): stress doubled, thickness times the root of two"}
        .label("Cover with an opening")
        .to("GETSETUP root_two"),
    Key{"patterned_holes", P::record, 69, flag,
        "check multiple openings in the cover by UG-39; true when one of its keys is given"}
        .label("Openings in the cover"),
    Key{"D1", P::record, 64, diameter, "hole diameter D1", "D1"}.opens("patterned_holes").needs(),
    Key{"D2", P::record, 65, diameter, "hole diameter D2", "D2"}.opens("patterned_holes"),
    Key{"edge1", P::record, 66, diameter, "edge distance to D1"}.opens("patterned_holes"),
    Key{"edge2", P::record, 67, diameter, "edge distance to D2"}.opens("patterned_holes"),
    Key{"pitch", P::record, 68, diameter, "pitch distance"}.opens("patterned_holes"),
    // ---- attached shell ----------------------------------------------------------------------
    Key{"tShell", P::record, 71, thickness, "nominal thickness of the attached shell"}
        .label("Thickness of the attached shell")
        .needs(among("type", {9})),
    Key{"caShell", P::record, 74, thickness, "corrosion allowance of the attached shell"}.label(
        "Corrosion allowance of the shell"),
    Key{"Dshell", P::record, 54, diameter, "inside diameter of the attached shell"}.label(
        "Inside diameter of the shell"),
    Key{"Sn", P::record, 60, stress,
        "allowable stress of the attached shell or nozzle at design temperature"}
        .label("Shell stress at design temperature"),
    Key{"Sna", P::record, 61, stress,
        "allowable stress of the attached shell or nozzle at ambient temperature"}
        .label("Shell stress at ambient temperature"),
    Key{"hub_shell_stress", P::record, 72, flag, "check the small end of the hub with Sn"}.label(
        "Small end of the hub with Sn"),
    Key{"attachment", P::record, 70, whole,
        "kind of the attachment to the shell; 1 to 4: a shell of known thickness"}
        .label("Attachment to the shell"),
    // ---- checks ------------------------------------------------------------------------------
    Key{"rigidity", P::setting, at(Setting::rigidity), flag, "evaluate the rigidity index"}
        .label("Rigidity index")
        .to("FLANGE_CALC rigidity"),
    Key{"corroded_rigidity", P::setting, at(Setting::corroded_rigidity), flag,
        "the rigidity index uses the corroded thickness"}
        .label("Rigidity of the corroded flange")
        .reads(on("rigidity"))
        .to("FLANGE_CALC corroded_rigidity"),
    Key{"quiet_overstress", P::setting, at(Setting::quiet_overstress), flag,
        "no overstress message and no overstress line"}
        .label("No overstress message")
        .to("FLANGE_CALC quiet_overstress"),
    Key{"failure_corrosion", P::setting, at(Setting::failure_corrosion), flag,
        "find the corrosion allowance at failure"}
        .label("Corrosion at failure")
        .to("SET_SWITCHES failure_corrosion"),
    Key{"inspection_first", P::setting, at(Setting::inspection_first), thickness,
        "thickness at the first inspection"}
        .to("GETELEMENTTABLES first_inspection"),
    Key{"inspection_second", P::setting, at(Setting::inspection_second), thickness,
        "thickness at the second inspection"}
        .to("GETELEMENTTABLES second_inspection"),
    Key{"per_element_ratio", P::setting, at(Setting::per_element_ratio), flag,
        "the stress ratio of the attached shell counts too"}
        .label("Stress ratio of the shell")
        .to("SET_SWITCHES per_element_ratio"),
    Key{"p_number", P::setting, at(Setting::p_number), whole, "P-number of the flange material"}.to(
        "GETELEMENTTABLES heat_treatment"),
    Key{"pwht", P::setting, at(Setting::pwht), flag,
        "heat treated after welding, for UCS-56; a flange that asks for it does not pass without"}
        .label("Heat treated after welding"),
    // ---- standard flange ---------------------------------------------------------------------
    Key{"standard_flange", P::setting, at(Setting::standard_flange), flag,
        "a rated standard flange, without stress calculations"}
        .label("Rated standard flange")
        .to("FLANGE_CALC standard_flange"),
    Key{"rating", P::setting, at(Setting::rating), pressure,
        "rated pressure of a standard flange at the design temperature; a standard_flange passes "
        "with it alone, and so does a flange of kind \"rated\""}
        .label("Rated pressure")
        .needs(among("kind", {KIND_RATED})),
    Key{"rating_cold", P::setting, at(Setting::rating_cold), pressure,
        "rated pressure at ambient temperature, for the MAP, new and cold, and the hydrotest by "
        "UG-99(c) of the vessel; rating when it is not given"}
        .label("Rated pressure at ambient temperature")
        .reads(among("kind", {KIND_RATED})),
    Key{"class", P::text_setting, at(TextSetting::flange_class), text, "class of a standard flange"}
        .up_to(15)
        .to("GETHOSTINPUT flange_class"),
    Key{"grade", P::text_setting, at(TextSetting::flange_grade), text, "grade of a standard flange"}
        .up_to(15)
        .to("GETHOSTINPUT flange_grade"),
    Key{"standard.class", P::text_setting, at(TextSetting::standard_class), designation,
        "class of ASME B16.5, ASME B16.47 or EN 1092-1 whose dimensions the flange has: 150, "
        "\"PN16\""}
        .label("Class of the standard flange")
        .up_to(8)
        .needs(by_rule("standard")),
    Key{"standard.size", P::text_setting, at(TextSetting::standard_size), designation,
        "its nominal size, NPS or DN"}
        .up_to(10)
        .needs(by_rule("standard")),
    Key{"standard.wall", P::setting, at(Setting::standard_wall), thickness,
        "wall of the pipe at a weld neck; that of standard pipe when it is not given"}
        .label("Wall of the pipe"),
    // ---- place in the vessel, material files -------------------------------------------------
    Key{"attached_to", P::text_setting, at(TextSetting::attached_to), text,
        "description of the cylinder that the flange is welded to; it gives wall, inside diameter, "
        "allowable stresses, corrosion, E and elevation"}
        .label("Cylinder at the flange")
        .up_to(MOST_DESCRIPTION),
    Key{"mates_with", P::text_setting, at(TextSetting::mates_with), text,
        "description of the flange that it is bolted to; both take the greater bolt loads"}
        .label("Mating flange")
        .up_to(MOST_DESCRIPTION),
    Key{"elevation", P::setting, at(Setting::elevation), diameter,
        "elevation of the lowest point inside, for the head of the liquid"}
        .label("Elevation"),
    Key{"from_node", P::text_setting, at(TextSetting::from_node), text,
        "node where the flange begins"}
        .up_to(16)
        .to("GETELEMENTTABLES from_node"),
    Key{"to_node", P::text_setting, at(TextSetting::to_node), text, "node where the flange ends"}
        .up_to(16)
        .to("GETELEMENTTABLES to_node"),
    Key{"material_metric", P::setting, at(Setting::material_metric), flag,
        "materials from the metric files"}
        .to("SET_MATERIAL_SELECTION metric"),
    Key{"force_div1", P::setting, at(Setting::force_div1), flag,
        "materials from the Division 1 file"}
        .to("SET_MATERIAL_SELECTION force_div1"),
    Key{"d2_class", P::setting, at(Setting::d2_class), whole, "Division 2 class of the materials"}
        .to("SET_MATERIAL_SELECTION division2_class"),
    Key{"material_year", P::setting, at(Setting::material_year), whole,
        "edition index of the material files"}
        .to("SET_MATERIAL_SELECTION year"),
};

// What a rated flange reads: its rating, its dimensions, and what names it.
constexpr std::string_view OF_RATED[] = {"description",
                                         "waive",
                                         "type",
                                         "kind",
                                         "code",
                                         "edition",
                                         "P",
                                         "T",
                                         "B",
                                         "A",
                                         "t",
                                         "g0",
                                         "g1",
                                         "h",
                                         "material",
                                         "C",
                                         "a",
                                         "n",
                                         "Fod",
                                         "rating",
                                         "class",
                                         "grade",
                                         "standard.class",
                                         "standard.size",
                                         "standard.wall",
                                         "P_operating",
                                         "P_external",
                                         "attached_to",
                                         "mates_with",
                                         "elevation",
                                         "from_node",
                                         "to_node",
                                         "external_loads",
                                         "axial_force",
                                         "bending_moment"};

consteval bool names_kind(const Condition& condition) {
    for (const Term& term : condition.terms)
        if (term.key == "kind") return true;
    return false;
}

consteval auto keys_by_kind() {
    std::array<Key, std::size(ROWS)> keys;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        Key& key = keys[i] = ROWS[i];
        bool of_rated = names_kind(key.read);
        for (const std::string_view name : OF_RATED)
            of_rated = of_rated || key.name == name;
        if (!of_rated) key.read = key.read.and_also(STRESSED);
    }
    return keys;
}
constexpr auto KEYS = keys_by_kind();

constexpr KeySection SECTIONS[] = {{"description", "Element"},
                                   {"P", "Design conditions"},
                                   {"B", "Flange"},
                                   {"bolting", "Bolting"},
                                   {"Fod", "Gasket"},
                                   {"external_loads", "Loads"},
                                   {"D", "Blind flange"},
                                   {"tShell", "Attached shell"},
                                   {"rigidity", "Checks"},
                                   {"standard_flange", "Standard flange"},
                                   {"attached_to", "Place in the vessel"},
                                   {"material_metric", "Material files"}};

constexpr Synonym SYNONYMS[] = {{"go", "g0"},
                                {"G0", "g0"},
                                {"e", "t"},
                                {"f", "Sfo"},
                                {"fa", "Sfa"},
                                {"fb", "Sb"},
                                {"fba", "Sa"},
                                {"db", "a"},
                                {"series", "bolting"},
                                {"threads", "bolting"},
                                {"sketch", "facing"},
                                {"bolts", "n"},
                                {"sketch_part", "facing_part"},
                                {"name", "description"},
                                {"analysis", "kind"},
                                {"ns", "splits"},
                                {"tn", "tShell"}};

constexpr Alias ALIASES[] = {{"c", "ci", Shared::ours, Shared::both}};

constexpr std::string_view GASKET_KEYS[] = {"Go", "Gi", "m", "y", "facing", "column", "tg", "w"};
constexpr InnerTable TABLES[] = {{"gasket", GASKET_KEYS}};

constexpr Rule RULES[] = {
    {"outside_diameter",
     "kind is \"analyse\" or \"thickness\", or type is \"reverse weld neck\" and kind \"design\""},
    {"hub", "kind is not \"rated\", and type is \"weld neck\" or \"reverse weld neck\", or one of "
            "g0, g1 and h is given and "
            "not 0; blind "
            "flanges and loose reverse flanges have no hub"},
    {"standard", "one of the keys of the table standard is given"}};

constexpr KeyTable TABLE{.keys = KEYS,
                         .sections = SECTIONS,
                         .synonyms = SYNONYMS,
                         .aliases = ALIASES,
                         .tables = TABLES,
                         .rules = RULES};

} // namespace

const KeyTable& flange_keys() { return TABLE; }

bool columns_differ(int sketch) { return sketch >= 5 && sketch <= 8; }

} // namespace tarvane::vessel
