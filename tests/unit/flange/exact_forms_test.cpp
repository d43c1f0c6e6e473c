// Flanges through the whole of FLANGE_CALC, their lines character for character: the point of values
// without decimals, the factor k, corrosion at failure; and the gates that a call restores.
#include "driver_fixture.h"

namespace tarvane::driver_test {
namespace {

// A weld neck flange whose every stress is within its limit.
class ExactForms : public DriverTest {
  protected:
    ExactForms() {
        flange.element = 2;
        flange.pOperating = 150.0f;
        flange.set({{1, 2.0f},      {4, 150.0f},    {5, 400.0f},    {6, 20000.0f}, {7, 20000.0f},
                    {8, 2.5f},      {9, 0.125f},    {10, 24.0f},    {11, 32.0f},   {12, 27.5f},
                    {13, 24.0f},    {14, 27.25f},   {15, 25.25f},   {16, 0.5f},    {17, 1.0f},
                    {18, 2.0f},     {19, 25000.0f}, {20, 25000.0f}, {21, 29.5f},   {22, 0.875f},
                    {24, 28.0f},    {25, 3.0f},     {26, 9000.0f},  {27, 1.0f},    {28, 2.0f},
                    {29, 0.125f},   {30, 0.0f},     {53, 0.2833f},  {54, 24.0f},   {60, 20000.0f},
                    {61, 20000.0f}, {71, 0.5f}});
        flange.put(30, "TEST FLANGE");
        flange.put(45, "N");
        flange.put(75, "N");
        flange.put(90, "Y");
        flange.put(105, "N");
        flange.put(405, "\xB0"
                        "F");
        tarvane::SET_NO_DIALOG(true);
    }
    // The report in the line store; code by code as a host sets it.
    Lines report() {
        SETUP[0].whole = moduleCode = flange.code;
        IWRITE = IWRTFL = 1;
        IOUT = -1;
        flange.run();
        return store_lines();
    }
    // The rows of the stress summary.
    static std::vector<std::string> summary(const Lines& lines) {
        std::vector<std::string> rows;
        const auto at = find(lines, "Flange Stress Analysis Results:");
        EXPECT_GE(at, 0);
        for (auto i = static_cast<std::size_t>(at + 5);
             i < lines.size() && lines[i].text.ends_with("|"); ++i)
            rows.push_back(lines[i].text);
        return rows;
    }
    // The lines from one that begins with a text on, with their marks.
    static Lines from(const Lines& lines, std::string_view begin, std::ptrdiff_t number) {
        const auto at = find(lines, begin);
        EXPECT_GE(at, 0) << begin;
        if (at < 0 || at + number > static_cast<std::ptrdiff_t>(lines.size())) return {};
        return {lines.begin() + at, lines.begin() + at + number};
    }
};

// ---- values without decimals -------------------------------------------------------------------------

TEST_F(ExactForms, StressSummaryWithThePoint) {
    const std::vector<std::string> rows = {
        "Longitudinal Hub          8262.|    30000.|    15585.|    30000.|",
        "Radial Flange             1889.|    20000.|     3563.|    20000.|",
        "Tangential Flange         4462.|    20000.|     8417.|    20000.|",
        "Maximum Average           6362.|    20000.|    12001.|    20000.|",
        "Bolting                   9336.|    25000.|    22616.|    25000.|"};
    EXPECT_EQ(summary(report()), rows);
    flange.decimalComma = 1; // a point without a digit after it stays
    EXPECT_EQ(summary(report()), rows);
    flange.decimalComma = 0;

    flange.set({{19, 25000.5f}, {20, 25001.5f}}); // exact ties
    EXPECT_EQ(summary(report()).back(),
              "Bolting                   9336.|    25000.|    22616.|    25002.|");
    flange.set({{19, 1.0E8f}, {20, 99999992.0f}}); // nine columns with the point
    EXPECT_EQ(summary(report()).back(),
              "Bolting                   9336.| *********|    22616.| 99999992.|");
}

TEST_F(ExactForms, MessagesWithThePoint) {
    const Line type{"ERROR - Flange Type,10., not recognized - must be 1 to 8.", " 0 0 0 0 0 1"};
    const Line one_fatal{"Number of fatal errors: 1. Analysis of this Flange will be ended.",
                         " 0 0 0 0 0 1"};
    flange.at(2) = 10.0f;
    EXPECT_EQ(from(report(), "ERROR", 2), (Lines{type, one_fatal}));
    flange.decimalComma = 1;
    EXPECT_EQ(from(report(), "ERROR", 2), (Lines{type, one_fatal}));

    flange.decimalComma = 0;
    flange.set({{2, 1.0f}, {3, 0.0f}, {24, 1.0f}});
    const Lines two = from(report(), "ERROR", 3);
    ASSERT_EQ(two.size(), 3u);
    EXPECT_EQ(two[0].text, "ERROR - Analysis Type,0., not recognized - must be 0, 1 or 2.");
    EXPECT_EQ(two[1].text, "ERROR - Number of Bolts, 1. must be > 2.");
    EXPECT_EQ(two[2].text, "Number of fatal errors: 2. Analysis of this Flange will be ended.");

    flange.set({{3, 1.0f}, {24, 28.0f}, {25, 2.5f}, {26, -1.0f}}); // shows m
    EXPECT_EQ(line(report(), "ERROR").text, "ERROR - Gasket Stress, 2. must not be < 0.000.");
    flange.at(25) = -0.5f;
    EXPECT_TRUE(has(report(), "ERROR - Gasket Stress, -0. must not be < 0.000."));
}

TEST_F(ExactForms, StandAloneFormEndsWithItsFirstFatalMessage) {
    flange.set({{1, -1.0f}, {24, -1.0f}});
    EXPECT_EQ(report().back().text, "ERROR - Number of Bolts, -1. must be > 2.");
}

TEST_F(ExactForms, OtherWholeNumbersHaveNoPoint) {
    EXPECT_EQ(line(report(), "Design Temperature").text,
              "Design Temperature                                       400  \xB0"
              "F");
}

// ---- the factor k ------------------------------------------------------------------------------------

TEST_F(ExactForms, FactorBetweenItsLimitsIsShown) {
    flange.set({{10, 48.0f},
                {11, 56.0f},
                {12, 51.5f},
                {13, 48.0f},
                {14, 51.25f},
                {15, 49.25f},
                {21, 53.5f},
                {24, 44.0f},
                {54, 48.0f}});
    Lines lines = {
        {"Gasket Augmentation Factor per EN 13445 paragraph 11.5.4.2 [k]:", " 0 0 0 0 0 2"},
        {" = (2/3)(1 + B/2000)    Because 1000 mm < Flange ID < 2000 mm:", ""},
        {" = (2/3)(1 + 1225.55/2000)", ""},
        {" = 1.075", ""},
        {"Note: For Evaluation of 'k', Metric dimensions are employed.", " 0 0 0 1 0 0"}};
    flange.code = EN_13445;
    EXPECT_EQ(from(report(), "Gasket Augmentation Factor", 5), lines);
    lines[0].text = "Stress Augmentation Factor per PD:5500 paragraph 3.8.3.4.2 [k]:";
    flange.code = PD_5500;
    EXPECT_EQ(from(report(), "Stress Augmentation Factor", 5), lines);
}

TEST_F(ExactForms, FactorOfOneHasNoValueLine) {
    flange.code = EN_13445;
    const Lines lines = from(report(), "Gasket Augmentation Factor", 3);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].text, "Because the Flange ID is <= 1000 mm, k = 1.0");
    EXPECT_EQ(lines[2].text, "Note: For Evaluation of 'k', Metric dimensions are employed.");
}

