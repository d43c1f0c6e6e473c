#include "components/report_lines.h"

#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <cmath>

namespace tarvane::vessel {

namespace {

constexpr std::size_t SYMBOL_ENDS = 44, VALUE_ENDS = 60, NAME_BEGINS = 42, DESCRIPTION_BEGINS = 49,
                      LINE_WIDTH = 100;

std::int32_t length(std::string_view text) { return static_cast<std::int32_t>(text.size()); }

std::string filled(std::string_view text, std::size_t width) {
    std::string field(text);
    if (field.size() < width) field.resize(width, ' ');
    return field;
}

std::string with_symbol(std::string_view text, std::string_view symbol) {
    return filled(text, SYMBOL_ENDS - symbol.size()) + std::string(symbol);
}

} // namespace

void report_line(std::string_view text, const LineStyle& style) {
    WRITE_TEXT(text.data(), length(text), style);
}

void report_heading(std::string_view text) { WRITE_HEADING(text.data(), length(text)); }

void report_column(std::string_view label, float value, std::int32_t kind) {
    WRITE_COLUMN(label.data(), length(label), &value, &kind, PLAIN_LINE);
}

void report_input(std::string_view text, std::string_view symbol, float value, std::int32_t kind) {
    report_column(with_symbol(text, symbol), value, kind);
}

void report_value(std::string_view label, std::string_view value, std::string_view unit) {
    const std::size_t width = label.size() + value.size();
    std::string out(label);
    out.append(width < VALUE_ENDS ? VALUE_ENDS - width : 1, ' ').append(value);
    if (!unit.empty()) out.append("  ").append(unit);
    report_line(out);
}

void report_input_value(std::string_view text, std::string_view symbol, std::string_view value,
                        std::string_view unit) {
    report_value(with_symbol(text, symbol), value, unit);
}

void report_temperature(std::string_view label, float value, const UnitSystem& units) {
    report_value(label, number_text(std::round(units.to_file(value, Quantity::temperature)), 0),
                 units.label(Quantity::temperature));
}

void report_name(std::string_view label, std::string_view name) {
    report_line(filled(label, NAME_BEGINS) + std::string(name));
}

void report_opening(std::string_view title, std::string_view description) {
    report_line("");
    constexpr std::string_view LABEL = "Description: ";
    std::string before = filled(title, DESCRIPTION_BEGINS) + std::string(LABEL);
    for (const std::string& part : wrapped(to_utf8(description), LINE_WIDTH - before.size())) {
        report_line(before + to_western(part).value_or(""));
        before.assign(before.size(), ' ');
    }
}

} // namespace tarvane::vessel
