// MDMT_ELEMENT for materials with a specified impact test temperature (curve 5): the four switches of
// the impact table by both kinds of material.
#include "mdmt_fixture.h"

namespace tarvane {
namespace {

using toughness_test::element_of;
using toughness_test::Line;

const Line NOTE{"Note:", NOTE_STYLE};
const Line TESTED_MATERIAL{
    "This Material was specified as being an Impact Tested (Low Temperature) Material.",
    NOTE_STYLE};
const Line TESTED_ELEMENT{"Note: This Element/Detail was specified as being Impact Tested.",
                          NOTE_STYLE};

class MdmtImpactTested : public toughness_test::ToughnessTest {
  protected:
    MDMT_CALL a;

    // Ratio 0.8: the figure allows 20 F.
    static MDMT_CALL part() { return element_of(IMPACT_TESTED_CURVE, 1.0f, 0.8f); }
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

const Line RATIO_THICKNESSES{"Govrn. thk, tg = 1.0, tr = 0.8, c = 0.0, E* = 1.0"};
const Line RATIO{"Thickness Ratio = tr * (E*)/(tg - c) = 0.8, Temp. Reduction = 20"};

// ---- the temperature of the material's own test ---------------------------------------------------

TEST_F(MdmtImpactTested, TemperatureOfTheSpecification) {
    material(-50, -30);
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  NOTE,
                  TESTED_MATERIAL,
                  {"Impact Test Temperature provided per Specification         -50  degrees"},
              }));
    EXPECT_EQ(a.Tmin, -50.0f);
    EXPECT_EQ(a.Mdmt, -50.0f);
    EXPECT_EQ(a.Reduction, 0.0f);
    EXPECT_EQ(a.Tug20, -20.0f);
    EXPECT_EQ(a.Ratio, 0.8f);
    EXPECT_EQ(a.Warnings, 0);
}

TEST_F(MdmtImpactTested, ReductionOfUcs66g) {
    material(-50, -30);
    impact_table("1000");
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  NOTE,
                  TESTED_MATERIAL,
                  {"Impact Test Temperature provided per Specification         -50  degrees"},
                  {"Reduction in Impact Temperature per UCS-66(g)               30  degrees"},
                  {"Calculated Minimum Design Metal Temperature                -80  degrees"},
              }));
    EXPECT_EQ(a.Reduction, 30.0f);
    EXPECT_EQ(a.Mdmt, -80.0f) << "never limited at -55";
    material(-50, 30);
    EXPECT_EQ(run(part()).Mdmt, -80.0f) << "its magnitude counts";
}

TEST_F(MdmtImpactTested, ReductionOfTheFigure) {
    material(-50, -30);
    impact_table("0100");
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  NOTE,
                  TESTED_MATERIAL,
                  {"Impact Test Temperature provided per Specification         -50  degrees"},
                  RATIO_THICKNESSES,
                  RATIO,
                  {"Reduction in MDMT per UCS-66.1                              20  degrees"},
                  {"Calculated Minimum Design Metal Temperature                -70  degrees"},
              }));
    EXPECT_NEAR(a.Mdmt, -70.0f, 1e-4f);
}

TEST_F(MdmtImpactTested, TheLargerOfBothReductions) {
    material(-50, -30);
    impact_table("1100");
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  NOTE,
                  TESTED_MATERIAL,
                  {"Impact Test Temperature provided per Specification         -50  degrees"},
                  {"Reduction in Impact Temperature per UCS-66(g)               30  degrees"},
                  RATIO_THICKNESSES,
                  {"Thickness Ratio = tr * (E*)/(tg - c) = 0.8, Temp. Reduction = 30"},
                  {"Reduction in MDMT per UCS-66.1                              30  degrees"},
                  {"Calculated Minimum Design Metal Temperature                -80  degrees"},
              }));
    material(-50, -10);
    EXPECT_NEAR(run(part()).Mdmt, -70.0f, 1e-4f);
    MDMT_CALL low = part();
    low.Tr = -0.3f; // 140 F
    EXPECT_EQ(run(low).Mdmt, -155.0f);
}

