// Charts with a point, at random factors and temperatures.
#include "catalogue/charts.h"
#include "drawing/chart_drawing.h"
#include "drawing_lint.h"
#include "random_drawings.h"
#include "tarvane/tarvane.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace tarvane::vessel {
namespace {

// What the axes say of a place on the page, by the numbers that are farthest from each other.
double read_off(const Sheet& sheet, bool upright, double at) {
    double low = 0, high = 0, low_at = 0, high_at = 0;
    for (const Text& text : sheet.texts()) {
        // Numbers of an axis: of A centred below the plot, of B ending before it.
        if (text.anchor != (upright ? Anchor::end : Anchor::middle) || text.upwards) continue;
        std::string words = text.words;
        for (std::size_t blank; (blank = words.find("\xC2\xA0")) != std::string::npos;)
            words.erase(blank, 2);
        std::replace(words.begin(), words.end(), ',', '.');
        char* end = nullptr;
        const double value = std::strtod(words.c_str(), &end);
        if (end == words.c_str() || *end != '\0') continue;
        // Single digits of A are of no decade.
        if (!upright && value > 1) continue;
        const double place = upright ? (text.box.top + text.at.y) / 2 : text.at.x;
        if (low == 0 || value < low) low = value, low_at = place;
        if (value > high) high = value, high_at = place;
    }
    EXPECT_GT(high, low);
    return low * std::pow(high / low, (at - low_at) / (high_at - low_at));
}

struct Charted {
    ChartDrawing chart;
    Drawn drawn;
};

Charted chart_of(const std::string& name, float temperature, float yield, std::optional<float> A,
                 const UnitSystem& units, bool comma) {
    ChartDrawing chart{name, {}, read_curve(name, temperature, yield), A, units, comma};
    for (const float row : chart_temperatures(name))
        chart.curves.push_back(read_curve(name, row, yield));
    Drawn drawn = framed(draw_chart(chart), DrawnFor::file);
    return {std::move(chart), std::move(drawn)};
}

TEST(ChartDrawings, AreCleanAndHaveTheirPointInItsPlace) {
    RESET_ENGINE();
    std::vector<std::string> names = chart_names();
    ASSERT_FALSE(names.empty());
    names.insert(names.end(), {"CS-3", "NFA-11"}); // by the yield stress
    Chance chance(11);
    for (int i = 0; i < GEOMETRIES; ++i) {
        const std::string& name = names[static_cast<std::size_t>(i) % names.size()];
        const auto temperature = static_cast<float>(std::round(chance.between(-20, 900)));
        const auto factor = static_cast<float>(chance.spread(1e-7, 0.5));
        const UnitSystem units = chance.one_in(2) ? us_units() : si_units();
        const auto [chart, drawn] =
            chart_of(name, temperature, static_cast<float>(chance.between(20000, 70000)), factor,
                     units, chance.one_in(3));
        if (!(chart.asked.E > 0)) continue;
        const std::string what = name + " at " + std::to_string(temperature) + ", A " +
                                 std::to_string(factor) + " no. " + std::to_string(i);
        EXPECT_EQ(first_of(lint_of(drawn.sheet, drawn.figure.width, drawn.figure.height)), "")
            << what;
        EXPECT_EQ(first_of(missing(drawn, {})), "") << what;
        EXPECT_TRUE(drawn.figure.dropped.empty()) << what;
        ASSERT_EQ(drawn.sheet.fills().size(), 1U) << what;
        Box dot;
        for (const Point p : drawn.sheet.fills()[0].outline)
            dot.add(p);
        const auto stress =
            static_cast<double>(units.to_file(chart.asked.B(factor), Quantity::stress));
        EXPECT_NEAR(read_off(drawn.sheet, false, (dot.left + dot.right) / 2) /
                        static_cast<double>(factor),
                    1, 0.005)
            << what;
        EXPECT_NEAR(read_off(drawn.sheet, true, (dot.top + dot.bottom) / 2) / stress, 1, 0.005)
            << what;
        // No curve twice, no exponent of a program.
        std::vector<std::string> curves;
        for (const Text& text : drawn.sheet.texts()) {
            EXPECT_EQ(text.words.find("e-"), std::string::npos) << what;
            EXPECT_EQ(text.words.find("e+"), std::string::npos) << what;
            if (text.at.x > drawn.figure.width * 0.7 &&
                text.words.find("\xC2\xB0") != std::string::npos)
                curves.push_back(text.words);
        }
        std::sort(curves.begin(), curves.end());
        EXPECT_FALSE(curves.empty()) << what;
        EXPECT_EQ(std::adjacent_find(curves.begin(), curves.end()), curves.end()) << what;
        if (HasFailure()) return;
    }
}

// 300 °F and 148.8 °C are written alike: that curve is drawn once, in colour.
TEST(ChartDrawings, NameACurveOnce) {
    RESET_ENGINE();
    const auto drawn = chart_of("CS-2", 299.9f, 0.0f, 0.0123f, si_units(), true).drawn;
    int named = 0;
    for (const Text& text : drawn.sheet.texts())
        named += text.words == "149 \xC2\xB0"
                               "C";
    EXPECT_EQ(named, 1);
    EXPECT_NE(words(drawn.figure).find("point A = 0,0123, B = "), std::string::npos)
        << words(drawn.figure);
}

} // namespace
} // namespace tarvane::vessel
