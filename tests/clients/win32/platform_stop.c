/* Message boxes, the host's dialog, and the end of a run that can't go on. */
#include "platform.h"

#include <stdlib.h>

/* ---- message boxes ---- */

static void TARVANE_CALL keep_message(void* user, const char* text, const char* title) {
    struct boxes* const boxes = user;
    ++boxes->count;
    strncpy(boxes->text, text, sizeof boxes->text - 1);
    strncpy(boxes->title, title, sizeof boxes->title - 1);
}

void test_message_boxes(void) {
    const int32_t on = 1, off = 0;
    TARVANE_HOST_SERVICES services = {0};
    struct boxes told = {0}, boxes, silent;
    HWND owner;
    load_engine(stage);
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.message_box = keep_message;
    services.user = &told;

    answer_boxes(&boxes);
    engine.SET_HOST_SERVICES(&services);
    run_flange(FLANGE_WITH_MESSAGES);
    stop_answering();
    check_number("the host's service gets messages", 1, told.count > 0);
    check_number("and no box appears", 0, boxes.count);

    engine.SET_HOST_SERVICES(NULL);
    answer_boxes(&boxes);
    run_flange(FLANGE_WITH_MESSAGES);
    stop_answering();
    check_number("message boxes without a service", told.count, boxes.count);
    check_text("title of a message box", "Flange Error Message", boxes.title);
    check_text("text of a message box", told.text, boxes.text);
    check_number("it has the information icon", 1, boxes.information_icon);
    check_number("it has no owner", 1, boxes.owner == NULL);

    owner = CreateWindowA("STATIC", "host", WS_OVERLAPPED, 0, 0, 100, 100, NULL, NULL, NULL, NULL);
    engine.SET_HOST_WINDOW((void* const*)&owner);
    answer_boxes(&boxes);
    run_flange(FLANGE_WITH_MESSAGES);
    stop_answering();
    check_number("the host's window owns the boxes", 1, owner != NULL && boxes.owner == owner);
    DestroyWindow(owner);
    owner = NULL;
    engine.SET_HOST_WINDOW((void* const*)&owner);

    engine.SET_NO_DIALOG(&on);
    answer_boxes(&silent);
    run_flange(FLANGE_WITH_MESSAGES);
    Sleep(200);
    stop_answering();
    check_number("no dialogs: no message box", 0, silent.count);
    engine.SET_NO_DIALOG(&off);
}

/* ---- a dialog of the host's ---- */

enum { PROGRESS_LINE = 1002, ENDED_BY_TEST = 55 };

static char progress[256];
static int calls_came_back;

static void TARVANE_CALL come_back(void* user, int32_t status) {
    (void)user;
    (void)status;
}
static void TARVANE_CALL take_code(void* user, int32_t code) {
    (void)user;
    (void)code;
}

/* Rates a flange, then one that is beyond rating: the engine ends the dialog, or this does. */
static INT_PTR CALLBACK dialog_procedure(HWND window, UINT message, WPARAM word, LPARAM data) {
    (void)word;
    (void)data;
    if (message == WM_INITDIALOG) {
        PostMessageA(window, WM_APP, 0, 0);
        return TRUE;
    }
    if (message == WM_APP) {
        engine.SET_HOST_WINDOW((void* const*)&window);
        run_flange(RATED_IN_STEPS);
        GetDlgItemTextA(window, PROGRESS_LINE, progress, sizeof progress);
        PostMessageA(window, WM_APP + 1, 0, 0);
        run_flange(RING_WITHIN_ITS_BORE);
        ++calls_came_back;
        return TRUE;
    }
    if (message == WM_APP + 1) EndDialog(window, ENDED_BY_TEST);
    return FALSE;
}

static void test_dialog(void) {
    /* A dialog with one line of text, in the form of a resource. */
    static const struct {
        DLGTEMPLATE dialog;
        WORD menu, kind, title;
        DLGITEMTEMPLATE line;
        WORD line_kind[2], text, data;
    } __attribute__((aligned(4))) template = {
        .dialog = {.style = WS_POPUP | WS_CAPTION, .cdit = 1, .cx = 200, .cy = 50},
        .line = {.style = WS_CHILD | WS_VISIBLE, .cx = 190, .cy = 20, .id = PROGRESS_LINE},
        .line_kind = {0xffff, 0x0082},
    };
    TARVANE_HOST_SERVICES services = {0};
    const int32_t on = 1, off = 0;
    HWND none = NULL;
    long result;
    load_engine(stage);
    services.version = TARVANE_HOST_SERVICES_VERSION;
    services.report_fatal = take_code;
    services.stop = come_back;
    engine.SET_HOST_SERVICES(&services);
    engine.SET_NO_DIALOG(&on); /* message boxes only: the dialog is the host's */
    result = (long)DialogBoxIndirectParamA(NULL, &template.dialog, NULL, dialog_procedure, 0);
    check_number("the fatal stop ends the host's dialog", 0, result);
    check_number("and a stop service that comes back leaves the host running", 1, calls_came_back);
    progress[9] = '\0';
    check_text("progress on control 1002", "Flg Desc:", progress);
    engine.SET_HOST_WINDOW((void* const*)&none);
    engine.SET_NO_DIALOG(&off);
    engine.SET_HOST_SERVICES(NULL);
}

