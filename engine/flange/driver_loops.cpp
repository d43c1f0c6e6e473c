#include "flange/driver_loops.h"

#include "flange/driver.h"
#include "flange/hub.h"
#include "flange/results.h"
#include "frame/element_tables.h"
#include "host/services.h"
#include "report/lines.h"
#include "report/renderer.h"

namespace tarvane {

namespace {

constexpr Int COVER_ROUNDS = 200;
constexpr Int MATING_ROUNDS = 2000;
// Steps of a thousandth: 500 in. of plate. A thickness beyond all reason must not keep the host
// waiting; a round takes about two microseconds.
constexpr Int CORROSION_ROUNDS = 500000;
constexpr Int PROGRESS_CONTROL = 1002;

Real least(const Real (&row)[PLACES]) {
    Real r = row[0];
    for (Int i = 1; i < PLACES; ++i)
        r = min(r, row[i]);
    return r;
}

// ---- mating loads ------------------------------------------------------------------------------------

void progress_text(const FLANGE_GIVEN& s, std::string_view caption, Int round) {
    Text<120> text;
    Int column = 1;
    const auto put = [&](std::string_view piece) {
        text.put(column, piece);
        column += static_cast<Int>(piece.size());
    };
    put("Flg Desc: ");
    put(s.description.trimmed());
    put(",");
    put(caption);
    put(whole_number(round, 0).view());
    put(" ");
    put(whole_number(LINE_COUNT, 0).view());
    SET_DIALOG_TEXT(PROGRESS_CONTROL, text.trimmed());
}

// Raises or scales the pressure until the least stress ratio is 1.
void mating_loop(DRIVER_STATE& d, std::string_view caption, bool bothRows) {
    constexpr Real dStep = 20.0f;
    FLANGE_STATE& s = *d.s;
    Real keptOp = 0.0f, keptSeat = 0.0f;
    Int keptOpBy = HELD_BY_NOTHING, keptSeatBy = HELD_BY_NOTHING;
    for (Int i = 1; i <= MATING_ROUNDS; ++i) {
        progress_text(s, caption, i);
        if (!RUN_KERNEL(d)) return;
        if (i == 1) {
            keptOp = s.MAWPop;
            keptSeat = s.MAWPseat;
            keptOpBy = s.MAWPopBy;
            keptSeatBy = s.MAWPseatBy;
        }
        Real r = least(s.RATIO[OPERATING]);
        if (bothRows) r = min(r, least(s.RATIO[SEATING]));
        if (r > 1.00001001f)
            s.P = s.P + dStep;
        else if (std::fabs(r - 1.0f) < 0.0001f)
            return;
        else
            s.P = s.P * r;
        if (s.P < 1.0f) {
            s.MAWPop = keptOp;
            s.MAWPseat = keptSeat;
            s.MAWPopBy = keptOpBy;
            s.MAWPseatBy = keptSeatBy;
            return;
        }
    }
}

// New and cold, then at design condition; false after a fatal stop that returned.
bool mating_pressures(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    s.ci = s.ct = 0.0f;
    s.Sfo = s.Sfa;
    s.Sb = s.Sa;
    s.t = d.tGiven;
    s.kind = ANALYSE;
    mating_loop(d, " MAPnc iteration#: ", true);
    if (s.stopped) return false;
    *d.args->mapNc = NEW_AND_COLD_PRESSURE(s.MAWPop, s.MAWPseat);
    d.mapNcBy = HELD_BY(s, *d.args->mapNc);

    REREAD(d);
    s.kind = ANALYSE;
    mating_loop(d, " MAWP iteration: ", false);
    if (s.stopped) return false;
    s.MAWPopFixed = s.MAWPop;
    s.MAWPopFixedBy = s.MAWPopBy;
    s.MAWPseatFixed = *d.args->mapNc;
    s.MAWPseatFixedBy = d.mapNcBy;
    return true;
}

// ---- failure corrosion ---------------------------------------------------------------------------------

// One corroded state: true when the search ends with it.
bool corroded_state_ends(DRIVER_STATE& d, Int round, Real& rOp, Real& rSeat) {
    FLANGE_STATE& s = *d.s;
    if (s.type == BLIND) s.ct = s.ci;
    if (s.ci > min(s.Go, s.Fod) - max(s.Gi, s.Fid)) { // the gasket is gone
        d.governing = rOp < rSeat ? DRIVER_STATE::OPERATION : DRIVER_STATE::GASKET_SEATING;
        return true;
    }
    if (s.ci >= s.go - 0.001f && s.go > 0.0001f) return true;
    if (!RUN_KERNEL(d)) return true;
    s.moduliHeld = true; // a lookup reads its file and takes far longer than all else of a round
    if (s.error != 0) return true;
    Real pHub = 999999.0f;
    if (s.type == INTEGRAL_WELD_NECK || s.type == REVERSE_WELD_NECK)
        HUB_SMALL_END(s, s.ci, true, d.hubRequired, pHub);

    s.RATIO[OPERATING][BOLTING] = s.RATIO[SEATING][BOLTING] = 999.0f; // bolts do not corrode
    rOp = least(s.RATIO[OPERATING]);
    rSeat = least(s.RATIO[SEATING]);
    const Real rHub = pHub / s.P;
    const Real rJ = s.rigidityOut;
    if (round == 1 && (rOp <= 1.0f || rSeat <= 1.0f || rHub <= 1.0f || rJ > 1.0f)) {
        d.failsAlready = true;
        return true;
    }
    const auto used_up = [](Real ratio) { return truncated(1000.0f * ratio) <= 1001; };
    if (used_up(rOp))
        d.governing = DRIVER_STATE::OPERATION;
    else if (used_up(rSeat))
        d.governing = DRIVER_STATE::GASKET_SEATING;
    else if (used_up(rHub))
        d.governing = DRIVER_STATE::SMALL_END_HUB;
    else if (rJ >= 0.999f && s.rigidity == 1)
        d.governing = DRIVER_STATE::FLANGE_RIGIDITY;
    else
        return false;
    return true;
}

void add_failure_row(DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    const ELEMENT_ROW& source = element_row(s.element);
    if (FAILURE_ROWS < ELEMENT_ROWS) ++FAILURE_ROWS;
    d.failureRow = FAILURE_ROWS - 1;
    FAILURE_ROW row{};
    row.description = source.description;
    row.nominal = s.type == BLIND ? s.t : s.go;
    row.failureCa = d.failureCa;
    row.nominalLessFailure = d.failureCa == NO_VALUE ? NO_VALUE : row.nominal - d.failureCa;
    row.ci = d.ciGiven;
    row.nominalLessCi = row.nominal - d.ciGiven;
    row.first = source.first_inspection;
    row.second = source.second_inspection;
    row.firstLessSecond = row.first - row.second;
    row.value = row.valueAgain = source.value;
    row.kind = 7;
    Text<4> below;
    if (row.first > 0.0f) below = row.nominalLessCi < row.firstLessSecond ? "Yes" : " No";
    for (Int i = 1; i <= 4; ++i)
        row.below[i - 1] = below(i);
    FAILURE_TABLE[d.failureRow] = row;
}

// ---- covers ---------------------------------------------------------------------------------------------

// The stress or the bolts of a cover that are nearest to their limit.
Int least_of_cover(const STRESS_STATE& s) {
    Real least = s.RATIO[OPERATING][TANGENTIAL];
    Int by = BY_OPERATING_STRESS + TANGENTIAL;
    const auto take = [&](Real ratio, Int ratioBy) {
        if (ratio < least) by = ratioBy;
        least = min(least, ratio);
    };
    take(s.RATIO[SEATING][TANGENTIAL], BY_SEATING_STRESS + TANGENTIAL);
    take(s.RATIO[OPERATING][BOLTING], BY_BOLTS);
    take(s.RATIO[SEATING][BOLTING], BY_BOLTS);
    return by;
}

} // namespace

void NEW_AND_COLD_ITERATION(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    const Real kept = s.P;
    s.t = d.tGiven;
    const Real& opT = s.RATIO[OPERATING][TANGENTIAL];
    const Real& opB = s.RATIO[OPERATING][BOLTING];
    const Real& seatT = s.RATIO[SEATING][TANGENTIAL];
    const Real& seatB = s.RATIO[SEATING][BOLTING];
    const auto met = [](Real ratio) { return ratio >= 0.999499977f && ratio <= 1.00010002f; };
    for (Int i = 1; i <= COVER_ROUNDS; ++i) {
        s.P = i < 6 ? min(s.MAWPop, s.MAWPseat) : s.P * min(seatT, opT, opB, seatB);
        if (!RUN_KERNEL(d)) return;
        if (s.error != 0) break;
        *d.args->mapNc = s.P;
        d.mapNcBy = least_of_cover(s);
        if (met(seatT) || met(opT) || met(seatB) || met(opB)) break;
    }
    s.P = kept;
}

void MATING_LOAD_ITERATIONS(DRIVER_STATE& d) {
    REREAD(d);
    const Int gates[] = {IWRITE, IOUT};
    IWRITE = 0;
    IOUT = -1;
    if (mating_pressures(d)) REREAD_WITH_INPUT_REPORT(d);
    IWRITE = gates[0];
    IOUT = gates[1];
}

void FAILURE_CORROSION_LOOP(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    const Real kept[] = {s.ci, s.ct};
    const Int gates[] = {IWRITE, IOUT};
    IWRITE = IOUT = 0;
    s.kind = ANALYSE;
    s.ci = 0.01f;
    const Int rounds = truncated(s.t / 0.001f);
    Real rOp = 0.0f, rSeat = 0.0f;
    bool ended = false;
    for (Int i = 1; !ended && i <= min(rounds, CORROSION_ROUNDS); ++i) {
        ended = corroded_state_ends(d, i, rOp, rSeat);
        if (!ended) s.ci = s.ci + 0.001f;
    }
    s.moduliHeld = false;
    IWRITE = gates[0];
    IOUT = gates[1];
    if (s.stopped) return;
    const bool gaveUp = !ended && rounds > CORROSION_ROUNDS;
    d.failureCa = gaveUp ? NO_VALUE : s.ci;
    add_failure_row(d);
    s.ci = kept[0];
    s.ct = kept[1];
}

void FAILURE_CORROSION_REPORT(const DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    if (!(d.failureCa > 0.001f) || !(s.P > 0.0f) || d.failsAlready || s.standardFlange != 0) return;
    static constexpr std::string_view labels[] = {
        "Note: Couldn't determine a limiting rerate corrosion allowance",
        "Operating                                          ",
        "Gasket Seating                                     ",
        "Small End Hub Thickness (Hoop Stress)              ",
        "Flange Rigidity                                    "};
    if (d.governing != DRIVER_STATE::NONE) {
        BLANK_LINE();
        TEXT_LINE("Internal Failure Corrosion Allowance Results, Governing Case:");
    }
    LinePieces line;
    line.text(labels[d.governing]).text(" = ").bare(as_thickness(d.failureCa), 4);
    line.blanks(1).text(unit_label(Kind::thickness)).write();
}

} // namespace tarvane
