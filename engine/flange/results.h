// What the latest FLANGE_CALC found, for a host: values of the stages of the final pass. The layout is that
// of TARVANE_FLANGE_RESULTS, which describes each member.
#pragma once

#include "flange/state.h"
#include "openings/flat_head_openings.h"

namespace tarvane {

struct DRIVER_STATE; // driver.h

inline constexpr Int FLANGE_RESULTS_VERSION = 1;
inline constexpr Int MOST_MESSAGES = 50;

enum FLANGE_STATUS : Int { NOT_CALCULATED, CALCULATED, REFUSED, GAVE_UP, AREA_SHORT, STOPPED };

// What limits a pressure. A stress is coded by its place, plus the second or third of these.
inline constexpr Int HELD_BY_NOTHING = 0, BY_OPERATING_STRESS = 1, BY_SEATING_STRESS = 11;
inline constexpr Int BY_RIGIDITY = 20, BY_BOLTS = 21, BY_HUB = 22, BY_DEFLECTION = 23;
inline constexpr Int FAILED_ALREADY = 5; // failure_by beyond DRIVER_STATE::Governing

struct FLANGE_RESULTS {
    Int version, bytes, serial, status, fatal_code;

    Int code, module_code, new_div2_rules, a98, old_div2, type, kind;
    Int external, full_face, loose_reverse, non_circular, rigidity;

    Int evaluations, design_rounds, thickness_rounds, converged, modulus_status;

    Int messages, message[MOST_MESSAGES];
    Real message_value[MOST_MESSAGES];

    Real P, Peq, T, t_given, t_used, ci, ce, ct, E_cold, E_hot, kf;

    Real N, bo, b, G, b2, bPrime, bPart, N_min;

    Real H, Hd, Ht, Hp, HpPrime, HGY, HG, Wm1, Wm2, W, Am1, Am2, Am, Ab, Wext;

    Real hd, ht, hg, hgPrime, hgDouble;
    Real Md, Mt, Mg, Mr, Moe, Mop, Matm;

    Real bolt_spacing, bolt_spacing_min, bolt_spacing_max, radial, radial_min, edge, edge_min, CF;

    Real K, T_factor, U, Y, Z, Yr, Alphar, F, V, f, e, d, ho, hRatio, gRatio;
    Real alpha, beta, gamma, delta, lambda, I, Ip;

    StressTable stress, allowed, ratio;
    Int exceeded[2][PLACES];

    Real J_given[2], J_required[2];

    Real deflection, deflection_allowed, t_channel, C_cover, Z_cover;

    Real hub_required, hub_mawp, lap_required[2];

    Real t_required[2], t_edge, t_min, t_stress, t_rigid, t_req, t_req_new, t_req_new_cold;

    Real mawp_operating, mawp_seating;
    Int mawp_operating_by, mawp_seating_by;
    Real P_bolts, mawp, map_nc;
    Int mawp_by, map_nc_by;

    Real failure_ca;
    Int failure_by;

    Real weight_finished, weight_forging;

    Real shell_required, shell_mawp, shell_ratio, stress_ratio, pwht_thickness;

    Int openings;
    Real opening_factor;
    Int opening_violations, opening_rule[OPENING_RULES];
    Real opening_found[OPENING_RULES], opening_limit[OPENING_RULES];
};

extern FLANGE_RESULTS FOUND;

// ---- what the stages leave for the block ---------------------------------------------------------------

// How far a run of the kernel got.
enum KERNEL_STAGE : Int {
    AT_ENTRY,
    AT_LOADS,
    AT_BOLTING,
    AT_ARMS,
    AT_MOMENTS,
    AT_FACTORS,
    AT_STRESSES,
    AT_END
};

// Values that the state does not keep, or not as the stresses used them: reset in each run of the
// kernel.
inline constexpr Int SEARCH_CONVERGED = 1, SEARCH_USED_UP = 0, SEARCH_LEFT = -1;
struct KERNEL_NOTES {
    KERNEL_STAGE stage = AT_ENTRY;
    bool rated = false;
    Int evaluations = 0, designRounds = 0, thicknessRounds = 0, converged = SEARCH_CONVERGED;
    Int modulusSource = 0;
    Real t = NO_VALUE;
    Real N = NO_VALUE, bo = NO_VALUE, Nmin = NO_VALUE;
    Real Mop = NO_VALUE, Matm = NO_VALUE;
    Real CF = NO_VALUE, Deltab = NO_VALUE, BsMax = NO_VALUE, Ractual = NO_VALUE, Eactual = NO_VALUE;
    Real deflectionAllowed = NO_VALUE;
    Real tCover[2] = {NO_VALUE, NO_VALUE}, tEdge = NO_VALUE;
    Real tStress = NO_VALUE, tRigid = NO_VALUE;
};
extern KERNEL_NOTES NOTED;

// ---- filling it ----------------------------------------------------------------------------------------

void BEGIN_RESULTS(const DRIVER_STATE& d);
// A message of the input check, with its value in report units.
void NOTE_MESSAGE(Int number, Real value);
// The run is to end: noted before the host is called, which may not return.
void NOTE_STOP(Int fatalCode);
void NOTE_OPENINGS(const OPENINGS_CALL& call);
void NOTE_LAP(Real operating, Real seating);
// What limits a pressure that is one of the two of the latest run of the kernel.
Int HELD_BY(const RATING_STATE& s, Real pressure);
// The state after the run of the kernel that the report shows.
void KEEP_FINAL_PASS(const FLANGE_STATE& s);
// What FLANGE_CALC returns, and how it ended.
void CLOSE_RESULTS(const DRIVER_STATE& d);

// All zeros but for version and bytes.
void RESET_RESULTS();

} // namespace tarvane
