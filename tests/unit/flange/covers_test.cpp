#include "../edge_numbers.h"
#include "flange/blind.h"
#include "flange/covers.h"
#include "flange/stresses.h"
#include "openings/flat_head_openings.h"
#include "stress_fixture.h"

#include <cmath>
#include <limits>

namespace tarvane {
namespace {

using stress_test::FlangeLinesTest;
using stress_test::Lines;

// ---- TEMA channel cover ---------------------------------------------------------------------------

class ChannelCoverTest : public FlangeLinesTest {
  protected:
    ChannelCoverTest() {
        flat_head();
        s.G = 26.0f, s.hg = 1.0f, s.t = 3.25f, s.ci = 0.125f, s.ce = 0.125f;
        s.Ecover = 30.0e6f, s.Sb = 25000.0f, s.Ab = 4.0f;
        s.P = s.Peq = 100.0f;
    }
    double stiffness() const { // deflection of the unit load
        const double tc = double(s.t) - double(s.ci) - double(s.ce);
        return double(s.G) / (double(s.Ecover) * tc * tc * tc);
    }
    double load() const {
        const double G = double(s.G);
        return 0.0435 * G * G * G * std::fabs(double(s.Peq)) +
               0.5 * double(s.Sb) * double(s.Ab) * double(s.hg);
    }
    void check() {
        start_again();
        s.tChannelMin = 0.0f;
        TEMA_COVER_CHECK(s);
    }
};

TEST_F(ChannelCoverTest, WithinTheLimit) {
    check();
    EXPECT_NEAR(s.dfActual, stiffness() * load(), 1e-7);
    EXPECT_NEAR(s.tChannelMin, std::pow(26.0 / (0.03 / load() * 30e6), 0.333333), 1e-5);
    EXPECT_EQ(stored_lines(),
              (Lines{"TEMA Channel Cover Deflection Calculations:",
                     "Actual deflection at center per TEMA formula          0.0041  in.",
                     "Allowed deflection at center per TEMA formula         0.0300  in."}));
    EXPECT_EQ(stored_marks(1), stress_test::TITLE_MARKS);
    EXPECT_EQ(stored_marks(2), stress_test::NO_MARKS);
}

TEST_F(ChannelCoverTest, LimitBySpan) {
    const Real limit24 = 28.0f; // G - 4 hG of 24 exactly
    s.G = limit24;
    check();
    EXPECT_EQ(stored(3), "Allowed deflection at center per TEMA formula         0.0300  in.");
    s.G = std::nextafter(limit24, 30.0f);
    check();
    EXPECT_NEAR(s.tChannelMin,
                std::pow(double(s.G) / ((double(s.G) - 4.0) / 800 / load() * 30e6), 0.333333),
                1e-5);
    s.G = 30.0f; // 26: above 24
    check();
    EXPECT_NEAR(s.tChannelMin, std::pow(30.0 / (26.0 / 800 / load() * 30e6), 0.333333), 1e-5);
    EXPECT_EQ(stored(3), "Allowed deflection at center per TEMA formula         0.0325  in.");
    s.G = 40.0f;
    check();
    EXPECT_EQ(stored(3), "Allowed deflection at center per TEMA formula         0.0450  in.");
}

TEST_F(ChannelCoverTest, GivenLimitAndTheLinesOfAFailure) {
    s.dfAllow = 0.003f;
    check();
    ASSERT_GT(s.dfActual, s.dfAllow);
    const double pCover =
        (0.003 / stiffness() - 0.5 * 25000 * 4 * 1) / (0.0435 * 26.0 * 26.0 * 26.0);
    const double tCover = std::pow(26.0 / (0.003 / load() * 30e6), 0.333333);
    char pressure[80], thickness[80];
    std::snprintf(pressure, sizeof pressure,
                  "Maximum Allowable Working Pressure for Cover   %13.2f  psig", pCover);
    std::snprintf(thickness, sizeof thickness,
                  "Required Channel Cover Thickness + CA          %13.4f  in.", tCover + 0.25);
    EXPECT_EQ(
        stored_lines(),
        (Lines{"TEMA Channel Cover Deflection Calculations:",
               "Actual deflection at center per TEMA formula          0.0041  in.",
               "Allowed deflection at center of Cover                 0.0030  in.", pressure,
               "Design Pressure as Given by User                      100.00  psig", thickness}));
    EXPECT_EQ(stored_marks(2), stress_test::ERROR_MARKS);
    for (Int k = 3; k <= 6; ++k)
        EXPECT_EQ(stored_marks(k), stress_test::NO_MARKS);
    EXPECT_NEAR(s.tChannelMin, tCover, 1e-5); // without allowance
}

TEST_F(ChannelCoverTest, EachAllowanceAndTheArmCountOnce) {
    s.ci = 0.25f, s.ce = 0.0625f, s.hg = 1.25f;
    s.dfAllow = 0.003f;
    check();
    EXPECT_NEAR(s.dfActual, stiffness() * load(), 1e-7);
    EXPECT_EQ(stored(2), "Actual deflection at center per TEMA formula          0.0048  in.");
    const double tCover = std::pow(26.0 / (0.003 / load() * 30e6), 0.333333);
    EXPECT_NEAR(s.tChannelMin, tCover, 1e-5);
    char thickness[80];
    std::snprintf(thickness, sizeof thickness,
                  "Required Channel Cover Thickness + CA          %13.4f  in.", tCover + 0.3125);
    EXPECT_EQ(stored(6), thickness);
    s.dfAllow = 0.0f, s.G = 29.1f; // 29.1 - 4 * 1.25 is just above 24
    check();
    EXPECT_EQ(stored(3), "Allowed deflection at center per TEMA formula         0.0301  in.");
}

TEST_F(ChannelCoverTest, DeflectionOfJustTheLimitPasses) {
    check();
    s.dfAllow = s.dfActual;
    check();
    EXPECT_EQ(LINE_COUNT, 3);
    EXPECT_EQ(stored_marks(2), stress_test::NO_MARKS);
    s.dfAllow = std::nextafter(s.dfActual, 0.0f);
    check();
    EXPECT_EQ(LINE_COUNT, 6);
    EXPECT_EQ(stored_marks(2), stress_test::ERROR_MARKS);
}

TEST_F(ChannelCoverTest, RequiredThicknessPutBackJustKeepsTheLimit) {
    s.dfAllow = 0.003f;
    check();
    const Real t = s.tChannelMin;
    s.t = t + s.ci + s.ce;
    check();
    EXPECT_NEAR(s.dfActual, 0.003f, 1e-6f);
}

TEST_F(ChannelCoverTest, ExternalPressureDeflectsAsMuch) {
    check();
    const Real internal = s.dfActual;
    s.Peq = -100.0f;
    check();
    EXPECT_EQ(s.dfActual, internal);
}

TEST_F(ChannelCoverTest, WithoutALimitTheThicknessStays) {
    s.Peq = 0.0f, s.Ab = -4.0f; // a load below 0
    check();
    EXPECT_EQ(s.tChannelMin, 0.0f);
    s.Ab = std::numeric_limits<Real>::infinity(); // a load without end
    check();
    EXPECT_EQ(s.tChannelMin, 0.0f);
    s.Ecover = 0.0f;
    s.Ab = 4.0f;
    check();
    EXPECT_TRUE(std::isinf(s.dfActual));
    EXPECT_EQ(stored_marks(2), stress_test::ERROR_MARKS);
}

TEST_F(ChannelCoverTest, UnitsAndNotANumber) {
    UNITS.thickness = 25.4f, UNITS.pressure = 0.06894757f;
    UNITS.thickness_label = "mm", UNITS.pressure_label = "bars";
    s.dfAllow = 0.003f;
    check();
    EXPECT_EQ(stored(3), "Allowed deflection at center of Cover                 0.0762  mm");
    EXPECT_EQ(stored(5), "Design Pressure as Given by User                        6.89  bars");
    s.Peq = NOT_A_NUMBER;
    check();
    EXPECT_TRUE(std::isnan(s.dfActual));
    EXPECT_EQ(stored(2), "Actual deflection at center per TEMA formula             NaN  mm");
    EXPECT_EQ(LINE_COUNT, 3);
}

TEST_F(ChannelCoverTest, SilentPassGivesTheSameNumbers) {
    s.dfAllow = 0.003f;
    check();
    const Real df = s.dfActual, t = s.tChannelMin;
    start_again();
    IWRTFL = 0;
    s.dfActual = s.tChannelMin = 0.0f;
    TEMA_COVER_CHECK(s);
    EXPECT_EQ(LINE_COUNT, 0);
    EXPECT_EQ(s.dfActual, df);
    EXPECT_EQ(s.tChannelMin, t);
}

// ---- openings of UG-39 -------------------------------------------------------------------------------

const std::string TITLE = "Checking Multiple Openings on Flat Head per ASME Sec. VIII Div. 1 UG-39";

class OpeningsTest : public FlangeLinesTest {
  protected:
    OpeningsTest() { UG39_VIOLATION = false; }
    ~OpeningsTest() override { UG39_VIOLATION = false; }

