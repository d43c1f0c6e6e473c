/*
** materials.h - material records and other material data. Part of tarvane.h, which describes the calling convention.
*/
#ifndef TARVANE_MATERIALS_H
#define TARVANE_MATERIALS_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Material records ------------------------------------------------------------------------ */

/*
** A record of the material files, laid out as their 414 bytes. Stresses in ksi and lengths in inches,
** also from a metric file. Texts are blank-padded. A field of 414 bytes is enough for a record: the
** structure is longer only for its alignment.
*/
typedef struct {
    char first_name[16];
    char name[16];     /* the key, together with */
    int32_t reference; /* the reference number */
    char product_form[32];
    char uns_number[24];
    char text_92[8];
    char note[40]; /* composition or note */
    float thickness_limit;
    char p_number[8];         /* P-number of welding */
    int32_t group;            /* and its group */
    int32_t curve;            /* curve of Fig. UCS-66 */
    int32_t curve_normalized; /* the same, normalized */
    float tensile;
    float yield;
    char chart[8];               /* external pressure chart, for SET_CHART */
    int32_t modulus_reference;   /* reference number for ASMEMOD */
    int32_t expansion_reference; /* the same of the coefficient of expansion */
    float allowable[32];         /* allowable stress at 100, 150, 200 F and so on in steps of 50;
                                    metric file: at the temperatures of READ_ALLOWABLE_AT */
    char text_316[40];
    int32_t unused_356[2];
    float min_dia; /* limits of a bolt's diameter, else of the thickness; -1.0 none */
    float max_dia;
    int32_t unused_372;
    int32_t impact_temperature; /* below 1: impact tested */
    int32_t unused_380;
    int32_t ucs66g_reduction;
    int32_t unused_388[4];
    char text_404[10];
    char fill[2]; /* no routine reads or writes it */
} TARVANE_MATERIAL_RECORD;
#define TARVANE_MATERIAL_BYTES 414 /* of a record, in the file and in the host */

/*
** READ_MATERIAL - record of a material by name and reference number (ASME II-D, Tables 1, 3, 5).
**
** Given:
**   code            design code: 1 or 2; nothing is found for another
**   name, name_len  material name, of which 16 characters count; case, blanks and the characters "."
**                   "/" "-" make no difference
**   reference       its reference number
** Returned:
**   status          0 found, 1 not found
**   record          the record, cleared when not found, unchanged when the name is blank
**
** Note: SET_MATERIAL_SELECTION selects the file, which each call opens and reads again.
*/
TARVANE_API void TARVANE_CALL READ_MATERIAL(const int32_t* code, const char* name, int32_t name_len,
                                            const int32_t* reference, int32_t* status,
                                            TARVANE_MATERIAL_RECORD* record);

/*
** MATERIAL_COUNT, MATERIAL_BY_NUMBER - the file of READ_MATERIAL as a list.
**
** Given:
**   code    design code, as for READ_MATERIAL
**   number  1 to the count
** Returned:
**   count   number of material records; 0 without a file
**   status  0 found, 1 no such record
**   record  the record, cleared when there is none
*/
TARVANE_API void TARVANE_CALL MATERIAL_COUNT(const int32_t* code, int32_t* count);
TARVANE_API void TARVANE_CALL MATERIAL_BY_NUMBER(const int32_t* code, const int32_t* number,
                                                 int32_t* status, TARVANE_MATERIAL_RECORD* record);

/*
** READ_ALLOWABLE_AT - allowable stress of a record at a temperature.
**
** Given:
**   record       from READ_MATERIAL
**   temperature  (F); the record's stresses are those at 100, 150, 200 F and so on in steps of 50, those
**                of a metric file (SET_MATERIAL_SELECTION) at 40, 65, 100, 125 C and on in steps of
**                25; the second temperature of the Japanese editions is 75 C
** Returned (function value):
**   allowable stress (ksi); the first one below the lowest temperature, 0.0 above the highest
*/
TARVANE_API float TARVANE_CALL READ_ALLOWABLE_AT(const TARVANE_MATERIAL_RECORD* record,
                                                 const float* temperature);

