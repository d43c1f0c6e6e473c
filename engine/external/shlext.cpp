#include "external/shlext.h"

#include "external/results.h"
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
    if (Fy <= 0.001f) return true; // the stresses are compared with the yield
    if (GLOBALS_mp_G_NUSE_CASE2286 == 1) return false;
    return moduleCode == ASME_VIII_1 || !present_division_2();
}

// Chart and curve of this element. Without a chart file the curve of the last call is used.
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

// ---- what is found -----------------------------------------------------------------------------------

void note_given(const SHLEXT_CALL& s) {
    const EXTERNAL_STATE& x = EXTERNAL;
    EXTERNAL_RESULTS& f = EXTERNAL_FOUND;
    f.code = moduleCode;
    f.older_division_2 = G_NUSE_OLD_DIV_2;
    f.case_2286 = GLOBALS_mp_G_NUSE_CASE2286;
    f.table_g = GLOBALS_mp_G_NUSE_TABLEG;
    f.element = s.Element;
    f.outside = s.DoGiven;
    std::copy_n(x.chart.view().data(), CHART_COLUMNS, f.chart);
    std::copy_n(CHART_TAKEN.view().data(), CHART_COLUMNS, f.chart_taken);
    f.carbon_steel = x.CarbonChart;
    f.p = s.P;
    f.temp = s.Temp;
    f.s = s.S;
    f.sy = s.Fy;
    if (from_pd_5500(moduleCode)) {
        f.status = EXTERNAL_NO_CODE;
        return;
    }
    f.status = EXTERNAL_CALCULATED;
    f.above_chart = s.Temp > x.curve.t_used ? 1 : 0;
    f.temp_curve = x.curve.t_used;
    f.modulus = x.Emod;
    f.modulus_status = f.above_chart == 1 ? CHART_EXCEEDED : OF_CHART;
}

Int chart_rules(Int Element) {
    if (Element < CYLINDER || Element > CONE) return NO_RULES;
    if (moduleCode == ASME_VIII_2) return BY_AD_300;
    return Element == CYLINDER ? BY_UG_28 : BY_UG_33;
}

Int buckling_rules() {
    return moduleCode == ASME_VIII_2 && present_division_2() ? BY_DIV2_4_4 : BY_CASE_2286;
}

void note_method(Int method, Int rules) {
    EXTERNAL_FOUND.method = method;
    EXTERNAL_FOUND.rules = rules;
}

constexpr Int index_of(EXTERNAL_STAGE stage) { return static_cast<Int>(stage) - 1; }

