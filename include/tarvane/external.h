/*
** external.h - external pressure of shells and heads. Part of tarvane.h, which describes the calling convention.
*/
#ifndef TARVANE_EXTERNAL_H
#define TARVANE_EXTERNAL_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
** SHLEXT - one shell or head under external pressure: the greatest allowable pressure at the given
** thickness, the thickness for the design pressure and, for a cylinder, the longest stiffened length
** for it. By the charts of Section II Part D (UG-28 to UG-33), or by buckling stress (Code Case 2286;
** Division 2, 4.4). The design code is element 1 of the setup block; it becomes the one of
** SET_MODULE_CODE.
**
** Given:
**   p                 design external pressure (psi)
**   temp              design temperature (F)
**   chart, chart_len  external pressure chart, a field of 12 characters of which the first 8 count;
**                     the length is not read
**   element           TARVANE_CYLINDER to TARVANE_CONE
**   d                 inside diameter (in); a cone's large end
**   t                 nominal thickness (in)
**   c                 corrosion allowance (in)
**   k                 aspect ratio of an elliptical head
**   l                 crown radius of a torispherical head (in)
**   alpha             half apex angle of a cone (degrees)
**   length            stiffened length (in)
**   print             1: the results of each stage are written, by the charts if element 48 of the
**                     setup block is not zero; by buckling stress it becomes the IWRITE of the report
**   d_small           inside diameter of a cone's small end (in)
**   cone_length       axial length of a cone (in)
**   do_given          1: d is the outside diameter already
**   s                 allowable stress in tension (psi)
**   ut                mill under-tolerance (in)
**   fy                yield stress (psi); at most 0.001: by the charts
**   material          reference number of the modulus table (ASMEMOD), for a carbon steel chart by
**                     buckling stress
**   service           least thickness: 0 1/16 in, 1 3/32 in, 2 1/4 in, or their metric editions when
**                     the report shows pressures with a factor above 1
** Returned:
**   chart             characters 9 to 12 blank
**   maep              greatest allowable external pressure (psi)
**   tca               required thickness with c and ut (in); unchanged when p is at most 0.001
**   slen              longest stiffened length (in); of an element other than a cylinder the one given.
**                     Without a pressure 0 by the charts, TARVANE_NO_VALUE by buckling stress
**   d_o               outside diameter used (in); of a torispherical head its outside crown radius
**   factor_a          factor A at the given thickness } by the charts; else
**   factor_b          stress B at the given thickness } they are unchanged
**   fha               allowable compressive stress at the given thickness (psi); 0 by the charts
**   fail_ca           corrosion allowance at which the element fails (in); TARVANE_NO_VALUE when the
**                     thickness is too small without one, and without a pressure
**
** Notes:
**   1) Codes above 2 are not calculated: maep, tca, slen, d_o and the factors are unchanged.
**   2) By the charts: Division 1, unless GLOBALS_mp_G_NUSE_CASE2286 is 1; Division 2 by its older rules
**      (GLOBALS_mp_G_NUSE_OLD_DIV_2), with the same exception.
**   3) A temperature above the chart's highest is a warning in the report; the curve of the highest is
**      used. Without a chart file the curve of the last call is used, zeros before the first.
**   4) A cone of more than 60 degrees counts as a flat head (UG-34): maep, tca, slen (its axial length)
**      and d_o are returned.
**   5) A search that comes to its end without an answer returns its last value.
**   6) IWRITE is 1 after the call, but not after one of the kinds of notes 1 and 4.
**   7) An element outside the five kinds has no formula by buckling stress: maep is unchanged, fha is 0,
**      tca is t with c and ut.
*/
TARVANE_API void TARVANE_CALL SHLEXT(
    const float* p, const float* temp, char* chart, int32_t chart_len, const int32_t* element,
    const float* d, const float* t, const float* c, const float* k, const float* l,
    const float* alpha, const float* length, float* maep, float* tca, float* slen, float* d_o,
    float* factor_a, float* factor_b, const int32_t* print, const float* d_small,
    const float* cone_length, const int32_t* do_given, const float* s, const float* ut,
    const float* fy, const int32_t* material, float* fha, float* fail_ca, const int32_t* service);

