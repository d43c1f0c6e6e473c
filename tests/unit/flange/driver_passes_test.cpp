// The passes of the driver: what each one sees, which outputs it writes, and what outlasts a call.
#include "bolting/bolt_spacing.h"
#include "driver_fixture.h"
#include "flange/hub.h"

namespace tarvane::driver_test {
namespace {

class Passes : public DriverTest {
  protected:
    // A kernel run by hand on the record as it is.
    static constexpr auto as_it_is = [](FLANGE_STATE&) {};
    template <typename Change = decltype(as_it_is)>
    const FLANGE_STATE& by_hand(Change change = as_it_is) {
        FLANGE_STATE& s = other;
        s = FLANGE_STATE{};
        s.code = flange.code;
        s.jointE = flange.jointE;
        s.element1 = truncated(flange.at(1));
        s.rigidity = flange.rigidity;
        s.standardFlange = flange.standardFlange;
        const Int gate = IWRTFL;
        IWRTFL = 0;
        READ_FLANGE_RECORD(s, FLANGE_RECORD(flange.elements.data()), flange.text.data(), TEXT_SLOT);
        REWRITE_LOOSE_REVERSE(s);
        change(s);
        ANALYZE_FLANGE(s);
        IWRTFL = gate;
        return s;
    }
    FLANGE_STATE other;
};

// ---- outputs ---------------------------------------------------------------------------------------------

TEST_F(Passes, NewAndColdPressureComesFromANewFlangeAtAmbient) {
    flange.set({{9, 0.0625f}, {63, 0.03125f}});
    flange.put(90, "Y");
    flange.run();
    const FLANGE_STATE& s = by_hand([](FLANGE_STATE& x) {
        x.ci = x.ct = 0.0f;
        x.Sfo = x.Sfa;
        x.Sb = x.Sa;
    });
    EXPECT_EQ(flange.mapNc, min(s.MAWPop, s.MAWPseat));
    EXPECT_EQ(flange.tReqNewCold, 0.0f);
    const FLANGE_STATE& corroded = by_hand();
    EXPECT_EQ(flange.mawp, min(corroded.MAWPop, corroded.MAWPseat));
    EXPECT_LT(flange.mawp, flange.mapNc);
}

TEST_F(Passes, RequiredThicknessNewAndCorroded) {
    flange.set({{3, 2.0f}, {9, 0.0625f}});
    flange.put(90, "Y");
    flange.run();
    EXPECT_EQ(flange.tReq, by_hand().tRequired);
    EXPECT_EQ(flange.tReqNew, by_hand([](FLANGE_STATE& x) { x.ci = x.ct = 0.0f; }).tRequired);
    EXPECT_GT(flange.tReq, flange.tReqNew);
    EXPECT_EQ(flange.tReqNewCold, 0.0f);
    EXPECT_GT(flange.tReqNew, 0.5f);

    flange.at(1) = 0.0f; // no vessel: the new flange at design condition is not run
    flange.tReqNew = -7.0f;
    flange.run();
    EXPECT_EQ(flange.tReqNew, -7.0f);
    flange.at(1) = 1.9f;
    flange.run();
    EXPECT_GT(flange.tReqNew, 0.5f);
    flange.at(1) = 0.9f; // cut to 0
    flange.tReqNew = -7.0f;
    flange.run();
    EXPECT_EQ(flange.tReqNew, -7.0f);
}

TEST_F(Passes, CoverHasItsThicknessNewAndCold) {
    flange.set({{2, 7.0f}, {8, 2.5f}, {9, 0.125f}});
    flange.put(90, "Y");
    flange.run();
    const FLANGE_STATE& s = by_hand([](FLANGE_STATE& x) {
        x.ci = x.ct = 0.0f;
        x.Sfo = x.Sfa;
        x.Sb = x.Sa;
    });
    EXPECT_EQ(flange.tReqNewCold, s.tOut);
    EXPECT_GT(s.tOut, 0.5f);
}

TEST_F(Passes, HubLimitsThePressure) {
    flange.jointE = 0.2f; // counts at the small end only
    flange.run();
    // UG-27: S E t / (R + 0.6 t).
    EXPECT_NEAR(flange.mawp, 17800.0 * 0.2 * 0.3125 / (13.125 + 0.6 * 0.3125), 1e-4);
    EXPECT_LT(flange.mawp, min(FLANGE.MAWPop, FLANGE.MAWPseat));
}

TEST_F(Passes, SeatingPressureOfNothingLeavesTheOperatingOne) {
    flange.at(7) = 4000.0f; // seating fails
    flange.run();
    EXPECT_LT(FLANGE.MAWPseat, 0.01f);
    EXPECT_GT(FLANGE.MAWPop, 0.01f);
    EXPECT_EQ(flange.mawp, FLANGE.MAWPop);
}

TEST_F(Passes, StandardFlangeIsNotRated) {
    flange.standardFlange = 1;
    flange.at(3) = 2.0f;
    flange.run();
    EXPECT_EQ(flange.mapNc, NO_VALUE);
    EXPECT_EQ(flange.mawp, NO_VALUE);
    EXPECT_EQ(flange.tReq, 0.0f);
    EXPECT_GT(flange.at(120), 0.0f); // the loads are there
    const Lines lines = store_lines();
    EXPECT_TRUE(has(lines, "Note: User choose not to perform Stress Calculations on this Standard "
                           "Flange."));
    EXPECT_FALSE(has(lines, "Estimated M.A.W.P."));
    EXPECT_TRUE(has(lines, "Estimated Finished Weight of Flange at given Thk."));
}

TEST_F(Passes, RecordTakesTheResultsOfTheFinalPass) {
    for (Int i = 120; i <= 145; ++i)
        flange.at(i) = 77.0f;
    flange.set({{45, 0.0f}, {48, 1000.0f}, {50, 500.0f}});
    flange.put(45, "Y");
    flange.run();
    const FLANGE_STATE& s = by_hand();
    const Real expected[] = {s.W, s.Wm1, s.Wm2, s.G, s.Mop, s.Matm, s.Ab, s.Am, s.HG};
    for (Int i = 0; i < 9; ++i)
        EXPECT_EQ(flange.at(120 + i), expected[i]) << 120 + i;
    EXPECT_EQ(flange.at(129), 77.0f);
    for (Int i = 130; i <= 136; ++i)
        EXPECT_EQ(flange.at(i), 77.0f) << i; // of a design only
    EXPECT_EQ(flange.at(137), s.extLoad);
    EXPECT_GT(s.extLoad, 0.0f);
    EXPECT_EQ(flange.at(138), s.pressureArea);
    EXPECT_EQ(flange.at(139), s.hpPerP);
    EXPECT_EQ(flange.at(140), s.hpPrimePerP);
    EXPECT_EQ(flange.at(141), s.Peq - s.P);
    for (Int i = 142; i <= 145; ++i)
        EXPECT_EQ(flange.at(i), 77.0f) << i;
    EXPECT_EQ(flange.at(200), 0.0f);
}

TEST_F(Passes, ExternalPressureLeavesTheResultsAtZero) {
    for (Int i = 120; i <= 145; ++i)
        flange.at(i) = 77.0f;
    flange.at(4) = -15.0f;
    flange.run();
    for (Int i = 120; i <= 128; ++i) {
        EXPECT_EQ(flange.at(i), i == 123 ? FLANGE.G : 0.0f) << i;
    }
    EXPECT_EQ(flange.at(137), 77.0f);
    EXPECT_EQ(flange.mawp, FLANGE.MAWPop);
    EXPECT_EQ(flange.tReqNew, -7.0f);
    EXPECT_EQ(flange.tReqNewCold, -7.0f);
}

// ---- design ----------------------------------------------------------------------------------------------

class DesignPasses : public Passes {
  protected:
    DesignPasses() { flange.at(3) = 3.0f; }
    void expect_geometry() {
        const FLANGE_STATE& s = FLANGE;
        const Real expected[] = {static_cast<Real>(s.nBolts), s.dh, s.C, s.g1, s.go, s.h, s.A};
        for (Int i = 0; i < 7; ++i)
            EXPECT_EQ(flange.at(130 + i), expected[i]) << 130 + i;
        const Real face[] = {s.Fod, s.Fid, s.Go, s.Gi};
        for (Int i = 0; i < 4; ++i)
            EXPECT_EQ(flange.at(142 + i), face[i]) << 142 + i;
        EXPECT_GT(flange.at(130), 3.0f);
        EXPECT_EQ(truncated(flange.at(130)) % 4, 0);
        EXPECT_GT(flange.at(132), 26.25f);
        EXPECT_GT(flange.at(136), flange.at(132));
    }
};

TEST_F(DesignPasses, SelectedGeometryComesBack) {
    for (const Real element : {-1.0f, 1.0f}) {
        SCOPED_TRACE(element);
        for (Int i = 130; i <= 145; ++i)
            flange.at(i) = 0.0f;
        flange.at(1) = element;
        IOUT = -1;
        flange.run();
        expect_geometry();
        EXPECT_EQ(flange.at(3), 3.0f);
        EXPECT_EQ(flange.at(21), 31.25f); // the input is unchanged
        EXPECT_EQ(flange.tReq, FLANGE.tRequired);
        EXPECT_TRUE(has(store_lines(), "Number of Bolts Selected for Flange"));
    }
}

TEST_F(DesignPasses, HubThatHoldsStaysAsItIs) {
    flange.run();
    EXPECT_EQ(flange.at(16), 0.3125f);
    EXPECT_EQ(flange.at(17), 0.6875f);
    EXPECT_EQ(flange.at(18), 2.125f);
}

TEST_F(DesignPasses, ShortHubIsThickenedInTheRecord) {
    // UG-27: 135 * 13.125 / (17800 - 81) = 0.1
    flange.set({{16, 0.0625f}, {17, 0.125f}, {18, 1.0f}});
    IOUT = -1;
    flange.run();
    const double required = 135.0 * 13.125 / (17800.0 - 0.6 * 135.0);
    EXPECT_NEAR(flange.at(16), required, 1e-6);
    EXPECT_EQ(flange.at(17), 2.0f * flange.at(16));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(flange.at(18)), 0xFFC00000u);
    expect_geometry(); // the selection forms a length of its own
    EXPECT_EQ(flange.at(135), FLANGE.h);
    EXPECT_GT(FLANGE.h, 0.0f);
    EXPECT_EQ(IOUT, -1);
}

TEST_F(DesignPasses, ThickHubsGrowByHalf) {
    flange.set({{4, 2500.0f}, {8, 4.0f}, {16, 1.0f}, {17, 2.0f}});
    flange.pOperating = 2500.0f;
    flange.run();
    EXPECT_GT(flange.at(16), 1.5f);
    EXPECT_EQ(flange.at(17), 1.5f * flange.at(16));
}

TEST_F(DesignPasses, TypesWithAHubOnly) {
    for (const Real type : {1.0f, 2.0f, 4.0f}) {
        flange.set({{2, type}, {3, 3.0f}, {16, 0.0625f}, {17, 0.125f}, {18, 1.0f}});
        flange.run();
        EXPECT_TRUE(std::isnan(flange.at(18))) << type;
    }
    for (const Real type : {3.0f, 5.0f, 6.0f}) {
        flange.set({{2, type}, {16, 0.0625f}, {17, 0.125f}, {18, 1.0f}, {39, 28.0f}, {40, 30.0f}});
        flange.run();
        EXPECT_EQ(flange.at(16), 0.0625f) << type;
        EXPECT_EQ(flange.at(18), 1.0f) << type;
    }
    flange.set({{2, 1.0f}, {3, 2.0f}}); // a search for the thickness takes the hub as it is
    flange.run();
    EXPECT_EQ(flange.at(16), 0.0625f);
}

TEST_F(DesignPasses, FullFaceDesignEndsAtItsLimitWithoutAMessage) {
    flange.set({{4, 50.0f}, {12, 32.8f}, {14, 32.8f}, {15, 26.5f}, {25, 1.0f}, {26, 200.0f}});
    flange.pOperating = 50.0f;
    flange.run();
    EXPECT_EQ(FLANGE.error, DESIGN_GAVE_UP);
    EXPECT_EQ(flange.mawp, NO_VALUE);
    EXPECT_EQ(flange.tReq, 0.0f);
    EXPECT_EQ(IWRITE,
              1); // closed at the end of the report, which is without its note, then put back
    const Lines lines = store_lines();
    EXPECT_EQ(count(lines, "Geometry Selection for Flange Design Option:"), 20);
    EXPECT_FALSE(has(lines, "Full Face Flange Design"));
    EXPECT_FALSE(has(lines, "TARVANE"));
    EXPECT_EQ(flange.at(132), FLANGE.C); // the driver carries on with the state
}

// ---- thickness and allowances as the host gave them ---------------------------------------------------

TEST_F(Passes, ThicknessOfZeroIsAnalysedAsTwoInches) {
    flange.at(8) = 0.0f;
    flange.at(3) = 1.0f;
    flange.run();
    EXPECT_EQ(FLANGE.t, 2.0f);
    EXPECT_TRUE(
        has(store_lines(), "Flange Thickness                           t          2.0000  in."));
    by_hand();
    EXPECT_EQ(other.t, 2.0f);
    const Real rated = min(other.MAWPop, other.MAWPseat);
    EXPECT_EQ(flange.mawp, rated);
    // The new and cold pass takes the thickness as given; what cannot be rated then takes the
    // pressure of the report.
    by_hand([](FLANGE_STATE& x) {
        x.Sfo = x.Sfa;
        x.t = 0.0f;
    });
    EXPECT_EQ(NEW_AND_COLD_PRESSURE(other.MAWPop, other.MAWPseat), NO_VALUE);
    EXPECT_EQ(flange.mapNc, rated);
}

TEST_F(Passes, AllowanceThatIsNotGivenReachesTheHubAsItCame) {
    flange.at(9) = NO_VALUE;
    flange.jointE = 0.05f;
    flange.run();
    EXPECT_EQ(flange.at(9), 0.0f);
    const double S = 17800.0 * 0.05, goc = 0.3125 + 1.0101, R = 13.125 - 1.0101;
    EXPECT_NEAR(flange.mawp, S * goc / (R + 0.6 * goc), 1e-4);
    flange.run(); // cleared now
    EXPECT_NEAR(flange.mawp, S * 0.3125 / (13.125 + 0.6 * 0.3125), 1e-4);
}

TEST_F(Passes, BoltReferenceComesAsTheHostGaveIt) {
    flange.at(75) = 4.9f;
    flange.run();
    EXPECT_EQ(FLANGE.boltReference, 4);
    flange.at(75) = NO_VALUE;
    flange.run();
    EXPECT_EQ(FLANGE.boltReference, -1);
    flange.run();
    EXPECT_EQ(FLANGE.boltReference, 0);
}

TEST_F(Passes, NothingGivenAsElementNumberIsTheStandAloneForm) {
    flange.at(1) = NO_VALUE;
    flange.at(102) = 25.4f;
    IOUT = 0;
    flange.run();
    EXPECT_EQ(IOUT, 0);
    EXPECT_FALSE(store_lines().empty()); // its report went to the store all the same
    EXPECT_EQ(UNITS.diameter, 25.4f);
    EXPECT_EQ(flange.at(1), 0.0f);
    EXPECT_EQ(FLANGE.element1, -1);
}

// ---- passes and their state ------------------------------------------------------------------------------

TEST_F(Passes, AmbientPassRunsOnWhatTheInputTestsLeft) {
    // Mating loads that are not in force: zeroed once, back from the next read on.
    flange.set({{44, 200000.0f}});
    flange.run();
    EXPECT_EQ(FLANGE.Wmo, 200000.0f);
}

TEST_F(Passes, ExternalPressureRunsOnTheFirstRead) {
    flange.set({{4, -15.0f}, {2, 7.0f}, {8, 2.5f}});
    flange.run();
    EXPECT_EQ(FLANGE.B, 0.0f); // the bore that the input tests removed
    flange.set({{4, 15.0f}});
    flange.pOperating = 15.0f;
    flange.run();
    EXPECT_EQ(FLANGE.B, 26.25f); // the report pass reads again
}

TEST_F(Passes, VesselPressureIsGivenBackBehindTheAmbientPass) {
    flange.pOperating = 999.0f;
    flange.run();
    EXPECT_EQ(FLANGE.P, 135.0f);
    EXPECT_EQ(flange.pOperating, 999.0f);
    EXPECT_EQ(FLANGE.Tdesign, 650.0f);
}

TEST_F(Passes, ReportOfEachSideIsOpenedByItsOwnCase) {
    const auto written = [&](Int writeCase, Real P) {
        flange.writeCase = writeCase;
        flange.at(4) = P;
        IOUT = -1;
        flange.run();
        return !store_lines().empty();
    };
    EXPECT_TRUE(written(1, 135.0f));
    EXPECT_FALSE(written(2, 135.0f));
    EXPECT_FALSE(written(1, -15.0f));
    EXPECT_TRUE(written(2, -15.0f));
    EXPECT_FALSE(written(0, 135.0f));
    EXPECT_FALSE(written(0, -15.0f));
}

TEST_F(Passes, ReportIsThatOfOnePass) {
    flange.set({{3, 2.0f}});
    flange.run();
    const Lines lines = store_lines();
    for (const char* once : {"Gasket Contact Width", "Bolt Area,",
                             "Flange Stress Analysis Results:", "Minimum Required Flange Thickness",
                             "Estimated M.A.W.P. ( Operating )", "Estimated Finished Weight"})
        EXPECT_EQ(count(lines, once), 1) << once;
}

TEST_F(Passes, SilentKernelBeginsItsReportWithTheStresses) {
    flange.reportKernel = 0;
    flange.run();
    const Lines lines = store_lines();
    EXPECT_TRUE(has(lines, "Hub Small End Required Thickness")); // the driver's own lines
    EXPECT_FALSE(has(lines, "Gasket Contact Width"));
    EXPECT_FALSE(has(lines, "Longitudinal Hub Stress"));
    EXPECT_TRUE(has(lines, "Flange Stress Analysis Results:"));
    EXPECT_TRUE(has(lines, "Estimated M.A.W.P. ( Operating )"));
}

TEST_F(Passes, MatingLoadsWithoutEffectCountAsNone) {
    flange.put(60, "Y");
    flange.set({{44, 1000.0f}, {45, 1000.0f}, {46, 1000.0f}});
    flange.run();
    const Real mawp = flange.mawp;
    const Lines lines = store_lines();
    EXPECT_TRUE(has(lines, "Estimated M.A.W.P. ( Operating )"));
    EXPECT_FALSE(has(lines, "Note: MAWP Cannot be calculated"));
    EXPECT_EQ(flange.text[60], 'Y'); // the host's own text is unchanged
    EXPECT_EQ(FLANGE.matingLoads.view(), "N              ");
    EXPECT_TRUE(host.progress.empty());
    EXPECT_EQ(mawp, min(FLANGE.MAWPop, FLANGE.MAWPseat));
    EXPECT_GT(mawp, 135.0f);
}

TEST_F(Passes, CoverWithOpenings) {
    flange.set({{2, 7.0f}, {8, 2.5f}, {64, 2.0f}, {66, 5.0f}, {69, 1.0f}});
    flange.run();
    EXPECT_EQ(FLANGE.coverFlag, 1); // a single opening
    EXPECT_EQ(count(store_lines(), "Checking Multiple Openings on Flat Head"), 1);
    const Real single = flange.tReq;
    flange.at(69) = 0.0f;
    flange.run();
    EXPECT_EQ(FLANGE.coverFlag, 0);
    EXPECT_EQ(FLANGE.coverFactor, 1.0f);
    EXPECT_FALSE(has(store_lines(), "Checking Multiple Openings"));
    EXPECT_GT(single, flange.tReq);
    flange.set({{2, 1.0f}, {8, 1.4375f}, {69, 1.0f}});
    flange.run();
    EXPECT_FALSE(has(store_lines(), "Checking Multiple Openings"));
}

TEST_F(Passes, LapJointLinesCloseTheFinalPass) {
    flange.set({{2, 6.0f}, {16, 0.0f}, {17, 0.0f}, {18, 0.0f}, {39, 28.0f}, {40, 30.0f}});
    constexpr std::string_view LAP = "Required Lap Thickness Calculations for Lap Joint Flanges:";
    flange.run();
    EXPECT_EQ(count(store_lines(), LAP), 1);
    flange.at(4) = -15.0f;
    flange.writeCase = 2;
    flange.run();
    EXPECT_EQ(count(store_lines(), LAP), 1);
}

// ---- what outlasts a call ----------------------------------------------------------------------------------

TEST_F(Passes, LogicalHoldsItsValueInBitZero) {
    flange.decimalComma = 2;
    flange.run();
    EXPECT_FALSE(DECIMAL_COMMA);
    flange.decimalComma = 3;
    flange.run();
    EXPECT_TRUE(DECIMAL_COMMA);
    EXPECT_TRUE(has(store_lines(), "Gasket Contact Width,       N = (Go - Gi) / 2          0,500"));
}

TEST_F(Passes, MetricSwitchBelongsToFlangesWithoutAVessel) {
    UNITS.diameter = 25.4f;
    flange.run();
    EXPECT_EQ(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT, 0);
    flange.at(1) = 0.0f;
    flange.run();
    EXPECT_EQ(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT, 1);
    EXPECT_EQ(C_ONE_QUARTER, 0.23622048f);
    UNITS.diameter = 1.5f;
    flange.run();
    EXPECT_EQ(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT, 0);
    flange.at(6) = 0.0f; // an input error ends here, too
    UNITS.diameter = 1.5001f;
    flange.run();
    EXPECT_EQ(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT, 1);
}

TEST_F(Passes, StandAloneFormSetsRulesAndSelectors) {
    flange.set({{1, -1.0f}, {74, 0.0f}, {76, 1.0f}, {77, 2.0f}, {78, 3.0f}});
    flange.element = 2;
    flange.run();
    EXPECT_EQ(CODE_A98_ADDENDA, 0);
    EXPECT_FALSE(NEW_DIV_2_RULES);
    EXPECT_EQ(G_MATL_METRIC, 1);
    EXPECT_EQ(G_FORCE_DIV1, 2);
    EXPECT_EQ(G_D2_CLASS, 3);
    flange.code = 2;
    flange.div2Edition = 1;
    flange.run();
    EXPECT_FALSE(NEW_DIV_2_RULES);
    flange.div2Edition = 0;
    flange.run();
    EXPECT_TRUE(NEW_DIV_2_RULES);
    EXPECT_TRUE(G_CURRENT_DIV_2);
    // A vessel's flange keeps the rules that it finds.
    flange.set({{1, 1.0f}, {76, 7.0f}});
    flange.code = 1;
    flange.div2Edition = 1;
    flange.run();
    EXPECT_TRUE(NEW_DIV_2_RULES);
    EXPECT_FALSE(G_CURRENT_DIV_2);
    EXPECT_EQ(G_MATL_METRIC, 1);
    flange.at(1) = -1.0f;
    flange.run();
    EXPECT_FALSE(NEW_DIV_2_RULES);
}

TEST_F(Passes, LineStoreBeginsAnewWithEachCall) {
    flange.run();
    const Int lines = LINE_COUNT;
    flange.run();
    EXPECT_EQ(LINE_COUNT, lines);
    flange.at(6) = 0.0f;
    flange.writeCase = 0;
    flange.run();
    EXPECT_LT(LINE_COUNT, 30); // the messages of the input tests
    EXPECT_GT(LINE_COUNT, 0);
}

// Every type under every code, each report once more after all the others have run.
TEST_F(Passes, ReportsDoNotDependOnWhatWasBefore) {
    struct CASE {
        Int code;
        Real type, kind, P;
    };
    std::vector<CASE> cases;
    for (const Int code : {1, 2, 3, 4})
        for (const Real type : {1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f, 8.0f, 9.0f})
            for (const Real kind : {1.0f, 2.0f})
                for (const Real P : {135.0f, -15.0f})
                    cases.push_back({code, type, kind, P});
    const auto report = [&](const CASE& c) {
        SampleFlange f;
        f.code = c.code;
        f.writeCase = c.P < 0.0f ? 2 : 1;
        f.set({{2, c.type}, {3, c.kind}, {4, c.P}, {9, 0.03125f}, {71, 0.5f}});
        if (c.type == 5.0f || c.type == 6.0f) f.set({{16, 0.0f}, {17, 0.0f}, {18, 0.0f}});
        if (c.type == 6.0f) f.set({{39, 28.0f}, {40, 30.0f}});
        if (c.type >= 8.0f)
            f.set({{10, 20.0f}, {14, 25.0f}, {15, 23.0f}, {12, 25.0f}, {13, 22.0f}, {21, 28.0f}});
        IWRITE = 1;
        IOUT = -1;
        f.run();
        return store_lines();
    };
    std::vector<Lines> first;
    for (const CASE& c : cases) {
        fresh_engine();
        first.push_back(report(c));
        EXPECT_GT(first.back().size(), 20u) << c.code << " " << c.type << " " << c.kind;
    }
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(report(cases[i]), first[i])
            << cases[i].code << " " << cases[i].type << " " << cases[i].kind << " " << cases[i].P;
}

// ---- fatal stop --------------------------------------------------------------------------------------------

TEST_F(Passes, StopEndsTheCallWhereItStands) {
    flange.set({{2, 7.0f}, {10, 33.0f}, {44, 2.0f}});
    flange.tReq = 5.0f;
    flange.run();
    EXPECT_EQ(host.fatal, std::vector<Int>{25});
    EXPECT_EQ(host.stops, 1);
    EXPECT_EQ(flange.mapNc, NO_VALUE);
    EXPECT_EQ(flange.tReq, 5.0f);
    EXPECT_TRUE(store_lines().empty()); // no closing note either
    // The next call is not affected.
    SampleFlange sound;
    sound.run();
    EXPECT_GT(sound.mawp, 100.0f);
    EXPECT_EQ(host.stops, 1);
}

TEST_F(Passes, StopInASilentStretchGivesTheGatesBack) {
    G_FAILURE_CORROSION = 1;
    // Sound as given, but with the bore corroded by a hundredth the ring is gone.
    flange.set({{2, 3.0f},
                {10, 26.25f},
                {11, 26.269f},
                {12, 26.269f},
                {13, 26.25f},
                {14, 26.265f},
                {15, 26.25f},
                {16, 0.0f},
                {17, 0.0f},
                {18, 0.0f},
                {21, 26.267f},
                {22, 0.001f}});
    IWRITE = 1;
    IOUT = -1;
    flange.run();
    EXPECT_EQ(host.stops, 1);
    EXPECT_EQ(IWRITE, 1);
    EXPECT_EQ(IOUT, -1);
}

} // namespace
} // namespace tarvane::driver_test
