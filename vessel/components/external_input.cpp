#include "components/external_input.h"

#include "catalogue/charts.h"
#include "catalogue/data_folder.h"
#include "components/convex_head.h"
#include "components/external_results.h"
#include "components/external_session.h"
#include "components/functions.h"
#include "components/key_checks.h"
#include "components/material_keys.h"
#include "components/request.h"
#include "components/waivers.h"
#include "fields/shell_checks.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

using N = ExternalNumber;

namespace {

constexpr std::size_t MOST_ELEMENTS = 500;
constexpr float STEEPEST_CONE = 60.0f; // degrees
constexpr float DEGREE = 3.1415927f / 180.0f;
constexpr float LEAST_PRESSURE = 0.001f; // from here on a thickness is looked for

} // namespace

const ElementKind EXTERNAL_KIND{
    .table = "external",
    .plural = "elements under external pressure",
    .keys = external_keys(),
    .most = MOST_ELEMENTS,
    .single = false,
    .make =
        [] {
            auto element = std::make_unique<ExternalInput>();
            element->kind = &EXTERNAL_KIND;
            return std::unique_ptr<Element>(std::move(element));
        },
    .tables = external_tables,
    .results = external_result_fields(),
    .checks = EXTERNAL_CHECKS,
};

// ---- reading ---------------------------------------------------------------------------------------

bool ExternalInput::by_stress() const {
    const int method = whole_setting(N::method);
    if (method == METHOD_OF_THE_CODE) return code() == TARVANE_ASME_VIII_2 && !older();
    return method == METHOD_STRESS;
}

bool ExternalInput::flat_cone() const {
    return shape() == TARVANE_CONE && setting(N::alpha) > STEEPEST_CONE;
}

bool ExternalInput::convex_head() const {
    const bool formed = shape() == TARVANE_ELLIPTICAL_HEAD || shape() == TARVANE_TORISPHERICAL_HEAD;
    return formed && code() == TARVANE_ASME_VIII_1 && !by_stress();
}

bool ExternalInput::has_pressure() const { return setting(N::P) > LEAST_PRESSURE; }

namespace {

// A wall must be left when the allowances are taken off, and room inside it.
void check_wall(const KeyChecks& checks) {
    const float t = checks.value("t");
    if (!checks.sound("t") || !(t > 0.0f)) return;
    if (!((t - checks.value("ci")) - checks.value("Ut") > 0.0f))
        checks.fault("t", "nothing is left of it after the corrosion allowance and the tolerance");
    if (checks.sound("Do") && checks.value("Do") > 0.0f && !(checks.value("Do") > 2.0f * t))
        checks.fault("Do", "it must be above twice the thickness t");
}

void check_code(const ExternalInput& element, const KeyChecks& checks) {
    const bool division_2 = element.code() == TARVANE_ASME_VIII_2;
    if (element.older() && !division_2) {
        checks.fault("edition", "\"older\" is an edition of code VIII-2 only");
    } else if (division_2 && !element.older() && element.whole_setting(N::method) == METHOD_CHART) {
        checks.fault("method", "VIII-2 uses the charts in its older edition only; \"stress\" is "
                               "expected");
    }
}

void check_knuckle(const KeyChecks& checks) {
    checks.above_zero({"L", "r"});
    if (!checks.sound("r")) return;
    const float r = checks.value("r");
    if (checks.sound("L") && r > checks.value("L"))
        checks.fault("r", "the knuckle radius must not be above the crown radius L");
    if (checks.sound("D") && r > checks.value("D") / 2.0f)
        checks.fault("r", "the knuckle radius must not be above D/2");
    if (checks.sound("Do") && checks.sound("t") &&
        r > checks.value("Do") / 2.0f - checks.value("t"))
        checks.fault("r", "the knuckle radius must not be above Do/2 - t");
}

void check_shape(const ExternalInput& element, const KeyChecks& checks) {
    switch (element.shape()) {
    case TARVANE_ELLIPTICAL_HEAD:
        checks.above_zero({"h"});
        checks.either("k", "h");
        if (!(element.setting(N::k) >= 1.0f)) {
            checks.fault(checks.given("h") ? "h" : "k",
                         "an aspect ratio D/2h of at least 1 is expected");
        }
        return;
    case TARVANE_TORISPHERICAL_HEAD:
        return check_knuckle(checks);
    case TARVANE_CONE:
        if (checks.sound("alpha") &&
            !(element.setting(N::alpha) > 0.0f && element.setting(N::alpha) < 90.0f)) {
            checks.fault("alpha", "an angle above 0 and below 90 degrees is expected");
        }
        checks.above_zero({"cone_length", "length"});
        checks.at_least_zero({"Dsmall"});
        if (checks.sound("Dsmall") && checks.sound(element.outside() ? "Do" : "D") &&
            element.setting(N::Dsmall) > element.diameter()) {
            checks.fault("Dsmall", "it must not be above the diameter of the large end");
        }
        return;
    default:
        return checks.above_zero({"length"});
    }
}

// Equivalent length of a cone, UG-33(f): half its axial length, times 1 + Ds/DL of the outside
// diameters.
float cone_equivalent_length(const ExternalInput& cone) {
    const float wall =
        2.0f * (cone.setting(N::t) - cone.setting(N::Ut)) / cos(cone.setting(N::alpha) * DEGREE);
    const float large = cone.outside() ? cone.diameter() : cone.diameter() + wall;
    if (!(large > 0.0f)) return 0.0f;
    return cone.setting(N::cone_length) / 2.0f * (1.0f + (cone.setting(N::Dsmall) + wall) / large);
}

} // namespace

