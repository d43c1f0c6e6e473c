// A strict request has no defaults for values that decide about safety.
#include "app_fixture.h"

namespace tarvane::app {
namespace {

std::vector<std::string> strict_faults(const std::string& toml) {
    std::vector<std::string> lines;
    for (const Fault& fault : read_input(toml, element_kinds(), true).faults)
        lines.push_back(fault_line("f", fault));
    return lines;
}

const std::string LISTED = FLANGE_TOML + "bolt_size = \"nearest\"\n";
const std::string HEAD = "units = \"SI\"\ncode = \"VIII-1\"\nedition = \"current\"\nE = 1\nci = 0\n"
                         "ce = 0\n";

TEST(Strict, NamesEachDefault) {
    EXPECT_TRUE(read_input(LISTED).faults.empty());
    const std::vector<std::string> wanted = {
        "f:1: units: missing; a strict request gives them, else they would be \"US\"",
        "f:1: code: missing in flange 1; a strict request gives it (design code), else it would be "
        "\"VIII-1\"",
        "f:1: edition: missing in flange 1; a strict request gives it (edition of the code: older "
        "for VIII-2, A98 for VIII-1), else it would be \"current\"",
        "f:1: ci: missing in flange 1; a strict request gives it (internal corrosion allowance), "
        "else it would be 0.0000 in.",
        "f:1: ce: missing in flange 1; a strict request gives it (external corrosion allowance), "
        "else it would be 0.0000 in.",
        "f:1: E: missing in flange 1; a strict request gives it (joint efficiency), else it would "
        "be 1.00"};
    EXPECT_EQ(strict_faults(LISTED), wanted);
}

TEST(Strict, IsContentWithWhatIsGiven) {
    const std::string us = "units = \"US\"\n" + HEAD.substr(HEAD.find('\n') + 1);
    EXPECT_EQ(strict_faults(us + LISTED), std::vector<std::string>{});
    // One after the other, each alone.
    for (const char* key : {"units", "code", "edition", "E", "ci", "ce"}) {
        const std::vector<std::string> faults = strict_faults(with(key, "", '\n' + us) + LISTED);
        ASSERT_EQ(faults.size(), 1u) << key;
        EXPECT_NE(faults[0].find(std::string(": ") + key + ": missing"), std::string::npos)
            << faults[0];
    }
}

// Required anyway, where the sketch reads it; where it does not, it need not be given.
TEST(Strict, AsksForTheColumnOfASketchThatHasTwo) {
    const std::string us = "units = \"US\"\n" + HEAD.substr(HEAD.find('\n') + 1);
    const std::vector<std::string> faults =
        strict_faults(us + with("facing", "facing = \"2\"\nw = 0.125", LISTED));
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_NE(faults[0].find(": column: missing"), std::string::npos) << faults[0];
}

TEST(Strict, MayBeSaidInTheFile) {
    EXPECT_EQ(read_input("strict = true\n" + LISTED).faults.size(), 6u);
    EXPECT_TRUE(read_input("strict = false\n" + LISTED).faults.empty());
    EXPECT_EQ(strict_faults("strict = false\n" + LISTED).size(), 6u);
    const auto faults = fault_lines("strict = 1\n" + LISTED);
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0], "f:1: strict: true or false is expected, not 1");
}

TEST(Strict, HoldsForEveryKind) {
    const std::string toml = R"(units = "US"
[[shell]]
kind = "cylinder"
P = 100
D = 60
t = 0.5
S = 20000
Sa = 20000
T = 300
[[external]]
kind = "sphere"
P_external = 15
T = 300
chart = "CS-2"
D = 60
t = 0.5
[[mdmt]]
curve = "B"
tg = 0.5
)";
    ASSERT_TRUE(read_input(toml).faults.empty()) << fault_lines(toml)[0];
    std::vector<std::string> keys;
    for (const Fault& fault : read_input(toml, element_kinds(), true).faults)
        keys.push_back(fault.path);
    const std::vector<std::string> wanted = {
        "shell[0].code",    "shell[0].edition",    "shell[0].ci",    "shell[0].E",
        "external[0].code", "external[0].edition", "external[0].ci", "mdmt[0].code",
        "mdmt[0].edition",  "mdmt[0].ci",          "mdmt[0].ce",     "mdmt[0].E"};
    EXPECT_EQ(keys, wanted);
}

using StrictProgramTest = ProgramTest;

TEST_F(StrictProgramTest, IsAnOptionOfRunAndCheck) {
    const std::string file = write("f.toml", LISTED);
    for (const char* command : {"run", "check"}) {
        EXPECT_EQ(run(std::string(command) + ' ' + file).status, 0) << command;
        const ProgramRun strict = run(std::string(command) + ' ' + file + " --strict");
        EXPECT_EQ(strict.status, 2) << command;
        EXPECT_NE(strict.err.find("else it would be \"VIII-1\""), std::string::npos) << strict.err;
        EXPECT_EQ(strict.out, "");
    }
}

} // namespace
} // namespace tarvane::app
