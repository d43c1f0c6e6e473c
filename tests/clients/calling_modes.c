/*
** The three elements of the C host as a host of another compiler calls: with a stack that is aligned to 4
** bytes only, and with an x87 control word of its own.
**   calling_modes SHIFT CONTROL_WORD FOLDER_OF_THE_DATA_FILES
** It is compiled with -mpreferred-stack-boundary=2, so that every call is as far from a multiple of 16 as
** SHIFT (0, 4, 8, 12) and the frames above it make it.
*/
#include "tarvane/tarvane.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#define main three_elements
#include "three_elements.c"
#undef main

static uint16_t control_word(void) {
    uint16_t word;
    __asm__ volatile("fnstcw %0" : "=m"(word));
    return word;
}

static uint32_t sse_word(void) {
    uint32_t word;
    __asm__ volatile("stmxcsr %0" : "=m"(word));
    return word;
}

/* ---- services that call the engine again ---- */

static struct {
    int32_t code, status, messages, units;
    float modulus;
} seen;

static void TARVANE_CALL fatal(void* user, int32_t code) {
    const float temperature = 300.0f;
    const int32_t carbon_steel = 1, division1 = 1;
    (void)user;
    seen.code = code;
    seen.modulus = ASMEMOD(&temperature, &carbon_steel, &division1);
}

static void TARVANE_CALL stop(void* user, int32_t status) {
    (void)user;
    seen.status = status;
    GETNEXTUNIT(&seen.units);
}

static void TARVANE_CALL new_year(void* user, int32_t* year, int32_t* month, int32_t* day,
                                  int32_t* hour, int32_t* minute) {
    (void)user;
    *year = 2024;
    *month = *day = 1;
    *hour = *minute = 0;
}

/* A blind flange inside its bore, code 25. */
static int services_fail(void) {
    static const float given[] = {
        -1.0f, 7.0f,   1.0f,  150.0f, 300.0f, 20000.0f, 20000.0f, 1.19f, 0.0f,     20.0f,
        19.0f, 15.0f,  12.0f, 14.75f, 14.0f,  0.0f,     0.0f,     0.0f,  25000.0f, 25000.0f,
        17.0f, 0.875f, 1.0f,  12.0f,  3.0f,   10000.0f, 1.0f,     2.0f,  0.125f};
    TARVANE_HOST_SERVICES table = {0};
    float record[TARVANE_RECORD_ELEMENTS] = {0};
    char text[TARVANE_TEXT_LENGTH], date[11], time[9];
    float map_nc, t_req_new_cold, t_req_new, mawp, t_req, e = 1.0f, operating = 150.0f;
    int32_t on = 1, off = 0, rigidity = 0;
    int k;

    table.version = TARVANE_HOST_SERVICES_VERSION;
    table.report_fatal = fatal;
    table.stop = stop;
    table.clock = new_year;
    SET_HOST_SERVICES(&table);
    REPORT_DATE(date, sizeof date, time, sizeof time);
    memcpy(record, given, sizeof given);
    for (k = TARVANE_UNIT_THICKNESS; k <= TARVANE_UNIT_WEIGHT; ++k)
        TARVANE_AT(record, k) = 1.0f;
    memset(text, ' ', sizeof text);
    FLANGE_CALC(record, text, sizeof text, &off, &on, &map_nc, &t_req_new_cold, &t_req_new, &mawp,
                &t_req, &on, &rigidity, &on, &off, &off, &e, &off, &off, &operating, &off, &off);
    SET_HOST_SERVICES(NULL);
    return memcmp(date, " Jan 1,2024", sizeof date) != 0 || seen.code != 25 || seen.status != 1 ||
           seen.units < 10 || !(seen.modulus > 25.0f && seen.modulus < 31.0f);
}

static char* arguments[3];
static uint16_t wanted;
static uintptr_t place;

int run(void);
int run(void) {
    const uint32_t sse = sse_word();
    int status;
    place = (uintptr_t)__builtin_frame_address(0);
    __asm__ volatile("fldcw %0" : : "m"(wanted));
    wanted = control_word(); /* a bit that the processor does not have stays as it was */
    status = three_elements(2, arguments);
    if (services_fail()) {
        fprintf(stderr, "calling_modes: a service was not called as it should be\n");
        status = 3;
    }
    /* The six lowest bits say what has happened. */
    if (control_word() != wanted || ((sse_word() ^ sse) & ~0x3Fu) != 0) {
        fprintf(stderr, "calling_modes: the engine left other floating-point modes\n");
        status = 4;
    }
    return status;
}

int main(int argc, char** argv) {
    uint16_t own = control_word();
    int status, shift;
    if (argc != 4) return 2;
    shift = atoi(argv[1]);
    wanted = (uint16_t)strtol(argv[2], NULL, 16);
    arguments[1] = argv[3];
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    __asm__ volatile("movl %%esp, %%ebx\n\t"
                     "andl $-16, %%esp\n\t"
                     "subl %%esi, %%esp\n\t"
                     "call %P2\n\t"
                     "movl %%ebx, %%esp"
                     : "=a"(status)
                     : "S"(shift), "i"(run)
                     : "ebx", "ecx", "edx", "memory", "cc");
    __asm__ volatile("fldcw %0" : : "m"(own));
    /* The return address and the frame pointer are between. */
    if ((place + 8 + (uintptr_t)shift) % 16 != 0) {
        fprintf(stderr, "calling_modes: the stack was not shifted\n");
        status = 5;
    }
    return status;
}
