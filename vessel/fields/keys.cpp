#include "fields/keys.h"

#include "values/text.h"

namespace tarvane::vessel {

const Key* KeyTable::find(std::string_view name) const {
    for (const Key& key : keys) {
        if (key.name == name) return &key;
    }
    return nullptr;
}

const Key* KeyTable::resolve(std::string_view name) const {
    if (const Key* key = find(name)) return key;
    for (const Alias& alias : aliases) {
        if (alias.other == name) return find(alias.ours);
    }
    return nullptr;
}

std::vector<std::string_view> KeyTable::names_in(std::string_view table) const {
    std::vector<std::string_view> names;
    for (const Key& key : keys) {
        if (key.name.size() > table.size() && key.name.starts_with(table) &&
            key.name[table.size()] == '.')
            names.push_back(key.name.substr(table.size() + 1));
    }
    for (const InnerTable& inner : tables) {
        if (inner.name == table) names.insert(names.end(), inner.keys.begin(), inner.keys.end());
    }
    return names;
}

std::string_view KeyTable::synonym(std::string_view name) const {
    for (const Synonym& s : synonyms) {
        if (s.other == name) return s.ours;
    }
    return {};
}

std::string choice_names(std::span<const Choice> choices) {
    std::string names;
    int last = -1;
    for (const Choice& c : choices) {
        if (c.number <= last) break; // further names of the same numbers
        last = c.number;
        names += (names.empty() ? "" : ", ") + quoted(c.name);
    }
    return names;
}

std::string expected(const Key& key, const UnitSystem& units) {
    switch (key.quantity) {
    case Quantity::flag:
        return "true or false";
    case Quantity::whole:
        return "a whole number";
    case Quantity::number:
        return "a number";
    case Quantity::text:
        return "a text of up to " + std::to_string(key.width) + " characters";
    case Quantity::designation:
        return "a number or a text of up to " + std::to_string(key.width) + " characters";
    case Quantity::choice:
        return "one of " + choice_names(key.choices);
    default:
        return "a number in " + to_utf8(units.label(key.quantity));
    }
}

} // namespace tarvane::vessel
