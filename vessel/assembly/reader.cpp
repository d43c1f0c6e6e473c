#include "assembly/reader.h"

#include "assembly/links.h"
#include "assembly/mates.h"
#include "assembly/takes.h"
#include "components/conditions.h"
#include "components/fault_list.h"
#include "components/flange_input.h"
#include "components/read_units.h"
#include "components/read_value.h"
#include "components/strict.h"
#include "components/waivers.h"
#include "document/results.h"
#include "fields/vessel_keys.h"
#include "values/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <set>
#include <tuple>

namespace tarvane::vessel {

namespace {

using Kinds = std::span<const ElementKind* const>;

constexpr std::string_view FILE_KEYS[] = {"tarvane", "units",  "decimal_comma", "metric_constants",
                                          "strict",  "vessel", "document"};
constexpr std::int64_t NEWEST_FORM = 1;
constexpr double LARGEST_INTEGER = 9007199254740992.0; // a double holds it and all below it

// A table whose keys apply to every component that does not give them.
struct CommonTable {
    const Table& table;
    std::string prefix; // of paths: "vessel."
    bool newer;         // by the one vocabulary
};

class Reader {
  public:
    // `inputs`: paths of values that come later, one for each reading.
    Reader(ReadResult& into, Kinds of_requests, std::span<const std::string> inputs = {})
        : request(into.request), faults(into.faults), known_kinds(of_requests), later(inputs) {}

    void read(const Table& root);
    // What read leaves open, with these values of the inputs.
    void read_again(std::span<const double> values);
    // Of the components that have inputs.
    std::vector<std::size_t> open_places() const;
    bool takes(std::size_t input) const;

  private:
    Request& request;
    FaultList faults;
    Kinds known_kinds;
    std::span<const std::string> later;
    std::vector<const ElementKind*> kinds; // that the request has
    std::vector<CommonTable> commons;
    bool strict = false, newer_form = false;
    MaterialFiles materials;
    DataFilesCheck data_files;

    // A table that describes a component.
    struct Source {
        const ElementKind* kind;
        const Value* value;
        int number;
        std::optional<std::size_t> of = {}; // the vessel asks for the metal temperature of this one
        int metal_temperature = 0;          // number of the [[mdmt]] that is of this one

        const Table& table() const { return *value->table(); }
        std::string path() const {
            return std::string(kind->table) + '[' + std::to_string(number - 1) + ']';
        }
    };
    // A value with the name under which it is written.
    struct Written {
        const Value* value;
        std::string name;
    };

    // A key whose value comes later.
    struct Open {
        std::size_t input;
        const Key* key;
        std::string name, path;
    };
    // A component with the values that are given, before what follows from them.
    struct Draft {
        std::size_t place; // in the request
        std::unique_ptr<Element> element;
        Reading reading;
        std::vector<Open> open;
    };
    std::vector<Draft> drafts; // that inputs have a part in, those first that others name
    std::vector<Source> sources;
    std::deque<Value> implied; // tables of metal temperatures that the vessel asks for
    Links links{{}, faults};
    bool linked = false; // there is one
    std::array<std::optional<float>, static_cast<std::size_t>(VesselNumber::count)> vessel_values;
    std::vector<std::pair<const Key*, std::size_t>> open_vessel_values; // with their inputs

