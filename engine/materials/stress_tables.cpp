#include "materials/stress_tables.h"

#include "frame/files/data_files.h"
#include "frame/numbers.h"
#include "frame/switches.h"
#include "host/file_units.h"
#include "materials/record_file.h"

#include <cmath>

namespace tarvane {

namespace {

constexpr Int YIELD_RECORD_BYTES = 364;
constexpr Int TENSILE_AT = 164, ROW_AT = 188; // of a yield record, as of a material record

bool metric_files() { return G_MATL_METRIC == 1; }
bool japanese_edition() { return G_MATL_YEAR == 15 || G_MATL_YEAR == 16; }

Real celsius(Real T) { return (T - 32.0f) * 0.5555556f; }

// ---- temperatures of a row, degrees Fahrenheit, or Celsius in a metric file; places from 1 ------------

Real axis_at(Int place) {
    if (!metric_files()) return 100.0f + 50.0f * static_cast<Real>(place - 1);
    if (place == 1) return 40.0f;
    if (place == 2) return japanese_edition() ? 75.0f : 65.0f;
    return 100.0f + 25.0f * static_cast<Real>(place - 3);
}

// The row between a place and the one before.
Real before_place(const Real* row, Int place, Real T) {
    return LINEAR_INTERP(axis_at(place - 1), T, axis_at(place), row[place - 2], row[place - 1]);
}

// ---- yield stresses -----------------------------------------------------------------------------------

std::string_view yield_file() {
    if (!metric_files()) return "YIELDSTR.BIN";
    return japanese_edition() ? "JPNYLDM.BIN" : "YIELDSTRM.BIN";
}

// The row of the material, in ksi.
bool find_yield_row(std::string_view name, Real tensile, Real* row) {
    const Text<16> key = name_key(name);
    if (key.blank()) return false;
    const Real to_ksi = metric_files() ? MPA_TO_KSI : 1.0f;
    return walk_records<YIELD_RECORD_BYTES>(yield_file(), [&](const char* bytes) {
        Real strength;
        take(bytes, TENSILE_AT, strength);
        if (!(std::abs(strength * to_ksi - tensile) <= 0.05f * tensile)) return false;
        if (!(name_key({bytes + 16, 16}) == key.view())) return false;
        std::memcpy(row, bytes + ROW_AT, sizeof(Real) * ALLOWABLES);
        for (Int i = 0; i < ALLOWABLES; ++i)
            row[i] *= to_ksi;
        return true;
    });
}

} // namespace

Real READ_ALLOWABLE_AT(const MATERIAL_RECORD& record, Real T) {
    const Real lowest = metric_files() ? 40.0f : 100.001f;
    const Real t = metric_files() ? celsius(T) : T;
    if (t <= lowest) return record.allowable[0];
    for (Int place = 2; place <= ALLOWABLES; ++place)
        if (t <= axis_at(place)) return before_place(record.allowable, place, t);
    return 0.0f;
}

void READ_YIELD_STRESS(std::string_view name, Real tensile, Real T, Real& result) {
    result = 0.0f;
    const Real held = max(T, 100.0f);
    if (held > (metric_files() ? 977.0f : 1000.0f)) return;
    Real row[ALLOWABLES];
    if (!find_yield_row(name, tensile, row)) return;

    const Real t = metric_files() ? celsius(held) : held;
    for (Int place = 1; place <= ALLOWABLES; ++place) {
        if (!(axis_at(place) > t)) continue;
        result = place == 1 ? row[0] : before_place(row, place, t);
        return;
    }
}

void READ_EN_MATERIAL(Int key, Int& status, char* record) {
    status = 1;
    if (key < 1) return;
    Text<260> path;
    Int path_len = 0, unit = 0;
    SYSTEM_FILE_PATH(path, path_len, "ENMATDATA.BIN");
    GETNEXTUNIT(unit);
    if (!open_unit_for_reading(unit, path.columns(1, path_len))) return;

    char bytes[EN_RECORD_BYTES];
    bool good = READ_RECORD(unit, 1, bytes, EN_RECORD_BYTES);
    std::int64_t last = 0;
    if (good) {
        Int first;
        std::uint32_t second;
        take(bytes, 0, first);
        take(bytes, 4, second);
        last = std::int64_t{first} + (second > 200 ? 0 : second) + 1;
    }
    Int found = 0;
    for (Int number = 2; good && number <= last && found != key; ++number) {
        good = READ_RECORD(unit, number, bytes, EN_RECORD_BYTES);
        if (good) take(bytes, 0, found);
    }
    close_unit(unit);
    if (good && found == key) std::memcpy(record, bytes, sizeof bytes);
    status = good ? 0 : 1;
}

} // namespace tarvane
