// Corroded dimensions of the flange, and the block of the report that shows them.
#pragma once

#include "flange/state.h"

namespace tarvane {

// Corrosion taken off the flange's thickness.
inline Real thickness_allowance(const FLANGE_GIVEN& s) {
    return s.thicknessCorrodes() ? s.ci + 2.0f * s.ce : 0.0f;
}

// Corroded bore, B + 2 ci.
inline Real corroded_bore(const FLANGE_GIVEN& s) { return s.B + 2.0f * s.ci; }

// A hub thickness less the internal allowance; 0.0 where both allowances use the hub up.
inline Real corroded_hub(Real hub, const FLANGE_GIVEN& s) {
    return hub - s.ci - s.ce < 0.0f ? 0.0f : hub - s.ci;
}

// R, radial distance from the bolt circle to the corroded hub. The external allowance is added back:
// the outer surface of the hub has moved inward by it.
inline Real bolt_circle_to_hub(const FLANGE_STATE& s) {
    return (s.C - corroded_bore(s)) / 2.0f - corroded_hub(s.g1, s) + s.ce;
}

// Inside diameter of the shell that a reverse flange carries; with no hub left, its outside diameter.
inline Real reverse_shell_diameter(const FLANGE_GIVEN& s) {
    if (s.go > s.ci) return s.A - 2.0f * s.ce - 2.0f * s.go + 2.0f * s.ci;
    return s.A - 2.0f * s.ce;
}

// ct from the allowances of the record. Loose flanges and lap joints are analysed without the hub
// side's allowance: types 4 to 6 lose ci, and type 6 loses ct.
void SETTLE_ALLOWANCES(FLANGE_GIVEN& s);

// Writes the block of corroded dimensions; nothing else.
void CORRODED_DIMENSIONS(const FLANGE_STATE& s);

} // namespace tarvane
