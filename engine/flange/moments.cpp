#include "flange/moments.h"

#include "report/lines.h"
#include "report/renderer.h"

namespace tarvane {

namespace {

bool taylor_forge(const FLANGE_STATE& s) { return s.fullFace && s.asme(); }

// Lap joints of PD 5500 and EN 13445: the whole bolt load acts on the gasket's arm.
bool single_moment(const FLANGE_GIVEN& s) { return s.en_or_pd() && s.type == LAP_JOINT; }

// One row of the table: label 20, force 10, arm 10, correction factor 10, moment 10 columns.
void moment_row(std::string_view label, Real force, Real arm, Real factor, Real moment) {
    LinePieces()
        .padded(label, 20)
        .fixed(as_force(force), 10, 2)
        .fixed(as_diameter(arm), 10, 3)
        .fixed(factor, 10, 3)
        .fixed(as_moment(moment), 10, 2)
        .text("|")
        .write();
}

void table_title(std::string_view title) {
    LinePieces line;
    line.text(title).text(unit_label(Kind::moment)).text(")");
    HEADING(line.view());
    BLANK_LINE();
}

void table_header() {
    UNDERLINED_LINE("Loading             "
                    " Force  |"
                    "Distance |"
                    "Bolt Corr |"
                    "Moment  |");
}

void pressure_moments(FLANGE_STATE& s) {
    if (single_moment(s)) {
        s.Mop = s.Wm1 * s.hg;
        moment_row("Ope. Moment,    Mop ", s.Wm1, s.hg, s.CF, s.Mop);
        return;
    }
    s.Md = s.Hd * s.hd * s.CF;
    moment_row("End Pressure,   Md  ", s.Hd, s.hd, s.CF, s.Md);
    s.Mt = s.Ht * s.ht * s.CF;
    moment_row("Face Pressure,  Mt  ", s.Ht, s.ht, s.CF, s.Mt);
}

// Under external pressure the gasket's reaction is the pivot, 2-11.
void external_pressure_moments(FLANGE_STATE& s) {
    s.Md = s.Hd * (s.hd - s.hg) * s.CF;
    moment_row("End Pressure,   Md  ", s.Hd, s.hd - s.hg, s.CF, s.Md);
    s.Mt = s.Ht * (s.ht - s.hg) * s.CF;
    moment_row("Face Pressure,  Mt  ", s.Ht, s.ht - s.hg, s.CF, s.Mt);
}

void gasket_moments(FLANGE_STATE& s) {
    if (taylor_forge(s)) {
        s.Mg = 0.0f;
        moment_row("Gasket Load,    Mg  ", 0.0f, 0.0f, 1.0f, s.Mg);
    } else {
        s.Mg = s.HG * s.hg * s.CF;
        if (s.Peq > 0.0f && !single_moment(s))
            moment_row("Gasket Load,    Mg  ", s.HG, s.hg, s.CF, s.Mg);
    }

    s.Matm = 0.0f;
    if (!(s.fullFace && s.en_or_pd())) {
        s.Matm = s.W * s.hg * s.CF;
        moment_row("Gasket Seating, Matm", s.W, s.hg, s.CF, s.Matm);
    }

    s.Mr = 0.0f;
    if (taylor_forge(s)) { // the reverse moment at the bolts has no correction
        s.Mr = s.HG * s.hgDouble;
        moment_row("Full Face Load, Mr  ", s.HG, s.hgDouble, 1.0f, s.Mr);
    }
}

// Moment of the external loads, 4.16.7 step 6.
void external_load_moment(FLANGE_STATE& s) {
    s.Moe = 0.0f;
    const bool loaded = s.Faxial != 0.0f || s.Mbend != 0.0f;
    if (s.code != ASME_VIII_2 || !NEW_DIV_2_RULES || !loaded) return;

    const Real FA = max(s.Faxial, 0.0f);
    s.Moe = 4.0f * std::abs(s.Mbend) * 12.0f * (s.I / (0.384f * s.Ip + s.I)) *
                (s.hd / (s.C - 2.0f * s.hd)) +
            FA * s.hd;

    LinePieces()
        .padded("Moment Load,    Moe ", 20)
        .blanks(30)
        .fixed(as_moment(s.Moe), 10, 2)
        .text("|")
        .write();
    BLANK_LINE();
    HEADING("Moment Value, eq. 4.16.16, [Moe]:");
    TEXT_LINE("= 4Me[ I/( 0.384 * IP + I ))*( hD /(C-2*hD)) + FA * hD");

    const Real in_report_units = UNITS.moment == 1.0f ? 12.0f : 1.0f;
    const Real Me = s.Mbend * in_report_units * UNITS.moment;
    const Real inertia = fourth(UNITS.diameter);
    // A template holds six values: its last placeholder is printed as it is.
    NUMBER_LINE(
        UNITS.diameter <= 3.0f ? "= 4*@0[@1/(0.384*@1+@1))*(@3/(@1-2*@3)) +"
                               : "= 4*@0[@1/(0.384*@1+@1))*(@1/(@1-2*@1)) +",
        {Me, s.I * inertia, s.Ip * inertia, s.I * inertia, as_diameter(s.hd), as_diameter(s.C)});
    NUMBER_LINE("@0 * @3", {as_force(FA), as_diameter(s.hd)});
}

// Reverse flange with a full face gasket: moments about the bolt circle, balanced by the outer part
// of the gasket.
void reverse_full_face_moment(FLANGE_STATE& s) {
    s.Md = s.Mt = s.Mg = s.Matm = s.Mr = s.Moe = 0.0f;

    s.Mop = s.Hd * s.hd + s.HS * s.hs - s.Ht * s.ht;
    HEADING("Reverse Flange Moment [Mop]:");
    TEXT_LINE(s.code == PD_5500 ? "= Hd*hd + H't*h't - Ht*ht" : "= Hd*hd + Hs*hs - Ht*ht");
    NUMBER_LINE("= @1* @3 + @1* @3 - @1* @3",
                {as_force(s.Hd), as_diameter(s.hd), as_force(s.HS), as_diameter(s.hs),
                 as_force(s.Ht), as_diameter(s.ht)});
    VALUE_LINE(s.Mop, Kind::moment);

    if (s.type != REVERSE_WELD_NECK) return;
    HEADING("Reverse Flange Moment per unit length [M]:");
    TEXT_LINE("= Mop * CF/A");
    NUMBER_LINE("= @1 * 1/@3", {as_moment(s.Mop), as_diameter(s.Bcor)});
    LinePieces unit;
    unit.text(unit_label(Kind::force)).text("/").text(unit_label(Kind::diameter));
    VALUE_LINE_IN(s.Mop / s.Bcor * (UNITS.force / UNITS.diameter), 3, unit.view());
}

// A total in width 10; `wide` allows 15 columns for one that does not fit.
void total_line(std::string_view label, Real moment, bool wide) {
    if (!reporting()) return;
    NumberText number = fixed_number(as_moment(moment), 10, 2);
    if (wide && number.view().find("***") != std::string_view::npos)
        number = fixed_number(as_moment(moment), 15, 2);
    LinePieces().text(label).text(number.view()).blanks(2).text(unit_label(Kind::moment)).write();
}

// Totals, with the multipliers of a split ring, 2-9.
void total_moments(FLANGE_STATE& s) {
    switch (s.nSplits) {
    case 1:
        s.Mop *= 2.0f;
        s.Matm *= 2.0f;
        total_line("Total Moment for Operation (Split Multipier = 2 )  ", s.Mop, false);
        total_line("Total Moment for Seating   (Split Multipier = 2 )  ", s.Matm, false);
        break;
    case 2:
        s.Mop *= 0.75f;
        s.Matm *= 0.75f;
        total_line("Total Moment for Operation (Split Multipier = 0.75)", s.Mop, false);
        total_line("Total Moment for Seating   (Split Multipier = 0.75)", s.Matm, false);
        break;
    default:
        total_line("Total Moment for Operation,      Mop                          ", s.Mop, true);
        total_line("Total Moment for Gasket seating, Matm                         ", s.Matm, true);
    }
}

void moments_and_table(FLANGE_STATE& s) {
    const bool internal = s.Peq > 0.0f;
    TEXT_LINE("||||||||||");
    table_title(internal ? "Summary of Moments for Internal Pressure: ("
                         : "Summary of Moments for External Pressure: (");
    if (internal && s.reverseFullFace()) {
        reverse_full_face_moment(s);
    } else {
        table_header();
        if (internal)
            pressure_moments(s);
        else
            external_pressure_moments(s);
        gasket_moments(s);
        external_load_moment(s);
        if (!internal)
            s.Mop = s.Md + s.Mt + s.Moe;
        else if (!single_moment(s))
            s.Mop = s.Md + s.Mg + s.Mt + s.Moe;
    }
    total_moments(s);
}

} // namespace

void FLANGE_MOMENTS(FLANGE_STATE& s) {
    const Int gate = IWRITE;
    if (s.type == BLIND) IWRITE = 0; // a blind flange shows no moments
    moments_and_table(s);
    IWRITE = gate;
}

} // namespace tarvane
