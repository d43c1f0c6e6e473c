/*
** shell.h - internal pressure of shells and heads. Part of tarvane.h, which describes the calling convention.
*/
#ifndef TARVANE_SHELL_H
#define TARVANE_SHELL_H

#include "convention.h"
#include "openings.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Elements of the shell and head routines. */
enum {
    TARVANE_CYLINDER = 1,
    TARVANE_ELLIPTICAL_HEAD = 2,
    TARVANE_TORISPHERICAL_HEAD = 3,
    TARVANE_SPHERE = 4, /* spherical shell or hemispherical head */
    TARVANE_CONE = 5,   /* conical section, with or without a knuckle */
    TARVANE_FLAT_HEAD = 6
};

/* Class of a formed head by Appendix 1-4(f): corroded thickness over crown radius. */
enum {
    TARVANE_HEAD_NOT_RUN = 0,
    TARVANE_HEAD_THIN = 1,      /* 0.0005 up to 0.002 */
    TARVANE_HEAD_VERY_THIN = 2, /* below 0.0005: outside the rules, calculated all the same */
    TARVANE_HEAD_THICK = 3,     /* above 0.002: the rules do not apply */
    TARVANE_HEAD_FAILED = 4     /* a geometry without solution */
};

/*
** SHLINT - a shell or head under internal pressure: required thickness, allowable pressures, stress.
** VIII-1 UG-27, UG-32, UG-34, UG-39, Appendices 1-1 to 1-4; formed heads by the older Division 2
** (AD-204) when the fifth argument of SET_GLOBALS_FROM_TVN is 1. It writes no report; SHELL_REPORT does.
**
** Given:
**   P           design pressure (psi)
**   Sa, S       allowable stress at ambient and at design temperature (psi)
**   E           joint efficiency
**   element     TARVANE_CYLINDER to TARVANE_FLAT_HEAD; with any other nothing is returned
**   D           inside diameter, or outside diameter by `outside` (in); flat head: one span
**   t           nominal thickness (in)
**   c           corrosion allowance (in)
**   k           elliptical head: aspect ratio D/2h; cone: thickness of the knuckle (in)
**   r           knuckle radius (in); cone: up to 0.001 no knuckle
**   alpha       half apex angle of a cone (degrees)
**   spare13, spare14  not read, may be null
**   C           attachment factor of a flat head
**   D2          second span of a flat head (in); 0: circular
**   material    reference number of the modulus table
**   temp        design temperature (F)
**   service     1 air, steam and water, for a material of the list "VIII-1_Matls_By_Table.txt";
**               2 unfired steam boiler; else no minimum of the service
**   outside     0: inside dimensions
**   Sy          yield stress at design temperature (psi); up to 1000.0: no Appendix 1-4(f)
**   Ut          mill under-tolerance (in)
**   skip14f     not 0: no Appendix 1-4(f)
**   d1, d2, edge1, edge2, pitch, opening_material  openings of a flat head (UG-39; in); d1 and d2
**               both not positive: none
**   corroded_k  1: K of an elliptical head by its corroded shape
**   name, name_len  material name as in the list
** Given and returned:
**   L           crown radius of a torispherical head (in), not written; an elliptical head writes the
**               equivalent radius of its new shape, but not under the older Division 2
**   Sy_cold     ambient yield stress (psi); raised to Sy when Appendix 1-4(f) runs
** Returned:
**   t_req       required thickness without c, at least 1/16 in. and the minimum of the service (in)
**   mawp        maximum allowable working pressure, corroded (psi)
**   map_nc      maximum allowable pressure, new and cold (psi)
**   stress      membrane stress at P (psi)
**   t_req_raw   required thickness before the minima (in); older Division 2: with them
**   t_14f       required thickness by Appendix 1-4(f), with neither c nor Ut (in); 0.0 when not run
**   mawp_14f, map_nc_14f  pressures by Appendix 1-4(f) (psi); unchanged when not run
**   status_14f  TARVANE_HEAD_...; unchanged when Appendix 1-4(f) does not run
**
** Notes:
**   1) Appendix 1-4(f) runs for heads whose moduli are known ("ElastAlp07.txt"); then mawp and map_nc
**      are limited by its pressures.
**   2) Cylinders with t less c and Ut above R/2 or P above 0.385 S E, spheres with it above 0.356 R or
**      P above 0.665 S E, use the logarithmic forms; R is the corroded inside radius.
**   3) The knuckle of a cone limits the pressures and raises the stress, not the thickness.
**   4) The code constants are filled again (SET_METRIC_CONSTANTS). Openings leave IWRITE at 1, a head
**      of status TARVANE_HEAD_FAILED leaves it at 0.
*/
TARVANE_API void TARVANE_CALL SHLINT(
    const float* P, const float* Sa, const float* S, const float* E, const int32_t* element,
    const float* D, const float* t, const float* c, const float* k, float* L, const float* r,
    const float* alpha, const void* spare13, const void* spare14, const float* C, const float* D2,
    float* t_req, float* mawp, float* map_nc, float* stress, const int32_t* material,
    const float* temp, const int32_t* service, float* t_req_raw, const int32_t* outside,
    float* t_14f, const float* Sy, float* mawp_14f, float* map_nc_14f, int32_t* status_14f,
    float* Sy_cold, const float* Ut, const int32_t* skip14f, const float* d1, const float* d2,
    const float* edge1, const float* edge2, const float* pitch, const float* opening_material,
    const int32_t* corroded_k, const char* name, int32_t name_len);

