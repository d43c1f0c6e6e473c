/*
** Compares what the library asks of Windows with what it should: settings in the registry, folders,
** help, files, message boxes, and the way in which a calculation that can't go on ends its host.
**   platform     from a folder with tarvane.dll, stand_in.exe and the data files beside it
** Status 0 when every check holds. The settings and the data folder of the engine itself are written:
** where a user has some, nothing is run.
*/
#include "platform.h"

#include <shlobj.h>
#include <stdlib.h>

#define PRODUCT "Platform Test"
#define VERSION "0001"
#define PRODUCT_SETTINGS SUITE_KEY "\\" PRODUCT "\\" VERSION "\\Settings"

char program[PATH_ROOM];
const char* scratch;
const char* stage;

/* ---- checks ---- */

static int checks = 0, failed = 0, left_out = 0;

void check_text(const char* name, const char* expected, const char* got) {
    ++checks;
    if (strcmp(expected, got) == 0) {
        printf("ok    %s: \"%s\"\n", name, got);
    } else {
        ++failed;
        printf("FAIL  %s: expected \"%s\", got \"%s\"\n", name, expected, got);
    }
    fflush(stdout);
}

void check_number(const char* name, long expected, long got) {
    check_text(name, text_of("%ld", expected), text_of("%ld", got));
}

void not_tested(const char* name, const char* reason) {
    ++left_out;
    printf("-     %s: not tested: %s\n", name, reason);
}

/* ---- settings ---- */

static const char* filled(const char* start, char c, size_t length) {
    char* const text = (char*)text_of("%s", start);
    size_t i = strlen(text);
    for (; i < length; ++i)
        text[i] = c;
    text[i] = '\0';
    return text;
}

void test_settings(void) {
    const DWORD number = 1041;
    const char* default_folder;
    int32_t selector;

    load_engine(stage);
    check_number("loading makes no key", 0, key_exists(SUITE_KEY));
    engine.HELP_LANGUAGE();
    check_number("the first lookup makes the engine's key", 1, key_exists(SETTINGS_KEY));
    check_number("and no other", 0, key_exists(SUITE_KEY "\\" PRODUCT));
    default_folder = text_of("%s", system_path(270, PRODUCT, VERSION));
    check_number("a lookup makes the key of its product", 1, key_exists(PRODUCT_SETTINGS));
    check_text("again, with the key there", default_folder, system_path(270, PRODUCT, VERSION));

    set_string(PRODUCT_SETTINGS, "Alternate System Path", "D:\\My data");
    for (selector = 268; selector <= 271; ++selector)
        check_text(text_of("chosen folder, selector %d", (int)selector), "D:\\My data\\",
                   system_path(selector, PRODUCT, VERSION));
    check_text("chosen folder, selector 267", "", system_path(267, PRODUCT, VERSION));
    check_text("chosen folder, selector 272", "", system_path(272, PRODUCT, VERSION));
    check_text("keys behind blanks", "D:\\My data\\", system_path(270, PRODUCT "   ", VERSION " "));
    set_string(PRODUCT_SETTINGS, "Alternate System Path", "D:\\My data\\");
    check_text("a backslash behind one that is there", "D:\\My data\\\\",
               system_path(270, PRODUCT, VERSION));
    set_string(PRODUCT_SETTINGS, "Alternate System Path",
               "D:\\Gr\xf6\xdf"
               "e \xe9t\xe9");
    check_text("Western letters",
               "D:\\Gr\xf6\xdf"
               "e \xe9t\xe9\\",
               system_path(270, PRODUCT, VERSION));
    set_value(PRODUCT_SETTINGS, "Alternate System Path", REG_SZ, "D:\\Data", 7);
    check_text("a string without its end", "D:\\Data\\", system_path(270, PRODUCT, VERSION));

    set_string(PRODUCT_SETTINGS, "Alternate System Path", filled("D:\\", 'd', 259));
    check_text("259 characters", text_of("%s\\", filled("D:\\", 'd', 259)),
               system_path(270, PRODUCT, VERSION));
    set_string(PRODUCT_SETTINGS, "Alternate System Path", filled("D:\\", 'd', 260));
    check_text("260 characters leave no room for the backslash", "",
               system_path(270, PRODUCT, VERSION));
    set_value(PRODUCT_SETTINGS, "Alternate System Path", REG_SZ, filled("D:\\", 'd', 260), 260);
    check_text("260 characters without an end", "", system_path(270, PRODUCT, VERSION));
    set_string(PRODUCT_SETTINGS, "Alternate System Path", filled("D:\\", 'd', 261));
    check_text("261 characters do not count", default_folder, system_path(270, PRODUCT, VERSION));
    set_value(PRODUCT_SETTINGS, "Alternate System Path", REG_SZ, filled("D:\\", 'd', 261), 261);
    check_text("261 characters without an end", default_folder, system_path(270, PRODUCT, VERSION));
    set_string(PRODUCT_SETTINGS, "Alternate System Path", filled("D:\\", 'd', 1000));
    check_text("1000 characters do not count", default_folder, system_path(270, PRODUCT, VERSION));
    set_string(PRODUCT_SETTINGS, "Alternate System Path", "");
    check_text("an empty choice", default_folder, system_path(270, PRODUCT, VERSION));
    set_value(PRODUCT_SETTINGS, "Alternate System Path", REG_DWORD, &number, sizeof number);
    check_text("a number in place of the folder", default_folder,
               system_path(270, PRODUCT, VERSION));
    remove_value(PRODUCT_SETTINGS, "Alternate System Path");
    check_text("no choice", default_folder, system_path(270, PRODUCT, VERSION));
}

