#include "components/mdmt_results.h"

#include "document/results.h"
#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::vessel {

using N = MdmtNumber;

namespace {

consteval const CheckField& field(std::string_view id) { return field_of(MDMT_CHECKS, id); }

std::optional<float> found_temperature(float value) {
    if (value == TARVANE_NO_TEMPERATURE || !std::isfinite(value)) return std::nullopt;
    return value;
}

} // namespace

std::optional<float> curve_temperature(const MdmtOutcome& outcome) {
    return found_temperature(outcome.t_min);
}

std::optional<float> reduced_temperature(const MdmtOutcome& outcome) {
    return found_temperature(outcome.mdmt);
}

std::optional<float> reduction_of(const MdmtOutcome& outcome) {
    if (outcome.exempt_stainless || !found_temperature(outcome.mdmt)) return std::nullopt;
    return found_temperature(outcome.reduction);
}

std::optional<float> ug20f_temperature(const MdmtOutcome& outcome) {
    if (outcome.found.ug20f != TARVANE_UG20F_APPLIES) return std::nullopt;
    return found_temperature(outcome.t_ug20);
}

namespace {

// By the curve, with what reduces it.
std::optional<float> lowest_by_curve(const MdmtInput& element, const MdmtOutcome& outcome) {
    switch (outcome.found.lowest_by) {
    case TARVANE_LOWEST_BY_NOTHING:
        return std::nullopt;
    case TARVANE_LOWEST_AS_REQUIRED: // the engine has it by way of a text
        return element.setting(N::required);
    default:
        return found_temperature(outcome.found.lowest);
    }
}

} // namespace

bool exempt_as_flange(const MdmtInput& element, const MdmtOutcome& outcome) {
    if (!element.standard_flange() || outcome.exempt_stainless) return false;
    const std::optional<float> curve = lowest_by_curve(element, outcome);
    return !curve || *curve > element.ucs_66c;
}

std::optional<float> lowest_temperature(const MdmtInput& element, const MdmtOutcome& outcome) {
    if (exempt_as_flange(element, outcome)) return element.ucs_66c;
    return lowest_by_curve(element, outcome);
}

namespace {

bool is_exempt(const MdmtInput& element, const MdmtOutcome& outcome) {
    return element.exempt() && !outcome.exempt_stainless;
}

std::string ucs_66c_words(const MdmtInput& element, const UnitSystem& units) {
    return "UCS-66(c): a standard ferritic flange, no impact test down to " +
           shown_degrees(element.ucs_66c, units) + ", an approximate figure";
}

Check temperature_check(const MdmtInput& element, float lowest) {
    return Check::compared(field("mdmt"), lowest, element.setting(N::required));
}

} // namespace

bool falls_short(const MdmtInput& element, const MdmtOutcome& outcome) {
    if (!element.asked || is_exempt(element, outcome)) return false;
    const std::optional<float> lowest = lowest_temperature(element, outcome);
    return !lowest || temperature_check(element, *lowest).falls_short();
}

namespace {

void check_temperatures(const MdmtInput& element, const MdmtOutcome& outcome,
                        const UnitSystem& units, Checks& checks) {
    if (is_exempt(element, outcome)) return;
    const std::optional<float> lowest = lowest_temperature(element, outcome);
    std::string reason;
    if (!lowest) {
        reason = "no metal temperature was found: the governing thickness " +
                 shown(element.setting(N::tg), Quantity::thickness, units) +
                 " requires impact tests";
    }
    checks.push_back(Check::found(field("impact_tests"), lowest.has_value(), std::move(reason)));
    const std::string exemption =
        exempt_as_flange(element, outcome) ? ucs_66c_words(element, units) : std::string();
    checks.back().shown_by(exemption);
    if (!lowest) return;
    if (!element.asked) {
        checks.push_back(Check::not_asked(field("mdmt"), "MDMT is not given"));
        return;
    }
    Check check = temperature_check(element, *lowest);
    if (check.falls_short()) {
        check.because("the lowest metal temperature without impact test " +
                      shown_degrees(*lowest, units) + " is above the required " +
                      shown_degrees(element.setting(N::required), units));
    }
    check.shown_by(exemption);
    checks.push_back(std::move(check));
}

// The engine counts a ratio above 1 as 1.
void check_ratio(const MdmtInput& element, const UnitSystem& units, Checks& checks) {
    if (element.has(N::pad)) return;
    const float sr = element.setting(N::tg_sr), tr = element.setting(N::tr);
    const float left =
        (sr > 0.0f ? sr : element.setting(N::tg)) - element.setting(N::ci) - element.setting(N::ce);
    if (tr > 0.0f) {
        Check check = Check::compared(field("required_thickness"), tr, left);
        if (check.falls_short()) {
            check.because("the required thickness " + shown(tr, Quantity::thickness, units) +
                          " is above the thickness less corrosion allowances " +
                          shown(left, Quantity::thickness, units));
        }
        checks.push_back(std::move(check));
        return;
    }
    const float ratio = element.setting(N::ratio);
    if (ratio == 1.0f && !element.gives("ratio")) {
        checks.push_back(Check::not_asked(field("ratio"), "neither ratio nor tr is given"));
        return;
    }
    Check check = Check::compared(field("ratio"), ratio, 1.0f);
    if (check.falls_short())
        check.because("the ratio " + number_text(ratio, 3, units) + " is above 1");
    checks.push_back(std::move(check));
}

} // namespace

Checks mdmt_checks(const MdmtInput& element, const MdmtOutcome& outcome, const UnitSystem& units) {
    Checks checks;
    if (outcome.stopped) {
        checks.push_back(Check::not_made(field("calculation"), stop_reason(outcome)));
        return checks;
    }
    check_temperatures(element, outcome, units, checks);
    check_ratio(element, units, checks);
    if (outcome.estar_used < 0.0f) {
        const bool treated = element.has(N::pwht);
        checks.push_back(Check::found(
            field("heat_treatment"), treated,
            treated ? "" : "heat treatment is required at this temperature, UCS-68(b)"));
    }
    return checks;
}

MdmtFound found_of(const MdmtInput& element, const MdmtOutcome& outcome) {
    MdmtFound found{.given = element,
                    .nothing = outcome.stopped ? "the engine stopped" : "",
                    .asked = element.asked,
                    .ratio = {},
                    .curve = curve_temperature(outcome),
                    .reduction = reduction_of(outcome),
                    .reduced = reduced_temperature(outcome),
                    .ug20f = ug20f_temperature(outcome),
                    .lowest = lowest_temperature(element, outcome)};
    if (!(outcome.ratio < 0.0f) && !outcome.exempt_stainless) found.ratio = outcome.ratio;
    return found;
}

std::string mdmt_tables(std::span<const Calculated> elements, const UnitSystem& units) {
    return closing_table(MDMT_TABLE, elements, units);
}

} // namespace tarvane::vessel
