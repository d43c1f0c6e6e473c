/*
** openings.h - openings in the results of a flat head or cover. Part of tarvane.h.
*/
#ifndef TARVANE_OPENINGS_H
#define TARVANE_OPENINGS_H

/* Openings of a flat head or cover, UG-39. */
enum {
    TARVANE_NO_OPENINGS = 0,
    TARVANE_OPENINGS_APART = 1,     /* a single one, or two that are 2 average diameters apart */
    TARVANE_OPENINGS_BY_FACTOR = 2, /* nearer than that: the factor h is used */
    TARVANE_OPENINGS_IN_VIOLATION = 3
};
/* Rules of UG-39 that openings break. */
enum {
    TARVANE_OPENING_D1_LARGE = 1,   /* d1 above half the head's diameter, U-2(g) or Appendix 14 */
    TARVANE_OPENING_D2_LARGE = 2,   /* d2 above it */
    TARVANE_OPENINGS_LARGE = 3,     /* (e): average diameter above a quarter of the head's */
    TARVANE_OPENINGS_NEAR = 4,      /* (e)(3): pitch below 1.25 average diameters */
    TARVANE_OPENING_LIGAMENT = 5,   /* (e)(4): ligament below a quarter of the lesser diameter */
    TARVANE_OPENING_D1_AT_EDGE = 6, /* (e)(5): edge distance below a quarter of d1 */
    TARVANE_OPENING_D2_AT_EDGE = 7  /* (e)(5): below a quarter of d2, two openings */
};
#define TARVANE_OPENING_RULES 7

#endif
