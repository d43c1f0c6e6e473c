#include "../edge_numbers.h"
#include "flange/covers.h"
#include "flange/rating.h"
#include "flange/stresses.h"
#include "stress_fixture.h"

#include <bit>
#include <cmath>
#include <random>

namespace tarvane {
namespace {

using stress_test::FlangeLinesTest;
using stress_test::Lines;

class RatingTest : public FlangeLinesTest {
  protected:
    RatingTest() { rated(); }

    // Every ratio 10, every seating stress half of its limit.
    void rated() {
        weld_neck();
        for (auto& row : s.RATIO)
            for (Real& ratio : row)
                ratio = 10.0f;
        for (auto& row : s.STRESS)
            for (Real& stress : row)
                stress = 10000.0f;
        s.ALLOWED[OPERATING][BOLTING] = s.ALLOWED[SEATING][BOLTING] = 25000.0f;
        s.Pbolt = 500.0f;
    }
    void cover() {
        rated();
        s.type = BLIND;
        s.SPerW = 0.05f, s.SPerP = 40.0f, s.WMaxOp = 150000.0f;
        s.pressureArea = 400.0f, s.hpPerP = 100.0f;
        s.Ab = 40.0f;
    }
    void rate() {
        s.MAWPop = s.MAWPseat = -77.0f;
        FLANGE_MAWP(s);
    }
    // Pressure at which the seating and the operating bolt load meet.
    double meeting_pressure() const {
        const double G = double(s.G);
        return double(s.Wm2) / (2 * double(s.b) * M_PI * G * double(s.m) + M_PI * G * G / 4);
    }
};

// ---- operation --------------------------------------------------------------------------------------

TEST_F(RatingTest, LeastRatioOfAnIntegralFlangeGoverns) {
    for (const Int type :
         {INTEGRAL_WELD_NECK, INTEGRAL_SLIP_ON, INTEGRAL_RING, LOOSE_SLIP_ON, REVERSE_WELD_NECK})
        for (Int place = HUB; place < PLACES; ++place) {
            rated();
            s.type = type;
            s.RATIO[OPERATING][place] = 1.5f;
            rate();
            EXPECT_NEAR(s.MAWPop, 150.0f, 0.011f) << type << " " << place;
        }
}

TEST_F(RatingTest, LooseRingAndLapJointLookAtFourPlaces) {
    for (const Int type : {LOOSE_RING, LAP_JOINT})
        for (Int place = HUB; place < PLACES; ++place) {
            rated();
            s.type = type;
            s.RATIO[OPERATING][place] = 1.5f;
            const bool counts =
                place == TANGENTIAL || place == AVERAGE || place == BOLTING || place == FULL_FACE;
            rate();
            EXPECT_NEAR(s.MAWPop, counts ? 150.0f : 1000.0f, 0.011f) << type << " " << place;
        }
}

TEST_F(RatingTest, CutToTwoDecimalsNeverRaised) {
    for (const auto& [Peq, shown] : {std::pair{123.4567f, 123.45f}, std::pair{123.459f, 123.45f},
                                     std::pair{123.4599f, 123.45f}, std::pair{0.009f, 0.0f}}) {
        s.P = s.Peq = Peq;
        for (Real& ratio : s.RATIO[OPERATING])
            ratio = 1.0f;
        rate();
        EXPECT_EQ(s.MAWPop, static_cast<Real>(std::floor(double(Peq) * 100)) * 0.01f) << shown;
        EXPECT_NEAR(s.MAWPop, shown, 1e-5f);
    }
}

TEST_F(RatingTest, ExternalLoadsComeOffAgain) {
    s.P = 100.0f, s.Peq = 130.0f; // the loads are equivalent to 30 psi
    for (Real& ratio : s.RATIO[OPERATING])
        ratio = 2.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 2 * 130 - 30, 0.011);
    for (Real& ratio : s.RATIO[OPERATING])
        ratio = 0.1f; // 13 - 30
    rate();
    EXPECT_EQ(s.MAWPop, 0.0f);
    s.P = 200.0f; // a Peq below P takes nothing off
    rate();
    EXPECT_NEAR(s.MAWPop, 13.0f, 0.011f);
}

TEST_F(RatingTest, ExternalPressureHasNoRating) {
    s.P = s.Peq = -50.0f;
    rate();
    EXPECT_EQ(s.MAWPop, 0.0f);
}

TEST_F(RatingTest, PressureBeyondTheIntegerRange) {
    cover(); // that nothing limits
    s.SPerW = s.SPerP = s.pressureArea = s.hpPerP = 0.0f;
    rate();
    EXPECT_EQ(s.MAWPop, -2147483648.0f * 0.01f);
}

TEST_F(RatingTest, RigidityIndexLimitsThePressure) {
    s.jOp = 0.8f, s.jSeat = 0.5f;
    rate(); // not requested
    EXPECT_NEAR(s.MAWPop, 1000.0f, 0.011f);
    s.rigidity = 1;
    rate();
    EXPECT_NEAR(s.MAWPop, 125.0f, 0.011f);
    s.jOp = 0.001f; // not evaluated
    rate();
    EXPECT_NEAR(s.MAWPop, 1000.0f, 0.011f);
    s.jOp = 0.0011f;
    for (Real& ratio : s.RATIO[OPERATING])
        ratio = 999.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 100.0f / 0.0011f, 0.1f);
}

