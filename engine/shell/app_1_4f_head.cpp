#include "shell/app_1_4f_head.h"

#include "report/channel.h"

#include <cmath>

namespace tarvane {

namespace {

constexpr Int LAST_TRIAL = 1000;

bool prints(Int Mode) { return Mode >= SOLVE_THICKNESS_REPORT && Mode <= RATE_NEW_REPORT; }
bool solves(Int Mode) { return Mode < RATE_REPORT || Mode > RATE_NEW; }

APP_1_4F_TRIAL prepared(const APP_1_4F_ARGUMENTS& h) {
    APP_1_4F_TRIAL s{};
    s.rc = h.r + h.c;
    s.Dw = h.Outside == 0 ? h.D : h.D - 2.0f * h.t;
    // Equivalent radii of an ellipse by VIII-2 4.3.7.1; r goes by the diameter as given.
    s.Lc = h.Element == ELLIPTICAL ? s.Dw * (0.44f * h.k + 0.02f) + h.c : h.L + h.c;
    s.Dw = s.Dw + 2.0f * h.c;
    s.ts0 = (h.t - h.c) - h.u;
    s.ts = solves(h.Mode) ? h.Tstart : s.ts0;
    if (h.Element == ELLIPTICAL) s.rc = h.D * (0.5f / h.k - 0.08f) + h.c;
    s.ratio = s.ts0 / s.Lc;

    s.rD = s.rc / s.Dw;
    if (s.rD > 0.08f) {
        s.C1 = 0.692f * s.rD + 0.605f;
        s.C2 = 1.46f - 2.6f * s.rD;
    } else {
        s.C1 = 9.31f * s.rD - 0.086f;
        s.C2 = 1.25f;
    }
    s.a = s.Dw / 2.0f - s.rc;
    s.b = s.Lc - s.rc;
    s.Beta = acos(s.a / s.b);
    s.Pa = 0.001f;
    return s;
}

Real knuckle_failure_pressure(Real Pe, Real Py) {
    const Real q = Pe / Py;
    if (q <= ELASTIC_LIMIT) return 0.6f * Pe;
    if (q <= YIELD_LIMIT) return 0.408f * Py + 0.192f * Pe;
    return 2.0f * Py;
}

// Allowable pressure at s.ts. False for a geometry without solution.
bool evaluate(const APP_1_4F_ARGUMENTS& h, APP_1_4F_TRIAL& s) {
    s.Se = s.C1 * h.Et * s.ts / s.rc;
    s.Phi = std::sqrt(s.Lc * s.ts) / s.rc;
    s.c2 = s.Phi < s.Beta ? s.a / cos(s.Beta - s.Phi) : s.a;
    s.Re = s.c2 + s.rc;
    if (s.Re / s.rc == 2.0f) return false;
    const Real shape = s.C2 * s.Re * (0.5f * s.Re / s.rc - 1.0f);
    s.Pe = s.Se * s.ts / shape;
    s.Py = h.Sy * s.ts / shape;
    if (s.Pe <= 0.0f || s.Py <= 0.0f) return false;
    s.Pck = knuckle_failure_pressure(s.Pe, s.Py);
    s.Pa = s.Pck / 1.5f;
    if (std::abs(h.P - s.Pa) <= 0.001f && s.Pa < h.P) s.Pa = h.P;
    return true;
}

bool converged(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s) {
    return !(s.Pa < h.P) && std::abs(s.Pa - h.P) < 0.001f;
}

void next_thickness(const APP_1_4F_ARGUMENTS& h, APP_1_4F_TRIAL& s) {
    s.ts = s.ts * std::sqrt(std::abs(h.P / s.Pa));
    if (std::abs(s.Pa - h.P) < 0.0001f) s.ts = s.ts + 5e-05f;
}

} // namespace

Int HEAD_CLASS_OF(Real ratio) {
    if (ratio < 0.0005f) return HEAD_VERY_THIN;
    return ratio <= 0.002f ? HEAD_THIN : HEAD_THICK;
}

void APP_1_4F_HEAD(APP_1_4F_ARGUMENTS& h) {
    if (h.Element != ELLIPTICAL && h.Element != TORISPHERICAL) return;
    const Int entry = IWRITE;
    IWRITE = prints(h.Mode) ? 1 : 0;
    const bool titled = h.Class > 0;

    APP_1_4F_TRIAL s = prepared(h);
    if (h.Class == HEAD_NOT_RUN) h.Tsolved = 0.0f;

    bool solution = false;
    Int n = 1;
    do {
        if (!evaluate(h, s)) {
            h.Class = HEAD_FAILED;
            return;
        }
        if (n == 1) h.Pfirst = s.Pa;
        if (!solves(h.Mode)) {
            if (prints(h.Mode)) APP_1_4F_LINES(h, s, titled);
            break;
        }
        solution = converged(h, s);
        if (!solution) {
            next_thickness(h, s);
            ++n;
        }
    } while (!solution && n <= LAST_TRIAL);

    if (h.Mode == SOLVE_THICKNESS_REPORT) {
        // The values of the last trial are those of the solution.
        if (solution) APP_1_4F_LINES(h, s, titled);
        APP_1_4F_TAIL(h, s.ts, n <= LAST_TRIAL);
    }
    h.Ratio = s.ratio;
    h.Class = HEAD_CLASS_OF(s.ratio);
    if (h.Class != HEAD_THICK) h.Tsolved = s.ts;
    IWRITE = entry;
}

} // namespace tarvane
