#include "components/shell_results.h"

#include "components/external_results.h"
#include "components/openings.h"
#include "document/results.h"
#include "fields/shell_checks.h"
#include "fields/shell_results.h"
#include "tarvane/tarvane.h"

#include <cmath>
#include <vector>

namespace tarvane::vessel {

using N = ShellNumber;

namespace {

consteval const CheckField& field(std::string_view id) { return field_of(SHELL_CHECKS, id); }

bool has_thickness(const ShellOutcome& outcome) {
    return outcome.found.t_required > 0.0f && std::isfinite(outcome.found.t_required);
}

Check thickness_check(const ShellInput& shell, const ShellOutcome& outcome) {
    const CheckField& row = field("required_thickness");
    if (!has_thickness(outcome))
        return Check::found(row, false, "no thickness is enough for the design pressure");
    return Check::compared(row, outcome.found.t_required, shell.setting(N::t));
}

Check pressure_check(const ShellInput& shell, const ShellOutcome& outcome) {
    return Check::compared(field("mawp"), outcome.found.mawp, shell.setting(N::P));
}

} // namespace

bool is_short_of_thickness(const ShellInput& shell, const ShellOutcome& outcome) {
    return thickness_check(shell, outcome).falls_short();
}

bool is_short_of_pressure(const ShellInput& shell, const ShellOutcome& outcome) {
    return pressure_check(shell, outcome).falls_short();
}

Checks form_checks(const ShellInput& shell, const ShellOutcome& outcome) {
    constexpr float LEAST_KNUCKLE = 0.06f; // of the outside diameter of the skirt
    constexpr float MOST_ANGLE = 30.0f;    // half apex angle without a knuckle, degrees
    Checks checks;
    if (shell.whole_setting(N::code) != TARVANE_ASME_VIII_1) return checks;
    const auto row = [&](const CheckField& limit, float demand, float allowed, const char* words) {
        Check check = Check::compared(limit, demand, allowed);
        if (check.falls_short()) check.because(words);
        checks.push_back(std::move(check));
    };
    const float t = shell.setting(N::t), r = shell.setting(N::r), D = shell.diameter();
    const float Do = shell.outside() ? D : D + 2.0f * t;
    if (shell.shape() == TARVANE_TORISPHERICAL_HEAD) {
        if (D > 0.0f) { // a chart does not ask for it
            row(field("crown_radius"), shell.setting(N::L), Do,
                "The crown radius L is above the outside diameter, UG-32 (j).");
            row(field("knuckle_radius"), r, LEAST_KNUCKLE * Do,
                "The knuckle radius r is below 6 % of the outside diameter, UG-32 (j).");
        }
        row(field("knuckle_thickness"), r, 3.0f * t,
            "The knuckle radius r is below three times the thickness, UG-32 (j).");
    } else if (shell.shape() == TARVANE_CONE && outcome.found.knuckle != 0) {
        row(field("cone_knuckle_radius"), r, LEAST_KNUCKLE * Do,
            "The knuckle radius r is below 6 % of the outside diameter, UG-32 (h).");
        row(field("cone_knuckle_thickness"), r, 3.0f * shell.setting(N::tk),
            "The knuckle radius r is below three times its thickness, UG-32 (h).");
    } else if (shell.shape() == TARVANE_CONE) {
        row(field("cone_angle"), shell.setting(N::alpha), MOST_ANGLE,
            "Half apex angle above 30 degrees without a knuckle, see UG-32 (g) and App. 1-5 (g).");
    }
    return checks;
}

float thickness_14f(const ShellInput& head, const TARVANE_SHELL_RESULTS& found) {
    return found.t_14f + head.setting(N::ci) + head.setting(N::Ut);
}

void check_very_thin(const ShellOutcome& outcome, Checks& checks) {
    constexpr float LEAST = 0.0005f; // of the crown radius
    const TARVANE_SHELL_RESULTS& found = outcome.found;
    if (found.thin == 0 || found.evaluated_14f == 0 || found.ratio == TARVANE_NO_VALUE) return;
    Check check = Check::compared(VERY_THIN_HEAD, found.ratio, LEAST);
    if (check.falls_short())
        check.because(
            "the head is thinner than 0.0005 L, outside the rules of Appendix 1-4(f), U-2(g)");
    checks.push_back(std::move(check));
}

namespace {

void check_thin_head(const ShellInput& shell, const ShellOutcome& outcome, Checks& checks) {
    const CheckField& row = field("head_1_4f");
    const TARVANE_SHELL_RESULTS& found = outcome.found;
    if (found.t_status_14f == TARVANE_HEAD_FAILED) {
        checks.push_back(
            Check::found(row, false, "Appendix 1-4(f) has no solution for this geometry"));
    } else if (found.thin != 0 && found.evaluated_14f == 0) {
        const bool skipped = shell.has(N::skip_1_4f);
        const Check check = Check::not_made(
            row,
            std::string("thinner than 0.002 L, but Appendix 1-4(f) was not evaluated; it ") +
                (skipped ? "was left out" : "needs Sy and the elastic modulus of material_class"));
        checks.push_back(skipped ? check.waived() : check);
    } else if (found.thin != 0) {
        checks.push_back(Check::compared(row, thickness_14f(shell, found), shell.setting(N::t)));
    }
}

void check_strain(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units,
                  Checks& checks) {
    if (!(outcome.strain > 0.0f)) return;
    const CheckField& row = field("forming_strain");
    const float limit = shell.setting(N::strain_limit);
    const std::string strain = number_text(outcome.strain, 2, units) + " %";
    if (!(limit > 0.0f)) {
        checks.push_back(
            Check::not_asked(row, "strain_limit is not given; the strain is " + strain));
        return;
    }
    Check check = Check::compared(row, outcome.strain, limit);
    if (check.falls_short()) {
        check.because("the forming strain " + strain + " is above its limit " +
                      number_text(limit, 2, units) + " %: heat treatment after forming, " +
                      std::string(row.paragraph));
    }
    checks.push_back(std::move(check));
}

} // namespace

Checks shell_checks(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units) {
    Checks checks;
    if (outcome.stopped) {
        checks.push_back(Check::not_made(CALCULATION, stop_reason(outcome)));
        return checks;
    }
    checks.push_back(thickness_check(shell, outcome));
    if (checks.back().falls_short() && has_thickness(outcome)) {
        checks.back().because("the required thickness " +
                              shown(outcome.found.t_required, Quantity::thickness, units) +
                              " is above the given " +
                              shown(shell.setting(N::t), Quantity::thickness, units));
    }
    checks.push_back(pressure_check(shell, outcome));
    if (checks.back().falls_short()) {
        checks.back().because("the MAWP " + shown(outcome.found.mawp, Quantity::pressure, units) +
                              " is below the design pressure " +
                              shown(shell.setting(N::P), Quantity::pressure, units));
    }
    for (Check& check : form_checks(shell, outcome))
        checks.push_back(std::move(check));
    check_thin_head(shell, outcome, checks);
    check_very_thin(outcome, checks);
    if (outcome.found.openings != 0) check_openings(faults_of(outcome.found), units, checks);
    check_strain(shell, outcome, units, checks);
    const std::string_view formula = formula_name(outcome.found.formula);
    for (Check& check : checks) {
        const std::string_view id = check.field().id;
        if (!formula.empty() && (id == "required_thickness" || id == "mawp")) check.under(formula);
    }
    return checks;
}

std::string shell_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<Calculated> external;
    for (const Calculated& c : elements) {
        const auto& shell = static_cast<const ShellInput&>(*c.element);
        if (shell.external)
            external.push_back(
                {&*shell.external, &static_cast<const ShellOutcome*>(c.outcome)->external});
    }
    return closing_table(SHELL_TABLE, elements, units) +
           closing_table(EXTERNAL_TABLE, external, units);
}

} // namespace tarvane::vessel
