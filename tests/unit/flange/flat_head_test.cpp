#include "../edge_numbers.h"
#include "flange/rating.h"
#include "flange/stresses.h"
#include "stress_fixture.h"

#include <cmath>
#include <random>

namespace tarvane {
namespace {

using stress_test::FlangeLinesTest;
using stress_test::Lines;

constexpr double PI_D = 3.14159265358979;

const std::string OPERATING_UG34 = "Tangential Flange Stress, Flat Head (UG-34), Operating [STo]:";
const std::string OPERATING_EN = "Tangential Flange Stress, Flat Head, Operating [STo]:";
const std::string SEATING_UG34 = "Tangential Flange Stress, Flat Head (UG-34), Seating [STa]:";
const std::string SEATING_EN = "Tangential Flange Stress, Flat Head, Seating [STa]:";
const std::string SEATING_OVAL_UG34 =
    "Tangential Flange Stress, Flat Head, Seating UG-34 (Non-Circular) [STa]:";
const std::string SEATING_OVAL_EN =
    "Tangential Flange Stress, Flat Head, Seating (Non-Circular) [STa]:";

class FlatHeadTest : public FlangeLinesTest {
  protected:
    FlatHeadTest() { flat_head(); }

    Real STo() const { return s.STRESS[OPERATING][TANGENTIAL]; }
    Real STa() const { return s.STRESS[SEATING][TANGENTIAL]; }
    static double near(double x) { return 1e-5 * std::fabs(x); }

    void oval() { s.D = 40.0f, s.dS = 20.0f, s.L = 100.0f; }

