// UG-33(a)(1): heads with the pressure on their convex side, tested against UG-32 for 1.67 P, too.
#include "components/convex_head.h"

#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "components/external_results.h"
#include "tarvane/tarvane.h"

#include <cmath>

namespace tarvane::app {

using namespace vessel;
namespace {

using N = ExternalNumber;

// Heads whose thickness UG-32 governs.
const std::string ELLIPSE = R"([[external]]
kind = "elliptical"
P = 100
T = 300
S = 10000
D = 96
t = 0.875
c = 0.0625
chart = "CS-2"
)";
const std::string TORISPHERE = R"([[external]]
kind = "torispherical"
P = 100
T = 300
S = 10000
D = 96
L = 96
r = 6
t = 1.5
c = 0.0625
chart = "CS-2"
)";
// Of less than 0.002 L.
const std::string THIN = R"([[external]]
kind = "torispherical"
P = 4
T = 200
S = 20000
D = 100
L = 100
r = 7
t = 0.18
chart = "CS-2"
)";

struct ConvexRun {
    ReadResult input;
    ExternalOutcome outcome;
    const ExternalInput& element() const {
        return static_cast<const ExternalInput&>(*input.request.elements.at(0));
    }
    Verdict verdict() const { return element().judge(outcome, input.request.units); }
    const ShellOutcome& head() const { return outcome.convex->results; }
    bool tells(std::string_view text) const {
        return outcome.report.find(text) != std::string::npos;
    }
};

ConvexRun calculate(const std::string& toml) {
    ConvexRun run{read_input(toml), {}};
    EXPECT_TRUE(run.input.faults.empty()) << fault_line("f", run.input.faults.front()) << toml;
    if (!run.input.request.elements.empty())
        run.outcome = run_external(run.element(), run.input.request);
    return run;
}

class ConvexHeads : public testing::Test {
  protected:
    ConvexHeads() { set_data_folder(TARVANE_DATA_DIR); }
};

void expect_near(float value, double by_hand) {
    EXPECT_NEAR(static_cast<double>(value), by_hand, 2e-6 * by_hand);
}

// ---- by hand -----------------------------------------------------------------------------------------

// 2:1 head, UG-32(d) with E = 1:
//   Pi = 1.67 * 100 = 167, Dc = 96 + 2 * 0.0625 = 96.125
//   tr = 167 * 96.125 / (2 * 10000 - 0.2 * 167) = 16052.875 / 19966.6 = 0.8039864, with c 0.8664864
//   MAWP = 2 * 10000 * 0.8125 / (96.125 + 0.2 * 0.8125) = 16250 / 96.2875 = 168.7654161, / 1.67 = 101.0571354
TEST_F(ConvexHeads, EllipseByHand) {
    const ConvexRun head = calculate(ELLIPSE);
    ASSERT_NE(head.outcome.convex, nullptr);
    expect_near(head.head().found.t_required, 0.8664864073);
    expect_near(head.head().found.mawp, 168.7654160717);
    expect_near(head.outcome.convex->maep, 101.0571353723);
    // The worse of both procedures.
    EXPECT_GT(head.outcome.maep, 101.1f);
    EXPECT_LT(head.outcome.tca, 0.8664f);
    EXPECT_EQ(governing_maep(head.outcome), head.outcome.convex->maep);
    EXPECT_EQ(governing_thickness(head.outcome), head.head().found.t_required);
    EXPECT_EQ(head.verdict().status, Status::fine);
    EXPECT_TRUE(head.verdict().reasons.empty());
    for (const char* line :
         {"= Pi * Dc * Kc / ( 2 * S * E - 0.2 * Pi ) per UG-32 (d)", "= MAWP / 1.67 per UG-33 (a)",
          "= min( 119.089, 101.057 )", "= max( 0.7756, 0.8665 )"})
        EXPECT_TRUE(head.tells(line)) << line;
}

