// Forming strain of shells and heads (UCS-79, UHA-44, VIII-2 6.1) and surface area of formed heads.
#pragma once

#include "frame/vessel_elements.h"

#include <string_view>

namespace tarvane {

struct HEAD_AREA_ARGUMENTS {
    Real D;        // inside diameter
    Real t, ts;    // thicknesses, the greater one counts
    Real L, r;     // crown and knuckle radius
    Real Straight; // straight flange, feet
    Real k;        // elliptical head, D/2h
    Int Type;      // ELLIPTICAL, TORISPHERICAL, SPHERE; any other has no Area
    Real& Area;
    Real& Dmax; // outside diameter
};
void HEAD_SURFACE_AREA(HEAD_AREA_ARGUMENTS& h);

struct FORMING_ARGUMENTS {
    Int Element;
    Int Outside; // 0: inside diameter
    Real D, t;
    Real& Strain; // extreme fibre elongation, per cent
    std::string_view Material;
    Real r;      // knuckle radius
    Real Dsmall; // small end of a cone
    Real Alpha;  // half apex angle, degrees
    Int Code;
    Int Reference;              // of the material
    Int& Class;                 // of the material record
    Real& Thinning;             // Division 2 heads: strain by the blank, per cent
    Real &Area, &Dmax, &Dblank; // Division 2 heads
    Real k, L, Straight;        // of the head, as in HEAD_AREA_ARGUMENTS
};
void FORMING_STRAIN(FORMING_ARGUMENTS& f);

} // namespace tarvane
