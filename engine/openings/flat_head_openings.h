// Multiple openings in flat heads and covers (UG-39).
#pragma once

#include "frame/vessel_elements.h"

namespace tarvane {

inline constexpr Int BLIND_COVER = 7;

struct OPENINGS_CALL {
    Int kind; // FLAT_HEAD_ELEMENT or BLIND_COVER
    Real headDia, d1, d2, edge1, edge2, pitch;
    Int material;
    Real Cin;
    Real coverFactor = 1.0f; // h of UG-39(e)(2)
    Real Cout = 0.0f;        // UG-39(d)(1), flat heads
    Int coverFlag = 0;       // 1: the openings are far enough apart
};
void PATTERNED_OPENINGS(OPENINGS_CALL& call);
extern bool UG39_VIOLATION; // raised by each violation line, never lowered

} // namespace tarvane
