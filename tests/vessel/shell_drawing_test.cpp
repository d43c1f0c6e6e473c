// Drawings of shells, heads and cones: random geometries of each kind.
#include "drawing/shell_drawing.h"
#include "drawing_lint.h"
#include "random_drawings.h"
#include "tarvane/tarvane.h"

#include <gtest/gtest.h>

namespace tarvane::vessel {
namespace {

// Walls from foil to blocks, flat and steep heads, cones of any angle.
ShellShape random_shell(int shape, Chance& chance) {
    ShellShape s;
    s.shape = shape;
    s.outside = chance.one_in(3);
    s.D = chance.spread(0.5, 400);
    s.t = s.D * chance.spread(0.0005, 0.5);
    s.ci = chance.one_in(2) ? s.t * chance.between(0, 0.9) : 0;
    s.Ut = chance.one_in(3) ? s.t * 0.1 : 0;
    if (shape == TARVANE_ELLIPTICAL_HEAD) s.depth = s.D * chance.between(0.15, 0.6);
    if (shape == TARVANE_TORISPHERICAL_HEAD) {
        s.r = chance.one_in(6) ? 0 : s.D * chance.between(0.02, 0.4);
        s.L = s.D / 2 + (s.D / 2) * chance.between(0.001, 2);
    }
    if (shape != TARVANE_CYLINDER && shape < TARVANE_CONE && chance.one_in(2))
        s.straight = s.D * chance.spread(0.005, 0.5);
    if (shape == TARVANE_CYLINDER && !chance.one_in(4)) s.length = s.D * chance.spread(0.05, 60);
    if (shape == TARVANE_CYLINDER && chance.one_in(2)) s.tangent = s.D * chance.spread(0.05, 60);
    if (shape == TARVANE_CONE) {
        s.alpha = chance.between(1, 75);
        if (chance.one_in(2)) s.r = s.D * chance.between(0.01, 0.3);
        if (s.r > 0 && chance.one_in(2)) s.tk = s.t * chance.between(0.8, 1.5);
        if (!chance.one_in(3)) s.Dsmall = (s.D - 2 * s.r) * chance.between(0.05, 0.95);
    }
    if (shape == TARVANE_FLAT_HEAD && chance.one_in(3)) s.D2 = 1.5 * s.D;
    return s;
}

class ShellDrawings : public testing::TestWithParam<int> {};

TEST_P(ShellDrawings, AreCleanAtAnyProportions) {
    const int kind = GetParam();
    Chance chance(static_cast<unsigned>(kind));
    int dropped = 0, bad = 0;
    for (int i = 0; i < GEOMETRIES && bad < 5; ++i) {
        const ShellShape s = random_shell(kind, chance);
        const UnitSystem units = i % 2 == 0 ? us_units() : si_units();
        const auto drawn =
            alone(draw_shell(s, "shell 1 (Drum)", units, dimension_style(units, i % 6 == 1)));
        const std::string what = "no. " + std::to_string(i) + ", D " + std::to_string(s.D) +
                                 ", t " + std::to_string(s.t) + ", ci " + std::to_string(s.ci) +
                                 ", L " + std::to_string(s.L) + ", r " + std::to_string(s.r) +
                                 ", alpha " + std::to_string(s.alpha) + ", length " +
                                 std::to_string(s.length);
        ASSERT_TRUE(drawn) << what;
        std::vector<std::string> names = {s.outside ? "Do" : "D"};
        if (s.depth > 0) names.push_back("h");
        if (s.straight > 0) names.push_back("sf");
        if (s.L > 0) names.push_back("L");
        if (s.r > 0) names.push_back("r");
        if (s.tangent > 0)
            names.push_back("Lt");
        else if (s.length > 0)
            names.push_back("L");
        if (s.Dsmall > 0) names.push_back("Ds");
        const auto faults = lint_of(drawn->sheet, drawn->figure.width, drawn->figure.height);
        const auto gone = missing(*drawn, names);
        EXPECT_EQ(first_of(faults), "") << what;
        EXPECT_EQ(first_of(gone), "") << what;
        EXPECT_NE(drawn->figure.svg.find("t = "), std::string::npos) << what;
        // Not made small by the dimensions and the detail beside it.
        const bool head = kind != TARVANE_CYLINDER && kind != TARVANE_CONE;
        EXPECT_GT(s.D / 2 * 25.4 * drawn->sheet.scale, head ? 12 : 0) << what;
        bad += !faults.empty() || !gone.empty();
        dropped += !drawn->figure.dropped.empty();
    }
    EXPECT_EQ(dropped, 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ShellDrawings, testing::Range(1, 7));

} // namespace
} // namespace tarvane::vessel
