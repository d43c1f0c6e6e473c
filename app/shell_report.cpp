#include "shell_report.h"

#include "report_lines.h"
#include "results.h"
#include "shell_results.h"
#include "tarvane/tarvane.h"
#include "text.h"

#include <algorithm>
#include <cstdint>

namespace tarvane::app {

using N = ShellNumber;
using namespace as;

namespace {

constexpr std::size_t RULE_SYMBOL_ENDS = 27;

std::int32_t length(std::string_view text) { return static_cast<std::int32_t>(text.size()); }

// "Corroded Inside Radius    R = D / 2 + c", or the label of an input value.
void rule_column(const RuleColumn& value) {
    if (value.expression.empty())
        return report_input(value.label, value.symbol, value.value, value.kind);
    std::string label = value.label;
    if (label.size() + value.symbol.size() < RULE_SYMBOL_ENDS)
        label.resize(RULE_SYMBOL_ENDS - value.symbol.size(), ' ');
    report_column(label + value.symbol + " = " + value.expression, value.value, value.kind);
}

// ---- formulas --------------------------------------------------------------------------------------

bool stress_unit_differs(const UnitSystem& units) {
    return units.factor(Quantity::pressure) != units.factor(Quantity::stress);
}

class Writer {
  public:
    Writer(const ShellInput& element, const ShellOutcome& results, const UnitSystem& file_units)
        : shell(element), o(results), units(file_units) {}

    void write() const {
        BEGIN_REPORT();
        input_values();
        check_openings(shell);
        write_base_values(o, units);
        write_factors(o, units);
        thickness();
        mawp();
        map_nc();
        write_last_as(o.rules.stress, o.stress);
        closing_values();
        warnings();
        report_line("");
        CLOSING_NOTE();
    }
    void thickness() const;
    void mawp() const;

  private:
    const ShellInput& shell;
    const ShellOutcome& o;
    const UnitSystem& units;

    float value(N number) const { return shell.setting(number); }

    void write_one(const Formula& f, float result) const { write_formula(f, result, units); }
    void write_all(const std::vector<Formula>& formulas) const {
        for (const Formula& f : formulas)
            write_one(f, f.value);
    }
    // The last formula gives what SHLINT gave.
    void write_last_as(const std::vector<Formula>& formulas, float result) const {
        for (const Formula& f : formulas)
            write_one(f, &f == &formulas.back() ? result : f.value);
    }

