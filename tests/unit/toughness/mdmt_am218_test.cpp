// MDMT_ELEMENT under the old Division 2: AM-218.
#include "mdmt_fixture.h"

#include "toughness/mdmt_stages.h"

namespace tarvane {
namespace {

using toughness_test::element_of;
using toughness_test::Line;

class MdmtAm218 : public toughness_test::ToughnessTest {
  protected:
    MDMT_CALL a;

    static MDMT_CALL part(Int Curve, Real Tg, Real Tr = -1.0f) {
        MDMT_CALL element = element_of(Curve, Tg, Tr);
        element.Code = 2;
        return element;
    }
    MDMT_CALL& run(const MDMT_CALL& call) {
        a = call;
        MDMT_ELEMENT(a);
        return a;
    }
    std::vector<Line> lines_of(const MDMT_CALL& call) {
        reported();
        run(call);
        return reported();
    }
};

TEST_F(MdmtAm218, WhichRulesApply) {
    run(part(CURVE_B, 1.0f));
    EXPECT_EQ(a.Tmin, 31.0f) << "AM-218 takes the row";
    EXPECT_EQ(a.Tug20, 1.0101f);
    G_FORCE_DIV1 = 1;
    run(part(CURVE_B, 1.0f));
    EXPECT_EQ(a.Tmin, UCS66_POLYNOMIAL(CURVE_B, 1.0f)) << "UCS-66";
    EXPECT_EQ(a.Tug20, 650.0f);
    G_CURRENT_DIV_2 = true;
    EXPECT_EQ(run(part(CURVE_B, 1.0f)).Tug20, 650.0f)
        << "UCS-66 before the present Division 2, too";
}

TEST_F(MdmtAm218, CurveAByItsPolynomialTheOthersByTheNearerRow) {
    EXPECT_EQ(run(part(CURVE_A, 2.03f)).Tmin, UCS66_POLYNOMIAL(CURVE_A, 2.03f));
    EXPECT_EQ(run(part(CURVE_A, 0.3f)).Tmin, 18.0f);
    EXPECT_EQ(run(part(CURVE_B, 0.53125f)).Tmin, -7.0f) << "in the middle: the lower row";
    EXPECT_EQ(run(part(CURVE_B, 0.532f)).Tmin, -1.0f);
    EXPECT_EQ(run(part(CURVE_C, 1.0f)).Tmin, -3.0f);
    EXPECT_EQ(run(part(CURVE_D, 4.0f)).Tmin, 23.0f) << "the row behind the last one searched";
}

TEST_F(MdmtAm218, OutsideTheTableTheStartValueStands) {
    EXPECT_EQ(run(part(CURVE_B, 0.2f)).Tmin, -20.0f);
    EXPECT_EQ(run(part(CURVE_C, 0.2f)).Tmin, -50.0f);
    EXPECT_EQ(run(part(CURVE_D, 0.2f)).Tmin, -55.0f);
    MDMT_CALL thick = part(CURVE_C, 4.1f);
    thick.c = 0.1f;
    EXPECT_EQ(run(thick).Tmin, -50.0f);
    EXPECT_EQ(run(part(CURVE_C, 0.25f)).Tmin, -55.0f) << "the row, with no limit behind it";
}

TEST_F(MdmtAm218, RatioTakesNoEfficiency) {
    MDMT_CALL element = part(CURVE_B, 1.0f, 0.7f);
    element.Estar = 0.85f;
    element.c = 0.0625f;
    element.Cext = 0.0625f;
    element.TgSr = 3.0f;
    run(element);
    EXPECT_EQ(a.Ratio, 0.7f / (1.0f - 0.0625f - 0.0625f));
    EXPECT_EQ(a.EstarUsed, 1.0f);
    element.Tr = 2.0f;
    EXPECT_EQ(run(element).Ratio, 1.0f);
    element.Tr = -0.35f;
    EXPECT_EQ(run(element).Ratio, 0.35f);
    element.Tr = -1.5f;
    EXPECT_EQ(run(element).Ratio, 1.0f) << "a pressure ratio is limited, too";
}

TEST_F(MdmtAm218, ReductionOfTheFigure) {
    const auto cubic = [](double r) {
        return 1353.0 - 7043.2 * r + 13129.0 * r * r - 8404.5 * r * r * r;
    };
    struct {
        Real ratio;
        double reduction;
    } const rows[] = {
        {1.0f, 0.0},        {0.8f, 20.0},       {0.61f, 39.0},        {0.6f, cubic(0.6)},
        {0.5f, cubic(0.5)}, {0.4f, cubic(0.4)}, {0.35f, cubic(0.35)}, {0.3f, cubic(0.3)},
        {0.29f, 200.0},     {0.1f, 200.0},      {0.0f, 200.0},
    };
    for (const auto& row : rows) {
        EXPECT_NEAR(run(part(CURVE_B, 1.0f, -row.ratio)).Reduction, row.reduction, 1.0e-3)
            << row.ratio;
    }
    EXPECT_EQ(FIG_AM_218_3(NAN), 0.0f);
}

TEST_F(MdmtAm218, LimitsOfTheReducedTemperature) {
    EXPECT_EQ(run(part(CURVE_B, 1.0f, -0.31f)).Mdmt, -55.0f);
    run(part(CURVE_B, 1.0f, -0.3f));
    EXPECT_EQ(a.Mdmt, max(31.0f - a.Reduction, -155.0f));
    EXPECT_LT(a.Mdmt, -55.0f);
    EXPECT_EQ(run(part(CURVE_D, 0.5f, -0.3f)).Mdmt, -155.0f);
    EXPECT_EQ(run(part(CURVE_D, 0.5f, -0.9f)).Mdmt, -55.0f);
    G_USE_A6 = 0;
    run(part(CURVE_B, 1.0f, -0.3f));
    EXPECT_EQ(a.Mdmt, 31.0f);
    EXPECT_EQ(a.Reduction, 0.0f);
}

TEST_F(MdmtAm218, LinesOfAThicknessRatioWithCredit) {
    MDMT_CALL element = part(CURVE_B, 1.0f, 0.7f);
    element.c = 0.125f;
    element.Pwht = element.Credit = 1;
    EXPECT_EQ(lines_of(element),
              (std::vector<Line>{
                  {"Govrn. thk, tg = 1.0, tr = 0.7, c = 0.125"},
                  {"Thickness Ratio = tr/(tg - c - cae) = 0.8, Temp. Reduction = 20"},
                  {"Min Metal Temp. w/o impact per AM-218.1                     31  degrees"},
                  {"Min Metal Temp per AM-218.1 and AM-218.4,PWHT credit         1  degrees"},
                  {"Min Metal Temp. at Required thickness (AM-218.3)           -19  degrees"},
              }));
    EXPECT_EQ(a.Tmin, 1.0f);
    EXPECT_NEAR(a.Mdmt, -19.0f, 1e-4f);
    element.Tr = 5.0f; // ratio 1.0: only the curve takes the credit
    run(element);
    EXPECT_EQ(a.Tmin, 1.0f);
    EXPECT_EQ(a.Mdmt, 31.0f);
    element.Curve = CURVE_D;
    element.Tr = -0.3f;
    EXPECT_EQ(run(element).Mdmt, -155.0f);
    G_TOUGHNESS.Credit55 = 0;
    EXPECT_EQ(run(element).Mdmt, -155.0f) << "its limit is that of UCS-68(c) only";
}

TEST_F(MdmtAm218, LinesOfALowPressureRatio) {
    EXPECT_EQ(lines_of(part(CURVE_C, 1.0f, -0.25f)),
              (std::vector<Line>{
                  {"Pressure Ratio = 0.25, Temperature Reduction = 200"},
                  {"Min Metal Temp. w/o impact per AM-218.1                     -3  degrees"},
                  {"Min Metal Temp. at Required thickness (AM-218.3)          -155  degrees"},
                  {"Impact testing of this element is not required if the material meets the"},
                  {"provisions required in paragraph AM-213(a)."},
              }));
    EXPECT_EQ(lines_of(part(CURVE_C, 1.0f, -0.31f)).size(), 3u);
    EXPECT_EQ(lines_of(part(CURVE_C, 1.0f, -1.0f)).size(), 2u);
    EXPECT_EQ(lines_of(part(CURVE_C, 1.0f, -0.9995f)).size(), 3u) << "any lower value shows";
}

TEST_F(MdmtAm218, LinesOfAPad) {
    MDMT_CALL element = part(CURVE_B, 1.0f, 0.7f);
    element.PadGoverns = 1;
    element.Ratio = 0.75f;
    element.Reduction = 25.0f;
    EXPECT_EQ(lines_of(element),
              (std::vector<Line>{
                  {"Govrn. thk, tg = 1.0, c = 0.0"},
                  {"Thickness Ratio = tr/(tg - c - cae) = 0.75, Temp. Reduction = 25"},
                  {"Pad governing, Conservatively assuming Pad stress = Shell stress."},
                  {"Min Metal Temp. w/o impact per AM-218.1                     31  degrees"},
                  {"Min Metal Temp. at Required thickness (AM-218.3)             6  degrees"},
              }));
}

TEST_F(MdmtAm218, FloorByTheEditionOfTheLatestUcs66Pass) {
    G_TOUGHNESS.FloorSwitch = 1;
    SETUP[57].real = 1.0f;
    EXPECT_EQ(run(part(CURVE_A, 1.0f, -0.33f)).Mdmt, -155.0f)
        << "0 at load, whatever the setup says";
    run(element_of(CURVE_B, 1.0f)); // UCS-66 reads it
    EXPECT_EQ(run(part(CURVE_A, 1.0f, -0.33f)).Mdmt, -150.0f);
    EXPECT_GT(run(part(CURVE_A, 1.0f, -0.41f)).Mdmt, -55.0f);
    SETUP[57].real = 0.0f;
    EXPECT_EQ(run(part(CURVE_A, 1.0f, -0.33f)).Mdmt, -150.0f);
    run(element_of(CURVE_B, 1.0f));
    EXPECT_EQ(run(part(CURVE_A, 1.0f, -0.33f)).Mdmt, -155.0f);
}

TEST_F(MdmtAm218, ImpactTestedMaterials) {
    for (const Int Curve : {IMPACT_TESTED_CURVE, EXEMPT_CURVE}) {
        material(-50);
        RESET_IMPACT_TABLE();
        EXPECT_EQ(lines_of(part(Curve, 1.0f, 0.8f)),
                  (std::vector<Line>{
                      {"Note:", NOTE_STYLE},
                      {"This Material was specified as being an Impact Tested (Low Temperature) "
                       "Material.",
                       NOTE_STYLE},
                      {"Impact Test Temperature provided per Specification         -50  degrees"},
                  }));
        EXPECT_EQ(a.Tmin, -50.0f);
        EXPECT_EQ(a.Mdmt, -50.0f);
        material(1);
        EXPECT_EQ(
            lines_of(part(Curve, 1.0f, 0.8f)),
            (std::vector<Line>{
                {"Note: This Element/Detail was specified as being Impact Tested.", NOTE_STYLE}}));
        EXPECT_EQ(a.Tmin, 1.0101f);
        EXPECT_NEAR(a.Mdmt, 1.0101f - 20.0f, 1e-4f);
        impact_table("0001", "SA-350 LF2", "-75");
        EXPECT_EQ(
            lines_of(part(Curve, 1.0f, 0.8f)),
            (std::vector<Line>{
                {"Impact Test Temperature entered by user                    -75  degrees"}}));
        EXPECT_EQ(a.Tmin, -75.0f);
        EXPECT_EQ(a.Mdmt, -75.0f);
        impact_table("0001", "SA-420 WPL6", "-75");
        EXPECT_TRUE(lines_of(part(Curve, 1.0f, 0.8f)).empty()) << "no entry, no line";
        EXPECT_EQ(a.Tmin, 1.0101f);
    }
}

TEST_F(MdmtAm218, BeyondFourInchesThereIsNoTemperature) {
    EXPECT_EQ(run(part(CURVE_B, 4.1f)).Tmin, 1.0101f);
    EXPECT_EQ(reported().size(), 4u);
}

TEST_F(MdmtAm218, TheMaterialIsReadFromTheFileOfDivision2) {
    write_file("system", "MATFILE2.BIN",
               toughness_test::material_file(
                   1, 0, {toughness_test::Record("SA-350 LF2", 3).put(376, Int{-20})}));
    write_file("system", "MATFILE1.BIN",
               toughness_test::material_file(
                   1, 0, {toughness_test::Record("SA-350 LF2", 3).put(376, Int{-50})}));
    EXPECT_EQ(run(part(IMPACT_TESTED_CURVE, 1.0f)).Tmin, -20.0f);
    EXPECT_EQ(run(element_of(IMPACT_TESTED_CURVE, 1.0f)).Tmin, -50.0f);
}

} // namespace
} // namespace tarvane
