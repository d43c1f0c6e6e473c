// Each check of shells, external pressure and metal temperatures on both sides of its limit, and their
// results where there is none.
#include "check_rows.h"

#include <algorithm>
#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

TEST(ShellRows, ThicknessAndPressure) {
    EXPECT_EQ(judged(with("P", "P = 50000", CYLINDER)).state("required_thickness"), "fail");
}

TEST(ShellRows, FormOfHeadsAndCones) {
    const std::string knuckle = with("alpha", "alpha = 45", CONE) + "r = 4\ntk = 0.75\n";
    // The formulas of a head hold within these limits only; each of them can be waived.
    for (const auto& [id, toml] :
         {std::pair<std::string, std::string>{"crown_radius", with("L", "L = 52", TORISPHERE)},
          {"knuckle_radius", with("r", "r = 2.5", TORISPHERE)},
          {"knuckle_thickness", with("t", "t = 1.4", with("r", "r = 4", TORISPHERE))},
          {"cone_knuckle_radius", with("r", "r = 2.5", knuckle)},
          {"cone_knuckle_thickness", with("tk", "tk = 1.5", knuckle)}}) {
        const Judged outside = judged(toml);
        EXPECT_EQ(outside.verdict.status, Status::fails) << id;
        EXPECT_EQ(outside.verdict.reasons.size(), 1u) << id;
        const Judged waived = judged(toml + "waive = [\"" + id + "\"]\n");
        EXPECT_EQ(waived.state(id), "waived");
        EXPECT_EQ(waived.verdict.status, Status::fine) << id;
    }
    // A cone of more than 30 degrees takes a knuckle, or an analysis of its own.
    const Judged steep = judged(with("alpha", "alpha = 31", CONE));
    EXPECT_EQ(steep.verdict.status, Status::fails);
    EXPECT_EQ(
        judged(with("alpha", "alpha = 31", CONE) + "waive = [\"cone_angle\"]\n").verdict.status,
        Status::fine);
}

TEST(ShellRows, ThinHeads) {
    const Judged unknown = judged(THIN);
    EXPECT_EQ(unknown.state("head_1_4f"), "not made");
    EXPECT_FALSE(all_pass(unknown.checks));
    EXPECT_EQ(unknown.verdict.status, Status::fails);
    EXPECT_EQ(governing(unknown.checks)->field().id, "head_1_4f");
    // The switch and the waiver are one thing, with a yield stress and without.
    for (const std::string& yield : {std::string(), std::string("Sy = 36000\n")}) {
        for (const std::string key :
             {"skip_1_4f = true\n", "waive = [\"head_1_4f\"]\n", "waive = \"head_1_4f\"\n"}) {
            const Judged skipped = judged(THIN + yield + key);
            EXPECT_EQ(skipped.state("head_1_4f"), "waived");
            EXPECT_EQ(skipped.verdict.status, Status::fine);
            EXPECT_EQ(skipped.verdict.reasons.size(), 1u);
            EXPECT_EQ(skipped.find("very_thin_head"), nullptr);
        }
    }
    EXPECT_EQ(judged(CYLINDER).find("head_1_4f"), nullptr);
}

TEST(ShellRows, Openings) {
    const std::string openings = FLAT + "d1 = 2\nd2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    EXPECT_EQ(judged(openings).state("openings"), "pass");
    EXPECT_EQ(judged(FLAT).find("openings"), nullptr);
}

TEST(ShellRows, FormingStrain) {
    const std::string known =
        with("S", "", with("Sa", "", TORISPHERE)) + "material = \"SA-516 60\"\n";
    const Judged head = judged(known);
    const float strain = head.result("strain").value_or(0.0f);
    EXPECT_NEAR(strain, 75.0f * 0.75f / (3.0f + 0.375f), 1e-3f);
    // The limit depends on how the head is formed and what it is for: nobody asked.
    EXPECT_EQ(head.state("forming_strain"), "not asked");
    EXPECT_EQ(head.verdict.status, Status::fine);
    EXPECT_EQ(judged(TORISPHERE).why("strain"), "no limit of it");
    EXPECT_EQ(fault_lines(known + "strain_limit = -1\n").size(), 1u);
}

// Dimensions on the limit, in numbers that no binary fraction is, pass.
TEST(ShellRows, FormExactlyOnTheLimit) {
    const Judged head = judged("units = \"SI\"\n[[shell]]\nP = 0.1\nT = 100\nS = 138\nSa = 138\n"
                               "t = 12\nkind = \"torispherical\"\nDo = 1200\nL = 1200\nr = 72\n");
    EXPECT_EQ(head.state("knuckle_radius"), "pass");
    EXPECT_EQ(head.state("crown_radius"), "pass");
}

