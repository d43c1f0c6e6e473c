// Furniture of the report file: date and time, the page of contents, the closing note.
#pragma once

#include "frame/text.h"

#include <string_view>

namespace tarvane {

// "Jan 15,2024" and " 9:05am", by the host's clock. A day below 10: " Jan 5,2024".
void REPORT_DATE(Text<11>& date, Text<9>& time);

// Records at the head of a report file, which the host's print step reads: "CTABL:" with date and time,
// three "T" records of the title's 192 characters, and the place of the contents. Without a file of a
// report unit nothing is written.
void WRITE_FRONT_PAGE(std::string_view title);

// The last line of a calculation.
void CLOSING_NOTE();

} // namespace tarvane
