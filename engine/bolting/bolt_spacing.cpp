#include "bolting/bolt_spacing.h"

#include "bolting/bolt_tables.h"
#include "frame/switches.h"
#include "report/lines.h"

namespace tarvane {

Int QUIET_BOLT_AREA = 0;
Int QUIET_BOLT_DISTANCES = 0;

namespace {

constexpr Int SERIES = 8;

constexpr std::string_view BOLTING_HEADINGS[SERIES] = {
    "Bolting Information for TEMA Imperial Thread Series (Non Mandatory):",
    "Bolting Information for UNC Thread Series (Non Mandatory): ",
    "Bolting Information for User Defined Bolts (Non Mandatory): ",
    "Bolting Information for TEMA Metric Thread Series (Non Mandatory): ",
    "Bolting Information for British BS 3643 Metric Thread Series (Non Mandatory): ",
    "Bolting Information for SABS Bolts (Non Mandatory): ",
    "Bolting Information for 3P M30 Metric: ",
    "Bolting Information for User Defined Bolt Data Table: ",
};

constexpr std::string_view RULE =
    "-------------------------------------------------------------------------";
static_assert(RULE.size() == 73);

constexpr Int LABEL_WIDTH = 40;
constexpr Int WIDTH = 10;
constexpr Int DECIMALS = 3;

// Flange types that the checks distinguish.
constexpr Int INTEGRAL_RING = 3;
constexpr Int LOOSE_RING = 5;
constexpr Int BLIND = 7;
constexpr Int REVERSE = 8;

// cF by TEMA, PD 5500 and EN 13445.
void REPORT_TEMA_FACTOR(const BOLT_SPACING_CALL& call, Real cfDen) {
    const Real Deltab = call.Deltab;
    HEADING("Bolt Spacing Correction Factor per TEMA, PD:5500 or EN-13445 [cF]:");
    TEXT_LINE(" = max( sqrt( Deltab /(2 * dB + 6 * e / ( m + 0.5 ) ); 1.0 )");
    NUMBER_LINE(
        " = max( sqrt( @3 /(2 * @3 + 6 * @3/(@3 + 0.5)); 1.0 ) ",
        {as_thickness(Deltab), as_diameter(call.a), as_thickness(call.t - call.ct), call.m});
    NUMBER_LINE(" = max( @4 ; 1.0 ) ", {std::sqrt(Deltab / cfDen)});
    NUMBER_LINE(" = @4", {call.CF});
    TEXT_LINE("where the actual circumferential spacing is [Deltab]:");
    TEXT_LINE(" = C * sin( Pi / n )");
    NUMBER_LINE(" = @3 * sin( @3 / @0 )", {as_diameter(call.C), PI, static_cast<Real>(call.n)});
    NUMBER_LINE(" = @4 ", {as_thickness(Deltab)}, 1, unit_label(Kind::thickness));
}

// Bsmax, Bs and Bsc: Appendix 2, 2-5(d) and 2-6, or Table 4.16.11. The multiplier has 2a + t under
// its root, the largest spacing has the form with m.
void REPORT_ASME_SPACING(const BOLT_SPACING_CALL& call) {
    const Real Deltab = call.Deltab, BsMax = call.BsMax;
    const bool division_2 = call.code == ASME_VIII_2;
    const Real t = call.t - call.ct;

    HEADING(division_2
                ? "ASME Maximum Circumferential Spacing between Bolts, Table 4.16.11 [Bsmax]:"
                : "ASME Maximum Circumferential Spacing between Bolts per App. 2 eq. (3) [Bsmax]:");
    TEXT_LINE(" = 2a + 6t/(m + 0.5)");
    NUMBER_LINE(" = 2 * @3 + 6 * @3/(@2 + 0.5)", {as_diameter(call.a), as_thickness(t), call.m});
    if (Deltab > BsMax) {
        VALUE_LINE(BsMax, Kind::thickness, "Maximum Bolt Spacing Exceeded !", ERROR_STYLE,
                   DECIMALS);
        TEXT_LINE("For vessels in lethal service or when specified by the user/agent, the",
                  NOTE_STYLE);
        TEXT_LINE("maximum bolt spacing shall not exceed the value of [Bsmax]. See ASME",
                  NOTE_STYLE);
        TEXT_LINE("VIII-1 Appendix 2 paragraph 2-5(d) for more information.", NOTE_STYLE);
    } else {
        VALUE_LINE(BsMax, Kind::thickness, {}, PLAIN, DECIMALS);
    }

    HEADING("Actual Circumferential Bolt Spacing [Bs]:");
    TEXT_LINE(" = C * sin( pi / n )");
    NUMBER_LINE(" = @3 * sin( @3 / @0 )", {as_diameter(call.C), PI, static_cast<Real>(call.n)});
    VALUE_LINE(Deltab, Kind::thickness, {}, PLAIN, DECIMALS);

    HEADING(division_2 ? "ASME Moment Multiplier for Bolt Spacing per Table 4.16.11 [Bsc]:"
                       : "ASME Moment Multiplier for Bolt Spacing per App. 2 eq. (7) [Bsc]:");
    TEXT_LINE(" = max( sqrt( Bs/( 2a + t )), 1 )");
    NUMBER_LINE(" = max( sqrt( @3/( 2 * @3 + @3 )), 1 )",
                {as_thickness(Deltab), as_diameter(call.a), as_thickness(t)});
    VALUE_LINE(call.CF, Kind::factor);
}

void REPORT_BOLTING_HEADING(Int series, Int code) {
    if (series < 1 || series > SERIES) series = TEMA_IMPERIAL;
    if (series == TEMA_IMPERIAL && code >= EN_13445)
        HEADING("Bolt Spacing - Reference TEMA Code - For Reference Only");
    else
        HEADING(BOLTING_HEADINGS[series - 1]);
}

// Room for nut and wrench beside the weld of a ring flange. The test sets the bolt circle diameter,
// less half a wrench, against the bore and one weld leg.
void REPORT_NUT_AND_WRENCH(const BOLT_SPACING_CALL& call, const BOLT_ROW& bolt) {
    COLUMN_LINE("Distance Across Corners for Nuts                  ", bolt.nutCorners,
                Kind::diameter);
    COLUMN_LINE("Circular Wrench End Diameter                     a", bolt.wrenchDia,
                Kind::diameter);
    if (!(call.C - bolt.wrenchDia / 2.0f > call.B + call.tw)) {
        BLANK_LINE();
        TEXT_LINE("** WARNING ** Clearance Problems Detected (Nut/Weld)", ERROR_STYLE);
    }
}

Real actual_hub_distance(const BOLT_SPACING_CALL& call) {
    if (call.type == LOOSE_RING) return call.C / 2.0f - (call.B / 2.0f + call.tw);
    if (call.type < BLIND) return call.C / 2.0f - (call.B / 2.0f + max(call.g1, call.go));
    return 0.0f;
}

// Row of the limits table: label, then values in columns 41, 52 and 63.
class LimitsRow {
  public:
    explicit LimitsRow(std::string_view label) { line.padded(label, LABEL_WIDTH); }
    LimitsRow& value(Real shown) {
        separate();
        line.fixed(shown, WIDTH, DECIMALS);
        return *this;
    }
    LimitsRow& area(Real shown, bool exponent) {
        if (!exponent) return value(shown);
        separate();
        line.exponent(shown, WIDTH, DECIMALS);
        return *this;
    }
    LimitsRow& text(std::string_view piece) {
        line.text(piece);
        return *this;
    }
    void write(const Style& style) const { line.write(style); }

