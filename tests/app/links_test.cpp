// Components that take values over from others of their file, by the description of these.
#include "app_fixture.h"
#include "components/calculation.h"
#include "components/flange_session.h"
#include "components/mdmt_input.h"
#include "components/shell_input.h"
#include "components/shell_session.h"

#include <cmath>

namespace tarvane::app {

using namespace vessel;
namespace {

using N = ShellNumber;

const std::string VESSEL = R"(tarvane = 1
[vessel]
P = 150
T = 300
ci = 0.125
E = 0.85
material = "SA-516 70"
)";

const std::string SHELL = R"([[shell]]
description = "Shell"
kind = "cylinder"
D = 60
t = 0.625
length = 150
elevation = 100
)";

const std::string HEAD = R"([[shell]]
description = "Head"
kind = "elliptical"
on = "Shell"
end = "top"
t = 0.75
)";

const std::string NECK = R"([[shell]]
description = "Neck"
kind = "cylinder"
Do = 6.625
t = 0.432
material = "SA-106 B"
ci = 0.0625
E = 1
elevation = 40
)";

const std::string GASKET =
    "bolt_material = \"SA-193 B7\"\nbolting = \"TEMA\"\n"
    "Fid = 6.07\ngasket = { m = 3, y = 10000, facing = \"1a\", Go = 8.25, Gi = 7.19 }\n";
const std::string FLANGE = R"([[flange]]
description = "Flange"
type = "weld neck"
standard = { class = 300, size = 6 }
attached_to = "Neck"
material = "SA-105"
)" + GASKET;
const std::string COVER = R"([[flange]]
description = "Cover"
type = "blind"
standard = { class = 300, size = 6 }
mates_with = "Flange"
material = "SA-105"
bolt_material = "SA-193 B7"
bolting = "TEMA"
Fid = 6.07
gasket = { m = 3, y = 10000, facing = "1a", Go = 8.5, Gi = 7.19 }
)";
const std::string LIQUID = "liquid = { density = 0.036, level = 200 }\n";

// A file whose faults fail the test.
Request request_of(const std::string& toml) {
    ReadResult result = read_input(toml);
    for (const Fault& fault : result.faults)
        ADD_FAILURE() << fault_line("f", fault);
    return std::move(result.request);
}

const ShellInput& shell_of(const Request& request, std::size_t place) {
    return dynamic_cast<const ShellInput&>(*request.elements.at(place));
}
const FlangeInput& flange_at(const Request& request, std::size_t place) {
    return dynamic_cast<const FlangeInput&>(*request.elements.at(place));
}

