// Each check through input texts on both sides of its limit, and that none is left out. The texts are in tests/kinds.
#include "components/external_session.h"
#include "components/flange_session.h"
#include "components/mdmt_session.h"
#include "components/shell_session.h"
#include "kind_tests.h"

#include <algorithm>
#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

class BothSides : public testing::TestWithParam<std::string_view> {};

TEST_P(BothSides, OfTheChecks) {
    const KindTests* tests = tests_of(GetParam());
    ASSERT_NE(tests, nullptr) << "no " << GetParam() << "_test.cpp in tests/kinds";
    tests->covered.expect_flips();
}

INSTANTIATE_TEST_SUITE_P(Kinds, BothSides, testing::ValuesIn(tables_of_kinds()),
                         [](const auto& of) { return std::string(of.param); });

// ---- rows that are not of one component ------------------------------------------------------------------

// A part is asked for its metal temperature in an [[mdmt]] of its own, whose check flips.
TEST(BothSidesOf, TheMetalTemperatureOfAPart) {
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
TEST(BothSidesOf, ACalculationThatStops) {
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
TEST(BothSidesOf, ASearchThatFindsNothing) {
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

TEST(BothSidesOf, TheRowsOfTheCaseExternal) {
    for (const Sides& each : external_cases())
        expect_flip(each);
}

// Each row that the case has for one of these flanges is among them.
TEST(BothSidesOf, EveryRowOfTheCaseExternal) {
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

TEST(BothSidesOf, EveryCheckOfEveryKind) {
    for (const ElementKind* kind : element_kinds()) {
        const KindTests* own = tests_of(kind->table);
        ASSERT_NE(own, nullptr) << "no " << kind->table << "_test.cpp in tests/kinds";
        for (const CheckField& field : kind->checks) {
            // In tests of their own, above.
            if (field.id == "metal_temperature" || field.id == "calculation" ||
                field.id == "search")
                continue;
            const bool of_shell =
                kind->table == "shell" && tests_of("external")->covered.has(field.id);
            EXPECT_TRUE(own->covered.has(field.id) || of_shell) << kind->table << ' ' << field.id;
        }
    }
}

} // namespace
} // namespace tarvane::app
