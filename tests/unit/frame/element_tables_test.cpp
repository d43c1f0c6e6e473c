#include "frame/element_tables.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace tarvane {
namespace {

TEST(ElementTables, LayoutOfARow) {
    EXPECT_EQ(sizeof(ELEMENT_ROW), 100u);
    EXPECT_EQ(offsetof(ELEMENT_ROW, from_node), 16u);
    EXPECT_EQ(offsetof(ELEMENT_ROW, heat_treatment), 64u);
    EXPECT_EQ(offsetof(ELEMENT_ROW, first_flag), 80u);
    EXPECT_EQ(offsetof(ELEMENT_ROW, joint_efficiency), 84u);
    EXPECT_EQ(offsetof(ELEMENT_ROW, value), 96u);
    EXPECT_EQ(sizeof(ELEMENT_TABLES), 50000u);
}

TEST(ElementTables, LayoutOfTheHostInput) {
    EXPECT_EQ(offsetof(HOST_INPUT, version_mark), 48u);
    EXPECT_EQ(offsetof(HOST_INPUT, impact_names), 128u);
    EXPECT_EQ(offsetof(HOST_INPUT, impact_numbers), 656u);
    EXPECT_EQ(offsetof(HOST_INPUT, single_name), 1184u);
    EXPECT_EQ(offsetof(HOST_INPUT, flange_class), 1280u);
    EXPECT_EQ(sizeof(HOST_INPUT), 1310u);
}

TEST(ElementTables, LayoutOfAFailureRow) {
    EXPECT_EQ(sizeof(FAILURE_ROW), 80u);
    EXPECT_EQ(offsetof(FAILURE_ROW, nominal), 16u);
    EXPECT_EQ(offsetof(FAILURE_ROW, failureCa), 20u);
    EXPECT_EQ(offsetof(FAILURE_ROW, firstLessSecond), 44u);
    EXPECT_EQ(offsetof(FAILURE_ROW, hubRequired), 60u);
    EXPECT_EQ(offsetof(FAILURE_ROW, value), 64u);
    EXPECT_EQ(offsetof(FAILURE_ROW, kind), 68u);
    EXPECT_EQ(offsetof(FAILURE_ROW, below), 72u);
    EXPECT_EQ(offsetof(FAILURE_ROW, valueAgain), 76u);
}

TEST(ElementTables, RowsAreCountedFromOne) {
    const ELEMENT_ROW first = ELEMENT_TABLES[0], last = ELEMENT_TABLES[499];
    ELEMENT_TABLES[0].joint_efficiency = 0.85f;
    ELEMENT_TABLES[499].joint_efficiency = 0.7f;
    EXPECT_EQ(element_row(1).joint_efficiency, 0.85f);
    EXPECT_EQ(element_row(500).joint_efficiency, 0.7f);
    ELEMENT_TABLES[0] = first;
    ELEMENT_TABLES[499] = last;
}

TEST(ElementTables, WithoutARowTextsAreBlankAndTheJointEfficiencyIsLow) {
    for (const Int element : {0, -1, 501, INT32_MAX, INT32_MIN}) {
        const ELEMENT_ROW& row = element_row(element);
        EXPECT_EQ(row.joint_efficiency, 0.8f);
        EXPECT_TRUE(row.description.blank());
        EXPECT_TRUE(row.heat_treatment.blank());
        EXPECT_NE(row.first_flag, '1');
        EXPECT_EQ(row.first_inspection, 0.0f);
        EXPECT_EQ(row.value, 0.0f);
    }
}

TEST(ElementTables, LongMaterialNamesByTableAndRow) {
    Text<40> name("left over");
    MATERIAL_ITEM_NAME(1, 1, name);
    EXPECT_TRUE(name.blank());
    SET_MATERIAL_ITEM_NAME(1, 1, "SA-105");
    SET_MATERIAL_ITEM_NAME(2, 1, "SA-193 B7");
    SET_MATERIAL_ITEM_NAME(2, 500, std::string(60, 'n'));
    MATERIAL_ITEM_NAME(1, 1, name);
    EXPECT_EQ(name.trimmed(), "SA-105");
    MATERIAL_ITEM_NAME(2, 1, name);
    EXPECT_EQ(name.trimmed(), "SA-193 B7");
    MATERIAL_ITEM_NAME(2, 500, name);
    EXPECT_EQ(name.view(), std::string(40, 'n'));
    for (const auto& [table, row] : {std::pair{1, 1}, {2, 1}, {2, 500}})
        SET_MATERIAL_ITEM_NAME(table, row, "");
}

TEST(ElementTables, NamesOutsideTheTablesAreBlankAndNotKept) {
    for (const auto& [table, row] :
         {std::pair{0, 1}, {3, 1}, {1, 0}, {1, 501}, {INT32_MIN, INT32_MAX}}) {
        SET_MATERIAL_ITEM_NAME(table, row, "name");
        Text<40> name("left over");
        MATERIAL_ITEM_NAME(table, row, name);
        EXPECT_TRUE(name.blank()) << table << " " << row;
    }
}

} // namespace
} // namespace tarvane
