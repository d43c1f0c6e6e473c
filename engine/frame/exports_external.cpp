// The exported routines of external: they unpack their arguments and call.
#define TARVANE_BUILD
#include "tarvane/tarvane.h"

#include "external/chart_method.h"
#include "frame/export_arguments.h"

extern "C" {

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

} // extern "C"
