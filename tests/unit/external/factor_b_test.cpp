#include "external/chart_method.h"

#include "tarvane/tarvane.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarvane {
namespace {

constexpr CHART_CURVE CURVE{.E = 2.0f,
                            .Aelastic = 0.0005f,
                            .Amax = 0.2f,
                            .Bmax = 1800.0f,
                            .c0 = 4000.0f,
                            .c1 = 1000.0f,
                            .c2 = 50.0f};

TEST(FactorB, IsHalfOfTheModulusTimesAOnTheStraightLine) {
    EXPECT_FLOAT_EQ(FACTOR_B(0.0001f, CURVE), 100.0f);
    EXPECT_FLOAT_EQ(FACTOR_B(0.0005f, CURVE), 500.0f); // its end belongs to it
    EXPECT_EQ(FACTOR_B(0.0f, CURVE), 0.0f);
    EXPECT_FLOAT_EQ(FACTOR_B(-0.0001f, CURVE), -100.0f);
}

TEST(FactorB, IsTheQuadraticInTheLogarithmBehindIt) {
    // 4000 + 1000 x + 50 x^2
    EXPECT_NEAR(FACTOR_B(0.001f, CURVE), 1450.0f, 0.01f);
    const Real just_behind = std::nextafter(0.0005f, 1.0f);
    const double x = std::log10(0.0005);
    EXPECT_NEAR(FACTOR_B(just_behind, CURVE), 4000.0 + 1000.0 * x + 50.0 * x * x, 0.01);
}

TEST(FactorB, IsNeverAboveTheTopOfTheCurve) {
    // The quadratic gives 2200 at 0.01 and 3050 at 0.1.
    EXPECT_EQ(FACTOR_B(0.01f, CURVE), 1800.0f);
    EXPECT_EQ(FACTOR_B(0.1f, CURVE), 1800.0f);
    EXPECT_EQ(FACTOR_B(0.2f, CURVE), 1800.0f);
    EXPECT_EQ(FACTOR_B(5.0f, CURVE), 1800.0f);
}

TEST(FactorB, IsLevelBehindTheLastA) {
    CHART_CURVE falling = CURVE;
    falling.c0 = 1000.0f; // 1000 + 1000 x + 50 x^2 is 50 at A = 0.1
    EXPECT_NEAR(FACTOR_B(0.1f, falling), 50.0f, 0.01f);
    EXPECT_LT(FACTOR_B(0.2f, falling), 400.0f); // the last A is still on the quadratic
    EXPECT_EQ(FACTOR_B(std::nextafter(0.2f, 1.0f), falling), 1800.0f);
}

TEST(FactorB, GivesNotANumberForOne) {
    EXPECT_TRUE(std::isnan(FACTOR_B(std::nanf(""), CURVE)));
    EXPECT_EQ(FACTOR_B(INFINITY, CURVE), 1800.0f);
}

TEST(FactorB, IsReachedThroughTheSurface) {
    for (const Real A : {0.0001f, 0.0005f, 0.001f, 0.003f, 0.1f, 1.0f}) {
        Real B = -1.0f;
        ::FACTOR_B(&A, &CURVE.E, &CURVE.Aelastic, &CURVE.Amax, &CURVE.Bmax, &CURVE.c0, &CURVE.c1,
                   &CURVE.c2, &B);
        EXPECT_EQ(B, FACTOR_B(A, CURVE)) << A;
    }
}

} // namespace
} // namespace tarvane
