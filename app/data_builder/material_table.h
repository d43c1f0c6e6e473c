// The materials of materials_viii1.csv: their properties, which the other material tables take over.
#pragma once

#include "table.h"
#include "temperature_row.h"

#include "tarvane/tarvane.h"

#include <string>
#include <vector>

namespace tarvane::data {

// At the end of the note of a record whose figures are approximate: the host looks for it.
inline constexpr std::string_view APPROXIMATE_MARK = "; approximate";

struct Material {
    const Row* row;
    TARVANE_MATERIAL_RECORD record; // inches and ksi, without stresses by temperature
};

class MaterialTable {
  public:
    explicit MaterialTable(const std::filesystem::path& sources);

    const std::vector<Material>& materials() const { return list; }
    // The material that the columns `name` and `reference` of another table's row name.
    const Material& of(const Row& row) const;

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

// The note of a record: composition, what tells it from others, and the mark of an approximate row.
std::string note_text(const Row& material, bool approximate);

} // namespace tarvane::data
