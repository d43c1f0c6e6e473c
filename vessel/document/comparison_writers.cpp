#include "document/comparison_writers.h"

#include "values/decimal.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace tarvane::vessel {

namespace {

// ---- words that all writers share ----------------------------------------------------------------------

constexpr std::string_view FOLLOWING = "Changed inputs that follow";

std::string counted(std::size_t count, const std::string& one) {
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

std::string joined(const std::vector<std::string>& items, std::string_view between = ", ") {
    std::string all;
    for (const std::string& item : items)
        all.append(all.empty() ? "" : between).append(item);
    return all;
}

std::string signed_text(double value) {
    constexpr double SEEN = 0.005; // with two decimals
    const std::string digits =
        std::fabs(value) < SEEN ? general_text(value, 2) : fixed_text(value, 2);
    return value > 0.0 ? '+' + digits : digits;
}

// "+2.13 %", "+10.00 °F"; empty where there are no two numbers.
std::string change_text(const Change& change) {
    if (change.degrees) return signed_text(*change.degrees) + ' ' + change.unit;
    if (change.percent) return signed_text(*change.percent) + " %";
    return change.before.number && change.after.number ? "from 0" : "";
}

// Of an input that is not in the file on both sides.
std::string origins_of(const Change& change) {
    const auto is_plain = [](const std::string& from) { return from.empty() || from == "file"; };
    if (is_plain(change.before.from) && is_plain(change.after.from)) return {};
    if (change.before.from == change.after.from) return change.after.from;
    std::vector<std::string> sides;
    if (!change.before.from.empty()) sides.push_back("A: " + change.before.from);
    if (!change.after.from.empty()) sides.push_back("B: " + change.after.from);
    return joined(sides, "; ");
}

// Inputs that are in one of the files, and those that follow from others, or from data files.
std::vector<Change> inputs_of(const Comparison& c, bool given) {
    std::vector<Change> chosen;
    std::copy_if(c.inputs.begin(), c.inputs.end(), std::back_inserter(chosen),
                 [given](const Change& change) { return change.given() == given; });
    return chosen;
}

// The same change in several components, as of a key that they all take from the vessel.
struct SharedChange {
    const Change* change;
    std::vector<std::string> components;
};

std::vector<SharedChange> shared(const std::vector<Change>& changes) {
    std::vector<SharedChange> all;
    for (const Change& change : changes) {
        const auto like = std::find_if(all.begin(), all.end(), [&](const SharedChange& each) {
            return each.change->label == change.label && each.change->symbol == change.symbol &&
                   each.change->before.shown == change.before.shown &&
                   each.change->after.shown == change.after.shown &&
                   origins_of(*each.change) == origins_of(change);
        });
        if (like == all.end())
            all.push_back({&change, {change.component}});
        else
            like->components.push_back(change.component);
    }
    return all;
}

std::string components_of(const SharedChange& change) {
    constexpr std::size_t MOST = 4;
    std::vector<std::string> named = change.components;
    if (named.size() <= MOST) return joined(named);
    named.resize(MOST - 1);
    return joined(named) + " and " + std::to_string(change.components.size() - named.size()) +
           " more";
}

std::string verdict_word(const Comparison& c) {
    return c.worse() ? "WORSE" : c.same() ? "SAME" : "DIFFERENT";
}

std::string tolerance_text(const Comparison& c) { return general_text(c.tolerance) + " %"; }

} // namespace

std::string words_of(const Comparison& c) {
    if (c.same())
        return "no input and no verdict differs, and no result" +
               (c.tolerance > 0.0 ? " by more than " + tolerance_text(c) : std::string());
    const auto worse = static_cast<std::size_t>(std::count_if(
        c.verdicts.begin(), c.verdicts.end(), [](auto& each) { return each.turn == Turn::worse; }));
    std::vector<std::string> different;
    const auto add = [&](std::size_t count, const std::string& what) {
        if (count > 0) different.push_back(counted(count, what));
    };
    add(shared(inputs_of(c, true)).size(), "input");
    add(shared(inputs_of(c, false)).size(), "following input");
    add(c.results.size(), "result");
    add(c.verdicts.size(), "verdict");
    add(c.unmatched.size(), "component");
    std::string words = worse == 0   ? std::string(c.worse() ? "a component that A does not have "
                                                                 "does not pass"
                                                             : "no verdict got worse")
                        : worse == 1 ? "a verdict got worse"
                                     : std::to_string(worse) + " verdicts got worse";
    return words + "; different: " + joined(different);
}

namespace {

std::string turn_words(Turn turn) {
    return turn == Turn::worse ? "worse" : turn == Turn::better ? "better" : "";
}

std::string label_of(const Change& change) {
    if (change.symbol.empty() || change.symbol == change.label) return change.label;
    return change.label + ", " + change.symbol;
}

// ---- text ----------------------------------------------------------------------------------------------

constexpr std::size_t COMPARISON_WIDTH = 100, LABEL_ROOM = 46, VALUE_ROOM = 15, UNIT_ROOM = 7,
                      CHANGE_ROOM = 14, CHANGE_INDENT = 4;
static_assert(LABEL_ROOM + 2 * VALUE_ROOM + 2 + UNIT_ROOM + CHANGE_ROOM <= COMPARISON_WIDTH);

std::string title_line(const std::string& title) {
    return '\n' + title + '\n' + std::string(COMPARISON_WIDTH, '-') + '\n';
}

std::string indented(const std::string& text) {
    std::string lines;
    for (const std::string& line : wrapped(text, COMPARISON_WIDTH - CHANGE_INDENT))
        lines += std::string(CHANGE_INDENT, ' ') + line + '\n';
    return lines;
}

std::string row_text(const std::string& label, const std::string& before, const std::string& after,
                     const std::string& unit, const std::string& change) {
    const std::vector<std::string> labels = wrapped(label, LABEL_ROOM - 1);
    std::string text;
    for (std::size_t i = 0; i + 1 < labels.size(); ++i)
        text += labels[i] + '\n';
    std::string line = padded(labels.back(), LABEL_ROOM);
    if (characters(before) < VALUE_ROOM && characters(after) < VALUE_ROOM) {
        line += right_aligned(before, VALUE_ROOM) + ' ' + right_aligned(after, VALUE_ROOM) + ' ' +
                padded(unit, UNIT_ROOM) + right_aligned(change, CHANGE_ROOM);
        return text + line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    line = line.substr(0, line.find_last_not_of(' ') + 1);
    const std::string unit_words = unit.empty() ? "" : ' ' + unit;
    return text + line + '\n' + indented(before + unit_words + " -> " + after + unit_words);
}

// Under the names of the components that they are of.
std::string changes_text(const std::string& title, const std::vector<Change>& changes) {
    if (changes.empty()) return {};
    std::string text = title_line(row_text(title, "A", "B", "", "Change"));
    text.erase(text.find('\n', 1), 1);
    std::string of;
    for (const SharedChange& each : shared(changes)) {
        if (const std::string components = components_of(each); components != of) {
            of = components;
            for (const std::string& line : wrapped(of, COMPARISON_WIDTH))
                text += line + '\n';
        }
        const Change& change = *each.change;
        text += row_text("  " + label_of(change), change.before.shown, change.after.shown,
                         change.unit, change_text(change));
        if (const std::string from = origins_of(change); !from.empty()) text += indented(from);
    }
    return text;
}

std::string verdicts_text(const std::vector<VerdictChange>& changes) {
    if (changes.empty()) return {};
    std::string text = title_line(row_text("Verdicts", "A", "B", "", ""));
    text.erase(text.find('\n', 1), 1);
    std::string of;
    for (const VerdictChange& change : changes) {
        if (change.component != of) {
            of = change.component;
            text += of + '\n';
        }
        text += row_text("  " + change.label +
                             (change.paragraph.empty() ? "" : ", " + change.paragraph),
                         change.before, change.after, "", turn_words(change.turn));
    }
    return text;
}

std::string unmatched_text(const std::vector<Unmatched>& components) {
    if (components.empty()) return {};
    std::string text = title_line("Components of one side alone");
    for (const Unmatched& each : components) {
        text += std::string(each.of_first ? "A" : "B") + "  " + each.component + ": " +
                each.verdict + '\n' + indented(each.says);
    }
    return text;
}

std::string asides_text(const std::vector<Aside>& asides) {
    if (asides.empty()) return {};
    std::string text = title_line("Programs, data files and documents");
    for (const Aside& each : asides) {
        text += each.what + '\n';
        text += indented("A: " + (each.before.empty() ? "none" : each.before));
        text += indented("B: " + (each.after.empty() ? "none" : each.after));
    }
    return text;
}

std::string side_text(const std::string& letter, const ComparedResult& side) {
    return letter + "  " + side.name + ": " + side.verdict + '\n' + indented(side.says);
}

} // namespace

std::string text_of(const Comparison& c) {
    std::string text = side_text("A", c.first) + side_text("B", c.second) + '\n';
    const std::string word = verdict_word(c);
    std::string margin = word + "  ";
    for (const std::string& line : wrapped(words_of(c), COMPARISON_WIDTH - margin.size())) {
        text += margin + line + '\n';
        margin.assign(margin.size(), ' ');
    }
    if (c.converted)
        text += "B is shown in the units of A; differences up to " + tolerance_text(c) +
                " are not shown.\n";
    return text + changes_text("Changed inputs", inputs_of(c, true)) +
           changes_text(std::string(FOLLOWING), inputs_of(c, false)) +
           changes_text("Changed results", c.results) + verdicts_text(c.verdicts) +
           unmatched_text(c.unmatched) + asides_text(c.asides);
}

// ---- JSON ----------------------------------------------------------------------------------------------

namespace {

class ComparisonWriter {
  public:
    std::string write(const Comparison& c) {
        json.begin_object().key("tarvane").whole(1);
        text("program", TARVANE_VERSION);
        text("comparison", c.worse() ? "worse" : c.same() ? "same" : "different");
        json.key("tolerance").number(c.tolerance);
        json.key("converted").flag(c.converted);
        json.key("matched").whole(static_cast<std::int64_t>(c.matched));
        write_side("first", c.first);
        write_side("second", c.second);
        write_list("inputs", c.inputs);
        write_list("results", c.results);
        write_list("verdicts", c.verdicts);
        write_list("unmatched", c.unmatched);
        write_list("asides", c.asides);
        json.end_object();
        return json.take();
    }

