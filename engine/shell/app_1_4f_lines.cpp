// The lines of an Appendix 1-4(f) calculation.
#include "report/lines.h"
#include "shell/app_1_4f_head.h"

namespace tarvane {

namespace {

void titled_ratio(std::string_view text, Real ratio, std::string_view behind, const Style& style) {
    LinePieces line;
    line.text(text).bare(ratio, 4).text(behind).write(style);
}

// A label, its value, and the unit after it.
void value_of(std::string_view label, Real value, std::string_view unit) {
    LinePieces line;
    line.text(label).bare(value, 4).text(" ").text(unit).write();
}
void length_of(std::string_view label, Real length) {
    value_of(label, as_diameter(length), unit_label(Kind::diameter));
}

// ---- what the calculation rests on -----------------------------------------------------------------

void temperature_note(const APP_1_4F_ARGUMENTS& h) {
    if (!(h.TempLimit <= h.Temp)) return;
    TEXT_LINE("Note: Please check the temperature limit given in Table 1-4.3 of the code.",
              NOTE_STYLE);
    TEXT_LINE("    If the max. design temp. exceeds the temp. limit, see U-2(g).", NOTE_STYLE);
}

void ellipse_note() {
    TEXT_LINE("Note: Calculation of L and r is from ASME VIII, Division 2, 4.3.7.1", NOTE_STYLE);
    TEXT_LINE("r = D(0.5/k-0.08) and L = D(0.44k+0.02) k = D/2h");
}

void geometry_line(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s) {
    LinePieces line;
    if (h.Element == ELLIPTICAL) {
        line.text("L = ").bare(as_diameter(s.Lc), 4).text(" : ");
        line.text("r = ").bare(as_diameter(s.rc), 4).text(" : ");
    }
    line.text("r/D = ").bare(s.rD, 4);
    line.text(" : C1 = ").bare(s.C1, 4).text(" : C2 = ").bare(s.C2, 4);
    line.write();
}

void headings(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s) {
    switch (h.Mode) {
    case SOLVE_THICKNESS_REPORT:
        TEXT_LINE("Required Thickness Calculation:", UNDERLINED_STYLE);
        TEXT_LINE("Final iteration:");
        break;
    case RATE_REPORT:
        titled_ratio("MAWP Calculation ( ts/L = ", s.ratio, ")", UNDERLINED_STYLE);
        break;
    default:
        titled_ratio("New & Cold Calculation ( ts/L = ", s.ratio, ")", UNDERLINED_STYLE);
        break;
    }
}

// ---- the steps -------------------------------------------------------------------------------------

void elastic_stress_lines(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s) {
    HEADING("Elastic Buckling Stress (Se):");
    TEXT_LINE(" = C1 * Et * (ts/r)");
    NUMBER_LINE(" = (@3 * @3 * @3)", {s.C1, as_stress(h.Et), s.ts / s.rc});
    VALUE_LINE(s.Se, Kind::stress);
}

void radius_lines(const APP_1_4F_TRIAL& s) {
    length_of("a    = 0.5 * D - r          = ", s.a);
    length_of("b    = L - r                = ", s.b);
    value_of("Beta = COS(A/B)             = ", s.Beta, "rad");
    value_of("Ph1  = SQRT(L*ts) / r       = ", s.Phi, "rad");
    length_of(s.Phi < s.Beta ? "c    = a / COS(Beta-Phi)    = " : "c    = a                    = ",
              s.c2);
    length_of("Re   = c + r                = ", s.Re);
}

// The same steps lead from Se and from Sy to their pressures.
void internal_pressure_lines(std::string_view heading, std::string_view symbols, Real stress,
                             const APP_1_4F_TRIAL& s, Real pressure) {
    const Real Re = as_diameter(s.Re);
    HEADING(heading);
    TEXT_LINE(symbols);
    NUMBER_LINE(" = (@1 * @3) / (@3 * @3 * ((0.5 * @3 / @3) - 1))",
                {as_stress(stress), as_thickness(s.ts), s.C2, Re, Re, as_diameter(s.rc)});
    VALUE_LINE(pressure, Kind::pressure);
}

void knuckle_failure_lines(const APP_1_4F_TRIAL& s) {
    const Real Pe = as_pressure(s.Pe);
    const Real Py = as_pressure(s.Py);
    const Real q = s.Pe / s.Py;
    HEADING("Knuckle Failure Internal Pressure (Pck):");
    if (q <= ELASTIC_LIMIT) {
        TEXT_LINE(" = 0.6 * Pe");
        NUMBER_LINE(" = 0.6 * @3", {Pe});
    } else if (q <= YIELD_LIMIT) {
        TEXT_LINE(" = 0.408 * Py + 0.192 * Pe");
        NUMBER_LINE(" = 0.408 * @3 + 0.192 * @3", {Py, Pe});
    } else {
        TEXT_LINE(" = 2.0 * Py");
        NUMBER_LINE(" = 2.0 * @3", {Py});
    }
    VALUE_LINE(s.Pck, Kind::pressure);
}

std::string_view allowable_heading(Int Mode) {
    switch (Mode) {
    case SOLVE_THICKNESS_REPORT:
        return "Allowable Pressure (Pa):";
    case RATE_REPORT:
        return "Maximum Allowable Working Pressure (MAWP):";
    default:
        return "Maximum Allowable Pressure (MAPNC):";
    }
}

// The MAWP at the top of a vessel that is full.
void hydrostatic_lines(Real Pa, Real Hydro) {
    const std::string_view unit = unit_label(Kind::pressure);
    LinePieces head;
    head.text("Less Operating Hydrostatic Head Pressure of ").bare(as_pressure(Hydro), 3);
    head.text(" ").text(unit).write();
    LinePieces line;
    line.text(" = ").bare(as_pressure(Pa), 3).text(" - ").bare(as_pressure(Hydro), 3);
    line.text(" = ").bare(as_pressure(Pa - Hydro), 3).text(" ").text(unit).write();
}

void allowable_lines(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s) {
    HEADING(allowable_heading(h.Mode));
    TEXT_LINE(" = Pck / 1.5");
    NUMBER_LINE(" = @3 / 1.5", {as_pressure(s.Pck)});
    if (h.Mode == RATE_REPORT && h.Hydro > 0.0f)
        hydrostatic_lines(s.Pa, h.Hydro);
    else
        VALUE_LINE(s.Pa, Kind::pressure);
}

} // namespace

void APP_1_4F_LINES(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s, bool titled) {
    const bool solved = h.Mode == SOLVE_THICKNESS_REPORT;
    if (solved && titled)
        titled_ratio("Appendix 1-4(f) Calculations ( ts/L = ", s.ratio, " )", HEADING_STYLE);
    if (solved) temperature_note(h);
    if (h.Element == ELLIPTICAL) ellipse_note();
    if (solved) geometry_line(h, s);
    headings(h, s);
    elastic_stress_lines(h, s);
    radius_lines(s);
    internal_pressure_lines("Buckling Internal Pressure (Pe):",
                            " = (Se * ts) / (C2 * Re * ((0.5 * Re / r) - 1))", s.Se, s, s.Pe);
    internal_pressure_lines("Yield Internal Pressure (Py):",
                            " = (Sy * ts) / (C2 * Re * ((0.5 * Re / r) - 1))", h.Sy, s, s.Py);
    knuckle_failure_lines(s);
    allowable_lines(h, s);
}

void APP_1_4F_TAIL(const APP_1_4F_ARGUMENTS& h, Real ts, bool converged) {
    LinePieces line;
    line.text(h.TminLabel == 0 ? "App 1-4(f) Calculated Required Thick. (TR)       : "
                               : "App 1-4(f) Calculated Required Thick. (TMINC)    : ");
    line.bare(as_thickness(ts), 4).text(" ").text(unit_label(Kind::thickness)).write();
    if (converged) return;
    TEXT_LINE("Error on Appendix 14(f) calculation, the solution could not", ERROR_STYLE);
    TEXT_LINE("converge after 1000 trys. Contact Kessendale for support. ", ERROR_STYLE);
}

} // namespace tarvane
