#include "toughness/pwht.h"

#include "../data_folder.h"
#include "../material_file.h"
#include "frame/units.h"

namespace tarvane {
namespace {

using material_test::material_file;
using material_test::Record;

class Pwht : public data_test::DataTest {
  protected:
    Int required = 7, pNumberOne = 7, groupCode = 7;

    void SetUp() override {
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
        SET_METRIC_CONSTANTS();
    }
    // The answer for a material of this P-Number and group.
    Int need(const char* pNumber, Int group, Real thickness, Int rule = 1, Int forced = 0,
             Int preheat = 0, const char* name = "SA-387 11") {
        const std::string file =
            material_file(1, 0, {Record(name, 5).text(144, pNumber).put(152, group)});
        write_file("system", "MATFILE1.BIN", file);
        write_file("system", "MATFILE2.BIN", file);
        PWHT_NEEDED(name, 5, rule, forced, thickness, required, pNumberOne, preheat, groupCode);
        return required;
    }
};

TEST_F(Pwht, CarbonSteelAboveItsLimit) {
    EXPECT_EQ(need("1", 1, 1.25f), 0);
    EXPECT_EQ(need("1", 1, 1.250005f), 0); // Division 1 adds 1e-05
    EXPECT_EQ(need("1", 1, 1.2501f), 1);
    EXPECT_EQ(need("1", 1, 1.25f, 2), 0);
    EXPECT_EQ(need("1", 1, 1.250005f, 2), 1);
}

TEST_F(Pwht, PreheatRelaxesCarbonSteelToOneAndAHalfInches) {
    EXPECT_EQ(need("1", 2, 1.5f, 1, 0, 1), 0);
    EXPECT_EQ(need("1", 2, 1.51f, 1, 0, 1), 1);
    EXPECT_EQ(need("1", 2, 1.5f, 2, 0, 1), 0);
    EXPECT_EQ(need("1", 2, 1.51f, 2, 0, 1), 1);
}

TEST_F(Pwht, ForcedButNotForAusteniticSteel) {
    EXPECT_EQ(need("1", 1, 0.1f, 1, 1), 1);
    EXPECT_EQ(need("8", 1, 9.0f, 1, 1), 0);
    EXPECT_EQ(need("8", 1, 9.0f, 2, 1), 0);
}

TEST_F(Pwht, AnUnknownNameIsNotJudged) {
    PWHT_NEEDED("NO SUCH", 5, 1, 0, 2.0f, required, pNumberOne, 0, groupCode);
    EXPECT_EQ(required, -1);
    EXPECT_EQ(pNumberOne, 0);
    EXPECT_EQ(groupCode, 0);
}

TEST_F(Pwht, GroupCodes) {
    need("1", 2, 0.5f);
    EXPECT_EQ(pNumberOne, 1);
    EXPECT_EQ(groupCode, 1);
    need("1", 3, 0.5f);
    EXPECT_EQ(pNumberOne, 1);
    EXPECT_EQ(groupCode, -3);
    need("5A", 1, 0.5f);
    EXPECT_EQ(pNumberOne, 0);
    EXPECT_EQ(groupCode, -1);
    need("8", 1, 0.5f);
    EXPECT_EQ(groupCode, 0);
}

TEST_F(Pwht, RulesOfTheDivisionsByPNumber) {
    struct {
        const char* pNumber;
        Int group;
        Real thickness;
        Int division1, division2;
    } const rows[] = {
        {"3", 1, 0.625f, 0, 0}, {"3", 2, 0.6251f, 1, 1}, {"3", 3, 0.1f, 1, 1},
        {"4", 1, 0.1f, 1, 0},   {"4", 2, 9.0f, 1, 0},    {"4", 3, 9.0f, 0, 0},
        {"5A", 1, 0.1f, 1, 1},  {"5B", 1, 0.1f, 1, 1},   {"5C", 1, 0.1f, 1, 0},
        {"7", 1, 9.0f, 0, 1},   {"9A", 1, 0.625f, 0, 0}, {"9A", 1, 0.6251f, 1, 1},
        {"9B", 1, 0.7f, 1, 1},  {"9B", 2, 9.0f, 0, 0},   {"10A", 1, 0.625f, 0, 0},
        {"10A", 1, 0.7f, 1, 1}, {"10B", 1, 0.1f, 1, 1},  {"10C", 1, 1.25f, 0, 0},
        {"10C", 1, 1.3f, 1, 0}, {"10E", 1, 0.1f, 0, 1},  {"10F", 1, 0.1f, 1, 1},
        {"11A", 1, 9.0f, 0, 0}, {" 5 A", 1, 0.1f, 1, 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(need(row.pNumber, row.group, row.thickness, 1), row.division1) << row.pNumber;
        EXPECT_EQ(need(row.pNumber, row.group, row.thickness, 2), row.division2) << row.pNumber;
        EXPECT_EQ(need(row.pNumber, row.group, row.thickness, 3), 0) << row.pNumber;
    }
}

TEST_F(Pwht, GradesOfTheirOwn) {
    for (const char* name : {"SA-202 A", "SA-202 B"})
        for (const Int rule : {1, 2}) {
            EXPECT_EQ(need("4", 1, 0.625f, rule, 0, 0, name), 0) << name;
            EXPECT_EQ(need("4", 1, 0.6251f, rule, 0, 0, name), 1) << name;
        }
    EXPECT_EQ(need("4", 1, 0.1f, 1, 0, 0, "SA-202 a"), 1); // the name is taken as it is
    for (const char* name : {"SA-487 1", "SA-487 2"})
        EXPECT_EQ(need("10A", 1, 0.1f, 1, 0, 0, name), 1);
}

TEST_F(Pwht, LimitsOfTheMetricConstants) {
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS();
    EXPECT_EQ(need("1", 1, 1.255f), 0); // 32 mm
    EXPECT_EQ(need("1", 1, 1.261f), 1);
}

TEST_F(Pwht, ForcedHoldsForEveryOtherPNumber) {
    for (const char* const pNumber : {"1", "3", "4", "5A", "7", "9A", "10A", "10C", "11A", ""})
        for (const Int rule : {1, 2}) {
            EXPECT_EQ(need(pNumber, 1, 0.1f, rule, 1), 1) << pNumber << " rule " << rule;
            const Int unforced = need(pNumber, 1, 0.1f, rule, 0);
            EXPECT_EQ(need(pNumber, 1, 0.1f, rule, 2), unforced) << "1 forces, nothing else";
        }
    EXPECT_EQ(need("1", 1, 9.0f, 3, 1), 0) << "no rule, nothing to force";
}

TEST_F(Pwht, GroupsThatNoTestNames) {
    for (const Int rule : {1, 2}) {
        EXPECT_EQ(need("3", 4, 9.0f, rule), 0);
        EXPECT_EQ(need("3", 0, 9.0f, rule), 0);
        EXPECT_EQ(need("4", 3, 9.0f, rule, 0, 0, "SA-202 A"), 0);
        EXPECT_EQ(need("9A", 2, 9.0f, rule), 0);
    }
}

TEST_F(Pwht, PNumberIsComparedWithoutBlanksAndNuls) {
    const std::string_view written[] = {{" 1      ", 8}, {"\0 1 \0\0\0\0", 8}, {"       1", 8}};
    for (const std::string_view pNumber : written) {
        write_file("system", "MATFILE1.BIN",
                   material_file(1, 0, {Record("X", 5).text(144, pNumber).put(152, Int{1})}));
        PWHT_NEEDED("X", 5, 1, 0, 1.3f, required, pNumberOne, 0, groupCode);
        EXPECT_EQ(required, 1);
        EXPECT_EQ(pNumberOne, 1);
    }
    EXPECT_EQ(need("1A", 1, 9.0f), 0);
    EXPECT_EQ(need("5a", 1, 9.0f), 0) << "its letters count as they are";
}

TEST_F(Pwht, GroupOfAnAusteniticSteelCountsWithoutARule) {
    need("8", 2, 0.5f, 3);
    EXPECT_EQ(groupCode, -2);
    need("8", 2, 0.5f, 2);
    EXPECT_EQ(groupCode, 0);
    need("1", 1, 9.0f, 0);
    EXPECT_EQ(pNumberOne, 1);
    EXPECT_EQ(groupCode, 1);
}

TEST_F(Pwht, EachRuleReadsTheFileOfItsDivision) {
    write_file("system", "MATFILE1.BIN", material_file(1, 0, {Record("X", 5).text(144, "7")}));
    write_file("system", "MATFILE2.BIN", material_file(1, 0, {Record("X", 5).text(144, "5C")}));
    const auto answer = [&](Int rule) {
        PWHT_NEEDED("X", 5, rule, 0, 1.0f, required, pNumberOne, 0, groupCode);
        return required;
    };
    // P-Number 7 belongs to Division 2, 5C to Division 1: neither finds its own here.
    EXPECT_EQ(answer(1), 0);
    EXPECT_EQ(answer(2), 0);
    remove_file("system", "MATFILE2.BIN");
    EXPECT_EQ(answer(2), -1);
    EXPECT_EQ(answer(3), 0) << "other rules read the file of Division 1";
    G_FORCE_DIV1 = 1;
    EXPECT_EQ(answer(2), 1) << "the file of Division 1 by the rules of Division 2";
}

TEST_F(Pwht, SixteenColumnsOfTheNameCount) {
    write_file("system", "MATFILE1.BIN",
               material_file(1, 0, {Record("ABCDEFGHIJKLMNOP", 5).text(144, "5A")}));
    PWHT_NEEDED("ABCDEFGHIJKLMNOPQRST", 5, 1, 0, 1.0f, required, pNumberOne, 0, groupCode);
    EXPECT_EQ(required, 1);
    PWHT_NEEDED("ABCDEFGHIJKLMNOP", 6, 1, 0, 1.0f, required, pNumberOne, 0, groupCode);
    EXPECT_EQ(required, -1) << "another reference number";
}

TEST_F(Pwht, FillsTheCodeConstantsWhereNobodyDid) {
    RESET_CODE_CONSTANTS();
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    EXPECT_EQ(need("3", 1, 0.628f), 0); // 16 mm
    EXPECT_EQ(C_FIVE_EIGHTHS, 0.62992126f);
    EXPECT_EQ(need("3", 1, 0.63f), 1);
    EXPECT_EQ(need("1", 1, 1.496f, 1, 0, 1), 0); // 38 mm
    EXPECT_EQ(need("1", 1, 1.5f, 1, 0, 1), 1);
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
    EXPECT_EQ(need("3", 1, 0.628f), 0) << "filled once";
}

TEST_F(Pwht, PreheatOfOneOnly) {
    EXPECT_EQ(need("1", 1, 1.4f, 1, 0, 2), 1);
    EXPECT_EQ(need("1", 1, 1.4f, 1, 0, 1), 0);
    EXPECT_EQ(need("10C", 1, 1.4f, 1, 0, 1), 1) << "P-number 1 only";
}

} // namespace
} // namespace tarvane
