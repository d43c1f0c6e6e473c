// The half section of a flange with its gasket and bolts, its dimensions and moment arms.
#pragma once

#include "drawing/flange_shape.h"
#include "drawing/frame.h"

#include <optional>
#include <string>

namespace tarvane::vessel {

// `name` as messages name it: "flange 2 (cover)".
std::optional<Draft> draw_flange(const FlangeShape& shape, const std::string& name,
                                 const UnitSystem& units, const DimensionStyle& style);

} // namespace tarvane::vessel