// Torispherical head, Appendix 1-4(d) with E = 1:
//   M = (3 + sqrt(96.0625 / 6.0625)) / 4 = (3 + 3.9806232) / 4 = 1.7451558
//   tr = 167 * 96.0625 * 1.7451558 / (2 * 10000 - 0.2 * 167) = 1.4021693, with c 1.4646693
//   MAWP = 2 * 10000 * 1.4375 / (1.7451558 * 96.0625 + 0.2 * 1.4375) = 171.2007286, / 1.67 = 102.5154063
TEST_F(ConvexHeads, TorisphereByHand) {
    const ConvexRun head = calculate(TORISPHERE);
    ASSERT_NE(head.outcome.convex, nullptr);
    expect_near(head.head().found.t_required, 1.4646692592);
    expect_near(head.head().found.mawp, 171.2007285736);
    expect_near(head.outcome.convex->maep, 102.5154063315);
    EXPECT_EQ(head.verdict().status, Status::fine);
    EXPECT_TRUE(head.verdict().reasons.empty());
}

// 2:1 head of 2400 mm under 7 bar, S 69 MPa, c 1.5 mm:
//   tr = 1.169 * 2403 / (2 * 69 - 0.2 * 1.169) = 20.3902 mm
TEST_F(ConvexHeads, MetricUnitsByHand) {
    const ConvexRun head = calculate(R"([units]
base = "SI"
pressure = { factor = 0.0689475729, label = "bar" }
[[external]]
kind = "elliptical"
P = 7
T = 150
S = 69
D = 2400
t = 22
c = 1.5
chart = "CS-2"
)");
    ASSERT_NE(head.outcome.convex, nullptr);
    // The factors of the units of pressure and stress have eight digits.
    EXPECT_NEAR(head.head().found.t_required * 25.4f, 20.3902f + 1.5f, 0.001f);
    EXPECT_EQ(head.verdict().status, Status::fine);
    EXPECT_TRUE(head.tells(" mm")) << head.outcome.report;
}

// The joint efficiency is 1 and the pressure 1.67 P: the same as a [[shell]] of the same head gets.
TEST_F(ConvexHeads, AreShellsUnderInternalPressure) {
    const std::string more = "Ut = 0.01\nSy = 34800\n";
    const std::string variants[] = {ELLIPSE + more + "corroded_K = true\n",
                                    with("D", "Do = 97.5\nh = 22", ELLIPSE) + more,
                                    TORISPHERE + more,
                                    with("D", "Do = 99", TORISPHERE) + more,
                                    THIN + "Sy = 34800\n",
                                    with("kind", "kind = \"elliptical\"", THIN) + "Sy = 34800\n"};
    for (const std::string& toml : variants) {
        const ConvexRun head = calculate(toml);
        ASSERT_NE(head.outcome.convex, nullptr);
        const float P = head.element().setting(N::P) * 1.67f;
        std::string text = with("P", "P = " + std::to_string(P), with("chart", "", toml));
        text.replace(text.find("[[external]]"), 12, "[[shell]]");
        const ReadResult input = read_input(text + "Sa = 20000\n");
        ASSERT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front());
        const auto outcome = input.request.elements.at(0)->calculate(input.request);
        const auto& shell = static_cast<const ShellOutcome&>(*outcome);
        expect_near(head.head().found.t_required, static_cast<double>(shell.found.t_required));
        expect_near(head.head().found.mawp, static_cast<double>(shell.found.mawp));
        EXPECT_EQ(head.head().found.evaluated_14f, shell.found.evaluated_14f);
        EXPECT_EQ(head.head().found.thin, shell.found.thin);
    }
}

