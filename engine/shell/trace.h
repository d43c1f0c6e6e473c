// What the stages of SHLINT pass on for a report: each formula with its title, its text in the letters of
// the code, the values of these letters and its result. SHLINT itself has no trace.
#pragma once

#include "report/lines.h"

#include <string_view>

namespace tarvane {

// Where a formula comes in the report.
enum class TRACE_GROUP {
    factor,
    thickness,
    governing, // thickness with its minima and allowances
    mawp,
    mawp_14f, // what Appendix 1-4(f) leaves of it
    map_nc,
    map_nc_14f,
    stress,
    convex_pressure, // UG-33(a)(1)
    convex_rating,
    convex_thickness,
};

struct TRACE_SYMBOL_VALUE {
    std::string_view name;  // in the text that the stage writes
    std::string_view shown; // in the report
    Real value;
    Kind kind;
};

// A value that the formulas rest on: "Corroded Inside Radius   R = D / 2 + c", or without an expression.
struct TRACE_COLUMN_VALUE {
    std::string_view label, name, expression;
    Real value;
    Kind kind;
};

struct TRACE_FORMULA_VALUE {
    static constexpr Int MOST_VALUES = 16;
    TRACE_GROUP group;
    std::string_view title; // "Required Thickness due to Internal Pressure [tr]:"
    Text<100> text;         // "P * R / ( S * E - 0.6 * P )"
    std::string_view rule;  // "UG-27 (c)(1)", or none
    Kind kind;              // of the result
    Real value;
    Int count;
    TRACE_SYMBOL_VALUE values[MOST_VALUES]; // in the order of the text
};

struct TRACE {
    static constexpr Int MOST_SYMBOLS = 40, MOST_COLUMNS = 12, MOST_FORMULAS = 32;
    Int gate;                       // IWRITE for lines that a stage writes itself, those of UG-39
    std::string_view pressure_name; // of P
    Int symbols, columns, formulas;
    TRACE_SYMBOL_VALUE symbol[MOST_SYMBOLS];
    TRACE_COLUMN_VALUE column[MOST_COLUMNS];
    TRACE_FORMULA_VALUE formula[MOST_FORMULAS];
};

void BEGIN_TRACE(TRACE& trace, Int gate, std::string_view pressure_name = "P");

// A letter of the texts that follow. It holds until it is given again.
void TRACE_SYMBOL(TRACE& trace, std::string_view name, Real value, Kind kind,
                  std::string_view shown = {});
// The same with a column line of its own.
void TRACE_COLUMN(TRACE& trace, std::string_view label, std::string_view name,
                  std::string_view expression, Real value, Kind kind);
// The text may have + - * / brackets, the superscript two (Western character 178), ln, exp, sqrt, max
// and min; what else begins with a letter is a symbol, "cos(alpha)" as a whole.
void TRACE_FORMULA(TRACE& trace, TRACE_GROUP group, std::string_view title, std::string_view text,
                   std::string_view rule, Kind kind, Real value);
// A formula whose result is a symbol of those that follow.
void TRACE_FACTOR(TRACE& trace, std::string_view title, std::string_view name,
                  std::string_view text, std::string_view rule, Real value,
                  Kind kind = Kind::factor);

// ---- lines --------------------------------------------------------------------------------------------

// Title, symbol line, number lines, value line. Lengths all go as thicknesses. Where pressures and
// stresses are shown in different units, both go as the one that the result is shown in (a length: as
// pressures), so that the arithmetic of the line holds.
void WRITE_TRACED(const TRACE& trace, TRACE_GROUP group);
void WRITE_TRACED_COLUMNS(const TRACE& trace);

} // namespace tarvane
