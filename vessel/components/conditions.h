// Whether the condition of a key holds for an element.
#pragma once

#include "components/element.h"

#include <string>

namespace tarvane::vessel {

enum class Holds { no, yes, unknown }; // unknown: by a key whose value is at fault

Holds holds(const Condition& condition, const Element& element, const Reading& reading);

// "facing 1a", "pad false", "curve given": the first term that doesn't hold; empty without one.
std::string why_not(const Condition& condition, const Element& element, const Reading& reading);

// Faults for the keys that an element needs and that nothing gives.
void find_missing_keys(const Element& element, const UnitSystem& units, Reading& reading);

// Where the value of each key comes from, for keys of which nothing has said it.
Origins complete_origins(const Element& element, Reading& reading);

} // namespace tarvane::vessel
