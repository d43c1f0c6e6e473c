#include "bolting/bolt_spacing.h"

#include "../data_folder.h"
#include "bolting/bolt_tables.h"

#include <numbers>

namespace tarvane {
namespace {

using data_test::Line;

constexpr const char* BOLTS = "[TEMA IMPERIAL]\n"
                              "0 0 0 0 0 0 0 0 0\n"
                              "0.5   0.126 1.25   0.8125 0.625  0.625  1.01 1.5    0\n"
                              "0.625 0.202 1.5    0.9375 0.75   0.75   1.23 1.75   0\n"
                              "0.75  0.302 1.75   1.125  0.8125 0.8125 1.44 2.0625 0\n"
                              "0.875 0.419 2.0625 1.25   0.9375 0.9375 1.66 2.375  0\n"
                              "[END]\n";

constexpr const char* RULE =
    "-------------------------------------------------------------------------";
constexpr const char* HEADS =
    "                                            Minimum    Actual     Maximum";

// Integral flange of the published example E4.16.1 (Division 2, 4.16).
BOLT_SPACING_CALL example() {
    return {.a = 0.75f,
            .series = TEMA_IMPERIAL,
            .n = 44,
            .areaGiven = 0.0f,
            .C = 31.25f,
            .t = 1.4375f,
            .m = 3.75f,
            .tw = 0.0f,
            .type = 1,
            .B = 26.25f,
            .ct = 0.0f,
            .g1 = 0.6875f,
            .go = 0.3125f,
            .A = 32.875f,
            .ce = 0.0f,
            .Am = 5.7226f,
            .noCorrection = 0,
            .code = ASME_VIII_1};
}

class BoltSpacing : public data_test::DataTest {
  protected:
    BoltSpacing() { write_file("system", "BOLTDATA.TXT", BOLTS); }
    ~BoltSpacing() override { QUIET_BOLT_AREA = QUIET_BOLT_DISTANCES = 0; }

