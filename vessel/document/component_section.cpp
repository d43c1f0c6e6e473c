#include "document/component_section.h"

#include "catalogue/charts.h"
#include "document/input_rows.h"
#include "document/report_blocks.h"
#include "document/result_value.h"
#include "document/results.h"
#include "document/text_columns.h"
#include "drawing/component_drawing.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

namespace tarvane::vessel {

namespace {

// ---- inputs ------------------------------------------------------------------------------------------------

constexpr std::array<TextColumn, 5> INPUT_COLUMNS{
    {{35}, {20}, {14, true}, {9}, {20}}}; // together as wide as a line of the report

Lines input_lines(const Element& element, const UnitSystem& units) {
    Lines block;
    const auto add = [&](const std::array<std::string, 5>& texts, bool heading) {
        for (std::string& line : row_lines(INPUT_COLUMNS, texts))
            block.lines.push_back({.text = std::move(line), .heading = heading});
    };
    add({"Input", "Key", "Value", "Unit", "Source"}, true);
    std::string_view part;
    for (const InputRow& row : input_rows(element, units)) {
        const std::string_view section = element.kind->keys.section(*row.key);
        if (section != part && !part.empty()) block.lines.push_back({});
        part = section;
        add({row.key->label(), std::string(row.key->name), row.value, row.unit, row.source}, false);
    }
    return block;
}

// ---- checks ------------------------------------------------------------------------------------------------

DocumentSection checks_section(const Request& request, const Judged& judged,
                               const std::string& id) {
    const auto& [element, outcome, verdict] = judged;
    const ChecksTable checks = checks_table(element, outcome, request.units);
    DocumentSection section{.id = id + "-checks", .title = "Checks"};
    section.blocks.emplace_back(Remark{checks.passes ? "PASS" : "FAIL", checks.headline,
                                       checks.passes ? Tone::sound : Tone::bad});
    if (!checks.rows.empty()) section.blocks.emplace_back(CheckRows{checks.rows});
    for (std::string& words : rated_pressure_words(outcome.rated_pressure, request.units))
        section.blocks.emplace_back(Paragraph{std::move(words)});
    for (const std::string& reason : verdict.reasons)
        section.blocks.emplace_back(
            Remark{"Verdict", reason, checks.passes ? Tone::quiet : Tone::bad});
    for (const std::string& message : outcome.messages)
        section.blocks.emplace_back(
            Remark{"Message of the engine", to_utf8(message), Tone::advice});
    for (const std::string& note : element.notes)
        section.blocks.emplace_back(Remark{"Note", note});
    return section;
}

// ---- results ------------------------------------------------------------------------------------------------

constexpr std::array<TextColumn, 4> RESULT_COLUMNS{{{56}, {10}, {18, true}, {12}}};

// "Factor A" of "Factor A, times 1000000": the closing tables alone multiply.
std::string label_of(const ResultField& field) {
    return std::string(field.label.substr(0, field.label.find(", times ")));
}

// All of them, or those of the closing tables. Labels without a value are listed by the reason.
void add_results(const Request& request, const Judged& judged, bool all, DocumentSection& section) {
    Lines block;
    const auto add = [&](const std::array<std::string, 4>& texts, bool heading) {
        for (std::string& line : row_lines(RESULT_COLUMNS, texts))
            block.lines.push_back({.text = std::move(line), .heading = heading});
    };
    add({"Result", "Symbol", "Value", "Unit"}, true);
    std::vector<std::pair<std::string_view, std::string>> none;
    for (const Result& result : judged.element.results(judged.outcome)) {
        const ResultField& field = *result.field;
        if (!all && field.table.empty()) continue;
        if (!std::holds_alternative<std::monostate>(value_of(result, request.units))) {
            add({label_of(field), std::string(field.symbol), result_text(result, request.units),
                 to_utf8(request.units.label(field.quantity))},
                false);
            continue;
        }
        const std::string_view why = why_none(result);
        const auto same = std::find_if(none.begin(), none.end(),
                                       [&](const auto& each) { return each.first == why; });
        std::string& labels = same == none.end() ? none.emplace_back(why, "").second : same->second;
        labels += (labels.empty() ? "" : "; ") + label_of(field);
    }
    if (block.lines.size() > 1) section.blocks.emplace_back(std::move(block));
    for (const auto& [why, labels] : none)
        section.blocks.emplace_back(Remark{"No value, " + std::string(why), labels});
}

// ---- drawings --------------------------------------------------------------------------------------------------

// A picture inside a page has no declaration of its own.
Drawing numbered(Figure figure, const std::string& words, int& figures) {
    const std::string number = std::to_string(++figures);
    Drawing drawing{.figure = std::move(figure), .id = "figure-" + number, .caption = {}};
    drawing.caption = "Figure " + number + ": " + words;
    if (!drawing.figure.scale.empty()) drawing.caption += ", scale " + drawing.figure.scale;
    return drawing;
}

void add_chart(const Request& request, const Judged& judged, int& figures,
               DocumentSection& section) {
    const std::optional<ChartPoint> point = judged.element.chart_point(judged.outcome);
    if (!point) return;
    const std::string words =
        "chart " + point->chart + " with the point of " + name_of(judged.element);
    Figure figure = chart_figure(point->chart, point->temperature, point->yield, point->A,
                                 request.units, request.decimal_comma);
    section.blocks.emplace_back(numbered(std::move(figure), words, figures));
}

} // namespace

std::string id_of(const Element& element) {
    return std::string(element.kind->table) + '-' + std::to_string(element.number);
}

std::string result_text(const Result& result, const UnitSystem& units) {
    const ResultValue value = value_of(result, units);
    if (const bool* flag = std::get_if<bool>(&value)) return *flag ? "yes" : "no";
    if (const auto* name = std::get_if<std::string_view>(&value)) return std::string(*name);
    const float* number = std::get_if<float>(&value);
    if (number == nullptr) return "none";
    const Quantity quantity = result.field->quantity;
    if (quantity != Quantity::number) return value_text(result.value, quantity, units);
    // Five figures of a small number.
    constexpr int DECIMALS = 4, MOST = 9;
    int decimals = DECIMALS;
    for (float least = 0.1f; *number != 0.0f && std::fabs(*number) < least && decimals < MOST;
         least /= 10.0f)
        ++decimals;
    return number_text(*number, decimals);
}

DocumentSection component_section(const Request& request, const Judged& judged, Detail detail,
                                  int& figures) {
    const auto& [element, outcome, verdict] = judged;
    const std::string id = id_of(element);
    std::string title = name_of(element);
    title[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(title[0])));
    DocumentSection section{.id = id, .title = std::move(title), .new_page = true};