    // The report and results of one fresh flat head.
    void run() {
        start_again();
        FLANGE_STRESSES(s);
    }
};

// 1.9 W hG Bsc/(t^2 G) with W of 100000 is 4750, C Z P G^2/t^2 is 4687.5.
TEST_F(FlatHeadTest, CircularUnderASME) {
    run();
    EXPECT_NEAR(STo(), 4750.0 + 4687.5, near(9437.5));
    EXPECT_NEAR(STa(), 7125.0, near(7125));
    EXPECT_EQ(s.Zcover, 1.0f);
    EXPECT_EQ(s.Cf, 0.3f);
    EXPECT_NEAR(s.SPerW, 0.0475, near(0.0475));
    EXPECT_NEAR(s.SPerP, 46.875, near(46.875));
    EXPECT_EQ(s.SPerDP, 0.0f);
    EXPECT_EQ(
        stored_lines(),
        (Lines{OPERATING_UG34, " = 1.9 * Wm1 * hG * Bsc/(t\xB2 * G) + C * Z * Peq * G\xB2/t\xB2",
               " = 1.9 * 100000 * 2.5 * 1.0/(2.0\xB2 * 25.0 ) +",
               "    0.3 * 1.0 * 100.0 * 25.0\xB2/2.0\xB2", " = 9437.50 psi", SEATING_UG34,
               " = 1.9 * W * hG * Bsc/ (t\xB2 * G)",
               " = 1.9 * 150000 * 2.5 * 1.0/(2.0\xB2 * 25.0 )", " = 7125.00 psi",
               "Bolt Stress, Operating [BSo]:", " = Wm1 / Ab", " = 100000/8.0", " = 12500.00 psi",
               "Bolt Stress, Seating [BSa]:", " = ( Wm2 / Ab )", " = ( 120000/8.0 )",
               " = 15000.00 psi"}));
}

TEST_F(FlatHeadTest, CircularUnderPDHasItsOwnSymbolOfTheBoltSpacing) {
    s.code = PD_5500;
    s.CF = 1.2f;
    run();
    EXPECT_NEAR(STo(), 1.2 * 4750.0 + 4687.5, near(10387.5));
    EXPECT_EQ(under(OPERATING_EN).at(0),
              " = 1.9 * Wm1 * hG * cF/(t\xB2 * G) + C * Z * Peq * G\xB2/t\xB2");
    EXPECT_EQ(under(OPERATING_EN).at(1), " = 1.9 * 100000 * 2.5 * 1.2/(2.0\xB2 * 25.0 ) +");
    EXPECT_EQ(under(SEATING_EN).at(0), " = 1.9 * W * hG * cF/ (t\xB2 * G)");
}

TEST_F(FlatHeadTest, CircularUnderEN) {
    s.code = EN_13445;
    s.Wm1 = 60000.0f;
    run();
    const double Tb = 3 * 60000.0 * 5 / (4 * 25 * PI_D);
    const double A1t = 100.0 / 4 * (0.309375 * 625 + 3 * (25 * 0.25 + 2 * 0.25 * 3) * 5);
    ASSERT_GT(A1t, Tb);
    EXPECT_NEAR(STo(), A1t, near(A1t)); // bolt and pressure term together
    EXPECT_NEAR(STa(), 3 * 150000.0 * 5 / (4 * 25 * PI_D), near(7162));
    EXPECT_NEAR(s.SPerW, 3 * 5 / (4 * 25 * PI_D), near(0.0477));
    EXPECT_NEAR(s.SPerP, 46.875, near(46.875));
    EXPECT_EQ(titles(), (Lines{OPERATING_EN, SEATING_EN, "Bolt Stress, Operating [SigmaBo]:",
                               "Bolt Stress, Seating [SigmaBa]:"}));
    EXPECT_EQ(under(OPERATING_EN),
              (Lines{" = P/ep\xB2(3(3+0.3)G\xB2/32 + 3(cF)(G/4+2(b)*m)(C-G)",
                     " = 100.0/2.0\xB2(3(3+0.3)25.0\xB2/32 +",
                     "   3(1.0)(25.0/4+2( 0.25)*3.0)(30.0-25.0)", " = 7740.23 psi"}));
    EXPECT_EQ(under(SEATING_EN),
              (Lines{" = W * cF * 3(C-G)/( ea\xB2 * pi * G)",
                     " = 150000.0 * 1.0 * 3(30.0-25.0)/( 2.0\xB2 * pi * 25.0)", " = 7161.97 psi"}));
}

TEST_F(FlatHeadTest, CircularUnderENWithALargeBoltLoad) {
    s.code = EN_13445;
    s.Wm1 = 300000.0f;
    FLANGE_STRESSES(s);
    const double Tb = 3 * 300000.0 * 5 / (4 * 25 * PI_D);
    const double A1t = 100.0 / 4 * (0.309375 * 625 + 3 * (25 * 0.25 + 2 * 0.25 * 3) * 5);
    ASSERT_LT(A1t, Tb);
    EXPECT_NEAR(STo(), 2 * Tb - A1t, near(2 * Tb));
}

TEST_F(FlatHeadTest, NonCircular) {
    oval();
    run();
    EXPECT_NEAR(s.Zcover, 3.4 - 2.4 * 0.5, 1e-6);
    const double Tb = 6 * 100000.0 * 2.5 / (4 * 100), Tp = 0.3 * 2.2 * 100 * 400 / 4;
    EXPECT_NEAR(STo(), Tb + Tp, near(Tb + Tp));
    EXPECT_NEAR(STa(), 1.5 * Tb, near(1.5 * Tb));
    EXPECT_NEAR(s.SPerW, Tb / 100000, near(0.0375));
    EXPECT_NEAR(s.SPerP, Tp / 100, near(66));
    EXPECT_EQ(s.SPerDP, 0.0f);
    s.P = 60.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.SPerDP, Tp * 0.4, near(2640));
    s.P = 100.0f;
    run();
    EXPECT_EQ(under(OPERATING_UG34),
              (Lines{" = 6 * Wm1 * hG * Bsc/(t\xB2 * L) + C * Z * Peq * d\xB2/t\xB2",
                     " = 6 * 100000 * 2.5 * 1.0/(2.0\xB2 * 100.0 ) +",
                     "    0.3 * 2.2 * 100.0 * 20.0\xB2/2.0\xB2", " = 10350.00 psi"}));
    EXPECT_EQ(under(SEATING_OVAL_UG34),
              (Lines{" = 6 * W * hG * Bsc/(t\xB2 * L))",
                     " = 6 * 150000 *2.5 *1.0/(2.0\xB2 *100.0 )", " = 5625.00 psi"}));
    for (const Int code : {PD_5500, EN_13445}) {
        s.code = code;
        run();
        EXPECT_NEAR(STo(), Tb + Tp, near(Tb + Tp));
        EXPECT_EQ(under(OPERATING_EN).at(0),
                  " = 6 * Wm1 * hG * cF/(t\xB2 * L) + C * Z * Peq * d\xB2/t\xB2");
        EXPECT_EQ(under(SEATING_OVAL_EN).at(0), " = 6 * W * hG * cF/(t\xB2 * L))");
    }
}

TEST_F(FlatHeadTest, NegativeBoltLoadIsAbsoluteInTheNonCircularFormOnly) {
    oval();
    s.Wm1 = -100000.0f, s.Peq = s.P = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), 3750.0, 0.1);
    flat_head();
    s.Wm1 = -100000.0f, s.Peq = s.P = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), -4750.0, 0.1);
}

