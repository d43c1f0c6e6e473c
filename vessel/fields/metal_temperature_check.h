// The row of every pressure part by ASME for its lowest metal temperature, which an [[mdmt]] finds.
#pragma once

#include "fields/results.h"

namespace tarvane::vessel {

inline constexpr CheckField METAL_TEMPERATURE{.id = "metal_temperature",
                                              .paragraph = "UCS-66",
                                              .label = "lowest metal temperature",
                                              .quantity = Quantity::temperature,
                                              .asked = "by an [[mdmt]] for the part"};

} // namespace tarvane::vessel
