// FLANGE_CALC: the driver of one bolted flange or flat cover.
#pragma once

#include "flange/hub.h"
#include "flange/record.h"
#include "flange/state.h"

namespace tarvane {

// The 21 arguments of FLANGE_CALC in their order; the length of `text` is not looked at.
struct FLANGE_ARGUMENTS {
    Real* record;                // 1  200 reals, in and out
    const char* text;            // 2  slots of 15 characters
    const Int* reportKernel;     // 4
    const Int* writeCase;        // 5
    Real* mapNc;                 // 6  out
    Real* tReqNewCold;           // 7  out
    Real* tReqNew;               // 8  out
    Real* mawp;                  // 9  out
    Real* tReq;                  // 10 out
    const Int* quietOverstress;  // 11
    Int* rigidity;               // 12 in and out
    const Int* code;             // 13
    const Int* element;          // 14
    const Int* boltRow;          // 15
    const Real* jointE;          // 16
    const Int* corrodedRigidity; // 17
    const Int* standardFlange;   // 18
    const Real* pOperating;      // 19
    const Int* div2Edition;      // 20
    const Int* decimalComma;     // 21 logical, bit 0
};

// What the driver keeps from step to step.
struct DRIVER_STATE {
    FLANGE_ARGUMENTS* args;
    FLANGE_STATE* s;
    FLANGE_RECORD record{nullptr};
    Int element1 = 0;             // record element 1 as given, truncated
    Real ciGiven = 0, tGiven = 0; // record 9 and 8 as given
    Real tShell = 0, caShell = 0; // record 71 and 74 as given
    Int kindGiven = 0;
    bool rigidityWanted = false;
    bool rigidityDiv2 = false; // NEW_DIV_2_RULES of the rigidity step
    Int setupNoCorrection = 0;
    Real mapAmbient = 0;
    Real pHub = HUB_NOT_RATED, hubRequired = 0;
    bool noCylinder = false;
    Int mapNcBy = 0, mawpBy = 0; // what limits outputs 6 and 9
    // failure corrosion
    bool failsAlready = false;
    Real failureCa = 0;
    enum Governing { NONE, OPERATION, GASKET_SEATING, SMALL_END_HUB, FLANGE_RIGIDITY };
    Governing governing = NONE;
    Int failureRow = -1; // row of the failure table, -1 for none
};

// READ_FLANGE_RECORD and the rewrite of a loose reverse flange.
void REREAD(DRIVER_STATE& d);
// The same with FLANGE_INPUT_REPORT and SETTLE_ALLOWANCES between the two, so that the report shows the
// record's own type.
void REREAD_WITH_INPUT_REPORT(DRIVER_STATE& d);
// A kernel run; false after a fatal stop that returned.
bool RUN_KERNEL(DRIVER_STATE& d);
// Output 6 from the two pressures of the new and cold pass.
Real NEW_AND_COLD_PRESSURE(Real MAWPop, Real MAWPseat);

void FLANGE_CALC(FLANGE_ARGUMENTS& arguments);

// Flange state, failure table and all module values of the flange folder back to their state at load.
void RESET_FLANGE();

} // namespace tarvane
