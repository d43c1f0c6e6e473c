// Dimensions around a view.
#include "drawing/dimensions.h"
#include "drawing/font.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvane::vessel {
namespace {

Sheet strip(double length, const DimensionStyle& style, bool half = false) {
    Sheet sheet;
    draw_strip(sheet, style, Side::below, {0},
               {{.side = Side::below,
                 .label = "t = 10",
                 .unit = length / 10 * (half ? 2 : 1),
                 .from = 0,
                 .to = length,
                 .half = half}});
    return sheet;
}

// Arrow heads that are between the ends of a dimension, whose text is or is not.
TEST(Dimensions, HaveThreeFormsByTheirRoom) {
    const double text = text_width("t = 10", TEXT_SIZE);
    const auto form = [&](double length) {
        const Sheet sheet = strip(length, {});
        const Box& box = sheet.texts().at(0).box;
        int inside = 0;
        for (const Area& arrow : sheet.fills())
            inside += arrow.outline[1].x > 0 && arrow.outline[1].x < length;
        return std::pair(inside, box.left > 0 && box.right < length);
    };
    EXPECT_EQ(form(text + 8.1), std::pair(2, true));
    EXPECT_EQ(form(text + 7.9), std::pair(0, true));
    EXPECT_EQ(form(text + 2.1), std::pair(0, true));
    EXPECT_EQ(form(text + 1.9), std::pair(2, false)); // the arrows still have room
    EXPECT_EQ(form(7.4), std::pair(0, false));
}

TEST(Dimensions, OfAHalfViewHaveOneArrowAndPassTheAxis) {
    const Sheet sheet = strip(60, {}, true);
    EXPECT_EQ(sheet.fills().size(), 1U);
    EXPECT_EQ(sheet.fills()[0].outline[0].x, 60);
    double left = 0;
    for (const Stroke& stroke : sheet.lines())
        for (const Point p : stroke.points)
            left = std::min(left, p.x);
    EXPECT_LT(left, -2);
    EXPECT_DOUBLE_EQ(sheet.measures.at(0).drawn, 120);
}

TEST(Dimensions, AreWrittenInTheWayOfTheirUnits) {
    const DimensionStyle iso{.iso = true}, asme{.iso = false},
        comma{.iso = true, .decimal_comma = true};
    EXPECT_EQ(asme.number(0.0625, 25.4), ".0625");
    EXPECT_EQ(asme.number(12.5, 25.4), "12.5");
    EXPECT_EQ(asme.number(10, 25.4), "10");
    EXPECT_EQ(iso.number(0.5, 1), "0.5");
    EXPECT_EQ(iso.number(309.704, 1), "309.7");
    EXPECT_EQ(comma.number(1587.5, 1), "1587,5");
    EXPECT_EQ(iso.number(1.23456, 1000), "1.23456");
}

// Extension lines of ISO begin at the outline and its texts are above their lines, those of ASME have gaps.
TEST(Dimensions, FollowTheirStandard) {
    const Sheet iso = strip(60, {.iso = true}), asme = strip(60, {.iso = false});
    const auto line_through = [](const Sheet& sheet) {
        const Box box = sheet.texts().at(0).box;
        const double y = (box.top + box.bottom) / 2;
        int lines = 0;
        for (const Stroke& stroke : sheet.lines())
            lines += std::abs(stroke.points[0].y - y) < 1 && std::abs(stroke.points[1].y - y) < 1;
        return lines;
    };
    EXPECT_EQ(line_through(iso), 0);
    EXPECT_EQ(line_through(asme), 2);
    EXPECT_EQ(iso.lines().at(0).points[0].y, 0);
    EXPECT_GT(asme.lines().at(0).points[0].y, 1);
}

TEST(Dimensions, WithoutRoomAreListed) {
    Sheet sheet;
    draw_strip(sheet, {}, Side::below, {0, 0, 12},
               {{.side = Side::below, .label = "diameter = 10", .unit = 1, .from = 0, .to = 10}});
    EXPECT_EQ(sheet.dropped, std::vector<std::string>{"diameter = 10"});
    EXPECT_TRUE(sheet.texts().empty());
}

} // namespace
} // namespace tarvane::vessel