TEST_F(FlatHeadTest, ShapeFactorTellsCircularHeads) {
    s.D = s.dS = 20.0f, s.L = 100.0f; // equal spans: circular, by G
    run();
    EXPECT_NEAR(s.Zcover, 1.0, 1e-6);
    EXPECT_NEAR(STo(), 9437.5, 0.2);
    s.D = 20.0f, s.dS = 20.0f * (1.0f - 0.00005f / 2.4f); // 1.00005 is circular still
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), 9437.5, 1.0);
    s.dS = 20.0f * (1.0f - 0.0002f / 2.4f); // 1.0002 is not
    run();
    EXPECT_NEAR(s.Zcover, 1.0002, 2e-6);
    EXPECT_FALSE(under(SEATING_OVAL_UG34).empty());
    s.dS = 20.1f; // 0.988 is not circular either
    run();
    EXPECT_FALSE(under(SEATING_OVAL_UG34).empty());
}

TEST_F(FlatHeadTest, ShapeFactorIsCappedAtAThirdAndALittle) {
    for (const auto& [d, Z] : {std::pair{0.376f, 3.4 - 2.4 * 0.376}, std::pair{0.375f, 2.5},
                               std::pair{0.3f, 2.5}, std::pair{0.9f, 1.24}}) {
        s.D = 1.0f, s.dS = d, s.L = 4.0f;
        FLANGE_STRESSES(s);
        EXPECT_NEAR(s.Zcover, Z, 1e-6) << d;
    }
    s.D = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.Zcover, 1.0f);
}

TEST_F(FlatHeadTest, ExternalPressureCountsByItsAbsoluteValue) {
    FLANGE_STRESSES(s);
    const Real internal = STo();
    s.P = s.Peq = -100.0f;
    run();
    EXPECT_EQ(STo(), internal);
    EXPECT_EQ(under(OPERATING_UG34).at(2), "    0.3 * 1.0 * -100.0 * 25.0\xB2/2.0\xB2");
    for (const auto& [Peq, P] :
         {std::pair{-150.0f, -100.0f}, std::pair{150.0f, 100.0f}, std::pair{-20.0f, 30.0f}}) {
        s.Peq = Peq, s.P = P;
        FLANGE_STRESSES(s);
        EXPECT_NEAR(s.SPerDP, 0.3 * 50 * 625 / 4, 0.01); // the difference first, then absolute
    }
    s.code = EN_13445, s.Wm1 = 0.0f;
    s.Peq = 100.0f;
    FLANGE_STRESSES(s);
    const Real en = STo();
    s.Peq = -100.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), en);
}

TEST_F(FlatHeadTest, AllowanceComesOffTheThickness) {
    s.t = 2.25f, s.ct = 0.25f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), 9437.5, 0.1);
}

// ---- full face ------------------------------------------------------------------------------------