/* ---- the fatal stop ---- */

enum { SCRATCH_UNIT = 18, MESSAGE_UNIT = 99, REPORT_UNIT = 20, CAME_BACK = 7 };

static const char* unit_file(int unit) { return text_of("%s\\unit %d.txt", scratch, unit); }
static const char* host_log(void) { return text_of("%s\\host.log", scratch); }

/* Units 18, 99 and 20 open, a line in each. */
static void open_units(void) {
    static const int32_t units[] = {SCRATCH_UNIT, MESSAGE_UNIT, REPORT_UNIT}, plain[6] = {0};
    size_t i;
    for (i = 0; i < 3; ++i) {
        if (open_unit(units[i], getenv(text_of("TARVANE_UNIT_%d", (int)units[i]))) != 0) exit(3);
        report_to(units[i]);
        engine.WRITE_TEXT("A line", 6, plain);
    }
}

static void log_units(const char* event, int number) {
    log_line("%s %d, unit 18 %s, unit 99 %s", event, number, use_of(getenv("TARVANE_UNIT_18")),
             use_of(getenv("TARVANE_UNIT_99")));
}

static void TARVANE_CALL log_message(void* user, const char* text, const char* title) {
    (void)user;
    log_line("service: %s: %s", title, text);
}
static void TARVANE_CALL log_report(void* user, int32_t code) {
    (void)user;
    log_units("report", (int)code);
}
static void TARVANE_CALL log_end_dialog(void* user) {
    (void)user;
    log_units("end dialog", 0);
}
static void TARVANE_CALL log_stop(void* user, int32_t status) {
    (void)user;
    log_units("stop", (int)status);
}

/*
** A host that the fatal stop ends. Options: - none; n no dialogs; and services: m messages, r report,
** s stop (which returns).
*/
int fatal_host(const char* library, const char* options) {
    static struct boxes boxes;
    const int32_t on = 1;
    TARVANE_HOST_SERVICES services = {0};
    load_engine(library);
    services.version = TARVANE_HOST_SERVICES_VERSION;
    if (strchr(options, 'm') != NULL) services.message_box = log_message;
    if (strchr(options, 'r') != NULL) services.report_fatal = log_report;
    if (strchr(options, 's') != NULL) {
        services.end_dialog = log_end_dialog;
        services.stop = log_stop;
    }
    engine.SET_HOST_SERVICES(strcmp(options, "-") == 0 ? NULL : &services);
    if (strchr(options, 'n') != NULL) engine.SET_NO_DIALOG(&on);
    open_units();
    answer_boxes(&boxes);
    run_flange(RING_WITHIN_ITS_BORE);
    log_line("came back");
    return CAME_BACK;
}

/* Runs the host; its exit status. */
static long run_host(const char* library, const char* options) {
    static const int units[] = {SCRATCH_UNIT, MESSAGE_UNIT, REPORT_UNIT};
    size_t i;
    for (i = 0; i < 3; ++i) {
        DeleteFileA(unit_file(units[i]));
        _putenv(text_of("TARVANE_UNIT_%d=%s", units[i], unit_file(units[i])));
    }
    DeleteFileA(host_log());
    _putenv(text_of("TARVANE_HOST_LOG=%s", host_log()));
    return run_program(program, text_of("fatal \"%s\" %s", library, options));
}

static void check_files(const char* name) {
    check_text(text_of("%s: unit 18 is deleted", name), "absent",
               state_of(unit_file(SCRATCH_UNIT)));
    check_text(text_of("%s: unit 99 stays, closed", name), "closed",
               use_of(unit_file(MESSAGE_UNIT)));
    check_text(text_of("%s: what was reported stays", name), text_of(" %-100s\n", "A line"),
               text_of("%.102s", content_of(unit_file(REPORT_UNIT))));
}

