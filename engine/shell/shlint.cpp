#include "shell/shlint.h"

#include "frame/switches.h"
#include "frame/units.h"
#include "materials/ucs23_list.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

// UG-16(b): least thickness of the service, 0 when it has none of its own.
Real service_minimum(const SHLINT_ARGUMENTS& s) {
    if (s.Service == 1 && LIS_UCS23_MATERIAL(s.MaterialName)) return C_THREE_THIRTYSECONDS;
    return s.Service == 2 ? C_ONE_QUARTER : 0.0f;
}

void give(SHLINT_ARGUMENTS& s, const ELEMENT_RESULT& result) {
    s.Treq = result.Treq;
    s.MAWP = result.MAWP;
    s.MAPnc = result.MAPnc;
    s.Stress = result.Stress;
    if (s.Element != CONE) {
        SHELL.mawp_formula = result.MAWP;
        SHELL.map_nc_formula = result.MAPnc;
        SHELL.stress_formula = result.Stress;
    }
}

void calculate(SHLINT_ARGUMENTS& s, TRACE* trace) {
    SHELL.tc = corroded_thickness(s);
    SHELL.t_by = SHELL.mawp_by = SHELL.map_nc_by = SHELL.stress_by = BY_FORMULA;
    if (trace != nullptr)
        TRACE_COLUMN(*trace, "Corroded Thickness", "tc", s.u != 0.0f ? "t - c - Ut" : "t - c",
                     corroded_thickness(s), Kind::thickness);
    switch (s.Element) {
    case CYLINDER:
        return give(s, CYLINDRICAL_SHELL(s, trace));
    case ELLIPTICAL:
        give(s, ELLIPTICAL_HEAD(s, trace));
        return APPENDIX_1_4F_LIMITS(s, trace);
    case TORISPHERICAL:
        give(s, TORISPHERICAL_HEAD(s, trace));
        return APPENDIX_1_4F_LIMITS(s, trace);
    case SPHERE:
        return give(s, SPHERICAL_SHELL(s, trace));
    case CONE:
        return give(s, CONICAL_SECTION(s, trace));
    default:
        return give(s, FLAT_HEAD_PLATE(s, trace));
    }
}

void trace_arguments(TRACE& trace, const SHLINT_ARGUMENTS& s) {
    TRACE_SYMBOL(trace, "P", s.P, Kind::pressure, trace.pressure_name);
    TRACE_SYMBOL(trace, "S", s.S, Kind::stress);
    TRACE_SYMBOL(trace, "Sa", s.Sa, Kind::stress);
    TRACE_SYMBOL(trace, "E", s.E, Kind::factor);
    TRACE_SYMBOL(trace, "t", s.t, Kind::thickness);
    TRACE_SYMBOL(trace, "c", s.c, Kind::thickness);
    TRACE_SYMBOL(trace, "Ut", s.u, Kind::thickness);
    TRACE_SYMBOL(trace, "D", s.D, Kind::diameter);
    TRACE_SYMBOL(trace, "Do", s.D, Kind::diameter); // the formulas have one of the two
}

// ---- the governing thickness -------------------------------------------------------------------------

std::string_view minimum_rule(const SHLINT_ARGUMENTS& s, Real TminS) {
    if (TminS > 0.0f) return s.Service == 2 ? "UG-16 (b)(3)" : "UG-16 (b)(4)";
    return "UG-16 (b)";
}

// What is in force before the minima: under AD-204 the thickness raw has them already.
Real formula_thickness(const SHLINT_ARGUMENTS& s) {
    return SHELL.formula == AD_204 ? max(SHELL.t_crown, SHELL.t_knuckle) : s.TreqRaw;
}

void trace_governing(TRACE& trace, const SHLINT_ARGUMENTS& s, Real TminS) {
    const bool minimum = s.Treq > formula_thickness(s);
    const bool thin = s.T14f > 0.0f;
    if (thin) TRACE_SYMBOL(trace, "t14f", s.T14f, Kind::thickness);
    if (minimum) TRACE_SYMBOL(trace, "tmin", s.Treq, Kind::thickness);
    TRACE_SYMBOL(trace, "tg", SHELL.t_governing, Kind::thickness, minimum || thin ? "tg" : "tr");
    if (minimum || thin) {
        std::string_view rule = minimum ? minimum_rule(s, TminS) : RULE_OF(SHELL.formula);
        if (thin && s.T14f > s.Treq) rule = "App. 1-4 (f)";
        TRACE_FORMULA(trace, TRACE_GROUP::governing, "Governing Required Thickness [tg]:",
                      !minimum ? "max( tr, t14f )"
                      : thin   ? "max( tr, t14f, tmin )"
                               : "max( tr, tmin )",
                      rule, Kind::thickness, SHELL.t_governing);
    }
    TRACE_FORMULA(trace, TRACE_GROUP::governing, "Required Thickness with Allowances [treq]:",
                  s.u != 0.0f ? "tg + c + Ut" : "tg + c", {}, Kind::thickness, SHELL.t_required);
}

void note_results(const SHLINT_ARGUMENTS& s, Real TminS) {
    if (s.Treq > formula_thickness(s))
        SHELL.t_by = s.Treq > C_ONE_SIXTEENTH ? BY_SERVICE : BY_LEAST_THICKNESS;
    if (s.T14f > s.Treq) SHELL.t_by = BY_APP_1_4F;
    SHELL.t_least = max(C_ONE_SIXTEENTH, TminS);
    SHELL.t_req_raw = s.TreqRaw;
    SHELL.t_req = s.Treq;
    SHELL.t_governing = max(s.Treq, s.T14f);
    SHELL.t_required = SHELL.t_governing + s.c + s.u;
    SHELL.mawp = s.MAWP;
    SHELL.map_nc = s.MAPnc;
    SHELL.stress = s.Stress;
    SHELL.crown_radius = s.L;
    SHELL.status = SHELL_CALCULATED;
}

} // namespace

void SHELL_ELEMENT(SHLINT_ARGUMENTS& s, TRACE* trace) {
    BEGIN_SHELL_RESULTS();
    SHELL.element = s.Element;
    SHELL.outside = s.Outside;
    SHELL.older_division_2 = G_USE_A5;
    if (s.Element < CYLINDER || s.Element > FLAT_HEAD_ELEMENT) {
        SHELL.status = SHELL_NO_ELEMENT;
        return;
    }
    SET_METRIC_CONSTANTS();
    const Real TminS = service_minimum(s);
    s.T14f = 0.0f;
    if (trace != nullptr) trace_arguments(*trace, s);

    const bool formedHead = s.Element == ELLIPTICAL || s.Element == TORISPHERICAL;
    const bool older = G_USE_A5 == 1 && formedHead && OLD_DIVISION_2_HEAD(s, TminS, trace);
    if (!older) {
        calculate(s, trace);
        s.TreqRaw = s.Treq;
        s.Treq = max(s.Treq, C_ONE_SIXTEENTH, TminS);
    }
    note_results(s, TminS);
    if (trace != nullptr) trace_governing(*trace, s, TminS);
}

void SHLINT(SHLINT_ARGUMENTS& s) { SHELL_ELEMENT(s, nullptr); }

} // namespace tarvane
