#include "flange_results.h"

#include "app_fixture.h"
#include "tarvane/tarvane.h"

namespace tarvane::app {
namespace {

class JudgeTest : public testing::Test {
  protected:
    JudgeTest() {
        flange.record[TARVANE_TYPE] = TARVANE_INTEGRAL_WELD_NECK;
        flange.record[TARVANE_KIND] = TARVANE_ANALYSE;
        flange.record[TARVANE_P] = 150.0f;
        flange.record[TARVANE_t] = 1.5f;
        flange.record[TARVANE_Fod] = 15.0f;
        flange.record[TARVANE_Fid] = 12.0f;
        flange.record[TARVANE_Go] = 14.75f;
        flange.record[TARVANE_Gi] = 14.0f;
        flange.record[TARVANE_THREADS] = TARVANE_TEMA_THREADS;
        flange.record[TARVANE_a] = 0.875f;
        outcome.record = flange.record;
        outcome.record[TARVANE_Ab] = 5.0f;
        outcome.record[TARVANE_Am] = 4.0f;
        outcome.mawp = 200.0f;
    }
    void report(const std::string& text, const std::string& marks = "") {
        std::string line = ' ' + text;
        line.resize(101, ' ');
        outcome.report += line + marks + '\n';
    }
    Status status() const { return judge_flange(flange, outcome, us_units()).status; }
    std::string reason() const {
        const Verdict verdict = judge_flange(flange, outcome, us_units());
        EXPECT_EQ(verdict.reasons.size(), 1u);
        return verdict.reasons.empty() ? "" : verdict.reasons[0];
    }

