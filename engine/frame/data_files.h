// Data files: how a name becomes a path, file units, text tables, numbers in free form.
#pragma once

#include "frame/text.h"
#include "frame/types.h"
#include "host/services.h"

#include <string_view>

namespace tarvane {

// ---- units -----------------------------------------------------------------------------------
inline constexpr Int FIRST_UNIT = 10; // numbers below are the host's
inline constexpr Int LAST_UNIT = 1000;

// First unit from 10 to 1000 that is not open; 1001 when there is none. It is not reserved.
void GETNEXTUNIT(Int& unit);
// Units 1 to 1000. Opening a unit that is open closes what it had. False for a unit outside the
// range and for a file that can't be opened.
bool open_unit_for_reading(Int unit, std::string_view path);
bool open_unit_for_writing(Int unit, std::string_view path); // created or emptied
bool open_unit_for_update(Int unit, std::string_view path);  // created or as it is
// The handle behind a unit, -1 when it has no file.
Int unit_handle(Int unit);
void close_unit(Int unit);
void close_unit_and_delete(Int unit);

// The file behind a report unit of the host's; status 0 open, 1 failed.
void OPENUNIT(Int unit, std::string_view path, Int& status);
// A report unit without a file: what is written goes to a routine of the host's, which answers 0 when
// it has taken it. Status 1 for a unit outside the range and without a routine.
using TAKE_RECORD = Int(TARVANE_HOST_CALL*)(void* user, const char* text, Int length);
void OPENHOSTUNIT(Int unit, TAKE_RECORD take, void* user, Int& status);
// Writes to a report unit; false when it has neither file nor routine, or not everything got there.
bool write_to_unit(Int unit, const char* from, Int count);
// 1 once something that went to a unit is lost, or its opening failed; 0 when it is opened again.
// Always 1 for what is no unit.
Int UNIT_STATUS(Int unit);
// Forgets what was lost of units that are closed.
void RESET_UNITS();

// ---- paths -----------------------------------------------------------------------------------
// path = system directory + separator + name. An empty system directory gives an empty path, and so
// does a path of more than 260 characters.
void SYSTEM_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name);
// The same beside the library; empty when it has no folder.
void MODULE_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name);
// `path` holds a file name on entry and its full path on return: beside the library if a file is
// there, else in the system directory. Without a folder of the library the name stays.
void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len);

// ---- reading -----------------------------------------------------------------------------------
// A text file, read line by line into a fixed-width buffer. A carriage return before the line end is
// not part of the line; longer lines are cut to the width, shorter ones blank-padded. A line of more than
// LONGEST_LINE characters belongs to no text file and is an error.
inline constexpr Int LONGEST_LINE = 65536;
class LineReader {
  public:
    explicit LineReader(Int unit);
    // False at the end of the file or on an error; the line is then blank.
    bool next(char* line, Int width);
    void rewind();
    bool broken() const { return failed; } // an error ended the reading

  private:
    Int handle;
    Int position = 0, filled = 0;
    bool failed = false;
    char buffer[4096];
    bool fill(); // false at the end of the file and on an error
};

// A record of a binary file with records of `length` bytes, counted from 1. False when it is not
// there in full.
bool READ_RECORD(Int unit, Int record, char* into, Int length);

bool WRITE_RECORD(Int unit, Int record, const char* from, Int length);

// Fills a table of fixed-width lines from a file in the system directory. Success (and a loaded
// flag) only when a line with "[END]" was seen; `lines` counts that line too. Without success the
// table is blank and `lines` 0.
bool READ_TEXT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines);

// ---- numbers -----------------------------------------------------------------------------------
// Numbers in free form, as list-directed input reads them. Blanks, a comma, a slash or a semicolon
// end an item; "3*4" stands for three items of 4; the exponent letter is E, D or Q, and may be left
// out before its sign; an item left out before a comma, or behind a slash, is a null value, which
// leaves its variable as it was. What exceeds the range of a REAL is infinite.

// The first item. Success and value, 0 for a null value; on failure both results are 0.
bool PARSE_REAL(std::string_view text, Real& value, Int& whole);
// Reads up to `count` numbers and returns how many were read (null values among them), up to the
// end of the text or the first item that is no number. Columns of absent ones stay.
Int PARSE_REALS(std::string_view text, Real* values, Int count);

// y1 + (y2 - y1) * (x - x1) / (x2 - x1), and the same form on decimal logarithms.
Real LINEAR_INTERP(Real x1, Real x, Real x2, Real y1, Real y2);
Real LOG_INTERP(Real x1, Real x, Real x2, Real y1, Real y2);
// Newton's method from x0 (0.0 counts as 1.0) until a step is at most the tolerance, 501 steps at
// most; `count` is the number of steps made.
void NEWTON_SOLVE(double (*f)(double), double (*df)(double), double x0, double tolerance,
                  Int& count, double& x);
// The first `keep` columns as they are, from there on without blanks, into a blanked target; at
// most 73 columns.
void SQUEEZE_TEXT(std::string_view source, char* target, Int target_len, Int keep);

} // namespace tarvane
