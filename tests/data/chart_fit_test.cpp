// The fit of an external pressure chart into the row that the engine reads.
#include "chart_fit.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarvane::data {
namespace {

constexpr double E = 29.0e6;

// A straight part to A = 0.0005, then the points (log10(A), B) of a curve.
template <typename Curve>
std::vector<ChartPoint> table(std::initializer_list<double> a, const Curve& curve) {
    std::vector<ChartPoint> points = {{1.0e-5, 145.0}, {5.0e-4, 7250.0}};
    for (const double A : a)
        points.push_back({A, curve(std::log10(A))});
    return points;
}

TEST(ChartFit, ACurveThatReachesALevelIsFoundAgain) {
    // 16000 psi at A = 0.01, and 7250 on the line.
    const double k = (16000.0 - 7250.0) / std::pow(std::log10(0.01 / 0.0005), 2);
    const auto curve = [k](double x) { return 16000.0 - k * (x + 2.0) * (x + 2.0); };
    auto points = table({0.0008, 0.0012, 0.002, 0.004}, curve);
    points.push_back({0.01, 16000.0});
    points.push_back({0.1, 16000.0});
    const ChartRow row = fit_chart(E, points);
    EXPECT_NEAR(row.Amax, 0.01, 1.0e-7);
    EXPECT_EQ(row.Bmax, 16000.0);
    EXPECT_NEAR(row.Aelastic, 0.0005, 1.0e-8);
    EXPECT_LT(std::abs(worst_at_points(row, points).relative), 1.0e-6);
    for (double A = 1.0e-6; A < 0.0005; A *= 1.3)
        EXPECT_DOUBLE_EQ(B_of_row(row, A), 0.5 * E * A);
    for (double A = 0.0006; A < 0.01; A *= 1.1)
        EXPECT_NEAR(B_of_row(row, A), curve(std::log10(A)), 0.1) << A;
    EXPECT_EQ(B_of_row(row, 0.02), 16000.0);
}

// The level may be tabulated far after the place where the curve reaches it.
TEST(ChartFit, TheLevelBeginsWhereTheCurveReachesIt) {
    const auto curve = [](double x) { return 16000.0 - 6500.0 * (x + 2.2) * (x + 2.2); };
    auto points = table({0.0008, 0.001, 0.002, 0.004}, curve);
    points.push_back({0.05, 16000.0});
    points.push_back({0.1, 16000.0});
    const ChartRow row = fit_chart(E, points);
    EXPECT_NEAR(std::log10(row.Amax), -2.2, 1.0e-3);
    EXPECT_LT(std::abs(worst_at_points(row, points).relative), 1.0e-4);
}

TEST(ChartFit, ACurveThatRisesToItsEndIsFoundAgain) {
    const auto curve = [](double x) { return 41000.0 + 14000.0 * x + 1300.0 * x * x; };
    const auto points = table({0.0009, 0.002, 0.005, 0.02, 0.1}, curve);
    const ChartRow row = fit_chart(E, points);
    EXPECT_NEAR(row.c0, 41000.0, 1.0e-4);
    EXPECT_NEAR(row.c1, 14000.0, 1.0e-4);
    EXPECT_NEAR(row.c2, 1300.0, 1.0e-4);
    EXPECT_NEAR(row.Amax, 0.1, 1.0e-12);
    EXPECT_NEAR(row.Bmax, curve(-1.0), 1.0e-9);
}

// No quadratic is better than the one whose deviations change sign from point to point at one size.
TEST(ChartFit, TheWorstDeviationIsTheLeastPossible) {
    const double signs[] = {1.0, -1.0, 1.0, -1.0};
    const double lengths[] = {0.001, 0.003, 0.01, 0.05};
    const auto curve = [](double x) { return 30000.0 + 7000.0 * x + 200.0 * x * x; };
    std::vector<ChartPoint> points = {{1.0e-5, 145.0}, {5.0e-4, 7250.0}};
    for (std::size_t i = 0; i < 4; ++i) // curve / B - 1 = 0.02, -0.02, ...
        points.push_back({lengths[i], curve(std::log10(lengths[i])) / (1.0 + 0.02 * signs[i])});
    const ChartRow row = fit_chart(E, points);
    for (std::size_t i = 0; i < 3; ++i) // at the last point B is held to that point
        EXPECT_NEAR(B_of_row(row, points[2 + i].A) / points[2 + i].B - 1.0, 0.02 * signs[i], 1e-9);
    EXPECT_NEAR(row.c1, 7000.0, 1.0e-4);
}

TEST(ChartFit, ALevelAloneIsALevelAndTwoEndsAreALine) {
    const std::vector<ChartPoint> level = {{4.0e-4, 5800.0}, {0.1, 5800.0}};
    const ChartRow flat = fit_chart(E, level);
    EXPECT_NEAR(flat.Aelastic, 4.0e-4, 1.0e-12);
    for (const double A : {5.0e-4, 0.01, 0.2})
        EXPECT_EQ(B_of_row(flat, A), 5800.0);

    const std::vector<ChartPoint> ends = {{4.0e-4, 5800.0}, {4.0e-2, 11800.0}, {0.1, 11800.0}};
    const ChartRow line = fit_chart(E, ends);
    EXPECT_NEAR(B_of_row(line, 4.0e-3), 8800.0, 1.0e-6); // half way in log10(A)
    EXPECT_EQ(B_of_row(line, 0.05), 11800.0);
}

// Of three points that no quadratic meets at once, the best curve is above one.
TEST(ChartFit, BelowIsAboveNoPoint) {
    const std::vector<ChartPoint> points = {
        {7.65e-4, 11100.0}, {8.0e-4, 11400.0}, {9.0e-4, 11806.0}, {1.0e-3, 12300.0},
        {2.7e-3, 15900.0},  {2.5e-2, 17550.0}, {1.0e-1, 17550.0}};
    const ChartRow both = fit_chart(E, points), below = fit_chart(E, points, Side::below);
    double highest_of_both = 0.0, highest = -1.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        highest_of_both =
            std::max(highest_of_both, B_of_row(both, points[i].A) / points[i].B - 1.0);
        const double d = B_of_row(below, points[i].A) / points[i].B - 1.0;
        highest = std::max(highest, d);
        EXPECT_LE(d, 1.0e-6) << points[i].A;
        EXPECT_GE(d, -0.02) << points[i].A;
    }
    EXPECT_GT(highest_of_both, 0.001);
    EXPECT_NEAR(highest, 0.0, 1.0e-6); // no lower than it must be
}

TEST(ChartFit, PointsOnTheLine) {
    EXPECT_EQ(points_on_line(E, {{1.35e-5, 200.0}, {6.45e-4, 9400.0}, {7.0e-4, 9900.0}}), 2u);
    EXPECT_EQ(points_on_line(E, {{1.0e-5, 150.1}, {1.0e-4, 1460.0}}), 0u);
    EXPECT_EQ(points_on_line(E, {{1.0e-4, 1452.0}, {2.0e-4, 2935.0}}), 1u);
}

} // namespace
} // namespace tarvane::data