/*
** READ_YIELD_STRESS - yield stress of a material (ASME II-D, Table Y-1), from "YIELDSTR.BIN", metric
** "YIELDSTRM.BIN" or, in the Japanese editions, "JPNYLDM.BIN".
**
** Given:
**   name, name_len  material name, as for READ_MATERIAL
**   tensile         its tensile strength (ksi); one within five percent matches
**   temperature     (F); below 100 that of 100
** Returned:
**   result          yield stress (ksi); 0.0 when there is none, and above 1000 F (metric 977 F)
*/
TARVANE_API void TARVANE_CALL READ_YIELD_STRESS(const char* name, int32_t name_len,
                                                const float* tensile, const float* temperature,
                                                float* result);

/*
** READ_EN_MATERIAL - record of an EN material from "ENMATDATA.BIN".
**
** Given:
**   key     key of the material
** Returned:
**   status  0, also when the file does not have the key; 1 when the key is below 1, or the file can't be
**           read to its end
**   record  the record; unchanged when there is none
*/
typedef struct {
    int32_t key;
    char data[304];
} TARVANE_EN_RECORD;
TARVANE_API void TARVANE_CALL READ_EN_MATERIAL(const int32_t* key, int32_t* status,
                                               TARVANE_EN_RECORD* record);

/*
** SET_MATERIAL_CLASS_NAMES, GETMATERIALCLASSNAMES - names of the material classes for a dialog: the
** first fills the table, the second returns its address. Row k, from 1, is class k; rows are blank
** and 0 before they are filled.
*/
typedef struct {
    char name[40]; /* blank-padded; several classes have the same name */
    int32_t number;
} TARVANE_MATERIAL_CLASS_ROW;
#define TARVANE_MATERIAL_CLASS_ROWS 69
TARVANE_API void TARVANE_CALL SET_MATERIAL_CLASS_NAMES(void);
TARVANE_API TARVANE_MATERIAL_CLASS_ROW* TARVANE_CALL GETMATERIALCLASSNAMES(void);

/* ---- External pressure charts ---------------------------------------------------------------- */

/*
** READ_CHART - numbers of an external pressure chart at a temperature (ASME II-D, Subpart 3): with
** them, B = c0 + c1 * log10(A) + c2 * log10(A)^2 between Aelastic and Amax, and A * E / 2, with E in
** psi, below.
**
** Given:
**   name, name_len  chart name; 8 characters count
**   temperature     (F)
**   yield           yield stress (psi), which the charts "CS-3" and "NFA-11" depend on
** Returned:
**   t_used          the temperature, or the chart's last one when that is lower (150 F for "NFA-11")
**   E               modulus (millions of psi)
**   Aelastic        A at the end of the straight line
**   second          second number of that point
**   Amax            largest A of the curve
**   Bmax            B at Amax (psi)
**   c0, c1, c2      coefficients of the curve
**
** Notes:
**   1) A chart that "ExtChartData.txt" does not have is replaced by "CS-2"; with a blank name a
**      warning goes to the report. "CS-3" above 300 F and "HT-2" above 100 F also become "CS-2".
**   2) Without the file every result is unchanged, except t_used of "CS-3" and "NFA-11".
**   3) With a design code above 2 in element 1 of the setup block only E is returned, from the tables
**      of MODULUS.
*/
TARVANE_API void TARVANE_CALL READ_CHART(const char* name, int32_t name_len,
                                         const float* temperature, float* t_used, float* E,
                                         float* Aelastic, float* second, float* Amax, float* Bmax,
                                         float* c0, float* c1, float* c2, const float* yield);

/*
** TABLE_G_FACTOR_A - factor A of a cylinder under external pressure (ASME II-D, Subpart 3, Table G),
** from "TableGData.txt" beside the library.
**
** Given:
**   dt  outside diameter by thickness; at least 4.0 counts
**   ld  length by outside diameter
** Returned:
**   a   factor A; -1.0 when the table has no answer
*/
TARVANE_API void TARVANE_CALL TABLE_G_FACTOR_A(const float* dt, const float* ld, float* a);

#ifdef __cplusplus
}
#endif

#endif
