// The exported blocks of results.
#include "frame/exports/exports.h"

#include "flange/results.h"
#include "materials/modulus.h"

#include <cstddef>

// The header's numbers are the engine's.
namespace {
constexpr bool same(int ours, int theirs) { return ours == theirs; }
} // namespace
static_assert(same(TARVANE_FLANGE_RESULTS_VERSION, tarvane::FLANGE_RESULTS_VERSION));
static_assert(same(TARVANE_MOST_MESSAGES, tarvane::MOST_MESSAGES));
static_assert(same(TARVANE_STRESS_PLACES, tarvane::PLACES));
static_assert(same(TARVANE_OPENING_RULES, tarvane::OPENING_RULES));
static_assert(same(TARVANE_NOT_CALCULATED, tarvane::NOT_CALCULATED));
static_assert(same(TARVANE_CALCULATED, tarvane::CALCULATED));
static_assert(same(TARVANE_REFUSED, tarvane::REFUSED));
static_assert(same(TARVANE_DESIGN_GAVE_UP, tarvane::GAVE_UP));
static_assert(same(TARVANE_BOLT_AREA_SHORT, tarvane::AREA_SHORT));
static_assert(same(TARVANE_STOPPED, tarvane::STOPPED));
static_assert(same(TARVANE_MODULUS_OF_TABLE, tarvane::OF_TABLE));
static_assert(same(TARVANE_MODULUS_OF_CHART, tarvane::OF_CHART));
static_assert(same(TARVANE_MODULUS_BEYOND_CHART, tarvane::CHART_EXCEEDED));
static_assert(same(TARVANE_MODULUS_CARBON_STEEL, tarvane::CARBON_STEEL));
static_assert(same(TARVANE_NO_MODULUS, tarvane::NO_MODULUS));
static_assert(same(TARVANE_HUB_STRESS, tarvane::HUB));
static_assert(same(TARVANE_BOLT_STRESS, tarvane::BOLTING));
static_assert(same(TARVANE_FULL_FACE_STRESS, tarvane::FULL_FACE));
static_assert(same(TARVANE_OPERATING, tarvane::OPERATING));
static_assert(same(TARVANE_BY_OPERATING_STRESS, tarvane::BY_OPERATING_STRESS));
static_assert(same(TARVANE_BY_SEATING_STRESS, tarvane::BY_SEATING_STRESS));
static_assert(same(TARVANE_BY_RIGIDITY, tarvane::BY_RIGIDITY));
static_assert(same(TARVANE_BY_BOLTS, tarvane::BY_BOLTS));
static_assert(same(TARVANE_BY_HUB, tarvane::BY_HUB));
static_assert(same(TARVANE_BY_DEFLECTION, tarvane::BY_DEFLECTION));
static_assert(same(TARVANE_FAILED_ALREADY, tarvane::FAILED_ALREADY));
static_assert(same(TARVANE_OPENINGS_IN_VIOLATION, tarvane::OPENINGS_FOUND::IN_VIOLATION));
static_assert(same(TARVANE_OPENING_D2_AT_EDGE, tarvane::OPENINGS_FOUND::D2_AT_EDGE));

// Host and engine see the block in one layout: each member is one or several words of four bytes.
static_assert(sizeof(TARVANE_FLANGE_RESULTS) == sizeof(tarvane::FLANGE_RESULTS));
#define SAME(member)                                                                               \
    static_assert(offsetof(TARVANE_FLANGE_RESULTS, member) ==                                      \
                  offsetof(tarvane::FLANGE_RESULTS, member));
// clang-format off
SAME(version) SAME(bytes) SAME(serial) SAME(status) SAME(fatal_code) SAME(code) SAME(module_code)
SAME(new_div2_rules) SAME(a98) SAME(old_div2) SAME(type) SAME(kind) SAME(external) SAME(full_face)
SAME(loose_reverse) SAME(non_circular) SAME(rigidity) SAME(evaluations) SAME(design_rounds)
SAME(thickness_rounds) SAME(converged) SAME(modulus_status) SAME(messages) SAME(message)
SAME(message_value) SAME(P) SAME(Peq) SAME(T) SAME(t_given) SAME(t_used) SAME(ci) SAME(ce) SAME(ct)
SAME(E_cold) SAME(E_hot) SAME(kf) SAME(N) SAME(bo) SAME(b) SAME(G) SAME(b2) SAME(bPrime) SAME(bPart)
SAME(N_min) SAME(H) SAME(Hd) SAME(Ht) SAME(Hp) SAME(HpPrime) SAME(HGY) SAME(HG) SAME(Wm1) SAME(Wm2)
SAME(W) SAME(Am1) SAME(Am2) SAME(Am) SAME(Ab) SAME(Wext) SAME(hd) SAME(ht) SAME(hg) SAME(hgPrime)
SAME(hgDouble) SAME(Md) SAME(Mt) SAME(Mg) SAME(Mr) SAME(Moe) SAME(Mop) SAME(Matm) SAME(bolt_spacing)
SAME(bolt_spacing_min) SAME(bolt_spacing_max) SAME(radial) SAME(radial_min) SAME(edge) SAME(edge_min)
SAME(CF) SAME(K) SAME(T_factor) SAME(U) SAME(Y) SAME(Z) SAME(Yr) SAME(Alphar) SAME(F) SAME(V) SAME(f)
SAME(e) SAME(d) SAME(ho) SAME(hRatio) SAME(gRatio) SAME(alpha) SAME(beta) SAME(gamma) SAME(delta)
SAME(lambda) SAME(I) SAME(Ip) SAME(stress) SAME(allowed) SAME(ratio) SAME(exceeded) SAME(J_given)
SAME(J_required) SAME(deflection) SAME(deflection_allowed) SAME(t_channel) SAME(C_cover) SAME(Z_cover)
SAME(hub_required) SAME(hub_mawp) SAME(lap_required) SAME(t_required) SAME(t_edge) SAME(t_min)
SAME(t_stress) SAME(t_rigid) SAME(t_req) SAME(t_req_new) SAME(t_req_new_cold) SAME(mawp_operating)
SAME(mawp_seating) SAME(mawp_operating_by) SAME(mawp_seating_by) SAME(P_bolts) SAME(mawp) SAME(map_nc)
SAME(mawp_by) SAME(map_nc_by) SAME(failure_ca) SAME(failure_by) SAME(weight_finished)
SAME(weight_forging) SAME(shell_required) SAME(shell_mawp) SAME(shell_ratio) SAME(stress_ratio)
SAME(pwht_thickness) SAME(openings) SAME(opening_factor) SAME(opening_violations) SAME(opening_rule)
SAME(opening_found) SAME(opening_limit)
// clang-format on
#undef SAME

                                                                                    extern "C" {

    TARVANE_FLANGE_RESULTS* TARVANE_CALL GETFLANGERESULTS(void) {
        return reinterpret_cast<TARVANE_FLANGE_RESULTS*>(&tarvane::FOUND);
    }

    void TARVANE_CALL MODULUS_STATUS(int32_t * status) { *status = tarvane::MODULUS_CAME; }

} // extern "C"
