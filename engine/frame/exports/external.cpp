// The exported routines of external: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "external/chart_method.h"
#include "external/members.h"
#include "external/results.h"
#include "external/shlext.h"
#include "frame/text.h"

#include <cstddef>

// The header's numbers are the engine's.
namespace {
constexpr bool same(int ours, int theirs) { return ours == theirs; }
} // namespace
static_assert(same(TARVANE_METHOD_CHART, tarvane::BY_CHART));
static_assert(same(TARVANE_METHOD_BUCKLING, tarvane::BY_BUCKLING_STRESS));
static_assert(same(TARVANE_METHOD_FLAT_HEAD, tarvane::AS_FLAT_HEAD));
static_assert(same(TARVANE_RULES_UG_28, tarvane::BY_UG_28));
static_assert(same(TARVANE_RULES_UG_33, tarvane::BY_UG_33));
static_assert(same(TARVANE_RULES_AD_300, tarvane::BY_AD_300));
static_assert(same(TARVANE_RULES_CASE_2286, tarvane::BY_CASE_2286));
static_assert(same(TARVANE_RULES_4_4, tarvane::BY_DIV2_4_4));
static_assert(same(TARVANE_RULES_UG_34, tarvane::BY_UG_34));
static_assert(same(TARVANE_EXTERNAL_STAGES, tarvane::EXTERNAL_STAGES));
static_assert(same(TARVANE_SEARCH_FOUND, tarvane::SEARCH_FOUND));
static_assert(same(TARVANE_SEARCH_USED_UP, tarvane::SEARCH_USED_UP));
static_assert(same(TARVANE_SEARCH_AT_LIMIT, tarvane::SEARCH_AT_LIMIT));
static_assert(same(TARVANE_A_OF_TABLE_G, tarvane::A_OF_TABLE_G));
static_assert(same(TARVANE_A_OF_CYLINDER, tarvane::A_OF_CYLINDER));
static_assert(same(TARVANE_A_OF_SPHERE, tarvane::A_OF_SPHERE));
static_assert(same(TARVANE_B_ELASTIC, tarvane::B_ELASTIC));
static_assert(same(TARVANE_B_OF_CURVE, tarvane::B_OF_CURVE));
static_assert(same(TARVANE_B_AT_END, tarvane::B_AT_END));
static_assert(same(TARVANE_FIC_ELASTIC, tarvane::FIC_ELASTIC));
static_assert(same(TARVANE_FIC_INELASTIC, tarvane::FIC_INELASTIC));
static_assert(same(TARVANE_FIC_YIELD, tarvane::FIC_YIELD));
static_assert(same(TARVANE_THICK_BY_B, tarvane::THICK_BY_B));
static_assert(same(TARVANE_THICK_BY_STRESS, tarvane::THICK_BY_STRESS));
static_assert(same(TARVANE_FAILS_BY_THICKNESS, tarvane::BY_REQUIRED_THICKNESS));
static_assert(same(TARVANE_FAILS_BY_UG_16, tarvane::BY_UG_16));

// The block of results is the engine's own.
static_assert(same(TARVANE_EXTERNAL_RESULTS_VERSION, tarvane::EXTERNAL_RESULTS_VERSION));
static_assert(sizeof(TARVANE_EXTERNAL_RESULTS) == sizeof(tarvane::EXTERNAL_RESULTS));
#define SAME(member)                                                                               \
    static_assert(offsetof(TARVANE_EXTERNAL_RESULTS, member) ==                                    \
                  offsetof(tarvane::EXTERNAL_RESULTS, member))
// clang-format off
SAME(version); SAME(bytes); SAME(serial); SAME(status); SAME(code); SAME(older_division_2);
SAME(case_2286); SAME(table_g); SAME(method); SAME(rules); SAME(element); SAME(outside);
SAME(chart); SAME(chart_taken); SAME(carbon_steel); SAME(above_chart); SAME(modulus_status);
SAME(p); SAME(temp); SAME(temp_curve); SAME(modulus); SAME(s); SAME(sy); SAME(tc);
SAME(cos_alpha); SAME(d_o); SAME(d_small); SAME(k0); SAME(evaluations); SAME(search); SAME(a_by);
SAME(b_by); SAME(thick_by); SAME(fic_by); SAME(thickness); SAME(diameter); SAME(length);
SAME(d_over_t); SAME(l_over_d); SAME(factor_a); SAME(factor_b); SAME(fhe); SAME(fic); SAME(fs);
SAME(fha); SAME(pressure); SAME(maep); SAME(tca); SAME(slen); SAME(t_least); SAME(fail_ca);
SAME(fail_ca_by);
// clang-format on
#undef SAME

