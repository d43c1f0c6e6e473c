// Each check through input texts on both sides of its limit, and that none is left out.
#include "check_rows.h"
#include "components/external_session.h"
#include "components/flange_session.h"
#include "components/mdmt_session.h"
#include "components/shell_session.h"

#include <algorithm>
#include <map>
#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

constexpr std::string_view NOT_MADE_STATE = "not made";

struct Covered {
    std::vector<Sides> sides;
    std::vector<Pair> pairs;

    bool has(std::string_view id) const {
        const auto is = [id](const auto& each) { return each.id == id; };
        return std::any_of(sides.begin(), sides.end(), is) ||
               std::any_of(pairs.begin(), pairs.end(), is);
    }
    void expect_flips() const {
        for (const Sides& each : sides)
            expect_flip(each);
        for (const Pair& each : pairs)
            expect_pair(each);
    }
};

// The rules of openings: a row where one is broken, and one for openings that break none.
void add_openings(Covered& covered, const std::string& openings, const std::string& d1,
                  const std::string& d2, float large) {
    const std::string apart = with("pitch", "pitch = 30", openings);
    const std::string near = with("pitch", "pitch = 2.5", openings);
    const auto add = [&](std::string_view id, float sound, float failing, Text text) {
        covered.sides.push_back({id, sound, failing, std::move(text), NO_ROW});
    };
    add("opening_d1", 2.0f, 9.0f, at(d1, openings));
    add("opening_d2", 1.0f, 9.0f, at(d2, apart));
    add("openings_large", 2.0f, large, at(d1, apart));
    add("openings_near", 6.0f, 1.6f, at("pitch", openings));
    add("opening_ligament", 6.0f, 1.6f, at("pitch", openings));
    add("opening_d1_edge", 2.0f, 0.1f, at("edge1", openings));
    add("opening_d2_edge", 2.0f, 0.1f, at("edge2", near));
}

// ---- flanges ---------------------------------------------------------------------------------------------

Covered flanges() {
    const std::string known = with_all({{"Sfo", ""}, {"Sfa", ""}}) + "material = \"SA-105\"\n";
    const std::string shell = FLANGE_TOML + "Sn = 20000\nSna = 20000\nDshell = 12\n"
                                            "tShell = 0.375\nattachment = 1\n";
    // The stresses of SA-182 F304, reference 111, hold up to 5 in.
    const std::string sized =
        with_all({{"kind", "kind = \"thickness\""}, {"t", ""}, {"Sfo", ""}, {"Sfa", ""}}, BLIND) +
        "material = \"SA-182 F304\"\nmaterial_reference = 111\n";
    const std::string asked = FLANGE_TOML + "rigidity = true\n";
    const std::string channel =
        with("t", "t = 2", BLIND) + "channel_cover = true\nEcover = 29000000\ndfAllow = 0.03\n";
    const std::string part = FLANGE_TOML + "lp = 12\nmPart = 3\nyPart = 10000\n";
    const std::string en = "code = \"EN 13445\"\n";

    Covered covered;
    auto& sides = covered.sides;
    for (const std::string_view id : {"SHo", "SRo", "STo", "SAo", "BSo"})
        sides.push_back({id, 100.0f, 20000.0f, at("P")});
    for (const std::string_view id : {"SHa", "SRa", "STa", "SAa"})
        sides.push_back({id, 20000.0f, 20.0f, at("Sfa")});
    const std::vector<Sides> others = {
        {"calculation", 15.0f, 14.0f, at("Fod"), NO_ROW, NOT_MADE_STATE},
        {"STo", 100.0f, 5000.0f, at("P", BLIND)},
        {"SVo", 10.0f, 20000.0f, at("P", REVERSE)},
        {"SFo", 10.0f, 20000.0f, at("P", FULL_FACE)},
        {"BSa", 25000.0f, 500.0f, at("Sa")},
        {"SVa", 20000.0f, 20.0f, at("Sfa", REVERSE)},
        {"bolt_area", 100.0f, 5000.0f, at("P")},
        {"mawp", 100.0f, 5000.0f, at("P")},
        {"required_thickness", 2.0f, 0.5f, at("t", BLIND)},
        {"J_operating", 100.0f, 20000.0f, at("P", asked)},
        {"J_seating", 10000.0f, 1.0e6f, at("y", asked)},
        {"modulus", 300.0f, 2000.0f, at("T", asked)},
        {"bolt_circle", 17.0f, 20.0f, at("C")},
        {"bolt_circle", 17.0f, 14.0f, at("C")},
        {"partition_width", 0.1f, -0.1f, at("tp", part)},
        {"gasket_width", 14.0f, 14.76f, at("Gi")},
        {"gasket_place", 14.75f, 15.5f, at("Go")},
        {"rating", 200.0f, 100.0f, at("rating")},
        {"deflection", 3.0f, 1.0f, at("t", channel)},
        {"bolt_size", 0.875f, 0.93f, at("a", FLANGE_TOML + "bolt_size = \"nearest\"\n")},
        {"material_size", 150.0f, 6000.0f,
         at("P", with_all({{"n", "n = 24"}, {"a", "a = 2"}, {"A", "A = 24"}}, sized))},
        {"bolt_spacing_min", 17.0f, 15.0f, at("C", with("n", "n = 24"))},
        {"bolt_spacing_max", 17.0f, 40.0f, at("C", with_all({{"A", "A = 60"}, {"n", "n = 20"}}))},
        {"radial_distance", 17.5f, 15.0f, at("C")},
        {"edge_distance", 19.0f, 17.5f, at("A")},
        {"gasket_width_min", 10000.0f, 1000.0f, at("y")},
        {"full_face_thickness", 2.0f, 0.05f, at("t", FULL_FACE + en)},
        {"hub_cylinder", 100.0f, 5000.0f, at("P")},
        {"hub_thickness", 0.375f, 0.02f, at("g0", FLANGE_TOML + en)},
        {"attached_shell", 100.0f, 5000.0f, at("P_operating", shell)},
        // UCS-56: P-number 1 above 1 1/4 in. without preheat.
        {"heat_treatment", 0.5f, 2.0f, at("g0", "pwht = false\n" + with("g1", "g1 = 2.5", known))},
    };
    sides.insert(sides.end(), others.begin(), others.end());
    const std::string openings = BLIND + "D1 = 2\nD2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    add_openings(covered, openings, "D1", "D2", 8.0f);
    covered.pairs = {{"openings", openings, with("D1", "D1 = 9", openings), "pass", NO_ROW},
                     {"bolt_count", FLANGE_TOML, with("n", "n = 14")}};
    return covered;
}

