// Spherical shells and hemispherical heads: UG-27(d) inside, Appendix 1-1 outside, thick ones by
// Appendix 1-3.
#include "shell/elements.h"

namespace tarvane {

namespace {

bool pressure_is_high(const SHLINT_ARGUMENTS& s) { return 0.665f * s.S * s.E < s.P; }

ELEMENT_RESULT by_inside(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f; // new
    const Real R = Rn + s.c;
    if (trace != nullptr) TRACE_INSIDE_RADII(*trace, Rn, R);
    if (0.356f * R < tc || pressure_is_high(s)) {
        SHELL.thick = thick_by(0.356f * R < tc, pressure_is_high(s));
        const Real Rt = Rn + s.t - s.u;
        SHELL.formula = APP_1_3;
        const ELEMENT_RESULT thick{.Treq = R * (exp(s.P / (2.0f * s.S * s.E)) - 1.0f),
                                   .MAWP = 2.0f * s.S * s.E * log(Rt / R),
                                   .MAPnc = 2.0f * s.Sa * s.E * log((Rn + s.t) / Rn),
                                   .Stress = (s.P / 2.0f) / (s.E * log(Rt / R))};
        if (trace != nullptr)
            TRACE_ELEMENT(*trace,
                          {.Treq = "R * ( exp( P / ( 2 * S * E ) ) - 1 )",
                           .MAWP = "2 * S * E * ln( ( R + tc ) / R )",
                           .MAPnc = "2 * Sa * E * ln( ( Rn + t ) / Rn )",
                           .Stress = "( P / 2 ) / ( E * ln( ( R + tc ) / R ) )"},
                          thick);
        return thick;
    }
    SHELL.formula = UG_27_D;
    const ELEMENT_RESULT thin{.Treq = s.P * R / (2.0f * s.S * s.E - 0.2f * s.P),
                              .MAWP = 2.0f * s.S * s.E * tc / (R + 0.2f * tc),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t / (Rn + 0.2f * s.t),
                              .Stress = s.P * (R + 0.2f * tc) / (2.0f * s.E * tc)};
    if (trace != nullptr)
        TRACE_ELEMENT(*trace,
                      {.Treq = "P * R / ( 2 * S * E - 0.2 * P )",
                       .MAWP = "2 * S * E * tc / ( R + 0.2 * tc )",
                       .MAPnc = "2 * Sa * E * t / ( Rn + 0.2 * t )",
                       .Stress = "P * ( R + 0.2 * tc ) / ( 2 * E * tc )"},
                      thin);
    return thin;
}

ELEMENT_RESULT by_outside(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f;
    const Real Ro = reduced_outside_diameter(s) / 2.0f;
    if (trace != nullptr) TRACE_OUTSIDE_RADII(*trace, Rn, Ro, s.u);
    const bool wall_is_thick = 0.356f * (s.D - 2.0f * (s.t - s.c)) / 2.0f < tc;
    if (wall_is_thick || pressure_is_high(s)) {
        SHELL.thick = thick_by(wall_is_thick, pressure_is_high(s));
        const Real Ri = Rn - s.t + s.c;
        SHELL.formula = APP_1_3;
        const ELEMENT_RESULT thick{.Treq = Ro * (1.0f - exp(-s.P / (2.0f * s.S * s.E))),
                                   .MAWP = 2.0f * s.S * s.E * log(Ro / Ri),
                                   .MAPnc = 2.0f * s.Sa * s.E * log(Rn / (Rn - s.t)),
                                   .Stress = (s.P / 2.0f) / (s.E * log(Ro / Ri))};
        if (trace != nullptr) {
            TRACE_COLUMN(*trace, "Corroded Inside Radius", "Ri", "Do / 2 - t + c", Ri,
                         Kind::diameter);
            TRACE_ELEMENT(*trace,
                          {.Treq = "Ru * ( 1 - exp( -P / ( 2 * S * E ) ) )",
                           .MAWP = "2 * S * E * ln( Ru / Ri )",
                           .MAPnc = "2 * Sa * E * ln( Ro / ( Ro - t ) )",
                           .Stress = "( P / 2 ) / ( E * ln( Ru / Ri ) )"},
                          thick);
        }
        return thick;
    }
    SHELL.formula = APP_1_1_A_2;
    const ELEMENT_RESULT thin{.Treq = s.P * Ro / (2.0f * s.S * s.E + 0.8f * s.P),
                              .MAWP = 2.0f * s.S * s.E * tc / (Ro - 0.8f * tc),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t / (Rn - 0.8f * s.t),
                              .Stress = s.P * (Ro - 0.8f * tc) / (2.0f * s.E * tc)};
    if (trace != nullptr)
        TRACE_ELEMENT(*trace,
                      {.Treq = "P * Ru / ( 2 * S * E + 0.8 * P )",
                       .MAWP = "2 * S * E * tc / ( Ru - 0.8 * tc )",
                       .MAPnc = "2 * Sa * E * t / ( Ro - 0.8 * t )",
                       .Stress = "P * ( Ru - 0.8 * tc ) / ( 2 * E * tc )"},
                      thin);
    return thin;
}

} // namespace

ELEMENT_RESULT SPHERICAL_SHELL(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    return s.Outside == 0 ? by_inside(s, trace) : by_outside(s, trace);
}

} // namespace tarvane
