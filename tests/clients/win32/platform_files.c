/* Data files, units and report files. */
#include "platform.h"

#include <shlobj.h>
#include <stdlib.h>

/* ---- data files ---- */

static const char* modulus(void) {
    const float temperature = 70.0f;
    const int32_t carbon_steel = 1, code = TARVANE_ASME_VIII_1;
    return text_of("%.2f", engine.ASMEMOD(&temperature, &carbon_steel, &code));
}

static long bolt_found(void) {
    const float diameter = 0.75f;
    const int32_t series = TARVANE_TEMA_THREADS;
    float row[9];
    int32_t found = -1;
    engine.GETBOLTDATA(&diameter, &series, row, &found);
    return found;
}

static long materials(void) {
    const int32_t code = TARVANE_ASME_VIII_1;
    int32_t count = -1;
    engine.MATERIAL_COUNT(&code, &count);
    return count;
}

static void module_folder(const char* path) { engine.SET_MODULE_DIR(path, (int32_t)strlen(path)); }
static void system_folder(const char* path) { engine.SET_SYSTEM_DIR(path, (int32_t)strlen(path)); }

/* The table of moduli, with another figure for carbon steel at 70 F. */
static void write_moduli(const char* folder, const char* figure) {
    char* const table = _strdup(content_of(text_of("%s\\ElastAlp07.txt", stage)));
    char* const place = strstr(table, " 29.40");
    if (place == NULL) exit(3);
    memcpy(place + 1, figure, 5);
    write_file(text_of("%s\\ElastAlp07.txt", folder), table);
    free(table);
}

static void copy_bolts(const char* folder) {
    copy_to(folder, "BOLTDATA.TXT", text_of("%s\\BOLTDATA.TXT", stage));
}

/* A library in one folder and the suite's data in another. */
static void test_two_folders(const char* kind, const char* library, const char* data) {
    const char* const beside = text_of("%s\\ElastAlp07.txt", library);
    copy_to(library, "tarvane.dll", text_of("%s\\tarvane.dll", stage));
    set_string(SETTINGS_KEY, "Alternate System Path", data);

    load_engine(library);
    check_text(text_of("%s, no moduli anywhere", kind), "0.00", modulus());
    check_number(text_of("%s, no bolt data anywhere", kind), 0, bolt_found());
    check_number(text_of("%s, no materials anywhere", kind), 0, materials());

    write_moduli(data, "22.22");
    load_engine(library);
    check_text(text_of("%s, moduli in the data folder", kind), "22.22", modulus());
    write_moduli(library, "11.11");
    load_engine(library);
    check_text(text_of("%s, moduli in both", kind), "11.11", modulus());
    DeleteFileA(text_of("%s\\ElastAlp07.txt", data));
    load_engine(library);
    check_text(text_of("%s, moduli beside the library", kind), "11.11", modulus());
    check_text(text_of("%s, closed behind the reading", kind), "closed", use_of(beside));

    copy_to(data, "MATFILE1.BIN", text_of("%s\\MATFILE1.BIN", stage));
    check_number(text_of("%s, materials in the data folder", kind), 1, materials() > 0);
    copy_bolts(library);
    load_engine(library);
    check_number(text_of("%s, bolt data beside the library", kind), 0, bolt_found());
    copy_bolts(data);
    load_engine(library);
    check_number(text_of("%s, bolt data in the data folder", kind), 1, bolt_found());
}

/* A program that keeps a data file open, for writing too, disturbs nobody. */
static void test_shared_reading(void) {
    const char* const folder = new_folder("Shared data");
    HANDLE file;
    write_moduli(folder, "22.22");
    file = CreateFileA(text_of("%s\\ElastAlp07.txt", folder), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE, NULL, OPEN_EXISTING, 0, NULL);
    load_engine(stage);
    module_folder(folder);
    check_text("a data file that another program has open", "22.22", modulus());
    CloseHandle(file);
}

static void test_given_folders(void) {
    const char* const folder = new_folder("Given data");
    const char* const forward = text_of("%s", folder);
    char* c;
    write_moduli(folder, "22.22");
    load_engine(stage);
    check_text("moduli beside the program", "29.40", modulus());
    engine.RESET_ENGINE();
    module_folder(folder);
    check_text("moduli in a folder of the host's choice", "22.22", modulus());
    for (c = (char*)forward; *c != '\0'; ++c)
        if (*c == '\\') *c = '/';
    engine.RESET_ENGINE();
    module_folder(forward);
    check_text("its path with slashes", "22.22", modulus());
    engine.RESET_ENGINE();
    module_folder("");
    SetCurrentDirectoryA(folder);
    check_text("without a folder, in the working folder", "22.22", modulus());
    SetCurrentDirectoryA(stage);

    copy_bolts(folder);
    system_folder(text_of("%s", folder));
    check_number("a data folder of the host's choice", 1, bolt_found());
    engine.RESET_ENGINE();
    system_folder(text_of("%s\\", folder));
    check_number("with a backslash at its end", 1, bolt_found());
    engine.RESET_ENGINE();
    system_folder("");
    check_number("without a data folder", 0, bolt_found());
}