    bool read_flag(const Table& root, std::string_view key, bool fallback);
    void read_file_keys(const Table& root);
    std::vector<CommonTable> common_tables(const Table& root);
    void check_names(const Table& table, std::string_view prefix, Kinds of, bool holds_for_all,
                     std::span<const std::string_view> others);
    bool check_inner_table(const Table::Entry& entry, std::string_view prefix, Kinds of);
    std::vector<Source> find_components(const Table& root, const ElementKind& kind);
    Written find_own(const Table& table, const KeyTable& keys, const Key& key,
                     const std::string& path);
    bool has_owner(std::string_view name) const;
    Written find_common(const CommonTable& common, const KeyTable& keys, const Key& key) const;
    void read_key(const Written& written, const Key& key, const std::string& path, Element& element,
                  Reading& reading);
    Draft begin_component(const Source& source);
    void finish_component(std::unique_ptr<Element> element, Reading& reading, std::size_t place);
    bool holds_for_all(const Key& key);
    void take_links(std::size_t place, Element& element, Reading& reading);
    void settle_mates_of(std::size_t place);
    void find_sources(const Table& root);
    void add_metal_temperatures(const Table& root);
    bool refuse_metal_temperatures(const Table& root, const Table& vessel, const ElementKind& kind);
    void read_components();
    std::vector<bool> find_drafts(const std::vector<Draft>& begun) const;
    std::optional<Liquid> liquid() const;
    void read_vessel(const Table& vessel);
    void put_vessel_value(const Key& key, const Value& value);
    void read_document(const Table& root);
    Texts read_texts(const Table& table, std::span<const Key> keys, const std::string& path,
                     std::span<const std::string_view> others);
};

// ---- names ---------------------------------------------------------------------------------------------

std::string nearest_key(std::string_view name, std::span<const std::string_view> others,
                        Kinds kinds) {
    std::string_view near;
    for (const ElementKind* kind : kinds) {
        if (const Unheeded* known = kind->keys.find_unheeded(name))
            return "; " + std::string(known->advice);
        if (near.empty()) near = kind->keys.synonym(name);
    }
    std::string message =
        near.empty() ? nearest_name(name, others) : "; the nearest is " + std::string(near);
    if (message.empty()) return message;
    // The first of several kinds that has the key gives its meaning.
    near = std::string_view(message).substr(std::string_view("; the nearest is ").size());
    for (const ElementKind* kind : kinds) {
        if (const Key* key = kind->keys.find(near))
            return message + ", " + std::string(key->meaning);
    }
    return message;
}

// Keys that the table does not have. In a table for every component some may be ignored.
void Reader::check_names(const Table& table, std::string_view prefix, Kinds of, bool holds_for_all,
                         std::span<const std::string_view> others) {
    std::vector<std::string_view> names;
    for (const ElementKind* kind : of) {
        for (const Key& key : kind->keys.keys)
            names.push_back(key.name);
    }
    names.insert(names.end(), others.begin(), others.end());
    const auto knows = [&](const std::string& name) {
        return std::find(others.begin(), others.end(), name) != others.end() ||
               std::any_of(of.begin(), of.end(), [&](const ElementKind* kind) {
                   return kind->keys.resolve(name) != nullptr ||
                          (holds_for_all && kind->keys.find_unheeded(name) != nullptr);
               });
    };
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : table) {
        if (!knows(entry.key) && !check_inner_table(entry, prefix, of)) unknown.push_back(&entry);
    }
    faults.unknown(std::move(unknown), prefix,
                   [&](std::string_view name) { return nearest_key(name, names, of); });
}

// Faults of a table of keys. False for a name that is no such table.
bool Reader::check_inner_table(const Table::Entry& entry, std::string_view prefix, Kinds of) {
    std::vector<std::string_view> names;
    for (const ElementKind* kind : of) {
        if (names.empty()) names = kind->keys.names_in(entry.key);
    }
    if (names.empty()) return false;
    const Table* table = entry.value.table();
    if (table == nullptr) {
        std::string list;
        for (const std::string_view name : names)
            list += (list.empty() ? "" : ", ") + std::string(name);
        faults.wrong(entry.value, entry.key, "a table of " + list);
        return true;
    }
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& inner : *table) {
        if (std::find(names.begin(), names.end(), inner.key) == names.end())
            unknown.push_back(&inner);
    }
    std::string path(prefix);
    if (!path.empty()) path += '.';
    faults.unknown(std::move(unknown), path + entry.key,
                   [&](std::string_view name) { return nearest_name(name, names); });
    return true;
}

// ---- components -------------------------------------------------------------------------------------------

// The value of a name, which may be in a table of its own; a null pointer without one.
const Value* find_value(const Table& table, std::string_view name) {
    const std::size_t point = name.find('.');
    const Value* value = table.find(name.substr(0, point));
    if (value == nullptr || point == std::string_view::npos) return value;
    const Table* inner = value->table();
    return inner == nullptr ? nullptr : inner->find(name.substr(point + 1));
}

// The names of a key, its own first.
std::vector<std::string> names_of(const KeyTable& keys, const Key& key) {
    std::vector<std::string> names{std::string(key.name)};
    for (const Alias& alias : keys.aliases) {
        if (alias.ours == key.name) names.emplace_back(alias.other);
    }
    for (const InnerTable& inner : keys.tables) {
        if (std::find(inner.keys.begin(), inner.keys.end(), key.name) != inner.keys.end())
            names.push_back(std::string(inner.name) + '.' + std::string(key.name));
    }
    return names;
}

