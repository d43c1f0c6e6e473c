#include "materials/modulus.h"

#include "../data_folder.h"

namespace tarvane {
namespace {

using data_test::Line;

constexpr Real PSI = 145.03264f;

// ---- the built-in moduli -------------------------------------------------------------------------

class BuiltInModulus : public testing::Test {
  protected:
    BuiltInModulus() { RESET_MATERIALS(); }
    ~BuiltInModulus() override { RESET_MATERIALS(); }

    // Modulus in MPa at degrees Celsius.
    static Real MPa(Real chart_class, Real celsius) {
        Real result = -1.0f;
        MODULUS(chart_class, result, celsius * 1.8f + 32.0f);
        return result / PSI;
    }
};

TEST_F(BuiltInModulus, CarbonSteelAtTheTemperaturesOfTheTable) {
    const std::pair<Real, Real> table[] = {
        {0.0f, 210000.0f},   {20.0f, 209000.0f},  {100.0f, 205000.0f}, {150.0f, 202000.0f},
        {200.0f, 199000.0f}, {250.0f, 195000.0f}, {300.0f, 191000.0f}, {350.0f, 187000.0f},
        {400.0f, 181000.0f}, {450.0f, 178000.0f}, {500.0f, 174000.0f}, {550.0f, 168000.0f},
        {600.0f, 162000.0f}, {650.0f, 162000.0f}, {700.0f, 162000.0f}, {750.0f, 162000.0f},
        {800.0f, 162000.0f}};
    for (const auto& [C, E] : table)
        EXPECT_FLOAT_EQ(MPa(1.4f, C), E) << C;
}

TEST_F(BuiltInModulus, AusteniticSteelAtTheTemperaturesOfTheTable) {
    const std::pair<Real, Real> table[] = {
        {0.0f, 203000.0f},   {20.0f, 200000.0f},  {100.0f, 194000.0f}, {150.0f, 190000.0f},
        {200.0f, 185000.0f}, {250.0f, 181000.0f}, {300.0f, 176000.0f}, {350.0f, 172000.0f},
        {400.0f, 168000.0f}, {450.0f, 164000.0f}, {500.0f, 159000.0f}, {550.0f, 155000.0f},
        {600.0f, 151000.0f}, {650.0f, 147000.0f}, {700.0f, 142000.0f}, {750.0f, 138000.0f},
        {800.0f, 134000.0f}};
    for (const auto& [C, E] : table)
        EXPECT_FLOAT_EQ(MPa(1.1f, C), E) << C;
}

TEST_F(BuiltInModulus, TitaniumAtTheTemperaturesOfItsOwnAxis) {
    const std::pair<Real, Real> table[] = {
        {0.0f, 107900.0f},   {20.0f, 106900.0f}, {50.0f, 105500.0f}, {100.0f, 103100.0f},
        {150.0f, 100600.0f}, {200.0f, 96900.0f}, {250.0f, 92600.0f}, {300.0f, 88200.0f},
        {301.0f, 88200.0f},  {400.0f, 88200.0f}};
    for (const auto& [C, E] : table)
        EXPECT_FLOAT_EQ(MPa(0.95f, C), E) << C;
}

TEST_F(BuiltInModulus, BetweenTheTemperatures) {
    EXPECT_FLOAT_EQ(MPa(1.4f, 125.0f), 203500.0f);
    EXPECT_FLOAT_EQ(MPa(1.1f, 60.0f), 197000.0f);
    EXPECT_FLOAT_EQ(MPa(0.95f, 75.0f), 104300.0f);
}

TEST_F(BuiltInModulus, BeyondTheEnds) {
    EXPECT_FLOAT_EQ(MPa(1.4f, -50.0f), 210000.0f);
    EXPECT_FLOAT_EQ(MPa(1.4f, 900.0f), 162000.0f);
    EXPECT_FLOAT_EQ(MPa(1.1f, 900.0f), 134000.0f);
    EXPECT_FLOAT_EQ(MPa(0.95f, -50.0f), 107900.0f);
    EXPECT_FLOAT_EQ(MPa(0.95f, 299.0f), 88288.0f);
    EXPECT_FLOAT_EQ(MPa(0.95f, 300.0f), 88200.0f);
    EXPECT_FLOAT_EQ(MPa(0.95f, 1000.0f), 88200.0f);
}

TEST_F(BuiltInModulus, WholeDegreesCelsiusHalvesAwayFromZero) {
    Real at_149 = 0.0f, at_300_F = 0.0f, half = 0.0f;
    MODULUS(1.4f, at_149, 149.0f * 1.8f + 32.0f);
    MODULUS(1.4f, at_300_F, 300.0f); // 148.9 degrees
    EXPECT_EQ(at_300_F, at_149);
    MODULUS(1.4f, half, 32.9f); // 0.5 degrees counts as 1
    EXPECT_FLOAT_EQ(half / PSI, 209950.0f);
    MODULUS(1.4f, half, 32.8f);
    EXPECT_FLOAT_EQ(half / PSI, 210000.0f);
}

TEST_F(BuiltInModulus, AnUnknownClassHasNoModulus) {
    for (const Real other : {0.0f, 1.0f, 1.3f, 2.0f, -1.4f}) {
        Real result = 5.0f;
        MODULUS(other, result, 212.0f);
        EXPECT_EQ(result, 0.0f) << other;
    }
}

TEST_F(BuiltInModulus, TheSharedAxisStaysThatOfTheLastClass) {
    EXPECT_FLOAT_EQ(MPa(1.4f, 100.0f), 205000.0f);
    MPa(0.95f, 100.0f);
    EXPECT_FLOAT_EQ(MPa(1.4f, 100.0f), 202000.0f); // 100 is in fourth place now
    EXPECT_FLOAT_EQ(MPa(1.1f, 100.0f), 190000.0f);
    MPa(1.4f, 100.0f);
    EXPECT_FLOAT_EQ(MPa(1.4f, 100.0f), 202000.0f);
    // The moduli of carbon steel, each at the temperature of its place on the other axis.
    const std::pair<Real, Real> table[] = {
        {20.0f, 209000.0f},  {50.0f, 205000.0f},  {100.0f, 202000.0f}, {150.0f, 199000.0f},
        {200.0f, 195000.0f}, {250.0f, 191000.0f}, {300.0f, 187000.0f}, {400.0f, 181000.0f},
        {450.0f, 178000.0f}, {500.0f, 174000.0f}, {550.0f, 168000.0f}, {600.0f, 162000.0f}};
    for (const auto& [C, E] : table)
        EXPECT_FLOAT_EQ(MPa(1.4f, C), E) << C;
    EXPECT_FLOAT_EQ(MPa(1.4f, 350.0f), 184000.0f); // between the eighth and the ninth
    for (const auto& [C, E] : {std::pair(650.0f, 147000.0f), std::pair(700.0f, 142000.0f),
                               std::pair(750.0f, 138000.0f), std::pair(800.0f, 134000.0f)})
        EXPECT_FLOAT_EQ(MPa(1.1f, C), E) << C;
    RESET_MATERIALS();
    EXPECT_FLOAT_EQ(MPa(1.4f, 100.0f), 205000.0f);
}

TEST_F(BuiltInModulus, WhatNoIntegerHoldsIsBelowTheAxis) {
    for (const Real T : {std::nanf(""), 1.0e12f, -1.0e12f, INFINITY}) {
        Real result = 0.0f;
        MODULUS(1.4f, result, T);
        EXPECT_FLOAT_EQ(result / PSI, 210000.0f) << T;
    }
}

TEST(ChartClass, ByEqualityOfTheWholeName) {
    EXPECT_EQ(CHART_CLASS("HA-3"), 1.1f);
    EXPECT_EQ(CHART_CLASS("HA-3        "), 1.1f);
    EXPECT_EQ(CHART_CLASS("NFT-1   "), 0.95f);
    for (const char* name : {"CS-2", "HA-1", "HA-33", " HA-3", "ha-3", "NFT-11", ""})
        EXPECT_EQ(CHART_CLASS(name), 1.4f) << name;
}

TEST(SetChart, CutsAndPads) {
    SET_CHART("NFA-11-X-LONG");
    EXPECT_EQ(CHART_NAME.view(), "NFA-11-X");
    SET_CHART("CS-2");
    EXPECT_EQ(CHART_NAME.view(), "CS-2    ");
    SET_CHART(std::string_view("\0\0", 2));
    EXPECT_FALSE(CHART_NAME.blank());
    RESET_SWITCHES();
}

// ---- the charts ----------------------------------------------------------------------------------

// Two charts of the common kind, one without a blank line after it, those that depend on the yield
// stress, and one of ten rows.
constexpr const char* CHARTS = "; charts of the test [CS-2]\n"
                               "  ; another comment\n"
                               "[CS-2]\n"
                               "\n"
                               "; a comment within the section\n"
                               "300 9 29.0 1.0E-3 14500 0.1 15000 10 20 30\n"
                               "500 9 27.0 2.0E-3 13500 0.2 13000 12 22 34\n"
                               "\n"
                               "900 9 1 1 1 1 1 1 1 1\n"
                               "text [HA-1] text\n"
                               "100 9 28.0 1.0E-3 14000 0.1 11000 1 2 3\n"
                               "\n"
                               "[CS-3]\n"
                               "300.4 9 29.1 4 4 4 24000 4 4 4\n"
                               "300.5 9 29.2 5 5 5 25000 5 5 5\n"
                               "300.6 9 29.3 6 6 6 26000 6 6 6\n"
                               "\n"
                               "[NFA-11]\n"
                               "150.14 9 10.1 14 14 14 14000 14 14 14\n"
                               "150.16 9 10.2 16 16 16 16000 16 16 16\n"
                               "150.18 9 10.3 18 18 18 18000 18 18 18\n"
                               "\n"
                               "[HT-2]\n"
                               "100 9 30.0 7 7 7 30000 7 7 7\n"
                               "\n"
                               "[BAD]\n"
                               "100 9 30.0 7 7\n"
                               "\n"
                               "[ BLANK]\n"
                               "100 9 33.0 7 7 7 30000 7 7 7\n"
                               "\n"
                               "[OPEN]\n"
                               "100 9 31.0 7 7 7 30000 7 7 7\n"
                               "[END]\n";

struct Chart : CHART_CURVE {
    Chart() : CHART_CURVE{-1, -2, -3, -4, -5, -6, -7, -8, -9} {}
    bool untouched() const {
        return t_used == -1 && E == -2 && Aelastic == -3 && second == -4 && Amax == -5 &&
               Bmax == -6 && c0 == -7 && c1 == -8 && c2 == -9;
    }
};

class Charts : public data_test::DataTest {
  protected:
    Charts() { use(CHARTS); }
    void use(const std::string& text) {
        write_file("system", "ExtChartData.txt", text);
        RESET_MATERIALS();
    }