TEST_F(MdmtImpactTested, TheUsersTableMayLowerTheTemperature) {
    material(-50);
    impact_table("0001", "SA-350 LF2", "-75");
    EXPECT_EQ(run(part()).Tmin, -75.0f);
    impact_table("0001", "SA-350 LF2", "-25");
    EXPECT_EQ(run(part()).Tmin, -50.0f);
    impact_table("0001", "SA-420 WPL6", "-75");
    EXPECT_EQ(run(part()).Tmin, -50.0f) << "no entry, nothing lower";
    impact_table("0000", "SA-350 LF2", "-75");
    EXPECT_EQ(run(part()).Tmin, -50.0f);
    MDMT_CALL second = part();
    second.Kind = 2;
    impact_table("0001", "SA-350 LF2", "-75");
    EXPECT_EQ(run(second).Tmin, -50.0f) << "another list";
}

TEST_F(MdmtImpactTested, FieldBelowOneMeansTested) {
    material(0);
    EXPECT_EQ(run(part()).Tmin, 0.0f);
    material(1);
    require_temperature("-45");
    EXPECT_EQ(run(part()).Tmin, -45.0f) << "the required temperature stands";
}

TEST_F(MdmtImpactTested, NoReductionAllowedGivesZeroDegrees) {
    material(-50, -30);
    impact_table("1000");
    G_USE_A6 = 0;
    const std::vector<Line> lines = lines_of(part());
    EXPECT_EQ(a.Mdmt, 0.0f);
    EXPECT_EQ(a.Reduction, 30.0f);
    EXPECT_EQ(lines.size(), 4u) << "0 is not below -50";
}

TEST_F(MdmtImpactTested, FloorOfLowRatios) {
    material(-50);
    G_TOUGHNESS.FloorSwitch = 1;
    MDMT_CALL low = part();
    low.Tr = -0.35f;
    EXPECT_EQ(lines_of(low).back().text,
              "Calculated Minimum Design Metal Temperature               -155  degrees");
    EXPECT_EQ(a.Mdmt, -155.0f);
    material(1);
    impact_table("0001");
    EXPECT_EQ(run(low).Mdmt, -155.0f);
    impact_table("0000");
    EXPECT_EQ(run(low).Mdmt, -155.0f) << "by the stage before";
}

TEST_F(MdmtImpactTested, AnUnknownMaterialCountsAsTestedAtZero) {
    EXPECT_EQ(lines_of(part())[2].text,
              "Impact Test Temperature provided per Specification           0  degrees");
    EXPECT_EQ(a.Tmin, 0.0f);
    material(-50);
    MDMT_CALL other = part();
    other.Index = 4;
    EXPECT_EQ(run(other).Tmin, 0.0f);
    other = part();
    other.Spec = "";
    EXPECT_EQ(run(other).Tmin, 0.0f);
}

TEST_F(MdmtImpactTested, ExtremeFieldsOfTheRecord) {
    material(INT32_MIN, INT32_MIN);
    impact_table("1000");
    run(part());
    EXPECT_EQ(a.Tmin, -2147483648.0f);
    EXPECT_EQ(a.Reduction, 2147483648.0f);
    EXPECT_EQ(a.Mdmt, -155.0f);
}

// ---- the element is tested -------------------------------------------------------------------------

TEST_F(MdmtImpactTested, OnlyTheNoteWithoutTheUsersTable) {
    material(1, -30);
    require_temperature("-45");
    impact_table("1110");
    EXPECT_EQ(lines_of(part()), (std::vector<Line>{TESTED_ELEMENT}));
    EXPECT_EQ(a.Tmin, -45.0f);
    EXPECT_NEAR(a.Mdmt, -65.0f, 1e-4f) << "the figure's reduction, not limited at -55";
    EXPECT_NEAR(a.Reduction, 20.0f, 1e-4f);
    EXPECT_EQ(a.Tug20, -20.0f);
}

