#include "openings/flat_head_openings.h"
#include "shell_fixture.h"

namespace tarvane {
namespace {

using namespace shell_test;

class FlatPlateTest : public ShellTest {
  protected:
    Shell e = element(FLAT_HEAD_ELEMENT);
    FlatPlateTest() {
        e.P = 90.0f, e.S = 17500.0f, e.Sa = 20000.0f, e.E = 0.85f;
        e.D = 24.0f, e.t = 1.25f, e.c = 0.125f, e.u = 0.05f, e.C = 0.33f;
    }
    ~FlatPlateTest() override { UG39_VIOLATION = false; }

    // UG-34(c)(2) with span d, shape Z, factor F.
    void expect(double d, double Z, double F = 1, double C = 0.33) const {
        const double P = 90, SE = 17500 * 0.85, t = 1.25, c = 0.125, tc = t - c - 0.05;
        const double dc = e.Outside == 0 ? d + 2 * c : d;
        const double x = tc / (F * dc);
        const double xMAWP = e.Outside == 0 ? x : (t - c) / (F * d);
        const double y = t / (F * d);
        EXPECT_NEAR(e.TreqRaw, F * dc * std::sqrt(Z * C * P / SE), 3e-6);
        EXPECT_NEAR(e.MAWP, xMAWP * xMAWP * SE / (C * Z), 1e-3);
        EXPECT_NEAR(e.MAPnc, y * y * 20000 * 0.85 / (C * Z), 1e-3);
        EXPECT_NEAR(e.Stress, Z * C * P / (x * x * 0.85), 0.1);
    }
};

TEST_F(FlatPlateTest, Circular) {
    e.calculate();
    expect(24, 1);
}

TEST_F(FlatPlateTest, OutsideDimensionsKeepTheToleranceInTheMawp) {
    e.Outside = 1;
    e.calculate();
    expect(24, 1);
    e.D2 = 40.0f;
    e.calculate();
    expect(24, 3.4 - 2.4 * 24.25 / 40.25);
}

TEST_F(FlatPlateTest, NonCircularTakesTheShortSpan) {
    for (const auto& [D, D2] : {std::pair{24.0f, 40.0f}, {40.0f, 24.0f}}) {
        e.D = D, e.D2 = D2;
        e.calculate();
        expect(24, 3.4 - 2.4 * 24.25 / 40.25);
    }
}

TEST_F(FlatPlateTest, EqualSpansAreCircular) {
    e.D2 = e.D;
    e.calculate();
    expect(24, 1);
}

TEST_F(FlatPlateTest, TheShapeFactorEndsAtTwoAndAHalf) {
    // Z = 2.5 at dmin/dmax = 0.375; with corrosion (24 + .25)/(x + .25) = .375.
    const Real limit = 24.25f / 0.375f - 0.25f;
    e.D2 = limit * 0.99f;
    e.calculate();
    expect(24, 3.4 - 2.4 * 24.25 / (double(e.D2) + 0.25));
    EXPECT_LT(3.4 - 2.4 * 24.25 / (double(e.D2) + 0.25), 2.5);
    for (const Real longer : {1.01f, 3.0f, 100.0f}) {
        e.D2 = limit * longer;
        e.calculate();
        expect(24, 2.5);
    }
}

TEST_F(FlatPlateTest, ANegativeSecondSpanIsNotNone) {
    e.D2 = -1.0f; // dmin -1, dmax 24
    e.calculate();
    EXPECT_NEAR(e.TreqRaw, (-1 + 0.25) * std::sqrt(2.5 * 0.33 * 90 / (17500 * 0.85)), 1e-5);
}

TEST_F(FlatPlateTest, OneOpeningDoublesC) {
    e.d1 = 4.0f, e.edge1 = 10.0f;
    e.calculate();
    expect(24, 1, 1, 0.66);
    EXPECT_EQ(e.C, 0.33f);
    e.C = 0.5f; // 2 C above its limit
    e.calculate();
    expect(24, 1, 1, 0.75);
    e.openingMaterial = 5.9f; // the whole number counts
    e.calculate();
    expect(24, 1, 1, 0.5);
    e.openingMaterial = NOT_A_NUMBER;
    e.calculate();
    expect(24, 1, 1, 0.75);
}

TEST_F(FlatPlateTest, OpeningsCloseTogetherBringTheFactorH) {
    e.d1 = 3.0f, e.d2 = 2.0f, e.pitch = 4.0f, e.edge1 = e.edge2 = 5.0f;
    e.calculate();
    // e = (4 - 2.5)/4, h = sqrt(0.5/e)
    expect(24, 1, std::sqrt(0.5 / 0.375), 0.66);
}

TEST_F(FlatPlateTest, EitherOpeningAsksForTheCheck) {
    for (const auto& [d1, d2, asked] : {std::tuple{0.0f, 0.0f, false},
                                        {0.01f, 0.0f, true},
                                        {0.0f, 0.01f, true},
                                        {-1.0f, -1.0f, false}}) {
        e.d1 = d1, e.d2 = d2, e.pitch = 9.0f, e.edge1 = e.edge2 = 9.0f;
        e.calculate();
        expect(24, 1, 1, asked ? 0.66 : 0.33);
    }
}

TEST_F(FlatPlateTest, TheOpeningsAreHeldAgainstTheLongSpan) {
    e.d1 = 15.0f, e.edge1 = 10.0f, e.D2 = 40.0f; // below 20, above 12
    e.calculate();
    EXPECT_FALSE(UG39_VIOLATION);
    e.D2 = 0.0f;
    e.calculate();
    EXPECT_TRUE(UG39_VIOLATION);
}

TEST_F(FlatPlateTest, TheCheckWritesNothingAndTurnsTheReportOn) {
    report_to_store();
    for (const Int entry : {0, 1, 3}) {
        IWRITE = entry;
        e.d1 = 0.0f;
        e.calculate();
        EXPECT_EQ(IWRITE, entry);
        e.d1 = 15.0f;
        e.calculate();
        EXPECT_EQ(IWRITE, 1);
    }
    EXPECT_EQ(LINE_COUNT, 0);
}

} // namespace
} // namespace tarvane
