/*
** A host in C: one flange, one shell, one element under external pressure. Prints the bits of every
** result, so that hosts in other languages can be compared with it, and the reports.
**   three_elements_c [DATA_FOLDER [FILE]]    the report of the last element goes into the file
*/
#include "tarvane/tarvane.h"

#include <stdio.h>
#include <string.h>

static void show(const char* element, const char* name, float value) {
    uint32_t bits;
    memcpy(&bits, &value, sizeof bits);
    printf("%s %s %08X\n", element, name, (unsigned)bits);
}

/* ---- services ---- */

static void TARVANE_CALL show_message(void* user, const char* text, const char* title) {
    (void)user;
    fprintf(stderr, "%s: %s\n", title, text);
}

static void TARVANE_CALL note_fatal(void* user, int32_t code) { *(int32_t*)user = code; }

/* Without this service the engine ends the process; with it, it leaves its routine at once. */
static void TARVANE_CALL come_back(void* user, int32_t status) {
    (void)user;
    (void)status;
}

static void provide_services(int32_t* fatal_code) {
    TARVANE_HOST_SERVICES services = {0};
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.message_box = show_message;
    services.report_fatal = note_fatal;
    services.stop = come_back;
    services.user = fatal_code;
    SET_HOST_SERVICES(&services);
}

/* ---- the report ---- */

/* The file of the first free unit, 0 when it can't be opened. CLOSEUNIT ends it. */
static int32_t report_to_file(const char* path) {
    const int32_t on = 1;
    int32_t unit, status;
    GETNEXTUNIT(&unit);
    OPENUNIT(&unit, path, (int32_t)strlen(path), &status);
    if (status != 0) return 0;
    SET_IWRITE(&on);
    SET_IWRTFL(&on);
    SET_IOUT(&unit);
    return unit;
}

static void report_to_store(void) {
    const int32_t on = 1, line_store = -1;
    SET_IWRITE(&on);
    SET_IWRTFL(&on);
    SET_IOUT(&line_store);
}

/* A record of the line store: 4 blanks, the line, six marks of two columns each, a NUL. */
static void print_report(void) {
    const char* store = GETLINESCOMFLG();
    int32_t count, i;
    LINE_COUNT(&count);
    for (i = 0; i < count; ++i) {
        const char* record = store + (size_t)i * TARVANE_STORE_WIDTH;
        int end = (int)strlen(record) - 12;
        while (end > 4 && record[end - 1] == ' ')
            --end;
        printf("|%.*s\n", end - 4, record + 4);
    }
}

/* ---- the elements ---- */

static void put(char* text, int offset, const char* slot) {
    memcpy(text + offset, slot, strlen(slot));
}

