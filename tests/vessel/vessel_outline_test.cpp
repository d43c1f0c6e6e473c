// The vessel by elevation: random vessels with many nozzles.
#include "drawing/vessel_outline.h"
#include "drawing_lint.h"
#include "input/input_file.h"
#include "random_drawings.h"

#include <gtest/gtest.h>

namespace tarvane::vessel {
namespace {

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
    for (int i = 0; i < GEOMETRIES; ++i) {
        const std::string text = random_vessel(chance);
        const ReadResult read = app::read_input((i % 2 == 0 ? "" : "units = \"SI\"\n") + text);
        ASSERT_TRUE(read.faults.empty()) << app::fault_line("vessel", read.faults.front()) << text;
        const auto drawn = alone(draw_vessel(read.request));
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

} // namespace
} // namespace tarvane::vessel
