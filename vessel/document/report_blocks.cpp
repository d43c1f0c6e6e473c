#include "document/report_blocks.h"

#include "components/flange_checks.h"
#include "components/flange_input.h"
#include "document/report_view.h"
#include "document/results.h"
#include "tarvane/tarvane.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tarvane::vessel {

namespace {

// ---- lines -------------------------------------------------------------------------------------------------

constexpr std::string_view SEPARATOR = "||||||||||";

std::string_view without_blanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

Line line_of(const ReportLine& from) {
    const std::array<int, 6>& marks = from.marks;
    Line line{.text = with_raised_powers(to_utf8(from.text))};
    line.heading = marks[5] == 2 || marks[1] != 0;
    if (marks[4] != 0)
        line.tone = Tone::bad;
    else if (marks[0] != 0 || marks[2] != 0)
        line.tone = Tone::advice;
    return line;
}

bool is_step(const Line& line) { return without_blanks(line.text).starts_with('='); }

// A step that a line of the report does not hold goes on in the next one.
bool goes_on(const Line& step, const Line& next) {
    constexpr std::string_view OPERATORS = "+-*/(,#", BEGINNINGS = "+-*/(0123456789";
    if (next.text.empty() || next.heading) return false;
    const bool open =
        !step.text.empty() && OPERATORS.find(step.text.back()) != std::string_view::npos;
    return open || (next.text.starts_with("   ") &&
                    BEGINNINGS.find(without_blanks(next.text).front()) != std::string_view::npos);
}

// ---- what a line leaves out ----------------------------------------------------------------------------------

// A placeholder that the engine prints as it is, by the words of the line around it, and what it is for.
struct Gap {
    std::string_view placeholder, symbol;
    std::string_view key, result; // where its value is: an input or a result of a flange
};
constexpr Gap GAPS[] = {{"/@0 ##", "Sa", "Sa", ""}, {"-2*@", "hD", "", "hd"}};

// "@3"; empty without one.
std::string placeholder_in(std::string_view text) {
    for (std::size_t at = text.find('@'); at != std::string_view::npos;
         at = text.find('@', at + 1)) {
        if (at + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[at + 1])) != 0)
            return std::string(text.substr(at, 2));
    }
    return {};
}

std::string value_for(const Gap& gap, const Element& element, const Outcome& outcome,
                      const UnitSystem& units) {
    if (const Key* key = element.kind->keys.find(gap.key))
        return shown(element.number_of(*key), key->quantity, units);
    for (const Result& result : element.results(outcome)) {
        if (result.field->name == gap.result && result.value)
            return shown(*result.value, result.field->quantity, units);
    }
    return {};
}

// Empty for a line that is whole.
std::string note_on(std::string_view text, const Element& element, const Outcome& outcome,
                    const UnitSystem& units) {
    if (text == SEPARATOR)
        return "The line above separates parts of the report; it leaves out no value.";
    const std::string placeholder = placeholder_in(text);
    if (placeholder.empty()) return {};
    const std::string beginning = "The line above shows " + placeholder;
    for (const Gap& gap : GAPS) {
        if (element.kind != &FLANGE_KIND || text.find(gap.placeholder) == std::string_view::npos)
            continue;
        const std::string value = value_for(gap, element, outcome, units);
        if (!value.empty())
            return (beginning + " in place of a value: ")
                .append(gap.symbol)
                .append(" = ")
                .append(value);
    }
    return beginning + " in place of a value, which is not among the results.";
}

// ---- paragraphs ------------------------------------------------------------------------------------------------

// By the symbol in the heading of a formula: the paragraph of VIII-1, from which those of the other codes follow.
struct SymbolParagraph {
    std::string_view symbol, paragraph;
};
constexpr SymbolParagraph PARAGRAPHS[] = {
    {"H", "2-3"},   {"Hp", "2-3"},  {"Hd", "2-3"},  {"Ht", "2-3"},  {"HG", "2-3"},  {"Wm1", "2-5"},
    {"Wm2", "2-5"}, {"Wo", "2-5"},  {"Wg", "2-5"},  {"Am", "2-5"},  {"W", "2-5"},   {"hg", "2-6"},
    {"ht", "2-6"},  {"hd", "2-6"},  {"SHo", "2-7"}, {"SHa", "2-7"}, {"SRo", "2-7"}, {"SRa", "2-7"},
    {"STo", "2-7"}, {"STa", "2-7"}, {"SAo", "2-8"}, {"SAa", "2-8"}, {"BSo", "2-5"}, {"BSa", "2-5"}};

// "SHo" of "Longitudinal Hub Stress, Operating [SHo]:".
std::string_view symbol_in(std::string_view heading) {
    const std::size_t open = heading.rfind('['), close = heading.rfind(']');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return {};
    return heading.substr(open + 1, close - open - 1);
}