std::string changed(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

// ---- names -----------------------------------------------------------------------------------------------

TEST(Links, OfAnUnknownNameAreFaultsWithTheNearestOne) {
    EXPECT_EQ(fault_lines(VESSEL + changed(HEAD, "\"Shell\"", "\"Shel\"") + SHELL),
              (std::vector<std::string>{
                  "f:11: on: no [[shell]] has the description \"Shel\"; the nearest is Shell"}));
    // A flange is nothing that a head can close.
    EXPECT_EQ(
        fault_lines(VESSEL + changed(HEAD, "\"Shell\"", "\"test flange\"") + SHELL + FLANGE_TOML)
            .size(),
        1u);
}

TEST(Links, OfANameThatSeveralHaveAreFaultsWithBothPlaces) {
    EXPECT_EQ(fault_lines(VESSEL + SHELL + SHELL + HEAD),
              (std::vector<std::string>{"f:25: on: several components have the description "
                                        "\"Shell\", line 8 and line 15; one is expected"}));
    // Without a link that names it a description may be there twice.
    EXPECT_TRUE(fault_lines(VESSEL + SHELL + SHELL).empty());
}

TEST(Links, ThatLeadInACircleAreFaultsWithAllPlaces) {
    const std::string other =
        changed(changed(HEAD, "\"Head\"", "\"Shell\""), "\"Shell\"\nend", "\"Head\"\nend");
    const std::vector<std::string> faults = fault_lines(VESSEL + HEAD + other);
    EXPECT_TRUE(std::any_of(faults.begin(), faults.end(), [](const std::string& line) {
        return line == "f:17: on: the links lead in a circle: \"Head\" (line 8), \"Shell\" (line "
                       "14), and back to \"Head\"";
    }));
    const std::string itself = fault_lines(VESSEL + changed(HEAD, "\"Shell\"", "\"Head\"")).at(0);
    EXPECT_EQ(itself, "f:11: on: the links lead in a circle: \"Head\" (line 8), and back to "
                      "\"Head\"");
}

TEST(Links, AreKeysOfOneComponent) {
    EXPECT_EQ(fault_lines(VESSEL + "on = \"Shell\"\n" + SHELL),
              (std::vector<std::string>{"f:8: on: a key of one component, not of all of them"}));
}

// ---- a head on a shell ------------------------------------------------------------------------------------

// Results and checks, bit for bit.
void expect_same(const std::string& linked, const std::string& by_hand, std::size_t place) {
    const Request one = request_of(linked), other = request_of(by_hand);
    ASSERT_EQ(one.elements.size(), other.elements.size());
    ASSERT_GT(one.elements.size(), place);
    const auto a = one.elements[place]->calculate(one), b = other.elements[place]->calculate(other);
    EXPECT_EQ(a->report, b->report);
    const auto ours = one.elements[place]->results(*a), theirs = other.elements[place]->results(*b);
    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t i = 0; i < ours.size(); ++i)
        EXPECT_EQ(ours[i].value, theirs[i].value) << ours[i].field->name;
}

const std::string HEAD_BY_HAND = R"([[shell]]
description = "Head"
kind = "elliptical"
k = 2
t = 0.75
)";

TEST(Head, OnAShellIsThatOfTheSameNumbers) {
    expect_same(VESSEL + SHELL + HEAD, VESSEL + SHELL + HEAD_BY_HAND + "D = 60\n", 1);
    // Before its shell in the file, too.
    expect_same(VESSEL + HEAD + SHELL, VESSEL + HEAD_BY_HAND + "D = 60\n" + SHELL, 0);
    const std::string outside = changed(SHELL, "D = 60", "Do = 61.25");
    expect_same(VESSEL + outside + HEAD, VESSEL + outside + HEAD_BY_HAND + "Do = 61.25\n", 1);
    const std::string steel = SHELL + "material = \"SA-516 60\"\n";
    expect_same(VESSEL + steel + HEAD,
                VESSEL + steel + HEAD_BY_HAND + "D = 60\nmaterial = \"SA-516 60\"\n", 1);
    const std::string stressed = SHELL + "S = 17000\n";
    expect_same(VESSEL + stressed + HEAD, VESSEL + stressed + HEAD_BY_HAND + "D = 60\nS = 17000\n",
                1);
}

TEST(Head, OwnKeysComeFirst) {
    const Request request = request_of(VESSEL + SHELL + "material = \"SA-516 60\"\nS = 17000\n" +
                                       HEAD + "D = 59\nmaterial = \"SA-516 70\"\nelevation = 7\n");
    const ShellInput& head = shell_of(request, 1);
    EXPECT_EQ(head.setting(N::D), 59.0f);
    EXPECT_EQ(head.material(), "SA-516 70");
    EXPECT_EQ(head.setting(N::S), 20000.0f); // not the one that the shell was given
    EXPECT_EQ(head.setting(N::elevation), 7.0f);
}

TEST(Head, SaysWhereItsValuesAreFrom) {
    const Request request = request_of(VESSEL + SHELL + "material = \"SA-516 60\"\n" + HEAD);
    const Origins& origins = shell_of(request, 1).origins;
    for (const char* key : {"D", "material", "elevation"})
        EXPECT_EQ(origins.at(key).from, "shell 1 (Shell)") << key;
    EXPECT_EQ(origins.at("t").from, "file");
    EXPECT_EQ(origins.at("S").from, "material SA-516 60 at 300 °F");
}

