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

// The hub of a welding neck by EN 13445 is a cylinder of a required thickness.
TEST(FlangeRows, HubByItsThickness) {
    const std::string en = FLANGE_TOML + "code = \"EN 13445\"\n";
    expect_flip("hub_thickness", 0.375f, 0.02f, at("g0", en));
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

TEST(FlangeRows, SizeOfTheMaterial) {
    // The stresses of SA-182 F304, reference 111, apply up to 5 in.
    const std::string sized =
        with_all({{"kind", "kind = \"thickness\""}, {"t", ""}, {"Sfo", ""}, {"Sfa", ""}}, BLIND) +
        "material = \"SA-182 F304\"\nmaterial_reference = 111\n";
    expect_flip("material_size", 150.0f, 6000.0f,
                at("P", with_all({{"n", "n = 24"}, {"a", "a = 2"}, {"A", "A = 24"}}, sized)));
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
    expect_opening_flip("opening_d1", 2.0f, 9.0f, at("D1", openings));
    expect_opening_flip("opening_d2", 2.0f, 9.0f, at("D2", with("pitch", "pitch = 30", openings)));
    expect_opening_flip("openings_large", 2.0f, 8.0f,
                        at("D1", with("pitch", "pitch = 30", openings)));
    expect_opening_flip("openings_near", 6.0f, 1.6f, at("pitch", openings));
    expect_opening_flip("opening_ligament", 6.0f, 1.6f, at("pitch", openings));
    expect_opening_flip("opening_d1_edge", 2.0f, 0.1f, at("edge1", openings));
    expect_opening_flip("opening_d2_edge", 2.0f, 0.1f,
                        at("edge2", with("pitch", "pitch = 2.5", openings)));
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
    expect_flip("bolt_size", 0.875f, 0.93f, at("a", nearest));
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

} // namespace
} // namespace tarvane::app