/*
** SHELL_REPORT - the page of a shell or head: its formulas with the values put in, as SHLINT calculates
** them, and the lines of UG-39 and Appendix 1-4(f). It runs the stages of SHLINT once more, and fills the
** results of GETSHELLRESULTS as SHLINT does.
**
** Given:
**   P to name, name_len  as SHLINT; L of a torispherical head
**   temp_limit  temperature limit of Table 1-4.3 for the material (F), as APP_1_4F_HEAD
**   convex      1: a formed head with the pressure on its convex side, UG-33(a)(1); P is the pressure
**               inside by CONVEX_HEAD, E is 1. Then the check is shown, else the whole page
**   P_external, maep, tca
**               convex 1: external design pressure (psi), 0.0 for a head that is rated only; allowable
**               pressure (psi) and required thickness with allowances (in) by the chart
**
** Notes:
**   1) The report must be on (SET_IOUT, SET_IWRITE, SET_IWRTFL), or nothing is done. The gates are unchanged.
**   2) Input values, further results and CLOSING_NOTE are left to the host.
**   3) The older Division 2 begins at the column of K with which the latest SHLINT began, so that the
**      page shows what that call gave.
*/
TARVANE_API void TARVANE_CALL SHELL_REPORT(
    const float* P, const float* Sa, const float* S, const float* E, const int32_t* element,
    const float* D, const float* t, const float* c, const float* k, const float* L, const float* r,
    const float* alpha, const float* C, const float* D2, const int32_t* material, const float* temp,
    const int32_t* service, const int32_t* outside, const float* Sy, const float* Sy_cold,
    const float* Ut, const int32_t* skip14f, const float* d1, const float* d2, const float* edge1,
    const float* edge2, const float* pitch, const float* opening_material,
    const int32_t* corroded_k, const char* name, int32_t name_len, const float* temp_limit,
    const int32_t* convex, const float* P_external, const float* maep, const float* tca);

/*
** CONVEX_HEAD - a formed head with the pressure on its convex side, UG-33(a)(1): it must hold UG-32, too,
** for 1.67 times the pressure with a joint efficiency of 1. Pi depends on P alone, maep_i on mawp alone:
** a host asks for Pi, calls SHLINT with it, and calls once more.
**
** Given:
**   P           external design pressure (psi)
**   maep, tca   by the chart: allowable pressure (psi), required thickness with allowances (in)
**   t_req_raw, t_required, mawp
**               of SHLINT under Pi: t_req_raw, t_required of GETSHELLRESULTS (in), mawp (psi)
** Returned:
**   Pi          1.67 P (psi)
**   t_inside    t_required, or infinity where no thickness holds Pi (in)
**   maep_i      allowable external pressure by mawp (psi)
**   maep_g      the lesser one of maep and maep_i (psi)
**   t_g         the greater one of tca and t_inside (in)
*/
TARVANE_API void TARVANE_CALL CONVEX_HEAD(const float* P, const float* maep, const float* tca,
                                          const float* t_req_raw, const float* t_required,
                                          const float* mawp, float* Pi, float* t_inside,
                                          float* maep_i, float* maep_g, float* t_g);

