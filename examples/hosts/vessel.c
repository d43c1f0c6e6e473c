/*
** A host in C that calculates a flange of a vessel: numbered, with its row of the element tables, in the
** units of the report, which goes to a file.
**   vessel REPORT_FILE
*/
#include "tarvane/tarvane.h"

#include <stdio.h>
#include <string.h>

static const int32_t ON = 1, OFF = 0;

/* A text into a field of a block, blank-padded. */
static void put(char* field, size_t width, const char* text) {
    const size_t length = strlen(text);
    memset(field, ' ', width);
    memcpy(field, text, length < width ? length : width);
}
#define PUT(field, text) put((field), sizeof(field), (text))

/* What applies to every element: switches, code, units. */
static void begin_vessel(int32_t code) {
    static const float factors[11] = {25.4f, 0.00689475729f, 25.4f,       0.00689475729f,
                                      1.0f,  4.44822162f,    1.35581795f, 645.16f,
                                      32.0f, 1.8f,           0.45359237f};
    static const char* const labels[10] = {"mm", "MPa", "mm",     "MPa",   "",
                                           "N",  "N-m", "mm\262", "\260C", "kg"};
    char text[10][10];
    int i;

    RESET_ENGINE();
    SET_GLOBALS_FROM_TVN(&OFF, &OFF, &OFF, &OFF, &OFF, &ON, &OFF);
    SET_MODULE_CODE(&code);
    for (i = 0; i < 10; ++i)
        PUT(text[i], labels[i]);
    SET_UNITS(factors, text[0], (int32_t)sizeof text);
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
    SET_METRIC_CONSTANTS();
    GETSETUP()[TARVANE_SETUP_CODE - 1].whole = code;
}

/* The row of an element in the vessel's tables. */
static void describe_element(int32_t number) {
    TARVANE_ELEMENT_ROW* row = &GETELEMENTTABLES()[number - 1];
    PUT(row->description, "Manway");
    PUT(row->from_node, "10");
    PUT(row->to_node, "20");
    PUT(row->material, "SA-105");
    PUT(row->heat_treatment, "       1"); /* P-number 1 */
    row->joint_efficiency = 0.85f;
}

/* A 12 inch class 150 welding neck flange with a spiral wound gasket, SA-105 and SA-193 B7. */
static void fill_record(float* record, int32_t number) {
    static const struct {
        int element;
        float value;
    } given[] = {{TARVANE_TYPE, TARVANE_INTEGRAL_WELD_NECK},
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
                 {TARVANE_DENSITY, 0.2836f},
                 {TARVANE_SHELL_ID, 12.0f},
                 {TARVANE_SHELL_STRESS, 20000.0f},
                 {TARVANE_SHELL_STRESS_COLD, 20000.0f},
                 {TARVANE_SHELL_THICKNESS, 0.375f}};
    size_t i;
    memset(record, 0, TARVANE_RECORD_ELEMENTS * sizeof *record);
    TARVANE_AT(record, TARVANE_ELEMENT) = (float)number;
    for (i = 0; i < sizeof given / sizeof *given; ++i)
        TARVANE_AT(record, given[i].element) = given[i].value;
}

static void fill_text(char* text) {
    static const struct {
        int offset;
        const char* text;
    } slots[] = {{TARVANE_TEXT_MATERIAL, "SA-105"},    {TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7"},
                 {TARVANE_TEXT_DESCRIPTION, "Manway"}, {TARVANE_TEXT_EXTERNAL_LOADS, "N"},
                 {TARVANE_TEXT_MATING_LOADS, "N"},     {TARVANE_TEXT_CHANNEL_COVER, "N"},
                 {TARVANE_TEXT_USE_CORROSION, "Y"},    {TARVANE_TEXT_PARTITION, "N"},
                 {TARVANE_TEXT_CHART, "CS-2"}};
    size_t i;
    memset(text, ' ', TARVANE_TEXT_LENGTH);
    for (i = 0; i < sizeof slots / sizeof *slots; ++i)
        put(text + slots[i].offset, TARVANE_TEXT_SLOT, slots[i].text);
}

/* The switches of the report, before every calculation: FLANGE_CALC changes them. */
static void report_to(int32_t unit) {
    SET_IOUT(&unit);
    SET_IWRITE(&ON);
    SET_IWRTFL(&ON);
}

int main(int argc, char** argv) {
    const int32_t number = 1, code = TARVANE_ASME_VIII_1, internal = 1;
    const float joint_efficiency = 1.0f, operating = 150.0f;
    float record[TARVANE_RECORD_ELEMENTS], map_nc, t_req_new_cold, t_req_new, mawp, t_req;
    char text[TARVANE_TEXT_LENGTH];
    int32_t unit, status, rigidity = 1;

    if (argc != 2) {
        fputs("usage: vessel REPORT_FILE\n", stderr);
        return 2;
    }
    begin_vessel(code);
    describe_element(number);
    GETNEXTUNIT(&unit);
    OPENUNIT(&unit, argv[1], (int32_t)strlen(argv[1]), &status);
    if (status != 0) {
        fprintf(stderr, "vessel: cannot write %s\n", argv[1]);
        return 1;
    }

    fill_record(record, number);
    fill_text(text);
    report_to(unit);
    FLANGE_CALC(record, text, (int32_t)sizeof text, &ON, &internal, &map_nc, &t_req_new_cold,
                &t_req_new, &mawp, &t_req, &OFF, &rigidity, &code, &number, &number,
                &joint_efficiency, &OFF, &OFF, &operating, &OFF, &OFF);
    CLOSEUNIT(&unit);

    if (mawp == TARVANE_NO_VALUE) {
        puts("no allowable pressure: see the messages of the report");
        return 1;
    }
    printf("MAWP %.2f psi, MAPnc %.2f psi, bolt areas %.3f of %.3f sq in\n", mawp, map_nc,
           TARVANE_AT(record, TARVANE_Am), TARVANE_AT(record, TARVANE_Ab));
    return 0;
}
