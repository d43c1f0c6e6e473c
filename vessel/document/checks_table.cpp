#include "document/checks_table.h"

#include "components/calculation.h"
#include "document/results.h"
#include "values/text.h"

#include <algorithm>
#include <cctype>

namespace tarvane::vessel {

namespace {

constexpr CheckColumns USUAL_COLUMNS;
constexpr std::size_t FIGURE = 10, RELATION = 4, UNIT_COLUMN = 7, RATIO_COLUMN = 7,
                      STATE_COLUMN = 9, TABLE_WIDTH = 100, REMARK_INDENT = 4;
constexpr std::string_view MARGIN = "  ";
static_assert(USUAL_COLUMNS.label + USUAL_COLUMNS.paragraph + 2 * FIGURE + RELATION + 1 +
                  UNIT_COLUMN + RATIO_COLUMN + MARGIN.size() + STATE_COLUMN <=
              TABLE_WIDTH);

// ---- rows ----------------------------------------------------------------------------------------------

int decimals_for(Quantity quantity, const UnitSystem& units) {
    constexpr int OF_NUMBERS = 4, OF_TEMPERATURES = 0, OF_STRESSES = 2;
    if (quantity == Quantity::number) return OF_NUMBERS;
    if (quantity == Quantity::temperature) return OF_TEMPERATURES;
    const int decimals = decimals_of(quantity, units);
    return quantity == Quantity::stress ? std::min(decimals, OF_STRESSES) : decimals;
}

// Figures that differ are shown with as many decimals as let it be seen.
void put_figures(const Check& check, const UnitSystem& units, CheckRow& row) {
    constexpr int MOST_MORE = 4;
    const Quantity quantity = check.field().quantity;
    const float demand = units.to_file(*check.demand(), quantity),
                limit = units.to_file(*check.limit(), quantity);
    const int decimals = decimals_for(quantity, units);
    for (int more = 0; more <= MOST_MORE; ++more) {
        row.demand = number_text(demand, decimals + more, units);
        row.limit = number_text(limit, decimals + more, units);
        if (row.demand != row.limit || demand == limit || check.passes()) break;
    }
    row.relation = check.field().at_least ? ">=" : "<=";
    row.unit = to_utf8(units.label(quantity));
}

Tone tone_of(const Check& check) {
    if (check.passes()) return Tone::sound;
    if (check.blocks()) return Tone::bad;
    return check.advises() ? Tone::advice : Tone::quiet;
}

void add_sentence(std::string& text, std::string_view sentence) {
    if (sentence.empty()) return;
    if (!text.empty()) text += "; ";
    text += sentence;
}

// A row that fails and doesn't decide says what it is worth.
std::string_view state_word(const Check& check) {
    if (!check.advises()) return state_name(check.state());
    return check.field().force == Force::warns ? "warning" : "advice";
}

CheckRow row_of(const Check& check, const UnitSystem& units) {
    CheckRow row{.label = std::string(check.field().label),
                 .load_case = std::string(check.load_case()),
                 .paragraph = std::string(check.paragraph()),
                 .demand = {},
                 .relation = {},
                 .limit = {},
                 .unit = {},
                 .ratio = ratio_text(check, units),
                 .state = std::string(state_word(check)),
                 .remark = {},
                 .tone = tone_of(check)};
    if (check.ratio()) put_figures(check, units, row);
    if (!check.remark().empty())
        add_sentence(row.remark, std::string(check.remark()) + ", marked in the report");
    add_sentence(row.remark, check.step());
    // The figures of a comparison say it.
    if (!check.ratio()) add_sentence(row.remark, check.reason());
    return row;
}

// ---- headline ------------------------------------------------------------------------------------------

// Further checks that keep it from passing, and what was waived.
std::string other_words(const Checks& checks) {
    const auto blocking = std::count_if(checks.begin(), checks.end(),
                                        [](const Check& check) { return check.blocks(); });
    std::string words;
    if (blocking > 1) words += "; " + std::to_string(blocking) + " checks fail or were not made";
    return words + remarks_on(checks);
}

} // namespace

std::string ratio_text(const Check& check, const UnitSystem& units) {
    constexpr float MOST = 9999.0f;
    if (!check.ratio()) return {};
    return *check.ratio() > MOST ? ">9999" : number_text(*check.ratio(), 4, units);
}

std::string governing_words(const Checks& checks, const UnitSystem& units) {
    const Check* worst = governing(checks);
    if (worst == nullptr) return "no check is asked";
    std::string words = "governing check: " + worst->label();
    if (worst->state() == State::not_made) return words + ", not made";
    if (!worst->ratio()) return words + (worst->passes() ? "" : ", fails");
    return words + ", " + ratio_text(*worst, units);
}

std::string remarks_on(const Checks& checks) {
    std::string warnings, advice, waived;
    for (const Check& check : checks) {
        if (check.advises() && check.field().force == Force::warns)
            warnings += (warnings.empty() ? "; warning: " : ", ") + check.label();
        else if (check.advises())
            advice += (advice.empty() ? "; advice exceeded: " : ", ") + check.label();
        if (check.state() == State::waived)
            waived += (waived.empty() ? "; waived: " : ", ") + std::string(check.field().id);
    }
    return warnings + advice + waived;
}

std::string words_of(const Checks& checks, const UnitSystem& units) {
    return governing_words(checks, units) + other_words(checks);
}

ChecksTable checks_table(const Element& element, const Outcome& outcome, const UnitSystem& units) {
    Checks checks = element.checks(outcome, units);
    sort_worst_first(checks);
    const Verdict verdict = element.judge(outcome, units);
    const std::string_view own = verdict_of(verdict, checks);
    ChecksTable table{.passes = own == PASS,
                      .verdict = own,
                      .headline = name_of(element) + ": " + words_of(checks, units),
                      .rows = {}};
    for (const Check& check : checks)
        table.rows.push_back(row_of(check, units));
    return table;
}

std::string row_label(const CheckRow& row) {
    std::string label = row.label;
    if (!row.load_case.empty()) label += ", " + row.load_case;
    if (!label.empty() && label.size() > 1 && std::islower(static_cast<unsigned char>(label[1])))
        label[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(label[0])));
    return label;
}

