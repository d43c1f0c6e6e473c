// The keys of an element table: one table for each kind, which the reader, the messages, the schema,
// `tarvane keys` and `tarvane explain` share.
#pragma once

#include "catalogue/units.h"
#include "fields/condition.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

struct CheckField;

// Where the value of a key goes. A kind whose elements have neither record nor text block uses the
// settings only.
enum class Place {
    record,       // element of the flange record
    slot,         // text slot of the flange text, by its offset
    slot_flag,    // "Y" or "N" in a text slot
    setting,      // number, by an enumeration of the kind
    text_setting, // text, by another
};

// A name and its number. The first name of a number is the one that lists show.
struct Choice {
    std::string_view name;
    int number;
};

// Longest description of an element.
inline constexpr int MOST_DESCRIPTION = 200;

// A row of the table: Key{name, place, index, quantity, meaning, symbol}, then further properties,
// by functions that return a changed copy.
struct Key {
    std::string_view name; // "standard.class": class of the table `standard`
    Place place;
    int index; // element, offset or enumerator
    Quantity quantity;
    std::string_view meaning;
    std::string_view symbol = {}; // in the report; empty: it has none there

    std::string_view few_words = {}; // for a line of a form; empty: the meaning is used
    std::span<const Choice> choices = {};
    int width = 0;                        // longest text
    double fallback = 0.0;                // in the engine's units, for a key that is not given
    std::string_view group = {};          // the flag that this key switches on
    std::optional<int> decimals = {};     // in the report; else those of the quantity
    Condition read = {};                  // the value counts, wherever it comes from
    std::optional<Condition> needed = {}; // it must come from somewhere, where it is read
    std::string_view argument = {};       // of the engine that a setting goes to: "SHLINT Sa"
    std::optional<double> newer_fallback =
        {}; // in a file with a number of its form, if it is another

    // ---- words of a row ----
    constexpr Key label(std::string_view words) const {
        Key copy = *this;
        copy.few_words = words;
        return copy;
    }
    constexpr Key of(std::span<const Choice> names) const {
        Key copy = *this;
        copy.choices = names;
        return copy;
    }
    constexpr Key up_to(int characters) const {
        Key copy = *this;
        copy.width = characters;
        return copy;
    }
    constexpr Key otherwise(double value) const {
        Key copy = *this;
        copy.fallback = value;
        return copy;
    }
    constexpr Key in_newer_files(double value) const {
        Key copy = *this;
        copy.newer_fallback = value;
        return copy;
    }
    constexpr Key shows(int digits) const {
        Key copy = *this;
        copy.decimals = digits;
        return copy;
    }
    constexpr Key to(std::string_view where) const {
        Key copy = *this;
        copy.argument = where;
        return copy;
    }
    constexpr Key needs(Condition when = {}) const {
        Key copy = *this;
        copy.needed = when;
        return copy;
    }
    constexpr Key reads(Condition when) const {
        Key copy = *this;
        copy.read = when;
        return copy;
    }
    // Given, it switches a flag on that the file leaves open; it is read with the flag on only.
    constexpr Key opens(std::string_view flag, Condition also = {}) const {
        Key copy = *this;
        copy.group = flag;
        copy.read = also.and_also(on(flag));
        return copy;
    }

    // What it is where nothing gives it.
    constexpr double default_value(bool newer_file) const {
        return newer_file ? newer_fallback.value_or(fallback) : fallback;
    }
    // "Design pressure", the few words of a line of a form.
    std::string label() const;
    // Where the engine takes it: "record 4", "text 30", an argument; empty: the library uses it itself.
    std::string engine() const;
};

// A key that users of other notations type for one of ours: "go" for g0, "e" for t. A message names ours.
struct Synonym {
    std::string_view other, ours;
};

// Which of the two names of an alias holds for every component that doesn't give either. `other`: ours, too,
// where no component of another kind has it as its own.
enum class Shared { both, other, ours };

// A second name that is accepted for one of ours. Files without a number of their form have the names that
// they always had in common; [vessel] and newer files have those of the one vocabulary.
struct Alias {
    std::string_view other, ours;
    Shared in_older_files, in_newer_files;
};

// Keys that may be written in a table of their own, too: gasket = { m = 3 } for m = 3.
struct InnerTable {
    std::string_view name;
    std::span<const std::string_view> keys;
};

// A key that components of the kind ignore: in their own tables it is a fault, with what to do
// instead. Where it applies to every component and is not 0, one of their checks is not made.
struct Unheeded {
    Key key;
    std::string_view advice;
    const CheckField& check;
};

// A section of the calculation document, from a key on.
struct KeySection {
    std::string_view first_key, title;
};

struct KeyTable {
    std::span<const Key> keys;
    std::span<const KeySection> sections = {};
    std::span<const Synonym> synonyms = {};
    std::span<const Alias> aliases = {};
    std::span<const InnerTable> tables = {};
    std::span<const Rule> rules = {};
    std::span<const Unheeded> unheeded = {};

    const Key* find(std::string_view name) const; // none: a null pointer
    // The key of a name or an alias.
    const Key* resolve(std::string_view name) const;
    // The names in a table of its own; none: there is no such table. "class" and "size" of "standard".
    std::vector<std::string_view> names_in(std::string_view table) const;
    std::string_view synonym(std::string_view name) const;
    std::string_view section(const Key& key) const;
    const Unheeded* find_unheeded(std::string_view name) const; // none: a null pointer
};

// Values of the keys of a kind: numbers and texts by two enumerations that end in `count`.
template <class Number, class Text>
struct Settings {
    std::array<float, static_cast<std::size_t>(Number::count)> settings{};
    std::array<std::string, static_cast<std::size_t>(Text::count)> texts;

    float setting(Number s) const { return settings[static_cast<std::size_t>(s)]; }
    int whole_setting(Number s) const { return static_cast<int>(setting(s)); }
    void put_setting(Number s, float value) { settings[static_cast<std::size_t>(s)] = value; }
    const std::string& text_setting(Text s) const { return texts[static_cast<std::size_t>(s)]; }
    // By the index of a key.
    float number_at(int index) const { return settings[static_cast<std::size_t>(index)]; }
    const std::string& text_at(int index) const { return texts[static_cast<std::size_t>(index)]; }
};

// "a number in mm", "true or false", "one of ...": what a key accepts.
std::string expected(const Key& key, const UnitSystem& units);
// The list of names of a choice, in double quotes.
std::string choice_names(std::span<const Choice> choices);
// The first name of a number; empty: there is none.
std::string_view choice_name(std::span<const Choice> choices, int number);
// Further names that are accepted: of the numbers of a choice, in double quotes; empty without any.
std::string further_names(std::span<const Choice> choices);

// "kind is "cone", D is not given": a condition in words; empty: always.
std::string in_words(const Condition& condition, const KeyTable& keys);

} // namespace tarvane::vessel
