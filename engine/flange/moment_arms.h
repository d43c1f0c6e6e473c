// Moment arms (Table 2-6, Table 4.16.6).
#pragma once

#include "flange/state.h"

namespace tarvane {

// hg and hgPrime of a full face gasket, at the head of each evaluation. Writes nothing.
void FULL_FACE_ARMS(FLANGE_STATE& s);
// Every flange except a full face one under PD 5500 and EN 13445.
void MOMENT_ARMS(FLANGE_STATE& s);
// Full face under PD 5500 and EN 13445: hgDouble, hd, ht, and hs of a reverse flange.
void MOMENT_ARMS_FULL_FACE(FLANGE_STATE& s);

} // namespace tarvane