// One at each end, of a cylinder that stands or lies.
TEST(Head, HasAnEndOfItsOwn) {
    const auto at_end = [](const char* name, const char* end) {
        return changed(changed(HEAD, "\"Head\"", '"' + std::string(name) + '"'), "\"top\"",
                       '"' + std::string(end) + '"');
    };
    const auto faults = [&](const char* end, const char* other) {
        return fault_lines(VESSEL + SHELL + at_end("A", end) + at_end("B", other));
    };
    using Lines = std::vector<std::string>;
    EXPECT_EQ(faults("top", "bottom"), Lines());
    EXPECT_EQ(faults("right", "left"), Lines());
    EXPECT_EQ(faults("top", "top"), Lines{"f:25: end: shell 2 (A) is at the top end already"});
    EXPECT_EQ(faults("left", "bottom"),
              Lines{"f:25: end: shell 2 (A) is at the left end: the other one is not at the "
                    "bottom"});
    // The ends of another cylinder are its own.
    EXPECT_EQ(fault_lines(VESSEL + SHELL + changed(SHELL, "\"Shell\"", "\"Other\"") +
                          at_end("A", "top") +
                          changed(at_end("B", "top"), "on = \"Shell\"", "on = \"Other\"")),
              Lines());
}

TEST(Head, ClosesACylinderOnly) {
    const std::vector<std::string> faults =
        fault_lines(VESSEL + changed(SHELL, "cylinder", "sphere") + HEAD);
    ASSERT_FALSE(faults.empty());
    EXPECT_EQ(faults[0], "f:18: on: a cylinder is expected, and shell 1 (Shell) is not one");
    EXPECT_EQ(fault_lines(VESSEL + SHELL + changed(HEAD, "end = \"top\"\n", "")).size(), 1u);
}

// ---- the head of the liquid -------------------------------------------------------------------------------

float pressure(const Request& request, std::size_t place) {
    return request.elements.at(place)->number_of(*request.elements[place]->kind->keys.find("P"));
}

TEST(Liquid, AddsItsHeadByElevation) {
    const std::string vessel = VESSEL + LIQUID;
    const Request top = request_of(vessel + SHELL + HEAD);
    EXPECT_FLOAT_EQ(pressure(top, 0), 150.0f + 0.036f * (200.0f - 100.0f));
    EXPECT_EQ(pressure(top, 1), 150.0f); // at 250, above the surface
    const Request bottom = request_of(vessel + SHELL + changed(HEAD, "top", "bottom"));
    // 2:1: a quarter of the diameter deep
    EXPECT_FLOAT_EQ(pressure(bottom, 1), 150.0f + 0.036f * (200.0f - (100.0f - 15.0f)));
    const Request left = request_of(vessel + SHELL + changed(HEAD, "top", "left"));
    EXPECT_EQ(pressure(left, 1), pressure(left, 0));
    // Own pressures hold as they are.
    EXPECT_EQ(pressure(request_of(vessel + SHELL + "P = 10\n"), 0), 10.0f);
    EXPECT_EQ(shell_of(top, 0).origins.at("P").from, "file, 3.60 psig of liquid");
}

TEST(Liquid, ReachesDownToTheLowestPointOfEveryHead) {
    const std::string vessel = VESSEL + LIQUID, bottom = changed(HEAD, "top", "bottom");
    const auto depth = [&](const std::string& head) {
        return 100.0 - static_cast<double>(
                           shell_of(request_of(vessel + SHELL + head), 1).setting(N::elevation));
    };
    EXPECT_NEAR(depth(bottom + "straight = 2\n"), 17.0, 1e-4);
    EXPECT_NEAR(depth(bottom + "h = 12\n"), 12.0, 1e-4);
    EXPECT_NEAR(depth(changed(bottom, "elliptical", "sphere")), 30.0, 1e-4);
    // Crown of 60, knuckle of 4: 60 - sqrt(56^2 - 26^2)
    EXPECT_NEAR(depth(changed(bottom, "elliptical", "torispherical") + "L = 60\nr = 4\n"),
                60.0 - std::sqrt(56.0 * 56.0 - 26.0 * 26.0), 1e-4);
    EXPECT_NEAR(depth(changed(bottom, "elliptical", "cone") + "alpha = 30\ncone_length = 40\n"),
                40.0, 1e-4);
    EXPECT_NEAR(depth(changed(bottom, "elliptical", "flat") + "C = 0.33\n"), 0.0, 1e-4);
}