TEST_F(FlatHeadTest, FullFaceCircularHasNoBoltTerm) {
    s.fullFace = true;
    s.coverFlag = 1, s.SPerW = 1.0f; // openings are not tested
    run();
    EXPECT_EQ(s.Cf, 0.25f);
    EXPECT_NEAR(STo(), 0.25 * 100 * 900 / 4, near(5625));
    EXPECT_EQ(STa(), 0.0f);
    EXPECT_EQ(s.SPerW, 0.0f);
    EXPECT_NEAR(s.SPerP, 56.25, near(56.25));
    EXPECT_EQ(s.WMaxOp, -8.0f * 25000.0f);
    EXPECT_EQ(under(OPERATING_UG34),
              (Lines{" = C * Z * [Peq] * d\xB2/t\xB2  (no bolt load moment for full faced designs)",
                     " =  0.25 * 1.0 * [100.0] * 30.0\xB2/2.0\xB2", " = 5625.00 psi"}));
    EXPECT_EQ(titles(),
              (Lines{OPERATING_UG34, "Bolt Stress, Operating [BSo]:", "Bolt Stress, Seating [BSa]:",
                     "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:"}));
}

TEST_F(FlatHeadTest, FullFaceUnderPDAndENLeavesNothing) {
    for (const Int code : {PD_5500, EN_13445}) {
        flat_head();
        s.code = code, s.fullFace = true;
        run();
        EXPECT_EQ(STo(), 0.0f);
        EXPECT_EQ(STa(), 0.0f);
        EXPECT_EQ(s.SPerW, 0.0f);
        EXPECT_EQ(s.SPerP, 0.0f);
        EXPECT_EQ(s.SPerDP, 0.0f);
        EXPECT_EQ(s.Cf, 0.25f);
        EXPECT_EQ(s.WMaxOp, -8.0f * 25000.0f);
        EXPECT_TRUE(under(OPERATING_EN).empty());
        EXPECT_TRUE(under(SEATING_EN).empty());
        EXPECT_NE(s.STRESS[OPERATING][FULL_FACE], 0.0f);
    }
}

TEST_F(FlatHeadTest, FullFaceNonCircular) {
    oval();
    s.fullFace = true;
    run();
    EXPECT_NEAR(STo(), 3750 + 0.25 * 2.2 * 100 * 400 / 4, 0.1);
    EXPECT_EQ(STa(), 0.0f);
    EXPECT_FALSE(under(OPERATING_UG34).empty());
    EXPECT_TRUE(under(SEATING_OVAL_UG34).empty());

    s.code = PD_5500; // the load limit stays though the rate after it is dropped
    run();
    EXPECT_EQ(STo(), 0.0f);
    EXPECT_EQ(s.SPerW, 0.0f);
    const double Wmax = 20000 / 0.0375;
    EXPECT_NEAR(s.WMaxOp, std::min((2 * Wmax / 25000 - 8) * 25000, 8.0 * 25000), 1.0);
}

// ---- bolt load limit ----------------------------------------------------------------------------------

TEST_F(FlatHeadTest, OperatingBoltLoadLimit) {
    FLANGE_STRESSES(s);
    const double Wmax = 20000 / 0.0475;
    EXPECT_NEAR(s.WMaxOp, std::min((2 * Wmax / 25000 - 8) * 25000, 200000.0), 20.0);
    s.ALLOWED[SEATING][TANGENTIAL] = 7125.0f; // Wmax of 150000
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.WMaxOp, (2 * 150000.0 / 25000 - 8) * 25000, 2.0);
    s.coverFlag = 1; // the limit is formed before the doubling
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.WMaxOp, (2 * 150000.0 / 25000 - 8) * 25000, 2.0);
    s.hg = 0.0f; // no bolt moment: infinite, so the bolts govern
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.WMaxOp, 200000.0f);
}

// ---- openings ------------------------------------------------------------------------------------------

TEST_F(FlatHeadTest, OneOpeningDoublesTheStress) {
    s.coverFlag = 1;
    run();
    EXPECT_NEAR(STo(), 18875.0, 0.1);
    EXPECT_NEAR(STa(), 14250.0, 0.1);
    EXPECT_NEAR(s.SPerW, 0.095, 1e-6);
    EXPECT_NEAR(s.SPerP, 93.75, 1e-3);
    EXPECT_EQ(under(OPERATING_UG34),
              (Lines{" = 2 * ( 1.9 * Wm1 * hG * Bsc/(t\xB2 * G) + C * Z * Peq * G\xB2/t\xB2 )",
                     " = 2 * ( 1.9 * 100000 * 2.5 * 1.0/(2.0\xB2 * 25.0 ) +",
                     "    0.3 * 1.0 * 100.0 * 25.0\xB2/2.0\xB2 )",
                     " = 18875.00 psi Doubled per UG-39(d)(2)."}));
    EXPECT_EQ(under(SEATING_UG34),
              (Lines{" = 2 * 1.9 * W * hG * Bsc / (t\xB2 * G)",
                     " = 2 * 1.9 * 150000 * 2.5 * 1.0/(2.0\xB2 * 25.0 )", " = 14250.00 psi"}));
}

