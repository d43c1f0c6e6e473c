// Full face gaskets: the stresses that are left, the radial stress at the bolt circle, the least
// thickness.
#include "flange/stresses.h"
#include "stress_fixture.h"

#include <cmath>

namespace tarvane {
namespace {

using stress_test::Lines;

class FullFaceTest : public stress_test::StressesTest {};

TEST_F(FullFaceTest, UnderASMEHasHubStressesAndTheRadialStressAtTheBolts) {
    full_face(ASME_VIII_1);
    FLANGE_STRESSES(s);
    const double lig = 3.14159265 * 30 - 24 * 1.125;
    expect_stresses({25000, 7500, 6875, 16250, 12500, 0, 6 * 40000 / (4 * lig)},
                    {0, 0, 0, 0, 15000, 0, 0});
    EXPECT_EQ(
        titles(),
        (Lines{
            "Longitudinal Hub Stress, Operating [SHo]:", "Radial Flange Stress, Operating [SRo]:",
            "Tangential Flange Stress, Operating [STo]:", "Average Flange Stress, Operating [SAo]:",
            "Bolt Stress, Operating [BSo]:", "Bolt Stress, Seating [BSa]:",
            "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:"}));
    EXPECT_EQ(under("Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:"),
              (Lines{" = 6 *MR/(t\xB2*(Pi*C-n*dB))", " = 6 * 40000/",
                     "   ( 2.0\xB2 * ( 3.1416 * 30.0 - 24 * 1.125 ) )", " = 892.22 psi"}));
    EXPECT_EQ(s.tMin, 0.0f);
}

TEST_F(FullFaceTest, UnderPDIsJudgedByTheBoltCircle) {
    full_face(PD_5500);
    FLANGE_STRESSES(s);
    const double lig = 3.14159265 * 30 - 24 * 1.125;
    const double boltsp = 30 * std::sin(3.14159265 / 24);
    expect_stresses({0, 0, 0, 0, 12500, 0, 6 * 200000 / (4 * lig)}, {0, 0, 0, 0, 15000, 0, 0});
    EXPECT_NEAR(s.tMin, (boltsp - 2) * 3.5 / 6, 1e-5);
    EXPECT_EQ(under("Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:"),
              (Lines{" = 6 * Mr/(t\xB2( pi * C-n * d ))",
                     " = 6 * 200000/( 2.0\xB2 * ( 3.14 * 30.0 - 24 * 1.125 ))", " = 4461.11 psi"}));
    EXPECT_EQ(under("Required Flange thickness per bolt space criterion [trf2]:"),
              (Lines{" = (boltsp - 2*db)*(m + 0.5)/ (6 (E/200000 MPa)^0.25) per 3.5.5-2",
                     " = (3.92 - 2*1.0) * ( 3.0 + 0.5 )/( 6 (1.0)^0.25)", " = 1.1175 in."}));
    EXPECT_EQ(titles(), (Lines{"Bolt Stress, Operating [BSo]:", "Bolt Stress, Seating [BSa]:",
                               "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:",
                               "Required Flange thickness per bolt space criterion [trf2]:"}));
}

TEST_F(FullFaceTest, UnderENNamesBothThicknesses) {
    full_face(EN_13445);
    s.Peq = 2000.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.tMin, (21 + 2 * 1) * 2000.0 / 40000.0, 1e-5); // above trf2
    EXPECT_EQ(under("Required Flange thickness per bolt space criterion [trf2]:").at(0),
              " = (boltsp - 2*db)*(m + 0.5)/ (6 (E/200000 MPa)^0.25) per 11.6-16");
    EXPECT_EQ(under("Required Flange thickness per 11.6-16 [trf3]:"),
              (Lines{" = (A1 + 2 * g1)P / ( 2 * f ) per 11.6-17",
                     " = ( 21.0 + 2 * 1.0 ) * 2000.0/( 2 * 20000.0 )", " = 1.1500 in.", ""}));
    EXPECT_EQ(stored_lines().back(), "");
}

TEST_F(FullFaceTest, ExternalPressureKeepsThePressureThicknessOnly) {
    full_face(EN_13445);
    s.Peq = -100.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.tMin, 23.0 * 100.0 / 40000.0, 1e-6);
    EXPECT_TRUE(under("Required Flange thickness per bolt space criterion [trf2]:").empty());
    EXPECT_EQ(under("Required Flange thickness per 11.6-16 [trf3]:").at(1),
              " = ( 21.0 + 2 * 1.0 ) * -100.0/( 2 * 20000.0 )");
    full_face(PD_5500);
    s.Peq = -100.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.tMin, 0.0f);
    s.Peq = -0.0f; // not negative
    FLANGE_STRESSES(s);
    EXPECT_GT(s.tMin, 1.0f);
}

