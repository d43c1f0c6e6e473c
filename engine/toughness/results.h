// How the last metal temperature was found, for a host: rules, values of the stages, what governed. The
// layout is that of TARVANE_MDMT_RESULTS.
#pragma once

#include "frame/types.h"

#include <cstdint>

namespace tarvane {

enum MDMT_STATUS : Int { MDMT_NOT_RUN, MDMT_CALCULATED, MDMT_BEYOND_LIMIT, MDMT_NO_CURVE };

enum MDMT_RULES : Int { NO_MDMT_RULES, BY_UCS_66, BY_AM_218, BY_DIV2_3_11, BY_UHA_51 };

// Where the temperature before reductions came from.
enum TEMPERATURE_SOURCE : Int {
    NO_SOURCE,
    OF_POLYNOMIAL,    // curve of Fig. UCS-66
    OF_CURVE_TABLE,   //   as a table
    OF_FIGURE_3_7,    // Division 2, not heat treated
    OF_FIGURE_3_8,    //   heat treated
    OF_LOW_RATIO,     // the figures are not used
    AS_REQUIRED,      // an impact tested element is tested at the temperature that it needs
    OF_SPECIFICATION, // impact test of the material
    OF_USER,          //   of the element
    OF_UHA_51,
};

// Why UG-20(f) applies or does not.
enum UG20F_ANSWER : Int {
    UG20F_NOT_ASKED,
    UG20F_APPLIES,
    UG20F_SWITCHED_OFF,
    UG20F_TOO_THICK,
    UG20F_TOO_HOT,
    UG20F_NO_LOWER,
    UG20F_IMPACT_TESTED,
};

enum EXEMPTION : Int {
    NOT_EXEMPT,
    EXEMPT_BY_RATIO,
    EXEMPT_BY_CURVE,
    EXEMPT_NO_CARBON_STEEL,
    EXEMPT_BY_UHA_51,
};

// What the lowest temperature is by.
enum LOWEST_BY : Int {
    LOWEST_BY_NOTHING,
    LOWEST_BY_CURVE,
    LOWEST_BY_CREDIT,
    LOWEST_BY_REDUCTION,
    LOWEST_BY_UG_20F,
    LOWEST_BY_IMPACT_TEST,
    LOWEST_AS_REQUIRED,
    LOWEST_BY_LOW_RATIO,
    LOWEST_BY_UHA_51,
};

struct MDMT_RESULTS {
    Int version, bytes, serial;
    Int status, rules; // MDMT_STATUS, MDMT_RULES
    Int code, element, curve, curve_taken;
    Int older_edition, reductions_allowed, pad_governs;
    Int t_curve_by; // TEMPERATURE_SOURCE

    Real required, tg, tg_net, tg_limit;
    Real t_curve;

    Int ratio_kind; // MDMT_CALL::no_ratio and so on
    Real t_ratio, ratio, ratio_limit, estar_used;
    Real reduction_by_ratio, reduction_66g, reduction_ug84, reduction;

    Int credit;
    Int ug20f; // UG20F_ANSWER
    Real t_ug20f;

    Int pwht_required, impact_tests, exempt; // EXEMPTION
    Real impact_temperature;

    Real t_min, mdmt, lowest;
    Int lowest_by;
};
inline constexpr Int MDMT_RESULTS_VERSION = 1;

constexpr MDMT_RESULTS mdmt_results_at_load() {
    MDMT_RESULTS r{};
    r.version = MDMT_RESULTS_VERSION;
    r.bytes = static_cast<Int>(sizeof(MDMT_RESULTS));
    return r;
}

// The block before any stage has run.
constexpr MDMT_RESULTS mdmt_results_begun() {
    MDMT_RESULTS r = mdmt_results_at_load();
    r.required = r.tg = r.tg_net = r.tg_limit = r.t_curve = NO_VALUE;
    r.t_ratio = r.ratio = r.ratio_limit = r.estar_used = NO_VALUE;
    r.reduction_by_ratio = r.reduction_66g = r.reduction_ug84 = r.reduction = NO_VALUE;
    r.t_ug20f = r.impact_temperature = r.t_min = r.mdmt = r.lowest = NO_VALUE;
    return r;
}

inline constexpr MDMT_RESULTS MDMT_RESULTS_AT_LOAD = mdmt_results_at_load();
inline constexpr MDMT_RESULTS MDMT_RESULTS_BEGUN = mdmt_results_begun();

extern MDMT_RESULTS MDMT_FOUND;

// Start of a calculation: all but the serial number is reset.
inline void BEGIN_MDMT_RESULTS() {
    const auto serial = static_cast<std::uint32_t>(MDMT_FOUND.serial) + 1u;
    MDMT_FOUND = MDMT_RESULTS_BEGUN;
    MDMT_FOUND.serial = static_cast<Int>(serial);
}
inline void RESET_MDMT_RESULTS() { MDMT_FOUND = MDMT_RESULTS_AT_LOAD; }

} // namespace tarvane
