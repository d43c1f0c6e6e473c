#include "document/comparison.h"

#include "assembly/summary.h"
#include "components/calculation.h"
#include "document/results.h"
#include "values/decimal.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace tarvane::vessel {

namespace {

constexpr std::string_view NONE = "none";

// ---- numbers -------------------------------------------------------------------------------------------

// What is known of a value that both results have: of one of another program perhaps nothing but its name.
struct Described {
    std::string label, symbol;
    Quantity quantity = Quantity::number;
    std::optional<int> decimals; // that results are shown with; inputs are as they were given
};

class Units {
  public:
    Units(const UnitSystem& first, const UnitSystem& second)
        : a(first), b(second),
          differ(a.factors != b.factors || a.density_factor != b.density_factor) {}

    bool converted() const { return differ; }
    const UnitSystem& shown() const { return a; }
    // A number of the second result in the units of the first.
    float of_second(float value, Quantity quantity) const {
        return differ ? a.to_file(b.to_engine(value, quantity), quantity) : value;
    }

  private:
    const UnitSystem &a, &b;
    bool differ;
};

// In per cent of the first number; nothing from zero. A temperature counts from absolute zero.
std::optional<double> percent_of(float before, float after, Quantity quantity,
                                 const UnitSystem& units) {
    const auto counted = [&](float value) {
        if (quantity != Quantity::temperature) return static_cast<double>(value);
        return static_cast<double>(units.to_engine(value, quantity)) -
               static_cast<double>(ABSOLUTE_ZERO);
    };
    const double from = counted(before), to = counted(after);
    if (from == 0.0) return std::nullopt;
    return (to - from) / std::fabs(from) * 100.0;
}

// As many decimals as are usual, and more until two numbers that differ are seen to.
std::pair<std::string, std::string> shown_numbers(float before, float after,
                                                  std::optional<int> decimals) {
    constexpr int MOST_MORE = 4;
    if (decimals) {
        for (int more = 0; more <= MOST_MORE; ++more) {
            std::pair<std::string, std::string> texts{number_text(before, *decimals + more),
                                                      number_text(after, *decimals + more)};
            if (texts.first != texts.second) return texts;
        }
    }
    return {JsonWriter().single(before).take(), JsonWriter().single(after).take()};
}

std::string shown_number(float value, std::optional<int> decimals) {
    return decimals ? number_text(value, *decimals) : JsonWriter().single(value).take();
}

// A value of the JSON that is no number; empty: there is none.
std::string word_of(const Value* value) {
    if (value == nullptr || value->null()) return {};
    if (const bool* flag = value->flag()) return *flag ? "true" : "false";
    if (const std::string* text = value->text()) return *text;
    return {};
}

std::optional<float> number_of(const Value* value) {
    const std::optional<double> number = value == nullptr ? std::nullopt : value->number();
    return number ? std::optional(static_cast<float>(*number)) : std::nullopt;
}

// ---- verdicts ------------------------------------------------------------------------------------------

// How far a state is from passing. What isn't asked or isn't there keeps nothing from passing.
int distance(std::string_view state) {
    if (state == PASS || state == state_name(State::not_asked) || state == NONE) return 0;
    if (state == NOT_MADE) return 2;
    if (state == FAIL) return 3;
    return 1; // a warning, an advice, a waived check
}

// What failed and is not made any more is no better.
Turn turn_of(std::string_view before, std::string_view after) {
    const int from = distance(before), to = distance(after);
    if (to > from) return Turn::worse;
    return to < from && to < distance(NOT_MADE) ? Turn::better : Turn::neither;
}

// A check that fails and does not decide is what it is worth.
std::string state_of(const StoredCheck* check) {
    if (check == nullptr) return std::string(NONE);
    if (check->state != state_name(State::fail) || check->force == force_name(Force::decides))
        return check->state;
    return check->force == force_name(Force::warns) ? "warning" : "advice";
}

// ---- components ------------------------------------------------------------------------------------------

struct Match {
    const StoredComponent *first, *second; // one of them may be a null pointer
};

std::string place_of(const StoredComponent& component) {
    return std::string(component.kind->table) + '[' + std::to_string(component.number - 1) + ']';
}

std::string name_of(const StoredComponent& component) {
    std::string name = std::string(component.kind->table) + ' ' + std::to_string(component.number);
    return component.description.empty() ? name : name + " (" + component.description + ')';
}

// By kind and description where it is the only one of that name on either side, then by number.
std::vector<Match> match(const StoredResult& first, const StoredResult& second) {
    std::set<const StoredComponent*> taken;
    const auto named = [](const StoredResult& result, const StoredComponent& like) {
        const StoredComponent* found = nullptr;
        for (const StoredComponent& each : result.components) {
            if (each.kind != like.kind || each.description != like.description) continue;
            if (found != nullptr) return static_cast<const StoredComponent*>(nullptr);
            found = &each;
        }
        return found;
    };
    std::vector<Match> matches;
    for (const StoredComponent& each : first.components) {
        const StoredComponent* other = nullptr;
        if (!each.description.empty() && named(first, each) != nullptr) other = named(second, each);
        taken.insert(other);
        matches.push_back({&each, other});
    }
    for (Match& each : matches) {
        if (each.second != nullptr) continue;
        for (const StoredComponent& other : second.components) {
            if (other.kind != each.first->kind || other.number != each.first->number ||
                !taken.insert(&other).second)
                continue;
            each.second = &other;
        }
    }
    for (const StoredComponent& other : second.components) {
        if (!taken.contains(&other)) matches.push_back({nullptr, &other});
    }
    return matches;
}

// ---- the comparison --------------------------------------------------------------------------------------

class Comparer {
  public:
    Comparer(const StoredResult& first, const StoredResult& second, double percent)
        : a(first), b(second), units(a.units, b.units) {
        c.first = {a.name, a.units.name, a.verdict, a.says};
        c.second = {b.name, b.units.name, b.verdict, b.says};
        c.converted = units.converted();
        c.tolerance = units.converted() ? std::max(percent, TOLERANCE_OF_UNITS) : percent;
    }

