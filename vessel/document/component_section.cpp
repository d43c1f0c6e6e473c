#include "document/component_section.h"

#include "catalogue/charts.h"
#include "components/flange_session.h"
#include "components/mdmt_input.h"
#include "document/front_page.h"
#include "document/input_rows.h"
#include "document/report_blocks.h"
#include "document/result_value.h"
#include "document/results.h"
#include "document/text_columns.h"
#include "drawing/component_drawing.h"
#include "fields/flange_results.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

namespace tarvane::vessel {

namespace {

// ---- inputs ------------------------------------------------------------------------------------------------

// Characters of a line on the paper of the document.
std::size_t page_columns(const UnitSystem& units) {
    constexpr std::size_t A4 = 98, LETTER = 102;
    return units.metric() ? A4 : LETTER;
}

// The first row has the heads; one without texts is an empty line.
using Rows = std::vector<std::vector<std::string>>;

Lines table_lines(std::span<const TextColumn> usual, const Rows& rows, const UnitSystem& units) {
    const std::vector<TextColumn> columns = fitted(usual, rows, page_columns(units));
    Lines block;
    for (const std::vector<std::string>& row : rows) {
        if (row.empty()) {
            block.lines.push_back({});
            continue;
        }
        for (std::string& line : row_lines(columns, row))
            block.lines.push_back({.text = std::move(line), .heading = &row == rows.data()});
    }
    return block;
}

constexpr std::array<TextColumn, 5> INPUT_COLUMNS{
    {{35}, {20}, {14, true}, {9}, {20}}}; // together as wide as a line of the report

Lines input_lines(const Element& element, const UnitSystem& units) {
    Rows rows{{"Input", "Key", "Value", "Unit", "Source"}};
    std::string_view part;
    for (const InputRow& row : input_rows(element, units)) {
        const std::string_view section = element.kind->keys.section(*row.key);
        if (section != part && !part.empty()) rows.emplace_back();
        part = section;
        rows.push_back(
            {row.key->label(), std::string(row.key->name), row.value, row.unit, row.source});
    }
    return table_lines(INPUT_COLUMNS, rows, units);
}

// ---- pressures ---------------------------------------------------------------------------------------------

bool is_flange(const Element& element) { return element.kind == &FLANGE_KIND; }

// A channel cover's MAWP, where the engine holds its deflection against pressures.
bool is_deflection(const Judged& judged, std::string_view name) {
    if (!is_flange(judged.element)) return false;
    const TARVANE_FLANGE_RESULTS& found = static_cast<const FlangeOutcome&>(judged.outcome).found;
    if (name == "map_nc") return found.map_nc_by == TARVANE_BY_DEFLECTION;
    return found.mawp_by == TARVANE_BY_DEFLECTION && name != "mawp_seating";
}

// What the engine's pressures of a flange are worth; empty for all else.
std::string_view worth_of(const Judged& judged, const ResultField& field) {
    constexpr std::string_view ESTIMATES[] = {"mawp", "map_nc", "mawp_operating", "mawp_seating"};
    if (!is_flange(judged.element) ||
        std::find(std::begin(ESTIMATES), std::end(ESTIMATES), field.name) == std::end(ESTIMATES))
        return {};
    return is_deflection(judged, field.name) ? ", not reliable" : ", estimate";
}

// What it may hold, and which of MAWP and rated pressure decides, where there are both.
std::vector<std::string> pressure_words(const Judged& judged, const ChecksTable& checks,
                                        const UnitSystem& units) {
    std::optional<RatedPressure> rated = judged.outcome.rated_pressure;
    if (!rated) return {};
    std::optional<float> mawp;
    for (const Result& result : judged.element.results(judged.outcome))
        if (result.field->name == "mawp") mawp = result.value;
    if (mawp) rated->estimate.reset(); // said below
    std::vector<std::string> all = rated_pressure_words(rated, units);
    if (!mawp) return all;
    std::string words = "The MAWP of " + shown(*mawp, Quantity::pressure, units) + ' ';
    if (!is_flange(judged.element))
        words += rated->P ? "is by the formula of the code, the rated pressure by every check of "
                            "the component; the lower one decides."
                          : "is by the formula of the code; not every check passes at it.";
    else if (is_deflection(judged, "mawp"))
        words += "is no pressure that the cover holds: its estimate takes the number of the "
                 "deflection for one. It is not to be relied upon.";
    else if (checks.passes)
        words += "is an estimate in proportion from the design pressure.";
    else
        words += "is an estimate in proportion from a design that does not pass, and not to be "
                 "relied upon.";
    if (is_flange(judged.element) && rated->P)
        words =
            "The rated pressure decides: every check that depends on the pressure passes at it. " +
            words;
    all.push_back(std::move(words));
    return all;
}

// ---- checks ------------------------------------------------------------------------------------------------

DocumentSection checks_section(const Request& request, const Judged& judged,
                               const std::string& id) {
    const auto& [element, outcome, verdict] = judged;
    const ChecksTable checks = checks_table(element, outcome, request.units);
    DocumentSection section{.id = id + "-checks", .title = "Checks"};
    section.blocks.emplace_back(Remark{shown_verdict(checks.verdict), checks.headline,
                                       checks.passes ? Tone::sound : Tone::bad});
    if (!checks.rows.empty()) section.blocks.emplace_back(CheckRows{checks.rows});
    for (std::string& words : pressure_words(judged, checks, request.units))
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

// Results without a value, by the reason.
struct Missing {
    std::string_view why;
    std::vector<std::string> labels;

    // A list that is most of the results is read by nobody.
    bool most() const { return labels.size() > 50; }
    std::string words() const {
        if (most()) return "all other results";
        std::string all;
        for (const std::string& label : labels)
            all += (all.empty() ? "" : "; ") + label;
        return all;
    }
};

// A design that was not made is one thing.
std::string missing_label(const ResultField& field, std::string label) {
    if (field.table == DESIGN_TABLE) return "all of the selected design";
    if (field.table == ROUNDED_TABLE) return "all of the rounded design";
    return label;
}

Lines missing_lines(const std::vector<Missing>& none, const UnitSystem& units) {
    constexpr std::size_t INDENT = 4;
    Lines block{{{.text = "No value", .heading = true}}};
    for (const Missing& each : none) {
        std::string indent;
        for (const std::string& line :
             wrapped(std::string(each.why) + ": " + each.words(), page_columns(units) - INDENT)) {
            block.lines.push_back({indent + line});
            indent.assign(INDENT, ' ');
        }
    }
    return block;
}

// All of them, or those of the closing tables.
void add_results(const Request& request, const Judged& judged, bool all, DocumentSection& section) {
    Rows rows{{"Result", "Symbol", "Value", "Unit"}};
    std::vector<Missing> none;
    for (const Result& result : judged.element.results(judged.outcome)) {
        const ResultField& field = *result.field;
        if (!all && field.table.empty()) continue;
        std::string label = label_of(field, judged.element.kind->results);
        if (!std::holds_alternative<std::monostate>(value_of(result, request.units))) {
            label += worth_of(judged, field);
            rows.push_back({std::move(label), std::string(field.symbol),
                            result_text(result, request.units),
                            to_utf8(request.units.label(field.quantity))});
            continue;
        }
        const std::string_view why = why_none(result);
        const auto same = std::find_if(none.begin(), none.end(),
                                       [&](const Missing& each) { return each.why == why; });
        std::vector<std::string>& labels =
            (same == none.end() ? none.emplace_back(Missing{why, {}}) : *same).labels;
        label = missing_label(field, std::move(label));
        if (labels.empty() || labels.back() != label) labels.push_back(std::move(label));
    }
    if (rows.size() > 1)
        section.blocks.emplace_back(table_lines(RESULT_COLUMNS, rows, request.units));
    std::stable_partition(none.begin(), none.end(),
                          [](const Missing& each) { return !each.most(); });
    if (!none.empty()) section.blocks.emplace_back(missing_lines(none, request.units));
}

// ---- drawings --------------------------------------------------------------------------------------------------

void add_chart(const Request& request, const Judged& judged, int& figures,
               DocumentSection& section) {
    const std::optional<ChartPoint> point = judged.element.chart_point(judged.outcome);
    if (!point) return;
    const std::string words =
        "external pressure chart " + point->chart + " with the point of " + name_of(judged.element);
    Figure figure = chart_figure(point->chart, point->temperature, point->yield, point->A,
                                 request.units, request.units.decimal_comma, DrawnFor::document);
    section.blocks.emplace_back(numbered_drawing(std::move(figure), words, ++figures));
}

} // namespace

Drawing numbered_drawing(Figure figure, const std::string& title, int number) {
    Drawing drawing{.figure = std::move(figure), .id = "figure-" + std::to_string(number)};
    drawing.caption = "Figure " + std::to_string(number) + ": " + title;
    if (!drawing.figure.notes.empty()) drawing.caption += ". " + drawing.figure.notes;
    return drawing;
}

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
    return number_text(*number, decimals, units);
}

DocumentSection component_section(const Request& request, const Judged& judged, Detail detail,
                                  int& figures) {
    const auto& [element, outcome, verdict] = judged;
    const std::string id = id_of(element);
    std::string title = name_of(element);
    // An abbreviation is in capitals all through.
    const std::size_t capitals = element.kind == &MDMT_KIND ? element.kind->table.size() : 1;
    for (std::size_t i = 0; i < capitals; ++i)
        title[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(title[i])));
    DocumentSection section{.id = id, .title = std::move(title), .new_page = true};

    DocumentSection inputs{.id = id + "-inputs", .title = "Inputs"};
    inputs.blocks.emplace_back(input_lines(element, request.units));
    section.sections.push_back(std::move(inputs));

    DrawingReference reference;
    if (std::optional<Figure> figure =
            component_drawing(element, outcome, request, DrawnFor::document)) {
        DocumentSection drawing{.id = id + "-drawing", .title = "Drawing"};
        const std::string caption = figure->title, scale = figure->scale;
        Drawing block = numbered_drawing(std::move(*figure), caption, ++figures);
        reference = {.id = block.id,
                     .text = "Figure " + std::to_string(figures) + ": " + name_of(element)};
        if (!scale.empty()) reference.text += ", scale " + scale;
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
