// The keys of an element table: one table for each kind, which the reader, the messages and
// `tarvane keys` share.
#pragma once

#include "catalogue/units.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// Where the value of a key goes. A kind whose elements have neither record nor text block uses the
// settings only.
enum class Place {
    record,       // element of the flange record
    slot,         // text slot of the flange text, by its offset
    slot_flag,    // "Y" or "N" in a text slot
    setting,      // number, by an enumeration of the kind
    text_setting, // text, by another
};

// A name and the number that it stands for. The first name of a number is the one that lists show.
struct Choice {
    std::string_view name;
    int number;
};

// Longest description of an element.
inline constexpr int MOST_DESCRIPTION = 200;

struct Key {
    std::string_view name; // "standard.class": class of the table `standard`
    Place place;
    int index; // element, offset or enumerator
    Quantity quantity;
    std::string_view meaning;
    std::span<const Choice> choices = {};
    int width = 0;               // longest text
    double fallback = 0.0;       // in the engine's units, for a key that is not given
    std::string_view group = {}; // the flag that this key switches on
};

// A key that users of other notations type for one of ours: "go" for g0, "e" for t. A message names ours.
struct Synonym {
    std::string_view other, ours;
};

// Which of the two names of an alias holds for every component that doesn't give either. `other`: ours, too,
// where no component of another kind has it as its own.
enum class Shared { both, other, ours };

// A second name that is taken for one of ours. Files without a number of their form have the names that
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

struct KeyTable {
    std::span<const Key> keys;
    std::span<const Synonym> synonyms;
    std::span<const Alias> aliases = {};
    std::span<const InnerTable> tables = {};

    const Key* find(std::string_view name) const; // none: a null pointer
    // The key behind a name or an alias.
    const Key* resolve(std::string_view name) const;
    // The names in a table of its own; none: there is no such table. "class" and "size" of "standard".
    std::vector<std::string_view> names_in(std::string_view table) const;
    std::string_view synonym(std::string_view name) const;
};

// Values behind the keys of a kind: numbers and texts by two enumerations that end in `count`.
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

// "a number in mm", "true or false", "one of ...": what belongs behind a key.
std::string expected(const Key& key, const UnitSystem& units);
// The list of names of a choice, in double quotes.
std::string choice_names(std::span<const Choice> choices);

} // namespace tarvane::vessel