/* How SHLEXT calculated an element. */
enum {
    TARVANE_NO_METHOD = 0,
    TARVANE_METHOD_CHART = 1,    /* external pressure chart */
    TARVANE_METHOD_BUCKLING = 2, /* allowable buckling stress */
    TARVANE_METHOD_FLAT_HEAD = 3 /* cone of more than 60 degrees */
};

/* And by which rules. */
enum {
    TARVANE_NO_RULES = 0,
    TARVANE_RULES_UG_28 = 1,     /* cylinder by the charts */
    TARVANE_RULES_UG_33 = 2,     /* heads, spheres and cones by the charts */
    TARVANE_RULES_AD_300 = 3,    /* Division 2 by the charts */
    TARVANE_RULES_CASE_2286 = 4, /* Code Case 2286 */
    TARVANE_RULES_4_4 = 5,       /* VIII-2 4.4 */
    TARVANE_RULES_UG_34 = 6      /* flat cone */
};

/* The three stages of SHLEXT: each index of their values. */
enum { TARVANE_AT_GIVEN = 0, TARVANE_AT_THICKNESS = 1, TARVANE_AT_LENGTH = 2 };
#define TARVANE_EXTERNAL_STAGES 3

/* How the search of a stage ended. */
enum {
    TARVANE_NO_SEARCH = 0,
    TARVANE_SEARCH_FOUND = 1,
    TARVANE_SEARCH_USED_UP = 2, /* its evaluations are used up */
    TARVANE_SEARCH_AT_LIMIT = 3 /* of the stiffened length: 20 times the given one by the charts,
                                   999999 in. by buckling stress */
};

/* Where factor A came from. */
enum {
    TARVANE_NO_A = 0,
    TARVANE_A_OF_TABLE_G = 1,
    TARVANE_A_OF_CYLINDER = 2, /* equations of the geometric chart */
    TARVANE_A_OF_SPHERE = 3    /* 0.125 over Ro/t, with the equivalent radius of a head */
};

/* Where it meets the curve of the chart. */
enum {
    TARVANE_NO_B = 0,
    TARVANE_B_ELASTIC = 1,  /* on the straight line: B = A E / 2 */
    TARVANE_B_OF_CURVE = 2, /* beyond it */
    TARVANE_B_AT_END = 3    /* the greatest B of the curve */
};

/* Range of the buckling stress. */
enum {
    TARVANE_NO_FIC = 0,
    TARVANE_FIC_ELASTIC = 1,
    TARVANE_FIC_INELASTIC = 2,
    TARVANE_FIC_YIELD = 3
};

/* What governs a cylinder or cone with D/t below 10, UG-28(c)(2); 0: not so thick. */
enum { TARVANE_THICK_BY_B = 1, TARVANE_THICK_BY_STRESS = 2 };

/* What ends the corrosion; 0: no corrosion allowance was found. */
enum { TARVANE_FAILS_BY_THICKNESS = 1, TARVANE_FAILS_BY_UG_16 = 2 };

