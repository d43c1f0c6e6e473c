// Traces that several elements share.
#include "shell/elements.h"

namespace tarvane {

namespace {

std::string_view minimum_rule(const SHLINT_ARGUMENTS& s, Real TminS) {
    if (TminS > 0.0f) return s.Service == 2 ? "UG-16 (b)(3)" : "UG-16 (b)(4)";
    return "UG-16 (b)";
}

} // namespace

void TRACE_ARGUMENTS(TRACE& trace, const SHLINT_ARGUMENTS& s) {
    TRACE_SYMBOL(trace, "P", s.P, Kind::pressure, trace.pressure_name);
    TRACE_SYMBOL(trace, "S", s.S, Kind::stress);
    TRACE_SYMBOL(trace, "Sa", s.Sa, Kind::stress);
    TRACE_SYMBOL(trace, "E", s.E, Kind::factor);
    TRACE_SYMBOL(trace, "t", s.t, Kind::thickness);
    TRACE_SYMBOL(trace, "c", s.c, Kind::thickness);
    TRACE_SYMBOL(trace, "Ut", s.u, Kind::thickness);
    TRACE_SYMBOL(trace, "D", s.D, Kind::diameter);
    TRACE_SYMBOL(trace, "Do", s.D, Kind::diameter); // the formulas have one of the two
}

void TRACE_CORRODED_THICKNESS(TRACE& trace, const SHLINT_ARGUMENTS& s) {
    TRACE_COLUMN(trace, "Corroded Thickness", "tc", s.u != 0.0f ? "t - c - Ut" : "t - c",
                 corroded_thickness(s), Kind::thickness);
}

void TRACE_GOVERNING(TRACE& trace, const SHLINT_ARGUMENTS& s, Real TminS) {
    const bool minimum = s.Treq > formula_thickness(s);
    const bool thin = s.T14f > 0.0f;
    if (thin) TRACE_SYMBOL(trace, "t14f", s.T14f, Kind::thickness);
    if (minimum) TRACE_SYMBOL(trace, "tmin", s.Treq, Kind::thickness);
    TRACE_SYMBOL(trace, "tg", SHELL.t_governing, Kind::thickness, minimum || thin ? "tg" : "tr");
    if (minimum || thin) {
        std::string_view rule = minimum ? minimum_rule(s, TminS) : RULE_OF(SHELL.formula);
        if (thin && s.T14f > s.Treq) rule = "App. 1-4 (f)";
        TRACE_FORMULA(trace, TRACE_GROUP::governing, "Governing Required Thickness [tg]:",
                      !minimum ? "max( tr, t14f )"
                      : thin   ? "max( tr, t14f, tmin )"
                               : "max( tr, tmin )",
                      rule, Kind::thickness, SHELL.t_governing);
    }
    TRACE_FORMULA(trace, TRACE_GROUP::governing, "Required Thickness with Allowances [treq]:",
                  s.u != 0.0f ? "tg + c + Ut" : "tg + c", {}, Kind::thickness, SHELL.t_required);
}

void TRACE_ELEMENT(TRACE& trace, const ELEMENT_TEXTS& texts, const ELEMENT_RESULT& result) {
    const std::string_view rule = RULE_OF(SHELL.formula);
    TRACE_FORMULA(trace, TRACE_GROUP::thickness,
                  "Required Thickness due to Internal Pressure [tr]:", texts.Treq, rule,
                  Kind::thickness, result.Treq);
    TRACE_SYMBOL(trace, "tr", result.Treq, Kind::thickness);
    TRACE_RATING(trace, texts, result);
}

void TRACE_RATING(TRACE& trace, const ELEMENT_TEXTS& texts, const ELEMENT_RESULT& result) {
    const std::string_view rule = RULE_OF(SHELL.formula);
    TRACE_FORMULA(trace, TRACE_GROUP::mawp,
                  "Maximum Allowable Working Pressure at Given Thickness, Corroded [MAWP]:",
                  texts.MAWP, rule, Kind::pressure, result.MAWP);
    TRACE_FORMULA(trace, TRACE_GROUP::map_nc,
                  "Maximum Allowable Pressure, New and Cold [MAPNC]:", texts.MAPnc, rule,
                  Kind::pressure, result.MAPnc);
    TRACE_FORMULA(trace, TRACE_GROUP::stress,
                  "Actual Stress at Given Pressure and Thickness, Corroded [Sact]:", texts.Stress,
                  rule, Kind::stress, result.Stress);
    TRACE_SYMBOL(trace, "MAWP", result.MAWP, Kind::pressure);
    TRACE_SYMBOL(trace, "MAPNC", result.MAPnc, Kind::pressure);
    TRACE_SYMBOL(trace, "Sact", result.Stress, Kind::stress);
}

void TRACE_INSIDE_RADII(TRACE& trace, Real Rn, Real R) {
    TRACE_COLUMN(trace, "New Inside Radius", "Rn", "D / 2", Rn, Kind::diameter);
    TRACE_COLUMN(trace, "Corroded Inside Radius", "R", "D / 2 + c", R, Kind::diameter);
}

// The tolerance comes off the outside; without one the radius is the new one.
void TRACE_OUTSIDE_RADII(TRACE& trace, Real Rn, Real Ro, Real u) {
    TRACE_COLUMN(trace, "New Outside Radius", "Ro", "Do / 2", Rn, Kind::diameter);
    if (u != 0.0f)
        TRACE_COLUMN(trace, "Outside Radius", "Ru", "Do / 2 - Ut", Ro, Kind::diameter);
    else
        TRACE_SYMBOL(trace, "Ru", Ro, Kind::diameter, "Ro");
}

} // namespace tarvane
