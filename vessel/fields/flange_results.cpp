#include "fields/flange_results.h"

#include "fields/flange_checks.h"
#include "fields/rated_pressure.h"
#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

using F = const FlangeFound&;
using B = TARVANE_FLANGE_RESULTS;

constexpr std::string_view NO_INTERNAL_PRESSURE = "no internal pressure pass",
                           KIND_ANALYSE = "kind analyse", NOT_DESIGNED = "kind is not design",
                           NO_PRESSURE = "no pressure was found", NOT_GIVEN = "not given",
                           NO_RIGIDITY = "no rigidity index of this flange", NO_HUB = "no hub",
                           NO_FACTOR = "no such factor of this type",
                           NO_LOAD = "no such load, arm or moment of this flange",
                           NO_EXTERNAL_LOADS = "no external loads, or taken as pressure",
                           NO_PARTITION = "no partition gasket",
                           NO_WEIGHT = "no weights of this type and kind",
                           NO_STRESS = "no such stress in this flange",
                           KIND_RATED_ALONE = "kind rated: no stresses are calculated";

// Why a stage has no value: it did not run for this flange, or nothing did.
std::string_view no_stage(F f) {
    if (f.stopped) return "the engine stopped";
    if (f.block.status == TARVANE_REFUSED) return "the input check found fatal errors";
    if (f.block.status == TARVANE_BOLT_AREA_SHORT) return "the bolt area is short";
    return "not calculated for this type, kind and code";
}

Got value(F f, float number) {
    return number == TARVANE_NO_VALUE || f.stopped ? Got::none(no_stage(f)) : Got(number);
}

template <float B::*MEMBER>
Got of(F f) {
    return value(f, f.block.*MEMBER);
}

// What this flange does not have is 0.0.
Got unless_zero(Got got, std::string_view why) {
    return got.value && *got.value == 0.0f ? Got::none(why) : got;
}

template <float B::*MEMBER, const std::string_view& WHY>
Got of_some(F f) {
    return unless_zero(of<MEMBER>(f), WHY);
}

// Shown in foot-pounds or their metric counterpart.
template <float B::*MEMBER>
Got moment_of(F f) {
    const Got inch_pounds = of<MEMBER>(f);
    return inch_pounds.value ? Got(*inch_pounds.value / 12.0f) : inch_pounds;
}

template <float B::*MEMBER, const std::string_view& WHY>
Got moment_of_some(F f) {
    return unless_zero(moment_of<MEMBER>(f), WHY);
}

template <int ROW, int PLACE>
Got stress_of(F f) {
    return unless_zero(value(f, f.block.stress[ROW][PLACE]), NO_STRESS);
}

// Loads and moments are results of the internal pressure pass; 0.0 all through when it did not run.
template <int ELEMENT>
Got load(F f) {
    if (f.record[TARVANE_G] == 0.0f || f.record[TARVANE_P] < 0.0f)
        return Got::none(NO_INTERNAL_PRESSURE);
    const bool moment = ELEMENT == TARVANE_Mop || ELEMENT == TARVANE_Matm;
    return f.record[ELEMENT] / (moment ? 12.0f : 1.0f);
}

bool analyses(F f) { return static_cast<int>(f.given[TARVANE_KIND]) == TARVANE_ANALYSE; }

template <int ELEMENT>
Got designed(F f) {
    if (static_cast<int>(f.given[TARVANE_KIND]) != TARVANE_DESIGN) return Got::none(NOT_DESIGNED);
    return f.record[ELEMENT];
}

template <int ELEMENT>
Got rounded(F f) {
    if (f.rounded != nullptr) return f.rounded[ELEMENT];
    const bool design = static_cast<int>(f.given[TARVANE_KIND]) == TARVANE_DESIGN;
    return Got::none(design ? "no design to round" : NOT_DESIGNED);
}

// A blind and a ring have none of the hub.
template <int ELEMENT>
Got designed_hub(F f) {
    return unless_zero(designed<ELEMENT>(f), NO_HUB);
}

