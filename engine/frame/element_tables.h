// Tables that the host fills: one row an element of the vessel, the input record of the host, long
// material names, and the failure corrosion table that the engine fills for the host.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

namespace tarvane {

inline constexpr Int ELEMENT_ROWS = 500;

// One row, 100 bytes.
struct ELEMENT_ROW {
    Text<16> description;
    Text<16> from_node, to_node;
    Text<16> material;
    Text<16> heat_treatment;                  // columns 8 to 15: the P-number
    char first_flag = ' ', second_flag = ' '; // "1": on
    char unused[2] = {' ', ' '};
    Real joint_efficiency = 0.0f;
    Real first_inspection = 0.0f, second_inspection = 0.0f; // thicknesses
    Real value = 0.0f;
};
static_assert(sizeof(ELEMENT_ROW) == 100);

extern ELEMENT_ROW ELEMENT_TABLES[ELEMENT_ROWS];
// Row `element`, or a row of blanks and zeros (E = 0.8) when there is none.
const ELEMENT_ROW& element_row(Int element);

// Input record of the host, texts of 16 characters (class and grade 15).
struct HOST_INPUT {
    Text<16> required_temperature[3];
    Text<16> version_mark;
    Text<16> impact_switches;
    Text<16> impact_counts[3];
    Text<16> impact_names[3][11];
    Text<16> impact_numbers[3][11];
    Text<16> single_name, single_number;
    Text<16> own_mdmt[2];
    Text<16> foundation[2];
    Text<15> flange_class, flange_grade;
};
static_assert(sizeof(HOST_INPUT) == 80 * 16 + 2 * 15);
extern HOST_INPUT HOST_RECORD;

// Long material names: table 1 flange materials by element, 2 bolt materials by bolt row; rows 1 to
// 500. A name outside the tables is blank, and setting one has no effect.
void MATERIAL_ITEM_NAME(Int table, Int row, Text<40>& text);
void SET_MATERIAL_ITEM_NAME(Int table, Int row, std::string_view name);

// Failure corrosion table, one row a flange.
struct FAILURE_ROW {
    Text<16> description;
    Real nominal = 0.0f;   // go, or t of a blind flange
    Real failureCa = 0.0f; // corrosion allowance at failure
    Real nominalLessFailure = 0.0f;
    Real ci = 0.0f; // the allowance given
    Real nominalLessCi = 0.0f;
    Real first = 0.0f, second = 0.0f; // inspection thicknesses
    Real firstLessSecond = 0.0f;
    Int unused[3] = {0, 0, 0};
    Real hubRequired = 0.0f;              // hub small end required thickness
    Real value = 0.0f;                    // element value of the table
    Int kind = 0;                         // 7: a flange
    char below[4] = {' ', ' ', ' ', ' '}; // "Yes" or " No"
    Real valueAgain = 0.0f;
};
static_assert(sizeof(FAILURE_ROW) == 80);
extern FAILURE_ROW FAILURE_TABLE[ELEMENT_ROWS];
extern Int FAILURE_ROWS;         // rows in use
extern bool FAILURE_TABLE_GIVEN; // the host has its address, and may write anywhere in it

} // namespace tarvane
