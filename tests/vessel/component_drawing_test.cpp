// Drawings of components as they were judged.
#include "components/flange_session.h"
#include "document/results.h"
#include "drawing/component_drawing.h"
#include "drawing/frame.h"
#include "input/input_file.h"
#include "random_drawings.h"
#include "test_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tarvane::vessel {
namespace {

struct Made {
    ReadResult read;
    Calculation done;
    std::vector<Figure> figures;

    explicit Made(const std::string& file) : read(app::read_input(content(file))) {
        done = calculate(read.request);
        for (const Calculated& one : done.calculated)
            figures.push_back(
                component_drawing(*one.element, *one.outcome, read.request, DrawnFor::file)
                    .value_or(Figure{}));
    }
    static std::string content(const std::string& file) {
        std::ifstream stream(std::string(TARVANE_SOURCE_DIR) + file);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }
    double result(const std::string& name) const {
        for (const Result& result :
             done.calculated[0].element->results(*done.calculated[0].outcome))
            if (result.field->name == name && result.value)
                return static_cast<double>(*result.value);
        ADD_FAILURE() << "no result " << name;
        return 0;
    }
};

bool says(const Figure& figure, const std::string& label) {
    return figure.svg.find('>' + label + "</text>") != std::string::npos;
}

// The geometry that is drawn is the one that was judged.
TEST(ComponentDrawings, ShowWhatADesignSelectedAsItIsRounded) {
    const Made run("/tests/golden/weld_neck_design.toml");
    const DimensionStyle style = dimension_style(run.read.request.units, false);
    const Figure& figure = run.figures.at(0);
    for (const std::string name : {"t", "g0", "g1", "h", "C", "A"}) {
        const bool diameter = name == "C" || name == "A";
        const std::string label = name + " = " + (diameter ? "\xC3\x98" : "") +
                                  style.number(run.result("rounded." + name), 25.4);
        EXPECT_NE(figure.alt.find(label), std::string::npos) << label << '\n' << figure.alt;
    }
}

TEST(ComponentDrawings, ShowTheThicknessThatWasFound) {
    const Made run("/tests/golden/weld_neck_thickness.toml");
    const DimensionStyle style = dimension_style(run.read.request.units, false);
    const auto& outcome = static_cast<const FlangeOutcome&>(*run.done.calculated[0].outcome);
    EXPECT_TRUE(
        says(run.figures.at(0), "t = " + style.number(static_cast<double>(outcome.t_req), 25.4)))
        << run.figures.at(0).alt;
}

// Its stiffened length has parts of the heads in it.
TEST(ComponentDrawings, OfACylinderAreAsLongAsItIsFromHeadToHead) {
    const Made both("/examples/v101.toml");
    EXPECT_TRUE(says(both.figures.at(0), "Lt = 150")) << both.figures.at(0).alt;
    EXPECT_FALSE(says(both.figures.at(0), "L = 160")) << both.figures.at(0).alt;
    EXPECT_NE(words(both.figures.at(0)).find("Not drawn: stiffened length L = 160"),
              std::string::npos)
        << words(both.figures.at(0));
    const Made one("/tests/golden/external_cylinder.toml");
    EXPECT_NE(words(one.figures.at(0)).find("L: stiffened length"), std::string::npos)
        << words(one.figures.at(0));
}

// 0.625 in. are 15.875 mm, which is a tie: one single, rounded once.
TEST(ComponentDrawings, RoundAsTheTablesDo) {
    const UnitSystem si = si_units(), us = us_units();
    const DimensionStyle style = dimension_style(si, false), comma = dimension_style(si, true);
    const DimensionStyle asme = dimension_style(us, false);
    const auto found = [&](float inches) {
        return style.length(static_cast<double>(inches), Quantity::thickness, si, true);
    };
    for (const float inches : {0.625f, 0.1875f, 1.5625f, 0.0625f, 2.3125f, 0.4375f, 0.125f})
        EXPECT_EQ(std::stof(found(inches)), std::stof(value_text(inches, Quantity::thickness, si)))
            << inches;
    EXPECT_EQ(found(0.625f), "15.88");
    EXPECT_EQ(style.length(26.2929, Quantity::diameter, si, true), "667.8");
    EXPECT_EQ(asme.length(26.2929, Quantity::diameter, us, true),
              value_text(26.2929f, Quantity::diameter, us));
    // What was given.
    EXPECT_EQ(style.length(0.625, Quantity::thickness, si), "15.875");
    EXPECT_EQ(comma.length(0.125, Quantity::thickness, si), "3,175");
    EXPECT_EQ(style.length(6.625, Quantity::diameter, si), "168.275");
    EXPECT_EQ(style.length(0.1875, Quantity::thickness, si), "4.76");
    EXPECT_EQ(asme.length(31.0625, Quantity::diameter, us), "31.0625");
    EXPECT_EQ(asme.length(0.03125, Quantity::thickness, us), ".03125");
    EXPECT_EQ(asme.length(2.048817, Quantity::thickness, us), "2.0488");
    EXPECT_EQ(asme.length(4, Quantity::thickness, us), "4");
}

TEST(ComponentDrawings, ListWhatTheyDoNotShow) {
    const auto of = [](const std::string& name) {
        return words(Made("/tests/golden/" + name + ".toml").figures.at(0));
    };
    const auto expect = [](const std::string& all, const std::string& part) {
        EXPECT_NE(all.find(part), std::string::npos) << part << '\n' << all;
    };
    expect(of("openings_near"), "facing 2, w = .125; openings D1 = \xC3\x98"
                                "4, D2 = \xC3\x98"
                                "3, pitch 5.5");
    expect(of("shell_flat_openings"), "Not drawn: opening d1 = \xC3\x98"
                                      "4");
    expect(of("split_ring_one"), "; split of the ring");
    expect(of("split_ring_two"), "; splits of the ring");
    expect(of("channel_cover"), "TEMA channel cover");
    expect(of("blind_viii1"), "44 bolts \xC3\x98.75");
}

// A page and a document have the font themselves.
TEST(ComponentDrawings, HaveTheirFontInAFileAlone) {
    const Made run("/tests/golden/weld_neck_design.toml");
    const auto has_font = [&](DrawnFor surroundings) {
        const Calculated& one = run.done.calculated[0];
        const auto figure =
            component_drawing(*one.element, *one.outcome, run.read.request, surroundings);
        return figure->svg.find("@font-face") != std::string::npos;
    };
    EXPECT_TRUE(has_font(DrawnFor::file));
    EXPECT_FALSE(has_font(DrawnFor::page));
    EXPECT_FALSE(has_font(DrawnFor::document));
}

// The words of the frame, each once: in it, or in the caption of a document, of which no strip is left.
TEST(ComponentDrawings, LeaveTheirWordsToADocument) {
    const Made run("/examples/v101.toml");
    for (std::size_t i = 0; i < 7; ++i) {
        const Calculated& one = run.done.calculated[i];
        const Figure& alone = run.figures.at(i);
        const auto inside =
            component_drawing(*one.element, *one.outcome, run.read.request, DrawnFor::document);
        ASSERT_TRUE(inside) << i;
        EXPECT_EQ(words(alone), words(*inside) + alone.title + ' ' + alone.notes + ' ');
        EXPECT_EQ(inside->title, alone.title);
        EXPECT_EQ(inside->notes, alone.notes);
        EXPECT_EQ(inside->scale, alone.scale);
        EXPECT_EQ(inside->alt, alone.alt);
        EXPECT_LE(inside->height, alone.height - 2 * 4.6);
        EXPECT_TRUE(inside->notes.starts_with("Scale " + inside->scale + ", ")) << inside->notes;
    }
}

TEST(ComponentDrawings, AreValidOnesOfAVessel) {
    const Made run("/examples/v101_si.toml");
    const std::vector<Figure>& figures = run.figures;
    ASSERT_GE(figures.size(), 7U);
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_TRUE(figures[i].svg.starts_with("<svg xmlns=")) << i;
        EXPECT_NE(figures[i].svg.find("role=\"img\" aria-label=\"Half section of "),
                  std::string::npos)
            << i;
        EXPECT_LE(figures[i].width, MOST_WIDTH);
        EXPECT_TRUE(figures[i].dropped.empty()) << figures[i].dropped.front();
    }
    EXPECT_TRUE(says(figures[4], "t = 35.052")) << figures[4].alt;
    EXPECT_EQ(figures[4].scale, "1 : 2");
    EXPECT_TRUE(figures.back().svg.empty()); // a metal temperature has none
}

} // namespace
} // namespace tarvane::vessel