TEST(Liquid, AsksForAnElevationOfEveryComponent) {
    const std::string bare = changed(SHELL, "elevation = 100\n", "");
    EXPECT_EQ(fault_lines(VESSEL + LIQUID + bare),
              (std::vector<std::string>{
                  "f:9: elevation: missing in shell 1 (Shell); with liquid in the vessel a number "
                  "in in. is expected (elevation of the lowest point inside, for the head of the "
                  "liquid; with on: that of the end)"}));
    EXPECT_EQ(fault_lines(VESSEL + LIQUID + bare + HEAD).size(), 2u);
    EXPECT_TRUE(fault_lines(VESSEL + bare + HEAD).empty());
}

TEST(Liquid, IsATableOfDensityAndLevel) {
    EXPECT_EQ(
        fault_lines(VESSEL + "liquid = 3\n" + SHELL),
        (std::vector<std::string>{"f:8: liquid: a table of density, level is expected, not 3"}));
    EXPECT_EQ(fault_lines(VESSEL + "liquid = { density = 0.036, levl = 3 }\n" + SHELL).size(), 2u);
    EXPECT_EQ(fault_lines(VESSEL + "liquid = { density = 0, level = 3 }\n" + SHELL),
              (std::vector<std::string>{"f:8: liquid.density: it must be above 0"}));
    // Without its unit: lb/in3, not lb/ft3.
    EXPECT_EQ(fault_lines(VESSEL + "liquid = { density = 62.4, level = 3 }\n" + SHELL).size(), 1u);
    EXPECT_EQ(fault_lines(VESSEL + "liquid = { density = 1.001, level = 3 }\n" + SHELL).size(), 1u);
    EXPECT_TRUE(fault_lines(VESSEL + "liquid = { density = 1, level = 3 }\n" + SHELL).empty());
    EXPECT_TRUE(fault_lines(VESSEL + "liquid = { density = \"62.4 lb/ft3\", level = 3 }\n" + SHELL)
                    .empty());
}

// ---- a flange on its neck ----------------------------------------------------------------------------------

TEST(Flange, TakesItsNeckOver) {
    const Request request = request_of(VESSEL + LIQUID + NECK + FLANGE);
    const ShellInput& neck = shell_of(request, 0);
    const FlangeInput& flange = flange_at(request, 1);
    const float bore = 6.625f - 2.0f * 0.432f;
    EXPECT_EQ(flange.record[TARVANE_B], bore);
    EXPECT_EQ(flange.record[TARVANE_go], 0.432f);
    EXPECT_EQ(flange.record[TARVANE_SHELL_THICKNESS], 0.432f);
    EXPECT_EQ(flange.record[TARVANE_SHELL_ID], bore);
    EXPECT_EQ(flange.record[TARVANE_SHELL_CA], 0.0625f);
    EXPECT_EQ(flange.record[TARVANE_SHELL_STRESS], neck.setting(N::S));
    EXPECT_EQ(flange.record[TARVANE_SHELL_STRESS_COLD], neck.setting(N::Sa));
    EXPECT_GT(neck.setting(N::S), 0.0f);
    EXPECT_EQ(flange.record[TARVANE_ci], 0.0625f); // before that of the vessel
    EXPECT_EQ(flange.setting(Setting::joint_efficiency), 1.0f);
    EXPECT_FLOAT_EQ(flange.record[TARVANE_P], 150.0f + 0.036f * 160.0f);
    EXPECT_EQ(flange.origins.at("ci").from, "shell 1 (Neck)");
    const Request own = request_of(VESSEL + NECK + FLANGE + "ci = 0\nSn = 11000\n");
    EXPECT_EQ(flange_at(own, 1).record[TARVANE_ci], 0.0f);
    EXPECT_EQ(flange_at(own, 1).record[TARVANE_SHELL_STRESS], 11000.0f);
}

