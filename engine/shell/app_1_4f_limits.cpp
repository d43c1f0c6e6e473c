// What Appendix 1-4(f) takes off the pressures of a thin formed head.
#include "materials/modulus.h"
#include "shell/app_1_4f_head.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

// Modulus, yield and allowances of a run: design condition, or new and cold.
struct CONDITION {
    Real E, Sy, c, u;
};

void run(const SHLINT_ARGUMENTS& s, const CONDITION& at, Int Mode, Real Tstart, Real& Tsolved,
         Int& Class, Real& Pfirst) {
    Real Ratio = 0.0f;
    APP_1_4F_ARGUMENTS head{.Element = s.Element,
                            .Outside = s.Outside,
                            .P = s.P,
                            .t = s.t,
                            .L = s.L,
                            .D = s.D,
                            .r = s.r,
                            .k = s.k,
                            .Temp = s.Temp,
                            .Et = at.E,
                            .Sy = at.Sy,
                            .TempLimit = 0.0f,
                            .Tsolved = Tsolved,
                            .Class = Class,
                            .c = at.c,
                            .u = at.u,
                            .Pfirst = Pfirst,
                            .Mode = Mode,
                            .TminLabel = 0,
                            .Hydro = 0.0f,
                            .Ratio = Ratio,
                            .Tstart = Tstart};
    APP_1_4F_HEAD(head);
}

// A pressure by Appendix 1-4(f), and the limit that it sets. A head without solution sets none.
void limit_pressure(const SHLINT_ARGUMENTS& s, const CONDITION& at, Real ratio, Int Mode,
                    Real& limit, Real& pressure) {
    Int Class = HEAD_CLASS_OF(ratio);
    if (Class >= HEAD_THICK) return;
    Real Tsolved = 0.0f, Pfirst = 0.0f;
    run(s, at, Mode, s.t, Tsolved, Class, Pfirst);
    if (Class == HEAD_FAILED) return;
    limit = Pfirst;
    pressure = min(pressure, limit);
}

} // namespace

void APPENDIX_1_4F_LIMITS(SHLINT_ARGUMENTS& s, Real ambient) {
    const Real Et = 1.0e6f * ASMEMOD(s.Temp, s.Material, 1);
    const Real Eamb = 1.0e6f * ASMEMOD(ambient, s.Material, 1);
    if (!(s.Sy > 1000.0f && Et > 1.0f && Eamb > 1.0f && s.Skip14f == 0)) return;

    s.T14f = 0.0f;
    s.Status14f = HEAD_NOT_RUN;
    s.SyCold = max(s.Sy, s.SyCold);
    const CONDITION design{.E = Et, .Sy = s.Sy, .c = s.c, .u = s.u};
    const CONDITION newAndCold{.E = Eamb, .Sy = s.SyCold, .c = 0.0f, .u = 0.0f};
    const Real corroded = corroded_thickness(s) / (s.L + s.c);

    if (corroded <= 0.002f) run(s, design, SOLVE_THICKNESS, 0.01f, s.T14f, s.Status14f, s.MAWP14f);
    // One trial for each, though that of an elliptical head new and cold goes on to a solution that
    // nothing takes.
    const Int Mode = s.Element == ELLIPTICAL ? SOLVE_THICKNESS : RATE_NEW;
    limit_pressure(s, newAndCold, s.t / s.L, Mode, s.MAPnc14f, s.MAPnc);
    limit_pressure(s, design, corroded, RATE, s.MAWP14f, s.MAWP);
}

} // namespace tarvane
