// Flat covers: TEMA channel cover deflection, multiple openings by UG-39.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Fills dfActual and tChannelMin, with their lines; pCover is for the lines only.
void TEMA_COVER_CHECK(FLANGE_STATE& s);

struct OPENINGS_CALL {
    Int kind; // 6 flat head, 7 blind cover
    Real headDia, d1, d2, edge1, edge2, pitch;
    Int material;
    Real Cin;
    Real coverFactor = 1.0f;
    Real Cout = 0.0f;
    Int coverFlag = 0;
};
void PATTERNED_OPENINGS(OPENINGS_CALL& call);
extern bool UG39_VIOLATION; // raised by each violation line, never lowered

} // namespace tarvane
