// Numbers in free form, and the small numeric helpers that go with table data.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Numbers in free form, as list-directed input reads them. Blanks, a comma, a slash or a semicolon
// end an item; "3*4" stands for three items of 4; the exponent letter is E, D or Q, and may be left
// out before its sign; an item left out before a comma, or after a slash, is a null value, which
// leaves its variable as it was. What exceeds the range of a REAL is infinite.

// The first item. Success and value, 0 for a null value; on failure both results are 0.
bool PARSE_REAL(std::string_view text, Real& value, Int& whole);
// Reads up to `count` numbers and returns how many were read (null values among them), up to the
// end of the text or the first item that is no number. The values of absent ones are not changed.
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
