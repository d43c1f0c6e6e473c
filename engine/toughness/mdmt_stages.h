// Paths of MDMT_ELEMENT, and the stages that they share.
#pragma once

#include "toughness/mdmt.h"
#include "toughness/results.h"

namespace tarvane {

inline constexpr Real COLDEST = -155.0f; // no element goes below
inline constexpr Real COLD = -55.0f;     // nor below this, unless its stress ratio is low

void MDMT_UCS66(MDMT_CALL& a);         // Division 1, curves 1 to 5
void MDMT_IMPACT_TESTED(MDMT_CALL& a); //   its end for curve 5
void MDMT_AM218(MDMT_CALL& a);         // old Division 2

// Temperature reduction by the ratio: Fig. UCS-66.1 (edition 1: the one before 1999) and AM-218.3.
Real FIG_UCS_66_1(Real Ratio, Int Edition);
Real FIG_AM_218_3(Real Ratio);

void UCS66_RATIO_LINES(const MDMT_CALL& a);

void COUNT_WARNING(MDMT_CALL& a);
// Ratio and reduction of a pad, no reduction where none is allowed; Mdmt by what remains.
void TAKE_REDUCTION(MDMT_CALL& a);
// -55 F, unless the ratio is at most Lim.
void LIMIT_WITHOUT_LOW_RATIO(MDMT_CALL& a);
// Floor of low ratios, when the switch is armed. The edition is that of the latest UCS-66 pass.
void MDMT_RATIO_FLOOR(MDMT_CALL& a);
// The element is heat treated and may take the credit.
bool CREDIT_TAKEN(const MDMT_CALL& a);

// The results, at the end of a path: the ratio with its reduction, and the temperatures, where Tmin is
// by one rule and Mdmt by the ratio.
void NOTE_RATIO(const MDMT_CALL& a);
void NOTE_TEMPERATURES(const MDMT_CALL& a, LOWEST_BY by);
void NOTE_TESTED_AS_REQUIRED(const MDMT_CALL& a);
// The lowest temperature so far, unless a lower one was noted or this one was not computed.
void NOTE_LOWEST(Real T, LOWEST_BY by);

// Mdmt under a label when it is below Tmin.
void LOWERED_LINE(const MDMT_CALL& a, std::string_view label);
void IMPACT_TESTED_MATERIAL_LINES(Real Tmin);
void IMPACT_TESTED_ELEMENT_NOTE();
void USER_TEMPERATURE_LINE(Real Tmin);

} // namespace tarvane
