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

std::string_view KeyTable::section(const Key& key) const {
    std::string_view title;
    for (const Key& each : keys) {
        for (const KeySection& section : sections) {
            if (section.first_key == each.name) title = section.title;
        }
        if (&each == &key) break;
    }
    return title;
}

const Unheeded* KeyTable::find_unheeded(std::string_view name) const {
    for (const Unheeded& each : unheeded) {
        if (each.key.name == name) return &each;
    }
    return nullptr;
}

std::string Key::label() const {
    std::string words(few_words.empty() ? meaning : few_words);
    if (words[0] >= 'a' && words[0] <= 'z') words[0] = static_cast<char>(words[0] - 'a' + 'A');
    return words;
}

std::string Key::engine() const {
    switch (place) {
    case Place::record:
        return "record " + std::to_string(index);
    case Place::slot:
    case Place::slot_flag:
        return "text " + std::to_string(index + 1);
    default:
        return std::string(argument);
    }
}

std::string_view choice_name(std::span<const Choice> choices, int number) {
    for (const Choice& c : choices) {
        if (c.number == number) return c.name;
    }
    return {};
}

std::string further_names(std::span<const Choice> choices) {
    std::string names;
    for (const Choice& c : choices) {
        if (choice_name(choices, c.number).data() != c.name.data())
            names += (names.empty() ? "" : ", ") + in_quotes(c.name);
    }
    return names;
}

namespace {

// "kind is "cone"", "D is not given".
std::string in_words(const Term& term, const Key& key) {
    const std::string name(term.key);
    if (term.is == Term::Is::given) return name + " is given";
    if (term.is == Term::Is::not_given) return name + " is not given";
    if (key.quantity == Quantity::flag) return name + (term.holds(1) ? " = true" : " = false");
    std::string names;
    int last = -1;
    for (const Choice& c : key.choices) {
        if (c.number <= last) break; // further names of the same numbers
        last = c.number;
        if (term.holds(c.number)) names += (names.empty() ? "" : ", ") + in_quotes(c.name);
    }
    return name + (names.find(',') == std::string::npos ? " is " : " is one of ") + names;
}

} // namespace

std::string in_words(const Condition& condition, const KeyTable& keys) {
    std::string words;
    for (const Term& term : condition.terms) {
        if (term.is == Term::Is::unused) break;
        words += (words.empty() ? "" : ", and ") + in_words(term, *keys.find(term.key));
    }
    for (const Rule& rule : keys.rules) {
        if (rule.id == condition.rule)
            words += (words.empty() ? "" : ", and ") + std::string(rule.words);
    }
    return words;
}

std::string choice_names(std::span<const Choice> choices) {
    std::string names;
    int last = -1;
    for (const Choice& c : choices) {
        if (c.number <= last) break; // further names of the same numbers
        last = c.number;
        names += (names.empty() ? "" : ", ") + in_quotes(c.name);
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
    case Quantity::waivers:
        return "a list of checks";
    default:
        return "a number in " + to_utf8(units.label(key.quantity));
    }
}

} // namespace tarvane::vessel