TEST_F(FullFaceTest, CloseBoltsGiveTheNoteAndANegativeThickness) {
    full_face(PD_5500);
    s.aNominal = 2.0f; // spacing 3.92 below 2 diameters
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.tMin, 0.0f); // the larger of 0 and a negative value
    const std::string title = "Required Flange thickness per bolt space criterion [trf2]:";
    EXPECT_EQ(under(title), (Lines{"Note: The bolt spacing was less than 2db.  This resulted in a",
                                   "    spacing thickness value, t, that was less than zero."}));
    EXPECT_EQ(marks_of("Note: The bolt"), stress_test::NOTE_MARKS);
    EXPECT_EQ(marks_of("    spacing"), stress_test::NOTE_MARKS);

    full_face(EN_13445);
    s.aNominal = 2.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.tMin, 23.0 * 100.0 / 40000.0, 1e-6);
}

TEST_F(FullFaceTest, ModulusCountsAgainstTheBoltSpace) {
    full_face(PD_5500);
    FLANGE_STRESSES(s);
    const Real atFull = s.tMin;
    s.Ehot = 29007598.0f / 16.0f; // the fourth root halves
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.tMin, 2.0f * atFull, 1e-5f);
    s.Ehot = 0.0f; // not given: taken as 1
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.tMin, atFull);
}

TEST_F(FullFaceTest, HolesWiderThanTheCircleTurnTheStressNegative) {
    for (const Int code : {ASME_VIII_1, PD_5500}) {
        full_face(code);
        s.nBolts = 100;
        FLANGE_STRESSES(s);
        EXPECT_LT(operating(FULL_FACE), 0.0f);
    }
}

TEST_F(FullFaceTest, ReverseFlangeUnderPDAndENKeepsItsStressesSigned) {
    for (const Int code : {PD_5500, EN_13445}) {
        start_again();
        full_face(code, REVERSE_WELD_NECK);
        s.Mop = -200000.0f;
        FLANGE_STRESSES(s);
        const double SRo = -7500, STo = 8 * 200000.0 / 80 - 1.75 * SRo;
        expect_stresses({25000, SRo, STo, 0.5 * (25000 + STo), 12500, 0, 0},
                        {0, 0, 0, 0, 15000, 0, 0});
    }
    // ASME words for the radial stress, the others in those of EN 13445.
    EXPECT_EQ(titles(),
              (Lines{"Longitudinal Hub Stress, Operating [SigmaHo]:",
                     "Radial Flange Stress, Operating [SRo]:",
                     "Tangential Flange Stress, Operating [SigmaTo]:",
                     "Average Flange Stress, Operating [SigmaAo]:",
                     "Bolt Stress, Operating [SigmaBo]:", "Bolt Stress, Seating [SigmaBa]:",
                     "Required Flange thickness per bolt space criterion [trf2]:",
                     "Required Flange thickness per 11.6-16 [trf3]:"}));
    EXPECT_EQ(under("Radial Flange Stress, Operating [SRo]:"),
              (Lines{" = ( Beta * Mop / Bcor ) / ( L * t\xB2 )",
                     " = ( 1.5 *-200000/20.0 )/( 0.5 *2.0\xB2 )", " = -7500.00 psi"}));
    EXPECT_EQ(under("Tangential Flange Stress, Operating [SigmaTo]:"),
              (Lines{" = (BetaY*Mo/(e\xB2*Bcor)) - Z*SigmaRo",
                     " = ( 8.0 *-200000/(2.0\xB2 *20.0) ) - 1.75 * -7500.0", " = 33125.00 psi"}));
    EXPECT_EQ(under("Average Flange Stress, Operating [SigmaAo]:"),
              (Lines{" = 0.5[SHo + max( abs(SigmaRo), abs(SigmaTo) )]",
                     " = 0.5[ 25000.0 + max( abs(-7500.0), abs(33125.0) )]", " = 29062.50 psi"}));
}

