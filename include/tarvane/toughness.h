/*
** toughness.h - minimum design metal temperature and notes on materials. Part of tarvane.h, which describes the calling convention.
*/
#ifndef TARVANE_TOUGHNESS_H
#define TARVANE_TOUGHNESS_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/* UCS-66 curve of a material, and the values for materials without one. */
enum {
    TARVANE_CURVE_A = 1,
    TARVANE_CURVE_B = 2,
    TARVANE_CURVE_C = 3,
    TARVANE_CURVE_D = 4,
    TARVANE_CURVE_IMPACT_TESTED = 5, /* a material with a specified impact test temperature */
    TARVANE_CURVE_EXEMPT = 6
};

/* A temperature that was not computed; UG-20(f) where it does not apply. */
#define TARVANE_NO_TEMPERATURE (1.0101f)
#define TARVANE_UG20_NOT_APPLICABLE (650.0f)

/*
** MDMT_ELEMENT - lowest metal temperature at which an element of carbon or low-alloy steel may run
** without impact testing: curves of Fig. UCS-66, reduction of Fig. UCS-66.1, credit of UCS-68(c),
** exemption of UG-20(f); AM-218 of the old Division 2; VIII-2 3.11 (MDMT_DIV2_FIGURES). Writes its
** result lines to the report.
**
** Given:
**   curve           TARVANE_CURVE_A to TARVANE_CURVE_EXEMPT
**   tg              governing thickness (in)
**   estar           joint efficiency of the ratio
**   c               corrosion allowance (in)
**   t_design        design temperature (F)
**   tr              required thickness (in); zero or negative: its magnitude is the pressure ratio
**   code            2: AM-218, others: UCS-66
**   pwht            1: the element is heat treated
**   credit          1: it may take the 30 F credit of UCS-68(c)
**   c_ext           external corrosion allowance (in)
**   ug20_candidate  1: it may use UG-20(f)
**   sy              yield stress (psi), VIII-2 3.11 only
**   spec, spec_len  material, and
**   index           its reference number: its record is looked up for curves 5 and 6
**   kind            list of IMPACT_TEST_TEMPERATURE
**   pad_governs     1: the reinforcing pad governs; ratio and reduction are given
**   tg_sr           thickness for the ratio (in) when above 0.001, else tg counts
**   element         number of the element, for its own required temperature (GETHOSTINPUT)
** Given and returned:
**   warnings        + 1 for each note of UG-20(f) and each mandatory impact test of Division 2
**   ratio           thickness or stress ratio, -1.0 none; read with pad_governs 1 only
**   reduction       temperature reduction (F); unchanged where no reduction is calculated
** Returned:
**   t_min           temperature from the curve (F); TARVANE_NO_TEMPERATURE: none
**   mdmt            temperature after reductions (F); TARVANE_NO_TEMPERATURE: none
**   t_ug20          temperature of UG-20(f) (F); TARVANE_UG20_NOT_APPLICABLE where it does not apply
**   estar_used      estar as used; negative: heat treatment is required by UCS-68(b); unchanged where no
**                   ratio is calculated
**
** Notes:
**   1) The present rules of Division 2 apply while the switch div2_current of SET_TOUGHNESS_SWITCHES is
**      on, which FLANGE_CALC sets for its code; force_div1 of SET_MATERIAL_SELECTION selects UCS-66.
**   2) A governing thickness above 4 in (metric 100 mm) less corrosion gives a warning and no
**      temperature for curves 1 to 4. The limits are code constants: SET_METRIC_CONSTANTS comes first.
**   3) The required temperature is the first one of GETHOSTINPUT. When the version mark holds "-24"
**      and mdmt_skip is 0 it is the second one for an element with a switch of its own and for
**      element -4, else the third one.
**   4) Element 58 of the setup block, 1, selects Fig. UCS-66.1 before its 1999 edition, and the older
**      material file for this and later lookups.
*/
TARVANE_API void TARVANE_CALL MDMT_ELEMENT(
    const int32_t* curve, const float* tg, float* t_min, float* mdmt, float* t_ug20,
    const float* estar, const float* c, const float* t_design, const float* tr, int32_t* warnings,
    const int32_t* code, float* ratio, const int32_t* pwht, const int32_t* credit,
    const float* c_ext, const int32_t* ug20_candidate, const float* sy, float* estar_used,
    const char* spec, int32_t spec_len, const int32_t* index, const int32_t* kind, float* reduction,
    const int32_t* pad_governs, const float* tg_sr, const int32_t* element);

