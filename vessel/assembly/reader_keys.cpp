#include "assembly/reader_state.h"
#include "components/read_value.h"
#include "components/waivers.h"
#include "fields/flange_keys.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

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

} // namespace

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
        faults.list().back().path = (path + '.').append(name);
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
        if (input_at(path)) return true;
        Taken<float> number = take_number(*value, key, request.units);
        if (number.value) return *number.value != 0.0f;
        faults.add(value->at, key.name, std::move(number.fault));
        faults.list().back().path = path;
        faults.list().back().value = value->shown();
    }
    return false;
}

} // namespace tarvane::vessel