    Comparison compare() {
        compare_verdicts("all components", "", a.verdict, b.verdict);
        compare_summaries();
        for (const auto& [first, second] : match(a, b)) {
            if (first != nullptr && second != nullptr)
                compare_components(*first, *second);
            else
                add_unmatched(first, second);
        }
        add_asides();
        return std::move(c);
    }

  private:
    const StoredResult &a, &b;
    Units units;
    Comparison c;
    std::set<std::string> only_first, only_second; // results that the other program does not have

    // Puts both values into the change; false where they are the same.
    bool differ(const Value* before, const Value* after, const Described& what, double tolerance,
                Change& change) const;
    void describe(const Described& what, Change& change) const {
        change.label = what.label;
        change.symbol = what.symbol;
        change.unit = to_utf8(units.shown().label(what.quantity));
    }
    // True for one that was added.
    bool compare_result(const Value* before, const Value* after, const Described& what,
                        std::string component, std::string path);
    void compare_verdicts(const std::string& component, const std::string& path,
                          const std::string& before, const std::string& after);
    void compare_summaries();
    void compare_inputs(const StoredComponent& first, const StoredComponent& second);
    void compare_results(const StoredComponent& first, const StoredComponent& second);
    void compare_check(const StoredComponent& second, const StoredCheck* before,
                       const StoredCheck* after);
    void compare_checks(const StoredComponent& first, const StoredComponent& second);
    void compare_components(const StoredComponent& first, const StoredComponent& second);
    void add_unmatched(const StoredComponent* first, const StoredComponent* second);
    void add_aside(std::string what, std::string before, std::string after) {
        if (before != after)
            c.asides.push_back({std::move(what), std::move(before), std::move(after)});
    }
    void add_data_asides();
    void add_asides();
};

bool Comparer::differ(const Value* before, const Value* after, const Described& what,
                      double tolerance, Change& change) const {
    const std::optional<float> from = number_of(before), own = number_of(after);
    const std::optional<float> to =
        own ? std::optional(units.of_second(*own, what.quantity)) : std::nullopt;
    change.before.number = from;
    change.after.number = to;
    if (from && to) {
        if (*from == *to) return false;
        change.percent = percent_of(*from, *to, what.quantity, units.shown());
        if (what.quantity == Quantity::temperature)
            change.degrees = static_cast<double>(*to) - static_cast<double>(*from);
        if (change.percent && std::fabs(*change.percent) <= tolerance) return false;
        std::tie(change.before.shown, change.after.shown) =
            shown_numbers(*from, *to, what.decimals);
        return true;
    }
    const auto show = [&](std::optional<float> number, const Value* value) {
        if (number) return shown_number(*number, what.decimals);
        std::string word = word_of(value);
        return word.empty() ? std::string(NONE) : word;
    };
    change.before.shown = show(from, before);
    change.after.shown = show(to, after);
    return from || to || word_of(before) != word_of(after);
}

void Comparer::compare_verdicts(const std::string& component, const std::string& path,
                                const std::string& before, const std::string& after) {
    if (before == after) return;
    c.verdicts.push_back({.component = component,
                          .path = path.empty() ? "verdict" : path + ".verdict",
                          .label = "verdict",
                          .paragraph = {},
                          .before = before,
                          .after = after,
                          .turn = turn_of(before, after)});
}

bool Comparer::compare_result(const Value* before, const Value* after, const Described& what,
                              std::string component, std::string path) {
    Change change;
    if (!differ(before, after, what, c.tolerance, change)) return false;
    describe(what, change);
    change.component = std::move(component);
    change.path = std::move(path);
    c.results.push_back(std::move(change));
    return true;
}

Described described(const ResultField& field, const UnitSystem& units) {
    return {.label = std::string(field.label),
            .symbol = std::string(field.symbol),
            .quantity = field.quantity,
            .decimals = decimals_of(field.quantity, units)};
}

void Comparer::compare_summaries() {
    const auto value_in = [](const StoredResult& result, std::string_view name) {
        for (const StoredSummary& row : result.summary) {
            if (row.name == name && row.value) return Value(static_cast<double>(*row.value));
        }
        return Value();
    };
    for (const ResultField& field : summary_fields()) {
        const Value before = value_in(a, field.name), after = value_in(b, field.name);
        compare_result(&before, &after, described(field, units.shown()), "vessel",
                       "summary." + std::string(field.name));
    }
}

// ---- of two components -----------------------------------------------------------------------------------

// Nothing reads it, or it is not there.
bool is_idle(const StoredInput* input) {
    return input == nullptr || input->from.starts_with("not read");
}

void Comparer::compare_inputs(const StoredComponent& first, const StoredComponent& second) {
    const auto find = [](const StoredComponent& in, std::string_view name) -> const StoredInput* {
        for (const StoredInput& input : in.inputs) {
            if (input.name == name) return &input;
        }
        return nullptr;
    };
    const auto compare_input = [&](const StoredInput* before, const StoredInput* after) {
        const std::string& name = before != nullptr ? before->name : after->name;
        if (is_idle(before)) before = nullptr;
        if (is_idle(after)) after = nullptr;
        // A default that another input brings with it, or takes away.
        if (before == nullptr && (after == nullptr || after->from == "default")) return;
        if (after == nullptr && before->from == "default") return;
        Described what{.label = name, .symbol = {}, .quantity = Quantity::number, .decimals = {}};
        if (const Key* key = second.kind->keys.find(name)) {
            what.label = key->label();
            what.symbol = name;
            what.quantity = key->quantity;
        }
        Change change;
        if (!differ(before == nullptr ? nullptr : &before->value,
                    after == nullptr ? nullptr : &after->value, what,
                    units.converted() ? TOLERANCE_OF_UNITS : 0.0, change))
            return;
        describe(what, change);
        if (before != nullptr) change.before.from = before->from;
        if (after != nullptr) change.after.from = after->from;
        change.component = name_of(second);
        change.path = place_of(second) + ".inputs." + name;
        c.inputs.push_back(std::move(change));
    };
    for (const StoredInput& input : first.inputs)
        compare_input(&input, find(second, input.name));
    for (const StoredInput& input : second.inputs) {
        if (find(first, input.name) == nullptr) compare_input(nullptr, &input);
    }
}

void Comparer::compare_results(const StoredComponent& first, const StoredComponent& second) {
    const auto find = [](const StoredComponent& in, std::string_view name) -> const Value* {
        for (const auto& [each, value] : in.results) {
            if (each == name) return &value;
        }
        return nullptr;
    };
    for (const auto& [name, before] : first.results) {
        const Value* after = find(second, name);
        if (after == nullptr) {
            only_first.insert(std::string(first.kind->table) + '.' + name);
            continue;
        }
        Described what{.label = name, .symbol = {}, .quantity = Quantity::number, .decimals = {}};
        for (const ResultField& field : second.kind->results) {
            if (field.name == name) what = described(field, units.shown());
        }
        compare_result(&before, after, what, name_of(second),
                       place_of(second) + ".results." + name);
    }
    for (const auto& [name, value] : second.results) {
        if (find(first, name) == nullptr)
            only_second.insert(std::string(second.kind->table) + '.' + name);
    }
}

void Comparer::compare_check(const StoredComponent& second, const StoredCheck* before,
                             const StoredCheck* after) {
    constexpr int DECIMALS_OF_RATIO = 4;
    const StoredCheck& known = after != nullptr ? *after : *before;
    std::string label = known.id;
    Quantity quantity = Quantity::number;
    for (const CheckField& field : second.kind->checks) {
        if (field.id != known.id) continue;
        label = field.label;
        quantity = field.quantity;
    }
    if (!known.load_case.empty()) label += ", " + known.load_case;
    std::string path = place_of(second) + ".checks." + known.id;
    if (!known.load_case.empty()) path += '[' + known.load_case + ']';

    if (const std::string from = state_of(before), to = state_of(after); from != to)
        c.verdicts.push_back({.component = name_of(second),
                              .path = path,
                              .label = label,
                              .paragraph = known.paragraph,
                              .before = from,
                              .after = to,
                              .turn = turn_of(from, to)});
    if (before == nullptr || after == nullptr) return;
    const auto figure = [&](std::string_view name, std::optional<float> from,
                            std::optional<float> to, Quantity of, int decimals) {
        const auto value = [](std::optional<float> number) {
            return number ? Value(static_cast<double>(*number)) : Value();
        };
        const Value x = value(from), y = value(to);
        return compare_result(&x, &y,
                              {.label = label + ", " + std::string(name),
                               .symbol = {},
                               .quantity = of,
                               .decimals = decimals},
                              name_of(second), path + '.' + std::string(name));
    };
    // A ratio that differs says more than its two figures.
    if (figure("ratio", before->ratio, after->ratio, Quantity::number, DECIMALS_OF_RATIO)) return;
    const int decimals = decimals_of(quantity, units.shown());
    figure("demand", before->demand, after->demand, quantity, decimals);
    figure("limit", before->limit, after->limit, quantity, decimals);
}

// Checks of the same id and case, the first with the first.
void Comparer::compare_checks(const StoredComponent& first, const StoredComponent& second) {
    std::set<const StoredCheck*> taken;
    for (const StoredCheck& before : first.checks) {
        const auto after =
            std::find_if(second.checks.begin(), second.checks.end(), [&](const StoredCheck& each) {
                return each.id == before.id && each.load_case == before.load_case &&
                       !taken.contains(&each);
            });
        const StoredCheck* found = after == second.checks.end() ? nullptr : &*after;
        taken.insert(found);
        compare_check(second, &before, found);
    }
    for (const StoredCheck& after : second.checks) {
        if (!taken.contains(&after)) compare_check(second, nullptr, &after);
    }
}

void Comparer::compare_components(const StoredComponent& first, const StoredComponent& second) {
    ++c.matched;
    compare_inputs(first, second);
    compare_results(first, second);
    compare_verdicts(name_of(second), place_of(second), first.verdict, second.verdict);
    compare_checks(first, second);
}

void Comparer::add_unmatched(const StoredComponent* first, const StoredComponent* second) {
    const StoredComponent& only = first != nullptr ? *first : *second;
    c.unmatched.push_back({.of_first = first != nullptr,
                           .component = name_of(only),
                           .path = place_of(only),
                           .verdict = only.verdict,
                           .says = only.says});
}

// ---- asides --------------------------------------------------------------------------------------------

void Comparer::add_data_asides() {
    std::set<std::string> files;
    for (const StoredResult* each : {&a, &b}) {
        for (const auto& [file, data] : each->data)
            files.insert(file);
    }
    constexpr std::size_t DIGITS = 12; // of a SHA-256 tell two files apart
    const auto version = [](const StoredData* data) {
        if (data == nullptr) return std::string("not used");
        return (data->version.empty() ? "" : data->version + ", ") + "SHA-256 " +
               data->sha256.substr(0, DIGITS);
    };
    for (const std::string& file : files) {
        const auto at = [&file](const StoredResult& result) -> const StoredData* {
            const auto found = result.data.find(file);
            return found == result.data.end() ? nullptr : &found->second;
        };
        const StoredData *before = at(a), *after = at(b);
        add_aside(file, version(before), version(after));
        if (before == nullptr || after == nullptr) continue;
        for (const auto& [item, known] : before->items) {
            const auto other = after->items.find(item);
            if (other != after->items.end())
                add_aside((file + ", ").append(item), known, other->second);
        }
    }
}

void Comparer::add_asides() {
    add_aside("program", a.program, b.program);
    if (units.converted()) add_aside("units", a.units.name, b.units.name);
    add_aside("edition of the data", a.edition, b.edition);
    add_data_asides();
    std::vector<std::string> labels;
    for (const StoredResult* each : {&a, &b}) {
        for (const auto& [label, text] : each->document) {
            if (std::find(labels.begin(), labels.end(), label) == labels.end())
                labels.push_back(label);
        }
    }
    for (const std::string& label : labels) {
        const auto text = [&label](const StoredResult& result) {
            for (const auto& [each, words] : result.document)
                if (each == label) return words;
            return std::string();
        };
        add_aside("document: " + label, text(a), text(b));
    }
    const auto list = [](const std::set<std::string>& names) {
        std::string all;
        for (const std::string& name : names)
            all += (all.empty() ? "" : ", ") + name;
        return all;
    };
    add_aside("results that the other program lacks", list(only_first), list(only_second));
}

} // namespace

std::string_view turn_name(Turn turn) {
    return turn == Turn::worse ? "worse" : turn == Turn::better ? "better" : "other";
}

bool Comparison::worse() const {
    return std::any_of(verdicts.begin(), verdicts.end(),
                       [](const VerdictChange& each) { return each.turn == Turn::worse; }) ||
           std::any_of(unmatched.begin(), unmatched.end(), [](const Unmatched& each) {
               return !each.of_first && each.verdict != PASS;
           });
}

bool Comparison::same() const {
    return inputs.empty() && results.empty() && verdicts.empty() && unmatched.empty();
}

Comparison compare(const StoredResult& first, const StoredResult& second, double tolerance) {
    return Comparer(first, second, tolerance).compare();
}

} // namespace tarvane::vessel