/* The formula by which an element was calculated. */
enum {
    TARVANE_NO_FORMULA = 0,
    TARVANE_UG_27_C_1 = 1,   /* cylinder by its inside radius */
    TARVANE_APP_1_1_A_1 = 2, /*   by its outside radius */
    TARVANE_APP_1_2_A_1 = 3, /*   thick */
    TARVANE_UG_27_D = 4,     /* sphere by its inside radius */
    TARVANE_APP_1_1_A_2 = 5, /*   by its outside radius */
    TARVANE_APP_1_3 = 6,     /*   thick */
    TARVANE_UG_32_D = 7,     /* 2:1 elliptical head by its inside diameter */
    TARVANE_APP_1_4_C = 8,   /*   any other */
    TARVANE_APP_1_4_D = 9,   /* torispherical head */
    TARVANE_UG_32_G = 10,    /* cone by its inside diameter */
    TARVANE_APP_1_4_E = 11,  /*   by its outside diameter */
    TARVANE_UG_34_C_2 = 12,  /* circular flat head */
    TARVANE_UG_34_C_3 = 13,  /*   of two spans */
    TARVANE_AD_204 = 14      /* formed head by the older Division 2 */
};

/* What governs a thickness, limits a pressure or raises a stress. */
enum {
    TARVANE_BY_NOTHING = 0,
    TARVANE_BY_FORMULA = 1,         /* of the shell, the crown or the plate */
    TARVANE_BY_KNUCKLE = 2,         /* of a cone, or of a head under AD-204 */
    TARVANE_BY_APP_1_4F = 3,        /* failure of the knuckle of a thin head */
    TARVANE_BY_LEAST_THICKNESS = 4, /* UG-16(b) */
    TARVANE_BY_SERVICE = 5          /* least thickness of the service, UG-16(b)(3), (4) */
};

/* Why Appendix 1-4(f) was not evaluated for a formed head. */
enum {
    TARVANE_LACKS_YIELD = 1,  /* Sy is not above 1000 psi */
    TARVANE_LACKS_MODULI = 2, /* "ElastAlp07.txt" has none for the material */
    TARVANE_SKIPPED_14F = 4   /* by skip14f */
};

