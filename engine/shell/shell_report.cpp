#include "shell/shell_report.h"

#include "shell/app_1_4f_head.h"
#include "shell/convex_head.h"
#include "shell/elements.h"

#include <cmath>

namespace tarvane {

namespace {

TRACE SHELL_TRACE;

// The stages once more, without lines but those of UG-39, as SHLINT ran them.
void run_traced(SHLINT_ARGUMENTS& s, std::string_view pressure) {
    const Int entry = IWRITE;
    BEGIN_TRACE(SHELL_TRACE, entry, pressure);
    K_COLUMN = K_COLUMN_AT_ENTRY;
    IWRITE = 0;
    SHELL_ELEMENT(s, &SHELL_TRACE);
    IWRITE = entry;
}

void thickness_lines(const SHLINT_ARGUMENTS& s, Real TempLimit) {
    WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::thickness);
    if (SHELL.t_status_14f == HEAD_THIN || SHELL.t_status_14f == HEAD_VERY_THIN)
        APPENDIX_1_4F_REPORT(s, SOLVE_THICKNESS_REPORT, TempLimit);
    WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::governing);
}

// A pressure by the ordinary formulas, and what Appendix 1-4(f) leaves of it.
void pressure_lines(const SHLINT_ARGUMENTS& s, TRACE_GROUP ordinary, bool thin, Int Mode,
                    TRACE_GROUP limited) {
    WRITE_TRACED(SHELL_TRACE, ordinary);
    if (!thin || SHELL.evaluated_14f == 0) return;
    if (APPENDIX_1_4F_REPORT(s, Mode, 0.0f))
        WRITE_TRACED(SHELL_TRACE, limited);
    else
        TEXT_LINE("Warning: Appendix 1-4(f) has no solution for this geometry.", ERROR_STYLE);
}

void mawp_lines(const SHLINT_ARGUMENTS& s) {
    pressure_lines(s, TRACE_GROUP::mawp, SHELL.thin == 1, RATE_REPORT, TRACE_GROUP::mawp_14f);
}

void shell_lines(const SHLINT_ARGUMENTS& s, Real TempLimit) {
    WRITE_TRACED_COLUMNS(SHELL_TRACE);
    WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::factor);
    thickness_lines(s, TempLimit);
    mawp_lines(s);
    pressure_lines(s, TRACE_GROUP::map_nc, SHELL.thin_new == 1, RATE_NEW_REPORT,
                   TRACE_GROUP::map_nc_14f);
    WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::stress);
}

void convex_lines(const SHLINT_ARGUMENTS& s, Real TempLimit, const CONVEX_REPORT& convex) {
    Real Pi = 0.0f, treq = 0.0f, MAEPi = 0.0f, MAEPg = 0.0f, Tg = 0.0f;
    CONVEX_HEAD_ARGUMENTS head{.P = convex.P,
                               .MAEP = convex.MAEP,
                               .Tca = convex.Tca,
                               .TreqRaw = SHELL.t_req_raw,
                               .t_required = SHELL.t_required,
                               .MAWP = SHELL.mawp,
                               .Pi = Pi,
                               .treq = treq,
                               .MAEPi = MAEPi,
                               .MAEPg = MAEPg,
                               .Tg = Tg};
    CONVEX_HEAD(head, &SHELL_TRACE);
    const bool pressure = convex.P > 0.0f, thickness = pressure && std::isfinite(treq);
    WRITE_TRACED_COLUMNS(SHELL_TRACE);
    if (pressure) WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::convex_pressure);
    WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::factor);
    if (thickness) thickness_lines(s, TempLimit);
    mawp_lines(s);
    WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::convex_rating);
    if (thickness) WRITE_TRACED(SHELL_TRACE, TRACE_GROUP::convex_thickness);
}

} // namespace

void SHELL_REPORT(SHLINT_ARGUMENTS& s, Real TempLimit, const CONVEX_REPORT* convex) {
    if (!reporting()) return;
    run_traced(s, convex != nullptr ? "Pi" : "P");
    if (SHELL.status != SHELL_CALCULATED) return;
    if (convex != nullptr)
        convex_lines(s, TempLimit, *convex);
    else
        shell_lines(s, TempLimit);
}

} // namespace tarvane
