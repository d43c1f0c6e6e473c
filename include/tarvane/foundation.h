/*
** foundation.h - interface files to the foundation design application. Part of tarvane.h, which describes
** the calling convention.
*/
#ifndef TARVANE_FOUNDATION_H
#define TARVANE_FOUNDATION_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
** What the files say about the software, the units and the vessel; 468 characters, blank-padded. Both
** records have the same head with the material in it; that of a vertical vessel is not read.
*/
typedef struct {
    char version[8];
    char application[12];
    char application_version[8];
    char section1[20], section2[20];
    char vendor[12];
    char product[8], product_version[8];
    char product_type[16];
    char length_unit[10], temperature_unit[10], force_unit[10], pressure_unit[10];
    char vessel_type[20];
    char name[256];
    char material[40]; /* of a horizontal vessel */
} TARVANE_FOUNDATION_HEAD;

/* Two records of 135 words and the host's company. Feet, pounds, foot-pounds, degrees Fahrenheit. */
typedef struct {
    struct {
        TARVANE_FOUNDATION_HEAD head;
        float diameter, height;
        float pos_elevation; /* of the point of support */
        float bolt_circle, anchor_count, anchor_size;
        float empty_weight, operating_weight, test_weight;
        float wind_shear, wind_moment, earthquake_shear, earthquake_moment;
        float spare[5];
    } vertical;
    struct {
        TARVANE_FOUNDATION_HEAD head;
        float length, saddle_distance, saddle_length, saddle_width;
        float shell_temperature;
        float center_elevation; /* of the center line */
        float pos_to_center;    /* point of support to center line */
        float empty_weight, operating_weight, test_weight, bundle_weight;
        float friction, wind_pressure, earthquake_factor;
        float anchor_count, anchor_size, pos_elevation;
        float spare[1];
    } horizontal;
    char company[40];
} TARVANE_FOUNDATION_RECORDS;

/* GETFOUNDATION - the working records, for the host to fill. */
TARVANE_API TARVANE_FOUNDATION_RECORDS* TARVANE_CALL GETFOUNDATION(void);

/* FOUNDATION_RECORD_DEFAULTS - start values of both records; the company is unchanged. */
TARVANE_API void TARVANE_CALL FOUNDATION_RECORD_DEFAULTS(void);

/*
** WRITE_FOUNDATION_FILES - the XML file, filled in from the template "PLWXML.TXT" of the system folder,
** and the INI file beside it.
**
** Given:
**   name, name_len  file name; the extensions "xml" and "ini" replace its own
**   vertical        1 the vertical record, else the horizontal one
**   exchanger       1: the vessel type of both records becomes an exchanger, until the next defaults
**
** Notes:
**   1) A message box says when both are written. Without the template nothing happens; a template that
**      can't be read to its end, or a name without room for an extension, leaves out what follows.
**   2) Control characters in the records, NULs among them, become blanks.
**   3) "&", "<" and ">" of a value are "&amp;", "&lt;" and "&gt;" in the XML file: its reader needs
**      well-formed XML. The INI file has them as they are.
*/
TARVANE_API void TARVANE_CALL WRITE_FOUNDATION_FILES(const char* name, int32_t name_len,
                                                     const int32_t* vertical,
                                                     const int32_t* exchanger);

#ifdef __cplusplus
}
#endif

#endif
