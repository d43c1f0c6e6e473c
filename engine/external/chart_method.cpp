#include "external/chart_method.h"

#include "external/state.h"
#include "frame/switches.h"
#include "materials/table_g.h"

namespace tarvane {

EXTERNAL_STATE EXTERNAL;
EXTERNAL_RESULTS EXTERNAL_FOUND = EXTERNAL_RESULTS_AT_LOAD;

void RESET_EXTERNAL() {
    EXTERNAL = {};
    EXTERNAL_FOUND = EXTERNAL_RESULTS_AT_LOAD;
}

// ---- factors ---------------------------------------------------------------------------------------

Real ELLIPSE_K0(Real k) { return 0.31f * k + 0.16f + 0.03f * square(k); }

Real FACTOR_A_FORMULA(Real dt, Real ld) {
    Real A1 = 0.0f, A2 = 0.0f, A3 = 0.0f;
    if (!(dt <= 0.01f)) {
        const Real x = 1.0f / dt;
        if (ld > 0.001f && dt > 1e-05f) {
            A1 = 1.3f * std::sqrt(x) * x / (ld - 0.45f * std::sqrt(x));
            A2 = 1.3f * std::sqrt(x) * x / pow(ld, 1.05f);
        }
        A3 = 1.1f * square(x);
    }
    Real A = max(A1, A2, A3);
    if (dt < 4.0f) A = A3;
    if (dt < 10.0f && A > 0.1f) A = 0.1f;
    return A;
}

void FACTOR_A(Real tc, Real Do, Real L, Real k, Int Element, Real& dt, Real& ld, Real& A) {
    dt = Do / tc;
    ld = 0.0f;
    EXTERNAL.last.A_by = A_OF_SPHERE;
    switch (Element) {
    case ELLIPTICAL:
        A = 0.125f / (ELLIPSE_K0(k) * dt);
        return;
    case SPHERE:
        A = 0.125f / (0.5f * dt);
        return;
    case TORISPHERICAL:
        A = 0.125f / dt;
        return;
    case CYLINDER:
    case CONE:
        break;
    default:
        EXTERNAL.last.A_by = NO_A;
        return;
    }
    ld = min(max(L / Do, 0.05f), 50.0f);
    if (Element == CONE) EXTERNAL.last.Lout = L;
    Real from_table = -1.0f;
    if (GLOBALS_mp_G_NUSE_TABLEG == 1 && dt < 1000.0f) TABLE_G_FACTOR_A(dt, ld, from_table);
    EXTERNAL.last.A_by = from_table == -1.0f ? A_OF_CYLINDER : A_OF_TABLE_G;
    A = from_table == -1.0f ? FACTOR_A_FORMULA(dt, ld) : from_table;
    if (dt < 10.0f && A > 0.1f) A = 0.1f;
}

CURVE_POINT CURVE_AT(Real A, const CHART_CURVE& curve) {
    if (!(A > curve.Aelastic)) return {A * curve.E * 1.0E+6f * 0.5f, B_ELASTIC};
    if (A > curve.Amax) return {curve.Bmax, B_AT_END};
    const Real x = log10(A);
    const Real B = curve.c0 + curve.c1 * x + curve.c2 * square(x);
    return {min(B, curve.Bmax), B < curve.Bmax ? B_OF_CURVE : B_AT_END};
}

Real FACTOR_B(Real A, const CHART_CURVE& curve) { return CURVE_AT(A, curve).B; }

// ---- pressure --------------------------------------------------------------------------------------

THICK_CYLINDER THICK_PRESSURES(Real dt, Real B, Real S) {
    const Real Sf = min(2.0f * S, 1.8f * B);
    return {.Pa1 = (2.167f / dt - 0.0833f) * B, .Pa2 = (2.0f * Sf / dt) * (1.0f - 1.0f / dt)};
}

void EMAP_AT(CHART_CALL& call, const CHART_CURVE& curve) {
    const Real tc = (call.t - call.c) - call.u;
    Real dt = 0.0f, ld = 0.0f, K0 = 0.0f;
    FACTOR_A(tc, call.Do, call.L, call.k, call.Element, dt, ld, call.A);
    const CURVE_POINT point = CURVE_AT(call.A, curve);
    THICK_LIMIT thick_by = NOT_THICK;
    call.B = point.B;
    ++call.evaluations;
    if (call.Element == ELLIPTICAL) {
        K0 = ELLIPSE_K0(call.k);
        call.EMAP = call.B / (K0 * dt);
    } else if (call.Element == SPHERE) {
        call.EMAP = call.B / (0.5f * dt);
    } else if (call.Element == TORISPHERICAL) {
        call.EMAP = call.B / dt;
    } else if (cylinder_or_cone(call.Element) && dt < 10.0f) {
        const THICK_CYLINDER thick = THICK_PRESSURES(dt, call.B, call.S);
        call.EMAP = min(thick.Pa1, thick.Pa2);
        thick_by = thick.Pa1 <= thick.Pa2 ? THICK_BY_B : THICK_BY_STRESS;
    } else {
        call.EMAP = 4.0f * call.B / (3.0f * dt);
    }

    EXTERNAL_RECORD& last = EXTERNAL.last;
    last.Element = call.Element;
    last.t = tc;
    last.Do = call.Do;
    last.L = call.L;
    last.dt = dt;
    last.ld = ld;
    last.K0 = K0;
    last.A = call.A;
    last.B = call.B;
    last.EMAP = call.EMAP;
    last.B_by = point.by;
    last.thick_by = thick_by;
}

// ---- searches --------------------------------------------------------------------------------------

void TCA_SOLVE(CHART_CALL& call, const CHART_CURVE& curve, Real P) {
    constexpr Int MOST = 101;
    if (P <= 1e-06f) {
        call.t = 0.0f;
        EXTERNAL.last.t = 0.0f;
        return;
    }
    Int n = 0;
    Real e;
    do {
        EMAP_AT(call, curve);
        ++n;
        e = (P - call.EMAP) / (P + call.EMAP);
        const Real g = call.EMAP < P ? 2.0f : 0.5f;
        call.t = std::fabs(call.t + ((call.t - call.c) - call.u) * g * e);
    } while (!(std::fabs(e) < 0.0001f) && n < MOST);
    call.search = std::fabs(e) < 0.0001f ? SEARCH_FOUND : SEARCH_USED_UP;
    EMAP_AT(call, curve);
    call.t = call.t / call.cosA;
    call.c = call.c / call.cosA;
    call.u = call.u / call.cosA;
}

void SLEN_SOLVE(CHART_CALL& call, const CHART_CURVE& curve, Real P) {
    constexpr Int MOST = 80;
    if (P <= 0.001f) {
        call.L = 0.0f;
        return;
    }
    const Real L0 = call.L;
    Int n = 0;
    Real f;
    do {
        EMAP_AT(call, curve);
        ++n;
        f = std::sqrt(P / call.EMAP);
        if (f > 0.0f) call.L = call.L / f;
    } while (call.L <= 20.0f * L0 && n < MOST && (f < 0.999f || f > 1.0001f));
    if (call.L > 20.0f * L0)
        call.search = SEARCH_AT_LIMIT;
    else
        call.search = f >= 0.999f && f <= 1.0001f ? SEARCH_FOUND : SEARCH_USED_UP;
    EMAP_AT(call, curve);
}

} // namespace tarvane