/*
** GETSHELLRESULTS - address of what the latest SHLINT (or SHELL_REPORT) found: values of its stages, not of
** a printed text. Filled alike with the report on and off; filling it changes no other result, gate or
** state. Zeros but for version and bytes at load and after RESET_ENGINE; reset at each entry.
** TARVANE_NO_VALUE: the stage did not run. Lengths in., stresses and pressures psi. It grows at its end
** only: `bytes` says how far it reaches.
*/
typedef struct {
    int32_t version, bytes, serial; /* serial: calculations since RESET_ENGINE */
    int32_t status;                 /* 0 none, 1 calculated, 2 no such element: nothing was done */
    int32_t element, outside;       /* as given */
    int32_t older_division_2;       /* the switch; `formula` says whether AD-204 was used */
    int32_t formula;                /* TARVANE_UG_27_C_1 and so on */
    int32_t thick;                  /* logarithmic form: by the wall 1, the pressure 2, both 3 */
    int32_t knuckle;                /* 1: the knuckle of a cone counted */
    int32_t openings;               /* TARVANE_OPENINGS_APART and so on */
    int32_t thin, thin_new; /* 1: formed head up to 0.002 of its crown radius; corroded, new */
    int32_t evaluated_14f;  /* 1: Appendix 1-4(f) was evaluated for a formed head */
    int32_t lacks_14f;      /*   why not: sum of TARVANE_LACKS_... */
    int32_t t_status_14f, mawp_status_14f, map_nc_status_14f; /* TARVANE_HEAD_... of each run */
    int32_t t_by, mawp_by, map_nc_by, stress_by;              /* TARVANE_BY_... */
    float tc;                               /* thickness less allowances; AD-204: less c */
    float t_req_raw, t_least, t_req, t_14f; /* t_least: UG-16(b) with the service */
    float t_governing, t_required;          /* of t_req and t_14f; with c and Ut */
    float mawp, map_nc, stress;             /* as SHLINT returned them */
    float mawp_formula, map_nc_formula, stress_formula; /* without knuckle of a cone, 1-4(f) */
    float mawp_knuckle, map_nc_knuckle, stress_knuckle; /* of a cone */
    float mawp_14f, map_nc_14f;                         /* limits by Appendix 1-4(f) */
    float t_crown, t_knuckle;                           /* AD-204, without minima */
    float crown_radius;                                 /* L, as SHLINT left it */
    float ratio, ratio_new; /* corroded and new thickness over it, not under AD-204 */
    float modulus_design, modulus_ambient; /* of a formed head, not under AD-204 */
    float attachment_factor, spacing_factor, shape_factor, span; /* flat head: C, F, Z, d */
    int32_t opening_violations;
    int32_t opening_rule
        [TARVANE_OPENING_RULES]; /* TARVANE_OPENING_D1_LARGE and so on, in their order */
    float opening_found[TARVANE_OPENING_RULES]; /* the length that breaks the rule */
    float opening_limit[TARVANE_OPENING_RULES]; /* and its limit */
} TARVANE_SHELL_RESULTS;
enum { TARVANE_SHELL_RESULTS_VERSION = 1 };
TARVANE_API TARVANE_SHELL_RESULTS* TARVANE_CALL GETSHELLRESULTS(void);

/*
** COMPUTE_FAILURE_CA_DIV1 - corrosion that an element takes until its working pressure has fallen to
** the design pressure, held at the minimum thickness. It writes no report.
**
** Given:
**   P, D, E, S, t  as SHLINT
**   k           elliptical head: aspect ratio D/2h
**   L, r        crown and knuckle radius (in)
**   alpha       half apex angle of a cone (degrees)
**   C           attachment factor of a flat head
**   D2          not read: a flat head counts as circular
**   element     TARVANE_CYLINDER to TARVANE_FLAT_HEAD
**   outside     1: D is the outside diameter (elements 1, 2, 4, 5)
**   tk          thickness of the knuckle of a cone (in)
**   d1, d2, edge1, edge2, pitch, opening_material  openings of a flat head (UG-39)
**   service     minimum thickness: 1 3/32 in., 2 1/4 in., else 1/16 in.
**   corroded_k  1: K of an elliptical head calculated again at each step
** Returned:
**   fail_ca     corrosion at failure (in); negative when t is below the minimum thickness
**   fail_ca_k   the same of the knuckle, limited by t, too; -1.0 without a knuckle, or when none of its
**               steps brings the pressure down to P
**
** Notes:
**   1) Thin cylinders and spheres and the shell of a cone use a closed form, all others steps of
**      0.001 in. A flat head is given one step at least.
**   2) The code constants are those that the latest SET_METRIC_CONSTANTS filled.
*/
TARVANE_API void TARVANE_CALL COMPUTE_FAILURE_CA_DIV1(
    const float* P, const float* D, const float* E, const float* S, const float* t, const float* k,
    const float* L, const float* r, const float* alpha, const float* C, const float* D2,
    const int32_t* element, float* fail_ca, const int32_t* outside, const float* tk,
    float* fail_ca_k, const float* d1, const float* d2, const float* edge1, const float* edge2,
    const float* pitch, const float* opening_material, const int32_t* service,
    const int32_t* corroded_k);

