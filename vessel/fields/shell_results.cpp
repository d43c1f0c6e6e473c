#include "fields/shell_results.h"

#include "fields/rated_pressure.h"
#include "tarvane/tarvane.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

using F = const ShellFound&;
using B = TARVANE_SHELL_RESULTS;
using N = ShellNumber;

constexpr std::string_view STOPPED = "the engine stopped",
                           NOT_RUN = "not calculated for this element and formula",
                           OLDER = "not by the older Division 2";

Got value(F f, float number) {
    if (f.stopped) return Got::none(STOPPED);
    return number == TARVANE_NO_VALUE ? Got::none(NOT_RUN) : Got(number);
}

template <float B::*MEMBER>
Got of(F f) {
    return value(f, f.block.*MEMBER);
}

template <N KEY>
Got key(F f) {
    return f.given.setting(KEY);
}

// A choice of which 0 is none.
template <std::int32_t B::*MEMBER>
Got chosen(F f) {
    if (f.stopped) return Got::none(STOPPED);
    return f.block.*MEMBER == 0 ? Got::none(NOT_RUN) : Got(static_cast<float>(f.block.*MEMBER));
}

constexpr Choice FORMULA_NAMES[] = {
    {"UG-27(c)(1)", TARVANE_UG_27_C_1},      {"App. 1-1(a)(1)", TARVANE_APP_1_1_A_1},
    {"App. 1-2(a)(1)", TARVANE_APP_1_2_A_1}, {"UG-27(d)", TARVANE_UG_27_D},
    {"App. 1-1(a)(2)", TARVANE_APP_1_1_A_2}, {"App. 1-3", TARVANE_APP_1_3},
    {"UG-32(d)", TARVANE_UG_32_D},           {"App. 1-4(c)", TARVANE_APP_1_4_C},
    {"App. 1-4(d)", TARVANE_APP_1_4_D},      {"UG-32(g)", TARVANE_UG_32_G},
    {"App. 1-4(e)", TARVANE_APP_1_4_E},      {"UG-34(c)(2)", TARVANE_UG_34_C_2},
    {"UG-34(c)(3)", TARVANE_UG_34_C_3},      {"AD-204", TARVANE_AD_204}};
constexpr Choice GOVERNS[] = {{"formula", TARVANE_BY_FORMULA},
                              {"knuckle", TARVANE_BY_KNUCKLE},
                              {"App. 1-4(f)", TARVANE_BY_APP_1_4F},
                              {"least thickness", TARVANE_BY_LEAST_THICKNESS},
                              {"least thickness of the service", TARVANE_BY_SERVICE}};

using enum Quantity;

