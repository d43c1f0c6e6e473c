// The checks of the openings of a flat head or cover: rules in the order of TARVANE_OPENING_D1_LARGE and its
// companions, then the one for openings that break none.
#pragma once

#include "fields/results.h"

namespace tarvane::vessel {

inline constexpr CheckField OPENING_CHECKS[] = {
    {"opening_d1", "UG-39", "opening d1", Quantity::diameter},
    {"opening_d2", "UG-39", "opening d2", Quantity::diameter},
    {"openings_large", "UG-39(e)", "average diameter of the openings", Quantity::diameter},
    {"openings_near", "UG-39(e)(3)", "pitch of the openings", Quantity::diameter, true},
    {"opening_ligament", "UG-39(e)(4)", "ligament between the openings", Quantity::diameter, true},
    {"opening_d1_edge", "UG-39(e)(5)", "distance of the opening d1 to the edge", Quantity::diameter,
     true},
    {"opening_d2_edge", "UG-39(e)(5)", "distance of the opening d2 to the edge", Quantity::diameter,
     true},
    {.id = "openings",
     .paragraph = "UG-39",
     .label = "openings",
     .quantity = Quantity::number,
     .asked = "openings that break no rule"},
};

} // namespace tarvane::vessel
