// The exported routines of materials: they unpack their arguments and call.
#include "frame/exports/exports.h"

#include "materials/class_names.h"
#include "materials/material_record.h"
#include "materials/modulus.h"
#include "materials/stress_tables.h"
#include "materials/table_g.h"

#include <cstddef>
#include <cstring>

using tarvane::Int;
using tarvane::text_of;

// The host's record and the engine's are the same bytes.
static_assert(sizeof(TARVANE_MATERIAL_RECORD) == sizeof(tarvane::MATERIAL_RECORD));
static_assert(offsetof(TARVANE_MATERIAL_RECORD, fill) == TARVANE_MATERIAL_BYTES);
#define SAME_PLACE(field, engine_field, offset)                                                    \
    static_assert(offsetof(TARVANE_MATERIAL_RECORD, field) == (offset) &&                          \
                      offsetof(tarvane::MATERIAL_RECORD, engine_field) == (offset),                \
                  #field)
SAME_PLACE(first_name, firstName, 0);
SAME_PLACE(name, name, 16);
SAME_PLACE(reference, reference, 32);
SAME_PLACE(product_form, productForm, 36);
SAME_PLACE(uns_number, unsNumber, 68);
SAME_PLACE(text_92, text92, 92);
SAME_PLACE(note, note, 100);
SAME_PLACE(thickness_limit, thicknessLimit, 140);
SAME_PLACE(p_number, pNumber, 144);
SAME_PLACE(group, group, 152);
SAME_PLACE(curve, curve, 156);
SAME_PLACE(curve_normalized, curveNormalized, 160);
SAME_PLACE(tensile, tensile, 164);
SAME_PLACE(yield, yield, 168);
SAME_PLACE(chart, chart, 172);
SAME_PLACE(modulus_reference, modulusReference, 180);
SAME_PLACE(expansion_reference, expansionReference, 184);
SAME_PLACE(allowable, allowable, 188);
SAME_PLACE(text_316, text316, 316);
SAME_PLACE(unused_356, unused356, 356);
SAME_PLACE(min_dia, minDia, 364);
SAME_PLACE(max_dia, maxDia, 368);
SAME_PLACE(unused_372, unused372, 372);
SAME_PLACE(impact_temperature, impactTemperature, 376);
SAME_PLACE(unused_380, carried380, 380);
SAME_PLACE(ucs66g_reduction, ucs66gReduction, 384);
SAME_PLACE(unused_388, unused388, 388);
SAME_PLACE(text_404, text404, 404);
#undef SAME_PLACE

static_assert(sizeof(TARVANE_EN_RECORD) == tarvane::EN_RECORD_BYTES);
static_assert(sizeof(TARVANE_MATERIAL_CLASS_ROW) == sizeof(tarvane::MATERIAL_CLASS));
static_assert(offsetof(TARVANE_MATERIAL_CLASS_ROW, number) ==
              offsetof(tarvane::MATERIAL_CLASS, number));
static_assert(TARVANE_MATERIAL_CLASS_ROWS == tarvane::MATERIAL_CLASSES);

namespace {

// A host's record may end with the bytes of the file, without the padding of the structure.
void take_record(const TARVANE_MATERIAL_RECORD* from, tarvane::MATERIAL_RECORD& to) {
    std::memcpy(static_cast<void*>(&to), from, TARVANE_MATERIAL_BYTES);
}
void give_record(const tarvane::MATERIAL_RECORD& from, TARVANE_MATERIAL_RECORD* to) {
    std::memcpy(to, &from, TARVANE_MATERIAL_BYTES);
}

} // namespace

extern "C" {

void TARVANE_CALL READ_MATERIAL(const int32_t* code, const char* name, int32_t name_len,
                                const int32_t* reference, int32_t* status,
                                TARVANE_MATERIAL_RECORD* record) {
    tarvane::MATERIAL_RECORD found;
    take_record(record, found); // a blank name leaves it as it is
    tarvane::READ_MATERIAL(*code, text_of(name, name_len), *reference, *status, found);
    give_record(found, record);
}

void TARVANE_CALL MATERIAL_COUNT(const int32_t* code, int32_t* count) {
    tarvane::MATERIAL_COUNT(*code, *count);
}

void TARVANE_CALL MATERIAL_BY_NUMBER(const int32_t* code, const int32_t* number, int32_t* status,
                                     TARVANE_MATERIAL_RECORD* record) {
    tarvane::MATERIAL_RECORD found;
    tarvane::MATERIAL_BY_NUMBER(*code, *number, *status, found);
    give_record(found, record);
}

float TARVANE_CALL READ_ALLOWABLE_AT(const TARVANE_MATERIAL_RECORD* record,
                                     const float* temperature) {
    tarvane::MATERIAL_RECORD given;
    take_record(record, given);
    return tarvane::READ_ALLOWABLE_AT(given, *temperature);
}

void TARVANE_CALL READ_YIELD_STRESS(const char* name, int32_t name_len, const float* tensile,
                                    const float* temperature, float* result) {
    tarvane::READ_YIELD_STRESS(text_of(name, name_len), *tensile, *temperature, *result);
}

void TARVANE_CALL READ_EN_MATERIAL(const int32_t* key, int32_t* status, TARVANE_EN_RECORD* record) {
    char bytes[sizeof *record];
    std::memcpy(bytes, record, sizeof bytes);
    tarvane::READ_EN_MATERIAL(*key, *status, bytes);
    std::memcpy(record, bytes, sizeof bytes);
}

void TARVANE_CALL SET_MATERIAL_CLASS_NAMES(void) { tarvane::SET_MATERIAL_CLASS_NAMES(); }

TARVANE_MATERIAL_CLASS_ROW* TARVANE_CALL GETMATERIALCLASSNAMES(void) {
    tarvane::MATERIAL_CLASS_NAMES_GIVEN = true;
    return reinterpret_cast<TARVANE_MATERIAL_CLASS_ROW*>(tarvane::MATERIAL_CLASS_NAMES);
}

void TARVANE_CALL READ_CHART(const char* name, int32_t name_len, const float* temperature,
                             float* t_used, float* E, float* Aelastic, float* second, float* Amax,
                             float* Bmax, float* c0, float* c1, float* c2, const float* yield) {
    tarvane::READ_CHART(name, name_len, *temperature, *t_used, *E, *Aelastic, *second, *Amax, *Bmax,
                        *c0, *c1, *c2, *yield);
}

void TARVANE_CALL TABLE_G_FACTOR_A(const float* dt, const float* ld, float* a) {
    tarvane::TABLE_G_FACTOR_A(*dt, *ld, *a);
}

} // extern "C"
