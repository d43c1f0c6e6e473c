// Formed heads by the rules of Division 2 before its 2007 edition, AD-204: the crown by its membrane
// stress, the knuckle by a stress of its own.
#include "frame/units.h"
#include "materials/modulus.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

constexpr Real LEAST_RATIO = 0.002f, GREATEST_RATIO = 0.06f; // t/L of the factor tables
constexpr Real BASIC_STRESS = 115000.0f;                     // of the knuckle

// Working values that stay through the iteration.
struct DIV2_HEAD {
    Real Eamb, Et; // millions of psi
    Real Limit;    // knuckle stress
    Real Dw = 0.0f, Lw = 0.0f;
    Real Tm = 0.0f, Tk = 0.0f; // corroded thickness of crown and knuckle
    Real K = 0.0f, M = 0.0f;   // which gave these
};

bool limit_by_modulus(Int Material) {
    return (Material >= 16 && Material <= 70) || (Material >= 105 && Material <= 117);
}

DIV2_HEAD start(const SHLINT_ARGUMENTS& s) {
    DIV2_HEAD h{};
    h.Eamb = ASMEMOD(AMBIENT, s.Material, 1);
    h.Et = ASMEMOD(s.Temp, s.Material, 1);
    h.Limit = limit_by_modulus(s.Material) ? h.Eamb * BASIC_STRESS / 30.0f : BASIC_STRESS;
    return h;
}

// Diameter and crown radius at a thickness; gives the ratio t/L.
Real place_head(const SHLINT_ARGUMENTS& s, DIV2_HEAD& h, Real T) {
    h.Dw = s.Outside == 0 ? s.D : s.D - 2.0f * T;
    h.Lw = s.Element == ELLIPTICAL ? 0.9f * h.Dw : s.L;
    return (T - s.c) / (h.Lw + s.c);
}

// Thickness at which both stresses just keep their limits, with c and u; a few passes, since the
// factors depend on it. False when the head is outside the factor tables.
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
        h.K = DIV2_K_FACTOR(h.Dw, s.r, Tp, h.Lw, s.c, s.Element, s.u);
        h.M = DIV2_M_FACTOR(h.Dw, s.r, Tp, h.Lw, s.c, s.Element, s.u);
        h.Tm = s.P * (h.Lw + s.c) * h.M / (2.0f * s.S * s.E - 0.2f * s.P);
        h.Tk = 3.0f * s.P * (h.Lw + s.c) * h.K * h.Eamb / (4.0f * h.Limit * h.Et);
        T = max(h.Tm, h.Tk) + s.c + s.u;
    }
    return true;
}

// Lw is the crown radius of the last pass.
void trace_thickness(TRACE& trace, const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h, Real Lw) {
    const std::string_view rule = RULE_OF(AD_204);
    TRACE_COLUMN(trace, "Elastic Modulus at Ambient", "Eamb", {}, h.Eamb * 1.0e6f, Kind::stress);
    TRACE_COLUMN(trace, "Elastic Modulus at Temperature", "Et", {}, h.Et * 1.0e6f, Kind::stress);
    TRACE_COLUMN(trace, "Limit of the Knuckle Stress", "Slim", {}, h.Limit, Kind::stress);
    TRACE_SYMBOL(trace, "Lc", Lw + s.c, Kind::diameter);
    TRACE_SYMBOL(trace, "M", h.M, Kind::factor);
    TRACE_SYMBOL(trace, "K", h.K, Kind::factor);
    TRACE_FORMULA(trace, TRACE_GROUP::thickness,
                  "Required Thickness of the Crown [tm]:", "P * Lc * M / ( 2 * S * E - 0.2 * P )",
                  rule, Kind::thickness, h.Tm);
    TRACE_FORMULA(trace, TRACE_GROUP::thickness, "Required Thickness of the Knuckle [tk]:",
                  "3 * P * Lc * K * Eamb / ( 4 * Slim * Et )", rule, Kind::thickness, h.Tk);
    TRACE_SYMBOL(trace, "tm", h.Tm, Kind::thickness);
    TRACE_SYMBOL(trace, "tk", h.Tk, Kind::thickness);
    TRACE_SYMBOL(trace, "tr", max(h.Tm, h.Tk), Kind::thickness);
    TRACE_FORMULA(trace, TRACE_GROUP::thickness,
                  "Required Thickness due to Internal Pressure [tr]:", "max( tm, tk )", rule,
                  Kind::thickness, max(h.Tm, h.Tk));
}

// Factors at the given thickness, corroded and new.
struct DIV2_FACTORS {
    Real M, Mnc, K, Knc;
};

// Pressures and stress at the given thickness. The tolerance counts within the factors only.
DIV2_FACTORS factors_of(const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h) {
    DIV2_FACTORS by{};
    by.K = DIV2_K_FACTOR(h.Dw, s.r, s.t, h.Lw, s.c, s.Element, s.u);
    by.Knc = DIV2_K_FACTOR(h.Dw, s.r, s.t, h.Lw, 0.0f, s.Element, 0.0f);
    by.M = DIV2_M_FACTOR(h.Dw, s.r, s.t, h.Lw, s.c, s.Element, s.u);
    by.Mnc = DIV2_M_FACTOR(h.Dw, s.r, s.t, h.Lw, 0.0f, s.Element, 0.0f);
    return by;
}

