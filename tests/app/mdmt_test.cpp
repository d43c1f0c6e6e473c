// [[mdmt]] and `tarvane mdmt`: what the file gives, published figures, verdicts.
#include "components/mdmt_session.h"

#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "components/mdmt_results.h"
#include "document/report_view.h"
#include "tarvane/tarvane.h"

namespace tarvane::app {

using namespace vessel;
namespace {

struct MdmtRun {
    ReadResult input;
    MdmtOutcome outcome;
    const MdmtInput& element() const {
        return static_cast<const MdmtInput&>(*input.request.elements.at(0));
    }
    Verdict verdict() const { return element().judge(outcome, input.request.units); }
};

MdmtRun calculate(const std::string& keys, const std::string& head = "") {
    set_data_folder(TARVANE_DATA_DIR);
    const std::string toml = head + "[mdmt]\n" + keys;
    MdmtRun run{read_input(toml), {}};
    EXPECT_TRUE(run.input.faults.empty()) << fault_line("f", run.input.faults.front()) << toml;
    if (!run.input.request.elements.empty())
        run.outcome = run_mdmt(run.element(), run.input.request);
    return run;
}

std::string only_fault(const std::string& keys) {
    set_data_folder(TARVANE_DATA_DIR);
    const std::vector<std::string> lines = fault_lines("[mdmt]\n" + keys);
    EXPECT_EQ(lines.size(), 1u) << keys << (lines.size() > 1 ? lines[1] : "");
    return lines.empty() ? "" : lines[0];
}

// ---- input -----------------------------------------------------------------------------------------

TEST(MdmtInputFile, FaultsNameLineKeyAndValue) {
    struct Case {
        std::string keys, fault;
    };
    const Case cases[] = {
        {"curve = \"B\"\ntg = 0\n", "f:3: tg: it must be above 0"},
        {"curve = \"B\"\ntg = 1\nc = 0.5\nce = 0.5\n",
         "f:3: tg: nothing is left of it after the corrosion allowances"},
        {"curve = \"B\"\ntg = 1\ntr = 0.5\nratio = 0.5\n",
         "f:5: ratio: either tr or ratio is expected, not both"},
        {"curve = \"B\"\ntg = 1\nE = 1.1\n", "f:4: E: a joint efficiency up to 1 is expected"},
        {"curve = \"B\"\ntg = 1\nedition = \"older\"\n",
         "f:4: edition: \"older\" is an edition of code VIII-2 only"},
        {"curve = \"B\"\ntg = 1\ncode = 2\nSy = 38000\nMDMT = 0\nedition = \"A98\"\n",
         "f:7: edition: \"A98\" is an edition of code VIII-1 only"},
        {"curve = \"impact tested\"\ntg = 1\n",
         "f:1: material: an impact tested material needs its name: its record has the temperature "
         "of the test"},
        {"curve = 5\ncode = 2\ntg = 1\nSy = 38000\nMDMT = 0\nmaterial = \"SA-350 LF2\"\n",
         "f:2: curve: VIII-2, 3.11 has no impact tested materials; \"A\" to \"D\" or \"exempt\" "
         "is expected"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(only_fault(c.keys), c.fault);
    EXPECT_TRUE(only_fault("tg = 1\n").starts_with("f:1: curve: missing in mdmt 1"));
    EXPECT_TRUE(only_fault("curve = \"B\"\ntg = 1\nug20f = true\n").starts_with("f:1: T: missing"));
    EXPECT_TRUE(only_fault("material = \"SA-999 1\"\ntg = 1\n")
                    .starts_with("f:2: material: no material \"SA-999 1\" in MATFILE1.BIN"));
}

TEST(MdmtInputFile, MaterialGivesCurveAndYield) {
    EXPECT_EQ(calculate("material = \"sa516 70\"\ntg = 1\n").element().curve(), TARVANE_CURVE_B);
    EXPECT_EQ(calculate("material = \"SA-516 70\"\ntg = 1\nnormalized = true\n").element().curve(),
              TARVANE_CURVE_D);
    const MdmtRun division_2 = calculate("material = \"SA-516 70\"\ncode = 2\ntg = 1\nMDMT = 60\n");
    EXPECT_EQ(division_2.element().setting(MdmtNumber::Sy), 38000.0f);
}

// A difference of temperatures has no offset.
TEST(MdmtInputFile, ReductionOfAPadIsADifference) {
    const MdmtRun pad =
        calculate("curve = \"B\"\ntg = 25\ntr = 18\npad_ratio = 0.8\npad_reduction = 10\n",
                  "units = \"SI\"\n");
    EXPECT_NEAR(pad.outcome.reduction, 18.0f, 1e-4f);
    EXPECT_NEAR(pad.outcome.ratio, 0.8f, 1e-6f);
}

// ---- results -----------------------------------------------------------------------------------------

// Division 1 example E3.1: normalized SA-516 70, curve D, 1.8125 in, about -7 F.
TEST(MdmtResults, PublishedCurve) {
    EXPECT_NEAR(calculate("curve = \"D\"\ntg = 1.8125\n").outcome.t_min, -7.0f, 1.0f);
}

// Table UCS-66 at one inch: 68, 31, -3, -30; the equations come within two degrees.
TEST(MdmtResults, CurvesAtOneInch) {
    const float table[] = {68.0f, 31.0f, -3.0f, -30.0f};
    for (int curve = 1; curve <= 4; ++curve) {
        const std::string keys = "curve = " + std::to_string(curve) + "\ntg = 1.0\n";
        EXPECT_EQ(calculate(keys + "curve_tables = true\n").outcome.t_min, table[curve - 1]);
        EXPECT_NEAR(calculate(keys).outcome.t_min, table[curve - 1], 2.0f);
    }
}

// Files with a number of their form go by the table, others by the equations; the key says otherwise in both.
TEST(MdmtResults, NewerFilesTakeTheTable) {
    const std::string newer = "tarvane = 1\n", keys = "curve = \"C\"\ntg = 0.5\n";
    const MdmtRun table = calculate(keys, newer), equations = calculate(keys);
    EXPECT_EQ(table.outcome.t_min, -32.0f);
    EXPECT_NEAR(equations.outcome.t_min, -36.5f, 0.1f);
    EXPECT_EQ(calculate(keys + "curve_tables = false\n", newer).outcome.t_min,
              equations.outcome.t_min);
    EXPECT_EQ(calculate(keys + "curve_tables = true\n").outcome.t_min, -32.0f);
    EXPECT_EQ(table.element().origins.at("curve_tables").from, "default");
    // Every other row of the figure's table, and between two of them.
    EXPECT_EQ(calculate("curve = \"B\"\ntg = 0.75\n", newer).outcome.t_min, 15.0f);
    EXPECT_EQ(calculate("curve = \"A\"\ntg = 1.5\n", newer).outcome.t_min, 88.0f);
    EXPECT_EQ(calculate("curve = \"D\"\ntg = 2\n", newer).outcome.t_min, -4.0f);
    EXPECT_NEAR(calculate("curve = \"B\"\ntg = 0.78125\n", newer).outcome.t_min, 17.0f, 1e-4f);
}

// The table has no thickness below 1/4 inch; a thin part keeps the end of its curve.
TEST(MdmtResults, NewerFilesTakeTheEquationsBelowTheTable) {
    const std::string newer = "tarvane = 1\n";
    const float ends[] = {18.0f, -20.0f, -55.0f, -55.0f};
    for (int curve = 1; curve <= 4; ++curve) {
        const std::string keys = "curve = " + std::to_string(curve) + "\ntg = ";
        const MdmtRun at = calculate(keys + "0.25\n", newer);
        EXPECT_EQ(at.outcome.t_min, ends[curve - 1]);
        EXPECT_EQ(at.element().origins.at("curve_tables").from, "default");
        const MdmtRun below = calculate(keys + "0.2499\n", newer);
        EXPECT_EQ(below.outcome.t_min, ends[curve - 1]);
        EXPECT_EQ(below.element().origins.at("curve_tables").from, "tg below the table");
        EXPECT_FALSE(below.element().has(MdmtNumber::curve_tables));
    }
}

TEST(MdmtResults, RatioGivesAReduction) {
    const MdmtRun stress = calculate("curve = \"B\"\ntg = 1.0\nratio = 0.8\n");
    EXPECT_NEAR(stress.outcome.reduction, 20.0f, 1e-3f);
    EXPECT_NEAR(stress.outcome.mdmt, stress.outcome.t_min - 20.0f, 1e-3f);
    // tr E* / (tg - c - ce): 0.55 * 0.8 / 0.8
    const MdmtRun thickness =
        calculate("curve = \"B\"\ntg = 1.0\ntr = 0.6\nE = 0.7\nc = 0.15\nce = 0.05\n");
    EXPECT_NEAR(thickness.outcome.ratio, 0.6f, 1e-5f);
    const MdmtRun none = calculate("curve = \"B\"\ntg = 1.0\nratio = 0.8\nreductions = false\n");
    EXPECT_EQ(none.outcome.mdmt, none.outcome.t_min);
}

// UCS-66(b)(3): nothing but the temperature limits an element of so low a ratio.
TEST(MdmtResults, LowRatioHoldsDownTo155Below) {
    const auto mdmt = [](const char* ratio, const char* more) {
        return calculate(std::string("curve = \"A\"\ntg = 3.0\nratio = ") + ratio + '\n' + more)
            .outcome.mdmt;
    };
    EXPECT_EQ(mdmt("0.35", "low_ratio = true\n"), -155.0f);
    EXPECT_EQ(mdmt("0.36", "low_ratio = true\n"), mdmt("0.36", ""));
    EXPECT_GT(mdmt("0.35", ""), -155.0f);
    EXPECT_EQ(mdmt("0.35", "low_ratio = true\nreductions = false\n"),
              mdmt("0.35", "reductions = false\n"));
}

TEST(MdmtResults, CreditOfHeatTreatment) {
    const float without = calculate("curve = \"A\"\ntg = 1.0\npwht = true\n").outcome.t_min;
    const float with =
        calculate("curve = \"A\"\ntg = 1.0\npwht = true\ncredit = true\n").outcome.t_min;
    EXPECT_NEAR(with, without - 30.0f, 1e-4f);
}

TEST(MdmtResults, UnitsDoNotChangeTheResults) {
    const MdmtRun us = calculate("curve = \"C\"\ntg = 1.5\nratio = 0.7\nMDMT = -40\n");
    const MdmtRun si =
        calculate("curve = \"C\"\ntg = 38.1\nratio = 0.7\nMDMT = -40\n", "units = \"SI\"\n");
    EXPECT_NEAR(si.outcome.mdmt, us.outcome.mdmt, 1e-3f);
    EXPECT_NEAR(si.element().setting(MdmtNumber::required), -40.0f, 1e-4f);
}

TEST(MdmtResults, ImpactTestedMaterialOfItsSpecification) {
    const MdmtRun run = calculate("material = \"SA-350 LF2\"\ncurve = 5\ntg = 1\n");
    EXPECT_EQ(run.outcome.t_min, -50.0f);
    EXPECT_EQ(lowest_temperature(run.element(), run.outcome), -50.0f);
}

// ---- verdict -----------------------------------------------------------------------------------------

std::string only_reason(const MdmtRun& run) {
    const Verdict verdict = run.verdict();
    EXPECT_EQ(verdict.status, Status::fails);
    EXPECT_EQ(verdict.reasons.size(), 1u);
    return verdict.reasons.empty() ? "" : verdict.reasons[0];
}

TEST(MdmtVerdict, RequiredTemperature) {
    const std::string keys = "curve = \"B\"\ntg = 1.0\nratio = 0.8\n"; // 11 F
    EXPECT_EQ(calculate(keys).verdict().status, Status::fine);
    // Reports round it to whole degrees, the check doesn't.
    const float lowest = *lowest_temperature(calculate(keys).element(), calculate(keys).outcome);
    EXPECT_NEAR(lowest, 11.0f, 0.5f);
    const auto status = [&](float required) {
        return calculate(keys + "MDMT = " + std::to_string(required) + '\n').verdict().status;
    };
    EXPECT_EQ(status(lowest + 0.03f), Status::fine);
    EXPECT_EQ(status(lowest - 0.03f), Status::fails);
    EXPECT_EQ(only_reason(calculate(keys + "MDMT = 0\n")),
              "the lowest metal temperature without impact test 11 °F is above the required 0 °F");
    EXPECT_EQ(calculate(keys + "MDMT = 0\nT = 100\nug20f = true\n").verdict().status, Status::fine);
    EXPECT_EQ(calculate(keys + "MDMT = 0\nT = 660\nug20f = true\n").verdict().status,
              Status::fails);
}

TEST(MdmtVerdict, RequiredThicknessAboveTheGiven) {
    const std::string keys = "curve = \"B\"\ntg = 1\nc = 0.125\n";
    EXPECT_EQ(calculate(keys + "tr = 0.875\n").verdict().status, Status::fine);
    const Verdict above = calculate(keys + "tr = 0.9\n").verdict();
    EXPECT_EQ(above.status, Status::fails);
    ASSERT_EQ(above.reasons.size(), 1u);
    EXPECT_EQ(above.reasons[0], "the required thickness 0.9000 in. is above the thickness less "
                                "corrosion allowances 0.8750 in.");
    EXPECT_EQ(calculate(keys + "ratio = 1.5\n").verdict().reasons,
              std::vector<std::string>{"the ratio 1.500 is above 1"});
}

TEST(MdmtVerdict, TooThickForTheCurves) {
    EXPECT_EQ(
        only_reason(calculate("curve = \"B\"\ntg = 4.01\nMDMT = 100\n")),
        "no metal temperature was found: the governing thickness 4.0100 in. requires impact tests");
}

TEST(MdmtVerdict, HeatTreatmentBelowMinus55) {
    const std::string keys = "curve = \"D\"\ntg = 0.5\nratio = 0.9\nMDMT = -55\n";
    EXPECT_EQ(only_reason(calculate(keys)),
              "heat treatment is required at this temperature, UCS-68(b)");
    EXPECT_EQ(calculate(keys + "pwht = true\n").verdict().status, Status::fine);
}

TEST(MdmtVerdict, ExemptMaterials) {
    EXPECT_EQ(calculate("curve = \"exempt\"\ntg = 6\nMDMT = -300\n").verdict().status,
              Status::fine);
    const MdmtRun stainless =
        calculate("material = \"SA-240 304\"\ncurve = \"exempt\"\ntg = 1\nMDMT = -320\n");
    EXPECT_TRUE(stainless.outcome.exempt_stainless);
    EXPECT_EQ(stainless.verdict().status, Status::fine);
}

// ---- standard flanges ---------------------------------------------------------------------------------

// UCS-66(c): -20 F, where the curve ends above it.
TEST(StandardFlange, NeedsNoImpactTestDownToTheTemperatureOfUcs66c) {
    const std::string flange = "curve = \"A\"\ntg = 1\nratio = 0.9\nucs66c = true\n";
    const MdmtRun run = calculate(flange);
    EXPECT_EQ(lowest_temperature(run.element(), run.outcome), -20.0f);
    const MdmtRun without = calculate("curve = \"A\"\ntg = 1\nratio = 0.9\n");
    EXPECT_GT(lowest_temperature(without.element(), without.outcome), 30.0f);
    EXPECT_EQ(calculate(flange + "MDMT = -20\n").verdict().status, Status::fine);
    EXPECT_EQ(calculate(flange + "MDMT = -21\n").verdict().status, Status::fails);
    // Beyond the curves, too.
    const MdmtRun thick = calculate("curve = \"A\"\ntg = 6\nucs66c = true\nMDMT = -20\n");
    EXPECT_EQ(thick.verdict().status, Status::fine);
    // A curve that goes further down holds.
    const std::string low = "curve = \"D\"\ntg = 0.5\nratio = 0.5\n";
    const MdmtRun curve = calculate(low), both = calculate(low + "ucs66c = true\n");
    EXPECT_LT(lowest_temperature(both.element(), both.outcome), -20.0f);
    EXPECT_EQ(lowest_temperature(both.element(), both.outcome),
              lowest_temperature(curve.element(), curve.outcome));
    EXPECT_TRUE(both.outcome.figures.empty());
    EXPECT_EQ(both.outcome.report, curve.outcome.report);
}

TEST(StandardFlange, SaysThatTheTemperatureIsApproximate) {
    const MdmtRun run = calculate("curve = \"B\"\ntg = 2\nucs66c = true\nMDMT = -10\n");
    const std::string words = "UCS-66(c): a standard ferritic flange, no impact test down to "
                              "-20 °F, an approximate figure";
    for (const Check& check : run.element().checks(run.outcome, us_units())) {
        if (check.field().id == "mdmt" || check.field().id == "impact_tests") {
            EXPECT_EQ(check.state(), State::pass);
            EXPECT_EQ(check.step(), words);
        }
    }
    EXPECT_EQ(run.outcome.figures,
              (OwnFigures{{"temperature of UCS-66(c), -20 °F",
                           "general knowledge of the paragraph, without a public copy"}}));
    const std::string report = show_report(run.outcome.report, false);
    EXPECT_NE(report.find("\nExempt Temperature of UCS-66 (c)                         -20  °F\n"),
              std::string::npos)
        << report;
    EXPECT_NE(
        report.find("\nNote: a standard ferritic flange. The temperature of UCS-66 (c) is an "
                    "approximate figure:\ngeneral knowledge of the paragraph, without a public "
                    "copy.\n"),
        std::string::npos)
        << report;
    // The metric edition has -29 C.
    const std::string thick = "curve = \"B\"\ntg = 50\nucs66c = true\n", si = "units = \"SI\"\n";
    const MdmtRun metric = calculate(thick + "MDMT = -29\n", si);
    EXPECT_EQ(metric.verdict().status, Status::fine);
    EXPECT_EQ(metric.outcome.figures.begin()->first, "temperature of UCS-66(c), -29 °C");
    EXPECT_EQ(calculate(thick + "MDMT = -30\n", si).verdict().status, Status::fails);
}

TEST(StandardFlange, IsExemptByTheCurrentDivision1WithACurveAlone) {
    const std::string flange = "tg = 2\nucs66c = true\nMDMT = -20\n";
    for (const char* curve : {"A", "B", "C", "D"})
        EXPECT_EQ(calculate(flange + "curve = \"" + curve + "\"\n").verdict().status, Status::fine);
    const std::string b = flange + "curve = \"B\"\n";
    EXPECT_EQ(calculate(with("ucs66c", "ucs66c = false", '\n' + b)).verdict().status,
              Status::fails);
    EXPECT_EQ(calculate(b + "edition = \"A98\"\n").verdict().status, Status::fails);
    EXPECT_EQ(calculate(b + "code = \"VIII-2\"\nSy = 36000\n").verdict().status, Status::fails);
}

// ---- the program -------------------------------------------------------------------------------------

using MdmtProgram = ProgramTest;

TEST_F(MdmtProgram, QuickAnswer) {
    const ProgramRun result = run("mdmt --curve B --thickness 1.0 --ratio 0.8");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Curve                                       B\n"
                          "Governing thickness                         1.0000 in.\n"
                          "Ratio                                       0.800\n"
                          "Temperature of the curve                    31 °F\n"
                          "Temperature reduction                       20 °F\n"
                          "Minimum design metal temperature            11 °F\n"
                          "Exempt temperature of UG-20(f)              -20 °F\n"
                          "Lowest temperature without impact test      -20 °F\n");
}

TEST_F(MdmtProgram, QuickAnswerInSiUnitsWithARequiredTemperature) {
    const ProgramRun result =
        run("mdmt --curve B -t 25.4 --ratio .8 --units si --no-ug20f --required -15");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("Temperature reduction                       11 °C\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(result.err,
              "tarvane: the lowest metal temperature without impact test -12 °C is above "
              "the required -15 °C\n");
}

TEST_F(MdmtProgram, QuickAnswerOfAMaterial) {
    const ProgramRun result = run("mdmt --material 'SA-516 70' --normalized -t 1.8125 --pwht");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("Curve                                       D\n"),
              std::string::npos);
    EXPECT_NE(result.out.find("Temperature of the curve                    -36 °F\n"),
              std::string::npos)
        << result.out;
}

TEST_F(MdmtProgram, WrongOptionsAreBadInput) {
    const ProgramRun curve = run("mdmt --curve E -t 1");
    EXPECT_EQ(curve.status, 2);
    EXPECT_TRUE(curve.err.starts_with("tarvane: curve: one of \"A\", \"B\"")) << curve.err;
    EXPECT_EQ(run("mdmt --curve B").status, 2);
    EXPECT_EQ(run("mdmt --curve B -t thick").status, 2);
    EXPECT_EQ(run("mdmt --curve B -t -1").status, 2);
}

} // namespace
} // namespace tarvane::app
