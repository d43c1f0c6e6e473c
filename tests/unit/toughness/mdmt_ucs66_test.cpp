// MDMT_ELEMENT, curves A to D of Division 1: limits, ratio, reductions, credit, UG-20(f), UCS-68(b), and
// the lines of the report.
#include "mdmt_fixture.h"

#include "toughness/mdmt_stages.h"

namespace tarvane {
namespace {

using toughness_test::element_of;
using toughness_test::Line;
using toughness_test::metric_report;

class MdmtUcs66 : public toughness_test::ToughnessTest {
  protected:
    MDMT_CALL a;

    // The element as calculated; its lines stay in the report.
    MDMT_CALL& run(const MDMT_CALL& call) {
        a = call;
        MDMT_ELEMENT(a);
        return a;
    }
    MDMT_CALL& run(Int Curve, Real Tg, Real Tr = -1.0f) { return run(element_of(Curve, Tg, Tr)); }

    static void tables_on() { G_TOUGHNESS.CurveTables = 1; }
};

// ---- temperature from the curve ------------------------------------------------------------------

TEST_F(MdmtUcs66, EachCurveEndsAtItsLowestTemperature) {
    EXPECT_EQ(run(CURVE_A, 0.3f).Tmin, 18.0f);
    EXPECT_EQ(run(CURVE_B, 0.3f).Tmin, -20.0f);
    EXPECT_EQ(run(CURVE_C, 0.3f).Tmin, -55.0f);
    EXPECT_EQ(run(CURVE_D, 0.3f).Tmin, -55.0f);
    // Above its lowest temperature a curve is the polynomial.
    for (Int Curve = CURVE_A; Curve <= CURVE_D; ++Curve)
        EXPECT_EQ(run(Curve, 2.0f).Tmin, UCS66_POLYNOMIAL(Curve, 2.0f));
}

TEST_F(MdmtUcs66, ThinPartsOfCurvesCAndDKeepTheirLowestTemperature) {
    tables_on(); // the rows above rise at once
    EXPECT_EQ(run(CURVE_D, 0.5625f).Tmin, -55.0f);
    EXPECT_NEAR(run(CURVE_D, 0.563f).Tmin, -50.98f, 0.01f);
    EXPECT_EQ(run(CURVE_C, 0.375f).Tmin, -55.0f);
    EXPECT_NEAR(run(CURVE_C, 0.376f).Tmin, -54.76f, 0.01f);
    G_TOUGHNESS.CurveTables = 0;
    EXPECT_EQ(run(CURVE_D, 0.5625f).Tmin, -55.0f);
    EXPECT_EQ(run(CURVE_C, 0.375f).Tmin, -55.0f);
    EXPECT_EQ(run(CURVE_C, 0.376f).Tmin, UCS66_POLYNOMIAL(CURVE_C, 0.376f));
}

TEST_F(MdmtUcs66, TableInPlaceOfThePolynomial) {
    tables_on();
    EXPECT_EQ(run(CURVE_B, 1.0f).Tmin, 31.0f);
    EXPECT_EQ(run(CURVE_A, 0.96875f).Tmin, 66.5f);
}

TEST_F(MdmtUcs66, OutsideTheTableOnlyTheLimitsAct) {
    tables_on();
    EXPECT_EQ(run(CURVE_A, 0.2f).Tmin, 18.0f);
    EXPECT_EQ(run(CURVE_B, 0.2f).Tmin, 1.0101f);
    EXPECT_EQ(run(CURVE_C, 0.2f).Tmin, -55.0f); // set by the thin part, not by the table
    MDMT_CALL thick = element_of(CURVE_C, 7.0f);
    thick.c = 4.0f;
    EXPECT_EQ(run(thick).Tmin, 1.0101f);
}

// ---- limit of thickness --------------------------------------------------------------------------

TEST_F(MdmtUcs66, BeyondFourInchesThereIsNoTemperature) {
    run(CURVE_B, 4.0f);
    EXPECT_NE(a.Tmin, 1.0101f);
    reported();
    MDMT_CALL thick = element_of(CURVE_B, 4.2f);
    thick.c = 0.125f;
    thick.Cext = 0.05f;
    thick.Reduction = 12.0f;
    thick.Ratio = 0.5f;
    run(thick);
    EXPECT_EQ(a.Tmin, 1.0101f);
    EXPECT_EQ(a.Mdmt, 1.0101f);
    EXPECT_EQ(a.Tug20, 1.0101f);
    EXPECT_EQ(a.Ratio, -1.0f);
    EXPECT_EQ(a.Reduction, 12.0f) << "as it came";
    const Style warning = WARNING_STYLE;
    EXPECT_EQ(reported(),
              (std::vector<Line>{
                  {"Warning:", warning},
                  {"The minimum metal temperature could not be computed because the", warning},
                  {"governing thickness for this component was greater than 4.0000 in..", warning},
                  {"This component must be impact tested.", warning},
              }));
    thick.Cext = 0.075f; // net 4.0 in
    EXPECT_NE(run(thick).Tmin, 1.0101f);
}

TEST_F(MdmtUcs66, MetricLimitOfThickness) {
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS();
    metric_report();
    EXPECT_NE(run(CURVE_B, 3.937f).Tmin, 1.0101f);
    reported();
    EXPECT_EQ(run(CURVE_B, 3.94f).Tmin, 1.0101f);
    EXPECT_EQ(reported()[2].text,
              "governing thickness for this component was greater than 100.0000 mm.");
}

TEST_F(MdmtUcs66, CurvesFiveAndSixKnowNoLimitOfThickness) {
    material(1);
    run(IMPACT_TESTED_CURVE, 8.0f);
    EXPECT_EQ(reported().back().text,
              "Note: This Element/Detail was specified as being Impact Tested.");
    run(EXEMPT_CURVE, 8.0f);
    EXPECT_EQ(a.Tmin, 1.0101f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(MdmtUcs66, OtherCurveNumbersHaveNoPath) {
    for (const Int Curve : {0, -1, 7, INT32_MIN, INT32_MAX}) {
        run(Curve, 1.0f);
        EXPECT_EQ(a.Tmin, 1.0101f) << Curve;
        EXPECT_EQ(a.Mdmt, 1.0101f) << Curve;
        EXPECT_EQ(a.Ratio, -1.0f) << Curve;
        EXPECT_TRUE(reported().empty()) << Curve;
    }
}

// ---- ratio and reduction -------------------------------------------------------------------------

TEST_F(MdmtUcs66, ThicknessRatioOfTheNetThickness) {
    MDMT_CALL part = element_of(CURVE_B, 1.125f, 0.8119f);
    part.c = 0.1f;
    part.Cext = 0.025f;
    part.Estar = 0.9f;
    run(part);
    EXPECT_EQ(a.Ratio, 0.8119f * 0.9f / (1.125f - 0.1f - 0.025f));
    EXPECT_EQ(a.EstarUsed, 0.9f);
    part.Estar = 0.5f;
    run(part);
    EXPECT_EQ(a.EstarUsed, 0.8f);
    EXPECT_EQ(a.Ratio, 0.8119f * 0.8f / (1.125f - 0.1f - 0.025f));
    part.Tr = 3.0f;
    EXPECT_EQ(run(part).Ratio, 1.0f);
    EXPECT_EQ(a.Reduction, 0.0f);
    part.Tr = 0.8119f;
    part.TgSr = 2.0f; // the ratio has a thickness of its own
    EXPECT_EQ(run(part).Ratio, 0.8119f * 0.8f / (2.0f - 0.1f - 0.025f));
    part.TgSr = 0.001f;
    EXPECT_EQ(run(part).Ratio, 0.8119f * 0.8f / (1.125f - 0.1f - 0.025f));
}

TEST_F(MdmtUcs66, RequiredThicknessUpToZeroIsTheRatioItself) {
    run(CURVE_B, 1.0f, -0.35f);
    EXPECT_EQ(a.Ratio, 0.35f);
    EXPECT_EQ(reported()[0].text,
              "Stress Ratio = 0.35, Temperature Reduction per Fig. UCS 66.1 = 140");
    run(CURVE_B, 1.0f, -1.5f); // not limited
    EXPECT_EQ(a.Ratio, 1.5f);
    EXPECT_EQ(a.Reduction, 0.0f);
    run(CURVE_B, 1.0f, 0.0f);
    EXPECT_EQ(a.Ratio, 0.0f);
    EXPECT_EQ(a.Reduction, 140.0f);
}

// Fig. UCS-66.1 by its three parts in both editions, boundaries from both sides.
TEST_F(MdmtUcs66, ReductionOfTheFigure) {
    struct {
        Real ratio;
        double present, older;
    } const rows[] = {
        {1.0f, 0.0, 0.0},
        {0.8f, 20.0, 20.0},
        {0.601f, 39.9, 39.9},
        {0.6f, 14.61 * std::pow(0.6, -1.997), 10.937 * std::pow(0.6, -2.503)},
        {0.5f, 14.61 * std::pow(0.5, -1.997), 10.937 * std::pow(0.5, -2.503)},
        {0.4001f, 14.61 * std::pow(0.4001, -1.997), 10.937 * std::pow(0.4001, -2.503)},
        {0.4f, 14.61 * std::pow(0.4, -1.997), 110.0},
        {0.381f, 14.61 * std::pow(0.381, -1.997), 110.0},
        {0.38f, 606.67 - 1333.3 * 0.38, 110.0},
        {0.36f, 606.67 - 1333.3 * 0.36, 110.0},
        {0.351f, 606.67 - 1333.3 * 0.351, 110.0},
        {0.35f, 140.0, 110.0},
        {0.1f, 140.0, 110.0},
        {1.2f, 0.0, 0.0},
    };
    for (const auto& row : rows) {
        SETUP[57].real = 0.0f;
        EXPECT_NEAR(run(CURVE_B, 2.0f, -row.ratio).Reduction, row.present, 2.0e-4) << row.ratio;
        SETUP[57].real = 1.0f;
        EXPECT_NEAR(run(CURVE_B, 2.0f, -row.ratio).Reduction, row.older, 2.0e-4) << row.ratio;
    }
    EXPECT_EQ(FIG_UCS_66_1(NAN, 0), 0.0f);
}

TEST_F(MdmtUcs66, EditionIsTheTruncatedElement58) {
    struct {
        Real element;
        Int edition;
    } const rows[] = {{0.0f, 0}, {0.99f, 0}, {1.0f, 1}, {1.9f, 1}, {2.0f, 0}, {-1.0f, 0}, {NAN, 0}};
    for (const auto& row : rows) {
        SETUP[57].real = row.element;
        run(CURVE_B, 2.0f, -0.3f);
        EXPECT_EQ(a.Reduction, row.edition == 1 ? 110.0f : 140.0f) << row.element;
        EXPECT_EQ(G_OLD_EDITION, row.edition) << "older material files";
    }
}

TEST_F(MdmtUcs66, FiftyFiveBelowIsTheLimitUnlessTheRatioIsLow) {
    // Curve B, 1 in: 31 F; curve D, 0.5 in: -55 F.
    EXPECT_NEAR(run(CURVE_B, 1.0f, -0.35f).Mdmt, UCS66_POLYNOMIAL(CURVE_B, 1.0f) - 140.0f, 1e-4f);
    EXPECT_EQ(run(CURVE_B, 1.0f, -0.36f).Mdmt, -55.0f);
    EXPECT_EQ(run(CURVE_D, 0.5f, -0.9f).Mdmt, -55.0f);
    EXPECT_EQ(run(CURVE_D, 0.5f, -0.35f).Mdmt, -155.0f) << "-195 is below the coldest";
    run(CURVE_B, 1.0f, -0.9f);
    EXPECT_EQ(a.Mdmt, a.Tmin - a.Reduction);
    SETUP[57].real = 1.0f;
    EXPECT_NEAR(run(CURVE_B, 1.0f, -0.4f).Mdmt, UCS66_POLYNOMIAL(CURVE_B, 1.0f) - 110.0f, 1e-4f);
    EXPECT_EQ(run(CURVE_B, 1.0f, -0.41f).Mdmt, -55.0f);
}

TEST_F(MdmtUcs66, NoReductionWhereNoneIsAllowed) {
    G_USE_A6 = 0;
    run(CURVE_B, 1.0f, -0.7f);
    EXPECT_EQ(a.Reduction, 0.0f);
    EXPECT_EQ(a.Mdmt, a.Tmin);
    EXPECT_EQ(a.Ratio, 0.7f);
    MDMT_CALL thick = element_of(CURVE_B, 5.0f);
    thick.Reduction = 12.0f;
    EXPECT_EQ(run(thick).Reduction, 0.0f) << "cleared before the limit of thickness";
}

TEST_F(MdmtUcs66, APadBringsItsRatioAndReduction) {
    MDMT_CALL part = element_of(CURVE_B, 1.0f, 0.9f);
    part.PadGoverns = 1;
    part.Ratio = 0.75f;
    part.Reduction = 25.0f;
    run(part);
    EXPECT_EQ(a.Ratio, 0.75f);
    EXPECT_EQ(a.Reduction, 25.0f);
    EXPECT_EQ(a.Mdmt, a.Tmin - 25.0f);
    part.PadGoverns = 0;
    run(part);
    EXPECT_EQ(a.Ratio, 0.9f) << "the ratio that came does not count";
    part.PadGoverns = 1;
    part.Tg = 5.0f;
    run(part);
    EXPECT_EQ(a.Ratio, -1.0f);
    EXPECT_EQ(a.Reduction, 0.0f);
}

TEST_F(MdmtUcs66, NothingLeftByCorrosionGivesNoRatio) {
    MDMT_CALL part = element_of(CURVE_B, 1.0f, 0.5f);
    part.c = 0.75f;
    part.Cext = 0.25f;
    part.EstarUsed = 7.0f;
    part.Reduction = 12.0f;
    part.Pwht = part.Credit = 1;
    G_TOUGHNESS.FloorSwitch = 1;
    require_temperature("-60");
    run(part);
    EXPECT_EQ(a.Mdmt, 1.0101f);
    EXPECT_EQ(a.Ratio, -1.0f);
    EXPECT_EQ(a.EstarUsed, 7.0f);
    EXPECT_EQ(a.Reduction, 12.0f);
    EXPECT_EQ(a.Tmin, UCS66_POLYNOMIAL(CURVE_B, 1.0f) - 30.0f) << "the credit needs no ratio";
    const std::vector<Line> lines = reported();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].text,
              "Min Metal Temp. w/o impact per UCS-66, Curve B            31  degrees");
    EXPECT_EQ(lines[1].text,
              "Min Metal Temp per UCS-66 and UCS-68(c),PWHT credit          1  degrees");
}

TEST_F(MdmtUcs66, FloorOfLowRatiosWhenItIsArmed) {
    EXPECT_NEAR(run(CURVE_A, 1.0f, -0.3f).Mdmt, UCS66_POLYNOMIAL(CURVE_A, 1.0f) - 140.0f, 1e-4f);
    G_TOUGHNESS.FloorSwitch = 1;
    EXPECT_EQ(run(CURVE_A, 1.0f, -0.35f).Mdmt, -155.0f);
    EXPECT_EQ(run(CURVE_A, 1.0f, -0.36f).Mdmt, -55.0f);
    SETUP[57].real = 1.0f;
    EXPECT_EQ(run(CURVE_A, 1.0f, -0.4f).Mdmt, -150.0f);
    EXPECT_NE(run(CURVE_A, 1.0f, -0.41f).Mdmt, -150.0f);
    G_USE_A6 = 0;
    run(CURVE_A, 1.0f, -0.4f);
    EXPECT_EQ(a.Mdmt, a.Tmin);
    G_USE_A6 = 1;
    G_TOUGHNESS.FloorSwitch = 2; // 1 arms it
    EXPECT_NE(run(CURVE_A, 1.0f, -0.4f).Mdmt, -150.0f);
}

// ---- credit of UCS-68(c) -------------------------------------------------------------------------

TEST_F(MdmtUcs66, CreditLowersTheCurveAlsoWithoutAReduction) {
    MDMT_CALL part = element_of(CURVE_B, 1.0f, -1.0f);
    part.Pwht = part.Credit = 1;
    run(part);
    EXPECT_EQ(a.Tmin, UCS66_POLYNOMIAL(CURVE_B, 1.0f) - 30.0f);
    EXPECT_EQ(a.Mdmt, UCS66_POLYNOMIAL(CURVE_B, 1.0f)) << "not below the curve before the credit";
    part.Credit = 0;
    EXPECT_EQ(run(part).Tmin, UCS66_POLYNOMIAL(CURVE_B, 1.0f));
    part.Credit = 1;
    part.Pwht = 0;
    EXPECT_EQ(run(part).Tmin, UCS66_POLYNOMIAL(CURVE_B, 1.0f));
}

TEST_F(MdmtUcs66, CreditLowersAReducedTemperatureToItsLimit) {
    MDMT_CALL part = element_of(CURVE_B, 1.0f, -0.9f);
    part.Pwht = part.Credit = 1;
    const Real curve = UCS66_POLYNOMIAL(CURVE_B, 1.0f);
    EXPECT_EQ(run(part).Mdmt, curve - 100.0f * (1.0f - 0.9f) - 30.0f);
    part.Tr = -0.36f; // -55 before the credit
    EXPECT_EQ(run(part).Mdmt, -85.0f);
    part.Tr = -0.35f; // -109 before it
    EXPECT_NEAR(run(part).Mdmt, curve - 170.0f, 1e-4f);
    part.Curve = CURVE_C;
    EXPECT_EQ(run(part).Mdmt, -155.0f);
    G_TOUGHNESS.Credit55 = 0;
    EXPECT_EQ(run(part).Mdmt, -55.0f);
    part.Curve = CURVE_B;
    part.Tr = -0.9f;
    EXPECT_EQ(run(part).Mdmt, curve - 100.0f * (1.0f - 0.9f) - 30.0f);
}

// ---- UG-20(f) --------------------------------------------------------------------------------------

TEST_F(MdmtUcs66, Ug20fForThinParts) {
    struct {
        Int curve;
        Real thickness, temperature;
    } const rows[] = {
        {CURVE_A, 0.5f, -20.0f},  {CURVE_A, 0.51f, 650.0f}, {CURVE_B, 1.0f, -20.0f},
        {CURVE_B, 1.01f, 650.0f}, {CURVE_C, 1.0f, -20.0f},  {CURVE_D, 1.0f, 650.0f},
    };
    for (const auto& row : rows) {
        MDMT_CALL part = element_of(row.curve, row.thickness);
        part.Ug20Candidate = 1;
        part.Warnings = 5;
        run(part);
        // Curve D is below -20 F at 1 in: its -29.6 F is what UG-20(f) would give, silently.
        if (row.curve == CURVE_D) {
            EXPECT_EQ(a.Tug20, a.Tmin);
            EXPECT_EQ(a.Warnings, 6);
            continue;
        }
        EXPECT_EQ(a.Tug20, row.temperature) << row.curve << " " << row.thickness;
        EXPECT_EQ(a.Warnings, row.temperature < 0.0f ? 6 : 5) << row.curve << " " << row.thickness;
    }
}

TEST_F(MdmtUcs66, Ug20fUpTo650FTruncated) {
    MDMT_CALL part = element_of(CURVE_B, 0.75f);
    part.Ug20Candidate = 1;
    part.Tdesign = 650.9f;
    EXPECT_EQ(run(part).Tug20, -20.0f);
    EXPECT_EQ(a.Warnings, 1);
    EXPECT_EQ(reported().back().text,
              "Min Metal Temp. w/o impact per UG-20(f)                    -20  degrees");
    part.Tdesign = 651.0f;
    EXPECT_EQ(run(part).Tug20, 650.0f);
    EXPECT_EQ(a.Warnings, 0);
    part.Tdesign = 650.0f;
    part.Ug20Candidate = 2;
    EXPECT_EQ(run(part).Tug20, 650.0f);
    part.Ug20Candidate = 1;
    G_TOUGHNESS.NoUg20f = 1;
    EXPECT_EQ(run(part).Tug20, 650.0f);
}

TEST_F(MdmtUcs66, Ug20fCountsSilentlyWhereTheCurveIsColdItself) {
    MDMT_CALL part = element_of(CURVE_D, 0.5f);
    part.Ug20Candidate = 1;
    run(part);
    EXPECT_EQ(a.Tug20, -55.0f);
    EXPECT_EQ(a.Warnings, 1);
    for (const Line& line : reported())
        EXPECT_EQ(line.text.find("UG-20(f)"), std::string::npos);
    part.Tdesign = 651.0f;
    EXPECT_EQ(run(part).Tug20, 650.0f);
    EXPECT_EQ(a.Warnings, 0);
    // The credit puts Tmin below the -20 F that UG-20(f) gave before it.
    part = element_of(CURVE_B, 0.375f);
    part.Ug20Candidate = part.Pwht = part.Credit = 1;
    run(part);
    EXPECT_EQ(a.Tug20, -20.0f);
    EXPECT_EQ(a.Tmin, -50.0f);
    EXPECT_EQ(a.Warnings, 1);
}

TEST_F(MdmtUcs66, MetricThicknessesOfUg20f) {
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS();
    MDMT_CALL part = element_of(CURVE_A, 0.511f); // 13 mm
    part.Ug20Candidate = 1;
    EXPECT_EQ(run(part).Tug20, -20.0f);
    part.Curve = CURVE_B;
    part.Tg = 0.985f; // 25 mm
    EXPECT_EQ(run(part).Tug20, 650.0f);
    part.Tg = 0.984f;
    EXPECT_EQ(run(part).Tug20, -20.0f);
}

// ---- UCS-68(b) -------------------------------------------------------------------------------------

TEST_F(MdmtUcs66, HeatTreatmentBelowMinus55) {
    require_temperature("-60");
    MDMT_CALL part = element_of(CURVE_D, 0.5f, 0.4f);
    run(part);
    EXPECT_EQ(a.Reduction, 0.0f);
    EXPECT_EQ(a.EstarUsed, -1.0f);
    EXPECT_EQ(a.Warnings, 0) << "no warning of its own";
    const std::vector<Line> lines = reported();
    ASSERT_GE(lines.size(), 3u);
    const std::vector<Line> note(lines.end() - 3, lines.end());
    EXPECT_EQ(note,
              (std::vector<Line>{
                  {"Note:", NOTE_STYLE},
                  {"Because the required MDMT of -60 was less than -55 and because", NOTE_STYLE},
                  {"the thickness ratio of 0.8000 was greater than 0.3500, PWHT is required "
                   "(see UCS-68(b)).",
                   NOTE_STYLE},
              }));
    require_temperature("-55");
    EXPECT_EQ(run(part).EstarUsed, -1.0f);
    require_temperature("-54.9");
    EXPECT_EQ(run(part).EstarUsed, 1.0f);
    require_temperature("-60");
    part.Tr = -0.35f;
    EXPECT_EQ(run(part).EstarUsed, -1.0f);
    part.Tr = -0.34f;
    EXPECT_EQ(run(part).EstarUsed, 1.0f);
    SETUP[57].real = 1.0f;
    part.Tr = -0.39f;
    EXPECT_EQ(run(part).EstarUsed, 1.0f);
    part.Tr = -0.4f;
    EXPECT_EQ(run(part).EstarUsed, -1.0f);
}

TEST_F(MdmtUcs66, HeatTreatmentNoteInCelsius) {
    metric_report();
    require_temperature("-60");
    run(CURVE_D, 0.5f, 0.4f);
    const std::vector<Line> lines = reported();
    EXPECT_EQ(lines[lines.size() - 2].text,
              "Because the required MDMT of -51 was less than -48 and because");
}

// ---- required temperature --------------------------------------------------------------------------

TEST_F(MdmtUcs66, WhichRequiredTemperatureCounts) {
    HOST_RECORD.required_temperature[0] = "-61";
    HOST_RECORD.required_temperature[1] = "-62";
    HOST_RECORD.required_temperature[2] = "-63";
    HOST_RECORD.own_mdmt[0] = "001";
    HOST_RECORD.own_mdmt[1] = "0000000000000001";
    const auto required = [&](Int element) {
        MDMT_CALL part = element_of(CURVE_D, 0.5f);
        part.Element = element;
        return run(part).Trequired;
    };
    EXPECT_EQ(required(3), -61.0f) << "no version mark";
    HOST_RECORD.version_mark = "v 2024-24b";
    EXPECT_EQ(required(3), -62.0f);
    EXPECT_EQ(required(32), -62.0f);
    EXPECT_EQ(required(-4), -62.0f);
    EXPECT_EQ(required(1), -63.0f);
    EXPECT_EQ(required(0), -63.0f);
    EXPECT_EQ(required(33), -63.0f);
    G_TOUGHNESS.MdmtSkip = 1;
    EXPECT_EQ(required(3), -61.0f);
    HOST_RECORD.required_temperature[0] = "cold";
    EXPECT_EQ(required(3), 0.0f) << "what can't be read counts as 0";
}

// ---- the report --------------------------------------------------------------------------------------

TEST_F(MdmtUcs66, LinesOfAThicknessRatio) {
    MDMT_CALL part = element_of(CURVE_B, 1.125f, 0.8119f);
    part.c = 0.125f;
    part.Pwht = part.Credit = 1;
    run(part);
    EXPECT_EQ(reported(),
              (std::vector<Line>{
                  {"Govrn. thk, tg = 1.125, tr = 0.812, c = 0.125, E* = 1.0"},
                  {"Thickness Ratio = tr * (E*)/(tg - c) = 0.812, Temp. Reduction = 19"},
                  {"Min Metal Temp. w/o impact per UCS-66, Curve B            37  degrees"},
                  {"Min Metal Temp per UCS-66 and UCS-68(c),PWHT credit          7  degrees"},
                  {"Min Metal Temp. at Required thickness (UCS 66.1)           -12  degrees"},
              }));
}

TEST_F(MdmtUcs66, LinesOfASeparateRatioThicknessComeBeforeThoseOfAPad) {
    MDMT_CALL part = element_of(CURVE_A, 1.0f, 0.5f);
    part.TgSr = 1.25f;
    part.c = 0.25f;
    part.Estar = 0.85f;
    part.PadGoverns = 1;
    part.Ratio = 0.75f;
    part.Reduction = 25.0f;
    run(part);
    EXPECT_EQ(
        reported(),
        (std::vector<Line>{
            {"tg = 1.0, tg_sr = 1.25, tr = 0.5, c = 0.25, E* = 0.85"},
            {"Thickness Ratio = tr * (E*)/(tg_sr - c) = 0.75, Temp. Reduction = 25"},
            {"Pad governing, Conservatively assuming Pad stress = Shell stress(Div. 1 L-9.3)."},
            {"Min Metal Temp. w/o impact per UCS-66, Curve A            66  degrees"},
            {"Min Metal Temp. at Required thickness (UCS 66.1)            41  degrees"},
        }));
}

TEST_F(MdmtUcs66, LinesOfAPad) {
    MDMT_CALL part = element_of(CURVE_C, 1.0f, 0.5f);
    part.c = 0.0625f;
    part.PadGoverns = 1;
    part.Ratio = 0.75f;
    part.Reduction = 25.0f;
    run(part);
    const std::vector<Line> lines = reported();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0].text, "Govrn. thk, tg = 1.0, c = 0.0625, E* = 1.0");
    EXPECT_EQ(lines[1].text, "Thickness Ratio = tr * (E*)/(tg - c) = 0.75, Temp. Reduction = 25");
    EXPECT_EQ(lines[2].text,
              "Pad governing, Conservatively assuming Pad stress = Shell stress(Div. 1 L-9.3).");
    part.Tr = -0.5f; // the pad's line comes after a stress ratio, too
    run(part);
    const std::vector<Line> stress = reported();
    EXPECT_EQ(stress[0].text, "Stress Ratio = 0.75, Temperature Reduction per Fig. UCS 66.1 = 25");
    EXPECT_EQ(stress[1].text, lines[2].text);
}

