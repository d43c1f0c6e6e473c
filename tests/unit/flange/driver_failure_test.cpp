// The iteration of the driver to the corrosion at which a flange fails.
#include "flange/driver_loops.h"

#include "driver_loops_fixture.h"

namespace tarvane::driver_test {
namespace {

class Failure : public Loops {
  protected:
    Failure() {
        G_FAILURE_CORROSION = 1;
        flange.put(90, "Y");
        flange.set({{10, 26.0f},
                    {13, 26.0f},
                    {54, 26.0f},
                    {71, 0.4375f},
                    {74, 0.125f},
                    {8, 1.5625f},
                    {16, 0.4375f},
                    {17, 0.8125f},
                    {29, 0.125f}});
        ELEMENT_TABLES[0].description = "Inlet nozzle";
    }
    static constexpr std::string_view TITLE =
        "Internal Failure Corrosion Allowance Results, Governing Case:";
    // The line under the title, empty when there is none.
    std::string governing() {
        IOUT = -1;
        flange.run();
        const Lines lines = store_lines();
        const std::ptrdiff_t at = find(lines, TITLE);
        if (at < 0) return {};
        EXPECT_EQ(lines[static_cast<std::size_t>(at - 1)].text, "");
        EXPECT_EQ(lines[static_cast<std::size_t>(at)].marks, "");
        EXPECT_EQ(lines[static_cast<std::size_t>(at + 1)].marks, "");
        return lines[static_cast<std::size_t>(at + 1)].text;
    }
    // The latest row, an empty one when there is none.
    static const FAILURE_ROW& last() {
        static const FAILURE_ROW none{};
        return FAILURE_ROWS > 0 ? FAILURE_TABLE[FAILURE_ROWS - 1] : none;
    }
    std::string expected(const char* label) const {
        char text[80];
        std::snprintf(text, sizeof text, "%-51s = %.4f in.", label,
                      static_cast<double>(last().failureCa));
        return text;
    }
    // The walk by hand: the first corroded state in which `fails` holds.
    template <typename Fails>
    Real walked(Fails fails) {
        Real ci = 0.01f;
        for (Int i = 0; i < 2000; ++i) {
            const FLANGE_STATE s = by_hand([&](FLANGE_STATE& x) {
                x.kind = ANALYSE;
                x.ci = ci;
            });
            if (fails(s)) return ci;
            ci = ci + 0.001f;
        }
        return 0.0f;
    }
    // The least ratio of a row without its bolts.
    static Real least_of(const FLANGE_STATE& s, StressRow row) {
        Real r = 999.0f;
        for (Int place = 0; place < PLACES; ++place)
            if (place != BOLTING) r = min(r, s.RATIO[row][place]);
        return r;
    }
};

TEST_F(Failure, OperatingStressGoverns) {
    flange.at(9) = 0.125f;
    const std::string shown = governing();
    EXPECT_EQ(shown, expected("Operating"));
    flange.at(9) = 0.125f;
    EXPECT_EQ(last().failureCa, walked([](const FLANGE_STATE& s) {
                  return truncated(1000.0f * least_of(s, OPERATING)) <= 1001;
              }));
}

TEST_F(Failure, ResultStandsBetweenTheFinalPassAndTheClosingNote) {
    governing();
    const Lines lines = store_lines();
    const std::ptrdiff_t at = find(lines, TITLE);
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(at + 4));
    EXPECT_TRUE(lines.back().text.starts_with("TARVANE"));
    EXPECT_TRUE(lines[static_cast<std::size_t>(at - 2)].text.starts_with("Estimated Unfinished"));
}

TEST_F(Failure, GasketSeatingGoverns) {
    flange.set({{6, 20000.0f}, {25, 1.0f}, {26, 12000.0f}});
    const std::string shown = governing();
    EXPECT_EQ(shown, expected("Gasket Seating"));
    const Real seating = walked(
        [](const FLANGE_STATE& s) { return truncated(1000.0f * least_of(s, SEATING)) <= 1001; });
    EXPECT_EQ(last().failureCa, seating);
    EXPECT_GT(walked([](const FLANGE_STATE& s) {
                  return truncated(1000.0f * least_of(s, OPERATING)) <= 1001;
              }),
              seating);
}

TEST_F(Failure, SmallEndOfTheHubGoverns) {
    flange.set({{8, 3.0f}, {16, 0.1875f}, {18, 3.0f}});
    const std::string shown = governing();
    EXPECT_EQ(shown, expected("Small End Hub Thickness (Hoop Stress)"));
    // UG-27 with the walking allowance: the first at which S E t / (R + 0.6 t) is 1.001 P.
    const double ci = static_cast<double>(last().failureCa);
    const auto ratio = [](double c) {
        const double goc = 0.1875 - c, R = 13.0 + c;
        return 17800.0 * goc / (R + 0.6 * goc) / 135.0;
    };
    EXPECT_LT(ratio(ci), 1.002);
    EXPECT_GT(ratio(ci - 0.001), 1.002);
}

TEST_F(Failure, RigidityGoverns) {
    flange.rigidity = 1;
    const std::string shown = governing();
    EXPECT_EQ(shown, expected("Flange Rigidity"));
    EXPECT_EQ(last().failureCa,
              walked([](const FLANGE_STATE& s) { return s.rigidityOut >= 0.999f; }));
    flange.rigidity = 0;
    EXPECT_NE(governing(), expected("Flange Rigidity"));
}

TEST_F(Failure, OtherTypesHaveNoSmallEnd) {
    flange.set({{2, 2.0f}, {8, 3.0f}, {16, 0.1875f}, {18, 3.0f}});
    EXPECT_NE(governing(), expected("Small End Hub Thickness (Hoop Stress)"));
    EXPECT_EQ(FAILURE_ROWS, 1);
}

TEST_F(Failure, FlangeThatFailsAlreadyHasNoLinesButARow) {
    flange.at(6) = 5000.0f;
    EXPECT_EQ(governing(), "");
    EXPECT_FALSE(has(store_lines(), "Note: Couldn't determine a limiting rerate"));
    EXPECT_EQ(FAILURE_ROWS, 1);
    EXPECT_EQ(last().failureCa, 0.01f);
}

// Bolts that are overstressed do not end the walk.
TEST_F(Failure, BoltsDoNotCorrode) {
    const std::string sound = governing();
    flange.set({{19, 5000.0f}});
    const FLANGE_STATE s = by_hand([](FLANGE_STATE&) {});
    EXPECT_LT(s.RATIO[OPERATING][BOLTING], 1.0f);
    EXPECT_NE(governing(), "");
    EXPECT_GT(last().failureCa, 0.05f);
    EXPECT_NE(sound, "");
}

TEST_F(Failure, HubEatenAwayLeavesNoVerdict) {
    flange.set({{2, 2.0f}, {4, 5.0f}, {8, 6.0f}, {16, 0.05f}, {17, 0.1f}, {18, 0.5f}});
    flange.set({{6, 200000.0f}, {7, 200000.0f}, {60, 200000.0f}, {61, 200000.0f}});
    flange.pOperating = 5.0f;
    EXPECT_EQ(governing(), "");
    const Lines lines = store_lines();
    EXPECT_EQ(line(lines, "Note: Couldn't determine").text,
              "Note: Couldn't determine a limiting rerate corrosion allowance = 0.0500 in.");
    EXPECT_EQ(line(lines, "Note: Couldn't determine").marks, "");
    EXPECT_NE(line(lines, "Note: Couldn't determine", -1).text, "");
    EXPECT_FALSE(has(lines, TITLE));
    EXPECT_GE(last().failureCa, 0.05f - 0.001f);
    EXPECT_LT(last().failureCa, 0.05f);
}

TEST_F(Failure, GasketEatenAwayGoesToTheLesserRow) {
    flange.set({{2, 7.0f}, {8, 6.0f}, {15, 29.96f}, {27, 1.0f}}); // 0.04 in. of gasket
    const FLANGE_STATE s = by_hand([](FLANGE_STATE& x) { x.kind = ANALYSE; });
    const bool operating = least_of(s, OPERATING) < least_of(s, SEATING);
    std::string shown = governing();
    EXPECT_EQ(shown, expected(operating ? "Operating" : "Gasket Seating"));
    EXPECT_NEAR(last().failureCa, 0.041f, 0.0011f);
    flange.set({{7, operating ? 1500.0f : 90000.0f}}); // the other row
    shown = governing();
    EXPECT_EQ(shown, expected(operating ? "Gasket Seating" : "Operating"));
    EXPECT_NEAR(last().failureCa, 0.041f, 0.0011f);
}

// A ring so wide and strong that neither its gasket nor a stress ends the search.
TEST_F(Failure, SearchGivesUpAtItsLimit) {
    const Real wide = 100000.0f, strong = 1.0e9f;
    flange.code = EN_13445;
    flange.set({{2, 3.0f},
                {4, 1.0f},
                {6, strong},
                {7, strong},
                {11, 2.0f * wide},
                {12, wide - 10.0f},
                {14, wide - 10.0f},
                {16, 0.0f},
                {17, 0.0f},
                {18, 0.0f},
                {19, strong},
                {20, strong},
                {21, wide}});
    const std::string note = "Note: Couldn't determine a limiting rerate corrosion allowance";
    // 500000 rounds, all of the thickness: the search is at its end and says so.
    flange.at(8) = 500.0f;
    while (truncated(flange.at(8) / 0.001f) < 500000)
        flange.at(8) = std::nextafter(flange.at(8), 1000.0f);
    ASSERT_EQ(truncated(flange.at(8) / 0.001f), 500000);
    EXPECT_EQ(governing(), "");
    ASSERT_EQ(FAILURE_ROWS, 1);
    Real walked_all = 0.01f; // each step rounded
    for (int i = 0; i < 500000; ++i)
        walked_all += 0.001f;
    EXPECT_EQ(last().failureCa, walked_all);
    EXPECT_EQ(last().nominalLessFailure, last().nominal - last().failureCa);
    EXPECT_TRUE(has(store_lines(), note));
    // A round more is not made: no result.
    while (truncated(flange.at(8) / 0.001f) == 500000)
        flange.at(8) = std::nextafter(flange.at(8), 1000.0f);
    EXPECT_EQ(governing(), "");
    ASSERT_EQ(FAILURE_ROWS, 2);
    EXPECT_EQ(last().failureCa, NO_VALUE);
    EXPECT_EQ(last().nominalLessFailure, NO_VALUE);
    EXPECT_FALSE(has(store_lines(), note));
    EXPECT_EQ(FLANGE.ci, 0.0f);
    // Thicker still, but with an end before the limit: its result.
    flange.set({{8, 600.0f}, {14, flange.at(15) + 0.5f}});
    EXPECT_NE(governing(), "");
    EXPECT_NEAR(last().failureCa, 0.501f, 0.0011f);
}

// The moduli are looked up for the first round only, and for each pass after the search.
TEST_F(Failure, ModuliAreThoseOfEveryCall) {
    flange.rigidity = 1;
    flange.run();
    const Real failure = last().failureCa, Ehot = FLANGE.Ehot;
    EXPECT_FALSE(FLANGE.moduliHeld);
    flange.at(5) = 200.0f; // cooler
    flange.run();
    EXPECT_GT(FLANGE.Ehot, Ehot);
    EXPECT_GT(last().failureCa, failure);
    EXPECT_EQ(last().failureCa,
              walked([](const FLANGE_STATE& s) { return s.rigidityOut >= 0.999f; }));
    FLANGE.moduliHeld = true; // a stop that never returned
    flange.at(5) = 650.0f;
    flange.run();
    EXPECT_EQ(last().failureCa, failure);
}

TEST_F(Failure, OnlyForTheFlangesItIsFor) {
    const auto runs = [&] {
        const Int before = FAILURE_ROWS;
        flange.run();
        return FAILURE_ROWS > before;
    };
    EXPECT_TRUE(runs());
    for (const Real type : {2.0f, 3.0f, 7.0f}) {
        flange.at(2) = type;
        EXPECT_TRUE(runs()) << type;
    }
    flange.set({{39, 28.0f}, {40, 30.0f}});
    for (const Real type : {4.0f, 5.0f, 6.0f}) {
        flange.at(2) = type;
        EXPECT_FALSE(runs()) << type;
    }
    flange.at(2) = 1.0f;
    for (const Int off : {0, 2}) {
        G_FAILURE_CORROSION = off;
        EXPECT_FALSE(runs());
    }
    G_FAILURE_CORROSION = 1;
    for (const Int standard : {1, 2}) {
        flange.standardFlange = standard;
        EXPECT_FALSE(runs());
    }
    flange.standardFlange = 0;
    flange.at(1) = 0.0f;
    EXPECT_FALSE(runs());
    for (const Real P : {0.0f, -15.0f}) {
        flange.set({{1, 1.0f}, {4, P}});
        EXPECT_FALSE(runs());
    }
    flange.at(4) = 135.0f;
    EXPECT_TRUE(runs());
}

TEST_F(Failure, PassesBehindItAreThoseWithoutIt) {
    flange.at(9) = 0.0625f;
    flange.run();
    const Lines with = store_lines();
    const Real results[] = {flange.mapNc, flange.tReqNew, flange.mawp, flange.tReq};
    G_FAILURE_CORROSION = 0;
    flange.run();
    const Real without[] = {flange.mapNc, flange.tReqNew, flange.mawp, flange.tReq};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(results[i], without[i]) << i;
    Lines rest = with;
    const auto at = find(rest, TITLE);
    rest.erase(rest.begin() + at - 1, rest.begin() + at + 2);
    EXPECT_EQ(rest, store_lines());
    EXPECT_EQ(FLANGE.ci, 0.0625f);
}

TEST_F(Failure, GatesComeBack) {
    report_to_file();
    IWRITE = 1;
    flange.at(9) = 0.0625f;
    flange.run();
    EXPECT_EQ(IOUT, REPORT_UNIT);
    EXPECT_EQ(count(file_lines(), "Gasket Contact Width"), 1);
}

// After the loop the state keeps kind 1, so the hub of a design is not tested.
TEST_F(Failure, DesignBehindItKeepsItsHub) {
    flange.set({{3, 3.0f}, {16, 0.0625f}, {17, 0.125f}, {18, 1.0f}});
    flange.run();
    EXPECT_EQ(flange.at(16), 0.0625f);
    G_FAILURE_CORROSION = 0;
    flange.run();
    EXPECT_GT(flange.at(16), 0.0625f);
}

TEST_F(Failure, RowOfTheTable) {
    flange.set({{9, 0.125f}});
    ELEMENT_TABLES[2].description = "Channel end";
    ELEMENT_TABLES[2].first_inspection = 0.5f;
    ELEMENT_TABLES[2].second_inspection = 0.125f;
    ELEMENT_TABLES[2].value = 77.5f;
    flange.element = 3;
    flange.run();
    ASSERT_EQ(FAILURE_ROWS, 1);
    char bytes[80];
    std::memcpy(bytes, &FAILURE_TABLE[0], sizeof bytes);
    const auto real = [&](std::size_t offset) {
        Real x;
        std::memcpy(&x, bytes + offset, 4);
        return x;
    };
    const auto text = [&](std::size_t offset, std::size_t length) {
        return std::string(bytes + offset, length);
    };
    const Real failure = real(20);
    EXPECT_EQ(text(0, 16), "Channel end     ");
    EXPECT_EQ(real(16), 0.4375f);
    EXPECT_GT(failure, 0.1f);
    EXPECT_EQ(real(24), 0.4375f - failure);
    EXPECT_EQ(real(28), 0.125f);
    EXPECT_EQ(real(32), 0.3125f);
    EXPECT_EQ(real(36), 0.5f);
    EXPECT_EQ(real(40), 0.125f);
    EXPECT_EQ(real(44), 0.375f);
    for (const std::size_t unused : {48u, 52u, 56u})
        EXPECT_EQ(real(unused), 0.0f);
    // Small end by UG-27 with the given allowance.
    EXPECT_NEAR(real(60), 135.0 * 13.125 / (17800.0 - 81.0) + 0.125, 1e-6);
    EXPECT_EQ(real(64), 77.5f);
    EXPECT_EQ(text(68, 4), std::string("\7\0\0\0", 4));
    EXPECT_EQ(text(72, 4), "Yes "); // 0.3125 is below 0.375
    EXPECT_EQ(real(76), 77.5f);

    ELEMENT_TABLES[2].second_inspection = 0.1875f; // 0.3125: not below
    flange.run();
    EXPECT_EQ(std::string(last().below, 4), " No ");
    ELEMENT_TABLES[2].first_inspection = 0.0f;
    flange.run();
    EXPECT_EQ(std::string(last().below, 4), "    ");
    flange.element = 0;
    flange.run();
    EXPECT_TRUE(last().description.blank());
    EXPECT_EQ(last().value, 0.0f);
    EXPECT_EQ(FAILURE_ROWS, 4);
    flange.element = 3;
    flange.set({{2, 7.0f}, {8, 2.5f}});
    flange.run();
    EXPECT_EQ(last().nominal, 2.5f); // a cover has no hub
}

TEST_F(Failure, AllowanceOfTheRowComesAsItWas) {
    flange.at(9) = NO_VALUE;
    flange.run();
    EXPECT_EQ(last().ci, NO_VALUE);
    EXPECT_EQ(last().nominalLessCi, 0.4375f - NO_VALUE);
}

TEST_F(Failure, TableGrowsToItsEndAndTheLastRowGivesWay) {
    flange.at(6) = 5000.0f; // one round a call
    flange.writeCase = 0;
    ELEMENT_TABLES[0].value = 1.0f;
    for (int i = 0; i < 500; ++i)
        flange.run();
    EXPECT_EQ(FAILURE_ROWS, 500);
    EXPECT_EQ(FAILURE_TABLE[499].value, 1.0f);
    ELEMENT_TABLES[0].value = 2.0f;
    flange.run();
    EXPECT_EQ(FAILURE_ROWS, 500);
    EXPECT_EQ(FAILURE_TABLE[498].value, 1.0f);
    EXPECT_EQ(FAILURE_TABLE[499].value, 2.0f);
    RESET_ENGINE();
    EXPECT_EQ(FAILURE_ROWS, 0);
    EXPECT_EQ(FAILURE_TABLE[499].value, 0.0f);
}

TEST_F(Failure, BoltAreaThatEndsTheCallLeavesTheHubOut) {
    flange.set({{3, 2.0f}, {24, 8.0f}});
    flange.run();
    EXPECT_EQ(FLANGE.error, BOLT_AREA_SHORT);
    EXPECT_EQ(FAILURE_ROWS, 1);
    EXPECT_EQ(last().hubRequired, 0.0f); // only the report pass stores it
}

} // namespace
} // namespace tarvane::driver_test