template <int ELEMENT>
Got rounded_hub(F f) {
    return unless_zero(rounded<ELEMENT>(f), NO_HUB);
}

Got pressure_of(F f, float number) {
    return number == TARVANE_NO_VALUE || f.stopped
               ? Got::none(f.stopped ? no_stage(f) : NO_PRESSURE)
               : Got(number);
}

Got thickness_of(F f, float number) {
    if (number > 0.0f) return number;
    return Got::none(analyses(f) ? KIND_ANALYSE : no_stage(f));
}

Got index(F f, float number) {
    return number == TARVANE_NO_VALUE || number == 0.0f || f.stopped ? Got::none(NO_RIGIDITY)
                                                                     : Got(number);
}

constexpr Choice HELD_BY[] = {
    {STRESS_NAMES[0][0], TARVANE_BY_OPERATING_STRESS + 0},
    {STRESS_NAMES[0][1], TARVANE_BY_OPERATING_STRESS + 1},
    {STRESS_NAMES[0][2], TARVANE_BY_OPERATING_STRESS + 2},
    {STRESS_NAMES[0][3], TARVANE_BY_OPERATING_STRESS + 3},
    {STRESS_NAMES[0][4], TARVANE_BY_OPERATING_STRESS + 4},
    {STRESS_NAMES[0][5], TARVANE_BY_OPERATING_STRESS + 5},
    {STRESS_NAMES[0][6], TARVANE_BY_OPERATING_STRESS + 6},
    {STRESS_NAMES[1][0], TARVANE_BY_SEATING_STRESS + 0},
    {STRESS_NAMES[1][1], TARVANE_BY_SEATING_STRESS + 1},
    {STRESS_NAMES[1][2], TARVANE_BY_SEATING_STRESS + 2},
    {STRESS_NAMES[1][3], TARVANE_BY_SEATING_STRESS + 3},
    {STRESS_NAMES[1][4], TARVANE_BY_SEATING_STRESS + 4},
    {STRESS_NAMES[1][5], TARVANE_BY_SEATING_STRESS + 5},
    {STRESS_NAMES[1][6], TARVANE_BY_SEATING_STRESS + 6},
    {"rigidity index", TARVANE_BY_RIGIDITY},
    {"bolts", TARVANE_BY_BOLTS},
    {"hub small end as a cylinder", TARVANE_BY_HUB},
    {"deflection of the cover", TARVANE_BY_DEFLECTION},
};

Got held(F f, std::int32_t by) {
    if (held_down_by(by).empty()) return Got::none(f.stopped ? no_stage(f) : "not known");
    return static_cast<float>(by);
}

constexpr Choice FAILURES[] = {{"operating", TARVANE_FAILURE_BY_OPERATING},
                               {"gasket seating", TARVANE_FAILURE_BY_SEATING},
                               {"hub", TARVANE_FAILURE_BY_HUB},
                               {"rigidity index", TARVANE_FAILURE_BY_RIGIDITY},
                               {"failed already", TARVANE_FAILED_ALREADY}};

constexpr int OP = TARVANE_OPERATING, SEAT = TARVANE_SEATING;

using enum Quantity;

