#include "input_file.h"

#include "results.h"
#include "syntax_message.h"
#include "text.h"
#include "toml_limits.h"
#include "toml_parser.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <tuple>

namespace tarvane::app {

namespace {

constexpr double LARGEST_WHOLE = 16777216.0; // the record holds whole numbers as singles

int line_of(const toml::node& node) { return static_cast<int>(node.source().begin.line); }

// What stands in the file, for the end of a message.
std::string found(const toml::node& node) {
    if (const auto* s = node.as_string()) return "the text " + echoed(s->get());
    if (const auto* b = node.as_boolean()) return b->get() ? "true" : "false";
    if (const auto* i = node.as_integer()) return std::to_string(i->get());
    if (const auto* f = node.as_floating_point()) {
        char number[40];
        std::snprintf(number, sizeof number, "%g", f->get());
        return number;
    }
    if (node.is_array()) return "a list";
    if (node.is_table()) return "a table";
    return "a date or time";
}

std::optional<double> number_of(const toml::node& node) {
    if (const auto* i = node.as_integer()) return static_cast<double>(i->get());
    if (const auto* f = node.as_floating_point()) return f->get();
    return std::nullopt;
}

class Reader {
  public:
    Reader(ReadResult& into, std::span<const ElementKind* const> kinds)
        : result(into), known_kinds(kinds) {}

    void read(const toml::table& root);

  private:
    ReadResult& result;
    std::span<const ElementKind* const> known_kinds;
    MaterialFiles materials;
    DataFilesCheck data_files;

    void fault(int line, std::string_view key, std::string message) {
        result.faults.push_back({line, std::string(key), std::move(message)});
    }
    void wrong(const toml::node& node, std::string_view key, const std::string& wanted,
               std::string_view meaning = {}) {
        std::string message = wanted + " is expected, not " + found(node);
        if (!meaning.empty()) message += " (" + std::string(meaning) + ')';
        fault(line_of(node), key, std::move(message));
    }

    void unknown_keys(std::vector<const toml::key*> keys, std::span<const std::string_view> others,
                      std::span<const ElementKind* const> kinds = {});
    static std::string no_key(std::string_view name, std::span<const std::string_view> others,
                              std::span<const ElementKind* const> kinds);
    void read_units(const toml::node& node);
    void read_unit(std::string_view name, const toml::node& node, Quantity quantity);
    void read_units_table(const toml::table& table);
    bool read_flag(const toml::node& node, std::string_view key, bool fallback);
    std::optional<float> read_number(const toml::node& node, const Key& key);
    std::optional<float> read_choice(const toml::node& node, const Key& key);
    std::optional<float> read_value(const toml::node& node, const Key& key);
    std::optional<std::string> read_text(const toml::node& node, const Key& key);
    bool check_inner_keys(const toml::key& name, const toml::node& node,
                          std::span<const ElementKind* const> kinds);