/* The engine's own lookup is made once. */
static void test_kept_folder(void) {
    const char* const folder = new_folder("Kept data");
    copy_bolts(folder);
    set_string(SETTINGS_KEY, "Alternate System Path", scratch);
    load_engine(stage);
    check_number("no bolt data in the folder looked up", 0, bolt_found());
    set_string(SETTINGS_KEY, "Alternate System Path", folder);
    check_number("which is kept", 0, bolt_found());
    engine.RESET_ENGINE();
    check_number("until the engine is reset", 1, bolt_found());
}

/* The library, loaded by a name within the working folder, knows its folder all the same. */
static void test_relative_library(void) {
    const char* const folder = new_folder("Relative library");
    copy_to(folder, "tarvane.dll", text_of("%s\\tarvane.dll", stage));
    write_moduli(folder, "22.22");
    SetCurrentDirectoryA(scratch);
    load_engine("Relative library");
    SetCurrentDirectoryA(stage);
    check_text("a library loaded by a relative name", "22.22", modulus());
}

/* Line ends as editors leave them here. */
static void test_line_ends(void) {
    static char table[1 << 20];
    const char* const folder = new_folder("Edited data");
    const char* from = content_of(text_of("%s\\BOLTDATA.TXT", stage));
    size_t to = 0;
    for (; *from != '\0' && to + 3 < sizeof table; ++from) {
        if (*from == '\n') table[to++] = '\r';
        table[to++] = *from;
    }
    table[to] = '\0';
    write_file(text_of("%s\\BOLTDATA.TXT", folder), table);
    load_engine(stage);
    system_folder(folder);
    check_number("a data file with carriage returns", 1, bolt_found());
}

static void test_default_data_folder(void) {
    char known[MAX_PATH] = "";
    const char* folder;
    remove_value(SETTINGS_KEY, "Alternate System Path");
    SHGetFolderPathA(NULL, CSIDL_COMMON_DOCUMENTS, NULL, SHGFP_TYPE_CURRENT, known);
    folder = text_of("%s\\Kessendale Lab\\TARVANE\\2024\\System", known);
    load_engine(stage);
    check_number("no bolt data in the default folder", 0, bolt_found());
    check_text("the default folder is made", "folder", state_of(folder));
    copy_bolts(folder);
    load_engine(stage);
    check_number("bolt data in the default folder", 1, bolt_found());
}

/* Folder of a path with `length` characters, in levels of 50. */
static const char* long_folder(const char* name, size_t length) {
    char path[PATH_ROOM];
    size_t size = (size_t)sprintf(path, "%s\\", new_folder(name));
    while (size < length) {
        size_t level = length - size < 51 ? length - size : 50;
        memset(path + size, 'd', level);
        path[size += level] = '\0';
        make_folder(text_of("\\\\?\\%s", path));
        if (size + 1 < length) path[size++] = '\\';
    }
    return text_of("%s", path);
}

static void test_long_data_folders(void) {
    const char* folder = _strdup(long_folder("Long data", 240));
    copy_bolts(folder);
    load_engine(stage);
    system_folder(folder);
    check_number("data in a folder of 240 characters", 1, bolt_found());
    folder = _strdup(long_folder("Longer data", 249));
    load_engine(stage);
    system_folder(folder);
    check_number("a path of 262 characters is not cut", 0, bolt_found());
    /* The library's own folder no longer fits: the name of the file stays as it is. */
    folder = _strdup(text_of("\\\\?\\%s", long_folder("Longest library", 270)));
    copy_to(folder, "tarvane.dll", text_of("%s\\tarvane.dll", stage));
    write_moduli(folder, "11.11");
    SetCurrentDirectoryA(scratch);
    load_engine(folder);
    check_text("a library in a folder of 274 characters has no moduli", "0.00", modulus());
    SetCurrentDirectoryA(stage);
    unload_engine();
}

void test_data_files(void) {
    test_two_folders("plain", new_folder("plain library"), new_folder("plain data"));
    if (GetACP() == 1252) {
        test_two_folders("Western",
                         new_folder("Bibliothek f\xfcr Gr\xf6\xdf"
                                    "en"),
                         new_folder("Donn\xe9"
                                    "es \xc0\xd1\xc5"));
    } else {
        not_tested("folders with Western letters", "the system's letters are others");
    }
    test_shared_reading();
    test_given_folders();
    test_kept_folder();
    test_relative_library();
    test_line_ends();
    test_long_data_folders();
    test_default_data_folder();
}

