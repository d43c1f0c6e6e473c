#include "external_results.h"

#include "results.h"
#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::app {

using N = ExternalNumber;

namespace {

constexpr float WITHIN = 0.999f, BEYOND = 1.001f; // what falls short by less does not fail
constexpr float LEAST_PRESSURE = 0.001f;          // from here on a thickness is looked for

bool has_pressure(const ExternalInput& element) { return element.setting(N::P) > LEAST_PRESSURE; }

} // namespace

bool is_short_of_pressure(const ExternalInput& element, const ExternalOutcome& outcome) {
    return !(outcome.maep >= element.setting(N::P) * WITHIN);
}

bool is_short_of_thickness(const ExternalInput& element, const ExternalOutcome& outcome) {
    return has_pressure(element) && !(outcome.tca <= element.setting(N::t) * BEYOND);
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
        return has_pressure(*element) ? number(value) : std::nullopt;
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
         [](const R& r) { return r.number(r.outcome->maep); }},
        {"Given thickness                       t", Quantity::thickness,
         [](const R& r) -> std::optional<float> { return r.element->setting(N::t); }},
        {"Required thickness with allowances    Tca", Quantity::thickness,
         [](const R& r) { return r.required(r.outcome->tca); }},
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
         [](const R& r) -> std::optional<float> { return r.element->setting(N::c); }},
        {"Corrosion allowance at failure", Quantity::thickness,
         [](const R& r) { return r.required(r.outcome->fail_ca); }},
    };
    return table<R>("External pressure", rows, results, heading, units);
}

} // namespace tarvane::app
