// Arguments of an Appendix 1-4(f) run, for its tests: a thin torispherical head.
#pragma once

#include "shell/app_1_4f_head.h"
#include "shell_fixture.h"

namespace tarvane::shell_test {

struct Head {
    Int Element = TORISPHERICAL, Outside = 0;
    Real P = 40.0f, t = 0.25f, L = 120.0f, D = 120.0f, r = 7.2f, k = 2.0f, Temp = 300.0f;
    Real Et = 28.0e6f, Sy = 33000.0f, TempLimit = 700.0f, Tsolved = UNTOUCHED;
    Int Class = 0;
    Real c = 0.0f, u = 0.0f, Pfirst = UNTOUCHED;
    Int Mode = RATE_NEW, TminLabel = 0;
    Real Hydro = 0.0f, Ratio = UNTOUCHED, Tstart = 0.01f;

    Head& run() {
        APP_1_4F_ARGUMENTS a{Element, Outside, P,         t,         L,       D,     r, k,
                             Temp,    Et,      Sy,        TempLimit, Tsolved, Class, c, u,
                             Pfirst,  Mode,    TminLabel, Hydro,     Ratio,   Tstart};
        APP_1_4F_HEAD(a);
        return *this;
    }
};

} // namespace tarvane::shell_test
