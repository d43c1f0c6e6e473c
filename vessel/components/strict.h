// What a strict request must say itself: no default decides about safety.
#pragma once

#include "components/element.h"

namespace tarvane::vessel {

// Whether a strict request has no default for the key of a component.
bool refuses_default(std::string_view key);

// Faults for the keys that have their default, after the origins of the element are complete.
void refuse_defaults(const Element& element, Reading& reading);

} // namespace tarvane::vessel
