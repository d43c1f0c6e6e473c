// Selection of the geometry, and the two roundings of the design.
#include "design_fixture.h"

#include <numbers>
#include <random>

namespace tarvane {
namespace {

using stage_test::expect_close;
using stage_test::joined;
using stage_test::Lines;
using DesignSelection = design_test::DesignTest;

// ---- rounding --------------------------------------------------------------------------------

TEST(DesignRounding, ToTheNextSixteenth) {
    EXPECT_EQ(ROUND_TO_FRACTION(0.5f, 16), 0.5f);
    EXPECT_EQ(ROUND_TO_FRACTION(0.501f, 16), 0.5625f);
    EXPECT_EQ(ROUND_TO_FRACTION(0.0f, 16), 0.0f);
    // Up to a hundredth of a sixteenth is passed over.
    EXPECT_EQ(ROUND_TO_FRACTION(0.5f + 0.009f / 16.0f, 16), 0.5f);
    EXPECT_EQ(ROUND_TO_FRACTION(0.5f + 0.011f / 16.0f, 16), 0.5625f);
    EXPECT_EQ(ROUND_TO_FRACTION(-0.51f, 16), -0.4375f); // towards zero below it
    EXPECT_EQ(ROUND_TO_FRACTION(29.14f, 8), 29.25f);
    EXPECT_EQ(ROUND_TO_FRACTION(1.0e12f, 16), -134217728.0f); // past the range of an INTEGER
    EXPECT_EQ(ROUND_TO_FRACTION(NOT_A_NUMBER, 16), -134217728.0f);
}

TEST(DesignRounding, UpToDecimals) {
    EXPECT_EQ(ROUND_UP_DECIMALS(1.2341f, 3), 1.235f);
    EXPECT_EQ(ROUND_UP_DECIMALS(1.2349f, 3), 1.235f);
    EXPECT_EQ(ROUND_UP_DECIMALS(1.23499f, 3), 1.235f);
    EXPECT_EQ(ROUND_UP_DECIMALS(1.25f, 3), 1.251f); // a whole thousandth goes up too
    EXPECT_EQ(ROUND_UP_DECIMALS(1.25f, 2), 1.26f);
    EXPECT_EQ(ROUND_UP_DECIMALS(0.0f, 3), 0.001f);
    EXPECT_EQ(ROUND_UP_DECIMALS(NOT_A_NUMBER, 3), -2147483.648f);
}

// ---- selection of the geometry ---------------------------------------------------------------

FLANGE_STATE weld_neck_design() {
    FLANGE_STATE s = stage_test::ptb3_e4_16_1();
    s.kind = DESIGN;
    s.series = TEMA_IMPERIAL;
    s.Fid = 28.5f;
    s.Am = 4.4532f;
    s.ci = 0.0625f;
    return s;
}

TEST_F(DesignSelection, WeldNeckFlange) {
    FLANGE_STATE s = weld_neck_design();
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);

    EXPECT_EQ(s.go, 0.3125f);
    EXPECT_EQ(s.g1, 0.625f);
    EXPECT_EQ(s.h, 0.9375f); // 3 (g1 - go), a sixteenth already
    // (7 + 2) * 4 = 36 bolts of 0.1237 in2 at least: the smallest size. By area 36, by spacing
    // 2 pi 29.125 / (4 (2 * 0.5 + 6 * 1.4375 / 4.25)) = 15.1, so 60.
    EXPECT_EQ(s.dh, 0.5f);
    EXPECT_EQ(s.aNominal, 0.5f);
    EXPECT_EQ(s.nBolts, 60);
    expect_close(s.Ab, 60 * 0.126);
    // The gasket's half inch suffices; the face follows the gasket.
    EXPECT_EQ(s.Go, 30.0f);
    EXPECT_EQ(s.Fod, 29.5f);
    EXPECT_EQ(s.GoC, 29.5f);
    EXPECT_EQ(s.Gi, 29.0f);
    EXPECT_EQ(designFlag, 0);
    // Hub 29.125, gasket 30 + 0.5 + 0.125, spacing 60 * 1.25 / pi.
    EXPECT_EQ(s.C, 30.625f);
    EXPECT_EQ(s.A, 31.875f);
    EXPECT_EQ(s.B, 26.25f);

