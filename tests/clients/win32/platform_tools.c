/* The tools of platform.h. */
#include "platform.h"

#include <stdarg.h>
#include <stdlib.h>

/* ---- files ---- */

const char* text_of(const char* format, ...) {
    static char rooms[512][PATH_ROOM];
    static int next = 0;
    char* const room = rooms[next++ % 512];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(room, PATH_ROOM, format, arguments);
    va_end(arguments);
    return room;
}

/* The 16-bit letters of a path: in these the system knows paths of more than 260 characters. */
static const WCHAR* wide(const char* path) {
    static WCHAR rooms[2][PATH_ROOM];
    static int next = 0;
    WCHAR* const room = rooms[next++ % 2];
    MultiByteToWideChar(CP_ACP, 0, path, -1, room, PATH_ROOM);
    return room;
}

static void fail(const char* what, const char* path) {
    fprintf(stderr, "platform: can't %s %s (error %lu)\n", what, path, GetLastError());
    exit(3);
}

void make_folder(const char* path) {
    if (!CreateDirectoryW(wide(path), NULL) && GetLastError() != ERROR_ALREADY_EXISTS)
        fail("make", path);
}

const char* new_folder(const char* name) {
    char* const path = _strdup(text_of("%s\\%s", scratch, name));
    make_folder(path);
    return path;
}

void copy_to(const char* folder, const char* name, const char* from) {
    const char* const path = text_of("%s\\%s", folder, name);
    if (!CopyFileW(wide(from), wide(path), FALSE)) fail("write", path);
}

void write_file(const char* path, const char* content) {
    FILE* const file = _wfopen(wide(path), L"wb");
    if (file == NULL) fail("write", path);
    fputs(content, file);
    fclose(file);
}

const char* content_of(const char* path) {
    static char content[1 << 20];
    DWORD size = 0;
    const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, NULL,
                                    OPEN_EXISTING, 0, NULL);
    content[0] = '\0';
    if (file == INVALID_HANDLE_VALUE) return content;
    ReadFile(file, content, sizeof content - 1, &size, NULL);
    content[size] = '\0';
    CloseHandle(file);
    return content;
}

const char* state_of(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return "absent";
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "folder" : "file";
}

static void remove_wide_tree(const WCHAR* folder) {
    WIN32_FIND_DATAW entry;
    WCHAR path[PATH_ROOM];
    HANDLE search;
    _snwprintf(path, PATH_ROOM, L"%ls\\*", folder);
    search = FindFirstFileW(path, &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if (wcscmp(entry.cFileName, L".") == 0 || wcscmp(entry.cFileName, L"..") == 0) continue;
            _snwprintf(path, PATH_ROOM, L"%ls\\%ls", folder, entry.cFileName);
            SetFileAttributesW(path, FILE_ATTRIBUTE_NORMAL);
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
                remove_wide_tree(path);
            else
                DeleteFileW(path);
        } while (FindNextFileW(search, &entry));
        FindClose(search);
    }
    RemoveDirectoryW(folder);
}

void remove_tree(const char* folder) { remove_wide_tree(wide(text_of("\\\\?\\%s", folder))); }

void log_line(const char* format, ...) {
    const char* const path = getenv("TARVANE_HOST_LOG");
    FILE* const log = path == NULL ? NULL : fopen(path, "ab");
    va_list arguments;
    if (log == NULL) return;
    va_start(arguments, format);
    vfprintf(log, format, arguments);
    va_end(arguments);
    fputc('\n', log);
    fclose(log);
}

/* ---- the library ---- */

struct engine engine;

void unload_engine(void) {
    if (engine.library != NULL) FreeLibrary(engine.library);
    engine.library = NULL;
}

