/*
** A host in C of the vessel library: a flange, its verdict and some of its results, a sweep, and what a fault looks
** like.
**   calculate [DATA_FOLDER]      without a folder the library looks for the data files
*/
#include "tarvane/vessel.h"

#include <stdio.h>

static const struct {
    const char *path, *text;
} TEXTS[] = {{"units", "US"},
             {"flange[0].description", "N1"},
             {"flange[0].type", "weld neck"},
             {"flange[0].bolting", "TEMA"},
             {"flange[0].facing", "1a"},
             {"flange[0].h", "82.55 mm"}}; /* in a unit of its own */

static const struct {
    const char* path;
    double number;
} NUMBERS[] = {{"flange[0].P", 150},     {"flange[0].T", 300},    {"flange[0].ci", 0.0625},
               {"flange[0].B", 12},      {"flange[0].A", 19},     {"flange[0].t", 1.19},
               {"flange[0].g0", 0.375},  {"flange[0].g1", 1.19},  {"flange[0].Sfo", 20000},
               {"flange[0].Sfa", 20000}, {"flange[0].C", 17},     {"flange[0].n", 12},
               {"flange[0].a", 0.875},   {"flange[0].Sb", 25000}, {"flange[0].Sa", 25000},
               {"flange[0].Fod", 15},    {"flange[0].Fid", 12},   {"flange[0].Go", 14.75},
               {"flange[0].Gi", 14},     {"flange[0].m", 3},      {"flange[0].y", 10000},
               {"flange[0].tg", 0.125}};

/* The faults of the latest failed call; a null pointer: of one without a handle. */
static int failed(const TARVANE_VESSEL* vessel) {
    TARVANE_VALUES* faults = tarvane_values(tarvane_last_error(vessel));
    printf("fault %s: %s\n", tarvane_text(faults, "[0].path"), tarvane_text(faults, "[0].reason"));
    tarvane_values_close(faults);
    return 1;
}

static TARVANE_VALUES* make_request(void) {
    TARVANE_VALUES* request = tarvane_values(NULL);
    size_t i;
    for (i = 0; i < sizeof TEXTS / sizeof *TEXTS; ++i)
        tarvane_put_text(request, TEXTS[i].path, TEXTS[i].text);
    for (i = 0; i < sizeof NUMBERS / sizeof *NUMBERS; ++i)
        tarvane_put_number(request, NUMBERS[i].path, NUMBERS[i].number);
    return request;
}

static void show(const TARVANE_VALUES* result, const char* name) {
    char path[80];
    snprintf(path, sizeof path, "flange[0].results.%s", name);
    if (tarvane_kind(result, path) == TARVANE_NUMBER) {
        printf("%s %.3f\n", name, tarvane_number(result, path));
    } else { /* a result without a value has a reason */
        snprintf(path, sizeof path, "flange[0].why.%s", name);
        printf("%s: %s\n", name, tarvane_text(result, path));
    }
}

static int calculate(TARVANE_VESSEL* vessel, TARVANE_VALUES* request) {
    const char* json;
    TARVANE_VALUES* result;
    if (tarvane_calculate(vessel, tarvane_json(request), TARVANE_WANT_RESULTS, &json) != TARVANE_OK)
        return failed(vessel);
    result = tarvane_values(json);
    printf("%s\n", tarvane_text(result, "verdict"));
    printf("%s\n", tarvane_text(result, "flange[0].says"));
    show(result, "mawp");
    show(result, "map_nc");
    show(result, "t_req");
    printf("rated pressure %.3f\n", tarvane_number(result, "flange[0].rating.pressure"));
    printf("first check %s, ratio %.3f\n", tarvane_text(result, "flange[0].checks[0].id"),
           tarvane_number(result, "flange[0].checks[0].ratio"));
    tarvane_values_close(result);
    return 0;
}

static int sweep(TARVANE_VESSEL* vessel, TARVANE_VALUES* request) {
    static const char* const inputs[] = {"flange[0].t", NULL};
    static const char* const outputs[] = {"flange[0].results.mawp", "flange[0].passed", NULL};
    static const double thickness[] = {0.75, 1.0, 1.19};
    double y[3][2];
    int i;
    if (tarvane_sweep(vessel, tarvane_json(request), inputs, outputs, 3, thickness, y[0], NULL,
                      NULL, NULL, NULL) != TARVANE_OK)
        return failed(vessel);
    for (i = 0; i < 3; ++i)
        printf("t %.3f: mawp %.3f, %s\n", thickness[i], y[i][0],
               y[i][1] > 0.0 ? "pass" : "no pass");
    return 0;
}

int main(int argc, char** argv) {
    TARVANE_VESSEL* vessel;
    TARVANE_VALUES* request;
    int status;
    if (tarvane_open(TARVANE_VESSEL_ABI, argc > 1 ? argv[1] : NULL, &vessel) != TARVANE_OK) {
        tarvane_close(vessel);
        return failed(NULL);
    }
    printf("tarvane %s\n", tarvane_version());
    request = make_request();
    status = calculate(vessel, request) + sweep(vessel, request);

    tarvane_put_text(request, "flange[0].P", "ten"); /* this one is at fault */
    status += calculate(vessel, request) == 0;
    tarvane_values_close(request);
    tarvane_close(vessel);
    return status;
}