// ---- as text -------------------------------------------------------------------------------------------

namespace {

constexpr std::string_view RESET = "\033[0m";

std::string_view colour_of(Tone tone) {
    switch (tone) {
    case Tone::sound:
        return "\033[32m";
    case Tone::bad:
        return "\033[1;31m";
    case Tone::advice:
        return "\033[33m";
    case Tone::quiet:
        break;
    }
    return {};
}

std::string painted(std::string text, std::string_view look, bool colour) {
    if (!colour || look.empty() || text.empty()) return text;
    return std::string(look) + text + std::string(RESET);
}

// Lines of a column; one blank stays between it and the next.
std::vector<std::string> column(std::string_view text, std::size_t width) {
    return wrapped(text, width - 1);
}

} // namespace

CheckColumns fitted(const std::vector<CheckRow>& rows, std::size_t page) {
    std::size_t label = USUAL_COLUMNS.label, paragraph = std::string_view("Paragraph ").size();
    for (const CheckRow& row : rows) {
        label = std::max(label, characters(row_label(row)) + 1);
        paragraph = std::max(paragraph, characters(row.paragraph) + 1);
    }
    const std::size_t beside = std::max(page, TABLE_WIDTH) - TABLE_WIDTH,
                      within =
                          USUAL_COLUMNS.paragraph - std::min(paragraph, USUAL_COLUMNS.paragraph),
                      more = std::min(label - USUAL_COLUMNS.label, beside + within);
    return {.label = USUAL_COLUMNS.label + more,
            .paragraph = USUAL_COLUMNS.paragraph - (more - std::min(more, beside))};
}

std::string check_heads(CheckColumns columns) {
    return padded("Check", columns.label) + padded("Paragraph", columns.paragraph) +
           right_aligned("Demand", FIGURE) + std::string(RELATION, ' ') +
           right_aligned("Limit", FIGURE) + ' ' + padded("Unit", UNIT_COLUMN) +
           right_aligned("Ratio", RATIO_COLUMN) + std::string(MARGIN) + "State";
}

std::vector<std::string> lines_of(const CheckRow& row, CheckColumns columns) {
    constexpr std::size_t FIGURES = 2 * FIGURE + RELATION + 1 + UNIT_COLUMN + RATIO_COLUMN;
    const std::vector<std::string> labels = column(row_label(row), columns.label),
                                   paragraphs = column(row.paragraph, columns.paragraph);
    const bool beside = columns.remark_beside && row.ratio.empty() && !row.remark.empty() &&
                        MARGIN.size() + characters(row.remark) <= FIGURES;
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < std::max(labels.size(), paragraphs.size()); ++i) {
        std::string line = padded(i < labels.size() ? labels[i] : "", columns.label) +
                           padded(i < paragraphs.size() ? paragraphs[i] : "", columns.paragraph);
        if (i == 0 && beside) {
            line +=
                padded(std::string(MARGIN) + row.remark, FIGURES) + std::string(MARGIN) + row.state;
        } else if (i == 0) {
            line += right_aligned(row.demand, FIGURE) + right_aligned(row.relation, RELATION - 1) +
                    ' ' + right_aligned(row.limit, FIGURE) + ' ' + padded(row.unit, UNIT_COLUMN) +
                    right_aligned(row.ratio, RATIO_COLUMN) + std::string(MARGIN) + row.state;
        } else {
            line.erase(line.find_last_not_of(' ') + 1);
        }
        lines.push_back(std::move(line));
    }
    if (row.remark.empty() || beside) return lines;
    for (const std::string& line : wrapped(row.remark, TABLE_WIDTH - REMARK_INDENT))
        lines.push_back(std::string(REMARK_INDENT, ' ') + line);
    return lines;
}

std::string verdict_line(bool passes, std::string_view words, bool colour) {
    constexpr std::string_view GREEN = "\033[1;32m", RED = "\033[1;31m";
    constexpr std::size_t WORD = 6;
    std::string out;
    std::string_view word = passes ? "PASS" : "FAIL";
    for (const std::string& line : wrapped(words, TABLE_WIDTH - WORD)) {
        out += word.empty() ? std::string(WORD, ' ')
                            : painted(std::string(word), passes ? GREEN : RED, colour) + "  ";
        out += line + '\n';
        word = {};
    }
    return out;
}

std::string text_of(const ChecksTable& table, bool colour) {
    std::string out = '\n' + verdict_line(table.passes, table.headline, colour) + '\n';
    if (table.rows.empty()) return out;
    out += check_heads() + '\n' + std::string(TABLE_WIDTH, '-') + '\n';
    for (const CheckRow& row : table.rows) {
        std::vector<std::string> lines = lines_of(row);
        lines[0].resize(lines[0].size() - row.state.size());
        lines[0] += painted(row.state, colour_of(row.tone), colour);
        for (const std::string& line : lines)
            out += line + '\n';
    }
    return out + '\n';
}

} // namespace tarvane::vessel
