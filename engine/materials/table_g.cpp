#include "materials/table_g.h"

#include "frame/files/data_files.h"
#include "frame/numbers.h"
#include "host/file_units.h"

#include <cstring>

namespace tarvane {

namespace {

constexpr Int FILE_LINES = 470;
constexpr std::size_t LINE_WIDTH = 20;
constexpr Real NO_ANSWER = -1.0f;

constexpr Int KEYS = 24;
constexpr Real D_OVER_T[KEYS] = {4.0f,   5.0f,   6.0f,   8.0f,   10.0f,  15.0f,  20.0f,  25.0f,
                                 30.0f,  40.0f,  50.0f,  60.0f,  80.0f,  100.0f, 125.0f, 150.0f,
                                 200.0f, 250.0f, 300.0f, 400.0f, 500.0f, 600.0f, 800.0f, 1000.0f};

char table_lines[FILE_LINES][LINE_WIDTH];
Int line_count = 0;
bool loaded = false;
bool was_read = false; // also when that did not succeed

// Reads the file beside the library. A table that is not complete is used for this lookup, and the
// next one reads it again.
void LOAD_TABLE() {
    if (loaded) return;
    line_count = 0;
    was_read = true;
    Text<260> path;
    Int path_len = 0, unit = 0;
    MODULE_FILE_PATH(path, path_len, "TableGData.txt");
    GETNEXTUNIT(unit);
    if (!open_unit_for_reading(unit, path.columns(1, path_len))) return;
    LineReader file(unit);
    while (line_count < FILE_LINES && file.next(table_lines[line_count], LINE_WIDTH))
        ++line_count;
    close_unit(unit);
    loaded = line_count == FILE_LINES;
}

std::string_view line_at(Int index) { return left_justified({table_lines[index], LINE_WIDTH}); }

bool is_comment(std::string_view line) { return line.starts_with(';'); }
bool is_skipped(std::string_view line) { return line.empty() || is_comment(line); }
bool is_header(std::string_view line) { return line.find('[') != std::string_view::npos; }

// A row, L/D and A.
struct ROW {
    Real ld = 0.0f, a = 0.0f;
};
bool read_row(std::string_view line, ROW& row) {
    Real x[2] = {};
    if (is_comment(line) || is_header(line) || PARSE_REALS(line, x, 2) < 2) return false;
    row = {x[0], x[1]};
    return true;
}

// The line after the header of a key; past the last line when there is none, or a header without a
// number comes first.
Int section_of(Real key) {
    for (Int index = 0; index < line_count; ++index) {
        const std::string_view line = line_at(index);
        const std::size_t open = line.find('['), close = line.find(']');
        if (is_skipped(line) || open == std::string_view::npos || close == std::string_view::npos)
            continue;
        Real number = 0.0f;
        if (close < open || PARSE_REALS(line.substr(open + 1, close - open - 1), &number, 1) < 1)
            return line_count;
        if (number == key) return index + 1;
    }
    return line_count;
}

} // namespace

void TABLE_G_ROW(Real key, Real ld, Real& a) {
    LOAD_TABLE();
    a = NO_ANSWER;
    for (Int index = section_of(key); index < line_count; ++index) {
        const std::string_view line = line_at(index);
        if (is_skipped(line)) continue;
        ROW row;
        if (!read_row(line, row)) return; // the next header too
        if (!(ld <= row.ld)) continue;
        const std::string_view line_before = line_at(index - 1);
        ROW before;
        if (line_before.empty())
            a = row.a;
        else if (read_row(line_before, before))
            a = LOG_INTERP(before.ld, ld, row.ld, before.a, row.a);
        return;
    }
}

void TABLE_G_FACTOR_A(Real dt, Real ld, Real& a) {
    const Real x = max(dt, D_OVER_T[0]);
    Int at =
        1; // place of the first key that x does not exceed, one after the last one if there is none
    while (at <= KEYS && !(x <= D_OVER_T[at - 1]))
        ++at;
    const Int i = max(at - 1, 1);
    const Int j = min(i + 1, KEYS);
    const Real key1 = D_OVER_T[i - 1], key2 = D_OVER_T[j - 1];
    Real a1, a2;
    TABLE_G_ROW(key1, ld, a1);
    TABLE_G_ROW(key2, ld, a2);
    a = NO_ANSWER;
    if (!(a1 > 0.0f && a2 > 0.0f)) return;
    if (i == j) {
        a = a1;
        return;
    }
    const Real linear = LINEAR_INTERP(key1, x, key2, a1, a2);
    const Real logarithmic = LOG_INTERP(key1, x, key2, a1, a2);
    a = (linear + logarithmic) * 0.5f;
}

void RESET_TABLE_G() {
    if (was_read) std::memset(table_lines, 0, sizeof table_lines);
    was_read = false;
    line_count = 0;
    loaded = false;
}

} // namespace tarvane