ELEMENT_RESULT crown(const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h, const DIV2_FACTORS& by) {
    const Real Lc = h.Lw + s.c;
    const Real tc = s.t - s.c;
    return {.Treq = s.Treq,
            .MAWP = 2.0f * s.S * s.E * tc / (Lc * by.M + 0.2f * tc),
            .MAPnc = 2.0f * s.Sa * s.E * s.t / (h.Lw * by.Mnc + 0.2f * s.t),
            .Stress = s.P * (by.M * Lc + 0.2f * tc) / (2.0f * s.E * tc)};
}
constexpr ELEMENT_TEXTS CROWN_TEXTS{.Treq = {},
                                    .MAWP = "2 * S * E * tc / ( Lc * M + 0.2 * tc )",
                                    .MAPnc = "2 * Sa * E * t / ( Ln * Mn + 0.2 * t )",
                                    .Stress = "P * ( M * Lc + 0.2 * tc ) / ( 2 * E * tc )"};

ELEMENT_RESULT knuckle(const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h, const DIV2_FACTORS& by) {
    const Real Lc = h.Lw + s.c;
    const Real tc = s.t - s.c;
    return {.Treq = s.Treq,
            .MAWP = tc * h.Limit * 4.0f * h.Et / (3.0f * Lc * by.K * h.Eamb),
            .MAPnc = s.t * 460000.0f / (3.0f * h.Lw * by.Knc),
            .Stress = 3.0f * s.P * Lc * by.K * h.Eamb / (4.0f * tc * h.Et)};
}
constexpr ELEMENT_TEXTS KNUCKLE_TEXTS{.Treq = {},
                                      .MAWP = "tc * Slim * 4 * Et / ( 3 * Lc * K * Eamb )",
                                      .MAPnc = "t * 4 * So / ( 3 * Ln * Kn )",
                                      .Stress = "3 * P * Lc * K * Eamb / ( 4 * tc * Et )"};

void trace_pressures(TRACE& trace, const SHLINT_ARGUMENTS& s, const DIV2_HEAD& h,
                     const DIV2_FACTORS& by, bool byKnuckle, const ELEMENT_RESULT& governing) {
    TRACE_COLUMN(trace, "Corroded Thickness", "tc", "t - c", s.t - s.c, Kind::thickness);
    TRACE_COLUMN(trace, "Crown Radius at Given Thickness", "Ln", {}, h.Lw, Kind::diameter);
    TRACE_COLUMN(trace, "Corroded Crown Radius", "Lc", "Ln + c", h.Lw + s.c, Kind::diameter);
    TRACE_COLUMN(trace, "Factor of the Crown, Corroded", "M", {}, by.M, Kind::factor);
    TRACE_COLUMN(trace, "Factor of the Crown, New", "Mn", {}, by.Mnc, Kind::factor);
    TRACE_COLUMN(trace, "Factor of the Knuckle, Corroded", "K", {}, by.K, Kind::factor);
    TRACE_COLUMN(trace, "Factor of the Knuckle, New", "Kn", {}, by.Knc, Kind::factor);
    TRACE_SYMBOL(trace, "So", BASIC_STRESS, Kind::stress);
    TRACE_RATING(trace, byKnuckle ? KNUCKLE_TEXTS : CROWN_TEXTS, governing);
}

} // namespace

bool OLD_DIVISION_2_HEAD(SHLINT_ARGUMENTS& s, Real TminS, TRACE* trace) {
    K_COLUMN_AT_ENTRY = K_COLUMN;
    DIV2_HEAD h = start(s);
    if (!solve_thickness(s, h)) return false;
    s.Treq = max(h.Tm, h.Tk, C_ONE_SIXTEENTH, TminS);
    const Real Lw = h.Lw;
    const Real ratio = place_head(s, h, s.t);
    if (!(ratio >= LEAST_RATIO && ratio <= GREATEST_RATIO)) return false;
    SHELL.formula = AD_204;
    if (trace != nullptr) trace_thickness(*trace, s, h, Lw);

    const DIV2_FACTORS by = factors_of(s, h);
    const bool byKnuckle = h.Tm < h.Tk;
    const ELEMENT_RESULT governing = byKnuckle ? knuckle(s, h, by) : crown(s, h, by);
    if (trace != nullptr) trace_pressures(*trace, s, h, by, byKnuckle, governing);
    s.MAWP = governing.MAWP;
    s.MAPnc = governing.MAPnc;
    s.Stress = governing.Stress;
    s.TreqRaw = s.Treq;

    SHELL.mawp_formula = s.MAWP;
    SHELL.map_nc_formula = s.MAPnc;
    SHELL.stress_formula = s.Stress;
    SHELL.tc = s.t - s.c;
    SHELL.t_crown = h.Tm;
    SHELL.t_knuckle = h.Tk;
    const Int limit = byKnuckle ? BY_KNUCKLE : BY_FORMULA;
    SHELL.t_by = SHELL.mawp_by = SHELL.map_nc_by = SHELL.stress_by = limit;
    return true;
}

} // namespace tarvane