/*
** GETEXTERNALRESULTS - address of what the latest SHLEXT found: values of its stages, not of a printed
** text. Filled alike with the report on and off; filling it changes no other result, gate or state. Zeros
** but for version and bytes at load and after RESET_ENGINE; reset at each entry. TARVANE_NO_VALUE:
** the stage did not run. Lengths in., stresses and pressures psi, temperatures F. It grows at its end
** only: `bytes` says how far it reaches.
**
** Notes:
**   1) The values of a stage are those of its last evaluation. By buckling stress tca and slen have one
**      correction more than the thickness and length evaluated.
**   2) By the charts the thickness of a cone counts across its axis; by buckling stress a cone is the
**      cylinder of its mean diameter and slant length.
*/
typedef struct {
    int32_t version, bytes, serial; /* serial: calculations since RESET_ENGINE */
    int32_t status;                 /* 0 none, 1 calculated, 2 a code above 2: nothing was done */
    int32_t code, older_division_2, case_2286, table_g; /* the switches */
    int32_t method, rules;    /* TARVANE_METHOD_CHART, TARVANE_RULES_UG_28 and so on */
    int32_t element, outside; /* as given */
    char chart[8];            /* as given */
    char chart_taken[8];      /* whose curve it is; blank: the file has none */
    int32_t carbon_steel;     /* 1: the chart is one of carbon steel */
    int32_t above_chart;      /* 1: temp is above the chart's highest */
    int32_t modulus_status;   /* TARVANE_MODULUS_OF_TABLE and so on */
    float p, temp;            /* as given */
    float temp_curve;         /* temperature of the curve */
    float modulus;            /* of the chart, or of the table where a stress is compared with it */
    float s, sy;              /* as given */
    float tc;                 /* thickness less allowances, along the wall */
    float cos_alpha, d_o, d_small; /* outside diameters used; d_small: of a cone */
    float k0;                      /* of an elliptical head by the charts */
    int32_t evaluations[TARVANE_EXTERNAL_STAGES], search[TARVANE_EXTERNAL_STAGES];
    int32_t a_by[TARVANE_EXTERNAL_STAGES];     /* TARVANE_A_OF_TABLE_G and so on */
    int32_t b_by[TARVANE_EXTERNAL_STAGES];     /* TARVANE_B_ELASTIC and so on */
    int32_t thick_by[TARVANE_EXTERNAL_STAGES]; /* TARVANE_THICK_BY_B and so on */
    int32_t fic_by[TARVANE_EXTERNAL_STAGES];   /* TARVANE_FIC_ELASTIC and so on */
    float thickness[TARVANE_EXTERNAL_STAGES];  /* net */
    float diameter[TARVANE_EXTERNAL_STAGES];   /* outside diameter, or crown radius */
    float length[TARVANE_EXTERNAL_STAGES];
    float d_over_t[TARVANE_EXTERNAL_STAGES];
    float l_over_d[TARVANE_EXTERNAL_STAGES]; /* by the charts: held to 0.05 and 50; 0 of a head */
    float factor_a[TARVANE_EXTERNAL_STAGES], factor_b[TARVANE_EXTERNAL_STAGES]; /* by the charts */
    float fhe[TARVANE_EXTERNAL_STAGES]; /* by buckling stress: elastic, */
    float fic[TARVANE_EXTERNAL_STAGES]; /*   predicted, as the factor of safety uses it, */
    float fs[TARVANE_EXTERNAL_STAGES];  /*   factor of safety, */
    float fha[TARVANE_EXTERNAL_STAGES]; /*   allowable */
    float pressure[TARVANE_EXTERNAL_STAGES];
    float maep, tca, slen; /* as SHLEXT returned them; slen of a cylinder only */
    float t_least;         /* least thickness of the service, UG-16 */
    float fail_ca;         /* as SHLEXT returned it */
    int32_t fail_ca_by;    /* TARVANE_FAILS_BY_THICKNESS and so on */
} TARVANE_EXTERNAL_RESULTS;
#define TARVANE_EXTERNAL_RESULTS_VERSION 1
TARVANE_API TARVANE_EXTERNAL_RESULTS* TARVANE_CALL GETEXTERNALRESULTS(void);

/*
** FACTOR_A - factor A of an element (UG-28, UG-33), by Table G of Section II Part D, Subpart 3 when
** GLOBALS_mp_G_NUSE_TABLEG is 1 and the table has it, else by the equations of the geometric chart.
**
** Given:
**   tc          net thickness (in); of a cone across its axis
**   d_o         outside diameter (in); of a torispherical head its outside crown radius
**   length      stiffened length (in)
**   k           aspect ratio of an elliptical head
**   element     element type of SHLEXT
** Returned:
**   d_over_t    d_o / tc
**   l_over_d    length / d_o, limited to 0.05 to 50; 0 for a head
**   a           factor A; unchanged for another element
*/
TARVANE_API void TARVANE_CALL FACTOR_A(const float* tc, const float* d_o, const float* length,
                                       const float* k, const int32_t* element, float* d_over_t,
                                       float* l_over_d, float* a);

