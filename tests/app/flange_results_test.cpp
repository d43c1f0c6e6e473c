#include "components/flange_results.h"

#include "app_fixture.h"
#include "tarvane/tarvane.h"

namespace tarvane::app {

using namespace vessel;
namespace {

class JudgeTest : public testing::Test {
  protected:
    JudgeTest() {
        flange.record[TARVANE_TYPE] = TARVANE_INTEGRAL_WELD_NECK;
        flange.record[TARVANE_KIND] = TARVANE_ANALYSE;
        flange.record[TARVANE_P] = 150.0f;
        flange.record[TARVANE_t] = 1.5f;
        flange.record[TARVANE_go] = 0.375f;
        flange.record[TARVANE_Fod] = 15.0f;
        flange.record[TARVANE_Fid] = 12.0f;
        flange.record[TARVANE_Go] = 14.75f;
        flange.record[TARVANE_Gi] = 14.0f;
        flange.record[TARVANE_THREADS] = TARVANE_TEMA_THREADS;
        flange.record[TARVANE_a] = 0.875f;
        outcome.record = flange.record;
        outcome.mawp = 200.0f;
        TARVANE_FLANGE_RESULTS& found = outcome.found;
        found.status = TARVANE_CALCULATED;
        found.Ab = 5.0f;
        found.Am = 4.0f;
        for (auto* index : {found.J_given, found.J_required})
            index[TARVANE_OPERATING] = index[TARVANE_SEATING] = TARVANE_NO_VALUE;
        found.deflection = found.deflection_allowed = TARVANE_NO_VALUE;
    }
    Status status() const { return flange.judge(outcome, us_units()).status; }
    std::string reason() const {
        const Verdict verdict = flange.judge(outcome, us_units());
        EXPECT_EQ(verdict.reasons.size(), 1u);
        return verdict.reasons.empty() ? "" : verdict.reasons[0];
    }

