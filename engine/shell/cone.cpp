// Conical sections: UG-32(g) inside, Appendix 1-4(e) outside, with the knuckle of a toriconical
// section by UG-32(h).
#include "shell/elements.h"

namespace tarvane {

namespace {

// A limit of the knuckle, and which of the two governs, it or the cone.
void trace_limit(TRACE& trace, TRACE_GROUP group, std::string_view title, std::string_view text,
                 std::string_view name, std::string_view title_of_both, std::string_view both,
                 Kind kind, Real knuckle, Real governing) {
    TRACE_FORMULA(trace, group, title, text, "UG-32 (h)", kind, knuckle);
    TRACE_SYMBOL(trace, name, knuckle, kind);
    TRACE_FORMULA(trace, group, title_of_both, both, {}, kind, governing);
}

void trace_knuckle(TRACE& trace, const SHLINT_ARGUMENTS& s, Real tkc, Real Lnc, Real Lk, Real Mnc,
                   Real Mk) {
    TRACE_SYMBOL(trace, "tk", s.k, Kind::thickness);
    TRACE_SYMBOL(trace, "r", s.r, Kind::diameter);
    TRACE_COLUMN(trace, "Corroded Knuckle Thk.", "tkc", s.u != 0.0f ? "tk - c - Ut" : "tk - c", tkc,
                 Kind::thickness);
    TRACE_COLUMN(trace, "Corroded Knuckle Radius", "rc", "r + c", s.r + s.c, Kind::diameter);
    TRACE_FACTOR(trace, "Crown Radius of the Knuckle, New [Ln]:", "Ln",
                 s.Outside == 0 ? "D / ( 2 * cos(alpha) )" : "Do / ( 2 * cos(alpha) ) - tk",
                 "UG-32 (h)", Lnc, Kind::diameter);
    TRACE_FACTOR(trace, "Crown Radius of the Knuckle, Corroded [Lc]:", "Lc", "Ln + c", {}, Lk,
                 Kind::diameter);
    TRACE_FACTOR(trace, "M Factor of the Knuckle, New [M]:", "M", "( sqrt( Ln / r ) + 3 ) / 4",
                 "App. 1-4 (d)", Mnc);
    TRACE_FACTOR(trace, "M Factor of the Knuckle, Corroded [Mc]:", "Mc",
                 "( sqrt( Lc / rc ) + 3 ) / 4", "App. 1-4 (d)", Mk);
}

// The knuckle is a torispherical head whose crown radius is that of the cone at its end. It limits
// the pressures and raises the stress; the required thickness is the cone's alone.
ELEMENT_RESULT knuckle_limits(const SHLINT_ARGUMENTS& s, Real ca, TRACE* trace) {
    ELEMENT_RESULT none{.Treq = 0.0f, .MAWP = 9999999.0f, .MAPnc = 9999999.0f, .Stress = 0.0f};
    const Real tk = s.k;
    if (!(s.r > 0.001f && tk > 0.001f)) return none;

    const Real tkc = (tk - s.c) - s.u;
    const bool inside = s.Outside == 0;
    const Real Ln = s.D / (2.0f * ca); // new
    const Real Lk = inside ? Ln + s.c : Ln + s.c - tk;
    const Real Mk = knuckle_factor(Lk, s.r + s.c);
    const Real Lnc = inside ? Ln : Ln - tk;
    const Real Mnc = knuckle_factor(Lnc, s.r);
    SHELL.knuckle = 1;
    if (trace != nullptr) trace_knuckle(*trace, s, tkc, Lnc, Lk, Mnc, Mk);
    return {.Treq = 0.0f,
            .MAWP = 2.0f * s.S * s.E * tkc / (Mk * Lk + 0.2f * tkc),
            .MAPnc = 2.0f * s.Sa * s.E * tk / (Mnc * Lnc + 0.2f * tk),
            .Stress = s.P * (Mk * Lk + 0.2f * tkc) / (2.0f * s.E * tkc)};
}

void note_limits(const ELEMENT_RESULT& cone, const ELEMENT_RESULT& knuckle) {
    SHELL.mawp_knuckle = knuckle.MAWP;
    SHELL.map_nc_knuckle = knuckle.MAPnc;
    SHELL.stress_knuckle = knuckle.Stress;
    if (knuckle.MAWP < cone.MAWP) SHELL.mawp_by = BY_KNUCKLE;
    if (knuckle.MAPnc < cone.MAPnc) SHELL.map_nc_by = BY_KNUCKLE;
    if (knuckle.Stress > cone.Stress) SHELL.stress_by = BY_KNUCKLE;
}

void trace_limits(TRACE& trace, const ELEMENT_RESULT& knuckle, const ELEMENT_RESULT& governing) {
    trace_limit(trace, TRACE_GROUP::mawp, "Maximum Allowable Working Pressure of the Knuckle [Pk]:",
                "2 * S * E * tkc / ( Mc * Lc + 0.2 * tkc )", "Pk",
                "Maximum Allowable Working Pressure, Cone and Knuckle:", "min( MAWP, Pk )",
                Kind::pressure, knuckle.MAWP, governing.MAWP);
    trace_limit(trace, TRACE_GROUP::map_nc,
                "Maximum Allowable Pressure of the Knuckle, New and Cold [Pkn]:",
                "2 * Sa * E * tk / ( M * Ln + 0.2 * tk )", "Pkn",
                "Maximum Allowable Pressure, New and Cold, Cone and Knuckle:", "min( MAPNC, Pkn )",
                Kind::pressure, knuckle.MAPnc, governing.MAPnc);
    trace_limit(trace, TRACE_GROUP::stress, "Actual Stress of the Knuckle [Sk]:",
                "P * ( Mc * Lc + 0.2 * tkc ) / ( 2 * E * tkc )", "Sk",
                "Actual Stress, Cone and Knuckle:", "max( Sact, Sk )", Kind::stress, knuckle.Stress,
                governing.Stress);
}

ELEMENT_RESULT by_inside(const SHLINT_ARGUMENTS& s, Real ca, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real cc = s.c / ca;
    const Real Dc = s.D + 2.0f * cc;
    SHELL.formula = UG_32_G;
    const ELEMENT_RESULT cone{.Treq = s.P * Dc / (2.0f * ca * (s.S * s.E - 0.6f * s.P)),
                              .MAWP = 2.0f * s.S * s.E * tc * ca / (Dc + 1.2f * tc * ca),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t * ca / (s.D + 1.2f * s.t * ca),
                              .Stress = s.P * (Dc + 1.2f * tc * ca) / (2.0f * s.E * tc * ca)};
    if (trace == nullptr) return cone;
    TRACE_COLUMN(*trace, "Corroded Inside Diameter", "Dc", "D + 2 * c/cos(alpha)", Dc,
                 Kind::diameter);
    TRACE_ELEMENT(*trace,
                  {.Treq = "P * Dc / ( 2 * cos(alpha) * ( S * E - 0.6 * P ) )",
                   .MAWP = "2 * S * E * tc * cos(alpha) / ( Dc + 1.2 * tc * cos(alpha) )",
                   .MAPnc = "2 * Sa * E * t * cos(alpha) / ( D + 1.2 * t * cos(alpha) )",
                   .Stress = "P * ( Dc + 1.2 * tc * cos(alpha) ) / ( 2 * E * tc * cos(alpha) )"},
                  cone);
    return cone;
}

ELEMENT_RESULT by_outside(const SHLINT_ARGUMENTS& s, Real ca, TRACE* trace) {
    const Real tc = corroded_thickness(s);
    const Real Dc = s.D - 2.0f * s.u / ca;
    SHELL.formula = APP_1_4_E;
    const ELEMENT_RESULT cone{.Treq = s.P * Dc / (2.0f * ca * (s.S * s.E + 0.4f * s.P)),
                              .MAWP = 2.0f * s.S * s.E * tc * ca / (Dc - 0.8f * tc * ca),
                              .MAPnc = 2.0f * s.Sa * s.E * s.t * ca / (s.D - 0.8f * s.t * ca),
                              .Stress = s.P * (Dc - 0.8f * tc * ca) / (2.0f * s.E * tc * ca)};
    if (trace == nullptr) return cone;
    if (s.u != 0.0f)
        TRACE_COLUMN(*trace, "Outside Diameter", "Du", "Do - 2*Ut/cos(alpha)", Dc, Kind::diameter);
    else
        TRACE_SYMBOL(*trace, "Du", Dc, Kind::diameter, "Do");
    TRACE_ELEMENT(*trace,
                  {.Treq = "P * Du / ( 2 * cos(alpha) * ( S * E + 0.4 * P ) )",
                   .MAWP = "2 * S * E * tc * cos(alpha) / ( Du - 0.8 * tc * cos(alpha) )",
                   .MAPnc = "2 * Sa * E * t * cos(alpha) / ( Do - 0.8 * t * cos(alpha) )",
                   .Stress = "P * ( Du - 0.8 * tc * cos(alpha) ) / ( 2 * E * tc * cos(alpha) )"},
                  cone);
    return cone;
}

} // namespace

ELEMENT_RESULT CONICAL_SECTION(const SHLINT_ARGUMENTS& s, TRACE* trace) {
    const Real ca = cosine_of_degrees(s.alpha);
    if (trace != nullptr)
        TRACE_COLUMN(*trace, "Cosine of the Half Apex Angle", "cos(alpha)", {}, ca, Kind::factor);
    ELEMENT_RESULT cone = s.Outside == 0 ? by_inside(s, ca, trace) : by_outside(s, ca, trace);
    SHELL.mawp_formula = cone.MAWP;
    SHELL.map_nc_formula = cone.MAPnc;
    SHELL.stress_formula = cone.Stress;
    const ELEMENT_RESULT knuckle = knuckle_limits(s, ca, trace);
    if (SHELL.knuckle == 1) note_limits(cone, knuckle);
    cone.MAWP = min(cone.MAWP, knuckle.MAWP);
    cone.MAPnc = min(cone.MAPnc, knuckle.MAPnc);
    cone.Stress = max(cone.Stress, knuckle.Stress);
    if (trace != nullptr && SHELL.knuckle == 1) trace_limits(*trace, knuckle, cone);
    return cone;
}

} // namespace tarvane
