/*
** tarvane.h - the C surface of the tarvane calculation engine for pressure vessels.
**
** Calling convention
**   Every argument is passed by reference, scalars too. A character argument is a pair: the address, and
**   directly after it the length by value. A negative length counts as 0; the characters of a positive one
**   must be there. Character data has a fixed width and is padded with blanks; it does not end in a NUL.
**   REAL is a 32-bit float, INTEGER a 32-bit signed integer. A logical is an INTEGER of which bit 0
**   counts. Arrays are described by one-based element numbers; element k of an array x is
**   x[k - 1].
**
** Units
**   Inches, pounds, psi, inch-pounds and degrees Fahrenheit, whatever the report shows. The report
**   multiplies each value by the unit factor of its kind as it prints it.
**
** Order of calls
**   1. Fill the setup block (GETSETUP), set the exported variables, call SET_GLOBALS_FROM_TVN.
**   2. SET_METRIC_CONSTANTS.
**   3. SET_IOUT, SET_IWRITE, SET_IWRTFL for the report, with OPENUNIT for a report file.
**   4. SET_CHART and SET_YIELD before anything that uses a material chart.
**   5. The calculation routine of each element, in any order and as often as there are elements.
**   6. Read the results from the arguments, and the line store through GETLINESCOMFLG.
**
** Notes
**   1) The engine keeps all its state in static storage: one calculation at a time, no threads.
**      State outlasts a call; RESET_ENGINE puts it back to what it was at load.
**   2) No routine returns an error code as a rule. What can't be computed is returned as the value
**      TARVANE_NO_VALUE, and problems of the input are numbered messages in the report.
**   3) On 32-bit Windows the routines are __stdcall and are exported under two names each, the
**      plain one (FLANGE_CALC) and the decorated one (_FLANGE_CALC@84).
*/
#ifndef TARVANE_H
#define TARVANE_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Constants ------------------------------------------------------------------------------- */

/* "No value": in a record element on input, in a pressure on output. Bits 0xBF814AF5. */
#define TARVANE_NO_VALUE (-1.0101f)

/* Design codes. */
enum {
    TARVANE_ASME_VIII_1 = 1, /* ASME Section VIII Division 1, Appendix 2 */
    TARVANE_ASME_VIII_2 = 2, /* ASME Section VIII Division 2, 4.16 */
    TARVANE_PD_5500 = 3,     /* PD 5500, section 3.8 */
    TARVANE_EN_13445 = 4     /* EN 13445, section 11 */
};

/* Flange types, record element 2. */
enum {
    TARVANE_INTEGRAL_WELD_NECK = 1,
    TARVANE_INTEGRAL_SLIP_ON = 2,
    TARVANE_INTEGRAL_RING = 3,
    TARVANE_LOOSE_SLIP_ON = 4,
    TARVANE_LOOSE_RING = 5,
    TARVANE_LAP_JOINT = 6,
    TARVANE_BLIND = 7, /* or TEMA channel cover, by text slot 75 */
    TARVANE_REVERSE_WELD_NECK = 8,
    TARVANE_LOOSE_REVERSE = 9
};

/* Analysis kinds, record element 3. */
enum {
    TARVANE_ANALYSE = 1,   /* analyse the given flange */
    TARVANE_THICKNESS = 2, /* the same, and find the required thickness first */
    TARVANE_DESIGN = 3     /* select the geometry, then as TARVANE_THICKNESS */
};

/* Thread series, record element 23. */
enum {
    TARVANE_TEMA_THREADS = 1,
    TARVANE_UNC_THREADS = 2,
    TARVANE_SPECIAL_ROOT_AREA = 3, /* root area in record element 51 */
    TARVANE_TEMA_METRIC_THREADS = 4,
    TARVANE_BS_3643_THREADS = 5,
    TARVANE_SABS_1700_THREADS = 6,
    TARVANE_3P_M30_THREADS = 7,
    TARVANE_USER_THREADS = 8
};

/* Facing sketches, record elements 27 and 57: sketches of ASME VIII-1 Table 2-5.2. */
enum {
    TARVANE_SKETCH_1A = 1,
    TARVANE_SKETCH_1B = 2,
    TARVANE_SKETCH_1C = 3,
    TARVANE_SKETCH_1D = 4,
    TARVANE_SKETCH_2 = 5,
    TARVANE_SKETCH_3 = 6,
    TARVANE_SKETCH_4 = 7,
    TARVANE_SKETCH_5 = 8,
    TARVANE_SKETCH_6 = 9
};

/* Splits of a ring flange, record element 41. */
enum {
    TARVANE_NO_SPLIT = 0,
    TARVANE_ONE_SPLIT = 1, /* moments doubled */
    TARVANE_TWO_SPLITS = 2 /* moments times 0.75 */
};

/* ---- The flange record ----------------------------------------------------------------------- */

#define TARVANE_RECORD_ELEMENTS 200

/* Element k of a record: TARVANE_AT(record, TARVANE_P) = 150.0f */
#define TARVANE_AT(record, element) ((record)[(element)-1])

