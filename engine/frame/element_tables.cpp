#include "frame/element_tables.h"

namespace tarvane {

ELEMENT_ROW ELEMENT_TABLES[ELEMENT_ROWS];
HOST_INPUT HOST_RECORD;

FAILURE_ROW FAILURE_TABLE[ELEMENT_ROWS];
Int FAILURE_ROWS = 0;
bool FAILURE_TABLE_GIVEN = false;

namespace {

constexpr Int MATERIAL_TABLES = 2;
Text<40> material_names[MATERIAL_TABLES][ELEMENT_ROWS];

constexpr ELEMENT_ROW row_without_element() {
    ELEMENT_ROW row;
    row.joint_efficiency = 0.8f;
    return row;
}
constexpr ELEMENT_ROW no_element = row_without_element();

bool has_material(Int table, Int row) {
    return table >= 1 && table <= MATERIAL_TABLES && row >= 1 && row <= ELEMENT_ROWS;
}

} // namespace

const ELEMENT_ROW& element_row(Int element) {
    if (element < 1 || element > ELEMENT_ROWS) return no_element;
    return ELEMENT_TABLES[element - 1];
}

void MATERIAL_ITEM_NAME(Int table, Int row, Text<40>& text) {
    if (has_material(table, row))
        text = material_names[table - 1][row - 1];
    else
        text.clear();
}

void SET_MATERIAL_ITEM_NAME(Int table, Int row, std::string_view name) {
    if (has_material(table, row)) material_names[table - 1][row - 1] = name;
}

} // namespace tarvane