/* ---- units ---- */

static void test_units(void) {
    const char* const path = text_of("%s\\all units.txt", scratch);
    int32_t unit, opened = 0;
    for (unit = 10; unit <= 1000; ++unit)
        opened += open_unit(unit, path) == 0;
    check_number("units 10 to 1000 opened", 991, opened);
    engine.GETNEXTUNIT(&unit);
    check_number("next unit when all are open", 1001, unit);
    check_number("unit 1001 does not open", 1, open_unit(1001, path));
    unit = 700;
    engine.CLOSEUNIT(&unit);
    engine.GETNEXTUNIT(&unit);
    check_number("next unit behind a closed one", 700, unit);
    for (unit = 10; unit <= 1000; ++unit)
        engine.CLOSEUNIT(&unit);
    check_text("all closed", "closed", use_of(path));
}

/* ---- report files ---- */

static void write_line(const char* text, int32_t mark) {
    const int32_t style[6] = {0, 0, 0, 0, 0, mark};
    engine.WRITE_TEXT(text, (int32_t)strlen(text), style);
}

static void close_unit(int32_t unit) { engine.CLOSEUNIT(&unit); }

static void test_records(void) {
    const char* const path = text_of("%s\\records.txt", scratch);
    const char* const expected =
        text_of(" %-100s\n %-100s 0 0 0 0 0 2\n", "A line", "A marked one");
    HANDLE reader;
    write_file(path, "what was there before is longer than one line of the report to come: "
                     "what was there before is longer than one line of the report to come");
    check_number("a report file opens", 0, open_unit(20, text_of("%s   ", path)));
    check_text("and is empty", "", content_of(path));
    report_to(20);
    write_line("A line", 0);
    engine.BEGIN_REPORT(); /* from here on marks are kept */
    report_to(20);
    write_line("A marked one", 2);
    reader = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, NULL,
                         OPEN_EXISTING, 0, NULL);
    check_number("another program reads it meanwhile", 1, reader != INVALID_HANDLE_VALUE);
    if (reader != INVALID_HANDLE_VALUE) CloseHandle(reader);
    check_text("records end in a line feed alone, and are there at once", expected,
               content_of(path));
    check_text("the file is open", "open", use_of(path));
    close_unit(20);
    check_text("the file is closed", "closed", use_of(path));
    check_text("and stays as it was", expected, content_of(path));
    close_unit(20);
    write_line("to a closed unit", 0);
    check_text("a line for a closed unit goes nowhere", expected, content_of(path));

    /* A viewer has it open, without the right that others delete it. */
    reader = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, NULL,
                         OPEN_EXISTING, 0, NULL);
    check_number("a report opens while a viewer shows the one before", 0, open_unit(20, path));
    CloseHandle(reader);
    close_unit(20);
}

/* What the unit says about a path, and what becomes of the file. */
static void test_path(const char* name, const char* path, long status, const char* state) {
    check_number(text_of("report to %s", name), status, open_unit(20, path));
    close_unit(20);
    check_text(text_of("file of %s", name), state, state_of(path));
    DeleteFileA(path);
}

/* For 260 characters and more the system decides. */
static void test_long_path(const char* name, const char* path) {
    const HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
    const int opens = file != INVALID_HANDLE_VALUE;
    if (opens) CloseHandle(file);
    DeleteFileA(path);
    test_path(text_of("%s, which the system %s", name, opens ? "takes" : "refuses"), path,
              opens ? 0 : 1, opens ? "file" : "absent");
}