/*
** Elements of the flange record, array of 200 reals, under the report's symbols. Whole numbers are
** stored as reals and truncated. "Stand-alone form" means that element 1 is -1.0 or below;
** TARVANE_NO_VALUE is, too. Any other element that holds TARVANE_NO_VALUE counts as 0.0, except 8,
** 9, 71, 74 to 78 and 100 to 110, which some steps take as given: give 0.0 there. All that hold it
** are set to 0.0 in the host's record.
*/
enum {
    /* Given */
    TARVANE_ELEMENT = 1,            /* element number; 0: no vessel; negative: stand-alone form */
    TARVANE_TYPE = 2,               /* flange type, 1 to 9 */
    TARVANE_KIND = 3,               /* analysis kind, 1 to 3 */
    TARVANE_P = 4,                  /* design pressure (psi); negative: external */
    TARVANE_T_DESIGN = 5,           /* design temperature (F) */
    TARVANE_Sfo = 6,                /* flange allowable stress at design temperature (psi) */
    TARVANE_Sfa = 7,                /* flange allowable stress at ambient temperature (psi) */
    TARVANE_t = 8,                  /* flange thickness (in); not positive: 2.0 */
    TARVANE_ci = 9,                 /* internal corrosion allowance (in) */
    TARVANE_B = 10,                 /* flange inside diameter (in); TEMA channel cover: Young's
                                       modulus (psi) if above 10000000, else it is looked up by
                                       element 34 and text slot 120 */
    TARVANE_A = 11,                 /* flange outside diameter (in) */
    TARVANE_Fod = 12,               /* flange face outside diameter (in) */
    TARVANE_Fid = 13,               /* flange face inside diameter (in) */
    TARVANE_Go = 14,                /* gasket outside diameter (in) */
    TARVANE_Gi = 15,                /* gasket inside diameter (in) */
    TARVANE_go = 16,                /* thickness of hub at small end (in) */
    TARVANE_g1 = 17,                /* thickness of hub at large end (in) */
    TARVANE_h = 18,                 /* length of hub (in) */
    TARVANE_Sb = 19,                /* bolt allowable stress at design temperature (psi) */
    TARVANE_Sa = 20,                /* bolt allowable stress at ambient temperature (psi) */
    TARVANE_C = 21,                 /* diameter of bolt circle (in) */
    TARVANE_a = 22,                 /* nominal bolt diameter (in) */
    TARVANE_THREADS = 23,           /* thread series, 1 to 8 */
    TARVANE_BOLTS = 24,             /* number of bolts */
    TARVANE_m = 25,                 /* gasket factor */
    TARVANE_y = 26,                 /* gasket design seating stress (psi) */
    TARVANE_SKETCH = 27,            /* facing sketch, 1 to 9 */
    TARVANE_COLUMN = 28,            /* column for gasket seating: 1 or 2 */
    TARVANE_tg = 29,                /* gasket thickness (in) */
    TARVANE_w = 30,                 /* flange face nubbin width (in) */
    TARVANE_lp = 31,                /* length of partition gasket (in) */
    TARVANE_MATERIAL_CLASS = 34,    /* reference number of the modulus table */
    TARVANE_D = 35,                 /* diameter of the load reaction, long span (in) */
    TARVANE_d = 36,                 /* diameter of the load reaction, short span (in) */
    TARVANE_dfAllow = 37,           /* allowed channel cover deflection (in); 0: by TEMA */
    TARVANE_L = 38,                 /* perimeter along the centre of the bolts (in); blind flange
                                       with D equal to d: up to 0.001 counts as Pi * C */
    TARVANE_LjID = 39,              /* lap joint contact inside diameter (in) */
    TARVANE_LjOD = 40,              /* lap joint contact outside diameter (in) */
    TARVANE_n = 41,                 /* splits of a ring flange, types 5 and 6: 0, 1, 2 */
    TARVANE_tw = 42,                /* length of weld leg at back of ring (in) */
    TARVANE_MATING_OPERATING = 44,  /* mating flange operating bolt load (lb) */
    TARVANE_MATING_SEATING = 45,    /* mating flange seating bolt load (lb) */
    TARVANE_MATING_DESIGN = 46,     /* mating flange design bolt load (lb) */
    TARVANE_RESERVED_47 = 47,       /* read, without effect */
    TARVANE_AXIAL_FORCE = 48,       /* axial force on flange (lb), by text slot 45 */
    TARVANE_BENDING_MOMENT = 50,    /* bending moment on flange (foot-pounds), by text slot 45 */
    TARVANE_ROOT_AREA = 51,         /* root area of one bolt (sq in), thread series above 2 */
    TARVANE_tp = 52,                /* width of partition gasket (in) */
    TARVANE_DENSITY = 53,           /* material density (lb per cu in), for the weights */
    TARVANE_SHELL_ID = 54,          /* inside diameter of the attached shell (in) */
    TARVANE_mPart = 55,             /* partition gasket factor */
    TARVANE_yPart = 56,             /* partition gasket design seating stress (psi) */
    TARVANE_SKETCH_PART = 57,       /* partition gasket facing sketch */
    TARVANE_COLUMN_PART = 58,       /* partition gasket column */
    TARVANE_SHELL_STRESS = 60,      /* allowable stress of the attached shell or nozzle at design
                                       temperature (psi) */
    TARVANE_SHELL_STRESS_COLD = 61, /* the same at ambient temperature (psi) */
    TARVANE_RESERVED_62 = 62,       /* read, without effect */
    TARVANE_ce = 63,                /* external corrosion allowance (in) */
    TARVANE_HOLE_D1 = 64,           /* blind cover, patterned holes: diameter D1 (in) */
    TARVANE_HOLE_D2 = 65,           /*   diameter D2 (in) */
    TARVANE_HOLE_EDGE1 = 66,        /*   edge distance to D1 (in) */
    TARVANE_HOLE_EDGE2 = 67,        /*   edge distance to D2 (in) */
    TARVANE_HOLE_PITCH = 68,        /*   pitch (in) */
    TARVANE_HOLES = 69,             /* 1: evaluate patterned holes in the blind cover */
    TARVANE_ATTACHMENT = 70,        /* kind of attachment to the shell; 1 to 4: shell of known
                                       thickness */
    TARVANE_SHELL_THICKNESS = 71,   /* nominal thickness of the attached shell (in) */
    TARVANE_HUB_BY_SHELL = 72,      /* 1: hub small end check with the stress of element 60 */
    TARVANE_SEATING_RULE = 73,      /* 1: W = Sa * Ab; else W = Sa * (Am + Ab) / 2 */
    TARVANE_SHELL_CA = 74,          /* corrosion allowance of the attached shell (in); stand-alone
                                       form: also setup element 43 */
    TARVANE_BOLT_REFERENCE = 75,    /* reference number of the bolt material */
    TARVANE_MATERIAL_METRIC = 76,   /* stand-alone form: 1: metric material files */
    TARVANE_MATERIAL_DIV1 = 77,     /* stand-alone form: 1: Division 1 files whatever the code */
    TARVANE_MATERIAL_CLASS_D2 = 78, /* stand-alone form: Division 2 file class */

