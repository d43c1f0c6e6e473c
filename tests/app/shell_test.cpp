// [[shell]]: reading, calls, verdict.
#include "components/shell_input.h"

#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "components/engine_session.h"
#include "components/shell_report.h"
#include "components/shell_results.h"
#include "components/shell_session.h"
#include "tarvane/tarvane.h"

#include <algorithm>
#include <cmath>

namespace tarvane::app {

using namespace vessel;
namespace {

using N = ShellNumber;

const std::string HEAD = "[[shell]]\nP = 100\nT = 200\nS = 20000\nSa = 17000\nt = 0.75\n";
const std::string CYLINDER = HEAD + "kind = \"cylinder\"\nD = 48\n";
const std::string TORISPHERE =
    HEAD + "kind = \"torispherical\"\nD = 48\nL = 48\nr = 3\nc = 0.0625\nUt = 0.01\n";
const std::string ELLIPSE = HEAD + "kind = \"elliptical\"\nD = 48\nc = 0.0625\nUt = 0.01\n";
const std::string CONE = HEAD + "kind = \"cone\"\nD = 48\nalpha = 30\nc = 0.0625\nUt = 0.01\n";
const std::string FLAT = HEAD + "kind = \"flat\"\nD = 12\nC = 0.3\nc = 0.0625\nUt = 0.01\n";

// The only shell of a text without faults.
ShellInput shell_of(const std::string& toml) {
    const ReadResult result = read_input(toml);
    EXPECT_TRUE(result.faults.empty()) << fault_line("f", result.faults.front());
    if (result.request.elements.empty()) return {};
    return static_cast<const ShellInput&>(*result.request.elements.front());
}

ShellOutcome results_of(const ShellInput& shell) {
    ShellOutcome outcome;
    set_data_folder(TARVANE_DATA_DIR);
    const Services services(outcome);
    RESET_ENGINE();
    set_units(Request{});
    calculate_shell(shell, outcome);
    return outcome;
}

// ---- calls -------------------------------------------------------------------------------------------

struct Variant {
    std::string name, toml;
};

// Two nodes of each table of AD-204, and the column that is kept.
TEST(OlderDivisionTwo, FactorsAtTheNodesOfTheTables) {
    const auto factor = [](auto routine, float rd, float tl) {
        const float D = 100.0f, L = 100.0f, c = 0.0f, u = 0.0f, r = rd * D, t = tl * L;
        const std::int32_t head = TARVANE_TORISPHERICAL_HEAD;
        return routine(&D, &r, &t, &L, &c, &head, &u);
    };
    EXPECT_NEAR(factor(DIV2_M_FACTOR, 0.06f, 0.010f), 1.41f, 1e-4f);
    EXPECT_NEAR(factor(DIV2_M_FACTOR, 0.07f, 0.020f), 1.17f, 1e-4f);
    EXPECT_EQ(factor(DIV2_M_FACTOR, 0.09f, 0.010f), 1.0f);
    EXPECT_NEAR(factor(DIV2_K_FACTOR, 0.06f, 0.004f), 6.77f, 1e-4f);
    EXPECT_NEAR(factor(DIV2_K_FACTOR, 0.17f, 0.040f), 1.95f, 1e-4f);
}

// The data of the page and those of the results come from the same call.
TEST(ShellCalls, TakeTheResultsOfTheElement) {
    const std::string older = "code = \"VIII-2\"\nedition = \"older\"\n";
    EXPECT_EQ(results_of(shell_of(CYLINDER)).found.formula, TARVANE_UG_27_C_1);
    EXPECT_EQ(results_of(shell_of(with("D", "Do = 48", CYLINDER))).found.formula,
              TARVANE_APP_1_1_A_1);
    EXPECT_TRUE(results_of(shell_of(TORISPHERE + older)).by_older_division_2());
    EXPECT_FALSE(results_of(shell_of(TORISPHERE)).by_older_division_2());
    const ShellOutcome knuckle = results_of(shell_of(CONE + "r = 1\ntk = 0.3\n"));
    EXPECT_EQ(knuckle.found.knuckle, 1);
    EXPECT_EQ(knuckle.found.mawp_by, TARVANE_BY_KNUCKLE);
    EXPECT_EQ(results_of(shell_of(CONE + "r = 0.001\ntk = 0.7\n")).found.knuckle, 0);
}

// The modulus table is read where Appendix 1-4(f) evaluates the head, and not elsewhere.
TEST(ShellCalls, TellThinHeads) {
    ShellInput head = shell_of(with("c", "", with("Ut", "", TORISPHERE)));
    const auto at = [&](float t, float Sy) {
        head.put_setting(N::t, t);
        head.put_setting(N::Sy, Sy);
        return head.needs_modulus();
    };
    EXPECT_TRUE(at(0.09599f, 30000.0f)); // 0.002 L at 0.096
    EXPECT_FALSE(at(0.09601f, 30000.0f));
    EXPECT_FALSE(at(0.096f, 1000.0f));
    EXPECT_TRUE(head.thin());
    head.put_setting(N::skip_1_4f, 1.0f);
    EXPECT_FALSE(at(0.096f, 30000.0f));
    EXPECT_TRUE(head.thin());
    head.put_setting(N::t, 0.1f);
    EXPECT_FALSE(head.thin());
}

TEST(Openings, GiveTheirFactorsToTheHost) {
    ShellInput shell = shell_of(FLAT + "d1 = 2\nedge1 = 2\nd2 = 2\nedge2 = 2\npitch = 3\n");
    const auto far = results_of(shell_of(FLAT + "d1 = 2\nedge1 = 2\n")).found;
    EXPECT_EQ(far.spacing_factor, 1.0f);
    EXPECT_EQ(far.attachment_factor, 0.6f);
    const auto near = results_of(shell).found;
    EXPECT_FLOAT_EQ(near.spacing_factor, std::sqrt(0.5f / (1.0f / 3.0f)));
    shell.put_setting(N::attachment, 1.0f);
    EXPECT_EQ(results_of(shell).found.attachment_factor, 0.5f);
}

// With the corrosion at failure the wall is just as thick as it must be: the steps of the search are of
// 0.001 in.
TEST(ShellCalls, CorrosionAtFailureLeavesTheRequiredThickness) {
    const auto outside = [](const std::string& toml) { return with("D", "Do = 50", toml); };
    const std::string tolerance = "Ut = 0.02\n";
    const auto bare = [](const std::string& toml) { return with("c", "", with("Ut", "", toml)); };
    const Variant variants[] = {
        {"cylinder", CYLINDER},
        {"cylinder outside", outside(CYLINDER)},
        {"thick cylinder", with("t", "t = 3", with("D", "D = 4\nE = 0.8", CYLINDER))},
        {"sphere", with("kind", "kind = \"sphere\"", CYLINDER)},
        {"sphere outside", outside(with("kind", "kind = \"sphere\"", CYLINDER))},
        {"ellipse", bare(ELLIPSE)},
        {"ellipse outside", outside(bare(ELLIPSE))},
        {"torisphere", bare(TORISPHERE)},
        {"torisphere outside", outside(bare(TORISPHERE))},
        {"cone", bare(CONE)},
        {"cone outside", outside(bare(CONE))},
        {"flat", bare(FLAT)},
    };
    for (const Variant& v : variants) {
        const std::string toml = v.toml + tolerance + "service = \"none\"\n";
        const ShellOutcome as_given = results_of(shell_of(toml));
        ASSERT_GT(as_given.fail_ca, 0.0f) << v.name;
        ShellInput corroded = shell_of(toml);
        corroded.put_setting(N::ci, as_given.fail_ca);
        EXPECT_NEAR(results_of(corroded).found.t_required, corroded.setting(N::t), 0.0015f)
            << v.name;
    }
}

// ---- published results -----------------------------------------------------------------------------

TEST(ShellReport, ShowsThePublishedResult) {
    const std::string E431 = "[[shell]]\nkind = \"cylinder\"\nP = 356\nT = 300\nS = 20000\n"
                             "Sa = 20000\nD = 90\nt = 1.125\nc = 0.125\n";
    set_data_folder(TARVANE_DATA_DIR);
    const ReadResult input = read_input(E431);
    const std::string report = input.request.elements.at(0)->calculate(input.request)->report;
    EXPECT_NE(report.find(" = P * R / ( S * E - 0.6 * P ) per UG-27 (c)(1)"), std::string::npos);
    EXPECT_NE(report.find(" = 0.8119 in."), std::string::npos);
    EXPECT_NE(report.find(" = 0.9369 in."), std::string::npos); // with the allowance
    EXPECT_EQ(report.find("Warning"), std::string::npos);

    const ReadResult commas = read_input("decimal_comma = true\n" + E431);
    const std::string with_commas =
        commas.request.elements.at(0)->calculate(commas.request)->report;
    EXPECT_NE(with_commas.find(" = 0,8119 in."), std::string::npos);
    EXPECT_EQ(std::count(with_commas.begin(), with_commas.end(), '\n'),
              std::count(report.begin(), report.end(), '\n'));
}

// ---- reading ---------------------------------------------------------------------------------------

std::vector<std::string> one(const std::string& fault) { return {fault}; }

TEST(ShellInputs, TakeUnitsSynonymsOfKindsAndDepth) {
    const ShellInput shell = shell_of("units = \"SI\"\n[[shell]]\nkind = \"Ellipsoidal\"\nP = 1\n"
                                      "T = 100\nS = 138\nSa = 138\nD = 1016\nh = 254\nt = 12.7\n");
    EXPECT_EQ(shell.shape(), TARVANE_ELLIPTICAL_HEAD);
    EXPECT_FLOAT_EQ(shell.setting(N::D), 40.0f);
    EXPECT_FLOAT_EQ(shell.setting(N::k), 2.0f);
    EXPECT_FLOAT_EQ(shell.setting(N::T), 212.0f);
    EXPECT_FLOAT_EQ(shell.setting(N::t), 0.5f);
    EXPECT_FALSE(shell.outside());
    // With outside dimensions the depth is still that of the inside.
    const ShellInput out = shell_of(with("D", "Do = 48", ELLIPSE) + "h = 11.625\n");
    EXPECT_FLOAT_EQ(out.setting(N::k), 2.0f);
    EXPECT_TRUE(out.outside());
}

TEST(ShellInputs, TellWhatIsMissing) {
    EXPECT_EQ(
        fault_lines(with("r", "", TORISPHERE)),
        one("f:1: r: missing in shell 1; a number in in. is expected (inside knuckle radius of "
            "a torispherical head, or of a cone)"));
    EXPECT_EQ(
        fault_lines(with("alpha", "", CONE)),
        one("f:1: alpha: missing in shell 1; a number is expected (half apex angle of a cone, "
            "degrees)"));
    EXPECT_EQ(fault_lines(with("D", "", CYLINDER)),
              one("f:1: D: missing in shell 1; a number in in. is expected (inside diameter; flat "
                  "head: diameter or one span)"));
    EXPECT_EQ(fault_lines(CONE + "r = 3\n").size(), 1u);  // no tk
    EXPECT_EQ(fault_lines(FLAT + "d1 = 3\n").size(), 1u); // no edge1
    EXPECT_EQ(fault_lines("[[shell]]\n").size(), 7u);     // kind P T S Sa t D
    EXPECT_EQ(fault_lines(with("C", "", FLAT)).size(), 1u);
}

TEST(ShellInputs, TellWhatIsWrong) {
    const std::string small = "it must be above 0";
    EXPECT_EQ(fault_lines(with("t", "t = 0", CYLINDER)), one("f:6: t: " + small));
    EXPECT_EQ(fault_lines(with("P", "P = -15", CYLINDER)), one("f:2: P: " + small));
    EXPECT_EQ(fault_lines(with("D", "D = 0", CYLINDER)), one("f:8: D: " + small));
    EXPECT_EQ(fault_lines(CYLINDER + "c = -1\n"), one("f:9: c: it must not be below 0"));
    EXPECT_EQ(fault_lines(CYLINDER + "E = 1.1\n"),
              one("f:9: E: a joint efficiency up to 1 is expected"));
    EXPECT_EQ(fault_lines(CYLINDER + "c = 0.5\nUt = 0.25\n"),
              one("f:6: t: nothing is left of it after the corrosion allowance and the tolerance"));
    EXPECT_EQ(fault_lines(CYLINDER + "Do = 50\n"),
              one("f:9: Do: either D or Do is expected, not both"));
    EXPECT_EQ(fault_lines(with("D", "Do = 1.5", CYLINDER)),
              one("f:8: Do: it must be above twice the thickness t"));
    const std::string angle = "alpha: an angle above 0 and below 90 degrees is expected";
    EXPECT_EQ(fault_lines(with("alpha", "alpha = 90", CONE)), one("f:9: " + angle));
    EXPECT_EQ(fault_lines(with("alpha", "alpha = 0", CONE)), one("f:9: " + angle));
    EXPECT_EQ(fault_lines(with("r", "r = 60", TORISPHERE)).size(), 2u);
    EXPECT_EQ(fault_lines(with("D", "Do = 49.5", with("r", "r = 24.1", TORISPHERE))),
              one("f:10: r: the knuckle radius must not be above Do/2 - t"));
    EXPECT_EQ(fault_lines(FLAT + "d1 = 2\nedge1 = 1\nd2 = 1\nedge2 = 1\npitch = 1.5\n"),
              one("f:16: pitch: the openings overlap; it must be above the mean of d1 and d2"));
    EXPECT_EQ(fault_lines(ELLIPSE + "k = 0.9\n"),
              one("f:11: k: an aspect ratio D/2h of at least 1 is expected"));
    EXPECT_EQ(fault_lines(ELLIPSE + "k = 2\nh = 12\n"),
              one("f:12: h: either k or h is expected, not both"));
    EXPECT_EQ(
        fault_lines(with("kind", "kind = \"cube\"", CYLINDER)),
        one("f:7: kind: one of \"cylinder\", \"elliptical\", \"torispherical\", \"sphere\", "
            "\"cone\", \"flat\" or 1 to 6 is expected, not the text \"cube\" (kind of shell or "
            "head)"));
    EXPECT_EQ(fault_lines(CYLINDER + "code = \"VIII-2\"\n"),
              one("f:9: code: VIII-2 is for elliptical and torispherical heads only, by its older "
                  "edition; VIII-1 is expected"));
    EXPECT_EQ(fault_lines(ELLIPSE + "code = \"VIII-2\"\n"),
              one("f:1: edition: shells by VIII-2 are calculated by its older edition only; "
                  "\"older\" is expected"));
    EXPECT_EQ(fault_lines(ELLIPSE + "edition = \"older\"\n"),
              one("f:11: edition: \"older\" is an edition of code VIII-2 only"));
    EXPECT_EQ(fault_lines(CYLINDER + "OD = 50\n"),
              one("f:9: OD: unknown key; the nearest is Do, outside diameter, instead of D"));
}

// ---- material --------------------------------------------------------------------------------------

// The shipped files hold SA-516 70.
TEST(ShellMaterial, FillsWhatTheFileLeavesOut) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::string without = with("S", "", with("Sa", "", TORISPHERE));
    const std::string named = without + "material = \"SA-516 70\"\n";
    const ShellInput shell = shell_of(with("T", "T = 500", named));
    EXPECT_FLOAT_EQ(shell.setting(N::Sa), 20000.0f);
    EXPECT_GT(shell.setting(N::S), 15000.0f);
    EXPECT_LE(shell.setting(N::S), 20000.0f);
    EXPECT_FLOAT_EQ(shell.setting(N::Sy_cold), 38000.0f); // ASME II-D
    EXPECT_LT(shell.setting(N::Sy), 38000.0f);
    EXPECT_GT(shell.setting(N::Sy), 25000.0f);
    // A key of the file comes first.
    const ShellInput own =
        shell_of(with("T", "T = 500", named) + "S = 12345\nSy = 23456\nSy_cold = 34567\n");
    EXPECT_EQ(own.setting(N::S), 12345.0f);
    EXPECT_EQ(own.setting(N::Sy), 23456.0f);
    EXPECT_EQ(own.setting(N::Sy_cold), 34567.0f);
    // The lookup of a yield strength has no mark of its own.
    EXPECT_EQ(shell.data.count("YIELDSTR.BIN"), 1u);
    EXPECT_EQ(own.data.count("YIELDSTR.BIN"), 0u);
    // A thin head is then tested against Appendix 1-4(f).
    ShellInput thin = shell_of(named);
    thin.put_setting(N::t, 0.15f);
    EXPECT_TRUE(results_of(thin).found.evaluated_14f);
    // P-No. 1 Group 1 has a limit of its forming strain (UCS-79).
    const ShellOutcome formed = results_of(shell_of(without + "material = \"SA-516 60\"\n"));
    EXPECT_NEAR(formed.strain, 75.0f * 0.75f / (3.0f + 0.375f), 1e-4f);
    const std::vector<std::string> faults = fault_lines(without + "material = \"SA-999 70\"\n");
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0].find("f:11: material: no material \"SA-999 70\" in MATFILE1.BIN"), 0u)
        << faults[0];
    EXPECT_EQ(fault_lines(with("S", "S = 0", CYLINDER)), one("f:4: S: it must be above 0"));
    EXPECT_EQ(fault_lines(without).size(), 2u); // S and Sa
}

