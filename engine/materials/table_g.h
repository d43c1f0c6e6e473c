// Factor A of external pressure from the tabulated chart (ASME II-D, Subpart 3, Table G).
#pragma once

#include "frame/types.h"

namespace tarvane {

// Factor A of a cylinder by D/t and L/D; -1.0 when the table has no answer.
void TABLE_G_FACTOR_A(Real dt, Real ld, Real& a);
// The same for a D/t that the table has.
void TABLE_G_ROW(Real key, Real ld, Real& a);

// The table back to its state at load; RESET_MATERIALS calls it.
void RESET_TABLE_G();

} // namespace tarvane
