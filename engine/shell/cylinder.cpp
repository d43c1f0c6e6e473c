// Cylindrical shells: UG-27(c)(1) inside, Appendix 1-1 outside, thick ones by Appendix 1-2(a).
#include "shell/elements.h"

namespace tarvane {

namespace {

bool pressure_is_high(const SHLINT_ARGUMENTS& s) { return 0.385f * s.S * s.E < s.P; }

ELEMENT_RESULT by_inside(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f; // new
    const Real R = Rn + s.c;
    if (trace != nullptr) TRACE_INSIDE_RADII(*trace, Rn, R);
    if (R / 2.0f < tc || pressure_is_high(s)) {
        SHELL.thick = thick_by(R / 2.0f < tc, pressure_is_high(s));
        SHELL.formula = APP_1_2_A_1;
        const ELEMENT_RESULT thick{.Treq = R * (exp(s.P / (s.S * s.E)) - 1.0f),
                                   .MAWP = s.S * s.E * log((R + s.t - s.c - s.u) / R),
                                   .MAPnc = s.Sa * s.E * log((Rn + s.t) / Rn),
                                   .Stress = s.P / (s.E * log((Rn + s.t - s.u) / R))};
        if (trace != nullptr)
            TRACE_ELEMENT(*trace,
                          {.Treq = "R * ( exp( P / ( S * E ) ) - 1 )",
                           .MAWP = "S * E * ln( ( R + tc ) / R )",
                           .MAPnc = "Sa * E * ln( ( Rn + t ) / Rn )",
                           .Stress = "P / ( E * ln( ( R + tc ) / R ) )"},
                          thick);
        return thick;
    }
    SHELL.formula = UG_27_C_1;
    const ELEMENT_RESULT thin{.Treq = s.P * R / (s.S * s.E - 0.6f * s.P),
                              .MAWP = s.S * s.E * tc / (R + 0.6f * tc),
                              .MAPnc = s.Sa * s.E * s.t / (Rn + 0.6f * s.t),
                              .Stress = s.P * (R + 0.6f * tc) / (s.E * tc)};
    if (trace != nullptr)
        TRACE_ELEMENT(*trace,
                      {.Treq = "P * R / ( S * E - 0.6 * P )",
                       .MAWP = "S * E * tc / ( R + 0.6 * tc )",
                       .MAPnc = "Sa * E * t / ( Rn + 0.6 * t )",
                       .Stress = "P * ( R + 0.6 * tc ) / ( E * tc )"},
                      thin);
    return thin;
}

ELEMENT_RESULT by_outside(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Rn = s.D / 2.0f;
    const Real Ro = reduced_outside_diameter(s) / 2.0f;
    if (trace != nullptr) TRACE_OUTSIDE_RADII(*trace, Rn, Ro, s.u);
    const bool wall_is_thick = (s.D - 2.0f * (s.t - s.c)) / 4.0f < tc;
    if (wall_is_thick || pressure_is_high(s)) {
        SHELL.thick = thick_by(wall_is_thick, pressure_is_high(s));
        const Real Ri = Rn - s.t + s.c;
        SHELL.formula = APP_1_2_A_1;
        const ELEMENT_RESULT thick{.Treq = Ro * (1.0f - exp(-s.P / (s.S * s.E))),
                                   .MAWP = s.S * s.E * log(Ro / Ri),
                                   .MAPnc = s.Sa * s.E * log(Rn / (Rn - s.t)),
                                   .Stress = s.P / (s.E * log(Ro / Ri))};
        if (trace != nullptr) {
            TRACE_COLUMN(*trace, "Corroded Inside Radius", "Ri", "Do / 2 - t + c", Ri,
                         Kind::diameter);
            TRACE_ELEMENT(*trace,
                          {.Treq = "Ru * ( 1 - exp( -P / ( S * E ) ) )",
                           .MAWP = "S * E * ln( Ru / Ri )",
                           .MAPnc = "Sa * E * ln( Ro / ( Ro - t ) )",
                           .Stress = "P / ( E * ln( Ru / Ri ) )"},
                          thick);
        }
        return thick;
    }
    SHELL.formula = APP_1_1_A_1;
    const ELEMENT_RESULT thin{.Treq = s.P * Ro / (s.S * s.E + 0.4f * s.P),
                              .MAWP = s.S * s.E * tc / (Ro - 0.4f * tc),
                              .MAPnc = s.Sa * s.E * s.t / (Rn - 0.4f * s.t),
                              .Stress = s.P * (Ro - 0.4f * tc) / (s.E * tc)};
    if (trace != nullptr)
        TRACE_ELEMENT(*trace,
                      {.Treq = "P * Ru / ( S * E + 0.4 * P )",
                       .MAWP = "S * E * tc / ( Ru - 0.4 * tc )",
                       .MAPnc = "Sa * E * t / ( Ro - 0.4 * t )",
                       .Stress = "P * ( Ru - 0.4 * tc ) / ( E * tc )"},
                      thin);
    return thin;
}

} // namespace

ELEMENT_RESULT CYLINDRICAL_SHELL(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    return s.Outside == 0 ? by_inside(s, trace) : by_outside(s, trace);
}

} // namespace tarvane