Reader::Written Reader::find_own(const Table& table, const KeyTable& keys, const Key& key,
                                 const std::string& path) {
    Written found{nullptr, {}};
    for (std::string& name : names_of(keys, key)) {
        const Value* value = find_value(table, name);
        if (value == nullptr) continue;
        if (found.value == nullptr) {
            found = {value, std::move(name)};
            continue;
        }
        faults.add(value->at, name, "given as " + found.name + ", too; one of them is expected");
        faults.list().back().path = path + '.' + name;
        faults.list().back().value = value->shown();
    }
    return found;
}

Reader::Written Reader::find_common(const CommonTable& common, const KeyTable& keys,
                                    const Key& key) const {
    if ((common.newer && key.name == "description") || is_link(key.name)) return {nullptr, {}};
    for (std::string& name : names_of(keys, key)) {
        // The list of [[external]] is no value for the key `external` of a shell.
        const bool is_list = std::any_of(known_kinds.begin(), known_kinds.end(),
                                         [&](const ElementKind* k) { return k->table == name; });
        const Value* value = find_value(common.table, name);
        if (value == nullptr || (is_list && value->list() != nullptr)) continue;
        const bool shared =
            std::none_of(keys.aliases.begin(), keys.aliases.end(), [&](const Alias& alias) {
                const Shared which = common.newer ? alias.in_newer_files : alias.in_older_files;
                return (which == Shared::ours && alias.other == name) ||
                       (which == Shared::other && alias.ours == name && has_owner(name));
            });
        if (shared) return {value, std::move(name)};
    }
    return {nullptr, {}};
}

// Whether a component of the request has the name as its own, not as the newer one of an alias.
bool Reader::has_owner(std::string_view name) const {
    return std::any_of(kinds.begin(), kinds.end(), [name](const ElementKind* kind) {
        const auto& aliases = kind->keys.aliases;
        return kind->keys.find(name) != nullptr &&
               std::none_of(aliases.begin(), aliases.end(), [name](const Alias& alias) {
                   return alias.ours == name && alias.in_older_files == Shared::other;
               });
    });
}

// A code that others are calculated by; else nothing.
std::string code_not_covered(const Value& value, const ElementKind& kind) {
    const Key& codes = *flange_keys().find("code");
    const std::string* text = value.text();
    const auto code =
        std::find_if(codes.choices.begin(), codes.choices.end(), [&](const Choice& c) {
            return text != nullptr && folded(c.name) == folded(*text);
        });
    const Key* own = kind.keys.find("code");
    if (code == codes.choices.end() || own == nullptr) return {};
    return std::string(kind.plural) + " by " +
           std::string(choice_name(codes.choices, code->number)) + " are not covered; by " +
           choice_names(own->choices) + " they are";
}

void Reader::read_key(const Written& written, const Key& key, const std::string& path,
                      Element& element, Reading& reading) {
    const bool own = path.starts_with(std::string(element.kind->table) + '[');
    std::string fault;
    if (is_text(key)) {
        // Those of a common table may be of any kind in the request.
        Taken<std::string> text =
            key.quantity == Quantity::waivers
                ? take_waivers(*written.value, own ? Kinds(&element.kind, 1) : Kinds(kinds))
                : take_text(*written.value, key, request.units);
        if (text.value) element.put_text(key, *text.value);
        fault = std::move(text.fault);
    } else {
        Taken<float> number = take_number(*written.value, key, request.units);
        if (number.value) element.put_number(key, *number.value);
        fault = std::move(number.fault);
    }
    reading.note(key.name, *written.value, written.name, path, fault.empty(), own);
    if (fault.empty()) return;
    if (key.name == "code") {
        if (std::string words = code_not_covered(*written.value, *element.kind); !words.empty())
            fault = std::move(words);
    }
    faults.add(written.value->at, written.name, std::move(fault));
    faults.list().back().path = path;
    faults.list().back().value = written.value->shown();
}

// Whether a key for every component has a value other than 0, or one that comes later.
bool Reader::holds_for_all(const Key& key) {
    for (const CommonTable& table : commons) {
        const Value* value = table.table.find(key.name);
        if (value == nullptr) continue;
        const std::string path = table.prefix + std::string(key.name);
        if (std::find(later.begin(), later.end(), path) != later.end()) return true;
        Taken<float> number = take_number(*value, key, request.units);
        if (number.value) return *number.value != 0.0f;
        faults.add(value->at, key.name, std::move(number.fault));
        faults.list().back().path = path;
        faults.list().back().value = value->shown();
    }
    return false;
}

