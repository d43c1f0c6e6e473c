#include "components/flange_external.h"

#include "components/flange_checks.h"
#include "fields/flange_checks.h"

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

} // namespace

void add_external_checks(const FlangeInput& flange, const FlangeOutcome& outcome,
                         const UnitSystem& units, Checks& checks) {
    if (flange.rated() && flange.setting(Setting::external_pressure) > 0.0f) {
        checks.push_back(Check::not_asked(field_of(FLANGE_CHECKS, "rating"),
                                          "kind \"rated\": the flange goes by its rating")
                             .in_case(std::string(CASE)));
        return;
    }
    if (flange.external == nullptr || outcome.external == nullptr) return;
    for (Check& check : flange_checks(*flange.external, *outcome.external, units)) {
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