    static Chart look_up(std::string_view name, Real T, Real yield = 0.0f) {
        Text<12> field(name);
        Chart c;
        READ_CHART(field.data(), 12, T, c.t_used, c.E, c.Aelastic, c.second, c.Amax, c.Bmax, c.c0,
                   c.c1, c.c2, yield);
        return c;
    }
    static Real yield_of(std::string_view name, Real T) {
        Real result = -1.0f;
        GET_YIELD_STRESS_FROM_CHART(name, T, result);
        return result;
    }
};

TEST_F(Charts, BelowTheFirstRowItsValuesHold) {
    for (const Real T : {-20.0f, 100.0f, 300.0f}) {
        const Chart c = look_up("CS-2", T);
        EXPECT_EQ(c.t_used, T);
        EXPECT_EQ(c.E, 29.0f);
        EXPECT_EQ(c.Aelastic, 1.0e-3f);
        EXPECT_EQ(c.second, 14500.0f);
        EXPECT_EQ(c.Amax, 0.1f);
        EXPECT_EQ(c.Bmax, 15000.0f);
        EXPECT_EQ(c.c0, 10.0f);
        EXPECT_EQ(c.c1, 20.0f);
        EXPECT_EQ(c.c2, 30.0f);
    }
}

TEST_F(Charts, BetweenTwoRowsEveryNumberIsInterpolated) {
    const Chart c = look_up("CS-2", 350.0f);
    EXPECT_EQ(c.t_used, 350.0f);
    EXPECT_FLOAT_EQ(c.E, 28.5f);
    EXPECT_FLOAT_EQ(c.Aelastic, 1.25e-3f);
    EXPECT_FLOAT_EQ(c.second, 14250.0f);
    EXPECT_FLOAT_EQ(c.Amax, 0.125f);
    EXPECT_FLOAT_EQ(c.Bmax, 14500.0f);
    EXPECT_FLOAT_EQ(c.c0, 10.5f);
    EXPECT_FLOAT_EQ(c.c1, 20.5f);
    EXPECT_FLOAT_EQ(c.c2, 31.0f);
}

TEST_F(Charts, AboveTheLastRowItIsTakenAndItsTemperatureTells) {
    const Chart c = look_up("CS-2", 800.0f); // what comes after the blank line is no row
    EXPECT_EQ(c.t_used, 500.0f);
    EXPECT_EQ(c.E, 27.0f);
    EXPECT_EQ(c.Bmax, 13000.0f);
    EXPECT_EQ(look_up("HA-1", 101.0f).t_used, 100.0f);
}

TEST_F(Charts, AChartThatIsNotInTheFileIsCS2) {
    const Chart c = look_up("XX-9", 350.0f);
    EXPECT_FLOAT_EQ(c.E, 28.5f);
    EXPECT_EQ(c.t_used, 350.0f);
    EXPECT_FLOAT_EQ(look_up("cs-3", 350.0f).E, 28.5f);  // names differ by case
    EXPECT_FLOAT_EQ(look_up("BLANK", 100.0f).E, 29.0f); // its bracket has a blank in front
    EXPECT_FLOAT_EQ(look_up(" BLANK", 100.0f).E, 33.0f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(Charts, CS2MayBeTheFirstLineOfTheFile) {
    use("[CS-2]\n300 9 29 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_EQ(look_up("CS-2", 300.0f).E, 29.0f);
    EXPECT_EQ(look_up("XX-9", 300.0f).E, 29.0f);
}

TEST_F(Charts, NeitherTheChartNorCS2) {
    use("[HA-1]\n100 9 28 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_TRUE(look_up("XX-9", 100.0f).untouched());
    EXPECT_TRUE(look_up("CS-2", 100.0f).untouched());
}

TEST_F(Charts, ABlankNameIsCS2WithAWarning) {
    EXPECT_EQ(look_up("", 300.0f).E, 29.0f);
    const Style marks{0, 0, 0, 0, 1, 1};
    EXPECT_EQ(reported(), (std::vector<Line>{
                              {""},
                              {std::string(58, '-')},
                              {"An Invalid External Pressure Chart was Encountered! Please", marks},
                              {"check all of the Materials used in this vessel.", marks},
                              {"Chart CS-2 will be used!", marks},
                              {std::string(57, '-')},
                              {""}}));
    EXPECT_EQ(look_up("        CS-3", 300.0f).E, 29.0f); // columns 9 to 12 do not count
    EXPECT_EQ(reported().size(), 7u);
}

TEST_F(Charts, OnlyEightColumnsOfTheNameCountAndTheFieldStays) {
    Text<12> field("HA-1    CS-3");
    Chart c;
    READ_CHART(field.data(), 12, 100.0f, c.t_used, c.E, c.Aelastic, c.second, c.Amax, c.Bmax, c.c0,
               c.c1, c.c2, 0.0f);
    EXPECT_EQ(c.E, 28.0f);
    EXPECT_EQ(field.view(), "HA-1    CS-3");

    use("[NFA-11-X]\n100 9 31 1 1 1 1 1 1 1\n200 9 31 1 1 1 1 1 1 1\n\n"
        "[ABCDEFGH]\n100 9 32 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_EQ(look_up("ABCDEFGHIJKL", 100.0f).E, 32.0f);
    EXPECT_EQ(look_up("NFA-11-X", 100.0f).t_used, 100.0f); // one of the charts of the yield
    EXPECT_EQ(look_up("NFA-11-X", 190.0f).t_used, 150.0f);
}

TEST_F(Charts, ACurveIsReadAsItsNumbersAre) {
    for (const Real T : {20.0f, 350.0f, 800.0f}) {
        const Chart numbers = look_up("CS-2", T);
        Chart curve;
        READ_CHART("CS-2", T, curve, 0.0f);
        EXPECT_FALSE(curve.untouched());
        EXPECT_EQ(std::memcmp(&curve, &numbers, sizeof curve), 0) << T;
    }
    Chart broken;
    READ_CHART("BAD", 50.0f, broken, 0.0f);
    EXPECT_TRUE(broken.untouched());
}

TEST_F(Charts, AShorterFieldIsReadAsFarAsItGoes) {
    char field[] = {'H', 'A', '-', '1', '?'};
    Chart c;
    READ_CHART(field, 4, 100.0f, c.t_used, c.E, c.Aelastic, c.second, c.Amax, c.Bmax, c.c0, c.c1,
               c.c2, 0.0f);
    EXPECT_EQ(c.E, 28.0f);
    EXPECT_EQ(field[4], '?');
}

TEST_F(Charts, ALineEndsAtColumn115) {
    std::string row = "300 9 29 1 1 1 1 1 1";
    row.resize(113, ' ');
    use("[CS-2]\n" + row + "123\n\n[END]\n"); // the last number in columns 114 to 116
    EXPECT_EQ(look_up("CS-2", 300.0f).c2, 12.0f);
}

// A chart that CS-2 replaces for its temperature or a blank name is looked for as CS-2 from the start, not
// after the walk for its own name: in a file without "[END]" the walk does not start over.
TEST_F(Charts, TheStandInIsLookedForAtOnce) {
    use("[CS-2]\n300 9 29 1 1 1 1 1 1 1\n\n");
    EXPECT_EQ(look_up("CS-3", 301.0f).E, 29.0f);
    EXPECT_EQ(look_up("HT-2", 101.0f).E, 29.0f);
    EXPECT_EQ(look_up("", 200.0f).E, 29.0f);
    EXPECT_EQ(look_up("CS-3", 300.0f, 40000.0f).E, -2.0f);
    EXPECT_EQ(look_up("HT-2", 100.0f).E, -2.0f);
}

TEST_F(Charts, AMissingFileLeavesEverythingAsItWasAndIsLookedForAgain) {
    remove_file("system", "ExtChartData.txt");
    RESET_MATERIALS();
    EXPECT_TRUE(look_up("CS-2", 300.0f).untouched());
    write_file("system", "ExtChartData.txt", CHARTS);
    EXPECT_EQ(look_up("CS-2", 300.0f).E, 29.0f);
}

TEST_F(Charts, AFileWithoutItsEndIsUsedAndReadAgain) {
    use("[CS-2]\n300 9 29 1 1 1 1 1 1 1\n\n");
    EXPECT_EQ(look_up("CS-2", 300.0f).E, 29.0f);
    EXPECT_TRUE(look_up("HA-1", 300.0f).untouched()); // the walk does not start over
    write_file("system", "ExtChartData.txt", "[CS-2]\n300 9 19 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_EQ(look_up("CS-2", 300.0f).E, 19.0f);
    write_file("system", "ExtChartData.txt", CHARTS);
    EXPECT_EQ(look_up("CS-2", 300.0f).E, 19.0f); // kept from now on
}

TEST_F(Charts, OnlyTheFirst650LinesAreRead) {
    std::string filler;
    for (int i = 0; i < 649; ++i)
        filler += "; filler\n";
    use("[CS-2]\n300 9 29 1 1 1 1 1 1 1\n\n" + filler + "[HA-1]\n300 9 1 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_EQ(look_up("CS-2", 300.0f).E, 29.0f);
    EXPECT_TRUE(look_up("HA-1", 300.0f).untouched());
    // Three lines, 646 and the end make 650; one more is not seen.
    const std::string cs_2 = "[CS-2]\n300 9 29 1 1 1 1 1 1 1\n\n";
    const std::string lines_646 = filler.substr(0, 646 * std::string("; filler\n").size());
    use(cs_2 + lines_646 + "[END]\n");
    EXPECT_EQ(look_up("HA-1", 300.0f).E, 29.0f);
    use(cs_2 + lines_646 + "; filler\n[END]\n");
    EXPECT_TRUE(look_up("HA-1", 300.0f).untouched());
}

TEST_F(Charts, TheFileLiesInTheSystemFolderOnly) {
    remove_file("system", "ExtChartData.txt");
    RESET_MATERIALS();
    write_file("library", "ExtChartData.txt", CHARTS);
    EXPECT_TRUE(look_up("CS-2", 300.0f).untouched());
}

TEST_F(Charts, ARowThatCannotBeReadEndsTheLookup) {
    EXPECT_TRUE(look_up("BAD", 100.0f).untouched());
    // A section that runs into the next bracket: its last row is not found to be the last.
    EXPECT_TRUE(look_up("OPEN", 200.0f).untouched());
    EXPECT_EQ(look_up("OPEN", 100.0f).E, 31.0f);
}

TEST_F(Charts, BehindTenRowsTheWalkGoesOn) {
    std::string text = "[TEN]\n";
    for (int i = 1; i <= 10; ++i)
        text += std::to_string(i * 100) + " 9 " + std::to_string(i) + " 1 1 1 1 1 1 1\n";
    const std::string tail = "\n[CS-2]\n300 9 29 1 1 1 1 1 1 1\n\n[END]\n";
    use(text + tail);
    EXPECT_EQ(look_up("TEN", 1000.0f).E, 10.0f);
    EXPECT_EQ(look_up("TEN", 1001.0f).E, 29.0f); // "[END]" came first: CS-2 is used
    use(text + "\n[TEN]\n2000 9 77 1 1 1 1 1 1 1\n" + tail);
    EXPECT_EQ(look_up("TEN", 1001.0f).E, 77.0f);
}

// ---- charts that depend on the yield stress ------------------------------------------------------

TEST_F(Charts, CS3AboveThreeHundredIsCS2) {
    const Chart c = look_up("CS-3", 350.0f, 38000.0f);
    EXPECT_FLOAT_EQ(c.E, 28.5f);
    EXPECT_EQ(c.t_used, 350.0f);
    const Chart above = look_up("CS-3", std::nextafter(300.0f, 400.0f), 38000.0f);
    EXPECT_FLOAT_EQ(above.Bmax, 15000.0f);
    EXPECT_EQ(above.t_used, std::nextafter(300.0f, 400.0f));
    EXPECT_EQ(look_up("CS-3", 900.0f, 38000.0f).t_used, 500.0f); // its own limit
    EXPECT_EQ(look_up("CS-3", 300.0f, 38000.0f).Bmax, 24000.0f);
    use("[CS-2]\n200 9 29 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_EQ(look_up("CS-3", 301.0f).t_used, 200.0f); // the limit of CS-2 is returned
    EXPECT_EQ(look_up("CS-3", 300.0f).t_used, 300.0f);
}

TEST_F(Charts, CS3TakesTheRowOfTheYield) {
    Chart c = look_up("CS-3", 200.0f, 38000.0f);
    EXPECT_EQ(c.Bmax, 24000.0f); // at least the row 300.4
    EXPECT_EQ(c.t_used, 200.0f);
    c = look_up("CS-3", 300.0f, 50000.0f);
    EXPECT_NEAR(c.Bmax, 25000.0f, 1.0f);
    EXPECT_EQ(c.t_used, 300.0f);
    EXPECT_NEAR(look_up("CS-3", 300.0f, 45000.0f).Bmax, 24500.0f, 1.0f);
    EXPECT_NEAR(look_up("CS-3", 300.0f, 59999.9f).Bmax, 26000.0f, 1.0f);
    EXPECT_EQ(look_up("CS-3", 300.0f, 60000.0f).Bmax, 26000.0f);
    EXPECT_EQ(look_up("CS-3", 300.0f, 90000.0f).Bmax, 26000.0f);
    // From 60000 on the row is 300.6, whatever follows it.
    use("[CS-3]\n300.5 9 1 1 1 1 25000 1 1 1\n300.7 9 1 1 1 1 27000 1 1 1\n\n[END]\n");
    EXPECT_NEAR(look_up("CS-3", 300.0f, 60000.0f).Bmax, 26000.0f, 1.0f);
    EXPECT_NEAR(look_up("CS-3", 300.0f, 70000.0f).Bmax, 26000.0f, 1.0f);
}

TEST_F(Charts, NFA11TakesTheRowOfTheYieldAtEveryTemperature) {
    Chart c = look_up("NFA-11", 200.0f, 20000.0f);
    EXPECT_EQ(c.Bmax, 18000.0f);
    EXPECT_EQ(c.t_used, 150.0f);
    c = look_up("NFA-11", 100.0f, 16000.0f);
    EXPECT_NEAR(c.Bmax, 16000.0f, 2.0f);
    EXPECT_EQ(c.t_used, 100.0f);
    EXPECT_EQ(look_up("NFA-11", 100.0f, 5000.0f).Bmax, 14000.0f);
    EXPECT_EQ(look_up("NFA-11", 100.0f, 18000.0f).Bmax, 18000.0f);
    // From 18000 on the row is 150.18, whatever follows it.
    use("[NFA-11]\n150.16 9 1 1 1 1 16000 1 1 1\n150.20 9 1 1 1 1 20000 1 1 1\n\n[END]\n");
    EXPECT_NEAR(look_up("NFA-11", 100.0f, 18000.0f).Bmax, 18000.0f, 2.0f);
    EXPECT_NEAR(look_up("NFA-11", 100.0f, 30000.0f).Bmax, 18000.0f, 2.0f);
}

TEST_F(Charts, ANameWithNFA11BehindItsBeginningHasItsOwnRowsButTheSameLimit) {
    use("[XNFA-11]\n100 9 31 1 1 1 1 1 1 1\n200 9 41 1 1 1 1 1 1 1\n\n[END]\n");
    EXPECT_EQ(look_up("XNFA-11", 200.0f).E, 41.0f);
    EXPECT_EQ(look_up("XNFA-11", 200.0f).t_used, 150.0f);
    EXPECT_EQ(look_up("XNFA-11", 120.0f).t_used, 120.0f);
}

TEST_F(Charts, HT2AboveAHundredIsCS2) {
    EXPECT_EQ(look_up("HT-2", 100.0f).E, 30.0f);
    EXPECT_EQ(look_up("HT-2", 100.1f).E, 29.0f);
    EXPECT_EQ(look_up("HT-2", 100.1f).t_used, 100.1f);
}

TEST_F(Charts, TheTemperatureUsedIsToldEvenWithoutAFile) {
    remove_file("system", "ExtChartData.txt");
    RESET_MATERIALS();
    EXPECT_EQ(look_up("CS-3", 200.0f, 40000.0f).t_used, 200.0f);
    EXPECT_EQ(look_up("CS-3", 350.0f, 40000.0f).t_used, -1.0f);
    EXPECT_EQ(look_up("NFA-11", 200.0f, 40000.0f).t_used, 150.0f);
}

// ---- design codes without charts -----------------------------------------------------------------

TEST_F(Charts, TheEuropeanCodesGiveTheModulusAlone) {
    for (const Int code : {PD_5500, EN_13445}) {
        SETUP[0].whole = code;
        Chart c = look_up("CS-2", 212.0f);
        EXPECT_FLOAT_EQ(c.E, 205000.0f * PSI / 1.0E+6f);
        c.E = -2;
        EXPECT_TRUE(c.untouched());
        EXPECT_FLOAT_EQ(look_up("HA-3", 212.0f).E, 194000.0f * PSI / 1.0E+6f);
        EXPECT_EQ(look_up("CS-3", 212.0f).t_used, -1.0f);
    }
    for (const Int code : {0, ASME_VIII_1, ASME_VIII_2}) {
        SETUP[0].whole = code;
        moduleCode = EN_13445; // not the one that counts
        EXPECT_EQ(look_up("CS-2", 212.0f).E, 29.0f);
    }
}

// ---- the yield stress ----------------------------------------------------------------------------

TEST_F(Charts, YieldIsTwiceTheTopOfTheCurve) {
    EXPECT_EQ(yield_of("CS-2", 100.0f), 30000.0f);
    EXPECT_FLOAT_EQ(yield_of("CS-2", 400.0f), 28000.0f);
    EXPECT_EQ(yield_of("HA-1", 50.0f), 22000.0f);
}

TEST_F(Charts, NoYieldFromAChartThatAsksForIt) {
    EXPECT_EQ(yield_of("CS-3", 300.0f), 0.0f);
    EXPECT_EQ(yield_of("CS-3", std::nextafter(300.0f, 400.0f)), 30000.0f);
    EXPECT_FLOAT_EQ(yield_of("CS-3", 400.0f), 28000.0f); // CS-2
    EXPECT_EQ(yield_of("NFA-11", 150.0f), 0.0f);
    EXPECT_EQ(yield_of("NFA-11", 151.0f), 28000.0f); // the row for a yield of 0
}

TEST_F(Charts, NoYieldWithoutCharts) {
    SETUP[0].whole = EN_13445;
    EXPECT_EQ(yield_of("CS-2", 100.0f), 0.0f);
    SETUP[0].whole = ASME_VIII_1;
    remove_file("system", "ExtChartData.txt");
    EXPECT_EQ(yield_of("CS-2", 100.0f), 0.0f);
}

} // namespace
} // namespace tarvane
