#include "components/external_results.h"

#include "components/convex_head.h"
#include "document/results.h"
#include "fields/shell_checks.h"
#include "tarvane/tarvane.h"

namespace tarvane::vessel {

using N = ExternalNumber;

namespace {

consteval const CheckField& field(std::string_view id) { return field_of(EXTERNAL_CHECKS, id); }

Check pressure_check(const ExternalInput& element, const ExternalOutcome& outcome) {
    return Check::compared(field("maep"), outcome.maep, element.setting(N::P));
}

Check thickness_check(const ExternalInput& element, const ExternalOutcome& outcome) {
    return Check::compared(field("external_thickness"), outcome.tca, element.setting(N::t));
}

// Of the rule that pressure and thickness are found by.
std::string_view paragraph_of(const ExternalInput& element) {
    if (element.by_stress())
        return element.code() == TARVANE_ASME_VIII_2 ? "4.4" : "Code Case 2286";
    switch (element.shape()) {
    case TARVANE_CYLINDER:
        return "UG-28(c)";
    case TARVANE_SPHERE:
        return "UG-28(d)";
    case TARVANE_ELLIPTICAL_HEAD:
        return "UG-33(d)";
    case TARVANE_TORISPHERICAL_HEAD:
        return "UG-33(e)";
    default:
        return "UG-33(f)";
    }
}

// Of a head with a check by UG-33(a)(1).
ConvexRating with_chart(const ExternalOutcome& outcome) {
    return convex_rating({0.0f, outcome.maep, outcome.tca}, outcome.convex->results.found);
}

} // namespace

bool is_short_of_pressure(const ExternalInput& element, const ExternalOutcome& outcome) {
    return pressure_check(element, outcome).falls_short();
}

bool is_short_of_thickness(const ExternalInput& element, const ExternalOutcome& outcome) {
    return element.has_pressure() && thickness_check(element, outcome).falls_short();
}

float governing_maep(const ExternalOutcome& outcome) {
    return outcome.convex ? with_chart(outcome).maep_g : outcome.maep;
}

float governing_thickness(const ExternalOutcome& outcome) {
    if (!outcome.convex) return outcome.tca;
    return with_chart(outcome).t_g;
}

bool ends_at_limit(const ExternalOutcome& outcome) {
    return outcome.found.search[TARVANE_AT_LENGTH] == TARVANE_SEARCH_AT_LIMIT;
}

ExternalFound found_of(const ExternalInput& element, const ExternalOutcome& o) {
    ExternalFound found{.given = element,
                        .nothing = o.stopped    ? "the engine stopped"
                                   : o.no_curve ? "there is no chart"
                                                : "",
                        .has_pressure = element.has_pressure(),
                        .by_chart = !element.by_stress() && !element.flat_cone(),
                        .by_stress = element.by_stress() && !element.flat_cone(),
                        .cylinder = element.shape() == TARVANE_CYLINDER,
                        .maep = o.maep,
                        .tca = o.tca,
                        .slen = o.slen,
                        .factor_a = o.factor_a,
                        .factor_b = o.factor_b,
                        .fha = o.fha,
                        .fail_ca = o.fail_ca,
                        .outside = o.d_o,
                        .convex = {}};
    if (o.convex) {
        found.convex = {.maep = o.convex->maep,
                        .thickness = o.convex->results.found.t_required,
                        .fail_ca = o.convex->results.fail_ca,
                        .governing_maep = governing_maep(o),
                        .governing_thickness = governing_thickness(o)};
    }
    return found;
}

Checks external_checks(const ExternalInput& element, const ExternalOutcome& outcome,
                       const UnitSystem& units) {
    Checks checks;
    if (outcome.stopped) {
        checks.push_back(Check::not_made(CALCULATION, stop_reason(outcome)));
        return checks;
    }
    if (outcome.no_curve) {
        checks.push_back(Check::not_made(
            CALCULATION,
            "there is no chart " + to_utf8(element.chart()) +
                ": ExtChartData.txt is missing or cannot be read, no calculation was made"));
        return checks;
    }
    const float T = element.setting(N::T), P = element.setting(N::P), t = element.setting(N::t);
    if (outcome.above_chart) {
        checks.push_back(Check::compared(field("chart_temperature"), T, outcome.chart_maximum));
        if (checks.back().falls_short()) {
            checks.back().because("the design temperature " + shown_degrees(T, units) +
                                  " is above the last one of chart " + to_utf8(element.chart()) +
                                  ", " + shown_degrees(outcome.chart_maximum, units));
        }
    } else {
        checks.push_back(Check::found(field("chart_temperature"), true));
    }
    checks.push_back(pressure_check(element, outcome));
    if (checks.back().falls_short()) {
        checks.back().because("the MAEP " + shown(outcome.maep, Quantity::pressure, units) +
                              " is below the external design pressure " +
                              shown(P, Quantity::pressure, units));
    }
    if (element.has_pressure()) {
        checks.push_back(thickness_check(element, outcome));
        if (checks.back().falls_short()) {
            checks.back().because("the required thickness " +
                                  shown(outcome.tca, Quantity::thickness, units) +
                                  " is above the given " + shown(t, Quantity::thickness, units));
        }
    }
    for (Check& check : checks) {
        const std::string_view id = check.field().id;
        if (id == "maep" || id == "external_thickness") check.under(paragraph_of(element));
    }
    convex_checks(element, outcome, units, checks);
    return checks;
}

std::string external_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    return closing_table(EXTERNAL_TABLE, elements, units);
}

} // namespace tarvane::vessel