    /* Given, stand-alone form only: unit factors */
    TARVANE_UNIT_THICKNESS = 100, /* small lengths, thicknesses */
    TARVANE_UNIT_PRESSURE = 101,
    TARVANE_UNIT_DIAMETER = 102,
    TARVANE_UNIT_STRESS = 103,
    TARVANE_UNIT_FURTHER = 104,
    TARVANE_UNIT_FORCE = 105,
    TARVANE_UNIT_MOMENT = 106, /* from foot-pounds */
    TARVANE_UNIT_AREA = 107,
    TARVANE_UNIT_TEMPERATURE_OFFSET = 108, /* shown = (F - offset) / scale */
    TARVANE_UNIT_TEMPERATURE_SCALE = 109,
    TARVANE_UNIT_WEIGHT = 110,

    /* Returned; 120 to 128 are 0.0 from the start of a call until they are computed. Kind 3 also
       replaces elements 16 to 18 when the hub is too thin for its pressure; 18 is then not a
       number. */
    TARVANE_W = 120,    /* flange design bolt load, gasket seating (lb) */
    TARVANE_Wm1 = 121,  /* flange bolt load, operating (lb) */
    TARVANE_Wm2 = 122,  /* flange bolt load, seating (lb) */
    TARVANE_G = 123,    /* gasket reaction diameter (in) */
    TARVANE_Mop = 124,  /* total moment for operation (in-lb) */
    TARVANE_Matm = 125, /* total moment for gasket seating (in-lb) */
    TARVANE_Ab = 126,   /* actual bolt area (sq in) */
    TARVANE_Am = 127,   /* required bolt area (sq in) */
    TARVANE_HG = 128,   /* gasket load for the operating condition (lb) */

    TARVANE_DESIGNED_BOLTS = 130, /* 130 to 136, 142 to 145: kind 3 only */
    TARVANE_DESIGNED_a = 131,     /* working bolt diameter (in) */
    TARVANE_DESIGNED_C = 132,
    TARVANE_DESIGNED_g1 = 133,
    TARVANE_DESIGNED_go = 134,
    TARVANE_DESIGNED_h = 135,
    TARVANE_DESIGNED_A = 136,

    TARVANE_EXTERNAL_LOAD = 137,  /* load added by the equivalent pressure (lb) */
    TARVANE_PRESSURE_AREA = 138,  /* area of the hydrostatic end load (sq in) */
    TARVANE_HP_PER_P = 139,       /* contact load on gasket surfaces per unit pressure */
    TARVANE_HPPRIME_PER_P = 140,  /* full face inside compression per unit pressure */
    TARVANE_ADDED_PRESSURE = 141, /* equivalent pressure less P (psi) */

    TARVANE_DESIGNED_Fod = 142,
    TARVANE_DESIGNED_Fid = 143,
    TARVANE_DESIGNED_Go = 144,
    TARVANE_DESIGNED_Gi = 145,

    TARVANE_SHORT_Ab = 200 /* actual bolt area when the analysis ended early (sq in): see t_req */
};

/*
** Slots of the flange text, by their offset from 0. Slots are 15 characters wide unless noted. The
** first 135 characters are read in every form, the unit labels in the stand-alone form only.
*/
enum {
    TARVANE_TEXT_MATERIAL = 0,       /* flange material name */
    TARVANE_TEXT_BOLT_MATERIAL = 15, /* bolt material name */
    TARVANE_TEXT_DESCRIPTION = 30,   /* description; ":" in its 15th character: analyse at the given
                                        thickness also after the search for the required one */
    TARVANE_TEXT_EXTERNAL_LOADS = 45, /* "Y" and 14 blanks: elements 48 and 50 are in force */
    TARVANE_TEXT_MATING_LOADS = 60,   /* "Y": elements 44 to 46 are in force; "N" if they are not */
    TARVANE_TEXT_CHANNEL_COVER = 75,  /* "Y": this blind flange is a TEMA channel cover */
    TARVANE_TEXT_USE_CORROSION = 90, /* "Y" or "y": corrosion allowance in thickness calculations */
    TARVANE_TEXT_PARTITION = 105,    /* "Y": there is a partition gasket */
    TARVANE_TEXT_CHART = 120,        /* material chart name */

    TARVANE_TEXT_THICKNESS_LABEL = 285, /* 3 characters */
    TARVANE_TEXT_PRESSURE_LABEL = 300,  /* 10 */
    TARVANE_TEXT_DIAMETER_LABEL = 315,  /* 3 */
    TARVANE_TEXT_STRESS_LABEL = 330,    /* 10 */
    TARVANE_TEXT_FURTHER_LABEL = 345,   /* 10 */
    TARVANE_TEXT_FORCE_LABEL = 360,     /* 3 */
    TARVANE_TEXT_MOMENT_LABEL = 375,    /* 6 */
    TARVANE_TEXT_AREA_LABEL = 390,      /* 6 */
    TARVANE_TEXT_TEMPERATURE = 405,     /* 1: the letter after the degree sign */
    TARVANE_TEXT_WEIGHT_LABEL = 420     /* 3 */
};
#define TARVANE_TEXT_SLOT 15
#define TARVANE_TEXT_LENGTH 435