// With so much corrosion the head just holds. 2:1 head:
//   c + Ut + 167 * (96 + 2 * c) / 19966.6 = 0.875
//   c = (0.875 - 0.01 - 0.8029409) / (1 + 334 / 19966.6) = 0.0610380
// of outside dimensions, where the tolerance comes off the outside diameter:
//   c = 0.875 - 0.01 - 167 * 97.73 / (20000 + 334 * 0.9) = 0.0610380 too
TEST_F(ConvexHeads, FailureCorrosionByHand) {
    const auto corrosion = [](const std::string& toml) { return calculate(toml).head().fail_ca; };
    EXPECT_NEAR(corrosion(ELLIPSE + "Ut = 0.01\n"), 0.0610380f, 2e-6f);
    EXPECT_NEAR(corrosion(with("D", "Do = 97.75", ELLIPSE) + "Ut = 0.01\n"), 0.0610380f, 2e-6f);
    // A head that fails by Appendix 1-4(f) has none to lose; a thin one that passes fails after it.
    EXPECT_EQ(corrosion(THIN + "Sy = 5000\n"), 0.0f);
    const std::string sound = with("P", "P = 3", THIN) + "Sy = 5000\n";
    const float c = corrosion(sound);
    EXPECT_GT(c, 0.01f);
    const auto status = [&](float share) {
        const ConvexRun head = calculate(sound + "c = " + std::to_string(c * share) + "\n");
        return head.head().found.t_required <= 0.18f;
    };
    EXPECT_TRUE(status(0.999f));
    EXPECT_FALSE(status(1.001f));
}

// ---- verdict -----------------------------------------------------------------------------------------

// Without corrosion the head of 0.80294 in. is the required one: 167 * 96 / 19966.6.
TEST_F(ConvexHeads, FailWhereTheThicknessIsShort) {
    const std::string head = with("c", "c = 0", ELLIPSE);
    const float required = 16032.0f / 19966.6f;
    const auto verdict = [&](float share) {
        return calculate(with("t", "t = " + std::to_string(required * share), head)).verdict();
    };
    EXPECT_EQ(verdict(0.99997f).status, Status::fine); // a ratio that is shown as 1.0000
    EXPECT_EQ(verdict(0.9999f).status, Status::fails);
    const Verdict fails = verdict(0.9986f);
    EXPECT_EQ(fails.status, Status::fails);
    ASSERT_EQ(fails.reasons.size(), 2u); // the chart lets it pass
    EXPECT_EQ(fails.reasons[0],
              "the required thickness by UG-33 (a)(1), for 1.67 times the pressure "
              "inside, 0.8029 in. is above the given 0.8018 in.");
    EXPECT_EQ(fails.reasons[1], "the MAEP by UG-33 (a) 99.86 psig is below the external design "
                                "pressure 100.00 psig");
    const ConvexRun thin = calculate(with("t", "t = 0.8018", head));
    EXPECT_TRUE(thin.tells("Warning: Required Thickness by UG-33 (a)(1) Exceeds the Given"));
    EXPECT_TRUE(thin.tells("Warning: Allowable External Pressure by UG-33 (a) is below"));
}

TEST_F(ConvexHeads, FailWhereNoThicknessHolds) {
    // 2 S = 0.2 Pi
    for (const char* S : {"S = 16.7", "S = 10"}) { // at it the formula has none, below one below 0
        const ConvexRun head = calculate(with("S", S, ELLIPSE));
        const Verdict verdict = head.verdict();
        EXPECT_EQ(verdict.status, Status::fails);
        ASSERT_EQ(verdict.reasons.size(), 2u) << S;
        EXPECT_EQ(verdict.reasons[0],
                  "UG-33 (a)(1): no thickness is enough for 1.67 times the pressure inside");
        EXPECT_TRUE(verdict.reasons[1].starts_with("the MAEP by UG-33 (a) "));
        EXPECT_TRUE(head.tells("Warning: No Thickness Holds 1.67 Times the Pressure Inside!"));
        EXPECT_FALSE(head.tells("[Tg]:"));
        EXPECT_FALSE(std::isfinite(governing_thickness(head.outcome)));
    }
}