/* ---- default folders ---- */

static const char* known_folder(int number) {
    char path[MAX_PATH] = "";
    SHGetFolderPathA(NULL, number, NULL, SHGFP_TYPE_CURRENT, path);
    return text_of("%s", path);
}

static int under_wine(void) {
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != NULL;
}

/* The user's application data in a folder that is not there. */
static void test_lost_folder(void) {
    static const char key[] =
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    char kept[600] = "";
    DWORD size = sizeof kept - 1, type = 0;
    HKEY open;
    if (!under_wine()) {
        not_tested("a known folder that can't be had", "it would move the user's own folder");
        return;
    }
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_ALL_ACCESS, &open) != 0) return;
    RegQueryValueExA(open, "AppData", NULL, &type, (BYTE*)kept, &size);
    RegSetValueExA(open, "AppData", 0, REG_SZ, (const BYTE*)"Q:\\none", 8);
    check_text("a known folder that can't be had", "", system_path(268, PRODUCT, VERSION));
    if (type != 0)
        RegSetValueExA(open, "AppData", 0, type, (const BYTE*)kept, size);
    else
        RegDeleteValueA(open, "AppData");
    RegCloseKey(open);
}

void test_default_folders(void) {
    static const struct {
        int32_t selector;
        int folder;
    } kinds[] = {{268, 26}, {269, 35}, {270, 46}, {271, 46}};
    size_t i;
    load_engine(stage);
    for (i = 0; i < sizeof kinds / sizeof *kinds; ++i) {
        const char* const known = known_folder(kinds[i].folder);
        const char* const maker = text_of("%s\\Kessendale Lab", known);
        const char* const product = text_of("%s\\" PRODUCT, maker);
        const char* const version = text_of("%s\\" VERSION, product);
        const char* const last = text_of("%s\\System", version);
        const char* const expected = text_of("%s\\", last);
        const int selector = (int)kinds[i].selector;
        remove_tree(product);
        check_text(text_of("selector %d, no folder yet", selector), "absent", state_of(product));
        check_text(text_of("selector %d, default folder", selector), expected,
                   system_path(kinds[i].selector, PRODUCT, VERSION));
        check_text(text_of("selector %d, maker", selector), "folder", state_of(maker));
        check_text(text_of("selector %d, product", selector), "folder", state_of(product));
        check_text(text_of("selector %d, version", selector), "folder", state_of(version));
        check_text(text_of("selector %d, last level", selector), "folder", state_of(last));
        check_text(text_of("selector %d, folders there", selector), expected,
                   system_path(kinds[i].selector, PRODUCT, VERSION));
        remove_tree(version);
        write_file(version, "in the way");
        check_text(text_of("selector %d, a file in the way", selector), "",
                   system_path(kinds[i].selector, PRODUCT, VERSION));
        remove_tree(product);
        check_text(text_of("selector %d, a key that is too long", selector), "",
                   system_path(kinds[i].selector, PRODUCT, filled("", 'v', 230)));
        RegDeleteTreeA(HKEY_CURRENT_USER, SUITE_KEY "\\" PRODUCT);
        remove_tree(product);
        RemoveDirectoryA(maker); /* unless others are in it */
    }
    for (i = 0; i < 2; ++i)
        check_text("another selector", "", system_path(i == 0 ? 0 : -1, PRODUCT, VERSION));
    test_lost_folder();
}