    const Lines expected = {"Geometry Selection for Flange Design Option:",
                            "Number of Bolts Selected for Flange                       60",
                            "Diameter of Bolts Selected for Flange                  0.500  in.",
                            "Bolt Circle Diameter Selected for Flange              30.625  in.",
                            "Hub Thickness, Large End, Selected for Flange         0.6250  in.",
                            "Hub Thickness, Small End, Selected for Flange         0.3125  in.",
                            "Length of Hub Selected for Flange                     0.9375  in.",
                            "Outside Diameter Selected for Flange                  31.875  in.",
                            "Initial Thickness Given for Flange                    1.4375  in."};
    EXPECT_EQ(stored_marks(1), " 0 0 0 0 0 2");
    for (Int k = 2; k <= LINE_COUNT; ++k)
        EXPECT_EQ(stored_marks(k), " 0 0 0 0 0 0");
    EXPECT_EQ(joined(take_lines()), joined(expected));
}

TEST_F(DesignSelection, HubByType) {
    for (Int type = 1; type <= 8; ++type) {
        SCOPED_TRACE(type);
        FLANGE_STATE s = weld_neck_design();
        s.type = type;
        s.go = 0.4f;
        s.g1 = 7.0f;
        s.h = 8.0f;
        Int designFlag = -1;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        // Slip on flanges: 135 * 26.25 / 17800 = 0.1991, to the next sixteenth, and the allowance.
        const bool slip_on = type == INTEGRAL_SLIP_ON || type == LOOSE_SLIP_ON;
        EXPECT_EQ(s.go, slip_on ? 0.25f + 0.0625f : 0.4f);
        const bool hub = slip_on || type == INTEGRAL_WELD_NECK || type == REVERSE_WELD_NECK;
        EXPECT_EQ(s.g1, hub ? 2.0f * s.go : 7.0f);
        EXPECT_EQ(s.h, slip_on ? 0.9375f : hub ? 1.25f : 8.0f); // 3 * 0.4 = 1.2
    }
}

TEST_F(DesignSelection, ThickHubsGrowByHalf) {
    for (const auto& [go, g1] : {std::pair{1.5f, 3.0f}, {above(1.5f), 1.5f * above(1.5f)}}) {
        FLANGE_STATE s = weld_neck_design();
        s.go = go;
        Int designFlag = -1;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        EXPECT_EQ(s.g1, g1);
        EXPECT_EQ(s.h, ROUND_TO_FRACTION(3.0f * (g1 - go), 16));
    }
}

TEST_F(DesignSelection, SpecialThreadsBecomeTema) {
    FLANGE_STATE s = weld_neck_design(), tema = weld_neck_design();
    s.series = SPECIAL_ROOT_AREA;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.series, TEMA_IMPERIAL);
    const Lines lines = take_lines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[1], "Bolt type for DESIGN must be TEMA or UNC - Using TEMA chart.");
    designFlag = -1;
    SELECT_FLANGE_GEOMETRY(tema, designFlag);
    EXPECT_EQ(s.C, tema.C);
    EXPECT_EQ(s.nBolts, tema.nBolts);
    EXPECT_EQ(take_lines().size() + 1, lines.size());
}

TEST_F(DesignSelection, OtherSeriesHaveTheirOwnSizes) {
    FLANGE_STATE s = weld_neck_design();
    s.series = UNC;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.series, UNC);
    expect_close(s.Ab, s.nBolts * 0.130);
    EXPECT_EQ(s.A, s.C + 2.0f * 0.7f);
}

