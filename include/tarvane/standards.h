/*
** standards.h - standard flange dimensions. Part of tarvane.h, which describes the calling convention.
*/
#ifndef TARVANE_STANDARDS_H
#define TARVANE_STANDARDS_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
** GET_FLANGE_SIZES - nominal sizes of a flange class (ASME B16.5, B16.47, EN 1092-1), from
** "ANSIFlangeDimensions.txt" in the system folder.
**
** Given:
**   class_text, class_len  "75" to "2500", or "PN2.5" to "PN400"
** Returned:
**   sizes, sizes_len  60 fields of 10 characters: each size as it is in the file, a NUL after it,
**                     the rest blank; unchanged when there is no file. The length is not read.
**   count             number of sizes; unchanged when there is no file
*/
TARVANE_API void TARVANE_CALL GET_FLANGE_SIZES(const char* class_text, int32_t class_len,
                                               char* sizes, int32_t sizes_len, int32_t* count);

/*
** GET_FLANGE_DIMENSIONS - dimensions of one standard flange, in the form of the flange record.
**
** Given:
**   flange_class  75, 150, 300, 400, 600, 900, 1500, 2500; or 2 (PN 2.5), 6, 10, 16, 25, 40, 63, 100,
**                 160, 250, 320, 400. 0: the result is cleared, nothing else
**   blind         1: the cover: no hub, its own thickness
**   slipon        1: the slip-on flange
**   hubform       slip-on: 1 wall below the slope, 2 straight hub, 3 slope alone
**   ansi          0: class 400 is the inch class, else PN 400
** Given and returned:
**   size    nominal size (in.); for a PN class the DN, which is returned divided by 25.4
**   series  of the sizes from 26 on (ASME B16.47: 1 A, 2 B); 0 is returned for all others
**   wall    of the attached pipe (in.); 0.375 is returned for 0
** Returned:
**   result    array of 14 reals (in.), all -1.0 when there is no such flange: bore, thickness, class,
**             bolt hole diameter, number of bolts, nominal bolt diameter, bolt circle,
**             (bolt circle - bore) / 4, outside diameter, g0, g1, h, raised face diameter, 0.
**             When the size is not in the table the last one is the next larger size, below size 26 of
**             any series, from 26 on of the series asked for; -1.0 without one
**   notfound  logical: no such flange; 0 for a class that is none of these, whose result is -1.0 too
**
** Note: a row of fewer than 17 numbers before the one sought is an error of the file, and ends the
** search without a flange and without a next size.
*/
TARVANE_API void TARVANE_CALL GET_FLANGE_DIMENSIONS(float* size, const int32_t* flange_class,
                                                    float* result, int32_t* notfound,
                                                    int32_t* series, float* wall,
                                                    const int32_t* blind, const int32_t* slipon,
                                                    const int32_t* hubform, const int32_t* ansi);

#ifdef __cplusplus
}
#endif

#endif
