// Stresses by temperature, as the material and yield files hold them: 32 places at 100, 150, 200 F and so
// on, in metric files at 40, 65, 100, 125 C and so on.
#pragma once

#include "table.h"

#include <array>

namespace tarvane::data {

inline constexpr std::size_t PLACES = 32;
using TemperatureRow = std::array<float, PLACES>;

// The columns of a table for these temperatures, "100" to "1650".
inline constexpr std::array<std::string_view, PLACES> TEMPERATURE_COLUMNS = {
    "100",  "150",  "200",  "250",  "300",  "350",  "400",  "450",  "500",  "550",  "600",
    "650",  "700",  "750",  "800",  "850",  "900",  "950",  "1000", "1050", "1100", "1150",
    "1200", "1250", "1300", "1350", "1400", "1450", "1500", "1550", "1600", "1650"};

// What an engine that reads a metric file multiplies MPa by, to have ksi, and divides mm by, to have
// inches.
inline constexpr float KSI_OF_MPA = 0.145038f;
inline constexpr float MM_OF_INCH = 25.4f;

// The figures of a row in columns that are named by temperatures: one in the first column, none higher
// than the one before. A blank between two figures is filled on the straight line between them; after the
// last one the places hold 0.
void take_figures(const Row& row, std::span<const std::string_view> columns,
                  std::span<float> figures);

// Those of TEMPERATURE_COLUMNS, ksi.
TemperatureRow temperature_row(const Row& row);

// Temperature of a place in a metric file, degrees C.
float metric_temperature(std::size_t place);

// The same in MPa at the metric temperatures; 40 C is used for 100 F. A place holds 0 when it is above the
// last figure.
TemperatureRow metric_row(const TemperatureRow& row);

} // namespace tarvane::data