    FlangeInput flange;
    FlangeOutcome outcome;
};

TEST_F(JudgeTest, SoundFlangeIsFine) {
    EXPECT_EQ(status(), Status::fine);
    EXPECT_TRUE(flange.judge(outcome, us_units()).reasons.empty());
}

// Each stress by its name and condition, with both figures: bolts are not a stress of the flange.
TEST_F(JudgeTest, OverstressNamesTheStress) {
    const auto exceeds = [&](int row, int place) {
        outcome.found.stress[row][place] = 26000.0f;
        outcome.found.allowed[row][place] = 25000.0f;
        outcome.found.exceeded[row][place] = 1;
        const std::string told = reason();
        EXPECT_EQ(status(), Status::fails);
        outcome.found.exceeded[row][place] = 0;
        outcome.found.stress[row][place] = 0.0f;
        return told;
    };
    EXPECT_EQ(exceeds(TARVANE_SEATING, TARVANE_BOLT_STRESS),
              "the bolt stress, gasket seating, 26000.00 psi, exceeds its allowable 25000.00 psi");
    const std::pair<int, const char*> names[] = {
        {TARVANE_HUB_STRESS, "longitudinal hub stress"},
        {TARVANE_RADIAL_STRESS, "radial flange stress"},
        {TARVANE_TANGENTIAL_STRESS, "tangential flange stress"},
        {TARVANE_AVERAGE_STRESS, "average flange stress"},
        {TARVANE_BOLT_STRESS, "bolt stress"},
        {TARVANE_REVERSE_STRESS, "stress at the bore of the reverse flange"},
        {TARVANE_FULL_FACE_STRESS, "radial stress at the bolt circle"}};
    for (const auto& [place, name] : names) {
        EXPECT_EQ(exceeds(TARVANE_OPERATING, place),
                  std::string("the ") + name +
                      ", operating, 26000.00 psi, exceeds its allowable 25000.00 psi");
    }
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, BoltAreaBelowTheRequired) {
    outcome.found.Am = 5.0f;
    EXPECT_EQ(status(), Status::fine);
    outcome.found.Am = 5.001f;
    EXPECT_EQ(reason(), "the bolt area 5.000 in² is below the required 5.001 in²");
}

TEST_F(JudgeTest, PressureWithinTheFourDecimalsShown) {
    outcome.mawp = 149.993f;
    EXPECT_EQ(status(), Status::fine);
    outcome.mawp = 149.992f;
    EXPECT_EQ(reason(), "the MAWP 149.99 psig is below the design pressure 150.00 psig");
    outcome.mawp = TARVANE_NO_VALUE;
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, PressureSaysWhatHoldsItDown) {
    outcome.mawp = 100.0f;
    const std::pair<int, const char*> limits[] = {
        {TARVANE_BY_OPERATING_STRESS, "longitudinal hub stress, operating"},
        {TARVANE_BY_OPERATING_STRESS + 6, "radial stress at the bolt circle, operating"},
        {TARVANE_BY_SEATING_STRESS, "longitudinal hub stress, gasket seating"},
        {TARVANE_BY_SEATING_STRESS + 4, "bolt stress, gasket seating"},
        {TARVANE_BY_RIGIDITY, "rigidity index"},
        {TARVANE_BY_BOLTS, "bolts"},
        {TARVANE_BY_HUB, "hub small end as a cylinder"}};
    for (const auto& [by, words] : limits) {
        outcome.found.mawp_by = by;
        EXPECT_EQ(reason(),
                  std::string("the MAWP 100.00 psig is below the design pressure 150.00 psig: ") +
                      words + ", 100.00 psig");
    }
    outcome.found.mawp_by = TARVANE_BY_DEFLECTION; // no pressure
    EXPECT_EQ(status(), Status::fine);
}

TEST_F(JudgeTest, HubThatHoldsThePressureDownIsNamedWhereItIsEnough) {
    outcome.mawp = 780.98f;
    outcome.found.mawp_by = TARVANE_BY_HUB;
    EXPECT_EQ(status(), Status::fine);
    EXPECT_EQ(reason(),
              "note: the MAWP is limited by the hub small end as a cylinder, 780.98 psig");
    outcome.found.mawp_by = TARVANE_BY_OPERATING_STRESS;
    EXPECT_TRUE(flange.judge(outcome, us_units()).reasons.empty());
}

TEST_F(JudgeTest, ThicknessOfACover) {
    outcome.t_req = 1.6f;
    EXPECT_EQ(status(), Status::fine); // not a cover
    flange.record[TARVANE_TYPE] = TARVANE_BLIND;
    EXPECT_EQ(reason(), "the required thickness 1.6000 in. is above the given 1.5000 in.");
    outcome.t_req = 1.50007f;
    EXPECT_EQ(status(), Status::fine);
    outcome.t_req = 1.50008f;
    EXPECT_EQ(status(), Status::fails);
}

TEST_F(JudgeTest, RigidityIndexOfTheThicknessInQuestion) {
    outcome.found.J_required[TARVANE_SEATING] = 1.3f;
    outcome.found.J_given[TARVANE_OPERATING] = 1.00004f;
    EXPECT_EQ(status(), Status::fine);
    outcome.found.J_given[TARVANE_OPERATING] = 1.0003f;
    EXPECT_EQ(reason(), "the rigidity index, operating, 1.0003, is above 1");
    outcome.t_req = 1.5f;
    flange.record[TARVANE_KIND] = TARVANE_THICKNESS;
    EXPECT_EQ(reason(), "the rigidity index, gasket seating, 1.3000, is above 1");
}

TEST_F(JudgeTest, SearchWithoutAThickness) {
    flange.record[TARVANE_KIND] = TARVANE_DESIGN;
    EXPECT_EQ(reason(), "no required thickness was found");
    outcome.t_req = 1.0f;
    EXPECT_EQ(status(), Status::fine);
    outcome.t_req = 0.0f;
    outcome.found.status = TARVANE_BOLT_AREA_SHORT; // the areas say that
    outcome.found.Am = 6.0f;
    EXPECT_EQ(reason(), "the bolt area 5.000 in² is below the required 6.000 in²");
}

TEST_F(JudgeTest, DeflectionOfACover) {
    outcome.found.deflection = outcome.found.deflection_allowed = 0.03f;
    EXPECT_EQ(status(), Status::fine);
    outcome.found.deflection = 0.04f;
    EXPECT_EQ(reason(),
              "the deflection of the cover, 0.0400 in., is above the allowed one, 0.0300 in.");
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
    EXPECT_EQ(flange.judge(outcome, us_units()).reasons.front(),
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
    outcome.found.modulus_status = TARVANE_MODULUS_BEYOND_CHART;
    EXPECT_EQ(status(), Status::fine);
    outcome.found.modulus_status = TARVANE_NO_MODULUS;
    EXPECT_EQ(status(), Status::fails);
    outcome.found.modulus_status = TARVANE_MODULUS_CARBON_STEEL;
    EXPECT_EQ(reason(), "there is no elastic modulus of table 77 at 300 °F");
}

TEST_F(JudgeTest, OpeningsOfACover) {
    outcome.found.openings = TARVANE_OPENINGS_IN_VIOLATION;
    outcome.found.opening_violations = 1;
    const auto fault = [&](int rule) {
        outcome.found.opening_rule[0] = rule;
        outcome.found.opening_found[0] = rule < TARVANE_OPENINGS_NEAR ? 0.8f : 0.6f;
        outcome.found.opening_limit[0] = 0.75f;
        return reason();
    };
    EXPECT_EQ(
        fault(TARVANE_OPENING_D1_LARGE),
        "UG-39: the opening d1, 0.800 in., is above half the diameter of the head, 0.750 in.");
    EXPECT_EQ(
        fault(TARVANE_OPENING_D2_LARGE),
        "UG-39: the opening d2, 0.800 in., is above half the diameter of the head, 0.750 in.");
    EXPECT_EQ(
        fault(TARVANE_OPENINGS_LARGE),
        "UG-39(e): the average diameter of the openings, 0.800 in., is above a quarter of the "
        "diameter of the head, 0.750 in.");
    EXPECT_EQ(
        fault(TARVANE_OPENINGS_NEAR),
        "UG-39(e)(3): the pitch of the openings, 0.600 in., is below 1.25 times their average "
        "diameter, 0.750 in.");
    EXPECT_EQ(
        fault(TARVANE_OPENING_LIGAMENT),
        "UG-39(e)(4): the ligament between the openings, 0.600 in., is below a quarter of the "
        "lesser diameter, 0.750 in.");
    EXPECT_EQ(fault(TARVANE_OPENING_D1_AT_EDGE),
              "UG-39(e)(5): the distance of the opening d1 to the edge, 0.600 in., is below a "
              "quarter of d1, 0.750 in.");
    EXPECT_EQ(fault(TARVANE_OPENING_D2_AT_EDGE),
              "UG-39(e)(5): the distance of the opening d2 to the edge, 0.600 in., is below a "
              "quarter of d2, 0.750 in.");
}

TEST_F(JudgeTest, RefusedInputIsBad) {
    outcome.found.status = TARVANE_REFUSED;
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
    const Calculated calculated{&flange, &outcome};
    const std::string table = flange_tables({&calculated, 1}, us_units());
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
    const Calculated calculated{&flange, &outcome};
    const std::string us = flange_tables({&calculated, 1}, us_units());
    EXPECT_NE(us.find("ft-lbs           1000.00"), std::string::npos) << us;
    const std::string si = flange_tables({&calculated, 1}, si_units());
    EXPECT_NE(si.find("N-m              1355.82"), std::string::npos) << si;
}

} // namespace
} // namespace tarvane::app