/* ---- Exported variables ---------------------------------------------------------------------- */

/* 1: report lines in plain characters (superscripts and the like spelled out). */
extern TARVANE_API int32_t FLAGS_mp_IINOSPECIAL;
/* Kept for the host; no calculation reads these two. */
extern TARVANE_API int32_t FLAGS_mp_LBSAREA;
extern TARVANE_API int32_t FLAGS_mp_LCHORD;
/* 1: external pressure takes factor A from the Table G data. */
extern TARVANE_API int32_t GLOBALS_mp_G_NUSE_TABLEG;
/* Kept for the host, which passes it on as an argument. */
extern TARVANE_API int32_t GLOBALS_mp_G_NUSE_CORRODEDK;
/* 1: Division 2 by its older rules. */
extern TARVANE_API int32_t GLOBALS_mp_G_NUSE_OLD_DIV_2;
/* 1: external pressure by Code Case 2286 or Division 2, 4.4. */
extern TARVANE_API int32_t GLOBALS_mp_G_NUSE_CASE2286;
/* Code constants (1/16 in and its companions): 0 inch, 1 metric, other: metric when the unit factor
   for thickness exceeds 1.1. */
extern TARVANE_API int32_t METRICCONSTANTS_mp_G_NMETRIC_CONSTANT;

/* ---- Calculation ----------------------------------------------------------------------------- */

/*
** FLANGE_CALC - analyse or design one bolted flange or flat cover (ASME VIII-1 Appendix 2 and
** UG-34, VIII-2 4.16, PD 5500 3.8, EN 13445 11).
**
** Given and returned:
**   record             array of 200 reals, TARVANE_ELEMENT and its companions
**   rigidity           in: 1 to evaluate the rigidity index; out: 0 for a full face gasket
** Given:
**   text, text_len     text slots, TARVANE_TEXT_LENGTH characters (135 outside the stand-alone
**                      form); the length is not read
**   report_kernel      report of the analysis under kind 1: 0 silent
**   write_case         1: report the internal pressure pass; 2: the external pressure pass
**   quiet_overstress   not 0: no message about an overstressed flange
**   code               design code, 1 to 4
**   element            row of the flange in the element tables; stand-alone form: 1 selects the
**                      1998 edition of Division 1
**   bolt_row           row of the bolt material in its name table
**   joint_e            joint efficiency E of the hub and of a blind flange
**   corroded_rigidity  1: rigidity index at the corroded thickness
**   standard_flange    0: full calculation; 1: standard flange without stress calculations
**   p_operating        vessel pressure at this flange (psi)
**   div2_edition       stand-alone form, code 2: 0 selects the rules of 4.16
**   decimal_comma      logical: decimal commas in the report
** Returned:
**   map_nc             maximum allowable pressure, new and cold (psi)
**   t_req_new_cold     required thickness new and cold, blind flanges only, else 0.0 (in)
**   t_req_new          required thickness new at design condition (in); written only when record
**                      element 1 is above 0
**   mawp               maximum allowable working pressure (psi)
**   t_req              required thickness, corroded (in); external pressure: the thickness used;
**                      minus the required bolt area (sq in) when the bolts are too small, or a
**                      design finds no geometry, and record element 1 is not positive
**
** Notes:
**   1) map_nc and mawp are TARVANE_NO_VALUE when there is no result; a flange that holds no pressure at
**      all may have 0.0 instead. t_req and t_req_new_cold are unchanged when the input is
**      refused, t_req also when the bolts of a numbered flange are too small, and t_req_new_cold also
**      under external pressure.
**   2) In the stand-alone form the report goes to the line store and the unit factors and labels
**      come from record and text; otherwise they are those of SET_UNITS.
**   3) IWRITE and IOUT are the same after the call as before it, in the stand-alone form too, which
**      writes to the line store meanwhile. IWRTFL stays as the last pass left it: set it again before
**      the next call.
**   4) The stand-alone form leaves its unit factors and labels, its material selectors, setup element
**      43, the choice of div2_edition and an edition of 1998 in force for calls of any form. A call whose
**      element 1 is not positive ends by selecting the code constants by its diameter factor (metric
**      above 1.5) and filling them; its own passes use those that were there before, zeros if
**      SET_METRIC_CONSTANTS was never called.
**   5) A flange whose outside diameter is not above its corroded inside diameter ends the host's
**      run. With a stop service that returns (SET_HOST_SERVICES) the call returns at once.
*/
TARVANE_API void TARVANE_CALL
FLANGE_CALC(float* record, const char* text, int32_t text_len, const int32_t* report_kernel,
            const int32_t* write_case, float* map_nc, float* t_req_new_cold, float* t_req_new,
            float* mawp, float* t_req, const int32_t* quiet_overstress, int32_t* rigidity,
            const int32_t* code, const int32_t* element, const int32_t* bolt_row,
            const float* joint_e, const int32_t* corroded_rigidity, const int32_t* standard_flange,
            const float* p_operating, const int32_t* div2_edition, const int32_t* decimal_comma);

/* ---- Data ------------------------------------------------------------------------------------ */

