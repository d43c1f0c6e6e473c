// Checks that a user waives: the key, its faults, what becomes of the rows and of the verdict.
#include "check_rows.h"
#include "components/waivers.h"

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string THIN = "[[shell]]\nP = 10\nT = 200\nS = 20000\nSa = 20000\nt = 0.18\n"
                         "kind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";
const std::string PLAIN = "[[shell]]\nP = 10\nT = 200\nS = 20000\nSa = 20000\nt = 0.5\n"
                          "kind = \"cylinder\"\nD = 40\n";

std::string fault(const std::string& toml) {
    const std::vector<std::string> lines = fault_lines(toml);
    EXPECT_EQ(lines.size(), 1u) << toml;
    return lines.empty() ? "" : lines[0];
}

TEST(Waivers, TakeAListOrOneId) {
    for (const char* value : {"\"head_1_4f\"", "[\"head_1_4f\"]", "[\"head_1_4f\", \"head_1_4f\"]",
                              "[\"cone_angle\", \"head_1_4f\"]"}) {
        const Judged head = judged(THIN + "waive = " + value + '\n');
        EXPECT_EQ(head.state("head_1_4f"), "waived") << value;
        EXPECT_EQ(head.verdict.status, Status::fine) << value;
    }
    EXPECT_EQ(judged(THIN + "waive = []\n").state("head_1_4f"), "not made");
    // One that was not needed changes nothing.
    EXPECT_EQ(judged(PLAIN + "waive = [\"head_1_4f\"]\n").find("head_1_4f"), nullptr);
}

TEST(Waivers, OfAnotherIdAreFaults) {
    EXPECT_EQ(fault(THIN + "waive = [\"head_14f\"]\n"),
              "f:11: waive: there is no check \"head_14f\"; the nearest is head_1_4f");
    const std::string known = fault(PLAIN + "waive = [\"mawp\"]\n");
    EXPECT_EQ(known.rfind("f:9: waive: the check \"mawp\" can't be waived; those that can are ", 0),
              0u)
        << known;
    EXPECT_NE(known.find("\"head_1_4f\""), std::string::npos);
    EXPECT_EQ(fault(PLAIN + "waive = true\n"),
              "f:9: waive: a list of checks, [\"head_1_4f\"], is expected, not true (checks that "
              "are waived)");
    EXPECT_EQ(fault(PLAIN + "waive = [1]\n"),
              "f:9: waive: a list of checks, [\"head_1_4f\"], is expected, not 1 (checks that are "
              "waived)");
    // Those of another kind.
    EXPECT_NE(fault(PLAIN + "waive = [\"heat_treatment\"]\n").find("there is no check"),
              std::string::npos);
}

TEST(Waivers, OfTheVesselReachEveryComponent) {
    for (const char* head : {"waive = [\"head_1_4f\"]\n", "[vessel]\nwaive = [\"head_1_4f\"]\n"}) {
        EXPECT_EQ(judged(head + THIN).state("head_1_4f"), "waived");
        // Its own list comes first.
        EXPECT_EQ(judged(head + THIN + "waive = []\n").state("head_1_4f"), "not made");
    }
    EXPECT_NE(fault("waive = [\"heat_treatment\"]\n" + PLAIN).find("there is no check"),
              std::string::npos);
    // Of a kind that the file has.
    EXPECT_TRUE(fault_lines("waive = [\"heat_treatment\"]\n" + PLAIN + FLANGE_TOML).empty());
}

TEST(Waivers, OfAnIdAmongOthers) {
    EXPECT_TRUE(has_waiver("a,bc,d", "bc"));
    EXPECT_TRUE(has_waiver("a,bc,d", "d"));
    EXPECT_FALSE(has_waiver("a,bc,d", "b"));
    EXPECT_FALSE(has_waiver("", "b"));
    EXPECT_FALSE(has_waiver("abc", "ab"));
}

// A check that can be waived says so to everyone who asks for it: each id is taken by its kind.
TEST(Waivers, AreTakenForEveryCheckThatCanBe) {
    for (const ElementKind* kind : element_kinds()) {
        for (const CheckField& field : kind->checks) {
            const Value id{std::string(field.id)};
            EXPECT_EQ(take_waivers(id, std::span(&kind, 1)).value.has_value(), field.waivable)
                << kind->table << ' ' << field.id;
        }
    }
}

} // namespace
} // namespace tarvane::app