TEST_F(FullFaceTest, ReverseFlangeUnderPDInItsOwnWords) {
    full_face(PD_5500, REVERSE_WELD_NECK);
    FLANGE_STRESSES(s);
    EXPECT_EQ(under("Tangential Flange Stress, Operating [Sto]:").at(0),
              " = (Y*Mo/(t\xB2*Bcor)) - Z*SRo");
    EXPECT_EQ(under("Average Flange Stress, Operating [SAo]:").at(0),
              " = 0.5[SHo + max( abs(SRo), abs(STo) )]");
}

TEST_F(FullFaceTest, ReverseRingWithoutHubThicknesses) {
    full_face(PD_5500, REVERSE_WELD_NECK);
    s.h = s.go = s.g1 = 0.0f, s.Mop = -200000.0f;
    FLANGE_STRESSES(s);
    expect_stresses({0, 0, -20000, 0, 12500, 0, 0}, {0, 0, 0, 0, 15000, 0, 0});
    EXPECT_EQ(under("Tangential Flange Stress, Operating [Sto]:"),
              (Lines{" = ( Y * Mo )/( t\xB2 * A )", " = ( 8.0 * -200000 )/( 2.0\xB2 * 20.0 )",
                     " = -20000.00 psi"}));
    start_again();
    s.code = EN_13445;
    FLANGE_STRESSES(s);
    EXPECT_EQ(under("Tangential Flange Stress, Operating [SigmaTo]:").at(0),
              " = ( Y * Mo )/( t\xB2 * A )");
    // A thickness of the hub, or a forward ring: no tangential stress at all.
    s.go = 0.0001f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(operating(TANGENTIAL), 0.0f);
    full_face(PD_5500, LOOSE_RING);
    s.h = s.go = s.g1 = 0.0f;
    FLANGE_STRESSES(s);
    EXPECT_EQ(operating(TANGENTIAL), 0.0f);
}

TEST_F(FullFaceTest, LooseReverseUnderPDHasAnAverageOfNothing) {
    full_face(PD_5500, REVERSE_WELD_NECK);
    s.looseReverse = true, s.go = s.g1 = 0.5f, s.h = 10.0f, s.lambda = 0.0f;
    FLANGE_STRESSES(s);
    expect_stresses({0, 0, 0, 0, 12500, 0, 0}, {0, 0, 0, 0, 15000, 0, 0});
    EXPECT_EQ(under("Average Flange Stress, Operating [SAo]:"),
              (Lines{" = 0.5[SHo + max( abs(SRo), abs(STo) )]",
                     " = 0.5[ 0.0 + max( abs(0.0), abs(0.0) )]", " = 0.00 psi"}));
}

TEST_F(FullFaceTest, RingHasNoSeatingLines) {
    full_face(ASME_VIII_1, LOOSE_RING);
    s.h = 0.0f;
    FLANGE_STRESSES(s);
    const double lig = 3.14159265 * 30 - 24 * 1.125;
    expect_stresses({0, 0, 20000, 0, 12500, 0, 6 * 40000 / (4 * lig)}, {0, 0, 0, 0, 15000, 0, 0});
    EXPECT_EQ(titles(),
              (Lines{"Tangential Flange Stress, Operating [Sto]:", "Bolt Stress, Operating [BSo]:",
                     "Bolt Stress, Seating [BSa]:",
                     "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:"}));
}

// One ten thousandth of an inch counts as a hub that was given only when it is passed.
TEST_F(FullFaceTest, ReverseFlangeAsksForBothHubThicknesses) {
    const Real limit = 0.0001f, less = std::nextafter(limit, 0.0f),
               more = std::nextafter(limit, 1.0f);
    for (const Real other : {less, limit, more})
        for (const auto& [go, g1] : {std::pair{less, other}, std::pair{other, less}}) {
            full_face(PD_5500, REVERSE_WELD_NECK);
            s.h = 0.0f, s.go = go, s.g1 = g1;
            FLANGE_STRESSES(s);
            EXPECT_EQ(operating(TANGENTIAL), other < limit ? 20000.0f : 0.0f);
        }
    for (const Real other : {limit, more})
        for (const auto& [go, g1] : {std::pair{more, other}, std::pair{other, more}}) {
            full_face(PD_5500, REVERSE_WELD_NECK);
            s.go = go, s.g1 = g1;
            FLANGE_STRESSES(s);
            EXPECT_EQ(operating(AVERAGE) != 0.0f, other > limit);
        }
}

