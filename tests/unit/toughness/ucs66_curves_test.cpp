// Fig. UCS-66: the table against the polynomials, the curve equations, and its own lookups.
#include "mdmt_fixture.h"

#include <cstdio>

namespace tarvane {
namespace {

// Fig. UCS-66 ends below; thin parts keep the lowest value of curves C and D.
double within_figure(Int Curve, double t, double T) {
    constexpr double LOWEST[] = {18.0, -20.0, -55.0, -55.0};
    if ((Curve == CURVE_C && t <= 0.375) || (Curve == CURVE_D && t <= 0.5625)) return -55.0;
    return std::max(T, LOWEST[Curve - CURVE_A]);
}

// The equations of the curves as the figure's later editions print them, t in inches, T in F.
double curve_equation(Int Curve, double t) {
    const double r = std::sqrt(t);
    switch (Curve) {
    case CURVE_A:
        if (t <= 0.394) return 18.0;
        return (-76.911 + 284.85 * t - 27.56 * t * t) / (1.0 + 1.7971 * t - 0.17887 * t * t);
    case CURVE_B:
        return std::max(-20.0, -135.79 + 171.56 * r + 103.63 * t - 172.0 * t * r + 73.737 * t * t -
                                   10.535 * t * t * r);
    case CURVE_C:
        return std::max(-55.0, 101.29 - 255.5 / t + 287.86 / (t * t) - 196.42 / (t * t * t) +
                                   69.457 / std::pow(t, 4) - 9.8082 / std::pow(t, 5));
    default:
        if (t < 0.5) return -55.0;
        return std::max(-55.0, -92.965 + 94.065 * t - 39.812 * t * t + 9.6838 * t * t * t -
                                   1.1698 * std::pow(t, 4) + 0.054687 * std::pow(t, 5));
    }
}

TEST(Ucs66Table, RowsRiseBySixteenths) {
    for (Int i = 0; i < UCS66_ROWS; ++i)
        EXPECT_EQ(UCS66_TABLE[i].thickness, 0.25f + 0.0625f * static_cast<Real>(i)) << i;
}

// Table UCS-66 in inches and degrees Fahrenheit, row by row.
struct TableRow {
    Real thickness, A, B, C, D;
};
// clang-format off
constexpr TableRow PRINTED[] = {
    {0.2500f, 18.0f, -20.0f, -55.0f, -55.0f},
    {0.3125f, 18.0f, -20.0f, -55.0f, -55.0f},
    {0.3750f, 18.0f, -20.0f, -55.0f, -55.0f},
    {0.4375f, 25.0f, -13.0f, -40.0f, -55.0f},
    {0.5000f, 32.0f, -7.0f, -32.0f, -55.0f},
    {0.5625f, 37.0f, -1.0f, -26.0f, -51.0f},
    {0.6250f, 43.0f, 5.0f, -22.0f, -48.0f},
    {0.6875f, 48.0f, 10.0f, -18.0f, -45.0f},
    {0.7500f, 53.0f, 15.0f, -15.0f, -42.0f},
    {0.8125f, 57.0f, 19.0f, -12.0f, -38.0f},
    {0.8750f, 61.0f, 23.0f, -9.0f, -36.0f},
    {0.9375f, 65.0f, 27.0f, -6.0f, -33.0f},
    {1.0000f, 68.0f, 31.0f, -3.0f, -30.0f},
    {1.0625f, 72.0f, 34.0f, -1.0f, -28.0f},
    {1.1250f, 75.0f, 37.0f, 2.0f, -26.0f},
    {1.1875f, 77.0f, 40.0f, 2.0f, -23.0f},
    {1.2500f, 80.0f, 43.0f, 6.0f, -21.0f},
    {1.3125f, 82.0f, 45.0f, 8.0f, -19.0f},
    {1.3750f, 84.0f, 47.0f, 10.0f, -18.0f},
    {1.4375f, 86.0f, 49.0f, 12.0f, -16.0f},
    {1.5000f, 88.0f, 51.0f, 14.0f, -14.0f},
    {1.5625f, 90.0f, 53.0f, 16.0f, -13.0f},
    {1.6250f, 92.0f, 55.0f, 17.0f, -11.0f},
    {1.6875f, 93.0f, 57.0f, 19.0f, -10.0f},
    {1.7500f, 94.0f, 58.0f, 20.0f, -8.0f},
    {1.8125f, 96.0f, 59.0f, 22.0f, -7.0f},
    {1.8750f, 97.0f, 61.0f, 23.0f, -6.0f},
    {1.9375f, 98.0f, 62.0f, 24.0f, -5.0f},
    {2.0000f, 99.0f, 63.0f, 26.0f, -4.0f},
    {2.0625f, 100.0f, 64.0f, 27.0f, -3.0f},
    {2.1250f, 101.0f, 65.0f, 28.0f, -2.0f},
    {2.1875f, 102.0f, 66.0f, 29.0f, -1.0f},
    {2.2500f, 102.0f, 67.0f, 30.0f, 0.0f},
    {2.3125f, 103.0f, 68.0f, 31.0f, 1.0f},
    {2.3750f, 104.0f, 69.0f, 32.0f, 2.0f},
    {2.4375f, 105.0f, 70.0f, 33.0f, 3.0f},
    {2.5000f, 105.0f, 71.0f, 34.0f, 4.0f},
    {2.5625f, 106.0f, 71.0f, 35.0f, 5.0f},
    {2.6250f, 107.0f, 73.0f, 36.0f, 6.0f},
    {2.6875f, 107.0f, 74.0f, 37.0f, 7.0f},
    {2.7500f, 108.0f, 75.0f, 38.0f, 8.0f},
    {2.8125f, 108.0f, 76.0f, 39.0f, 8.0f},
    {2.8750f, 109.0f, 77.0f, 40.0f, 9.0f},
    {2.9375f, 109.0f, 77.0f, 40.0f, 10.0f},
    {3.0000f, 110.0f, 78.0f, 41.0f, 11.0f},
    {3.0625f, 111.0f, 79.0f, 42.0f, 12.0f},
    {3.1250f, 111.0f, 80.0f, 43.0f, 12.0f},
    {3.1875f, 112.0f, 80.0f, 44.0f, 13.0f},
    {3.2500f, 112.0f, 81.0f, 44.0f, 14.0f},
    {3.3125f, 113.0f, 82.0f, 45.0f, 15.0f},
    {3.3750f, 113.0f, 83.0f, 46.0f, 15.0f},
    {3.4375f, 114.0f, 83.0f, 46.0f, 16.0f},
    {3.5000f, 114.0f, 84.0f, 47.0f, 17.0f},
    {3.5625f, 114.0f, 85.0f, 48.0f, 17.0f},
    {3.6250f, 115.0f, 85.0f, 49.0f, 18.0f},
    {3.6875f, 115.0f, 86.0f, 49.0f, 19.0f},
    {3.7500f, 116.0f, 87.0f, 50.0f, 20.0f},
    {3.8125f, 116.0f, 87.0f, 51.0f, 21.0f},
    {3.8750f, 116.0f, 88.0f, 51.0f, 21.0f},
    {3.9375f, 117.0f, 89.0f, 52.0f, 22.0f},
    {4.0000f, 117.0f, 89.0f, 52.0f, 23.0f},
    {4.0625f, 117.0f, 90.0f, 53.0f, 23.0f},
    {4.1250f, 118.0f, 90.0f, 54.0f, 24.0f},
    {4.1875f, 118.0f, 91.0f, 54.0f, 25.0f},
    {4.2500f, 118.0f, 91.0f, 55.0f, 25.0f},
    {4.3125f, 118.0f, 92.0f, 55.0f, 26.0f},
    {4.3750f, 119.0f, 93.0f, 56.0f, 27.0f},
    {4.4375f, 119.0f, 93.0f, 56.0f, 27.0f},
    {4.5000f, 119.0f, 94.0f, 57.0f, 28.0f},
    {4.5625f, 119.0f, 94.0f, 57.0f, 29.0f},
    {4.6250f, 119.0f, 95.0f, 58.0f, 29.0f},
    {4.6875f, 119.0f, 95.0f, 58.0f, 30.0f},
    {4.7500f, 119.0f, 96.0f, 59.0f, 30.0f},
    {4.8125f, 119.0f, 96.0f, 59.0f, 31.0f},
    {4.8750f, 119.0f, 97.0f, 60.0f, 31.0f},
    {4.9375f, 119.0f, 97.0f, 60.0f, 32.0f},
    {5.0000f, 119.0f, 97.0f, 60.0f, 32.0f},
    {5.0625f, 119.0f, 98.0f, 61.0f, 33.0f},
    {5.1250f, 119.0f, 98.0f, 61.0f, 33.0f},
    {5.1875f, 119.0f, 98.0f, 62.0f, 34.0f},
    {5.2500f, 119.0f, 99.0f, 62.0f, 34.0f},
    {5.3125f, 119.0f, 99.0f, 62.0f, 35.0f},
    {5.3750f, 119.0f, 100.0f, 63.0f, 35.0f},
    {5.4375f, 119.0f, 100.0f, 63.0f, 36.0f},
    {5.5000f, 119.0f, 100.0f, 63.0f, 36.0f},
    {5.5625f, 119.0f, 101.0f, 64.0f, 36.0f},
    {5.6250f, 119.0f, 101.0f, 64.0f, 37.0f},
    {5.6875f, 119.0f, 102.0f, 64.0f, 37.0f},
    {5.7500f, 120.0f, 102.0f, 65.0f, 38.0f},
    {5.8125f, 120.0f, 103.0f, 65.0f, 38.0f},
    {5.8750f, 120.0f, 103.0f, 66.0f, 38.0f},
    {5.9375f, 120.0f, 104.0f, 66.0f, 39.0f},
    {6.0000f, 120.0f, 104.0f, 66.0f, 39.0f},
};
// clang-format on

TEST(Ucs66Table, EachRowAsPrinted) {
    ASSERT_EQ(std::size(PRINTED), std::size(UCS66_TABLE));
    for (std::size_t i = 0; i < std::size(PRINTED); ++i) {
        const TableRow& printed = PRINTED[i];
        const UCS66_ROW& held = UCS66_TABLE[i];
        EXPECT_EQ(held.thickness, printed.thickness) << i;
        EXPECT_EQ(held.curve[0], printed.A) << printed.thickness;
        EXPECT_EQ(held.curve[1], printed.B) << printed.thickness;
        EXPECT_EQ(held.curve[2], printed.C) << printed.thickness;
        EXPECT_EQ(held.curve[3], printed.D) << printed.thickness;
    }
}

TEST(Ucs66Table, WholeDegreesThatNeverFallWithThicknessNorRiseFromAToD) {
    for (Int i = 0; i < UCS66_ROWS; ++i)
        for (Int k = 0; k < 4; ++k) {
            const Real T = UCS66_TABLE[i].curve[k];
            EXPECT_EQ(T, std::round(T));
            const Real thinner = UCS66_TABLE[i > 0 ? i - 1 : 0].curve[k];
            const Real warmer = UCS66_TABLE[i].curve[k > 0 ? k - 1 : 0];
            EXPECT_GE(T, thinner) << "row " << i << " curve " << k;
            EXPECT_LE(T, warmer) << "row " << i << " curve " << k;
        }
}

// Every row within 1.75 F: a rounding of 0.5 F, and what the equations lose against the figure. The
// largest one is row 1-3/16 of curve C, where the figure's table repeats the value of 1-1/8.
TEST(Ucs66Table, FollowsTheEquationsOfItsCurves) {
    for (Int Curve = CURVE_A; Curve <= CURVE_D; ++Curve) {
        double worst = 0.0, at = 0.0;
        for (const UCS66_ROW& row : UCS66_TABLE) {
            const auto t = static_cast<double>(row.thickness);
            const double off = static_cast<double>(row.curve[Curve - 1]) - curve_equation(Curve, t);
            EXPECT_LE(std::fabs(off), 1.75) << Curve << " at " << t;
            if (std::fabs(off) > std::fabs(worst)) worst = off, at = t;
        }
        std::printf("curve %c: table less equation %+.2f F at %.4f in\n", 'A' + Curve - 1, worst,
                    at);
    }
}

// The polynomials have four terms for the whole figure, so they miss its bends. Curve C leaves -55 F
// at 3/8 in and rises 15 F to the next row: up to 3/4 in its polynomial is as much as 5.1 F below the
// figure. Curve D is at -55 F up to 9/16 in, where the figure is at -51 F, and its polynomial
// takes until 11/16 in to meet it. After these bends no row is further off than 2.8 F.
TEST(Ucs66Table, FollowsThePolynomialsAwayFromTheBends) {
    struct {
        Real bendEnds;
        double bend, elsewhere;
    } const limits[] = {{0.0f, 0.0, 2.8}, {0.0f, 0.0, 2.0}, {0.875f, 5.2, 2.0}, {0.625f, 4.1, 2.1}};
    for (Int Curve = CURVE_A; Curve <= CURVE_D; ++Curve) {
        const auto& limit = limits[Curve - 1];
        double worst = 0.0, at = 0.0, sum = 0.0;
        for (const UCS66_ROW& row : UCS66_TABLE) {
            const auto t = static_cast<double>(row.thickness);
            const auto T = static_cast<double>(UCS66_POLYNOMIAL(Curve, row.thickness));
            const double off =
                static_cast<double>(row.curve[Curve - 1]) - within_figure(Curve, t, T);
            EXPECT_LE(std::fabs(off),
                      row.thickness <= limit.bendEnds ? limit.bend : limit.elsewhere)
                << Curve << " at " << t;
            sum += off;
            if (std::fabs(off) > std::fabs(worst)) worst = off, at = t;
        }
        std::printf("curve %c: table less polynomial %+.2f F at %.4f in, mean %+.2f F\n",
                    'A' + Curve - 1, worst, at, sum / UCS66_ROWS);
        EXPECT_LE(std::fabs(sum / UCS66_ROWS), 1.0) << Curve;
    }
}

TEST(Ucs66Polynomial, TermsInTheirOrder) {
    // At 1 in every root is 1: T = a + b + c + d, at 64 in 4 and 8 are the roots.
    EXPECT_EQ(UCS66_POLYNOMIAL(CURVE_A, 1.0f), -233.72775f + -1.7701629f + -291.6195f + 593.48846f);
    EXPECT_EQ(UCS66_POLYNOMIAL(CURVE_B, 1.0f), -369.872f + 38.530518f + -654.8093f + 1017.1983f);
    EXPECT_EQ(UCS66_POLYNOMIAL(CURVE_C, 1.0f), -272.15765f + 11.707648f + -311.67166f + 567.2134f);
    EXPECT_EQ(UCS66_POLYNOMIAL(CURVE_D, 64.0f),
              -394.01306f + 44.855217f * 64.0f + -655.79626f * 8.0f + 975.344f * 4.0f);
}

TEST(Ucs66Interpolation, TakesTheValueOfARowAtTheRow) {
    for (Int i = 0; i < UCS66_ROWS; ++i)
        for (Int Curve = CURVE_A; Curve <= CURVE_D; ++Curve) {
            Real T = 7.0f;
            EXPECT_TRUE(UCS66_INTERPOLATED(Curve, UCS66_TABLE[i].thickness, T));
            EXPECT_EQ(T, UCS66_TABLE[i].curve[Curve - 1]) << i;
        }
}

TEST(Ucs66Interpolation, BetweenRowsAndOutside) {
    Real T = 7.0f;
    EXPECT_TRUE(UCS66_INTERPOLATED(CURVE_A, 0.96875f, T)); // half way from 65 to 68
    EXPECT_EQ(T, 66.5f);
    EXPECT_TRUE(UCS66_INTERPOLATED(CURVE_C, 0.390625f, T)); // a quarter of the way from -55 to -40
    EXPECT_EQ(T, -51.25f);
    T = 7.0f;
    for (const Real t : {0.2499f, 6.0001f, -1.0f, NAN, INFINITY, -INFINITY}) {
        EXPECT_FALSE(UCS66_INTERPOLATED(CURVE_B, t, T)) << t;
        EXPECT_EQ(T, 7.0f);
    }
}

TEST(Ucs66NearerRow, TiesGoToTheLowerRow) {
    Real T = 7.0f;
    EXPECT_TRUE(UCS66_NEARER_ROW(CURVE_B, 0.53125f, 60, T)); // in the middle of -7 and -1
    EXPECT_EQ(T, -7.0f);
    EXPECT_TRUE(UCS66_NEARER_ROW(CURVE_B, 0.5313f, 60, T));
    EXPECT_EQ(T, -1.0f);
    EXPECT_TRUE(UCS66_NEARER_ROW(CURVE_B, 0.5f, 60, T));
    EXPECT_EQ(T, -7.0f);
    EXPECT_TRUE(UCS66_NEARER_ROW(CURVE_D, 4.0f, 60, T)); // the row after the last one searched
    EXPECT_EQ(T, 23.0f);
    T = 7.0f;
    EXPECT_FALSE(UCS66_NEARER_ROW(CURVE_D, 4.0001f, 60, T));
    EXPECT_FALSE(UCS66_NEARER_ROW(CURVE_D, NAN, 60, T));
    EXPECT_EQ(T, 7.0f);
}

} // namespace
} // namespace tarvane