    void input_values() const;
    void dimensions() const;
    void head_dimensions() const;
    void cone_dimensions() const;
    void flat_dimensions() const;
    void map_nc() const;
    void limited(std::vector<Formula> formulas, std::string_view symbol, float result, int mode,
                 std::string_view title) const;
    float head_pressure(int mode, std::int32_t& cls) const;
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
    report_input("Corrosion Allowance", "c", value(N::c), THICKNESS);
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
    report_line(o.rules.older_division_2 ? "ASME Code, Section VIII Division 2, before 2007"
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
    if (!shell.knuckle()) return;
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

// ---- thickness -------------------------------------------------------------------------------------

// UG-16(b), by the service that set the minimum.
std::string_view minimum_rule(const ShellInput& shell) {
    if (shell.setting(N::service) == 2.0f) return "UG-16 (b)(3)";
    const std::string& name = shell.material();
    const bool listed = LIS_UCS23_MATERIAL(name.data(), length(name)) != 0;
    return shell.setting(N::service) == 1.0f && listed ? "UG-16 (b)(4)" : "UG-16 (b)";
}

void Writer::thickness() const {
    write_all(o.rules.thickness);
    const float tr = o.rules.thickness.back().value;
    if (o.status_14f == TARVANE_HEAD_THIN || o.status_14f == TARVANE_HEAD_VERY_THIN) {
        std::int32_t cls = TARVANE_HEAD_THIN; // asks for the title
        head_pressure(1, cls);
    }
    Symbols symbols;
    symbols.put("tr", tr, THICKNESS);
    symbols.put("c", value(N::c), THICKNESS);
    symbols.put("Ut", value(N::Ut), THICKNESS);
    const bool minimum = o.t_req > tr;
    const bool thin = o.t_14f > 0.0f;
    std::string_view governing = "tr";
    if (minimum || thin) {
        if (thin) symbols.put("t14f", o.t_14f, THICKNESS);
        if (minimum) symbols.put("tmin", o.t_req, THICKNESS);
        const std::string_view text = !minimum ? "max( tr, t14f )"
                                      : thin   ? "max( tr, t14f, tmin )"
                                               : "max( tr, tmin )";
        std::string_view rule = o.rules.thickness.back().rule;
        if (minimum) rule = minimum_rule(shell);
        if (thin && o.t_14f > o.t_req) rule = "App. 1-4 (f)";
        write_one(formula("Governing Required Thickness [tg]:", text, rule, THICKNESS, symbols),
                  o.t_governing);
        symbols.put("tg", o.t_governing, THICKNESS);
        governing = "tg";
    }
    write_one(formula("Required Thickness with Allowances [treq]:",
                      std::string(governing) + " + c" + (value(N::Ut) != 0.0f ? " + Ut" : ""), "",
                      THICKNESS, symbols),
              o.t_required);
}

// ---- pressures -------------------------------------------------------------------------------------

// Appendix 1-4(f) with its lines: mode 1 solves for the thickness, 2 rates the corroded head, 3 the new
// one. Gives the pressure of the first trial.
float Writer::head_pressure(int mode, std::int32_t& cls) const {
    const auto at = [&](N number) -> const float* {
        return &shell.settings[static_cast<std::size_t>(number)];
    };
    const HeadModuli E = head_moduli(shell);
    const bool cold = mode == 3;
    const std::int32_t element = shell.shape(), outside = shell.outside() ? 1 : 0, label = 0,
                       what = mode;
    const float D = shell.diameter(), none = 0.0f, start = 0.01f;
    const float modulus = cold ? E.cold : E.design, yield = cold ? o.Sy_cold : value(N::Sy);
    float t_solved = 0.0f, pressure = 0.0f, ratio = 0.0f;
    APP_1_4F_HEAD(&element, &outside, at(N::P), at(N::t), nullptr, at(N::L), &D, at(N::r), at(N::k),
                  at(N::T), &modulus, &yield, at(N::temp_limit), &t_solved, &cls,
                  cold ? &none : at(N::c), cold ? &none : at(N::Ut), &pressure, &what, &label,
                  &none, nullptr, &ratio, &start);
    const std::int32_t on = 1;
    SET_IWRITE(&on); // a head without solution leaves it as the mode had it
    return pressure;
}

// The pressure by the ordinary formulas, and behind it what Appendix 1-4(f) leaves of it.
void Writer::limited(std::vector<Formula> formulas, std::string_view symbol, float result, int mode,
                     std::string_view title) const {
    write_all(formulas);
    std::int32_t cls = TARVANE_HEAD_NOT_RUN;
    const float Pa = head_pressure(mode, cls);
    if (cls == TARVANE_HEAD_FAILED) {
        report_line("Warning: Appendix 1-4(f) has no solution for this geometry.", ERROR_LINE);
        return;
    }
    const float ordinary = formulas.back().value;
    Symbols symbols;
    symbols.put(symbol, ordinary, PRESSURE);
    symbols.put("Pa", Pa, PRESSURE);
    const std::string text = "min( " + std::string(symbol) + ", Pa )";
    write_one(formula(title, text, Pa < ordinary ? "App. 1-4 (f)" : formulas.back().rule, PRESSURE,
                      symbols),
              result);
}

void Writer::mawp() const {
    if (o.limits_14f && o.thin) {
        limited(o.rules.mawp, "MAWP", o.mawp, 2,
                "Maximum Allowable Working Pressure, with Appendix 1-4(f) [MAWP]:");
    } else {
        write_last_as(o.rules.mawp, o.mawp);
    }
}

void Writer::map_nc() const {
    if (o.limits_14f && o.thin_new) {
        limited(o.rules.map_nc, "MAPNC", o.map_nc, 3,
                "Maximum Allowable Pressure, New and Cold, with Appendix 1-4(f) [MAPNC]:");
    } else {
        write_last_as(o.rules.map_nc, o.map_nc);
    }
}

// ---- further results -------------------------------------------------------------------------------

void Writer::closing_values() const {
    if (!o.rules.older_division_2) {
        report_line("");
        report_column("Corrosion Allowance at Failure", o.fail_ca, THICKNESS);
        if (shell.knuckle() && o.fail_ca_knuckle >= 0.0f)
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

void write_formula(const Formula& formula, float result, const UnitSystem& units) {
    report_heading(formula.title);
    report_line(" = " + formula.text + (formula.rule.empty() ? "" : " per " + formula.rule));
    std::int32_t mode = 1; // a line that goes on keeps its margin
    for (const NumberLine& numbers : number_lines(formula, stress_unit_differs(units))) {
        const std::vector<std::int32_t> kinds(numbers.kinds.begin(), numbers.kinds.end());
        const auto count = static_cast<std::int32_t>(numbers.values.size());
        WRITE_NUMBERS(numbers.text.data(), length(numbers.text), numbers.values.data(),
                      kinds.data(), &count, &mode);
        mode = 4;
    }
    const std::int32_t kind = formula.kind;
    WRITE_VALUE(&result, &kind, "", 0, PLAIN_LINE);
}

void write_base_values(const ShellOutcome& outcome, const UnitSystem& units) {
    for (const RuleColumn& value : outcome.rules.columns)
        rule_column(value);
    if (stress_unit_differs(units)) {
        report_line("Note: in the formulas stresses and pressures both stand in the unit of the "
                    "result.",
                    NOTE_LINE);
    }
}

void write_factors(const ShellOutcome& outcome, const UnitSystem& units) {
    for (const Formula& factor : outcome.rules.factors)
        write_formula(factor, factor.value, units);
}

void write_thickness(const ShellInput& shell, const ShellOutcome& outcome,
                     const UnitSystem& units) {
    Writer(shell, outcome, units).thickness();
}

void write_mawp(const ShellInput& shell, const ShellOutcome& outcome, const UnitSystem& units) {
    Writer(shell, outcome, units).mawp();
}

void write_head_warnings(const ShellInput& shell, const ShellOutcome& o) {
    for (const std::string_view warning : form_warnings(shell))
        report_line("Warning: " + std::string(warning), WARNING_LINE);
    if (o.thin && !o.limits_14f)
        report_line("Warning: Head is thinner than 0.002 L, and Appendix 1-4(f) was not evaluated.",
                    WARNING_LINE);
    if (o.status_14f == TARVANE_HEAD_VERY_THIN) {
        report_line(
            "Warning: Head is thinner than 0.0005 L, outside the rules of Appendix 1-4(f), see "
            "U-2(g).",
            WARNING_LINE);
    }
}

} // namespace tarvane::app