TEST_F(FlatHeadTest, OpeningsAfterTheLigamentFactor) {
    s.P = 50.0f;
    s.coverFactor = 1.25f;
    run();
    const double x = 2 * 1.25 * 1.25;
    EXPECT_NEAR(STo(), x * 9437.5, 0.3);
    EXPECT_NEAR(STa(), x * 7125.0, 0.3);
    EXPECT_NEAR(s.SPerW, x * 0.0475, 1e-6);
    EXPECT_NEAR(s.SPerP, x * 46.875, 1e-3);
    EXPECT_NEAR(s.SPerDP, x * 0.3 * 50 * 625 / 4, 0.1);
    EXPECT_EQ(
        under(OPERATING_UG34),
        (Lines{
            " = 2 * ( 1.9 * Wm1 * hG * Bsc/( (t/h)\xB2 * G ) + C * Z * Peq * G\xB2 / (t/h)\xB2 )",
            " = 2 * ( 1.9 * 100000 * 2.5 * 1.0/(1.6\xB2 * 25.0 ) +",
            "    0.3 * 1.0 * 100.0 * 25.0\xB2/1.6\xB2 )",
            " = 29492.19 psi Doubled per UG-39(d)(2) and h term included."}));
    EXPECT_EQ(under(SEATING_UG34),
              (Lines{" = 2 * 1.9 * W * hG * Bsc / ( (t/h)\xB2 * G )",
                     " = 2 * 1.9 * 150000 * 2.5 * 1.0/(1.6\xB2 * 25.0 )", " = 22265.62 psi"}));
    // Between the two, a line of its own.
    EXPECT_EQ(titles().at(1), "For this geometry, h = 1.2500  t = 2.0000 in.");
}

TEST_F(FlatHeadTest, OpeningsInANonCircularHead) {
    oval();
    s.coverFlag = 1;
    run();
    EXPECT_NEAR(STo(), 2 * 10350.0, 0.3);
    EXPECT_EQ(under(OPERATING_UG34),
              (Lines{" = 2 * ( 6 * Wm1 * hG * Bsc/(t\xB2 * L) + C * Z * Peq * d\xB2/t\xB2 )",
                     " = 2 * ( 6 * 100000 * 2.5 * 1.0/(2.0\xB2 * 100.0 ) +",
                     "    0.3 * 2.2 * 100.0 * 20.0\xB2/2.0\xB2 )",
                     " = 20700.00 psi Doubled per UG-39(d)(2)."}));
    EXPECT_EQ(under(SEATING_OVAL_UG34),
              (Lines{" = 2 * 6 * W * hG * Bsc / ( t\xB2 * L )",
                     " = 2 * 6 * 150000 *2.5 *1.0/(2.0\xB2 *100.0 )", " = 11250.00 psi"}));
    s.coverFlag = 0, s.coverFactor = 1.25f;
    run();
    EXPECT_EQ(
        under(OPERATING_UG34),
        (Lines{" = 2 * ( 6 * Wm1 * hG * Bsc/( (t/h)\xB2 * L) + C * Z * Peq  *d\xB2 / (t/h)\xB2 )",
               " = 2 * ( 6 * 100000 * 2.5 * 1.0/(1.6\xB2 * 100.0 ) +",
               "    0.3 * 2.2 * 100.0 * 20.0\xB2/1.6\xB2 )",
               " = 32343.75 psi Doubled per UG-39(d)(2) and h term included."}));
    EXPECT_EQ(under(SEATING_OVAL_UG34),
              (Lines{" = 2 * 6 * W * hG * Bsc / ( (t/h)\xB2 * L)",
                     " = 2 * 6 * 150000 *2.5 *1.0/(1.6\xB2 *100.0 )", " = 17578.12 psi"}));
}