/*
** APP_1_4F_HEAD - thin torispherical and elliptical heads against failure of the knuckle, VIII-1
** Appendix 1-4(f), for a host that wants its report. SHLINT calls it silently.
**
** Given:
**   element     TARVANE_ELLIPTICAL_HEAD, TARVANE_TORISPHERICAL_HEAD; nothing happens with any other
**   outside     0: inside diameter
**   P           design pressure (psi)
**   t           given thickness (in)
**   spare5, spare22  not read, may be null
**   L           crown radius of a torispherical head (in)
**   D           diameter (in)
**   r           knuckle radius of a torispherical head (in)
**   k           aspect ratio D/2h of an elliptical head; L and r by VIII-2 4.3.7.1
**   temp        design temperature (F)
**   Et, Sy      elastic modulus and yield stress (psi)
**   temp_limit  temperature limit of Table 1-4.3 for the material; the report of mode 1 has a note
**               when temp is not below it
**   c, Ut       corrosion allowance, mill under-tolerance (in)
**   mode        0 solve for the thickness, 1 the same with a report; 2 MAWP at t less c and Ut with a
**               report, 3 the same called new and cold; 4 and 5 as 2 and 3, silent
**   tmin_label  mode 1: 0 calls the thickness TR, else TMINC
**   hydro       mode 2: hydrostatic head taken off the MAWP in the report (psi)
**   t_start     modes 0 and 1: first trial (in)
** Given and returned:
**   t_solved    thickness (in), modes 2 to 5: t less c and Ut; written for classes 1 and 2, and set to
**               0.0 when cls is given as 0
**   cls         in: above 0 the report of mode 1 begins with its title; out: TARVANE_HEAD_...
** Returned:
**   p_first     allowable pressure of the first trial (psi)
**   ratio       thickness less c and Ut over crown radius plus c
**
** Note: IWRITE is restored after the call. With TARVANE_HEAD_FAILED it stays as the mode set it (1
** for modes 1 to 3, else 0), and ratio is not written.
*/
TARVANE_API void TARVANE_CALL
APP_1_4F_HEAD(const int32_t* element, const int32_t* outside, const float* P, const float* t,
              const void* spare5, const float* L, const float* D, const float* r, const float* k,
              const float* temp, const float* Et, const float* Sy, const float* temp_limit,
              float* t_solved, int32_t* cls, const float* c, const float* Ut, float* p_first,
              const int32_t* mode, const int32_t* tmin_label, const float* hydro,
              const void* spare22, float* ratio, const float* t_start);

/*
** FORMING_STRAIN - extreme fibre elongation of a formed element (UCS-79, UHA-44); for formed heads of
** Division 2 also the strain by the flat blank.
**
** Given:
**   element     TARVANE_CYLINDER to TARVANE_CONE; 0.0 for others
**   outside     0: D is the inside diameter
**   D, t        diameter, thickness (in)
**   name, name_len, reference  material, looked up in the material files
**   r           knuckle radius of a torispherical head (in)
**   D_small     small end of a cone (in); the smaller of it and D counts
**   alpha       half apex angle of a cone (degrees)
**   code        1 Division 1, 2 Division 2; 0.0 for others
**   element_index  not read: the geometry is that of the arguments
**   k, L, Lc, straight  of a Division 2 head, as HEAD_SURFACE_AREA
** Returned:
**   strain      (per cent); 0.0 where the material has no limit or no record, 100.0 for a mean radius
**               of at most 0.01 in.
**   cls         class of the material record, 0 without a record; not written for other codes
**   thinning    Division 2 heads: 100 ln of blank over inside diameter (per cent), else 0.0
**   area, D_max, D_blank  Division 2 heads: HEAD_SURFACE_AREA, and the diameter of the flat blank
**               (in); else unchanged
*/
TARVANE_API void TARVANE_CALL FORMING_STRAIN(
    const int32_t* element, const int32_t* outside, const float* D, const float* t, float* strain,
    const char* name, int32_t name_len, const float* r, const float* D_small, const float* alpha,
    const int32_t* code, const int32_t* reference, int32_t* cls, const int32_t* element_index,
    float* thinning, float* area, float* D_max, float* D_blank, const float* k, const float* L,
    const float* Lc, const float* straight);