TEST_F(DesignSelection, LargerBoltCirclesStartFromMoreBolts) {
    // 28 and 32 bolts tried for an area that only 32 bolts of 0.126 in2 provide.
    for (const auto& [C, size] : {std::pair{38.0f, 0.625f}, {above(38.0f), 0.5f}}) {
        FLANGE_STATE s = weld_neck_design();
        s.B = 18.5f; // 5 by the bore
        s.C = C;
        s.Am = 32.0f * 0.1255f;
        Int designFlag = -1;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        EXPECT_EQ(s.dh, size) << C;
    }
}

TEST_F(DesignSelection, AreaDecidesTheNumberOfBolts) {
    FLANGE_STATE s = weld_neck_design();
    s.t = 20.0f; // no limit by spacing
    s.Am = 100.0f;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.dh, 1.0f);
    EXPECT_EQ(s.nBolts, 4 * 46); // 100 / (4 * 0.551) = 45.4
    EXPECT_GE(s.Ab, s.Am);
    EXPECT_EQ(s.nBolts % 4, 0);
    // The bolts are side by side: 184 * 2.25 / pi = 131.78.
    EXPECT_EQ(s.C, 131.8125f);
}

TEST_F(DesignSelection, GasketGrowsWithTheBoltsAndTheHub) {
    FLANGE_STATE s = weld_neck_design();
    s.t = 20.0f;
    s.Am = 100.0f;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    // 184 * 0.551 * 25000 / (7600 pi 59) = 1.7992, 2 * 1.7992 above the bore of the gasket.
    EXPECT_EQ(s.Go, 32.625f);
    s = weld_neck_design();
    s.t = 20.0f;
    s.Am = 100.0f;
    s.y = 0.001f; // soft gaskets have no least width
    designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.Go, 30.0f);
    // A hub wider than the gasket's bore draws it outwards: (0.5 + (26.25 + 8 - 29)/2)/2 = 1.5625.
    s = weld_neck_design();
    s.go = 2.0f + 2.0f / 3.0f;
    designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.Go, 32.125f);
}

TEST_F(DesignSelection, GasketBoreOutsideTheFaceMovesToTheFace) {
    FLANGE_STATE s = weld_neck_design();
    s.Fid = 27.5f; // the face ends at 27.5 + 1
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.Fod, 28.5f);
    EXPECT_EQ(s.Gi, 27.5f);
}

TEST_F(DesignSelection, BoltCircleByType) {
    // Hub 26.25 + 2 g1 + 2 Rmin, gasket 30 + 0.625, spacing small.
    const auto circle = [](Int type, void (*change)(FLANGE_STATE&)) {
        FLANGE_STATE s = weld_neck_design();
        s.type = type;
        s.go = 1.25f;
        s.g1 = 2.5f;
        s.C = 20.0f;
        change(s);
        Int designFlag = -1;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        return std::pair{s.C, s.A};
    };
    const auto as_it_is = [](FLANGE_STATE&) {};
    // The hub's 32.875 counts, and widens the gasket to (0.5 + 1.125)/2 a side: 30.625.
    EXPECT_EQ(circle(INTEGRAL_WELD_NECK, as_it_is), std::pair(32.875f, 34.125f));
    EXPECT_EQ(circle(LAP_JOINT, as_it_is), std::pair(32.875f, 34.125f));
    // Rings and covers: the gasket's 30.625 + 0.625.
    EXPECT_EQ(circle(INTEGRAL_RING, as_it_is), std::pair(31.25f, 32.5f));
    EXPECT_EQ(circle(LOOSE_RING, as_it_is), std::pair(31.25f, 32.5f));
    EXPECT_EQ(circle(BLIND, as_it_is), std::pair(31.25f, 32.5f));
    // A ring's weld leg: 26.25 + 2 * 2 + 2 * 0.75.
    const auto leg = [](FLANGE_STATE& s) { s.tw = 2.0f; };
    EXPECT_EQ(circle(LOOSE_RING, leg), std::pair(31.75f, 33.0f));
    EXPECT_EQ(circle(INTEGRAL_RING, leg), std::pair(31.75f, 33.0f));
    EXPECT_EQ(circle(BLIND, leg), std::pair(31.25f, 32.5f));
    EXPECT_EQ(circle(INTEGRAL_WELD_NECK, leg), std::pair(32.875f, 34.125f));
}