static void test_paths(void) {
    const char* const folder = new_folder("Reports");
    const char* const guarded = text_of("%s\\guarded.txt", folder);
    char path[1500];
    size_t start;
    HANDLE file;

    SetCurrentDirectoryA(folder);
    test_path("a name in the working folder", "report.txt", 0, "file");
    test_path("a path upwards", "..\\Reports\\.\\report.txt", 0, "file");
    test_path("a path with blanks", text_of("%s\\my report of today.txt", folder), 0, "file");
    strcpy(path, text_of("%s/report.txt", folder));
    test_path("a path with both separators", path, 0, "file");
    if (GetACP() == 1252) {
        test_path("Western letters",
                  text_of("%s\\Pr\xfc"
                          "fbericht \xe9\xe0\xf1\xdf\x80.txt",
                          folder),
                  0, "file");
        /* The same name by its 16-bit letters. */
        check_number("a report in Western letters", 0,
                     open_unit(20, text_of("%s\\Pr\xfc"
                                           "fung.txt",
                                           folder)));
        close_unit(20);
        check_number("is there by its name", 1,
                     GetFileAttributesW(L"Pr\u00fcfung.txt") != INVALID_FILE_ATTRIBUTES);
    } else {
        not_tested("reports with Western letters", "the system's letters are others");
    }
    check_number("report to a folder", 1, open_unit(20, folder));
    check_number("report to a folder that is absent", 1, open_unit(20, "none\\report.txt"));
    check_number("report to an impossible name", 1, open_unit(20, "why?.txt"));
    check_number("report to no name", 1, open_unit(20, ""));
    check_number("report to blanks", 1, open_unit(20, "    "));
    write_file(guarded, "guarded");
    file = CreateFileA(guarded, GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
    check_number("report to a file that another program keeps to itself", 1,
                 open_unit(20, guarded));
    CloseHandle(file);
    check_text("which stays", "guarded", content_of(guarded));

    strcpy(path, long_folder("Long reports", 230));
    start = strlen(path);
    path[start] = '\\';
    memset(path + start + 1, 'r', 40);
    path[start + 41] = '\0';
    test_long_path("271 characters", path);
    test_long_path("271 characters, marked as long", text_of("\\\\?\\%s", path));
    path[259] = '\0';
    test_path("259 characters", path, 0, "file");

    /* Beyond what the engine keeps of a path, no part of it is taken for the whole. */
    strcpy(path, "short.txt");
    start = strlen(path);
    while (start < 1100) {
        memcpy(path + start, "\\..\\short.txt", 13);
        start += 13;
    }
    path[start] = '\0';
    check_number("report to 1101 characters", 1, open_unit(20, path));
    check_text("no file of its beginning", "absent", state_of("short.txt"));
    SetCurrentDirectoryA(stage);
}

/* ---- the work file ---- */

static void work_file(int32_t mode) {
    const int32_t clear = 1, unused = 0;
    engine.WORK_FILE(&mode, "vessel.dat", 10, &unused, &clear);
}

static long size_of(const char* path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path, GetFileExInfoStandard, &data)) return -1;
    return (long)data.nFileSizeLow;
}

static void TARVANE_CALL note_stop(void* stops, int32_t status) { *(long*)stops += status; }
static void TARVANE_CALL take_message(void* stops, const char* text, const char* title) {
    (void)stops;
    (void)text;
    (void)title;
}

/* Other programs of the suite read it, in whatever mode they share it. */
static void test_work_file(void) {
    static const DWORD shared[] = {FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE};
    enum { OPEN = 1, DELETED = 2, CLOSED = 3 };
    TARVANE_HOST_SERVICES services = {0};
    long stops = 0;
    size_t i;
    SetCurrentDirectoryA(new_folder("Work files"));
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.user = &stops;
    services.message_box = take_message;
    services.stop = note_stop;
    engine.SET_HOST_SERVICES(&services);
    work_file(OPEN);
    check_number("a new work file", 250 * 3072, size_of("vessel.Tvr"));
    work_file(CLOSED);
    check_text("closed, it stays", "closed", use_of("vessel.Tvr"));
    for (i = 0; i < 2; ++i) {
        const HANDLE reader =
            CreateFileA("vessel.Tvr", GENERIC_READ, shared[i], NULL, OPEN_EXISTING, 0, NULL);
        write_file("vessel.Tvr", "of an earlier run");
        work_file(OPEN);
        check_number(text_of("afresh beside a reader, %d", (int)i), 250 * 3072,
                     size_of("vessel.Tvr"));
        CloseHandle(reader);
        work_file(CLOSED);
    }
    work_file(OPEN);
    work_file(DELETED);
    check_text("deleted", "absent", state_of("vessel.Tvr"));
    check_number("no failure", 0, stops);
    engine.SET_HOST_SERVICES(NULL);
    SetCurrentDirectoryA(stage);
}

/* ---- the clock ---- */

static const char* told_time(void) {
    static const char months[][4] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    SYSTEMTIME now;
    GetLocalTime(&now);
    return text_of(now.wDay < 10 ? " %s %d,%d|%3d:%02d%s " : "%s %d,%d|%3d:%02d%s ",
                   months[now.wMonth - 1], now.wDay, now.wYear,
                   now.wHour > 12 ? now.wHour - 12 : now.wHour, now.wMinute,
                   now.wHour < 12 ? "am" : "pm");
}

static void test_clock(void) {
    const char *before, *after, *got;
    char date[11], time[9];
    before = told_time();
    engine.REPORT_DATE(date, sizeof date, time, sizeof time);
    after = told_time();
    got = text_of("%.11s|%.9s", date, time);
    check_text("date and time", strcmp(got, after) == 0 ? after : before, got);
}

void test_report_files(void) {
    load_engine(stage);
    test_records();
    test_paths();
    load_engine(stage);
    test_units();
    test_work_file();
    test_clock();
}
