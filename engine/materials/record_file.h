// Binary files of materials: records of one length, the first of them with two counts. Their sum is
// the number of the records that follow.
#pragma once

#include "frame/files/data_files.h"
#include "frame/text.h"
#include "frame/types.h"
#include "host/file_units.h"
#include "host/services.h"
#include "materials/material_record.h"

#include <cstring>
#include <string_view>

namespace tarvane {

inline constexpr Real MPA_TO_KSI = 0.145038f;
inline constexpr Int BLOCK_RECORDS = 32; // read at a time

template <typename Number>
void take(const char* bytes, Int offset, Number& into) {
    std::memcpy(&into, bytes + offset, sizeof into);
}

// The number of records after the first one, by its own counts.
inline std::int64_t told_records(const char* first_record) {
    Int first, second;
    take(first_record, 0, first);
    take(first_record, 4, second);
    return std::int64_t{first} + second;
}

// Whole records from the file, as many as are there.
inline Int read_records(Int handle, char* into, Int count, Int bytes, bool& broken) {
    Int filled = 0;
    const Int wanted = count * bytes;
    while (filled < wanted) {
        const Int got = read_bytes(handle, into + filled, wanted - filled);
        if (got < 0) broken = true;
        if (got <= 0) break;
        filled += got;
    }
    return filled / bytes;
}

// Offers the records of a file to `wanted`, which gets the bytes of each and answers whether it is
// the one. False when it took none, and without a file. The file may end before its counts do. When
// the walk is over without an error, `done` gets the unit, which is still open, and the path.
template <Int BYTES, typename Wanted, typename Done>
bool walk_records(std::string_view file, Wanted wanted, Done done) {
    if (file.empty()) return false;
    Text<256> path = file;
    Int path_len = 0, unit = 0;
    RESOLVE_DATA_FILE(path, path_len);
    GETNEXTUNIT(unit);
    if (!open_unit_for_reading(unit, path.columns(1, path_len))) return false;

    const Int handle = unit_handle(unit);
    char block[BLOCK_RECORDS * BYTES];
    bool found = false, broken = false;
    std::int64_t left =
        read_records(handle, block, 1, BYTES, broken) == 1 ? told_records(block) : 0;
    while (!found && left > 0) {
        const Int size = static_cast<Int>(left < BLOCK_RECORDS ? left : BLOCK_RECORDS);
        const Int got = read_records(handle, block, size, BYTES, broken);
        for (Int i = 0; i < got && !found; ++i)
            found = wanted(block + i * BYTES);
        left = got < size ? 0 : left - got;
    }
    if (!broken) done(unit, path.columns(1, path_len));
    close_unit(unit);
    return found;
}

template <Int BYTES, typename Wanted>
bool walk_records(std::string_view file, Wanted wanted) {
    return walk_records<BYTES>(file, wanted, [](Int, std::string_view) {});
}

// A material name as the files are searched for it: the first 16 characters, normalized, upper case.
Text<16> name_key(std::string_view name);

} // namespace tarvane
