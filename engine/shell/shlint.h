// Shells and heads under internal pressure (VIII-1 UG-27, UG-32, UG-34, Appendices 1-2 and 1-4).
#pragma once

#include "frame/vessel_elements.h"

#include <string_view>

namespace tarvane {

// Arguments of SHLINT in their order. Lengths in inches, pressures and stresses in psi.
struct SHLINT_ARGUMENTS {
    Real P;      // design pressure
    Real Sa, S;  // allowable stress at ambient and at design temperature
    Real E;      // joint efficiency
    Int Element; // VESSEL_ELEMENT; anything else changes nothing
    Real D;      // diameter; flat head: one span
    Real t;      // nominal thickness
    Real c;      // corrosion allowance
    Real k;      // elliptical head: aspect ratio D/2h; cone: knuckle thickness tk
    Real& L;     // crown radius; an elliptical head puts its equivalent one here
    Real r;      // knuckle radius
    Real alpha;  // half apex angle of a cone, degrees
    Real C;      // attachment factor of a flat head
    Real D2;     // second span of a flat head, 0: circular
    Real& Treq;  // required thickness, at least the minimum of the service
    Real& MAWP;  // corroded
    Real& MAPnc; // new and cold
    Real& Stress;
    Int Material;  // reference number of the modulus table
    Real Temp;     // design temperature
    Int Service;   // 0 none, 1 air, steam, water (UG-16(b)(4)), 2 unfired steam boiler
    Real& TreqRaw; // before the minima
    Int Outside;   // 0: inside dimensions
    Real& T14f;    // Appendix 1-4(f): thickness,
    Real Sy;       //   yield stress at design temperature,
    Real &MAWP14f, &MAPnc14f;
    Int& Status14f; //   class of the head, 4: no solution
    Real& SyCold;   //   ambient yield stress, raised to Sy
    Real u;         // mill under-tolerance
    Int Skip14f;
    Real d1, d2, edge1, edge2, pitch; // openings of a flat head
    Real openingMaterial;
    Int CorrodedK; // 1: K of an elliptical head by its corroded shape
    std::string_view MaterialName;
};
void SHLINT(SHLINT_ARGUMENTS& s);

// The column that DIV2_K_FACTOR remembers back to its state at load.
void RESET_SHELLS();

} // namespace tarvane
