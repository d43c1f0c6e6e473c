// Thin torispherical and elliptical heads against failure of the knuckle (Appendix 1-4(f)).
#pragma once

#include "frame/vessel_elements.h"

namespace tarvane {

enum HEAD_MODE : Int {
    SOLVE_THICKNESS = 0,        // from Tstart, quiet; so does any mode outside 0 to 5
    SOLVE_THICKNESS_REPORT = 1, // from Tstart, the solution printed
    RATE_REPORT = 2,            // pressure at the corroded thickness, printed as MAWP
    RATE_NEW_REPORT = 3,        //   printed as new and cold
    RATE = 4,                   //   quiet
    RATE_NEW = 5,
};

// Class of a head by ts/L.
enum HEAD_CLASS : Int {
    HEAD_NOT_RUN = 0,
    HEAD_THIN = 1,      // 0.0005 up to 0.002, within the rules
    HEAD_VERY_THIN = 2, // below 0.0005
    HEAD_THICK = 3,     // above 0.002, the rules do not apply
    HEAD_FAILED = 4,    // a geometry without solution
};
Int HEAD_CLASS_OF(Real ratio);

struct APP_1_4F_ARGUMENTS {
    Int Element; // ELLIPTICAL, TORISPHERICAL; anything else changes nothing
    Int Outside; // 0: inside diameter
    Real P;      // design pressure
    Real t;      // given thickness of the head
    Real L;      // crown radius, torispherical head
    Real D;      // diameter as given
    Real r;      // knuckle radius, torispherical head
    Real k;      // D/2h, elliptical head
    Real Temp;
    Real Et; // modulus (psi)
    Real Sy;
    Real TempLimit; // Table 1-4.3, for the note
    Real& Tsolved;  // set for classes 1 and 2; cleared when Class comes as 0
    Int& Class;     // positive on entry: the title is wanted; HEAD_CLASS on return
    Real c, u;      // corrosion allowance, mill under-tolerance
    Real& Pfirst;   // allowable pressure of the first trial
    Int Mode;       // HEAD_MODE
    Int TminLabel;  // 0: thickness printed as TR, else as TMINC
    Real Hydro;     // hydrostatic head taken off the MAWP that mode 2 prints
    Real& Ratio;    // ts/L of the corroded thickness
    Real Tstart;
};
// IWRITE is forced on for the modes that print and off for the others, and put back on return, but
// not when the class is HEAD_FAILED; Ratio is not written then either.
void APP_1_4F_HEAD(APP_1_4F_ARGUMENTS& h);

// Working values of one trial, for the lines.
struct APP_1_4F_TRIAL {
    Real ts0, ratio;
    Real rc, Lc, Dw; // corroded
    Real rD, C1, C2;
    Real a, b, Beta;
    Real ts, Se, Phi, c2, Re, Pe, Py, Pck, Pa;
};
// The lines of modes 1 to 3 for one trial, and those that close mode 1.
void APP_1_4F_LINES(const APP_1_4F_ARGUMENTS& h, const APP_1_4F_TRIAL& s, bool titled);
void APP_1_4F_TAIL(const APP_1_4F_ARGUMENTS& h, Real ts, bool converged);

// q = Pe/Py, the form of the knuckle failure pressure.
inline constexpr Real ELASTIC_LIMIT = 1.0f, YIELD_LIMIT = 8.29f;

} // namespace tarvane