Reader::Draft Reader::begin_component(const Source& source) {
    const KeyTable& keys = source.kind->keys;
    const std::string path = source.path();
    Draft draft{
        static_cast<std::size_t>(&source - sources.data()),
        source.kind->make(),
        Reading(request.units, materials, data_files, source.value->at.line, path, faults.list()),
        {}};
    const std::unique_ptr<Element>& element = draft.element;
    element->line = source.value->at.line;
    element->number = source.number;
    element->metal_temperature = source.metal_temperature;

    for (const Key& key : keys.keys) {
        if (!is_text(key))
            element->put_number(key, static_cast<float>(key.default_value(newer_form)));
        Written written = find_own(source.table(), keys, key, path);
        std::string place = path + '.' + written.name;
        for (const CommonTable& table : commons) {
            if (written.value != nullptr) break;
            written = find_common(table, keys, key);
            place = table.prefix + written.name;
        }
        if (written.value == nullptr) continue;
        const auto input = std::find(later.begin(), later.end(), place);
        if (input == later.end())
            read_key(written, key, place, *element, draft.reading);
        else
            draft.open.push_back({static_cast<std::size_t>(input - later.begin()), &key,
                                  std::move(written.name), std::move(place)});
    }
    for (const Unheeded& each : keys.unheeded) {
        if (holds_for_all(each.key)) element->unheeded.push_back(&each);
    }
    return draft;
}

void Reader::finish_component(std::unique_ptr<Element> element, Reading& reading,
                              std::size_t place) {
    const ElementKind& kind = *element->kind;
    const KeyTable& keys = kind.keys;
    take_links(place, *element, reading);
    // A flag that is left open is on when one of the keys that belong to it is given.
    for (const Key& key : keys.keys) {
        if (key.group.empty() || !reading.given(key.name) || reading.given(key.group)) continue;
        element->put_number(*keys.find(key.group), 1.0f);
        reading.comes_from(key.group, std::string(key.name));
    }

    element->complete(reading);

    find_missing_keys(*element, request.units, reading);
    element->data = std::move(reading.data);
    element->notes = std::move(reading.notes);
    // Without links nobody asks of one reading after another where values came from that are not given.
    const bool asked = later.empty() || strict || linked;
    element->origins = asked ? complete_origins(*element, reading) : reading.take_origins();
    if (strict) refuse_defaults(*element, reading);
    request.elements[place] = std::move(element);
    settle_mates_of(place);
}

// ---- links -----------------------------------------------------------------------------------------------

void Reader::take_links(std::size_t place, Element& element, Reading& reading) {
    for (const Link& link : links.of(place)) {
        if (link.target)
            take_over(link.key, element, reading, *request.elements[*link.target], request);
        else
            take_nothing(link.key, element, reading);
    }
    if (const std::optional<Liquid> in_vessel = liquid()) add_head(*in_vessel, element, reading);
}

void Reader::settle_mates_of(std::size_t place) {
    for (const Link& link : links.of(place)) {
        if (link.key != "mates_with" || !link.target || faults.size() > 0) continue;
        auto& flange = static_cast<FlangeInput&>(*request.elements[place]);
        auto& mate = static_cast<FlangeInput&>(*request.elements[*link.target]);
        if (flange.rated()) continue;
        const auto given = [](const FlangeInput& f) {
            return !f.origins.at("mating_operating").given.null();
        };
        std::string fault = given(flange) || given(mate)
                                ? "either mates_with or the loads of the mating flange are expected"
                                : settle_mates(flange, mate, request);
        if (fault.empty()) continue;
        const Value& name = *sources[place].table().find(link.key);
        faults.add(name.at, link.key, std::move(fault));
        faults.list().back().path = sources[place].path() + ".mates_with";
        faults.list().back().value = name.shown();
    }
}

// "[[flange]], [[shell]]" for the messages.
std::string table_names(Kinds kinds) {
    std::string names;
    for (const ElementKind* kind : kinds)
        names += (names.empty() ? "[[" : ", [[") + std::string(kind->table) + "]]";
    return names;
}

// The tables of one kind in their order; none where there are none, or where they are at fault.
std::vector<Reader::Source> Reader::find_components(const Table& root, const ElementKind& kind) {
    const Value* value = root.find(kind.table);
    if (value == nullptr) return {};
    if (kind.single && value->table() != nullptr) return {{&kind, value, 1}};
    const List* list = value->list();
    if (list != nullptr && list->empty()) return {};
    const std::string name(kind.table);
    const bool tables =
        list != nullptr && std::all_of(list->begin(), list->end(),
                                       [](const Value& v) { return v.table() != nullptr; });
    if (!tables) {
        faults.wrong(*value, name, "a list of [[" + name + "]] tables");
        return {};
    }
    if (list->size() > kind.most) {
        faults.add(value->at, name,
                   "at most " + std::to_string(kind.most) + ' ' + std::string(kind.plural) +
                       " are expected, not " + std::to_string(list->size()));
        return {};
    }
    std::vector<Source> found;
    for (const Value& component : *list)
        found.push_back({&kind, &component, static_cast<int>(found.size()) + 1});
    return found;
}