    // A cover of 24 inches; the openings keep every rule but the one under test.
    OPENINGS_CALL call{7, 24.0f, 4.0f, 4.0f, 2.0f, 2.0f, 8.0f, 10, 0.3f, 77.0f, 77.0f, 77};

    Lines lines() {
        start_again();
        UG39_VIOLATION = false;
        PATTERNED_OPENINGS(call);
        Lines all = stored_lines();
        if (all.size() >= 2) all.erase(all.begin(), all.begin() + 2); // title and diameters
        return all;
    }
    void expect_marks(Int k, const char* marks) { EXPECT_EQ(stored_marks(k), marks) << k; }
};

TEST_F(OpeningsTest, TitleAndDiameters) {
    call.d2 = 3.0f;
    PATTERNED_OPENINGS(call);
    EXPECT_EQ(stored(1), TITLE);
    expect_marks(1, stress_test::TITLE_MARKS);
    EXPECT_EQ(stored(2), "Head dia = 24.00  Opening dia, d1 = 4.00  d2 = 3.00 in.");
    expect_marks(2, stress_test::NO_MARKS);
}

TEST_F(OpeningsTest, OtherElementsAreLeftAlone) {
    for (const Int kind : {0, 1, 5, 8}) {
        call = {kind, 24.0f, 20.0f, 20.0f, 0.0f, 0.0f, 1.0f, 10, 0.3f, 77.0f, 77.0f, 77};
        EXPECT_TRUE(lines().empty());
        EXPECT_EQ(LINE_COUNT, 0);
        EXPECT_EQ(call.coverFlag, 0);
        EXPECT_EQ(call.coverFactor, 1.0f);
        EXPECT_EQ(call.Cout, 0.3f);
    }
}

TEST_F(OpeningsTest, OneOpening) {
    call.d2 = 0.0001f; // not above
    call.edge2 = 0.0f, call.pitch = 0.0f;
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(call.coverFlag, 1);
    EXPECT_EQ(call.coverFactor, 1.0f);
    EXPECT_FALSE(UG39_VIOLATION);
    call.d2 = std::nextafter(0.0001f, 1.0f);
    lines();
    EXPECT_EQ(call.coverFlag, 0);
}

TEST_F(OpeningsTest, OneOpeningDoublesTheStressOfTheCover) {
    flat_head();
    FLANGE_STRESSES(s);
    const Real plain = s.STRESS[OPERATING][TANGENTIAL];
    call.d2 = 0.0f;
    PATTERNED_OPENINGS(call);
    s.coverFactor = call.coverFactor, s.coverFlag = call.coverFlag;
    FLANGE_STRESSES(s);
    EXPECT_EQ(s.STRESS[OPERATING][TANGENTIAL], 2.0f * plain);
}

TEST_F(OpeningsTest, FarApart) {
    call.pitch = 8.0f; // just twice the average
    EXPECT_EQ(lines(), (Lines{"UG-39(e)(1) Spacing 8.00 is >= 2*Avg. dia. 8.00 in."}));
    expect_marks(3, stress_test::NO_MARKS);
    EXPECT_EQ(call.coverFlag, 1);
    EXPECT_EQ(call.coverFactor, 1.0f);
    EXPECT_FALSE(UG39_VIOLATION);
}

TEST_F(OpeningsTest, WithALigament) {
    call.pitch = 6.0f;
    EXPECT_EQ(lines(), (Lines{"UG-39(e)(2) Spacing 6.00 is < 2*Avg. dia. 8.00 in.",
                              "Ligament Efficiency per UG-39(e)(2) [e]:", " = (p - davg)/p",
                              " = (6.0 - 4.0)/6.0", " = 0.333", "Factor per UG-39(e)(2) [h]:",
                              " = ( 0.5 / e )\xBD", " = ( 0.5/0.333 )\xBD", " = 1.225"}));
    expect_marks(3, stress_test::NO_MARKS);
    expect_marks(4, stress_test::TITLE_MARKS);
    expect_marks(5, stress_test::NO_MARKS);
    expect_marks(8, stress_test::TITLE_MARKS);
    EXPECT_EQ(call.coverFlag, 0);
    EXPECT_NEAR(call.coverFactor, 1.224745, 1e-6);
    EXPECT_FALSE(UG39_VIOLATION);
    // The stress takes 2 h^2 = 3.
    flat_head();
    FLANGE_STRESSES(s);
    const Real plain = s.STRESS[OPERATING][TANGENTIAL];
    s.coverFactor = call.coverFactor;
    FLANGE_STRESSES(s);
    EXPECT_NEAR(s.STRESS[OPERATING][TANGENTIAL], 3 * double(plain), 1e-5 * double(plain));
}

// A pitch of 1.5 times the average diameter: e is a third, h 1.2247. The stress takes 2 h^2, the
// thickness h and the root of 2.
TEST_F(OpeningsTest, LigamentOfAThirdInStressAndThickness) {
    call.d1 = 5.0f, call.d2 = 3.0f;
    call.pitch = 6.0f;
    lines();
    EXPECT_NEAR(call.coverFactor, 1.2247449, 1e-6);
    flat_head();
    s.Cf = 0.3f;
    s.jointE = 1.0f;
    for (const Int code : {1, 2, 3, 4}) {
        SCOPED_TRACE(code);
        s.code = code;
        BLIND_CALL cover{.d = 25.0f,
                         .Zf = 1.0f,
                         .P = 100.0f,
                         .S = 20000.0f,
                         .W = 100000.0f,
                         .ca = 0.125f,
                         .tGiven = 2.0f};
        s.coverFactor = 1.0f;
        FLANGE_STRESSES(s);
        const double stress[] = {double(s.STRESS[OPERATING][TANGENTIAL]),
                                 double(s.STRESS[SEATING][TANGENTIAL])};
        BLIND_THICKNESS(s, cover);
        const double thickness = double(cover.tOut) - 0.125;
        s.coverFactor = call.coverFactor;
        BLIND_THICKNESS(s, cover);
        EXPECT_NEAR(double(cover.tOut) - 0.125, thickness * 1.2247449 * 1.414214,
                    1e-6 * double(cover.tOut));
        FLANGE_STRESSES(s);
        EXPECT_NEAR(s.STRESS[OPERATING][TANGENTIAL], 3.0 * stress[0], 1e-6 * 3.0 * stress[0]);
        EXPECT_NEAR(s.STRESS[SEATING][TANGENTIAL], 3.0 * stress[1], 1e-6 * 3.0 * stress[1]);
    }
}

TEST_F(OpeningsTest, LimitOfTheLigamentRule) {
    call.pitch = 4.9999f; // 1.25 davg less a ten thousandth, just reached
    EXPECT_EQ(lines().at(0), "UG-39(e)(2) Spacing 5.00 is < 2*Avg. dia. 8.00 in.");
    call.pitch = 4.9998f;
    EXPECT_EQ(lines().at(0), "UG-39(e)(3) Spacing 5.00 is < 1.25*Avg. dia. 5.00 in.");
    call.pitch = 7.999f; // just short of twice the average
    EXPECT_EQ(lines().at(0), "UG-39(e)(2) Spacing 8.00 is < 2*Avg. dia. 8.00 in.");
}

TEST_F(OpeningsTest, TooNear) {
    call.pitch = 4.9f;
    EXPECT_EQ(lines(), (Lines{"UG-39(e)(3) Spacing 4.90 is < 1.25*Avg. dia. 5.00 in.",
                              "UG-39(e)(4) Ligament 0.90 should be >= Min. dia./4, 1.00 in."}));
    expect_marks(3, stress_test::ERROR_MARKS);
    expect_marks(4, stress_test::ERROR_MARKS);
    EXPECT_TRUE(UG39_VIOLATION);
    EXPECT_NEAR(call.coverFactor, std::sqrt(0.5 * 4.9 / 0.9), 1e-5);
    EXPECT_EQ(call.coverFlag, 0);
}

TEST_F(OpeningsTest, LigamentAgainstTheSmallerOpening) {
    call.d1 = 6.0f, call.d2 = 2.0f; // average 4, a quarter of the smaller is 0.5
    call.pitch = 4.49995f;
    Lines all = lines();
    EXPECT_EQ(all.size(), 1u); // (e)(3) only
    call.pitch = 4.4998f;
    all = lines();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all.at(1), "UG-39(e)(4) Ligament 0.50 should be >= Min. dia./4, 0.50 in.");
}

TEST_F(OpeningsTest, OpeningsWiderThanHalfTheHead) {
    call = {7, 8.0f, 4.001f, 4.001f, 2.0f, 2.0f, 9.0f, 10, 0.3f};
    Lines all = lines();
    EXPECT_EQ(std::count(all.begin(), all.end(),
                         "The Opening dia. d1 is > Head dia./2, UG-39 violation Refer to U2(g)."),
              0);
    call.d1 = 4.0012f, call.d2 = 4.0012f;
    EXPECT_EQ(lines(),
              (Lines{"The Opening dia. d1 is > Head dia./2, UG-39 violation Refer to U2(g).",
                     "The Opening dia. d2 is > Head dia./2, UG-39 violation Refer to U2(g).",
                     "UG-39(e) Average dia. 4.00 is > Head dia/4, 2.00 in.",
                     "UG-39(e)(1) Spacing 9.00 is >= 2*Avg. dia. 8.00 in."}));
    for (Int k = 3; k <= 5; ++k)
        expect_marks(k, stress_test::ERROR_MARKS);
    EXPECT_TRUE(UG39_VIOLATION);
    call.kind = 6;
    all = lines();
    EXPECT_EQ(all.at(0),
              "Diameter(d1) is > Head dia./2, UG-39 violation Refer to App. 14 or U2(g).");
    EXPECT_EQ(all.at(1),
              "Diameter(d2) is > Head dia./2, UG-39 violation Refer to App. 14 or U2(g).");
}

TEST_F(OpeningsTest, OneOpeningWiderThanHalfTheHeadIsAViolation) {
    call.d1 = 12.5f, call.d2 = 0.0f, call.edge1 = 4.0f;
    for (const auto& [kind, line] :
         {std::pair{7, "The Opening dia. d1 is > Head dia./2, UG-39 violation Refer to U2(g)."},
          std::pair{6, "Diameter(d1) is > Head dia./2, UG-39 violation Refer to App. 14 or "
                       "U2(g)."}}) {
        call.kind = kind;
        EXPECT_EQ(lines(), (Lines{line}));
        expect_marks(3, stress_test::ERROR_MARKS);
        EXPECT_TRUE(UG39_VIOLATION);
        EXPECT_EQ(call.coverFlag, 1);
    }
}

// A cover of 8 inches: a thousandth above half, or a quarter, of it is forgiven.
TEST_F(OpeningsTest, DiametersOfJustTheLimit) {
    const auto above = [](Real x) { return std::nextafter(x, 100.0f); };
    call.headDia = 8.0f, call.pitch = 20.0f;
    call.d1 = 2.001f, call.d2 = 2.001f;
    EXPECT_EQ(lines().size(), 1u);
    call.d1 = call.d2 = above(2.001f);
    EXPECT_EQ(lines().at(0), "UG-39(e) Average dia. 2.00 is > Head dia/4, 2.00 in.");

    call.d1 = 0.5f, call.d2 = 4.001f; // too wide in the average only
    EXPECT_EQ(lines().size(), 2u);
    call.d2 = above(4.001f);
    EXPECT_EQ(lines().at(0),
              "The Opening dia. d2 is > Head dia./2, UG-39 violation Refer to U2(g).");
    call.d1 = 4.001f, call.d2 = 0.5f;
    EXPECT_EQ(lines().size(), 2u);
    call.d1 = above(4.001f);
    EXPECT_EQ(lines().at(0),
              "The Opening dia. d1 is > Head dia./2, UG-39 violation Refer to U2(g).");
}

TEST_F(OpeningsTest, DistancesOfJustTheLimit) {
    const Real limit = 1.0f - 0.0001f, less = std::nextafter(limit, 0.0f); // of 4 in. openings
    call.pitch = 6.0f;
    call.edge1 = call.edge2 = limit;
    EXPECT_EQ(lines().size(), 9u);
    call.edge1 = less;
    EXPECT_EQ(lines().size(), 10u);
    call.edge1 = limit, call.edge2 = less;
    EXPECT_EQ(lines().size(), 10u);

    // Openings of 2 in.: the ligament may fall a ten thousandth short of 0.5.
    call = {7, 24.0f, 2.0f, 2.0f, 2.0f, 2.0f, 0.0f, 10, 0.3f};
    Real pitch = 2.5f;
    while (pitch - 2.0f >= 0.5f - 0.0001f)
        pitch = std::nextafter(pitch, 0.0f);
    call.pitch = pitch;
    EXPECT_EQ(lines().back().find("UG-39(e)(4)"), 0u);
    call.pitch = std::nextafter(pitch, 3.0f);
    for (const std::string& line : lines())
        EXPECT_EQ(line.find("UG-39(e)(4)"), std::string::npos);
}

TEST_F(OpeningsTest, AverageAgainstAQuarterOfTheHead) {
    call.d1 = 8.0f, call.d2 = 4.0f, call.pitch = 20.0f; // average 6 of 24
    EXPECT_EQ(lines().size(), 1u);
    call.d1 = 8.0024f;
    EXPECT_EQ(lines().at(0), "UG-39(e) Average dia. 6.00 is > Head dia/4, 6.00 in.");
}

TEST_F(OpeningsTest, EdgeDistances) {
    call.pitch = 6.0f;
    call.edge1 = call.edge2 = 0.99991f; // a ten thousandth is forgiven
    EXPECT_EQ(lines().size(), 9u);
    call.edge1 = 0.8f;
    Lines all = lines();
    ASSERT_EQ(all.size(), 10u);
    EXPECT_EQ(all.back(), "UG-39(e)(5) Dist. to edge 0.80 should be >= d1/4, 1.00 in.");
    expect_marks(LINE_COUNT, stress_test::ERROR_MARKS);
    EXPECT_TRUE(UG39_VIOLATION);
    call.edge1 = 2.0f, call.edge2 = 0.6f, call.d2 = 3.0f;
    all = lines();
    EXPECT_EQ(all.back(), "UG-39(e)(5) Dist. to edge 0.60 should be >= d1/4, 0.75 in.");
    // Openings far apart: the second distance is not tested, the first is.
    call.pitch = 9.0f;
    EXPECT_EQ(lines().size(), 1u);
    call.edge1 = 0.5f;
    EXPECT_EQ(lines().size(), 2u);
    call.d2 = 0.0f; // one opening
    EXPECT_EQ(lines(), (Lines{"UG-39(e)(5) Dist. to edge 0.50 should be >= d1/4, 1.00 in."}));
}

TEST_F(OpeningsTest, AttachmentFactorOfAFlatHead) {
    call.kind = 6;
    for (const auto& [material, Cin, Cout] :
         {std::tuple{10, 0.3f, 0.6f}, std::tuple{10, 0.4f, 0.75f}, std::tuple{3, 0.4f, 0.75f},
          std::tuple{4, 0.4f, 0.75f}, std::tuple{9, 0.4f, 0.75f}, std::tuple{0, 0.4f, 0.75f},
          std::tuple{1, 0.4f, 0.5f}, std::tuple{2, 0.4f, 0.5f}, std::tuple{5, 0.4f, 0.5f},
          std::tuple{6, 0.4f, 0.5f}, std::tuple{7, 0.4f, 0.5f}, std::tuple{8, 0.4f, 0.5f},
          std::tuple{8, 0.2f, 0.4f}}) {
        call.material = material, call.Cin = Cin;
        lines();
        EXPECT_EQ(call.Cout, Cout) << material;
    }
    call.kind = 7;
    lines();
    EXPECT_EQ(call.Cout, call.Cin);
}

TEST_F(OpeningsTest, PitchOfNothing) {
    call.pitch = 0.0f;
    lines();
    EXPECT_EQ(call.coverFactor, 0.0f); // 0.5 over an infinite efficiency, negative: its root is -0
    EXPECT_TRUE(UG39_VIOLATION);
    call.pitch = 3.0f; // below the average diameter
    lines();
    EXPECT_TRUE(std::isnan(call.coverFactor));
    call.pitch = NOT_A_NUMBER;
    const Lines all = lines();
    EXPECT_TRUE(std::isnan(call.coverFactor));
    EXPECT_EQ(all.at(0), "UG-39(e)(3) Spacing NaN is < 1.25*Avg. dia. 5.00 in.");
}

TEST_F(OpeningsTest, UnitsAndSilence) {
    UNITS.diameter = 25.4f;
    UNITS.diameter_label = "mm";
    call.pitch = 4.9f;
    EXPECT_EQ(lines().at(0), "UG-39(e)(3) Spacing 124.46 is < 1.25*Avg. dia. 127.00 mm");
    EXPECT_EQ(stored(2), "Head dia = 609.60  Opening dia, d1 = 101.60  d2 = 101.60 mm");
    call.pitch = 6.0f;
    EXPECT_EQ(lines().at(3), " = (152.4 - 101.6)/152.4");
    call.pitch = 4.9f;
    lines();
    const Real factor = call.coverFactor;
    start_again();
    IWRITE = 0;
    UG39_VIOLATION = false;
    PATTERNED_OPENINGS(call);
    EXPECT_EQ(LINE_COUNT, 0);
    EXPECT_EQ(call.coverFactor, factor);
    EXPECT_TRUE(UG39_VIOLATION);
}

} // namespace
} // namespace tarvane
