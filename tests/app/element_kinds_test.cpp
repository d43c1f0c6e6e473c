// Files with elements of several kinds: the flange, and a kind of the test's own.
#include "app_fixture.h"

namespace tarvane::app {

using namespace vessel;
namespace {

enum class PegNumber { length, shape, painted, coats, places, count };
enum class PegText { description, count };

constexpr Choice SHAPES[] = {{"round", 1}, {"square", 2}};
constexpr Key PEG_KEYS[] = {
    Key{"description", Place::text_setting, 0, Quantity::text, "description of the peg"}.up_to(10),
    Key{"length", Place::setting, 0, Quantity::thickness, "length of the peg"}.needs(),
    Key{"shape", Place::setting, 1, Quantity::choice, "shape of the peg"}.of(SHAPES).otherwise(2),
    Key{"painted", Place::setting, 2, Quantity::flag, "the peg is painted"},
    Key{"coats", Place::setting, 3, Quantity::whole, "coats of paint"}.opens("painted"),
    Key{"P", Place::setting, 4, Quantity::whole, "not the pressure of a flange"}};
constexpr Synonym PEG_SYNONYMS[] = {{"len", "length"}};
constexpr KeyTable PEG_TABLE{.keys = PEG_KEYS, .synonyms = PEG_SYNONYMS};

struct Peg final : SettingsElement<PegNumber, PegText> {
    std::unique_ptr<Element> copy() const override { return std::make_unique<Peg>(*this); }
    std::string description() const override { return text_setting(PegText::description); }
    void complete(Reading& reading) override {
        if (reading.sound("coats") && whole_setting(PegNumber::coats) > 2)
            reading.fault("coats", "at most 2 coats dry");
        if (whole_setting(PegNumber::shape) == 1) reading.supply("length");
    }
    std::unique_ptr<Outcome> calculate(const Request&) const override {
        return std::make_unique<Outcome>();
    }
};

template <bool SINGLE>
const ElementKind PEG{
    .table = "peg",
    .plural = "pegs",
    .keys = PEG_TABLE,
    .most = 3,
    .single = SINGLE,
    .make =
        [] {
            auto peg = std::make_unique<Peg>();
            peg->kind = &PEG<SINGLE>;
            return std::unique_ptr<Element>(std::move(peg));
        },
    .tables = [](std::span<const Calculated>, const UnitSystem&) { return std::string(); }};

const ElementKind* const LISTS[] = {&FLANGE_KIND, &PEG<false>};
const ElementKind* const SINGLES[] = {&FLANGE_KIND, &PEG<true>};

std::vector<std::string> faults_of(const std::string& toml) {
    std::vector<std::string> lines;
    for (const Fault& fault : read_input(toml, LISTS).faults)
        lines.push_back(fault_line("f", fault));
    return lines;
}

std::vector<std::string> one(const std::string& fault) { return {fault}; }

const std::string PEG_TOML = "[[peg]]\nlength = 3\n";

TEST(Kinds, StandInTheOrderOfTheFileAndCountByThemselves) {
    const ReadResult result =
        read_input(PEG_TOML + FLANGE_TOML + PEG_TOML + "description = \"oak\"\n", LISTS);
    ASSERT_TRUE(result.faults.empty()) << fault_line("f", result.faults[0]);
    std::vector<std::string> names;
    for (const auto& element : result.request.elements)
        names.push_back(name_of(*element));
    EXPECT_EQ(names, (std::vector<std::string>{"peg 1", "flange 1 (test flange)", "peg 2 (oak)"}));
    EXPECT_EQ(flanges_of(result.request).size(), 1u);
    EXPECT_EQ(result.request.elements[2]->line, 29);
}

// Lists in lines are aligned in columns.
TEST(Kinds, OfOneLineStandInTheOrderOfTheirColumns) {
    const ReadResult result =
        read_input("peg = [{length = 2}, {length = 1}, {length = 3}]\n", LISTS);
    ASSERT_EQ(result.request.elements.size(), 3u);
    const float lengths[] = {2.0f, 1.0f, 3.0f};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto& peg = static_cast<const Peg&>(*result.request.elements[i]);
        EXPECT_EQ(peg.setting(PegNumber::length), lengths[i]);
        EXPECT_EQ(peg.number, static_cast<int>(i) + 1);
    }
}

TEST(Kinds, TakeUnitsChoicesAndFlagsOfTheirKeys) {
    const ReadResult result =
        read_input("units = \"SI\"\n[[peg]]\nlength = 25.4\ncoats = 2\nshape = \"ROUND\"\n", LISTS);
    ASSERT_EQ(result.request.elements.size(), 1u);
    const auto& peg = static_cast<const Peg&>(*result.request.elements[0]);
    EXPECT_EQ(peg.setting(PegNumber::length), 1.0f);
    EXPECT_EQ(peg.whole_setting(PegNumber::shape), 1);
    EXPECT_EQ(peg.whole_setting(PegNumber::painted), 1);
}

TEST(Kinds, OneTableDoesWhereTheKindSaysSo) {
    const std::string single = "[peg]\nlength = 3\n";
    EXPECT_EQ(read_input(single, SINGLES).request.elements.size(), 1u);
    EXPECT_EQ(read_input(PEG_TOML + PEG_TOML, SINGLES).request.elements.size(), 2u);
    EXPECT_EQ(faults_of(single),
              one("f:1: peg: a list of [[peg]] tables is expected, not a table"));
}

TEST(Kinds, HeadHoldsForEveryKindThatKnowsTheKey) {
    EXPECT_TRUE(faults_of("length = 3\n[[peg]]\n").empty());
    EXPECT_TRUE(faults_of("length = 3\n" + FLANGE_TOML + "[[peg]]\n").empty());
    // No element of this file has a length.
    EXPECT_EQ(faults_of("painted = true\n" + FLANGE_TOML), one("f:1: painted: unknown key"));
    EXPECT_EQ(faults_of("coats = 1\nm = 3\n" + PEG_TOML),
              one("f:2: m: unknown key; the nearest is P, not the pressure of a flange"));
}

TEST(Kinds, HaveFaultsOfTheirOwn) {
    EXPECT_EQ(faults_of("[[peg]]\nlen = 3\nlength = 2\n"),
              one("f:2: len: unknown key; the nearest is length, length of the peg"));
    EXPECT_EQ(faults_of(PEG_TOML + "Gox = 3\n"), one("f:3: Gox: unknown key"));
    EXPECT_EQ(
        faults_of("[[peg]]\n"),
        one("f:1: length: missing in peg 1; a number in in. is expected (length of the peg)"));
    EXPECT_TRUE(faults_of("[[peg]]\nshape = 1\n").empty()); // supplied
    EXPECT_EQ(faults_of(PEG_TOML + "coats = 3\n"), one("f:3: coats: at most 2 coats dry"));
    EXPECT_EQ(faults_of(PEG_TOML + PEG_TOML + PEG_TOML + PEG_TOML),
              one("f:1: peg: at most 3 pegs are expected, not 4"));
}

TEST(Kinds, AreNamedWhereAFileHasNone) {
    EXPECT_EQ(faults_of("peg = []\n"),
              one("f:1: flange: missing; one or more [[flange]], [[peg]] tables are expected"));
    // A fault of one kind is no reason to skip another.
    EXPECT_EQ(faults_of("flange = 3\n[[peg]]\n").size(), 2u);
}

TEST(Kinds, FaultOfOneElementClearsThemAll) {
    EXPECT_TRUE(read_input(FLANGE_TOML + "[[peg]]\n", LISTS).request.elements.empty());
}

} // namespace
} // namespace tarvane::app
