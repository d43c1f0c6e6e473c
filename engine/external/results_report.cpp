#include "external/results_report.h"

#include "external/state.h"
#include "frame/switches.h"
#include "report/lines.h"

namespace tarvane {

namespace {

bool chart_holds(std::string_view part) {
    return EXTERNAL.chart.view().find(part) != std::string_view::npos;
}

void material_lines(Real Fy, Real Temp) {
    LinePieces()
        .text("Elastic Modulus from Chart: ")
        .text(EXTERNAL.chart.trimmed())
        .text(" at ")
        .bare(as_temperature(Temp), 0)
        .blanks(1)
        .text(UNITS.temperature_label.trimmed())
        .text(" : ")
        .bare(as_stress(EXTERNAL.curve.E * 1.0E+6f), 2)
        .blanks(1)
        .text(unit_label(Kind::stress))
        .write();
    if ((chart_holds("CS-3") && Temp <= 300.0f) || chart_holds("NFA-11")) {
        LinePieces()
            .text("Material Yield Stress                     : ")
            .bare(as_stress(Fy), 2)
            .blanks(1)
            .text(unit_label(Kind::stress))
            .write();
    }
}

std::string_view stage_title() {
    switch (EXTERNAL.stage) {
    case EXTERNAL_STAGE::maep:
        return "Results for Maximum Allowable External Pressure (MAEP):";
    case EXTERNAL_STAGE::thickness:
        return "Results for Required Thickness (Tca):";
    case EXTERNAL_STAGE::length:
        break;
    }
    return "Results for Maximum Stiffened Length (Slen):";
}

void EMAP_line(const EXTERNAL_RECORD& r) {
    const Real B = as_stress(r.B);
    const Real EMAP = as_pressure(r.EMAP);
    const std::string_view unit = unit_label(Kind::pressure);
    switch (r.Element) {
    case ELLIPTICAL:
        NUMBER_LINE("EMAP = B/(K0*D/t) = @4/(@4 *@4 ) = @4", {B, r.K0, r.dt, EMAP}, 1, unit);
        return;
    case SPHERE:
        NUMBER_LINE("EMAP = B/((D/t)/2) = @4/(@4 / 2 ) = @4", {B, r.dt, EMAP}, 1, unit);
        return;
    case TORISPHERICAL:
        NUMBER_LINE("EMAP = B/(Ro/t) = @4 /@4 = @4", {B, r.dt, EMAP}, 1, unit);
        return;
    default:
        break;
    }
    if (cylinder_or_cone(r.Element) && r.dt < 10.0f) {
        const THICK_CYLINDER thick = THICK_PRESSURES(r.dt, r.B, EXTERNAL.S);
        NUMBER_LINE(thick.Pa1 <= thick.Pa2 ? "EMAP = (2.167/(D/t)-0.0833)*B = @4"
                                           : "EMAP = 2*S/(D/t) * (1-1/(D/t)) = @4",
                    {EMAP}, 1, unit);
        return;
    }
    NUMBER_LINE("EMAP = (4*B)/(3*(D/t)) = (4*@4)/(3*@4) = @4", {B, r.dt, EMAP}, 1, unit);
}

void cylinder_table(const EXTERNAL_RECORD& r, const Style& style, Int code) {
    const Real length = as_diameter(r.L);
    TEXT_LINE("    Tca         OD        SLEN       D/t       L/D   Factor A        B");
    LinePieces()
        .fixed(as_thickness(r.t), 9, 4)
        .fixed(as_diameter(r.Do), 11, 3)
        .fixed(length, length > 1.0E+6f ? 15 : 12, 2)
        .fixed(r.dt, 10, 2)
        .fixed(r.ld, 10, 4)
        .fixed(r.A, 11, 7)
        .fixed(as_stress(r.B), 11, 2)
        .write(style);
    if (r.Element != CONE) return;
    LinePieces().blanks(20).fixed(as_diameter(r.Lout), 12, 2).write(style);
    TEXT_LINE("Note: The cone thickness used in the calculation has been modified", NOTE_STYLE);
    TEXT_LINE(code == ASME_VIII_2 ? "      per AD-300.1, te = t * cos(alpha)."
                                  : "      per UG-33(f), te = t * cos(alpha).",
              NOTE_STYLE);
}

void head_table(const EXTERNAL_RECORD& r, const Style& style) {
    switch (r.Element) {
    case ELLIPTICAL:
        TEXT_LINE("    Tca         OD         D/t    Factor A           B");
        break;
    case SPHERE:
        TEXT_LINE("    Tca  Sphere OD         D/t    Factor A           B");
        break;
    case TORISPHERICAL:
        TEXT_LINE("    Tca  Crown Rad        Ro/t    Factor A           B");
        break;
    default:
        return;
    }
    LinePieces()
        .fixed(as_thickness(r.t), 9, 4)
        .fixed(as_diameter(r.Do), 11, 3)
        .fixed(r.dt, 12, 2)
        .fixed(r.A, 12, 7)
        .fixed(as_stress(r.B), 12, 2)
        .write(style);
}

void slender_cylinder_warning() {
    TEXT_LINE("Warning: D/t was greater than 1000.  Factor A was based on information in ",
              WARNING_STYLE);
    TEXT_LINE("       the book, \"Theory and Design of Pressure Vessels\",  by Ferrand",
              WARNING_STYLE);
    TEXT_LINE("       second edition.  Check this geometry carefully and see U-2(g).",
              WARNING_STYLE);
}

} // namespace

void EXT_RESULTS_REPORT(Real Fy, Real Temp, Int code) {
    const EXTERNAL_RECORD& r = EXTERNAL.last;
    const bool maep = EXTERNAL.stage == EXTERNAL_STAGE::maep;
    if (GLOBALS_mp_G_NUSE_CASE2286 == 1 || code == ASME_VIII_2) return;
    if (cylinder_or_cone(r.Element) && r.L < 4.0f) return;

    if (maep) material_lines(Fy, Temp);
    HEADING(stage_title());
    EMAP_line(r);
    const Style& style = maep && r.EMAP < r.P + 0.001f ? ERROR_STYLE : PLAIN;
    if (cylinder_or_cone(r.Element)) {
        cylinder_table(r, style, code);
        if (maep && r.dt > 1000.0f) slender_cylinder_warning();
    } else {
        head_table(r, style);
    }
}

} // namespace tarvane
