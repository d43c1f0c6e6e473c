// Post weld heat treatment requirement (UCS-56, Table 6.8) by P-Number and group of the material.
#pragma once

#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Required: 1, 0, or -1 when the material has no record. Rule: 1 Division 1, 2 Division 2, other: no
// rule. PNumberOne: 1 for P-Number 1. GroupCode: 1 for P-Number 1 groups 1 and 2, else minus the group.
void PWHT_NEEDED(std::string_view Material, Int Index, Int Rule, Int Forced, Real Thickness,
                 Int& Required, Int& PNumberOne, Int Preheat, Int& GroupCode);

} // namespace tarvane
