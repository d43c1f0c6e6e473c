// Cylindrical shells: UG-27(c)(1) inside, Appendix 1-1 outside, thick ones by Appendix 1-2(a).
#include "shell/elements.h"

namespace tarvane {

namespace {

bool pressure_is_high(const SHLINT_ARGUMENTS& s) { return 0.385f * s.S * s.E < s.P; }

ELEMENT_RESULT by_inside(const SHLINT_ARGUMENTS& s) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f; // new
    const Real R = Rn + s.c;
    if (R / 2.0f < tc || pressure_is_high(s)) {
        return {.Treq = R * (exp(s.P / (s.S * s.E)) - 1.0f),
                .MAWP = s.S * s.E * log((R + s.t - s.c - s.u) / R),
                .MAPnc = s.Sa * s.E * log((Rn + s.t) / Rn),
                .Stress = s.P / (s.E * log((Rn + s.t - s.u) / R))};
    }
    return {.Treq = s.P * R / (s.S * s.E - 0.6f * s.P),
            .MAWP = s.S * s.E * tc / (R + 0.6f * tc),
            .MAPnc = s.Sa * s.E * s.t / (Rn + 0.6f * s.t),
            .Stress = s.P * (R + 0.6f * tc) / (s.E * tc)};
}

ELEMENT_RESULT by_outside(const SHLINT_ARGUMENTS& s) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f;
    const Real Ro = reduced_outside_diameter(s) / 2.0f;
    if ((s.D - 2.0f * (s.t - s.c)) / 4.0f < tc || pressure_is_high(s)) {
        const Real Ri = Rn - s.t + s.c;
        return {.Treq = Ro * (1.0f - exp(-s.P / (s.S * s.E))),
                .MAWP = s.S * s.E * log(Ro / Ri),
                .MAPnc = s.Sa * s.E * log(Rn / (Rn - s.t)),
                .Stress = s.P / (s.E * log(Ro / Ri))};
    }
    return {.Treq = s.P * Ro / (s.S * s.E + 0.4f * s.P),
            .MAWP = s.S * s.E * tc / (Ro - 0.4f * tc),
            .MAPnc = s.Sa * s.E * s.t / (Rn - 0.4f * s.t),
            .Stress = s.P * (Ro - 0.4f * tc) / (s.E * tc)};
}

} // namespace

ELEMENT_RESULT CYLINDRICAL_SHELL(const SHLINT_ARGUMENTS& s) {
    return s.Outside == 0 ? by_inside(s) : by_outside(s);
}

} // namespace tarvane
