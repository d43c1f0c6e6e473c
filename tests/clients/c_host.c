/*
** A host in C that knows the public header only: a 12 inch class 150 weld neck flange (ASME B16.5
** dimensions, compressed sheet gasket) in the stand-alone form; the report is read from the line store
** and goes to standard output.
*/
#include "tarvane/tarvane.h"

#include <stdio.h>
#include <string.h>

static int failures = 0;

static void check(int fine, const char* what) {
    if (fine) return;
    fprintf(stderr, "c_host: %s\n", what);
    ++failures;
}

static void put(char* text, int offset, const char* slot) {
    memcpy(text + offset, slot, strlen(slot));
}

static void fill_record(float* record) {
    int element;
    for (element = 1; element <= TARVANE_RECORD_ELEMENTS; ++element)
        TARVANE_AT(record, element) = 0.0f;

    TARVANE_AT(record, TARVANE_ELEMENT) = -1.0f; /* stand-alone form */
    TARVANE_AT(record, TARVANE_TYPE) = TARVANE_INTEGRAL_WELD_NECK;
    TARVANE_AT(record, TARVANE_KIND) = TARVANE_ANALYSE;
    TARVANE_AT(record, TARVANE_P) = 200.0f;
    TARVANE_AT(record, TARVANE_T_DESIGN) = 300.0f;
    TARVANE_AT(record, TARVANE_Sfo) = 20000.0f; /* SA-105 */
    TARVANE_AT(record, TARVANE_Sfa) = 20000.0f;
    TARVANE_AT(record, TARVANE_Sb) = 25000.0f; /* SA-193 B7 */
    TARVANE_AT(record, TARVANE_Sa) = 25000.0f;
    TARVANE_AT(record, TARVANE_t) = 1.19f;
    TARVANE_AT(record, TARVANE_B) = 12.0f;
    TARVANE_AT(record, TARVANE_A) = 19.0f;
    TARVANE_AT(record, TARVANE_Fod) = 15.0f;
    TARVANE_AT(record, TARVANE_Fid) = 12.0f;
    TARVANE_AT(record, TARVANE_Go) = 15.0f;
    TARVANE_AT(record, TARVANE_Gi) = 12.75f;
    TARVANE_AT(record, TARVANE_go) = 0.375f;
    TARVANE_AT(record, TARVANE_g1) = 1.19f;
    TARVANE_AT(record, TARVANE_h) = 3.31f;
    TARVANE_AT(record, TARVANE_C) = 17.0f;
    TARVANE_AT(record, TARVANE_a) = 0.875f;
    TARVANE_AT(record, TARVANE_THREADS) = TARVANE_TEMA_THREADS;
    TARVANE_AT(record, TARVANE_BOLTS) = 12.0f;
    TARVANE_AT(record, TARVANE_m) = 2.0f;
    TARVANE_AT(record, TARVANE_y) = 1600.0f;
    TARVANE_AT(record, TARVANE_SKETCH) = TARVANE_SKETCH_1A;
    TARVANE_AT(record, TARVANE_COLUMN) = 2.0f;
    TARVANE_AT(record, TARVANE_tg) = 0.125f;
    TARVANE_AT(record, TARVANE_MATERIAL_CLASS) = 1.0f;
    TARVANE_AT(record, TARVANE_DENSITY) = 0.2836f;
    TARVANE_AT(record, TARVANE_MATING_OPERATING) = TARVANE_NO_VALUE;

    for (element = TARVANE_UNIT_THICKNESS; element <= TARVANE_UNIT_WEIGHT; ++element)
        TARVANE_AT(record, element) = 1.0f;
    TARVANE_AT(record, TARVANE_UNIT_TEMPERATURE_OFFSET) = 0.0f;
}

