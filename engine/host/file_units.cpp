#include "host/file_units.h"

#include "host/file_identity.h"

#include <cstring>

namespace tarvane {

namespace {

constexpr Int CLOSED = -1;

bool any_lost = false; // by any of the units

struct UNIT {
    Int handle_and_one; // one higher than the handle, so that a unit is closed at load
    TAKE_RECORD take;   // of a unit whose records go to the host
    void* user;
    bool lost; // something that was written is lost
};
UNIT units[LAST_UNIT + 1] = {};

Int TARVANE_HOST_CALL refuse(void*, const char*, Int) { return 1; }

bool is_unit(Int unit) { return unit >= 1 && unit <= LAST_UNIT; }

bool is_open(Int unit) {
    return is_unit(unit) && (units[unit].handle_and_one != 0 || units[unit].take != nullptr);
}

void note_lost(UNIT& unit) { unit.lost = any_lost = true; }

bool attach(Int unit, Int handle) {
    LOOK_AGAIN();
    if (handle == CLOSED) return false;
    units[unit].handle_and_one = handle + 1;
    return true;
}

// Goes to the start of a record; false when there is no such place.
bool at_record(Int handle, Int record, Int length) {
    if (handle == CLOSED || record < 1 || length < 1) return false;
    const std::int64_t offset = static_cast<std::int64_t>(record - 1) * length;
    return offset <= INT32_MAX && seek_to(handle, static_cast<Int>(offset));
}

} // namespace

void GETNEXTUNIT(Int& unit) {
    unit = FIRST_UNIT;
    while (unit <= LAST_UNIT && is_open(unit))
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

bool hold_unit(Int unit) {
    if (!is_unit(unit)) return false;
    close_unit(unit);
    units[unit].take = refuse;
    return true;
}

Int unit_handle(Int unit) { return is_unit(unit) ? units[unit].handle_and_one - 1 : CLOSED; }

void close_unit(Int unit) {
    if (!is_open(unit)) return;
    UNIT& open = units[unit];
    if (unit_handle(unit) != CLOSED && !close_handle(unit_handle(unit))) note_lost(open);
    open = {.handle_and_one = 0, .take = nullptr, .user = nullptr, .lost = open.lost};
}

void close_unit_and_delete(Int unit) {
    const Int handle = unit_handle(unit);
    if (handle == CLOSED) {
        close_unit(unit);
        return;
    }
    delete_and_close(handle);
    units[unit].handle_and_one = 0;
}

void OPENUNIT(Int unit, std::string_view path, Int& status) {
    status = open_unit_for_writing(unit, trimmed(path)) ? 0 : 1;
    if (!is_unit(unit)) return;
    units[unit].lost = false;
    if (status != 0) note_lost(units[unit]);
}

void OPENHOSTUNIT(Int unit, TAKE_RECORD take, void* user, Int& status) {
    status = 1;
    if (!is_unit(unit)) return;
    close_unit(unit);
    if (take != nullptr) status = 0;
    units[unit] = {.handle_and_one = 0, .take = take, .user = user, .lost = false};
    if (status != 0) note_lost(units[unit]);
}

bool write_to_unit(Int unit, const char* from, Int count) {
    if (!is_unit(unit)) return false;
    const LOOKS_ARE meanwhile(Looks::own);
    UNIT& to = units[unit];
    const bool written =
        to.take != nullptr ? to.take(to.user, from, count) == 0
                           : to.handle_and_one != 0 && write_bytes(unit_handle(unit), from, count);
    if (!written) note_lost(to);
    return written;
}

Int UNIT_STATUS(Int unit) { return is_unit(unit) && !units[unit].lost ? 0 : 1; }

void RESET_UNITS() {
    if (!any_lost) return;
    any_lost = false;
    for (Int unit = 1; unit <= LAST_UNIT; ++unit) {
        if (!is_open(unit)) units[unit].lost = false;
        if (units[unit].lost) any_lost = true;
    }
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
    Int length = 0; // of the line, with what passes the width
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
        length += count;
        if (length > LONGEST_LINE) {
            position = filled = 0;
            failed = true;
            break;
        }
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
    LOOK_AGAIN();
    const Int handle = unit_handle(unit);
    return at_record(handle, record, length) && write_bytes(handle, from, length);
}

} // namespace tarvane
