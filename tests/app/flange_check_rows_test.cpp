// Each check of a flange on both sides of its limit, and the results where there is none.
#include "check_rows.h"
#include "components/flange_session.h"
#include "tarvane/tarvane.h"

#include <cstdio>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string BLIND = with_all(
    {{"type", "type = \"blind\""}, {"B", ""}, {"g0", ""}, {"g1", ""}, {"h", ""}, {"t", "t = 2"}});
const std::string REVERSE = with_all({{"type", "type = \"reverse weld neck\""},
                                      {"B", "B = 8"},
                                      {"A", "A = 20"},
                                      {"C", "C = 17"},
                                      {"t", "t = 3"}});
const std::string FULL_FACE = with_all(
    {{"Fod", "Fod = 19"}, {"Go", "Go = 19"}, {"Gi", "Gi = 13"}, {"m", "m = 1"}, {"y", "y = 200"}});

TEST(FlangeRows, OperatingStresses) {
    for (const char* id : {"SHo", "SRo", "STo", "SAo", "BSo"})
        expect_flip(id, 100.0f, 20000.0f, at("P"));
    expect_flip("STo", 100.0f, 5000.0f, at("P", BLIND));
    expect_flip("SVo", 10.0f, 20000.0f, at("P", REVERSE));
    expect_flip("SFo", 10.0f, 20000.0f, at("P", FULL_FACE));
}

TEST(FlangeRows, SeatingStresses) {
    for (const char* id : {"SHa", "SRa", "STa", "SAa"})
        expect_flip(id, 20000.0f, 20.0f, at("Sfa"));
    expect_flip("BSa", 25000.0f, 500.0f, at("Sa"));
    expect_flip("SVa", 20000.0f, 20.0f, at("Sfa", REVERSE));
}

TEST(FlangeRows, BoltAreaAndPressure) {
    expect_flip("bolt_area", 100.0f, 5000.0f, at("P"));
    expect_flip("mawp", 100.0f, 5000.0f, at("P"));
    expect_flip("required_thickness", 2.0f, 0.5f, at("t", BLIND));
    expect_flip("hub_cylinder", 100.0f, 5000.0f, at("P"));
    expect_flip("attached_shell", 100.0f, 5000.0f,
                at("P_operating", FLANGE_TOML + "Sn = 20000\nSna = 20000\nDshell = 12\n"
                                                "tShell = 0.375\nattachment = 1\n"));
}

TEST(FlangeRows, Rigidity) {
    const std::string asked = FLANGE_TOML + "rigidity = true\n";
    expect_flip("J_operating", 100.0f, 20000.0f, at("P", asked));
    expect_flip("J_seating", 10000.0f, 1.0e6f, at("y", asked));
}

TEST(FlangeRows, Geometry) {
    expect_flip("bolt_circle", 17.0f, 20.0f, at("C"));
    expect_flip("bolt_circle", 17.0f, 14.0f, at("C"));
    expect_flip("bolt_spacing_min", 17.0f, 15.0f, at("C", with("n", "n = 24")));
    expect_flip("bolt_spacing_max", 17.0f, 40.0f,
                at("C", with_all({{"A", "A = 60"}, {"n", "n = 20"}})));
    EXPECT_EQ(judged(FLANGE_TOML).state("bolt_count"), "pass"); // 12
    const Judged fourteen = judged(with("n", "n = 14"));
    EXPECT_EQ(fourteen.state("bolt_count"), "fail");
    EXPECT_FALSE(fourteen.find("bolt_count")->blocks());
    EXPECT_EQ(judged(with("kind", "kind = \"design\"")).state("bolt_count"),
              "pass"); // the one selected
    expect_flip("radial_distance", 17.5f, 15.0f, at("C"));
    expect_flip("edge_distance", 19.0f, 17.5f, at("A"));
    expect_flip("gasket_width", 14.0f, 14.76f, at("Gi"));
    expect_flip("gasket_place", 14.75f, 15.5f, at("Go"));
    expect_flip("gasket_width_min", 10000.0f, 1000.0f, at("y"));
    expect_flip("full_face_thickness", 2.0f, 0.05f, at("t", FULL_FACE + "code = \"EN 13445\"\n"));
    expect_flip("partition_width", 0.1f, -0.1f,
                at("tp", FLANGE_TOML + "lp = 12\nmPart = 3\nyPart = 10000\n"));
}

TEST(FlangeRows, Rating) {
    expect_flip("rating", 200.0f, 100.0f, at("rating"));
    EXPECT_EQ(judged(FLANGE_TOML).state("rating"), "not asked");
    const Judged unrated = judged(FLANGE_TOML + "standard_flange = true\n");
    EXPECT_EQ(unrated.state("rating"), "not made");
    EXPECT_EQ(unrated.verdict.status, Status::fails);
    EXPECT_EQ(unrated.state("SHo"), "no row"); // no stresses are calculated
}

TEST(FlangeRows, Covers) {
    const std::string channel =
        with("t", "t = 2", BLIND) + "channel_cover = true\nEcover = 29000000\ndfAllow = 0.03\n";
    expect_flip("deflection", 3.0f, 1.0f, at("t", channel));
    const std::string openings = BLIND + "D1 = 2\nD2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    EXPECT_EQ(judged(openings).state("openings"), "pass");
    // A rule has a row where it is broken.
    const auto broken = [](const char* id, const std::string& toml) {
        const Judged cover = judged(toml);
        ASSERT_NE(cover.find(id), nullptr) << id;
        EXPECT_TRUE(cover.find(id)->blocks()) << id;
        EXPECT_GT(*cover.find(id)->ratio(), 1.0f) << id;
        EXPECT_EQ(cover.find("openings"), nullptr);
    };
    broken("opening_d1", with("D1", "D1 = 9", openings));
    broken("openings_near", with("pitch", "pitch = 1.6", openings));
    broken("opening_d1_edge", with("edge1", "edge1 = 0.4", openings));
    broken("opening_d2_edge",
           with_all({{"edge2", "edge2 = 0.2"}, {"pitch", "pitch = 2.5"}}, openings));
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
    expect_flip("bolt_size", 0.875f, 0.93f, at("a", nearest));
    EXPECT_EQ(judged(with("a", "a = 0.9", nearest)).verdict.status, Status::fine);
}

TEST(FlangeRows, HeatTreatment) {
    EXPECT_EQ(judged(FLANGE_TOML).state("heat_treatment"), "not asked");
    const std::string known = with_all({{"Sfo", ""}, {"Sfa", ""}}) + "material = \"SA-105\"\n";
    // UCS-56: P-number 1 above 1 1/2 in. without preheat above 1 1/4 in.
    EXPECT_EQ(judged(known).state("heat_treatment"), "pass");
    const Judged thick = judged(with("g0", "g0 = 1.6", with("g1", "g1 = 1.9", known)));
    EXPECT_EQ(thick.state("heat_treatment"), "not made");
    EXPECT_FALSE(thick.find("heat_treatment")->blocks());
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

} // namespace
} // namespace tarvane::app
