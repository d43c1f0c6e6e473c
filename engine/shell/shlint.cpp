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
    if (trace != nullptr) TRACE_CORRODED_THICKNESS(*trace, s);
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

// ---- the governing thickness -------------------------------------------------------------------------

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
    if (trace != nullptr) TRACE_ARGUMENTS(*trace, s);

    const bool formedHead = s.Element == ELLIPTICAL || s.Element == TORISPHERICAL;
    const bool older = G_USE_A5 == 1 && formedHead && OLD_DIVISION_2_HEAD(s, TminS, trace);
    if (!older) {
        calculate(s, trace);
        s.TreqRaw = s.Treq;
        s.Treq = max(s.Treq, C_ONE_SIXTEENTH, TminS);
    }
    note_results(s, TminS);
    if (trace != nullptr) TRACE_GOVERNING(*trace, s, TminS);
}

void SHLINT(SHLINT_ARGUMENTS& s) { SHELL_ELEMENT(s, nullptr); }

} // namespace tarvane
