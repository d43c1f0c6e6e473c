// Limits by Appendix 1-4(f) of the pressures of a thin formed head.
#include "materials/modulus.h"
#include "report/channel.h"
#include "shell/app_1_4f_head.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

// Modulus, yield and allowances of a run: design condition, or new and cold.
struct CONDITION {
    Real E, Sy, c, u;
};

// Modulus at the temperature that counts as ambient; a head type has its own.
Real ambient_of(Int Element) { return Element == ELLIPTICAL ? 100.0f : 70.0f; }

CONDITION design_condition(const SHLINT_ARGUMENTS& s) {
    return {.E = SHELL.modulus_design, .Sy = s.Sy, .c = s.c, .u = s.u};
}
CONDITION new_and_cold(const SHLINT_ARGUMENTS& s) {
    return {.E = SHELL.modulus_ambient, .Sy = s.SyCold, .c = 0.0f, .u = 0.0f};
}

void run(const SHLINT_ARGUMENTS& s, const CONDITION& at, Int Mode, Real Tstart, Real TempLimit,
         Real& Tsolved, Int& Class, Real& Pfirst) {
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
                            .TempLimit = TempLimit,
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

// A pressure, its limit, and how a report shows them.
struct LIMITED {
    Real &pressure, &limit; // arguments of SHLINT
    Real& noted;            // of SHELL
    Int &by, &status;
    TRACE_GROUP group;
    std::string_view title, text;
};

// A pressure by Appendix 1-4(f), and the limit that it sets. A head without solution sets none.
void limit_pressure(const SHLINT_ARGUMENTS& s, const CONDITION& at, Real ratio, Int Mode,
                    const LIMITED& of, TRACE* trace) {
    Int Class = HEAD_CLASS_OF(ratio);
    if (Class >= HEAD_THICK) return;
    Real Tsolved = 0.0f, Pfirst = 0.0f;
    run(s, at, Mode, s.t, 0.0f, Tsolved, Class, Pfirst);
    of.status = Class;
    if (Class == HEAD_FAILED) return;
    of.limit = of.noted = Pfirst;
    const bool limited = Pfirst < of.pressure;
    if (limited) of.by = BY_APP_1_4F;
    of.pressure = min(of.pressure, of.limit);
    if (trace == nullptr) return;
    TRACE_SYMBOL(*trace, "Pa", Pfirst, Kind::pressure);
    TRACE_FORMULA(*trace, of.group, of.title, of.text,
                  limited ? "App. 1-4 (f)" : RULE_OF(SHELL.formula), Kind::pressure, of.pressure);
}

} // namespace

void APPENDIX_1_4F_LIMITS(SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real Et = 1.0e6f * ASMEMOD(s.Temp, s.Material, 1);
    const Real Eamb = 1.0e6f * ASMEMOD(ambient_of(s.Element), s.Material, 1);
    const Real corroded = corroded_thickness(s) / (s.L + s.c);
    const Real asNew = s.t / s.L;
    SHELL.modulus_design = Et;
    SHELL.modulus_ambient = Eamb;
    SHELL.ratio = corroded;
    SHELL.ratio_new = asNew;
    SHELL.thin = corroded <= 0.002f ? 1 : 0;
    SHELL.thin_new = asNew <= 0.002f ? 1 : 0;
    if (!(s.Sy > 1000.0f)) SHELL.lacks_14f += LACKS_YIELD;
    if (!(Et > 1.0f && Eamb > 1.0f)) SHELL.lacks_14f += LACKS_MODULI;
    if (s.Skip14f != 0) SHELL.lacks_14f += SKIPPED;
    if (SHELL.lacks_14f != 0) return;

    SHELL.evaluated_14f = 1;
    s.T14f = 0.0f;
    s.Status14f = HEAD_NOT_RUN;
    s.SyCold = max(s.Sy, s.SyCold);
    const CONDITION design = design_condition(s);

    if (corroded <= 0.002f)
        run(s, design, SOLVE_THICKNESS, 0.01f, 0.0f, s.T14f, s.Status14f, s.MAWP14f);
    SHELL.t_status_14f = s.Status14f;
    SHELL.t_14f = s.T14f;
    // One trial for each, though that of an elliptical head new and cold goes on to a solution that
    // nothing takes.
    const Int Mode = s.Element == ELLIPTICAL ? SOLVE_THICKNESS : RATE_NEW;
    limit_pressure(
        s, new_and_cold(s), asNew, Mode,
        {.pressure = s.MAPnc,
         .limit = s.MAPnc14f,
         .noted = SHELL.map_nc_14f,
         .by = SHELL.map_nc_by,
         .status = SHELL.map_nc_status_14f,
         .group = TRACE_GROUP::map_nc_14f,
         .title = "Maximum Allowable Pressure, New and Cold, with Appendix 1-4(f) [MAPNC]:",
         .text = "min( MAPNC, Pa )"},
        trace);
    limit_pressure(s, design, corroded, RATE,
                   {.pressure = s.MAWP,
                    .limit = s.MAWP14f,
                    .noted = SHELL.mawp_14f,
                    .by = SHELL.mawp_by,
                    .status = SHELL.mawp_status_14f,
                    .group = TRACE_GROUP::mawp_14f,
                    .title = "Maximum Allowable Working Pressure, with Appendix 1-4(f) [MAWP]:",
                    .text = "min( MAWP, Pa )"},
                   trace);
}

bool APPENDIX_1_4F_REPORT(const SHLINT_ARGUMENTS& s, Int Mode, Real TempLimit) {
    const Int entry = IWRITE;
    // A class above 0 asks for the title, which the thickness has.
    Int Class = Mode == SOLVE_THICKNESS_REPORT ? HEAD_THIN : HEAD_NOT_RUN;
    Real Tsolved = 0.0f, Pfirst = 0.0f;
    run(s, Mode == RATE_NEW_REPORT ? new_and_cold(s) : design_condition(s), Mode, 0.01f, TempLimit,
        Tsolved, Class, Pfirst);
    IWRITE = entry; // a head without solution leaves it on
    return Class != HEAD_FAILED;
}

} // namespace tarvane