// Those of the closing table in their order.
constexpr ResultRow<ShellFound> ROWS[] = {
    {{"P", "P", pressure, "Design pressure", SHELL_TABLE}, key<N::P>},
    {{"t", "t", thickness, "Given thickness", SHELL_TABLE}, key<N::t>},
    {{"t_governing", "tg", thickness, "Required thickness", SHELL_TABLE, "without allowances"},
     of<&B::t_governing>},
    {{"t_req", "treq", thickness, "The same with allowances", SHELL_TABLE}, of<&B::t_required>},
    {{"mawp", "MAWP", pressure, "Maximum allowable working pressure", SHELL_TABLE}, of<&B::mawp>},
    {{"map_nc", "MAPnc", pressure, "The same, new and cold", SHELL_TABLE}, of<&B::map_nc>},
    {{"S", "S", stress, "Allowable stress", SHELL_TABLE}, key<N::S>},
    {{"stress", "Sact", stress, "Actual stress", SHELL_TABLE}, of<&B::stress>},
    {{"ci", "c", thickness, "Corrosion allowance", SHELL_TABLE}, key<N::ci>},
    {{"failure_ca", "", thickness, "Corrosion allowance at failure", SHELL_TABLE},
     [](F f) {
         if (f.block.formula == TARVANE_AD_204) return Got::none(OLDER);
         const bool knuckle = f.fail_ca_knuckle >= 0.0f && f.fail_ca_knuckle < f.fail_ca;
         return value(f, knuckle ? f.fail_ca_knuckle : f.fail_ca);
     }},
    // ---- further ones
    {RATED_PRESSURE, [](F f) { return f.rated_pressure; }},
    {{"formula", "", choice, "Formula", "", "", FORMULA_NAMES}, chosen<&B::formula>},
    {{"tc", "tc", thickness, "Thickness less allowances"}, of<&B::tc>},
    {{"t_req_raw", "", thickness, "Required thickness before the minima"}, of<&B::t_req_raw>},
    {{"t_least", "", thickness, "Least thickness, UG-16(b)"}, of<&B::t_least>},
    {{"t_by", "", choice, "What governs the required thickness", "", "", GOVERNS},
     chosen<&B::t_by>},
    {{"mawp_by", "", choice, "What limits the MAWP", "", "", GOVERNS}, chosen<&B::mawp_by>},
    {{"map_nc_by", "", choice, "What limits the MAPnc", "", "", GOVERNS}, chosen<&B::map_nc_by>},
    {{"mawp_formula", "", pressure, "MAWP by the formula alone"}, of<&B::mawp_formula>},
    {{"mawp_knuckle", "", pressure, "MAWP by the knuckle of a cone"}, of<&B::mawp_knuckle>},
    {{"stress_knuckle", "", stress, "Actual stress of the knuckle of a cone"},
     of<&B::stress_knuckle>},
    {{"t_14f", "", thickness, "Required thickness by Appendix 1-4(f)", "", "without allowances"},
     [](F f) {
         return f.block.t_14f == 0.0f ? Got::none(f.stopped ? STOPPED : NOT_RUN)
                                      : value(f, f.block.t_14f);
     }},
    {{"mawp_14f", "", pressure, "MAWP by Appendix 1-4(f)"}, of<&B::mawp_14f>},
    {{"map_nc_14f", "", pressure, "The same, new and cold"}, of<&B::map_nc_14f>},
    {{"t_crown", "", thickness, "Required thickness of the crown, AD-204"}, of<&B::t_crown>},
    {{"t_knuckle", "", thickness, "Required thickness of the knuckle, AD-204"}, of<&B::t_knuckle>},
    {{"crown_radius", "L", diameter, "Crown radius, or the equivalent one"},
     [](F f) {
         return f.block.crown_radius == 0.0f ? Got::none(NOT_RUN) : of<&B::crown_radius>(f);
     }},
    {{"ratio", "", number, "Corroded thickness over crown radius"}, of<&B::ratio>},
    {{"attachment_factor", "C", number, "Attachment factor of a flat head, with openings"},
     of<&B::attachment_factor>},
    {{"spacing_factor", "F", number, "Factor on the thickness for openings"},
     of<&B::spacing_factor>},
    {{"shape_factor", "Z", number, "Factor of a head with two spans"}, of<&B::shape_factor>},
    {{"span", "d", diameter, "Span of a flat head"}, of<&B::span>},
    {{"strain", "", number, "Forming strain, per cent"},
     [](F f) { return f.strain > 0.0f ? value(f, f.strain) : Got::none("no limit of it"); }},
};

constexpr auto OWN_FIELDS = fields_of(ROWS);

// Under external pressure the corrosion at failure has a name of its own, what both have in common has one
// place.
constexpr std::string_view FAILURE = "failure_ca", EXTERNAL_FAILURE = "failure_ca_external";

bool is_shared(const ResultField& field) { return field.name == "t" || field.name == "ci"; }

std::vector<ResultField> all_fields() {
    std::vector<ResultField> fields(OWN_FIELDS.begin(), OWN_FIELDS.end());
    for (ResultField field : external_result_fields()) {
        if (is_shared(field)) continue;
        if (field.name == FAILURE) {
            field.name = EXTERNAL_FAILURE;
            field.label = "Corrosion allowance at failure, external pressure";
        } else if (field.label == "Required thickness with allowances") {
            field.label = "Required thickness, external, with allowances";
        }
        field.table = {};
        fields.push_back(field);
    }
    return fields;
}

} // namespace

std::string_view formula_name(int formula) { return choice_name(FORMULA_NAMES, formula); }

std::span<const ResultField> shell_result_fields() {
    static const std::vector<ResultField> fields = all_fields();
    return fields;
}

std::vector<Result> shell_results(const ShellFound& found) {
    const std::span<const ResultField> fields = shell_result_fields();
    std::vector<Result> results = results_of(ROWS, OWN_FIELDS, found);
    for (std::size_t i = 0; i < results.size(); ++i)
        results[i].field = &fields[i];
    std::vector<Result> external;
    if (found.external != nullptr) external = external_results(*found.external);
    std::size_t place = results.size(), from = 0;
    for (const ResultField& field : external_result_fields()) {
        const std::size_t at = from++;
        if (is_shared(field)) continue;
        results.push_back(external.empty()
                              ? Result{&fields[place], std::nullopt, "no external pressure"}
                              : Result{&fields[place], external[at].value, external[at].why});
        ++place;
    }
    return results;
}

} // namespace tarvane::vessel