TEST(Flange, WithoutAStandardTakesBoreAndHubOfItsNeck) {
    const std::string body = "attached_to = \"Shell\"\n";
    std::string toml = with("B", "", FLANGE_TOML + body);
    toml = with("g0", "", toml);
    const Request request = request_of(VESSEL + SHELL + toml);
    EXPECT_EQ(flange_at(request, 1).record[TARVANE_B], 60.0f);
    EXPECT_EQ(flange_at(request, 1).record[TARVANE_go], 0.625f);
    // A slip on flange goes over it: its bore is its own.
    const std::vector<std::string> faults = fault_lines(
        VESSEL + SHELL + with("type", "type = \"slip on\"", with("B", "", FLANGE_TOML + body)));
    EXPECT_EQ(faults.size(), 1u);
    EXPECT_NE(faults.at(0).find("B: missing in flange 1"), std::string::npos);
}

TEST(Flange, ThatIsBlindIsAttachedToNothing) {
    const std::string blind =
        with("type", "type = \"blind\"", FLANGE_TOML) + "attached_to = \"Shell\"\n";
    EXPECT_EQ(fault_lines(VESSEL + SHELL + blind).at(0),
              "f:41: attached_to: a blind flange is bolted to its mate; mates_with names that");
}

// ---- mates -------------------------------------------------------------------------------------------------

struct Loads {
    float Wm1, Wm2, W;
};

Loads loads_of(const Request& request, std::size_t place) {
    const FlangeOutcome outcome = run_flange(flange_at(request, place), request);
    return {outcome.found.Wm1, outcome.found.Wm2, outcome.found.W};
}

TEST(Mates, BothHaveTheGreaterLoads) {
    const std::string vessel = VESSEL + NECK + FLANGE;
    const std::string alone = changed(COVER, "mates_with = \"Flange\"\n", "elevation = 40\n");
    // The gasket of the cover is wider: its loads are greater.
    const Request apart = request_of(vessel + alone), pair = request_of(vessel + COVER);
    const Loads flange = loads_of(apart, 1), cover = loads_of(apart, 2);
    EXPECT_LT(flange.Wm1, cover.Wm1);
    EXPECT_LT(flange.Wm2, cover.Wm2);
    EXPECT_LT(flange.W, cover.W);
    for (const std::size_t place : {1u, 2u}) {
        const Loads both = loads_of(pair, place);
        EXPECT_EQ(both.Wm1, cover.Wm1);
        EXPECT_EQ(both.Wm2, cover.Wm2);
        EXPECT_EQ(both.W, cover.W);
        EXPECT_EQ(flange_at(pair, place).record[TARVANE_MATING_OPERATING], cover.Wm1);
    }
    EXPECT_EQ(flange_at(pair, 1).origins.at("mating_design").from,
              "the greater one of flange 1 (Flange) and flange 2 (Cover)");
    // As with the loads written by hand.
    char mating[200];
    std::snprintf(mating, sizeof mating,
                  "mating_operating = %.9g\nmating_seating = %.9g\nmating_design = %.9g\n",
                  static_cast<double>(cover.Wm1), static_cast<double>(cover.Wm2),
                  static_cast<double>(cover.W));
    expect_same(vessel + COVER, vessel + mating + alone, 1);
}

TEST(Mates, ShareTheirElevation) {
    const Request pair = request_of(VESSEL + LIQUID + NECK + FLANGE + COVER);
    EXPECT_EQ(flange_at(pair, 2).setting(Setting::elevation), 40.0f);
    EXPECT_EQ(pressure(pair, 2), pressure(pair, 1));
}

TEST(Mates, ThatAreRatedShareTheirRating) {
    const std::string rated = R"([[flange]]
description = "Manway"
kind = "rated"
type = "weld neck"
standard = { class = 150, size = 20, wall = 0.5 }
rating = 230
elevation = 75
)";
    const std::string cover = R"([[flange]]