TEST_F(FlatHeadTest, OpeningsUnderENKeepTheirForms) {
    s.code = EN_13445, s.Wm1 = 60000.0f, s.coverFlag = 1;
    run();
    EXPECT_NEAR(STo(), 2 * 7740.234375, 0.3);
    EXPECT_EQ(under(OPERATING_EN).at(0), " = P/ep\xB2(3(3+0.3)G\xB2/32 + 3(cF)(G/4+2(b)*m)(C-G)");
    EXPECT_EQ(under(OPERATING_EN).back(), " = 15480.47 psi Doubled per UG-39(d)(2).");
    EXPECT_EQ(under(SEATING_EN).at(0), " = W * cF * 3(C-G)/( ea\xB2 * pi * G)");
    s.code = PD_5500;
    run();
    EXPECT_EQ(under(OPERATING_EN).at(0),
              " = 2 * ( 1.9 * Wm1 * hG * cF/(t\xB2 * G) + C * Z * Peq * G\xB2/t\xB2 )");
    EXPECT_EQ(under(SEATING_EN).at(0), " = 2 * 1.9 * W * hG * Bsc / (t\xB2 * G)");
}

TEST_F(FlatHeadTest, FactorRootTwoOfTheSetupBlock) {
    FLANGE_STRESSES(s);
    const Real plain = STo();
    SETUP[49].real = 0.5f; // not truncated
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), 2.0f * plain);
    s.coverFactor = 1.0005f; // neither exactly 1 nor above 1.001
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), plain);
    s.coverFactor = 1.5f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), plain * (2.0f * (1.5f * 1.5f)));
    s.coverFlag = 1; // goes before the factor
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), 2.0f * plain);
    s.coverFlag = 0, s.coverFactor = 1.0f;
    SETUP[49].real = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), plain);
}

TEST_F(FlatHeadTest, LigamentFactorCountsFromAThousandthOn) {
    FLANGE_STRESSES(s);
    const Real plain = STo();
    s.coverFactor = 1.001f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), plain);
    s.coverFactor = std::nextafter(1.001f, 2.0f);
    FLANGE_STRESSES(s);
    EXPECT_GT(STo(), 2.0f * plain);
    s.coverFactor = 1.0f;
    SETUP[49].real = 0.001f; // anything above 0
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), 2.0f * plain);
    SETUP[49].real = -1.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(STo(), plain);
}

TEST_F(FlatHeadTest, RemarkBehindAUnitOfTenColumns) {
    UNITS.stress_label = "kgf/sq.cm.";
    s.coverFlag = 1;
    run();
    EXPECT_EQ(under(OPERATING_UG34).back(), " = 18875.00 kgf/sq.cm.Doubled per UG-39(d)(2).");
}

// ---- units, not-a-number, identities ---------------------------------------------------------------------

TEST_F(FlatHeadTest, UnitFactors) {
    UNITS.thickness = 25.4f, UNITS.diameter = 2.54f, UNITS.pressure = 0.1f;
    UNITS.force = 4.448222f;
    UNITS.thickness_label = "mm";
    s.coverFactor = 1.25f;
    run();
    EXPECT_EQ(under(OPERATING_UG34).at(1),
              " = 2 * ( 1.9 * 444822 * 6.35 * 1.0/(40.64\xB2 * 63.5 ) +");
    EXPECT_EQ(under(OPERATING_UG34).at(2), "    0.3 * 1.0 * 10.0 * 63.5\xB2/40.64\xB2 )");
    EXPECT_EQ(titles().at(1), "For this geometry, h = 1.2500  t = 50.8000 mm");
}