// Those of the closing tables in their order.
constexpr ResultRow<FlangeFound> ROWS[] = {
    {{"W", "W", force, "Design bolt load, gasket seating", FLANGE_TABLE}, load<TARVANE_W>},
    {{"Wm1", "Wm1", force, "Bolt load, operating", FLANGE_TABLE}, load<TARVANE_Wm1>},
    {{"Wm2", "Wm2", force, "Bolt load, gasket seating", FLANGE_TABLE}, load<TARVANE_Wm2>},
    {{"G", "G", diameter, "Gasket reaction diameter", FLANGE_TABLE},
     [](F f) {
         const float G = f.record[TARVANE_G];
         return G > 0.0f ? Got(G) : Got::none(NO_INTERNAL_PRESSURE);
     }},
    {{"Mop", "Mop", moment, "Moment, operating", FLANGE_TABLE}, load<TARVANE_Mop>},
    {{"Matm", "Matm", moment, "Moment, gasket seating", FLANGE_TABLE}, load<TARVANE_Matm>},
    {{"Ab", "Ab", area, "Actual bolt area", FLANGE_TABLE}, load<TARVANE_Ab>},
    {{"Am", "Am", area, "Required bolt area", FLANGE_TABLE}, load<TARVANE_Am>},
    {{"t", "", thickness, "Given thickness", FLANGE_TABLE},
     [](F f) {
         const float t = f.given[TARVANE_t];
         return t > 0.0f ? Got(t) : Got::none(NOT_GIVEN);
     }},
    {{"t_req", "", thickness, "Required thickness", FLANGE_TABLE, "corroded, at design conditions"},
     [](F f) { return thickness_of(f, f.t_req); }},
    {{"mawp", "MAWP", pressure, "Maximum allowable working pressure", FLANGE_TABLE,
      "the engine's estimate, in proportion from the design pressure"},
     [](F f) { return pressure_of(f, f.mawp); }},
    {{"map_nc", "MAPnc", pressure, "The same, new and cold", FLANGE_TABLE},
     [](F f) { return pressure_of(f, f.map_nc); }},
    // ---- the geometry that was selected
    {{"designed.n", "n", whole, "Number of bolts", DESIGN_TABLE}, designed<TARVANE_DESIGNED_BOLTS>},
    {{"designed.a", "a", diameter, "Bolt diameter", DESIGN_TABLE}, designed<TARVANE_DESIGNED_a>},
    {{"designed.C", "C", diameter, "Bolt circle", DESIGN_TABLE}, designed<TARVANE_DESIGNED_C>},
    {{"designed.g1", "g1", thickness, "Hub thickness, large end", DESIGN_TABLE},
     designed_hub<TARVANE_DESIGNED_g1>},
    {{"designed.g0", "g0", thickness, "Hub thickness, small end", DESIGN_TABLE},
     designed_hub<TARVANE_DESIGNED_go>},
    {{"designed.h", "h", thickness, "Hub length", DESIGN_TABLE}, designed_hub<TARVANE_DESIGNED_h>},
    {{"designed.A", "A", diameter, "Outside diameter", DESIGN_TABLE}, designed<TARVANE_DESIGNED_A>},
    {{"designed.Fod", "Fod", diameter, "Face outside diameter", DESIGN_TABLE},
     designed<TARVANE_DESIGNED_Fod>},
    {{"designed.Fid", "Fid", diameter, "Face inside diameter", DESIGN_TABLE},
     designed<TARVANE_DESIGNED_Fid>},
    {{"designed.Go", "Go", diameter, "Gasket outside diameter", DESIGN_TABLE},
     designed<TARVANE_DESIGNED_Go>},
    {{"designed.Gi", "Gi", diameter, "Gasket inside diameter", DESIGN_TABLE},
     designed<TARVANE_DESIGNED_Gi>},
    {{"designed.t", "t", thickness, "Thickness", DESIGN_TABLE},
     [](F f) {
         if (static_cast<int>(f.given[TARVANE_KIND]) != TARVANE_DESIGN)
             return Got::none(NOT_DESIGNED);
         return thickness_of(f, f.t_req);
     }},
    // ---- the same, rounded
    {{"rounded.B", "B", diameter, "Inside diameter", ROUNDED_TABLE}, [](F f) { return unless_zero(rounded<TARVANE_B>(f), "no bore"); }},
    {{"rounded.n", "n", whole, "Number of bolts", ROUNDED_TABLE}, rounded<TARVANE_BOLTS>},
    {{"rounded.a", "a", diameter, "Bolt diameter", ROUNDED_TABLE}, rounded<TARVANE_a>},
    {{"rounded.C", "C", diameter, "Bolt circle", ROUNDED_TABLE}, rounded<TARVANE_C>},
    {{"rounded.g1", "g1", thickness, "Hub thickness, large end", ROUNDED_TABLE},
     rounded_hub<TARVANE_g1>},
    {{"rounded.g0", "g0", thickness, "Hub thickness, small end", ROUNDED_TABLE},
     rounded_hub<TARVANE_go>},
    {{"rounded.h", "h", thickness, "Hub length", ROUNDED_TABLE}, rounded_hub<TARVANE_h>},
    {{"rounded.A", "A", diameter, "Outside diameter", ROUNDED_TABLE}, rounded<TARVANE_A>},
    {{"rounded.Fod", "Fod", diameter, "Face outside diameter", ROUNDED_TABLE},
     rounded<TARVANE_Fod>},
    {{"rounded.Fid", "Fid", diameter, "Face inside diameter", ROUNDED_TABLE},
     rounded<TARVANE_Fid>},
    {{"rounded.Go", "Go", diameter, "Gasket outside diameter", ROUNDED_TABLE},
     rounded<TARVANE_Go>},
    {{"rounded.Gi", "Gi", diameter, "Gasket inside diameter", ROUNDED_TABLE},
     rounded<TARVANE_Gi>},
    {{"rounded.t", "t", thickness, "Thickness", ROUNDED_TABLE}, rounded<TARVANE_t>},
    // ---- thicknesses
    {{"t_req_new", "", thickness, "Required thickness, new, at design conditions"},
     [](F f) { return thickness_of(f, f.t_req_new); }},
    {{"t_req_new_cold", "", thickness, "Required thickness, new and cold"},
     [](F f) { return thickness_of(f, f.t_req_new_cold); }},
    {{"t_used", "", thickness, "Thickness for which the stresses are calculated"}, of<&B::t_used>},
    {{"t_edge", "", thickness, "Thickness of a cover at its gasket"}, of<&B::t_edge>},
    {{"t_min", "tmin", thickness, "Least thickness for a full face gasket"}, of<&B::t_min>},
    {{"t_stress", "", thickness, "Thickness that meets the stresses"}, of<&B::t_stress>},
    {{"t_rigid", "", thickness, "Thickness that meets the rigidity index"}, of<&B::t_rigid>},
    {{"t_channel", "", thickness, "Least thickness of a channel cover by its deflection"},
     of<&B::t_channel>},
    {{"trlo", "trlo", thickness, "Lap thickness by shear, operating"},
     [](F f) { return value(f, f.block.lap_required[OP]); }},
    {{"trla", "trla", thickness, "Lap thickness by shear, gasket seating"},
     [](F f) { return value(f, f.block.lap_required[SEAT]); }},
    // ---- pressures
    {RATED_PRESSURE, [](F f) { return f.rated_pressure; }},
    {{"mawp_by", "", choice, "What limits the MAWP", "", "", HELD_BY},
     [](F f) { return held(f, f.block.mawp_by); }},
    {{"map_nc_by", "", choice, "What limits the MAPnc", "", "", HELD_BY},
     [](F f) { return held(f, f.block.map_nc_by); }},
    {{"mawp_operating", "", pressure, "MAWP by the operating condition"},
     [](F f) {
         const float P = f.block.mawp_operating;
         return pressure_of(f, P == 0.0f ? TARVANE_NO_VALUE : P);
     }},
    {{"mawp_seating", "", pressure, "MAWP by gasket seating"},
     [](F f) {
         const float P = f.block.mawp_seating;
         return pressure_of(f, P == 0.0f ? TARVANE_NO_VALUE : P);
     }},
    {{"P_bolts", "", pressure, "Pressure at which the bolts are used up"}, of<&B::P_bolts>},
    {{"Peq", "Peq", pressure, "Equivalent pressure", "", "with external loads as pressure"},
     of<&B::Peq>},
    // ---- gasket
    {{"N", "N", diameter, "Gasket contact width"}, of<&B::N>},
    {{"N_min", "Nmin", diameter, "Least gasket contact width"}, of<&B::N_min>},
    {{"bo", "bo", diameter, "Basic gasket width"}, of<&B::bo>},
    {{"b", "b", diameter, "Effective gasket width"}, of<&B::b>},
    {{"b2", "2b\"", diameter, "Effective width of a full face gasket"}, of<&B::b2>},
    {{"b_prime", "b'", diameter, "Width of a full face gasket of a reverse flange"},
     of<&B::bPrime>},
    {{"b_part", "", diameter, "Effective width of the partition gasket"}, of_some<&B::bPart, NO_PARTITION>},
    // ---- loads
    {{"H", "H", force, "Hydrostatic end load"}, of<&B::H>},
    {{"Hd", "Hd", force, "Hydrostatic end load at the inside diameter"}, of<&B::Hd>},
    {{"Ht", "Ht", force, "Pressure force on the flange face"}, of_some<&B::Ht, NO_LOAD>},
    {{"Hp", "Hp", force, "Contact load on gasket surfaces"}, of<&B::Hp>},
    {{"Hp_prime", "H'p", force, "Contact load within the bolt circle, full face"},
     of_some<&B::HpPrime, NO_LOAD>},
    {{"HGY", "HGY", force, "Gasket load for seating, full face"}, of_some<&B::HGY, NO_LOAD>},
    {{"HG", "HG", force, "Gasket load, operating"}, of<&B::HG>},
    {{"Wext", "", force, "External loads on the bolts"}, of_some<&B::Wext, NO_EXTERNAL_LOADS>},
    {{"Am1", "Am1", area, "Bolt area required for operation"}, of<&B::Am1>},
    {{"Am2", "Am2", area, "Bolt area required for gasket seating"}, of<&B::Am2>},
    // ---- arms, moments
    {{"hd", "hd", diameter, "Arm of the end pressure reaction"}, of<&B::hd>},
    {{"ht", "ht", diameter, "Arm of the face pressure reaction"}, of_some<&B::ht, NO_LOAD>},
    {{"hg", "hg", diameter, "Arm of the gasket load reaction"}, of<&B::hg>},
    {{"Md", "Md", moment, "Moment of the end pressure"}, moment_of<&B::Md>},
    {{"Mt", "Mt", moment, "Moment of the face pressure"}, moment_of_some<&B::Mt, NO_LOAD>},
    {{"Mg", "Mg", moment, "Moment of the gasket load"}, moment_of_some<&B::Mg, NO_LOAD>},
    {{"Mr", "Mr", moment, "Moment of the balancing reaction"}, moment_of_some<&B::Mr, NO_LOAD>},
    {{"Moe", "Moe", moment, "Moment of external loads"}, moment_of_some<&B::Moe, NO_EXTERNAL_LOADS>},
    // ---- bolting
    {{"bolt_spacing", "", diameter, "Bolt spacing"}, of<&B::bolt_spacing>},
    {{"bolt_spacing_min", "", diameter, "Least bolt spacing"}, of<&B::bolt_spacing_min>},
    {{"bolt_spacing_max", "", diameter, "Greatest bolt spacing"}, of<&B::bolt_spacing_max>},
    {{"radial", "", diameter, "Distance of the bolts to the hub"}, of<&B::radial>},
    {{"radial_min", "", diameter, "Least distance of the bolts to the hub"}, of<&B::radial_min>},
    {{"edge", "", diameter, "Distance of the bolts to the edge"}, of<&B::edge>},
    {{"edge_min", "", diameter, "Least distance of the bolts to the edge"}, of<&B::edge_min>},
    {{"CF", "", number, "Correction of the moments for bolt spacing"}, of<&B::CF>},
    // ---- shape factors
    {{"K", "K", number, "Ratio of outside to inside diameter"}, of_some<&B::K, NO_FACTOR>},
    {{"T_factor", "T", number, "Shape factor T"}, of_some<&B::T_factor, NO_FACTOR>},
    {{"U", "U", number, "Shape factor U"}, of_some<&B::U, NO_FACTOR>},
    {{"Y", "Y", number, "Shape factor Y"}, of_some<&B::Y, NO_FACTOR>},
    {{"Z", "Z", number, "Shape factor Z"}, of_some<&B::Z, NO_FACTOR>},
    {{"Yr", "Yr", number, "Shape factor of a reverse flange"}, of<&B::Yr>},
    {{"alpha_r", "Alphar", number, "Ratio of a reverse flange to a conventional one"},
     of<&B::Alphar>},
    {{"F", "F", number, "Hub factor F"}, of_some<&B::F, NO_FACTOR>},
    {{"V", "V", number, "Hub factor V"}, of_some<&B::V, NO_FACTOR>},
    {{"f", "f", number, "Hub stress correction factor"}, of_some<&B::f, NO_FACTOR>},
    {{"e", "e", number, "Hub factor e"}, of_some<&B::e, NO_FACTOR>},
    {{"d", "d", number, "Hub factor d"}, of_some<&B::d, NO_FACTOR>},
    {{"ho", "ho", diameter, "Hub factor ho"}, of_some<&B::ho, NO_FACTOR>},
    {{"kf", "k", number, "Divisor of the allowable stresses"}, of<&B::kf>},
    // ---- stresses
    {{"SHo", "SHo", stress, "Longitudinal hub stress, operating"},
     stress_of<OP, TARVANE_HUB_STRESS>},
    {{"SRo", "SRo", stress, "Radial flange stress, operating"},
     stress_of<OP, TARVANE_RADIAL_STRESS>},
    {{"STo", "STo", stress, "Tangential flange stress, operating"},
     stress_of<OP, TARVANE_TANGENTIAL_STRESS>},
    {{"SAo", "SAo", stress, "Average flange stress, operating"},
     stress_of<OP, TARVANE_AVERAGE_STRESS>},
    {{"BSo", "BSo", stress, "Bolt stress, operating"}, stress_of<OP, TARVANE_BOLT_STRESS>},
    {{"SVo", "SVo", stress, "Stress at the bore of a reverse flange, operating"},
     stress_of<OP, TARVANE_REVERSE_STRESS>},
    {{"SFo", "SFo", stress, "Radial stress at the bolt circle, operating"},
     stress_of<OP, TARVANE_FULL_FACE_STRESS>},
    {{"SHa", "SHa", stress, "Longitudinal hub stress, gasket seating"},
     stress_of<SEAT, TARVANE_HUB_STRESS>},
    {{"SRa", "SRa", stress, "Radial flange stress, gasket seating"},
     stress_of<SEAT, TARVANE_RADIAL_STRESS>},
    {{"STa", "STa", stress, "Tangential flange stress, gasket seating"},
     stress_of<SEAT, TARVANE_TANGENTIAL_STRESS>},
    {{"SAa", "SAa", stress, "Average flange stress, gasket seating"},
     stress_of<SEAT, TARVANE_AVERAGE_STRESS>},
    {{"BSa", "BSa", stress, "Bolt stress, gasket seating"}, stress_of<SEAT, TARVANE_BOLT_STRESS>},
    {{"SVa", "SVa", stress, "Stress at the bore of a reverse flange, gasket seating"},
     stress_of<SEAT, TARVANE_REVERSE_STRESS>},
    {{"SFa", "SFa", stress, "Radial stress at the bolt circle, gasket seating"},
     stress_of<SEAT, TARVANE_FULL_FACE_STRESS>},
    // ---- rigidity
    {{"J_operating", "J", number, "Rigidity index, operating", "", "at the given thickness"},
     [](F f) { return index(f, f.block.J_given[OP]); }},
    {{"J_seating", "Js", number, "Rigidity index, gasket seating", "", "at the given thickness"},
     [](F f) { return index(f, f.block.J_given[SEAT]); }},
    {{"J_required_operating", "", number, "Rigidity index at the required thickness, operating"},
     [](F f) { return index(f, f.block.J_required[OP]); }},
    {{"J_required_seating", "", number,
      "Rigidity index at the required thickness, gasket seating"},
     [](F f) { return index(f, f.block.J_required[SEAT]); }},
    {{"E_cold", "", stress, "Elastic modulus at ambient temperature"}, of<&B::E_cold>},
    {{"E_hot", "", stress, "Elastic modulus at the design temperature"}, of<&B::E_hot>},
    // ---- cover
    {{"deflection", "", thickness, "Deflection of a channel cover"}, of<&B::deflection>},
    {{"deflection_allowed", "", thickness, "Allowed deflection of a channel cover"},
     of<&B::deflection_allowed>},
    {{"opening_factor", "", number, "Factor on the thickness of a cover for its openings"},
     of<&B::opening_factor>},
    // ---- hub, shell
    {{"hub_required", "", thickness, "Small end of the hub as a cylinder"}, of<&B::hub_required>},
    {{"hub_mawp", "", pressure, "MAWP of the small end of the hub as a cylinder"},
     of<&B::hub_mawp>},
    {{"shell_required", "", thickness, "Required thickness of the attached shell"},
     of<&B::shell_required>},
    {{"shell_mawp", "", pressure, "MAWP of the attached shell"}, of<&B::shell_mawp>},
    {{"shell_ratio", "", number, "Vessel pressure over the MAWP of the attached shell"},
     of<&B::shell_ratio>},
    {{"stress_ratio", "", number, "Stress ratio for the metal temperature"}, of<&B::stress_ratio>},
    {{"pwht_thickness", "", thickness, "Governing thickness for heat treatment"},
     of<&B::pwht_thickness>},
    // ---- corrosion, weights
    {{"failure_ca", "", thickness, "Corrosion allowance at failure"}, of<&B::failure_ca>},
    {{"failure_by", "", choice, "What fails then", "", "", FAILURES},
     [](F f) {
         return f.block.failure_by == TARVANE_FAILURE_BY_NOTHING || f.stopped
                    ? Got::none(f.stopped ? no_stage(f) : "no limit was looked for or found")
                    : Got(static_cast<float>(f.block.failure_by));
     }},
    {{"weight_finished", "", weight, "Finished weight"}, of_some<&B::weight_finished, NO_WEIGHT>},
    {{"weight_forging", "", weight, "Weight of the forging"}, of_some<&B::weight_forging, NO_WEIGHT>},
    // ---- of a rated flange, or of a standard one
    {{"P", "P", pressure, "Design pressure", RATED_TABLE}, [](F f) { return Got(f.given[TARVANE_P]); }},
    {{"rating", "", pressure, "Pressure rating at the design temperature", RATED_TABLE},
     [](F f) { return f.rating > 0.0f ? Got(f.rating) : Got::none(NOT_GIVEN); }},
};

constexpr auto FIELDS = fields_of(ROWS);

} // namespace

std::span<const ResultField> flange_result_fields() { return FIELDS; }

Result flange_result(const FlangeFound& found, std::size_t place) {
    if (found.rated) {
        const ResultField& field = FIELDS[place];
        const bool given =
            field.name == "t" || field.name == RATED_PRESSURE.name || field.table == RATED_TABLE;
        if (!given) return {&field, std::nullopt, KIND_RATED_ALONE};
    }
    return result_of(ROWS, FIELDS, found, place);
}

std::vector<Result> flange_results(const FlangeFound& found) {
    std::vector<Result> results;
    results.reserve(FIELDS.size());
    for (std::size_t place = 0; place < FIELDS.size(); ++place)
        results.push_back(flange_result(found, place));
    return results;
}

std::string_view held_down_by(int by) {
    for (const Choice& choice : HELD_BY)
        if (choice.number == by) return choice.name;
    return "";
}

} // namespace tarvane::vessel
