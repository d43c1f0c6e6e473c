// The iterations of the driver: new and cold pressure of covers, mating loads, failure corrosion.
#pragma once

#include "flange/record.h"
#include "flange/state.h"

namespace tarvane {

struct DRIVER_STATE; // driver.h

void NEW_AND_COLD_ITERATION(DRIVER_STATE& d);
void MATING_LOAD_ITERATIONS(DRIVER_STATE& d);
void FAILURE_CORROSION_LOOP(DRIVER_STATE& d);
void FAILURE_CORROSION_REPORT(const DRIVER_STATE& d);

} // namespace tarvane