bool ExternalInput::needs_stress() const { return flat_cone() || (long_shell() && !by_stress()); }

bool ExternalInput::needs_yield() const { return by_stress() || vessel::needs_yield(chart()); }

bool ExternalInput::is_thin_head() const { return convex_head() && internal_head(*this).thin(); }

// A key given in the file comes before the value of the record.
void ExternalInput::take_material(Reading& reading) {
    MaterialKeys keys{.name_key = "material",
                      .reference_key = "material_reference",
                      .name = material(),
                      .reference = whole_setting(N::material_reference),
                      .selection = {.code = code()}};
    if (reading.sound("t")) keys.thickness = setting(N::t);
    const Material* found = needs_stress() ? find_material(reading, keys, {"S", "chart"})
                                           : find_material(reading, keys, {"chart"});
    if (found == nullptr) return;
    const auto T = reading.sound("T") ? std::optional(setting(N::T)) : std::nullopt;
    // A head needs none where the material has none.
    const bool for_head = convex_head() && T && found->has_allowable_at(*T);
    if (needs_stress() || for_head) {
        if (const auto stress = supply_stress(reading, keys, *found, "S", T))
            put_setting(N::S, *stress);
    }
    if (!reading.given("material_class") && found->modulus > 0) {
        put_setting(N::material_class, static_cast<float>(found->modulus));
        reading.comes_from("material_class", origin_of(*found));
    }
    if (!reading.given("chart") && !found->chart.empty()) {
        texts[static_cast<std::size_t>(ExternalText::chart)] = found->chart;
        reading.supply("chart", origin_of(*found));
    } else if (!reading.given("chart") && !flat_cone()) {
        reading.fault_at("material", "chart", missing_chart(to_utf8(material()), {}));
        reading.supply("chart"); // that the record does not name
    }
    const bool for_thin_head = is_thin_head() && !(setting(N::Sy) > 0.0f);
    if (T && (needs_yield() || for_thin_head) && !reading.given("Sy")) {
        const float tensile = found->tensile / 1000.0f;
        float yield = 0.0f;
        reading.rely_on(YIELD_FILE);
        select_materials(keys.selection);
        READ_YIELD_STRESS(found->name.data(), static_cast<std::int32_t>(found->name.size()),
                          &tensile, &*T, &yield);
        if (!(yield > 0.0f)) return;
        note_cold(reading, *found, "YIELDSTR.BIN", *T);
        put_setting(N::Sy, yield * 1000.0f);
        reading.supply("Sy", origin_of(*found, *T, reading.units));
        reading.use("YIELDSTR.BIN", found->name);
    }
}

