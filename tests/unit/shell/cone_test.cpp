#include "shell_fixture.h"

namespace tarvane {
namespace {

using namespace shell_test;

class ConeTest : public ShellTest {
  protected:
    Shell e = element(CONE);
    ConeTest() {
        e.P = 120.0f, e.Sa = 20000.0f, e.S = 17500.0f, e.E = 0.85f;
        e.D = 60.0f, e.t = 0.625f, e.c = 0.125f, e.u = 0.02f, e.alpha = 30.0f;
    }
};
const double CA = std::cos(3.14159265358979 / 6);

TEST_F(ConeTest, InsideDimensions) {
    e.calculate();
    const double tc = 0.625 - 0.125 - 0.02, cc = 0.125 / CA, Dc = 60 + 2 * cc, SE = 17500 * 0.85;
    EXPECT_NEAR(e.TreqRaw, 120 * Dc / (2 * CA * (SE - 0.6 * 120)), 2e-6);
    EXPECT_NEAR(e.MAWP, 2 * SE * tc * CA / (Dc + 1.2 * tc * CA), 5e-4);
    EXPECT_NEAR(e.MAPnc, 2 * 17000 * 0.625 * CA / (60 + 1.2 * 0.625 * CA), 5e-4);
    EXPECT_NEAR(e.Stress, 120 * (Dc + 1.2 * tc * CA) / (2 * 0.85 * tc * CA), 5e-2);
}

TEST_F(ConeTest, OutsideDimensions) {
    e.Outside = 1;
    e.calculate();
    const double tc = 0.625 - 0.125 - 0.02, Dc = 60 - 2 * 0.02 / CA, SE = 17500 * 0.85;
    EXPECT_NEAR(e.TreqRaw, 120 * Dc / (2 * CA * (SE + 0.4 * 120)), 2e-6);
    EXPECT_NEAR(e.MAWP, 2 * SE * tc * CA / (Dc - 0.8 * tc * CA), 5e-4);
    EXPECT_NEAR(e.MAPnc, 2 * 17000 * 0.625 * CA / (60 - 0.8 * 0.625 * CA), 5e-4);
    EXPECT_NEAR(e.Stress, 120 * (Dc - 0.8 * tc * CA) / (2 * 0.85 * tc * CA), 5e-2);
}

// A torispherical head with the crown radius of the cone, L = D/(2 cos alpha).
struct Knuckle {
    double MAWP, MAPnc, Stress;
};
Knuckle knuckle(double tk, double r, double shift) {
    const double tkc = tk - 0.125 - 0.02, SE = 17500 * 0.85;
    const double L = 60 / (2 * CA) - shift, Lk = L + 0.125;
    const double Mk = (std::sqrt(Lk / (r + 0.125)) + 3) / 4, M = (std::sqrt(L / r) + 3) / 4;
    return {2 * SE * tkc / (Mk * Lk + 0.2 * tkc), 2 * 17000 * tk / (M * L + 0.2 * tk),
            120 * (Mk * Lk + 0.2 * tkc) / (2 * 0.85 * tkc)};
}

TEST_F(ConeTest, AThinKnuckleGoverns) {
    const Real Treq = e.calculate().TreqRaw;
    e.k = 0.4f, e.r = 4.0f;
    for (const Int Outside : {0, 1}) {
        e.Outside = Outside;
        e.calculate();
        const Knuckle by = knuckle(0.4, 4, Outside == 0 ? 0 : 0.4);
        EXPECT_NEAR(e.MAWP, by.MAWP, 1e-3);
        EXPECT_NEAR(e.MAPnc, by.MAPnc, 1e-3);
        EXPECT_NEAR(e.Stress, by.Stress, 1e-1);
        EXPECT_EQ(e.TreqRaw == Treq, Outside == 0); // not affected by the knuckle
    }
}

TEST_F(ConeTest, AThickKnuckleChangesNothing) {
    const Shell bare = Shell(e).calculate();
    e.k = 3.0f, e.r = 4.0f;
    e.calculate();
    EXPECT_EQ(e.MAWP, bare.MAWP);
    EXPECT_EQ(e.MAPnc, bare.MAPnc);
    EXPECT_EQ(e.Stress, bare.Stress);
}

TEST_F(ConeTest, AKnuckleNeedsARadiusAndAThickness) {
    const Real bare = e.calculate().MAWP;
    const struct {
        Real r, tk;
        bool counts;
    } cases[] = {{0.001f, 0.3f, false},
                 {above(0.001f), 0.3f, true},
                 {4.0f, 0.001f, false},
                 {4.0f, above(0.001f), true},
                 {0.0f, 0.0f, false}};
    for (const auto& given : cases) {
        e.r = given.r, e.k = given.tk;
        EXPECT_EQ(e.calculate().MAWP != bare, given.counts) << given.r << " " << given.tk;
    }
}

TEST_F(ConeTest, WithoutAKnucklePressuresEndBelowTenMillion) {
    e.S = e.Sa = 1.0e12f;
    e.calculate();
    EXPECT_EQ(e.MAWP, 9999999.0f);
    EXPECT_EQ(e.MAPnc, 9999999.0f);
    e.P = -100.0f; // a stress below zero is replaced by 0.0
    EXPECT_EQ(e.calculate().Stress, 0.0f);
}

TEST_F(ConeTest, ACylinderIsAConeOfNoAngle) {
    Shell cylinder = e;
    cylinder.Element = CYLINDER;
    cylinder.calculate();
    e.alpha = 0.0f;
    e.calculate();
    EXPECT_NEAR(e.TreqRaw, cylinder.TreqRaw, 1e-7);
    EXPECT_NEAR(e.MAWP, cylinder.MAWP, 1e-4);
    EXPECT_NEAR(e.MAPnc, cylinder.MAPnc, 1e-4);
    EXPECT_NEAR(e.Stress, cylinder.Stress, 1e-2);
}

TEST_F(ConeTest, OutsideFormsAgreeWithInsideForms) {
    e.u = e.c = 0.0f;
    Shell outside = e;
    outside.Outside = 1;
    outside.D = Real(60.0 + 2 * 0.625 * CA); // both at one cut across the axis
    e.calculate(), outside.calculate();
    EXPECT_NEAR(e.MAWP, outside.MAWP, 3e-6f * e.MAWP);
    EXPECT_NEAR(e.MAPnc, outside.MAPnc, 3e-6f * e.MAPnc);
    EXPECT_NEAR(e.Stress, outside.Stress, 3e-6f * e.Stress);
}

} // namespace
} // namespace tarvane
