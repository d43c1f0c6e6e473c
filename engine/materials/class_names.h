// Names of the material classes, for the host's dialogs.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

namespace tarvane {

struct MATERIAL_CLASS {
    Text<40> name;
    Int number = 0;
};
inline constexpr Int MATERIAL_CLASSES = 69;

// The row's place is the class; blank and 0 until SET_MATERIAL_CLASS_NAMES.
extern MATERIAL_CLASS MATERIAL_CLASS_NAMES[MATERIAL_CLASSES];
extern bool
    MATERIAL_CLASS_NAMES_GIVEN; // the host has their address, and may write anywhere in them

void SET_MATERIAL_CLASS_NAMES();

// Blank again; RESET_MATERIALS calls it.
void RESET_MATERIAL_CLASS_NAMES();

} // namespace tarvane
