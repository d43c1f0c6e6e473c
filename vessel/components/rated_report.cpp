#include "components/rated_report.h"

#include "components/report_lines.h"
#include "document/results.h"
#include "fields/flange_checks.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <cmath>

namespace tarvane::vessel {

namespace {

std::string type_name(const FlangeInput& flange) {
    const std::span<const Choice> types = flange_keys().find("type")->choices;
    std::string name(choice_name(types, flange.type()));
    bool begins = true;
    for (char& c : name) {
        if (begins && c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        begins = c == ' ';
    }
    return name;
}

// "UG-44": where the code accepts the rating instead of a calculation; empty: not known.
std::string_view paragraph_of(const FlangeInput& flange) {
    if (flange.code() == TARVANE_ASME_VIII_1) return "UG-44";
    if (flange.code() == TARVANE_ASME_VIII_2) return "4.1.11";
    return "";
}

void write_dimensions(const FlangeInput& flange) {
    const auto row = [&](std::string_view label, std::string_view key, std::int32_t kind) {
        const float value = flange.number_of(*flange_keys().find(key));
        if (value > 0.0f) report_input(label, key, value, kind);
    };
    row("Flange Inside Diameter", "B", TARVANE_AS_DIAMETER);
    row("Flange Outside Diameter", "A", TARVANE_AS_DIAMETER);
    row("Flange Thickness", "t", TARVANE_AS_THICKNESS);
    row("Diameter of Bolt Circle", "C", TARVANE_AS_DIAMETER);
    row("Nominal Bolt Diameter", "a", TARVANE_AS_THICKNESS);
    const float bolts = flange.record[TARVANE_BOLTS];
    if (bolts > 0.0f) report_value("Number of Bolts", number_text(bolts, 0));
}

} // namespace

void write_rated_report(const FlangeInput& flange, const UnitSystem& units) {
    const float P = flange.record[TARVANE_P], rating = flange.setting(Setting::rating);
    BEGIN_REPORT();
    report_opening("Flange Input Data Values", flange.description());
    report_name("Description of Flange Geometry (Type)", type_name(flange));
    report_input("Design Pressure", "P", P, TARVANE_AS_PRESSURE);
    report_temperature("Design Temperature", flange.record[TARVANE_T_DESIGN], units);
    std::string material = flange.text.substr(slot::flange_material, 15);
    material.erase(material.find_last_not_of(' ') + 1);
    if (!material.empty()) report_name("Flange Material", material);
    if (!flange.standard().empty()) report_name("Standard", flange.standard());
    for (const TextSetting text : {TextSetting::flange_class, TextSetting::flange_grade}) {
        const std::string& name = flange.text_setting(text);
        const bool grade = text == TextSetting::flange_grade;
        if (!name.empty()) report_name(grade ? "Flange Grade" : "Flange Class", name);
    }
    write_dimensions(flange);
    report_column("Pressure Rating at the Design Temperature", rating, TARVANE_AS_PRESSURE);
    const float cold = flange.setting(Setting::rating_cold);
    if (cold > 0.0f)
        report_column("Pressure Rating at Ambient Temperature", cold, TARVANE_AS_PRESSURE);

    report_line("");
    const std::string_view paragraph = paragraph_of(flange);
    report_heading("Rated Flange:");
    report_line(
        "No stresses were calculated: the flange is rated by " +
            (flange.standard().empty() ? "the standard that it is made to" : flange.standard()) +
            (paragraph.empty() ? "." : ", " + std::string(paragraph) + '.'),
        NOTE_LINE);
    report_line(
        "The rating is the one that was given, for the design temperature and the material.",
        NOTE_LINE);
    report_value("Design Pressure over Pressure Rating", number_text(std::fabs(P) / rating, 4));
    const Check check = Check::compared(field_of(FLANGE_CHECKS, "rating"), std::fabs(P), rating);
    if (check.falls_short())
        report_line("Warning: The design pressure is above the pressure rating!", ERROR_LINE);
    report_line("");
    CLOSING_NOTE();
}

} // namespace tarvane::vessel
