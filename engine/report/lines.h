// The forms in which a calculation writes: text lines, column lines, value lines, formula lines.
// With the report off each returns at once, without formatting (the test is in line, so that a silent
// pass prepares nothing either), and leaves the channel as a line that goes nowhere does: no marks,
// OUTLINE blank. A plain line sets no style, so that marks which a caller set before go out with it.
#pragma once

#include "frame/text.h"
#include "frame/types.h"
#include "frame/units.h"
#include "report/channel.h"
#include "report/renderer.h"

#include <initializer_list>
#include <string_view>

namespace tarvane {

// Kind of a value: it selects unit factor, unit label and decimals.
//                 column line   value line
//   thickness          4            4
//   diameter           3            4
//   pressure           2            3
//   stress             2            2
//   force              2            3
//   moment             2            3
//   area               3            3
//   weight             2            3
//   factor             3            4      no unit
enum class Kind { thickness, diameter, pressure, stress, force, moment, area, weight, factor };

// The value through the unit factor of its kind (a moment: inch-pounds / 12 * factor).
Real shown(Real value, Kind kind);
// The label of the kind, trimmed.
std::string_view unit_label(Kind kind);

inline constexpr Int HOUSE_DECIMALS = -1; // the decimals of the table above

// A line as it is; what passes column 100 is cut.
inline void TEXT_LINE(std::string_view text, const Style& style = PLAIN);
inline void BLANK_LINE();
// A title in the heading style.
inline void HEADING(std::string_view text);
// A text and under it a rule of its own length (WRITE_UNDERLINED).
inline void UNDERLINED_LINE(std::string_view text, const Style& style = PLAIN);

// Label, value right-aligned, two blanks, unit. The value ends in column 60, in a field of at least
// 10 columns; the label counts as it is written, trailing blanks included.
inline void COLUMN_LINE(std::string_view label, Real value, Kind kind, const Style& style = PLAIN,
                        Int decimals = HOUSE_DECIMALS);
// " = ", the bare value, one blank, the unit, the remark: a remark that begins with a comma follows
// the unit directly, any other follows it after two blanks.
inline void VALUE_LINE(Real value, Kind kind, std::string_view remark = {},
                       const Style& style = PLAIN, Int decimals = HOUSE_DECIMALS);
// The same two forms for a value already in report units, with a unit of the caller's.
inline void COLUMN_LINE_IN(std::string_view label, Real value, Int decimals, std::string_view unit,
                           const Style& style = PLAIN);
inline void VALUE_LINE_IN(Real value, Int decimals, std::string_view unit,
                          std::string_view remark = {}, const Style& style = PLAIN);

// The template, filled with up to six values in report units, fitted in `mode`, written. A unit follows
// the template after one blank, before its closing "#", and is filled and cleaned with it.
inline void NUMBER_LINE(std::string_view text, std::initializer_list<Real> values, Int mode = 1,
                        std::string_view unit = {}, const Style& style = PLAIN);

// A line put together from pieces, column by column. With the report off nothing is composed and the
// view stays empty; a text that goes elsewhere too (a message box, say) is composed always.
enum class Compose { for_report, always };
class LinePieces {
  public:
    explicit LinePieces(Compose when = Compose::for_report)
        : line(Unfilled{}), active(when == Compose::always || reporting()) {
        if (active) line.clear();
    }
    LinePieces& text(std::string_view piece) {
        if (active) put(piece);
        return *this;
    }
    LinePieces& blanks(Int count) {
        if (active) put_blanks(count);
        return *this;
    }
    // Blank-padded or cut to width.
    LinePieces& padded(std::string_view piece, Int width) {
        if (active) put_padded(piece, width);
        return *this;
    }
    // Fw.d
    LinePieces& fixed(Real value, Int width, Int decimals) {
        if (active) put(fixed_number(value, width, decimals).view());
        return *this;
    }
    // Fw.0, with its point
    LinePieces& pointed(Real value, Int width) {
        if (active) put(pointed_number(value, width).view());
        return *this;
    }
    // Ew.d
    LinePieces& exponent(Real value, Int width, Int decimals) {
        if (active) put(exponent_number(value, width, decimals).view());
        return *this;
    }
    // F0.d, no zero before the point
    LinePieces& bare(Real value, Int decimals) {
        if (active) put(bare_number(value, decimals).view());
        return *this;
    }
    // Iw; 0 for as few columns as needed
    LinePieces& whole(Int value, Int width) {
        if (active) put(whole_number(value, width).view());
        return *this;
    }
    // The next piece begins there; what is after it is dropped.
    LinePieces& to_column(Int column) {
        if (active) put_to_column(column);
        return *this;
    }
    std::string_view view() const { return line.columns(1, cursor); } // as far as written
    void write(const Style& style = PLAIN) const { TEXT_LINE(view(), style); }

  private:
    Text<120> line;
    Int cursor = 0; // columns written
    bool active;

    void put(std::string_view piece);
    void put_blanks(Int count);
    void put_padded(std::string_view piece, Int width);
    void put_to_column(Int column);
};

// ---- the forms in line -----------------------------------------------------------------------------

// The same with the report on.
void WRITE_TEXT(std::string_view text, const Style& style);
void WRITE_UNDERLINED_TEXT(std::string_view text, const Style& style);
void WRITE_COLUMN(std::string_view label, Real value, Kind kind, const Style& style, Int decimals);
void WRITE_VALUE(Real value, Kind kind, std::string_view remark, const Style& style, Int decimals);
void WRITE_COLUMN_IN(std::string_view label, Real value, Int decimals, std::string_view unit,
                     const Style& style);
void WRITE_VALUE_IN(Real value, Int decimals, std::string_view unit, std::string_view remark,
                    const Style& style);
void WRITE_NUMBERS(std::string_view text, std::initializer_list<Real> values, Int mode,
                   std::string_view unit, const Style& style);

inline void TEXT_LINE(std::string_view text, const Style& style) {
    reporting() ? WRITE_TEXT(text, style) : SKIP_LINE(style);
}
inline void BLANK_LINE() { TEXT_LINE({}); }
inline void HEADING(std::string_view text) { TEXT_LINE(text, HEADING_STYLE); }
inline void UNDERLINED_LINE(std::string_view text, const Style& style) {
    reporting() ? WRITE_UNDERLINED_TEXT(text, style) : SKIP_LINE(style);
}
inline void COLUMN_LINE(std::string_view label, Real value, Kind kind, const Style& style,
                        Int decimals) {
    reporting() ? WRITE_COLUMN(label, value, kind, style, decimals) : SKIP_LINE(style);
}
inline void VALUE_LINE(Real value, Kind kind, std::string_view remark, const Style& style,
                       Int decimals) {
    reporting() ? WRITE_VALUE(value, kind, remark, style, decimals) : SKIP_LINE(style);
}
inline void COLUMN_LINE_IN(std::string_view label, Real value, Int decimals, std::string_view unit,
                           const Style& style) {
    reporting() ? WRITE_COLUMN_IN(label, value, decimals, unit, style) : SKIP_LINE(style);
}
inline void VALUE_LINE_IN(Real value, Int decimals, std::string_view unit, std::string_view remark,
                          const Style& style) {
    reporting() ? WRITE_VALUE_IN(value, decimals, unit, remark, style) : SKIP_LINE(style);
}
inline void NUMBER_LINE(std::string_view text, std::initializer_list<Real> values, Int mode,
                        std::string_view unit, const Style& style) {
    reporting() ? WRITE_NUMBERS(text, values, mode, unit, style) : SKIP_LINE(style);
}

} // namespace tarvane
