#pragma once

#include "frame/types.h"

namespace tarvane {

// Required thickness of the shell above a flange, and its MAWP. D inside diameter, ca and ce the
// internal and external allowances, external 0 for an inside diameter basis and 1 for an outside one.
Real ATTACHED_SHELL_THICKNESS(Int code, Real P, Real D, Real ca, Real ce, Real S, Real E,
                              Int external, Real t, Real& mawpOut);

} // namespace tarvane
