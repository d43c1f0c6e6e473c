// Drawings to scale of a component as it was judged, and of the whole vessel.
#pragma once

#include "components/calculation.h"
#include "components/element.h"
#include "components/request.h"
#include "drawing/figure.h"

#include <optional>

namespace tarvane::vessel {

// None for a component of which there is no drawing, or whose dimensions make none.
std::optional<Figure> component_drawing(const Element& element, const Outcome& outcome,
                                        const Request& request, DrawnFor surroundings);

// The components by their elevations; none where fewer than two have one.
std::optional<Figure> vessel_drawing(const Request& request, const Calculation& calculation,
                                     DrawnFor surroundings);

} // namespace tarvane::vessel
