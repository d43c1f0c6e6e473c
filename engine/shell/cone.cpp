// Conical sections: UG-32(g) inside, Appendix 1-4(e) outside, with the knuckle of a toriconical
// section by UG-32(h).
#include "shell/elements.h"

namespace tarvane {

namespace {

// The knuckle is a torispherical head whose crown radius is that of the cone at its end. It limits
// the pressures and raises the stress; the required thickness is the cone's alone.
ELEMENT_RESULT knuckle_limits(const SHLINT_ARGUMENTS& s, Real ca) {
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
    return {.Treq = 0.0f,
            .MAWP = 2.0f * s.S * s.E * tkc / (Mk * Lk + 0.2f * tkc),
            .MAPnc = 2.0f * s.Sa * s.E * tk / (Mnc * Lnc + 0.2f * tk),
            .Stress = s.P * (Mk * Lk + 0.2f * tkc) / (2.0f * s.E * tkc)};
}

ELEMENT_RESULT by_inside(const SHLINT_ARGUMENTS& s, Real ca) {
    const Real tc = corroded_thickness(s);
    const Real cc = s.c / ca;
    const Real Dc = s.D + 2.0f * cc;
    return {.Treq = s.P * Dc / (2.0f * ca * (s.S * s.E - 0.6f * s.P)),
            .MAWP = 2.0f * s.S * s.E * tc * ca / (Dc + 1.2f * tc * ca),
            .MAPnc = 2.0f * s.Sa * s.E * s.t * ca / (s.D + 1.2f * s.t * ca),
            .Stress = s.P * (Dc + 1.2f * tc * ca) / (2.0f * s.E * tc * ca)};
}

ELEMENT_RESULT by_outside(const SHLINT_ARGUMENTS& s, Real ca) {
    const Real tc = corroded_thickness(s);
    const Real Dc = s.D - 2.0f * s.u / ca;
    return {.Treq = s.P * Dc / (2.0f * ca * (s.S * s.E + 0.4f * s.P)),
            .MAWP = 2.0f * s.S * s.E * tc * ca / (Dc - 0.8f * tc * ca),
            .MAPnc = 2.0f * s.Sa * s.E * s.t * ca / (s.D - 0.8f * s.t * ca),
            .Stress = s.P * (Dc - 0.8f * tc * ca) / (2.0f * s.E * tc * ca)};
}

} // namespace

ELEMENT_RESULT CONICAL_SECTION(const SHLINT_ARGUMENTS& s) {
    const Real ca = cosine_of_degrees(s.alpha);
    ELEMENT_RESULT cone = s.Outside == 0 ? by_inside(s, ca) : by_outside(s, ca);
    const ELEMENT_RESULT knuckle = knuckle_limits(s, ca);
    cone.MAWP = min(cone.MAWP, knuckle.MAWP);
    cone.MAPnc = min(cone.MAPnc, knuckle.MAPnc);
    cone.Stress = max(cone.Stress, knuckle.Stress);
    return cone;
}

} // namespace tarvane