TEST_F(FullFaceTest, ReverseAverageTakesAbsoluteValues) {
    full_face(PD_5500, REVERSE_WELD_NECK);
    s.Z = -2.0f, s.Mop = -200000.0f; // SRo -7500, STo 20000 - 15000
    FLANGE_STRESSES(s);
    EXPECT_NEAR(operating(AVERAGE), 0.5f * (25000.0f + 7500.0f), 0.1f);
    s.Z = 8.0f, s.Mop = 200000.0f; // SRo 7500, STo 20000 - 60000
    FLANGE_STRESSES(s);
    EXPECT_NEAR(operating(AVERAGE), 0.5f * (25000.0f + 40000.0f), 0.1f);
}

TEST_F(FullFaceTest, ModulusBelowItsLimitCountsAsOne) {
    full_face(PD_5500);
    FLANGE_STRESSES(s);
    const Real atOne = s.tMin;
    s.Ehot = 2900.0f; // a little less than a ten thousandth of 200000 MPa
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.tMin, atOne);
    s.Ehot = 2901.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.tMin, 10.0f * atOne, 1e-3f * atOne);
}

// Two bolts of 1 in.: boltsp is C, and with m of 5.5 the thickness is what C has above 2.
TEST_F(FullFaceTest, BoltSpaceThicknessOfAThousandthHasTheNote) {
    const std::string title = "Required Flange thickness per bolt space criterion [trf2]:";
    for (const auto& [C, formula] :
         {std::pair{2.001f, false}, std::pair{std::nextafter(2.001f, 3.0f), true}}) {
        full_face(PD_5500);
        start_again();
        s.nBolts = 2, s.m = 5.5f, s.C = C;
        FLANGE_STRESSES(s);
        EXPECT_EQ(s.tMin, C - 2.0f);
        EXPECT_EQ(under(title).at(0).starts_with(" = (boltsp"), formula) << under(title).at(0);
    }
}

TEST_F(FullFaceTest, NoPressureHasTheLinesOfTheBoltSpace) {
    for (const Real Peq : {0.0f, -0.0f, -0.001f}) {
        full_face(PD_5500);
        start_again();
        s.Peq = Peq;
        FLANGE_STRESSES(s);
        EXPECT_EQ(under("Required Flange thickness per bolt space criterion [trf2]:").empty(),
                  Peq < 0.0f);
    }
}

TEST_F(FullFaceTest, PressureThicknessTakesTheCorrodedHubTwice) {
    full_face(EN_13445);
    s.g1 = 2.0f, s.ci = 0.25f, s.ce = 0.25f, s.Peq = 2000.0f;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.tMin, (21 + 2 * 1.5) * 2000.0 / 40000.0, 1e-5);
}

TEST_F(FullFaceTest, EveryValueHasItsOwnFactor) {
    tell_units_apart();
    const char* const atBolts = "Radial Stress at Bolt Circle, Full Face Gaskets, Operating [SFo]:";
    full_face(ASME_VIII_1);
    FLANGE_STRESSES(s);
    EXPECT_EQ(under(atBolts).at(1), " = 6 * 4000/");
    EXPECT_EQ(under(atBolts).at(2), "   ( 20.0\xB2 * ( 3.1416 * 3000.0 - 24 * 112.5 ) )");
    start_again();
    full_face(EN_13445);
    FLANGE_STRESSES(s);
    EXPECT_EQ(under(atBolts).at(1), " = 6 * 20000/( 20.0\xB2 * ( 3.14 * 3000.0 - 24 * 112.5 ))");
    const Lines space = under("Required Flange thickness per bolt space criterion [trf2]:");
    EXPECT_EQ(space.at(1), " = (391.58 - 2*100.0) * ( 3.0 + 0.5 )/( 6 (1.0)^0.25)");
    EXPECT_EQ(space.at(2), " = 11.1754 in.");
    const Lines pressure = under("Required Flange thickness per 11.6-16 [trf3]:");
    EXPECT_EQ(pressure.at(1), " = ( 2100.0 + 2 * 10.0 ) * 10.0/( 2 * 200.0 )");
    EXPECT_EQ(pressure.at(2), " = 0.5750 in.");
}

} // namespace
} // namespace tarvane