TEST_F(ConvexHeads, TellWhatIsMissing) {
    struct Case {
        std::string toml, keys;
    };
    const Case cases[] = {{with("S", "", ELLIPSE), "S"},
                          {with("S", "", TORISPHERE), "S"},
                          {with("r", "", TORISPHERE), "r"},
                          {with("S", "", with("r", "", TORISPHERE)), "S and r"}};
    for (const Case& c : cases) {
        const ConvexRun head = calculate(c.toml);
        EXPECT_EQ(head.outcome.convex, nullptr);
        const std::string missing =
            "UG-33 (a)(1) was not checked for 1.67 times the pressure inside; it needs " + c.keys;
        EXPECT_TRUE(head.tells("Note: " + missing + '.')) << c.keys;
        const Verdict verdict = head.verdict();
        EXPECT_EQ(verdict.status, Status::fails);
        ASSERT_EQ(verdict.reasons.size(), 1u);
        EXPECT_EQ(verdict.reasons[0], missing);
        EXPECT_EQ(governing_maep(head.outcome), head.outcome.maep);
        EXPECT_EQ(governing_thickness(head.outcome), head.outcome.tca);
    }
}

// UG-33(a)(1) is for formed heads by the charts of VIII-1.
TEST_F(ConvexHeads, AreNoOtherElements) {
    for (const std::string& toml : {with("kind", "kind = \"sphere\"", ELLIPSE),
                                    with("kind", "kind = \"cylinder\"\nlength = 60", ELLIPSE),
                                    ELLIPSE + "method = \"stress\"\nSy = 34800\n",
                                    ELLIPSE + "code = \"VIII-2\"\nedition = \"older\"\n"}) {
        const ConvexRun other = calculate(toml);
        EXPECT_EQ(other.outcome.convex, nullptr);
        EXPECT_FALSE(other.tells("UG-33 (a)(1)")) << toml;
        for (const std::string& reason : other.verdict().reasons)
            EXPECT_EQ(reason.find("UG-33"), std::string::npos) << reason;
    }
}

TEST_F(ConvexHeads, WithoutPressureAreRatedOnly) {
    for (const std::string& toml : {ELLIPSE, TORISPHERE, THIN + "Sy = 34800\n"}) {
        const ConvexRun given = calculate(toml);
        const ConvexRun head = calculate(with("P", "P = 0", toml));
        ASSERT_NE(head.outcome.convex, nullptr);
        EXPECT_EQ(head.outcome.convex->maep, given.outcome.convex->maep);
        EXPECT_EQ(head.verdict().status, Status::fine);
        EXPECT_TRUE(head.tells("[MAEPg]:"));
        EXPECT_FALSE(head.tells("[treq]:"));
        EXPECT_FALSE(head.tells("[Pi]:"));
    }
}

TEST_F(ConvexHeads, LimitsOfTheFormAreWarnings) {
    const auto reasons = [](const std::string& toml) { return calculate(toml).verdict().reasons; };
    const std::string flat = with("t", "t = 1.6", with("L", "L = 99.5", TORISPHERE));
    ASSERT_EQ(reasons(flat).size(), 1u);
    EXPECT_EQ(reasons(flat)[0], "The crown radius L is above the outside diameter, UG-32 (j).");
    // Without a diameter only the radius can be compared with the thickness.
    EXPECT_TRUE(reasons(with("D", "", flat)).empty());
}

// ---- Appendix 1-4(f) ---------------------------------------------------------------------------------