// ---- verdict ---------------------------------------------------------------------------------------

TEST(ShellVerdict, ComparesThicknessAndPressure) {
    ShellInput shell = shell_of(CYLINDER);
    ShellOutcome o;
    const auto reasons = [&] { return shell.judge(o, us_units()).reasons; };
    o.found.t_required = 0.7f;
    o.found.mawp = 120.0f;
    EXPECT_EQ(shell.judge(o, us_units()).status, Status::fine);
    EXPECT_TRUE(reasons().empty());
    o.found.t_required = 0.76f;
    EXPECT_EQ(reasons(), one("the required thickness 0.7600 in. is above the given 0.7500 in."));
    o.found.t_required = 0.75003f; // shown as a ratio of 1.0000
    o.found.mawp = 99.996f;
    EXPECT_TRUE(reasons().empty());
    o.found.t_required = 0.75004f;
    o.found.mawp = 99.994f;
    EXPECT_EQ(reasons().size(), 2u);
    o.found.t_required = 0.75f;
    o.found.mawp = 99.8f;
    EXPECT_EQ(reasons(), one("the MAWP 99.80 psig is below the design pressure 100.00 psig"));
    EXPECT_EQ(shell.judge(o, us_units()).status, Status::fails);
    o.found.mawp = o.found.t_required = std::nanf("");
    EXPECT_EQ(reasons().size(), 2u);
    EXPECT_EQ(reasons()[0], "no thickness is enough for the design pressure");
}

