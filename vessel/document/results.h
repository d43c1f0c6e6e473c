// Numbers as a reader sees them, and tables with the results of several elements side by side.
#pragma once

#include "catalogue/units.h"
#include "fields/results.h"
#include "values/text.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

std::string number_text(float value, int decimals);
// The same for a reader of the file.
std::string number_text(float value, int decimals, const UnitSystem& units);
// A number with the decimal mark of the file.
std::string with_mark(std::string number, const UnitSystem& units);

// Decimals that show about six figures in any unit.
int decimals_of(Quantity quantity, const UnitSystem& units);

// "150.00 psig": a value in the engine's units as the file's, UTF-8.
std::string shown(float value, Quantity quantity, const UnitSystem& units);

// "-20 °F": a temperature as a whole number.
std::string shown_degrees(float value, const UnitSystem& units);

// ---- tables ----------------------------------------------------------------------------------------

// One line of a table as text: label, unit, and a value for each element.
struct TextRow {
    std::string label;
    std::string unit; // UTF-8
    std::vector<std::string> values;
};

// Three elements abreast, further ones in further blocks. All texts are UTF-8.
std::string text_table(std::string_view title, std::span<const std::string> headings,
                       std::span<const TextRow> rows);

// The value of a row as the table shows it; "none" without one.
std::string value_text(std::optional<float> value, Quantity quantity, const UnitSystem& units);

// The results of one element, all of them in the order of its kind's table.
struct ResultColumn {
    std::string heading; // UTF-8
    std::vector<Result> results;
};

// Those that the table of this title lists; empty without columns.
std::string result_table(std::string_view title, std::span<const ResultColumn> columns,
                         const UnitSystem& units);

} // namespace tarvane::vessel