TEST_F(ConvexHeads, ThinOnesNeedAppendix14f) {
    const auto run = [](const std::string& more) { return calculate(THIN + more); };
    const ConvexRun head = run("Sy = 34800\n");
    EXPECT_TRUE(head.head().found.evaluated_14f);
    EXPECT_EQ(head.head().found.t_status_14f, TARVANE_HEAD_THIN);
    EXPECT_GT(head.head().found.t_14f, head.head().found.t_req_raw);
    EXPECT_EQ(head.head().found.mawp, head.head().found.mawp_14f);
    EXPECT_TRUE(head.tells("App 1-4(f) Calculated Required Thick. (TR)"));
    EXPECT_EQ(head.verdict().status, Status::fine);
    EXPECT_TRUE(head.verdict().reasons.empty());

    const std::string told =
        "UG-33 (a)(1): thinner than 0.002 L, but Appendix 1-4(f) was not evaluated";
    struct Case {
        std::string toml, reason;
        Status status;
    };
    const Case cases[] = {
        {THIN, told + "; it needs Sy", Status::fails},
        {with("D", "", THIN) + "Sy = 34800\n", told + "; it needs D or Do", Status::fails},
        {with("D", "", THIN), told + "; it needs Sy and D or Do", Status::fails},
        {with("P", "P = 0", THIN), told + "; it needs Sy", Status::fails},
        {THIN + "skip_1_4f = true\n", told, Status::fine},
        // Given, but no yield stress in psi.
        {THIN + "Sy = 34.8\n", told + "; it needs Sy above 1000.00 psi", Status::fails},
    };
    for (const Case& c : cases) {
        const ConvexRun without = calculate(c.toml);
        const Verdict verdict = without.verdict();
        EXPECT_EQ(verdict.status, c.status) << c.toml;
        ASSERT_EQ(verdict.reasons.size(), 1u) << c.toml;
        EXPECT_EQ(verdict.reasons[0], c.reason);
        EXPECT_TRUE(without.tells("thinner than 0.002 L, and Appendix 1-4(f) was not evaluated"));
    }
    // 0.002 L is thin, above it UG-32 holds.
    EXPECT_EQ(calculate(with("t", "t = 0.2", THIN)).verdict().reasons.size(), 1u);
    EXPECT_TRUE(calculate(with("t", "t = 0.2001", THIN)).verdict().reasons.empty());
    // The note hides no failure.
    const Verdict weak = calculate(with("P", "P = 8", THIN)).verdict();
    EXPECT_EQ(weak.status, Status::fails);
    EXPECT_EQ(weak.reasons.back(), told + "; it needs Sy");
}

// A knuckle that fails before the ordinary formulas do.
TEST_F(ConvexHeads, ThinOnesFailByAppendix14f) {
    const std::string weak = with("P", "P = 5.8", THIN) + "Sy = 5000\n";
    const Verdict verdict = calculate(weak).verdict();
    EXPECT_EQ(verdict.status, Status::fails);
    ASSERT_EQ(verdict.reasons.size(), 2u);
    EXPECT_TRUE(verdict.reasons[0].starts_with("the required thickness by UG-33 (a)(1)"));
    // A head that is almost a hemisphere: 0.5 Re / r - 1 is below 0.
    const std::string deep = with("kind", "kind = \"elliptical\"\nk = 1.1", THIN);
    const Verdict round = calculate(with("t", "t = 0.1", deep) + "Sy = 34800\n").verdict();
    EXPECT_EQ(round.status, Status::fails);
    ASSERT_EQ(round.reasons.size(), 1u);
    EXPECT_EQ(round.reasons[0], "UG-33 (a)(1): Appendix 1-4(f) has no solution for this geometry");
}

// ---- material and keys -------------------------------------------------------------------------------

TEST_F(ConvexHeads, TakeStressesOfTheMaterial) {
    const std::string named = with("S", "", with("chart", "material = \"SA-516 70\"", THIN));
    const ConvexRun head = calculate(named);
    EXPECT_EQ(head.element().setting(N::S), 20000.0f);
    EXPECT_GT(head.element().setting(N::Sy), 30000.0f);
    EXPECT_TRUE(head.head().found.evaluated_14f);
    EXPECT_EQ(head.element().data.count("YIELDSTR.BIN"), 1u);
    // Nor a modulus table; modulus 2 is approximate in the shipped file.
    const std::string table = "Sy = 34800\nmaterial_class = 2\n";
    EXPECT_EQ(calculate(THIN + table).element().data.count("ElastAlp07.txt"), 1u);
    EXPECT_EQ(calculate(ELLIPSE + table).element().data.count("ElastAlp07.txt"), 0u);
    // No yield stress where nothing needs it.
    EXPECT_EQ(calculate(with("t", "t = 0.5", named)).element().setting(N::Sy), 0.0f);
    // A temperature without an allowable stress is no fault: the chart does without.
    const ConvexRun hot = calculate(with("T", "T = 1400", named));
    EXPECT_EQ(hot.outcome.convex, nullptr);
    EXPECT_TRUE(hot.tells("it needs S."));
}

