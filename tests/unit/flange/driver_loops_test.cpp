// The iterations of the driver: new and cold pressure of covers, mating loads.
#include "flange/driver_loops.h"

#include "driver_loops_fixture.h"

namespace tarvane::driver_test {
namespace {

// ---- new and cold pressure of covers -------------------------------------------------------------------

class Cover : public Loops {
  protected:
    Cover() { flange.set({{2, 7.0f}, {8, 2.5f}}); }
    static bool met(Real ratio) { return ratio >= 0.9995f && ratio <= 1.0001f; }
};

TEST_F(Cover, PressureAtWhichOneRatioIsMet) {
    flange.run();
    EXPECT_EQ(FLANGE.P, 135.0f);
    const FLANGE_STATE s = by_hand([&](FLANGE_STATE& x) {
        as_new(x);
        x.P = flange.mapNc;
    });
    EXPECT_TRUE(met(s.RATIO[SEATING][TANGENTIAL]) || met(s.RATIO[OPERATING][TANGENTIAL]) ||
                met(s.RATIO[OPERATING][BOLTING]) || met(s.RATIO[SEATING][BOLTING]));
    EXPECT_GT(flange.mapNc, flange.mawp); // ambient allowables
    EXPECT_EQ(host.progress.size(), 0u);
}

TEST_F(Cover, FirstRoundsTakeTheEstimateLaterOnesTheRatios) {
    flange.run();
    const Real result = flange.mapNc;
    // The same walk, round by round.
    FLANGE_STATE s = by_hand(as_new);
    Int rounds = 0;
    for (Int i = 1; i <= 200; ++i) {
        const Real P = i < 6
                           ? min(s.MAWPop, s.MAWPseat)
                           : s.P * min(s.RATIO[SEATING][TANGENTIAL], s.RATIO[OPERATING][TANGENTIAL],
                                       s.RATIO[OPERATING][BOLTING], s.RATIO[SEATING][BOLTING]);
        s = by_hand([&](FLANGE_STATE& x) {
            as_new(x);
            x.P = P;
        });
        ++rounds;
        if (met(s.RATIO[SEATING][TANGENTIAL]) || met(s.RATIO[OPERATING][TANGENTIAL]) ||
            met(s.RATIO[SEATING][BOLTING]) || met(s.RATIO[OPERATING][BOLTING]))
            break;
    }
    EXPECT_EQ(result, s.P);
    EXPECT_GE(rounds, 1);
}

TEST_F(Cover, ThicknessOutputIsThatOfThePassBefore) {
    flange.run();
    EXPECT_EQ(flange.tReqNewCold, by_hand(as_new).tOut); // at the design pressure
}

TEST_F(Cover, RawThicknessThroughoutTheWalk) {
    flange.at(8) = 0.0f; // a cover of 2 in. by the read, of nothing here
    flange.run();
    const Real raw = flange.mapNc;
    flange.at(8) = 2.0f;
    flange.run();
    EXPECT_NE(raw, flange.mapNc);
}

TEST_F(Cover, FullFaceOfPdAndEnTakesItsSeatingPressure) {
    flange.set({{12, 32.8f}, {14, 32.8f}, {15, 26.5f}});
    for (const Int code : {3, 4}) {
        flange.code = code;
        flange.run();
        EXPECT_TRUE(FLANGE.fullFace);
        EXPECT_EQ(flange.mapNc, by_hand(as_new).MAWPseat);
    }
    flange.standardFlange = 2; // any other value: the rule of the other flanges
    flange.run();
    const FLANGE_STATE s = by_hand(as_new);
    const Real expected = NEW_AND_COLD_PRESSURE(s.MAWPop, s.MAWPseat);
    EXPECT_EQ(flange.mapNc, expected <= 0.0001f ? min(FLANGE.MAWPop, FLANGE.MAWPseat) : expected);
}

TEST_F(Cover, ErrorEndsTheWalkWithoutAPressure) {
    flange.set({{3, 2.0f}, {24, 8.0f}});
    flange.run();
    EXPECT_EQ(FLANGE.error, BOLT_AREA_SHORT);
    EXPECT_EQ(flange.mapNc, NO_VALUE);
    EXPECT_EQ(FLANGE.P, 135.0f);
}

TEST_F(Cover, WalkWithoutAnEndStopsAtItsLimit) {
    flange.set({{7, NAN}}); // no ratio is ever within its limits; the input tests let it pass
    flange.run();
    EXPECT_EQ(FLANGE.P, 135.0f);
    EXPECT_EQ(FLANGE.error, 0);
    EXPECT_GT(flange.at(122), 0.0f); // the report pass was reached
}

// ---- mating loads ------------------------------------------------------------------------------------------

class Mating : public Loops {
  protected:
    Mating() {
        flange.put(60, "Y");
        flange.put(30, "Inlet flange");
        flange.set({{9, 0.0625f}, {44, 130000.0f}, {45, 150000.0f}, {46, 240000.0f}});
        flange.put(90, "Y");
    }
    std::vector<std::string> of_loop(const char* caption) const {
        std::vector<std::string> found;
        for (const std::string& text : host.progress)
            if (text.find(caption) != std::string::npos) found.push_back(text);
        return found;
    }
};
constexpr const char *NEW_AND_COLD = ", MAPnc iteration#: ",
                     *DESIGN_CONDITION = ", MAWP iteration: ";

TEST_F(Mating, ProgressOfEachRoundOnTheHostsDialog) {
    flange.writeCase = 0; // nothing in the store
    flange.run();
    const auto first = of_loop(NEW_AND_COLD), second = of_loop(DESIGN_CONDITION);
    ASSERT_GT(first.size(), 2u);
    ASSERT_GT(second.size(), 2u);
    EXPECT_EQ(first.size() + second.size(), host.progress.size());
    EXPECT_LE(host.progress.size(), 4000u);
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(first[i],
                  "Flg Desc: Inlet flange, MAPnc iteration#: " + std::to_string(i + 1) + " 0");
    for (std::size_t i = 0; i < second.size(); ++i)
        EXPECT_EQ(second[i],
                  "Flg Desc: Inlet flange, MAWP iteration: " + std::to_string(i + 1) + " 0");
    EXPECT_EQ(host.progress[first.size()], second[0]);
    for (const Int control : host.controls)
        EXPECT_EQ(control, 1002);
}

TEST_F(Mating, LinesOfTheRoundsGoToTheStoreAndAreCounted) {
    report_to_file();
    flange.run();
    const auto first = of_loop(NEW_AND_COLD);
    EXPECT_EQ(first[0], "Flg Desc: Inlet flange, MAPnc iteration#: 1 0");
    EXPECT_FALSE(first[1].ends_with(" 0"));
    EXPECT_GT(LINE_COUNT, 0);
    EXPECT_EQ(IOUT, REPORT_UNIT);
    // The host's unit has the report of the final pass, once; the input is there from before the
    // loops, the input after them went to the store.
    const Lines lines = file_lines();
    EXPECT_EQ(count(lines, "Flange Input Data Values"), 1);
    EXPECT_EQ(count(lines, "Flange Stress Analysis Results:"), 1);
    EXPECT_EQ(count(lines, "Estimated M.A.W.P. ( Operating )"), 1);
    EXPECT_NEAR(column_value(lines, "Estimated M.A.W.P. ( Operating )             "),
                static_cast<double>(FLANGE.MAWPopFixed), 0.006);
    EXPECT_FALSE(has(lines, "Note: MAWP Cannot be calculated"));
}

TEST_F(Mating, PressuresAreFixedForTheFinalPass) {
    flange.run();
    const FLANGE_STATE final_pass = FLANGE;
    EXPECT_EQ(final_pass.MAWPop, final_pass.MAWPopFixed);
    EXPECT_EQ(final_pass.MAWPseat, final_pass.MAWPseatFixed);
    EXPECT_EQ(final_pass.MAWPseatFixed, flange.mapNc);
    EXPECT_EQ(final_pass.P, 135.0f);
    EXPECT_EQ(flange.mawp, min(final_pass.MAWPop, final_pass.MAWPseat));
    EXPECT_GT(final_pass.ci, 0.0f); // the final pass is the corroded flange at design condition
    EXPECT_EQ(final_pass.Sfo, 17800.0f);
}

// The two walks by hand: steps of 20 psi while all is well, then by the least ratio.
TEST_F(Mating, WalksEndWhereTheLeastRatioIsOne) {
    flange.run();
    const auto walk = [&](bool newAndCold, Real& MAWPseat) {
        Real P = 135.0f, keptOp = 0.0f, keptSeat = 0.0f;
        for (Int i = 1; i <= 2000; ++i) {
            const FLANGE_STATE s = by_hand([&](FLANGE_STATE& x) {
                x.P = P;
                if (newAndCold) as_new(x);
            });
            if (i == 1) {
                keptOp = s.MAWPop;
                keptSeat = s.MAWPseat;
            }
            const Real r = newAndCold ? least(s, {OPERATING, SEATING}) : least(s, {OPERATING});
            MAWPseat = s.MAWPseat;
            if (r > 1.00001001f)
                P = P + 20.0f;
            else if (std::fabs(r - 1.0f) < 0.0001f)
                return s.MAWPop;
            else
                P = P * r;
            if (P < 1.0f) {
                MAWPseat = keptSeat;
                return keptOp;
            }
        }
        return 0.0f;
    };
    Real seat = 0.0f;
    const Real op = walk(true, seat);
    EXPECT_EQ(flange.mapNc, NEW_AND_COLD_PRESSURE(op, seat));
    EXPECT_EQ(FLANGE.MAWPopFixed, walk(false, seat));
    // At that pressure the bolts or the flange are just used up.
    const FLANGE_STATE s = by_hand([&](FLANGE_STATE& x) { x.P = FLANGE.MAWPopFixed; });
    EXPECT_NEAR(least(s, {OPERATING}), 1.0f, 0.01f);
}

TEST_F(Mating, LoadThatNoPressureCarriesKeepsTheFirstEstimate) {
    flange.set({{44, 2000000.0f}});
    flange.run();
    const FLANGE_STATE first = by_hand([](FLANGE_STATE& x) { as_new(x); });
    EXPECT_EQ(FLANGE.MAWPseatFixed, NEW_AND_COLD_PRESSURE(first.MAWPop, first.MAWPseat));
    EXPECT_EQ(FLANGE.MAWPopFixed, by_hand([](FLANGE_STATE&) {}).MAWPop);
    // The least ratio stays below 1, so each round takes it off again.
    EXPECT_LT(host.progress.size(), 40u);
}

TEST_F(Mating, ThatGovernOnly) {
    const auto iterated = [&](std::initializer_list<std::pair<Int, Real>> values) {
        SampleFlange f = flange;
        f.set(values);
        host.progress.clear();
        f.run();
        return !host.progress.empty();
    };
    flange.at(9) = 0.0f;
    EXPECT_TRUE(iterated({}));
    // Wm1 of the previous pass takes the mating load where that governs, so the tests of both are met
    // whenever the load is above the flange's own less half a pound.
    SampleFlange own = flange;
    own.set({{44, 0.0f}});
    own.run();
    const Real Wm1 = own.at(121);
    ASSERT_NEAR(Wm1, 111329.0f, 200.0f);
    EXPECT_FALSE(iterated({{44, Wm1 - 0.6f}}));
    EXPECT_TRUE(iterated({{44, Wm1 - 0.4f}}));
    EXPECT_TRUE(iterated({{44, Wm1 + 1.0f}}));
    EXPECT_FALSE(iterated({{1, 0.0f}}));
    EXPECT_FALSE(iterated({{4, 0.001f}}));
    EXPECT_TRUE(iterated({{4, 0.002f}}));
    flange.put(60, "N"); // the switch does not count here
    EXPECT_TRUE(iterated({}));
}

TEST_F(Mating, LimitOfTwoThousandRoundsEach) {
    SampleFlange other; // leaves ratios above 1, which a rated flange does not touch
    other.run();
    flange.standardFlange = 1;
    flange.writeCase = 0;
    flange.run();
    EXPECT_EQ(of_loop(NEW_AND_COLD).size(), 2000u);
    EXPECT_EQ(of_loop(DESIGN_CONDITION).size(), 2000u);
    EXPECT_EQ(FLANGE.P, 135.0f);
    EXPECT_EQ(flange.mapNc, NO_VALUE);
}

TEST_F(Mating, StopGivesTheGatesBack) {
    report_to_file();
    // Sound in the passes before: the ring goes with the first text for the dialog.
    HOST_SERVICES services = SERVICES;
    services.dialog_text = [](void* user, Int, const char*) {
        static_cast<HOST*>(user)->progress.emplace_back();
        FLANGE.B = 40.0f;
    };
    tarvane::SET_HOST_SERVICES(&services);
    flange.run();
    EXPECT_EQ(host.stops, 1);
    EXPECT_EQ(host.progress.size(), 1u);
    EXPECT_EQ(IOUT, REPORT_UNIT);
}

} // namespace
} // namespace tarvane::driver_test
