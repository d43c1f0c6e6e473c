// Formed heads by the rules of Division 2 before its 2007 edition, AD-204: the crown by its membrane
// stress, the knuckle by a stress of its own.
#include "frame/units.h"
#include "materials/modulus.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

constexpr Real LEAST_RATIO = 0.002f, GREATEST_RATIO = 0.06f; // t/L of the factor tables

// Working values that stay through the iteration.
struct DIV2_HEAD {
    Real Eamb, Et; // millions of psi
    Real Limit;    // knuckle stress
    Real Dw = 0.0f, Lw = 0.0f;
    Real Tm = 0.0f, Tk = 0.0f; // corroded thickness of crown and knuckle
};

bool limit_by_modulus(Int Material) {
    return (Material >= 16 && Material <= 70) || (Material >= 105 && Material <= 117);
}

DIV2_HEAD start(const SHLINT_ARGUMENTS& s) {
    DIV2_HEAD h{};
    h.Eamb = ASMEMOD(70.0f, s.Material, 1);
    h.Et = ASMEMOD(s.Temp, s.Material, 1);
    h.Limit = limit_by_modulus(s.Material) ? h.Eamb * 115000.0f / 30.0f : 115000.0f;
    return h;
}

// Diameter and crown radius at a thickness; gives the ratio t/L.
Real place_head(const SHLINT_ARGUMENTS& s, DIV2_HEAD& h, Real T) {
    h.Dw = s.Outside == 0 ? s.D : s.D - 2.0f * T;
    h.Lw = s.Element == ELLIPTICAL ? 0.9f * h.Dw : s.L;
    return (T - s.c) / (h.Lw + s.c);
}

// Thickness at which both stresses just keep their limits, with c and u; a few passes, since the
// factors depend on it. False when the head lies outside the factor tables.
bool solve_thickness(const SHLINT_ARGUMENTS& s, DIV2_HEAD& h) {
    Real T = s.t, Tp = 0.0f;
    bool last = false;
    for (Int n = 0; !last;) {
        if (n != 0 && std::abs(Tp - T) < 0.005f)
            last = true;
        else if (n > 10)
            last = true;
        Tp = T;
        ++n;
        const Real ratio = place_head(s, h, T);
        if (ratio < LEAST_RATIO || ratio > GREATEST_RATIO) return false;
        const Real K = DIV2_K_FACTOR(h.Dw, s.r, Tp, h.Lw, s.c, s.Element, s.u);
        const Real M = DIV2_M_FACTOR(h.Dw, s.r, Tp, h.Lw, s.c, s.Element, s.u);
        h.Tm = s.P * (h.Lw + s.c) * M / (2.0f * s.S * s.E - 0.2f * s.P);
        h.Tk = 3.0f * s.P * (h.Lw + s.c) * K * h.Eamb / (4.0f * h.Limit * h.Et);
        T = max(h.Tm, h.Tk) + s.c + s.u;
    }
    return true;
}

// Pressures and stress at the given thickness. The tolerance counts within the factors only.
ELEMENT_RESULT crown(const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h) {
    const Real M = DIV2_M_FACTOR(h.Dw, s.r, s.t, h.Lw, s.c, s.Element, s.u);
    const Real Mnc = DIV2_M_FACTOR(h.Dw, s.r, s.t, h.Lw, 0.0f, s.Element, 0.0f);
    const Real Lc = h.Lw + s.c;
    const Real tc = s.t - s.c;
    return {.Treq = s.Treq,
            .MAWP = 2.0f * s.S * s.E * tc / (Lc * M + 0.2f * tc),
            .MAPnc = 2.0f * s.Sa * s.E * s.t / (h.Lw * Mnc + 0.2f * s.t),
            .Stress = s.P * (M * Lc + 0.2f * tc) / (2.0f * s.E * tc)};
}

ELEMENT_RESULT knuckle(const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h) {
    const Real K = DIV2_K_FACTOR(h.Dw, s.r, s.t, h.Lw, s.c, s.Element, s.u);
    const Real Knc = DIV2_K_FACTOR(h.Dw, s.r, s.t, h.Lw, 0.0f, s.Element, 0.0f);
    const Real Lc = h.Lw + s.c;
    const Real tc = s.t - s.c;
    return {.Treq = s.Treq,
            .MAWP = tc * h.Limit * 4.0f * h.Et / (3.0f * Lc * K * h.Eamb),
            .MAPnc = s.t * 460000.0f / (3.0f * h.Lw * Knc),
            .Stress = 3.0f * s.P * Lc * K * h.Eamb / (4.0f * tc * h.Et)};
}

} // namespace

bool OLD_DIVISION_2_HEAD(SHLINT_ARGUMENTS& s, Real TminS) {
    DIV2_HEAD h = start(s);
    if (!solve_thickness(s, h)) return false;
    s.Treq = max(h.Tm, h.Tk, C_ONE_SIXTEENTH, TminS);
    const Real ratio = place_head(s, h, s.t);
    if (!(ratio >= LEAST_RATIO && ratio <= GREATEST_RATIO)) return false;

    // Both, since each looks up its factors, and K remembers its column.
    const ELEMENT_RESULT byKnuckle = knuckle(s, h);
    const ELEMENT_RESULT byCrown = crown(s, h);
    const ELEMENT_RESULT& governing = h.Tm < h.Tk ? byKnuckle : byCrown;
    s.MAWP = governing.MAWP;
    s.MAPnc = governing.MAPnc;
    s.Stress = governing.Stress;
    s.TreqRaw = s.Treq;
    return true;
}

} // namespace tarvane
