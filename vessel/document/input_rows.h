// The inputs of a component as a reader sees them, each with its source.
#pragma once

#include "components/element.h"

#include <string>
#include <vector>

namespace tarvane::vessel {

struct InputRow {
    const Key* key;
    std::string value, unit; // UTF-8
    std::string source;      // "file", "material SA-105 at 300 °F", "default"
};

// In the order of the keys of its kind: those that are given or follow from others, and defaults that are not zero.
std::vector<InputRow> input_rows(const Element& element, const UnitSystem& units);

// Those of every key, also where it is not read.
std::vector<InputRow> every_input_row(const Element& element, const UnitSystem& units);

// Those of them that have a default which decides about safety, zero or not.
std::vector<InputRow> default_rows(const Element& element, const UnitSystem& units);

// A number as it was given: a unit's factor applied and undone can cost the last bit.
float as_given(const Key& key, float engine, const Value& given, const UnitSystem& units);

} // namespace tarvane::vessel