/*
** FACTOR_B - stress B of an external pressure chart at a factor A (Section II Part D, Subpart 3). The
** chart's curve at one temperature is a straight line up to its elastic end, then a quadratic in
** log10(A), and level after its last A.
**
** Given:
**   a           factor A
**   modulus     modulus of the chart (millions of psi)
**   a_elastic   A at the end of the straight line
**   a_max       last A of the curve
**   b_max       B there (psi); nowhere but on the straight line is B above it
**   c0, c1, c2  B = c0 + c1 x + c2 x^2 (psi), x = log10(a)
** Returned:
**   b           stress B (psi)
*/
TARVANE_API void TARVANE_CALL FACTOR_B(const float* a, const float* modulus, const float* a_elastic,
                                       const float* a_max, const float* b_max, const float* c0,
                                       const float* c1, const float* c2, float* b);

/* ---- Members ---------------------------------------------------------------------------------
**
** Allowable compressive stresses of members (Code Case 2286; Division 2, 4.4.12) for a host's own
** checks. Chart, temperature and modulus are those of the last SHLEXT; no line is written. Lengths in
** inches, stresses in psi.
*/

/*
** CC2286_AXIAL - axial compression of a cylinder.
**
** Given:
**   d_o         outside diameter
**   l           unsupported length
**   t           net thickness
**   ey, fy      modulus and yield stress
**   ku, lu      factor and length of column buckling
** Returned:
**   fsc         factor of safety of the yielding cylinder; unchanged for a chart that is not one of carbon
**               steel
**   lambda      slenderness
**   fxa         allowable stress without column buckling
**   fse         factor of safety of elastic buckling
**   fxe         elastic buckling stress; for a chart that is not one of carbon steel the inelastic one
**   fca         allowable stress with column buckling; 1000000 where that does not count (lambda at
**               most 0.15) or ku lu / rg is 200 and more
*/
TARVANE_API void TARVANE_CALL CC2286_AXIAL(const float* d_o, const float* l, const float* t,
                                           const float* ey, const float* fy, const float* ku,
                                           const float* lu, float* fsc, float* lambda, float* fxa,
                                           float* fse, float* fxe, float* fca);

/*
** CC2286_BENDING - bending compression of a cylinder.
**
** Given:
**   d_o, t      outside diameter and net thickness
**   ey, fy      modulus and yield stress
**   fs          factor of safety
**   fxa         allowable axial stress of CC2286_AXIAL
** Returned:
**   fba         allowable stress
*/
TARVANE_API void TARVANE_CALL CC2286_BENDING(const float* d_o, const float* t, const float* ey,
                                             const float* fy, const float* fs, const float* fxa,
                                             float* fba);

/*
** CC2286_SHEAR - shear of a cylinder.
**
** Given:
**   d_o, l, t   outside diameter, unsupported length and net thickness
**   ey, fy      modulus and yield stress
** Returned:
**   fva         allowable stress
**   cv          shear buckling coefficient; unchanged when l, t and d_o give no number
*/
TARVANE_API void TARVANE_CALL CC2286_SHEAR(const float* d_o, const float* l, const float* t,
                                           const float* ey, const float* fy, float* fva, float* cv);

/*
** CC2286_INTERACTION - axial and hoop compression of a cylinder together.
**
** Given:
**   p, d, t     pressure (psi), diameter and thickness
**   fa, fb      axial and bending stress
**   lambda      slenderness of CC2286_AXIAL
**   fha, fxa    allowable hoop and axial stress
**   fsh, fsx    their factors of safety
**   fy          yield stress
**   ej          joint efficiency
**   fxa2, fsx2  a second allowable axial stress with its factor; the lesser product counts
** Returned, each only where it is calculated (stresses and pressure positive, lambda below 1.2):
**   fxha        allowable axial stress together with the hoop stress
**   fhxa        allowable hoop stress together with the axial stress
**   fxha2       fxha of a column, lambda above 0.15
*/
TARVANE_API void TARVANE_CALL CC2286_INTERACTION(const float* p, const float* d, const float* t,
                                                 const float* fa, const float* fb,
                                                 const float* lambda, const float* fha,
                                                 const float* fxa, const float* fsh,
                                                 const float* fsx, const float* fy, const float* ej,
                                                 const float* fxa2, const float* fsx2, float* fxha,
                                                 float* fhxa, float* fxha2);

#ifdef __cplusplus
}
#endif

#endif
