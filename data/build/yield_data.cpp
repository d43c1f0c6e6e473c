// The yield strength files, in inches and metric.
#include "data_kind.h"
#include "material_table.h"
#include "record_file.h"

#include <algorithm>
#include <cmath>

namespace tarvane::data {

namespace {

constexpr std::size_t YIELD_BYTES = 364; // a material record up to its size limits
// F; above it no yield strength is given.
constexpr float HIGHEST = 1000.0f, HIGHEST_METRIC = 977.0f;

struct Entry {
    const Row* row;
    Status status;
    TARVANE_MATERIAL_RECORD record; // yield strengths in place of the allowable stresses
};

std::vector<Entry> entries_of(const MaterialTable& materials, const Table& yields) {
    std::vector<Entry> entries;
    for (const Row& row : yields.rows()) {
        if (materials.orphan(row)) continue;
        const Material& material = materials.of(row);
        entries.push_back({.row = &row,
                           .status = std::max(material.row->status(), row.status()),
                           .record = with_stresses(material, row)});
    }
    return entries;
}

float read_yield(const Entry& entry, float temperature) {
    const std::string& name = entry.row->field("name");
    float result = 0.0f;
    READ_YIELD_STRESS(name.data(), static_cast<std::int32_t>(name.size()), &entry.record.tensile,
                      &temperature, &result);
    return result;
}

// Every figure at its own temperature. That of a metric file, in degrees C, loses a last digit on the
// way to degrees F and back.
void read_back(const std::vector<Entry>& entries, bool metric) {
    const std::int32_t metric_file = metric ? 1 : 0, zero = 0, class_2 = 1;
    SET_MATERIAL_SELECTION(&metric_file, &zero, &class_2, &zero);
    const float highest = metric ? HIGHEST_METRIC : HIGHEST;
    for (const Entry& entry : entries) {
        const TARVANE_MATERIAL_RECORD wrote =
            metric ? inch_record(metric_record(entry.record)) : entry.record;
        for (std::size_t i = 0; i < PLACES; ++i) {
            const float temperature = metric ? metric_temperature(i) * 1.8f + 32.0f
                                             : 100.0f + 50.0f * static_cast<float>(i);
            if (wrote.allowable[i] == 0.0f || temperature > highest) break;
            const float read = read_yield(entry, temperature);
            const float tolerance = metric ? 1.0e-4f * wrote.allowable[i] : 0.0f;
            if (!(std::abs(read - wrote.allowable[i]) <= tolerance))
                entry.row->expect(TEMPERATURE_COLUMNS[i], wrote.allowable[i], read);
        }
    }
}

} // namespace

void build_yields(Place& place) {
    const MaterialTable materials(place.sources);
    const Table yields(place.sources, "yields.csv", "name", STRESS_COLUMNS, TEMPERATURE_COLUMNS);
    const std::vector<Entry> entries = entries_of(materials, yields);
    for (const bool metric : {false, true}) {
        RecordFile file(YIELD_BYTES);
        for (const Entry& entry : entries)
            file.add(metric ? metric_record(entry.record) : entry.record);
        const std::string name = metric ? "YIELDSTRM.BIN" : "YIELDSTR.BIN";
        write_file(place.out / name, file.bytes());
        read_back(entries, metric);
        // The lookup gives the strength alone, without the record and its mark.
        for (const Entry& entry : entries) {
            place.note(name, entry.row->field("name"), *entry.row, entry.status);
            if (entry.status == Status::approximate)
                place.approximate[name].push_back(entry.row->field("name"));
        }
    }
}

} // namespace tarvane::data
