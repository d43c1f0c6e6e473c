// What the external pressure routines leave to one another and to a later call: the chart of the last
// SHLEXT with its curve, and the last evaluation by the charts, which the report shows.
#pragma once

#include "external/chart_method.h"
#include "frame/text.h"
#include "frame/types.h"
#include "frame/vessel_elements.h"

namespace tarvane {

constexpr bool cylinder_or_cone(Int Element) { return Element == CYLINDER || Element == CONE; }

// What a stage of SHLEXT looks for.
enum class EXTERNAL_STAGE : Int {
    maep = 1,      // pressure at the given thickness
    thickness = 2, // thickness for the design pressure
    length = 3     // longest stiffened length for the design pressure
};

// The last evaluation by the charts.
struct EXTERNAL_RECORD {
    Int Element = 0;
    Real P = 0.0f;    // design external pressure of the element
    Real t = 0.0f;    // net thickness
    Real Do = 0.0f;   // outside diameter, or crown radius
    Real L = 0.0f;    // stiffened length
    Real Lout = 0.0f; // the same of a cone
    Real dt = 0.0f;   // Do / t
    Real ld = 0.0f;   // L / Do, from 0.05 to 50
    Real K0 = 0.0f;   // of an elliptical head
    Real A = 0.0f, B = 0.0f;
    Real EMAP = 0.0f;
    A_SOURCE A_by = NO_A;
    B_SOURCE B_by = NO_B;
    THICK_LIMIT thick_by = NOT_THICK;
};

struct EXTERNAL_STATE {
    EXTERNAL_STAGE stage{};
    Text<8> chart; // its name
    Int CarbonChart = 0;
    Real Temp = 0.0f; // design temperature
    Real S = 0.0f;    // allowable stress in tension
    Real Emod = 0.0f; // modulus, psi
    CHART_CURVE curve;
    EXTERNAL_RECORD last;
};
extern EXTERNAL_STATE EXTERNAL;

// State back to that at load.
void RESET_EXTERNAL();

} // namespace tarvane