description = "Cover"
kind = "rated"
type = "blind"
mates_with = "Manway"
)";
    const Request request = request_of(VESSEL + LIQUID + rated + cover);
    const FlangeInput& taken = flange_at(request, 1);
    EXPECT_EQ(taken.setting(Setting::rating), 230.0f);
    EXPECT_EQ(taken.standard(), "ASME B16.5 class 150 NPS 20");
    EXPECT_EQ(taken.setting(Setting::elevation), 75.0f);
    EXPECT_EQ(pressure(request, 1), pressure(request, 0));
    const std::string other = changed(cover, "Manway", "Flange") + "rating = 740\n";
    EXPECT_EQ(
        fault_lines(VESSEL + NECK + FLANGE + other),
        (std::vector<std::string>{
            "f:31: mates_with: a flange of kind \"rated\" and one of another kind have no loads "
            "in common; flange 1 (Flange) is not"}));
}

TEST(Mates, AreTwo) {
    const std::string second = changed(COVER, "\"Cover\"", "\"Other\"");
    EXPECT_EQ(
        fault_lines(VESSEL + NECK + FLANGE + COVER + second),
        (std::vector<std::string>{"f:41: mates_with: \"Flange\" has a mate already, in line 27"}));
    const std::string back = FLANGE + "mates_with = \"Cover\"\n";
    EXPECT_EQ(fault_lines(VESSEL + NECK + back + COVER).size(), 1u);
}

TEST(Mates, HaveNoLoadsOfTheirOwn) {
    const std::string loads = "mating_operating = 1\nmating_seating = 1\nmating_design = 1\n";
    EXPECT_EQ(fault_lines(VESSEL + NECK + FLANGE + loads + COVER),
              (std::vector<std::string>{"f:34: mates_with: either mates_with or the loads of the "
                                        "mating flange are expected"}));
}

// ---- metal temperatures -------------------------------------------------------------------------------------

const MdmtInput& mdmt_at(const Request& request, std::size_t place) {
    return dynamic_cast<const MdmtInput&>(*request.elements.at(place));
}

TEST(MetalTemperature, TakesItsComponentOver) {
    const Request request = request_of(VESSEL + "[mdmt]\nof = \"Shell\"\n" + SHELL);
    const MdmtInput& mdmt = mdmt_at(request, 0);
    using M = MdmtNumber;
    EXPECT_EQ(mdmt.setting(M::tg), 0.625f);
    EXPECT_EQ(mdmt.setting(M::ci), 0.125f);
    EXPECT_EQ(mdmt.setting(M::E), 0.85f);
    EXPECT_EQ(mdmt.material(), "SA-516 70");
    // P (R + c) / (S E - 0.6 P), UG-27(c)(1), without the allowance
    EXPECT_NEAR(static_cast<double>(mdmt.setting(M::tr)),
                150.0 * 30.125 / (20000.0 * 0.85 - 0.6 * 150.0), 1e-5);
    EXPECT_EQ(mdmt.origins.at("tr").from, "shell 1 (Shell)");
    const Request own =
        request_of(VESSEL + "[mdmt]\nof = \"Shell\"\ntg = 0.7\nratio = 1\n" + SHELL);
    EXPECT_EQ(mdmt_at(own, 0).setting(M::tg), 0.7f);
    EXPECT_EQ(mdmt_at(own, 0).setting(M::tr), 0.0f);
}

TEST(MetalTemperature, GoesByTheThicknessAtTheWeldOfAFlange) {
    using M = MdmtNumber;
    const std::string parts = VESSEL + NECK + FLANGE + COVER;
    const Request request =
        request_of(parts + "[[mdmt]]\nof = \"Flange\"\n[[mdmt]]\nof = \"Cover\"\n");
    EXPECT_EQ(mdmt_at(request, 3).setting(M::tg), 0.432f);
    EXPECT_EQ(mdmt_at(request, 3).material(), "SA-105");
    const FlangeOutcome outcome = run_flange(flange_at(request, 1), request);
    EXPECT_EQ(mdmt_at(request, 3).setting(M::ratio), outcome.found.stress_ratio);
    EXPECT_GT(outcome.found.stress_ratio, 0.0f);
    EXPECT_LT(outcome.found.stress_ratio, 0.5f);
    // A cover is not welded: a quarter of its thickness
    EXPECT_EQ(mdmt_at(request, 4).setting(M::tg), flange_at(request, 2).record[TARVANE_t] / 4.0f);
}

