#include "components/shell_report.h"

#include "components/report_lines.h"
#include "components/shell_results.h"
#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <cstdint>

namespace tarvane::vessel {

using N = ShellNumber;

namespace {

constexpr int LENGTH = TARVANE_AS_DIAMETER, THICKNESS = TARVANE_AS_THICKNESS,
              FACTOR = TARVANE_AS_FACTOR, PRESSURE = TARVANE_AS_PRESSURE,
              STRESS = TARVANE_AS_STRESS;

class Writer {
  public:
    Writer(const ShellInput& element, const ShellOutcome& results, const UnitSystem& file_units)
        : shell(element), o(results), units(file_units) {}

    void write() const {
        BEGIN_REPORT();
        input_values();
        report_formulas(shell);
        closing_values();
        warnings();
        report_line("");
        CLOSING_NOTE();
    }

  private:
    const ShellInput& shell;
    const ShellOutcome& o;
    const UnitSystem& units;

    float value(N number) const { return shell.setting(number); }

    void input_values() const;
    void dimensions() const;
    void head_dimensions() const;
    void cone_dimensions() const;
    void flat_dimensions() const;
    void closing_values() const;
    void warnings() const;
};

// ---- input values ----------------------------------------------------------------------------------

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
    case TARVANE_CONE:
        return "Conical Section";
    default:
        return "Flat Head";
    }
}

void Writer::input_values() const {
    report_opening("Shell Input Data Values", shell.description());
    report_name("Description of Geometry (Type)", type_name(shell.shape()));
    report_input("Design Pressure", "P", value(N::P), PRESSURE);
    report_temperature("Design Temperature", value(N::T), units);
    report_input("Corrosion Allowance", "c", value(N::ci), THICKNESS);
    if (value(N::Ut) != 0.0f) report_input("Mill Under-Tolerance", "Ut", value(N::Ut), THICKNESS);
    report_input("Joint Efficiency", "E", value(N::E), FACTOR);
    if (!shell.material().empty()) report_value("Material", shell.material());
    report_input("Allowable Stress At Temperature", "S", value(N::S), STRESS);
    report_input("Allowable Stress At Ambient", "Sa", value(N::Sa), STRESS);
    if (value(N::Sy) > 0.0f) {
        report_input("Yield Stress At Temperature", "Sy", value(N::Sy), STRESS);
        report_input("Yield Stress At Ambient", "Syc", value(N::Sy_cold), STRESS);
    }
    std::string_view diameter = shell.outside() ? "Outside Diameter" : "Inside Diameter";
    if (shell.shape() == TARVANE_FLAT_HEAD && value(N::D2) != 0.0f) diameter = "First Span";
    report_input(diameter, shell.outside() ? "Do" : "D", shell.diameter(), LENGTH);
    report_input("Nominal Thickness", "t", value(N::t), THICKNESS);
    dimensions();
    if (value(N::service) == 1.0f) report_value("Service", "Air, Steam and Water");
    if (value(N::service) == 2.0f) report_value("Service", "Unfired Steam Boiler");
    report_line(o.by_older_division_2() ? "ASME Code, Section VIII Division 2, before 2007"
                                        : "ASME Code, Section VIII Division 1");
}

void Writer::dimensions() const {
    switch (shell.shape()) {
    case TARVANE_ELLIPTICAL_HEAD:
    case TARVANE_TORISPHERICAL_HEAD:
        return head_dimensions();
    case TARVANE_CONE:
        return cone_dimensions();
    case TARVANE_FLAT_HEAD:
        return flat_dimensions();
    default:
        return;
    }
}

void Writer::head_dimensions() const {
    if (shell.shape() == TARVANE_ELLIPTICAL_HEAD) {
        report_input("Aspect Ratio D/2h", "k", value(N::k), FACTOR);
        return;
    }
    report_input("Inside Crown Radius", "L", value(N::L), LENGTH);
    report_input("Inside Knuckle Radius", "r", value(N::r), LENGTH);
}

