/*
** convention.h - how the routines of the library are declared. tarvane.h describes the calling convention.
*/
#ifndef TARVANE_CONVENTION_H
#define TARVANE_CONVENTION_H

#include <stdint.h>

#if defined(_WIN32) && !defined(_WIN64)
#define TARVANE_CALL __stdcall
#else
#define TARVANE_CALL
#endif

#if defined(_WIN32)
#if defined(TARVANE_BUILD) || defined(TARVANE_STATIC)
#define TARVANE_API /* the names come from the module definition file */
#else
#define TARVANE_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define TARVANE_API __attribute__((visibility("default")))
#else
#define TARVANE_API
#endif

#endif
