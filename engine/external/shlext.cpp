#include "external/shlext.h"

#include "external/results_report.h"
#include "external/state.h"
#include "external/stress_method.h"
#include "frame/switches.h"
#include "materials/modulus.h"
#include "report/lines.h"

#include <algorithm>

namespace tarvane {

namespace {

bool USE_CHARTS(Real Fy) {
    if (Fy <= 0.001f) return true; // the stresses are measured by the yield
    if (GLOBALS_mp_G_NUSE_CASE2286 == 1) return false;
    return moduleCode == ASME_VIII_1 || !present_division_2();
}

// Chart and curve of this element. Without a chart file the curve of the last call stands.
void PREPARE_CHART(const SHLEXT_CALL& s) {
    EXTERNAL_STATE& x = EXTERNAL;
    x.chart = std::string_view(s.Chart, 8);
    std::fill_n(s.Chart + 8, 4, ' '); // in the caller's own field
    x.Temp = s.Temp;
    x.S = s.S;
    READ_CHART(x.chart.view(), s.Temp, x.curve, s.Fy);
    x.CarbonChart = x.chart.view().find("CS") != std::string_view::npos ? 1 : 0;
    x.Emod = x.curve.E * 1.0E+6f;
}

void temperature_warning() {
    BLANK_LINE();
    LinePieces()
        .text("Warning - Temperature Violation for Chart : ")
        .text(EXTERNAL.chart.trimmed())
        .text("!")
        .write(WARNING_STYLE);
    LinePieces()
        .text("Maximum Allowed Temperature : ")
        .bare(as_temperature(EXTERNAL.curve.t_used), 0)
        .blanks(1)
        .text(UNITS.temperature_label.trimmed())
        .write(WARNING_STYLE);
    TEXT_LINE("          This temperature value will be used in the calculation.", WARNING_STYLE);
}

// The wall as the equations take it: that of a cone across its axis (UG-33(f)).
struct WALL {
    Real te, ce, ue;
    Real cosA = 1.0f;
    Real Ds = 0.0f; // outside diameter of a cone's small end
};

WALL MEASURE_WALL(SHLEXT_CALL& s) {
    WALL w{.te = s.t, .ce = s.c, .ue = s.Ut};
    if (s.Element == CONE) {
        const Real alpha = s.Alpha * PI / 180.0f;
        w.cosA = cos(alpha);
        s.Do = s.D + 2.0f * (s.t - s.Ut) / w.cosA;
        w.Ds = s.Dsmall + 2.0f * (s.t - s.Ut) / w.cosA;
        w.te = s.t * w.cosA;
        w.ce = s.c * w.cosA;
        w.ue = s.Ut * w.cosA;
    } else if (s.Element == TORISPHERICAL) {
        s.Do = s.L + s.t - s.Ut;
    } else {
        s.Do = s.D + 2.0f * (s.t - s.Ut);
    }
    return w;
}

// A cone so flat that it is one (UG-34, C = 0.25).
void FLAT_HEAD(SHLEXT_CALL& s, const WALL& w) {
    s.Tca = (s.D + 2.0f * s.c) * std::sqrt(0.25f * s.P / s.S) + s.c + w.ue;
    s.Slen = s.ConeLength;
    const Real x = ((s.t - s.c) - w.ue) / (s.D + 2.0f * s.c);
    s.MAEP = 4.0f * square(x) * s.S;
    TEXT_LINE("Since Alpha > 60 degrees, compute as a Flat Head per UG-34");
}

void stage_report(const SHLEXT_CALL& s) {
    if (s.Print == 1 && setup_truncated(48) != 0) EXT_RESULTS_REPORT(s.Fy, s.Temp, moduleCode);
}

// ---- by the charts -----------------------------------------------------------------------------------

void CHART_METHOD(SHLEXT_CALL& s, const WALL& w) {
    EXTERNAL_STATE& x = EXTERNAL;
    const CHART_CALL given{.Element = s.Element,
                           .Do = s.Do,
                           .t = w.te,
                           .c = w.ce,
                           .u = w.ue,
                           .k = s.k,
                           .L = s.Length,
                           .S = s.S,
                           .cosA = w.cosA,
                           .A = s.FactorA,
                           .B = s.FactorB};

    x.stage = EXTERNAL_STAGE::maep;
    CHART_CALL maep = given;
    EMAP_AT(maep, x.curve);
    s.MAEP = maep.EMAP;
    s.FactorA = maep.A;
    s.FactorB = maep.B;
    stage_report(s);

    x.stage = EXTERNAL_STAGE::thickness;
    if (s.P > 0.001f) {
        CHART_CALL thickness = given;
        TCA_SOLVE(thickness, x.curve, s.P);
        s.Tca = thickness.t;
        stage_report(s);
    }

    x.stage = EXTERNAL_STAGE::length;
    s.Slen = s.Length;
    if (s.Element == CYLINDER) {
        CHART_CALL length = given;
        SLEN_SOLVE(length, x.curve, s.P);
        s.Slen = length.L;
        if (s.Length > 4.0f) stage_report(s);
    }
}

// ---- by buckling stress ------------------------------------------------------------------------------

struct BUCKLING {
    Real Pa, Fha;
};

// The other kinds have no formula of this method: their pressure stays what the caller gave, and
// their required thickness is the wall itself.
bool has_buckling_formula(Int Element) { return Element >= CYLINDER && Element <= CONE; }

// Allowable pressure and stress at a net thickness and a length.
BUCKLING BUCKLING_AT(const SHLEXT_CALL& s, const WALL& w, Real E, Real tc, Real length) {
    if (cylinder_or_cone(s.Element)) {
        // A cone counts as the cylinder of its mean diameter and slant length.
        const bool cone = s.Element == CONE;
        const Real Do = cone ? (s.Do + w.Ds) / 2.0f / w.cosA : s.Do;
        const Real L = cone ? s.ConeLength / w.cosA : length;
        const BUCKLING_CYLINDER shell = CC2286_CYLINDER(Do, L, tc, E, s.Fy);
        return {shell.Pa, shell.Fha};
    }
    Real kO = 0.0f; // outside aspect ratio
    if (s.Element == ELLIPTICAL) {
        const Real x = (s.Do - 2.0f * s.t) / 2.0f / s.k + s.t;
        kO = s.Do / 2.0f / x;
    }
    const BUCKLING_HEAD head = CC2286_HEAD(s.Element, s.Do, E, tc, s.Fy, -1.0f, -1.0f, kO);
    return {head.Pa, head.Fha};
}

constexpr Real PRESSURE_TOLERANCE = 0.001f;
constexpr Int COUNTER_END = 26;

// Net thickness for the design pressure, from one to start with.
Real BUCKLING_THICKNESS(const SHLEXT_CALL& s, const WALL& w, Real E, Real t) {
    for (Int counter = 1; counter < COUNTER_END; ++counter) {
        const Real Pa = BUCKLING_AT(s, w, E, t, s.Length).Pa;
        t = t * std::sqrt(s.P / Pa);
        if (std::fabs(s.P - Pa) <= PRESSURE_TOLERANCE) break;
    }
    return t;
}

void STRESS_METHOD(SHLEXT_CALL& s, const WALL& w) {
    EXTERNAL_STATE& x = EXTERNAL;
    x.stage = EXTERNAL_STAGE::maep;
    const Real tcc = (s.t - s.c) - w.ue;
    if (x.CarbonChart != 0) {
        SET_CHART(x.chart.view());
        x.Emod = ASMEMOD(s.Temp, s.Material, ASME_VIII_1) * 1.0E+6f;
    }
    const Real E = x.Emod;
    IWRITE = s.Print;
    HEADING("Maximum External Pressure per Code Case 2286 or Div. 2 Section 4.4");
    if (has_buckling_formula(s.Element)) {
        const BUCKLING given = BUCKLING_AT(s, w, E, tcc, s.Length);
        s.MAEP = given.Pa;
        s.Fha = given.Fha;
    }
    stage_report(s);

    x.stage = EXTERNAL_STAGE::thickness;
    if (s.P > 0.001f) {
        Real Tca = w.te;
        if (has_buckling_formula(s.Element)) {
            IWRITE = 0;
            Tca = BUCKLING_THICKNESS(s, w, E, Tca);
        }
        s.Tca = Tca + s.c + w.ue;
        stage_report(s);
    }

    x.stage = EXTERNAL_STAGE::length;
    s.Slen = s.Length;
    if (s.Element != CYLINDER) return;
    IWRITE = 0;
    if (s.P < 0.001f) {
        s.Slen = NO_VALUE;
        return;
    }
    for (Int counter = 1; counter < COUNTER_END; ++counter) {
        const Real Pa = BUCKLING_AT(s, w, E, tcc, s.Slen).Pa;
        s.Slen = s.Slen * std::sqrt(Pa / s.P);
        if (std::fabs(s.P - Pa) <= PRESSURE_TOLERANCE) break;
        if (s.Slen > 999999.0f) {
            s.Slen = 999999.0f;
            break;
        }
    }
}

// ---- corrosion ---------------------------------------------------------------------------------------

// Least thickness of a service (UG-16), of the units that the pressure is shown in.
Real LEAST_THICKNESS(Int Service) {
    const bool imperial = UNITS.pressure <= 1.0001f;
    switch (Service) {
    case 1:
        return imperial ? 0.09375f : 0.098425195f;
    case 2:
        return imperial ? 0.25f : 0.23622048f;
    default:
        return imperial ? 0.0625f : 0.05905512f;
    }
}

void FAILURE_CORROSION(SHLEXT_CALL& s) {
    if (!(s.P > 1e-05f)) return;
    const Real spare = s.t - s.Tca;
    if (!(spare < 0.0f)) s.FailCA = spare + s.c;
    const Real Tm = LEAST_THICKNESS(s.Service);
    if (s.t - s.FailCA < Tm) s.FailCA = s.t - Tm;
}

} // namespace

void SHLEXT(SHLEXT_CALL& s) {
    moduleCode = setup_design_code(); // the steps of a later flange read it, too
    s.FailCA = NO_VALUE;
    s.Fha = 0.0f;
    PREPARE_CHART(s);
    if (from_pd_5500(moduleCode)) return;
    if (s.Temp > EXTERNAL.curve.t_used) temperature_warning();

    const WALL w = MEASURE_WALL(s);
    if (s.Element == CONE && s.Alpha > 60.0f) return FLAT_HEAD(s, w);
    if (s.DoGiven == 1) s.Do = s.D;

    EXTERNAL.last.P = s.P;
    if (USE_CHARTS(s.Fy))
        CHART_METHOD(s, w);
    else
        STRESS_METHOD(s, w);
    FAILURE_CORROSION(s);
    IWRITE = 1;
}

} // namespace tarvane