  private:
    LinePieces line;
    bool first = true;
    void separate() {
        if (!first) line.blanks(1);
        first = false;
    }
};

constexpr Real LARGEST_FIXED_AREA = 99999.0f;

void AREA_ROW(const BOLT_LIMITS& limits) {
    const Real Am = as_area(limits.Am), Ab = as_area(limits.Ab);
    const bool exponent = Am > LARGEST_FIXED_AREA || Ab > LARGEST_FIXED_AREA;
    LinePieces label;
    label.text("Bolt Area, ").text(left_justified(unit_label(Kind::area)));
    LimitsRow row(label.view());
    row.area(Am, exponent).area(Ab, exponent);
    if (limits.Am > limits.Ab)
        row.text("      Failed!").write(ERROR_STYLE); // columns 68 to 74
    else
        row.write(PLAIN);
}

// Replaces the row of the area.
void TOTAL_AREA_LINE(Real Ab) {
    LinePieces line;
    line.text("Total Area of Bolts                          ").blanks(5);
    if (as_area(Ab) > LARGEST_FIXED_AREA)
        line.exponent(as_area(Ab), WIDTH, DECIMALS);
    else
        line.fixed(as_area(Ab), WIDTH, DECIMALS);
    line.blanks(2).text(unit_label(Kind::area)).write();
    BLANK_LINE();
}

void DISTANCE_ROW(std::string_view label, Real least, Real actual) {
    LimitsRow(label)
        .value(as_diameter(least))
        .value(as_diameter(actual))
        .write(least > actual + 0.001f ? NOTE_STYLE : PLAIN);
}

} // namespace

Real BOLT_CORRECTION_FACTOR(Int form, Real C, Int n, Real a, Real t, Real cTotal, Real m,
                            Real& Deltab, Real& cfDen) {
    Deltab = C * sin(PI / static_cast<Real>(n));
    if (form < 3)
        cfDen = 2.0f * a + (t - cTotal);
    else
        cfDen = 2.0f * a + 6.0f * (t - cTotal) / (m + 0.5f);
    return max(std::sqrt(Deltab / cfDen), 1.0f);
}

void BOLT_LIMITS_TABLE(const BOLT_LIMITS& limits) {
    if (QUIET_BOLT_AREA != 0) TOTAL_AREA_LINE(limits.Ab);

    TEXT_LINE(RULE);
    TEXT_LINE("                                            Minimum    Actual     Maximum");
    TEXT_LINE(RULE);
    if (QUIET_BOLT_AREA == 0) AREA_ROW(limits);
    if (QUIET_BOLT_DISTANCES == 0) {
        if (limits.Rmin > 0.0001f && limits.type != BLIND && limits.type != REVERSE &&
            QUIET_BOLT_AREA == 0)
            DISTANCE_ROW("Radial Distance between Hub and Bolts:", limits.Rmin, limits.Ractual);
        if (limits.Emin > 0.0001f)
            DISTANCE_ROW("Radial Distance between Bolts and Edge:", limits.Emin, limits.Eactual);
        const bool outside =
            limits.Bmin > limits.Deltab + 0.001f || limits.BsMax < limits.Deltab - 0.001f;
        LimitsRow("Circ. Spacing between the Bolts:")
            .value(as_diameter(limits.Bmin))
            .value(as_diameter(limits.Deltab))
            .value(as_diameter(limits.BsMax))
            .write(outside ? NOTE_STYLE : PLAIN);
    }
    TEXT_LINE(RULE);
}

void BOLT_SPACING(BOLT_SPACING_CALL& call) {
    const BOLT_ROW bolt = BOLT_TABLE_ROW(call.a, call.type, call.series, call.areaGiven, call.n);
    call.Ab = bolt.totalArea;
    call.Bmin = bolt.Bmin;
    call.Emin = bolt.Emin;
    call.Rmin = bolt.Rmin;

    const bool correction = call.noCorrection == 0;
    const bool asme = up_to_asme_viii(call.code);
    const bool tema_form = asme && a98_addenda() && correction;
    Real cfDen = 0.0f;
    call.CF = BOLT_CORRECTION_FACTOR(tema_form ? 3 : call.code, call.C, call.n, call.a, call.t,
                                     call.ct, call.m, call.Deltab, cfDen);
    call.BsMax = cfDen;

    if ((!asme || tema_form) && correction) REPORT_TEMA_FACTOR(call, cfDen);
    if (asme && !correction) call.CF = 1.0f;
    if (asme && correction && !tema_form) {
        call.BsMax = 2.0f * call.a + 6.0f * (call.t - call.ct) / (call.m + 0.5f);
        REPORT_ASME_SPACING(call);
    }
    call.Ractual = actual_hub_distance(call);
    call.Eactual = (call.A - 2.0f * call.ce - call.C) / 2.0f;

    REPORT_BOLTING_HEADING(call.series, call.code);
    if (call.type == INTEGRAL_RING || (call.type == LOOSE_RING && call.tw > 0.0f))
        REPORT_NUT_AND_WRENCH(call, bolt);
    BOLT_LIMITS_TABLE({.type = call.type,
                       .Am = call.Am,
                       .Ab = call.Ab,
                       .Rmin = call.Rmin,
                       .Ractual = call.Ractual,
                       .Emin = call.Emin,
                       .Eactual = call.Eactual,
                       .Bmin = call.Bmin,
                       .Deltab = call.Deltab,
                       .BsMax = call.BsMax});
}

} // namespace tarvane