TEST_F(RatingTest, NoLimitAtAllIsTheLargeStartValue) {
    s.type = LOOSE_RING;
    s.P = s.Peq = 5000.0f;
    for (Real& ratio : s.RATIO[OPERATING])
        ratio = 999.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 999999.875f, 0.1f);
}

// ---- seating -------------------------------------------------------------------------------------------

TEST_F(RatingTest, BelowTheMeetingPressureTheSeatingRatioGoverns) {
    s.P = s.Peq = 100.0f; // meets at 196.8 psi
    ASSERT_GT(meeting_pressure(), 100.0);
    s.RATIO[SEATING][RADIAL] = 1.25f;
    rate();
    EXPECT_NEAR(s.MAWPseat, 1.25 * meeting_pressure() + 0.25 * 500, 1e-3);
    const Real notCut = s.MAWPseat * 100.0f;
    EXPECT_NE(notCut, std::trunc(notCut)); // not whole hundredths
    for (const Real ratio : {1.0f, 0.99999f, 0.9999899f, 0.5f}) {
        s.RATIO[SEATING][RADIAL] = ratio;
        rate();
        if (ratio > 0.99999f)
            EXPECT_NEAR(s.MAWPseat, meeting_pressure(), 1e-3);
        else
            EXPECT_EQ(s.MAWPseat, 0.0f) << ratio;
    }
}

TEST_F(RatingTest, SeatingRatioByType) {
    for (const Int type : {INTEGRAL_WELD_NECK, REVERSE_WELD_NECK, LOOSE_RING, LAP_JOINT})
        for (Int place = HUB; place < PLACES; ++place) {
            rated();
            s.type = type;
            s.RATIO[SEATING][place] = 1.5f;
            const bool ring = type == LOOSE_RING || type == LAP_JOINT;
            const bool counts = ring ? place == TANGENTIAL || place == AVERAGE ||
                                           place == BOLTING || place == FULL_FACE
                                     : place <= BOLTING;
            rate();
            const double rs = counts ? 1.5 : 10.0;
            EXPECT_NEAR(s.MAWPseat, rs * meeting_pressure() + (rs - 1) * 500, 0.01)
                << type << " " << place;
        }
}

TEST_F(RatingTest, SeatingRigidityCountsAsARatio) {
    s.rigidity = 1, s.jSeat = 0.8f;
    rate();
    EXPECT_NEAR(s.MAWPseat, 1.25 * meeting_pressure() + 0.25 * 500, 0.01);
    s.jSeat = 0.001f; // not evaluated
    rate();
    EXPECT_NEAR(s.MAWPseat, 10 * meeting_pressure() + 9 * 500, 0.02);
}

// Above the meeting pressure: stresses on a straight line between the two pressures.
TEST_F(RatingTest, BeyondTheMeetingPressureTheStressesAreLinear) {
    s.P = s.Peq = 300.0f;
    const double Wd = 25000 * (120000.0 / 25000 + 8) / 2, Md = Wd * (30 - 25) / 2.0;
    s.Matm = static_cast<Real>(2 * Md); // low stress is half the present one
    rate();
    // 10000 at 300, 5000 at pSeat: the limit of 20000 is twice the way beyond.
    EXPECT_NEAR(s.MAWPseat, 300 + 2 * (300 - meeting_pressure()), 0.02);

    s.STRESS[SEATING][TANGENTIAL] = 16000.0f; // the nearest of the seven
    rate();
    EXPECT_NEAR(s.MAWPseat, 300 + 0.5 * (300 - meeting_pressure()), 0.02);
    const Real hundredths = s.MAWPseat * 100.0f;
    EXPECT_NEAR(hundredths, std::round(hundredths), 0.01); // cut

    s.STRESS[SEATING][TANGENTIAL] = 10000.0f;
    s.CF = 2.0f; // the moment doubles: no slope, no limit
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
}

