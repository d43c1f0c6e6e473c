// The verdict on all components: its words, and the list of what the program does not look at.
#include "document/vessel_verdict.h"

#include "check_rows.h"
#include "components/not_covered.h"

#include <algorithm>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string SHELL =
    "[[shell]]\ndescription = \"drum\"\nP = 100\nT = 200\nS = 20000\nSa = 20000\n"
    "t = 0.5\nkind = \"cylinder\"\nD = 40\n";
const std::string CONE = "[[shell]]\nP = 100\nT = 200\nS = 20000\nSa = 20000\nt = 0.5\n"
                         "kind = \"cone\"\nD = 40\nalpha = 30\n";
const std::string THIN =
    "[[shell]]\ndescription = \"top\"\nP = 10\nT = 200\nS = 20000\nSa = 20000\n"
    "t = 0.18\nkind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";
const std::string METAL = "[[mdmt]]\ncurve = \"B\"\ntg = 1.0\nratio = 0.1\nMDMT = 0\n";

VesselVerdict verdict_on(const std::string& toml) {
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult input = read_input(toml);
    EXPECT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front());
    const Calculation calculation = calculate(input.request);
    return vessel_verdict(input.request, calculation);
}

std::vector<std::string_view> not_covered_in(const std::string& toml) {
    return not_covered(read_input(toml).request);
}

bool names(const std::vector<std::string_view>& list, std::string_view part) {
    return std::any_of(list.begin(), list.end(), [part](std::string_view words) {
        return words.find(part) != std::string_view::npos;
    });
}

TEST(VesselVerdict, PassesWhereEveryComponentDoes) {
    const VesselVerdict verdict = verdict_on(SHELL + METAL);
    EXPECT_TRUE(verdict.passes);
    EXPECT_EQ(verdict.words.rfind("every check that tarvane makes passes; governing check: ", 0),
              0u)
        << verdict.words;
    EXPECT_TRUE(verdict.words.ends_with(", of shell 1 (drum)")) << verdict.words;
}

TEST(VesselVerdict, NamesEachComponentThatFails) {
    const VesselVerdict verdict = verdict_on(SHELL + with("t", "t = 0.05", SHELL) + THIN);
    EXPECT_FALSE(verdict.passes);
    EXPECT_EQ(verdict.words.rfind("shell 2 (drum): governing check: required thickness, ", 0), 0u)
        << verdict.words;
    EXPECT_TRUE(verdict.words.ends_with(
        "; shell 3 (top): governing check: thickness of a thin head, not made"))
        << verdict.words;
    EXPECT_EQ(verdict.words.find("every check"), std::string::npos);
}

TEST(VesselVerdict, NamesWhatIsWaived) {
    const VesselVerdict verdict = verdict_on(SHELL + THIN + "waive = [\"head_1_4f\"]\n");
    EXPECT_TRUE(verdict.passes);
    EXPECT_TRUE(verdict.words.ends_with("; shell 2 (top): waived: head_1_4f")) << verdict.words;
}

// Outside the limits of its formulas a head holds no pressure that they give.
TEST(VesselVerdict, OfAHeadOutsideItsRulesIsAFailure) {
    const VesselVerdict verdict =
        verdict_on(with("r", "r = 3", with("L", "L = 140", with("t", "t = 0.5", THIN))));
    EXPECT_FALSE(verdict.passes);
    EXPECT_EQ(verdict.words, "shell 1 (top): governing check: knuckle radius (6 % of Do), 2.0200");
}

// What only advises or warns may be exceeded: the verdict claims nothing of it.
TEST(VesselVerdict, DoesNotClaimWhatIsOnlyAdvised) {
    const std::string sound = with("n", "n = 16");
    EXPECT_EQ(verdict_on(sound).words.rfind("every check that tarvane makes passes; ", 0), 0u)
        << verdict_on(sound).words;
    const std::string limits[][3] = {
        {"n", "n = 14", "advice exceeded: number of bolts, a multiple of four"},
        {"Go", "Go = 15.5", "warning: gasket within its face and the bolt circle"}};
    for (const auto& [key, line, remark] : limits) {
        const VesselVerdict verdict = verdict_on(with(key, line, sound));
        EXPECT_TRUE(verdict.passes);
        EXPECT_EQ(verdict.words.rfind("every check that decides passes; governing check: ", 0), 0u)
            << verdict.words;
        EXPECT_TRUE(verdict.words.ends_with("; flange 1 (test flange): " + remark))
            << verdict.words;
    }
}

TEST(VesselVerdict, OfARunThatEndedDoesNotPass) {
    const ReadResult input = read_input(SHELL + SHELL);
    Calculation calculation = calculate(input.request);
    calculation.complete = false;
    const VesselVerdict verdict = vessel_verdict(input.request, calculation);
    EXPECT_FALSE(verdict.passes);
    EXPECT_EQ(verdict.words, "the run ended before its last component");
}

TEST(NotCovered, IsWhatAppliesToTheVessel) {
    const auto shell = not_covered_in(SHELL);
    EXPECT_TRUE(names(shell, "openings and their reinforcement, UG-36 to UG-45"));
    EXPECT_TRUE(names(shell, "supports"));
    EXPECT_TRUE(names(shell, "wind"));
    EXPECT_TRUE(names(shell, "fatigue, UG-22"));
    EXPECT_FALSE(names(shell, "cone"));
    EXPECT_TRUE(names(not_covered_in(CONE), "junctions of a cone"));
    EXPECT_TRUE(names(shell, "metal temperatures"));
    EXPECT_FALSE(names(not_covered_in(SHELL + METAL), "metal temperatures"));
    EXPECT_TRUE(not_covered_in(METAL).empty());
    // A flange has no openings of a shell, and other codes have other paragraphs.
    EXPECT_FALSE(names(not_covered_in(FLANGE_TOML), "openings"));
    EXPECT_TRUE(names(not_covered_in(FLANGE_TOML), "UG-22"));
    const auto en = not_covered_in(FLANGE_TOML + "code = \"EN 13445\"\n");
    EXPECT_TRUE(names(en, "fatigue"));
    EXPECT_FALSE(names(en, "UG-22"));
}

// The last lines of a run.
TEST_F(ProgramTest, EndsWithTheVerdictOnTheVessel) {
    const ProgramRun sound = run("run " + write("sound.toml", SHELL));
    EXPECT_EQ(sound.status, 0);
    const std::size_t at = sound.out.find("\nPASS  every check that tarvane makes passes; ");
    ASSERT_NE(at, std::string::npos);
    EXPECT_NE(sound.out.find("\ntarvane makes no checks of:\n  openings", at), std::string::npos);
    EXPECT_GT(at, sound.out.find("\nShells and heads"));
    const ProgramRun failing = run("run " + write("failing.toml", with("t", "t = 0.05", SHELL)));
    EXPECT_EQ(failing.status, 1);
    EXPECT_NE(failing.out.find("\nFAIL  shell 1 (drum): governing check: required thickness, "),
              failing.out.rfind("\nFAIL  shell 1 (drum): governing check: required thickness, "));
}

} // namespace
} // namespace tarvane::app
