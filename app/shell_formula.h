// A formula of the shell report, written once: its symbol line, its number line and its value come from
// one text.
#pragma once

#include "tarvane/tarvane.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvane::app {

// Kinds of values, for short.
namespace as {
inline constexpr int LENGTH = TARVANE_AS_DIAMETER, THICKNESS = TARVANE_AS_THICKNESS,
                     FACTOR = TARVANE_AS_FACTOR, PRESSURE = TARVANE_AS_PRESSURE,
                     STRESS = TARVANE_AS_STRESS;
} // namespace as

// What a letter of a formula stands for: a value in the engine's units, and its TARVANE_AS_... kind.
struct Symbol {
    std::string name;
    float value;
    int kind;
};

class Symbols {
  public:
    void put(std::string_view name, float value, int kind);
    // Throws std::logic_error for a name that nobody has put.
    const Symbol& find(std::string_view name) const;

  private:
    std::vector<Symbol> symbols;
};

// One line of WRITE_NUMBERS.
struct NumberLine {
    std::string text; // with "@n" in the place of each symbol
    std::vector<float> values;
    std::vector<int> kinds;
};

struct Formula {
    std::string title;          // "Required Thickness [tr]:"
    std::string text;           // "P * R / ( S * E - 0.6 * P )"
    std::string rule;           // "UG-27 (c)(1)", or none
    int kind;                   // of the value
    float value;                // in single precision, from left to right
    std::vector<Symbol> values; // of the symbols, in the order of the text
};

// `text` knows + - * / brackets, the superscript two (Western character 178), ln, exp, sqrt, max and min;
// what else begins with a letter is a symbol.
Formula formula(std::string_view title, std::string_view text, std::string_view rule, int kind,
                const Symbols& symbols);

// Gives a symbol of the formula another name.
void rename_symbol(Formula& formula, std::string_view from, std::string_view to);

// The number lines. Lengths all go as thicknesses. Where pressures and stresses are shown in different
// units, both go as the one that the result is shown in (a length: as pressures), so that the arithmetic
// of the line holds.
std::vector<NumberLine> number_lines(const Formula& formula, bool stress_unit_differs);

} // namespace tarvane::app