// ---- corrosion at failure ------------------------------------------------------------------------------

TEST_F(ExactForms, CorrosionThatNothingLimitsIsShownWithItsNote) {
    G_FAILURE_CORROSION = 1;
    flange.pOperating = 15.0f;
    flange.set({{2, 3.0f},
                {4, 15.0f},
                {8, 1.5f},
                {9, 0.0f},
                {16, 0.0f},
                {17, 0.0f},
                {18, 0.0f},
                {22, 0.5f},
                {24, 8.0f},
                {25, 1.0f},
                {26, 200.0f},
                {42, 0.25f}});
    const Lines lines = report();
    const auto at = find(lines, "Note: Couldn't determine");
    ASSERT_GT(at, 0);
    EXPECT_EQ(
        lines[static_cast<std::size_t>(at)],
        (Line{"Note: Couldn't determine a limiting rerate corrosion allowance = 1.5090 in.", ""}));
    EXPECT_NE(lines[static_cast<std::size_t>(at - 1)].text, "");
}

// A cover of 60 in. whose gasket, 40.5 in. from the inside to the outside diameter, is gone first.
class ThickCover : public ExactForms {
  protected:
    ThickCover() {
        G_FAILURE_CORROSION = 1;
        flange.pOperating = 20.0f;
        flange.set({{2, 7.0f},
                    {4, 20.0f},
                    {8, 60.0f},
                    {11, 108.0f},
                    {12, 101.5f},
                    {13, 61.0f},
                    {14, 101.5f},
                    {15, 61.0f},
                    {16, 0.0f},
                    {17, 0.0f},
                    {18, 0.0f},
                    {21, 104.0f},
                    {22, 1.0f},
                    {24, 60.0f},
                    {25, 1.0f},
                    {26, 200.0f}});
    }
};

