#pragma once

#include "frame/types.h"

namespace tarvane {

// External axial force (pounds) and bending moment (foot-pounds) as pressure (NC-3658.1).
void EQUIVALENT_PRESSURE(Real F, Real M, Real G, Real Pi, Real P, Real& Peq);

} // namespace tarvane