/*
** ASMEMOD - elastic modulus of a material (ASME II-D Tables TM; PD 5500 and EN 13445 tables).
**
** Given:
**   temperature  (F); limited to the ends of the table's axis
**   reference    reference number of the modulus table
**   code         3 and 4: built-in tables by the chart of SET_CHART; other: "ElastAlp07.txt"
** Returned (function value):
**   modulus (millions of psi); 0.0 without the file
**
** Note: where the table has no value, or there is no such table, the chart of SET_CHART gives the
** modulus, and when no chart is set carbon steel (reference 1) does, as for every reference above 230.
** Lines of the report say so. What has no value there either is 0.0.
*/
TARVANE_API float TARVANE_CALL ASMEMOD(const float* temperature, const int32_t* reference,
                                       const int32_t* code);

/*
** MODULUS - elastic modulus for PD 5500 and EN 13445 materials.
**
** Given:
**   chart_class  1.4 carbon steel, 1.1 austenitic, 0.95 titanium
**   temperature  (F)
** Returned:
**   result       modulus (psi); 0.0 for another class
**
** Note: the class 0.95 leaves its temperature axis for later calls of the other classes.
*/
TARVANE_API void TARVANE_CALL MODULUS(const float* chart_class, float* result,
                                      const float* temperature);

/*
** GET_YIELD_STRESS_FROM_CHART - yield stress from an external pressure chart (ASME II-D,
** Subpart 3).
**
** Given:
**   chart, chart_len  chart name
**   temperature       (F)
** Returned:
**   result            yield stress (psi); 0.0 where the chart takes the yield stress as its input
*/
TARVANE_API void TARVANE_CALL GET_YIELD_STRESS_FROM_CHART(const char* chart, int32_t chart_len,
                                                          const float* temperature, float* result);

/*
** PWHT_NEEDED - post weld heat treatment of a weld by P-number and group (UCS-56, VIII-2 Table 6.8).
**
** Given:
**   material, material_len  material name, of which 16 characters count; its record is looked up in the
**              material files
**   index      reference number of the material
**   rule       1 Division 1, 2 Division 2, other: no rule
**   forced     1: required for any P-number other than 8
**   thickness  nominal weld thickness (in.)
**   preheat    1: P-number 1 is relaxed up to 1-1/2 in.
** Returned:
**   required      1 required, 0 not, -1 the material has no record
**   p_number_one  1 when the P-number is 1
**   group_code    1 for P-number 1 groups 1 and 2, else minus the group; 0 without a record, and for
**                 P-number 8 under rules 1 and 2
**
** Note: the limits are code constants. They are filled here if SET_METRIC_CONSTANTS was never called.
*/
TARVANE_API void TARVANE_CALL PWHT_NEEDED(const char* material, int32_t material_len,
                                          const int32_t* index, const int32_t* rule,
                                          const int32_t* forced, const float* thickness,
                                          int32_t* required, int32_t* p_number_one,
                                          const int32_t* preheat, int32_t* group_code);

/*
** CHECK_BOLT_MATL_VS_DIAMETER - is the bolt material made in this diameter?
**
** Given:
**   name, name_len   bolt material
**   reference        its reference number
**   dia              nominal bolt diameter (in.)
**   print_flag       1: the warning goes to the report when ok is 0 and metric is not negative
**   code             design code; 3 and above are not checked, and ok is unchanged
**   metric, force_div1, division2_class
**                    material selectors, stored before the lookup unless negative
** Returned:
**   min_dia, max_dia limits of the material's record (in.), -1.0 none
**   ok               1 when min_dia < dia <= max_dia, 0 when not, -1 nothing known
*/
TARVANE_API void TARVANE_CALL CHECK_BOLT_MATL_VS_DIAMETER(
    const char* name, int32_t name_len, const int32_t* reference, float* min_dia, float* max_dia,
    int32_t* ok, const float* dia, const int32_t* print_flag, const int32_t* code,
    const int32_t* metric, const int32_t* force_div1, const int32_t* division2_class);

/*
** GETBOLTDATA - row of the bolt data for a diameter.
**
** Given:
**   dia     bolt diameter in the units of the series' section
**   series  thread series, 1 to 8
** Returned:
**   row     array of 9 reals in the units of the section: diameter, root area, minimum bolt spacing,
**           minimum radial distance (hub, ring), minimum edge distance, nut across corners, wrench
**           diameter, further
**   found   1: a row within 0.001 of the diameter; 0: none, and row holds the last row read
*/
TARVANE_API void TARVANE_CALL GETBOLTDATA(const float* dia, const int32_t* series, float* row,
                                          int32_t* found);

/*
** BOLTHELPER - all rows of a thread series.
**
** Given:
**   series     thread series, 1 to 8
** Returned:
**   diameters  array of 27 reals: the first column
**   rows       array of 27 rows of 9 reals, row after row, as in GETBOLTDATA, zeros where the
**              section has none; a first value above 0.001 in the first row means that the section
**              is in millimetres
**   count      rows read, the first one included
*/
TARVANE_API void TARVANE_CALL BOLTHELPER(const int32_t* series, float* diameters, float* rows,
                                         int32_t* count);

/*
** GETNEXTUNIT - first free file unit from 10 on. Returned: unit, 10 to 1000; 1001 when all are in
** use. The unit is not reserved.
*/
TARVANE_API void TARVANE_CALL GETNEXTUNIT(int32_t* unit);

/*
** REPLACE_DECIMALS_WITH_COMMAS - decimal commas on a report line: each point between digits, and one
** before a digit in column 1. Nothing happens unless the latest FLANGE_CALC or
** SET_DECIMAL_COMMA asked for commas.
**
** Given and returned:
**   text, text_len  the line
*/
TARVANE_API void TARVANE_CALL REPLACE_DECIMALS_WITH_COMMAS(char* text, int32_t text_len);

/* ---- Settings -------------------------------------------------------------------------------- */

