#include "components/mdmt_results.h"

#include "document/results.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

using N = MdmtNumber;

namespace {

constexpr float WITHIN = 0.5f; // degrees F: reports show whole ones

std::optional<float> temperature(float value) {
    if (value == TARVANE_NO_TEMPERATURE || !std::isfinite(value)) return std::nullopt;
    return value;
}

// An impact tested element without a temperature of its own is tested at the one asked for.
bool tested_as_asked(const MdmtInput& element) {
    return element.impact_tested() && !element.test_of_record && !element.user_temperature;
}

} // namespace

std::optional<float> curve_temperature(const MdmtOutcome& outcome) {
    return temperature(outcome.t_min);
}

std::optional<float> reduced_temperature(const MdmtOutcome& outcome) {
    return temperature(outcome.mdmt);
}

std::optional<float> reduction_of(const MdmtOutcome& outcome) {
    if (outcome.exempt_stainless || !temperature(outcome.mdmt)) return std::nullopt;
    return temperature(outcome.reduction);
}

std::optional<float> ug20f_temperature(const MdmtInput& element, const MdmtOutcome& outcome) {
    const bool applies = element.has(N::ug20f) && !element.impact_tested() &&
                         outcome.t_ug20 != TARVANE_UG20_NOT_APPLICABLE;
    return applies ? temperature(outcome.t_ug20) : std::nullopt;
}

std::optional<float> lowest_temperature(const MdmtInput& element, const MdmtOutcome& outcome) {
    if (tested_as_asked(element)) return element.setting(N::required);
    std::optional<float> lowest;
    for (const std::optional<float>& T : {curve_temperature(outcome), reduced_temperature(outcome),
                                          ug20f_temperature(element, outcome)}) {
        if (T) lowest = lowest ? std::min(*lowest, *T) : *T;
    }
    return lowest;
}

namespace {

bool is_exempt(const MdmtInput& element, const MdmtOutcome& outcome) {
    return element.exempt() && !outcome.exempt_stainless;
}

} // namespace

bool falls_short(const MdmtInput& element, const MdmtOutcome& outcome) {
    if (!element.asked || is_exempt(element, outcome)) return false;
    const std::optional<float> lowest = lowest_temperature(element, outcome);
    return !lowest || element.setting(N::required) < *lowest - WITHIN;
}

Verdict judge_mdmt(const MdmtInput& element, const MdmtOutcome& outcome, const UnitSystem& units) {
    Verdict verdict;
    if (outcome.stopped) {
        verdict.say(Status::stopped,
                    "the engine stopped with code " + std::to_string(outcome.fatal_code));
        return verdict;
    }
    const auto fails = [&](std::string reason) { verdict.say(Status::fails, std::move(reason)); };
    const std::optional<float> lowest = lowest_temperature(element, outcome);
    if (!lowest && !is_exempt(element, outcome)) {
        fails("no metal temperature was found: the governing thickness " +
              shown(element.setting(N::tg), Quantity::thickness, units) + " asks for impact tests");
    } else if (falls_short(element, outcome)) {
        fails("the lowest metal temperature without impact test " + shown_degrees(*lowest, units) +
              " is above the required " + shown_degrees(element.setting(N::required), units));
    }
    // The engine counts such a ratio as 1.
    const float sr = element.setting(N::tg_sr), tr = element.setting(N::tr);
    const float left =
        (sr > 0.0f ? sr : element.setting(N::tg)) - element.setting(N::ci) - element.setting(N::ce);
    if (!element.has(N::pad) && (tr > left * 1.001f || element.setting(N::ratio) > 1.001f)) {
        fails(tr > left ? "the required thickness " + shown(tr, Quantity::thickness, units) +
                              " is above the thickness less corrosion allowances " +
                              shown(left, Quantity::thickness, units)
                        : "the ratio " + number_text(element.setting(N::ratio), 3) + " is above 1");
    }
    if (outcome.estar_used < 0.0f && !element.has(N::pwht))
        fails("heat treatment is required at this temperature, UCS-68(b)");
    return verdict;
}

namespace {

struct MdmtResult {
    const MdmtInput* element;
    const MdmtOutcome* outcome;
};

using R = MdmtResult;

// As much as a column of the table holds.
std::string heading(const R& r) { return column_heading(*r.element); }

} // namespace

std::string mdmt_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    std::vector<R> results;
    for (const Calculated& c : elements) {
        results.push_back(
            {static_cast<const MdmtInput*>(c.element), static_cast<const MdmtOutcome*>(c.outcome)});
    }
    const Row<R> rows[] = {
        {"Governing thickness                   tg", Quantity::thickness,
         [](const R& r) -> std::optional<float> { return r.element->setting(N::tg); }},
        {"Ratio", Quantity::number,
         [](const R& r) -> std::optional<float> {
             if (r.outcome->ratio < 0.0f || r.outcome->exempt_stainless) return std::nullopt;
             return r.outcome->ratio;
         }},
        {"Temperature of the curve", Quantity::temperature,
         [](const R& r) { return curve_temperature(*r.outcome); }},
        {"Temperature reduction", Quantity::temperature_scale,
         [](const R& r) { return reduction_of(*r.outcome); }},
        {"Minimum design metal temperature      MDMT", Quantity::temperature,
         [](const R& r) { return reduced_temperature(*r.outcome); }},
        {"Exempt temperature of UG-20(f)", Quantity::temperature,
         [](const R& r) { return ug20f_temperature(*r.element, *r.outcome); }},
        {"Lowest temperature without impact test", Quantity::temperature,
         [](const R& r) { return lowest_temperature(*r.element, *r.outcome); }},
        {"Required temperature", Quantity::temperature,
         [](const R& r) -> std::optional<float> {
             if (!r.element->asked) return std::nullopt;
             return r.element->setting(N::required);
         }},
    };
    return table<R>("Metal temperatures", rows, results, heading, units);
}

} // namespace tarvane::vessel