TEST_F(DesignSelection, ReverseFlangeKeepsItsOutsideDiameter) {
    FLANGE_STATE s = weld_neck_design();
    s.type = REVERSE_WELD_NECK;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.A, 32.875f);
    EXPECT_EQ(s.C, 30.625f); // inside 32.875 - 2 * 0.625
    EXPECT_EQ(s.B, 29.0f);   // bore of the gasket
    s = weld_neck_design();
    s.type = REVERSE_WELD_NECK;
    s.A = 31.0f;
    designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.A, 31.0f);
    EXPECT_EQ(s.C, 29.75f); // limited by the edge distance
}

TEST_F(DesignSelection, FullFaceGasketReachesTheOutsideDiameter) {
    FLANGE_STATE s = weld_neck_design();
    s.fullFace = true;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.C, 29.125f); // the hub's; the gasket does not count
    EXPECT_EQ(s.A, 30.375f);
    EXPECT_EQ(s.Go, s.A);
    EXPECT_EQ(s.Fod, s.A);
    EXPECT_EQ(s.GoC, s.A);
    EXPECT_EQ(designFlag, 0);
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(designFlag, 1);
}

TEST_F(DesignSelection, GasketStandsFromTheThirtiethCallOn) {
    for (const bool fullFace : {false, true}) {
        FLANGE_STATE s = weld_neck_design();
        s.fullFace = fullFace;
        s.Go = 30.3f;
        s.Fod = 30.4f;
        s.GoC = 30.3f;
        Int designFlag = 30;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        EXPECT_EQ(designFlag, 30);
        EXPECT_EQ(s.Go, 30.3f);
        EXPECT_EQ(s.Fod, 30.4f);
        EXPECT_EQ(s.GoC, 30.3f);
        designFlag = 29;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        EXPECT_EQ(designFlag, 30);
        EXPECT_NE(s.Go, 30.3f);
    }
}

TEST_F(DesignSelection, HubLinesNeedAWholeHub) {
    FLANGE_STATE s = weld_neck_design();
    s.type = LOOSE_RING;
    s.go = s.g1 = s.h = 0.0f;
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    for (const std::string& line : take_lines())
        EXPECT_EQ(line.find("Hub"), std::string::npos) << line;
}

TEST_F(DesignSelection, HubLinesAskForAllThreeDimensions) {
    const Real limit = 0.0001f;
    for (Real FLANGE_STATE::*item : {&FLANGE_STATE::go, &FLANGE_STATE::g1, &FLANGE_STATE::h})
        for (const auto& [value, shown] : {std::pair{limit, false}, {above(limit), true}}) {
            FLANGE_STATE s = weld_neck_design();
            s.type = LAP_JOINT; // keeps its hub
            s.*item = value;
            Int designFlag = -1;
            SELECT_FLANGE_GEOMETRY(s, designFlag);
            EXPECT_EQ(take_lines().size(), shown ? 9u : 6u);
        }
}

TEST_F(DesignSelection, GasketBoreOfJustTheFaceStays) {
    FLANGE_STATE s = weld_neck_design();
    s.Fid = 28.0f; // the face ends at 28 + 1
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.Fod, 29.0f);
    EXPECT_EQ(s.Gi, 29.0f);
}

TEST_F(DesignSelection, SeatingStressOfMoreThanAThousandthAsksForWidth) {
    FLANGE_STATE s = weld_neck_design();
    s.y = above(0.001f);
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_GT(s.Go, 1.0e6f);
    s = weld_neck_design();
    s.y = 0.0f, s.Go = s.GoC = s.Gi; // no width given, none required
    s.g1 = s.go = 0.0f, s.type = LAP_JOINT;
    designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.Go, 29.0f);
}