// ---- shells and heads ------------------------------------------------------------------------------------

Covered shells() {
    const std::string knuckle = with("alpha", "alpha = 45", CONE) + "r = 4\ntk = 0.75\n";
    const std::string yield = THIN + "Sy = 36000\n";
    const std::string formed =
        with("S", "", with("Sa", "", TORISPHERE)) + "material = \"SA-516 60\"\n";
    Covered covered;
    auto& sides = covered.sides;
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
    add_openings(covered, openings, "d1", "d2", 5.9f);
    covered.pairs = {{"openings", openings, with("d1", "d1 = 9", openings), "pass", NO_ROW}};
    return covered;
}

// ---- external pressure -------------------------------------------------------------------------------------

Covered externals() {
    const std::string thin =
        with("t", "t = 0.15", with("P_external", "P_external = 1", HEAD)) + "Sy = 36000\n";
    const std::string dish =
        with("kind", "kind = \"torispherical\"", with("k", "", HEAD)) + "L = 96\nr = 6\n";
    Covered covered;
    covered.sides = {
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
    covered.pairs = {
        {"convex_made", HEAD, with("S", "", HEAD), NO_ROW, NOT_MADE_STATE},
        {"convex_1_4f", thin, with("Sy", "", thin), "pass", NOT_MADE_STATE},
    };
    return covered;
}

// ---- metal temperatures ------------------------------------------------------------------------------------

Covered metal_temperatures() {
    const std::string ratio = METAL + "ratio = 0.8\n";
    const std::string cold = "[[mdmt]]\ncurve = \"D\"\ntg = 0.5\nratio = 0.9\n";
    Covered covered;
    covered.sides = {
        {"mdmt", 100.0f, -100.0f, at("MDMT", ratio)},
        {"ratio", 0.8f, 1.2f, at("ratio", METAL)},
        {"required_thickness", 0.8f, 1.2f, at("tr", METAL)},
        {"impact_tests", 3.0f, 5.0f, at("tg", ratio)}, // the curves end at 4 in.
        {"heat_treatment", -20.0f, -60.0f, at("MDMT", cold), NO_ROW},
    };
    return covered;
}

TEST(BothSides, OfTheChecksOfFlanges) { flanges().expect_flips(); }
TEST(BothSides, OfTheChecksOfShells) { shells().expect_flips(); }
TEST(BothSides, OfTheChecksOfExternalPressure) { externals().expect_flips(); }
TEST(BothSides, OfTheChecksOfMetalTemperatures) { metal_temperatures().expect_flips(); }

// ---- rows that are not of one component ------------------------------------------------------------------

// A part is asked for its metal temperature in an [[mdmt]] of its own, whose check flips.
TEST(BothSides, OfTheMetalTemperatureOfAPart) {
    const std::string named = "description = \"part\"\n";
    for (const std::string& part :
         {with("description", "description = \"part\"", BLIND) + "material = \"SA-105\"\n",
          CYLINDER + named + "material = \"SA-516 70\"\n"}) {
        const auto state = [&part](float MDMT) {
            set_data_folder(TARVANE_DATA_DIR);
            const ReadResult input =
                read_input(part + "[[mdmt]]\nof = \"part\"\nMDMT = " + std::to_string(MDMT) + '\n');
            EXPECT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front());
            std::string found;
            for (const auto& element : input.request.elements) {
                const auto outcome = element->calculate(input.request);
                for (const Check& check : element->checks(*outcome, input.request.units)) {
                    if (check.field().id == "metal_temperature") {
                        EXPECT_EQ(check.state(), State::not_asked);
                        EXPECT_EQ(check.reason(), "made in mdmt 1");
                    }
                    if (check.field().id == "mdmt") found = state_name(check.state());
                }
            }
            return found;
        };
        float sound = 100.0f, failing = -150.0f;
        ASSERT_EQ(state(sound), "pass");
        ASSERT_EQ(state(failing), "fail");
        while (sound - failing > 0.01f) {
            const float middle = (sound + failing) / 2.0f;
            (state(middle) == "pass" ? sound : failing) = middle;
        }
        EXPECT_LT(sound, 60.0f);
        EXPECT_GT(failing, -150.0f);
    }
}