void Writer::cone_dimensions() const {
    report_input_value("Half Apex Angle", "alpha", number_text(value(N::alpha), 4), "degrees");
    if (o.found.knuckle == 0) return;
    report_input("Inside Knuckle Radius", "r", value(N::r), LENGTH);
    report_input("Knuckle Thickness", "tk", value(N::tk), THICKNESS);
}

void Writer::flat_dimensions() const {
    if (value(N::D2) != 0.0f) report_input("Second Span", "D2", value(N::D2), LENGTH);
    report_input("Attachment Factor", "C", value(N::C), FACTOR);
    if (!shell.has(N::openings)) return;
    report_input("Diameter of First Opening", "d1", value(N::d1), LENGTH);
    report_input("Distance of First Opening to Edge", "e1", value(N::edge1), LENGTH);
    if (!(value(N::d2) > 0.0f)) return;
    report_input("Diameter of Second Opening", "d2", value(N::d2), LENGTH);
    report_input("Distance of Second Opening to Edge", "e2", value(N::edge2), LENGTH);
    report_input("Spacing of Openings", "p", value(N::pitch), LENGTH);
}

// ---- further results -------------------------------------------------------------------------------

void Writer::closing_values() const {
    if (!o.by_older_division_2()) {
        report_line("");
        report_column("Corrosion Allowance at Failure", o.fail_ca, THICKNESS);
        if (o.found.knuckle != 0 && o.fail_ca_knuckle >= 0.0f)
            report_column("Corrosion Allowance at Failure, Knuckle", o.fail_ca_knuckle, THICKNESS);
        if (shell.shape() == TARVANE_FLAT_HEAD && value(N::D2) != 0.0f)
            report_line("Note: the corrosion allowance at failure takes the head as circular.",
                        NOTE_LINE);
    }
    const bool head = shell.shape() >= TARVANE_ELLIPTICAL_HEAD && shell.shape() <= TARVANE_SPHERE;
    if (head && value(N::straight) > 0.0f) {
        const std::int32_t type = shell.shape();
        const float D = shell.outside() ? shell.diameter() - 2.0f * value(N::t) : shell.diameter();
        const float t = value(N::t), L = value(N::L), r = value(N::r), k = value(N::k),
                    feet = value(N::straight) / 12.0f;
        float area = 0.0f, D_max = 0.0f;
        HEAD_SURFACE_AREA(&D, &t, &t, &L, nullptr, &r, &feet, &k, &type, &area, &D_max);
        report_column("Outside Surface of Head with Straight Flange", area, TARVANE_AS_AREA);
    }
    if (o.strain > 0.0f) {
        report_value("Forming Strain, Extreme Fiber Elongation per UCS-79 or UHA-44",
                     number_text(o.strain, 3), "%");
    }
}

void Writer::warnings() const {
    if (is_short_of_thickness(shell, o)) report_line(THICKNESS_WARNING, ERROR_LINE);
    if (is_short_of_pressure(shell, o)) report_line(PRESSURE_WARNING, ERROR_LINE);
    write_head_warnings(shell, o);
}

} // namespace

void write_shell_report(const ShellInput& shell, const ShellOutcome& outcome,
                        const UnitSystem& units) {
    Writer(shell, outcome, units).write();
}

void write_head_warnings(const ShellInput& shell, const ShellOutcome& o) {
    constexpr float ROUNDED =
        1.001f; // a dimension that is rounded by less than a thousandth has no line
    for (const Check& check : form_checks(shell, o))
        if (check.falls_short() && *check.ratio() > ROUNDED)
            report_line("Warning: " + check.reason(), WARNING_LINE);
    if (o.found.thin != 0 && o.found.evaluated_14f == 0)
        report_line("Warning: Head is thinner than 0.002 L, and Appendix 1-4(f) was not evaluated.",
                    WARNING_LINE);
    if (o.found.t_status_14f == TARVANE_HEAD_VERY_THIN) {
        report_line(
            "Warning: Head is thinner than 0.0005 L, outside the rules of Appendix 1-4(f), see "
            "U-2(g).",
            WARNING_LINE);
    }
}

} // namespace tarvane::vessel
