/*
** report.h - report lines of a host's own, in the form of the engine's. Part of tarvane.h, which describes
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
** BEGIN_REPORT - what FLANGE_CALC does for the report when it begins: style marks are kept from now on,
** and the line store is empty. For a host that begins with an element other than a flange.
*/
TARVANE_API void TARVANE_CALL BEGIN_REPORT(void);

/*
** WRITE_TEXT - a line as it is; what passes column 100 is cut.
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
**   kind   TARVANE_AS_THICKNESS to TARVANE_AS_FACTOR; with any other nothing is written
**   style  array of 6 integers
*/
TARVANE_API void TARVANE_CALL WRITE_COLUMN(const char* label, int32_t label_len, const float* value,
                                           const int32_t* kind, const int32_t* style);

/*
** WRITE_VALUE - " = ", value, unit, remark: the last line of a formula.
**
** Given:
**   value   in the engine's units
**   kind    TARVANE_AS_THICKNESS to TARVANE_AS_FACTOR; with any other nothing is written
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
**   count   number of values, 0 to 6; with any other nothing is written
**   mode    1 closes up runs of blanks; from 3 on the first `mode` columns are unchanged
*/
TARVANE_API void TARVANE_CALL WRITE_NUMBERS(const char* line, int32_t line_len, const float* values,
                                            const int32_t* kinds, const int32_t* count,
                                            const int32_t* mode);

/* ---- Furniture of the report file ------------------------------------------------------------ */

/*
** WRITE_FRONT_PAGE - records at the head of a report file, for the host's print step: "CTABL:" with time
** and date, three "T" records of the title, and the place of the contents. Nothing when the report unit
** has no file.
**
** Given:
**   title, title_len  192 characters, in three lines of 64
*/
TARVANE_API void TARVANE_CALL WRITE_FRONT_PAGE(const char* title, int32_t title_len);

/* CLOSING_NOTE - the last line of a calculation; FLANGE_CALC writes it itself. */
TARVANE_API void TARVANE_CALL CLOSING_NOTE(void);

/*
** REPORT_DATE - date and time by the clock service of the host, else the local time
** of the machine.
**
** Returned:
**   date, date_len  11 characters: "Jan 15,2024", " Jan 5,2024"
**   time, time_len  9 characters: " 9:05am " and " 1:30pm ", each after a blank
*/
TARVANE_API void TARVANE_CALL REPORT_DATE(char* date, int32_t date_len, char* time,
                                          int32_t time_len);

/* GET_KEYED_TEXT - text of a key of 6 characters from "iotext.txt"; blank when there is none. */
TARVANE_API void TARVANE_CALL GET_KEYED_TEXT(const char* key, int32_t key_len, char* text,
                                             int32_t text_len);

/*
** WRITE_KEYED_LINE - the text of a key as a report line with the style marks m1 to m6. Column 3 of the
** key becomes "1" under design code 1 (SET_MODULE_CODE), else "2".
*/
TARVANE_API void TARVANE_CALL WRITE_KEYED_LINE(const char* key, int32_t key_len, const int32_t* m1,
                                               const int32_t* m2, const int32_t* m3,
                                               const int32_t* m4, const int32_t* m5,
                                               const int32_t* m6);

/* Language of translated files: 0 English, 1 Portuguese, 2 Spanish, 3 French, 4 German, 5 Italian,
** 6 Russian; any other counts as 0. */
TARVANE_API void TARVANE_CALL SET_LANGUAGE(const int32_t* index);

/*
** LANGUAGE_FILE_PATH - path of a translated text file: system folder, "Lang_Out", base name, suffix.
**
** Given and returned:
**   path, path_len  the base name; the whole path, blank when it does not fit
*/
TARVANE_API void TARVANE_CALL LANGUAGE_FILE_PATH(char* path, int32_t path_len);

/*
** CHANGE_EXTENSION - a file name with another extension, in place. NULs of both texts become blanks.
** What does not fit changes nothing else.
**
** Given:
**   extension, extension_len  with a point ("." and the letters) or without
** Given and returned:
**   name, name_len
*/
TARVANE_API void TARVANE_CALL CHANGE_EXTENSION(char* name, int32_t name_len, char* extension,
                                               int32_t extension_len);

/*
** WORK_FILE - the work file of the suite: 250 records of 768 words, extension ".Tvr", on unit 58.
**
** Given:
**   mode    1 open, 2 close and delete, 3 close
**   name, name_len
**           the host's file, which gives the work file its name; the first name is kept
**   unused
**   clear   mode 1: 1 starts with an empty file
**
** Note: a failure of mode 1, also a name without room for the extension, goes through the message
** box and the stop service of the host.
*/
TARVANE_API void TARVANE_CALL WORK_FILE(const int32_t* mode, const char* name, int32_t name_len,
                                        const int32_t* unused, const int32_t* clear);

/*
** PUT_WORK_WORD - a REAL into the first record of the work file.
**
** Given:
**   index   1 to 768
**   value
** Returned:
**   status  0 done, 2 failed
*/
TARVANE_API void TARVANE_CALL PUT_WORK_WORD(const int32_t* index, const float* value,
                                            int32_t* status);

#ifdef __cplusplus
}
#endif

#endif