TEST_F(ConvexHeads, FaultsOfKnuckleAndModulus) {
    const auto fault = [](const std::string& toml) {
        const std::vector<std::string> lines = fault_lines(toml);
        return lines.size() == 1 ? lines[0] : std::to_string(lines.size());
    };
    EXPECT_EQ(fault(THIN + "Sy = 34800\nmaterial_class = 999\n"),
              "f:12: material_class: no modulus table 999 in ElastAlp07.txt");
    EXPECT_EQ(fault(with("r", "r = 0", TORISPHERE)), "f:8: r: it must be above 0");
    EXPECT_EQ(fault(with("D", "D = 300", with("r", "r = 97", TORISPHERE))),
              "f:8: r: the knuckle radius must not be above the crown radius L");
    EXPECT_EQ(fault(with("r", "r = 49", TORISPHERE)),
              "f:8: r: the knuckle radius must not be above D/2");
    EXPECT_EQ(fault(with("D", "Do = 99", with("r", "r = 48.5", TORISPHERE))),
              "f:8: r: the knuckle radius must not be above Do/2 - t");
}

// ---- a [[shell]] under both pressures ------------------------------------------------------------------

TEST_F(ConvexHeads, OfAShellGetTheSame) {
    const std::string knuckle =
        with("r", "r = 5.5", with("t", "t = 1.6", TORISPHERE)) + "Ut = 0.01\n"; // below 6 %
    const ConvexRun same = calculate(knuckle);
    std::string text = with("P", "P = 60\nP_external = 100\nSa = 20000", knuckle);
    text.replace(text.find("[[external]]"), 12, "[[shell]]");
    const ReadResult input = read_input(text);
    ASSERT_TRUE(input.faults.empty()) << fault_line("f", input.faults.front());
    const Element& shell = *input.request.elements.at(0);
    const auto outcome = shell.calculate(input.request);
    const std::string_view title = " Results for Maximum Allowable External Pressure";
    const std::size_t at = outcome->report.find(title);
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(outcome->report.substr(at),
              same.outcome.report.substr(same.outcome.report.find(title)));
    // What applies to both is reported once.
    const Verdict verdict = shell.judge(*outcome, input.request.units);
    EXPECT_EQ(verdict.status, Status::fails);
    EXPECT_EQ(same.verdict().status, Status::fails);
    EXPECT_EQ(verdict.reasons, same.verdict().reasons);
    EXPECT_EQ(verdict.reasons.size(), 1u);
}

using ConvexProgram = ProgramTest;

TEST_F(ConvexProgram, GivesRowsNoteAndStatus) {
    const ProgramRun result = run("run " + write("heads.toml", ELLIPSE + with("S", "", ELLIPSE) +
                                                                   with("t", "t = 0.8", ELLIPSE)));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("external 2: UG-33 (a)(1) was not checked"), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find("external 3: the required thickness by UG-33 (a)(1)"),
              std::string::npos)
        << result.err;
    for (const char* row :
         {"\nMaximum allowable external pressure   MAEP  psig              101.06          119.09",
          "\nThe same by UG-33(a), 1.67 P inside         psig              101.06            none",
          "\nRequired thickness with allowances    Tca   in.               0.8665          0.7756",
          "\nThe same by UG-33(a)(1), 1.67 P inside      in.               0.8665            none",
          "\nCorrosion allowance at failure              in.               0.0709          0.1619"})
        EXPECT_NE(result.out.find(row), std::string::npos) << row << result.out;
}

} // namespace
} // namespace tarvane::app