static void fill_text(char* text) {
    memset(text, ' ', TARVANE_TEXT_LENGTH);
    put(text, TARVANE_TEXT_MATERIAL, "SA-105");
    put(text, TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7");
    put(text, TARVANE_TEXT_DESCRIPTION, "12in 150 WN");
    put(text, TARVANE_TEXT_EXTERNAL_LOADS, "N");
    put(text, TARVANE_TEXT_MATING_LOADS, "N");
    put(text, TARVANE_TEXT_CHANNEL_COVER, "N");
    put(text, TARVANE_TEXT_USE_CORROSION, "Y");
    put(text, TARVANE_TEXT_PARTITION, "N");
    put(text, TARVANE_TEXT_CHART, "CS-2");
    put(text, TARVANE_TEXT_THICKNESS_LABEL, "in.");
    put(text, TARVANE_TEXT_PRESSURE_LABEL, "psig");
    put(text, TARVANE_TEXT_DIAMETER_LABEL, "in.");
    put(text, TARVANE_TEXT_STRESS_LABEL, "psi");
    put(text, TARVANE_TEXT_FORCE_LABEL, "lbf");
    put(text, TARVANE_TEXT_MOMENT_LABEL, "ft-lbs");
    put(text, TARVANE_TEXT_AREA_LABEL, "in\xB2");
    put(text, TARVANE_TEXT_TEMPERATURE, "F");
    put(text, TARVANE_TEXT_WEIGHT_LABEL, "lbm");
}

/* Prints the line of a record: what is between its four blanks and its six marks. */
static int print_record(const char* record) {
    const char* end = memchr(record, '\0', TARVANE_STORE_WIDTH);
    if (end == NULL || end - record < 16) return 0;
    end -= 12;
    record += 4;
    while (end > record && end[-1] == ' ')
        --end;
    printf("%.*s\n", (int)(end - record), record);
    return 1;
}

static void set_switches(void) {
    const int32_t off = 0, on = 1, store = -1, code = TARVANE_ASME_VIII_1;
    const int32_t a5 = 5, no_dialog = 1;

    GETSETUP()[TARVANE_SETUP_CODE - 1].whole = TARVANE_ASME_VIII_1;
    SET_GLOBALS_FROM_TVN(&off, &on, &off, &off, &a5, &on, &off);
    check(GLOBALS_mp_G_NUSE_CORRODEDK == 1, "the engine's setting does not reach its variable");
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
    SET_METRIC_CONSTANTS();
    SET_MODULE_CODE(&code);
    SET_NO_DIALOG(&no_dialog);
    SET_CHART("CS-2", 4);
    SET_IOUT(&store);
    SET_IWRITE(&on);
    SET_IWRTFL(&on);
}

static void check_data_routines(void) {
    const float ambient = 70.0f, dia = 0.875f;
    const int32_t reference = 1, asme = TARVANE_ASME_VIII_1, tema = TARVANE_TEMA_THREADS;
    float row[9], diameters[27], rows[27][9];
    int32_t found = 0, count = 0, unit = 0;

    check(ASMEMOD(&ambient, &reference, &asme) > 25.0f, "no elastic modulus of carbon steel");
    GETBOLTDATA(&dia, &tema, row, &found);
    check(found == 1 && row[0] == dia && row[1] > 0.4f, "no bolt of 7/8 inch");
    BOLTHELPER(&tema, diameters, &rows[0][0], &count);
    check(count > 20 && diameters[1] == 0.5f && rows[1][0] == 0.5f, "no table of bolts");
    GETNEXTUNIT(&unit);
    check(unit == 10, "the first unit is not 10");
}

int main(void) {
    static float record[TARVANE_RECORD_ELEMENTS];
    static char text[TARVANE_TEXT_LENGTH];
    float map_nc = 0.0f, t_new_cold = 0.0f, t_new = 0.0f, mawp = 0.0f, t_req = 0.0f;
    int32_t rigidity = 0;
    const int32_t report_kernel = 1, write_case = 1, quiet = 0, code = TARVANE_ASME_VIII_1;
    const int32_t element = 0, bolt_row = 1, corroded = 0, standard = 0, edition = 0, comma = 0;
    const float joint_e = 1.0f, p_operating = 200.0f;
    const char* store;
    int32_t lines = 0, i;

    set_switches();
    fill_record(record);
    fill_text(text);
    FLANGE_CALC(record, text, TARVANE_TEXT_LENGTH, &report_kernel, &write_case, &map_nc,
                &t_new_cold, &t_new, &mawp, &t_req, &quiet, &rigidity, &code, &element, &bolt_row,
                &joint_e, &corroded, &standard, &p_operating, &edition, &comma);

    LINE_COUNT(&lines);
    store = GETLINESCOMFLG();
    for (i = 0; i < lines; ++i)
        check(print_record(store + i * TARVANE_STORE_WIDTH), "a record of the store has no end");

    check(lines > 50 && lines < TARVANE_STORE_RECORDS, "the report is missing or not whole");
    check(mawp > 0.0f, "no maximum allowable working pressure");
    check(map_nc > 0.0f, "no maximum allowable pressure, new and cold");
    check(TARVANE_AT(record, TARVANE_Ab) > 4.5f && TARVANE_AT(record, TARVANE_Ab) < 5.5f,
          "12 bolts of 7/8 inch have another area");
    check(TARVANE_AT(record, TARVANE_Wm1) > 0.0f && TARVANE_AT(record, TARVANE_Wm2) > 0.0f,
          "no bolt loads");
    check(TARVANE_AT(record, TARVANE_MATING_OPERATING) == 0.0f, "\"no value\" stays in the record");
    check(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT == 0, "inch units select metric constants");

    check_data_routines();

    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    RESET_ENGINE();
    LINE_COUNT(&lines);
    check(lines == 0, "RESET_ENGINE keeps the line count");
    check(METRICCONSTANTS_mp_G_NMETRIC_CONSTANT == 0, "RESET_ENGINE does not reach the variables");

    fprintf(stderr, "c_host: MAWP %.2f psig, MAPnc %.2f psig, %d failures\n", (double)mawp,
            (double)map_nc, failures);
    return failures == 0 ? 0 : 1;
}