TEST_F(FlatHeadTest, EveryValueHasItsOwnFactor) {
    tell_units_apart();
    s.coverFlag = 0;
    run();
    EXPECT_EQ(under(OPERATING_UG34).at(1), " = 1.9 * 200000 * 250.0 * 1.0/(20.0\xB2 * 2500.0 ) +");
    EXPECT_EQ(under(OPERATING_UG34).at(2), "    0.3 * 1.0 * 10.0 * 2500.0\xB2/20.0\xB2");
    EXPECT_EQ(under(OPERATING_UG34).at(3), " = 94.38 psi");
    EXPECT_EQ(under(SEATING_UG34).at(1), " = 1.9 * 300000 * 250.0 * 1.0/(20.0\xB2 * 2500.0 )");
    EXPECT_EQ(under(SEATING_UG34).at(2), " = 71.25 psi");

    s.fullFace = true;
    run();
    EXPECT_EQ(under(OPERATING_UG34).at(1), " =  0.25 * 1.0 * [10.0] * 3000.0\xB2/20.0\xB2");

    flat_head();
    oval();
    s.L = 90.0f;
    run();
    EXPECT_EQ(under(OPERATING_UG34).at(1), " = 6 * 200000 * 250.0 * 1.0/(20.0\xB2 * 9000.0 ) +");
    EXPECT_EQ(under(OPERATING_UG34).at(2), "    0.3 * 2.2 * 10.0 * 2000.0\xB2/20.0\xB2");
    EXPECT_EQ(under(SEATING_OVAL_UG34).at(1), " = 6 * 300000 *250.0 *1.0/(20.0\xB2 *9000.0 )");

    flat_head();
    s.code = EN_13445;
    run();
    EXPECT_EQ(under(OPERATING_EN).at(1), " = 10.0/20.0\xB2(3(3+0.3)2500.0\xB2/32 +");
    EXPECT_EQ(under(OPERATING_EN).at(2), "   3(1.0)(2500.0/4+2(25.0)*3.0)(3000.0-2500.0)");
    EXPECT_EQ(under(SEATING_EN).at(1),
              " = 300000.0 * 1.0 * 3(3000.0-2500.0)/( 20.0\xB2 * pi * 2500.0)");
}

TEST_F(FlatHeadTest, NotANumberTravels) {
    s.Peq = NOT_A_NUMBER;
    FLANGE_STRESSES(s);
    EXPECT_TRUE(std::isnan(STo()));
    EXPECT_NEAR(STa(), 7125.0, 0.1);
    EXPECT_TRUE(std::isnan(s.SPerDP));
    EXPECT_EQ(under(OPERATING_UG34).back(), " = NaN psi");
    flat_head();
    s.D = NOT_A_NUMBER, s.dS = 20.0f, s.L = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_TRUE(std::isnan(s.Zcover)); // not circular, then
    EXPECT_TRUE(std::isnan(STo()));
    EXPECT_TRUE(std::isinf(STa()));
}

TEST_F(FlatHeadTest, DoubledPressureAndLoadDoubleTheStress) {
    for (const Int code : {ASME_VIII_1, PD_5500, EN_13445})
        for (const bool round : {true, false}) {
            flat_head();
            s.code = code;
            if (!round) oval();
            FLANGE_STRESSES(s);
            const Real once = STo(), seat = STa();
            s.Peq *= 2.0f, s.P *= 2.0f, s.Wm1 *= 2.0f, s.W *= 2.0f;
            FLANGE_STRESSES(s);
            EXPECT_EQ(STo(), 2.0f * once);
            EXPECT_EQ(STa(), 2.0f * seat);
        }
}

