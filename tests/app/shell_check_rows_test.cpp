// Each check of shells, external pressure and metal temperatures on both sides of its limit, and their
// results where there is none.
#include "check_rows.h"

#include <algorithm>
#include <set>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string SHELL = "[[shell]]\nP = 100\nT = 200\nS = 20000\nSa = 17000\nt = 0.75\n";
const std::string CYLINDER = SHELL + "kind = \"cylinder\"\nD = 48\n";
const std::string TORISPHERE = SHELL + "kind = \"torispherical\"\nD = 48\nL = 48\nr = 3\n";
const std::string CONE = SHELL + "kind = \"cone\"\nD = 48\nalpha = 30\n";
const std::string FLAT = with("t", "t = 2", SHELL + "kind = \"flat\"\nD = 12\nC = 0.3\n");
const std::string THIN = "[[shell]]\nP = 10\nT = 200\nS = 20000\nSa = 20000\nt = 0.18\n"
                         "kind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";

TEST(ShellRows, ThicknessAndPressure) {
    for (const char* id : {"required_thickness", "mawp"}) {
        expect_flip(id, 100.0f, 5000.0f, at("P", CYLINDER));
        expect_flip(id, 0.75f, 0.05f, at("t", CYLINDER));
        expect_flip(id, 100.0f, 2000.0f, at("P", CONE));
        expect_flip(id, 100.0f, 2000.0f, at("P", FLAT));
    }
    EXPECT_EQ(judged(with("P", "P = 50000", CYLINDER)).state("required_thickness"), "fail");
}

TEST(ShellRows, FormOfHeadsAndCones) {
    expect_flip("crown_radius", 48.0f, 60.0f, at("L", TORISPHERE));
    expect_flip("knuckle_radius", 3.0f, 2.0f, at("r", TORISPHERE));
    expect_flip("knuckle_thickness", 0.75f, 1.5f, at("t", with("r", "r = 4", TORISPHERE)));
    expect_flip("cone_angle", 30.0f, 40.0f, at("alpha", CONE));
    const std::string knuckle = with("alpha", "alpha = 45", CONE) + "r = 4\ntk = 0.75\n";
    expect_flip("cone_knuckle_radius", 4.0f, 2.0f, at("r", knuckle));
    expect_flip("cone_knuckle_thickness", 0.75f, 2.0f, at("tk", knuckle));
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
    expect_flip("head_1_4f", 10.0f, 60.0f, at("P", THIN + "Sy = 36000\n"));
    expect_flip("very_thin_head", 0.1f, 0.02f, at("t", with("P", "P = 1", THIN + "Sy = 36000\n")));
    EXPECT_EQ(judged(CYLINDER).find("head_1_4f"), nullptr);
}

