// Whether the condition of a key is true for an element.
#pragma once

#include "components/element.h"

#include <string>

namespace tarvane::vessel {

enum class Holds { no, yes, unknown }; // unknown: it depends on a key whose value is at fault

Holds holds(const Condition& condition, const Element& element, const Reading& reading);

// "facing 1a", "pad false", "curve given": the first term that is not true; empty without one.
std::string why_not(const Condition& condition, const Element& element, const Reading& reading);

// Faults for the keys that an element needs and that nothing gives.
void find_missing_keys(const Element& element, const UnitSystem& units, Reading& reading);

// Where the value of each key comes from, for the keys that have no origin yet.
Origins complete_origins(const Element& element, Reading& reading);

} // namespace tarvane::vessel