void load_engine(const char* folder) {
    const char* const path = text_of("%s\\tarvane.dll", folder);
    unload_engine();
    engine.library = LoadLibraryW(wide(path));
    if (engine.library == NULL) fail("load", path);
#define PLATFORM_ROUTINE(name)                                                                     \
    engine.name = (__typeof__(name)*)(void*)GetProcAddress(engine.library, #name);                 \
    if (engine.name == NULL) fail("find", #name);
    PLATFORM_ROUTINES(PLATFORM_ROUTINE)
#undef PLATFORM_ROUTINE
}

void report_to(int32_t unit) {
    const int32_t on = 1;
    engine.SET_IOUT(&unit);
    engine.SET_IWRITE(&on);
    engine.SET_IWRTFL(&on);
}

int32_t open_unit(int32_t unit, const char* path) {
    int32_t status = -1;
    engine.OPENUNIT(&unit, path, (int32_t)strlen(path), &status);
    return status;
}

/* The integral flange of a published example of Division 2, corroded dimensions. */
void run_flange(enum flange which) {
    static const struct {
        int element;
        float value;
    } given[] = {{TARVANE_TYPE, TARVANE_INTEGRAL_WELD_NECK},
                 {TARVANE_KIND, TARVANE_ANALYSE},
                 {TARVANE_P, 135.0f},
                 {TARVANE_T_DESIGN, 650.0f},
                 {TARVANE_Sfo, 17800.0f},
                 {TARVANE_Sfa, 20000.0f},
                 {TARVANE_t, 1.4375f},
                 {TARVANE_B, 26.25f},
                 {TARVANE_A, 32.875f},
                 {TARVANE_Fod, 30.5f},
                 {TARVANE_Fid, 26.25f},
                 {TARVANE_Go, 30.0f},
                 {TARVANE_Gi, 29.0f},
                 {TARVANE_go, 0.3125f},
                 {TARVANE_g1, 0.6875f},
                 {TARVANE_h, 2.125f},
                 {TARVANE_Sb, 25000.0f},
                 {TARVANE_Sa, 25000.0f},
                 {TARVANE_C, 31.25f},
                 {TARVANE_a, 0.75f},
                 {TARVANE_THREADS, TARVANE_TEMA_THREADS},
                 {TARVANE_BOLTS, 44.0f},
                 {TARVANE_m, 3.75f},
                 {TARVANE_y, 7600.0f},
                 {TARVANE_SKETCH, TARVANE_SKETCH_2},
                 {TARVANE_COLUMN, 2.0f},
                 {TARVANE_w, 0.125f},
                 {TARVANE_MATING_OPERATING, 300000.0f},
                 {TARVANE_MATING_SEATING, 300000.0f},
                 {TARVANE_MATING_DESIGN, 300000.0f},
                 {TARVANE_MATERIAL_CLASS, 1.0f},
                 {TARVANE_DENSITY, 0.2836f}};
    float record[TARVANE_RECORD_ELEMENTS] = {0};
    float map_nc, t_req_new_cold, t_req_new, mawp, t_req, e = 1.0f, operating = 135.0f;
    int32_t on = 1, off = 0, rigidity = 0, code = TARVANE_ASME_VIII_1;
    char text[TARVANE_TEXT_LENGTH];
    size_t i;
    int element;

    for (i = 0; i < sizeof given / sizeof *given; ++i)
        TARVANE_AT(record, given[i].element) = given[i].value;
    for (element = TARVANE_UNIT_THICKNESS; element <= TARVANE_UNIT_WEIGHT; ++element)
        TARVANE_AT(record, element) = 1.0f;
    TARVANE_AT(record, TARVANE_UNIT_TEMPERATURE_OFFSET) = 0.0f;
    TARVANE_AT(record, TARVANE_ELEMENT) = 1.0f;
    if (which == FLANGE_WITH_MESSAGES) TARVANE_AT(record, TARVANE_Sb) = 0.0f;
    if (which == RING_WITHIN_ITS_BORE) {
        TARVANE_AT(record, TARVANE_TYPE) = TARVANE_BLIND;
        TARVANE_AT(record, TARVANE_B) = 33.0f;
    }
    memset(text, ' ', sizeof text);
    memcpy(text + TARVANE_TEXT_MATERIAL, "SA-105", 6);
    memcpy(text + TARVANE_TEXT_BOLT_MATERIAL, "SA-193 B7", 9);
    memcpy(text + TARVANE_TEXT_DESCRIPTION, "Sample", 6);
    memcpy(text + TARVANE_TEXT_MATING_LOADS, which == RATED_IN_STEPS ? "Y" : "N", 1);
    memcpy(text + TARVANE_TEXT_CHART, "CS-2", 4);
    engine.FLANGE_CALC(record, text, (int32_t)sizeof text, &on, &on, &map_nc, &t_req_new_cold,
                       &t_req_new, &mawp, &t_req, &off, &rigidity, &code, &on, &on, &e, &off, &off,
                       &operating, &off, &off);
}

/* ---- programs ---- */

long run_program(const char* file, const char* arguments) {
    STARTUPINFOA startup = {0};
    PROCESS_INFORMATION process;
    DWORD status = 0;
    char command[2 * PATH_ROOM];
    snprintf(command, sizeof command, "\"%s\" %s", file, arguments);
    startup.cb = sizeof startup;
    if (!CreateProcessA(file, command, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &process))
        return -1;
    if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0) {
        GetExitCodeProcess(process.hProcess, &status);
    } else {
        TerminateProcess(process.hProcess, 1);
        status = (DWORD)-2;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return (long)status;
}

/* ---- message boxes ---- */

static HANDLE answering = NULL;
static volatile LONG end_answering;

static BOOL CALLBACK look_at_part(HWND part, LPARAM into) {
    struct boxes* const boxes = (struct boxes*)into;
    char kind[32];
    GetClassNameA(part, kind, sizeof kind);
    if (_stricmp(kind, "Static") != 0) return TRUE;
    if ((GetWindowLongA(part, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
        const HICON icon = (HICON)SendMessageA(part, STM_GETICON, 0, 0);
        boxes->information_icon = icon != NULL && icon == LoadIconA(NULL, (LPCSTR)IDI_INFORMATION);
    } else {
        GetWindowTextA(part, boxes->text, sizeof boxes->text);
    }
    return TRUE;
}

/* A message box is a dialog with OK as its only button. */
static BOOL CALLBACK look_at_window(HWND window, LPARAM into) {
    struct boxes* const boxes = (struct boxes*)into;
    DWORD process = 0;
    char kind[32];
    GetWindowThreadProcessId(window, &process);
    GetClassNameA(window, kind, sizeof kind);
    if (process != GetCurrentProcessId() || strcmp(kind, "#32770") != 0) return TRUE;
    if (!IsWindowVisible(window)) return TRUE; /* not yet filled */
    if (GetDlgItem(window, IDOK) == NULL && GetDlgItem(window, IDCANCEL) == NULL) return TRUE;
    ++boxes->count;
    boxes->text[0] = '\0';
    boxes->information_icon = 0;
    boxes->owner = GetWindow(window, GW_OWNER);
    GetWindowTextA(window, boxes->title, sizeof boxes->title);
    EnumChildWindows(window, look_at_part, into);
    log_line("box: %s: %s", boxes->title, boxes->text);
    SendMessageA(window, WM_COMMAND, IDOK, 0);
    while (IsWindow(window))
        Sleep(10);
    return FALSE; /* the list of windows is no longer what it was */
}

static DWORD WINAPI answer(void* boxes) {
    while (!end_answering) {
        EnumWindows(look_at_window, (LPARAM)boxes);
        Sleep(20);
    }
    return 0;
}

void answer_boxes(struct boxes* boxes) {
    memset(boxes, 0, sizeof *boxes);
    end_answering = 0;
    answering = CreateThread(NULL, 0, answer, boxes, 0, NULL);
}

void stop_answering(void) {
    InterlockedExchange(&end_answering, 1);
    WaitForSingleObject(answering, INFINITE);
    CloseHandle(answering);
}

/* ---- settings ---- */

void set_value(const char* key, const char* name, DWORD type, const void* data, DWORD size) {
    HKEY open;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, key, 0, NULL, 0, KEY_ALL_ACCESS, NULL, &open, NULL) != 0)
        fail("make", key);
    if (RegSetValueExA(open, name, 0, type, data, size) != 0) fail("set", name);
    RegCloseKey(open);
}

void set_string(const char* key, const char* name, const char* text) {
    set_value(key, name, REG_SZ, text, (DWORD)strlen(text) + 1);
}

void remove_value(const char* key, const char* name) {
    HKEY open;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_ALL_ACCESS, &open) != 0) return;
    RegDeleteValueA(open, name);
    RegCloseKey(open);
}

int key_exists(const char* key) {
    HKEY open;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_READ, &open) != 0) return 0;
    RegCloseKey(open);
    return 1;
}

const char* system_path(int32_t selector, const char* product, const char* version) {
    static char path[261];
    int end = 260;
    memset(path, 'x', sizeof path);
    engine.GET_SYSTEM_PATH(&selector, product, (int32_t)strlen(product), version,
                           (int32_t)strlen(version), path, 260);
    if (path[260] != 'x') return "written behind its end";
    while (end > 0 && path[end - 1] == ' ')
        --end;
    path[end] = '\0';
    return path;
}