TEST_F(MdmtUcs66, LinesInCelsiusAndMillimetres) {
    metric_report();
    MDMT_CALL part = element_of(CURVE_B, 1.0f, 0.8f);
    run(part);
    EXPECT_EQ(reported(),
              (std::vector<Line>{
                  {"Govrn. thk, tg = 25.4, tr = 20.32, c = 0.0, E* = 1.0"},
                  {"Thickness Ratio = tr * (E*)/(tg - c) = 0.8, Temp. Reduction = 11"},
                  {"Min Metal Temp. w/o impact per UCS-66, Curve B            -1  degrees"},
                  {"Min Metal Temp. at Required thickness (UCS 66.1)           -12  degrees"},
              }));
}

TEST_F(MdmtUcs66, ALoweredTemperatureShowsFromATenthOfADegreeOn) {
    run(CURVE_B, 1.0f, -0.9995f); // 0.05 F
    EXPECT_EQ(reported().size(), 2u);
    run(CURVE_B, 1.0f, -0.998f); // 0.2 F
    EXPECT_EQ(reported().size(), 3u);
}

TEST_F(MdmtUcs66, ASilentPassCalculatesTheSame) {
    MDMT_CALL part = element_of(CURVE_B, 1.125f, 0.8119f);
    part.c = 0.125f;
    part.Ug20Candidate = part.Pwht = part.Credit = 1;
    const MDMT_CALL loud = run(part);
    reported();
    IWRTFL = 0;
    run(part);
    EXPECT_EQ(a.Mdmt, loud.Mdmt);
    EXPECT_EQ(a.Tmin, loud.Tmin);
    EXPECT_EQ(a.Warnings, loud.Warnings);
    EXPECT_EQ(LINE_COUNT, 0);
}

// ---- published figures -------------------------------------------------------------------------------

// ASME PTB-4 (Section VIII Division 1 example problem manual), E3.1: SA-516 grade 70 normalized, curve
// D, 1-13/16 in: about -7 F.
TEST_F(MdmtUcs66, PublishedExampleE31) {
    EXPECT_NEAR(run(CURVE_D, 1.8125f).Mdmt, -7.0f, 1.0f);
    tables_on();
    EXPECT_EQ(run(CURVE_D, 1.8125f).Mdmt, -7.0f);
}

} // namespace
} // namespace tarvane
