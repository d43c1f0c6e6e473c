// Flat heads and covers without bolt moment, UG-34(c)(2); multiple openings by UG-39.
#include "openings/flat_head_openings.h"
#include "report/channel.h"
#include "shell/elements.h"

namespace tarvane {

namespace {

// Working values of the plate formulas.
struct PLATE {
    Real C;        // attachment factor
    Real F = 1.0f; // h of UG-39(e)(2)
    Real Z = 1.0f; // shape
    Real d = 0.0f; // span
};

// The lines of UG-39 are the host's to ask for; afterwards the report is on, whatever it was.
void openings(const SHLINT_ARGUMENTS& s, Real span, PLATE& plate) {
    OPENINGS_CALL call{.kind = FLAT_HEAD_ELEMENT,
                       .headDia = span,
                       .d1 = s.d1,
                       .d2 = s.d2,
                       .edge1 = s.edge1,
                       .edge2 = s.edge2,
                       .pitch = s.pitch,
                       .material = truncated(s.openingMaterial),
                       .Cin = s.C};
    IWRITE = 0;
    PATTERNED_OPENINGS(call);
    IWRITE = 1;
    plate.C = call.Cout;
    plate.F = call.coverFactor;
}

PLATE plate_of(const SHLINT_ARGUMENTS& s) {
    const Real dmin = min(s.D, s.D2);
    const Real dmax = max(s.D, s.D2);
    PLATE plate{.C = s.C};
    if (s.d1 > 0.0f || s.d2 > 0.0f) openings(s, dmax, plate);
    if (s.D2 != 0.0f) plate.Z = 3.4f - 2.4f * (dmin + 2.0f * s.c) / (dmax + 2.0f * s.c);
    plate.Z = min(plate.Z, 2.5f);
    plate.d = plate.Z > 1.0f ? dmin : s.D;
    return plate;
}

} // namespace

ELEMENT_RESULT FLAT_HEAD_PLATE(const SHLINT_ARGUMENTS& s) {
    const auto [C, F, Z, d] = plate_of(s);
    const Real tc = corroded_thickness(s);
    const Real y = s.t / (F * d);
    const Real MAPnc = square(y) * s.Sa * s.E / (C * Z);
    const Real root = std::sqrt(Z * C * s.P / (s.S * s.E));
    if (s.Outside == 0) {
        const Real dc = d + 2.0f * s.c;
        const Real x = tc / (F * dc);
        return {.Treq = F * dc * root,
                .MAWP = square(x) * s.S * s.E / (C * Z),
                .MAPnc = MAPnc,
                .Stress = Z * C * s.P / (square(x) * s.E)};
    }
    const Real x = (s.t - s.c) / (F * d); // the tolerance is not taken off
    return {.Treq = F * d * root,
            .MAWP = square(x) * s.S * s.E / (C * Z),
            .MAPnc = MAPnc,
            .Stress = Z * C * s.P / (square(tc / (F * d)) * s.E)};
}

} // namespace tarvane
