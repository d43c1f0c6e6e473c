/*
** report.h - report lines of a host's own, in the form of the engine's. Part of tarvane.h, which tells
** the calling convention.
*/
#ifndef TARVANE_REPORT_H
#define TARVANE_REPORT_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Kind of a value: unit factor, unit label and decimals that it gets in the report. */
enum {
    TARVANE_AS_THICKNESS = 0, /* small length */
    TARVANE_AS_DIAMETER = 1,
    TARVANE_AS_PRESSURE = 2,
    TARVANE_AS_STRESS = 3,
    TARVANE_AS_FORCE = 4,
    TARVANE_AS_MOMENT = 5,
    TARVANE_AS_AREA = 6,
    TARVANE_AS_WEIGHT = 7,
    TARVANE_AS_FACTOR = 8 /* no unit */
};

/*
** BEGIN_REPORT - what FLANGE_CALC does for the report as it begins: style marks are kept from now on,
** and the line store is empty. For a host that begins with another element than a flange.
*/
TARVANE_API void TARVANE_CALL BEGIN_REPORT(void);

/*
** WRITE_TEXT - a line as it stands; what passes column 100 is cut.
**
** Given:
**   text, text_len
**   style  array of 6 integers, the style marks
*/
TARVANE_API void TARVANE_CALL WRITE_TEXT(const char* text, int32_t text_len, const int32_t* style);

/* WRITE_HEADING - a title in the heading style. */
TARVANE_API void TARVANE_CALL WRITE_HEADING(const char* text, int32_t text_len);

/*
** WRITE_COLUMN - label, value right-aligned to column 60, unit.
**
** Given:
**   label, label_len
**   value  in the engine's units
**   kind   TARVANE_AS_THICKNESS to TARVANE_AS_FACTOR; nothing is written for another
**   style  array of 6 integers
*/
TARVANE_API void TARVANE_CALL WRITE_COLUMN(const char* label, int32_t label_len, const float* value,
                                           const int32_t* kind, const int32_t* style);

/*
** WRITE_VALUE - " = ", value, unit, remark: the last line of a formula.
**
** Given:
**   value   in the engine's units
**   kind    TARVANE_AS_THICKNESS to TARVANE_AS_FACTOR; nothing is written for another
**   remark, remark_len
**           a remark that begins with a comma follows the unit directly
**   style   array of 6 integers
*/
TARVANE_API void TARVANE_CALL WRITE_VALUE(const float* value, const int32_t* kind,
                                          const char* remark, int32_t remark_len,
                                          const int32_t* style);

/*
** WRITE_NUMBERS - the number line of a formula: each "@n" of the template becomes the next value with
** n decimals.
**
** Given:
**   line, line_len  template, up to 120 columns
**   values  array of `count` reals in the engine's units
**   kinds   array of `count` integers, TARVANE_AS_THICKNESS to TARVANE_AS_FACTOR
**   count   number of values, 0 to 6; nothing is written for another
**   mode    1 closes up runs of blanks; from 3 on the first `mode` columns stay as they are
*/
TARVANE_API void TARVANE_CALL WRITE_NUMBERS(const char* line, int32_t line_len, const float* values,
                                            const int32_t* kinds, const int32_t* count,
                                            const int32_t* mode);

#ifdef __cplusplus
}
#endif

#endif
