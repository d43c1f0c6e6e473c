#include "flange/geometry.h"

#include "report/lines.h"

namespace tarvane {

namespace {

// Label of 32 columns, symbol of 20, value, unit.
void dimension_line(std::string_view label, std::string_view symbol, Real value, Kind kind) {
    Text<52> line = label;
    line.put(33, symbol);
    COLUMN_LINE(line.view(), value, kind);
}

// Bore and hub; a ring that is loose of its shell or hub shows neither.
void hub_dimensions(const FLANGE_STATE& s) {
    if (s.type >= REVERSE_WELD_NECK) {
        dimension_line("Corroded Flange ID,     B'cor = ", "B'+2*ci", corroded_bore(s),
                       Kind::diameter);
        dimension_line("Corroded Shell ID,       Bcor = ", "A+2(ci - go - ce)",
                       s.A - 2.0f * s.ce - 2.0f * s.go + 2.0f * s.ci, Kind::diameter);
    } else {
        dimension_line("Corroded Flange ID,      Bcor = ", "B+2*Fcor", corroded_bore(s),
                       Kind::diameter);
    }
    dimension_line("Corroded Large Hub,     g1Cor = ", "g1-ci",
                   max(0.0f, corroded_hub(s.g1, s) - s.ce), Kind::thickness);
    dimension_line("Corroded Small Hub,     g0Cor = ", "go-ci",
                   max(0.0f, corroded_hub(s.go, s) - s.ce), Kind::thickness);
}

} // namespace

void SETTLE_ALLOWANCES(FLANGE_GIVEN& s) {
    s.ct = thickness_allowance(s);
    if (s.type >= LOOSE_SLIP_ON && s.type <= LAP_JOINT) s.ci = 0.0f;
    if (s.type == LAP_JOINT) s.ct = 0.0f;
}

void CORRODED_DIMENSIONS(const FLANGE_STATE& s) {
    if (s.type == BLIND) {
        BLANK_LINE();
        return;
    }
    if (s.ct > 0.0f && s.thicknessCorrodes())
        dimension_line("Corroded Flange Thickness, tc = ", "T-ci", s.t - s.ct, Kind::thickness);

    const bool ring = s.type >= LOOSE_SLIP_ON && s.type <= LAP_JOINT;
    if (!ring) hub_dimensions(s);

    if (!(s.fullFace && s.en_or_pd())) {
        const bool uncorroded = s.ci == 0.0f && s.ce <= 0.0001f;
        dimension_line(
            "Code R Dimension,           R = ", uncorroded ? "(C-B)/2 - g1" : "((C-Bcor)/2)-g1cor",
            bolt_circle_to_hub(s), Kind::thickness);
    }
    BLANK_LINE();
}

} // namespace tarvane
