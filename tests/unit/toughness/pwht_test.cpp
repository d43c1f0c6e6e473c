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
    EXPECT_EQ(need("4", 1, 0.1f, 1, 0, 0, "SA-202 a"), 1); // the name is taken as it stands
    for (const char* name : {"SA-487 1", "SA-487 2"})
        EXPECT_EQ(need("10A", 1, 0.1f, 1, 0, 0, name), 1);
}

TEST_F(Pwht, LimitsOfTheMetricConstants) {
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS();
    EXPECT_EQ(need("1", 1, 1.255f), 0); // 32 mm
    EXPECT_EQ(need("1", 1, 1.261f), 1);
}

} // namespace
} // namespace tarvane
