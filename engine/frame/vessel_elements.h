// Element codes of the shell and head routines, internal and external pressure.
#pragma once

#include "frame/types.h"

namespace tarvane {

enum VESSEL_ELEMENT : Int {
    CYLINDER = 1,
    ELLIPTICAL = 2,
    TORISPHERICAL = 3,
    SPHERE = 4, // or hemispherical head
    CONE = 5,   // with or without a knuckle
    FLAT_HEAD_ELEMENT = 6,
};

} // namespace tarvane
