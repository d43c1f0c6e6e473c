// Spherical shells and hemispherical heads: UG-27(d) inside, Appendix 1-1 outside, thick ones by
// Appendix 1-3.
#include "shell/elements.h"

namespace tarvane {

namespace {

bool pressure_is_high(const SHLINT_ARGUMENTS& s) { return 0.665f * s.S * s.E < s.P; }

ELEMENT_RESULT by_inside(const SHLINT_ARGUMENTS& s) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f; // new
    const Real R = Rn + s.c;
    if (0.356f * R < tc || pressure_is_high(s)) {
        const Real Rt = Rn + s.t - s.u;
        return {.Treq = R * (exp(s.P / (2.0f * s.S * s.E)) - 1.0f),
                .MAWP = 2.0f * s.S * s.E * log(Rt / R),
                .MAPnc = 2.0f * s.Sa * s.E * log((Rn + s.t) / Rn),
                .Stress = (s.P / 2.0f) / (s.E * log(Rt / R))};
    }
    return {.Treq = s.P * R / (2.0f * s.S * s.E - 0.2f * s.P),
            .MAWP = 2.0f * s.S * s.E * tc / (R + 0.2f * tc),
            .MAPnc = 2.0f * s.Sa * s.E * s.t / (Rn + 0.2f * s.t),
            .Stress = s.P * (R + 0.2f * tc) / (2.0f * s.E * tc)};
}

ELEMENT_RESULT by_outside(const SHLINT_ARGUMENTS& s) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f;
    const Real Ro = reduced_outside_diameter(s) / 2.0f;
    if (0.356f * (s.D - 2.0f * (s.t - s.c)) / 2.0f < tc || pressure_is_high(s)) {
        const Real Ri = Rn - s.t + s.c;
        return {.Treq = Ro * (1.0f - exp(-s.P / (2.0f * s.S * s.E))),
                .MAWP = 2.0f * s.S * s.E * log(Ro / Ri),
                .MAPnc = 2.0f * s.Sa * s.E * log(Rn / (Rn - s.t)),
                .Stress = (s.P / 2.0f) / (s.E * log(Ro / Ri))};
    }
    return {.Treq = s.P * Ro / (2.0f * s.S * s.E + 0.8f * s.P),
            .MAWP = 2.0f * s.S * s.E * tc / (Ro - 0.8f * tc),
            .MAPnc = 2.0f * s.Sa * s.E * s.t / (Rn - 0.8f * s.t),
            .Stress = s.P * (Ro - 0.8f * tc) / (2.0f * s.E * tc)};
}

} // namespace

ELEMENT_RESULT SPHERICAL_SHELL(const SHLINT_ARGUMENTS& s) {
    return s.Outside == 0 ? by_inside(s) : by_outside(s);
}

} // namespace tarvane