  private:
    JsonWriter json;

    void text(std::string_view name, std::string_view words) { json.key(name).text(words); }
    template <class Item>
    void write_list(std::string_view name, const std::vector<Item>& items) {
        json.key(name).begin_list();
        for (const Item& item : items) {
            json.begin_object();
            write_members(item);
            json.end_object();
        }
        json.end_list();
    }
    void write_side(std::string_view name, const ComparedResult& side) {
        json.key(name).begin_object();
        text("file", side.name);
        text("units", side.units);
        text("verdict", side.verdict);
        text("says", side.says);
        json.end_object();
    }
    void write_value(std::string_view name, const ComparedValue& value) {
        json.key(name);
        if (value.number)
            json.single(*value.number);
        else
            json.text(value.shown);
    }
    void write_members(const Change& change) {
        text("component", change.component);
        text("path", change.path);
        text("label", change.label);
        if (!change.unit.empty()) text("unit", change.unit);
        write_value("before", change.before);
        write_value("after", change.after);
        if (change.percent) json.key("percent").number(*change.percent);
        if (!change.before.from.empty()) text("from_before", change.before.from);
        if (!change.after.from.empty()) text("from_after", change.after.from);
    }
    void write_members(const VerdictChange& change) {
        text("component", change.component);
        text("path", change.path);
        text("label", change.label);
        if (!change.paragraph.empty()) text("paragraph", change.paragraph);
        text("before", change.before);
        text("after", change.after);
        text("turn", turn_name(change.turn));
    }
    void write_members(const Unmatched& only) {
        text("of", only.of_first ? "first" : "second");
        text("component", only.component);
        text("path", only.path);
        text("verdict", only.verdict);
        text("says", only.says);
    }
    void write_members(const Aside& aside) {
        text("what", aside.what);
        text("before", aside.before);
        text("after", aside.after);
    }
};

} // namespace

std::string json_of(const Comparison& comparison) { return ComparisonWriter().write(comparison); }

// ---- document ------------------------------------------------------------------------------------------

namespace {

Cell cell(std::string text, Tone tone = Tone::quiet) { return {std::move(text), tone}; }

Tone tone_of(std::string_view verdict) { return verdict == "pass" ? Tone::sound : Tone::bad; }

Tone tone_of(Turn turn) {
    return turn == Turn::worse ? Tone::bad : turn == Turn::better ? Tone::sound : Tone::quiet;
}

void add_section(CalculationDocument& document, std::string id, const std::string& title,
                 DocumentTable table) {
    if (table.rows.empty()) return;
    table.caption = title;
    document.sections.push_back(
        {.id = std::move(id), .title = title, .blocks = {std::move(table)}, .sections = {}});
}

DocumentTable changes_table(const std::vector<Change>& changes, bool with_origins) {
    DocumentTable table{
        .caption = {},
        .columns = {{"Value"}, {"Component"}, {"A", true}, {"B", true}, {"Unit"}, {"Change", true}},
        .rows = {}};
    if (with_origins) table.columns.push_back({"From"});
    for (const SharedChange& each : shared(changes)) {
        const Change& change = *each.change;
        std::vector<Cell> row{cell(label_of(change)),    cell(joined(each.components)),
                              cell(change.before.shown), cell(change.after.shown),
                              cell(change.unit),         cell(change_text(change))};
        if (with_origins) row.push_back(cell(origins_of(change)));
        table.rows.push_back(std::move(row));
    }
    return table;
}

DocumentTable verdicts_table(const std::vector<VerdictChange>& changes) {
    DocumentTable table{
        .caption = {},
        .columns = {{"Verdict"}, {"Component"}, {"Paragraph"}, {"A"}, {"B"}, {"Got"}},
        .rows = {}};
    for (const VerdictChange& change : changes)
        table.rows.push_back({cell(change.label), cell(change.component), cell(change.paragraph),
                              cell(change.before), cell(change.after, tone_of(change.turn)),
                              cell(turn_words(change.turn), tone_of(change.turn))});
    return table;
}

DocumentTable unmatched_table(const std::vector<Unmatched>& components) {
    DocumentTable table{
        .caption = {}, .columns = {{"Component"}, {"Of"}, {"Verdict"}, {"Because"}}, .rows = {}};
    for (const Unmatched& each : components)
        table.rows.push_back({cell(each.component), cell(each.of_first ? "A" : "B"),
                              cell(each.verdict, tone_of(each.verdict)), cell(each.says)});
    return table;
}

DocumentTable asides_table(const std::vector<Aside>& asides) {
    DocumentTable table{.caption = {}, .columns = {{"What"}, {"A"}, {"B"}}, .rows = {}};
    for (const Aside& each : asides)
        table.rows.push_back({cell(each.what), cell(each.before.empty() ? "none" : each.before),
                              cell(each.after.empty() ? "none" : each.after)});
    return table;
}

} // namespace

CalculationDocument document_of(const Comparison& c, const std::string& created) {
    CalculationDocument document;
    document.title = "Comparison of two calculations";
    document.project = c.first.name + " and " + c.second.name;
    document.created = created;
    document.metric = c.first.units == "SI";
    FrontPage& front = document.front;
    front.title = document.title;
    front.facts = {{"A", c.first.name},
                   {"B", c.second.name},
                   {"Components compared", std::to_string(c.matched)},
                   {"Tolerance", tolerance_text(c)}};
    if (c.converted) front.facts.push_back({"Units", "B in those of A, " + c.first.units});
    front.passes = !c.worse();
    front.verdict = verdict_word(c);
    front.words = words_of(c);
    front.components = {.caption = "Verdicts of both",
                        .columns = {{"Calculation"}, {"Verdict"}, {"Because"}},
                        .rows = {}};
    const std::pair<const char*, const ComparedResult*> sides[] = {{"A, ", &c.first},
                                                                   {"B, ", &c.second}};
    for (const auto& [letter, side] : sides)
        front.components.rows.push_back({cell(letter + side->name),
                                         cell(side->verdict, tone_of(side->verdict)),
                                         cell(side->says)});
    add_section(document, "inputs", "Changed inputs", changes_table(inputs_of(c, true), true));
    add_section(document, "following", std::string(FOLLOWING),
                changes_table(inputs_of(c, false), true));
    add_section(document, "results", "Changed results", changes_table(c.results, false));
    add_section(document, "verdicts", "Changed verdicts", verdicts_table(c.verdicts));
    add_section(document, "unmatched", "Components of one side alone",
                unmatched_table(c.unmatched));
    add_section(document, "asides", "Programs, data files and documents", asides_table(c.asides));
    return document;
}

} // namespace tarvane::vessel
