// Estimated pressures from the stress ratios of one evaluation, and weights. A stress is taken as
// proportional to pressure; a blind flange has its rating terms instead.
#include "flange/rating.h"
#include "report/lines.h"

#include <cmath>

namespace tarvane {

namespace {

constexpr Real UNLIMITED = 999999.875f;
constexpr Real NOT_YET_LIMITED = 1.0e12f;

// Cut to whole hundredths, never raised to the next.
Real cut_to_hundredths(Real x) { return static_cast<Real>(truncated(x * 100.0f)) * 0.01f; }

// Moments of a split ring are taken at 0.75 or 2 times their value, 2-9.
Real split_multiplier(Int nSplits) {
    if (nSplits == 2) return 0.75f;
    return nSplits == 1 ? 2.0f : 1.0f;
}

// Limits by the rigidity index, 2-14: as a pressure, and as a seating ratio.
struct RIGIDITY_LIMITS {
    Real pJ = UNLIMITED, pJs = UNLIMITED;
    bool seating = false;
};

RIGIDITY_LIMITS rigidity_limits(const FLANGE_STATE& s) {
    RIGIDITY_LIMITS limits;
    if (s.rigidity != 1) return limits;
    if (s.jOp > 0.001f) limits.pJ = s.Peq / s.jOp;
    if (s.jSeat > 0.001f) {
        limits.pJs = 1.0f / s.jSeat;
        limits.seating = true;
    }
    return limits;
}

// Growth of the operating bolt load with pressure.
Real bolt_load_per_pressure(const FLANGE_STATE& s) {
    return max(s.hpPerP, 0.0f) + max(s.hpPrimePerP, 0.0f) + max(s.pressureArea, 0.0f);
}

// Pressure by which the operating stresses, or the stress and bolts of a cover, reach their limits;
// on the scale of Peq.
Real operating_limit(const FLANGE_STATE& s, const RIGIDITY_LIMITS& limits, Real dP) {
    const auto pStress = [&](StressPlace place) { return s.Peq * s.RATIO[OPERATING][place]; };

    if (s.type == LOOSE_RING || s.type == LAP_JOINT)
        return min(pStress(TANGENTIAL), pStress(AVERAGE), pStress(BOLTING), pStress(FULL_FACE),
                   limits.pJ);

    if (s.type == BLIND) {
        const Real SPerW = s.Peq < 0.001f ? 0.0f : s.SPerW;
        const Real top = s.ALLOWED[OPERATING][TANGENTIAL] - s.extLoad * SPerW - s.SPerDP;
        const Real perP = bolt_load_per_pressure(s);
        Real x = top / (perP * SPerW + max(s.SPerP, 0.0f));
        // The deflection in inches stands against the pressure here.
        if (std::abs(s.dfActual) > 0.001f) x = min(x, s.dfActual);
        x = min(x, (s.Ab * s.ALLOWED[OPERATING][BOLTING] - s.extLoad) / perP);
        return x + dP;
    }

    return min(pStress(HUB), pStress(RADIAL), pStress(TANGENTIAL), pStress(AVERAGE),
               pStress(BOLTING), pStress(REVERSE), pStress(FULL_FACE), limits.pJ);
}

Real seating_ratio(const FLANGE_STATE& s, const RIGIDITY_LIMITS& limits) {
    const Real(&ratio)[PLACES] = s.RATIO[SEATING];
    if (s.type == LOOSE_RING || s.type == LAP_JOINT)
        return min(ratio[TANGENTIAL], ratio[AVERAGE], ratio[BOLTING], ratio[FULL_FACE], limits.pJs);
    if (s.type == BLIND) return 0.0f;
    return min(ratio[HUB], ratio[RADIAL], ratio[TANGENTIAL], ratio[AVERAGE], ratio[BOLTING],
               limits.pJs);
}

// Pressure at which a line through (pSeat, low) and (Peq, high) reaches its limit.
Real limit_on_line(const FLANGE_STATE& s, Real pSeat, Real low, Real high, Real limit, Real least) {
    const Real slope = (high - low) / (s.Peq - pSeat);
    const Real cut = high - slope * s.Peq;
    return slope > 0.0f ? min(least, (limit - cut) / slope) : least;
}

// Beyond pSeat the bolts must be given more than the gasket asks for. The seating stresses grow in
// proportion to that bolt load, linear in pressure.
Real seating_limit_beyond(const FLANGE_STATE& s, const RIGIDITY_LIMITS& limits, Real pSeat) {
    const Real SbAllow = s.ALLOWED[OPERATING][BOLTING];
    const Real SaAllow = s.ALLOWED[SEATING][BOLTING];
    const Real Wd = SbAllow * (s.Wm2 / SaAllow + s.Ab) / 2.0f;
    const Real Md = Wd * s.CF * split_multiplier(s.nSplits) * (s.C - s.G) / 2.0f;

    Real least = NOT_YET_LIMITED;
    for (Int i = HUB; i < PLACES; ++i) {
        const Real sLow = s.STRESS[SEATING][i] * Md / s.Matm;
        least = limit_on_line(s, pSeat, sLow, s.STRESS[SEATING][i], s.ALLOWED[SEATING][i], least);
    }
    if (std::abs(Md) > 0.0001f && limits.seating) {
        const Real jLow = limits.pJs * s.Matm / Md;
        least = limit_on_line(s, pSeat, 1.0f / jLow, 1.0f / limits.pJs, 1.0f, least);
    }
    return least;
}

} // namespace

void FLANGE_MAWP(FLANGE_STATE& s) {
    const Real dP = max(s.Peq - s.P, 0.0f);
    const RIGIDITY_LIMITS limits = rigidity_limits(s);

    s.MAWPop = cut_to_hundredths(max(operating_limit(s, limits, dP) - dP, 0.0f));

    const Real perP = bolt_load_per_pressure(s);
    if (s.type == BLIND && s.WMaxOp > 0.0f && perP > 0.0f) {
        const Real pSeating = s.Peq < 0.001f ? 0.0f : (s.WMaxOp - s.extLoad) / perP;
        s.MAWPseat = cut_to_hundredths(pSeating);
        return;
    }

    // Where the seating and the operating bolt load meet.
    const Real pSeat = s.Wm2 / (2.0f * s.b * PI * s.G * s.m + PI * square(s.G) / 4.0f);
    if (s.Peq <= pSeat) {
        const Real rs = seating_ratio(s, limits);
        s.MAWPseat = rs <= 0.99999f ? 0.0f : rs * pSeat + (rs - 1.0f) * s.Pbolt;
        return;
    }
    if (s.Matm >= -0.0001f && s.Matm <= 0.0001f) {
        s.MAWPseat = 0.0f;
        TEXT_LINE("Seating M.A.W.P. not Calculable due to 0.0 Gasket Seating Moment.");
        return;
    }

    Real pSeating = seating_limit_beyond(s, limits, pSeat);
    if (pSeating > 0.001f) pSeating = max(pSeating - dP, 0.0f);
    if (pSeating > 10000000.0f) pSeating = 0.0f;
    s.MAWPseat = cut_to_hundredths(pSeating);
}

void FLANGE_WEIGHT(Real bore, Real A, Real t, Real g1, Real Pi, Real go, Real h, Real& finished,
                   Real& forging, Real density) {
    const Real ring = Pi / 4.0f * (square(A) - square(bore));
    const Real hubRing = Pi / 4.0f * (square(bore + g1 + go) - square(bore));
    forging = (t + h) * ring * density;
    finished = (t * ring + h * hubRing) * density;
}

} // namespace tarvane