TEST_F(MdmtImpactTested, TemperatureOfTheUser) {
    material(1, -30);
    require_temperature("-45");
    impact_table("0001");
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  TESTED_ELEMENT,
                  {"Impact Test Temperature entered by user                    -50  degrees"},
              }));
    EXPECT_EQ(a.Tmin, -50.0f);
    EXPECT_EQ(a.Mdmt, -50.0f);
    EXPECT_EQ(a.Reduction, 0.0f);
}

TEST_F(MdmtImpactTested, OnlyValuesBelow99AreTemperatures) {
    material(1);
    require_temperature("-45");
    impact_table("0001", "SA-350 LF2", "98.9");
    EXPECT_EQ(run(part()).Tmin, 98.9f);
    impact_table("0001", "SA-350 LF2", "99.0");
    EXPECT_EQ(lines_of(part()), (std::vector<Line>{TESTED_ELEMENT}));
    EXPECT_EQ(a.Tmin, -45.0f);
    EXPECT_EQ(a.Mdmt, -45.0f);
}

TEST_F(MdmtImpactTested, TestedWithTheFigureAndUg84) {
    material(1, 0, 36.0f);
    impact_table("0111");
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  TESTED_ELEMENT,
                  {"Impact Test Temperature entered by user                    -50  degrees"},
                  RATIO_THICKNESSES,
                  RATIO,
                  {"Reduction in MDMT per UCS-66.1                              20  degrees"},
                  {"Reduction in MDMT per UG-84(b)(2)                           10  degrees"},
                  {"Calculated Minimum Design Metal Temperature                -70  degrees"},
              }));
    EXPECT_NEAR(a.Mdmt, -70.0f, 1e-4f);
    EXPECT_NEAR(a.Reduction, 20.0f, 1e-4f) << "the larger one";
}

TEST_F(MdmtImpactTested, Ug84Alone) {
    material(1, 0, 50.0f);
    impact_table("0011");
    EXPECT_EQ(lines_of(part()),
              (std::vector<Line>{
                  TESTED_ELEMENT,
                  {"Impact Test Temperature entered by user                    -50  degrees"},
                  {"Reduction in MDMT per UG-84(b)(2)                            5  degrees"},
                  {"Calculated Minimum Design Metal Temperature                -55  degrees"},
              }));
    EXPECT_EQ(a.Reduction, 5.0f);
    material(1, 0, 60.0f);
    EXPECT_EQ(run(part()).Mdmt, -50.0f);
    impact_table("0101"); // the figure alone
    EXPECT_NEAR(run(part()).Mdmt, -70.0f, 1e-4f);
}

// ---- nothing left by corrosion ---------------------------------------------------------------------

TEST_F(MdmtImpactTested, WithoutARatioTheTemperatureIsNotReduced) {
    MDMT_CALL eaten = part();
    eaten.c = 1.0f;
    eaten.Reduction = 12.0f;
    material(-50, -30);
    impact_table("0100");
    EXPECT_EQ(lines_of(eaten),
              (std::vector<Line>{
                  NOTE,
                  TESTED_MATERIAL,
                  {"Impact Test Temperature provided per Specification         -50  degrees"},
              }));
    EXPECT_EQ(a.Reduction, 0.0f);
    EXPECT_EQ(a.Mdmt, -50.0f);
    EXPECT_EQ(a.Ratio, -1.0f);
    impact_table("1100");
    EXPECT_EQ(run(eaten).Mdmt, -80.0f) << "UCS-66(g) needs no ratio";
    material(1, 0, 36.0f);
    impact_table("0101");
    EXPECT_EQ(lines_of(eaten).size(), 2u);
    EXPECT_EQ(a.Mdmt, -50.0f);
    impact_table("0000");
    EXPECT_EQ(lines_of(eaten), (std::vector<Line>{TESTED_ELEMENT}));
    EXPECT_EQ(a.Mdmt, 1.0101f);
}

} // namespace
} // namespace tarvane
