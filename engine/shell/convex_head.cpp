#include "shell/convex_head.h"

#include <cmath>
#include <limits>

namespace tarvane {

namespace {

constexpr std::string_view THICKNESS_RULE = "UG-33 (a)(1)", PRESSURE_RULE = "UG-33 (a)";

// From 2 S = 0.2 Pi on the formulas of UG-32 have no thickness.
bool has_thickness(const CONVEX_HEAD_ARGUMENTS& h) {
    return h.TreqRaw > 0.0f && std::isfinite(h.TreqRaw) && std::isfinite(h.t_required);
}

void trace_head(TRACE& trace, const CONVEX_HEAD_ARGUMENTS& h) {
    TRACE_SYMBOL(trace, "P", h.P, Kind::pressure);
    TRACE_SYMBOL(trace, "MAWP", h.MAWP, Kind::pressure);
    TRACE_SYMBOL(trace, "MAEP", h.MAEP, Kind::pressure);
    TRACE_SYMBOL(trace, "MAEPi", h.MAEPi, Kind::pressure);
    TRACE_SYMBOL(trace, "Tca", h.Tca, Kind::thickness);
    TRACE_SYMBOL(trace, "treq", h.treq, Kind::thickness);
    TRACE_FORMULA(trace, TRACE_GROUP::convex_pressure,
                  "Internal Pressure to Check the Head with [Pi]:", "1.67 * P", THICKNESS_RULE,
                  Kind::pressure, h.Pi);
    TRACE_FORMULA(trace, TRACE_GROUP::convex_rating,
                  "Allowable External Pressure by Internal Pressure [MAEPi]:", "MAWP / 1.67",
                  PRESSURE_RULE, Kind::pressure, h.MAEPi);
    TRACE_FORMULA(trace, TRACE_GROUP::convex_rating,
                  "Governing Maximum Allowable External Pressure [MAEPg]:", "min( MAEP, MAEPi )",
                  PRESSURE_RULE, Kind::pressure, h.MAEPg);
    TRACE_FORMULA(trace, TRACE_GROUP::convex_thickness,
                  "Governing Required Thickness with Allowances [Tg]:", "max( Tca, treq )",
                  THICKNESS_RULE, Kind::thickness, h.Tg);
}

} // namespace

void CONVEX_HEAD(CONVEX_HEAD_ARGUMENTS& h, TRACE* trace) {
    h.Pi = 1.67f * h.P;
    h.treq = has_thickness(h) ? h.t_required : std::numeric_limits<Real>::infinity();
    h.MAEPi = h.MAWP / 1.67f;
    h.MAEPg = min(h.MAEP, h.MAEPi);
    h.Tg = max(h.Tca, h.treq);
    if (trace != nullptr) trace_head(*trace, h);
}

} // namespace tarvane