// The engine stops where it is given what it cannot go on with; the reader lets nothing of this kind through to
// it but a flange without a ring.
TEST(BothSides, OfACalculationThatStops) {
    expect_pair({"calculation", FLANGE_TOML, with("A", "A = 11", with("C", "C = 10.5")), NO_ROW,
                 NOT_MADE_STATE});
    const auto expect_row = [](const std::string& toml, auto outcome) {
        set_data_folder(TARVANE_DATA_DIR);
        const ReadResult input = read_input(toml);
        ASSERT_TRUE(input.faults.empty());
        const Element& element = *input.request.elements.front();
        EXPECT_EQ(judged(toml).state("calculation"), NO_ROW);
        outcome.stopped = true;
        const Checks checks = element.checks(outcome, input.request.units);
        ASSERT_FALSE(checks.empty());
        EXPECT_EQ(checks.front().field().id, "calculation");
        EXPECT_EQ(checks.front().state(), State::not_made);
        EXPECT_EQ(element.judge(outcome, input.request.units).status, Status::stopped);
    };
    expect_row(CYLINDER, ShellOutcome{});
    expect_row(PIPE, ExternalOutcome{});
    expect_row(METAL, MdmtOutcome{});
}

// Every input that the engine does not refuse has a thickness, or the bolts are short of area, which is a row of its
// own; an engine that found none would be the failing side.
TEST(BothSides, OfASearchThatFindsNothing) {
    const std::string found = with("kind", "kind = \"thickness\"");
    EXPECT_EQ(judged(found).state("search"), "pass");
    const Judged short_of_bolts = judged(with("P", "P = 40000", found));
    EXPECT_EQ(short_of_bolts.state("search"), NO_ROW);
    EXPECT_EQ(short_of_bolts.state("bolt_area"), "fail");
    const ReadResult input = read_input(found);
    ASSERT_TRUE(input.faults.empty());
    const Element& element = *input.request.elements.front();
    const auto outcome = element.calculate(input.request);
    static_cast<FlangeOutcome&>(*outcome).t_req = 0.0f;
    const Checks checks = element.checks(*outcome, input.request.units);
    const auto search = std::find_if(checks.begin(), checks.end(), [](const Check& check) {
        return check.field().id == "search";
    });
    ASSERT_NE(search, checks.end());
    EXPECT_EQ(search->state(), State::fail);
    EXPECT_TRUE(search->blocks());
    EXPECT_EQ(element.judge(*outcome, input.request.units).status, Status::fails);
}