/*
** HEAD_SURFACE_AREA - outside surface of a formed head with its straight flange.
**
** Given:
**   D         inside diameter (in)
**   t, ts     thicknesses (in), of which the greater one counts
**   L, r      crown and knuckle radius of a torispherical head (in)
**   Lc        not read, may be null
**   straight  length of the straight flange (feet)
**   k         aspect ratio of an elliptical head
**   type      TARVANE_ELLIPTICAL_HEAD, TARVANE_TORISPHERICAL_HEAD, TARVANE_SPHERE (hemisphere)
** Returned:
**   area      (sq in); unchanged for another type
**   D_max     outside diameter (in)
*/
TARVANE_API void TARVANE_CALL HEAD_SURFACE_AREA(const float* D, const float* t, const float* ts,
                                                const float* L, const float* Lc, const float* r,
                                                const float* straight, const float* k,
                                                const int32_t* type, float* area, float* D_max);

/*
** LIS_UCS23_MATERIAL - is a material in the list of Table UCS-23?
**
** Given:
**   name, name_len  material name, as in "VIII-1_Matls_By_Table.txt" of the system folder
** Returned (function value):
**   logical: 1 found; 0 not found, or no file
*/
TARVANE_API int32_t TARVANE_CALL LIS_UCS23_MATERIAL(const char* name, int32_t name_len);

/*
** PATTERNED_OPENINGS - openings in a flat head or cover by UG-39, with the lines of the check for a
** host that wants its report; violations are in the error style there. SHLINT and FLANGE_CALC call it
** themselves.
**
** Given:
**   kind      TARVANE_FLAT_HEAD, or 7 for a bolted cover; with any other the factors are neutral
**   head_dia  diameter of the head (in)
**   d1, d2, edge1, edge2, pitch  openings, their distances to the edge, their spacing (in); d2 0.0: one
**             opening
**   material  how the head is attached: 1, 2, 5 to 8 limit the doubled factor to 0.50, others to 0.75
**   C         attachment factor
** Returned:
**   factor    h of UG-39(e)(2), by which the thickness grows; 1.0: none
**   C_out     attachment factor doubled by UG-39(d)(1), of a flat head; else C
**   flag      1: a single opening, or openings far enough apart
*/
TARVANE_API void TARVANE_CALL PATTERNED_OPENINGS(const int32_t* kind, const float* head_dia,
                                                 const float* d1, const float* d2,
                                                 const float* edge1, const float* edge2,
                                                 const float* pitch, const int32_t* material,
                                                 const float* C, float* factor, float* C_out,
                                                 int32_t* flag);

/*
** DIV2_M_FACTOR, DIV2_K_FACTOR - factors of the older Division 2, AD-204, that SHLINT takes for formed
** heads when the fifth argument of SET_GLOBALS_FROM_TVN is 1: M of the crown's membrane stress, K of the
** bending in the knuckle, by (t - c - Ut)/(L + c) and (r + c)/(D + 2c).
**
** Given:
**   D, r, t, L, c  inside diameter, knuckle radius, thickness, crown radius, corrosion allowance (in)
**   element        TARVANE_ELLIPTICAL_HEAD: radii 0.17 D and 0.9 D, whatever r and L
**   Ut             mill under-tolerance (in)
** Returned (function value):
**   the factor
**
** Note: above a ratio r/D of 0.20 the table of K ends, and the column of the previous call is used. A ratio
** t/L that is not a number takes the last row of the tables.
*/
TARVANE_API float TARVANE_CALL DIV2_M_FACTOR(const float* D, const float* r, const float* t,
                                             const float* L, const float* c, const int32_t* element,
                                             const float* Ut);
TARVANE_API float TARVANE_CALL DIV2_K_FACTOR(const float* D, const float* r, const float* t,
                                             const float* L, const float* c, const int32_t* element,
                                             const float* Ut);

#ifdef __cplusplus
}
#endif

#endif