/*
** MDMT_DIV2_FIGURES - minimum design metal temperature by VIII-2 3.11: Figures 3.7 and 3.8, reductions
** of Figures 3.12 and 3.13. Writes its result lines to the report.
**
** Given:
**   sy      yield stress (psi)
**   estar   joint efficiency
**   t_nom   nominal thickness (in)
**   c_int   inside corrosion allowance (in)
**   c_ext   outside corrosion allowance (in)
**   pwht    1: heat treated
**   curve   1 to 4: A to D; below 1: no carbon steel, no calculation; 5 and above: as curve A
**   tr      required thickness (in); zero or negative: its magnitude is the ratio
**   t_user  the user's minimum design temperature (F)
** Returned:
**   t_curve     temperature from the figure (F); TARVANE_NO_TEMPERATURE: none
**   mdmt        temperature after reduction (F); TARVANE_NO_TEMPERATURE: none
**   sr          stress ratio; -1.0: none
**   estar_used  estar within 0.8 and 1.0; unchanged for a curve below 1
**
** Note: up to a ratio of 0.24 (0.3 with division2_class 0 of SET_MATERIAL_SELECTION) both temperatures
** are -155 F.
*/
TARVANE_API void TARVANE_CALL MDMT_DIV2_FIGURES(const float* sy, const float* estar,
                                                const float* t_nom, const float* c_int,
                                                const float* c_ext, const int32_t* pwht,
                                                const int32_t* curve, const float* tr,
                                                float* t_curve, float* mdmt, const float* t_user,
                                                float* sr, float* estar_used);

/* How a metal temperature was found. */
enum {
    TARVANE_MDMT_NOT_RUN = 0,
    TARVANE_MDMT_CALCULATED = 1,
    TARVANE_MDMT_BEYOND_LIMIT = 2, /* too thick: it must be impact tested */
    TARVANE_MDMT_NO_CURVE = 3      /* nothing to calculate for this curve */
};

/* And by which rules. */
enum {
    TARVANE_NO_MDMT_RULES = 0,
    TARVANE_MDMT_UCS_66 = 1,
    TARVANE_MDMT_AM_218 = 2,
    TARVANE_MDMT_3_11 = 3, /* VIII-2 3.11 */
    TARVANE_MDMT_UHA_51 = 4
};

/* Where the temperature before reductions came from. */
enum {
    TARVANE_T_OF_NOTHING = 0,
    TARVANE_T_OF_POLYNOMIAL = 1, /* of the curve */
    TARVANE_T_OF_CURVE_TABLE = 2,
    TARVANE_T_OF_FIGURE_3_7 = 3,    /* VIII-2, not heat treated */
    TARVANE_T_OF_FIGURE_3_8 = 4,    /* heat treated */
    TARVANE_T_OF_LOW_RATIO = 5,     /* VIII-2: no figure is used */
    TARVANE_T_AS_REQUIRED = 6,      /* an impact tested element of which no temperature is known */
    TARVANE_T_OF_SPECIFICATION = 7, /* impact test of the material */
    TARVANE_T_OF_USER = 8,          /* impact test temperature by the user */
    TARVANE_T_OF_UHA_51 = 9
};

/* UG-20(f): whether it applies, and why not. */
enum {
    TARVANE_UG20F_NOT_ASKED = 0, /* the element is no candidate */
    TARVANE_UG20F_APPLIES = 1,
    TARVANE_UG20F_SWITCHED_OFF = 2,
    TARVANE_UG20F_TOO_THICK = 3, /* above 1/2 in. for curve A, 1 in. for the others */
    TARVANE_UG20F_TOO_HOT = 4,   /* design temperature above 650 F */
    TARVANE_UG20F_NO_LOWER = 5,  /* it is no lower than that of the curve, which is above -20 F */
    TARVANE_UG20F_IMPACT_TESTED = 6 /* not for impact tested materials */
};

