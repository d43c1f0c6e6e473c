#include "materials/material_record.h"

#include "frame/files/kept_files.h"
#include "frame/switches.h"
#include "materials/record_file.h"
#include "report/channel.h"

#include <cstring>
#include <type_traits>

namespace tarvane {

namespace {

constexpr Int RECORD_BYTES = 414;

// ---- which file --------------------------------------------------------------------------------------

struct EDITION_FILE {
    Int year; // G_MATL_YEAR
    std::string_view inch, metric;
};

constexpr EDITION_FILE DIVISION_1[] = {
    {0, "MATFILE1.BIN", "MATFILE1M.BIN"},
    {1, "MATFIL99.BIN", {}},
    {2, "MATFIL00.BIN", {}},
    {3, "MATFIL01.BIN", {}},
    {4, "MATFIL02.BIN", {}},
    {5, "MATFIL03.BIN", {}},
    {6, "MATFIL04.BIN", {}},
    {7, "MATFIL05.BIN", {}},
    {8, "MATFIL06.BIN", {}},
    {9, "MATFIL07.BIN", {}},
    {10, "MATFIL08.BIN", {}},
    {11, "MATFIL09.BIN", {}},
    {12, "MATFIL10.BIN", "MATFIL10M.BIN"},
    {13, "MATFILE43-74.BIN", {}},
    {14, "MATFIL11.BIN", "MATFIL11M.BIN"},
    {15, "JIS_B8265.BIN", {}},
    {16, "JIS_B8267.BIN", {}},
    {17, "MATFIL13.BIN", "MATFIL13M.BIN"},
    {18, "MATFIL15.BIN", "MATFIL15M.BIN"},
};

constexpr EDITION_FILE DIVISION_2[] = {
    {0, "MATFILE2.BIN", "MATFILE2M.BIN"},      {11, "MATFIL09D2.BIN", {}},
    {12, "MATFIL10D2.BIN", "MATFIL10D2M.BIN"}, {14, "MATFIL11D2.BIN", "MATFIL11D2M.BIN"},
    {17, "MATFIL13D2.BIN", "MATFIL13D2M.BIN"}, {18, "MATFIL15D2.BIN", "MATFIL15D2M.BIN"},
};

template <std::size_t N>
std::string_view by_year(const EDITION_FILE (&files)[N], std::string_view other) {
    for (const EDITION_FILE& file : files)
        if (file.year == G_MATL_YEAR)
            return G_MATL_METRIC == 1 && !file.metric.empty() ? file.metric : file.inch;
    return other;
}

// Empty when no file belongs to the code and edition.
std::string_view material_file(Int code) {
    if (code == ASME_VIII_1) {
        if (G_OLD_EDITION == 1) return G_MATL_YEAR == 13 ? "MATFILE43-74.BIN" : "MATFIL98.BIN";
        return by_year(DIVISION_1, {});
    }
    if (code != ASME_VIII_2) return {};
    if (G_D2_CLASS == 0) return G_MATL_METRIC == 1 ? "MatFileD2C1M.BIN" : "MatFileD2C1.BIN";
    return by_year(DIVISION_2, "MATFILE2.BIN");
}

// ---- reading -------------------------------------------------------------------------------------------

static_assert(std::is_trivially_copyable_v<MATERIAL_RECORD>);
static_assert(sizeof(MATERIAL_RECORD) == RECORD_BYTES + sizeof MATERIAL_RECORD::fill);

// A metric record as an inch one: MPa to ksi, mm to inches.
void convert_metric(MATERIAL_RECORD& r) {
    for (Real& stress : r.allowable)
        stress *= MPA_TO_KSI;
    r.tensile *= MPA_TO_KSI;
    r.yield *= MPA_TO_KSI;
    r.thicknessLimit /= MM_PER_INCH;
    if (r.minDia != -1.0f) r.minDia /= MM_PER_INCH;
    if (r.maxDia != -1.0f) r.maxDia /= MM_PER_INCH;
}

void unpack(const char* bytes, MATERIAL_RECORD& record) {
    std::memcpy(static_cast<void*>(&record), bytes, RECORD_BYTES);
    if (G_MATL_METRIC == 1) convert_metric(record);
}

// ---- lookups that are kept -----------------------------------------------------------------------------

// What a lookup found in its file, for as long as a look shows the file unchanged.
struct KEPT_LOOKUP {
    KEPT_FILE file;
    Text<16> key;
    Int reference = 0;
    bool found = false;
    char bytes[RECORD_BYTES] = {}; // as in the file
};
constexpr Int KEPT_LOOKUPS = 4; // of one flange: its bolts, and its element in the vessel
KEPT_LOOKUP kept_lookups[KEPT_LOOKUPS];
Int oldest_lookup = 0;

void forget_lookups() {
    for (KEPT_LOOKUP& kept : kept_lookups)
        kept = {};
    oldest_lookup = 0;
}

// The lookup in the file as it is now.
void look_up(std::string_view file, KEPT_LOOKUP& lookup) {
    if (file.empty()) return;
    Text<256> path = file;
    Int path_len = 0, unit = 0;
    FILE_IDENTITY identity;
    RESOLVE_DATA_FILE(path, path_len, identity);
    GETNEXTUNIT(unit);
    for (const KEPT_LOOKUP& kept : kept_lookups) {
        if (kept.reference != lookup.reference || !(kept.key == lookup.key.view())) continue;
        if (unit > LAST_UNIT || !kept.file.is(path.columns(1, path_len), identity)) continue;
        lookup = kept;
        return;
    }
    bool walked = false;
    walk_records<RECORD_BYTES>(
        file,
        [&](const char* bytes) {
            Int number;
            take(bytes, 32, number);
            if (number != lookup.reference) return false;
            if (!(name_key({bytes + 16, 16}) == lookup.key.view())) return false;
            std::memcpy(lookup.bytes, bytes, RECORD_BYTES);
            lookup.found = true;
            return true;
        },
        [&](Int open_unit, std::string_view at) {
            walked = true;
            if (!lookup.file.keep(open_unit, at, identity)) return;
            kept_lookups[oldest_lookup] = lookup;
            oldest_lookup = (oldest_lookup + 1) % KEPT_LOOKUPS;
        });
    if (!walked) forget_lookups();
}

Int present_code(Int code) { return G_FORCE_DIV1 == 1 ? ASME_VIII_1 : code; }

} // namespace

Text<16> name_key(std::string_view name) {
    Text<16> key = left_justified(name);
    NORMALIZE_MATERIAL_NAME(key.data(), Text<16>::width());
    TO_UPPER(key.data(), Text<16>::width());
    return key;
}

void NORMALIZE_MATERIAL_NAME(char* text, Int len) {
    Int kept = 0;
    for (Int i = 0; i < len; ++i) {
        const char c = text[i];
        if (c == '.' || c == '/' || c == '-' || c == '\0' || c == ' ') continue;
        text[kept++] = c;
    }
    for (; kept < len; ++kept)
        text[kept] = ' ';
}

void CLEAR_MATERIAL(MATERIAL_RECORD& record) { record = MATERIAL_RECORD{}; }

void READ_MATERIAL(Int code, std::string_view name, Int reference, Int& status,
                   MATERIAL_RECORD& record) {
    status = 1;
    KEPT_LOOKUP lookup{.file = {}, .key = name_key(name), .reference = reference};
    if (lookup.key.blank()) return;
    look_up(material_file(present_code(code)), lookup);
    if (!lookup.found) {
        CLEAR_MATERIAL(record);
        return;
    }
    unpack(lookup.bytes, record);
    status = 0;
}

void MATERIAL_COUNT(Int code, Int& count) {
    count = 0;
    walk_records<RECORD_BYTES>(material_file(present_code(code)), [&](const char*) {
        ++count;
        return false;
    });
}

void MATERIAL_BY_NUMBER(Int code, Int number, Int& status, MATERIAL_RECORD& record) {
    Int at = 0;
    const bool found =
        walk_records<RECORD_BYTES>(material_file(present_code(code)), [&](const char* bytes) {
            if (++at != number) return false;
            unpack(bytes, record);
            return true;
        });
    status = found ? 0 : 1;
    if (!found) CLEAR_MATERIAL(record);
}

} // namespace tarvane