std::string paragraph_of(const Formula& formula, const Element& element) {
    if (element.kind != &FLANGE_KIND || !formula.lines.front().heading) return {};
    const bool named =
        std::any_of(formula.lines.begin(), formula.lines.end(), [](const Line& line) {
            return line.text.find(" per ") != std::string::npos ||
                   line.text.find("Not a") != std::string::npos;
        });
    if (named) return {};
    const auto heading = std::find_if(formula.lines.rbegin(), formula.lines.rend(),
                                      [](const Line& line) { return line.heading; });
    const std::string_view symbol = symbol_in(heading->text);
    const auto& flange = static_cast<const FlangeInput&>(element);
    const bool blind = flange.type() == TARVANE_BLIND;
    for (const SymbolParagraph& row : PARAGRAPHS) {
        if (row.symbol != symbol) continue;
        const bool of_stress = row.paragraph == "2-7" || row.paragraph == "2-8";
        return std::string(flange_paragraph(blind && of_stress ? "UG-34" : row.paragraph, flange));
    }
    return {};
}

// ---- blocks ------------------------------------------------------------------------------------------------------

class Builder {
  public:
    Builder(const Element& of, const Outcome& as, const UnitSystem& in, const DrawingReference& at)
        : element(of), outcome(as), units(in), figure(at) {}

    std::vector<Block> build() {
        for (const ReportLine& line : report_lines(outcome.report))
            add(line);
        finish_formula();
        end_run();
        return std::move(blocks);
    }

  private:
    const Element& element;
    const Outcome& outcome;
    const UnitSystem& units;
    const DrawingReference& figure;
    std::vector<Block> blocks;
    std::vector<Line> run,
        formula; // of the block that grows; formula first its heading, then its steps
    bool has_steps = false;
    std::string open_note; // on a step of the formula

    static void trim(std::vector<Line>& lines) {
        while (!lines.empty() && lines.back().text.empty())
            lines.pop_back();
        const auto first = std::find_if(lines.begin(), lines.end(),
                                        [](const Line& line) { return !line.text.empty(); });
        lines.erase(lines.begin(), first);
    }

    void end_run() {
        trim(run);
        if (!run.empty()) blocks.emplace_back(Lines{std::move(run)});
        run.clear();
    }

    void end_formula() {
        if (formula.empty()) return;
        if (!has_steps) { // headings of columns
            end_run();
            run = std::move(formula);
        } else {
            end_run();
            Formula block{.lines = std::move(formula), .paragraph = {}};
            block.paragraph = paragraph_of(block, element);
            blocks.emplace_back(std::move(block));
        }
        formula.clear();
        has_steps = false;
    }

    void note(std::string text) {
        end_formula();
        end_run();
        blocks.emplace_back(MarginNote{std::move(text)});
    }

    void add(const ReportLine& from) {
        Line line = line_of(from);
        if (is_drawing(from.text)) {
            finish_formula();
            end_run();
            if (figure.id.empty())
                run.push_back({to_utf8(shown_drawing(from.text))});
            else
                blocks.emplace_back(figure);
            return;
        }
        const bool continues = has_steps && goes_on(formula.back(), line);
        if (is_step(line) && !line.heading) {
            if (formula.empty() && !run.empty() && run.back().text.ends_with(':')) {
                formula.push_back(std::move(run.back()));
                run.pop_back();
            }
            has_steps = true;
        } else if (continues) {
            // the rest of a step
        } else {
            if (has_steps) finish_formula();
            if (!line.heading) {
                end_formula();
                std::string words = note_on(line.text, element, outcome, units);
                run.push_back(std::move(line));
                if (!words.empty()) note(std::move(words));
                return;
            }
        }
        if (std::string words = note_on(line.text, element, outcome, units); !words.empty())
            open_note = std::move(words);
        formula.push_back(std::move(line));
    }

    void finish_formula() {
        end_formula();
        if (open_note.empty()) return;
        note(std::move(open_note));
        open_note.clear();
    }
};

} // namespace

std::string with_raised_powers(std::string_view utf8) {
    constexpr std::array<std::string_view, 10> RAISED = {"⁰", "¹", "²", "³", "⁴",
                                                         "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string out;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (utf8[i] != '^') {
            out += utf8[i];
            continue;
        }
        std::size_t at = i + 1;
        const bool bracket = at < utf8.size() && utf8[at] == '(';
        if (bracket) ++at;
        const bool minus = at < utf8.size() && utf8[at] == '-';
        if (minus) ++at;
        const std::size_t first = at;
        std::string raised;
        for (; at < utf8.size() && utf8[at] >= '0' && utf8[at] <= '9'; ++at)
            raised += RAISED[static_cast<std::size_t>(utf8[at] - '0')];
        const bool closed = bracket ? at < utf8.size() && utf8[at] == ')'
                                    : at == utf8.size() || (utf8[at] != '.' && utf8[at] != ',');
        if (at == first || !closed) {
            out += '^';
            continue;
        }
        out += minus ? "⁻" : "";
        out += raised;
        i = bracket ? at : at - 1;
    }
    return out;
}

std::vector<Block> report_blocks(const Element& element, const Outcome& outcome,
                                 const UnitSystem& units, const DrawingReference& figure) {
    return Builder(element, outcome, units, figure).build();
}

} // namespace tarvane::vessel