    DocumentSection inputs{.id = id + "-inputs", .title = "Inputs"};
    inputs.blocks.emplace_back(input_lines(element, request.units));
    section.sections.push_back(std::move(inputs));

    DrawingReference reference;
    if (std::optional<Figure> figure = component_drawing(element, outcome, request)) {
        DocumentSection drawing{.id = id + "-drawing", .title = "Drawing"};
        Drawing block = numbered(std::move(*figure), name_of(element), figures);
        reference = {.id = block.id, .text = block.caption};
        drawing.blocks.emplace_back(std::move(block));
        section.sections.push_back(std::move(drawing));
    }

    DocumentSection checks = checks_section(request, judged, id);
    section.sections.push_back(std::move(checks));

    DocumentSection results{.id = id + "-results", .title = "Results"};
    add_results(request, judged, detail == Detail::full, results);
    add_chart(request, judged, figures, results);
    if (!results.blocks.empty()) section.sections.push_back(std::move(results));

    if (detail == Detail::full) {
        DocumentSection calculation{.id = id + "-calculation", .title = "Calculation"};
        calculation.blocks = report_blocks(element, outcome, request.units, reference);
        if (calculation.blocks.empty())
            calculation.blocks.emplace_back(
                Remark{"Not made", "there are no lines of a calculation"});
        section.sections.push_back(std::move(calculation));
    }
    return section;
}

} // namespace tarvane::vessel
