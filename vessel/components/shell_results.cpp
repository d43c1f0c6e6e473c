#include "components/shell_results.h"

#include "components/external_results.h"
#include "components/openings.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <cmath>
#include <vector>

namespace tarvane::vessel {

using N = ShellNumber;

namespace {

constexpr float WITHIN = 0.999f, BEYOND = 1.001f; // what falls short by less does not fail

} // namespace

bool is_short_of_thickness(const ShellInput& shell, const ShellOutcome& outcome) {
    const float t = shell.setting(N::t);
    return !(outcome.found.t_required > 0.0f && outcome.found.t_required <= t * BEYOND);
}

bool is_short_of_pressure(const ShellInput& shell, const ShellOutcome& outcome) {
    return !(outcome.found.mawp >= shell.setting(N::P) * WITHIN);
}

std::vector<std::string_view> form_warnings(const ShellInput& shell, const ShellOutcome& outcome) {
    constexpr float LEAST_KNUCKLE = 0.06f * WITHIN; // of the outside diameter of the skirt
    constexpr float MOST_ANGLE = 30.0f;             // half apex angle without a knuckle, degrees
    std::vector<std::string_view> warnings;
    if (shell.whole_setting(N::code) != TARVANE_ASME_VIII_1) return warnings;
    const float t = shell.setting(N::t), r = shell.setting(N::r), D = shell.diameter();
    const float Do = shell.outside() ? D : D + 2.0f * t;
    if (shell.shape() == TARVANE_TORISPHERICAL_HEAD) {
        const bool known = D > 0.0f; // a chart does not ask for it
        if (known && shell.setting(N::L) > Do * BEYOND)
            warnings.push_back("The crown radius L is above the outside diameter, UG-32 (j).");
        if (known && r < LEAST_KNUCKLE * Do)
            warnings.push_back("The knuckle radius r is below 6 % of the outside diameter, "
                               "UG-32 (j).");
        if (r < 3.0f * t * WITHIN)
            warnings.push_back("The knuckle radius r is below three times the thickness, "
                               "UG-32 (j).");
    } else if (shell.shape() == TARVANE_CONE && outcome.found.knuckle != 0) {
        if (r < LEAST_KNUCKLE * Do)
            warnings.push_back("The knuckle radius r is below 6 % of the outside diameter, "
                               "UG-32 (h).");
        if (r < 3.0f * shell.setting(N::tk) * WITHIN)
            warnings.push_back("The knuckle radius r is below three times its thickness, "
                               "UG-32 (h).");
    } else if (shell.shape() == TARVANE_CONE && shell.setting(N::alpha) > MOST_ANGLE * BEYOND) {
        warnings.push_back("Half apex angle above 30 degrees without a knuckle, see UG-32 (g) and "
                           "App. 1-5 (g).");
    }
    return warnings;
}

Verdict judge_shell(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units) {
    Verdict verdict;
    if (outcome.stopped) {
        verdict.say(Status::stopped,
                    "the engine stopped with code " + std::to_string(outcome.fatal_code));
        return verdict;
    }
    const auto fails = [&](std::string reason) { verdict.say(Status::fails, std::move(reason)); };
    if (is_short_of_thickness(shell, outcome)) {
        const bool none =
            !(outcome.found.t_required > 0.0f && std::isfinite(outcome.found.t_required));
        fails(none ? std::string("no thickness holds the design pressure")
                   : "the required thickness " +
                         shown(outcome.found.t_required, Quantity::thickness, units) +
                         " is above the given " +
                         shown(shell.setting(N::t), Quantity::thickness, units));
    }
    if (is_short_of_pressure(shell, outcome)) {
        fails("the MAWP " + shown(outcome.found.mawp, Quantity::pressure, units) +
              " is below the design pressure " +
              shown(shell.setting(N::P), Quantity::pressure, units));
    }
    if (outcome.found.t_status_14f == TARVANE_HEAD_FAILED)
        fails("Appendix 1-4(f) has no solution for this geometry");
    for (const std::string_view warning : form_warnings(shell, outcome))
        verdict.say(Status::fine, std::string(warning));
    if (outcome.found.thin != 0 && outcome.found.evaluated_14f == 0) {
        verdict.say(shell.has(N::skip_1_4f) ? Status::fine : Status::fails,
                    "thinner than 0.002 L, but Appendix 1-4(f) was not evaluated; it "
                    "needs Sy and the elastic modulus of material_class");
    }
    for (const std::string& fault : opening_faults(faults_of(outcome.found), units))
        fails(fault);
    return verdict;
}

namespace {

struct ShellResult {
    const ShellInput* shell;
    const ShellOutcome* outcome;
};

std::string heading(const ShellResult& r) { return column_heading(*r.shell); }

std::optional<float> number(float value) {
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

} // namespace

std::string shell_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<ShellResult> results;
    for (const Calculated& c : elements) {
        results.push_back({static_cast<const ShellInput*>(c.element),
                           static_cast<const ShellOutcome*>(c.outcome)});
    }
    const Row<ShellResult> rows[] = {
        {"Design pressure                       P", Quantity::pressure,
         [](const ShellResult& r) { return number(r.shell->setting(N::P)); }},
        {"Given thickness                       t", Quantity::thickness,
         [](const ShellResult& r) { return number(r.shell->setting(N::t)); }},
        {"Required thickness                    tg", Quantity::thickness,
         [](const ShellResult& r) { return number(r.outcome->found.t_governing); }},
        {"The same with allowances              treq", Quantity::thickness,
         [](const ShellResult& r) { return number(r.outcome->found.t_required); }},
        {"Maximum allowable working pressure    MAWP", Quantity::pressure,
         [](const ShellResult& r) { return number(r.outcome->found.mawp); }},
        {"The same, new and cold                MAPnc", Quantity::pressure,
         [](const ShellResult& r) { return number(r.outcome->found.map_nc); }},
        {"Allowable stress                      S", Quantity::stress,
         [](const ShellResult& r) { return number(r.shell->setting(N::S)); }},
        {"Actual stress                         Sact", Quantity::stress,
         [](const ShellResult& r) { return number(r.outcome->found.stress); }},
        {"Corrosion allowance                   c", Quantity::thickness,
         [](const ShellResult& r) { return number(r.shell->setting(N::ci)); }},
        {"Corrosion allowance at failure", Quantity::thickness,
         [](const ShellResult& r) -> std::optional<float> {
             const ShellOutcome& o = *r.outcome;
             if (o.by_older_division_2()) return std::nullopt;
             const bool knuckle = o.fail_ca_knuckle >= 0.0f && o.fail_ca_knuckle < o.fail_ca;
             return number(knuckle ? o.fail_ca_knuckle : o.fail_ca);
         }},
    };
    std::string tables = table<ShellResult>("Shells and heads", rows, results, heading, units);
    std::vector<Calculated> external;
    for (const ShellResult& r : results) {
        if (r.shell->external) external.push_back({&*r.shell->external, &r.outcome->external});
    }
    if (!external.empty()) tables += external_tables(external, units);
    return tables;
}

} // namespace tarvane::vessel
