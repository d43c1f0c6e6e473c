#include "components/mdmt_input.h"

#include "components/key_checks.h"
#include "components/material_keys.h"
#include "components/mdmt_results.h"
#include "components/mdmt_session.h"
#include "components/request.h"

namespace tarvane::vessel {

using N = MdmtNumber;

namespace {

constexpr std::size_t MOST_ELEMENTS = 500;
constexpr float THINNEST_OF_TABLE = 0.25f; // in.
constexpr float UCS_66C_METRIC = -20.2f;   // F: -29 C

} // namespace

const ElementKind MDMT_KIND{
    .table = "mdmt",
    .plural = "elements with a metal temperature",
    .keys = mdmt_keys(),
    .most = MOST_ELEMENTS,
    .single = true,
    .make =
        [] {
            auto element = std::make_unique<MdmtInput>();
            element->kind = &MDMT_KIND;
            return std::unique_ptr<Element>(std::move(element));
        },
    .tables = mdmt_tables,
    .results = mdmt_result_fields(),
    .checks = MDMT_CHECKS,
};

// ---- reading ---------------------------------------------------------------------------------------

// A key given in the file comes before the value of the record.
void MdmtInput::take_material(Reading& reading) {
    const MaterialKeys keys{.name_key = "material",
                            .reference_key = "material_reference",
                            .name = material(),
                            .reference = whole_setting(N::material_reference),
                            .selection = {.code = code(), .d2_class = whole_setting(N::d2_class)}};
    const bool tested = reading.sound("curve") && impact_tested();
    // The temperature of an impact tested material comes from its record: it must be there.
    const Material* found = tested         ? find_material(reading, keys, {"material_reference"})
                            : division_2() ? find_material(reading, keys, {"curve", "Sy"})
                                           : find_material(reading, keys, {"curve"});
    if (found == nullptr) return;
    texts[static_cast<std::size_t>(MdmtText::material)] = found->name;
    put_setting(N::material_reference, static_cast<float>(found->reference));
    reading.comes_from("material_reference", origin_of(*found));
    test_of_record = found->impact_temperature < 1;
    if (!reading.given("Sy") && found->yield > 0.0f) {
        put_setting(N::Sy, found->yield);
        reading.supply("Sy", origin_of(*found));
    }
    if (!reading.given("curve")) {
        const int curve = has(N::normalized) ? found->curve_normalized : found->curve;
        if (curve < TARVANE_CURVE_A || curve > TARVANE_CURVE_EXEMPT) {
            reading.fault_at("material", "curve",
                             found->name + " has no curve in " + keys.selection.file());
        }
        put_setting(N::curve, static_cast<float>(curve));
        reading.supply("curve", origin_of(*found));
    }
    reading.use(*found);
}

namespace {

void check_rules(const MdmtInput& element, const KeyChecks& checks) {
    if (element.edition() == MDMT_EDITION_OLDER && element.code() != TARVANE_ASME_VIII_2)
        checks.fault("edition", "\"older\" is an edition of code VIII-2 only");
    if (element.edition() == MDMT_EDITION_A98 && element.code() != TARVANE_ASME_VIII_1)
        checks.fault("edition", "\"A98\" is an edition of code VIII-1 only");
    if (!element.impact_tested()) return;
    if (element.division_2()) {
        checks.fault("curve", "VIII-2, 3.11 has no impact tested materials; \"A\" to \"D\" or "
                              "\"exempt\" is expected");
    } else if (element.edition() == MDMT_EDITION_A98) {
        checks.fault(
            "edition",
            "the impact test temperature would be in the material file of \"A98\"; there is none");
    } else if (element.material().empty()) {
        checks.fault(
            "material",
            "an impact tested material needs its name: its record has the temperature of the test");
    }
}

} // namespace

void MdmtInput::complete(Reading& reading) {
    asked = reading.sound("MDMT");
    if (reading.units.metric()) ucs_66c = UCS_66C_METRIC;
    user_temperature = reading.sound("impact_temperature");
    take_material(reading);

    // The table begins at 0.25 in., and the engine has no temperature below it.
    if (has(N::curve_tables) && !reading.given("curve_tables") && reading.sound("tg") &&
        setting(N::tg) < THINNEST_OF_TABLE) {
        put_setting(N::curve_tables, 0.0f);
        reading.comes_from("curve_tables", "tg below the table");
    }

    const KeyChecks checks(mdmt_keys(), settings, reading);
    checks.above_zero({"tg", "tg_sr", "tr", "E", "Sy"});
    checks.at_least_zero({"ci", "ce", "ratio", "pad_ratio", "pad_reduction"});
    checks.either("tr", "ratio");
    if (setting(N::E) > 1.0f) checks.fault("E", "a joint efficiency up to 1 is expected");
    for (const std::string_view key : {"tg", "tg_sr"}) {
        const bool positive = checks.sound(key) && checks.value(key) > 0.0f;
        if (positive && !((checks.value(key) - setting(N::ci)) - setting(N::ce) > 0.0f))
            checks.fault(key, "nothing is left of it after the corrosion allowances");
    }
    check_rules(*this, checks);
}

bool MdmtInput::rule(std::string_view id, const Reading& reading) const {
    if (division_2() || id == "division_2") return division_2();
    return impact_tested() && !test_of_record && !user_temperature && reading.sound("material");
}

// ---- running ---------------------------------------------------------------------------------------

std::unique_ptr<Outcome> MdmtInput::calculate(const Request& file) const {
    return std::make_unique<MdmtOutcome>(run_mdmt(*this, file));
}

std::vector<Result> MdmtInput::results(const Outcome& outcome) const {
    return mdmt_results(found_of(*this, static_cast<const MdmtOutcome&>(outcome)));
}

Checks MdmtInput::find_checks(const Outcome& outcome, const UnitSystem& units) const {
    return mdmt_checks(*this, static_cast<const MdmtOutcome&>(outcome), units);
}

} // namespace tarvane::vessel