TEST(ShellRows, Openings) {
    const std::string openings = FLAT + "d1 = 2\nd2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    EXPECT_EQ(judged(openings).state("openings"), "pass");
    EXPECT_EQ(judged(FLAT).find("openings"), nullptr);
    expect_opening_flip("opening_d1", 2.0f, 9.0f, at("d1", openings));
    expect_opening_flip("opening_d2", 1.0f, 9.0f, at("d2", with("pitch", "pitch = 30", openings)));
    expect_opening_flip("openings_large", 2.0f, 5.9f,
                        at("d1", with("pitch", "pitch = 30", openings)));
    expect_opening_flip("openings_near", 6.0f, 1.6f, at("pitch", openings));
    expect_opening_flip("opening_ligament", 6.0f, 1.6f, at("pitch", openings));
    expect_opening_flip("opening_d1_edge", 2.0f, 0.1f, at("edge1", openings));
    expect_opening_flip("opening_d2_edge", 2.0f, 0.1f,
                        at("edge2", with("pitch", "pitch = 2.5", openings)));
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
    expect_flip("forming_strain", 20.0f, 5.0f, at("strain_limit", known));
    expect_flip("forming_strain", 9.0f, 3.0f,
                at("r", with("t", "t = 0.75", known) + "strain_limit = 12\n"));
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

const std::string EXTERNAL =
    "[[external]]\nP_external = 15\nT = 300\nchart = \"CS-2\"\nt = 0.5\nS = 20000\n";
const std::string PIPE = EXTERNAL + "kind = \"cylinder\"\nDo = 48\nlength = 100\n";
const std::string HEAD = EXTERNAL + "kind = \"elliptical\"\nD = 96\nk = 2\n";

TEST(ExternalRows, ChartPressureAndThickness) {
    expect_flip("maep", 15.0f, 500.0f, at("P_external", PIPE));
    expect_flip("external_thickness", 0.5f, 0.1f, at("t", PIPE));
    expect_flip("chart_temperature", 300.0f, 2000.0f, at("T", PIPE));
    const Judged rated = judged(with("P_external", "P_external = 0", PIPE));
    EXPECT_EQ(rated.find("external_thickness"), nullptr);
    EXPECT_EQ(rated.why("tca"), "no external design pressure");
}

TEST(ExternalRows, ConvexHeads) {
    expect_flip("convex_thickness", 15.0f, 300.0f, at("P_external", HEAD));
    expect_flip("convex_maep", 15.0f, 300.0f, at("P_external", HEAD));
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
    expect_flip("maep", 15.0f, 900.0f, at("P_external", both));
    const Judged shell = judged(both);
    EXPECT_EQ(shell.state("required_thickness"), "pass");
    EXPECT_EQ(shell.state("external_thickness"), "pass");
    EXPECT_GT(*shell.result("maep"), 15.0f);
    EXPECT_GT(*shell.result("mawp"), 100.0f);
    EXPECT_TRUE(shell.result("failure_ca_external").has_value());
    EXPECT_EQ(judged(CYLINDER).why("maep"), "no external pressure");
}

// ---- metal temperatures ------------------------------------------------------------------------------

const std::string METAL = "[[mdmt]]\ncurve = \"B\"\ntg = 1.0\n";

TEST(MdmtRows, Temperature) {
    expect_flip("mdmt", 100.0f, -100.0f, at("MDMT", METAL + "ratio = 0.8\n"));
    EXPECT_EQ(judged(METAL + "ratio = 0.8\n").state("mdmt"), "not asked");
    EXPECT_EQ(judged(METAL + "ratio = 0.8\n").why("MDMT"), "not given");
}

TEST(MdmtRows, RatioAndThickness) {
    expect_flip("ratio", 0.8f, 1.2f, at("ratio", METAL));
    expect_flip("required_thickness", 0.8f, 1.2f, at("tr", METAL));
    EXPECT_EQ(judged(METAL + "tr = 0.8\n").find("ratio"), nullptr);
    EXPECT_EQ(judged(METAL).state("ratio"), "not asked");
    EXPECT_EQ(judged(METAL + "ratio = 1.0\n").state("ratio"), "pass");
}

TEST(MdmtRows, ImpactTestsAndHeatTreatment) {
    // The curves end at 4 in.
    expect_flip("impact_tests", 3.0f, 5.0f, at("tg", METAL + "ratio = 0.8\n"));
    // A temperature from -55 F down takes a treatment after welding, UCS-68(b).
    const auto text = at("MDMT", "[[mdmt]]\ncurve = \"D\"\ntg = 0.5\nratio = 0.9\n");
    float without = -20.0f, with_it = -60.0f;
    EXPECT_EQ(judged(text(without)).state("heat_treatment"), "no row");
    EXPECT_EQ(judged(text(with_it)).state("heat_treatment"), "fail");
    for (int step = 0; step < 40; ++step) {
        const float middle = (without + with_it) / 2.0f;
        if (middle == without || middle == with_it) break;
        (judged(text(middle)).find("heat_treatment") == nullptr ? without : with_it) = middle;
    }
    EXPECT_NEAR(with_it, -55.0f, 0.51f); // the engine compares whole degrees
    EXPECT_TRUE(judged(text(with_it)).find("heat_treatment")->blocks());
    EXPECT_EQ(judged(text(with_it) + "pwht = true\n").state("heat_treatment"), "pass");
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