// UCS-66(c): a flange as ASME B16.5 has it, of a material with a curve.
TEST(MetalTemperature, OfAStandardFlangeIsExemptByUcs66c) {
    const auto exempt = [](const std::string& flange, const std::string& keys = {}) {
        const ReadResult read =
            read_input(VESSEL + NECK + flange + "[[mdmt]]\nof = \"Flange\"\n" + keys);
        EXPECT_TRUE(read.faults.empty()) << fault_line("f", read.faults.front());
        return mdmt_at(read.request, 2).standard_flange();
    };
    EXPECT_TRUE(exempt(FLANGE));
    // Other dimensions than those of the standard, but for the bore and the face.
    for (const char* own : {"t = 2\n", "n = 16\n", "A = 13\n", "C = 10.7\n"})
        EXPECT_FALSE(exempt(FLANGE + own)) << own;
    EXPECT_TRUE(exempt(FLANGE + "Fod = 8.4\n"));
    EXPECT_FALSE(exempt(FLANGE + "kind = \"thickness\"\n"));
    EXPECT_FALSE(exempt(FLANGE, "ucs66c = false\n"));
    EXPECT_FALSE(exempt(FLANGE, "code = \"VIII-2\"\nSy = 36000\nMDMT = 0\n"));
    EXPECT_FALSE(exempt(FLANGE, "edition = \"A98\"\n"));
    EXPECT_FALSE(exempt(FLANGE, "curve = \"exempt\"\n"));
    EXPECT_FALSE(exempt(FLANGE, "curve = \"impact tested\"\nMDMT = 0\n"));
    const std::string rated = "[[flange]]\ndescription = \"Flange\"\ntype = \"weld neck\"\nkind = "
                              "\"rated\"\nrating = 200\nmaterial = \"SA-105\"\n";
    EXPECT_TRUE(exempt(rated + "standard = { class = 150, size = 20, wall = 0.5 }\n"));
    EXPECT_FALSE(exempt(rated + "g0 = 0.5\n")); // by which standard?
    EXPECT_FALSE(exempt(rated + "standard = { class = \"PN16\", size = \"DN 300\", wall = 0.3 }\n"
                                "g0 = 0.5\n"));
}

// The thickness that its part has by a link is not missing where the link is at fault.
TEST(MetalTemperature, OfTheVesselHasNoFaultsOfItsPart) {
    const std::string vessel = VESSEL + "MDMT = -20\n";
    const std::string lost = changed(FLANGE, "attached_to = \"Neck\"", "attached_to = \"Nock\"");
    const std::vector<std::string> lines = fault_lines(vessel + NECK + lost + "elevation = 0\n");
    ASSERT_EQ(lines.size(), 1u) << lines.back();
    EXPECT_NE(lines[0].find("attached_to: no [[shell]] has the description \"Nock\""),
              std::string::npos);
    // Without another fault it is.
    const std::string slip = "[[flange]]\ntype = \"slip on\"\nkind = \"rated\"\nrating = 200\n"
                             "material = \"SA-105\"\n";
    EXPECT_EQ(fault_lines(vessel + slip),
              std::vector<std::string>{
                  "f:9: tg: missing in mdmt 1; a number in in. is expected (governing thickness)"});
}

// Nor has it that of a description which can't be read.
TEST(MetalTemperature, OfTheVesselIsOfAPartWithoutASoundDescription) {
    const std::string vessel = VESSEL + "MDMT = -20\n";
    const auto described = [&](std::size_t characters) {
        return fault_lines(vessel +
                           changed(SHELL, "\"Shell\"", '"' + std::string(characters, 'S') + '"'));
    };
    EXPECT_TRUE(described(200).empty());
    const std::vector<std::string> lines = described(201);
    ASSERT_EQ(lines.size(), 1u) << lines.front();
    EXPECT_NE(lines[0].find("(description of the element)"), std::string::npos) << lines[0];
}

