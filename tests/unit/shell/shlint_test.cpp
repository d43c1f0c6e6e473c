// The dispatcher: which element, which minimum, what is written.
#include "shell_fixture.h"

namespace tarvane {
namespace {

using namespace shell_test;

class Shlint : public ShellTest {};

constexpr Int ALL[] = {CYLINDER, ELLIPTICAL, TORISPHERICAL, SPHERE, CONE, FLAT_HEAD_ELEMENT};

TEST_F(Shlint, AnotherElementWritesNothing) {
    C_ONE_SIXTEENTH = 0.5f;
    for (const Int code :
         {0, 7, -1, std::numeric_limits<Int>::max(), std::numeric_limits<Int>::min()}) {
        Shell e = element(CYLINDER);
        e.Element = code;
        e.L = 3.0f, e.SyCold = 4.0f, e.Sy = 30000.0f;
        e.calculate();
        for (const Real untouched :
             {e.Treq, e.MAWP, e.MAPnc, e.Stress, e.TreqRaw, e.T14f, e.MAWP14f, e.MAPnc14f})
            EXPECT_EQ(untouched, UNTOUCHED);
        EXPECT_EQ(e.L, 3.0f);
        EXPECT_EQ(e.SyCold, 4.0f);
        EXPECT_EQ(e.Status14f, -77);
    }
    EXPECT_EQ(C_ONE_SIXTEENTH, 0.5f);
}

TEST_F(Shlint, LowThicknessesAreRaisedTheRawOneIsNot) {
    write_file("system", "VIII-1_Matls_By_Table.txt", "[UCS-23]\nSA-516 70\n[END]\n");
    const struct {
        Int Service;
        const char* name;
        Real inch, metric;
    } cases[] = {{0, "SA-516 70", 0.0625f, 0.05905512f},
                 {1, "SA-516 70", 0.09375f, 0.098425195f},
                 {1, "SA-240 304", 0.0625f, 0.05905512f},
                 {2, "SA-240 304", 0.25f, 0.23622048f},
                 {3, "SA-516 70", 0.0625f, 0.05905512f}};
    for (const Int code : ALL)
        for (const auto& given : cases)
            for (const Int metric : {0, 1}) {
                METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = metric;
                Shell e = element(code);
                e.P = 0.05f, e.Service = given.Service, e.MaterialName = given.name;
                e.calculate();
                EXPECT_LT(e.TreqRaw, 0.05f);
                EXPECT_GT(e.TreqRaw, 0.0f);
                EXPECT_EQ(e.Treq, metric == 1 ? given.metric : given.inch)
                    << given.Service << given.name;
            }
}

TEST_F(Shlint, AThicknessAboveTheMinimumStands) {
    for (const Int code : ALL) {
        Shell e = element(code);
        e.P = 500.0f, e.Service = 2;
        e.calculate();
        ASSERT_GT(e.Treq, 0.25f);
        EXPECT_EQ(e.Treq, e.TreqRaw);
    }
}

TEST_F(Shlint, WithoutTheListThereIsNoMinimumOfTheService) {
    Shell e = element(CYLINDER);
    e.P = 0.05f, e.Service = 1;
    EXPECT_EQ(e.calculate().Treq, 0.0625f);
}

TEST_F(Shlint, OnlyAnEllipseWritesTheCrownRadius) {
    for (const Int code : ALL) {
        Shell e = element(code);
        e.L = 40.0f;
        e.calculate();
        EXPECT_EQ(e.L, code == ELLIPTICAL ? (0.31f * 2.0f + 0.16f + 0.03f * 4.0f) * 48.0f : 40.0f);
    }
}

TEST_F(Shlint, DivisionByZeroGivesWhatTheArithmeticGives) {
    Shell e = element(CYLINDER);
    e.t = 0.0f;
    e.calculate();
    EXPECT_EQ(e.MAWP, 0.0f);
    EXPECT_TRUE(std::isinf(e.Stress));
    e = element(FLAT_HEAD_ELEMENT);
    e.D = 0.0f;
    EXPECT_TRUE(std::isinf(e.calculate().MAWP));
    e = element(CONE);
    e.alpha = NOT_A_NUMBER;
    EXPECT_TRUE(std::isnan(e.calculate().Treq));
}

TEST_F(Shlint, NoCallRemembersAnother) {
    for (const Int first : ALL)
        for (const Int second : ALL) {
            Shell alone = element(second);
            alone.Sy = 30000.0f, alone.t = 0.08f;
            Shell behind = alone;
            alone.calculate();
            Shell other = element(first);
            other.Sy = 20000.0f, other.D = 90.0f;
            other.calculate();
            behind.calculate();
            EXPECT_EQ(alone.Treq, behind.Treq);
            EXPECT_EQ(alone.MAWP, behind.MAWP);
            EXPECT_EQ(alone.MAPnc, behind.MAPnc);
            EXPECT_EQ(alone.Stress, behind.Stress);
        }
}

} // namespace
} // namespace tarvane
