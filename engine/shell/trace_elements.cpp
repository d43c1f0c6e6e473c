// Traces that several elements share.
#include "shell/elements.h"

namespace tarvane {

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
