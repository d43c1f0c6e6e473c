/*
** A host as the compiler and the linker of Microsoft make one: its own form of objects, import libraries (.lib), no
** runtime of C. Prints an exported variable and, with VESSEL, the version of the vessel library. Status 0, or the
** number of the step that failed.
*/
#include "tarvane/tarvane.h"
#ifdef VESSEL
#include "tarvane/vessel.h"
#endif

/* The compiler wants it of whoever brings no runtime. */
int _fltused = 0;

__declspec(dllimport) void __stdcall ExitProcess(unsigned status);
__declspec(dllimport) void* __stdcall GetStdHandle(unsigned which);
__declspec(dllimport) int __stdcall WriteFile(void* file, const void* text, unsigned length,
                                              unsigned* written, void* none);

static void say(const char* text) {
    unsigned length = 0, written;
    while (text[length] != '\0')
        ++length;
    WriteFile(GetStdHandle((unsigned)-11), text, length, &written, 0);
}

void start(void) {
    char found[] = "  ";
    unsigned status = 0;
#ifdef VESSEL
    TARVANE_VESSEL* vessel = 0;
    if (tarvane_open(TARVANE_VESSEL_ABI, 0, &vessel) != TARVANE_OK) status = 1;
    say(tarvane_version());
    say(" ");
    tarvane_close(vessel);
#endif
    RESET_ENGINE();
    if (GETFLANGERESULTS()->bytes != (int32_t)sizeof(TARVANE_FLANGE_RESULTS)) status = 2;
    GLOBALS_mp_G_NUSE_CASE2286 = 7;
    found[0] = (char)('0' + GLOBALS_mp_G_NUSE_CASE2286);
    say(found);
    ExitProcess(status);
}
