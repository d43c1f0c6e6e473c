// Elliptical and torispherical heads: UG-32(d), (e), Appendix 1-4(c), (d), and the forms for outside
// dimensions.
#include "shell/elements.h"

namespace tarvane {

namespace {

// K of the corroded shape: depth and inside diameter grow by the allowance.
Real corroded_K(const SHLINT_ARGUMENTS& s, Real Di) {
    if (s.CorrodedK != 1) return ellipse_factor(s.k);
    const Real h = Di / (2.0f * s.k);
    const Real h2 = h + s.c;
    const Real k2 = (Di + 2.0f * s.c) / (2.0f * h2);
    return ellipse_factor(k2);
}

} // namespace

ELEMENT_RESULT ELLIPTICAL_HEAD(SHLINT_ARGUMENTS& s) {
    const Real tc = corroded_thickness(s);
    const Real Kl = 0.31f * s.k + 0.16f + 0.03f * square(s.k);
    const Real Knc = ellipse_factor(s.k);
    if (s.Outside == 0) {
        const Real Kc = corroded_K(s, s.D);
        const Real Dc = s.D + 2.0f * s.c;
        s.L = Kl * s.D;
        return {.Treq = s.P * Dc * Kc / (2.0f * s.S * s.E - 0.2f * s.P),
                .MAWP = 2.0f * s.S * s.E * tc / (Kc * Dc + 0.2f * tc),
                .MAPnc = 2.0f * s.Sa * s.E * s.t / (Knc * s.D + 0.2f * s.t),
                .Stress = s.P * (Kc * Dc + 0.2f * tc) / (2.0f * s.E * tc)};
    }
    const Real Di = s.D - 2.0f * s.t;
    const Real Do = reduced_outside_diameter(s);
    const Real Kc = corroded_K(s, Di);
    s.L = Kl * Di;
    return {.Treq = s.P * Do * Kc / (2.0f * s.S * s.E + 2.0f * s.P * (Kc - 0.1f)),
            .MAWP = 2.0f * s.S * s.E * tc / (Kc * Do - 2.0f * tc * (Kc - 0.1f)),
            .MAPnc = 2.0f * s.Sa * s.E * s.t / (Knc * s.D - 2.0f * s.t * (Knc - 0.1f)),
            .Stress = s.P * (Kc * Do - 2.0f * tc * (Kc - 0.1f)) / (2.0f * s.E * tc)};
}

ELEMENT_RESULT TORISPHERICAL_HEAD(const SHLINT_ARGUMENTS& s) {
    const Real tc = corroded_thickness(s);
    const Real Mc = knuckle_factor(s.L + s.c, s.r + s.c);
    const Real Mnc = knuckle_factor(s.L, s.r);
    if (s.Outside == 0) {
        const Real Lc = s.L + s.c;
        return {.Treq = s.P * Lc * Mc / (2.0f * s.S * s.E - 0.2f * s.P),
                .MAWP = 2.0f * s.S * s.E * tc / (Mc * Lc + 0.2f * tc),
                .MAPnc = 2.0f * s.Sa * s.E * s.t / (Mnc * s.L + 0.2f * s.t),
                .Stress = s.P * (Mc * Lc + 0.2f * tc) / (2.0f * s.E * tc)};
    }
    const Real Lo = s.L + s.t - s.u;
    return {.Treq = s.P * Lo * Mc / (2.0f * s.S * s.E + s.P * (Mc - 0.2f)),
            .MAWP = 2.0f * s.S * s.E * tc / (Mc * Lo - tc * (Mc - 0.2f)),
            .MAPnc = 2.0f * s.Sa * s.E * s.t / (Mnc * (s.L + s.t) - s.t * (Mnc - 0.2f)),
            .Stress = s.P * (Mc * Lo - tc * (Mc - 0.2f)) / (2.0f * s.E * tc)};
}

} // namespace tarvane