    FlangeInput flange;
    FlangeOutcome outcome;
};

TEST_F(JudgeTest, SoundFlangeIsFine) {
    EXPECT_EQ(status(), Status::fine);
    EXPECT_TRUE(judge_flange(flange, outcome, us_units()).reasons.empty());
}

TEST_F(JudgeTest, Overstress) {
    report("Warning: Actual Flange Stress Exceeds Allowable!");
    EXPECT_EQ(status(), Status::fails);
    EXPECT_EQ(reason(), "a flange stress exceeds its allowable");
}

TEST_F(JudgeTest, BoltAreaBelowTheRequired) {
    outcome.record[TARVANE_Am] = 5.0f;
    EXPECT_EQ(status(), Status::fine);
    outcome.record[TARVANE_Am] = 5.001f;
    EXPECT_EQ(reason(), "the bolt area 5.000 in² is below the required 5.001 in²");
}

TEST_F(JudgeTest, PressureWithinAThousandth) {
    outcome.mawp = 149.86f;
    EXPECT_EQ(status(), Status::fine);
    outcome.mawp = 149.84f;
    EXPECT_EQ(reason(), "the MAWP 149.84 psig is below the design pressure 150.00 psig");
    outcome.mawp = TARVANE_NO_VALUE;
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, ThicknessOfACover) {
    outcome.t_req = 1.6f;
    EXPECT_EQ(status(), Status::fine); // not a cover
    flange.record[TARVANE_TYPE] = TARVANE_BLIND;
    EXPECT_EQ(reason(), "the required thickness 1.6000 in. is above the given 1.5000 in.");
    outcome.t_req = 1.5001f;
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, RigidityIndexOfTheThicknessInQuestion) {
    report("Flange Rigidity Based on Required Thickness [ASME]:");
    report(" = 1.300 (should be <= 1)", " 0 0 0 0 1 0");
    report("Flange Rigidity Based on Given Thickness [ASME]:");
    report(" = 0.800 (should be <= 1)", " 0 0 0 0 1 0");
    EXPECT_EQ(status(), Status::fine);
    outcome.t_req = 1.5f;
    flange.record[TARVANE_KIND] = TARVANE_THICKNESS;
    EXPECT_EQ(reason(), "the rigidity index 1.300 is above 1");
}

TEST_F(JudgeTest, SearchWithoutAThickness) {
    flange.record[TARVANE_KIND] = TARVANE_DESIGN;
    EXPECT_EQ(reason(), "no required thickness was found");
    outcome.t_req = 1.0f;
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, BoltCircleBetweenGasketAndRim) {
    flange.record[TARVANE_A] = 19.0f;
    flange.record[TARVANE_Go] = 15.0f;
    flange.record[TARVANE_Gi] = 14.0f;
    flange.record[TARVANE_C] = 17.0f;
    EXPECT_EQ(status(), Status::fine);
    flange.record[TARVANE_C] = 19.0f;
    EXPECT_EQ(reason(),
              "the bolt circle 19.000 in. is not below the outside diameter of the flange");
    flange.record[TARVANE_C] = 14.5f;
    EXPECT_EQ(judge_flange(flange, outcome, us_units()).reasons.front(),
              "the bolt circle 14.500 in. lies within the gasket");
    flange.record[TARVANE_D] = 20.0f; // a non-circular cover has its own diameters
    EXPECT_EQ(status(), Status::fine);
    flange.record[TARVANE_D] = 0.0f;
    flange.record[TARVANE_KIND] = TARVANE_DESIGN; // selects the bolt circle itself
    outcome.t_req = 1.0f;
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, ModulusOfAnotherMaterial) {
    flange.record[TARVANE_MATERIAL_CLASS] = 77.0f;
    flange.record[TARVANE_T_DESIGN] = 300.0f;
    report("Warning: Invalid reference # encountered while looking up the Young's Modulus!");
    EXPECT_EQ(reason(), "there is no elastic modulus of table 77 at 300 °F");
}

TEST_F(JudgeTest, OpeningsOfACover) {
    report("UG-39(e)(4) Ligament 0.60 should be >= Min. dia./4, 0.75 in.", " 0 0 0 0 1 0");
    report("UG-39(e)(2) Spacing 6.00 is < 2*Avg. dia. 7.00 in."); // what holds, no violation
    EXPECT_EQ(reason(), "UG-39(e)(4) Ligament 0.60 should be >= Min. dia./4, 0.75 in.");
}

TEST_F(JudgeTest, RefusedInputIsBad) {
    report("Number of fatal errors: 1. Analysis of this Flange will be ended.", " 0 0 0 0 0 1");
    EXPECT_EQ(status(), Status::bad_input);
}

TEST_F(JudgeTest, StopIsTheGravest) {
    outcome.stopped = true;
    outcome.fatal_code = 25;
    EXPECT_EQ(status(), Status::stopped);
    EXPECT_EQ(reason(), "the engine stopped with code 25: the outside diameter is not above the "
                        "corroded inside diameter");
}

TEST_F(JudgeTest, TableShowsNoneWhereThereIsNone) {
    outcome.mawp = outcome.map_nc = TARVANE_NO_VALUE;
    const std::string table = results_table({{&flange, &outcome}}, us_units());
    const auto row = [&](const std::string& label) {
        const std::size_t at = table.find(label);
        return at == std::string::npos ? "" : table.substr(at, table.find('\n', at) - at);
    };
    EXPECT_TRUE(row("Maximum allowable working pressure").ends_with(" none"));
    EXPECT_TRUE(row("The same, new and cold").ends_with(" none"));
    EXPECT_TRUE(row("Bolt load, operating").ends_with(" none")); // no G: it never came so far
    EXPECT_TRUE(row("Given thickness").ends_with(" 1.5000"));
}

TEST_F(JudgeTest, MomentsAreShownInFootPounds) {
    outcome.record[TARVANE_G] = 14.0f;
    outcome.record[TARVANE_Mop] = 12000.0f;
    const std::string us = results_table({{&flange, &outcome}}, us_units());
    EXPECT_NE(us.find("ft-lbs           1000.00"), std::string::npos) << us;
    const std::string si = results_table({{&flange, &outcome}}, si_units());
    EXPECT_NE(si.find("N-m              1355.82"), std::string::npos) << si;
}

} // namespace
} // namespace tarvane::app
