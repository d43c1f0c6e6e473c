// Corrosion that a shell or head takes until its working pressure has fallen to the design pressure
// (Division 1).
#pragma once

#include "frame/vessel_elements.h"

namespace tarvane {

struct FAILURE_CA_ARGUMENTS {
    Real P, D, E, S, t;
    Real k;     // elliptical head, D/2h
    Real L, r;  // crown and knuckle radius
    Real Alpha; // half apex angle, degrees
    Real C;     // flat head: attachment factor
    Int Element;
    Real& FailCA;
    Int Outside;                      // 1: outside diameter
    Real tk;                          // knuckle of a cone
    Real& FailCAK;                    // its corrosion; -1.0 when there is none
    Real d1, d2, edge1, edge2, pitch; // openings of a flat head
    Real openingMaterial;
    Int Service;
    Int CorrodedK;
};
// The code constants are used as they are. A flat head counts as circular.
void COMPUTE_FAILURE_CA_DIV1(FAILURE_CA_ARGUMENTS& f);

} // namespace tarvane