/* ---- help ---- */

static const char* help_folder(int32_t kind) {
    static char folder[41];
    int end = 40;
    engine.HELP_FOLDER(&kind, folder, 40);
    while (end > 0 && folder[end - 1] == ' ')
        --end;
    folder[end] = '\0';
    return folder;
}

static void test_help_language(void) {
    static const struct {
        const char* text;
        long language;
        const char* folder;
    } cases[] = {
        {"1033", 1033, "1033"},     {"1041", 1041, "1041"},   {"2052", 2052, "2052"},
        {"1031", 1031, "1033"},     {"English", 0, "1033"},   {"", 1033, "1033"},
        {"  1041  ", 1041, "1041"}, {"1041.9", 1041, "1041"},
    };
    const DWORD number = 1041;
    size_t i;
    check_number("help language, no setting", 1033, engine.HELP_LANGUAGE());
    for (i = 0; i < sizeof cases / sizeof *cases; ++i) {
        set_string(SETTINGS_KEY, "HelpLanguage", cases[i].text);
        check_number(text_of("help language \"%s\"", cases[i].text), cases[i].language,
                     engine.HELP_LANGUAGE());
        check_text(text_of("help folder of \"%s\"", cases[i].text),
                   text_of("Acrobat\\%s\\", cases[i].folder), help_folder(101));
        check_text("help folder of another kind", "Help\\", help_folder(i % 2 == 0 ? 100 : 0));
    }
    set_value(SETTINGS_KEY, "HelpLanguage", REG_SZ, "1041", 4);
    check_number("help language, a string without its end", 1041, engine.HELP_LANGUAGE());
    set_value(SETTINGS_KEY, "HelpLanguage", REG_DWORD, &number, sizeof number);
    check_number("help language, a number in place of the text", 1033, engine.HELP_LANGUAGE());
    set_string(SETTINGS_KEY, "HelpLanguage", filled("1041", ' ', 400));
    check_number("help language, a text that is too long", 1033, engine.HELP_LANGUAGE());
    remove_value(SETTINGS_KEY, "HelpLanguage");
}

/* The first line of the stand-in's log, once it has ended. */
static const char* first_line(const char* log) {
    static char line[2 * PATH_ROOM];
    int tries;
    for (tries = 0; tries < 300 && strstr(content_of(log), "\nend\n") == NULL; ++tries)
        Sleep(100);
    strncpy(line, content_of(log), sizeof line - 1);
    line[strcspn(line, "\n")] = '\0';
    return line;
}

