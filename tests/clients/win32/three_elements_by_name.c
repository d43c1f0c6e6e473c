/*
** A Win32 host that takes every routine from the library at run time, by its plain or by its decorated
** name, and runs the three elements of the C host through them.
**   three_elements_by_name plain|decorated PATH_OF_TARVANE_DLL FOLDER_OF_THE_DATA_FILES
*/
#include "tarvane/tarvane.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

#define TARVANE_ROUTINE(name, words, number) static __typeof__(name)* by_name_##name;
#define TARVANE_VARIABLE(name) static int32_t* by_name_##name;
#include "frame/exports/exports.def.inc"
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE

static int missing = 0;

static FARPROC find(HMODULE library, const char* name) {
    FARPROC address = GetProcAddress(library, name);
    if (address == NULL) {
        fprintf(stderr, "not exported: %s\n", name);
        ++missing;
    }
    return address;
}

/* Both names of a routine, and the variables. */
static void take_all(HMODULE library, int decorated) {
#define TARVANE_ROUTINE(name, words, number)                                                       \
    {                                                                                              \
        FARPROC plain = find(library, #name);                                                      \
        FARPROC with_number = find(library, "_" #name "@" #number);                                \
        if (plain != with_number) {                                                                \
            fprintf(stderr, "two routines of the name %s\n", #name);                               \
            ++missing;                                                                             \
        }                                                                                          \
        by_name_##name = (__typeof__(name)*)(void*)(decorated ? with_number : plain);              \
    }
#define TARVANE_VARIABLE(name) by_name_##name = (int32_t*)(void*)find(library, #name);
#include "frame/exports/exports.def.inc"
#undef TARVANE_ROUTINE
#undef TARVANE_VARIABLE
}

/* The C host, with each name replaced by what was found under it. */
#define BEGIN_REPORT by_name_BEGIN_REPORT
#define CLOSEUNIT by_name_CLOSEUNIT
#define COMPUTE_FAILURE_CA_DIV1 by_name_COMPUTE_FAILURE_CA_DIV1
#define FLANGE_CALC by_name_FLANGE_CALC
#define GETLINESCOMFLG by_name_GETLINESCOMFLG
#define GETNEXTUNIT by_name_GETNEXTUNIT
#define GETSETUP by_name_GETSETUP
#define GLOBALS_mp_G_NUSE_CASE2286 (*by_name_GLOBALS_mp_G_NUSE_CASE2286)
#define LINE_COUNT by_name_LINE_COUNT
#define OPENUNIT by_name_OPENUNIT
#define RESET_ENGINE by_name_RESET_ENGINE
#define SET_HOST_SERVICES by_name_SET_HOST_SERVICES
#define SET_IOUT by_name_SET_IOUT
#define SET_IWRITE by_name_SET_IWRITE
#define SET_IWRTFL by_name_SET_IWRTFL
#define SET_METRIC_CONSTANTS by_name_SET_METRIC_CONSTANTS
#define SET_SYSTEM_DIR by_name_SET_SYSTEM_DIR
#define SHLEXT by_name_SHLEXT
#define SHLINT by_name_SHLINT
#define main three_elements
#include "three_elements.c"
#undef main

int main(int argc, char** argv) {
    HMODULE library;
    if (argc != 4) return 2;
    library = LoadLibraryA(argv[2]);
    if (library == NULL) {
        fprintf(stderr, "cannot load %s\n", argv[2]);
        return 2;
    }
    take_all(library, strcmp(argv[1], "decorated") == 0);
    if (missing != 0) return 1;
    _setmode(_fileno(stdout), _O_BINARY);
    return three_elements(argc - 2, argv + 2);
}
