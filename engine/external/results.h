// What the last SHLEXT found, for a host: method, chart and curve, values of each stage, what limited them.
// The layout is that of TARVANE_EXTERNAL_RESULTS.
#pragma once

#include "frame/types.h"

#include <cstdint>

namespace tarvane {

enum EXTERNAL_STATUS : Int { EXTERNAL_NOT_RUN, EXTERNAL_CALCULATED, EXTERNAL_NO_CODE };

enum EXTERNAL_METHOD : Int { NO_METHOD, BY_CHART, BY_BUCKLING_STRESS, AS_FLAT_HEAD };

enum EXTERNAL_RULES : Int {
    NO_RULES,
    BY_UG_28,     // cylinder by the charts
    BY_UG_33,     //   any other
    BY_AD_300,    // older Division 2 by the charts
    BY_CASE_2286, // Code Case 2286
    BY_DIV2_4_4,  // Division 2, 4.4
    BY_UG_34,     // flat cone
};

// Factor A.
enum A_SOURCE : Int { NO_A, A_OF_TABLE_G, A_OF_CYLINDER, A_OF_SPHERE };

// Factor B, and the same of the stress that buckles.
enum B_SOURCE : Int { NO_B, B_ELASTIC, B_OF_CURVE, B_AT_END };
enum FIC_SOURCE : Int { NO_FIC, FIC_ELASTIC, FIC_INELASTIC, FIC_YIELD };

// Which of its two pressures holds for a thick cylinder.
enum THICK_LIMIT : Int { NOT_THICK, THICK_BY_B, THICK_BY_STRESS };

// How a search ended.
enum SEARCH_END : Int { NO_SEARCH, SEARCH_FOUND, SEARCH_USED_UP, SEARCH_AT_LIMIT };

// What ends the corrosion.
enum EXTERNAL_FAILURE : Int { NO_FAILURE, BY_REQUIRED_THICKNESS, BY_UG_16 };

// Index of the values: EXTERNAL_STAGE less one.
inline constexpr Int EXTERNAL_STAGES = 3;
inline constexpr Int CHART_COLUMNS = 8;

struct EXTERNAL_RESULTS {
    Int version, bytes, serial;
    Int status; // EXTERNAL_STATUS
    Int code, older_division_2, case_2286, table_g;
    Int method, rules;
    Int element, outside;
    char chart[CHART_COLUMNS], chart_taken[CHART_COLUMNS];
    Int carbon_steel, above_chart, modulus_status;

    Real p, temp, temp_curve, modulus, s, sy;
    Real tc, cos_alpha, d_o, d_small, k0;

    Int evaluations[EXTERNAL_STAGES], search[EXTERNAL_STAGES];
    Int a_by[EXTERNAL_STAGES], b_by[EXTERNAL_STAGES], thick_by[EXTERNAL_STAGES];
    Int fic_by[EXTERNAL_STAGES];
    Real thickness[EXTERNAL_STAGES], diameter[EXTERNAL_STAGES], length[EXTERNAL_STAGES];
    Real d_over_t[EXTERNAL_STAGES], l_over_d[EXTERNAL_STAGES];
    Real factor_a[EXTERNAL_STAGES], factor_b[EXTERNAL_STAGES];
    Real fhe[EXTERNAL_STAGES], fic[EXTERNAL_STAGES], fs[EXTERNAL_STAGES], fha[EXTERNAL_STAGES];
    Real pressure[EXTERNAL_STAGES];

    Real maep, tca, slen;
    Real t_least, fail_ca;
    Int fail_ca_by; // EXTERNAL_FAILURE
};
inline constexpr Int EXTERNAL_RESULTS_VERSION = 1;

constexpr EXTERNAL_RESULTS external_results_at_load() {
    EXTERNAL_RESULTS r{};
    r.version = EXTERNAL_RESULTS_VERSION;
    r.bytes = static_cast<Int>(sizeof(EXTERNAL_RESULTS));
    return r;
}

// The block before any stage has run.
constexpr EXTERNAL_RESULTS external_results_begun() {
    EXTERNAL_RESULTS r = external_results_at_load();
    for (Int i = 0; i < CHART_COLUMNS; ++i)
        r.chart[i] = r.chart_taken[i] = ' ';
    r.p = r.temp = r.temp_curve = r.modulus = r.s = r.sy = NO_VALUE;
    r.tc = r.cos_alpha = r.d_o = r.d_small = r.k0 = NO_VALUE;
    for (Int i = 0; i < EXTERNAL_STAGES; ++i) {
        r.thickness[i] = r.diameter[i] = r.length[i] = r.d_over_t[i] = r.l_over_d[i] = NO_VALUE;
        r.factor_a[i] = r.factor_b[i] = r.pressure[i] = NO_VALUE;
        r.fhe[i] = r.fic[i] = r.fs[i] = r.fha[i] = NO_VALUE;
    }
    r.maep = r.tca = r.slen = r.t_least = r.fail_ca = NO_VALUE;
    return r;
}

inline constexpr EXTERNAL_RESULTS EXTERNAL_RESULTS_AT_LOAD = external_results_at_load();
inline constexpr EXTERNAL_RESULTS EXTERNAL_RESULTS_BEGUN = external_results_begun();

extern EXTERNAL_RESULTS EXTERNAL_FOUND;

// Start of a calculation: all but the serial number is reset.
inline void BEGIN_EXTERNAL_RESULTS() {
    const auto serial = static_cast<std::uint32_t>(EXTERNAL_FOUND.serial) + 1u;
    EXTERNAL_FOUND = EXTERNAL_RESULTS_BEGUN;
    EXTERNAL_FOUND.serial = static_cast<Int>(serial);
}

} // namespace tarvane
