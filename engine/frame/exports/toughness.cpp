// The exported routines of toughness: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "toughness/impact_table.h"
#include "toughness/material_notes.h"
#include "toughness/mdmt.h"
#include "toughness/mdmt_div2.h"

using tarvane::text_of;

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