// ---- the whole -----------------------------------------------------------------------------------------

bool Reader::read_flag(const Table& root, std::string_view key, bool fallback) {
    const Value* value = root.find(key);
    if (value == nullptr) return fallback;
    if (const bool* flag = value->flag()) return *flag;
    faults.wrong(*value, key, "true or false");
    return fallback;
}

void Reader::read_file_keys(const Table& root) {
    if (const Value* units = root.find("units")) request.units = read_units(*units, faults);
    request.decimal_comma = read_flag(root, "decimal_comma", false);
    request.metric_constants = read_flag(root, "metric_constants", request.units.metric());
    strict = read_flag(root, "strict", false);
    if (strict && root.find("units") == nullptr)
        faults.add({.line = 1}, "units",
                   "missing; a strict request gives them, else they would be " +
                       quoted(request.units.name));
    const Value* form = root.find("tarvane");
    newer_form = form != nullptr;
    if (form != nullptr && (form->whole() == nullptr || *form->whole() != NEWEST_FORM))
        faults.wrong(*form, "tarvane", "1, the form of the file,");
}

// The head of the file and [vessel] are one thing: a key in both is a fault.
std::vector<CommonTable> Reader::common_tables(const Table& root) {
    std::vector<CommonTable> tables{{root, "", root.find("tarvane") != nullptr}};
    const Value* vessel = root.find("vessel");
    if (vessel == nullptr) return tables;
    if (vessel->table() == nullptr) {
        faults.wrong(*vessel, "vessel", "a table of keys that hold for every component");
        return tables;
    }
    constexpr std::string_view OWN[] = {"description", "liquid"};
    check_names(*vessel->table(), "vessel", kinds, true, OWN);
    for (const Table::Entry& entry : *vessel->table()) {
        if (root.find(entry.key) == nullptr) continue;
        faults.add(entry.at, entry.key,
                   "given at the head of the file, too; one of them is expected");
        faults.list().back().path = "vessel." + entry.key;
        faults.list().back().value = entry.value.shown();
    }
    tables.push_back({*vessel->table(), "vessel.", true});
    read_vessel(*vessel->table());
    return tables;
}

// Components of all kinds in the order in which they are written.
void Reader::find_sources(const Table& root) {
    bool faulty = false;
    for (const ElementKind* kind : known_kinds) {
        const std::size_t before = faults.size();
        const std::vector<Source> found = find_components(root, *kind);
        faulty = faulty || faults.size() > before;
        if (root.find(kind->table) != nullptr) kinds.push_back(kind);
        sources.insert(sources.end(), found.begin(), found.end());
    }
    if (kinds.empty()) kinds.assign(known_kinds.begin(), known_kinds.end());
    if (sources.empty() && !faulty) {
        faults.add({.line = 1}, known_kinds.front()->table,
                   "missing; one or more " + table_names(known_kinds) + " tables are expected");
    }
    std::stable_sort(sources.begin(), sources.end(), [](const Source& a, const Source& b) {
        const Position &p = a.value->at, &q = b.value->at;
        return p.line != q.line ? p.line < q.line : p.column < q.column;
    });
}

// Where the code of the vessel doesn't cover metal temperatures the fault is at what asks for them.
bool Reader::refuse_metal_temperatures(const Table& root, const Table& vessel,
                                       const ElementKind& kind) {
    const Value* code = vessel.find("code");
    if (code == nullptr) code = root.find("code");
    const Key& key = *kind.keys.find("code");
    if (code == nullptr || take_number(*code, key, request.units).fault.empty()) return false;
    std::string fault = code_not_covered(*code, kind);
    if (fault.empty()) return false;
    const Value& asks = *vessel.find("MDMT");
    fault.replace(0, kind.plural.size(), "lowest metal temperatures");
    faults.add(asks.at, "MDMT", std::move(fault));
    faults.list().back().path = "vessel.MDMT";
    faults.list().back().value = asks.shown();
    return true;
}

