// Gasket contact width, effective width and reaction diameter (Table 2-5.2, EN 13445-3 11.5.2).
#pragma once

#include "flange/state.h"

namespace tarvane {

inline constexpr Real FIVE_MM =
    0.196850389f; // effective gasket width 2b" of EN 13445-3 11.6, in inches

struct GASKET_CALL {
    // given
    Int sketch;
    Real column; // 1.0: Column I, any other value Column II
    Real N;      // contact width; below 0.0: to be computed
    Real m, y;
    bool partition; // the partition gasket: no lines, no full face rules
    // results; what a rule does not set stays as the caller has it
    Real b, G, b2, bPrime;
    Real bo = 0.0f; // basic width
};
void GASKET_WIDTH(const FLANGE_STATE& s, GASKET_CALL& call);

// Minimum contact width (Brownell Young) with its lines; for y above 0.001 and not full face.
void MIN_GASKET_WIDTH(const FLANGE_STATE& s);
// Recommended width for sheet and composite gaskets by B, Table 2-4; 0.0 for small flanges.
Real MIN_GASKET_WIDTH_TABLE(Real B);

} // namespace tarvane