TEST(MetalTemperature, OfTheVesselIsAskedOfEveryPart) {
    const std::string vessel = VESSEL + "MDMT = -20\n";
    const Request request = request_of(vessel + SHELL + HEAD + NECK + FLANGE);
    ASSERT_EQ(request.elements.size(), 8u);
    for (std::size_t i = 0; i < 4; ++i) {
        const MdmtInput& mdmt = mdmt_at(request, 4 + i);
        EXPECT_EQ(mdmt.description(), request.elements[i]->description());
        EXPECT_EQ(mdmt.setting(MdmtNumber::required), -20.0f);
        EXPECT_TRUE(mdmt.asked);
    }
    // An [[mdmt]] of a part is the one of that part.
    const Request own =
        request_of(vessel + SHELL + HEAD + "[[mdmt]]\nof = \"Shell\"\nMDMT = -10\n");
    ASSERT_EQ(own.elements.size(), 4u);
    EXPECT_EQ(mdmt_at(own, 2).setting(MdmtNumber::required), -10.0f);
    EXPECT_EQ(mdmt_at(own, 3).description(), "Head");
    EXPECT_EQ(request_of(VESSEL + SHELL).elements.size(), 1u);
}

// Nothing else changes when the pressure does, and everything that depends on it.
TEST(Vessel, PressureOfOnePlaceReachesAll) {
    const std::string vessel = VESSEL + LIQUID + "MDMT = -20\n";
    const std::string parts = SHELL + HEAD + NECK + FLANGE + COVER;
    const Request low = request_of(vessel + parts);
    const Request high = request_of(changed(vessel, "P = 150", "P = 160") + parts);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(static_cast<double>(pressure(high, i) - pressure(low, i)), 10.0, 1e-4) << i;
    EXPECT_GT(mdmt_at(high, 5).setting(MdmtNumber::tr), mdmt_at(low, 5).setting(MdmtNumber::tr));
    EXPECT_GT(loads_of(high, 3).Wm1, loads_of(low, 3).Wm1);
    EXPECT_EQ(loads_of(high, 3).Wm1, loads_of(high, 4).Wm1);
}

// ---- the document -------------------------------------------------------------------------------------------

TEST(Document, IsKept) {
    const Request request = request_of(
        VESSEL + SHELL +
        "[document]\nnumber = \"V-101\"\nproject = \"Recovery é\"\n"
        "revisions = [{ revision = \"A\", description = \"first\" }, { revision = \"B\" }]\n");
    EXPECT_EQ(request.document.texts, (Texts{{"project", "Recovery é"}, {"number", "V-101"}}));
    ASSERT_EQ(request.document.revisions.size(), 2u);
    EXPECT_EQ(request.document.revisions[0], (Texts{{"revision", "A"}, {"description", "first"}}));
    EXPECT_EQ(request.document.revisions[1], (Texts{{"revision", "B"}}));
}

TEST(Document, HasTextsAlone) {
    EXPECT_EQ(fault_lines("document = 3\n" + FLANGE_TOML),
              (std::vector<std::string>{"f:1: document: a table of texts is expected, not 3"}));
    EXPECT_EQ(fault_lines(FLANGE_TOML + "[document]\nprojet = \"x\"\nnumber = 3\nrevisions = 1\n"),
              (std::vector<std::string>{
                  "f:28: projet: unknown key; the nearest is project",
                  "f:29: number: a text of up to 200 characters is expected, not 3 (number "
                  "of the document)",
                  "f:30: revisions: a list of up to 100 tables of texts is expected, not "
                  "1"}));
    EXPECT_EQ(fault_lines(FLANGE_TOML + "[document]\nrevisions = [{ rev = \"A\" }]\n").size(), 1u);
}

} // namespace
} // namespace tarvane::app
