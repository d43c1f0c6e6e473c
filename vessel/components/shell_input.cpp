#include "components/shell_input.h"

#include "components/external_results.h"
#include "components/key_checks.h"
#include "components/material_keys.h"
#include "components/request.h"
#include "components/shell_results.h"
#include "components/shell_session.h"
#include "components/waivers.h"
#include "fields/shell_checks.h"
#include "fields/shell_results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <utility>

namespace tarvane::vessel {

using N = ShellNumber;

namespace {

constexpr std::size_t MOST_SHELLS = 500;
constexpr int SERVICE_AIR_STEAM_WATER = 1;

} // namespace

const ElementKind SHELL_KIND{
    .table = "shell",
    .plural = "shells",
    .keys = shell_keys(),
    .most = MOST_SHELLS,
    .single = false,
    .make =
        [] {
            auto shell = std::make_unique<ShellInput>();
            shell->kind = &SHELL_KIND;
            return std::unique_ptr<Element>(std::move(shell));
        },
    .tables = shell_tables,
    .results = shell_result_fields(),
    .checks = shell_check_fields(),
};

// ---- reading ---------------------------------------------------------------------------------------

bool ShellInput::formed() const {
    return shape() == TARVANE_ELLIPTICAL_HEAD || shape() == TARVANE_TORISPHERICAL_HEAD;
}

bool ShellInput::thin() const { return formed() && look_at(*this).thin != 0; }

bool ShellInput::needs_modulus() const {
    if (!formed() || older_division_2()) return formed();
    const TARVANE_SHELL_RESULTS found = look_at(*this);
    return found.thin != 0 && (found.lacks_14f & ~TARVANE_LACKS_MODULI) == 0;
}

// ---- material --------------------------------------------------------------------------------------

namespace {

// Table Y-1; 0.0 where it has none.
float yield_at(const Material& material, float temperature) {
    constexpr float PSI = 1000.0f;
    select_materials(material.selection);
    float yield = 0.0f;
    READ_YIELD_STRESS(material.name.data(), static_cast<std::int32_t>(material.name.size()),
                      &material.record.tensile, &temperature, &yield);
    return yield * PSI;
}

} // namespace

// A key given in the file comes before the value of the record.
void ShellInput::take_material(Reading& reading) {
    MaterialKeys keys{.name_key = "material",
                      .reference_key = "material_reference",
                      .name = material(),
                      .reference = whole_setting(N::material_reference),
                      .selection = {.code = whole_setting(N::code)}};
    if (reading.sound("t")) keys.thickness = setting(N::t);
    const Material* record = find_material(reading, keys, {"S", "Sa"});
    if (record == nullptr) return;
    const auto T = reading.sound("T") ? std::optional(setting(N::T)) : std::nullopt;
    if (const auto stress = supply_stress(reading, keys, *record, "S", T))
        put_setting(N::S, *stress);
    if (const auto stress = supply_stress(reading, keys, *record, "Sa", AMBIENT))
        put_setting(N::Sa, *stress);
    if (!reading.given("material_class") && record->modulus > 0) {
        put_setting(N::material_class, static_cast<float>(record->modulus));
        reading.comes_from("material_class", origin_of(*record));
    }
    if (!reading.given("material_reference")) {
        put_setting(N::material_reference, static_cast<float>(record->reference));
        reading.comes_from("material_reference", origin_of(*record));
    }
    if (!formed()) return;
    if (!reading.given("Sy") && T) {
        reading.rely_on(YIELD_FILE);
        const float yield = yield_at(*record, *T);
        put_setting(N::Sy, yield);
        if (yield > 0.0f) {
            reading.comes_from("Sy", origin_of(*record, *T, reading.units));
            note_cold(reading, *record, "YIELDSTR.BIN", *T);
            reading.use("YIELDSTR.BIN", record->name);
        }
    }
    if (reading.given("Sy_cold") || !(record->yield > 0.0f)) return;
    put_setting(N::Sy_cold, record->yield);
    reading.comes_from("Sy_cold", origin_of(*record));
}

// ---- checks ----------------------------------------------------------------------------------------

namespace {

class ShellKeyChecks : KeyChecks {
  public:
    ShellKeyChecks(const ShellInput& element, Reading& into)
        : KeyChecks(shell_keys(), element.settings, into), shell(element) {}

    // Those of the file, before a material fills them.
    void stresses() { above_zero({"S", "Sa"}); }

    void all() {
        above_zero({"P", "t", "D", "Do", "E", "tangent_length"});
        at_least_zero(
            {"ci", "Ut", "D2", "straight", "d1", "d2", "edge1", "edge2", "pitch", "strain_limit"});
        if (value("E") > 1.0f) fault("E", "a joint efficiency up to 1 is expected");
        either("D", "Do");
        wall();
        code();
        switch (shell.shape()) {
        case TARVANE_ELLIPTICAL_HEAD:
            return ellipse();
        case TARVANE_TORISPHERICAL_HEAD:
            return torisphere();
        case TARVANE_CONE:
            return cone();
        case TARVANE_FLAT_HEAD:
            return flat();
        default:
            return;
        }
    }

