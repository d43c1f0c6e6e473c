// Multiple openings in flat heads and covers (UG-39).
#pragma once

#include "frame/vessel_elements.h"

namespace tarvane {

inline constexpr Int BLIND_COVER = 7;

// What UG-39 says of the openings: their state, and each rule that they break with the length that breaks
// it and its limit. State and rules as in TARVANE_FLANGE_RESULTS.
inline constexpr Int OPENING_RULES = 7;
struct OPENINGS_FOUND {
    enum State : Int { NONE, APART, BY_FACTOR, IN_VIOLATION };
    enum Rule : Int { D1_LARGE = 1, D2_LARGE, LARGE, NEAR, LIGAMENT, D1_AT_EDGE, D2_AT_EDGE };
    State state = NONE;
    Int violations = 0;
    Rule rule[OPENING_RULES] = {};
    Real length[OPENING_RULES] = {}, limit[OPENING_RULES] = {};
};

struct OPENINGS_CALL {
    Int kind; // FLAT_HEAD_ELEMENT or BLIND_COVER
    Real headDia, d1, d2, edge1, edge2, pitch;
    Int material;
    Real Cin;
    Real coverFactor = 1.0f; // h of UG-39(e)(2)
    Real Cout = 0.0f;        // UG-39(d)(1), flat heads
    Int coverFlag = 0;       // 1: the openings are far enough apart
    OPENINGS_FOUND found{};
};
void PATTERNED_OPENINGS(OPENINGS_CALL& call);

// What was found, for a block of results.
template <class BLOCK>
void KEEP_OPENINGS(BLOCK& block, const OPENINGS_FOUND& found) {
    block.openings = found.state;
    block.opening_violations = found.violations;
    for (Int i = 0; i < found.violations; ++i) {
        block.opening_rule[i] = found.rule[i];
        block.opening_found[i] = found.length[i];
        block.opening_limit[i] = found.limit[i];
    }
}

extern bool UG39_VIOLATION; // raised by each violation line, never lowered

} // namespace tarvane
