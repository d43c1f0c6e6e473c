/*
** external.h - external pressure of shells and heads. Part of tarvane.h, which tells the calling convention.
*/
#ifndef TARVANE_EXTERNAL_H
#define TARVANE_EXTERNAL_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