// With MDMT in [vessel] each shell, head and flange is checked for it, unless an [[mdmt]] of the request is of it.
void Reader::add_metal_temperatures(const Table& root) {
    const Value* vessel = root.find("vessel");
    if (vessel == nullptr || vessel->table() == nullptr || vessel->table()->find("MDMT") == nullptr)
        return;
    const auto kind = std::find_if(known_kinds.begin(), known_kinds.end(),
                                   [](const ElementKind* k) { return k->table == "mdmt"; });
    if (kind == known_kinds.end()) return;
    std::set<std::string> named;
    int number = 0;
    for (const Source& source : sources) {
        if (source.kind != *kind) continue;
        ++number;
        const Value* of = source.table().find("of");
        if (of != nullptr && of->text() != nullptr) named.insert(*of->text());
    }
    const std::size_t written = sources.size();
    for (std::size_t i = 0; i < written; ++i) {
        const Source& part = sources[i];
        if (part.kind->table != "shell" && part.kind->table != "flange") continue;
        const Value* description = part.table().find("description");
        const std::string* name = description != nullptr ? description->text() : nullptr;
        if (name != nullptr && named.contains(*name)) continue;
        if (refuse_metal_temperatures(root, *vessel->table(), **kind)) break;
        Table table;
        table.put("description", name != nullptr ? *name
                                                 : std::string(part.kind->table) + ' ' +
                                                       std::to_string(part.number));
        implied.emplace_back(std::move(table));
        implied.back().at = part.value->at;
        sources.push_back({*kind, &implied.back(), ++number, i});
    }
    if (number > static_cast<int>((*kind)->most)) {
        faults.add(vessel->table()->find("MDMT")->at, "MDMT",
                   "at most " + std::to_string((*kind)->most) + ' ' + std::string((*kind)->plural) +
                       " are expected, not " + std::to_string(number));
        sources.resize(written);
    } else if (std::find(kinds.begin(), kinds.end(), *kind) == kinds.end()) {
        kinds.push_back(*kind);
    }
}

void Reader::read(const Table& root) {
    read_file_keys(root);
    read_document(root);
    find_sources(root);
    add_metal_temperatures(root);

    std::vector<std::string_view> others(std::begin(FILE_KEYS), std::end(FILE_KEYS));
    for (const ElementKind* kind : known_kinds)
        others.push_back(kind->table);
    check_names(root, "", kinds, true, others);
    for (CommonTable& table : common_tables(root))
        commons.push_back(table);
    for (const CommonTable& common : commons) {
        for (const Table::Entry& entry : common.table) {
            if (!is_link(entry.key)) continue;
            faults.add(entry.at, entry.key, "a key of one component, not of all of them");
            faults.list().back().path = common.prefix + entry.key;
            faults.list().back().value = entry.value.shown();
        }
    }
    read_components();
}

// A component that an input has no part in is read once, the others again and again.
void Reader::read_components() {
    std::vector<Node> nodes;
    for (const Source& source : sources)
        nodes.push_back(
            {source.kind, &source.table(), source.value->at.line, source.path(), source.of});
    links = Links(nodes, faults);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        linked = linked || !links.of(i).empty();
        for (const Link& link : links.of(i)) {
            if (link.key != "of" || !link.target) continue;
            int& made_in = sources[*link.target].metal_temperature;
            if (made_in == 0) made_in = sources[i].number;
        }
    }
    request.elements.resize(sources.size());
    std::vector<Draft> begun;
    for (const std::size_t i : links.order()) {
        if (!sources[i].of)
            check_names(sources[i].table(), sources[i].path(), Kinds(&sources[i].kind, 1), false,
                        {});
        begun.push_back(begin_component(sources[i]));
        if (!later.empty()) continue;
        finish_component(std::move(begun.back().element), begun.back().reading, i);
        begun.pop_back();
    }
    const std::vector<bool> open = find_drafts(begun);
    for (Draft& draft : begun) {
        if (!open[draft.place]) {
            finish_component(std::move(draft.element), draft.reading, draft.place);
        } else {
            request.elements[draft.place] = draft.element->copy();
            drafts.push_back(std::move(draft));
        }
    }
}

// Those that have inputs, that name one that has, or that have it as their mate; and with an input of the liquid those
// that it stands in.
std::vector<bool> Reader::find_drafts(const std::vector<Draft>& begun) const {
    std::vector<bool> open(sources.size());
    for (const Draft& draft : begun) {
        const bool in_liquid =
            !open_vessel_values.empty() && draft.element->kind->keys.find("elevation") != nullptr;
        open[draft.place] = !draft.open.empty() || in_liquid;
    }
    for (bool found = true; found;) {
        found = false;
        for (const Draft& draft : begun) {
            for (const Link& link : links.of(draft.place)) {
                if (!link.target) continue;
                const bool mates = link.key == "mates_with";
                const bool ours = open[draft.place], theirs = open[*link.target];
                if (ours == theirs || (ours && !mates)) continue;
                open[draft.place] = open[*link.target] = found = true;
            }
        }
    }
    return open;
}

