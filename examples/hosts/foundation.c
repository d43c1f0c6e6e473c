/*
** A host in C that passes two vessels to the foundation design application: a column on a ring of anchor
** bolts and a horizontal drum on saddles. Writes tower.xml and tower.ini, drum.xml and drum.ini.
**
**   foundation FOLDER
*/
#include "tarvane/tarvane.h"

#include <stdio.h>
#include <string.h>

static int files_written = 0;

static void TARVANE_CALL message(void* user, const char* text, const char* title) {
    (void)user;
    (void)title;
    puts(text);
    ++files_written;
}

/* A text into a field of a record, blank-padded. */
static void put(char* field, size_t width, const char* text) {
    const size_t length = strlen(text);
    memset(field, ' ', width);
    memcpy(field, text, length < width ? length : width);
}

static void write_files(const char* folder, const char* name, int32_t vertical) {
    const int32_t no_exchanger = 0;
    char path[256];
    const int length = snprintf(path, sizeof path, "%s/%s", folder, name);
    if (length > 0 && (size_t)length < sizeof path)
        WRITE_FOUNDATION_FILES(path, length, &vertical, &no_exchanger);
}

/* Feet, pounds, foot-pounds, degrees Fahrenheit. */
static void column(TARVANE_FOUNDATION_RECORDS* records, const char* folder) {
    records->vertical.diameter = 6.0f;
    records->vertical.height = 62.5f;
    records->vertical.pos_elevation = 1.25f;
    records->vertical.bolt_circle = 7.125f;
    records->vertical.anchor_count = 12.0f;
    records->vertical.anchor_size = 0.125f;
    records->vertical.empty_weight = 48200.0f;
    records->vertical.operating_weight = 91350.5f;
    records->vertical.test_weight = 152000.0f;
    records->vertical.wind_shear = 9840.0f;
    records->vertical.wind_moment = 318000.0f;
    records->vertical.earthquake_shear = 7310.25f;
    records->vertical.earthquake_moment = 287500.0f;
    write_files(folder, "tower.tvn", 1);
}

static void drum(TARVANE_FOUNDATION_RECORDS* records, const char* folder) {
    put(records->horizontal.head.material, sizeof records->horizontal.head.material,
        "Stainless Steel");
    records->horizontal.length = 24.0f;
    records->horizontal.saddle_distance = 15.5f;
    records->horizontal.saddle_length = 6.0f;
    records->horizontal.saddle_width = 0.75f;
    records->horizontal.shell_temperature = 350.0f;
    records->horizontal.center_elevation = 9.0f;
    records->horizontal.pos_to_center = 4.5f;
    records->horizontal.empty_weight = 21700.0f;
    records->horizontal.operating_weight = 60400.0f;
    records->horizontal.test_weight = 73900.0f;
    records->horizontal.friction = 0.45f;
    records->horizontal.wind_pressure = 31.5f;
    records->horizontal.earthquake_factor = 0.2f;
    records->horizontal.anchor_count = 4.0f;
    records->horizontal.anchor_size = 0.104f;
    records->horizontal.pos_elevation = 4.5f;
    write_files(folder, "drum.tvn", 0);
}

int main(int argc, char** argv) {
    TARVANE_HOST_SERVICES services;
    TARVANE_FOUNDATION_RECORDS* records;
    if (argc != 2) {
        fputs("usage: foundation FOLDER\n", stderr);
        return 2;
    }
    memset(&services, 0, sizeof services);
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.message_box = message;
    SET_HOST_SERVICES(&services);

    FOUNDATION_RECORD_DEFAULTS();
    records = GETFOUNDATION();
    put(records->company, sizeof records->company, "Hale & Sons <Vessels>");
    column(records, argv[1]);
    drum(records, argv[1]);
    SET_HOST_SERVICES(NULL);
    return files_written == 2 ? 0 : 1;
}
