// The materials of materials_viii1.csv: their properties, which the other material tables use.
#pragma once

#include "table.h"
#include "temperature_row.h"

#include "tarvane/tarvane.h"

#include <string>
#include <vector>

namespace tarvane::data {

// At the end of the note of a record whose figures are approximate: the host looks for it.
inline constexpr std::string_view APPROXIMATE_MARK = "; approximate";

// Columns, beside those of temperatures, of a table that gives stresses to materials of this one.
inline constexpr std::string_view STRESS_COLUMNS[] = {"reference", "name",   "table",
                                                      "edition",   "status", "source"};

struct Material {
    const Row* row;
    TARVANE_MATERIAL_RECORD record; // inches and ksi, without stresses by temperature
};

class MaterialTable {
  public:
    explicit MaterialTable(const Sources& sources);

    const std::vector<Material>& materials() const { return list; }
    // The material that the columns `name` and `reference` of another table's row name.
    const Material& of(const Row& row) const;
    // A shipped row of another table, of a material that the folder has under another reference.
    bool orphan(const Row& row) const;

  private:
    Table table;
    std::vector<Material> list;
};

// A text field of a record, blank-padded.
template <std::size_t N>
void put_text(char (&field)[N], std::string_view text) {
    text.copy(field, N);
    for (std::size_t i = text.size(); i < N; ++i)
        field[i] = ' ';
}
template <std::size_t N>
std::string_view text_of(const char (&field)[N]) {
    return {field, N};
}

// A material with the figures of a row.
TARVANE_MATERIAL_RECORD with_stresses(const Material& material, const Row& stresses);

// A record as it is in a metric file, and as it must be read back from one.
TARVANE_MATERIAL_RECORD metric_record(TARVANE_MATERIAL_RECORD inch);
TARVANE_MATERIAL_RECORD inch_record(TARVANE_MATERIAL_RECORD metric);

// The note of a record: composition, what distinguishes it from others, and the mark of an approximate row.
std::string note_text(const Row& material, bool approximate);

} // namespace tarvane::data