TEST(ShellVerdict, TellsLimitsOfTheForm) {
    const auto warnings = [](const std::string& toml) {
        const ShellInput shell = shell_of(toml);
        std::vector<std::string> words;
        for (const Check& check : form_checks(shell, results_of(shell)))
            if (check.falls_short()) words.push_back(check.reason());
        return words;
    };
    const auto is = [](const std::vector<std::string>& found, std::string_view part) {
        return found.size() == 1 && found[0].find(part) != std::string_view::npos;
    };
    EXPECT_TRUE(warnings(TORISPHERE).empty()); // Do = 49.5, 6 % of it 2.97
    EXPECT_TRUE(is(warnings(with("L", "L = 50", TORISPHERE)), "crown radius"));
    EXPECT_TRUE(is(warnings(with("r", "r = 2.9", TORISPHERE)), "6 %"));
    EXPECT_TRUE(
        is(warnings(with("t", "t = 1.01", with("r", "r = 3.02", TORISPHERE))), "three times"));
    EXPECT_TRUE(warnings(CONE).empty()); // 30 degrees
    EXPECT_TRUE(is(warnings(with("alpha", "alpha = 31", CONE)), "Half apex angle"));
    const std::string knuckle = with("alpha", "alpha = 45", CONE) + "tk = 0.75\n";
    EXPECT_TRUE(warnings(knuckle + "r = 3\n").empty());
    EXPECT_TRUE(is(warnings(knuckle + "r = 2.9\n"), "6 %"));
    const Verdict verdict =
        shell_of(with("L", "L = 50", TORISPHERE))
            .judge(results_of(shell_of(with("L", "L = 50", TORISPHERE))), us_units());
    EXPECT_EQ(verdict.status, Status::fails);
    EXPECT_EQ(verdict.reasons.size(), 1u);
}

