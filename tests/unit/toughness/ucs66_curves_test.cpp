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

TEST(Ucs66Table, TellingRows) {
    struct {
        Int row;
        Real thickness, A, B, C, D;
    } const rows[] = {
        {0, 0.25f, 18.0f, -20.0f, -55.0f, -55.0f}, {4, 0.5f, 32.0f, -7.0f, -32.0f, -55.0f},
        {12, 1.0f, 68.0f, 31.0f, -3.0f, -30.0f},   {28, 2.0f, 99.0f, 63.0f, 26.0f, -4.0f},
        {60, 4.0f, 117.0f, 89.0f, 52.0f, 23.0f},   {92, 6.0f, 120.0f, 104.0f, 66.0f, 39.0f},
    };
    for (const auto& row : rows) {
        const UCS66_ROW& held = UCS66_TABLE[row.row];
        EXPECT_EQ(held.thickness, row.thickness);
        EXPECT_EQ(held.curve[0], row.A);
        EXPECT_EQ(held.curve[1], row.B);
        EXPECT_EQ(held.curve[2], row.C);
        EXPECT_EQ(held.curve[3], row.D);
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
// at 3/8 in and rises 15 F to the next row: up to 3/4 in its polynomial lies as much as 5.1 F below the
// figure. Curve D is held at -55 F up to 9/16 in, where the figure stands at -51 F, and its polynomial
// takes until 11/16 in to meet it. Behind these bends no row is further off than 2.8 F.
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
    EXPECT_TRUE(UCS66_NEARER_ROW(CURVE_D, 4.0f, 60, T)); // the row behind the last one searched
    EXPECT_EQ(T, 23.0f);
    T = 7.0f;
    EXPECT_FALSE(UCS66_NEARER_ROW(CURVE_D, 4.0001f, 60, T));
    EXPECT_FALSE(UCS66_NEARER_ROW(CURVE_D, NAN, 60, T));
    EXPECT_EQ(T, 7.0f);
}

} // namespace
} // namespace tarvane
