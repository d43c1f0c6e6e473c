/*
** Stands in for Help.exe and TvError.exe: writes its command line and what it sees of two files into a
** log beside itself, stays a second, and writes that it ends.
*/
#include "platform.h"

#include <stdlib.h>

static void add(const char* log, const char* line) {
    FILE* file = fopen(log, "ab");
    if (file == NULL) exit(3);
    fputs(line, file);
    fclose(file);
}

static const char* use_of_unit(const char* variable) {
    const char* const path = getenv(variable);
    return path == NULL ? "not told" : use_of(path);
}

int main(void) {
    char log[1200], line[4096];
    DWORD length = GetModuleFileNameA(NULL, log, 1000);
    if (length == 0 || length >= 1000) return 3;
    strcat(log, ".log");
    sprintf(line, "%.2000s\nunit 18 %s\nunit 99 %s\n", GetCommandLineA(),
            use_of_unit("TARVANE_UNIT_18"), use_of_unit("TARVANE_UNIT_99"));
    add(log, line);
    Sleep(1000);
    add(log, "end\n");
    return 0;
}
