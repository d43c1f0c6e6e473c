// Impact test temperatures that the user entered, and the reductions that impact testing brings.
#pragma once

#include "frame/types.h"

#include <string_view>

namespace tarvane {

// Switches of the impact table, off at load.
struct IMPACT_SWITCHES {
    bool Ucs66g = false;    // reduction of UCS-66(g)
    bool Ucs66_1 = false;   // reduction of Fig. UCS-66.1
    bool Ug84 = false;      // reduction of UG-84(b)(2)
    bool UserTable = false; // temperatures entered by the user
};
extern IMPACT_SWITCHES G_IMPACT;

// Switches, lists and the single name from the host's input record.
void READ_IMPACT_TABLE();

// Temperature that the user gave for a name: of list 1, 2 or 3 by Kind, or the single name of Kind 4.
// 100.0 when there is none or the user's table is off.
void IMPACT_TEST_TEMPERATURE(std::string_view Name, Real& T, Int Kind);

// UG-84(b)(2): 10 F up to a yield strength of 40 ksi, 5 F below 55 ksi; 0 with the user's table off.
void UG84_REDUCTION(Real& R, Real V);

// True when the host's record gives the element, 1 to 32, a required temperature of its own.
bool LIS_ELEMENT_HAS_OWN_MDMT(Int Element);

// The record is of the version that knows required temperatures by element.
bool knows_own_temperatures();

void RESET_IMPACT_TABLE();

} // namespace tarvane
