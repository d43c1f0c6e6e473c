// The impact table of the host's record, and the values looked up in it.
#include "mdmt_fixture.h"

namespace tarvane {
namespace {

class ImpactTable : public toughness_test::ToughnessTest {
  protected:
    static Real temperature(std::string_view name, Int Kind) {
        Real T = 7.0f;
        IMPACT_TEST_TEMPERATURE(name, T, Kind);
        return T;
    }
    static Real ug84(Real yield) {
        Real R = 7.0f;
        UG84_REDUCTION(R, yield);
        return R;
    }
    static std::string switches() {
        std::string on;
        for (const bool s : {G_IMPACT.Ucs66g, G_IMPACT.Ucs66_1, G_IMPACT.Ug84, G_IMPACT.UserTable})
            on += s ? '1' : '0';
        return on;
    }
};

TEST_F(ImpactTable, OffAtLoad) {
    EXPECT_EQ(switches(), "0000");
    EXPECT_EQ(temperature("SA-350 LF2", 1), 100.0f);
    EXPECT_EQ(ug84(30.0f), 0.0f);
}

TEST_F(ImpactTable, SwitchesInTheirOrderOnWhenOne) {
    for (const char* const text : {"1000", "0100", "0010", "0001"}) {
        HOST_RECORD.impact_switches = text;
        READ_IMPACT_TABLE();
        EXPECT_EQ(switches(), text);
    }
    HOST_RECORD.impact_switches = "2Yy 1";
    READ_IMPACT_TABLE();
    EXPECT_EQ(switches(), "0000");
}

TEST_F(ImpactTable, EachKindHasItsList) {
    const char* const counts[] = {"2", "1", "1"};
    for (Int k = 0; k < 3; ++k) {
        HOST_RECORD.impact_counts[k] = counts[k];
        HOST_RECORD.impact_names[k][0] = "SA-350 LF2";
    }
    HOST_RECORD.impact_numbers[0][0] = "-50";
    HOST_RECORD.impact_names[0][1] = "SA-420 WPL6";
    HOST_RECORD.impact_numbers[0][1] = "  -49.5";
    HOST_RECORD.impact_numbers[1][0] = "-20";
    HOST_RECORD.impact_numbers[2][0] = "cold"; // no number
    HOST_RECORD.single_name = "SA-350 LF2";
    HOST_RECORD.single_number = "-150.";
    impact_table("0001");
    EXPECT_EQ(temperature("SA-350 LF2", 1), -50.0f);
    EXPECT_EQ(temperature("SA-350 LF2", 2), -20.0f);
    EXPECT_EQ(temperature("SA-350 LF2", 3), 0.0f);
    EXPECT_EQ(temperature("SA-350 LF2", 4), -150.0f);
    EXPECT_EQ(temperature("SA-420 WPL6", 1), 100.0f) << "one entry counts";
    HOST_RECORD.impact_counts[0] = "2";
    EXPECT_EQ(temperature("SA-420 WPL6", 1), 100.0f) << "until the table is read again";
    READ_IMPACT_TABLE();
    EXPECT_EQ(temperature("SA-420 WPL6", 1), -49.5f);
    for (const Int Kind : {0, 5, -1, INT32_MIN, INT32_MAX})
        EXPECT_EQ(temperature("SA-350 LF2", Kind), 100.0f) << Kind;
    HOST_RECORD.impact_switches = "1110";
    READ_IMPACT_TABLE();
    EXPECT_EQ(temperature("SA-350 LF2", 1), 100.0f);
}

TEST_F(ImpactTable, NamesArePaddedToSixteenColumns) {
    impact_table("0001", "ABCDEFGHIJKLMNOP");
    EXPECT_EQ(temperature("ABCDEFGHIJKLMNOP", 1), -50.0f);
    EXPECT_EQ(temperature("ABCDEFGHIJKLMNOPQR", 1), -50.0f) << "16 columns count";
    EXPECT_EQ(temperature("ABCDEFGHIJKLMNO", 1), 100.0f);
    EXPECT_EQ(temperature("abcdefghijklmnop", 1), 100.0f);
    impact_table("0001", "LF2");
    EXPECT_EQ(temperature("LF2     ", 1), -50.0f);
    EXPECT_EQ(temperature(" LF2", 1), 100.0f);
}

TEST_F(ImpactTable, CountsAreHeldToTheElevenPlaces) {
    for (Int i = 0; i < 11; ++i) {
        HOST_RECORD.impact_names[2][i](1) = static_cast<char>('A' + i);
        HOST_RECORD.impact_numbers[2][i] = std::to_string(-i).c_str();
    }
    struct {
        const char* count;
        Int counts;
    } const rows[] = {{"0", 0},   {"-3", 0}, {"1", 1},    {"10.9", 10}, {"11", 11},
                      {"99", 11}, {"", 0},   {"1e30", 0}, {"many", 0},  {"12", 11}};
    for (const auto& row : rows) {
        HOST_RECORD.impact_counts[2] = row.count;
        impact_table("0001");
        for (Int i = 0; i < 11; ++i) {
            const char name = static_cast<char>('A' + i);
            EXPECT_EQ(temperature({&name, 1}, 3), i < row.counts ? static_cast<Real>(-i) : 100.0f)
                << row.count << " entry " << i;
        }
    }
}

TEST_F(ImpactTable, Ug84ByTheYieldStrength) {
    EXPECT_EQ(ug84(36.0f), 0.0f) << "off with the user's table";
    impact_table("0001");
    EXPECT_EQ(ug84(36.0f), 10.0f);
    EXPECT_EQ(ug84(40.0f), 10.0f);
    EXPECT_EQ(ug84(40.01f), 5.0f);
    EXPECT_EQ(ug84(54.99f), 5.0f);
    EXPECT_EQ(ug84(55.0f), 0.0f);
    EXPECT_EQ(ug84(NAN), 0.0f);
}

TEST_F(ImpactTable, ElementsWithATemperatureOfTheirOwn) {
    HOST_RECORD.own_mdmt[0] = "1000000000000001";
    HOST_RECORD.own_mdmt[1] = "01";
    EXPECT_FALSE(LIS_ELEMENT_HAS_OWN_MDMT(1)) << "without the version mark";
    HOST_RECORD.version_mark = "20-24";
    for (Int element = -2; element <= 40; ++element)
        EXPECT_EQ(LIS_ELEMENT_HAS_OWN_MDMT(element), element == 1 || element == 16 || element == 18)
            << element;
    EXPECT_FALSE(LIS_ELEMENT_HAS_OWN_MDMT(INT32_MIN));
    EXPECT_FALSE(LIS_ELEMENT_HAS_OWN_MDMT(INT32_MAX));
}

} // namespace
} // namespace tarvane
