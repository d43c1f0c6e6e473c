#include "shell/failure_corrosion.h"

#include "frame/units.h"
#include "openings/flat_head_openings.h"
#include "report/channel.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

constexpr Real STEP = 0.001f;
constexpr Real NOT_FOUND = -1.0f;

// From 0 so many steps lead to 32768 in., which a further one no longer changes: passes beyond them
// would only keep the host waiting.
constexpr Int MOST_STEPS = 25150896;

Int steps(Real t) { return min(truncated(t / STEP), MOST_STEPS); }

// Inside diameter.
Real inside_diameter(const FAILURE_CA_ARGUMENTS& f) {
    if (f.Outside != 1) return f.D;
    if (f.Element < CONE) return f.D - 2.0f * f.t;
    if (f.Element == CONE) return f.D - 2.0f * f.t / cosine_of_degrees(f.Alpha);
    return f.D;
}

Real least_thickness(Int Service) {
    if (Service == 1) return C_THREE_THIRTYSECONDS;
    return Service == 2 ? C_ONE_QUARTER : C_ONE_SIXTEENTH;
}

// Raises the corrosion step by step until the pressure falls to P, at most n times. The pressure
// form may move the corrosion itself. True when the pressure was reached.
template <typename Pressure>
bool walk(Real P, Int n, Real& Ca, Pressure pressure) {
    for (Int pass = 1; pass <= n; ++pass) {
        if (pressure(Ca) <= P + 0.001f) return true;
        Ca = Ca + STEP;
    }
    return false;
}

// ---- pressure at a corrosion -------------------------------------------------------------------------

// A thin wall goes straight to its corrosion.
Real cylinder_pressure(const FAILURE_CA_ARGUMENTS& f, Real R, Real& Ca) {
    const Real SE = f.S * f.E;
    if ((R + Ca) / 2.0f < f.t - Ca || 0.385f * f.S * f.E < f.P)
        return SE * log((R + f.t) / (R + Ca));
    Ca = ((-f.P * R + f.t * f.S * f.E) - 0.6f * f.t * f.P) / ((f.P + SE) - 0.6f * f.P);
    return SE * (f.t - Ca) / (R + Ca + 0.6f * (f.t - Ca));
}

Real sphere_pressure(const FAILURE_CA_ARGUMENTS& f, Real R, Real& Ca) {
    const Real SE2 = 2.0f * f.S * f.E;
    if (0.356f * (R + Ca) < f.t - Ca || 0.665f * f.S * f.E < f.P)
        return SE2 * log((R + f.t) / (R + Ca));
    Ca = (SE2 * f.t / f.P - R) / (SE2 / f.P + 0.8f);
    return SE2 * (f.t - Ca) / (R + Ca + 0.2f * (f.t - Ca));
}

Real ellipse_pressure(const FAILURE_CA_ARGUMENTS& f, Real Dw, Real Ca) {
    Real K = ellipse_factor(f.k);
    if (f.CorrodedK == 1) {
        const Real h = Dw / (2.0f * f.k);
        const Real h2 = h + Ca;
        const Real k2 = (Dw + 2.0f * Ca) / (2.0f * h2);
        K = ellipse_factor(k2);
    }
    return 2.0f * f.S * f.E * (f.t - Ca) / (K * (Dw + 2.0f * Ca) + 0.2f * (f.t - Ca));
}

// A torispherical head, or the knuckle of a cone.
Real knuckle_pressure(const FAILURE_CA_ARGUMENTS& f, Real L, Real t, Real Ca) {
    const Real M = knuckle_factor(L + Ca, f.r + Ca);
    return 2.0f * f.S * f.E * (t - Ca) / (M * (L + Ca) + 0.2f * (t - Ca));
}

// ---- elements ------------------------------------------------------------------------------------------

void cone_knuckle(FAILURE_CA_ARGUMENTS& f, Real Dw, Real ca, Real Tmin) {
    if (!(f.r > 0.001f && f.tk > 0.001f)) return;
    const Real Lk = Dw / (2.0f * ca);
    Real Ck = 0.0f;
    if (!walk(f.P, steps(f.tk), Ck, [&](Real at) { return knuckle_pressure(f, Lk, f.tk, at); }))
        return;
    f.FailCAK = f.t - Ck < Tmin ? f.t - Tmin : Ck;
}

Real cone(const FAILURE_CA_ARGUMENTS& f, Real Dw, Real ca) {
    return (2.0f * f.S * f.E * f.t * ca - f.P * Dw - 1.2f * f.P * f.t * ca) /
           (2.0f * f.P - 1.2f * f.P * ca + 2.0f * f.S * f.E * ca);
}

// UG-39 doubles C up to a limit; openings close together raise the thickness by its factor h, too.
void openings(const FAILURE_CA_ARGUMENTS& f, Real& C, Real& F) {
    if (!(f.d1 > 0.0f || f.d2 > 0.0f)) return;
    OPENINGS_CALL call{.kind = FLAT_HEAD_ELEMENT,
                       .headDia = f.D,
                       .d1 = f.d1,
                       .d2 = f.d2,
                       .edge1 = f.edge1,
                       .edge2 = f.edge2,
                       .pitch = f.pitch,
                       .material = truncated(f.openingMaterial),
                       .Cin = f.C};
    const Int entry = IWRITE;
    IWRITE = 0;
    PATTERNED_OPENINGS(call);
    IWRITE = entry;
    C = call.Cout;
    F = call.coverFactor;
}

// The step comes first, so that at least one is made.
Real flat_head(const FAILURE_CA_ARGUMENTS& f, Real d) {
    constexpr Real Z = 1.0f;
    Real C = f.C, F = 1.0f;
    openings(f, C, F);
    const Int n = steps(f.t);
    Real Ca = 0.0f, Pw = 0.0f;
    Int pass = 0;
    do {
        Ca = Ca + STEP;
        const Real x = (f.t - Ca) / (F * (d + 2.0f * Ca));
        Pw = square(x) * f.S * f.E / (C * Z);
        ++pass;
    } while (Pw > f.P + 0.001f && pass < n);
    return Ca;
}

} // namespace

void COMPUTE_FAILURE_CA_DIV1(FAILURE_CA_ARGUMENTS& f) {
    f.FailCA = NOT_FOUND;
    f.FailCAK = NOT_FOUND;
    const Real Tmin = least_thickness(f.Service);
    const Real Dw = inside_diameter(f);
    const Real R = Dw / 2.0f;
    const Int n = steps(f.t);
    Real Ca = 0.0f;
    switch (f.Element) {
    case CYLINDER:
        walk(f.P, n, Ca, [&](Real& at) { return cylinder_pressure(f, R, at); });
        break;
    case ELLIPTICAL:
        walk(f.P, n, Ca, [&](Real at) { return ellipse_pressure(f, Dw, at); });
        break;
    case TORISPHERICAL:
        walk(f.P, n, Ca, [&](Real at) { return knuckle_pressure(f, f.L, f.t, at); });
        break;
    case SPHERE:
        walk(f.P, n, Ca, [&](Real& at) { return sphere_pressure(f, R, at); });
        break;
    case CONE: {
        const Real ca = cosine_of_degrees(f.Alpha);
        Ca = cone(f, Dw, ca);
        cone_knuckle(f, Dw, ca, Tmin);
        break;
    }
    case FLAT_HEAD_ELEMENT:
        Ca = flat_head(f, Dw);
        break;
    default:
        break;
    }
    f.FailCA = f.t - Ca < Tmin ? f.t - Tmin : Ca;
}

} // namespace tarvane
