// Allowable compressive stresses of members (Code Case 2286; Division 2, 4.4.12) for a host's own
// checks. The chart and the modulus are those of the last SHLEXT; no lines are written.
//   Do   outside diameter       L    unsupported length      t   net thickness
//   Ey   modulus                Fy   yield stress            Ku, Lu  factor and length of buckling
#pragma once

#include "frame/types.h"

namespace tarvane {

// Axial compression: Fca of a column of slenderness Lambda, 1000000 when it is too slight or too great
// for the equation; a chart that is not one of carbon steel leaves FSc as it is.
void CC2286_AXIAL(Real Do, Real L, Real t, Real Ey, Real Fy, Real Ku, Real Lu, Real& FSc,
                  Real& Lambda, Real& Fxa, Real& FSe, Real& Fxe, Real& Fca);

// Bending compression.
void CC2286_BENDING(Real Do, Real t, Real Ey, Real Fy, Real FS, Real Fxa, Real& Fba);

// Shear.
void CC2286_SHEAR(Real Do, Real L, Real t, Real Ey, Real Fy, Real& Fva, Real& Cv);

// Axial and hoop compression together: applied stresses Fa and Fb, pressure P on the diameter D with
// the joint efficiency Ej. What no step calculates is left as it is.
void CC2286_INTERACTION(Real P, Real D, Real t, Real Fa, Real Fb, Real Lambda, Real Fha, Real Fxa,
                        Real FSh, Real FSx, Real Fy, Real Ej, Real Fxa2, Real FSx2, Real& Fxha,
                        Real& Fhxa, Real& Fxha2);

} // namespace tarvane
