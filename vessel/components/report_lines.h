// Report lines of the host's own, in the form of the engine's: through the report channel, after
// BEGIN_REPORT.
#pragma once

#include "catalogue/units.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvane::vessel {

using LineStyle = std::int32_t[6];
inline constexpr LineStyle PLAIN_LINE{}, NOTE_LINE{0, 0, 0, 1, 0, 0},
    WARNING_LINE{0, 0, 1, 0, 0, 0}, ERROR_LINE{0, 0, 0, 0, 1, 0};

void report_line(std::string_view text, const LineStyle& style = PLAIN_LINE);
void report_heading(std::string_view text);
// Label, value right-aligned to column 60, unit. `kind` is one of TARVANE_AS_THICKNESS and so on.
void report_column(std::string_view label, float value, std::int32_t kind);
// The same for an input value, its symbol ending in column 44.
void report_input(std::string_view text, std::string_view symbol, float value, std::int32_t kind);
// A value as a text that ends in column 60. All texts are Western.
void report_value(std::string_view label, std::string_view value, std::string_view unit = {});
void report_input_value(std::string_view text, std::string_view symbol, std::string_view value,
                        std::string_view unit = {});
// A temperature (F) as a whole number in the units of the file.
void report_temperature(std::string_view label, float value, const UnitSystem& units);
// A name that begins in column 43, padded with blanks.
void report_name(std::string_view label, std::string_view name);
// The blank line and the line that open the report of an element.
void report_opening(std::string_view title, std::string_view description);

} // namespace tarvane::vessel