TEST_F(RatingTest, SplitRingsCountInTheMomentOfTheBolts) {
    const double Md = 25000 * (120000.0 / 25000 + 8) / 2 * (30 - 25) / 2.0;
    for (const auto& [splits, multiplier] :
         {std::pair{0, 1.0}, std::pair{1, 2.0}, std::pair{2, 0.75}, std::pair{3, 1.0}}) {
        rated();
        s.type = LOOSE_RING;
        s.nSplits = splits;
        s.P = s.Peq = 300.0f;
        s.Matm = static_cast<Real>(4 * Md);
        rate();
        const double low = 10000 * multiplier / 4,
                     slope = (10000 - low) / (300 - meeting_pressure());
        EXPECT_NEAR(s.MAWPseat, 300 + 10000 / slope, 0.03) << splits;
    }
}

TEST_F(RatingTest, SeatingRigidityOnItsOwnLine) {
    s.rigidity = 1, s.jSeat = 0.5f;
    s.P = s.Peq = 300.0f;
    const double Md = 25000 * (120000.0 / 25000 + 8) / 2 * (30 - 25) / 2.0;
    s.Matm = static_cast<Real>(2 * Md);
    for (Real& stress : s.STRESS[SEATING])
        stress = 0.0f; // no stress grows
    rate();
    // Index 0.5 at 300; jLow = (1/0.5)*2 = 4, so 0.25 at pSeat; 1 is twice the way beyond.
    EXPECT_NEAR(s.MAWPseat, 300 + 2 * (300 - meeting_pressure()), 0.02);
    s.jSeat = 0.0f;
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
    s.jSeat = 0.5f, s.C = s.G; // no arm, no moment of the bolts
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
}

TEST_F(RatingTest, ExternalLoadsComeOffTheSeatingPressureToo) {
    s.P = 280.0f, s.Peq = 300.0f;
    const double Md = 25000 * (120000.0 / 25000 + 8) / 2 * (30 - 25) / 2.0;
    s.Matm = static_cast<Real>(2 * Md);
    rate();
    EXPECT_NEAR(s.MAWPseat, 280 + 2 * (300 - meeting_pressure()), 0.02);
    s.P = -10000.0f; // limited to 0
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
}

TEST_F(RatingTest, WithoutSeatingMomentThereIsNoSeatingPressure) {
    s.P = s.Peq = 300.0f;
    for (const Real Matm : {0.0f, 0.0001f, -0.0001f}) {
        start_again();
        s.Matm = Matm;
        rate();
        EXPECT_EQ(s.MAWPseat, 0.0f);
        EXPECT_EQ(stored_lines(),
                  (Lines{"Seating M.A.W.P. not Calculable due to 0.0 Gasket Seating Moment."}));
        EXPECT_EQ(stored_marks(1), stress_test::NO_MARKS);
    }
    start_again();
    s.Matm = 0.00011f;
    rate();
    EXPECT_EQ(LINE_COUNT, 0);
    s.P = s.Peq = 100.0f, s.Matm = 0.0f; // below the meeting pressure there is no limit
    rate();
    EXPECT_EQ(LINE_COUNT, 0);
}

// ---- covers ---------------------------------------------------------------------------------------------

TEST_F(RatingTest, CoverByItsRatingTerms) {
    cover();
    rate();
    EXPECT_NEAR(s.MAWPop, 20000.0 / (500 * 0.05 + 40), 0.011);
    EXPECT_NEAR(s.MAWPseat, 150000.0 / 500, 0.011);
    s.hpPrimePerP = 100.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 20000.0 / (600 * 0.05 + 40), 0.011);
    EXPECT_NEAR(s.MAWPseat, 150000.0 / 600, 0.011);
    s.hpPrimePerP = -100.0f, s.hpPerP = -5.0f; // only growth counts
    rate();
    EXPECT_NEAR(s.MAWPseat, 150000.0 / 400, 0.011);
    EXPECT_NEAR(s.MAWPop, 20000.0 / (400 * 0.05 + 40), 0.011);
    s.SPerP = -40.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 20000.0 / (400 * 0.05), 0.011);
}

TEST_F(RatingTest, CoverTakesTheTangentialLimit) {
    cover();
    for (Real& limit : s.ALLOWED[OPERATING])
        limit = 1.0e6f;
    s.ALLOWED[OPERATING][TANGENTIAL] = 13000.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 200.0, 0.011);
}

