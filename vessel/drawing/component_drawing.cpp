#include "drawing/component_drawing.h"

namespace tarvane::vessel {

std::optional<Figure> component_drawing(const Element&, const Outcome&, const Request&) {
    return std::nullopt;
}

std::optional<Figure> vessel_drawing(const Request&, const Calculation&) { return std::nullopt; }

} // namespace tarvane::vessel
