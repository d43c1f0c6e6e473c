// Data files: how a name becomes a path, file units, text tables, numbers in free form.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// First unit from 10 to 1000 that is not open; 1001 when there is none. It is not reserved.
void GETNEXTUNIT(Int& unit);
// A unit the engine opens itself for reading or writing; the handle behind it, -1 when it is closed.
bool open_unit_for_reading(Int unit, std::string_view path);
bool open_unit_for_writing(Int unit, std::string_view path);
Int unit_handle(Int unit);
void close_unit(Int unit);

// path = system directory + separator + name. An empty system directory gives an empty path.
void SYSTEM_FILE_PATH(Text<260>& path, Int& path_len, std::string_view name);
// `path` holds a file name on entry and its full path on return: beside the library if a file is
// there, else in the system directory.
void RESOLVE_DATA_FILE(Text<256>& path, Int& path_len);

// A text file, read line by line into a fixed-width buffer. A carriage return before the line end is
// not part of the line; longer lines are cut to the width, shorter ones blank-padded.
class LineReader {
  public:
    explicit LineReader(Int unit);
    // False at the end of the file or on an error.
    bool next(char* line, Int width);
    void rewind();

  private:
    Int handle;
    Int position = 0, filled = 0;
    char buffer[4096];
    bool get(char& c);
};

// Fills a table of fixed-width lines from a file in the system directory. Success (and a loaded
// flag) only when a line with "[END]" was seen; `lines` counts that line too.
bool READ_TEXT_TABLE(std::string_view name, char* table, Int width, Int limit, Int& lines);

// Numbers in free form, as list-directed input reads them: blanks, a comma, a slash or a semicolon
// end an item. Success and value; on failure both results are 0.
bool PARSE_REAL(std::string_view text, Real& value, Int& whole);
// Reads up to `count` numbers; returns how many were read. Columns of absent ones stay.
Int PARSE_REALS(std::string_view text, Real* values, Int count);

Real LINEAR_INTERP(Real x1, Real x, Real x2, Real y1, Real y2);
Real LOG_INTERP(Real x1, Real x, Real x2, Real y1, Real y2);
void NEWTON_SOLVE(double (*f)(double), double (*df)(double), double x0, double tolerance, Int& count,
                  double& x);
void SQUEEZE_TEXT(std::string_view source, char* target, Int target_len, Int keep);

} // namespace tarvane
