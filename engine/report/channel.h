// The report channel: every line of a report passes through WRITE_LINE, which sends it to the
// host's file unit, to the line store, or nowhere.
#pragma once

#include "frame/switches.h"
#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Gates. IWRITE is the master switch, IWRTFL the switch of the present pass, IOUT the destination:
// 0 nowhere, positive a file unit, negative the line store.
extern Int IWRITE, IOUT, IWRTFL;
extern Int IOSTEP, IWRTCA; // stored for the host, not read

// Six style marks; they go out with the next line.
struct Style {
    Int m1, m2, m3, m4, m5, m6;
    friend bool operator==(const Style&, const Style&) = default;
};
inline constexpr Style PLAIN{0, 0, 0, 0, 0, 0};
inline constexpr Style HEADING_STYLE{0, 0, 0, 0, 0, 2};
inline constexpr Style UNDERLINED_STYLE{0, 1, 0, 0, 0, 0};
inline constexpr Style MESSAGE_STYLE{0, 0, 0, 0, 0, 1};
inline constexpr Style NOTE_STYLE{0, 0, 0, 1, 0, 0};
inline constexpr Style WARNING_STYLE{0, 0, 1, 0, 0, 0};
inline constexpr Style ERROR_STYLE{0, 0, 0, 0, 1, 0}; // overstress and failure too
inline constexpr Style HIGHLIGHT_STYLE{1, 0, 0, 0, 0, 0};

// Shared buffers.
extern Text<100> OUTLINE;
extern Text<120> TEMPLATE;

// The line store: 750 records of 125 characters, and the number of records used.
inline constexpr Int STORE_RECORDS = 750;
inline constexpr Int STORE_WIDTH = 125;
extern char LINESCOM[STORE_RECORDS][STORE_WIDTH];
extern Int LINE_COUNT;
extern bool LINE_STORE_GIVEN; // the host has its address, and may write anywhere in it

extern bool STYLE_ENABLED; // set by FLANGE_CALC, cleared by RESET_REPORT only
extern bool DECIMAL_COMMA; // last argument of the latest FLANGE_CALC
extern Int G_NSIGDIGITS;   // 0; not read, numbers always go by decimal places

// Outcome of the latest record written to a file unit: 0, or 1 when it failed. Nothing reads it; a
// host that wants to know asks UNIT_STATUS.
extern Int WRITE_STATUS;

// True when a line that is written now goes anywhere at all.
inline bool reporting() { return IWRITE != 0 && IWRTFL != 0 && IOUT != 0; }

// A record of the report file without the leading blank of a report line and without marks. False when
// the unit has no file or the write failed.
bool WRITE_RECORD_AS_IT_STANDS(const char* text, Int len);

// Sets the style of the next line, and looks up the switch for plain characters. Before
// the first FLANGE_CALC no marks are kept; m2 then asks for a rule under the next line.
void SET_LINE_STYLE(Int m1, Int m2, Int m3, Int m4, Int m5, Int m6);
// Writes up to 100 columns and blanks the text over its whole length.
void WRITE_LINE(char* text, Int len);
void WRITE_BLANK_LINE(char* text, Int len);
// The text, and under it a rule of its own length.
void WRITE_UNDERLINED(char* text, Int len);
// Copies a filled template into a line. Below mode 3 every run of blanks becomes one, in the source
// too; from mode 3 on the first `mode` columns stay as they are and the source keeps its blanks.
void FIT_TO_LINE(char* source, Int source_len, char* target, Int target_len, Int mode);
void NUL_TO_BLANK(char* text, Int len);
void TO_UPPER(char* text, Int len);

// A line is begun once it has marks, an underline flag or a text in OUTLINE, until it is written.
extern bool LINE_BEGUN;
extern Int SPECIAL_LATCH; // the switch for plain characters, as of the latest style
void DROP_LINE();         // no marks, no underline flag, OUTLINE blank

// The state after a line that goes nowhere. A style that would have been set counts as set.
inline void SKIP_LINE(const Style& style) {
    if (style != PLAIN) SPECIAL_LATCH = FLAGS_mp_IINOSPECIAL;
    if (LINE_BEGUN) DROP_LINE();
}

// Entry of FLANGE_CALC: style-enabled flag true, line count 0, record 500 blank.
void OPEN_LINE_STORE();

// Line store, gates, marks, flags and counters back to their state at load.
void RESET_REPORT();

} // namespace tarvane