  private:
    const ShellInput& shell;

    // A wall must be left when the allowances are taken off, and room inside it.
    void wall() {
        const float t = value("t");
        if (!sound("t") || !(t > 0.0f)) return;
        if (!((t - value("ci")) - value("Ut") > 0.0f))
            fault("t", "nothing is left of it after the corrosion allowance and the tolerance");
        const bool round = shell.shape() != TARVANE_FLAT_HEAD;
        if (round && sound("Do") && value("Do") > 0.0f && !(value("Do") > 2.0f * t))
            fault("Do", "it must be above twice the thickness t");
    }

    void code() {
        const bool older = shell.whole_setting(N::edition) == SHELL_EDITION_OLDER;
        if (shell.older_division_2() && !shell.formed()) {
            fault("code", "VIII-2 is for elliptical and torispherical heads only, by its older "
                          "edition; VIII-1 is expected");
        } else if (shell.older_division_2() && !older) {
            fault("edition", "shells by VIII-2 are calculated by its older edition only; \"older\" "
                             "is expected");
        } else if (older && !shell.older_division_2()) {
            fault("edition", "\"older\" is an edition of code VIII-2 only");
        }
    }

    void ellipse() {
        above_zero({"h"});
        either("k", "h");
        if (!(value("k") >= 1.0f))
            fault(given("h") ? "h" : "k", "an aspect ratio D/2h of at least 1 is expected");
    }

    void torisphere() {
        above_zero({"L", "r"});
        if (sound("L") && sound("r") && value("r") > value("L"))
            fault("r", "the knuckle radius must not be above the crown radius L");
        if (sound("r") && sound("D") && value("r") > value("D") / 2.0f)
            fault("r", "the knuckle radius must not be above D/2");
        if (sound("r") && sound("Do") && sound("t") && value("r") > value("Do") / 2.0f - value("t"))
            fault("r", "the knuckle radius must not be above Do/2 - t");
    }

    void cone() {
        if (sound("alpha") && !(value("alpha") > 0.0f && value("alpha") < 90.0f))
            fault("alpha", "an angle above 0 and below 90 degrees is expected");
        at_least_zero({"r", "tk"});
        if (given("tk") && sound("tk") && !((value("tk") - value("ci")) - value("Ut") > 0.0f)) {
            fault("tk", "nothing is left of it after the corrosion allowance and the tolerance");
        }
    }

