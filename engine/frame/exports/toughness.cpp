// The exported routines of toughness: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "toughness/impact_table.h"
#include "toughness/material_notes.h"
#include "toughness/mdmt.h"
#include "toughness/mdmt_div2.h"
#include "toughness/results.h"

#include <cstddef>

using tarvane::text_of;

// The header's numbers are the engine's.
namespace {
constexpr bool same(int ours, int theirs) { return ours == theirs; }
} // namespace
static_assert(same(TARVANE_MDMT_NOT_RUN, tarvane::MDMT_NOT_RUN));
static_assert(same(TARVANE_MDMT_CALCULATED, tarvane::MDMT_CALCULATED));
static_assert(same(TARVANE_MDMT_BEYOND_LIMIT, tarvane::MDMT_BEYOND_LIMIT));
static_assert(same(TARVANE_MDMT_NO_CURVE, tarvane::MDMT_NO_CURVE));
static_assert(same(TARVANE_MDMT_UCS_66, tarvane::BY_UCS_66));
static_assert(same(TARVANE_MDMT_AM_218, tarvane::BY_AM_218));
static_assert(same(TARVANE_MDMT_3_11, tarvane::BY_DIV2_3_11));
static_assert(same(TARVANE_MDMT_UHA_51, tarvane::BY_UHA_51));
static_assert(same(TARVANE_T_OF_POLYNOMIAL, tarvane::OF_POLYNOMIAL));
static_assert(same(TARVANE_T_OF_CURVE_TABLE, tarvane::OF_CURVE_TABLE));
static_assert(same(TARVANE_T_OF_FIGURE_3_7, tarvane::OF_FIGURE_3_7));
static_assert(same(TARVANE_T_OF_FIGURE_3_8, tarvane::OF_FIGURE_3_8));
static_assert(same(TARVANE_T_OF_LOW_RATIO, tarvane::OF_LOW_RATIO));
static_assert(same(TARVANE_T_AS_REQUIRED, tarvane::AS_REQUIRED));
static_assert(same(TARVANE_T_OF_SPECIFICATION, tarvane::OF_SPECIFICATION));
static_assert(same(TARVANE_T_OF_USER, tarvane::OF_USER));
static_assert(same(TARVANE_T_OF_UHA_51, tarvane::OF_UHA_51));
static_assert(same(TARVANE_UG20F_NOT_ASKED, tarvane::UG20F_NOT_ASKED));
static_assert(same(TARVANE_UG20F_APPLIES, tarvane::UG20F_APPLIES));
static_assert(same(TARVANE_UG20F_SWITCHED_OFF, tarvane::UG20F_SWITCHED_OFF));
static_assert(same(TARVANE_UG20F_TOO_THICK, tarvane::UG20F_TOO_THICK));
static_assert(same(TARVANE_UG20F_TOO_HOT, tarvane::UG20F_TOO_HOT));
static_assert(same(TARVANE_UG20F_NO_LOWER, tarvane::UG20F_NO_LOWER));
static_assert(same(TARVANE_UG20F_IMPACT_TESTED, tarvane::UG20F_IMPACT_TESTED));
static_assert(same(TARVANE_EXEMPT_BY_RATIO, tarvane::EXEMPT_BY_RATIO));
static_assert(same(TARVANE_EXEMPT_BY_CURVE, tarvane::EXEMPT_BY_CURVE));
static_assert(same(TARVANE_EXEMPT_NO_CARBON_STEEL, tarvane::EXEMPT_NO_CARBON_STEEL));
static_assert(same(TARVANE_EXEMPT_BY_UHA_51, tarvane::EXEMPT_BY_UHA_51));
static_assert(same(TARVANE_LOWEST_BY_CURVE, tarvane::LOWEST_BY_CURVE));
static_assert(same(TARVANE_LOWEST_BY_CREDIT, tarvane::LOWEST_BY_CREDIT));
static_assert(same(TARVANE_LOWEST_BY_REDUCTION, tarvane::LOWEST_BY_REDUCTION));
static_assert(same(TARVANE_LOWEST_BY_UG_20F, tarvane::LOWEST_BY_UG_20F));
static_assert(same(TARVANE_LOWEST_BY_IMPACT_TEST, tarvane::LOWEST_BY_IMPACT_TEST));
static_assert(same(TARVANE_LOWEST_AS_REQUIRED, tarvane::LOWEST_AS_REQUIRED));
static_assert(same(TARVANE_LOWEST_BY_LOW_RATIO, tarvane::LOWEST_BY_LOW_RATIO));
static_assert(same(TARVANE_LOWEST_BY_UHA_51, tarvane::LOWEST_BY_UHA_51));
static_assert(same(TARVANE_NO_RATIO, tarvane::MDMT_CALL::no_ratio));
static_assert(same(TARVANE_THICKNESS_RATIO, tarvane::MDMT_CALL::thickness_ratio));
static_assert(same(TARVANE_STRESS_RATIO, tarvane::MDMT_CALL::stress_ratio));

// The block of results is the engine's own.
static_assert(same(TARVANE_MDMT_RESULTS_VERSION, tarvane::MDMT_RESULTS_VERSION));
static_assert(sizeof(TARVANE_MDMT_RESULTS) == sizeof(tarvane::MDMT_RESULTS));
#define SAME(member)                                                                               \
    static_assert(offsetof(TARVANE_MDMT_RESULTS, member) == offsetof(tarvane::MDMT_RESULTS, member))