static void test_help_program(void) {
    static const struct {
        const char* setting;
        int32_t topic;
        const char* arguments;
    } cases[] = {
        {NULL, 0, "/content \"TV\\1033\""},
        {NULL, 1234, "/content \"TV\\1033\" /topic 1234"},
        {"1041", 0, "/content \"TV\\1041\""},
        {"2052", -7, "/content \"TV\\2052\" /topic -7"},
        {"nonsense", 1, "/content \"TV\\1033\" /topic 1"},
    };
    const char* const library = new_folder("Help programs");
    const char* const log = text_of("%s\\Help.exe.log", library);
    const int32_t topic = 5;
    struct boxes boxes;
    size_t i;

    copy_to(library, "tarvane.dll", text_of("%s\\tarvane.dll", stage));
    load_engine(library);
    answer_boxes(&boxes);
    engine.LAUNCH_HELP(&topic);
    Sleep(300);
    stop_answering();
    check_number("no help program, no message", 0, boxes.count);

    copy_to(library, "Help.exe", text_of("%s\\stand_in.exe", stage));
    /* In a command line without quotation marks the first word could be a program. */
    copy_to(scratch, "Help.exe", text_of("%s\\stand_in.exe", stage));
    for (i = 0; i < sizeof cases / sizeof *cases; ++i) {
        const char* const name = text_of("help topic %d, language %s", (int)cases[i].topic,
                                         cases[i].setting == NULL ? "absent" : cases[i].setting);
        DeleteFileA(log);
        if (cases[i].setting != NULL) set_string(SETTINGS_KEY, "HelpLanguage", cases[i].setting);
        engine.LAUNCH_HELP(&cases[i].topic);
        check_text(text_of("%s, not waited for", name), "",
                   strstr(content_of(log), "\nend\n") == NULL ? "" : "waited");
        check_text(name, text_of("%s\\Help.exe %s", library, cases[i].arguments), first_line(log));
    }
    check_text("no program of the first word", "absent",
               state_of(text_of("%s\\Help.exe.log", scratch)));
    remove_value(SETTINGS_KEY, "HelpLanguage");
}

void test_help(void) {
    load_engine(stage);
    test_help_language();
    test_help_program();
}

/* ---- main host ---- */

void test_main_host(void) {
    static const struct {
        const char* name;
        long answer;
    } cases[] = {{"tvn.exe", 1},    {"My tvn.exe", 1}, {"tvn.exe.exe", 1},
                 {"viewer.exe", 0}, {"tvn2.exe", 0},   {"TVN.EXE", 0}};
    const char* const folder = new_folder("tvn.exe of a user");
    size_t i;
    for (i = 0; i < sizeof cases / sizeof *cases; ++i) {
        /* The name within its folder keeps its own letters. */
        const char* const path = text_of("%s\\%s", folder, cases[i].name);
        DeleteFileA(path);
        copy_to(folder, cases[i].name, program);
        check_number(text_of("main host by the name %s", cases[i].name), cases[i].answer,
                     run_program(path, text_of("is_main_host \"%s\"", stage)));
        DeleteFileA(path);
    }
}

/* ---- all ---- */

static int run_all(void) {
    const char* const data = text_of("%s\\Kessendale Lab", known_folder(46));
    char temporary[300];
    if (key_exists(SUITE_KEY) || strcmp(state_of(data), "absent") != 0) {
        fprintf(stderr, "platform: not run: there are settings or data of a user\n");
        return 2;
    }
    GetTempPathA(sizeof temporary, temporary);
    scratch = _strdup(text_of("%stest of platform %lu", temporary, GetCurrentProcessId()));
    remove_tree(scratch);
    CreateDirectoryA(scratch, NULL);

    test_settings();
    test_default_folders();
    test_main_host();
    test_data_files();
    test_report_files();
    test_message_boxes();
    test_help();
    test_fatal_stop();

    unload_engine();
    remove_tree(scratch);
    remove_tree(data);
    RegDeleteTreeA(HKEY_CURRENT_USER, SUITE_KEY);
    printf("platform: %d checks, %d failed, %d not tested\n", checks, failed, left_out);
    return failed == 0 ? 0 : 1;
}

int main(int argc, char** argv) {
    const DWORD length = GetModuleFileNameA(NULL, program, sizeof program);
    char* folder;
    if (length == 0 || length >= sizeof program) return 3;
    folder = _strdup(program);
    *strrchr(folder, '\\') = '\0';
    stage = folder;
    if (argc == 3 && strcmp(argv[1], "is_main_host") == 0) {
        load_engine(argv[2]);
        return engine.IS_MAIN_HOST();
    }
    if (argc == 4 && strcmp(argv[1], "fatal") == 0) return fatal_host(argv[2], argv[3]);
    return argc == 1 ? run_all() : 2;
}
