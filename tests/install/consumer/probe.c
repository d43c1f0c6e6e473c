/*
** What a program that uses the installed vessel library finds: the file that the library was loaded from, its version,
** the version of the data files, and the bits of a result.
**   probe [DATA_FOLDER]
*/
#define _GNU_SOURCE
#include "tarvane/vessel.h"

#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

static const char REQUEST[] =
    "{\"flange\": [{\"description\": \"N1\", \"type\": \"weld neck\", \"P\": 150, \"T\": 300, "
    "\"ci\": 0.0625, "
    "\"B\": 12, \"A\": 19, \"t\": 1.19, \"g0\": 0.375, \"g1\": 1.19, \"h\": 3.25, \"Sfo\": 20000, "
    "\"Sfa\": 20000, \"bolting\": \"TEMA\", \"C\": 17, \"n\": 12, \"a\": 0.875, \"Sb\": 25000, "
    "\"Sa\": 25000, \"Fod\": 15, \"Fid\": 12, \"Go\": 14.75, \"Gi\": 14, \"m\": 3, \"y\": 10000, "
    "\"facing\": \"1a\", \"tg\": 0.125, \"material\": \"SA-105\", \"bolt_material\": \"SA-193 "
    "B7\"}]}";

int main(int argc, char** argv) {
    TARVANE_VESSEL* vessel = NULL;
    TARVANE_VALUES* result;
    const char* json = NULL;
    const char* (*routine)(void) = tarvane_version;
    void* address;
    Dl_info place;
    float mawp;
    unsigned bits;
    memcpy(&address, &routine, sizeof address);
    if (dladdr(address, &place) == 0) return 3;
    printf("library %s\n", place.dli_fname);
    printf("version %s\n", tarvane_version());
    if (tarvane_open(TARVANE_VESSEL_ABI, argc > 1 ? argv[1] : NULL, &vessel) != TARVANE_OK ||
        tarvane_calculate(vessel, REQUEST, TARVANE_WANT_RESULTS, &json) != TARVANE_OK) {
        printf("%s\n", tarvane_last_error(vessel));
        return 1;
    }
    result = tarvane_values(json);
    mawp = (float)tarvane_number(result, "flange[0].results.mawp");
    memcpy(&bits, &mawp, sizeof bits);
    printf("data %s\n", tarvane_text(result, "data[0].version"));
    printf("flange mawp %08X\n", bits);
    tarvane_values_close(result);
    tarvane_close(vessel);
    return 0;
}
