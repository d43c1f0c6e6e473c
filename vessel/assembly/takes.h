// What a component takes over from the one that a link of it names. Its own keys come first, those of [vessel] last.
#pragma once

#include "components/element.h"

#include <string_view>

namespace tarvane::vessel {

// Into the values of a component, before what follows from them. The other one is complete.
void take_over(std::string_view link, Element& to, Reading& reading, const Element& from,
               const Request& request);

// What a link at fault would have given isn't missing on top of that.
void take_nothing(std::string_view link, const Element& to, Reading& reading);

// The density of the liquid in the vessel, and the elevation of its surface; the engine's units.
struct Liquid {
    float density, level;

    // What it adds to the pressure at an elevation.
    float head_at(float elevation) const;
};

// The head on a component, added to its pressure where that is the one of the vessel: an own P is at the component.
// A component without an elevation is a fault.
void add_head(const Liquid& liquid, Element& to, Reading& reading);

} // namespace tarvane::vessel
