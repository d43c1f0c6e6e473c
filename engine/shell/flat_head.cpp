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

// The lines of UG-39 go out where there is a trace; afterwards the report is on, whatever it was.
void openings(const SHLINT_ARGUMENTS& s, Real span, PLATE& plate, TRACE* trace) {
    OPENINGS_CALL call{.kind = FLAT_HEAD_ELEMENT,
                       .headDia = span,
                       .d1 = s.d1,
                       .d2 = s.d2,
                       .edge1 = s.edge1,
                       .edge2 = s.edge2,
                       .pitch = s.pitch,
                       .material = truncated(s.openingMaterial),
                       .Cin = s.C};
    IWRITE = trace != nullptr ? trace->gate : 0;
    PATTERNED_OPENINGS(call);
    IWRITE = 1;
    plate.C = call.Cout;
    plate.F = call.coverFactor;
    KEEP_OPENINGS(SHELL, call.found);
    if (trace != nullptr) {
        TRACE_COLUMN(*trace, "Attachment Factor, UG-39 (d)(1)", "C", {}, plate.C, Kind::factor);
        TRACE_COLUMN(*trace, "Spacing Factor, UG-39 (e)(2)", "F", {}, plate.F, Kind::factor);
    }
}

PLATE plate_of(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real dmin = min(s.D, s.D2);
    const Real dmax = max(s.D, s.D2);
    PLATE plate{.C = s.C};
    if (trace != nullptr) TRACE_SYMBOL(*trace, "C", s.C, Kind::factor);
    if (s.d1 > 0.0f || s.d2 > 0.0f) openings(s, dmax, plate, trace);
    if (s.D2 != 0.0f) plate.Z = 3.4f - 2.4f * (dmin + 2.0f * s.c) / (dmax + 2.0f * s.c);
    plate.Z = min(plate.Z, 2.5f);
    plate.d = plate.Z > 1.0f ? dmin : s.D;
    if (trace != nullptr && s.D2 != 0.0f) {
        TRACE_SYMBOL(*trace, "ds", dmin, Kind::diameter);
        TRACE_SYMBOL(*trace, "dl", dmax, Kind::diameter);
        TRACE_FACTOR(*trace, "Factor of the Shape, Short over Long Span [Z]:", "Z",
                     "min( 3.4 - 2.4 * ( ds + 2 * c ) / ( dl + 2 * c ), 2.5 )", "UG-34 (c)(3)",
                     plate.Z);
    }
    return plate;
}

// The formulas as they hold for the head: Z with two spans, F with openings. By outside dimensions dc
// is d, and the MAWP does not deduct the tolerance.
constexpr ELEMENT_TEXTS TEXTS[2][2] = {{{.Treq = "dc * sqrt( C * P / ( S * E ) )",
                                         .MAWP = "( tw / dc )\xB2 * S * E / C",
                                         .MAPnc = "( t / d )\xB2 * Sa * E / C",
                                         .Stress = "C * P / ( ( tc / dc )\xB2 * E )"},
                                        {.Treq = "F * dc * sqrt( C * P / ( S * E ) )",
                                         .MAWP = "( tw / ( F * dc ) )\xB2 * S * E / C",
                                         .MAPnc = "( t / ( F * d ) )\xB2 * Sa * E / C",
                                         .Stress = "C * P / ( ( tc / ( F * dc ) )\xB2 * E )"}},
                                       {{.Treq = "dc * sqrt( Z * C * P / ( S * E ) )",
                                         .MAWP = "( tw / dc )\xB2 * S * E / ( C * Z )",
                                         .MAPnc = "( t / d )\xB2 * Sa * E / ( C * Z )",
                                         .Stress = "Z * C * P / ( ( tc / dc )\xB2 * E )"},
                                        {.Treq = "F * dc * sqrt( Z * C * P / ( S * E ) )",
                                         .MAWP = "( tw / ( F * dc ) )\xB2 * S * E / ( C * Z )",
                                         .MAPnc = "( t / ( F * d ) )\xB2 * Sa * E / ( C * Z )",
                                         .Stress = "Z * C * P / ( ( tc / ( F * dc ) )\xB2 * E )"}}};

void trace_plate(TRACE& trace, const SHLINT_ARGUMENTS& s, Real d, const ELEMENT_RESULT& head) {
    const Real tc = corroded_thickness(s);
    TRACE_COLUMN(trace, "Span of the Plate", "d", {}, d, Kind::diameter);
    if (s.Outside == 0) {
        TRACE_COLUMN(trace, "Corroded Span", "dc", "d + 2 * c", d + 2.0f * s.c, Kind::diameter);
        TRACE_SYMBOL(trace, "tw", tc, Kind::thickness, "tc");
    } else {
        TRACE_SYMBOL(trace, "dc", d, Kind::diameter, "d");
        if (s.u != 0.0f)
            TRACE_COLUMN(trace, "Thickness less Corrosion", "tw", "t - c", s.t - s.c,
                         Kind::thickness);
        else
            TRACE_SYMBOL(trace, "tw", tc, Kind::thickness, "tc");
    }
    TRACE_ELEMENT(trace, TEXTS[s.D2 != 0.0f][SHELL.openings != OPENINGS_FOUND::NONE], head);
}

} // namespace

ELEMENT_RESULT FLAT_HEAD_PLATE(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const auto [C, F, Z, d] = plate_of(s, trace);
    const Real tc = corroded_thickness(s);
    const Real y = s.t / (F * d);
    const Real MAPnc = square(y) * s.Sa * s.E / (C * Z);
    const Real root = std::sqrt(Z * C * s.P / (s.S * s.E));
    SHELL.formula = s.D2 != 0.0f ? UG_34_C_3 : UG_34_C_2;
    ELEMENT_RESULT head;
    if (s.Outside == 0) {
        const Real dc = d + 2.0f * s.c;
        const Real x = tc / (F * dc);
        head = {.Treq = F * dc * root,
                .MAWP = square(x) * s.S * s.E / (C * Z),
                .MAPnc = MAPnc,
                .Stress = Z * C * s.P / (square(x) * s.E)};
    } else {
        const Real x = (s.t - s.c) / (F * d); // the tolerance is not taken off
        head = {.Treq = F * d * root,
                .MAWP = square(x) * s.S * s.E / (C * Z),
                .MAPnc = MAPnc,
                .Stress = Z * C * s.P / (square(tc / (F * d)) * s.E)};
    }
    SHELL.attachment_factor = C;
    SHELL.spacing_factor = F;
    SHELL.shape_factor = Z;
    SHELL.span = d;
    if (trace != nullptr) trace_plate(*trace, s, d, head);
    return head;
}

} // namespace tarvane
