// The formula line renderer: templates with @n placeholders become finished report text.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Fills TEMPLATE-like buffers of 120 columns in place; does nothing with IWRITE or IWRTFL off.
void FILL_TEMPLATE(Text<120>& text, Real V1, Real V2, Real V3, Real V4, Real V5, Real V6);
void CLEAN_TEMPLATE(char* text, Int len);
void TIDY_NUMBERS(char* text, Int len);
void REPLACE_DECIMALS_WITH_COMMAS(char* text, Int len);
void EXPAND_SPECIAL_CHARS(char* text, Int len);

// Number text, digits of the exact stored value. Each writes into `out` (a field of at least
// `width`, or 64 characters) and returns the text.
struct NumberText {
    char chars[64];
    Int length = 0;
    std::string_view view() const { return {chars, static_cast<std::size_t>(length)}; }
};
// Fw.d: right-aligned in width columns; the zero before the point goes when the field is one column
// too small, then asterisks. decimals 0 here means "no decimals": whole number without a point,
// halves away from zero, right-aligned.
NumberText fixed_number(Real value, Int width, Int decimals);
// F0.d: as few columns as needed and no zero before the point (".500"); decimals 0 as above.
NumberText bare_number(Real value, Int decimals);
// Ew.d: mantissa 0.1 up to 1, right-aligned; the zero goes to fit, then asterisks.
NumberText exponent_number(Real value, Int width, Int decimals);
// Iw, right-aligned; width 0 for as few columns as needed.
NumberText whole_number(Int value, Int width);

} // namespace tarvane
