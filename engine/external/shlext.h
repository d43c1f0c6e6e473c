// SHLEXT: one shell or head under external pressure, by the charts (UG-28 to UG-33) or by buckling
// stress (Code Case 2286; Division 2, 4.4).
#pragma once

#include "frame/types.h"

namespace tarvane {

// The arguments of a call; the public header describes them at SHLEXT.
struct SHLEXT_CALL {
    Real P = 0.0f, Temp = 0.0f;
    char* Chart = nullptr; // 12 characters
    Int Element = 0;
    Real D = 0.0f, t = 0.0f, c = 0.0f, k = 0.0f, L = 0.0f, Alpha = 0.0f, Length = 0.0f;
    Real MAEP = 0.0f, Tca = 0.0f, Slen = 0.0f, Do = 0.0f, FactorA = 0.0f, FactorB = 0.0f;
    Int Print = 0;
    Real Dsmall = 0.0f, ConeLength = 0.0f;
    Int DoGiven = 0;
    Real S = 0.0f, Ut = 0.0f, Fy = 0.0f;
    Int Material = 0;
    Real Fha = 0.0f, FailCA = 0.0f;
    Int Service = 0;
};

void SHLEXT(SHLEXT_CALL& s);

} // namespace tarvane
