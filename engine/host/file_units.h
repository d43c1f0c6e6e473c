// File units: numbers for open files, and what is read and written by them, lines and records.
#pragma once

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
// The handle of a unit, -1 when it has no file.
Int unit_handle(Int unit);
// Makes a unit count as open, in place of the file that it would read. False for what is no unit.
bool hold_unit(Int unit);
void close_unit(Int unit);
void close_unit_and_delete(Int unit);

// Opens the file of a report unit of the host's; status 0 open, 1 failed.
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
// Forgets the losses of units that are closed.
void RESET_UNITS();

// ---- lines and records ---------------------------------------------------------------------------
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

} // namespace tarvane
