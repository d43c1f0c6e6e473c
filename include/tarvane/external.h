/*
** external.h - external pressure of shells and heads. Part of tarvane.h, which tells the calling convention.
*/
#ifndef TARVANE_EXTERNAL_H
#define TARVANE_EXTERNAL_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
** FACTOR_B - stress B of an external pressure chart at a factor A (Section II Part D, Subpart 3). The
** chart's curve at one temperature is a straight line up to its elastic end, then a quadratic in
** log10(A), and level behind its last A.
**
** Given:
**   a           factor A
**   modulus     modulus of the chart (millions of psi)
**   a_elastic   A at the end of the straight line
**   a_max       last A of the curve
**   b_max       B there (psi); B is nowhere above it but on the straight line
**   c0, c1, c2  B = c0 + c1 x + c2 x^2 (psi), x = log10(a)
** Returned:
**   b           stress B (psi)
*/
TARVANE_API void TARVANE_CALL FACTOR_B(const float* a, const float* modulus,
                                       const float* a_elastic, const float* a_max,
                                       const float* b_max, const float* c0, const float* c1,
                                       const float* c2, float* b);

#ifdef __cplusplus
}
#endif

#endif
