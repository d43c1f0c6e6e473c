// Drawings by the lines and texts that were collected for them: random geometries of each kind, and planted faults
// that the lint has to find.
#include "document/results.h"
#include "drawing/chart_drawing.h"
#include "drawing/component_drawing.h"
#include "drawing/flange_drawing.h"
#include "drawing/font.h"
#include "drawing/shell_drawing.h"
#include "drawing/vessel_outline.h"
#include "drawing_lint.h"
#include "input/input_file.h"
#include "test_paths.h"

#include "tarvane/tarvane.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

namespace tarvane::vessel {
namespace {

constexpr int GEOMETRIES = 500;

class Chance {
  public:
    explicit Chance(unsigned seed) : engine(seed) {}
    double between(double low, double high) {
        const double part = static_cast<double>(engine()) / static_cast<double>(engine.max());
        return low + (high - low) * part;
    }
    // As many below as above the geometric mean.
    double spread(double low, double high) {
        return std::exp(between(std::log(low), std::log(high)));
    }
    bool one_in(int n) { return engine() % static_cast<unsigned>(n) == 0; }

  private:
    std::mt19937 engine;
};

// Its texts in their order, lines of a paragraph put together.
std::string words(const Figure& figure) {
    std::string all;
    for (std::size_t at = 0; (at = figure.svg.find("<text ", at)) != std::string::npos;) {
        at = figure.svg.find('>', at) + 1;
        all += figure.svg.substr(at, figure.svg.find('<', at) - at) + ' ';
    }
    return all;
}

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

std::string first_of(const std::vector<std::string>& faults) {
    return faults.empty() ? "" : faults.front();
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
            draw_flange(shape, "flange 1 (N1)", units, dimension_style(units, i % 6 == 1));
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

// ---- shells ------------------------------------------------------------------------------------------------

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
            draw_shell(s, "shell 1 (Drum)", units, dimension_style(units, i % 6 == 1));
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

// ---- the whole vessel ------------------------------------------------------------------------------------

std::string random_vessel(Chance& chance) {
    const double D = chance.spread(10, 200), t = D * chance.between(0.003, 0.05);
    const double length = D * chance.spread(0.3, 12), foot = chance.between(-100, 300);
    const bool lying = chance.one_in(3);
    const std::string common =
        "P = 50\nT = 200\nS = 20000\nSa = 20000\nt = " + std::to_string(t) + '\n';
    const auto shell = [&](const std::string& name, const std::string& lines) {
        return "[[shell]]\ndescription = \"" + name + "\"\n" + common + lines;
    };
    std::string text = "tarvane = 1\n[vessel]\ndescription = \"Drum\"\n";
    text += shell("Drum shell", "kind = \"cylinder\"\nD = " + std::to_string(D) +
                                    "\nlength = " + std::to_string(length * 1.1) +
                                    "\ntangent_length = " + std::to_string(length) +
                                    "\nelevation = " + std::to_string(foot) + '\n');
    const char* heads[] = {"kind = \"elliptical\"\n", "kind = \"sphere\"\n",
                           "kind = \"flat\"\nC = 0.3\n",
                           "kind = \"torispherical\"\nL = 0.9\nr = 0.1\n"};
    for (const bool first : {true, false}) {
        std::string lines = heads[static_cast<int>(chance.between(0, 3.999))];
        for (const std::string key : {"L = 0.9", "r = 0.1"})
            if (const auto at = lines.find(key); at != std::string::npos)
                lines.replace(at + 4, 3, std::to_string(std::stod(key.substr(4)) * D));
        const char* end = lying ? first ? "left" : "right" : first ? "top" : "bottom";
        text += shell(first ? "One head" : "Other head",
                      lines + "on = \"Drum shell\"\nend = \"" + end + "\"\n");
    }
    const int nozzles = static_cast<int>(chance.between(0, 14));
    for (int i = 0; i < nozzles; ++i) {
        const double height =
            foot + (lying ? D : length) * (chance.one_in(4) ? 0.5 : chance.between(-0.2, 1.2));
        text +=
            shell("N" + std::to_string(i) + (chance.one_in(5) ? " with a longer name" : " neck"),
                  "kind = \"cylinder\"\nD = " + std::to_string(D * 0.1) +
                      "\nlength = 5\nelevation = " + std::to_string(height) + '\n');
    }
    return text;
}

TEST(VesselDrawings, AreCleanWithManyNozzles) {
    Chance chance(7);
    for (int i = 0; i < GEOMETRIES / 2; ++i) {
        const std::string text = random_vessel(chance);
        const ReadResult read = app::read_input((i % 2 == 0 ? "" : "units = \"SI\"\n") + text);
        ASSERT_TRUE(read.faults.empty()) << app::fault_line("vessel", read.faults.front()) << text;
        const auto drawn = draw_vessel(read.request);
        ASSERT_TRUE(drawn) << text;
        EXPECT_EQ(first_of(lint_of(drawn->sheet, drawn->figure.width, drawn->figure.height)), "")
            << text;
        EXPECT_EQ(first_of(missing(*drawn, {})), "") << text;
        // The body is as long as from head to head, not as its stiffened length.
        Box body;
        for (const Stroke& stroke : drawn->sheet.lines())
            if (stroke.pen == OUTLINE && body.empty() &&
                (stroke.points.size() == 4 || stroke.points.size() == 5))
                for (const Point p : stroke.points)
                    body.add(p);
        const bool lying = text.find("\"left\"") != std::string::npos;
        const double length = std::stod(text.substr(text.find("tangent_length = ") + 17));
        const double unit = i % 2 == 0 ? 25.4 : 1;
        EXPECT_NEAR(lying ? body.width() : body.height(), length * unit * drawn->sheet.scale, 0.05)
            << text;
        for (const auto& element : read.request.elements) {
            bool named = false;
            for (const Text& label : drawn->sheet.texts())
                named = named || label.words == element->description();
            EXPECT_TRUE(named) << element->description() << '\n' << text;
        }
        if (HasFailure()) return;
    }
}

// ---- charts ------------------------------------------------------------------------------------------------

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
    Drawn drawn = draw_chart(chart);
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

// ---- components --------------------------------------------------------------------------------------------

struct Made {
    ReadResult read;
    Calculation done;
    std::vector<Figure> figures;

    explicit Made(const std::string& file) : read(app::read_input(content(file))) {
        done = calculate(read.request);
        for (const Calculated& one : done.calculated)
            figures.push_back(
                component_drawing(*one.element, *one.outcome, read.request).value_or(Figure{}));
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
        const auto drawn = draw_flange(shape, "flange 1", units, dimension_style(units, false));
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

TEST(Sheets, DrawWhatLooksAlikeAsOnePath) {
    Sheet sheet;
    sheet.line({0, 0}, {9, 0}, THIN);
    sheet.line({0, 0}, {0, 9}, OUTLINE);
    sheet.line({0, 0}, {9, 9}, THIN);
    // Two arrow heads of which one is the other in a mirror: no hole where they are one over the other.
    sheet.area({{0, 0}, {4, 0}, {4, 4}}, "#000000");
    sheet.area({{0, 0}, {4, 4}, {4, 0}}, "#000000");
    const std::string svg = sheet.svg(10, 10, "");
    std::size_t paths = 0;
    for (std::size_t at = 0; (at = svg.find("<path ", at)) != std::string::npos; ++at)
        ++paths;
    EXPECT_EQ(paths, 3U) << svg;
    EXPECT_NE(svg.find("\"M0 0L4 0L4 4ZM0 0L4 0L4 4Z\""), std::string::npos) << svg;
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

// ---- planted faults -----------------------------------------------------------------------------------

Sheet page() {
    Sheet sheet;
    sheet.text({20, 20}, "t = 1.5");
    return sheet;
}

std::string fault_of(const Sheet& sheet) { return first_of(lint_of(sheet, 100, 100)); }

TEST(DrawingLint, FindsNothingOnACleanPage) { EXPECT_EQ(fault_of(page()), ""); }

TEST(DrawingLint, FindsTextOverText) {
    Sheet sheet = page();
    sheet.text({22, 21}, "h = 2");
    EXPECT_EQ(fault_of(sheet), "text over text: t = 1.5 | h = 2");
}

TEST(DrawingLint, FindsALineThroughText) {
    Sheet sheet = page();
    sheet.line({25, 0}, {25, 90}, THIN);
    EXPECT_EQ(fault_of(sheet), "line through text: t = 1.5");
}

TEST(DrawingLint, FindsALineThatStartsWithinAText) {
    Sheet sheet = page();
    sheet.line({25, 19}, {25, 18.5}, THIN);
    EXPECT_EQ(fault_of(sheet), "line through text: t = 1.5");
}

TEST(DrawingLint, FindsAnAreaOverText) {
    Sheet sheet = page();
    sheet.area({{0, 0}, {90, 0}, {90, 90}, {0, 90}}, "#000000");
    EXPECT_EQ(fault_of(sheet), "area over text: t = 1.5");
}

TEST(DrawingLint, FindsInkOutsideTheFrame) {
    Sheet sheet = page();
    sheet.line({50, 50}, {100.5, 50}, THIN);
    EXPECT_EQ(fault_of(sheet), "outside the frame");
}

TEST(DrawingLint, ComparesLengthsWithLabels) {
    Sheet sheet;
    sheet.measures = {{"t = 1.5", 19.05, 25.4, 0.5},
                      {"A = \xC3\x98"
                       "0,5",
                       0.25, 1, 0.5}};
    EXPECT_EQ(fault_of(sheet), "");
    sheet.measures[0].drawn = 20.5;
    EXPECT_EQ(fault_of(sheet), "drawn as 1.614173: t = 1.5");
}

TEST(DrawingLint, MissesDimensionsThatAreNeitherDrawnNorListed) {
    Drawn drawn;
    EXPECT_EQ(first_of(missing(drawn, {"t"})), "neither drawn nor listed: t");
    drawn.figure.dropped = {"t = 1.5"};
    EXPECT_EQ(first_of(missing(drawn, {"t"})), "dropped without a word: t = 1.5");
    drawn.sheet.text({0, 0}, "Without room: t = 1.5");
    EXPECT_EQ(first_of(missing(drawn, {"t"})), "");
}

TEST(Hatching, IsBrokenAroundLabels) {
    Sheet sheet = page();
    sheet.section({{0, 0}, {90, 0}, {90, 90}, {0, 90}}, true, 2);
    EXPECT_FALSE(sheet.hatching().empty());
    EXPECT_EQ(fault_of(sheet), "");
}

// ---- dimensions ------------------------------------------------------------------------------------------

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

TEST(Font, BreaksNoEquation) {
    EXPECT_EQ(fitted_lines("face; t = 1.5", TEXT_SIZE, text_width("face; t = 1", TEXT_SIZE)),
              (std::vector<std::string>{"face;", "t = 1.5"}));
    EXPECT_EQ(fitted_lines("at 20 \xC2\xB0", TEXT_SIZE, text_width("at 20", TEXT_SIZE)),
              (std::vector<std::string>{"at", "20 \xC2\xB0"}));
    EXPECT_EQ(fitted_lines(" = ", TEXT_SIZE, 100), std::vector<std::string>{" = "});
}

TEST(Font, MeasuresWithItsOwnWidths) {
    EXPECT_DOUBLE_EQ(text_width("0", 2048), 1303);
    EXPECT_DOUBLE_EQ(text_width("\xC3\x98"
                                "1 : 5",
                                2048),
                     1612 + 1303 + 651 + 690 + 651 + 1303);
    EXPECT_DOUBLE_EQ(text_width("\xE2\x89\xA4", 2048), 1716);
}

} // namespace
} // namespace tarvane::vessel
