#include "shell/shlint.h"

#include "frame/switches.h"
#include "frame/units.h"
#include "materials/ucs23_list.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

// UG-16(b): least thickness of the service, 0 when it has none of its own.
Real service_minimum(const SHLINT_ARGUMENTS& s) {
    if (s.Service == 1 && LIS_UCS23_MATERIAL(s.MaterialName)) return C_THREE_THIRTYSECONDS;
    return s.Service == 2 ? C_ONE_QUARTER : 0.0f;
}

void give(SHLINT_ARGUMENTS& s, const ELEMENT_RESULT& result) {
    s.Treq = result.Treq;
    s.MAWP = result.MAWP;
    s.MAPnc = result.MAPnc;
    s.Stress = result.Stress;
}

void calculate(SHLINT_ARGUMENTS& s) {
    switch (s.Element) {
    case CYLINDER:
        return give(s, CYLINDRICAL_SHELL(s));
    case ELLIPTICAL:
        give(s, ELLIPTICAL_HEAD(s));
        return APPENDIX_1_4F_LIMITS(s, 100.0f);
    case TORISPHERICAL:
        give(s, TORISPHERICAL_HEAD(s));
        return APPENDIX_1_4F_LIMITS(s, 70.0f);
    case SPHERE:
        return give(s, SPHERICAL_SHELL(s));
    case CONE:
        return give(s, CONICAL_SECTION(s));
    default:
        return give(s, FLAT_HEAD_PLATE(s));
    }
}

} // namespace

void SHLINT(SHLINT_ARGUMENTS& s) {
    if (s.Element < CYLINDER || s.Element > FLAT_HEAD_ELEMENT) return;
    SET_METRIC_CONSTANTS();
    const Real TminS = service_minimum(s);
    s.T14f = 0.0f;

    const bool formedHead = s.Element == ELLIPTICAL || s.Element == TORISPHERICAL;
    if (G_USE_A5 == 1 && formedHead && OLD_DIVISION_2_HEAD(s, TminS)) return;
    calculate(s);
    s.TreqRaw = s.Treq;
    s.Treq = max(s.Treq, C_ONE_SIXTEENTH, TminS);
}

} // namespace tarvane