/* Destination of the report: 0 nowhere, positive a file unit (OPENUNIT), -1 the line store. */
TARVANE_API void TARVANE_CALL SET_IOUT(const int32_t* unit);
/* Master switch of the report: 1 on. */
TARVANE_API void TARVANE_CALL SET_IWRITE(const int32_t* flag);
/* Report switch of the present element: 1 on. */
TARVANE_API void TARVANE_CALL SET_IWRTFL(const int32_t* flag);
/* Two switches kept for the host. */
TARVANE_API void TARVANE_CALL SET_IOSTEP(const int32_t* flag);
TARVANE_API void TARVANE_CALL SET_IWRTCA(const int32_t* flag);

/* Yield stress for the chart lookup (psi). */
TARVANE_API void TARVANE_CALL SET_YIELD(const float* yield_stress);
/* Material chart name; 8 characters count. */
TARVANE_API void TARVANE_CALL SET_CHART(const char* chart, int32_t chart_len);

/* Fills the code constants by METRICCONSTANTS_mp_G_NMETRIC_CONSTANT. They are zero until then. */
TARVANE_API void TARVANE_CALL SET_METRIC_CONSTANTS(void);

/*
** SET_GLOBALS_FROM_TVN - seven switches: the four exported variables G_NUSE_TABLEG,
** G_NUSE_CORRODEDK, G_NUSE_OLD_DIV_2, G_NUSE_CASE2286, then three further ones. With use_a5 at 1
** SHLINT calculates formed heads by the older Division 2. With use_a6 at 1 the toughness routines may
** take the reduction of Fig. UCS-66.1 (Figures 3.12 and 3.13 of VIII-2), with any other value they do
** not. use_a7 is kept for the host. All seven are 0 at load.
*/
TARVANE_API void TARVANE_CALL SET_GLOBALS_FROM_TVN(const int32_t* use_table_g,
                                                   const int32_t* use_corroded_k,
                                                   const int32_t* use_old_div_2,
                                                   const int32_t* use_case_2286,
                                                   const int32_t* use_a5, const int32_t* use_a6,
                                                   const int32_t* use_a7);

/*
** GETSETUP - address of the setup block: array of 200 elements, all zero at load. Element 1 is an
** INTEGER, those from 41 on are REAL and are truncated: give 1.0. The elements not named here
** are the host's.
*/
typedef union {
    int32_t whole;
    float real;
} TARVANE_SETUP_ELEMENT;

enum {
    TARVANE_SETUP_ELEMENTS = 200,
    TARVANE_SETUP_CODE = 1,           /* whole: design code of external pressure and READ_CHART */
    TARVANE_SETUP_NO_CORRECTION = 43, /* real: not 0 turns the bolt spacing correction factor off */
    TARVANE_SETUP_PRINT_EXTERNAL = 48, /* real: not 0 prints the results of external pressure */
    TARVANE_SETUP_ROOT_TWO = 50,       /* real: positive: blind flange with the factor sqrt(2) */
    TARVANE_SETUP_EDITION = 58         /* real: edition switch of the toughness routines, 0 or 1 */
};
TARVANE_API TARVANE_SETUP_ELEMENT* TARVANE_CALL GETSETUP(void);

/*
** GETLINESCOMFLG - address of the line store: 750 records of 125 characters, one after the other.
** A record holds 4 blanks, the line (up to 100 columns), six style marks of two columns each, one
** NUL, blanks. LINE_COUNT gives the number of records in use. When the store is full, each further
** line replaces the last record.
**
** Note: the marks are the 12 columns before the NUL, which may be further left or right than in
** columns 105 to 116.
*/
#define TARVANE_STORE_RECORDS 750
#define TARVANE_STORE_WIDTH 125
TARVANE_API char* TARVANE_CALL GETLINESCOMFLG(void);

/* ---- Host side ------------------------------------------------------------------------------- */

/* Number of records in use in the line store. FLANGE_CALC sets it to 0 when it begins. */
TARVANE_API void TARVANE_CALL LINE_COUNT(int32_t* count);

/*
** OPENUNIT - create or replace the file of a report unit. A record of the report is one line of
** text: a blank, 100 columns, and six style marks of two columns each when any is set.
**
** Given:
**   unit            1 to 1000; what the unit had open is closed. Do not use 18 or 99 for a report:
**                   a fatal stop closes 99, and closes and deletes 18
**   path, path_len  path of the file; trailing blanks do not count
** Returned:
**   status          0 open, 1 failed
*/
TARVANE_API void TARVANE_CALL OPENUNIT(const int32_t* unit, const char* path, int32_t path_len,
                                       int32_t* status);
/*
** OPENHOSTUNIT - a report unit without a file: what OPENUNIT would write there goes to a routine of the
** host as it is written.
**
** Given:
**   unit    as for OPENUNIT
**   take    gets the user pointer, and characters of the report that are valid for the call only; returns 0
**           when it has taken them. It must not call the engine
**   user    passed to each call of take
** Returned:
**   status  0 open, 1 failed
*/
typedef int32_t(TARVANE_CALL* TARVANE_TAKE_RECORD)(void* user, const char* text, int32_t length);
TARVANE_API void TARVANE_CALL OPENHOSTUNIT(const int32_t* unit, TARVANE_TAKE_RECORD take,
                                           void* user, int32_t* status);
/* Closes a unit; nothing happens if it is not open. */
TARVANE_API void TARVANE_CALL CLOSEUNIT(const int32_t* unit);
/*
** UNIT_STATUS - whether all of a report has reached its unit. A record that can't be written is lost, and
** the report goes on with the next one; the status says so until the unit is opened again, or until
** RESET_ENGINE finds it closed. After CLOSEUNIT it covers what the system wrote only then.
**
** Given:
**   unit    1 to 1000
** Returned:
**   status  0 everything since the opening was written; 1 something was lost, or the unit could not be
**           opened or is none
*/
TARVANE_API void TARVANE_CALL UNIT_STATUS(const int32_t* unit, int32_t* status);