// ---- the case external of flanges ------------------------------------------------------------------------

const std::string VACUUM = "P_external = 15\n";

std::vector<Sides> external_cases() {
    const std::string asked = FLANGE_TOML + "rigidity = true\n" + VACUUM;
    const std::string thickness =
        with("kind", "kind = \"thickness\"", with("P", "P = 10")) + VACUUM;
    const std::string pressed = with("P", "P = 10") + VACUUM;
    const auto side = [](std::string_view id, std::string_view load_case, float sound,
                         float failing, Text text) {
        return Sides{id, sound, failing, std::move(text), "pass", "fail", load_case};
    };
    std::vector<Sides> sides;
    for (const std::string_view id : {"SHo", "SRo", "STo", "SAo"})
        sides.push_back(
            side(id, "external, operating", 15.0f, 20000.0f, at("P_external", pressed)));
    const std::vector<Sides> others = {
        side("SVo", "external, operating", 15.0f, 20000.0f, at("P_external", REVERSE + VACUUM)),
        side("SFo", "external, operating", 15.0f, 20000.0f, at("P_external", FULL_FACE + VACUUM)),
        side("J_operating", "external, operating", 15.0f, 20000.0f, at("P_external", asked)),
        Sides{"required_thickness", 15.0f, 20000.0f, at("P_external", thickness), NO_ROW, "fail",
              "external"},
        side("bolt_area", "external", 25000.0f, 2000.0f,
             at("Sa", with("P", "P = 3000", FULL_FACE + VACUUM))),
        side("rating", "external", 15.0f, 500.0f, at("P_external", pressed + "rating = 200\n")),
    };
    sides.insert(sides.end(), others.begin(), others.end());
    return sides;
}

TEST(BothSides, OfTheRowsOfTheCaseExternal) {
    for (const Sides& each : external_cases())
        expect_flip(each);
}

// Each row that the case has for one of these flanges is among them.
TEST(BothSides, OfEveryRowOfTheCaseExternal) {
    std::set<std::pair<std::string, std::string>> covered;
    for (const Sides& each : external_cases())
        covered.emplace(each.id, each.load_case);
    std::size_t rows = 0;
    for (const std::string& flange :
         {FLANGE_TOML, BLIND, REVERSE, FULL_FACE, FLANGE_TOML + "rigidity = true\n",
          FLANGE_TOML + "rating = 200\n", FLANGE_TOML + "code = \"EN 13445\"\n",
          with("kind", "kind = \"thickness\""), with("kind", "kind = \"design\"")}) {
        for (const char* pressure : {"P_external = 15\n", "P_external = 9000\n"}) {
            for (const Check& check : judged(flange + pressure).checks) {
                if (!check.load_case().starts_with("external")) continue;
                ++rows;
                EXPECT_TRUE(covered.contains(
                    {std::string(check.field().id), std::string(check.load_case())}))
                    << check.field().id << ", " << check.load_case() << '\n'
                    << flange << pressure;
            }
        }
    }
    EXPECT_GT(rows, 50u);
}

// ---- none is left out ------------------------------------------------------------------------------------

TEST(BothSides, OfEveryCheckOfEveryKind) {
    const std::map<std::string_view, Covered> covered = {{"flange", flanges()},
                                                         {"shell", shells()},
                                                         {"external", externals()},
                                                         {"mdmt", metal_temperatures()}};
    for (const ElementKind* kind : element_kinds()) {
        const auto own = covered.find(kind->table);
        ASSERT_NE(own, covered.end()) << kind->table;
        for (const CheckField& field : kind->checks) {
            // In tests of their own, above.
            if (field.id == "metal_temperature" || field.id == "calculation" ||
                field.id == "search")
                continue;
            const bool of_shell = kind->table == "shell" && covered.at("external").has(field.id);
            EXPECT_TRUE(own->second.has(field.id) || of_shell) << kind->table << ' ' << field.id;
        }
    }
}

} // namespace
} // namespace tarvane::app
