/*
** Common ground of the test of what the library asks of Windows: checks, the routines of the library
** that is loaded at the moment, files, programs, windows.
*/
#ifndef TARVANE_TEST_PLATFORM_H
#define TARVANE_TEST_PLATFORM_H

#include "tarvane/tarvane.h"

#include <stdio.h>
#include <string.h>
#include <windows.h>

/* ---- checks ---- */

void check_text(const char* name, const char* expected, const char* got);
void check_number(const char* name, long expected, long got);
void not_tested(const char* name, const char* reason);

/* ---- the library ---- */

#define PLATFORM_ROUTINES(use)                                                                     \
    use(ASMEMOD) use(BEGIN_REPORT) use(CLOSEUNIT) use(FLANGE_CALC) use(GETBOLTDATA)                \
        use(GETNEXTUNIT) use(GET_SYSTEM_PATH) use(HELP_FOLDER) use(HELP_LANGUAGE)                  \
            use(IS_MAIN_HOST) use(LAUNCH_HELP) use(MATERIAL_COUNT) use(OPENUNIT) use(REPORT_DATE)  \
                use(RESET_ENGINE) use(SET_HOST_SERVICES) use(SET_HOST_WINDOW) use(SET_IOUT)        \
                    use(SET_IWRITE) use(SET_IWRTFL) use(SET_MODULE_DIR) use(SET_NO_DIALOG)         \
                        use(SET_SYSTEM_DIR) use(WORK_FILE) use(WRITE_TEXT)

/* As an outsider sees it: everything by its exported name. */
struct engine {
    HMODULE library;
#define PLATFORM_ROUTINE(name) __typeof__(name)* name;
    PLATFORM_ROUTINES(PLATFORM_ROUTINE)
#undef PLATFORM_ROUTINE
};
extern struct engine engine;

/* Loads tarvane.dll from a folder, as it is at load; the previous one is unloaded. */
void load_engine(const char* folder);
void unload_engine(void);

/* One that is rated step by step, as its mating flange's bolt loads ask; one with impossible values; one
   that can't be rated. */
enum flange { RATED_IN_STEPS, FLANGE_WITH_MESSAGES, RING_WITHIN_ITS_BORE };
void run_flange(enum flange which);
/* The report goes to a file unit. */
void report_to(int32_t unit);
int32_t open_unit(int32_t unit, const char* path);

/* ---- files ---- */

#define PATH_ROOM 1200

/* A text in room that is used again after 512 calls. */
const char* text_of(const char* format, ...) __attribute__((format(printf, 1, 2)));
/* The folder of this test's own, with a blank in its name; removed at the end. */
extern const char* scratch;
/* The folder of this program: the library, the stand-in and the data files are there. */
extern const char* stage;
extern char program[PATH_ROOM];

void make_folder(const char* path);
const char* new_folder(const char* name); /* within scratch */
void copy_to(const char* folder, const char* name, const char* from);
void write_file(const char* path, const char* content);
/* The whole of a file, "" when it is absent. */
const char* content_of(const char* path);
const char* state_of(const char* path); /* "file", "folder", "absent" */
/* "open" when a handle is open somewhere, "closed", "absent". */
static inline const char* use_of(const char* path) {
    const HANDLE file = CreateFileA(path, GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? "open" : "absent";
    CloseHandle(file);
    return "closed";
}
void remove_tree(const char* folder);
/* Adds a line to the file that TARVANE_HOST_LOG names, if any. */
void log_line(const char* format, ...) __attribute__((format(printf, 1, 2)));

/* ---- programs ---- */

/* Exit status of a program, -1 when it can't start, -2 when it does not end within a minute. */
long run_program(const char* file, const char* arguments);

/* ---- message boxes ---- */

struct boxes {
    int count;
    char title[128], text[1024]; /* of the latest one */
    int information_icon;
    HWND owner;
};
/* From here on a second thread answers each message box of this process with OK, keeps it here and
   logs it. */
void answer_boxes(struct boxes* boxes);
void stop_answering(void);

/* ---- settings ---- */

#define SUITE_KEY "Software\\Kessendale Lab"
#define SETTINGS_KEY SUITE_KEY "\\TARVANE\\2024\\Settings"
void set_value(const char* key, const char* name, DWORD type, const void* data, DWORD size);
void set_string(const char* key, const char* name, const char* text);
void remove_value(const char* key, const char* name);
int key_exists(const char* key);
const char* system_path(int32_t selector, const char* product, const char* version);

/* ---- the parts ---- */

void test_settings(void);
void test_default_folders(void);
void test_help(void);
void test_main_host(void);
void test_data_files(void);
void test_report_files(void);
void test_message_boxes(void);
void test_fatal_stop(void);

/* The host that the fatal stop ends: platform fatal FOLDER_OF_THE_LIBRARY OPTIONS */
int fatal_host(const char* library, const char* options);

#endif
