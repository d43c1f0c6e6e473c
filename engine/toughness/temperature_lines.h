// Report lines of a temperature: values in degrees Fahrenheit, shown in the user's degrees, whole.
#pragma once

#include "report/lines.h"

namespace tarvane {

// The unit of the UCS-66 and AM-218 lines.
inline constexpr std::string_view DEGREES = "degrees";

inline Real as_temperature_difference(Real x) { return x / UNITS.temperature_scale; }

inline void TEMPERATURE_LINE(std::string_view label, Real T, std::string_view unit = DEGREES) {
    COLUMN_LINE_IN(label, as_temperature(T), 0, unit);
}
inline void DIFFERENCE_LINE(std::string_view label, Real difference,
                            std::string_view unit = DEGREES) {
    COLUMN_LINE_IN(label, as_temperature_difference(difference), 0, unit);
}

inline void NOTE_LINE(std::string_view text) { TEXT_LINE(text, NOTE_STYLE); }

} // namespace tarvane