// UG-32 refers a head of less than 0.002 L to Appendix 1-4(f).
TEST(ShellVerdict, FailsAThinHeadThatAppendix14fDidNotSee) {
    const std::string thin = "[[shell]]\nP = 10\nT = 200\nS = 20000\nSa = 20000\nt = 0.18\n"
                             "kind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";
    const auto status = [](const std::string& toml) {
        const ShellInput shell = shell_of(toml);
        return shell.judge(results_of(shell), us_units()).status;
    };
    EXPECT_EQ(status(thin), Status::fails);
    EXPECT_EQ(status(thin + "Sy = 36000\n"), Status::fine);
    EXPECT_EQ(status(thin + "skip_1_4f = true\n"), Status::fine);
}

using ShellProgram = ProgramTest;

const std::string ON_DATA = std::string("run --plain --data ") + TARVANE_DATA_DIR + " ";

TEST_F(ShellProgram, GivesReportTableAndStatus) {
    const std::string file = write("shell.toml", CYLINDER + "description = \"drum\"\n" + FLAT);
    const ProgramRun fine = run(ON_DATA + file);
    EXPECT_EQ(fine.status, 0) << fine.err;
    EXPECT_NE(fine.out.find("Required Thickness due to Internal Pressure [tr]:"),
              std::string::npos);
    EXPECT_NE(fine.out.find("Shells and heads                                                drum"),
              std::string::npos)
        << fine.out;
    EXPECT_NE(fine.out.find("TARVANE is a trademark of Kessendale Lab."), std::string::npos);
    const std::string thin = write("thin.toml", with("t", "t = 0.1", CYLINDER));
    const ProgramRun fails = run(ON_DATA + thin);
    EXPECT_EQ(fails.status, 1);
    EXPECT_EQ(fails.err.find("shell 1: the required thickness 0.1204 in. is above the given 0.1000 "
                             "in.\nshell 1: the MAWP"),
              0u)
        << fails.err;
    EXPECT_NE(fails.out.find("Warning: Required Thickness Exceeds the Given Thickness!"),
              std::string::npos);
}

TEST_F(ShellProgram, FailsAnOpeningThatViolatesTheRules) {
    const std::string file = write("flat.toml", with("t", "t = 3", FLAT) + "d1 = 3\nedge1 = 0.5\n");
    const ProgramRun fails = run(ON_DATA + file);
    EXPECT_EQ(fails.status, 1);
    EXPECT_EQ(
        fails.err,
        "shell 1: UG-39(e)(5): the distance of the opening d1 to the edge, 0.500 in., is below a "
        "quarter of d1, 0.750 in.\n");
}

TEST_F(ShellProgram, StandsBesideFlanges) {
    const std::string file = write("both.toml", "T = 200\n" + FLANGE_TOML + CYLINDER);
    const ProgramRun both = run(ON_DATA + file);
    EXPECT_LE(both.status, 1) << both.err;
    EXPECT_LT(both.out.find("Flange Input Data Values"), both.out.find("Shell Input Data Values"));
    EXPECT_NE(both.out.find("Shells and heads"), std::string::npos);
}

} // namespace
} // namespace tarvane::app
