#include "components/flange_external.h"

#include "components/flange_checks.h"
#include "document/results.h"
#include "fields/flange_checks.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarvane::vessel {

namespace {

constexpr std::string_view CASE = "external";

bool same(std::optional<float> a, std::optional<float> b) {
    return a == b || (a && b && std::isnan(*a) && std::isnan(*b));
}

bool same(const Check& a, const Check& b) {
    return a.field().id == b.field().id && a.state() == b.state() && same(a.demand(), b.demand()) &&
           same(a.limit(), b.limit());
}

// Loads of a mate are those of the internal pressure.
FlangeInput under_external(FlangeInput flange) {
    const float P = flange.setting(Setting::external_pressure);
    flange.record[TARVANE_P] = -P;
    flange.put_setting(Setting::design_pressure_operating, -P);
    flange.write_slot(slot::mating_loads, 15, "N");
    flange.put_setting(Setting::external_pressure, 0.0f);
    return flange;
}

std::optional<FlangeInput> geometry_of(const FlangeInput& flange, const FlangeOutcome& outcome) {
    switch (flange.analysis()) {
    case TARVANE_DESIGN:
        if (outcome.rounded == nullptr || outcome.rounded->outcome.stopped ||
            outcome.rounded->outcome.refused())
            return std::nullopt;
        return outcome.rounded->flange;
    case TARVANE_THICKNESS:
        if (!(outcome.t_req > 0.0f)) return std::nullopt;
        return flange.as_judged(outcome);
    default:
        return flange;
    }
}

// The thickness that was found is that of the internal pressure.
void add_thickness(const FlangeOutcome& outcome, const UnitSystem& units, Checks& external) {
    const float t = outcome.external->flange.record[TARVANE_t];
    if (!(outcome.external_t_req > t) || all_pass(external)) return;
    Check check =
        Check::compared(field_of(FLANGE_CHECKS, "required_thickness"), outcome.external_t_req, t)
            .under("");
    check.because("the external pressure requires a thickness of " +
                  shown(outcome.external_t_req, Quantity::thickness, units) + ", above the " +
                  shown(t, Quantity::thickness, units) + " judged");
    external.push_back(std::move(check));
}

} // namespace

void run_external_flange(const FlangeInput& flange, const Request& file, FlangeOutcome& outcome) {
    const std::optional<FlangeInput> geometry = geometry_of(flange, outcome);
    if (!geometry) return;
    if (flange.analysis() == TARVANE_THICKNESS)
        outcome.external_t_req = run_flange(under_external(flange), without_report(file)).t_req;
    auto other = std::make_shared<JudgedFlange>();
    other->flange = under_external(*geometry);
    other->outcome = run_flange(other->flange, file);
    const FlangeOutcome& found = other->outcome;
    outcome.report += found.report;
    outcome.messages.insert(outcome.messages.end(), found.messages.begin(), found.messages.end());
    outcome.stopped = found.stopped;
    outcome.fatal_code = found.fatal_code;
    outcome.external = std::move(other);
}

void add_external_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                         const UnitSystem& units, Checks& checks) {
    if (flange.rated() && flange.setting(Setting::external_pressure) > 0.0f) {
        checks.push_back(Check::not_asked(field_of(FLANGE_CHECKS, "rating"),
                                          "kind \"rated\": the flange is judged by its rating")
                             .in_case(std::string(CASE)));
        return;
    }
    if (!flange.has_external()) return;
    if (outcome.external == nullptr) {
        if (!outcome.stopped && !outcome.refused())
            checks.push_back(Check::not_made(field_of(FLANGE_CHECKS, "calculation"),
                                             "external pressure: there is no geometry to judge, "
                                             "no calculation was made")
                                 .in_case(std::string(CASE)));
        return;
    }
    Checks external = flange_checks(outcome.external->flange, outcome.external->outcome, units);
    add_thickness(outcome, units, external);
    for (Check& check : external) {
        const bool there = check.state() == State::not_asked ||
                           std::any_of(checks.begin(), checks.end(),
                                       [&check](const Check& first) { return same(first, check); });
        if (there) continue;
        const std::string own(check.load_case());
        check.in_case(std::string(CASE) + (own.empty() ? "" : ", " + own));
        checks.push_back(std::move(check));
    }
}

} // namespace tarvane::vessel