/* Why an element is exempt. */
enum {
    TARVANE_NOT_EXEMPT = 0,
    TARVANE_EXEMPT_BY_RATIO = 1,        /* the ratio is at most ratio_limit: down to mdmt */
    TARVANE_EXEMPT_BY_CURVE = 2,        /* TARVANE_CURVE_EXEMPT */
    TARVANE_EXEMPT_NO_CARBON_STEEL = 3, /* VIII-2 3.11, curve below 1 */
    TARVANE_EXEMPT_BY_UHA_51 = 4
};

/* The rule that gives the lowest temperature. */
enum {
    TARVANE_LOWEST_BY_NOTHING = 0,
    TARVANE_LOWEST_BY_CURVE = 1,
    TARVANE_LOWEST_BY_CREDIT = 2,    /* the curve with the credit for heat treatment, UCS-68(c) */
    TARVANE_LOWEST_BY_REDUCTION = 3, /* the ratio, or the reduction of an impact test */
    TARVANE_LOWEST_BY_UG_20F = 4,
    TARVANE_LOWEST_BY_IMPACT_TEST = 5,
    TARVANE_LOWEST_AS_REQUIRED = 6,  /* TARVANE_T_AS_REQUIRED */
    TARVANE_LOWEST_BY_LOW_RATIO = 7, /* the floor of low ratios */
    TARVANE_LOWEST_BY_UHA_51 = 8
};

/* What a ratio is of. */
enum { TARVANE_NO_RATIO = 0, TARVANE_THICKNESS_RATIO = 1, TARVANE_STRESS_RATIO = 2 };

/*
** GETMDMTRESULTS - address of what the latest MDMT_ELEMENT or MDMT_DIV2_FIGURES found, or UHA51_NOTE of a
** grade that is exempt: values of its stages, not of a printed text. Filled alike with the report on and
** off; filling it changes no other result, gate or state. Zeros but for version and bytes at load and after
** RESET_ENGINE; reset at each entry. TARVANE_NO_VALUE: the stage did not run, or there is no such
** temperature. Temperatures F, lengths in. It grows at its end only: `bytes` says how far it
** reaches.
**
** Note: lowest is the least one of t_min, mdmt and, where it applies, t_ug20f. An impact tested element of
** which no temperature is known is tested at the required one.
*/
typedef struct {
    int32_t version, bytes, serial; /* serial: calculations since RESET_ENGINE */
    int32_t status, rules;          /* TARVANE_MDMT_CALCULATED, TARVANE_MDMT_UCS_66 and so on */
    int32_t code, element, curve;   /* as given */
    int32_t curve_taken;            /* VIII-2 takes curve A for one that it does not have */
    int32_t older_edition;          /* 1: Fig. UCS-66.1 before its 1999 edition */
    int32_t reductions_allowed;     /* the switch */
    int32_t pad_governs;            /* as given */
    int32_t t_curve_by;             /* TARVANE_T_OF_POLYNOMIAL and so on */
    float required;                 /* required temperature */
    float tg, tg_net, tg_limit;     /* governing thickness, less corrosion, and its limit */
    float t_curve;                  /* of the curve or figure, before credit and reductions */
    int32_t ratio_kind;             /* TARVANE_THICKNESS_RATIO and so on */
    float t_ratio;                  /* thickness that the required one is compared with */
    float ratio, ratio_limit;       /* up to the limit an element is exempt, or good for -155 F */
    float estar_used;
    float reduction_by_ratio; /* Fig. UCS-66.1, AM-218.3, VIII-2 3.12 and 3.13 */
    float reduction_66g;      /* of an impact tested material: UCS-66(g), */
    float reduction_ug84;     /*   UG-84(b)(2) */
    float reduction;          /* as taken; 0.0 with pwht_required */
    int32_t credit;           /* 1: 30 F for heat treatment are in t_min */
    int32_t ug20f;            /* TARVANE_UG20F_APPLIES and so on */
    float t_ug20f;            /* its temperature, whether it is lower or not */
    int32_t pwht_required;    /* 1: by UCS-68(b) */
    int32_t impact_tests;     /* 1: mandatory, too thick, or required below mdmt of VIII-2 */
    int32_t exempt;           /* TARVANE_EXEMPT_BY_RATIO and so on */
    float impact_temperature; /* of the impact test */
    float t_min, mdmt;        /* as MDMT_ELEMENT returned them */
    float lowest;
    int32_t lowest_by; /* TARVANE_LOWEST_BY_CURVE and so on */
} TARVANE_MDMT_RESULTS;
#define TARVANE_MDMT_RESULTS_VERSION 1
TARVANE_API TARVANE_MDMT_RESULTS* TARVANE_CALL GETMDMTRESULTS(void);

