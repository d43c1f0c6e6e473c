#include "document/vocabulary.h"

#include "components/element.h"
#include "document/results.h"
#include "fields/vessel_keys.h"
#include "values/text.h"

#include <algorithm>
#include <vector>

namespace tarvane::vessel {

namespace {

constexpr std::size_t NAME_WIDTH = 20, KIND_WIDTH = 18, ROW_WIDTH = 14, PAGE_WIDTH = 100;

// "in., mm": the units of a quantity, without those that both systems share.
std::string units_of(Quantity quantity) {
    const UnitSystem us = us_units(), si = si_units();
    std::string unit = to_utf8(us.label(quantity));
    if (us.label(quantity) != si.label(quantity)) unit += ", " + to_utf8(si.label(quantity));
    return unit;
}

// The kind of value of a key.
std::string kind_of_value(const Key& key) {
    switch (key.quantity) {
    case Quantity::flag:
        return "true, false";
    case Quantity::text:
        return "text, " + std::to_string(key.width);
    case Quantity::designation:
        return "number, text";
    case Quantity::waivers:
        return "list of checks";
    case Quantity::whole:
        return "whole number";
    case Quantity::choice:
        return "name, number";
    default:
        return units_of(key.quantity);
    }
}

// A number as a file may write it: "0.284 lb/cu.in.", "2".
std::string plain(double value) {
    std::string text = number_text(static_cast<float>(value), 4);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

// The value of a key that nothing gives; empty: it has none.
std::string default_of(const Key& key) {
    constexpr double BEYOND_EVERYTHING = 1.0e8; // a limit that is none
    if (key.needed && key.needed->always()) return {};
    if (key.quantity == Quantity::flag) {
        const auto words = [](double value) { return value != 0.0 ? "true" : "false"; };
        std::string text = words(key.fallback);
        if (key.newer_fallback)
            text += std::string(", ") + words(*key.newer_fallback) + " in a file with tarvane = 1";
        return text;
    }
    if (key.quantity == Quantity::choice) {
        const std::string_view name = choice_name(key.choices, static_cast<int>(key.fallback));
        return name.empty() ? std::string() : in_quotes(name);
    }
    if (key.fallback == 0.0 || key.fallback > BEYOND_EVERYTHING) return {};
    const std::string unit = to_utf8(us_units().label(key.quantity));
    return plain(key.fallback) + (unit.empty() ? "" : ' ' + unit);
}

// "always", "when kind is "cone"".
std::string when(const Condition& condition, const KeyTable& keys) {
    return condition.always() ? "always" : "when " + in_words(condition, keys);
}

std::string when_needed(const Key& key, const KeyTable& keys) {
    const bool where_read = key.needed->always() && !key.read.always();
    return where_read ? "where it is read" : when(*key.needed, keys);
}

// Default and conditions of a key in one line; empty: it is read always, and nothing needs it.
std::string terms_of(const Key& key, const KeyTable& keys) {
    std::string terms;
    const auto add = [&](const std::string& more) { terms += (terms.empty() ? "" : "; ") + more; };
    if (key.needed) {
        const std::string need = when_needed(key, keys);
        add(need == "always" ? "required" : "required " + need);
    }
    if (const std::string value = default_of(key); !value.empty()) add("default " + value);
    if (!key.read.always()) add("read " + when(key.read, keys));
    return terms;
}

void add_row(std::string& text, std::string_view title, const std::string& value) {
    if (value.empty()) return;
    for (const std::string& line : wrapped(value, PAGE_WIDTH - ROW_WIDTH)) {
        text += "  " + padded(title, ROW_WIDTH) + line + '\n';
        title = {};
    }
}

// ---- tables beside the components ------------------------------------------------------------------------

struct OtherTable {
    std::string_view name;  // in lists: "document"
    std::string_view place; // before the names of its keys: "document.revisions"
    std::string_view heading;
    std::span<const Key> (*keys)();
};
constexpr OtherTable OTHER_TABLES[] = {
    {"vessel", "vessel",
     "Keys of [vessel] beside those of its components and description, the name of the vessel. "
     "With "
     "MDMT in it each part is checked for that temperature.",
     vessel_keys},
    {"document", "document", "Texts of [document], of what the calculation belongs to.",
     document_keys},
    {"document", "document.revisions",
     "Texts of each table of [[document.revisions]], up to 100 of them.", revision_keys}};

std::string explain_other(const OtherTable& table, const Key& key) {
    std::string text = std::string(table.place) + '.' + std::string(key.name) + ": " +
                       std::string(key.meaning) + '\n';
    add_row(text, "Value", kind_of_value(key));
    if (key.needed) add_row(text, "Required", "with liquid");
    return text;
}

// "liquid", "vessel.liquid.density", "document.project", "project"; empty: none of these tables has it.
std::string explain_in_others(std::string_view name) {
    std::string text;
    for (const OtherTable& table : OTHER_TABLES) {
        for (const Key& key : table.keys()) {
            const std::string full = std::string(table.place) + '.' + std::string(key.name);
            const std::string_view group = key.name.substr(0, key.name.find('.'));
            const bool named = name == key.name || name == full || name == group ||
                               name == std::string(table.place) + '.' + std::string(group);
            if (named) text += explain_other(table, key) + '\n';
        }
    }
    return text;
}

// ---- components ------------------------------------------------------------------------------------------

std::string explain_key(const ElementKind& kind, const Key& key) {
    const KeyTable& keys = kind.keys;
    std::string text = std::string(kind.table) + '.' + std::string(key.name) + ": " +
                       std::string(key.meaning) + '\n';
    add_row(text, "Label", key.label());
    add_row(text, "Symbol", std::string(key.symbol));
    const std::string value = kind_of_value(key);
    add_row(text, "Value", value.empty() ? "number" : value);
    std::string names = choice_names(key.choices);
    if (const std::string further = further_names(key.choices); !further.empty())
        names += "; also " + further;
    add_row(text, "Choices", names);
    add_row(text, "Default", default_of(key));
    add_row(text, "Read", when(key.read, keys));
    if (key.needed) add_row(text, "Required", when_needed(key, keys));
    if (!key.group.empty()) add_row(text, "Switches on", std::string(key.group));
    add_row(text, "Section", std::string(keys.section(key)));
    add_row(text, "Engine", key.engine());
    std::string others;
    const auto add = [&](const std::string& other) {
        others += (others.empty() ? "" : ", ") + other;
    };
    for (const Alias& alias : keys.aliases) {
        if (alias.ours == key.name) add(std::string(alias.other));
    }
    for (const InnerTable& table : keys.tables) {
        if (std::find(table.keys.begin(), table.keys.end(), key.name) != table.keys.end())
            add(std::string(table.name) + '.' + std::string(key.name));
    }
    add_row(text, "Also taken", others);
    return text;
}

std::string explain_result(const ElementKind& kind, const ResultField& field) {
    std::string text = std::string(kind.table) + ".results." + std::string(field.name) + ": " +
                       std::string(field.label) + '\n';
    add_row(text, "Meaning", std::string(field.meaning));
    add_row(text, "Symbol", std::string(field.symbol));
    add_row(text, "Value", units_of(field.quantity));
    return text;
}

std::string explain_check(const ElementKind& kind, const CheckField& field) {
    std::string text = std::string(kind.table) + ".checks." + std::string(field.id) + ": " +
                       std::string(field.label) + '\n';
    add_row(text, "Paragraph", std::string(field.paragraph));
    add_row(text, "Compared", units_of(field.quantity));
    add_row(text, "Passes",
            field.at_least ? "when the demand is not below the limit"
                           : "when the demand is not above the limit");
    add_row(text, "Else",
            field.force == Force::decides ? "the component does not pass"
            : field.force == Force::warns ? "the component passes, with a note"
                                          : "the row says so; nothing depends on it");
    add_row(text, "Case", std::string(field.load_case));
    add_row(text, "Asked", field.asked.empty() ? "always" : std::string(field.asked));
    if (field.waivable) add_row(text, "Waived by", "waive = [" + in_quotes(field.id) + ']');
    return text;
}

// Everything of one kind under a name, with a blank line after each.
std::string explain_in(const ElementKind& kind, std::string_view name) {
    std::string text;
    if (const Key* key = kind.keys.resolve(name)) text += explain_key(kind, *key) + '\n';
    if (const Unheeded* each = kind.keys.find_unheeded(name)) {
        text += std::string(kind.table) + '.' + std::string(name) + ": no key of a [[" +
                std::string(kind.table) + "]]\n";
        add_row(text, "In its place", std::string(each->advice));
        text += '\n';
    }
    for (const ResultField& field : kind.results) {
        if (field.name == name) text += explain_result(kind, field) + '\n';
    }
    for (const CheckField& field : kind.checks) {
        if (field.id == name) text += explain_check(kind, field) + '\n';
    }
    return text;
}

// "flange" of "flange[0].t", "flange.results.mawp"; the rest stays in `name`.
std::string_view take_table(std::string_view& name) {
    const std::size_t point = name.find('.');
    if (point == std::string_view::npos) return {};
    const std::string_view table = name.substr(0, std::min(name.find('['), point));
    const auto kinds = element_kinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [&](const ElementKind* k) { return k->table == table; });
    if (kind == kinds.end()) return {};
    name.remove_prefix(point + 1);
    if ((*kind)->keys.find(name) != nullptr) return table; // "gasket.type"
    for (const std::string_view role : {"results.", "checks.", "gasket."}) {
        if (name.starts_with(role)) name.remove_prefix(role.size());
    }
    return table;
}

// Of the keys, results and checks of a table of components; without one, of all tables.
std::vector<std::string_view> names_in(std::string_view table) {
    std::vector<std::string_view> names;
    for (const ElementKind* kind : element_kinds()) {
        if (!table.empty() && kind->table != table) continue;
        for (const Key& key : kind->keys.keys)
            names.push_back(key.name);
        for (const ResultField& field : kind->results)
            names.push_back(field.name);
        for (const CheckField& field : kind->checks)
            names.push_back(field.id);
    }
    for (const OtherTable& other : OTHER_TABLES) {
        for (const Key& key : other.keys())
            if (table.empty()) names.push_back(key.name);
    }
    return names;
}

void list_key(std::string& list, const Key& key, const std::string& terms) {
    // A name or unit wider than its column is followed by one blank.
    list += padded(std::string(key.name) + ' ', NAME_WIDTH) +
            padded(kind_of_value(key) + ' ', KIND_WIDTH) + std::string(key.meaning) + '\n';
    const std::string margin(NAME_WIDTH + KIND_WIDTH, ' ');
    if (!key.choices.empty()) list += margin + choice_names(key.choices) + '\n';
    if (!terms.empty()) list += margin + terms + '\n';
}

} // namespace

std::vector<std::string> key_tables() {
    std::vector<std::string> names;
    for (const ElementKind* kind : element_kinds())
        names.emplace_back(kind->table);
    for (const OtherTable& table : OTHER_TABLES)
        if (names.back() != table.name) names.emplace_back(table.name);
    return names;
}

std::string key_list(std::string_view only) {
    std::string list;
    for (const ElementKind* kind : element_kinds()) {
        const std::string name(kind->table);
        if (!only.empty() && only != name) continue;
        list.append("Keys of a [[").append(name);
        list.append("]]; in [vessel] or at the head of a file they apply to every ").append(name);
        list.append(" without its own.\n");
        std::string_view section;
        for (const Key& key : kind->keys.keys) {
            if (kind->keys.section(key) != section) {
                section = kind->keys.section(key);
                list.append("\n-- ").append(section).append(" --\n");
            }
            list_key(list, key, terms_of(key, kind->keys));
        }
        list += '\n';
    }
    for (const OtherTable& table : OTHER_TABLES) {
        if (!only.empty() && only != table.name) continue;
        for (const std::string& line : wrapped(table.heading, PAGE_WIDTH))
            list += line + '\n';
        list += '\n';
        for (const Key& key : table.keys())
            list_key(list, key, key.needed ? "required with liquid" : "");
        list += '\n';
    }
    if (!only.empty()) {
        list.pop_back(); // the blank line after the last one
        return list;
    }
    list +=
        "Keys of the file: tarvane = 1, the form of the file; units = \"US\", \"SI\" or a [units] "
        "table; decimal_comma; metric_constants; strict.\n";
    return list;
}

Explanation explain(std::string_view name) {
    std::string_view rest = name;
    const std::string_view table = take_table(rest);
    std::string text;
    for (const ElementKind* kind : element_kinds()) {
        if (table.empty() || kind->table == table) text += explain_in(*kind, rest);
    }
    text += explain_in_others(name);
    if (const auto tables = key_tables();
        text.empty() && std::find(tables.begin(), tables.end(), name) != tables.end())
        return {true, key_list(name)};
    if (!text.empty()) {
        text.pop_back(); // the blank line after the last one
        return {true, text};
    }
    for (const ElementKind* kind : element_kinds()) {
        if (!table.empty() && kind->table != table) continue;
        if (const std::string_view ours = kind->keys.synonym(rest); !ours.empty())
            return {false, "no key, result or check " + in_quotes(cut(name)) + "; here it is " +
                               std::string(kind->table) + '.' + std::string(ours)};
    }
    const std::string_view near = nearest(rest, names_in(table));
    return {false, "no key, result or check " + in_quotes(cut(name)) +
                       (near.empty() ? "" : "; the nearest is " + std::string(near))};
}

std::vector<std::string> explained_names(std::string_view begun) {
    std::string_view rest = begun;
    const std::string_view table = take_table(rest);
    const std::string before(table.empty() ? begun.substr(0, 0)
                                           : begun.substr(0, begun.find('.') + 1));
    std::vector<std::string> names;
    if (table.empty()) names = key_tables();
    for (const std::string_view name : names_in(table))
        names.push_back(before + std::string(name));
    for (const OtherTable& other : OTHER_TABLES) {
        for (const Key& key : other.keys())
            if (table.empty())
                names.push_back(std::string(other.place) + '.' + std::string(key.name));
    }
    std::erase_if(names, [&](const std::string& name) { return !name.starts_with(begun); });
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace tarvane::vessel
