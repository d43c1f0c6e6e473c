// The exported routines of external: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "external/chart_method.h"
#include "external/members.h"
#include "external/shlext.h"
#include "frame/text.h"

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
