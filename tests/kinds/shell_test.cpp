// What the tests ask of shells and heads. The engine's own calls for them are in tests/vessel/ways_test.py.
#include "components/shell_session.h"
#include "kind_tests.h"

namespace tarvane::app {

using namespace vessel;
namespace {

Covered covered() {
    const std::string knuckle = with("alpha", "alpha = 45", CONE) + "r = 4\ntk = 0.75\n";
    const std::string yield = THIN + "Sy = 36000\n";
    const std::string formed =
        with("S", "", with("Sa", "", TORISPHERE)) + "material = \"SA-516 60\"\n";
    Covered all;
    auto& sides = all.sides;
    for (const std::string_view id : {"required_thickness", "mawp"}) {
        sides.push_back({id, 100.0f, 5000.0f, at("P", CYLINDER)});
        sides.push_back({id, 0.75f, 0.05f, at("t", CYLINDER)});
        sides.push_back({id, 100.0f, 2000.0f, at("P", CONE)});
        sides.push_back({id, 100.0f, 2000.0f, at("P", FLAT)});
    }
    const std::vector<Sides> others = {
        {"crown_radius", 48.0f, 60.0f, at("L", TORISPHERE)},
        {"knuckle_radius", 3.0f, 2.0f, at("r", TORISPHERE)},
        {"knuckle_thickness", 0.75f, 1.5f, at("t", with("r", "r = 4", TORISPHERE))},
        {"cone_angle", 30.0f, 40.0f, at("alpha", CONE)},
        {"cone_knuckle_radius", 4.0f, 2.0f, at("r", knuckle)},
        {"cone_knuckle_thickness", 0.75f, 2.0f, at("tk", knuckle)},
        {"head_1_4f", 10.0f, 60.0f, at("P", yield)},
        {"very_thin_head", 0.1f, 0.02f, at("t", with("P", "P = 1", yield))},
        {"forming_strain", 20.0f, 5.0f, at("strain_limit", formed)},
        {"forming_strain", 9.0f, 3.0f,
         at("r", with("t", "t = 0.75", formed) + "strain_limit = 12\n")},
        {"external_corrosion", 0.0f, 0.125f, at("ce", "\nce = 0\n" + CYLINDER), NO_ROW,
         NOT_MADE_STATE},
        // A flat head holds external pressure by the same formula.
        {"mawp", 15.0f, 2000.0f,
         at("P_external", "tarvane = 1\n[vessel]\nP_external = 15\n" + FLAT), "pass", "fail",
         "external"},
        {"maep", 15.0f, 900.0f,
         at("P_external", CYLINDER + "external = true\nP_external = 15\nlength = 100\n"
                                     "chart = \"CS-2\"\n")},
    };
    sides.insert(sides.end(), others.begin(), others.end());
    const std::string openings = FLAT + "d1 = 2\nd2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    add_openings(all, openings, "d1", "d2", 5.9f);
    all.pairs = {{"openings", openings, with("d1", "d1 = 9", openings), "pass", NO_ROW}};
    return all;
}

Draw draw() {
    return {{{"P", "100"},
             {"T", "300"},
             {"S", "20000"},
             {"Sa", "20000"},
             {"Sy", "33000"},
             {"t", "0.5"},
             {"ci", "0.0625"},
             {"L", "60"},
             {"r", "6"},
             {"alpha", "25"},
             {"Dsmall", "30"},
             {"C", "0.3"},
             {"cone_length", "30"},
             {"length", "60"},
             {"tk", "0.5"},
             {"D", "60"},
             {"chart", "\"CS-2\""}},
            {{"kind", {"1", "2", "3", "4", "5", "6"}},
             {"external", {"true", "false"}},
             {"P_external", {"15"}},
             {"method", {"", "\"chart\"", "\"stress\""}},
             {"material", {"", "\"SA-516 70\""}},
             {"openings", SWITCH},
             {"t", {"0.1", "0.5", "2.5"}},
             {"d1", {"", "4"}},
             {"edge1", {"", "9"}}}};
}

void append(std::string& all, const Outcome& outcome, const Key& key) {
    const auto& o = static_cast<const ShellOutcome&>(outcome);
    TARVANE_SHELL_RESULTS found = o.found;
    found.crown_radius = 0.0f; // L as given, except of an elliptical head
    append_values(all, found, o.fail_ca, o.fail_ca_knuckle, o.strain);
    tests_of("external")->append(all, o.external, key);
}

const TestsOfKind KNOWN("shell", [] {
    return KindTests{.covered = covered(), .draw = draw(), .append = append};
});

} // namespace
} // namespace tarvane::app