// clang-format off
SAME(version); SAME(bytes); SAME(serial); SAME(status); SAME(rules); SAME(code); SAME(element);
SAME(curve); SAME(curve_taken); SAME(older_edition); SAME(reductions_allowed); SAME(pad_governs);
SAME(t_curve_by); SAME(required); SAME(tg); SAME(tg_net); SAME(tg_limit); SAME(t_curve);
SAME(ratio_kind); SAME(t_ratio); SAME(ratio); SAME(ratio_limit); SAME(estar_used);
SAME(reduction_by_ratio); SAME(reduction_66g); SAME(reduction_ug84); SAME(reduction);
SAME(credit); SAME(ug20f); SAME(t_ug20f); SAME(pwht_required); SAME(impact_tests); SAME(exempt);
SAME(impact_temperature); SAME(t_min); SAME(mdmt); SAME(lowest); SAME(lowest_by);
// clang-format on
#undef SAME

extern "C" {

void TARVANE_CALL MDMT_ELEMENT(const int32_t* curve, const float* tg, float* t_min, float* mdmt,
                               float* t_ug20, const float* estar, const float* c,
                               const float* t_design, const float* tr, int32_t* warnings,
                               const int32_t* code, float* ratio, const int32_t* pwht,
                               const int32_t* credit, const float* c_ext,
                               const int32_t* ug20_candidate, const float* sy, float* estar_used,
                               const char* spec, int32_t spec_len, const int32_t* index,
                               const int32_t* kind, float* reduction, const int32_t* pad_governs,
                               const float* tg_sr, const int32_t* element) {
    tarvane::MDMT_CALL call{.Curve = *curve,
                            .Tg = *tg,
                            .Estar = *estar,
                            .c = *c,
                            .Tdesign = *t_design,
                            .Tr = *tr,
                            .Warnings = *warnings,
                            .Code = *code,
                            .Ratio = *ratio,
                            .Pwht = *pwht,
                            .Credit = *credit,
                            .Cext = *c_ext,
                            .Ug20Candidate = *ug20_candidate,
                            .Sy = *sy,
                            .EstarUsed = *estar_used,
                            .Spec = text_of(spec, spec_len),
                            .Index = *index,
                            .Kind = *kind,
                            .Reduction = *reduction,
                            .PadGoverns = *pad_governs,
                            .TgSr = *tg_sr,
                            .Element = *element};
    tarvane::MDMT_ELEMENT(call);
    *t_min = call.Tmin;
    *mdmt = call.Mdmt;
    *t_ug20 = call.Tug20;
    *warnings = call.Warnings;
    *ratio = call.Ratio;
    *estar_used = call.EstarUsed;
    *reduction = call.Reduction;
}

void TARVANE_CALL MDMT_DIV2_FIGURES(const float* sy, const float* estar, const float* t_nom,
                                    const float* c_int, const float* c_ext, const int32_t* pwht,
                                    const int32_t* curve, const float* tr, float* t_curve,
                                    float* mdmt, const float* t_user, float* sr,
                                    float* estar_used) {
    tarvane::MDMT_DIV2_CALL call{.Sy = *sy,
                                 .Estar = *estar,
                                 .Tnom = *t_nom,
                                 .Ci = *c_int,
                                 .Cext = *c_ext,
                                 .Pwht = *pwht,
                                 .Curve = *curve,
                                 .Tr = *tr,
                                 .Tuser = *t_user,
                                 .EstarUsed = *estar_used};
    tarvane::MDMT_DIV2_FIGURES(call);
    *t_curve = call.Tcurve;
    *mdmt = call.Mdmt;
    *sr = call.Sr;
    *estar_used = call.EstarUsed;
}

TARVANE_MDMT_RESULTS* TARVANE_CALL GETMDMTRESULTS(void) {
    return reinterpret_cast<TARVANE_MDMT_RESULTS*>(&tarvane::MDMT_FOUND);
}

void TARVANE_CALL GETUCSCURVE(const char* spec, int32_t spec_len, const int32_t* reference,
                              const int32_t* code, const int32_t* thin, int32_t* curve) {
    tarvane::GETUCSCURVE(text_of(spec, spec_len), *reference, *code, *thin, *curve);
}

void TARVANE_CALL READ_IMPACT_TABLE(void) { tarvane::READ_IMPACT_TABLE(); }

void TARVANE_CALL IMPACT_TEST_TEMPERATURE(const char* name, int32_t name_len, float* temperature,
                                          const int32_t* kind) {
    tarvane::IMPACT_TEST_TEMPERATURE(text_of(name, name_len), *temperature, *kind);
}

void TARVANE_CALL UG84_REDUCTION(float* reduction, const float* yield) {
    tarvane::UG84_REDUCTION(*reduction, *yield);
}

int32_t TARVANE_CALL LIS_EXEMPT_SS(const int32_t* code, const char* name, int32_t name_len) {
    return tarvane::LIS_EXEMPT_SS(*code, text_of(name, name_len)) ? 1 : 0;
}

void TARVANE_CALL UHA51_NOTE(const int32_t* code, const char* name, int32_t name_len, float* t_min,
                             float* mdmt, float* ratio, float* factor1, float* factor2) {
    tarvane::UHA51_NOTE(*code, text_of(name, name_len), *t_min, *mdmt, *ratio, *factor1, *factor2);
}

void TARVANE_CALL UCS6_NOTE(const char* material, int32_t material_len, const float* thickness,
                            const int32_t* code, const int32_t* g40_flag) {
    tarvane::UCS6_NOTE(text_of(material, material_len), *thickness, *code, *g40_flag);
}

} // extern "C"
