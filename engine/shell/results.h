// What the last SHLINT found, for a host: which formula was taken, what limited it, values of the stages.
// The layout is that of TARVANE_SHELL_RESULTS.
#pragma once

#include "frame/types.h"
#include "openings/flat_head_openings.h"

#include <string_view>

namespace tarvane {

enum SHELL_FORMULA : Int {
    NO_FORMULA = 0,
    UG_27_C_1,   // cylinder, inside
    APP_1_1_A_1, //   outside
    APP_1_2_A_1, //   thick
    UG_27_D,     // sphere, inside
    APP_1_1_A_2, //   outside
    APP_1_3,     //   thick
    UG_32_D,     // 2:1 elliptical head, inside
    APP_1_4_C,   //   any other elliptical head
    APP_1_4_D,   // torispherical head
    UG_32_G,     // cone, inside
    APP_1_4_E,   //   outside
    UG_34_C_2,   // circular flat head
    UG_34_C_3,   //   of two spans
    AD_204,      // formed head by the older Division 2
};
// "UG-27 (c)(1)", as a formula line shows it.
std::string_view RULE_OF(Int formula);

enum SHELL_LIMIT : Int {
    BY_NOTHING = 0,
    BY_FORMULA = 1,         // of the shell, the crown or the plate
    BY_KNUCKLE = 2,         // of a cone, or of a head by AD-204
    BY_APP_1_4F = 3,        // thin formed head
    BY_LEAST_THICKNESS = 4, // UG-16(b)
    BY_SERVICE = 5,         //   by the service
};

enum SHELL_STATUS : Int { SHELL_NOT_RUN = 0, SHELL_CALCULATED = 1, SHELL_NO_ELEMENT = 2 };

// Why Appendix 1-4(f) was not evaluated, added up.
enum SHELL_LACK : Int { LACKS_YIELD = 1, LACKS_MODULI = 2, SKIPPED = 4 };

struct SHELL_RESULTS {
    Int version, bytes, serial;
    Int status; // SHELL_STATUS
    Int element, outside, older_division_2;
    Int formula; // SHELL_FORMULA
    Int thick;   // by the thickness 1, by the pressure 2, both 3
    Int knuckle; // of a cone
    Int openings;
    Int thin, thin_new; // formed head, up to 0.002 of its crown radius
    Int evaluated_14f;  // Appendix 1-4(f)
    Int lacks_14f;      //   SHELL_LACK
    Int t_status_14f, mawp_status_14f, map_nc_status_14f; // HEAD_CLASS
    Int t_by, mawp_by, map_nc_by, stress_by;              // SHELL_LIMIT
    Real tc;                                              // thickness less allowances
    Real t_req_raw, t_least, t_req, t_14f, t_governing, t_required;
    Real mawp, map_nc, stress;
    Real mawp_formula, map_nc_formula, stress_formula;
    Real mawp_knuckle, map_nc_knuckle, stress_knuckle;
    Real mawp_14f, map_nc_14f;
    Real t_crown, t_knuckle; // AD-204
    Real crown_radius, ratio, ratio_new, modulus_design, modulus_ambient;
    Real attachment_factor, spacing_factor, shape_factor, span; // flat head
    Int opening_violations, opening_rule[OPENING_RULES];
    Real opening_found[OPENING_RULES], opening_limit[OPENING_RULES];
};
inline constexpr Int SHELL_RESULTS_VERSION = 1;

constexpr SHELL_RESULTS shell_results_at_load() {
    SHELL_RESULTS r{};
    r.version = SHELL_RESULTS_VERSION;
    r.bytes = static_cast<Int>(sizeof(SHELL_RESULTS));
    return r;
}

// The block before any stage has run.
constexpr SHELL_RESULTS shell_results_begun() {
    SHELL_RESULTS r = shell_results_at_load();
    r.tc = r.t_req_raw = r.t_least = r.t_req = r.t_14f = r.t_governing = r.t_required = NO_VALUE;
    r.mawp = r.map_nc = r.stress = NO_VALUE;
    r.mawp_formula = r.map_nc_formula = r.stress_formula = NO_VALUE;
    r.mawp_knuckle = r.map_nc_knuckle = r.stress_knuckle = NO_VALUE;
    r.mawp_14f = r.map_nc_14f = r.t_crown = r.t_knuckle = NO_VALUE;
    r.crown_radius = r.ratio = r.ratio_new = r.modulus_design = r.modulus_ambient = NO_VALUE;
    r.attachment_factor = r.spacing_factor = r.shape_factor = r.span = NO_VALUE;
    for (Int i = 0; i < OPENING_RULES; ++i)
        r.opening_found[i] = r.opening_limit[i] = NO_VALUE;
    return r;
}

inline constexpr SHELL_RESULTS SHELL_RESULTS_AT_LOAD = shell_results_at_load();
inline constexpr SHELL_RESULTS SHELL_RESULTS_BEGUN = shell_results_begun();

extern SHELL_RESULTS SHELL;

// Start of a calculation: all but the serial number is reset.
inline void BEGIN_SHELL_RESULTS() {
    const auto serial = static_cast<std::uint32_t>(SHELL.serial) + 1u;
    SHELL = SHELL_RESULTS_BEGUN;
    SHELL.serial = static_cast<Int>(serial);
}
void RESET_SHELL_RESULTS();

} // namespace tarvane
