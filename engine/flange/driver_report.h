// What the driver does after its passes: bolt area failure, rigidity, attached shell, toughness hook,
// attachment welds.
#pragma once

#include "flange/driver.h"

namespace tarvane {

// Output 10 = -Am, record 200 = Ab.
void BOLT_AREA_RESULTS(DRIVER_STATE& d);
void BOLT_AREA_FAILURE(DRIVER_STATE& d);
void RIGIDITY_AND_SHELL_STEPS(DRIVER_STATE& d);
// The results of these steps alone: no line, no file, and the state stays.
void RIGIDITY_AND_SHELL_VALUES(const DRIVER_STATE& d);
void MISSING_CYLINDER_LINES(const DRIVER_STATE& d);
void ATTACHMENT_WELDS(const DRIVER_STATE& d);

// Kept for the toughness routines: minus the stress ratio of the flange, and of its shell.
extern Real FLANGE_STRESS_RATIO, FLANGE_SHELL_RATIO;
// Answers of PWHT_NEEDED for the flange.
extern Int FLANGE_PWHT_REQUIRED, FLANGE_P_NUMBER_ONE, FLANGE_GROUP_CODE;

void RESET_DRIVER_REPORT();

} // namespace tarvane
