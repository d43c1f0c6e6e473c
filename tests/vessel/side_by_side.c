/*
** A host in C99 that drives libtarvane and the vessel library in one process: before each of its calls of the
** engine the vessel library calculates something else in other units. The output of the three elements must be the
** recorded one, and the vessel library must find the same each time.
**   side_by_side FOLDER_OF_THE_DATA_FILES
*/
#include "tarvane/tarvane.h"
#include "tarvane/vessel.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char REQUEST[] = "{\"tarvane\": 1, \"units\": \"SI\", \"decimal_comma\": true, "
                              "\"shell\": [{\"description\": \"drum\","
                              " \"kind\": \"cylinder\", \"P\": 1.2, \"T\": 150, \"D\": 1500, "
                              "\"t\": 14, \"S\": 138, \"Sa\": 138, \"E\": 0.85, \"ci\": 3,"
                              " \"P_external\": 0.1, \"chart\": \"CS-2\", \"length\": 4000}]}";

static TARVANE_VESSEL* vessel;
static char* first; /* what the vessel library finds while the engine beside it has done nothing */
static int disturbed, differences;

static void disturb(void) {
    const char* result = NULL;
    const int32_t status =
        tarvane_calculate(vessel, REQUEST, TARVANE_WANT_RESULTS | TARVANE_WANT_REPORT, &result);
    if (status != TARVANE_OK) {
        fprintf(stderr, "side_by_side: status %d: %s\n", (int)status, tarvane_last_error(vessel));
        exit(2);
    }
    if (first == NULL) {
        first = malloc(strlen(result) + 1);
        if (first == NULL) exit(2);
        strcpy(first, result);
    } else {
        ++disturbed;
        differences += strcmp(first, result) != 0;
    }
}

#define SET_IWRITE(...) (disturb(), SET_IWRITE(__VA_ARGS__))
#define SET_IOUT(...) (disturb(), SET_IOUT(__VA_ARGS__))
#define GETLINESCOMFLG() (disturb(), GETLINESCOMFLG())
#define LINE_COUNT(...) (disturb(), LINE_COUNT(__VA_ARGS__))
#define FLANGE_CALC(...) (disturb(), FLANGE_CALC(__VA_ARGS__))
#define SHLINT(...) (disturb(), SHLINT(__VA_ARGS__))
#define SHLEXT(...) (disturb(), SHLEXT(__VA_ARGS__))
#define BEGIN_REPORT() (disturb(), BEGIN_REPORT())
#define SET_METRIC_CONSTANTS() (disturb(), SET_METRIC_CONSTANTS())

#define main three_elements
#include "three_elements.c"
#undef main

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    if (tarvane_open(TARVANE_VESSEL_ABI, argv[1], &vessel) != TARVANE_OK) {
        fprintf(stderr, "side_by_side: %s\n", tarvane_last_error(NULL));
        return 2;
    }
    disturb();
    if (three_elements(argc, argv) != 0) return 1;
    if (disturbed < 15 || differences > 0)
        fprintf(stderr, "side_by_side: %d of %d results differ\n", differences, disturbed);
    free(first);
    tarvane_close(vessel);
    return disturbed < 15 || differences > 0;
}