// A stage by the charts, with its last evaluation.
void note_stage(const CHART_CALL& call) {
    const EXTERNAL_RECORD& last = EXTERNAL.last;
    EXTERNAL_RESULTS& f = EXTERNAL_FOUND;
    const Int i = index_of(EXTERNAL.stage);
    f.evaluations[i] = call.evaluations;
    f.search[i] = call.search;
    f.a_by[i] = last.A_by;
    f.b_by[i] = last.B_by;
    f.thick_by[i] = last.thick_by;
    f.thickness[i] = last.t;
    f.diameter[i] = last.Do;
    f.length[i] = last.L;
    f.d_over_t[i] = last.dt;
    f.l_over_d[i] = last.ld;
    f.factor_a[i] = last.A;
    f.factor_b[i] = last.B;
    f.pressure[i] = last.EMAP;
    if (last.Element == ELLIPTICAL) f.k0 = last.K0;
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

void note_wall(const SHLEXT_CALL& s, const WALL& w) {
    EXTERNAL_RESULTS& f = EXTERNAL_FOUND;
    f.tc = (s.t - s.c) - s.Ut;
    f.cos_alpha = w.cosA;
    f.d_o = s.Do;
    if (s.Element == CONE) f.d_small = w.Ds;
}

void note_flat_head(const SHLEXT_CALL& s, const WALL& w) {
    EXTERNAL_RESULTS& f = EXTERNAL_FOUND;
    note_method(AS_FLAT_HEAD, BY_UG_34);
    note_wall(s, w);
    f.maep = s.MAEP;
    f.tca = s.Tca;
}

// A result that no stage calculated is the caller's own.
void note_results(const SHLEXT_CALL& s, const WALL& w) {
    EXTERNAL_RESULTS& f = EXTERNAL_FOUND;
    note_wall(s, w);
    if (f.evaluations[index_of(EXTERNAL_STAGE::maep)] > 0) f.maep = s.MAEP;
    if (s.P > 0.001f) f.tca = s.Tca;
    if (s.Element == CYLINDER) f.slen = s.Slen;
    f.fail_ca = s.FailCA;
}

// A cone so flat that it counts as a flat head (UG-34, C = 0.25).
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
    note_stage(maep);
    s.MAEP = maep.EMAP;
    s.FactorA = maep.A;
    s.FactorB = maep.B;
    stage_report(s);

    x.stage = EXTERNAL_STAGE::thickness;
    if (s.P > 0.001f) {
        CHART_CALL thickness = given;
        TCA_SOLVE(thickness, x.curve, s.P);
        note_stage(thickness);
        s.Tca = thickness.t;
        stage_report(s);
    }

    x.stage = EXTERNAL_STAGE::length;
    s.Slen = s.Length;
    if (s.Element == CYLINDER) {
        CHART_CALL length = given;
        SLEN_SOLVE(length, x.curve, s.P);
        if (length.evaluations > 0) note_stage(length);
        s.Slen = length.L;
        if (s.Length > 4.0f) stage_report(s);
    }
}

// ---- by buckling stress ------------------------------------------------------------------------------

struct BUCKLING {
    Real Pa, Fha;
    Real Do, L, tc; // of the cylinder or head that was evaluated
    Real FS, Fhe, Fic;
    FIC_SOURCE Fic_by;
};

// A stage by buckling stress, with its last evaluation.
void note_stage(const BUCKLING& b, Int evaluations, SEARCH_END search) {
    EXTERNAL_RESULTS& f = EXTERNAL_FOUND;
    const Int i = index_of(EXTERNAL.stage);
    f.evaluations[i] = evaluations;
    f.search[i] = search;
    f.fic_by[i] = b.Fic_by;
    f.thickness[i] = b.tc;
    f.diameter[i] = b.Do;
    f.length[i] = b.L;
    f.d_over_t[i] = b.Do / b.tc;
    f.fhe[i] = b.Fhe;
    f.fic[i] = b.Fic;
    f.fs[i] = b.FS;
    f.fha[i] = b.Fha;
    f.pressure[i] = b.Pa;
}

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
        return {.Pa = shell.Pa,
                .Fha = shell.Fha,
                .Do = Do,
                .L = L,
                .tc = tc,
                .FS = shell.FS,
                .Fhe = shell.Fhe,
                .Fic = shell.Fic,
                .Fic_by = shell.Fic_by};
    }
    Real kO = 0.0f; // outside aspect ratio
    if (s.Element == ELLIPTICAL) {
        const Real x = (s.Do - 2.0f * s.t) / 2.0f / s.k + s.t;
        kO = s.Do / 2.0f / x;
    }
    const BUCKLING_HEAD head = CC2286_HEAD(s.Element, s.Do, E, tc, s.Fy, -1.0f, -1.0f, kO);
    return {.Pa = head.Pa,
            .Fha = head.Fha,
            .Do = s.Do,
            .L = length,
            .tc = tc,
            .FS = head.FS,
            .Fhe = head.Fhe,
            .Fic = head.Fic,
            .Fic_by = head.Fic_by};
}

constexpr Real PRESSURE_TOLERANCE = 0.001f;
constexpr Int COUNTER_END = 26;

