// The closing block of the kernel: required thickness, covers, pressures, overstress, weights.
#include "flange/kernel_rating.h"

#include "flange/blind.h"
#include "kernel_fixture.h"

namespace tarvane::driver_test {
namespace {

class KernelRating : public KernelTest {};

// ---- required thickness --------------------------------------------------------------------------------------

TEST_F(KernelRating, RequiredThicknessLine) {
    EXPECT_FALSE(has(prepared_run(), REQUIRED));
    flange.at(3) = 2.0f;
    Lines lines = prepared_run();
    char text[100];
    std::snprintf(text, sizeof text, "%s%15.4f  in.", REQUIRED.data(),
                  static_cast<double>(s.tRequired));
    EXPECT_EQ(line(lines, REQUIRED).text, text);
    flange.at(8) = s.tRequired - 0.01f;
    EXPECT_EQ(line(prepared_run(), REQUIRED).marks, marks(WARNING_STYLE));
    flange.set({{3, 3.0f}, {8, 9.0f}}); // nothing was given
    EXPECT_EQ(line(prepared_run(), REQUIRED).marks, marks(WARNING_STYLE));
    const auto mark = [&](Real given) {
        KERNEL_STATE k;
        k.tStart = given;
        s.tRequired = 1.5f;
        LINE_COUNT = 0;
        THICKNESS_LINES(s, k);
        EXPECT_EQ(s.t, 1.5f);
        return line(store_lines(), REQUIRED).marks;
    };
    EXPECT_EQ(mark(1.6f), "");
    EXPECT_EQ(mark(1.4991f), "");
    EXPECT_EQ(mark(1.4989f), marks(WARNING_STYLE));
    s.tMin = 1.75f; // the least thickness of a full face flange
    s.tRequired = 1.5f;
    KERNEL_STATE k;
    THICKNESS_LINES(s, k);
    EXPECT_EQ(s.tRequired, 1.75f);
    flange.set({{2, 7.0f}, {3, 2.0f}});
    EXPECT_FALSE(has(prepared_run(), REQUIRED)); // covers have lines of their own
}

TEST_F(KernelRating, RigidityThatRaisesTheThicknessIsTold) {
    flange.at(3) = 2.0f;
    prepared_run();
    const Real stress_thickness = s.tRequired;
    flange.rigidity = 1;
    // Low moduli: the index asks for more than the stresses.
    flange.set({{6, 30000.0f}, {7, 30000.0f}, {19, 60000.0f}, {20, 60000.0f}});
    const Lines lines = prepared_run();
    const std::string text = line(lines, "Minimum Required Flange Thickness ").text;
    EXPECT_EQ(text.substr(0, 45), "Minimum Required Flange Thickness [Rigidity] ");
    EXPECT_LE(s.rigidityOut, 1.0001f);
    EXPECT_GE(s.rigidityOut, 0.99f);
    EXPECT_GT(stress_thickness, 0.0f);
    // Where the stresses govern the line is left out.
    flange.set({{6, 9000.0f}, {7, 9000.0f}, {19, 25000.0f}, {20, 25000.0f}});
    EXPECT_TRUE(has(prepared_run(), REQUIRED));
    EXPECT_LT(s.rigidityOut, 0.99f);
}

// ---- covers --------------------------------------------------------------------------------------------------

TEST_F(KernelRating, CoverThicknessesOfEveryKind) {
    cover();
    flange.set({{9, 0.125f}});
    flange.put(90, "Y");
    for (const Real kind : {1.0f, 2.0f}) {
        flange.at(3) = kind;
        const Lines lines = prepared_run();
        BLIND_CALL operating{
            .d = s.G, .Zf = 1.0f, .P = s.Peq, .S = s.Sfo, .W = s.Wm1, .ca = 0.125f, .tGiven = 2.5f};
        BLIND_CALL seating{
            .d = s.G, .Zf = 1.0f, .P = 0.0f, .S = s.Sfa, .W = s.W, .ca = 0.125f, .tGiven = 2.5f};
        BLIND_THICKNESS(s, operating);
        BLIND_THICKNESS(s, seating);
        EXPECT_EQ(s.tRequired, max(operating.tOut, seating.tOut));
        EXPECT_NEAR(column_value(lines, CENTER), static_cast<double>(s.tRequired), 6e-5);
        EXPECT_NEAR(column_value(lines, EDGE),
                    static_cast<double>(max(operating.tEdge, seating.tEdge)), 6e-5);
        EXPECT_EQ(find(lines, EDGE), find(lines, CENTER) + 1);
        BLIND_CALL bare{
            .d = s.G, .Zf = 1.0f, .P = s.Peq, .S = s.Sfo, .W = s.Wm1, .ca = 0.0f, .tGiven = 2.375f};
        BLIND_THICKNESS(s, bare);
        EXPECT_EQ(s.tOut, bare.tOut);
        EXPECT_FALSE(has(lines, TEMA));
    }
    flange.code = 4;
    const Lines lines = prepared_run();
    EXPECT_TRUE(has(lines, CENTER));
    EXPECT_FALSE(has(lines, EDGE));
    flange.code = 3;
    EXPECT_TRUE(has(prepared_run(), EDGE));
}

TEST_F(KernelRating, SpanAndShapeOfACover) {
    cover();
    const auto thickness = [&](Real D, Real d) {
        flange.set({{35, D}, {36, d}, {38, 95.0f}});
        prepared_run();
    };
    const auto expected = [&](Real span, Real Zf) {
        BLIND_CALL operating{
            .d = span, .Zf = Zf, .P = s.Peq, .S = s.Sfo, .W = s.Wm1, .ca = 0.0f, .tGiven = 2.5f};
        BLIND_CALL seating{
            .d = span, .Zf = Zf, .P = 0.0f, .S = s.Sfa, .W = s.W, .ca = 0.0f, .tGiven = 2.5f};
        BLIND_THICKNESS(s, operating);
        BLIND_THICKNESS(s, seating);
        return max(operating.tOut, seating.tOut);
    };
    thickness(30.0f, 20.0f);
    EXPECT_EQ(s.tRequired, expected(20.0f, 3.4f - 2.4f * 20.0f / 30.0f));
    thickness(30.0f, 3.0f);
    EXPECT_EQ(s.tRequired, expected(3.0f, 2.5f)); // never above 2.5
    thickness(30.0f, 29.9995f);
    EXPECT_EQ(s.tRequired, expected(s.G, 1.0f)); // as good as round
    thickness(0.0f, 0.0f);
    EXPECT_EQ(s.tRequired, expected(s.G, 1.0f));
}

TEST_F(KernelRating, ChannelCoverCompetesWithItsDeflection) {
    cover();
    flange.set({{10, 29000000.0f}, {37, 0.001f}});
    flange.put(75, "Y");
    const Lines lines = prepared_run();
    EXPECT_GT(s.tChannelMin, 0.0f);
    EXPECT_NEAR(column_value(lines, TEMA), static_cast<double>(s.tChannelMin), 6e-5);
    EXPECT_EQ(find(lines, TEMA), find(lines, EDGE) + 1);
    EXPECT_EQ(s.tRequired, s.tChannelMin); // a small deflection is allowed
    EXPECT_EQ(s.dfAllowUsed, 0.001f);
    flange.at(37) = 5.0f;
    prepared_run();
    EXPECT_GT(s.tRequired, s.tChannelMin);
    // A self-energizing gasket that ends at the bolt circle has no arm: the deflection alone.
    flange.set({{12, 32.0f}, {14, 31.25f}, {25, 0.0f}, {26, 0.0f}});
    const Lines armless = prepared_run();
    EXPECT_FALSE(s.fullFace);
    EXPECT_EQ(s.hg, 0.0f);
    EXPECT_FALSE(has(armless, CENTER));
    EXPECT_TRUE(has(armless, TEMA));
    EXPECT_EQ(s.tRequired, s.tChannelMin);
    EXPECT_EQ(s.tOut, 0.0f);
    flange.put(75, "N");
    EXPECT_FALSE(has(prepared_run(), TEMA));
    EXPECT_EQ(s.tChannelMin, 0.0f);
    EXPECT_EQ(s.dfActual, 0.0f);
}

TEST_F(KernelRating, PressureAtWhichTheBoltsAreUsedUp) {
    prepared_run();
    const double area = M_PI / 4 * 29.5 * 29.5 + 2 * 0.203125 * M_PI * 29.5 * 3.75;
    EXPECT_NEAR(s.Pbolt, 44 * 0.302 * 25000 / area, 0.01);
}

// ---- pressures -----------------------------------------------------------------------------------------------

TEST_F(KernelRating, SeatingLineBelongsToNewAndColdFlanges) {
    const auto seating_line = [&] { return has(prepared_run(), SEATING_MAWP); };
    EXPECT_FALSE(seating_line()); // Sfo below Sfa
    flange.at(6) = 20000.0f;
    EXPECT_TRUE(seating_line());
    EXPECT_LE(s.MAWPseat, s.MAWPop);
    flange.at(9) = 0.001f;
    EXPECT_FALSE(seating_line());
    flange.at(9) = 0.0f;
    flange.at(63) = 0.001f;
    flange.put(90, "Y"); // ct alone
    EXPECT_FALSE(seating_line());
    flange.put(90, "N");
    EXPECT_TRUE(seating_line());
    cover();
    EXPECT_FALSE(seating_line());
}

TEST_F(KernelRating, DecimalsOfThePressuresGoByTheirFactor) {
    const auto decimals = [&] {
        const std::string text = line(prepared_run(), OPERATING_MAWP).text;
        const std::string number = text.substr(45, 15);
        return number.size() - number.find('.') - 1;
    };
    EXPECT_EQ(decimals(), 2u);
    UNITS.pressure = 6.894757f;
    EXPECT_EQ(decimals(), 3u);
    UNITS.pressure = std::nextafter(1.0f, 2.0f);
    EXPECT_EQ(decimals(), 3u);
}

TEST_F(KernelRating, GasketWithoutSeatingStressTakesTheOperatingPressure) {
    flange.set({{25, 0.0f}, {26, 0.0f}});
    prepared_run();
    EXPECT_GT(s.MAWPop, 0.0f);
    EXPECT_GT(s.MAWPseat, 0.0f);
    flange.at(7) = 100.0f; // the seating stresses fail
    prepared_run();
    EXPECT_EQ(s.MAWPseat, s.MAWPop);
    flange.at(26) = 0.01f;
    prepared_run();
    EXPECT_LE(s.MAWPseat, 0.0001f);
}

TEST_F(KernelRating, MatingLoadsLeaveNoEstimate) {
    for (const char* slot : {"Y", "", "x"}) {
        flange.put(60, slot);
        const Lines lines = prepared_run();
        EXPECT_TRUE(has(lines, NO_MAWP)) << slot;
        EXPECT_FALSE(has(lines, OPERATING_MAWP)) << slot;
    }
    for (const char* slot : {"N", "n", "No"}) {
        flange.put(60, slot);
        const Lines lines = prepared_run();
        EXPECT_FALSE(has(lines, NO_MAWP)) << slot;
        EXPECT_TRUE(has(lines, OPERATING_MAWP)) << slot;
    }
}

TEST_F(KernelRating, FixedPressuresOfTheMatingLoads) {
    flange.put(60, "Y");
    prepare();
    s.MAWPopFixed = 111.5f;
    s.MAWPseatFixed = 222.5f;
    Lines lines = run();
    EXPECT_NEAR(column_value(lines, OPERATING_MAWP), 111.5, 1e-9);
    EXPECT_EQ(s.MAWPop, 111.5f);
    EXPECT_EQ(s.MAWPseat, 222.5f);
    s.MAWPopFixed = -1.0f;
    lines = run();
    EXPECT_TRUE(has(lines, NO_MAWP));
    EXPECT_NE(s.MAWPop, 111.5f);
    EXPECT_EQ(s.MAWPseat, 222.5f);
    s.MAWPopFixed = -0.5f; // above -1: used, and shown
    lines = run();
    EXPECT_EQ(s.MAWPop, -0.5f);
    s.matingLoads = "N"; // without mating loads only what is positive is used
    s.MAWPseatFixed = 0.0f;
    run();
    EXPECT_GT(s.MAWPop, 0.0f);
    EXPECT_NE(s.MAWPseat, 222.5f);
    s.MAWPopFixed = 111.5f;
    run();
    EXPECT_EQ(s.MAWPop, 111.5f);
}

TEST_F(KernelRating, CoversOfPdAndEnAreRatedByTheirThickness) {
    cover();
    prepared_run();
    const Real rated = s.MAWPop;
    for (const Int code : {3, 4}) {
        flange.code = code;
        prepared_run();
        BLIND_CALL bare{
            .d = s.G, .Zf = 1.0f, .P = s.Peq, .S = s.Sfo, .W = s.Wm1, .ca = 0.0f, .tGiven = 2.5f};
        BLIND_CALL seating{
            .d = s.G, .Zf = 1.0f, .P = 0.0f, .S = s.Sfa, .W = s.W, .ca = 0.0f, .tGiven = 2.5f};
        BLIND_THICKNESS(s, bare);
        BLIND_THICKNESS(s, seating);
        ASSERT_GT(bare.pOut, 0.001f);
        EXPECT_EQ(s.MAWPop, bare.pOut);
        EXPECT_EQ(s.MAWPseat, seating.pOut);
    }
    EXPECT_GT(rated, 0.0f);
    flange.code = 3;
    flange.at(8) = 0.2f; // too thin to carry its bolts: the estimate is used
    prepared_run();
    EXPECT_EQ(s.MAWPop, static_cast<Real>(truncated(s.MAWPop * 100.0f)) * 0.01f);
}

TEST_F(KernelRating, ExternalPressureIsChecked) {
    constexpr std::string_view OK = "Stress Check: OK for External Pressure       ";
    flange.at(4) = -15.0f;
    flange.put(60, "Y"); // no longer counts
    Lines lines = prepared_run();
    EXPECT_EQ(line(lines, OK).text, std::string(OK) + "          -15.0  psig");
    EXPECT_FALSE(has(lines, OPERATING_MAWP));
    EXPECT_FALSE(has(lines, NO_MAWP));
    flange.at(4) = -0.001f;
    lines = prepared_run();
    EXPECT_TRUE(has(lines, OK));
    EXPECT_FALSE(has(lines, NO_MAWP));
    flange.at(4) = std::nextafter(-0.001f, 0.0f);
    lines = prepared_run();
    EXPECT_FALSE(has(lines, OK));
    EXPECT_TRUE(has(lines, NO_MAWP));
    flange.set({{4, -15.0f}, {7, 1000.0f}}); // seating is too much
    EXPECT_FALSE(has(prepared_run(), OK));
}

// ---- overstress ------------------------------------------------------------------------------------------------

class Overstress : public KernelRating {
  protected:
    Overstress() { report_to_file(); }
    // The warnings of a run: box and line go together.
    bool warned() {
        host.boxes.clear();
        host.titles.clear();
        const Lines lines = prepared_run();
        EXPECT_EQ(host.boxes.size(), has(lines, OVERSTRESS) ? 1u : 0u);
        EXPECT_EQ(line(lines, OVERSTRESS).marks, "");
        return !host.boxes.empty();
    }
};

TEST_F(Overstress, BoxAndLineOnAFileUnitOnly) {
    EXPECT_FALSE(warned());
    flange.at(6) = 5000.0f;
    EXPECT_TRUE(warned());
    EXPECT_EQ(host.boxes[0], OVERSTRESS);
    EXPECT_EQ(host.titles[0], "Flange OverStress Detected");
    flange.quietOverstress = 1;
    EXPECT_FALSE(warned());
    flange.quietOverstress = 0;
    tarvane::SET_NO_DIALOG(true);
    EXPECT_FALSE(warned());
    tarvane::SET_NO_DIALOG(false);
    IOUT = -1;
    EXPECT_FALSE(warned());
    IOUT = REPORT_UNIT;
    prepare();
    host.boxes.clear();
    IWRTFL = 0;
    ANALYZE_FLANGE(s);
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Overstress, AQuarterOfAPsiIsNone) {
    prepared_run();
    const Real SAo = s.STRESS[OPERATING][AVERAGE];
    ASSERT_LT(s.STRESS[OPERATING][HUB], 1.5f * SAo);
    flange.at(6) = SAo - 0.25f;
    EXPECT_FALSE(warned());
    flange.at(6) = SAo - 0.26f;
    EXPECT_TRUE(warned());
    flange.at(6) = 17800.0f;
    const Real BSa = s.STRESS[SEATING][BOLTING];
    flange.at(20) = BSa - 1.0f; // the bolts count, too
    prepared_run();
    EXPECT_EQ(warned(), s.STRESS[SEATING][BOLTING] - s.ALLOWED[SEATING][BOLTING] > 0.25f);
}

TEST_F(Overstress, StressesOfReverseAndFullFaceAreNotLookedAt) {
    prepared_run();
    KERNEL_STATE k;
    for (const Int place : {REVERSE, FULL_FACE}) {
        s.STRESS[OPERATING][place] = 1.0e6f;
        host.boxes.clear();
        RATE_FLANGE(s, k);
        EXPECT_TRUE(host.boxes.empty());
    }
    s.P = -15.0f; // under external pressure they are, and without tolerance
    RATE_FLANGE(s, k);
    EXPECT_EQ(host.boxes.size(), 1u);
    s.STRESS[OPERATING][REVERSE] = s.STRESS[OPERATING][FULL_FACE] = 0.0f;
    host.boxes.clear();
    RATE_FLANGE(s, k);
    EXPECT_TRUE(host.boxes.empty());
    s.STRESS[SEATING][FULL_FACE] = s.ALLOWED[SEATING][FULL_FACE];
    RATE_FLANGE(s, k);
    EXPECT_TRUE(host.boxes.empty());
    s.STRESS[SEATING][FULL_FACE] = std::nextafter(s.ALLOWED[SEATING][FULL_FACE], 1.0e9f);
    RATE_FLANGE(s, k);
    EXPECT_EQ(host.boxes.size(), 1u);
}

TEST_F(Overstress, MatingLoadsSilenceIt) {
    flange.at(6) = 5000.0f;
    flange.put(60, "Y");
    EXPECT_FALSE(warned());
}

// ---- weights and rigidity ------------------------------------------------------------------------------------

TEST_F(KernelRating, WeightsOfTheGivenThicknessOrOfTheHubAlone) {
    const double ring = M_PI / 4 * (32.875 * 32.875 - 26.25 * 26.25),
                 hub = M_PI / 4 * (27.25 * 27.25 - 26.25 * 26.25);
    Lines lines = prepared_run();
    EXPECT_NEAR(column_value(lines, FINISHED), 2.125 * hub * 0.2836, 0.01);
    EXPECT_NEAR(s.weightForging, 2.125 * ring * 0.2836, 0.01);
    flange.at(3) = 2.0f;
    lines = prepared_run();
    EXPECT_NEAR(s.weightFinished, (1.4375 * ring + 2.125 * hub) * 0.2836, 0.01);
    const std::string finished = line(lines, FINISHED).text, forging = line(lines, FORGING).text;
    EXPECT_EQ(finished.substr(60), "  lbm");
    EXPECT_EQ(forging.substr(61), "  lbm");
    EXPECT_EQ(find(lines, FORGING), find(lines, FINISHED) + 1);
    flange.set({{3, 1.0f}});
    for (const Real type : {3.0f, 5.0f}) { // rings have no hub
        flange.at(2) = type;
        EXPECT_FALSE(has(prepared_run(), FINISHED));
        EXPECT_EQ(s.weightForging, 0.0f);
    }
    flange.at(3) = 2.0f;
    EXPECT_TRUE(has(prepared_run(), FINISHED));
    cover();
    prepared_run();
    EXPECT_NEAR(s.weightFinished, 2.5 * M_PI / 4 * 32.875 * 32.875 * 0.2836, 0.02);
    flange.set({{53, 0.0f}});
    EXPECT_FALSE(has(prepared_run(), FINISHED));
}

TEST_F(KernelRating, RigidityOfTheGivenThicknessNeedsOne) {
    flange.rigidity = 1;
    prepared_run();
    EXPECT_EQ(s.jOp, 0.0f); // an analysis keeps no thickness
    EXPECT_EQ(s.jSeat, 0.0f);
    EXPECT_EQ(s.rigidityOut, max(s.J[0], s.J[1]));
    EXPECT_NEAR(s.rigidityOut, 0.8318, 0.002); // as published
    const Real given = s.rigidityOut;
    flange.at(3) = 2.0f;
    prepared_run();
    EXPECT_EQ(max(s.jSeat, s.jOp), given);
    EXPECT_NE(s.rigidityOut, given);
    flange.rigidity = 0;
    prepared_run();
    EXPECT_EQ(s.jOp, 0.0f);
    EXPECT_EQ(s.rigidityOut, 0.0f);
}

} // namespace
} // namespace tarvane::driver_test
