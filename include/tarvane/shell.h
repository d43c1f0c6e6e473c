/*
** shell.h - internal pressure of shells and heads. Part of tarvane.h, which tells the calling convention.
*/
#ifndef TARVANE_SHELL_H
#define TARVANE_SHELL_H

#include "convention.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