/*
** Services of the host. Each function may be null: the engine then does what the platform offers,
** and where that is nothing the call is left out. The user pointer is passed first in each call;
** texts end in a NUL.
*/
typedef struct {
    int32_t version; /* TARVANE_HOST_SERVICES_VERSION; a table of another version is not taken */
    /* Message with the information icon. */
    void(TARVANE_CALL* message_box)(void* user, const char* text, const char* title);
    /* Text of a control of the host's dialog; 1002 is the line of progress. */
    void(TARVANE_CALL* dialog_text)(void* user, int32_t control, const char* text);
    void(TARVANE_CALL* end_dialog)(void* user);
    /* A calculation can't go on; the code says why. */
    void(TARVANE_CALL* report_fatal)(void* user, int32_t code);
    /* End of the run, status 1. When the function returns, the calculation routine returns at
       once with its results as they are. Without it the process ends. */
    void(TARVANE_CALL* stop)(void* user, int32_t status);
    void(TARVANE_CALL* clock)(void* user, int32_t* year, int32_t* month, int32_t* day,
                              int32_t* hour, int32_t* minute);
    void* user;
} TARVANE_HOST_SERVICES;
#define TARVANE_HOST_SERVICES_VERSION 1

/* Copies the table; a null pointer removes the services. */
TARVANE_API void TARVANE_CALL SET_HOST_SERVICES(const TARVANE_HOST_SERVICES* table);
/* Window handle of the host's dialog. */
TARVANE_API void TARVANE_CALL SET_HOST_WINDOW(void* const* window);
/* Logical: true silences the message boxes. */
TARVANE_API void TARVANE_CALL SET_NO_DIALOG(const int32_t* flag);

/*
** SET_SYSTEM_DIR, SET_MODULE_DIR - the two folders of the data files: the suite's data folder, and
** the folder beside the library, where the modulus table is looked for first. They act at
** once, in place of the folders that the engine would find by itself; a blank path means that there
** is no such folder. Tables that were read are kept until RESET_ENGINE.
*/
TARVANE_API void TARVANE_CALL SET_SYSTEM_DIR(const char* path, int32_t path_len);
TARVANE_API void TARVANE_CALL SET_MODULE_DIR(const char* path, int32_t path_len);

/*
** GETELEMENTTABLES - address of the element tables: 500 rows of 100 bytes, one an element of the
** vessel, texts blank and numbers zero at load. The host fills them.
*/
typedef struct {
    char description[16];
    char from_node[16];
    char to_node[16];
    char material[16];
    char heat_treatment[16]; /* columns 8 to 15: the P-number */
    char first_flag;         /* "1": heat treatment is required */
    char second_flag;        /* "1": preheated */
    char unused[2];
    float joint_efficiency;
    float first_inspection; /* inspection thicknesses (in) */
    float second_inspection;
    float value; /* goes into the failure table */
} TARVANE_ELEMENT_ROW;
#define TARVANE_ELEMENT_ROWS 500
TARVANE_API TARVANE_ELEMENT_ROW* TARVANE_CALL GETELEMENTTABLES(void);

/*
** GETHOSTINPUT - address of the host's input record: fields of 16 characters, then class and grade
** of a standard flange of 15, all blank at load. The host fills it.
*/
typedef struct {
    char required_temperature[3][16];
    char version_mark[16];
    char impact_switches[16];
    char impact_counts[3][16];
    char impact_names[3][11][16];
    char impact_numbers[3][11][16];
    char single_name[16];
    char single_number[16];
    char own_mdmt[2][16];
    char foundation[2][16];
    char flange_class[15];
    char flange_grade[15];
} TARVANE_HOST_INPUT;
TARVANE_API TARVANE_HOST_INPUT* TARVANE_CALL GETHOSTINPUT(void);

/*
** GETFAILURETABLE - address of the failure corrosion table: 500 rows of 80 bytes, one for each
** FLANGE_CALC that ran the failure corrosion loop (SET_SWITCHES). FAILURE_ROW_COUNT returns the
** number of rows in use. Lengths in inches. The search takes steps of a thousandth up to the thickness,
** 500,000 at most (500 in.): a flange that is thicker and has not failed by then has TARVANE_NO_VALUE
** in failure_ca and nominal_less_failure, and no line about it in its report.
*/
typedef struct {
    char description[16];
    float nominal;    /* go, or t of a blind flange */
    float failure_ca; /* corrosion allowance at failure */
    float nominal_less_failure;
    float ci; /* the allowance given */
    float nominal_less_ci;
    float first_inspection;
    float second_inspection;
    float first_less_second;
    int32_t unused[3];
    float hub_required; /* hub small end required thickness */
    float value;        /* value of the element tables */
    int32_t kind;       /* 7: a flange */
    char below[4];      /* "Yes": nominal_less_ci is below first_less_second; " No" */
    float value_again;
} TARVANE_FAILURE_ROW;
TARVANE_API TARVANE_FAILURE_ROW* TARVANE_CALL GETFAILURETABLE(void);
TARVANE_API void TARVANE_CALL FAILURE_ROW_COUNT(int32_t* count);

/* 1 turns on: the failure corrosion loop; the stress ratio of the attached shell. */
TARVANE_API void TARVANE_CALL SET_SWITCHES(const int32_t* failure_corrosion,
                                           const int32_t* per_element_ratio);

