// What the tests ask of elements under external pressure. The engine's own calls for them are in tests/vessel/ways_test.py.
#include "components/external_session.h"
#include "kind_tests.h"

namespace tarvane::app {

using namespace vessel;
namespace {

Covered covered() {
    const std::string thin =
        with("t", "t = 0.15", with("P_external", "P_external = 1", HEAD)) + "Sy = 36000\n";
    const std::string dish =
        with("kind", "kind = \"torispherical\"", with("k", "", HEAD)) + "L = 96\nr = 6\n";
    Covered all;
    all.sides = {
        {"maep", 15.0f, 500.0f, at("P_external", PIPE)},
        {"external_thickness", 0.5f, 0.1f, at("t", PIPE)},
        {"chart_temperature", 300.0f, 2000.0f, at("T", PIPE)},
        {"convex_thickness", 15.0f, 300.0f, at("P_external", HEAD)},
        {"convex_maep", 15.0f, 300.0f, at("P_external", HEAD)},
        {"convex_1_4f", 1.0f, 60.0f, at("P_external", thin)},
        {"crown_radius", 96.0f, 120.0f, at("L", dish)},
        {"knuckle_radius", 6.0f, 4.0f, at("r", dish)},
        {"knuckle_thickness", 0.5f, 3.0f, at("t", dish)},
        {"very_thin_head", 0.15f, 0.03f, at("t", thin)},
        {"external_corrosion", 0.0f, 0.125f, at("ce", "\nce = 0\n" + PIPE), NO_ROW, NOT_MADE_STATE},
    };
    all.pairs = {
        {"convex_made", HEAD, with("S", "", HEAD), NO_ROW, NOT_MADE_STATE},
        {"convex_1_4f", thin, with("Sy", "", thin), "pass", NOT_MADE_STATE},
    };
    return all;
}

Draw draw() {
    return {{{"P_external", "15"},
             {"T", "300"},
             {"S", "20000"},
             {"Sy", "33000"},
             {"t", "0.5"},
             {"ci", "0.0625"},
             {"L", "60"},
             {"r", "6"},
             {"alpha", "25"},
             {"D", "60"},
             {"Dsmall", "30"},
             {"cone_length", "30"},
             {"length", "60"},
             {"chart", "\"CS-2\""}},
            {{"kind", {"1", "2", "3", "4", "5"}},
             {"t", {"0.1", "0.5"}},
             {"method", {"", "\"chart\"", "\"stress\""}},
             {"code", {"", "1", "2"}}}};
}

void append(std::string& all, const Outcome& outcome, const Key&) {
    const auto& o = static_cast<const ExternalOutcome&>(outcome);
    // Without slen, which is the length as given except of a cylinder or cone.
    append_values(all, o.no_curve, o.chart_maximum, o.above_chart, o.maep, o.tca, o.d_o, o.factor_a,
                  o.factor_b, o.fha, o.fail_ca);
}

const TestsOfKind KNOWN("external", [] {
    return KindTests{.covered = covered(), .draw = draw(), .append = append};
});

} // namespace
} // namespace tarvane::app
