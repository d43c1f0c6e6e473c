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
    // A line of the verdict, no failure.
    const Judged flat = judged(with("L", "L = 52", TORISPHERE));
    EXPECT_EQ(flat.verdict.status, Status::fine);
    EXPECT_EQ(flat.verdict.reasons.size(), 1u);
}

TEST(ShellRows, ThinHeads) {
    const Judged unknown = judged(THIN);
    EXPECT_EQ(unknown.state("head_1_4f"), "not made");
    EXPECT_FALSE(all_pass(unknown.checks));
    EXPECT_EQ(unknown.verdict.status, Status::fails);
    EXPECT_EQ(governing(unknown.checks)->field().id, "head_1_4f");
    const Judged skipped = judged(THIN + "skip_1_4f = true\n");
    EXPECT_EQ(skipped.state("head_1_4f"), "waived");
    EXPECT_EQ(skipped.verdict.status, Status::fine);
    EXPECT_EQ(skipped.verdict.reasons.size(), 1u);
    EXPECT_TRUE(skipped.find("head_1_4f")->field().waivable);
    expect_flip("head_1_4f", 10.0f, 60.0f, at("P", THIN + "Sy = 36000\n"));
    expect_flip("very_thin_head", 0.1f, 0.02f, at("t", with("P", "P = 1", THIN + "Sy = 36000\n")));
    EXPECT_EQ(judged(CYLINDER).find("head_1_4f"), nullptr);
}

TEST(ShellRows, Openings) {
    const std::string openings = FLAT + "d1 = 2\nd2 = 1\nedge1 = 2\nedge2 = 2\npitch = 6\n";
    EXPECT_EQ(judged(openings).state("openings"), "pass");
    EXPECT_EQ(judged(FLAT).find("openings"), nullptr);
    // Both sides of the limit that the row gives.
    const auto text = at("pitch", openings);
    const Judged near = judged(text(1.7f));
    ASSERT_NE(near.find("openings_near"), nullptr);
    const float limit = *near.find("openings_near")->limit();
    EXPECT_TRUE(judged(text(limit * 0.999f)).find("openings_near")->blocks());
    EXPECT_EQ(judged(text(limit * 1.001f)).find("openings_near"), nullptr);
}

TEST(ShellRows, FormingStrainHasNoLimitThatIsKnown) {
    const std::string known =
        with("S", "", with("Sa", "", TORISPHERE)) + "material = \"SA-516 60\"\n";
    const Judged head = judged(known);
    EXPECT_GT(head.result("strain").value_or(0.0f), 0.0f);
    EXPECT_EQ(head.state("forming_strain"), "not made");
    EXPECT_EQ(head.verdict.status, Status::fine);
    EXPECT_EQ(judged(TORISPHERE).why("strain"), "no limit of it");
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
    EXPECT_EQ(without.verdict.status, Status::fine);
    EXPECT_EQ(without.why("maep_convex"), "no check by UG-33 (a)(1)");
    const std::string thin = with("t", "t = 0.15", with("P_external", "P_external = 1", HEAD));
    EXPECT_EQ(judged(thin).state("convex_made"), "not made");
    EXPECT_EQ(judged(thin + "skip_1_4f = true\n").state("convex_1_4f"), "waived");
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
