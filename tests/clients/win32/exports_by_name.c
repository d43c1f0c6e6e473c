/*
** Takes every name of the export list from the library at run time: each routine by both its names, which
** are one address, each variable by its one name; the library exports nothing else.
**   exports_by_name PATH_OF_TARVANE_DLL
*/
#include <stdint.h>
#include <stdio.h>
#include <windows.h>

static const struct {
    const char *plain, *decorated; /* a variable has no second name */
} NAMES[] = {
#define TARVANE_ROUTINE(name, words, number) {#name, "_" #name "@" #number},
#define TARVANE_VARIABLE(name) {#name, NULL},
#include "frame/exports/exports.def.inc"
};

static DWORD exported_names(HMODULE library) {
    const char* base = (const char*)library;
    const IMAGE_DOS_HEADER* dos = (const IMAGE_DOS_HEADER*)(const void*)base;
    const IMAGE_NT_HEADERS* nt = (const IMAGE_NT_HEADERS*)(const void*)(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY* place =
        &nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const IMAGE_EXPORT_DIRECTORY* table =
        (const IMAGE_EXPORT_DIRECTORY*)(const void*)(base + place->VirtualAddress);
    return table->NumberOfNames;
}

int main(int argc, char** argv) {
    HMODULE library;
    unsigned routines = 0, variables = 0, wrong = 0;
    size_t i;
    if (argc != 2) return 2;
    library = LoadLibraryA(argv[1]);
    if (library == NULL) {
        fprintf(stderr, "cannot load %s\n", argv[1]);
        return 2;
    }
    for (i = 0; i < sizeof NAMES / sizeof *NAMES; ++i) {
        const FARPROC plain = GetProcAddress(library, NAMES[i].plain);
        if (plain == NULL) {
            fprintf(stderr, "not exported: %s\n", NAMES[i].plain);
            ++wrong;
        }
        if (NAMES[i].decorated == NULL) {
            ++variables;
            continue;
        }
        ++routines;
        if (GetProcAddress(library, NAMES[i].decorated) != plain) {
            fprintf(stderr, "not the routine %s: %s\n", NAMES[i].plain, NAMES[i].decorated);
            ++wrong;
        }
    }
    if (exported_names(library) != 2 * routines + variables) {
        fprintf(stderr, "%lu names are exported\n", (unsigned long)exported_names(library));
        ++wrong;
    }
    printf("%u routines by two names each, %u variables\n", routines, variables);
    return wrong != 0;
}
