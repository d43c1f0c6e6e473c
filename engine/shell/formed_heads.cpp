// Elliptical and torispherical heads: UG-32(d), (e), Appendix 1-4(c), (d), and the forms for outside
// dimensions.
#include "shell/elements.h"

namespace tarvane {

namespace {

// K of the corroded shape: depth and inside diameter grow by the allowance.
Real corroded_K(const SHLINT_ARGUMENTS& s, Real Di, TRACE* trace) {
    if (s.CorrodedK != 1) {
        const Real K = ellipse_factor(s.k);
        if (trace != nullptr) TRACE_SYMBOL(*trace, "Kc", K, Kind::factor);
        return K;
    }
    const Real h = Di / (2.0f * s.k);
    const Real h2 = h + s.c;
    const Real k2 = (Di + 2.0f * s.c) / (2.0f * h2);
    const Real K = ellipse_factor(k2);
    if (trace != nullptr) {
        TRACE_SYMBOL(*trace, "Di", Di, Kind::diameter);
        TRACE_SYMBOL(*trace, "h", h, Kind::diameter);
        TRACE_FACTOR(*trace, "Aspect Ratio of the Corroded Shape [kc]:", "kc",
                     "( Di + 2 * c ) / ( 2 * ( h + c ) )", {}, k2);
        TRACE_FACTOR(*trace, "K Factor, Corroded [Kc]:", "Kc", "( kc\xB2 + 2 ) / 6", "App. 1-4 (c)",
                     K);
    }
    return K;
}

ELEMENT_RESULT ellipse_by_inside(const SHLINT_ARGUMENTS& s, Real Knc, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Kc = corroded_K(s, s.D, trace);
    const Real Dc = s.D + 2.0f * s.c;
    const bool twoToOne = s.k == 2.0f && s.CorrodedK != 1;
    SHELL.formula = twoToOne ? UG_32_D : APP_1_4_C;
    const ELEMENT_RESULT head{.Treq = s.P * Dc * Kc / (2.0f * s.S * s.E - 0.2f * s.P),
                              .MAWP = 2.0f * s.S * s.E * tc / (Kc * Dc + 0.2f * tc),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t / (Knc * s.D + 0.2f * s.t),
                              .Stress = s.P * (Kc * Dc + 0.2f * tc) / (2.0f * s.E * tc)};
    if (trace == nullptr) return head;
    TRACE_COLUMN(*trace, "Corroded Inside Diameter", "Dc", "D + 2 * c", Dc, Kind::diameter);
    TRACE_ELEMENT(*trace,
                  {.Treq = "P * Dc * Kc / ( 2 * S * E - 0.2 * P )",
                   .MAWP = "2 * S * E * tc / ( Kc * Dc + 0.2 * tc )",
                   .MAPnc = "2 * Sa * E * t / ( K * D + 0.2 * t )",
                   .Stress = "P * ( Kc * Dc + 0.2 * tc ) / ( 2 * E * tc )"},
                  head);
    return head;
}

ELEMENT_RESULT ellipse_by_outside(const SHLINT_ARGUMENTS& s, Real Knc, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Do = reduced_outside_diameter(s);
    const Real Kc = corroded_K(s, s.D - 2.0f * s.t, trace);
    SHELL.formula = APP_1_4_C;
    const ELEMENT_RESULT head{
        .Treq = s.P * Do * Kc / (2.0f * s.S * s.E + 2.0f * s.P * (Kc - 0.1f)),
        .MAWP = 2.0f * s.S * s.E * tc / (Kc * Do - 2.0f * tc * (Kc - 0.1f)),
        .MAPnc = 2.0f * s.Sa * s.E * s.t / (Knc * s.D - 2.0f * s.t * (Knc - 0.1f)),
        .Stress = s.P * (Kc * Do - 2.0f * tc * (Kc - 0.1f)) / (2.0f * s.E * tc)};
    if (trace == nullptr) return head;
    if (s.u != 0.0f)
        TRACE_COLUMN(*trace, "Outside Diameter", "Du", "Do - 2 * Ut", Do, Kind::diameter);
    else
        TRACE_SYMBOL(*trace, "Du", Do, Kind::diameter, "Do");
    TRACE_ELEMENT(*trace,
                  {.Treq = "P * Du * Kc / ( 2 * S * E + 2 * P * ( Kc - 0.1 ) )",
                   .MAWP = "2 * S * E * tc / ( Kc * Du - 2 * tc * ( Kc - 0.1 ) )",
                   .MAPnc = "2 * Sa * E * t / ( K * Do - 2 * t * ( K - 0.1 ) )",
                   .Stress = "P * ( Kc * Du - 2 * tc * ( Kc - 0.1 ) ) / ( 2 * E * tc )"},
                  head);
    return head;
}

ELEMENT_RESULT torisphere_by_inside(const SHLINT_ARGUMENTS& s, Real Mc, Real Mnc, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Lc = s.L + s.c;
    SHELL.formula = APP_1_4_D;
    const ELEMENT_RESULT head{.Treq = s.P * Lc * Mc / (2.0f * s.S * s.E - 0.2f * s.P),
                              .MAWP = 2.0f * s.S * s.E * tc / (Mc * Lc + 0.2f * tc),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t / (Mnc * s.L + 0.2f * s.t),
                              .Stress = s.P * (Mc * Lc + 0.2f * tc) / (2.0f * s.E * tc)};
    if (trace != nullptr)
        TRACE_ELEMENT(*trace,
                      {.Treq = "P * Lc * Mc / ( 2 * S * E - 0.2 * P )",
                       .MAWP = "2 * S * E * tc / ( Mc * Lc + 0.2 * tc )",
                       .MAPnc = "2 * Sa * E * t / ( M * L + 0.2 * t )",
                       .Stress = "P * ( Mc * Lc + 0.2 * tc ) / ( 2 * E * tc )"},
                      head);
    return head;
}

ELEMENT_RESULT torisphere_by_outside(const SHLINT_ARGUMENTS& s, Real Mc, Real Mnc, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Lo = s.L + s.t - s.u;
    SHELL.formula = APP_1_4_D;
    const ELEMENT_RESULT head{.Treq = s.P * Lo * Mc / (2.0f * s.S * s.E + s.P * (Mc - 0.2f)),
                              .MAWP = 2.0f * s.S * s.E * tc / (Mc * Lo - tc * (Mc - 0.2f)),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t /
                                       (Mnc * (s.L + s.t) - s.t * (Mnc - 0.2f)),
                              .Stress = s.P * (Mc * Lo - tc * (Mc - 0.2f)) / (2.0f * s.E * tc)};
    if (trace == nullptr) return head;
    TRACE_COLUMN(*trace, "New Outside Crown Radius", "Lo", "L + t", s.L + s.t, Kind::diameter);
    if (s.u != 0.0f)
        TRACE_COLUMN(*trace, "Outside Crown Radius", "Lu", "L + t - Ut", Lo, Kind::diameter);
    else
        TRACE_SYMBOL(*trace, "Lu", Lo, Kind::diameter, "Lo");
    TRACE_ELEMENT(*trace,
                  {.Treq = "P * Lu * Mc / ( 2 * S * E + P * ( Mc - 0.2 ) )",
                   .MAWP = "2 * S * E * tc / ( Mc * Lu - tc * ( Mc - 0.2 ) )",
                   .MAPnc = "2 * Sa * E * t / ( M * Lo - t * ( M - 0.2 ) )",
                   .Stress = "P * ( Mc * Lu - tc * ( Mc - 0.2 ) ) / ( 2 * E * tc )"},
                  head);
    return head;
}

} // namespace

ELEMENT_RESULT ELLIPTICAL_HEAD(SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real Kl = 0.31f * s.k + 0.16f + 0.03f * square(s.k);
    const Real Knc = ellipse_factor(s.k);
    if (trace != nullptr) {
        TRACE_SYMBOL(*trace, "k", s.k, Kind::factor);
        TRACE_FACTOR(*trace, "K Factor, New [K]:", "K", "( k\xB2 + 2 ) / 6", "App. 1-4 (c)", Knc);
    }
    s.L = Kl * (s.Outside == 0 ? s.D : s.D - 2.0f * s.t);
    return s.Outside == 0 ? ellipse_by_inside(s, Knc, trace) : ellipse_by_outside(s, Knc, trace);
}

ELEMENT_RESULT TORISPHERICAL_HEAD(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real Mc = knuckle_factor(s.L + s.c, s.r + s.c);
    const Real Mnc = knuckle_factor(s.L, s.r);
    if (trace != nullptr) {
        TRACE_SYMBOL(*trace, "L", s.L, Kind::diameter);
        TRACE_SYMBOL(*trace, "r", s.r, Kind::diameter);
        TRACE_COLUMN(*trace, "Corroded Crown Radius", "Lc", "L + c", s.L + s.c, Kind::diameter);
        TRACE_COLUMN(*trace, "Corroded Knuckle Radius", "rc", "r + c", s.r + s.c, Kind::diameter);
        TRACE_FACTOR(*trace, "M Factor, New [M]:", "M", "( 3 + sqrt( L / r ) ) / 4", "App. 1-4 (d)",
                     Mnc);
        TRACE_FACTOR(*trace, "M Factor, Corroded [Mc]:", "Mc", "( 3 + sqrt( Lc / rc ) ) / 4",
                     "App. 1-4 (d)", Mc);
    }
    return s.Outside == 0 ? torisphere_by_inside(s, Mc, Mnc, trace)
                          : torisphere_by_outside(s, Mc, Mnc, trace);
}

} // namespace tarvane
