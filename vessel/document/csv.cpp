#include "document/csv.h"

#include "assembly/summary.h"
#include "document/result_value.h"
#include "values/json.h"
#include "values/text.h"

#include <array>
#include <string_view>

namespace tarvane::vessel {

namespace {

// Columns of both tables; a row of results leaves those of a comparison empty.
enum CsvColumn : std::size_t {
    TABLE,
    COMPONENT,
    DESCRIPTION,
    ID,
    LABEL,
    LOAD_CASE,
    PARAGRAPH,
    VALUE,
    OPERATOR,
    LIMIT,
    UNIT,
    RATIO,
    STATE,
    FORCE,
    REMARK,
    COLUMNS
};
constexpr std::array<std::string_view, COLUMNS> HEADINGS{
    "table",    "component", "description", "id",    "label", "case",  "paragraph", "value",
    "operator", "limit",     "unit",        "ratio", "state", "force", "remark"};
using Row = std::array<std::string, COLUMNS>;

std::string single_text(float value) { return JsonWriter().single(value).take(); }

std::string field_text(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    std::string quoted_field = "\"";
    for (const char c : text) {
        if (c == '"') quoted_field += '"';
        quoted_field += c;
    }
    return quoted_field + '"';
}

template <class Fields>
void write_row(const Fields& fields, std::string& into) {
    std::string_view before;
    for (const auto& field : fields) {
        into.append(before).append(field_text(field));
        before = ",";
    }
    into += "\r\n";
}

std::string joined(std::initializer_list<std::string_view> sentences) {
    std::string words;
    for (const std::string_view sentence : sentences) {
        if (!sentence.empty()) words.append(words.empty() ? "" : "; ").append(sentence);
    }
    return words;
}

Row row_of(const Element& element, std::string_view table) {
    Row row;
    row[TABLE] = table;
    row[COMPONENT] = path_of(element);
    row[DESCRIPTION] = to_utf8(element.description());
    return row;
}

// ---- checks --------------------------------------------------------------------------------------------

void write_check(const Check& check, const UnitSystem& units, Row row, std::string& into) {
    const CheckField& field = check.field();
    row[ID] = field.id;
    row[LABEL] = field.label;
    row[LOAD_CASE] = check.load_case();
    row[PARAGRAPH] = check.paragraph();
    if (check.ratio()) {
        row[VALUE] = single_text(units.to_file(*check.demand(), field.quantity));
        row[OPERATOR] = field.at_least ? ">=" : "<=";
        row[LIMIT] = single_text(units.to_file(*check.limit(), field.quantity));
        row[UNIT] = to_utf8(units.label(field.quantity));
        row[RATIO] = single_text(*check.ratio());
    }
    row[STATE] = state_name(check.state());
    row[FORCE] = force_name(field.force);
    row[REMARK] = joined({check.reason(), check.remark(), check.step()});
    write_row(row, into);
}

// ---- results -------------------------------------------------------------------------------------------

void put_value(const Result& result, const UnitSystem& units, Row& row) {
    const ResultValue value = value_of(result, units);
    if (const bool* flag = std::get_if<bool>(&value)) row[VALUE] = *flag ? "true" : "false";
    if (const auto* name = std::get_if<std::string_view>(&value)) row[VALUE] = *name;
    if (const float* number = std::get_if<float>(&value)) {
        row[VALUE] = single_text(*number);
        row[UNIT] = to_utf8(units.label(result.field->quantity));
    }
}

void write_result(const Element& element, const Result& result, const UnitSystem& units,
                  std::string& into) {
    Row row = row_of(element, "result");
    row[ID] = result.field->name;
    row[LABEL] = label_of(*result.field, element.kind->results);
    put_value(result, units, row);
    if (row[VALUE].empty()) row[REMARK] = why_none(result);
    write_row(row, into);
}

void write_summary(const Request& request, const Calculation& calculation, std::string& into) {
    for (const SummaryRow& each : summary(request, calculation)) {
        Row row;
        row[TABLE] = "result";
        row[COMPONENT] = "vessel";
        row[DESCRIPTION] = request.description;
        row[ID] = each.field->name;
        row[LABEL] = each.field->label;
        put_value({each.field, each.value}, request.units, row);
        std::string lacking;
        for (const std::string& component : each.lacks)
            lacking += (lacking.empty() ? "" : "; ") + component;
        row[REMARK] = joined(
            {each.by == nullptr ? "" : "governed by " + path_of(*each.by), each.note, lacking});
        write_row(row, into);
    }
}

} // namespace

std::string csv_row(std::span<const std::string> fields) {
    std::string row;
    write_row(fields, row);
    return row;
}

std::string csv_of(const Request& request, const Calculation& calculation) {
    const UnitSystem& units = request.units;
    std::string text;
    write_row(HEADINGS, text);
    for (const auto& [element, outcome] : calculation.calculated) {
        Checks checks = element->checks(*outcome, units);
        sort_worst_first(checks);
        for (const Check& check : checks)
            write_check(check, units, row_of(*element, "check"), text);
    }
    for (const auto& [element, outcome] : calculation.calculated) {
        for (const Result& result : element->results(*outcome))
            write_result(*element, result, units, text);
    }
    if (request.of_vessel) write_summary(request, calculation, text);
    return text;
}

} // namespace tarvane::vessel