// The engine would replace a chart that the file does not have.
void ExternalInput::find_chart(Reading& reading) {
    if (chart().empty()) {
        if (reading.sound("chart") && !reading.supplied("chart"))
            reading.fault("chart", "the name of a chart is expected, not an empty text");
        return;
    }
    const std::string given = to_utf8(chart());
    if (const auto name = chart_in_file(given)) {
        texts[static_cast<std::size_t>(ExternalText::chart)] = *name;
    } else if (!reading.supplied("chart")) {
        reading.fault("chart", unknown_chart(given));
    } else {
        reading.fault_at("material", "chart", missing_chart(to_utf8(material()), given));
        if (!reading.given("Sy")) reading.supply("Sy"); // of a missing chart
    }
}

// Rows of the text tables that this element will use.
void ExternalInput::note_tables(Reading& reading) const {
    if (flat_cone()) return;
    if (chart_in_file(to_utf8(chart()))) reading.use(std::string(CHART_FILE), chart());
    const bool round = shape() == TARVANE_CYLINDER || shape() == TARVANE_CONE;
    if (round && !by_stress() && setting(N::table_g) != 0.0f) reading.rely_on(TABLE_G_FILE);
    const bool buckling = by_stress() && chart().find("CS") != std::string::npos;
    const bool thin = convex_head() && missing_for_convex_head(*this).empty() &&
                      internal_head(*this).needs_modulus();
    if (!buckling && !thin) return;
    // For a missing table the engine would use another modulus: that of the chart, which is
    // greater, or that of carbon steel.
    const int table = whole_setting(N::material_class);
    const std::vector<int> tables = modulus_tables();
    if (reading.sound("material_class") && !tables.empty() &&
        std::find(tables.begin(), tables.end(), table) == tables.end()) {
        reading.fault("material_class",
                      "no modulus table " + std::to_string(table) + " in ElastAlp07.txt");
    }
    reading.use("ElastAlp07.txt", "modulus " + std::to_string(table));
}

void ExternalInput::complete(Reading& reading) {
    const KeyChecks checks(external_keys(), settings, reading);
    checks.above_zero({"S", "Sy"}); // those of the file, before a material fills them
    if (waives("convex_1_4f")) {
        put_setting(N::skip_1_4f, 1.0f);
        reading.comes_from("skip_1_4f", std::string(WAIVE));
    }
    const float h = setting(N::h);
    if (h > 0.0f && !reading.given("k")) {
        reading.comes_from("k", "h");
        const float inside = outside() ? diameter() - 2.0f * setting(N::t) : diameter();
        if (inside > 0.0f) put_setting(N::k, inside / (2.0f * h));
    }
    take_material(reading);
    find_chart(reading);
    note_tables(reading);
    if (shape() == TARVANE_CONE && !reading.given("length")) {
        equivalent_length = true;
        reading.comes_from("length", "UG-33(f)");
        put_setting(N::length, cone_equivalent_length(*this));
    }
    checks.above_zero({"t", "D", "Do"});
    checks.at_least_zero({"P_external", "ci", "Ut"});
    checks.either("D", "Do");
    check_wall(checks);
    check_code(*this, checks);
    check_shape(*this, checks);
}

bool ExternalInput::rule(std::string_view id, const Reading& reading) const {
    if (reading.given("method") && !reading.sound("method")) return false;
    return id == "tension" ? needs_stress() : needs_yield();
}

// ---- running ---------------------------------------------------------------------------------------

std::unique_ptr<Outcome> ExternalInput::calculate(const Request& file) const {
    return std::make_unique<ExternalOutcome>(run_external(*this, file));
}

std::optional<ChartPoint> ExternalInput::chart_point(const Outcome& outcome) const {
    const auto& o = static_cast<const ExternalOutcome&>(outcome);
    if (o.no_curve || by_stress() || flat_cone()) return std::nullopt;
    return ChartPoint{chart(), setting(N::T), setting(N::Sy), o.factor_a};
}

std::vector<Result> ExternalInput::results(const Outcome& outcome) const {
    return external_results(found_of(*this, static_cast<const ExternalOutcome&>(outcome)));
}

Checks ExternalInput::find_checks(const Outcome& outcome, const UnitSystem& units) const {
    Checks checks = external_checks(*this, static_cast<const ExternalOutcome&>(outcome), units);
    if (!outcome.stopped && !outcome.refused())
        checks.push_back(temperature_check(METAL_TEMPERATURE));
    add_unmade_checks(checks);
    for (Check& check : checks)
        check.listed_in(EXTERNAL_CHECKS);
    return checks;
}

} // namespace tarvane::vessel
