// Each check of a flange on both sides of its limit, and the results where there is none.
#include "check_rows.h"

#include "components/flange_session.h"
#include "tarvane/tarvane.h"
#include <fstream>
#include <iterator>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace tarvane::app {

using namespace vessel;
namespace {

// The hub of a welding neck by EN 13445 is a cylinder of a required thickness.
TEST(FlangeRows, HubByItsThickness) {
    const std::string en = FLANGE_TOML + "code = \"EN 13445\"\n";
    EXPECT_EQ(judged(en).state("hub_cylinder"), "no row");
    EXPECT_EQ(judged(FLANGE_TOML).state("hub_thickness"), "no row");
    EXPECT_EQ(judged(with("P", "P = -15", en)).state("hub_thickness"), "no row");
}

// The formula of the hub is shown with the numbers that give its pressure.
TEST(FlangeRows, HubShowsItsStep) {
    const Judged flange = judged(FLANGE_TOML);
    const Check& hub = *flange.find("hub_cylinder");
    EXPECT_NEAR(*hub.demand(), 20000.0f * 0.375f / (6.0f + 0.6f * 0.375f), 0.01f);
    EXPECT_EQ(hub.step(), "S*E*t/(R + 0.6*t) = 20000.00*1.000*0.3750/(6.000 + 0.6*0.3750) = "
                          "1204.82 psig");
    const Judged division_2 = judged(FLANGE_TOML + "code = \"VIII-2\"\n");
    EXPECT_EQ(division_2.find("hub_cylinder")->step(),
              "S*E*ln((R + t)/R) = 20000.00*1.000*ln((6.000 + 0.3750)/6.000) = 1212.49 psig");
}

// A shell of which nothing is known is not checked.
TEST(FlangeRows, AttachedShellOnlyWhereItIsGiven) {
    EXPECT_EQ(judged(FLANGE_TOML).state("attached_shell"), "no row");
    EXPECT_EQ(judged(FLANGE_TOML + "tShell = 0.375\nDshell = 12\n").state("attached_shell"),
              "no row");
}

TEST(FlangeRows, Geometry) {
    EXPECT_EQ(judged(FLANGE_TOML).state("bolt_count"), "pass"); // 12
    const Judged fourteen = judged(with("n", "n = 14"));
    EXPECT_EQ(fourteen.state("bolt_count"), "fail");
    EXPECT_FALSE(fourteen.find("bolt_count")->blocks());
    EXPECT_EQ(judged(with("kind", "kind = \"design\"")).state("bolt_count"),
              "pass"); // the one selected
}

TEST(FlangeRows, Rating) {
    EXPECT_EQ(judged(FLANGE_TOML).state("rating"), "not asked");
    const Judged unrated = judged(FLANGE_TOML + "standard_flange = true\n");
    EXPECT_EQ(unrated.state("rating"), "not made");
    EXPECT_EQ(unrated.verdict.status, Status::fails);
    EXPECT_EQ(unrated.state("SHo"), "no row"); // no stresses are calculated
}

TEST(FlangeRows, Covers) {
    const std::string channel =
        with("t", "t = 2", BLIND) + "channel_cover = true\nEcover = 29000000\ndfAllow = 0.03\n";
    const std::string openings = BLIND + "D1 = 2\nD2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    EXPECT_EQ(judged(openings).state("openings"), "pass");
    EXPECT_EQ(judged(with("D1", "D1 = 9", openings)).find("openings"), nullptr);
}

TEST(FlangeRows, SearchesAndModuli) {
    EXPECT_EQ(judged(with("kind", "kind = \"thickness\"")).state("search"), "pass");
    EXPECT_EQ(judged(FLANGE_TOML).state("search"), "no row");
    EXPECT_EQ(judged(FLANGE_TOML + "rigidity = true\n").state("modulus"), "pass");
    const Judged without = judged(FLANGE_TOML + "rigidity = true\nmaterial_class = 99\n");
    EXPECT_EQ(without.state("modulus"), "fail");
    EXPECT_EQ(without.verdict.status, Status::fails);
}

TEST(FlangeRows, BoltOfTheSeriesIsANote) {
    const std::string nearest = FLANGE_TOML + "bolt_size = \"nearest\"\n";
    EXPECT_EQ(judged(with("a", "a = 0.9", nearest)).verdict.status, Status::fine);
}

TEST(FlangeRows, HeatTreatment) {
    EXPECT_EQ(judged(FLANGE_TOML).state("heat_treatment"), "not asked");
    EXPECT_EQ(judged(FLANGE_TOML + "p_number = 1\n").state("heat_treatment"), "not asked");
    EXPECT_EQ(judged(FLANGE_TOML + "code = \"EN 13445\"\n").state("heat_treatment"), "no row");
    const std::string known = with_all({{"Sfo", ""}, {"Sfa", ""}}) + "material = \"SA-105\"\n";
    // UCS-56: P-number 1 above 1 1/2 in. without preheat above 1 1/4 in.
    EXPECT_EQ(judged(known).state("heat_treatment"), "pass");
    const Judged thick = judged(with("g0", "g0 = 1.6", with("g1", "g1 = 1.9", known)));
    EXPECT_EQ(thick.state("heat_treatment"), "not made");
    EXPECT_EQ(thick.verdict.status, Status::fails);
    const auto text = [&](const std::string& key) {
        return key + '\n' + with("g0", "g0 = 1.6", with("g1", "g1 = 1.9", known));
    };
    EXPECT_EQ(judged(text("pwht = true")).state("heat_treatment"), "pass");
    EXPECT_EQ(judged(text("pwht = false")).state("heat_treatment"), "fail");
    const Judged waived = judged(text("waive = [\"heat_treatment\"]"));
    EXPECT_EQ(waived.state("heat_treatment"), "waived");
    EXPECT_EQ(waived.verdict.status, Status::fine);
}

TEST(FlangeRows, RefusedAndStoppedAreNotMade) {
    const Judged refused = judged(with("Fod", "Fod = 14"));
    EXPECT_EQ(refused.state("calculation"), "not made");
    EXPECT_EQ(refused.verdict.status, Status::bad_input);
    EXPECT_EQ(refused.find("SHo"), nullptr);
    EXPECT_FALSE(all_pass(refused.checks));
    EXPECT_EQ(refused.result("SHo"), std::nullopt);
    EXPECT_EQ(refused.why("SHo"), "the input check found fatal errors");
}

// The engine marks a stress that is above its limit by 0.25 psi; the row says so where it passes.
TEST(FlangeRows, SaysWhereTheEngineMarksAStressThatPasses) {
    FlangeInput flange = flange_of(FLANGE_TOML);
    FlangeOutcome outcome;
    outcome.record = flange.record;
    outcome.found.status = TARVANE_CALCULATED;
    outcome.found.stress[0][0] = 30000.5f;
    outcome.found.allowed[0][0] = 30000.0f;
    outcome.found.exceeded[0][0] = 1;
    const Checks checks = flange.checks(outcome, us_units());
    EXPECT_TRUE(checks.front().passes());
    EXPECT_EQ(checks.front().remark(), "within 0.005 %");
    outcome.found.stress[0][0] = 30002.0f;
    EXPECT_FALSE(flange.checks(outcome, us_units()).front().passes());
}

// ---- results -----------------------------------------------------------------------------------------

TEST(FlangeResults, AreThoseOfTheTablesAndMore) {
    const Judged flange = judged(FLANGE_TOML + "rigidity = true\n");
    EXPECT_NEAR(*flange.result("G"), 14.375f, 1e-4f);
    EXPECT_EQ(*flange.result("t"), 1.19f);
    EXPECT_GT(*flange.result("mawp"), 150.0f);
    EXPECT_GT(*flange.result("J_operating"), 0.0f);
    EXPECT_EQ(*flange.result("SHo"), *flange.find("SHo")->demand());
    EXPECT_EQ(*flange.result("N"), 0.375f);
    EXPECT_EQ(*flange.result("Ab"), *flange.find("bolt_area")->demand());
    EXPECT_EQ(*flange.result("mawp"), *flange.find("mawp")->demand());
}

TEST(FlangeResults, SayWhyThereIsNone) {
    const Judged flange = judged(FLANGE_TOML);
    EXPECT_EQ(flange.result("t_req"), std::nullopt);
    EXPECT_EQ(flange.why("t_req"), "kind analyse");
    EXPECT_EQ(flange.why("designed.C"), "kind is not design");
    EXPECT_EQ(flange.why("deflection"), "not calculated for this type, kind and code");
    EXPECT_EQ(judged(with("P", "P = -15")).why("Wm1"), "no internal pressure pass");
    for (const Result& result : flange.results)
        EXPECT_EQ(result.value.has_value(), result.why.empty()) << result.field->name;
    const Judged design = judged(with("kind", "kind = \"design\""));
    EXPECT_GT(*design.result("designed.C"), 12.0f);
    EXPECT_GT(*design.result("designed.t"), 0.0f);
}

// The pressure has the paragraph of what holds it down.
TEST(FlangeCheckRows, TheMawpIsByTheParagraphOfItsLimit) {
    const auto paragraph = [](const std::string& toml) {
        const Judged flange = judged(toml);
        const Check* check = flange.find("mawp");
        EXPECT_NE(check, nullptr) << toml;
        return check == nullptr ? std::string() : std::string(check->paragraph());
    };
    EXPECT_EQ(paragraph(FLANGE_TOML), "2-8");
    EXPECT_EQ(paragraph(with("t", "t = 6", BLIND)), "2-5"); // the bolts
    EXPECT_EQ(paragraph(with("t", "t = 1", BLIND)), "UG-34");
    EXPECT_EQ(paragraph(with("t", "t = 1\ncode = \"EN 13445\"", BLIND)), "10.5");
    EXPECT_EQ(paragraph(with_all({{"t", "t = 3"}, {"g0", "g0 = 0.13"}})), "UG-27(c)(1)");
    const std::string golden =
        std::string(TARVANE_SOURCE_DIR) + "/tests/golden/loose_ring_thickness.toml";
    std::ifstream ring(golden);
    EXPECT_EQ(paragraph({std::istreambuf_iterator<char>(ring), {}}), "2-14"); // its rigidity
}

// The engine puts the deflection of a channel cover among the pressures of its estimate.
TEST(FlangeCheckRows, ADeflectionIsNotComparedAsAPressure) {
    const std::string golden = std::string(TARVANE_SOURCE_DIR) + "/tests/golden/channel_cover.toml";
    std::ifstream cover(golden);
    std::string toml{std::istreambuf_iterator<char>(cover), {}};
    const std::size_t t = toml.find("\nt = ");
    toml.replace(t, toml.find('\n', t + 1) - t, "\nt = 2.5");
    const Judged thick = judged(toml);
    EXPECT_LT(*thick.result("mawp"), 0.1f);
    EXPECT_EQ(thick.state("mawp"), "no row");
    EXPECT_EQ(thick.state("deflection"), "pass");
    EXPECT_EQ(thick.verdict.status, Status::fine);
    const std::string thin = with("t", "t = 1\nchannel_cover = true\nmaterial = \"SA-105\"", BLIND);
    EXPECT_EQ(judged(thin).state("deflection"), "fail");
    EXPECT_EQ(judged(thin).state("mawp"), "no row");
}

// What a flange does not have is no 0.
TEST(FlangeCheckRows, ResultsThatDoNotApplyHaveTheirReason) {
    const Judged neck = judged(FLANGE_TOML), blind = judged(BLIND);
    for (const char* name : {"SHo", "SRa", "F", "V", "f", "ho", "ht", "Mt"}) {
        EXPECT_GT(std::fabs(neck.result(name).value_or(0.0f)), 0.0f) << name;
        EXPECT_EQ(blind.result(name), std::nullopt) << name;
    }
    EXPECT_EQ(blind.why("SHo"), "no such stress in this flange");
    EXPECT_EQ(blind.why("F"), "no such factor of this type");
    EXPECT_EQ(blind.why("Mt"), "no such load, arm or moment of this flange");
    EXPECT_EQ(neck.why("Wext"), "no external loads, or taken as pressure");
    EXPECT_EQ(neck.why("b_part"), "no partition gasket");
    EXPECT_EQ(neck.result("SVo"), std::nullopt);
    EXPECT_GT(*judged(REVERSE).result("SVo"), 0.0f);
    EXPECT_EQ(judged(CYLINDER).why("crown_radius"), "not calculated for this element and formula");
    EXPECT_GT(*judged(TORISPHERE).result("crown_radius"), 0.0f);
}

} // namespace
} // namespace tarvane::app
