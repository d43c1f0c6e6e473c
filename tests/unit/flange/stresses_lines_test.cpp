// How the stresses are written, and in which units.
#include "flange/stresses.h"
#include "stress_fixture.h"

namespace tarvane {
namespace {

using stress_test::Lines;
using stress_test::StressesTest;

TEST_F(StressesTest, SecondTemplateIsLeftOutWhenEmptyOrNONE) {
    WRITE_STRESS_LINES("L:", " = s", " = @1", {12.0f}, "NONE", {}, 5.0f);
    WRITE_STRESS_LINES("L:", " = s", " = @1", {12.0f}, {}, {}, 5.0f);
    WRITE_STRESS_LINES("L:", " = s", " = @1 + #", {12.0f}, "   @1    + @1", {2.0f, 3.0f}, 5.0f);
    EXPECT_EQ(stored_lines(), (Lines{"L:", " = s", " = 12.0", " = 5.00 psi", //
                                     "L:", " = s", " = 12.0", " = 5.00 psi", //
                                     "L:", " = s", " = 12.0 +", "   2.0 + 3.0", " = 5.00 psi"}));
}

TEST_F(StressesTest, RemarkStandsBehindTheTenColumnsOfTheUnit) {
    WRITE_STRESS_LINES("L:", " = s", " = @1", {12.0f}, {}, {}, 5.0f, "Remark");
    EXPECT_EQ(stored(4), " = 5.00 psi Remark");
    UNITS.stress_label = "tenletters";
    WRITE_STRESS_LINES("L:", " = s", " = @1", {12.0f}, {}, {}, 5.0f, "Remark");
    EXPECT_EQ(stored(8), " = 5.00 tenlettersRemark");
}

TEST_F(StressesTest, ValueBelowOneKeepsTheFirstFourColumns) {
    WRITE_STRESS_LINES("L:", " = s", " = @2", {0.25f}, {}, {}, 0.25f);
    EXPECT_EQ(stored(3), " =  0.25");
    EXPECT_EQ(stored(4), " = 0.25 psi");
}

TEST_F(StressesTest, LinesEndAtColumn78) {
    const std::string longLine(90, 'x');
    WRITE_STRESS_LINES(longLine, longLine, longLine, {}, longLine, {}, 1.0f, longLine);
    ASSERT_EQ(LINE_COUNT, 5);
    for (Int k = 1; k <= 5; ++k) {
        EXPECT_EQ(stored(k).size(), 78u);
        EXPECT_EQ(record(k).find('\0'), 4u + 100u + 12u); // the marks stay after column 100
    }
}

TEST_F(StressesTest, UnitFactorsAndMomentsInTheLines) {
    UNITS.thickness = UNITS.diameter = 25.4f;
    UNITS.stress = 0.0068947573f;
    UNITS.moment = 1.355818f;
    UNITS.stress_label = "N./mm\xB2";
    s.type = REVERSE_WELD_NECK;
    FLANGE_STRESSES(s);
    EXPECT_EQ(under("Longitudinal Hub Stress, Operating [SHo]:"),
              (Lines{" = ( f * Mop / Bcor ) / ( L * g1\xB2 )",
                     " = ( 1.25 *22597/508.0 )/( 0.5 *25.4\xB2 )", " = 172.37 N./mm\xB2"}));
    // e is a reciprocal length.
    EXPECT_EQ(under("Tangential Flange Stress, Operating [Sto]:").at(2),
              "    1.75 * 52 * ( 0.67 * 50.8 * 0.0098 + 1 )/1.5");
}

TEST_F(StressesTest, EveryValueOfAForwardFlangeHasItsOwnFactor) {
    tell_units_apart();
    FLANGE_STRESSES(s);
    const auto numbers = [&](const char* title) { return under(title).at(1); };
    EXPECT_EQ(numbers("Longitudinal Hub Stress, Operating [SHo]:"),
              " = ( 1.25 *20000/2000.0 )/( 0.5 *10.0\xB2 )");
    EXPECT_EQ(numbers("Longitudinal Hub Stress, Seating [SHa]:"),
              " = ( 1.25 * 30000/2000.0 )/( 0.5 * 10.0\xB2 )");
    EXPECT_EQ(numbers("Radial Flange Stress, Operating [SRo]:"),
              " = ( 1.5 *20000/2000.0 )/( 0.5 *20.0\xB2 )");
    EXPECT_EQ(numbers("Radial Flange Stress, Seating [SRa]:"),
              " = ( 1.5 *30000/2000.0 )/( 0.5 *20.0\xB2 )");
    EXPECT_EQ(numbers("Tangential Flange Stress, Operating [STo]:"),
              " = ( 8.0 *20000/(20.0\xB2 *2000.0) ) - 1.75 *75");
    EXPECT_EQ(numbers("Average Flange Stress, Operating [SAo]:"), " = ( 250 + max( 75, 69 ))/2");
    EXPECT_EQ(numbers("Bolt Stress, Operating [BSo]:"), " = 200000/24.0");
    EXPECT_EQ(numbers("Bolt Stress, Seating [BSa]:"), " = ( 240000/24.0 )");
    EXPECT_EQ(under("Bolt Stress, Seating [BSa]:").back(), " = 150.00 psi");
    start_again();
    s.type = LOOSE_RING, s.h = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(numbers("Tangential Flange Stress, Operating [Sto]:"),
              " = ( 8.0 * 20000 )/( 20.0\xB2 * 2000.0 )");
}

TEST_F(StressesTest, EveryValueOfAReverseFlangeHasItsOwnFactor) {
    tell_units_apart();
    s.type = REVERSE_WELD_NECK;
    FLANGE_STRESSES(s);
    EXPECT_EQ(under("Tangential Flange Stress, Operating [Sto]:").at(1),
              " = ( 6.0 *20000/20.0\xB2 *2000.0 ) -");
    EXPECT_EQ(under("Tangential Flange Stress, Operating [Sto]:").at(2),
              "    1.75 * 75 * ( 0.67 * 20.0 * 0.025 + 1 )/1.5");
    EXPECT_EQ(under("Reverse Weld Neck Flange Stress, Operating [SVo]:").at(1),
              " = (20000/(20.0\xB2 * 2000.0 ))*( 8.0-( 2 * 1.5\xB2");
    EXPECT_EQ(under("Reverse Weld Neck Flange Stress, Operating [SVo]:").at(2),
              "   *( 1 + 2 * 20.0 * 0.025/3 )/(( 1.5\xB2 - 1 ) * 0.5 )))");
    start_again();
    full_face(PD_5500, REVERSE_WELD_NECK);
    FLANGE_STRESSES(s);
    EXPECT_EQ(under("Tangential Flange Stress, Operating [Sto]:").at(1),
              " = ( 8.0 *20000/(20.0\xB2 *2000.0) ) - 1.75 * 75.0");
}

TEST_F(StressesTest, MomentIsShownInInchPoundsUnderAFactorOfOne) {
    for (const Real u : {1.0f, 1.0005f, 1.001f}) {
        UNITS.moment = u;
        EXPECT_EQ(moment_in_line(1200.0f), 1200.0f * u);
    }
    for (const Real u : {0.9999f, 1.0012f, 1.355818f}) {
        UNITS.moment = u;
        EXPECT_EQ(moment_in_line(1200.0f), 100.0f * u);
    }
}

TEST_F(StressesTest, SilentPassWritesNothingAndGivesTheSameNumbers) {
    FLANGE_STRESSES(s);
    const FLANGE_STATE spoken = s;
    start_again();
    IWRTFL = 0;
    FLANGE_STRESSES(s);
    EXPECT_EQ(LINE_COUNT, 0);
    for (Int row = 0; row < 2; ++row)
        for (Int place = 0; place < PLACES; ++place)
            EXPECT_EQ(s.STRESS[row][place], spoken.STRESS[row][place]);
}

} // namespace
} // namespace tarvane
