#include "flange/kernel_rating.h"

#include "flange/blind.h"
#include "flange/rating.h"
#include "flange/results.h"
#include "flange/rigidity.h"
#include "host/services.h"
#include "report/lines.h"

namespace tarvane {

namespace {

void required_thickness_line(FLANGE_STATE& s, const KERNEL_STATE& k) {
    s.tRequired = max(s.tRequired, s.tMin);
    Text<45> label = "Minimum Required Flange Thickness            ";
    if (s.rigidity == 1 && k.search.tRigid > k.search.tStress) label.put(35, "[Rigidity]");
    COLUMN_LINE(label.view(), s.tRequired, Kind::thickness,
                s.tRequired > k.tStart + 0.001f ? WARNING_STYLE : PLAIN);
}

// UG-34(d): span and shape factor Z of a cover.
void cover_span(const FLANGE_STATE& s, Real& span, Real& Zf) {
    Zf = 1.0f;
    span = s.G;
    if (s.dS * s.D != 0.0f && s.D > s.dS + 0.001f) {
        Zf = min(3.4f - 2.4f * s.dS / s.D, 2.5f);
        span = s.dS;
    }
}

void blind_thickness_lines(FLANGE_STATE& s, KERNEL_STATE& k) {
    Real span, Zf;
    cover_span(s, span, Zf);
    if (s.hg > 0.0f) {
        BLIND_CALL operating{.d = span,
                             .Zf = Zf,
                             .P = s.Peq,
                             .S = s.Sfo,
                             .W = s.Wm1,
                             .ca = s.ct,
                             .tGiven = k.tBlindStart};
        BLIND_CALL seating{.d = span,
                           .Zf = Zf,
                           .P = 0.0f,
                           .S = s.Sfa,
                           .W = s.W,
                           .ca = s.ct,
                           .tGiven = k.tBlindStart};
        BLIND_THICKNESS(s, operating);
        BLIND_THICKNESS(s, seating);
        if (operating.tOut > 0.0f) {
            s.tRequired = max(operating.tOut, seating.tOut, s.tMin);
            NOTED.tCover[OPERATING] = operating.tOut;
            NOTED.tCover[SEATING] = seating.tOut;
            COLUMN_LINE("Reqd. Blind Flange Thickness at Center       ", s.tRequired,
                        Kind::thickness);
            const Real edge = max(operating.tEdge, seating.tEdge, s.tMin);
            NOTED.tEdge = edge;
            if (edge > 0.01f && s.code < EN_13445)
                COLUMN_LINE("Reqd. Blind Flange Thickness at Gasket       ", edge, Kind::thickness);
        }
        k.blindSeatingPressure = seating.pOut;
    }
    if (s.channelCover(1) == 'Y') {
        COLUMN_LINE("Min. Required Flange Thickness per TEMA      ", s.tChannelMin,
                    Kind::thickness);
        s.tRequired = max(s.tRequired, s.tChannelMin);
    }
    if (s.hg > 0.0f) {
        BLIND_CALL bare{.d = s.dS * s.D != 0.0f ? s.dS : s.G,
                        .Zf = Zf,
                        .P = s.Peq,
                        .S = s.Sfo,
                        .W = s.Wm1,
                        .ca = 0.0f,
                        .tGiven = k.tBlindStart - s.ct};
        BLIND_THICKNESS(s, bare);
        s.tOut = bare.tOut;
        k.blindPressure = bare.pOut;
    }
}

bool overstressed(const FLANGE_STATE& s, Int places) {
    for (Int row = 0; row < 2; ++row)
        for (Int i = 0; i < places; ++i)
            if (STRESS_EXCEEDS(s, row, i)) return true;
    return false;
}

void overstress_warning(const FLANGE_GIVEN& s) {
    if (s.quietOverstress != 0 || IWRTFL != 1 || IOUT <= 0 || DIALOGS_OFF()) return;
    constexpr std::string_view warning = "Warning: Actual Flange Stress Exceeds Allowable!";
    MESSAGE_BOX(warning, "Flange OverStress Detected");
    TEXT_LINE(warning);
}

void mawp_line(std::string_view label, Real pressure) {
    COLUMN_LINE(label, pressure, Kind::pressure, PLAIN, UNITS.pressure == 1.0f ? 2 : 3);
}
void operating_mawp_line(const RATING_STATE& s) {
    mawp_line("Estimated M.A.W.P. ( Operating )             ", s.MAWPop);
}

void take_fixed_operating(RATING_STATE& s) {
    s.MAWPop = s.MAWPopFixed;
    s.MAWPopBy = s.MAWPopFixedBy;
}
void take_fixed_seating(RATING_STATE& s) {
    s.MAWPseat = s.MAWPseatFixed;
    s.MAWPseatBy = s.MAWPseatFixedBy;
}
void seating_as_operating(RATING_STATE& s) {
    s.MAWPseat = s.MAWPop;
    s.MAWPseatBy = s.MAWPopBy;
}

void mating_load_lines(RATING_STATE& s) {
    if (s.MAWPseatFixed > 0.0f) take_fixed_seating(s);
    if (s.MAWPopFixed <= -1.0f) {
        TEXT_LINE("Note: MAWP Cannot be calculated due to Entered Mating Flange Loads.");
    } else {
        take_fixed_operating(s);
        operating_mawp_line(s);
    }
}

void external_pressure_lines(const FLANGE_STATE& s) {
    if (overstressed(s, PLACES)) {
        overstress_warning(s);
        return;
    }
    LinePieces line;
    line.text("Stress Check: OK for External Pressure       ").blanks(1);
    line.fixed(as_pressure(s.P), 14, 1).blanks(2).text(unit_label(Kind::pressure));
    line.write();
}

void pressure_lines(FLANGE_STATE& s, const KERNEL_STATE& k) {
    if (overstressed(s, REVERSE)) overstress_warning(s); // entries 6 and 7 are not looked at
    if (s.type == BLIND && s.en_or_pd() && k.blindPressure > 0.001f) {
        s.MAWPop = k.blindPressure;
        s.MAWPopBy = BY_OPERATING_STRESS + TANGENTIAL;
        s.MAWPseat = k.blindSeatingPressure;
        s.MAWPseatBy = BY_SEATING_STRESS + TANGENTIAL;
    }
    if (s.MAWPopFixed > 0.0f) take_fixed_operating(s);
    if (s.MAWPseatFixed > 0.0f) take_fixed_seating(s);
    operating_mawp_line(s);
    const bool newAndCold = s.type != BLIND && s.Sfo == s.Sfa && s.ci == 0.0f && s.ct == 0.0f;
    if (s.MAWPseat > 0.001f && newAndCold) {
        if (!(s.MAWPop > 10.0f * s.MAWPseat) && !(s.MAWPseat < s.MAWPop)) seating_as_operating(s);
        mawp_line("Estimated M.A.W.P. ( Gasket Seating )        ", s.MAWPseat);
    }
}

} // namespace

bool STRESS_EXCEEDS(const FLANGE_STATE& s, Int row, Int place) {
    const Real stress = s.STRESS[row][place], allowed = s.ALLOWED[row][place];
    return s.P <= -0.001f ? stress > allowed : stress - allowed > 0.25f;
}

void THICKNESS_LINES(FLANGE_STATE& s, KERNEL_STATE& k) {
    if (s.tRequired > 0.0001f) s.t = s.tRequired;
    IWRITE = 1;
    BLANK_LINE();
    if (s.type == BLIND)
        blind_thickness_lines(s, k);
    else if (!k.kindIsAnalysis)
        required_thickness_line(s, k);
    // The pressure at which the bolts are used up: Ab Sb = H + Hp.
    s.Pbolt = s.Ab * s.Sb / (QUARTER_PI * square(s.G) + 2.0f * s.b * PI * s.G * s.m);
}

void RATE_FLANGE(FLANGE_STATE& s, const KERNEL_STATE& k) {
    if (k.tStart > 0.001f && s.rigidity == 1) {
        RESCALE_FIRST_MOMENTS(s, s.t);
        RIGIDITY_CALL given = RIGIDITY_ARGUMENTS(s, k.firstFactors, k.tStart, s.CF);
        RIGIDITY_INDEX(s, given, RIGIDITY_SILENT);
        s.jSeat = s.J[0];
        s.jOp = s.J[1];
    }
    FLANGE_MAWP(s);
    if (s.MAWPseat <= 0.0001f && !(s.y > 0.0f)) seating_as_operating(s);
    NOTED.rated = true;

    const bool mating = s.matingLoads(1) != 'N' && s.matingLoads(1) != 'n';
    if (mating && s.P > -0.001f)
        mating_load_lines(s);
    else if (s.P <= -0.001f)
        external_pressure_lines(s);
    else
        pressure_lines(s, k);
}

void CLOSE_EVALUATION(FLANGE_STATE& s, const KERNEL_STATE& k) {
    const Real hubLength = s.type == INTEGRAL_RING || s.type == LOOSE_RING ? 0.0f : s.h;
    const Real boreD = s.type == BLIND ? 0.0f : s.B;
    FLANGE_WEIGHT(boreD, s.A, k.tStart, s.g1, PI, s.go, hubLength, s.weightFinished,
                  s.weightForging, s.density);
    if (s.weightFinished > 0.01f && s.weightForging > 0.01f) {
        COLUMN_LINE("Estimated Finished Weight of Flange at given Thk. ", s.weightFinished,
                    Kind::weight);
        COLUMN_LINE("Estimated Unfinished Weight of Forging at given Thk", s.weightForging,
                    Kind::weight);
    }
    if (s.rigidity == 1) {
        RIGIDITY_CALL now = RIGIDITY_ARGUMENTS(s, FACTORS_IN_HAND(s), s.t, s.CF);
        RIGIDITY_INDEX(s, now, RIGIDITY_SILENT);
        s.rigidityOut = now.Jmax;
    }
}

} // namespace tarvane
