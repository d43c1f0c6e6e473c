#pragma once

#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Bolt diameter against the record of the bolt material: its limits (-1: none), ok 1, 0, or -1
// when nothing is known. Selectors: metric files, Division 1 forced, Division 2 class; a negative
// one is not stored.
void CHECK_BOLT_MATL_VS_DIAMETER(std::string_view name, Int reference, Real& minDia, Real& maxDia,
                                 Int& ok, Real dia, Int printFlag, Int code, Int metric,
                                 Int forceDiv1, Int d2Class);

} // namespace tarvane