// The selection in double precision, over random flanges. Where a number that is cut or rounded up
// is next to a whole one, single precision may fall on the other side: those are passed over.
class DoubleSelection {
  public:
    explicit DoubleSelection(const FLANGE_STATE& s) {
        const auto d = [](Real x) { return static_cast<double>(x); };
        const bool slipOn = s.type == INTEGRAL_SLIP_ON || s.type == LOOSE_SLIP_ON;
        go = slipOn ? sixteenth(d(s.Peq) * d(s.B) / d(s.Sfo)) + d(s.ci) : d(s.go);
        g1 = d(s.g1);
        h = d(s.h);
        if (slipOn || s.type == INTEGRAL_WELD_NECK || s.type == REVERSE_WELD_NECK) {
            g1 = go > 1.5 ? 1.5 * go : 2 * go;
            h = sixteenth(3 * (g1 - go));
        }
        const double nTrial = (cut(d(s.B) / 3.6) + (s.C > 38.0f ? 3 : 2)) * 4;
        // diameter, root area, Bmin, Rmin, Rmin of rings, Emin
        static constexpr double SIZES[][6] = {{0.5, 0.126, 1.25, 0.8125, 0.75, 0.625},
                                              {0.625, 0.202, 1.5, 0.9375, 0.875, 0.75},
                                              {0.75, 0.302, 1.75, 1.125, 1.0, 0.8125},
                                              {1.0, 0.551, 2.25, 1.375, 1.25, 1.0625}};
        const double* size = SIZES[3];
        for (const auto& candidate : SIZES)
            if (candidate[1] >= d(s.Am) / nTrial) {
                size = candidate;
                break;
            }
        const bool ring = s.type == INTEGRAL_RING || s.type == LOOSE_RING;
        const double R = size[ring ? 4 : 3];
        dh = size[0];
        const double nRoot = cut(d(s.Am) / (4 * size[1]) + 1) * 4;
        const double Chub = sixteenth(d(s.B) + 2 * g1 + 2 * R);
        const double Bmax = 2 * dh + 6 * d(s.t) / (d(s.m) + 0.5);
        const double nSpace = cut(2 * std::numbers::pi * Chub / (4 * Bmax)) * 4;
        n = std::max(nRoot, nSpace);
        const double GoC = d(s.GoC), GiC = d(s.GiC);
        const double Nmin = n * size[1] * d(s.Sa) / (d(s.y) * std::numbers::pi * (GoC + GiC));
        const double Nuse = std::max(Nmin, (GoC - GiC) / 2);
        const double Nnew = std::max(Nuse, (Nuse + (d(s.B) + 2 * g1 - GiC) / 2) / 2);
        Go = sixteenth(d(s.Gi) + 2 * Nnew);
        Fod = d(s.Fid) + (Go - d(s.Gi));
        const double Cgasket = std::max(Go, Fod) + dh + 0.125;
        const double Cspace = sixteenth(n * size[2] / std::numbers::pi);
        C = std::max(Cgasket, Cspace);
        if (ring) C = std::max(C, sixteenth(d(s.B) + 2 * d(s.tw) + 2 * R));
        if (s.type == REVERSE_WELD_NECK) C = std::min(C, d(s.A) - 2 * size[5]);
        if (!ring && s.type < BLIND) C = std::max(C, Chub);
        A = s.type == REVERSE_WELD_NECK ? d(s.A) : C + 2 * size[5];
    }
    double go = 0, g1 = 0, h = 0, dh = 0, n = 0, Go = 0, Fod = 0, C = 0, A = 0;
    bool doubtful = false;