    // A table of the file that describes an element.
    struct Source {
        const ElementKind* kind;
        const toml::table* table;
        int number;
    };
    std::vector<Source> find_elements(const toml::table& root, const ElementKind& kind);
    void read_key(const toml::node& node, const Key& key, Element& element, Reading& reading);
    bool is_element_list(const toml::table& root, std::string_view name) const;
    void read_element(const Source& source, const toml::table& common);
};

// ---- units ---------------------------------------------------------------------------------------

struct UnitName {
    std::string_view name;
    Quantity quantity;
};
constexpr UnitName UNIT_NAMES[] = {
    {"thickness", Quantity::thickness}, {"pressure", Quantity::pressure},
    {"diameter", Quantity::diameter},   {"stress", Quantity::stress},
    {"force", Quantity::force},         {"moment", Quantity::moment},
    {"area", Quantity::area},           {"temperature", Quantity::temperature},
    {"weight", Quantity::weight},       {"density", Quantity::density}};

bool set_base(UnitSystem& units, const toml::node& node) {
    const auto* name = node.as_string();
    if (name == nullptr) return false;
    if (folded(name->get()) == "us") {
        units = us_units();
    } else if (folded(name->get()) == "si") {
        units = si_units();
    } else {
        return false;
    }
    return true;
}

void Reader::read_units(const toml::node& node) {
    if (const auto* table = node.as_table()) {
        read_units_table(*table);
    } else if (!set_base(result.file.units, node)) {
        wrong(node, "units", R"("US", "SI" or a table of units)");
    }
}

void Reader::read_units_table(const toml::table& table) {
    UnitSystem& units = result.file.units;
    if (const toml::node* base = table.get("base"); base != nullptr && !set_base(units, *base))
        wrong(*base, "units.base", R"("US" or "SI")");
    std::vector<std::string_view> names{"base"};
    for (const UnitName& unit : UNIT_NAMES)
        names.push_back(unit.name);
    std::vector<const toml::key*> unknown;
    for (const auto& [key, node] : table) {
        const std::string_view name = key.str();
        const auto unit = std::find_if(std::begin(UNIT_NAMES), std::end(UNIT_NAMES),
                                       [name](const UnitName& u) { return u.name == name; });
        if (unit != std::end(UNIT_NAMES)) {
            read_unit(name, node, unit->quantity);
        } else if (name != "base") {
            unknown.push_back(&key);
        }
    }
    unknown_keys(unknown, names);
}

void Reader::read_unit(std::string_view name, const toml::node& node, Quantity quantity) {
    UnitSystem& units = result.file.units;
    const std::string full = "units." + std::string(name);
    const bool temperature = quantity == Quantity::temperature;
    const auto* table = node.as_table();
    if (table == nullptr) {
        wrong(node, full,
              temperature ? "a table of offset, scale and label" : "a table of factor and label");
        return;
    }
    const auto place = static_cast<std::size_t>(quantity);
    const auto put_factor = [&](float& into, const toml::node& given, const std::string& key,
                                bool positive) {
        const std::optional<double> value = number_of(given);
        const float single = value ? static_cast<float>(*value) : 0.0f;
        if (!value || !std::isfinite(single) || (positive && !(single > 0.0f))) {
            wrong(given, key, positive ? "a number above 0" : "a number");
        } else {
            into = single;
        }
    };
    constexpr std::string_view TEMPERATURE_KEYS[] = {"offset", "scale", "label"};
    constexpr std::string_view OTHER_KEYS[] = {"factor", "label"};
    std::vector<const toml::key*> unknown;
    for (const auto& [key, given] : *table) {
        const std::string inner = full + '.' + std::string(key.str());
        if (key.str() == "label") {
            const auto* text = given.as_string();
            const std::optional<std::string> western =
                text == nullptr ? std::nullopt : to_western(text->get());
            const std::size_t width = quantity == Quantity::density ? 20 : label_width(quantity);
            if (!western || western->size() > width) {
                wrong(given, inner, "a text of up to " + std::to_string(width) + " characters");
            } else if (quantity == Quantity::density) {
                units.density_label = *western;
            } else {
                units.labels[quantity == Quantity::weight ? place - 1 : place] = *western;
            }
        } else if (temperature && key.str() == "offset") {
            put_factor(units.factors[place], given, inner, false);
        } else if (temperature && key.str() == "scale") {
            put_factor(units.factors[place + 1], given, inner, true);
        } else if (!temperature && key.str() == "factor") {
            put_factor(quantity == Quantity::density ? units.density_factor : units.factors[place],
                       given, inner, true);
        } else {
            unknown.push_back(&key);
        }
    }
    unknown_keys(unknown,
                 temperature ? std::span<const std::string_view>(TEMPERATURE_KEYS) : OTHER_KEYS);
}

// ---- values --------------------------------------------------------------------------------------

// The first of several kinds that knows the key tells its meaning.
const Key* find_key(std::span<const ElementKind* const> kinds, std::string_view name) {
    for (const ElementKind* kind : kinds) {
        if (const Key* key = kind->keys.find(name)) return key;
    }
    return nullptr;
}

std::string Reader::no_key(std::string_view name, std::span<const std::string_view> others,
                           std::span<const ElementKind* const> kinds) {
    std::string message = "no key of this place";
    std::string_view near;
    for (const ElementKind* kind : kinds) {
        if (near.empty()) near = kind->keys.synonym(name);
    }
    if (near.empty()) near = nearest(name, others);
    if (!near.empty()) {
        message += "; the nearest is " + std::string(near);
        if (const Key* ours = find_key(kinds, near)) message += ", " + std::string(ours->meaning);
    }
    return message;
}

// Those of one table. The search for the nearest key takes its time, so that it is made only for faults
// that can be among the lines that are shown.
void Reader::unknown_keys(std::vector<const toml::key*> keys,
                          std::span<const std::string_view> others,
                          std::span<const ElementKind* const> kinds) {
    std::sort(keys.begin(), keys.end(), [](const toml::key* a, const toml::key* b) {
        return a->source().begin.line < b->source().begin.line;
    });
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::string_view name = keys[i]->str();
        fault(static_cast<int>(keys[i]->source().begin.line), name,
              i < MOST_FAULT_LINES ? no_key(name, others, kinds) : "no key of this place");
    }
}

bool Reader::read_flag(const toml::node& node, std::string_view key, bool fallback) {
    if (const auto* value = node.as_boolean()) return value->get();
    wrong(node, key, "true or false");
    return fallback;
}

std::optional<float> Reader::read_choice(const toml::node& node, const Key& key) {
    if (const auto* text = node.as_string()) {
        const std::string name = folded(text->get());
        for (const Choice& c : key.choices) {
            if (folded(c.name) == name) return static_cast<float>(c.number);
        }
    } else if (const auto* number = node.as_integer()) {
        for (const Choice& c : key.choices) {
            if (c.number == number->get()) return static_cast<float>(c.number);
        }
    }
    std::string wanted = expected(key, result.file.units);
    const auto [low, high] =
        std::minmax_element(key.choices.begin(), key.choices.end(),
                            [](const Choice& a, const Choice& b) { return a.number < b.number; });
    wanted += " or " + std::to_string(low->number) + " to " + std::to_string(high->number);
    wrong(node, key.name, wanted, key.meaning);
    return std::nullopt;
}

std::optional<float> Reader::read_number(const toml::node& node, const Key& key) {
    const UnitSystem& units = result.file.units;
    const std::string wanted = expected(key, units);
    const std::optional<double> value = number_of(node);
    if (!value) {
        wrong(node, key.name, wanted, key.meaning);
        return std::nullopt;
    }
    if (key.quantity == Quantity::whole &&
        (*value != std::floor(*value) || std::fabs(*value) > LARGEST_WHOLE)) {
        wrong(node, key.name, wanted, key.meaning);
        return std::nullopt;
    }
    const float single = units.to_engine(static_cast<float>(*value), key.quantity);
    if (!std::isfinite(single)) {
        wrong(node, key.name, wanted, key.meaning);
        return std::nullopt;
    }
    if (key.quantity == Quantity::temperature && below_absolute_zero(single)) {
        wrong(node, key.name,
              "a temperature from absolute zero on, " +
                  shown(ABSOLUTE_ZERO, Quantity::temperature, units) + ',',
              key.meaning);
        return std::nullopt;
    }
    return single;
}

std::optional<float> Reader::read_value(const toml::node& node, const Key& key) {
    if (key.quantity == Quantity::choice) return read_choice(node, key);
    if (key.quantity == Quantity::flag) {
        if (node.is_boolean()) return read_flag(node, key.name, false) ? 1.0f : 0.0f;
        wrong(node, key.name, expected(key, result.file.units), key.meaning);
        return std::nullopt;
    }
    return read_number(node, key);
}

// 150, 0.5: a number as a text.
std::optional<std::string> designation(const toml::node& node) {
    const std::optional<double> number = number_of(node);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", *number);
    return text;
}

std::optional<std::string> Reader::read_text(const toml::node& node, const Key& key) {
    const auto* text = node.as_string();
    std::optional<std::string> western = text ? to_western(text->get()) : std::nullopt;
    if (key.quantity == Quantity::designation && !text) western = designation(node);
    if (western && western->size() <= static_cast<std::size_t>(key.width)) return western;
    std::string wanted = expected(key, result.file.units);
    if (text != nullptr && !western) wanted += " of the Western alphabet";
    wrong(node, key.name, wanted, key.meaning);
    return std::nullopt;
}

// ---- elements ------------------------------------------------------------------------------------

bool is_text(const Key& key) {
    return key.quantity == Quantity::text || key.quantity == Quantity::designation;
}

// The value of a key, which may stand in a table of its own; a null pointer without one.
const toml::node* find_value(const toml::table& table, std::string_view name) {
    const std::size_t point = name.find('.');
    const toml::node* node = table.get(name.substr(0, point));
    if (node == nullptr || point == std::string_view::npos) return node;
    const toml::table* inner = node->as_table();
    return inner == nullptr ? nullptr : inner->get(name.substr(point + 1));
}

// Faults of a table of keys. False for a name that is no such table.
bool Reader::check_inner_keys(const toml::key& name, const toml::node& node,
                              std::span<const ElementKind* const> kinds) {
    const auto holder = std::find_if(kinds.begin(), kinds.end(), [&](const ElementKind* kind) {
        return kind->keys.holds_table(name.str());
    });
    if (holder == kinds.end()) return false;
    std::vector<std::string_view> inner;
    std::string list;
    for (const Key& key : (*holder)->keys.keys) {
        if (!key.name.starts_with(std::string(name.str()) + '.')) continue;
        inner.push_back(key.name.substr(name.str().size() + 1));
        list += (list.empty() ? "" : ", ") + std::string(inner.back());
    }
    if (const toml::table* table = node.as_table()) {
        std::vector<const toml::key*> unknown;
        for (const auto& [key, value] : *table) {
            if (std::find(inner.begin(), inner.end(), key.str()) == inner.end())
                unknown.push_back(&key);
        }
        unknown_keys(unknown, inner);
    } else {
        wrong(node, name.str(), "a table of " + list);
    }
    return true;
}

void Reader::read_key(const toml::node& node, const Key& key, Element& element, Reading& reading) {
    bool sound = false;
    if (is_text(key)) {
        const std::optional<std::string> text = read_text(node, key);
        sound = text.has_value();
        if (sound) element.put_text(key, *text);
    } else {
        const std::optional<float> value = read_value(node, key);
        sound = value.has_value();
        if (sound) element.put_number(key, *value);
    }
    reading.note(key.name, line_of(node), sound);
}

bool Reader::is_element_list(const toml::table& root, std::string_view name) const {
    const bool kind = std::any_of(known_kinds.begin(), known_kinds.end(),
                                  [&](const ElementKind* k) { return k->table == name; });
    const toml::node* node = root.get(name);
    return kind && node != nullptr && node->is_array();
}

void Reader::read_element(const Source& source, const toml::table& common) {
    const KeyTable& table = source.kind->keys;
    std::unique_ptr<Element> element = source.kind->make();
    element->line = line_of(*source.table);
    element->number = source.number;
    Reading reading(result.file.units, materials, data_files, element->line, result.faults);

    for (const Key& key : table.keys) {
        if (!is_text(key)) element->put_number(key, static_cast<float>(key.fallback));
        const toml::node* node = find_value(*source.table, key.name);
        // The list of [[external]] is no value for the key `external` of a shell.
        if (node == nullptr && !is_element_list(common, key.name))
            node = find_value(common, key.name);
        if (node != nullptr) read_key(*node, key, *element, reading);
    }

    // A flag that the file leaves open is on when one of the keys that belong to it is given.
    for (const Key& key : table.keys) {
        if (!key.group.empty() && reading.given(key.name) && !reading.given(key.group))
            element->put_number(*table.find(key.group), 1.0f);
    }

    element->complete(reading);

    std::vector<std::string_view> missing;
    for (const std::string_view name : element->required(reading)) {
        if (reading.given(name)) continue;
        if (std::find(missing.begin(), missing.end(), name) != missing.end()) continue;
        missing.push_back(name);
        const Key& key = *table.find(name);
        reading.fault(name, "missing in " + std::string(source.kind->table) + ' ' +
                                std::to_string(source.number) + "; " +
                                expected(key, result.file.units) + " is expected (" +
                                std::string(key.meaning) + ")");
    }
    element->approximate = std::move(reading.approximate);
    element->notes = std::move(reading.notes);
    result.file.elements.push_back(std::move(element));
}

// "[[flange]], [[shell]]" for the messages.
std::string table_names(std::span<const ElementKind* const> kinds) {
    std::string names;
    for (const ElementKind* kind : kinds)
        names += (names.empty() ? "[[" : ", [[") + std::string(kind->table) + "]]";
    return names;
}

// The tables of one kind in their order; none where the file has none, or where they are at fault.
std::vector<Reader::Source> Reader::find_elements(const toml::table& root,
                                                  const ElementKind& kind) {
    const toml::node* node = root.get(kind.table);
    if (node == nullptr) return {};
    if (kind.single && node->is_table()) return {{&kind, node->as_table(), 1}};
    const toml::array* list = node->as_array();
    if (list != nullptr && list->empty()) return {};
    const std::string name(kind.table);
    if (list == nullptr || !list->is_homogeneous(toml::node_type::table)) {
        wrong(*node, name, "a list of [[" + name + "]] tables");
        return {};
    }
    if (list->size() > kind.most) {
        fault(line_of(*node), name,
              "at most " + std::to_string(kind.most) + ' ' + std::string(kind.plural) +
                  " are expected, not " + std::to_string(list->size()));
        return {};
    }
    std::vector<Source> sources;
    for (const toml::node& element : *list)
        sources.push_back({&kind, element.as_table(), static_cast<int>(sources.size()) + 1});
    return sources;
}

// ---- the file --------------------------------------------------------------------------------------

void Reader::read(const toml::table& root) {
    InputFile& file = result.file;
    if (const toml::node* units = root.get("units")) read_units(*units);
    file.metric_constants = file.units.metric();
    if (const toml::node* node = root.get("decimal_comma"))
        file.decimal_comma = read_flag(*node, "decimal_comma", false);
    if (const toml::node* node = root.get("metric_constants"))
        file.metric_constants = read_flag(*node, "metric_constants", false);

    std::vector<Source> sources;
    std::vector<const ElementKind*> kinds; // that the file names
    bool faulty = false;
    for (const ElementKind* kind : known_kinds) {
        const std::size_t faults = result.faults.size();
        const std::vector<Source> found_tables = find_elements(root, *kind);
        faulty = faulty || result.faults.size() > faults;
        if (root.contains(kind->table)) kinds.push_back(kind);
        sources.insert(sources.end(), found_tables.begin(), found_tables.end());
    }
    if (kinds.empty()) kinds.assign(known_kinds.begin(), known_kinds.end());

    // At the head of the file stand its own keys, and keys of its elements that hold for each of them.
    std::vector<std::string_view> names;
    for (const ElementKind* kind : kinds) {
        for (const Key& key : kind->keys.keys)
            names.push_back(key.name);
    }
    names.insert(names.end(), {"units", "decimal_comma", "metric_constants"});
    for (const ElementKind* kind : known_kinds)
        names.push_back(kind->table);
    std::vector<const toml::key*> unknown;
    for (const auto& [key, node] : root) {
        if (std::find(names.begin(), names.end(), key.str()) == names.end() &&
            !check_inner_keys(key, node, kinds))
            unknown.push_back(&key);
    }
    unknown_keys(unknown, names, kinds);

    if (sources.empty() && !faulty) {
        fault(1, known_kinds.front()->table,
              "missing; one or more " + table_names(known_kinds) + " tables are expected");
    }
    std::stable_sort(sources.begin(), sources.end(), [](const Source& a, const Source& b) {
        const toml::source_position &p = a.table->source().begin, &q = b.table->source().begin;
        return p.line != q.line ? p.line < q.line : p.column < q.column;
    });
    for (const Source& source : sources) {
        std::vector<std::string_view> own;
        for (const Key& key : source.kind->keys.keys)
            own.push_back(key.name);
        const std::span kind(&source.kind, 1);
        std::vector<const toml::key*> strangers;
        for (const auto& [key, value] : *source.table) {
            if (source.kind->keys.find(key.str()) == nullptr && !check_inner_keys(key, value, kind))
                strangers.push_back(&key);
        }
        unknown_keys(strangers, own, kind);
        read_element(source, root);
    }
}

} // namespace

