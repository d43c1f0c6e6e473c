// Module switches that outlast a call: what the host sets, and what the calculations leave to one
// another. The G_ names that a host can reach directly are exported under their decorated names.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

// Exported variables, one name each; frame/exports defines them.
extern "C" {
extern std::int32_t FLAGS_mp_IINOSPECIAL;                  // 1: report in plain characters
extern std::int32_t FLAGS_mp_LBSAREA;                      // kept for the host
extern std::int32_t FLAGS_mp_LCHORD;                       // kept for the host
extern std::int32_t GLOBALS_mp_G_NUSE_TABLEG;              // 1: factor A from the Table G data
extern std::int32_t GLOBALS_mp_G_NUSE_CORRODEDK;           // kept for the host
extern std::int32_t GLOBALS_mp_G_NUSE_OLD_DIV_2;           // 1: Division 2 by the older rules
extern std::int32_t GLOBALS_mp_G_NUSE_CASE2286;            // 1: external pressure by Code Case 2286
extern std::int32_t METRICCONSTANTS_mp_G_NMETRIC_CONSTANT; // 0 inch, 1 metric code constants
}

namespace tarvane {

// Design codes, argument 13 of FLANGE_CALC and moduleCode.
inline constexpr Int ASME_VIII_1 = 1;
inline constexpr Int ASME_VIII_2 = 2;
inline constexpr Int PD_5500 = 3;
inline constexpr Int EN_13445 = 4;

// Views of a design code. A host may pass any number: for these one outside 1 to 4 is none of them,
constexpr bool asme_viii(Int code) { return code == ASME_VIII_1 || code == ASME_VIII_2; }
constexpr bool pd_or_en(Int code) { return code == PD_5500 || code == EN_13445; }
// and for these it counts with its neighbours.
constexpr bool up_to_asme_viii(Int code) { return code <= ASME_VIII_2; }
constexpr bool from_pd_5500(Int code) { return code >= PD_5500; }

inline Int& G_NUSE_OLD_DIV_2 = GLOBALS_mp_G_NUSE_OLD_DIV_2;
// Views of it. A number other than 0 and 1 is neither.
inline bool older_division_2() { return G_NUSE_OLD_DIV_2 == 1; }
inline bool present_division_2() { return G_NUSE_OLD_DIV_2 == 0; }

extern Int G_USE_A5; // read by SHLINT
extern Int G_USE_A6; // 1: the toughness routines may reduce the temperature, Fig. UCS-66.1
extern Int G_USE_A7; // not read

extern Int moduleCode;          // design code that the modulus and rigidity steps read
extern bool NEW_DIV_2_RULES;    // Division 2, 4.16 rules and labels
extern Int CODE_A98_ADDENDA;    // 1: Division 1 under its 1998 edition, A-98 addenda; else 0
extern Int G_FAILURE_CORROSION; // 1: run the failure corrosion loop
extern Int G_PER_ELEMENT_RATIO; // 1: stress ratio of the attached shell counts too
extern Int G_MATL_METRIC;       // material selectors: metric files,
extern Int G_FORCE_DIV1;        //   Division 1 forced,
extern Int G_OLD_EDITION;       //   1: the older Division 1 tables,
extern Int G_D2_CLASS;          //   Division 2 class,
extern Int G_MATL_YEAR;         //   edition index
extern bool G_CURRENT_DIV_2;    // toughness routines: Division 2 by the present rules

// Switches of the toughness routines, in the order of SET_TOUGHNESS_SWITCHES, which begins with
// G_USE_A6 and ends with G_CURRENT_DIV_2.
struct TOUGHNESS_SWITCHES {
    Int CurveTables = 0; // 1: curves of UCS-66 by table in place of the polynomials
    Int NoUg20f = 0;     // 1: UG-20(f) is refused
    Int MdmtSkip = 0;    // 1: the first required temperature is used
    Int FloorSwitch = 0; // 1: the floor of low stress ratios is armed
    Int Credit55 = 1;    // 1: lower limit of the heat treatment credit -155, else -55
};
extern TOUGHNESS_SWITCHES G_TOUGHNESS;

inline bool a98_addenda() { return CODE_A98_ADDENDA == 1; }
inline bool ReductionsAllowed() { return G_USE_A6 == 1; }

extern Text<8> CHART_NAME; // SET_CHART
extern Real CHART_YIELD;   // SET_YIELD

// The setup block: one-based element k is SETUP[k - 1]; element 1 is an INTEGER, those from
// 41 on are REAL.
union SETUP_ELEMENT {
    Int whole;
    Real real;
};
extern SETUP_ELEMENT SETUP[200];

inline Int setup_design_code() { return SETUP[0].whole; }
inline Real setup_real(Int element) { return SETUP[element - 1].real; }
inline Int setup_truncated(Int element) { return truncated(setup_real(element)); }

// Everything in this header back to its state at load, the exported variables included.
void RESET_SWITCHES();

} // namespace tarvane
