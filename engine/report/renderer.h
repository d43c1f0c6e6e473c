// The formula line renderer: templates with @n placeholders become finished report text.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Fills a template of 120 columns in place; does nothing with IWRITE or IWRTFL off. The digit after
// "@" is the number of decimals ("@8": exponent form), "#" ends the template. Six values at most.
void FILL_TEMPLATE(Text<120>& text, Real V1, Real V2, Real V3, Real V4, Real V5, Real V6);
// Closes up the blanks before superscripts, "^", "," and "/", and those after "/".
void CLEAN_TEMPLATE(char* text, Int len);
// Zeros before bare points, up to five of each sign, and the decimal comma.
void TIDY_NUMBERS(char* text, Int len);
void REPLACE_DECIMALS_WITH_COMMAS(char* text, Int len);
// Superscripts, one half, copyright and degree signs in plain characters.
void EXPAND_SPECIAL_CHARS(char* text, Int len);

// Number text: the digits are those of the exact stored value, an exact tie goes to the even digit.
// A negative value that rounds to zero keeps its sign with a point and loses it without; a negative
// zero has none. "NaN", "Infinity". Widths up to 64, decimals up to 20; width 0 means as few columns
// as needed.
struct NumberText {
    char chars[64];
    Int length = 0;
    std::string_view view() const { return {chars, static_cast<std::size_t>(length)}; }
};
// Fw.d: right-aligned in width columns; the zero before the point goes when the field is one column
// too small, then asterisks. decimals 0 here means "no decimals": whole number without a point,
// halves away from zero, right-aligned.
NumberText fixed_number(Real value, Int width, Int decimals);
// Fw.0 with its point ("15920."): at least one digit, halves to even, the sign as with decimals.
NumberText pointed_number(Real value, Int width);
// F0.d: as few columns as needed and no zero before the point (".500"); decimals 0 as above.
NumberText bare_number(Real value, Int decimals);
// Ew.d: mantissa 0.1 up to 1, right-aligned; the zero goes to fit, then asterisks.
NumberText exponent_number(Real value, Int width, Int decimals);
// Iw, right-aligned; width 0 for as few columns as needed.
NumberText whole_number(Int value, Int width);

} // namespace tarvane
