// External pressure by buckling stress (Code Case 2286; Division 2, 4.4). The chart, its temperature
// and the modulus are those of the last SHLEXT. Each step writes its lines while IWRITE allows it.
#pragma once

#include "external/results.h"
#include "frame/types.h"

namespace tarvane {

// Factor of safety for the elastic stress F and the predicted buckling stress Fic. By a chart that is
// not one of carbon steel Fic is calculated again from the tangent modulus; with F at most 100 that
// starts from Fic itself.
Real CC2286_FS(Real F, Real& Fic, Real Fy);

// Cylinder (4.4.5), stresses and pressure in psi.
struct BUCKLING_CYLINDER {
    Real FS, Fhe, Fha, Pa;
    Real Fic; // as the factor of safety uses it
    FIC_SOURCE Fic_by;
};
BUCKLING_CYLINDER CC2286_CYLINDER(Real Do, Real L, Real t, Real Ey, Real Fy);

// Sphere or formed head (4.4.7). Do is the crown outside radius of a torispherical head; kO the
// outside aspect ratio of an elliptical one. Sigma1 and Sigma2 are membrane stresses, both negative:
// biaxial compression. Fa and Fb are the allowable stresses of unequal ones.
struct BUCKLING_HEAD {
    Real Fha = 0.0f, Pa = 0.0f, Fa = 0.0f, Fb = 0.0f;
    Real FS = 0.0f, Fhe = 0.0f, Fic = 0.0f;
    FIC_SOURCE Fic_by = NO_FIC;
};
BUCKLING_HEAD CC2286_HEAD(Int Element, Real Do, Real Ey, Real t, Real Fy, Real Sigma1, Real Sigma2,
                          Real kO);

} // namespace tarvane