    void flat() {
        above_zero({"C"});
        if (!sound("d1") || !sound("d2") || !sound("pitch")) return;
        if (value("d2") > 0.0f && !(value("pitch") > (value("d1") + value("d2")) / 2.0f))
            fault("pitch", "the openings overlap; it must be above the mean of d1 and d2");
    }
};

} // namespace

void ShellInput::complete(Reading& reading) {
    ShellKeyChecks key_checks(*this, reading);
    key_checks.stresses();
    if (waives("head_1_4f")) {
        put_setting(N::skip_1_4f, 1.0f);
        reading.comes_from("skip_1_4f", std::string(WAIVE));
    }
    take_material(reading);
    if (!(setting(N::Sy_cold) > 0.0f)) {
        put_setting(N::Sy_cold, setting(N::Sy));
        if (setting(N::Sy) > 0.0f) reading.comes_from("Sy_cold", "Sy");
    }
    const float h = setting(N::h);
    if (h > 0.0f && !reading.given("k")) {
        reading.comes_from("k", "h");
        const float inside = outside() ? diameter() - 2.0f * setting(N::t) : diameter();
        if (inside > 0.0f) put_setting(N::k, inside / (2.0f * h));
    }
    if (needs_modulus())
        reading.use("ElastAlp07.txt",
                    "modulus " + std::to_string(whole_setting(N::material_class)));
    if (whole_setting(N::service) == SERVICE_AIR_STEAM_WATER && !material().empty())
        reading.rely_on(UCS_23_FILE);
    key_checks.all();
    if (has(N::external)) make_external(reading);
}

// Its keys have the names of an [[external]], except the pressure.
void ShellInput::make_external(Reading& reading) {
    if (shape() == TARVANE_FLAT_HEAD) {
        // The external pressure of the vessel is held against its MAWP, see checks.
        if (!reading.own("external") && !reading.own("P_external")) return;
        reading.fault(
            reading.given("external") ? "external" : "P_external",
            "a flat head is calculated for external pressure by UG-34, as for internal pressure");
        return;
    }
    if (reading.sound("P_external") && !(setting(N::P_external) >= 0.0f))
        reading.fault("P_external", "it must not be below 0");
    using X = ExternalNumber;
    constexpr std::pair<X, N> SHARED[] = {{X::kind, N::kind},
                                          {X::code, N::code},
                                          {X::edition, N::edition},
                                          {X::method, N::method},
                                          {X::table_g, N::table_g},
                                          {X::T, N::T},
                                          {X::ci, N::ci},
                                          {X::Ut, N::Ut},
                                          {X::service, N::service},
                                          {X::S, N::S},
                                          {X::Sy, N::Sy},
                                          {X::material_class, N::material_class},
                                          {X::material_reference, N::material_reference},
                                          {X::D, N::D},
                                          {X::Do, N::Do},
                                          {X::t, N::t},
                                          {X::length, N::length},
                                          {X::k, N::k},
                                          {X::h, N::h},
                                          {X::corroded_K, N::corroded_K},
                                          {X::L, N::L},
                                          {X::r, N::r},
                                          {X::skip_1_4f, N::skip_1_4f},
                                          {X::temp_limit, N::temp_limit},
                                          {X::alpha, N::alpha},
                                          {X::Dsmall, N::Dsmall},
                                          {X::cone_length, N::cone_length}};
    // It looks its waivers up by the keys of this kind.
    static_assert(static_cast<int>(ExternalText::waive) == static_cast<int>(ShellText::waive));
    ExternalInput& e = external.emplace();
    e.kind = kind;
    e.line = line;
    e.number = number;
    for (const auto& [theirs, ours] : SHARED)
        e.put_setting(theirs, setting(ours));
    e.put_setting(X::P, std::max(setting(N::P_external), 0.0f));
    e.texts = {description(), material(), text_setting(ShellText::chart),
               text_setting(ShellText::waive)};
    e.complete(reading);
}

bool ShellInput::rule(std::string_view id, const Reading& reading) const {
    if (id == "knuckle")
        return shape() == TARVANE_TORISPHERICAL_HEAD ||
               (shape() == TARVANE_CONE && reading.given("tk"));
    if (id == "second_opening") return setting(N::d2) > 0.0f;
    return external && external->rule(id, reading);
}

// ---- running ---------------------------------------------------------------------------------------

std::unique_ptr<Outcome> ShellInput::calculate(const Request& file) const {
    auto outcome = std::make_unique<ShellOutcome>(run_shell(*this, file));
    if (external && !outcome->stopped) {
        ExternalOutcome& other = outcome->external;
        other = run_external(*external, file);
        outcome->report += other.report;
        outcome->messages.insert(outcome->messages.end(), other.messages.begin(),
                                 other.messages.end());
    }
    return outcome;
}

std::vector<Result> ShellInput::results(const Outcome& outcome) const {
    const auto& own = static_cast<const ShellOutcome&>(outcome);
    ShellFound found{.given = *this,
                     .block = own.found,
                     .fail_ca = own.fail_ca,
                     .fail_ca_knuckle = own.fail_ca_knuckle,
                     .strain = own.strain,
                     .stopped = own.stopped,
                     .external = nullptr,
                     .rated_pressure = rated_pressure_of(own.rated_pressure)};
    if (!external) return shell_results(found);
    const ExternalFound other = found_of(*external, own.external);
    found.external = &other;
    return shell_results(found);
}

Checks ShellInput::find_checks(const Outcome& outcome, const UnitSystem& units) const {
    const auto& own = static_cast<const ShellOutcome&>(outcome);
    Checks checks = shell_checks(*this, own, units);
    if (!own.stopped) checks.push_back(temperature_check(METAL_TEMPERATURE));
    add_unmade_checks(checks);
    if (external && !own.stopped) {
        for (Check& check : external_checks(*external, own.external, units)) {
            // Limits of the form apply to both.
            const bool there = std::any_of(checks.begin(), checks.end(), [&](const Check& first) {
                return first.field().id == check.field().id;
            });
            if (!there) checks.push_back(std::move(check));
        }
    }
    // A flat head holds external pressure as it does internal pressure, UG-34.
    const float P_external = setting(N::P_external);
    if (shape() == TARVANE_FLAT_HEAD && P_external > 0.0f && !own.stopped) {
        Check check = Check::compared(field_of(SHELL_CHECKS, "mawp"), own.found.mawp, P_external)
                          .in_case("external");
        const std::string_view formula = formula_name(own.found.formula);
        if (!formula.empty()) check.under(formula);
        checks.push_back(std::move(check));
    }
    for (Check& check : checks)
        check.listed_in(shell_check_fields());
    return checks;
}

// Of the internal pressure: an external one of its own, which stays, has its MAEP.
RatingBasis ShellInput::rating_basis(const Outcome& outcome) const {
    const auto& own = static_cast<const ShellOutcome&>(outcome);
    RatingBasis basis{.judged = nullptr, .P = setting(N::P)};
    if (own.stopped) {
        basis.why = "no calculation was made";
        return basis;
    }
    if (own.found.mawp != TARVANE_NO_VALUE) basis.estimate = own.found.mawp;
    auto shell = std::make_unique<ShellInput>(*this);
    shell->external.reset();
    basis.judged = std::move(shell);
    return basis;
}

std::optional<ChartPoint> ShellInput::chart_point(const Outcome& outcome) const {
    if (!external) return std::nullopt;
    return external->chart_point(static_cast<const ShellOutcome&>(outcome).external);
}

} // namespace tarvane::vessel