/*
** SET_MATERIAL_SELECTION - which material files are read.
**
** Given (state at load in brackets):
**   metric           [0] 1: metric files
**   force_div1       [0] 1: Division 1 files whatever the code
**   division2_class  [1] Division 2: 0 the files of class 1, other the general ones
**   year             [0] edition index, 0 to 18; 0 the present edition
*/
TARVANE_API void TARVANE_CALL SET_MATERIAL_SELECTION(const int32_t* metric,
                                                     const int32_t* force_div1,
                                                     const int32_t* division2_class,
                                                     const int32_t* year);

/*
** SET_UNITS - unit factors and labels of the report outside the stand-alone form.
**
** Given:
**   factors             array of 11 reals in the order of record elements 100 to 110
**   labels, labels_len  ten labels of 10 characters each in the order of the text slots 285 to 420,
**                       each cut to its own width; the temperature label as it is printed, the
**                       degree sign (character 176) first
*/
TARVANE_API void TARVANE_CALL SET_UNITS(const float* factors, const char* labels,
                                        int32_t labels_len);

/*
** SET_EDITION - editions of the rules for flanges of a vessel; the stand-alone form of FLANGE_CALC sets them,
** too, and what it sets is kept. A negative value leaves its switch as it is.
**
** Given (state at load in brackets):
**   new_div2_rules  [0] 1: rules and labels of VIII-2 4.16. The older Division 2 is a switch of its own,
**                   GLOBALS_mp_G_NUSE_OLD_DIV_2
**   a98             [0] 1: VIII-1 under its 1998 edition, A-98 addenda
*/
TARVANE_API void TARVANE_CALL SET_EDITION(const int32_t* new_div2_rules, const int32_t* a98);

/* Logical: decimal commas on report lines; false at load. Each FLANGE_CALC sets it by its last argument. */
TARVANE_API void TARVANE_CALL SET_DECIMAL_COMMA(const int32_t* flag);

/* Design code of the modulus and rigidity steps of FLANGE_CALC, of LIS_EXEMPT_SS and WRITE_KEYED_LINE; 0
   at load. SHLEXT sets it, too, to element 1 of the setup block. */
TARVANE_API void TARVANE_CALL SET_MODULE_CODE(const int32_t* code);

/*
** SET_TOUGHNESS_SWITCHES - switches of the toughness routines (UCS-66, VIII-2 3.11). A negative value
** leaves its switch as it is.
**
** Given (state at load in brackets):
**   reductions_allowed  [0] 1: the reduction of Fig. UCS-66.1 may be taken, any other value: not; the
**                       switch use_a6 of SET_GLOBALS_FROM_TVN, whichever call came last
**   curve_tables        [0] 1: curves of Fig. UCS-66 by table in place of the polynomials
**   no_ug20f            [0] 1: UG-20(f) is refused
**   mdmt_skip           [0] 1: the first required temperature is used
**   floor_switch        [0] 1: the floor of low stress ratios is armed
**   credit55            [1] 1: lower limit of the heat treatment credit -155 F, else -55 F
**   div2_current        [0] 1: Division 2 by its present rules; each FLANGE_CALC sets it by its code and
**                       G_NUSE_OLD_DIV_2
*/
TARVANE_API void TARVANE_CALL SET_TOUGHNESS_SWITCHES(
    const int32_t* reductions_allowed, const int32_t* curve_tables, const int32_t* no_ug20f,
    const int32_t* mdmt_skip, const int32_t* floor_switch, const int32_t* credit55,
    const int32_t* div2_current);

/*
** SET_MATERIAL_ITEM - long material name of the input echo.
**
** Given:
**   table           1 flange materials by element, 2 bolt materials by bolt row
**   row             1 to 500
**   name, name_len  40 characters count
*/
TARVANE_API void TARVANE_CALL SET_MATERIAL_ITEM(const int32_t* table, const int32_t* row,
                                                const char* name, int32_t name_len);

/*
** RESET_ENGINE - puts every module variable, also exported variables and setup block, and every
** table that was read back to its state at load. What the host provided is kept: folders, services,
** window, no-dialog switch, open units, element tables, input record, long material names, unit
** factors and labels.
*/
TARVANE_API void TARVANE_CALL RESET_ENGINE(void);

/* ---- Installation ---------------------------------------------------------------------------- */

/*
** GET_SYSTEM_PATH - data folder of a product of the suite, with a separator at its end.
**
** Given:
**   selector              268 the user's folder, 269 common, 270 and 271 common documents
**   product, product_len  product key, "TARVANE" for the engine itself
**   version, version_len  version key
** Returned:
**   path, path_len        the folder the user chose, else the default one; blank for another
**                         selector, or when the folder can't be had
*/
TARVANE_API void TARVANE_CALL GET_SYSTEM_PATH(const int32_t* selector, const char* product,
                                              int32_t product_len, const char* version,
                                              int32_t version_len, char* path, int32_t path_len);
/* 1 when the running program's file name holds "tvn.exe", else 0. */
TARVANE_API int32_t TARVANE_CALL IS_MAIN_HOST(void);
/* Help language: 1033 English, 1041 Japanese, 2052 Chinese; 1033 when none is chosen. */
TARVANE_API int32_t TARVANE_CALL HELP_LANGUAGE(void);
/* Folder of the help files: kind 101 by help language, any other the common one. */
TARVANE_API void TARVANE_CALL HELP_FOLDER(const int32_t* kind, char* folder, int32_t folder_len);
/* Shows a topic of the help program, 0 for none in particular (Windows only). */
TARVANE_API void TARVANE_CALL LAUNCH_HELP(const int32_t* topic);

#ifdef __cplusplus
}
#endif

#include "external.h"
#include "foundation.h"
#include "materials.h"
#include "report.h"
#include "results.h"
#include "shell.h"
#include "standards.h"
#include "toughness.h"

#endif
