/*
** materials.h - material records, charts and the other material data. Part of tarvane.h, which tells the calling convention.
*/
#ifndef TARVANE_MATERIALS_H
#define TARVANE_MATERIALS_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
