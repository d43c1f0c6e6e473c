// UG-33(a)(1): a formed head with the pressure on its convex side must hold UG-32, too, for 1.67 times
// the pressure and with a joint efficiency of 1.
#pragma once

#include "shell/trace.h"

namespace tarvane {

struct CONVEX_HEAD_ARGUMENTS {
    Real P;          // external design pressure, 0: the head is rated only
    Real MAEP, Tca;  // by the chart: allowable pressure, required thickness with allowances
    Real TreqRaw;    // of SHLINT under Pi with E = 1: by the formula alone,
    Real t_required; //   governing, with allowances
    Real MAWP;
    Real& Pi;    // pressure inside
    Real& treq;  // t_required, or infinity where no thickness holds Pi
    Real& MAEPi; // allowable external pressure by MAWP
    Real& MAEPg; // the lesser one
    Real& Tg;    // the greater thickness
};
void CONVEX_HEAD(CONVEX_HEAD_ARGUMENTS& h, TRACE* trace);

} // namespace tarvane