    // The report of one call, and the lines of it that hold a text.
    static std::vector<Line> report(BOLT_SPACING_CALL call) {
        BOLT_SPACING(call);
        return reported();
    }
    static bool has(const std::vector<Line>& lines, const std::string& text) {
        return std::any_of(lines.begin(), lines.end(), [&](const Line& line) {
            return line.text.find(text) != std::string::npos;
        });
    }
    static Line row(const std::vector<Line>& lines, const std::string& label) {
        for (const Line& line : lines)
            if (line.text.starts_with(label)) return line;
        return {"no row " + label};
    }
};

const std::string HUB_ROW = "Radial Distance between Hub and Bolts:";
const std::string EDGE_ROW = "Radial Distance between Bolts and Edge:";
const std::string CIRC_ROW = "Circ. Spacing between the Bolts:";

// ---- the factor ----------------------------------------------------------------------------------

// Loose ring of a published cryostat: C 17 in., 8 bolts of 5/16 in., t 0.63 in., m 0. Printed:
// spacing 6.505618350, largest spacing 8.186, factor 2.275880586593.
TEST(BoltCorrectionFactor, PublishedRing) {
    Real Deltab = 0.0f, cfDen = 0.0f;
    EXPECT_NEAR(BOLT_CORRECTION_FACTOR(1, 17.0f, 8, 0.313f, 0.63f, 0.0f, 0.0f, Deltab, cfDen),
                2.275880586593, 1e-6);
    EXPECT_NEAR(Deltab, 6.505618350, 1e-6);
    BOLT_CORRECTION_FACTOR(3, 17.0f, 8, 0.313f, 0.63f, 0.0f, 0.0f, Deltab, cfDen);
    EXPECT_NEAR(cfDen, 8.186, 1e-6);
}

// Loose ring of another published calculation: 16 bolts M20, 40 mm thick, m 3. Printed: largest
// spacing 108.571 mm.
TEST(BoltCorrectionFactor, PublishedLargestSpacing) {
    Real Deltab = 0.0f, cfDen = 0.0f;
    BOLT_CORRECTION_FACTOR(4, 540.0f, 16, 20.0f, 40.0f, 0.0f, 3.0f, Deltab, cfDen);
    EXPECT_NEAR(cfDen, 108.571, 1e-3);
    EXPECT_NEAR(Deltab, 540.0 * std::sin(std::numbers::pi / 16), 1e-4);
}

TEST(BoltCorrectionFactor, FormsAndAllowance) {
    Real Deltab = 0.0f, cfDen = 0.0f;
    for (const Int form : {-4, 0, 1, 2}) {
        BOLT_CORRECTION_FACTOR(form, 40.0f, 8, 1.0f, 2.5f, 0.5f, 3.0f, Deltab, cfDen);
        EXPECT_EQ(cfDen, 4.0f) << form; // 2a + (t - ct)
    }
    for (const Int form : {3, 4}) {
        BOLT_CORRECTION_FACTOR(form, 40.0f, 8, 1.0f, 2.5f, 0.5f, 3.5f, Deltab, cfDen);
        EXPECT_EQ(cfDen, 5.0f) << form; // 2a + 6(t - ct)/(m + 0.5)
    }
}

TEST(BoltCorrectionFactor, NeverBelowOneAndNotANumberStays) {
    Real Deltab = 0.0f, cfDen = 0.0f;
    EXPECT_EQ(BOLT_CORRECTION_FACTOR(1, 10.0f, 40, 1.0f, 2.0f, 0.0f, 3.0f, Deltab, cfDen), 1.0f);
    EXPECT_LT(Deltab, cfDen);
    EXPECT_TRUE(
        std::isnan(BOLT_CORRECTION_FACTOR(1, 10.0f, 8, -3.0f, 2.0f, 0.0f, 3.0f, Deltab, cfDen)));
    EXPECT_TRUE(
        std::isnan(BOLT_CORRECTION_FACTOR(1, 10.0f, 0, 1.0f, 2.0f, 0.0f, 3.0f, Deltab, cfDen)));
}

// ---- results -------------------------------------------------------------------------------------

TEST_F(BoltSpacing, Results) {
    BOLT_SPACING_CALL call = example();
    BOLT_SPACING(call);
    EXPECT_NEAR(call.Ab, 13.288, 1e-5); // as published
    EXPECT_EQ(call.Bmin, 1.75f);
    EXPECT_EQ(call.Rmin, 1.125f);
    EXPECT_EQ(call.Emin, 0.8125f);
    EXPECT_EQ(call.CF, 1.0f);
    EXPECT_EQ(call.a, 0.75f);
}

TEST_F(BoltSpacing, ADiameterThatIsNotListedIsCorrected) {
    BOLT_SPACING_CALL call = example();
    call.a = 0.8f;
    BOLT_SPACING(call);
    EXPECT_EQ(call.a, 0.75f);
    EXPECT_TRUE(has(reported(), "Warning: bolt dia. 0.800 not found in database, using 0.750 in."));
}

// ---- ASME ----------------------------------------------------------------------------------------

TEST_F(BoltSpacing, TheWholeReportOfAnIntegralFlange) {
    const std::vector<Line> expected = {
        {"ASME Maximum Circumferential Spacing between Bolts per App. 2 eq. (3) [Bsmax]:",
         HEADING_STYLE},
        {" = 2a + 6t/(m + 0.5)"},
        {" = 2 * 0.75 + 6 * 1.438/(3.75 + 0.5)"},
        {" = 3.529 in."},
        {"Actual Circumferential Bolt Spacing [Bs]:", HEADING_STYLE},
        {" = C * sin( pi / n )"},
        {" = 31.25 * sin( 3.142/44 )"},
        {" = 2.229 in."},
        {"ASME Moment Multiplier for Bolt Spacing per App. 2 eq. (7) [Bsc]:", HEADING_STYLE},
        {" = max( sqrt( Bs/( 2a + t )), 1 )"},
        {" = max( sqrt( 2.229/( 2 * 0.75 + 1.438 )), 1 )"},
        {" = 1.0000"},
        {"Bolting Information for TEMA Imperial Thread Series (Non Mandatory):", HEADING_STYLE},
        {RULE},
        {HEADS},
        {RULE},
        {"Bolt Area, in\xB2                               5.723     13.288"},
        {"Radial Distance between Hub and Bolts:       1.125      1.812"},
        {"Radial Distance between Bolts and Edge:      0.812      0.812"},
        {"Circ. Spacing between the Bolts:             1.750      2.229      3.529"},
        {RULE}};
    EXPECT_EQ(report(example()), expected);
}

TEST_F(BoltSpacing, Division2NamesItsTable) {
    BOLT_SPACING_CALL call = example();
    call.code = ASME_VIII_2;
    const std::vector<Line> lines = report(call);
    EXPECT_EQ(lines[0],
              (Line{"ASME Maximum Circumferential Spacing between Bolts, Table 4.16.11 [Bsmax]:",
                    HEADING_STYLE}));
    EXPECT_EQ(lines[8], (Line{"ASME Moment Multiplier for Bolt Spacing per Table 4.16.11 [Bsc]:",
                              HEADING_STYLE}));
}

TEST_F(BoltSpacing, TooFewBolts) {
    BOLT_SPACING_CALL call = example();
    call.n = 12; // spacing 8.088 in.
    BOLT_SPACING(call);
    EXPECT_NEAR(call.CF, std::sqrt(31.25 * std::sin(std::numbers::pi / 12) / 2.9375), 1e-6);
    const std::vector<Line> lines = reported();
    EXPECT_EQ(lines[3], (Line{" = 3.529 in.  Maximum Bolt Spacing Exceeded !", ERROR_STYLE}));
    EXPECT_EQ(lines[4],
              (Line{"For vessels in lethal service or when specified by the user/agent, the",
                    NOTE_STYLE}));
    EXPECT_EQ(
        lines[5],
        (Line{"maximum bolt spacing shall not exceed the value of [Bsmax]. See ASME", NOTE_STYLE}));
    EXPECT_EQ(lines[6],
              (Line{"VIII-1 Appendix 2 paragraph 2-5(d) for more information.", NOTE_STYLE}));
    EXPECT_EQ(row(lines, CIRC_ROW),
              (Line{"Circ. Spacing between the Bolts:             1.750      8.088      3.529",
                    NOTE_STYLE}));
    EXPECT_TRUE(has(lines, " = 1.6593"));
}

TEST_F(BoltSpacing, JustTooFewBolts) {
    BOLT_SPACING_CALL call = example();
    call.n = 28; // 3.499 in. against 3.529
    EXPECT_FALSE(has(report(call), "Exceeded"));
    call.n = 27; // 3.628 in.
    EXPECT_TRUE(has(report(call), "Exceeded"));
}

TEST_F(BoltSpacing, CorrectionTurnedOff) {
    BOLT_SPACING_CALL call = example();
    call.n = 12;
    for (const Int off : {1, 2, -1}) {
        call.noCorrection = off;
        BOLT_SPACING(call);
        EXPECT_EQ(call.CF, 1.0f);
        const std::vector<Line> lines = reported();
        EXPECT_FALSE(has(lines, "ASME"));
        EXPECT_FALSE(has(lines, "[cF]"));
        // The largest spacing stays that of the factor: 2a + t - ct = 2.938.
        EXPECT_EQ(row(lines, CIRC_ROW).text,
                  "Circ. Spacing between the Bolts:             1.750      8.088      2.938");
    }
}

TEST_F(BoltSpacing, TheAllowanceIsTakenOffTheThickness) {
    BOLT_SPACING_CALL call = example();
    call.ct = 0.4375f;
    const std::vector<Line> lines = report(call);
    EXPECT_EQ(lines[2].text, " = 2 * 0.75 + 6 * 1.0/(3.75 + 0.5)");
    EXPECT_EQ(lines[3].text, " = 2.912 in.");
}

// ---- TEMA, PD 5500, EN 13445 ---------------------------------------------------------------------

TEST_F(BoltSpacing, TheFactorOfTheEuropeanCodes) {
    BOLT_SPACING_CALL call = example();
    call.code = EN_13445;
    call.n = 12;
    BOLT_SPACING(call);
    const double Deltab = 31.25 * std::sin(std::numbers::pi / 12),
                 largest = 1.5 + 6 * 1.4375 / 4.25;
    EXPECT_NEAR(call.CF, std::sqrt(Deltab / largest), 1e-6);
    std::vector<Line> lines = reported();
    lines.resize(11);
    EXPECT_EQ(lines, (std::vector<Line>{
                         {"Bolt Spacing Correction Factor per TEMA, PD:5500 or EN-13445 [cF]:",
                          HEADING_STYLE},
                         {" = max( sqrt( Deltab /(2 * dB + 6 * e / ( m + 0.5 ) ); 1.0 )"},
                         {" = max( sqrt( 8.088/(2 * 0.75 + 6 * 1.438/(3.75 + 0.5)); 1.0 )"},
                         {" = max( 1.5138 ; 1.0 )"},
                         {" = 1.5138"},
                         {"where the actual circumferential spacing is [Deltab]:"},
                         {" = C * sin( Pi / n )"},
                         {" = 31.25 * sin( 3.142/12 )"},
                         {" = 8.0881 in."},
                         {"Bolt Spacing - Reference TEMA Code - For Reference Only", HEADING_STYLE},
                         {RULE}}));
}

TEST_F(BoltSpacing, TheEuropeanFactorInTheUnitsOfItsValuesAndTheCorrodedThickness) {
    UNITS.thickness = 10.0f;
    UNITS.thickness_label = "th";
    UNITS.diameter = 100.0f;
    UNITS.diameter_label = "di";
    BOLT_SPACING_CALL call = example();
    call.code = EN_13445;
    call.n = 12;
    call.ct = 0.4375f;
    const std::vector<Line> lines = report(call);
    // Deltab 31.25 sin 15 = 8.0881, a 0.75, t - ct 1.0; root of 8.0881 / 2.9118
    EXPECT_EQ(lines[2].text, " = max( sqrt( 80.881/(2 * 75.0 + 6 * 10.0/(3.75 + 0.5)); 1.0 )");
    EXPECT_EQ(lines[3].text, " = max( 1.6667 ; 1.0 )");
    EXPECT_EQ(lines[7].text, " = 3125.0 * sin( 3.142/12 )");
    EXPECT_EQ(lines[8].text, " = 80.881 th");
}

TEST_F(BoltSpacing, CorrectionTurnedOffUnderTheEuropeanCodesOnlyDropsTheLines) {
    BOLT_SPACING_CALL call = example();
    call.code = PD_5500;
    call.n = 12;
    call.noCorrection = 1;
    BOLT_SPACING(call);
    EXPECT_NEAR(call.CF, 1.5138, 1e-4);
    const std::vector<Line> lines = reported();
    EXPECT_FALSE(has(lines, "[cF]"));
    EXPECT_FALSE(has(lines, "ASME"));
    EXPECT_EQ(lines[0].text,
              "Bolting Information for TEMA Imperial Thread Series (Non Mandatory):");
}

TEST_F(BoltSpacing, TheOlderAddendaTakeTheTemaForm) {
    CODE_A98_ADDENDA = 1;
    for (const Int code : {ASME_VIII_1, ASME_VIII_2}) {
        BOLT_SPACING_CALL call = example();
        call.code = code;
        call.n = 12;
        BOLT_SPACING(call);
        EXPECT_NEAR(call.CF, 1.5138, 1e-4);
        const std::vector<Line> lines = reported();
        EXPECT_TRUE(has(lines, "[cF]"));
        EXPECT_FALSE(has(lines, "ASME"));
        EXPECT_EQ(row(lines, CIRC_ROW).text,
                  "Circ. Spacing between the Bolts:             1.750      8.088      3.529");
    }
}

TEST_F(BoltSpacing, TheOlderAddendaWithTheCorrectionOff) {
    CODE_A98_ADDENDA = 1;
    BOLT_SPACING_CALL call = example();
    call.n = 12;
    call.noCorrection = 1;
    BOLT_SPACING(call);
    EXPECT_EQ(call.CF, 1.0f);
    const std::vector<Line> lines = reported();
    EXPECT_FALSE(has(lines, "[cF]"));
    EXPECT_FALSE(has(lines, "ASME"));
    EXPECT_TRUE(has(lines, "8.088      2.938"));
}

TEST_F(BoltSpacing, AFactorOfOneHasItsZerosCut) {
    BOLT_SPACING_CALL call = example();
    call.code = PD_5500;
    const std::vector<Line> lines = report(call);
    EXPECT_EQ(lines[3].text, " = max( 0.7948 ; 1.0 )");
    EXPECT_EQ(lines[4].text, " = 1.0");
}

// ---- heading of the bolts ------------------------------------------------------------------------

TEST_F(BoltSpacing, HeadingsOfTheSeries) {
    const std::pair<Int, const char*> headings[] = {
        {0, "Bolting Information for TEMA Imperial Thread Series (Non Mandatory):"},
        {1, "Bolting Information for TEMA Imperial Thread Series (Non Mandatory):"},
        {2, "Bolting Information for UNC Thread Series (Non Mandatory):"},
        {3, "Bolting Information for User Defined Bolts (Non Mandatory):"},
        {4, "Bolting Information for TEMA Metric Thread Series (Non Mandatory):"},
        {5, "Bolting Information for British BS 3643 Metric Thread Series (Non Mandatory):"},
        {6, "Bolting Information for SABS Bolts (Non Mandatory):"},
        {7, "Bolting Information for 3P M30 Metric:"},
        {8, "Bolting Information for User Defined Bolt Data Table:"},
        {9, "Bolting Information for TEMA Imperial Thread Series (Non Mandatory):"}};
    for (const auto& [series, heading] : headings) {
        BOLT_SPACING_CALL call = example();
        call.series = series;
        call.noCorrection = 1;
        EXPECT_EQ(report(call)[0], (Line{heading, HEADING_STYLE})) << series;
        call.code = EN_13445;
        const bool reference = series < 2 || series > 8;
        EXPECT_EQ(report(call)[0].text,
                  reference ? "Bolt Spacing - Reference TEMA Code - For Reference Only" : heading);
    }
}

// ---- nut and wrench ------------------------------------------------------------------------------

TEST_F(BoltSpacing, NutAndWrenchOfARingFlange) {
    BOLT_SPACING_CALL call = example();
    call.type = 3;
    call.tw = 0.25f;
    const std::vector<Line> lines = report(call);
    EXPECT_EQ(lines[13].text, "Distance Across Corners for Nuts                       1.440  in.");
    EXPECT_EQ(lines[14].text, "Circular Wrench End Diameter                     a     2.062  in.");
    EXPECT_EQ(lines[15].text, RULE);
    EXPECT_EQ(row(lines, HUB_ROW).text,
              "Radial Distance between Hub and Bolts:       0.812      1.812");
}

TEST_F(BoltSpacing, NutAndWrenchOfALooseRingOnlyWithAWeld) {
    BOLT_SPACING_CALL call = example();
    call.type = 5;
    EXPECT_FALSE(has(report(call), "Distance Across Corners"));
    call.tw = 0.25f;
    EXPECT_TRUE(has(report(call), "Distance Across Corners"));
    call.tw = 0.001f;
    EXPECT_TRUE(has(report(call), "Distance Across Corners"));
    for (const Int type : {1, 2, 4, 6, 7, 8}) {
        call.type = type;
        EXPECT_FALSE(has(report(call), "Distance Across Corners")) << type;
    }
}

TEST_F(BoltSpacing, ClearanceOfTheWrench) {
    BOLT_SPACING_CALL call = example();
    call.type = 3;
    call.B = 30.0f;
    call.C = 31.25f; // less half of 2.0625: 30.21875
    call.tw = 0.21875f;
    std::vector<Line> lines = report(call);
    ASSERT_EQ(lines[16].text, "** WARNING ** Clearance Problems Detected (Nut/Weld)"); // not above
    EXPECT_EQ(lines[16], (Line{lines[16].text, ERROR_STYLE}));
    EXPECT_EQ(lines[15], (Line{""}));
    call.tw = 0.21f;
    EXPECT_FALSE(has(report(call), "Clearance"));
}

// ---- the table of limits -------------------------------------------------------------------------

BOLT_LIMITS limits() {
    return {.type = 1,
            .Am = 5.0f,
            .Ab = 13.0f,
            .Rmin = 1.125f,
            .Ractual = 1.125f,
            .Emin = 0.8125f,
            .Eactual = 0.8125f,
            .Bmin = 1.75f,
            .Deltab = 1.75f,
            .BsMax = 1.75f};
}

TEST_F(BoltSpacing, ActualDistanceOfTheTypes) {
    BOLT_SPACING_CALL call = example();
    call.tw = 0.5f;
    const auto actual = [&](Int type) {
        call.type = type;
        return row(report(call), HUB_ROW).text.substr(51);
    };
    EXPECT_EQ(actual(1), "     1.812");
    EXPECT_EQ(actual(3), "     1.812"); // the hub form, the weld leg does not count
    EXPECT_EQ(actual(5), "     2.000"); // 31.25/2 - (26.25/2 + 0.5)
    call.go = 0.9375f;                  // the larger of the two hub thicknesses
    EXPECT_EQ(actual(4), "     1.562");
    EXPECT_EQ(actual(6), "     1.562");
}

TEST_F(BoltSpacing, TheExternalAllowanceComesOffTheEdgeOnBothSides) {
    BOLT_SPACING_CALL call = example();
    call.ce = 0.125f;
    EXPECT_EQ(row(report(call), EDGE_ROW),
              (Line{"Radial Distance between Bolts and Edge:      0.812      0.688", NOTE_STYLE}));
}

TEST_F(BoltSpacing, ACoverAndAReverseFlangeHaveNoHubRow) {
    BOLT_SPACING_CALL call = example();
    for (const Int type : {7, 8}) {
        call.type = type;
        const std::vector<Line> lines = report(call);
        EXPECT_FALSE(has(lines, HUB_ROW)) << type;
        EXPECT_TRUE(has(lines, EDGE_ROW)) << type;
    }
}

TEST_F(BoltSpacing, ATooSmallBoltAreaFails) {
    BOLT_SPACING_CALL call = example();
    call.Am = 13.3f;
    EXPECT_EQ(row(report(call), "Bolt Area"),
              (Line{"Bolt Area, in\xB2                              13.300     13.288      Failed!",
                    ERROR_STYLE}));
    EXPECT_EQ(row(report(call), "Bolt Area").text.substr(67), "Failed!"); // columns 68 to 74
    call.Am = 0.302f * 44.0f;                                             // exactly enough
    EXPECT_EQ(row(report(call), "Bolt Area"),
              (Line{"Bolt Area, in\xB2                              13.288     13.288"}));
}

TEST_F(BoltSpacing, AreasAbove99999AreInExponentFormBothOfThem) {
    BOLT_LIMITS at = limits();
    at.Am = at.Ab = 99999.0f;
    BOLT_LIMITS_TABLE(at);
    EXPECT_EQ(row(reported(), "Bolt Area").text,
              "Bolt Area, in\xB2                           99999.000  99999.000");
    UNITS.area = 1000.0f; // the report's units count
    UNITS.area_label = "mm\xB2";
    at = limits();
    at.Am = 123.0f;
    BOLT_LIMITS_TABLE(at);
    EXPECT_EQ(row(reported(), "Bolt Area").text,
              "Bolt Area, mm\xB2                           0.123E+06  0.130E+05      Failed!");
    at.Am = 5.0f;
    at.Ab = 250.0f;
    BOLT_LIMITS_TABLE(at);
    EXPECT_EQ(row(reported(), "Bolt Area").text,
              "Bolt Area, mm\xB2                           0.500E+04  0.250E+06");
}

TEST_F(BoltSpacing, ExactlyOnTheLimitMarksNothing) {
    BOLT_LIMITS_TABLE(limits());
    for (const Line& line : reported())
        EXPECT_EQ(line, Line{line.text});
}

TEST_F(BoltSpacing, OneThousandthIsAllowedOnEverySide) {
    const auto marked = [](const BOLT_LIMITS& at, const std::string& label) {
        BOLT_LIMITS_TABLE(at);
        const Line line = row(reported(), label);
        EXPECT_TRUE(line == Line{line.text} || line == (Line{line.text, NOTE_STYLE}));
        return line == (Line{line.text, NOTE_STYLE});
    };
    BOLT_LIMITS at = limits();
    at.Ractual = 1.1245f;
    EXPECT_FALSE(marked(at, HUB_ROW));
    at.Ractual = 1.1235f;
    EXPECT_TRUE(marked(at, HUB_ROW));
    at.Eactual = 0.812f;
    EXPECT_FALSE(marked(at, EDGE_ROW));
    at.Eactual = 0.811f;
    EXPECT_TRUE(marked(at, EDGE_ROW));
    at.Deltab = 1.7495f;
    EXPECT_FALSE(marked(at, CIRC_ROW));
    at.Deltab = 1.7485f;
    EXPECT_TRUE(marked(at, CIRC_ROW));
    at.Deltab = 1.7505f;
    EXPECT_FALSE(marked(at, CIRC_ROW));
    at.Deltab = 1.7515f;
    EXPECT_TRUE(marked(at, CIRC_ROW));

    // The thousandth itself is allowed, the next number is not.
    at = limits();
    at.Rmin = at.Ractual + 0.001f;
    at.Emin = at.Eactual + 0.001f;
    at.Bmin = at.Deltab + 0.001f;
    at.BsMax = at.Deltab - 0.001f;
    EXPECT_FALSE(marked(at, HUB_ROW));
    EXPECT_FALSE(marked(at, EDGE_ROW));
    EXPECT_FALSE(marked(at, CIRC_ROW));
    at.Rmin = std::nextafter(at.Rmin, 2.0f);
    at.Emin = std::nextafter(at.Emin, 2.0f);
    at.Bmin = std::nextafter(at.Bmin, 2.0f);
    EXPECT_TRUE(marked(at, HUB_ROW));
    EXPECT_TRUE(marked(at, EDGE_ROW));
    EXPECT_TRUE(marked(at, CIRC_ROW));
    at.Bmin = 1.0f;
    EXPECT_FALSE(marked(at, CIRC_ROW));
    at.BsMax = std::nextafter(at.BsMax, 1.0f);
    EXPECT_TRUE(marked(at, CIRC_ROW));
}

TEST_F(BoltSpacing, RowsWithoutAMinimumAreLeftOut) {
    BOLT_LIMITS at = limits();
    at.Rmin = 0.0001f;
    at.Emin = 0.0001f;
    at.Bmin = 0.0f;
    BOLT_LIMITS_TABLE(at);
    std::vector<Line> lines = reported();
    EXPECT_FALSE(has(lines, HUB_ROW));
    EXPECT_FALSE(has(lines, EDGE_ROW));
    EXPECT_TRUE(has(lines, CIRC_ROW));
    at.Rmin = at.Emin = std::nextafter(0.0001f, 1.0f);
    BOLT_LIMITS_TABLE(at);
    lines = reported();
    EXPECT_TRUE(has(lines, HUB_ROW));
    EXPECT_TRUE(has(lines, EDGE_ROW));
}

TEST_F(BoltSpacing, AnEmptyTableLeavesTheSpacingRow) {
    remove_file("system", "BOLTDATA.TXT");
    BOLT_SPACING_CALL call = example();
    BOLT_SPACING(call);
    EXPECT_EQ(call.Ab, 0.0f);
    EXPECT_EQ(call.a, 0.75f);
    const std::vector<Line> lines = reported();
    EXPECT_EQ(row(lines, "Bolt Area").text,
              "Bolt Area, in\xB2                               5.723      0.000      Failed!");
    EXPECT_FALSE(has(lines, HUB_ROW));
    EXPECT_FALSE(has(lines, EDGE_ROW));
    EXPECT_EQ(row(lines, CIRC_ROW).text,
              "Circ. Spacing between the Bolts:             0.000      2.229      3.529");
}

TEST_F(BoltSpacing, TheFirstQuietSwitchTurnsTheAreaRowIntoALine) {
    QUIET_BOLT_AREA = 1;
    BOLT_LIMITS_TABLE(limits());
    std::vector<Line> lines = reported();
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[0].text,
              "Total Area of Bolts                                   13.000  in\xB2");
    EXPECT_EQ(lines[1].text, "");
    EXPECT_EQ(lines[2].text, RULE);
    EXPECT_EQ(lines[5].text.substr(0, 39), EDGE_ROW); // neither area nor hub row
    BOLT_LIMITS at = limits();
    at.Ab = 99999.0f;
    BOLT_LIMITS_TABLE(at);
    EXPECT_EQ(reported()[0].text,
              "Total Area of Bolts                                99999.000  in\xB2");
    at.Ab = 100000.0f;
    BOLT_LIMITS_TABLE(at);
    EXPECT_EQ(reported()[0].text,
              "Total Area of Bolts                                0.100E+06  in\xB2");
}

TEST_F(BoltSpacing, TheSecondQuietSwitchLeavesTheDistancesOut) {
    QUIET_BOLT_DISTANCES = 1;
    BOLT_LIMITS_TABLE(limits());
    const std::vector<Line> lines = reported();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_TRUE(lines[3].text.starts_with("Bolt Area"));
    EXPECT_EQ(lines[4].text, RULE);
}

// ---- units ---------------------------------------------------------------------------------------

TEST_F(BoltSpacing, LengthsGoThroughTheFactorOfTheirKind) {
    UNITS.thickness = 10.0f;
    UNITS.thickness_label = "th";
    UNITS.diameter = 100.0f;
    UNITS.diameter_label = "di";
    const std::vector<Line> lines = report(example());
    EXPECT_EQ(lines[2].text, " = 2 * 75.0 + 6 * 14.375/(3.75 + 0.5)");
    EXPECT_EQ(lines[3].text, " = 35.294 th");
    EXPECT_EQ(lines[6].text, " = 3125.0 * sin( 3.142/44 )");
    EXPECT_EQ(lines[7].text, " = 22.293 th");
    EXPECT_EQ(lines[10].text, " = max( sqrt( 22.293/( 2 * 75.0 + 14.375 )), 1 )");
    EXPECT_EQ(row(lines, HUB_ROW).text,
              "Radial Distance between Hub and Bolts:     112.500    181.250");
    EXPECT_EQ(row(lines, CIRC_ROW).text,
              "Circ. Spacing between the Bolts:           175.000    222.935    352.941");
    BOLT_SPACING_CALL few = example();
    few.n = 12;
    EXPECT_EQ(report(few)[3].text, " = 35.294 th  Maximum Bolt Spacing Exceeded !");
}

TEST_F(BoltSpacing, ASilentPassCalculatesAndWritesNothing) {
    IWRITE = 0;
    BOLT_SPACING_CALL call = example();
    BOLT_SPACING(call);
    EXPECT_NEAR(call.Ab, 13.288, 1e-5);
    IWRITE = 1;
    EXPECT_TRUE(reported().empty());
}

} // namespace
} // namespace tarvane
