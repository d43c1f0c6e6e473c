/*
** toughness.h - minimum design metal temperature and notes on materials. Part of tarvane.h, which tells the calling convention.
*/
#ifndef TARVANE_TOUGHNESS_H
#define TARVANE_TOUGHNESS_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
