#include "document/results.h"

#include "values/decimal.h"

#include <algorithm>
#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr std::size_t LABEL_WIDTH = 44, UNIT_WIDTH = 8, VALUE_WIDTH = 15, ABREAST = 3;

// The title, and the headings of the columns beside it, on as many lines as the longest of them needs.
std::string heading_lines(std::string_view title, std::span<const std::string> headings) {
    std::vector<std::vector<std::string>> columns;
    std::size_t lines = 1;
    for (const std::string& heading : headings) {
        columns.push_back(wrapped(heading, VALUE_WIDTH));
        lines = std::max(lines, columns.back().size());
    }
    std::string out;
    for (std::size_t line = 0; line < lines; ++line) {
        out += padded(line == 0 ? title : "", LABEL_WIDTH) + padded("", UNIT_WIDTH);
        for (const std::vector<std::string>& column : columns)
            out += ' ' + right_aligned(line < column.size() ? column[line] : "", VALUE_WIDTH);
        out += '\n';
    }
    return out;
}

} // namespace

std::string number_text(float value, int decimals) {
    return fixed_text(static_cast<double>(value), decimals);
}

std::string number_text(float value, int decimals, const UnitSystem& units) {
    return with_mark(number_text(value, decimals), units);
}

std::string with_mark(std::string number, const UnitSystem& units) {
    if (units.decimal_comma) std::replace(number.begin(), number.end(), '.', ',');
    return number;
}

int decimals_of(Quantity quantity, const UnitSystem& units) {
    const float factor = units.factor(quantity);
    switch (quantity) {
    case Quantity::thickness:
        return factor > 20.0f ? 2 : 4;
    case Quantity::diameter:
    case Quantity::area:
        return factor > 20.0f ? 1 : 3;
    case Quantity::pressure:
    case Quantity::stress:
        return factor < 0.01f ? 4 : factor < 1.0f ? 3 : 2;
    default:
        return 2;
    }
}

std::string shown(float value, Quantity quantity, const UnitSystem& units) {
    return number_text(units.to_file(value, quantity), decimals_of(quantity, units), units) + ' ' +
           to_utf8(units.label(quantity));
}

std::string shown_degrees(float value, const UnitSystem& units) {
    return number_text(std::round(units.to_file(value, Quantity::temperature)), 0) + ' ' +
           to_utf8(units.label(Quantity::temperature));
}

std::string value_text(std::optional<float> value, Quantity quantity, const UnitSystem& units) {
    if (!value) return "none";
    if (quantity == Quantity::whole) return number_text(*value, 0);
    return number_text(units.to_file(*value, quantity), decimals_of(quantity, units), units);
}

std::string text_table(std::string_view title, std::span<const std::string> headings,
                       std::span<const TextRow> rows) {
    std::string out;
    for (std::size_t first = 0; first < headings.size(); first += ABREAST) {
        const std::size_t last = std::min(first + ABREAST, headings.size());
        out += '\n' + heading_lines(title, headings.subspan(first, last - first));
        const std::size_t width = LABEL_WIDTH + UNIT_WIDTH + (last - first) * (1 + VALUE_WIDTH);
        out += std::string(width, '-') + '\n';
        for (const TextRow& row : rows) {
            out += padded(row.label, LABEL_WIDTH) + padded(row.unit, UNIT_WIDTH);
            for (std::size_t i = first; i < last; ++i)
                out += ' ' + right_aligned(row.values[i], VALUE_WIDTH);
            out += '\n';
        }
    }
    return out;
}

namespace {

std::optional<float> scaled(const Result& result) {
    if (!result.value) return std::nullopt;
    return *result.value * result.field->times;
}

} // namespace

std::string result_table(std::string_view title, std::span<const ResultColumn> columns,
                         const UnitSystem& units) {
    constexpr std::size_t SYMBOL = 38;
    if (columns.empty()) return "";
    std::vector<std::string> headings;
    headings.reserve(columns.size());
    for (const ResultColumn& column : columns)
        headings.push_back(column.heading);
    std::vector<TextRow> rows;
    for (std::size_t i = 0; i < columns[0].results.size(); ++i) {
        const ResultField& field = *columns[0].results[i].field;
        if (field.table != title) continue;
        TextRow row{std::string(field.label), to_utf8(units.label(field.quantity)), {}};
        if (!field.symbol.empty())
            row.label = padded(field.label, SYMBOL) + std::string(field.symbol);
        for (const ResultColumn& column : columns)
            row.values.push_back(value_text(scaled(column.results[i]), field.quantity, units));
        rows.push_back(std::move(row));
    }
    return text_table(title, headings, rows);
}

} // namespace tarvane::vessel