/* A 12 inch class 150 welding neck flange with a spiral wound gasket, SA-105 and SA-193 B7. */
static void flange(void) {
    static const struct {
        int element;
        float value;
    } given[] = {{TARVANE_ELEMENT, -1.0f}, /* stand-alone form */
                 {TARVANE_TYPE, TARVANE_INTEGRAL_WELD_NECK},
                 {TARVANE_KIND, TARVANE_ANALYSE},
                 {TARVANE_P, 150.0f},
                 {TARVANE_T_DESIGN, 300.0f},
                 {TARVANE_Sfo, 20000.0f},
                 {TARVANE_Sfa, 20000.0f},
                 {TARVANE_t, 1.19f},
                 {TARVANE_ci, 0.0625f},
                 {TARVANE_B, 12.0f},
                 {TARVANE_A, 19.0f},
                 {TARVANE_Fod, 15.0f},
                 {TARVANE_Fid, 12.0f},
                 {TARVANE_Go, 14.75f},
                 {TARVANE_Gi, 14.0f},
                 {TARVANE_go, 0.375f},
                 {TARVANE_g1, 1.19f},
                 {TARVANE_h, 3.25f},
                 {TARVANE_Sb, 25000.0f},
                 {TARVANE_Sa, 25000.0f},
                 {TARVANE_C, 17.0f},
                 {TARVANE_a, 0.875f},
                 {TARVANE_THREADS, TARVANE_TEMA_THREADS},
                 {TARVANE_BOLTS, 12.0f},
                 {TARVANE_m, 3.0f},
                 {TARVANE_y, 10000.0f},
                 {TARVANE_SKETCH, TARVANE_SKETCH_1A},
                 {TARVANE_COLUMN, 2.0f},
                 {TARVANE_tg, 0.125f},
                 {TARVANE_MATERIAL_CLASS, 1.0f},
                 {TARVANE_DENSITY, 0.2836f}};
    static const struct {
        int offset;
        const char* text;
    } texts[] = {{TARVANE_TEXT_MATERIAL, "SA-105"},
                 {TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7"},
                 {TARVANE_TEXT_DESCRIPTION, "NPS 12 cl. 150"},
                 {TARVANE_TEXT_CHART, "CS-2"},
                 {TARVANE_TEXT_EXTERNAL_LOADS, "N"},
                 {TARVANE_TEXT_MATING_LOADS, "N"},
                 {TARVANE_TEXT_CHANNEL_COVER, "N"},
                 {TARVANE_TEXT_USE_CORROSION, "Y"},
                 {TARVANE_TEXT_PARTITION, "N"},
                 {TARVANE_TEXT_THICKNESS_LABEL, "in."},
                 {TARVANE_TEXT_PRESSURE_LABEL, "psig"},
                 {TARVANE_TEXT_DIAMETER_LABEL, "in."},
                 {TARVANE_TEXT_STRESS_LABEL, "psi"},
                 {TARVANE_TEXT_FORCE_LABEL, "lbf"},
                 {TARVANE_TEXT_MOMENT_LABEL, "ft-lbs"},
                 {TARVANE_TEXT_AREA_LABEL, "in\xb2"},
                 {TARVANE_TEXT_TEMPERATURE, "F"},
                 {TARVANE_TEXT_WEIGHT_LABEL, "lbm"}};
    float record[TARVANE_RECORD_ELEMENTS] = {0};
    char text[TARVANE_TEXT_LENGTH];
    float map_nc, t_req_new_cold, t_req_new, mawp, t_req, e = 1.0f, operating = 150.0f;
    int32_t on = 1, off = 0, rigidity = 1, code = TARVANE_ASME_VIII_1;
    size_t i;
    int element;
    char name[16];

    for (i = 0; i < sizeof given / sizeof *given; ++i)
        TARVANE_AT(record, given[i].element) = given[i].value;
    for (element = TARVANE_UNIT_THICKNESS; element <= TARVANE_UNIT_WEIGHT; ++element)
        TARVANE_AT(record, element) = 1.0f;
    TARVANE_AT(record, TARVANE_UNIT_TEMPERATURE_OFFSET) = 0.0f;
    memset(text, ' ', sizeof text);
    for (i = 0; i < sizeof texts / sizeof *texts; ++i)
        put(text, texts[i].offset, texts[i].text);

    report_to_store();
    FLANGE_CALC(record, text, (int32_t)sizeof text, &on, &on, &map_nc, &t_req_new_cold, &t_req_new,
                &mawp, &t_req, &off, &rigidity, &code, &off, &off, &e, &off, &off, &operating, &off,
                &off);
    show("flange", "mawp", mawp);
    show("flange", "map_nc", map_nc);
    show("flange", "t_req", t_req);
    for (element = 1; element <= TARVANE_RECORD_ELEMENTS; ++element) {
        sprintf(name, "record%d", element);
        show("flange", name, TARVANE_AT(record, element));
    }
    print_report();
}

/* A thin torispherical head: Appendix 1-4(f) governs. */
static void shell(void) {
    const float P = 50.0f, S = 20000.0f, E = 1.0f, D = 200.0f, t = 0.375f, c = 0.0625f, k = 2.0f;
    const float r = 12.0f, zero = 0.0f, C = 0.3f, temp = 300.0f, Sy = 33600.0f;
    const int32_t head = TARVANE_TORISPHERICAL_HEAD, carbon_steel = 1, off = 0;
    float L = 200.0f, Sy_cold = 38000.0f, mawp_14f = 0.0f, map_nc_14f = 0.0f;
    float t_req, mawp, map_nc, stress, t_req_raw, t_14f, fail_ca, fail_ca_k;
    int32_t status = 0;

    SHLINT(&P, &S, &S, &E, &head, &D, &t, &c, &k, &L, &r, &zero, NULL, NULL, &C, &zero, &t_req,
           &mawp, &map_nc, &stress, &carbon_steel, &temp, &off, &t_req_raw, &off, &t_14f, &Sy,
           &mawp_14f, &map_nc_14f, &status, &Sy_cold, &zero, &off, &zero, &zero, &zero, &zero,
           &zero, &zero, &off, "", 0);
    COMPUTE_FAILURE_CA_DIV1(&P, &D, &E, &S, &t, &k, &L, &r, &zero, &C, &zero, &head, &fail_ca, &off,
                            &zero, &fail_ca_k, &zero, &zero, &zero, &zero, &zero, &zero, &off,
                            &off);
    show("shell", "t_req", t_req);
    show("shell", "t_req_raw", t_req_raw);
    show("shell", "mawp", mawp);
    show("shell", "map_nc", map_nc);
    show("shell", "stress", stress);
    show("shell", "t_14f", t_14f);
    show("shell", "fail_ca", fail_ca);
}

/* A cylinder under vacuum by Code Case 2286. */
static void external(const char* report_file) {
    const float P = 15.0f, temp = 300.0f, D = 90.0f, t = 1.125f, c = 0.125f, k = 2.0f;
    const float length = 636.0f, S = 20000.0f, Fy = 33600.0f, zero = 0.0f;
    const int32_t cylinder = TARVANE_CYLINDER, on = 1, off = 0, carbon_steel = 1;
    char chart[12];
    int32_t unit = 0;
    float maep, tca = t, slen, Do, A = 0.0f, B = 0.0f, Fha, fail_ca;

    memcpy(chart, "CS-2        ", sizeof chart);
    GETSETUP()[TARVANE_SETUP_CODE - 1].whole = TARVANE_ASME_VIII_1;
    GETSETUP()[TARVANE_SETUP_PRINT_EXTERNAL - 1].real = 1.0f;
    GLOBALS_mp_G_NUSE_CASE2286 = 1;
    BEGIN_REPORT();
    if (report_file != NULL) unit = report_to_file(report_file);
    if (unit == 0) report_to_store();
    SHLEXT(&P, &temp, chart, (int32_t)sizeof chart, &cylinder, &D, &t, &c, &k, &zero, &zero,
           &length, &maep, &tca, &slen, &Do, &A, &B, &on, &zero, &zero, &off, &S, &zero, &Fy,
           &carbon_steel, &Fha, &fail_ca, &off);
    show("external", "maep", maep);
    show("external", "tca", tca);
    show("external", "slen", slen);
    show("external", "Do", Do);
    show("external", "Fha", Fha);
    show("external", "fail_ca", fail_ca);
    if (unit == 0)
        print_report();
    else
        CLOSEUNIT(&unit);
}

/* Each element begins as at load, so that none depends on the one before it. */
static void fresh(void) {
    RESET_ENGINE();
    SET_METRIC_CONSTANTS();
}

/* The data files are beside the library, or in the folder that is given: on Windows the engine by itself
   looks for some of them in the suite's data folder only. */
int main(int argc, char** argv) {
    int32_t fatal_code = 0;
    provide_services(&fatal_code);
    if (argc > 1) SET_SYSTEM_DIR(argv[1], (int32_t)strlen(argv[1]));
    fresh();
    flange();
    fresh();
    shell();
    fresh();
    external(argc > 2 ? argv[2] : NULL);
    SET_HOST_SERVICES(NULL);
    return fatal_code != 0;
}
