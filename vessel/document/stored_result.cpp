#include "document/stored_result.h"

#include "components/calculation.h"
#include "components/read_units.h"
#include "fields/vessel_keys.h"
#include "values/json.h"
#include "values/text.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tarvane::vessel {

namespace {

constexpr std::string_view VERDICTS[] = {PASS, FAIL, NOT_MADE};
constexpr std::string_view FORCES[] = {force_name(Force::decides), force_name(Force::warns),
                                       force_name(Force::advises)};

template <class Names>
bool among(std::string_view text, const Names& names) {
    return std::find(std::begin(names), std::end(names), text) != std::end(names);
}

// The members of an object, each at its path for messages.
class StoredMembers {
  public:
    StoredMembers(const Value& value, std::string where) : path(std::move(where)) {
        if (value.table() == nullptr) no_result(path, "is no object");
        table = value.table();
    }

    [[noreturn]] static void no_result(const std::string& where, const std::string& what) {
        throw std::runtime_error("no result of tarvane: " + (where.empty() ? "it" : where) + ' ' +
                                 what);
    }
    const Table& all() const { return *table; }
    std::string at(std::string_view name) const {
        return (path.empty() ? "" : path + '.') + std::string(name);
    }
    const Value* find(std::string_view name) const { return table->find(name); }
    const Value& get(std::string_view name) const {
        const Value* value = find(name);
        if (value == nullptr) no_result(at(name), "is missing");
        return *value;
    }
    std::string text(std::string_view name) const {
        const std::string* words = get(name).text();
        if (words == nullptr) no_result(at(name), "is no text");
        return *words;
    }
    // One that need not be there.
    std::string text_or_none(std::string_view name) const {
        return find(name) == nullptr || find(name)->null() ? std::string() : text(name);
    }
    template <class Names>
    std::string one_of(std::string_view name, const Names& names) const {
        std::string word = text(name);
        if (!among(word, names)) no_result(at(name), "is " + echoed(word));
        return word;
    }
    std::optional<float> number(std::string_view name) const {
        const Value* value = find(name);
        if (value == nullptr || value->null()) return std::nullopt;
        const std::optional<double> given = value->number();
        if (!given) no_result(at(name), "is no number");
        return static_cast<float>(*given);
    }
    const List& list(std::string_view name) const {
        const List* items = get(name).list();
        if (items == nullptr) no_result(at(name), "is no list");
        return *items;
    }
    std::string item(std::string_view name, std::size_t place) const {
        return at(name) + '[' + std::to_string(place) + ']';
    }

