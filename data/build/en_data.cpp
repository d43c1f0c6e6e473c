// The file of EN materials.
#include "data_kind.h"
#include "material_table.h"
#include "record_file.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <array>

namespace tarvane::data {

namespace {

constexpr std::size_t EN_PLACES = 17;

constexpr std::array<std::string_view, EN_PLACES> EN_TEMPERATURES = {
    "20",  "50",  "100", "150", "200", "250", "300", "350", "400",
    "450", "500", "550", "600", "650", "700", "750", "800"}; // C

constexpr std::string_view COLUMNS[] = {"key",           "name",    "number", "standard", "form",
                                        "max_thickness", "tensile", "proof",  "status",   "source"};

constexpr std::string_view PROOF[] = {"Rp0.2", "Rp1.0"};

// A record of the file. The engine returns it as it is there.
struct EnRecord {
    std::int32_t key;
    char name[24];
    char number[8];
    char standard[24];
    char form[24];
    char note[40];          // the proof strength, and the mark of an approximate row
    float max_thickness;    // mm
    float tensile;          // N/mm2
    float proof[EN_PLACES]; // N/mm2 at EN_TEMPERATURES; 0 where there is none
    char unused[108];
};
static_assert(sizeof(EnRecord) == sizeof(TARVANE_EN_RECORD));

EnRecord record_of(const Row& row) {
    EnRecord r{};
    r.key = row.whole("key");
    if (r.key < 1) row.fail("key", "not above 0: " + row.field("key"));
    put_text(r.name, row.text("name", sizeof r.name));
    put_text(r.number, row.text("number", sizeof r.number));
    put_text(r.standard, row.text("standard", sizeof r.standard));
    put_text(r.form, row.text("form", sizeof r.form));
    const std::string& proof = row.text("proof");
    if (std::find(std::begin(PROOF), std::end(PROOF), proof) == std::end(PROOF))
        row.fail("proof", "neither Rp0.2 nor Rp1.0: \"" + proof + "\"");
    put_text(r.note, row.approximate() ? proof + std::string(APPROXIMATE_MARK) : proof);
    r.max_thickness = row.positive("max_thickness");
    r.tensile = row.positive("tensile");
    take_figures(row, EN_TEMPERATURES, r.proof);
    return r;
}

EnRecord read_record(const Row& row, std::int32_t key) {
    std::int32_t status = 1;
    TARVANE_EN_RECORD bytes{};
    READ_EN_MATERIAL(&key, &status, &bytes);
    if (status != 0) row.fail("key", "not read back: " + row.field("key"));
    EnRecord record;
    std::memcpy(&record, &bytes, sizeof record);
    return record;
}

void compare(const Row& row, const EnRecord& wrote, const EnRecord& read) {
    row.expect("key", wrote.key, read.key);
    row.expect("name", text_of(wrote.name), text_of(read.name));
    row.expect("number", text_of(wrote.number), text_of(read.number));
    row.expect("standard", text_of(wrote.standard), text_of(read.standard));
    row.expect("form", text_of(wrote.form), text_of(read.form));
    row.expect("proof", text_of(wrote.note), text_of(read.note));
    row.expect("max_thickness", wrote.max_thickness, read.max_thickness);
    row.expect("tensile", wrote.tensile, read.tensile);
    for (std::size_t i = 0; i < EN_PLACES; ++i)
        row.expect(EN_TEMPERATURES[i], wrote.proof[i], read.proof[i]);
}

} // namespace

void build_en_materials(Place& place) {
    const Table table(place.sources, "materials_en.csv", "key", COLUMNS, EN_TEMPERATURES);
    RecordFile file(sizeof(EnRecord));
    std::vector<EnRecord> records;
    for (const Row& row : table.rows()) {
        const EnRecord record = record_of(row);
        for (std::size_t i = 0; i < records.size(); ++i)
            if (records[i].key == record.key) row.fail_again("key", table.rows()[i]);
        records.push_back(record);
        place.note("ENMATDATA.BIN", row.field("key"), row);
        file.add(record);
    }
    write_file(place.out / "ENMATDATA.BIN", file.bytes());
    for (std::size_t i = 0; i < records.size(); ++i)
        compare(table.rows()[i], records[i], read_record(table.rows()[i], records[i].key));
}

} // namespace tarvane::data
