// The material files of both divisions, in inches and metric.
#include "data_kind.h"
#include "material_table.h"
#include "record_file.h"

#include <algorithm>

namespace tarvane::data {

namespace {

// The selection by which READ_MATERIAL reads a file.
struct Selection {
    std::int32_t code, class_2, metric;
    std::string_view file;
};

constexpr Selection DIVISION_1[] = {{1, 1, 0, "MATFILE1.BIN"}, {1, 1, 1, "MATFILE1M.BIN"}};
constexpr Selection DIVISION_2_CLASS_1[] = {{2, 0, 0, "MatFileD2C1.BIN"},
                                            {2, 0, 1, "MatFileD2C1M.BIN"}};
constexpr Selection DIVISION_2_CLASS_2[] = {{2, 1, 0, "MATFILE2.BIN"}, {2, 1, 1, "MATFILE2M.BIN"}};

// A record and the rows that it comes from.
struct Entry {
    const Row* material;
    const Row* stresses;
    TARVANE_MATERIAL_RECORD record;
};

void compare(const Entry& entry, const TARVANE_MATERIAL_RECORD& wrote,
             const TARVANE_MATERIAL_RECORD& read) {
    const Row& material = *entry.material;
    material.expect("name", text_of(wrote.first_name), text_of(read.first_name));
    material.expect("name", text_of(wrote.name), text_of(read.name));
    material.expect("reference", wrote.reference, read.reference);
    material.expect("form", text_of(wrote.product_form), text_of(read.product_form));
    material.expect("uns", text_of(wrote.uns_number), text_of(read.uns_number));
    material.expect("note", text_of(wrote.note), text_of(read.note));
    material.expect("thickness_limit", wrote.thickness_limit, read.thickness_limit);
    material.expect("p_number", text_of(wrote.p_number), text_of(read.p_number));
    material.expect("group", wrote.group, read.group);
    material.expect("curve", wrote.curve, read.curve);
    material.expect("curve_normalized", wrote.curve_normalized, read.curve_normalized);
    material.expect("tensile", wrote.tensile, read.tensile);
    material.expect("yield", wrote.yield, read.yield);
    material.expect("chart", text_of(wrote.chart), text_of(read.chart));
    material.expect("modulus", wrote.modulus_reference, read.modulus_reference);
    material.expect("expansion", wrote.expansion_reference, read.expansion_reference);
    material.expect("min_size", wrote.min_dia, read.min_dia);
    material.expect("max_size", wrote.max_dia, read.max_dia);
    material.expect("impact_temperature", wrote.impact_temperature, read.impact_temperature);
    material.expect("ucs66g", wrote.ucs66g_reduction, read.ucs66g_reduction);
    for (std::size_t i = 0; i < PLACES; ++i)
        entry.stresses->expect(TEMPERATURE_COLUMNS[i], wrote.allowable[i], read.allowable[i]);
}

void read_back(const std::vector<Entry>& entries, const Selection& selection) {
    const std::int32_t force_div1 = 0, year = 0;
    SET_MATERIAL_SELECTION(&selection.metric, &force_div1, &selection.class_2, &year);
    std::int32_t count = 0;
    MATERIAL_COUNT(&selection.code, &count);
    if (count != static_cast<std::int32_t>(entries.size()))
        throw DataError(std::string(selection.file) + ": " + std::to_string(count) +
                        " records read back of " + std::to_string(entries.size()));
    for (const Entry& entry : entries) {
        const std::string& name = entry.material->field("name");
        std::int32_t status = 1;
        TARVANE_MATERIAL_RECORD read;
        READ_MATERIAL(&selection.code, name.data(), static_cast<std::int32_t>(name.size()),
                      &entry.record.reference, &status, &read);
        if (status != 0)
            entry.material->fail("name", "not found again in " + std::string(selection.file));
        const bool metric = selection.metric == 1;
        compare(entry, metric ? inch_record(metric_record(entry.record)) : entry.record, read);
    }
}

void make_files(Place& place, const std::vector<Entry>& entries,
                std::span<const Selection> selections) {
    for (const Selection& selection : selections) {
        RecordFile file(TARVANE_MATERIAL_BYTES);
        for (const Entry& entry : entries)
            file.add(selection.metric == 1 ? metric_record(entry.record) : entry.record);
        write_file(place.out / selection.file, file.bytes());
        read_back(entries, selection);
        for (const Entry& entry : entries)
            place.note(std::string(selection.file),
                       entry.material->field("name") + ", " + entry.material->field("reference"),
                       *entry.stresses,
                       std::max(entry.material->status(), entry.stresses->status()));
    }
}

Entry entry_of(const Material& material, const Row& stresses) {
    return {.material = material.row,
            .stresses = &stresses,
            .record = with_stresses(material, stresses)};
}

std::vector<Entry> division_1(const MaterialTable& materials) {
    std::vector<Entry> entries;
    for (const Material& material : materials.materials())
        entries.push_back(entry_of(material, *material.row));
    return entries;
}

// The materials that a table of stresses names.
std::vector<Entry> division_2(const MaterialTable& materials, const Table& stresses) {
    std::vector<Entry> entries;
    for (const Row& row : stresses.rows()) {
        if (materials.orphan(row)) continue;
        const Material& material = materials.of(row);
        for (const Entry& other : entries)
            if (other.material == material.row) row.fail_again("reference", *other.stresses);
        entries.push_back(entry_of(material, row));
    }
    return entries;
}

} // namespace

void build_materials(Place& place) {
    const MaterialTable materials(place.sources);
    make_files(place, division_1(materials), DIVISION_1);

    const Table class_1(place.sources, "materials_viii2_class1.csv", "name", STRESS_COLUMNS,
                        TEMPERATURE_COLUMNS);
    make_files(place, division_2(materials, class_1), DIVISION_2_CLASS_1);

    const Table class_2(place.sources, "materials_viii2_class2.csv", "name", STRESS_COLUMNS,
                        TEMPERATURE_COLUMNS);
    make_files(place, division_2(materials, class_2), DIVISION_2_CLASS_2);
}

} // namespace tarvane::data