  private:
    const Table* table;
    std::string path;
};

UnitSystem units_of(const StoredMembers& result) {
    Faults faults;
    FaultList list(faults);
    // Results of older programs say no more than the name.
    UnitSystem units = read_units(result.get("units"), list);
    if (const Value* own = result.find("unit_system"); own != nullptr && faults.empty()) {
        Table table = StoredMembers(*own, "unit_system").all();
        table.put("base", result.get("units"));
        units = read_units(table, list);
    }
    if (!faults.empty())
        StoredMembers::no_result(faults.front().path, ": " + faults.front().message);
    return units;
}

std::map<std::string, StoredData> data_of(const StoredMembers& result) {
    std::map<std::string, StoredData> data;
    const List& files = result.list("data");
    for (std::size_t i = 0; i < files.size(); ++i) {
        const StoredMembers file(files[i], result.item("data", i));
        StoredData& stored = data[file.text("file")];
        stored = {file.text_or_none("version"), file.text("sha256"), {}};
        const List& used = file.list("used");
        for (std::size_t k = 0; k < used.size(); ++k) {
            const StoredMembers item(used[k], file.item("used", k));
            std::string known = item.text("status");
            if (const std::string edition = item.text_or_none("edition"); !edition.empty())
                known += ", " + edition;
            stored.items[item.text("item")] = known;
        }
    }
    return data;
}

std::vector<std::pair<std::string, std::string>> document_of(const StoredMembers& result) {
    std::vector<std::pair<std::string, std::string>> texts;
    if (result.find("document") == nullptr) return texts;
    const StoredMembers document(result.get("document"), "document");
    for (const Key& key : document_keys()) {
        if (document.find(key.name) != nullptr)
            texts.emplace_back(key.label(), document.text(key.name));
    }
    return texts;
}

StoredCheck check_of(const StoredMembers& check) {
    const std::string_view STATES[] = {state_name(State::pass), state_name(State::fail),
                                       state_name(State::not_asked), state_name(State::not_made),
                                       state_name(State::waived)};
    return {.id = check.text("id"),
            .load_case = check.text_or_none("case"),
            .paragraph = check.text("paragraph"),
            .state = check.one_of("state", STATES),
            .force = check.one_of("force", FORCES),
            .demand = check.number("demand"),
            .limit = check.number("limit"),
            .ratio = check.number("ratio")};
}

// A number, a text, a flag or nothing.
const Value& plain(const Value& value, const std::string& path) {
    if (value.table() != nullptr || value.list() != nullptr)
        StoredMembers::no_result(path, "is no plain value");
    return value;
}

StoredComponent component_of(const StoredMembers& component, const ElementKind& kind,
                             std::size_t number) {
    StoredComponent stored{.kind = &kind,
                           .number = number,
                           .description = component.text("description"),
                           .verdict = component.one_of("verdict", VERDICTS),
                           .says = component.text("says"),
                           .inputs = {},
                           .results = {},
                           .checks = {}};
    const StoredMembers inputs(component.get("inputs"), component.at("inputs"));
    for (const Table::Entry& entry : inputs.all()) {
        const StoredMembers input(entry.value, inputs.at(entry.key));
        stored.inputs.push_back(
            {entry.key, plain(input.get("value"), input.at("value")), input.text("from")});
    }
    const StoredMembers results(component.get("results"), component.at("results"));
    for (const Table::Entry& entry : results.all())
        stored.results.emplace_back(entry.key, plain(entry.value, results.at(entry.key)));
    const List& checks = component.list("checks");
    for (std::size_t i = 0; i < checks.size(); ++i)
        stored.checks.push_back(check_of({checks[i], component.item("checks", i)}));
    return stored;
}

StoredResult stored_result(std::string name, const StoredMembers& result) {
    const std::int64_t* form = result.get("tarvane").whole();
    if (form == nullptr || *form != 1) StoredMembers::no_result("tarvane", "is not 1");
    StoredResult stored{.name = std::move(name),
                        .program = result.text("program"),
                        .edition = result.text_or_none("data_edition"),
                        .verdict = result.one_of("verdict", VERDICTS),
                        .says = result.text("says"),
                        .units = units_of(result),
                        .data = data_of(result),
                        .document = document_of(result),
                        .summary = {},
                        .components = {}};
    if (result.find("summary") != nullptr) {
        const List& rows = result.list("summary");
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const StoredMembers row(rows[i], result.item("summary", i));
            stored.summary.push_back({row.text("name"), row.number("value")});
        }
    }
    for (const ElementKind* kind : element_kinds()) {
        if (result.find(kind->table) == nullptr) continue;
        const List& components = result.list(kind->table);
        for (std::size_t i = 0; i < components.size(); ++i)
            stored.components.push_back(
                component_of({components[i], result.item(kind->table, i)}, *kind, i + 1));
    }
    return stored;
}

} // namespace

StoredResult read_stored(const std::string& name, std::string_view json) {
    Faults faults;
    const std::optional<Value> tree = read_json(json, faults);
    if (!tree) throw std::runtime_error(name + ": " + faults.front().message);
    try {
        return stored_result(name, {*tree, ""});
    } catch (const std::runtime_error& problem) {
        throw std::runtime_error(name + ": " + problem.what());
    }
}

} // namespace tarvane::vessel
