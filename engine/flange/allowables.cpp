// Stress limits (2-8, 4.16.13, PD 5500 3.8.3.4, EN 13445-3 11.5.4.2) and the summary table.
#include "flange/allowables.h"

#include "report/lines.h"

#include <string_view>

namespace tarvane {

namespace {

// k of PD 5500 and EN 13445: narrow faced flanges on shells above 1000 mm, full at 2000 mm.
Real reduction_factor(const FLANGE_STATE& s) {
    if (!(s.GoC < s.C + 0.0001f) || s.type == BLIND || !s.en_or_pd() || !(s.Dshell > 39.37008f))
        return 1.0f;
    const Real k = s.Dshell < 78.74016f ? (s.Dshell / 78.74f + 1.0f) * 2.0f / 3.0f : 1.3333334f;
    return max(k, 1.0f);
}

// The hub stress counts in the attached shell or nozzle too.
void limit_hub_by_shell(FLANGE_STATE& s) {
    if (!(s.Sn >= 0.001f && s.Sna >= 0.001f)) return;
    Real operating, seating;
    if (s.asme() && s.type == INTEGRAL_WELD_NECK) {
        operating = 2.5f * s.Sn;
        seating = 2.5f * s.Sna;
    } else if (s.asme() && (s.type == INTEGRAL_SLIP_ON || s.type == INTEGRAL_RING)) {
        operating = 1.5f * s.Sn;
        seating = 1.5f * s.Sna;
    } else if (s.en_or_pd() && (s.type == INTEGRAL_RING || s.type == LOOSE_RING)) {
        operating = 1.5f * s.Sn / s.kf;
        seating = 1.5f * s.Sna / s.kf;
    } else {
        return;
    }
    s.ALLOWED[OPERATING][HUB] = min(s.ALLOWED[OPERATING][HUB], operating);
    s.ALLOWED[SEATING][HUB] = min(s.ALLOWED[SEATING][HUB], seating);
}

constexpr std::string_view ROW_NAMES[PLACES] = {"Longitudinal Hub     ", "Radial Flange        ",
                                                "Tangential Flange    ", "Maximum Average      ",
                                                "Bolting              ", "Reverse Flange       ",
                                                "Full Faced Gasket    "};

bool row_is_shown(const FLANGE_STATE& s, Int place) {
    const Real operating = s.STRESS[OPERATING][place];
    const Real seating = s.STRESS[SEATING][place];
    if (place == REVERSE)
        return s.type == REVERSE_WELD_NECK && operating != 0.0f && seating != 0.0f;
    if (place == FULL_FACE) return s.fullFace && operating + seating >= 0.0001f;
    return operating != 0.0f || seating != 0.0f;
}

} // namespace

void FLANGE_ALLOWABLES(FLANGE_STATE& s) {
    s.kf = reduction_factor(s);
    const Real flange[2] = {s.Sfo, s.Sfa};
    const Real bolts[2] = {s.Sb, s.Sa};
    for (const StressRow row : {OPERATING, SEATING}) {
        const Real limit = flange[row] / s.kf;
        s.ALLOWED[row][HUB] = 1.5f * flange[row] / s.kf;
        s.ALLOWED[row][RADIAL] = limit;
        s.ALLOWED[row][TANGENTIAL] = limit;
        s.ALLOWED[row][AVERAGE] = limit;
        s.ALLOWED[row][BOLTING] = bolts[row];
        s.ALLOWED[row][REVERSE] = limit;
        s.ALLOWED[row][FULL_FACE] = limit;
    }
    limit_hub_by_shell(s);
}

void STRESS_SUMMARY(FLANGE_STATE& s) {
    for (const StressRow row : {OPERATING, SEATING}) {
        for (Int place = 0; place < PLACES; ++place) {
            const Real stress = s.STRESS[row][place];
            s.RATIO[row][place] =
                stress == 0.0f ? 999.0f : s.ALLOWED[row][place] / std::fabs(stress);
        }
    }
    if (!reporting()) return;

    LinePieces()
        .text("Flange Stress Analysis Results: ")
        .text(UNITS.stress_label.view())
        .write(HEADING_STYLE);
    BLANK_LINE();
    LinePieces().blanks(30).text("  Operating |      Gasket Seating |").write();
    LinePieces().blanks(23).text(" Actual    Allowed |   Actual    Allowed |").write();
    TEXT_LINE("-----------------------------------------------------------------");
    for (Int place = 0; place < PLACES; ++place) {
        if (!row_is_shown(s, place)) continue;
        LinePieces line;
        line.text(ROW_NAMES[place]);
        bool over = false;
        for (const StressRow row : {OPERATING, SEATING}) {
            for (const Real value : {s.STRESS[row][place], s.ALLOWED[row][place]})
                line.blanks(1).pointed(as_stress(value), 9).text("|");
            // No tolerance and no absolute value: a compression never marks its row.
            over = over || s.STRESS[row][place] > s.ALLOWED[row][place];
        }
        line.write(over ? ERROR_STYLE : PLAIN);
    }
}

} // namespace tarvane