ReadResult read_input(std::string_view toml_text, std::span<const ElementKind* const> kinds) {
    ReadResult result;
    if (std::optional<Fault> fault = check_limits(toml_text)) {
        result.faults.push_back(std::move(*fault));
        return result;
    }
    try {
        const toml::table root = toml::parse(toml_text);
        Reader(result, kinds).read(root);
    } catch (const toml::parse_error& error) {
        result.faults.push_back(syntax_fault(toml_text, static_cast<int>(error.source().begin.line),
                                             error.description()));
    } catch (const TomlAssertion&) {
        result.faults.push_back({1, "", "the file cannot be read as TOML"});
    }
    std::stable_sort(result.faults.begin(), result.faults.end(),
                     [](const Fault& a, const Fault& b) { return a.line < b.line; });
    // A key at the head of the file is read once a flange: its fault counts once.
    std::set<std::tuple<int, std::string, std::string>> known;
    std::erase_if(result.faults,
                  [&](const Fault& f) { return !known.emplace(f.line, f.key, f.message).second; });
    if (!result.faults.empty()) result.file.elements.clear();
    return result;
}

std::string fault_line(std::string_view path, const Fault& fault) {
    std::string line(path);
    line += ':' + std::to_string(fault.line) + ": ";
    if (!fault.key.empty()) line += fault.key + ": ";
    return printable(line + fault.message);
}

std::string fault_report(std::string_view path, const std::vector<Fault>& faults) {
    std::string lines;
    const std::size_t shown = std::min(faults.size(), MOST_FAULT_LINES);
    for (std::size_t i = 0; i < shown; ++i)
        lines += fault_line(path, faults[i]) + '\n';
    if (faults.size() > shown)
        lines += "and " + std::to_string(faults.size() - shown) + " more faults\n";
    return lines;
}

} // namespace tarvane::app