  private:
    double cut(double x) {
        if (std::fabs(x - std::round(x)) < 1e-5 * std::max(1.0, std::fabs(x))) doubtful = true;
        return std::trunc(x);
    }
    double sixteenth(double x) { return cut(x * 16 + 0.99) / 16; }
};

TEST_F(DesignSelection, SecondWayInDouble) {
    std::mt19937 random(3100);
    const auto draw = [&](double low, double high) {
        return static_cast<Real>(std::uniform_real_distribution(low, high)(random));
    };
    int compared = 0;
    for (int round = 0; round < 20000; ++round) {
        FLANGE_STATE s = weld_neck_design();
        s.type = 1 + round % 8;
        s.B = draw(8, 60), s.go = draw(0.2, 2.5), s.g1 = draw(0.2, 3), s.h = draw(1, 4);
        s.Peq = draw(50, 900), s.C = draw(20, 60), s.A = s.B + draw(4, 20);
        s.t = draw(0.5, 8), s.m = draw(0, 6), s.Am = draw(0.5, 60), s.tw = draw(0, 3);
        s.y = draw(500, 20000), s.Gi = s.GiC = s.B + draw(0, 6);
        s.Go = s.GoC = s.Gi + draw(0.1, 3), s.Fid = s.Gi - draw(-0.05, 0.5);
        const DoubleSelection expected(s);
        if (expected.doubtful) continue;
        ++compared;
        Int designFlag = -1;
        LINE_COUNT = 0;
        SELECT_FLANGE_GEOMETRY(s, designFlag);
        ASSERT_NEAR(s.go, expected.go, 1e-5) << round;
        ASSERT_NEAR(s.g1, expected.g1, 1e-5) << round;
        ASSERT_NEAR(s.h, expected.h, 1e-5) << round;
        ASSERT_NEAR(s.dh, expected.dh, 1e-6) << round;
        ASSERT_EQ(s.nBolts, expected.n) << round;
        ASSERT_NEAR(s.Go, expected.Go, 1e-4) << round;
        ASSERT_NEAR(s.Fod, expected.Fod, 1e-4) << round;
        ASSERT_NEAR(s.C, expected.C, 1e-4) << round;
        ASSERT_NEAR(s.A, expected.A, 1e-4) << round;
    }
    EXPECT_GT(compared, 10000);
}

TEST_F(DesignSelection, WithoutABoltFile) {
    no_bolt_file();
    FLANGE_STATE s = weld_neck_design();
    Int designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.dh, 0.0f);
    // 2 pi 27.5 / (4 * 2.0294) = 21.3: the spacing alone decides.
    EXPECT_EQ(s.nBolts, 84);
    EXPECT_EQ(s.Ab, 0.0f);
    s = weld_neck_design();
    s.Am = 0.0f;
    s.t = NOT_A_NUMBER;
    designFlag = -1;
    SELECT_FLANGE_GEOMETRY(s, designFlag);
    EXPECT_EQ(s.nBolts, 0);
}

TEST_F(DesignSelection, AnyInputIsCarriedThrough) {
    for (const Real x : {NOT_A_NUMBER, UNBOUNDED, -UNBOUNDED, 0.0f, -1.0e30f, 3.0e38f}) {
        for (Real FLANGE_STATE::*item : std::initializer_list<Real FLANGE_STATE::*>{
                 &FLANGE_STATE::B, &FLANGE_STATE::C, &FLANGE_STATE::t, &FLANGE_STATE::Am,
                 &FLANGE_STATE::go, &FLANGE_STATE::Sfo, &FLANGE_STATE::m, &FLANGE_STATE::GiC}) {
            FLANGE_STATE s = weld_neck_design();
            s.type = INTEGRAL_SLIP_ON;
            s.*item = x;
            Int designFlag = -1;
            SELECT_FLANGE_GEOMETRY(s, designFlag);
            EXPECT_EQ(designFlag, 0);
            EXPECT_EQ(s.nBolts % 4, 0);
        }
    }
}

} // namespace
} // namespace tarvane