/* Line `number` of a text, from 0. */
static const char* line_of(const char* text, int number) {
    for (; number > 0 && text != NULL; --number) {
        text = strchr(text, '\n');
        if (text != NULL) ++text;
    }
    return text == NULL ? "" : text_of("%.*s", (int)strcspn(text, "\n"), text);
}

/* The error program in the library's folder, which has blanks in its name. */
static void test_error_program(const char* library) {
    const char* const log = text_of("%s\\TvError.exe.log", library);
    const DWORD start = GetTickCount();
    long status;
    copy_to(library, "TvError.exe", text_of("%s\\stand_in.exe", stage));
    status = run_host(library, "-");
    check_number("fatal stop: it waits for the error program", 1, GetTickCount() - start >= 1000);
    check_number("fatal stop: status of the host", 1, status);
    check_text("fatal stop: command line", text_of("%s\\TvError.exe 25 2", library),
               line_of(content_of(log), 0));
    check_text("fatal stop: scratch file meanwhile", "unit 18 open", line_of(content_of(log), 1));
    check_text("fatal stop: messages meanwhile", "unit 99 closed", line_of(content_of(log), 2));
    check_text("fatal stop: the error program ended first", "end", line_of(content_of(log), 3));
    check_text("fatal stop: no message box, no way back", "", content_of(host_log()));
    check_files("fatal stop");
    DeleteFileA(log);

    status = run_host(library, "rs");
    check_number("fatal stop with services: the host goes on", CAME_BACK, status);
    check_text("fatal stop with services: the order of things",
               "report 25, unit 18 open, unit 99 closed\n"
               "end dialog 0, unit 18 absent, unit 99 closed\n"
               "stop 1, unit 18 absent, unit 99 closed\n"
               "came back\n",
               content_of(host_log()));
    check_text("fatal stop with services: no error program", "absent", state_of(log));
    check_files("fatal stop with services");

    status = run_host(library, "r");
    check_number("fatal stop with a report service alone: status", 1, status);
    check_text("fatal stop with a report service alone: the report",
               "report 25, unit 18 open, unit 99 closed\n", content_of(host_log()));
    check_files("fatal stop with a report service alone");
    DeleteFileA(text_of("%s\\TvError.exe", library));
}

/* The text of the system for a file that is not there, its line ends as they come. */
static const char* not_found(void) {
    char text[512];
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, NULL,
                   ERROR_FILE_NOT_FOUND, 0, text, sizeof text, NULL);
    return text_of("%s", text);
}

static void test_without_error_program(const char* library) {
    long status = run_host(library, "-");
    check_number("no error program: status of the host", 1, status);
    check_text("no error program: the box", text_of("box: GetLastError: %s\n", not_found()),
               content_of(host_log()));
    check_files("no error program");

    status = run_host(library, "n");
    check_number("no error program, no dialogs: status of the host", 1, status);
    check_text("no error program, no dialogs: no box", "", content_of(host_log()));
    check_files("no error program, no dialogs");

    status = run_host(library, "m");
    check_number("no error program, a service for messages: status of the host", 1, status);
    check_number("no error program, a service for messages: it alone is told", 0,
                 strstr(content_of(host_log()), "box: ") != NULL);
    check_number("no error program, a service for messages: its text", 1,
                 strstr(content_of(host_log()),
                        text_of("service: GetLastError: %s\n", not_found())) != NULL);
}

/* In a command line without quotation marks the first word could be a program. */
static void test_first_word(void) {
    const char* const library = new_folder("Word lib");
    copy_to(library, "tarvane.dll", text_of("%s\\tarvane.dll", stage));
    copy_to(library, "TvError.exe", text_of("%s\\stand_in.exe", stage));
    copy_to(scratch, "Word.exe", text_of("%s\\stand_in.exe", stage));
    check_number("a program of the first word: status of the host", 1, run_host(library, "-"));
    check_text("a program of the first word is not started", "absent",
               state_of(text_of("%s\\Word.exe.log", scratch)));
    check_text("but the one beside the library", text_of("%s\\TvError.exe 25 2", library),
               line_of(content_of(text_of("%s\\TvError.exe.log", library)), 0));
}

void test_fatal_stop(void) {
    const char* const library = new_folder("Library of hosts");
    copy_to(library, "tarvane.dll", text_of("%s\\tarvane.dll", stage));
    unload_engine();
    test_error_program(library);
    test_without_error_program(library);
    test_first_word();
    test_dialog();
}
