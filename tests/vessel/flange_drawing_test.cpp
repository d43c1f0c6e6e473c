// Drawings of flanges: random geometries of each type.
#include "drawing/flange_drawing.h"
#include "drawing_lint.h"
#include "random_drawings.h"
#include "tarvane/tarvane.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarvane::vessel {
namespace {

// Valid, at odd proportions: bores of a quarter inch to 16 ft, rings and hubs thin and thick.
FlangeShape random_flange(int type, Chance& chance) {
    FlangeShape s;
    s.type = type;
    const double bore = chance.spread(0.25, 200);
    const double ring = std::clamp(bore / 2 * chance.spread(0.04, 8), 0.3, 50.0);
    s.A = bore + 2 * ring;
    if (type != TARVANE_BLIND) s.B = bore;
    s.t = ring * chance.spread(0.06, 4);
    s.ci = chance.one_in(3) ? ring * chance.between(0, 0.05) : 0;
    const double wall = ring * chance.between(0.02, 0.25);
    if (type != TARVANE_BLIND && type != TARVANE_LOOSE_REVERSE &&
        (type == TARVANE_INTEGRAL_WELD_NECK || type == TARVANE_REVERSE_WELD_NECK ||
         chance.one_in(2))) {
        s.g0 = wall;
        s.g1 = chance.one_in(4) ? wall : wall * chance.between(1, 1.8);
        s.h = s.g1 * chance.spread(0.1, 5);
    }
    if (type == TARVANE_LOOSE_REVERSE || (type != TARVANE_BLIND && chance.one_in(2))) s.wall = wall;
    if (chance.one_in(3)) s.tw = wall * chance.between(0.3, 1.5);

    // The bolts between the hub and the edge; of a reverse flange between the bore and the shell.
    const double hub = std::max(s.g1, wall);
    const double room = ring - hub;
    const double place = chance.between(0.35, 0.8);
    s.C = s.reverse() ? bore + 2 * room * place : bore + 2 * (hub + room * place);
    s.a = room * (1 - place) * chance.between(0.2, 1.2);
    s.bolts = 4 * (1 + static_cast<int>(chance.between(0, 30)));
    s.a = std::min(s.a, 0.8 * (s.C - bore) / 2);
    const double inside = (s.C - s.a - bore) / 2;
    s.Gi = bore + 2 * inside * chance.between(0, 0.6);
    s.Go = s.Gi + (bore + 2 * inside - s.Gi) * chance.between(0.1, 1);
    s.full_face = chance.one_in(6);
    if (s.full_face) s.Go = s.A;
    s.Fid = chance.one_in(2) ? s.Gi : bore;
    s.Fod = s.full_face ? s.A : s.Go + (s.C - s.a - s.Go) * chance.between(0, 1);
    s.tg = chance.one_in(8) ? 0 : chance.one_in(8) ? ring * chance.between(0, 0.3) : 0.0625;
    if (type == TARVANE_LAP_JOINT) {
        s.LjID = bore + (s.Gi - bore) * chance.between(0, 1);
        s.LjOD = s.Fod;
    }
    if (type == TARVANE_BLIND) {
        s.channel_cover = chance.one_in(2);
        if (s.channel_cover) s.tp = ring * chance.between(0, 0.4);
        if (chance.one_in(3)) s.openings = {s.Gi * 0.1, s.Gi * 0.05, s.Gi * 0.2};
        s.opening_factor = chance.one_in(3);
        if (chance.one_in(4)) s.long_span = 1.5 * s.Gi, s.short_span = s.Gi;
    }
    if (chance.one_in(3)) s.facing = "1c", s.w = ring * 0.01;
    if (chance.one_in(4)) s.ce = s.t * 0.01;
    s.splits = chance.one_in(4) ? 1 + chance.one_in(2) : 0;
    s.G = s.full_face ? s.C - 0.3 * (s.C - s.Gi) : s.Go - (s.Go - s.Gi) * chance.between(0.1, 0.9);
    s.hG = (s.C - *s.G) / 2;
    if (s.full_face) s.hG_outer = (s.A - s.C) / 4;
    if (type != TARVANE_BLIND) {
        const double end = s.reverse() ? s.A / 2 - hub / 2 : s.B / 2 + hub / 2;
        s.hD = s.C / 2 - end;
        s.hT = (s.C - (s.reverse() ? (s.A - 2 * wall + *s.G) / 2 : (bore + *s.G) / 2)) / 2;
    }
    return s;
}

std::vector<std::string> names_of(const FlangeShape& s) {
    std::vector<std::string> names = {"A", "C", "t", "Gi", "Go", "G", "Fid", "Fod", "hG"};
    if (s.tg > 0) names.push_back("tg");
    if (s.type != TARVANE_BLIND) names.insert(names.end(), {"B", "hT", "hD"});
    if (s.g1 > 0) names.insert(names.end(), {"h", "g0"});
    if (s.g1 > s.g0) names.push_back("g1");
    if (s.full_face) names.push_back("h'G");
    if (s.type == TARVANE_LAP_JOINT) names.insert(names.end(), {"LjID", "LjOD"});
    return names;
}

std::string described(const FlangeShape& s) {
    std::string text = "type " + std::to_string(s.type);
    for (const double value : {s.A, s.B, s.t, s.g0, s.g1, s.h, s.C, s.a, s.Go, s.Gi, s.Fod, s.Fid})
        text += ", " + std::to_string(value);
    return text;
}

class FlangeDrawings : public testing::TestWithParam<int> {};

TEST_P(FlangeDrawings, AreCleanAtAnyProportions) {
    const int type = GetParam();
    Chance chance(static_cast<unsigned>(type));
    int dropped = 0, bad = 0;
    for (int i = 0; i < GEOMETRIES && bad < 5; ++i) {
        const FlangeShape shape = random_flange(type, chance);
        const UnitSystem units = i % 2 == 0 ? us_units() : si_units();
        const auto drawn =
            alone(draw_flange(shape, "flange 1 (N1)", units, dimension_style(units, i % 6 == 1)));
        ASSERT_TRUE(drawn) << described(shape);
        const auto faults = lint_of(drawn->sheet, drawn->figure.width, drawn->figure.height);
        const auto gone = missing(*drawn, names_of(shape));
        EXPECT_EQ(first_of(faults), "") << described(shape) << " no. " << i;
        EXPECT_EQ(first_of(gone), "") << described(shape) << " no. " << i;
        bad += !faults.empty() || !gone.empty();
        dropped += !drawn->figure.dropped.empty();
    }
    // Room is rarely wanting.
    EXPECT_LE(dropped, GEOMETRIES / 20);
    RecordProperty("with_dropped_dimensions", dropped);
}

INSTANTIATE_TEST_SUITE_P(Types, FlangeDrawings, testing::Range(1, 10));

// What is corroded has its dashed line, or a word in the frame.
TEST_P(FlangeDrawings, ShowOrNameTheCorrosion) {
    Chance chance(static_cast<unsigned>(GetParam()) + 100);
    int lines = 0, named = 0;
    for (int i = 0; i < 40; ++i) {
        FlangeShape shape = random_flange(GetParam(), chance);
        const double wall = std::max(shape.g0, shape.wall);
        shape.ci = 0.4 * (wall > 0 && wall < shape.t ? wall : shape.t);
        if (chance.one_in(2)) shape.ci = shape.t * 0.005;
        const UnitSystem units = us_units();
        const auto drawn =
            alone(draw_flange(shape, "flange 1", units, dimension_style(units, false)));
        ASSERT_TRUE(drawn) << described(shape);
        bool dashed = false;
        for (const Stroke& stroke : drawn->sheet.lines())
            dashed = dashed || stroke.pen == DASHED;
        const std::string all = words(drawn->figure);
        const bool note = all.find("corrosion ci = ") != std::string::npos;
        EXPECT_EQ(all.find("Dashed: corroded by ci = ") != std::string::npos, dashed) << all;
        EXPECT_NE(dashed, note) << all;
        lines += dashed;
        named += note;
    }
    EXPECT_GT(named, 0);
    EXPECT_GT(lines, 0);
}

} // namespace
} // namespace tarvane::vessel
