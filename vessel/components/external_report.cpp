#include "components/external_report.h"

#include "components/convex_head.h"
#include "components/external_results.h"
#include "components/report_lines.h"
#include "document/results.h"
#include "tarvane/tarvane.h"

namespace tarvane::vessel {

using N = ExternalNumber;

namespace {

constexpr int THICKNESS = TARVANE_AS_THICKNESS, DIAMETER = TARVANE_AS_DIAMETER,
              PRESSURE = TARVANE_AS_PRESSURE, STRESS = TARVANE_AS_STRESS,
              FACTOR = TARVANE_AS_FACTOR;

std::string_view type_name(int shape) {
    switch (shape) {
    case TARVANE_CYLINDER:
        return "Cylindrical Shell";
    case TARVANE_ELLIPTICAL_HEAD:
        return "Elliptical Head";
    case TARVANE_TORISPHERICAL_HEAD:
        return "Torispherical Head";
    case TARVANE_SPHERE:
        return "Spherical Shell or Hemispherical Head";
    default:
        return "Conical Section";
    }
}

std::string_view rules_of(const ExternalInput& element) {
    const bool division_2 = element.code() == TARVANE_ASME_VIII_2;
    if (element.flat_cone()) {
        return division_2 ? "ASME Code, Section VIII Division 2, cone as a flat head"
                          : "ASME Code, Section VIII Division 1, UG-34";
    }
    if (element.by_stress()) {
        return division_2 ? "ASME Code, Section VIII Division 2, 4.4"
                          : "ASME Code, Section VIII Division 1, Code Case 2286";
    }
    if (division_2) return "ASME Code, Section VIII Division 2, before 2007";
    return element.shape() == TARVANE_CYLINDER ? "ASME Code, Section VIII Division 1, UG-28"
                                               : "ASME Code, Section VIII Division 1, UG-33";
}

void write_dimensions(const ExternalInput& element) {
    const auto input = [&](std::string_view label, std::string_view symbol, N number, int kind) {
        report_input(label, symbol, element.setting(number), kind);
    };
    const bool torisphere = element.shape() == TARVANE_TORISPHERICAL_HEAD;
    if (element.diameter() > 0.0f && !torisphere) {
        report_input(element.outside() ? "Outside Diameter" : "Inside Diameter",
                     element.outside() ? "Do" : "D", element.diameter(), DIAMETER);
    }
    if (torisphere) input("Inside Crown Radius", "L", N::L, DIAMETER);
    if (torisphere && element.convex_head() && element.setting(N::r) > 0.0f)
        input("Inside Knuckle Radius", "r", N::r, DIAMETER);
    if (element.shape() == TARVANE_ELLIPTICAL_HEAD) input("Aspect Ratio D/2h", "k", N::k, FACTOR);
    if (element.shape() == TARVANE_CONE) {
        input("Inside Diameter of Small End", "Ds", N::Dsmall, DIAMETER);
        report_input_value("Half Apex Angle", "alpha", number_text(element.setting(N::alpha), 4),
                           "degrees");
        input("Axial Length of Cone", "Lc", N::cone_length, DIAMETER);
    }
    input("Nominal Thickness", "t", N::t, THICKNESS);
    if (element.equivalent_length) {
        report_column("Equivalent Length,      Le = Lc/2*(1+Ds/DL) ", element.setting(N::length),
                      DIAMETER);
    } else if (element.long_shell()) {
        input("Stiffened Length", "L", N::length, DIAMETER);
    }
}

} // namespace

void write_external_inputs(const ExternalInput& element, const UnitSystem& units) {
    const auto input = [&](std::string_view label, std::string_view symbol, N number, int kind) {
        report_input(label, symbol, element.setting(number), kind);
    };
    BEGIN_REPORT();
    report_opening("External Pressure Input Data Values", element.description());
    report_name("Description of Geometry (Type)", type_name(element.shape()));
    input("Design External Pressure", "P", N::P, PRESSURE);
    report_temperature("Design Temperature", element.setting(N::T), units);
    if (!element.material().empty()) report_value("Material", element.material());
    report_value("External Pressure Chart", element.chart());
    input("Corrosion Allowance", "c", N::ci, THICKNESS);
    if (element.setting(N::Ut) != 0.0f) input("Mill Under-Tolerance", "Ut", N::Ut, THICKNESS);
    if (element.setting(N::S) > 0.0f) input("Allowable Stress At Temperature", "S", N::S, STRESS);
    if (element.setting(N::Sy) > 0.0f) input("Yield Stress At Temperature", "Sy", N::Sy, STRESS);
    write_dimensions(element);
    if (element.setting(N::service) == 1.0f) report_value("Service", "Air, Steam and Water");
    if (element.setting(N::service) == 2.0f) report_value("Service", "Unfired Steam Boiler");
    report_line(rules_of(element));
}

void write_external_results(const ExternalInput& element, const ExternalOutcome& o) {
    report_line("");
    if (o.no_curve) {
        report_line("ERROR - There is no External Pressure Chart, no calculation was made.",
                    ERROR_LINE);
        report_line("");
        return CLOSING_NOTE();
    }
    report_heading("External Pressure Results:");
    report_input("Thickness less Allowances", "tc",
                 (element.setting(N::t) - element.setting(N::ci)) - element.setting(N::Ut),
                 THICKNESS);
    const bool torisphere = element.shape() == TARVANE_TORISPHERICAL_HEAD;
    report_input(torisphere ? "Outside Crown Radius used" : "Outside Diameter used",
                 torisphere ? "Ro" : "Do", o.d_o, DIAMETER);
    if (!element.by_stress() && !element.flat_cone()) {
        report_input_value("Factor A", "A", number_text(o.factor_a, 7));
        report_input("Factor B", "B", o.factor_b, STRESS);
    } else if (o.fha > 0.0f) {
        report_input("Allowable Compressive Stress", "Fha", o.fha, STRESS);
    }
    report_input("Maximum Allowable External Pressure", "MAEP", o.maep, PRESSURE);
    if (element.has_pressure()) {
        report_input("Required Thickness with Allowances", "Tca", o.tca, THICKNESS);
        if (element.shape() == TARVANE_CYLINDER) {
            report_input("Maximum Stiffened Length", "Slen", o.slen, DIAMETER);
            if (ends_at_limit(o))
                report_line("Note: The search for the stiffened length ended at its limit.",
                            NOTE_LINE);
        }
        if (o.fail_ca != TARVANE_NO_VALUE)
            report_column("Corrosion Allowance at Failure", o.fail_ca, THICKNESS);
    }
    if (is_short_of_thickness(element, o))
        report_line("Warning: Required Thickness Exceeds the Given Thickness!", ERROR_LINE);
    if (is_short_of_pressure(element, o)) {
        report_line("Warning: Maximum Allowable External Pressure is below the Design Pressure!",
                    ERROR_LINE);
    }
    if (o.convex != nullptr) {
        write_convex_head(*o.convex, element, o);
    } else if (element.convex_head()) {
        report_line(
            "Note: UG-33 (a)(1) was not checked for 1.67 times the pressure inside; it needs " +
                std::string(missing_for_convex_head(element)) + '.',
            NOTE_LINE);
    }
    report_line("");
    CLOSING_NOTE();
}

} // namespace tarvane::vessel
