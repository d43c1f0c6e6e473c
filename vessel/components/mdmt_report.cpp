#include "components/mdmt_report.h"

#include "components/engine_session.h"
#include "components/mdmt_results.h"
#include "components/report_lines.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::vessel {

using N = MdmtNumber;

namespace {

constexpr int THICKNESS = TARVANE_AS_THICKNESS, FACTOR = TARVANE_AS_FACTOR;

std::string curve_text(const MdmtInput& element) {
    if (element.impact_tested()) return "Impact Tested";
    if (element.exempt()) return "Exempt";
    return std::string(1, static_cast<char>('A' + element.curve() - TARVANE_CURVE_A));
}

std::string_view rules_of(const MdmtInput& element) {
    if (element.division_2()) return "ASME Code, Section VIII Division 2, 3.11";
    if (element.am_218()) return "ASME Code, Section VIII Division 2, AM-218";
    return element.edition() == MDMT_EDITION_A98
               ? "ASME Code, Section VIII Division 1, UCS-66, 1998"
               : "ASME Code, Section VIII Division 1, UCS-66";
}

std::string_view yes_or_no(bool flag) { return flag ? "Yes" : "No"; }

void write_thicknesses(const MdmtInput& element) {
    const auto input = [&](std::string_view label, std::string_view symbol, N number, int kind) {
        report_input(label, symbol, element.setting(number), kind);
    };
    input("Governing Thickness", "tg", N::tg, THICKNESS);
    if (element.setting(N::tg_sr) > 0.0f)
        input("Thickness for the Ratio", "tg_sr", N::tg_sr, THICKNESS);
    input("Corrosion Allowance", "c", N::ci, THICKNESS);
    input("External Corrosion Allowance", "ce", N::ce, THICKNESS);
    input("Joint Efficiency", "E", N::E, FACTOR);
    if (element.setting(N::tr) > 0.0f)
        input("Required Thickness", "tr", N::tr, THICKNESS);
    else
        input("Stress Ratio", "", N::ratio, FACTOR);
}

} // namespace

void write_mdmt_inputs(const MdmtInput& element, const UnitSystem& units) {
    BEGIN_REPORT();
    report_opening("MDMT Input Data Values", element.description());
    if (element.asked) {
        report_temperature("Required Minimum Design Metal Temperature",
                           element.setting(N::required), units);
    }
    if (element.has(N::ug20f))
        report_temperature("Design Temperature", element.setting(N::T), units);
    if (!element.material().empty()) report_value("Material", element.material());
    report_value("Curve of the Material", curve_text(element));
    if (element.division_2() && !element.exempt())
        report_input("Yield Stress", "Sy", element.setting(N::Sy), TARVANE_AS_STRESS);
    write_thicknesses(element);
    report_value("Post Weld Heat Treatment", yes_or_no(element.has(N::pwht)));
    if (element.has(N::pwht) && !element.division_2())
        report_value("Credit for Heat Treatment", yes_or_no(element.has(N::credit)));
    report_line(rules_of(element));
    const std::string& name = element.material();
    const std::int32_t code = element.code();
    UCS6_NOTE(name.data(), static_cast<std::int32_t>(name.size()),
              &element.settings[static_cast<std::size_t>(N::tg)], &code, &ON);
}

void write_mdmt_results(const MdmtInput& element, const MdmtOutcome& o, const UnitSystem& units) {
    report_line("");
    const auto temperature = [&](std::string_view label, std::optional<float> value) {
        if (value) report_temperature(label, *value, units);
    };
    if (element.exempt() && !o.exempt_stainless) {
        report_line("Note: This Material is exempt from Impact Tests.", NOTE_LINE);
    } else {
        report_heading("MDMT Results:");
        temperature("Temperature of the Curve", curve_temperature(o));
        if (const auto reduction = reduction_of(o)) {
            report_value(
                "Temperature Reduction",
                number_text(std::round(units.to_file(*reduction, Quantity::temperature_scale)), 0),
                units.label(Quantity::temperature));
        }
        temperature("Minimum Design Metal Temperature", reduced_temperature(o));
        temperature("Exempt Temperature of UG-20(f)", ug20f_temperature(o));
        const bool exempt_flange = exempt_as_flange(element, o);
        if (exempt_flange) temperature("Exempt Temperature of UCS-66 (c)", element.ucs_66c);
        temperature("Lowest Metal Temperature without Impact Test",
                    element.impact_tested() ? std::nullopt : lowest_temperature(element, o));
        if (exempt_flange) {
            report_line("Note: a standard ferritic flange. The temperature of UCS-66 (c) is an "
                        "approximate figure:",
                        NOTE_LINE);
            report_line(std::string(UCS_66C_SOURCE) + '.', NOTE_LINE);
        }
        if (falls_short(element, o)) {
            report_line("Warning: The Required Minimum Design Metal Temperature is not reached!",
                        ERROR_LINE);
        }
    }
    report_line("");
    CLOSING_NOTE();
}

} // namespace tarvane::vessel
