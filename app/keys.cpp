#include "keys.h"

#include "text.h"

namespace tarvane::app {

const Key* KeyTable::find(std::string_view name) const {
    for (const Key& key : keys) {
        if (key.name == name) return &key;
    }
    return nullptr;
}

bool KeyTable::holds_table(std::string_view name) const {
    for (const Key& key : keys) {
        if (key.name.size() > name.size() && key.name.starts_with(name) &&
            key.name[name.size()] == '.')
            return true;
    }
    return false;
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

} // namespace tarvane::app