// Net thickness for the design pressure, from one to start with.
Real BUCKLING_THICKNESS(const SHLEXT_CALL& s, const WALL& w, Real E, Real t) {
    BUCKLING at{};
    SEARCH_END search = SEARCH_USED_UP;
    Int counter = 1;
    for (; counter < COUNTER_END && search == SEARCH_USED_UP; ++counter) {
        at = BUCKLING_AT(s, w, E, t, s.Length);
        t = t * std::sqrt(s.P / at.Pa);
        if (std::fabs(s.P - at.Pa) <= PRESSURE_TOLERANCE) search = SEARCH_FOUND;
    }
    note_stage(at, counter - 1, search);
    return t;
}

void STRESS_METHOD(SHLEXT_CALL& s, const WALL& w) {
    EXTERNAL_STATE& x = EXTERNAL;
    x.stage = EXTERNAL_STAGE::maep;
    const Real tcc = (s.t - s.c) - w.ue;
    if (x.CarbonChart != 0) {
        SET_CHART(x.chart.view());
        x.Emod = ASMEMOD(s.Temp, s.Material, ASME_VIII_1) * 1.0E+6f;
        EXTERNAL_FOUND.modulus_status = MODULUS_CAME;
    }
    const Real E = x.Emod;
    EXTERNAL_FOUND.modulus = E;
    IWRITE = s.Print;
    HEADING("Maximum External Pressure per Code Case 2286 or Div. 2 Section 4.4");
    if (has_buckling_formula(s.Element)) {
        const BUCKLING given = BUCKLING_AT(s, w, E, tcc, s.Length);
        s.MAEP = given.Pa;
        s.Fha = given.Fha;
        note_stage(given, 1, NO_SEARCH);
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
    BUCKLING at{};
    SEARCH_END search = SEARCH_USED_UP;
    Int counter = 1;
    for (; counter < COUNTER_END && search == SEARCH_USED_UP; ++counter) {
        at = BUCKLING_AT(s, w, E, tcc, s.Slen);
        s.Slen = s.Slen * std::sqrt(at.Pa / s.P);
        if (std::fabs(s.P - at.Pa) <= PRESSURE_TOLERANCE) {
            search = SEARCH_FOUND;
        } else if (s.Slen > 999999.0f) {
            s.Slen = 999999.0f;
            search = SEARCH_AT_LIMIT;
        }
    }
    note_stage(at, counter - 1, search);
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
    if (!(spare < 0.0f)) {
        s.FailCA = spare + s.c;
        EXTERNAL_FOUND.fail_ca_by = BY_REQUIRED_THICKNESS;
    }
    const Real Tm = LEAST_THICKNESS(s.Service);
    EXTERNAL_FOUND.t_least = Tm;
    if (s.t - s.FailCA < Tm) {
        s.FailCA = s.t - Tm;
        EXTERNAL_FOUND.fail_ca_by = BY_UG_16;
    }
}

} // namespace

void SHLEXT(SHLEXT_CALL& s) {
    BEGIN_EXTERNAL_RESULTS();
    moduleCode = setup_design_code(); // the steps of a later flange read it, too
    s.FailCA = NO_VALUE;
    s.Fha = 0.0f;
    PREPARE_CHART(s);
    note_given(s);
    if (from_pd_5500(moduleCode)) return;
    if (s.Temp > EXTERNAL.curve.t_used) temperature_warning();

    const WALL w = MEASURE_WALL(s);
    if (s.Element == CONE && s.Alpha > 60.0f) {
        FLAT_HEAD(s, w);
        return note_flat_head(s, w);
    }
    if (s.DoGiven == 1) s.Do = s.D;

    EXTERNAL.last.P = s.P;
    if (USE_CHARTS(s.Fy)) {
        note_method(BY_CHART, chart_rules(s.Element));
        CHART_METHOD(s, w);
    } else {
        note_method(BY_BUCKLING_STRESS, buckling_rules());
        STRESS_METHOD(s, w);
    }
    FAILURE_CORROSION(s);
    note_results(s, w);
    IWRITE = 1;
}

} // namespace tarvane
