#include "frame/data_files.h"

#include "host/services.h"

#include <cstring>

namespace tarvane {

namespace {

constexpr Int CLOSED = -1;

// Handle of each unit, kept one higher so that a unit is closed at load.
Int handle_and_one[LAST_UNIT + 1] = {};

bool is_unit(Int unit) { return unit >= 1 && unit <= LAST_UNIT; }

bool attach(Int unit, Int handle) {
    if (handle == CLOSED) return false;
    handle_and_one[unit] = handle + 1;
    return true;
}

bool ends_in_separator(std::string_view folder) {
    return folder.ends_with('/') || folder.ends_with('\\');
}

// Folder, one separator, name; empty when it does not fit.
template <std::size_t N>
void join(Text<N>& path, Int& path_len, std::string_view folder, std::string_view name) {
    const std::size_t gap = ends_in_separator(folder) ? 0 : 1;
    path.clear();
    path_len = 0;
    if (folder.size() + gap + name.size() > N) return;
    path.put(1, folder);
    if (gap != 0) path(static_cast<Int>(folder.size()) + 1) = SEPARATOR;
    path.put(static_cast<Int>(folder.size() + gap) + 1, name);
    path_len = path.trimmed_length();
}

// Goes to where a record begins; false when there is no such place.
bool at_record(Int handle, Int record, Int length) {
    if (handle == CLOSED || record < 1 || length < 1) return false;
    const std::int64_t offset = static_cast<std::int64_t>(record - 1) * length;
    return offset <= INT32_MAX && seek_to(handle, static_cast<Int>(offset));
}

} // namespace

void GETNEXTUNIT(Int& unit) {
    unit = FIRST_UNIT;
    while (unit <= LAST_UNIT && unit_handle(unit) != CLOSED)
        ++unit;
}

bool open_unit_for_reading(Int unit, std::string_view path) {
    if (!is_unit(unit)) return false;
    close_unit(unit);
    return attach(unit, open_for_reading(path));
}

bool open_unit_for_writing(Int unit, std::string_view path) {
    if (!is_unit(unit)) return false;
    close_unit(unit);
    return attach(unit, open_for_writing(path));
}

bool open_unit_for_update(Int unit, std::string_view path) {
    if (!is_unit(unit)) return false;
    close_unit(unit);
    return attach(unit, open_for_update(path));
}

Int unit_handle(Int unit) { return is_unit(unit) ? handle_and_one[unit] - 1 : CLOSED; }

void close_unit(Int unit) {
    const Int handle = unit_handle(unit);
    if (handle == CLOSED) return;
    close_handle(handle);
    handle_and_one[unit] = 0;
}

void close_unit_and_delete(Int unit) {
    const Int handle = unit_handle(unit);
    if (handle == CLOSED) return;
    delete_and_close(handle);
    handle_and_one[unit] = 0;
}

void OPENUNIT(Int unit, std::string_view path, Int& status) {
    status = open_unit_for_writing(unit, trimmed(path)) ? 0 : 1;
}

void SYSTEM_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name) {
    Int found = 0;
    if (SYSTEM_DIR_LENGTH == 0) GET_SYSTEM_DIR(found);
    path.clear();
    path_len = 0;
    if (SYSTEM_DIR_LENGTH == 0) return;
    join(path, path_len, SYSTEM_DIR.columns(1, SYSTEM_DIR_LENGTH), trimmed(name));
}

void MODULE_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name) {
    if (MODULE_DIR_LENGTH == 0) GET_MODULE_DIR();
    path.clear();
    path_len = 0;
    if (MODULE_DIR_LENGTH == 0) return;
    join(path, path_len, MODULE_DIR.columns(1, MODULE_DIR_LENGTH), trimmed(name));
}

void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len) {
    const Text<256> name = path;
    path_len = name.trimmed_length();
    if (MODULE_DIR_LENGTH == 0) {
        Int found = 0;
        GET_MODULE_DIR();
        GET_SYSTEM_DIR(found);
    }
    if (MODULE_DIR_LENGTH == 0) return;
    join(path, path_len, MODULE_DIR.columns(1, MODULE_DIR_LENGTH), name.trimmed());
    if (path_len > 0 && file_exists(path.columns(1, path_len))) return;

    Text<260> system_path;
    SYSTEM_FILE_PATH(system_path, path_len, name.trimmed());
    if (path_len > path.width()) {
        system_path.clear();
        path_len = 0;
    }
    path = system_path.view();
}

LineReader::LineReader(Int unit) : handle(unit_handle(unit)) {}

bool LineReader::fill() {
    if (position < filled) return true;
    if (handle == CLOSED || failed) return false;
    position = 0;
    filled = read_bytes(handle, buffer, static_cast<Int>(sizeof buffer));
    failed = filled < 0;
    if (failed) filled = 0;
    return filled > 0;
}

bool LineReader::next(char* line, Int width) {
    const auto blank = [&] { std::memset(line, ' ', static_cast<std::size_t>(max(width, 0))); };
    blank();
    Int column = 0; // of the next character; what passes the width is not counted
    const auto put = [&](const char* from, Int count) {
        const Int kept = min(count, width - column);
        if (kept <= 0) return;
        std::memcpy(line + column, from, static_cast<std::size_t>(kept));
        column += kept;
    };
    bool any = false;
    bool held_return = false; // a carriage return that may belong to the line end
    while (fill()) {
        any = true;
        const char* const from = buffer + position;
        const Int available = filled - position;
        const void* const end = std::memchr(from, '\n', static_cast<std::size_t>(available));
        Int count = available;
        if (end != nullptr) count = static_cast<Int>(static_cast<const char*>(end) - from);
        position += end != nullptr ? count + 1 : count;
        if (count > 0) {
            if (held_return) put("\r", 1);
            held_return = from[count - 1] == '\r';
            put(from, held_return ? count - 1 : count);
        }
        if (end != nullptr) return true;
    }
    if (!failed) return any;
    blank();
    return false;
}

void LineReader::rewind() {
    position = filled = 0;
    failed = handle != CLOSED && !seek_to(handle, 0);
}

bool READ_RECORD(Int unit, Int record, char* into, Int length) {
    const Int handle = unit_handle(unit);
    if (!at_record(handle, record, length)) return false;
    Int done = 0;
    while (done < length) {
        const Int count = read_bytes(handle, into + done, length - done);
        if (count <= 0) return false;
        done += count;
    }
    return true;
}

bool WRITE_RECORD(Int unit, Int record, const char* from, Int length) {
    const Int handle = unit_handle(unit);
    return at_record(handle, record, length) && write_bytes(handle, from, length);
}

bool READ_TEXT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines) {
    lines = 0;
    Int unit = 0;
    GETNEXTUNIT(unit);
    Text<260> path;
    Int path_len = 0;
    SYSTEM_FILE_PATH(path, path_len, name);
    bool loaded = false;
    if (open_unit_for_reading(unit, path.columns(1, path_len))) {
        LineReader reader(unit);
        char* line = table;
        while (!loaded && lines < limit && reader.next(line, width)) {
            ++lines;
            const std::string_view text(line, static_cast<std::size_t>(width));
            loaded = text.find("[END]") != std::string_view::npos;
            line += width;
        }
        close_unit(unit);
    }
    if (loaded) return true;
    lines = 0;
    const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(limit);
    std::memset(table, ' ', size);
    return false;
}

} // namespace tarvane