extern "C" {

void TARVANE_CALL SHLEXT(const float* p, const float* temp, char* chart, int32_t /*chart_len*/,
                         const int32_t* element, const float* d, const float* t, const float* c,
                         const float* k, const float* l, const float* alpha, const float* length,
                         float* maep, float* tca, float* slen, float* d_o, float* factor_a,
                         float* factor_b, const int32_t* print, const float* d_small,
                         const float* cone_length, const int32_t* do_given, const float* s,
                         const float* ut, const float* fy, const int32_t* material, float* fha,
                         float* fail_ca, const int32_t* service) {
    tarvane::Text<12> no_name;
    tarvane::SHLEXT_CALL call{.P = *p,
                              .Temp = *temp,
                              .Chart = chart != nullptr ? chart : no_name.data(),
                              .Element = *element,
                              .D = *d,
                              .t = *t,
                              .c = *c,
                              .k = *k,
                              .L = *l,
                              .Alpha = *alpha,
                              .Length = *length,
                              .MAEP = *maep,
                              .Tca = *tca,
                              .Slen = *slen,
                              .Do = *d_o,
                              .FactorA = *factor_a,
                              .FactorB = *factor_b,
                              .Print = *print,
                              .Dsmall = *d_small,
                              .ConeLength = *cone_length,
                              .DoGiven = *do_given,
                              .S = *s,
                              .Ut = *ut,
                              .Fy = *fy,
                              .Material = *material,
                              .Fha = *fha,
                              .FailCA = *fail_ca,
                              .Service = *service};
    tarvane::SHLEXT(call);
    *maep = call.MAEP;
    *tca = call.Tca;
    *slen = call.Slen;
    *d_o = call.Do;
    *factor_a = call.FactorA;
    *factor_b = call.FactorB;
    *fha = call.Fha;
    *fail_ca = call.FailCA;
}

TARVANE_EXTERNAL_RESULTS* TARVANE_CALL GETEXTERNALRESULTS(void) {
    return reinterpret_cast<TARVANE_EXTERNAL_RESULTS*>(&tarvane::EXTERNAL_FOUND);
}

void TARVANE_CALL FACTOR_A(const float* tc, const float* d_o, const float* length, const float* k,
                           const int32_t* element, float* d_over_t, float* l_over_d, float* a) {
    tarvane::FACTOR_A(*tc, *d_o, *length, *k, *element, *d_over_t, *l_over_d, *a);
}

void TARVANE_CALL FACTOR_B(const float* a, const float* modulus, const float* a_elastic,
                           const float* a_max, const float* b_max, const float* c0, const float* c1,
                           const float* c2, float* b) {
    *b = tarvane::FACTOR_B(*a, {.E = *modulus,
                                .Aelastic = *a_elastic,
                                .Amax = *a_max,
                                .Bmax = *b_max,
                                .c0 = *c0,
                                .c1 = *c1,
                                .c2 = *c2});
}

void TARVANE_CALL CC2286_AXIAL(const float* d_o, const float* l, const float* t, const float* ey,
                               const float* fy, const float* ku, const float* lu, float* fsc,
                               float* lambda, float* fxa, float* fse, float* fxe, float* fca) {
    tarvane::CC2286_AXIAL(*d_o, *l, *t, *ey, *fy, *ku, *lu, *fsc, *lambda, *fxa, *fse, *fxe, *fca);
}

void TARVANE_CALL CC2286_BENDING(const float* d_o, const float* t, const float* ey, const float* fy,
                                 const float* fs, const float* fxa, float* fba) {
    tarvane::CC2286_BENDING(*d_o, *t, *ey, *fy, *fs, *fxa, *fba);
}

void TARVANE_CALL CC2286_SHEAR(const float* d_o, const float* l, const float* t, const float* ey,
                               const float* fy, float* fva, float* cv) {
    tarvane::CC2286_SHEAR(*d_o, *l, *t, *ey, *fy, *fva, *cv);
}

void TARVANE_CALL CC2286_INTERACTION(const float* p, const float* d, const float* t,
                                     const float* fa, const float* fb, const float* lambda,
                                     const float* fha, const float* fxa, const float* fsh,
                                     const float* fsx, const float* fy, const float* ej,
                                     const float* fxa2, const float* fsx2, float* fxha, float* fhxa,
                                     float* fxha2) {
    tarvane::CC2286_INTERACTION(*p, *d, *t, *fa, *fb, *lambda, *fha, *fxa, *fsh, *fsx, *fy, *ej,
                                *fxa2, *fsx2, *fxha, *fhxa, *fxha2);
}

} // extern "C"