/*
** GETUCSCURVE - curve of Fig. UCS-66 from a material's record.
**
** Given:
**   spec, spec_len  material
**   reference       its reference number
**   code            design code of the material file
**   thin            1: the curve of thin sections
** Returned:
**   curve           TARVANE_CURVE_A and so on; -1 when the material has no record
*/
TARVANE_API void TARVANE_CALL GETUCSCURVE(const char* spec, int32_t spec_len,
                                          const int32_t* reference, const int32_t* code,
                                          const int32_t* thin, int32_t* curve);

/*
** READ_IMPACT_TABLE - reads the impact table from the host's input record (GETHOSTINPUT). A host
** calls it when it has changed these fields:
**   impact_switches  columns 1 to 4, "1" on: reduction of UCS-66(g), reduction of Fig. UCS-66.1,
**                    reduction of UG-84(b)(2), temperatures entered by the user
**   impact_counts    entries of the three lists, limited to 0 to 11
**   impact_names, impact_numbers
**                    names and temperatures (F) of the three lists
**   single_name, single_number
**                    name and temperature of kind 4
*/
TARVANE_API void TARVANE_CALL READ_IMPACT_TABLE(void);

/*
** IMPACT_TEST_TEMPERATURE - impact test temperature that the user entered for a name.
**
** Given:
**   name, name_len  16 characters count
**   kind            list 1, 2 or 3; 4 the single name
** Returned:
**   temperature     (F); 100.0 when there is none, or the user's table is off
*/
TARVANE_API void TARVANE_CALL IMPACT_TEST_TEMPERATURE(const char* name, int32_t name_len,
                                                      float* temperature, const int32_t* kind);

/*
** UG84_REDUCTION - temperature reduction of UG-84(b)(2) by the yield strength.
**
** Given:
**   yield      yield strength (ksi)
** Returned:
**   reduction  10.0 F up to 40 ksi, 5.0 F below 55 ksi, else 0.0; 0.0 while the user's table is off
*/
TARVANE_API void TARVANE_CALL UG84_REDUCTION(float* reduction, const float* yield);

/*
** LIS_EXEMPT_SS - austenitic stainless grade that is exempt from impact testing (UHA-51)?
**
** Given:
**   code            design code
**   name, name_len  material: specification, one blank, grade, as in "SA-240 304"
** Returned (function value):
**   1 exempt, 0 not; 0 for every name when code or the code of SET_MODULE_CODE is 2 or above
*/
TARVANE_API int32_t TARVANE_CALL LIS_EXEMPT_SS(const int32_t* code, const char* name,
                                               int32_t name_len);

/*
** UHA51_NOTE - results of a grade that is exempt by UHA-51, and its line in the report. Nothing
** happens for other materials.
**
** Given:
**   code, name, name_len  as in LIS_EXEMPT_SS
** Returned:
**   t_min, mdmt           -320.0 (F)
**   ratio                 1.0101
**   factor1, factor2      1.0
*/
TARVANE_API void TARVANE_CALL UHA51_NOTE(const int32_t* code, const char* name, int32_t name_len,
                                         float* t_min, float* mdmt, float* ratio, float* factor1,
                                         float* factor2);

/*
** UCS6_NOTE - warning about a material that UCS-6(b)(3) restricts: SA-36, SA-283, and SA/CSA-G40.21,
** above 5/8 in.
**
** Given:
**   material, material_len
**   thickness  (in)
**   code       design code; nothing is written from 2 on
**   g40_flag   1: SA/CSA-G40.21 counts too
*/
TARVANE_API void TARVANE_CALL UCS6_NOTE(const char* material, int32_t material_len,
                                        const float* thickness, const int32_t* code,
                                        const int32_t* g40_flag);

#ifdef __cplusplus
}
#endif

#endif
