// The exported routines of shell: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "materials/ucs23_list.h"
#include "openings/flat_head_openings.h"
#include "shell/app_1_4f_head.h"
#include "shell/convex_head.h"
#include "shell/elements.h"
#include "shell/failure_corrosion.h"
#include "shell/forming.h"
#include "shell/results.h"
#include "shell/shell_report.h"
#include "shell/shlint.h"

#include <cstddef>

using tarvane::text_of;

namespace {
// The codes of the header are those of the engine.
constexpr bool same(int32_t ours, int32_t engines) { return ours == engines; }
} // namespace
static_assert(same(TARVANE_CYLINDER, tarvane::CYLINDER));
static_assert(same(TARVANE_ELLIPTICAL_HEAD, tarvane::ELLIPTICAL));
static_assert(same(TARVANE_TORISPHERICAL_HEAD, tarvane::TORISPHERICAL));
static_assert(same(TARVANE_SPHERE, tarvane::SPHERE));
static_assert(same(TARVANE_CONE, tarvane::CONE));
static_assert(same(TARVANE_FLAT_HEAD, tarvane::FLAT_HEAD_ELEMENT));
static_assert(same(TARVANE_HEAD_NOT_RUN, tarvane::HEAD_NOT_RUN));
static_assert(same(TARVANE_HEAD_THIN, tarvane::HEAD_THIN));
static_assert(same(TARVANE_HEAD_VERY_THIN, tarvane::HEAD_VERY_THIN));
static_assert(same(TARVANE_HEAD_THICK, tarvane::HEAD_THICK));
static_assert(same(TARVANE_HEAD_FAILED, tarvane::HEAD_FAILED));
static_assert(same(TARVANE_NO_FORMULA, tarvane::NO_FORMULA));
static_assert(same(TARVANE_UG_27_C_1, tarvane::UG_27_C_1));
static_assert(same(TARVANE_APP_1_1_A_1, tarvane::APP_1_1_A_1));
static_assert(same(TARVANE_APP_1_2_A_1, tarvane::APP_1_2_A_1));
static_assert(same(TARVANE_UG_27_D, tarvane::UG_27_D));
static_assert(same(TARVANE_APP_1_1_A_2, tarvane::APP_1_1_A_2));
static_assert(same(TARVANE_APP_1_3, tarvane::APP_1_3));
static_assert(same(TARVANE_UG_32_D, tarvane::UG_32_D));
static_assert(same(TARVANE_APP_1_4_C, tarvane::APP_1_4_C));
static_assert(same(TARVANE_APP_1_4_D, tarvane::APP_1_4_D));
static_assert(same(TARVANE_UG_32_G, tarvane::UG_32_G));
static_assert(same(TARVANE_APP_1_4_E, tarvane::APP_1_4_E));
static_assert(same(TARVANE_UG_34_C_2, tarvane::UG_34_C_2));
static_assert(same(TARVANE_UG_34_C_3, tarvane::UG_34_C_3));
static_assert(same(TARVANE_AD_204, tarvane::AD_204));
static_assert(same(TARVANE_LACKS_YIELD, tarvane::LACKS_YIELD));
static_assert(same(TARVANE_LACKS_MODULI, tarvane::LACKS_MODULI));
static_assert(same(TARVANE_SKIPPED_14F, tarvane::SKIPPED));
static_assert(same(TARVANE_BY_NOTHING, tarvane::BY_NOTHING));
static_assert(same(TARVANE_BY_FORMULA, tarvane::BY_FORMULA));
static_assert(same(TARVANE_BY_KNUCKLE, tarvane::BY_KNUCKLE));
static_assert(same(TARVANE_BY_APP_1_4F, tarvane::BY_APP_1_4F));
static_assert(same(TARVANE_BY_LEAST_THICKNESS, tarvane::BY_LEAST_THICKNESS));
static_assert(same(TARVANE_BY_SERVICE, tarvane::BY_SERVICE));

// The block of results is the engine's own.
static_assert(TARVANE_SHELL_RESULTS_VERSION == tarvane::SHELL_RESULTS_VERSION);
static_assert(sizeof(TARVANE_SHELL_RESULTS) == sizeof(tarvane::SHELL_RESULTS));
#define SAME_PLACE(member)                                                                         \
    static_assert(offsetof(TARVANE_SHELL_RESULTS, member) ==                                       \
                  offsetof(tarvane::SHELL_RESULTS, member))
