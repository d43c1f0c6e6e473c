#include "flange/covers.h"

#include "flange/results.h"
#include "report/lines.h"

#include <cmath>

namespace tarvane {

// TEMA RCB-9.21: deflection of a channel cover at its centre under pressure and bolt load.
void TEMA_COVER_CHECK(FLANGE_STATE& s) {
    HEADING("TEMA Channel Cover Deflection Calculations: ");

    const Real tc = s.t - s.ci - s.ce;
    const Real f1 = s.G / (s.Ecover * cube(tc));
    const Real pTerm = 0.0435f * cube(s.G) * std::abs(s.Peq);
    const Real bTerm = 0.5f * s.Sb * s.Ab * s.hg;
    s.dfActual = f1 * (pTerm + bTerm);

    const bool limitGiven = s.dfAllow > 0.0f;
    const Real span = s.G - 4.0f * s.hg;
    Real dLimit = span > 24.0f ? span / 800.0f : 0.03f;
    if (limitGiven) dLimit = s.dfAllow;
    NOTED.deflectionAllowed = dLimit;
    const bool exceeded = s.dfActual > dLimit;

    COLUMN_LINE("Actual deflection at center per TEMA formula   ", s.dfActual, Kind::thickness,
                exceeded ? ERROR_STYLE : PLAIN);
    COLUMN_LINE(limitGiven ? "Allowed deflection at center of Cover          "
                           : "Allowed deflection at center per TEMA formula  ",
                dLimit, Kind::thickness);

    // The pressure, and the thickness, that just keep the limit.
    const Real pCover = (dLimit / f1 - bTerm) / (0.0435f * cube(s.G));
    const Real dScale = dLimit / (pTerm + bTerm);
    if (dScale > 0.0f) s.tChannelMin = pow(s.G / (dScale * s.Ecover), 0.333333f);

    if (!exceeded) return;
    COLUMN_LINE("Maximum Allowable Working Pressure for Cover   ", pCover, Kind::pressure);
    COLUMN_LINE("Design Pressure as Given by User               ", s.Peq, Kind::pressure);
    COLUMN_LINE("Required Channel Cover Thickness + CA          ", s.tChannelMin + s.ci + s.ce,
                Kind::thickness);
}

} // namespace tarvane