TEST_F(RatingTest, CoverLimitedByItsBolts) {
    cover();
    s.Ab = 4.0f;
    rate();
    EXPECT_NEAR(s.MAWPop, 4 * 25000.0 / 500, 0.011);
}

TEST_F(RatingTest, CoverUnderExternalLoads) {
    cover();
    s.P = 100.0f, s.Peq = 120.0f;
    s.extLoad = 8000.0f, s.SPerDP = 800.0f;
    rate();
    // dP is added and taken off again.
    EXPECT_NEAR(s.MAWPop, (20000 - 8000 * 0.05 - 800) / (500 * 0.05 + 40), 0.011);
    EXPECT_NEAR(s.MAWPseat, (150000.0 - 8000) / 500, 0.011);
}

TEST_F(RatingTest, DeflectionStandsAgainstThePressure) {
    cover();
    s.dfActual = 0.03f;
    rate();
    EXPECT_NEAR(s.MAWPop, 0.03f, 1e-5f);
    s.dfActual = 0.001f; // too small to count
    rate();
    EXPECT_NEAR(s.MAWPop, 307.69f, 0.011f);
    s.dfActual = -0.5f;
    rate();
    EXPECT_EQ(s.MAWPop, 0.0f);
}

TEST_F(RatingTest, CoverWithoutPressureHasNoSeatingRating) {
    cover();
    s.P = s.Peq = 0.0009f;
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
    EXPECT_NEAR(s.MAWPop, 20000.0 / 40, 0.011); // no bolt term
    s.P = s.Peq = 0.001f;
    rate();
    EXPECT_NEAR(s.MAWPseat, 300.0, 0.011);
    s.P = s.Peq = -50.0f;
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
}

TEST_F(RatingTest, CoverWithoutALoadLimitGoesByTheRatioOfNothing) {
    cover();
    s.WMaxOp = -1.0f;
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
    cover();
    s.pressureArea = s.hpPerP = 0.0f;
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
}

// ---- not-a-number, identities ---------------------------------------------------------------------------

TEST_F(RatingTest, NotANumberTravels) {
    s.RATIO[OPERATING][HUB] = NOT_A_NUMBER;
    rate();
    EXPECT_EQ(s.MAWPop, -2147483648.0f * 0.01f); // what its whole number is
    rated();
    s.RATIO[OPERATING][AVERAGE] = NOT_A_NUMBER; // no comparison holds: left out
    rate();
    EXPECT_NEAR(s.MAWPop, 1000.0f, 0.011f);
    s.Wm2 = NOT_A_NUMBER; // no line has a slope, nothing limits
    rate();
    EXPECT_EQ(s.MAWPseat, 0.0f);
    s.P = s.Peq = NOT_A_NUMBER;
    rate();
    EXPECT_EQ(s.MAWPop, -2147483648.0f * 0.01f);
    EXPECT_EQ(s.MAWPseat, -2147483648.0f * 0.01f);
}

TEST_F(RatingTest, PressureAtARatioOfOneIsThePressureItself) {
    std::mt19937 random(311);
    for (int round = 0; round < 500; ++round) {
        s.P = s.Peq = std::uniform_real_distribution(1.0f, 5000.0f)(random);
        for (Real& ratio : s.RATIO[OPERATING])
            ratio = std::uniform_real_distribution(1.0f, 3.0f)(random);
        s.RATIO[OPERATING][round % PLACES] = 1.0f;
        rate();
        EXPECT_LE(s.MAWPop, s.Peq * 1.000001f);
        EXPECT_GT(s.MAWPop, s.Peq * 0.999999f - 0.0101f);
    }
}

