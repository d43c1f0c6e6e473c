// The table of an external pressure stage by the charts.
#pragma once

#include "frame/types.h"

namespace tarvane {

// Shows the last evaluation of the charts under the title of the present stage. Nothing is written
// for Division 2, with Code Case 2286 switched on, or for a cylinder or cone of less than 4 in.
void EXT_RESULTS_REPORT(Real Fy, Real Temp, Int code);

} // namespace tarvane