TEST_F(FlatHeadTest, SecondWayInDouble) {
    std::mt19937 random(715);
    const auto draw = [&](double low, double high) {
        return static_cast<Real>(std::uniform_real_distribution(low, high)(random));
    };
    IWRTFL = 0;
    for (int round = 0; round < 2000; ++round) {
        flat_head();
        s.code = 1 + round % 4;
        s.t = draw(0.5, 9), s.G = draw(5, 90), s.C = s.G + draw(1, 9), s.hg = (s.C - s.G) / 2.0f;
        s.Peq = draw(-500, 2000), s.P = draw(-500, 2000), s.CF = draw(1, 2);
        s.Wm1 = draw(0, 4e5), s.W = draw(0, 4e5), s.b = draw(0, 1), s.m = draw(0, 6);
        const bool ovalHead = round % 8 < 4;
        if (ovalHead) s.D = draw(50, 99), s.dS = draw(5, 40), s.L = draw(90, 300);
        s.coverFactor = round % 3 == 0 ? draw(1.1, 2) : 1.0f;
        FLANGE_STRESSES(s);

        const double t2 = double(s.t) * double(s.t), G = double(s.G), C = double(s.C);
        const double P = std::fabs(double(s.Peq)), CF = double(s.CF), hG = double(s.hg);
        const double x = round % 3 == 0 ? 2 * double(s.coverFactor) * double(s.coverFactor) : 1.0;
        double perW, perP;
        if (ovalHead) {
            const double Z = std::min(3.4 - 2.4 * double(s.dS) / double(s.D), 2.5);
            perW = 6 * hG * CF / (t2 * double(s.L));
            perP = 0.3 * Z * double(s.dS) * double(s.dS) / t2;
        } else {
            perW =
                s.code == EN_13445 ? 3 * CF * (C - G) / (t2 * G * PI_D) : 1.9 * hG * CF / (t2 * G);
            perP = 0.3 * G * G / t2;
        }
        const double Tb = perW * double(s.Wm1);
        double Tp = perP * P;
        if (!ovalHead && s.code == EN_13445)
            Tp = std::fabs(P / t2 *
                               (3.3 * 3 / 32 * G * G +
                                3 * CF * (G / 4 + 2 * double(s.b) * double(s.m)) * (C - G)) -
                           Tb);
        const double scale = x * (2 * Tb + Tp);
        EXPECT_NEAR(STo(), x * (Tb + Tp), 2e-5 * scale);
        EXPECT_NEAR(STa(), x * perW * double(s.W), 2e-5 * x * perW * double(s.W));
        EXPECT_NEAR(s.SPerW, x * perW, 2e-5 * x * perW);
        EXPECT_NEAR(s.SPerP, x * perP, 2e-5 * x * perP);
    }
}

// The estimated pressure of a blind flange, used as its pressure, brings stress or bolts to
// their limit.
TEST_F(FlatHeadTest, EstimatedPressurePutBackGivesTheAllowableStress) {
    IWRTFL = 0;
    for (const Real t : {1.5f, 2.0f, 3.0f}) {
        flat_head();
        s.t = t, s.Ab = 40.0f;
        s.pressureArea = PI / 4.0f * s.G * s.G, s.hpPerP = 2.0f * s.b * PI * s.G * s.m;
        const auto loaded = [&](Real P) {
            s.P = s.Peq = P;
            s.Wm1 = (s.pressureArea + s.hpPerP) * P;
            FLANGE_STRESSES(s);
        };
        loaded(100.0f);
        FLANGE_MAWP(s);
        const Real limit = s.MAWPop;
        loaded(limit);
        // Cut to a hundredth of a psi, and rounding.
        EXPECT_LE(STo(), 20000.0f * 1.00001f);
        EXPECT_GT(STo(), 20000.0f * 0.9998f);
        FLANGE_MAWP(s);
        EXPECT_NEAR(s.MAWPop, limit, 0.02f);
    }
}

// ASME example E4.6.1: the published thicknesses carry the allowable stresses.
TEST_F(FlatHeadTest, PublishedBlindFlange) {
    s.P = s.Peq = 135.0f, s.G = 29.5f, s.hg = 0.875f, s.Wm1 = 111329.5f, s.W = 237626.0f;
    s.t = 1.52727f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), 17800.0, 1.0);
    s.t = 0.81828f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STa(), 20000.0, 1.0);
}

// Plate of a published cryostat note (github.com/yuntsebaryon/SLArpaasPressureAna), no bolt moment.
TEST_F(FlatHeadTest, PublishedPlate) {
    s.G = 18.0f, s.hg = 0.0f, s.P = s.Peq = 15.0f;
    s.t = 0.27f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), 20000.0, 1.0);
    s.t = 0.5f, s.P = s.Peq = 51.44f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(STo(), 20000.0, 3.0); // the pressure is printed with two decimals
    // The same pressure from the rating terms; the bolts carry more.
    s.Ab = 10.0f, s.pressureArea = PI / 4.0f * s.G * s.G;
    s.P = s.Peq = 15.0f;
    FLANGE_STRESSES(s);
    FLANGE_MAWP(s);
    EXPECT_NEAR(s.MAWPop, 51.44, 0.005);
}

} // namespace
} // namespace tarvane