SAME_PLACE(serial);
SAME_PLACE(formula);
SAME_PLACE(openings);
SAME_PLACE(t_status_14f);
SAME_PLACE(t_by);
SAME_PLACE(tc);
SAME_PLACE(t_req_raw);
SAME_PLACE(t_required);
SAME_PLACE(mawp_formula);
SAME_PLACE(mawp_knuckle);
SAME_PLACE(mawp_14f);
SAME_PLACE(t_crown);
SAME_PLACE(crown_radius);
SAME_PLACE(modulus_design);
SAME_PLACE(span);
SAME_PLACE(opening_violations);
SAME_PLACE(opening_rule);
SAME_PLACE(opening_found);
SAME_PLACE(opening_limit);
#undef SAME_PLACE

extern "C" {

void TARVANE_CALL SHLINT(const float* P, const float* Sa, const float* S, const float* E,
                         const int32_t* element, const float* D, const float* t, const float* c,
                         const float* k, float* L, const float* r, const float* alpha, const void*,
                         const void*, const float* C, const float* D2, float* t_req, float* mawp,
                         float* map_nc, float* stress, const int32_t* material, const float* temp,
                         const int32_t* service, float* t_req_raw, const int32_t* outside,
                         float* t_14f, const float* Sy, float* mawp_14f, float* map_nc_14f,
                         int32_t* status_14f, float* Sy_cold, const float* Ut,
                         const int32_t* skip14f, const float* d1, const float* d2,
                         const float* edge1, const float* edge2, const float* pitch,
                         const float* opening_material, const int32_t* corroded_k, const char* name,
                         int32_t name_len) {
    tarvane::SHLINT_ARGUMENTS arguments{
        .P = *P,
        .Sa = *Sa,
        .S = *S,
        .E = *E,
        .Element = *element,
        .D = *D,
        .t = *t,
        .c = *c,
        .k = *k,
        .L = *L,
        .r = *r,
        .alpha = *alpha,
        .C = *C,
        .D2 = *D2,
        .Treq = *t_req,
        .MAWP = *mawp,
        .MAPnc = *map_nc,
        .Stress = *stress,
        .Material = *material,
        .Temp = *temp,
        .Service = *service,
        .TreqRaw = *t_req_raw,
        .Outside = *outside,
        .T14f = *t_14f,
        .Sy = *Sy,
        .MAWP14f = *mawp_14f,
        .MAPnc14f = *map_nc_14f,
        .Status14f = *status_14f,
        .SyCold = *Sy_cold,
        .u = *Ut,
        .Skip14f = *skip14f,
        .d1 = *d1,
        .d2 = *d2,
        .edge1 = *edge1,
        .edge2 = *edge2,
        .pitch = *pitch,
        .openingMaterial = *opening_material,
        .CorrodedK = *corroded_k,
        .MaterialName = text_of(name, name_len),
    };
    tarvane::SHLINT(arguments);
}

void TARVANE_CALL SHELL_REPORT(
    const float* P, const float* Sa, const float* S, const float* E, const int32_t* element,
    const float* D, const float* t, const float* c, const float* k, const float* L, const float* r,
    const float* alpha, const float* C, const float* D2, const int32_t* material, const float* temp,
    const int32_t* service, const int32_t* outside, const float* Sy, const float* Sy_cold,
    const float* Ut, const int32_t* skip14f, const float* d1, const float* d2, const float* edge1,
    const float* edge2, const float* pitch, const float* opening_material,
    const int32_t* corroded_k, const char* name, int32_t name_len, const float* temp_limit,
    const int32_t* convex, const float* P_external, const float* maep, const float* tca) {
    // What SHLINT returns, for the lines only.
    float crown = *L, yield = *Sy_cold, t_req = 0.0f, mawp = 0.0f, map_nc = 0.0f, stress = 0.0f,
          raw = 0.0f, t_14f = 0.0f, mawp_14f = 0.0f, map_nc_14f = 0.0f;
    int32_t status = 0;
    tarvane::SHLINT_ARGUMENTS arguments{
        .P = *P,
        .Sa = *Sa,
        .S = *S,
        .E = *E,
        .Element = *element,
        .D = *D,
        .t = *t,
        .c = *c,
        .k = *k,
        .L = crown,
        .r = *r,
        .alpha = *alpha,
        .C = *C,
        .D2 = *D2,
        .Treq = t_req,
        .MAWP = mawp,
        .MAPnc = map_nc,
        .Stress = stress,
        .Material = *material,
        .Temp = *temp,
        .Service = *service,
        .TreqRaw = raw,
        .Outside = *outside,
        .T14f = t_14f,
        .Sy = *Sy,
        .MAWP14f = mawp_14f,
        .MAPnc14f = map_nc_14f,
        .Status14f = status,
        .SyCold = yield,
        .u = *Ut,
        .Skip14f = *skip14f,
        .d1 = *d1,
        .d2 = *d2,
        .edge1 = *edge1,
        .edge2 = *edge2,
        .pitch = *pitch,
        .openingMaterial = *opening_material,
        .CorrodedK = *corroded_k,
        .MaterialName = text_of(name, name_len),
    };
    const tarvane::CONVEX_REPORT head{.P = *P_external, .MAEP = *maep, .Tca = *tca};
    tarvane::SHELL_REPORT(arguments, *temp_limit, *convex == 1 ? &head : nullptr);
}

void TARVANE_CALL CONVEX_HEAD(const float* P, const float* maep, const float* tca,
                              const float* t_req_raw, const float* t_required, const float* mawp,
                              float* Pi, float* t_inside, float* maep_i, float* maep_g,
                              float* t_g) {
    tarvane::CONVEX_HEAD_ARGUMENTS arguments{
        .P = *P,
        .MAEP = *maep,
        .Tca = *tca,
        .TreqRaw = *t_req_raw,
        .t_required = *t_required,
        .MAWP = *mawp,
        .Pi = *Pi,
        .treq = *t_inside,
        .MAEPi = *maep_i,
        .MAEPg = *maep_g,
        .Tg = *t_g,
    };
    tarvane::CONVEX_HEAD(arguments, nullptr);
}

TARVANE_SHELL_RESULTS* TARVANE_CALL GETSHELLRESULTS(void) {
    return reinterpret_cast<TARVANE_SHELL_RESULTS*>(&tarvane::SHELL);
}

void TARVANE_CALL COMPUTE_FAILURE_CA_DIV1(const float* P, const float* D, const float* E,
                                          const float* S, const float* t, const float* k,
                                          const float* L, const float* r, const float* alpha,
                                          const float* C, const float*, const int32_t* element,
                                          float* fail_ca, const int32_t* outside, const float* tk,
                                          float* fail_ca_k, const float* d1, const float* d2,
                                          const float* edge1, const float* edge2,
                                          const float* pitch, const float* opening_material,
                                          const int32_t* service, const int32_t* corroded_k) {
    tarvane::FAILURE_CA_ARGUMENTS arguments{
        .P = *P,
        .D = *D,
        .E = *E,
        .S = *S,
        .t = *t,
        .k = *k,
        .L = *L,
        .r = *r,
        .Alpha = *alpha,
        .C = *C,
        .Element = *element,
        .FailCA = *fail_ca,
        .Outside = *outside,
        .tk = *tk,
        .FailCAK = *fail_ca_k,
        .d1 = *d1,
        .d2 = *d2,
        .edge1 = *edge1,
        .edge2 = *edge2,
        .pitch = *pitch,
        .openingMaterial = *opening_material,
        .Service = *service,
        .CorrodedK = *corroded_k,
    };
    tarvane::COMPUTE_FAILURE_CA_DIV1(arguments);
}

void TARVANE_CALL APP_1_4F_HEAD(const int32_t* element, const int32_t* outside, const float* P,
                                const float* t, const void*, const float* L, const float* D,
                                const float* r, const float* k, const float* temp, const float* Et,
                                const float* Sy, const float* temp_limit, float* t_solved,
                                int32_t* cls, const float* c, const float* Ut, float* p_first,
                                const int32_t* mode, const int32_t* tmin_label, const float* hydro,
                                const void*, float* ratio, const float* t_start) {
    tarvane::APP_1_4F_ARGUMENTS arguments{
        .Element = *element,
        .Outside = *outside,
        .P = *P,
        .t = *t,
        .L = *L,
        .D = *D,
        .r = *r,
        .k = *k,
        .Temp = *temp,
        .Et = *Et,
        .Sy = *Sy,
        .TempLimit = *temp_limit,
        .Tsolved = *t_solved,
        .Class = *cls,
        .c = *c,
        .u = *Ut,
        .Pfirst = *p_first,
        .Mode = *mode,
        .TminLabel = *tmin_label,
        .Hydro = *hydro,
        .Ratio = *ratio,
        .Tstart = *t_start,
    };
    tarvane::APP_1_4F_HEAD(arguments);
}

void TARVANE_CALL FORMING_STRAIN(const int32_t* element, const int32_t* outside, const float* D,
                                 const float* t, float* strain, const char* name, int32_t name_len,
                                 const float* r, const float* D_small, const float* alpha,
                                 const int32_t* code, const int32_t* reference, int32_t* cls,
                                 const int32_t*, float* thinning, float* area, float* D_max,
                                 float* D_blank, const float* k, const float* L, const float*,
                                 const float* straight) {
    tarvane::FORMING_ARGUMENTS arguments{
        .Element = *element,
        .Outside = *outside,
        .D = *D,
        .t = *t,
        .Strain = *strain,
        .Material = text_of(name, name_len),
        .r = *r,
        .Dsmall = *D_small,
        .Alpha = *alpha,
        .Code = *code,
        .Reference = *reference,
        .Class = *cls,
        .Thinning = *thinning,
        .Area = *area,
        .Dmax = *D_max,
        .Dblank = *D_blank,
        .k = *k,
        .L = *L,
        .Straight = *straight,
    };
    tarvane::FORMING_STRAIN(arguments);
}

void TARVANE_CALL HEAD_SURFACE_AREA(const float* D, const float* t, const float* ts, const float* L,
                                    const float*, const float* r, const float* straight,
                                    const float* k, const int32_t* type, float* area,
                                    float* D_max) {
    tarvane::HEAD_AREA_ARGUMENTS arguments{
        .D = *D,
        .t = *t,
        .ts = *ts,
        .L = *L,
        .r = *r,
        .Straight = *straight,
        .k = *k,
        .Type = *type,
        .Area = *area,
        .Dmax = *D_max,
    };
    tarvane::HEAD_SURFACE_AREA(arguments);
}

int32_t TARVANE_CALL LIS_UCS23_MATERIAL(const char* name, int32_t name_len) {
    return tarvane::LIS_UCS23_MATERIAL(text_of(name, name_len)) ? 1 : 0;
}

void TARVANE_CALL PATTERNED_OPENINGS(const int32_t* kind, const float* head_dia, const float* d1,
                                     const float* d2, const float* edge1, const float* edge2,
                                     const float* pitch, const int32_t* material, const float* C,
                                     float* factor, float* C_out, int32_t* flag) {
    tarvane::OPENINGS_CALL call{.kind = *kind,
                                .headDia = *head_dia,
                                .d1 = *d1,
                                .d2 = *d2,
                                .edge1 = *edge1,
                                .edge2 = *edge2,
                                .pitch = *pitch,
                                .material = *material,
                                .Cin = *C};
    tarvane::PATTERNED_OPENINGS(call);
    *factor = call.coverFactor;
    *C_out = call.Cout;
    *flag = call.coverFlag;
}

float TARVANE_CALL DIV2_M_FACTOR(const float* D, const float* r, const float* t, const float* L,
                                 const float* c, const int32_t* element, const float* Ut) {
    return tarvane::DIV2_M_FACTOR(*D, *r, *t, *L, *c, *element, *Ut);
}

float TARVANE_CALL DIV2_K_FACTOR(const float* D, const float* r, const float* t, const float* L,
                                 const float* c, const int32_t* element, const float* Ut) {
    return tarvane::DIV2_K_FACTOR(*D, *r, *t, *L, *c, *element, *Ut);
}

} // extern "C"
