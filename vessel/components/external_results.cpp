#include "components/external_results.h"

#include "components/convex_head.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

using N = ExternalNumber;

namespace {

constexpr float WITHIN = 0.999f, BEYOND = 1.001f; // what falls short by less does not fail

// Of a head with a check by UG-33(a)(1).
ConvexRating with_chart(const ExternalOutcome& outcome) {
    return convex_rating({0.0f, outcome.maep, outcome.tca}, outcome.convex->results.found);
}

} // namespace

bool is_short_of_pressure(const ExternalInput& element, const ExternalOutcome& outcome) {
    return !(outcome.maep >= element.setting(N::P) * WITHIN);
}

bool is_short_of_thickness(const ExternalInput& element, const ExternalOutcome& outcome) {
    return element.has_pressure() && !(outcome.tca <= element.setting(N::t) * BEYOND);
}

float governing_maep(const ExternalOutcome& outcome) {
    return outcome.convex ? with_chart(outcome).maep_g : outcome.maep;
}

float governing_thickness(const ExternalOutcome& outcome) {
    if (!outcome.convex) return outcome.tca;
    return with_chart(outcome).t_g;
}

bool ends_at_limit(const ExternalInput& element, const ExternalOutcome& outcome) {
    const float times = element.by_stress() ? 0.0f : 20.0f * element.setting(N::length);
    return outcome.slen >= 999999.0f || (times > 0.0f && outcome.slen > times);
}

Verdict judge_external(const ExternalInput& element, const ExternalOutcome& outcome,
                       const UnitSystem& units) {
    Verdict verdict;
    if (outcome.stopped) {
        verdict.say(Status::stopped,
                    "the engine stopped with code " + std::to_string(outcome.fatal_code));
        return verdict;
    }
    if (outcome.no_curve) {
        verdict.say(Status::bad_input,
                    "there is no chart " + to_utf8(element.chart()) +
                        ": ExtChartData.txt is missing or cannot be read, no calculation was made");
        return verdict;
    }
    const auto fails = [&](std::string reason) { verdict.say(Status::fails, std::move(reason)); };
    if (outcome.above_chart) {
        fails("the design temperature " + shown_degrees(element.setting(N::T), units) +
              " is above the last one of chart " + to_utf8(element.chart()) + ", " +
              shown_degrees(outcome.chart_maximum, units));
    }
    if (is_short_of_pressure(element, outcome)) {
        fails("the MAEP " + shown(outcome.maep, Quantity::pressure, units) +
              " is below the external design pressure " +
              shown(element.setting(N::P), Quantity::pressure, units));
    }
    if (is_short_of_thickness(element, outcome)) {
        fails("the required thickness " + shown(outcome.tca, Quantity::thickness, units) +
              " is above the given " + shown(element.setting(N::t), Quantity::thickness, units));
    }
    judge_convex_head(element, outcome, units, verdict);
    return verdict;
}

namespace {

struct ExternalResult {
    const ExternalInput* element;
    const ExternalOutcome* outcome;

    std::optional<float> number(float value) const {
        if (outcome->no_curve || !std::isfinite(value) || value == TARVANE_NO_VALUE)
            return std::nullopt;
        return value;
    }
    // Of the design pressure.
    std::optional<float> required(float value) const {
        return element->has_pressure() ? number(value) : std::nullopt;
    }
    // Of UG-33(a)(1).
    std::optional<float> convex_maep() const {
        return outcome->convex ? number(outcome->convex->maep) : std::nullopt;
    }
    std::optional<float> convex_thickness() const {
        return outcome->convex ? required(outcome->convex->results.found.t_required) : std::nullopt;
    }
    std::optional<float> failure_corrosion() const {
        const std::optional<float> chart = required(outcome->fail_ca);
        if (!chart || !outcome->convex) return chart;
        return std::min(*chart, outcome->convex->results.fail_ca);
    }
    bool by_chart() const { return !element->by_stress() && !element->flat_cone(); }
};

using R = ExternalResult;

// As much as a column of the table holds.
std::string heading(const R& r) { return column_heading(*r.element); }

// Factor A times 1e6, as the tables show few decimals.
std::optional<float> micro_a(const R& r) {
    return r.by_chart() ? r.number(r.outcome->factor_a * 1.0e6f) : std::nullopt;
}

} // namespace

std::string external_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<R> results;
    for (const Calculated& c : elements) {
        results.push_back({static_cast<const ExternalInput*>(c.element),
                           static_cast<const ExternalOutcome*>(c.outcome)});
    }
    const Row<R> rows[] = {
        {"External design pressure              P", Quantity::pressure,
         [](const R& r) -> std::optional<float> { return r.element->setting(N::P); }},
        {"Maximum allowable external pressure   MAEP", Quantity::pressure,
         [](const R& r) { return r.number(governing_maep(*r.outcome)); }},
        {"The same by UG-33(a), 1.67 P inside", Quantity::pressure,
         [](const R& r) { return r.convex_maep(); }},
        {"Given thickness                       t", Quantity::thickness,
         [](const R& r) -> std::optional<float> { return r.element->setting(N::t); }},
        {"Required thickness with allowances    Tca", Quantity::thickness,
         [](const R& r) { return r.required(governing_thickness(*r.outcome)); }},
        {"The same by UG-33(a)(1), 1.67 P inside", Quantity::thickness,
         [](const R& r) { return r.convex_thickness(); }},
        {"Maximum stiffened length              Slen", Quantity::diameter,
         [](const R& r) {
             return r.element->shape() == TARVANE_CYLINDER ? r.required(r.outcome->slen)
                                                           : std::nullopt;
         }},
        {"Factor A, times 1000000               A", Quantity::number, micro_a},
        {"Factor B                              B", Quantity::stress,
         [](const R& r) { return r.by_chart() ? r.number(r.outcome->factor_b) : std::nullopt; }},
        {"Allowable compressive stress          Fha", Quantity::stress,
         [](const R& r) {
             return r.element->by_stress() && !r.element->flat_cone() ? r.number(r.outcome->fha)
                                                                      : std::nullopt;
         }},
        {"Corrosion allowance                   c", Quantity::thickness,
         [](const R& r) -> std::optional<float> { return r.element->setting(N::ci); }},
        {"Corrosion allowance at failure", Quantity::thickness,
         [](const R& r) { return r.failure_corrosion(); }},
    };
    return table<R>("External pressure", rows, results, heading, units);
}

} // namespace tarvane::vessel
