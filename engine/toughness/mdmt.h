// Minimum design metal temperature of one element: UCS-66 of Division 1, AM-218 of the old Division 2,
// or the figures of the newer Division 2. Temperatures in F, lengths in inches.
#pragma once

#include "frame/types.h"

#include <string_view>

namespace tarvane {

inline constexpr Real NO_TEMPERATURE = 1.0101f;     // a temperature that was not computed
inline constexpr Real UG20_NOT_APPLICABLE = 650.0f; // Tug20 where UG-20(f) does not apply

struct MDMT_CALL {
    Int Curve = 0;         // 1 to 4: A to D; 5: specified impact temperature; 6: exempt
    Real Tg = 0.0f;        // governing thickness
    Real Tmin = 0.0f;      // out: minimum temperature from the curve
    Real Mdmt = 0.0f;      // out: temperature after reductions
    Real Tug20 = 0.0f;     // out: temperature of UG-20(f); 650.0 when it does not apply
    Real Estar = 0.0f;     // joint efficiency for the ratio
    Real c = 0.0f;         // corrosion allowance
    Real Tdesign = 0.0f;   // design temperature
    Real Tr = 0.0f;        // required thickness; zero or negative: minus the pressure ratio
    Int Warnings = 0;      // in/out: counts UG-20(f) and mandatory notes
    Int Code = 0;          // 2: AM-218, others: UCS-66
    Real Ratio = 0.0f;     // out: thickness or stress ratio, -1.0 none; in with PadGoverns 1
    Int Pwht = 0;          // 1: heat treated
    Int Credit = 0;        // 1: the credit of UCS-68(c) may be taken
    Real Cext = 0.0f;      // external corrosion allowance
    Int Ug20Candidate = 0; // 1: UG-20(f) may be used
    Real Sy = 0.0f;        // yield stress, psi
    Real EstarUsed = 0.0f; // out: Estar as used; negative: heat treatment required (UCS-68(b))
    std::string_view Spec; // material
    Int Index = 0;         //   and its reference number
    Int Kind = 0;          // list of IMPACT_TEST_TEMPERATURE
    Real Reduction = 0.0f; // in/out: temperature reduction
    Int PadGoverns = 0;    // 1: the reinforcing pad governs; Ratio and Reduction come with it
    Real TgSr = 0.0f;      // thickness for the ratio when above 0.001, else Tg
    Int Element = 0;       // element, for its required temperature

    // Working values.
    Real Trequired = 0.0f;                     // required temperature
    Real padRatio = 0.0f, padReduction = 0.0f; // Ratio and Reduction as given
    enum { no_ratio, thickness_ratio, stress_ratio } ratioKind = no_ratio;
    Real Lim = 0.0f;      // ratio up to which -55 F is no limit
    bool floored = false; // Mdmt is the floor of low ratios
};

void MDMT_ELEMENT(MDMT_CALL& call);

} // namespace tarvane
