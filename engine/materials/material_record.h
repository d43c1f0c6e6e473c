// The record of a material in the material files.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <string_view>

namespace tarvane {

struct MATERIAL_RECORD {
    Real minDia = -1.0f, maxDia = -1.0f; // bolt diameter range, -1.0: no limit
    Text<8> pNumber;
    Int group = 0;
};

// Status 0: found, 1: no record of that name. The library has no material file yet, so that every
// name is without a record, as with a missing file.
Int READ_MATERIAL(std::string_view name, Int reference, Int code, MATERIAL_RECORD& record);

} // namespace tarvane