// Any bits at all: every stage returns, and a report line stays a line. The sanitizers check the
// rest.
TEST_F(RatingTest, AnyBitsInTheState) {
    static constexpr Real FLANGE_STATE::*MEMBERS[] = {
        &FLANGE_STATE::P,       &FLANGE_STATE::Peq,    &FLANGE_STATE::t,
        &FLANGE_STATE::ct,      &FLANGE_STATE::B,      &FLANGE_STATE::ci,
        &FLANGE_STATE::ce,      &FLANGE_STATE::go,     &FLANGE_STATE::g1,
        &FLANGE_STATE::h,       &FLANGE_STATE::f,      &FLANGE_STATE::lambda,
        &FLANGE_STATE::beta,    &FLANGE_STATE::Y,      &FLANGE_STATE::Yr,
        &FLANGE_STATE::Z,       &FLANGE_STATE::e,      &FLANGE_STATE::K,
        &FLANGE_STATE::Mop,     &FLANGE_STATE::Matm,   &FLANGE_STATE::Mr,
        &FLANGE_STATE::Wm1,     &FLANGE_STATE::Wm2,    &FLANGE_STATE::W,
        &FLANGE_STATE::Wext,    &FLANGE_STATE::Ab,     &FLANGE_STATE::C,
        &FLANGE_STATE::G,       &FLANGE_STATE::hg,     &FLANGE_STATE::m,
        &FLANGE_STATE::b,       &FLANGE_STATE::D,      &FLANGE_STATE::dS,
        &FLANGE_STATE::L,       &FLANGE_STATE::CF,     &FLANGE_STATE::Sfo,
        &FLANGE_STATE::Sb,      &FLANGE_STATE::Sa,     &FLANGE_STATE::Ehot,
        &FLANGE_STATE::GiC,     &FLANGE_STATE::dh,     &FLANGE_STATE::aNominal,
        &FLANGE_STATE::jOp,     &FLANGE_STATE::jSeat,  &FLANGE_STATE::extLoad,
        &FLANGE_STATE::hpPerP,  &FLANGE_STATE::Pbolt,  &FLANGE_STATE::coverFactor,
        &FLANGE_STATE::dfAllow, &FLANGE_STATE::Ecover, &FLANGE_STATE::pressureArea};
    std::mt19937 random(99);
    for (int round = 0; round < 4000; ++round) {
        rated();
        s.type = 1 + round % 9;
        s.code = 1 + round / 9 % 4;
        s.fullFace = round % 5 == 0;
        s.looseReverse = round % 7 == 0;
        s.rigidity = round % 2;
        if (s.type == BLIND && round % 4) s.h = 0.0f;
        s.nBolts = static_cast<Int>(random());
        for (int hits = 0; hits < 6; ++hits)
            s.*MEMBERS[random() % std::size(MEMBERS)] =
                std::bit_cast<Real>(static_cast<std::uint32_t>(random()));
        start_again();
        FLANGE_STRESSES(s);
        TEMA_COVER_CHECK(s);
        FLANGE_MAWP(s);
        for (const std::string& line : stored_lines())
            ASSERT_LE(line.size(), 100u);
    }
}

// ---- weights -----------------------------------------------------------------------------------------------

TEST(FlangeWeightTest, RingAndHub) {
    Real finished = 0, forging = 0;
    FLANGE_WEIGHT(20.0f, 36.0f, 2.0f, 1.0f, PI, 0.75f, 3.0f, finished, forging, 0.283f);
    const double ring = M_PI / 4 * (36 * 36 - 400), hub = M_PI / 4 * (21.75 * 21.75 - 400);
    EXPECT_NEAR(forging, 5 * ring * 0.283, 0.01);
    EXPECT_NEAR(finished, (2 * ring + 3 * hub) * 0.283, 0.01);
}

TEST(FlangeWeightTest, WithoutThicknessTheHubOnly) {
    Real finished = 0, forging = 0;
    FLANGE_WEIGHT(20.0f, 36.0f, 0.0f, 1.0f, PI, 0.75f, 0.0f, finished, forging, 0.283f);
    EXPECT_EQ(finished, 0.0f);
    EXPECT_EQ(forging, 0.0f);
    FLANGE_WEIGHT(20.0f, 36.0f, 0.0f, 1.0f, PI, 0.75f, 3.0f, finished, forging, 0.283f);
    EXPECT_GT(finished, 0.0f);
    EXPECT_GT(forging, finished);
}

TEST(FlangeWeightTest, SolidDiskIsACylinder) {
    Real finished = 0, forging = 0;
    FLANGE_WEIGHT(0.0f, 10.0f, 1.0f, 0.0f, PI, 0.0f, 0.0f, finished, forging, 1.0f);
    EXPECT_EQ(finished, forging);
    EXPECT_NEAR(finished, M_PI * 25, 1e-4);
}

TEST(FlangeWeightTest, NotANumberTravels) {
    Real finished = 0, forging = 0;
    FLANGE_WEIGHT(20.0f, 36.0f, NOT_A_NUMBER, 1.0f, PI, 0.75f, 3.0f, finished, forging, 0.283f);
    EXPECT_TRUE(std::isnan(finished));
    EXPECT_TRUE(std::isnan(forging));
}

} // namespace
} // namespace tarvane