// ---- external pressure -------------------------------------------------------------------------------

TEST(ExternalRows, ChartPressureAndThickness) {
    const Judged rated = judged(with("P_external", "P_external = 0", PIPE));
    EXPECT_EQ(rated.find("external_thickness"), nullptr);
    EXPECT_EQ(rated.why("tca"), "no external design pressure");
}

TEST(ExternalRows, ConvexHeads) {
    const Judged without = judged(with("S", "", HEAD));
    EXPECT_EQ(without.state("convex_made"), "not made");
    EXPECT_EQ(without.verdict.status, Status::fails);
    EXPECT_EQ(judged(with("S", "", HEAD) + "waive = [\"convex_made\"]\n").verdict.status,
              Status::fine);
    EXPECT_EQ(without.why("maep_convex"), "no check by UG-33 (a)(1)");
    const std::string thin = with("t", "t = 0.15", with("P_external", "P_external = 1", HEAD));
    EXPECT_EQ(judged(thin).state("convex_1_4f"), "not made");
    for (const std::string& yield : {std::string(), std::string("Sy = 36000\n")}) {
        for (const char* key : {"skip_1_4f = true\n", "waive = [\"convex_1_4f\"]\n"})
            EXPECT_EQ(judged(thin + yield + key).state("convex_1_4f"), "waived");
    }
    EXPECT_EQ(judged(thin + "Sy = 36000\n").state("convex_1_4f"), "pass");
}

TEST(ExternalRows, OfAShellStandBesideItsOwn) {
    const std::string both = CYLINDER + "external = true\nP_external = 15\nlength = 100\n"
                                        "chart = \"CS-2\"\n";
    const Judged shell = judged(both);
    EXPECT_EQ(shell.state("required_thickness"), "pass");
    EXPECT_EQ(shell.state("external_thickness"), "pass");
    EXPECT_GT(*shell.result("maep"), 15.0f);
    EXPECT_GT(*shell.result("mawp"), 100.0f);
    EXPECT_TRUE(shell.result("failure_ca_external").has_value());
    EXPECT_EQ(judged(CYLINDER).why("maep"), "no external pressure");
}

// ---- metal temperatures ------------------------------------------------------------------------------

TEST(MdmtRows, Temperature) {
    EXPECT_EQ(judged(METAL + "ratio = 0.8\n").state("mdmt"), "not asked");
    EXPECT_EQ(judged(METAL + "ratio = 0.8\n").why("MDMT"), "not given");
}

TEST(MdmtRows, RatioAndThickness) {
    EXPECT_EQ(judged(METAL + "tr = 0.8\n").find("ratio"), nullptr);
    EXPECT_EQ(judged(METAL).state("ratio"), "not asked");
    EXPECT_EQ(judged(METAL + "ratio = 1.0\n").state("ratio"), "pass");
}

// A temperature from -55 F down takes a treatment after welding, UCS-68(b).
TEST(MdmtRows, HeatTreatment) {
    const std::string cold = "[[mdmt]]\ncurve = \"D\"\ntg = 0.5\nratio = 0.9\nMDMT = -60\n";
    EXPECT_EQ(judged(cold).state("heat_treatment"), "fail");
    EXPECT_EQ(judged(cold + "pwht = true\n").state("heat_treatment"), "pass");
}

// ---- all kinds ---------------------------------------------------------------------------------------

TEST(AllRows, ResultsAndChecksAreThoseOfTheKind) {
    for (const std::string& toml :
         {FLANGE_TOML, CYLINDER, THIN,
          TORISPHERE + "external = true\nP_external = 15\nchart = \"CS-2\"\n", PIPE, HEAD,
          METAL + "ratio = 0.8\n"}) {
        set_data_folder(TARVANE_DATA_DIR);
        const ReadResult input = read_input(toml);
        ASSERT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front());
        const Element& element = *input.request.elements.front();
        const auto outcome = element.calculate(input.request);
        const std::vector<Result> results = element.results(*outcome);
        ASSERT_EQ(results.size(), element.kind->results.size());
        for (std::size_t i = 0; i < results.size(); ++i) {
            EXPECT_EQ(results[i].field, &element.kind->results[i]);
            EXPECT_EQ(results[i].value.has_value(), results[i].why.empty())
                << results[i].field->name;
        }
        std::set<std::string_view> ids;
        for (const Check& check : element.checks(*outcome, input.request.units)) {
            EXPECT_TRUE(ids.insert(check.field().id).second) << check.field().id;
            const CheckField* first = element.kind->checks.data();
            EXPECT_TRUE(&check.field() >= first &&
                        &check.field() < first + element.kind->checks.size())
                << check.field().id;
        }
    }
}

} // namespace
} // namespace tarvane::app