// ---- the vessel ------------------------------------------------------------------------------------------

void Reader::read_vessel(const Table& vessel) {
    request.of_vessel = true;
    if (const Value* description = vessel.find("description")) {
        if (description->text() != nullptr)
            request.description = *description->text();
        else
            faults.wrong(*description, "description", "a text");
    }
    const Value* inner = vessel.find("liquid");
    if (inner == nullptr) return;
    if (inner->table() == nullptr)
        return faults.wrong(*inner, "liquid", "a table of density, level");
    for (const Key& key : vessel_keys()) {
        const std::string_view name = key.name.substr(key.name.find('.') + 1);
        const std::string path = "vessel." + std::string(key.name);
        const Value* value = inner->table()->find(name);
        if (value == nullptr) {
            faults.add(inner->at, key.name,
                       "missing; " + expected(key, request.units) + " is expected (" +
                           std::string(key.meaning) + ')');
            faults.list().back().path = path;
            continue;
        }
        const auto input = std::find(later.begin(), later.end(), path);
        if (input != later.end()) {
            open_vessel_values.emplace_back(&key, static_cast<std::size_t>(input - later.begin()));
            continue;
        }
        put_vessel_value(key, *value);
    }
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : *inner->table()) {
        const auto keys = vessel_keys();
        if (std::none_of(keys.begin(), keys.end(), [&](const Key& key) {
                return key.name.substr(key.name.find('.') + 1) == entry.key;
            }))
            unknown.push_back(&entry);
    }
    constexpr std::string_view NAMES[] = {"density", "level"};
    faults.unknown(std::move(unknown), "vessel.liquid",
                   [&](std::string_view name) { return nearest_name(name, NAMES); });
}

void Reader::put_vessel_value(const Key& key, const Value& value) {
    Taken<float> number = take_number(value, key, request.units);
    if (number.fault.empty() && key.name == "liquid.density" && !(*number.value > 0.0f))
        number.fault = "it must be above 0";
    if (number.fault.empty() && key.name == "liquid.density" && *number.value > DENSEST_LIQUID)
        number.fault = value.shown() + " would be " +
                       shown(*number.value, Quantity::density, request.units) +
                       ", and no liquid is as dense; give the unit: " +
                       (request.units.metric() ? "\"1000 kg/m3\"" : "\"62.4 lb/ft3\"");
    if (!number.fault.empty()) {
        faults.add(value.at, key.name, std::move(number.fault));
        faults.list().back().path = "vessel." + std::string(key.name);
        faults.list().back().value = value.shown();
        return;
    }
    vessel_values[static_cast<std::size_t>(key.index)] = number.value;
}

std::optional<Liquid> Reader::liquid() const {
    const auto& [density, level] = vessel_values;
    return density && level ? std::optional(Liquid{*density, *level}) : std::nullopt;
}

// ---- the document ------------------------------------------------------------------------------------------

Texts Reader::read_texts(const Table& table, std::span<const Key> keys, const std::string& path,
                         std::span<const std::string_view> others) {
    std::vector<std::string_view> names(others.begin(), others.end());
    Texts texts;
    for (const Key& key : keys) {
        names.push_back(key.name);
        const Value* value = table.find(key.name);
        if (value == nullptr) continue;
        const std::string* text = value->text();
        if (text != nullptr && characters(*text) <= static_cast<std::size_t>(key.width)) {
            texts.emplace_back(key.name, *text);
            continue;
        }
        faults.wrong(*value, key.name, expected(key, request.units), key.meaning);
        faults.list().back().path = path + '.' + std::string(key.name);
    }
    std::vector<const Table::Entry*> unknown;
    for (const Table::Entry& entry : table) {
        if (std::find(names.begin(), names.end(), entry.key) == names.end())
            unknown.push_back(&entry);
    }
    faults.unknown(std::move(unknown), path,
                   [&](std::string_view name) { return nearest_name(name, names); });
    return texts;
}