TEST_F(ThickCover, EveryRoundOfItsThicknessIsMade) {
    const std::string title = "Internal Failure Corrosion Allowance Results, Governing Case:";
    const Lines lines = report();
    const auto at = find(lines, title);
    ASSERT_GT(at, 0);
    const auto text = [&](std::ptrdiff_t i) { return lines[static_cast<std::size_t>(i)].text; };
    EXPECT_EQ(text(at - 1), "");
    EXPECT_EQ(text(at + 1), "Operating                                           = 40.5004 in.");
    ASSERT_EQ(FAILURE_ROWS, 1);
    EXPECT_NEAR(FAILURE_TABLE[0].failureCa, 40.5004f, 0.00005f);
}

// ---- the gates -------------------------------------------------------------------------------------------

class Gates : public ExactForms {
  protected:
    struct Counts {
        Int flange, note;
        bool operator==(const Counts&) const = default;
    };
    // The lines in the store after the flange, and after two lines of another routine, which show
    // where the gates are.
    Counts counts(Int IWRITE_before, Int IOUT_before, bool open_again = false) {
        const Int on = 1, off = 0;
        ::SET_IOUT(&IOUT_before);
        ::SET_IWRITE(&IWRITE_before);
        ::SET_IWRTFL(&on);
        flange.run();
        Counts lines{};
        ::LINE_COUNT(&lines.flange);
        EXPECT_EQ(IWRITE, IWRITE_before);
        EXPECT_EQ(IOUT, IOUT_before);
        if (open_again) ::SET_IWRTFL(&on);
        const Real thickness = 0.75f;
        const char name[] = "SA-36";
        ::UCS6_NOTE(name, 5, &thickness, &on, &off);
        ::LINE_COUNT(&lines.note);
        return lines;
    }
};
constexpr Int OPEN = 1, CLOSED = 0, LINE_STORE = -1, NOWHERE = 0;

TEST_F(Gates, AfterAFlange) {
    ELEMENT_TABLES[1].from_node = "10"; // a line of its own
    ELEMENT_TABLES[1].to_node = "20";
    EXPECT_EQ(counts(CLOSED, LINE_STORE), (Counts{217, 217}));
    EXPECT_EQ(counts(OPEN, LINE_STORE), (Counts{217, 219}));
}

TEST_F(Gates, AfterAShortBoltArea) {
    flange.set({{3, 2.0f}, {22, 0.5f}, {24, 4.0f}});
    EXPECT_EQ(counts(OPEN, LINE_STORE, true), (Counts{0, 2}));
    EXPECT_EQ(counts(CLOSED, LINE_STORE, true), (Counts{0, 0}));
    report_to_file(); // whose lines open the master switch
    IWRITE = 0;
    IWRTFL = 1;
    flange.run();
    EXPECT_EQ(IWRITE, 0);
    EXPECT_TRUE(has(file_lines(), "Flange Bolt Area Problem Encountered for"));
}

TEST_F(Gates, AfterTheStandAloneForm) {
    flange.at(1) = -1.0f;
    EXPECT_EQ(counts(OPEN, NOWHERE), (Counts{216, 216}));
    flange.at(15) = 30.0f; // refused
    EXPECT_EQ(counts(OPEN, NOWHERE, true), (Counts{5, 5}));
}

TEST_F(Gates, AfterRefusedInput) {
    flange.at(15) = 30.0f;
    EXPECT_EQ(counts(OPEN, LINE_STORE, true), (Counts{7, 9}));
}

TEST_F(Gates, AfterAFatalStopThatComesBack) {
    flange.set({{2, 7.0f}, {10, 33.0f}}); // the bore of a cover is tested too late
    EXPECT_EQ(counts(CLOSED, LINE_STORE, true), (Counts{0, 0}));
    EXPECT_EQ(host.stops, 1);
}

} // namespace
} // namespace tarvane::driver_test