void Reader::read_document(const Table& root) {
    const Value* document = root.find("document");
    if (document == nullptr) return;
    if (document->table() == nullptr)
        return faults.wrong(*document, "document", "a table of texts");
    constexpr std::string_view OTHERS[] = {REVISIONS};
    request.document.texts = read_texts(*document->table(), document_keys(), "document", OTHERS);
    const Value* revisions = document->table()->find(REVISIONS);
    if (revisions == nullptr) return;
    const List* list = revisions->list();
    const bool tables = list != nullptr && list->size() <= MOST_REVISIONS &&
                        std::all_of(list->begin(), list->end(),
                                    [](const Value& v) { return v.table() != nullptr; });
    if (!tables) {
        faults.wrong(*revisions, REVISIONS,
                     "a list of up to " + std::to_string(MOST_REVISIONS) + " tables of texts");
        faults.list().back().path = "document." + std::string(REVISIONS);
        return;
    }
    for (std::size_t i = 0; i < list->size(); ++i)
        request.document.revisions.push_back(
            read_texts(*(*list)[i].table(), revision_keys(),
                       "document." + std::string(REVISIONS) + '[' + std::to_string(i) + ']', {}));
}

// ---- readings one after another --------------------------------------------------------------------------

std::vector<std::size_t> Reader::open_places() const {
    std::vector<std::size_t> places;
    for (const Draft& draft : drafts)
        places.push_back(draft.place);
    return places;
}

bool Reader::takes(std::size_t input) const {
    const bool of_vessel =
        std::any_of(open_vessel_values.begin(), open_vessel_values.end(),
                    [input](const auto& value) { return value.second == input; });
    return of_vessel || std::any_of(drafts.begin(), drafts.end(), [input](const Draft& draft) {
               return std::any_of(draft.open.begin(), draft.open.end(),
                                  [input](const Open& open) { return open.input == input; });
           });
}

// A number in the form that its key needs.
Value value_for(const Key& key, double number) {
    const bool flag = key.quantity == Quantity::flag && (number == 0.0 || number == 1.0);
    if (flag) return number == 1.0;
    const bool integer = key.quantity == Quantity::choice || key.quantity == Quantity::whole;
    if (integer && number == std::floor(number) && std::fabs(number) < LARGEST_INTEGER)
        return static_cast<std::int64_t>(number);
    return number;
}

void Reader::read_again(std::span<const double> values) {
    faults.list().clear();
    data_files.tell_again();
    for (const auto& [key, input] : open_vessel_values)
        put_vessel_value(*key, value_for(*key, values[input]));
    for (const Draft& draft : drafts) {
        std::unique_ptr<Element> element = draft.element->copy();
        Reading reading = draft.reading;
        for (const Open& open : draft.open) {
            const Value value = value_for(*open.key, values[open.input]);
            read_key({&value, open.name}, *open.key, open.path, *element, reading);
        }
        finish_component(std::move(element), reading, draft.place);
    }
}

} // namespace

struct RepeatedReading::Parts {
    ReadResult result;
    Reader reader;

    Parts(const Table& root, std::span<const std::string> inputs)
        : reader(result, element_kinds(), inputs) {
        reader.read(root);
    }
};

RepeatedReading::RepeatedReading(const Table& root, std::span<const std::string> inputs)
    : parts(std::make_unique<Parts>(root, inputs)) {
    sort_faults(parts->result.faults);
}
RepeatedReading::~RepeatedReading() = default;

const ReadResult& RepeatedReading::result() const { return parts->result; }
Request& RepeatedReading::request() { return parts->result.request; }
bool RepeatedReading::takes(std::size_t input) const { return parts->reader.takes(input); }
std::vector<std::size_t> RepeatedReading::changing() const { return parts->reader.open_places(); }

const Faults& RepeatedReading::read(std::span<const double> values) {
    parts->reader.read_again(values);
    sort_faults(parts->result.faults);
    return parts->result.faults;
}

ReadResult read_request(const Table& root, Kinds kinds) {
    ReadResult result;
    Reader(result, kinds).read(root);
    sort_faults(result.faults);
    if (!result.faults.empty()) result.request.elements.clear();
    return result;
}

void sort_faults(Faults& faults) {
    std::stable_sort(faults.begin(), faults.end(),
                     [](const Fault& a, const Fault& b) { return a.line < b.line; });
    std::set<std::tuple<int, std::string, std::string>> known;
    std::erase_if(faults, [&](const Fault& f) {
        // Without lines two components may have the same words.
        const std::string& place = f.line == 0 ? f.path : f.key;
        return !known.emplace(f.line, place, f.message).second;
    });
}

} // namespace tarvane::vessel
