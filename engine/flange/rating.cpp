// Estimated pressures from the stress ratios of one evaluation, and weights. A stress is taken as
// proportional to pressure; a blind flange has its rating terms instead.
#include "flange/rating.h"

#include "flange/results.h"
#include "report/lines.h"

#include <cmath>
#include <span>

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
Real bolt_load_per_pressure(const LOAD_STATE& s) {
    return max(s.hpPerP, 0.0f) + max(s.hpPrimePerP, 0.0f) + max(s.pressureArea, 0.0f);
}

// The least of some pressures, or ratios, and what gave it.
struct LEAST {
    Real x;
    Int by;
    void of(Real other, Int otherBy) {
        if (other < x) *this = {other, otherBy};
    }
};

// The stresses that limit a flange: a ring has neither hub nor radial stress.
constexpr StressPlace RING_PLACES[] = {TANGENTIAL, AVERAGE, BOLTING, FULL_FACE};
constexpr StressPlace ALL_PLACES[] = {HUB,     RADIAL,  TANGENTIAL, AVERAGE,
                                      BOLTING, REVERSE, FULL_FACE};
constexpr StressPlace SEATING_PLACES[] = {HUB, RADIAL, TANGENTIAL, AVERAGE, BOLTING};

bool ring(const FLANGE_GIVEN& s) { return s.type == LOOSE_RING || s.type == LAP_JOINT; }

template <class Value>
LEAST least_of(std::span<const StressPlace> places, Int by, Value value) {
    LEAST least{value(places[0]), by + places[0]};
    for (const StressPlace place : places.subspan(1))
        least.of(value(place), by + place);
    return least;
}

// A cover: its stress, its deflection, its bolts.
LEAST cover_limit(const FLANGE_STATE& s, Real dP) {
    const Real SPerW = s.Peq < 0.001f ? 0.0f : s.SPerW;
    const Real top = s.ALLOWED[OPERATING][TANGENTIAL] - s.extLoad * SPerW - s.SPerDP;
    const Real perP = bolt_load_per_pressure(s);
    LEAST least{top / (perP * SPerW + max(s.SPerP, 0.0f)), BY_OPERATING_STRESS + TANGENTIAL};
    // Here the deflection in inches is compared with pressures.
    if (std::abs(s.dfActual) > 0.001f) least.of(s.dfActual, BY_DEFLECTION);
    least.of((s.Ab * s.ALLOWED[OPERATING][BOLTING] - s.extLoad) / perP, BY_BOLTS);
    return {least.x + dP, least.by};
}

// Pressure by which the operating stresses, or the stress and bolts of a cover, reach their limits;
// on the scale of Peq.
LEAST operating_limit(const FLANGE_STATE& s, const RIGIDITY_LIMITS& limits, Real dP) {
    if (s.type == BLIND) return cover_limit(s, dP);
    const auto pStress = [&](StressPlace place) { return s.Peq * s.RATIO[OPERATING][place]; };
    LEAST least = ring(s) ? least_of(RING_PLACES, BY_OPERATING_STRESS, pStress)
                          : least_of(ALL_PLACES, BY_OPERATING_STRESS, pStress);
    least.of(limits.pJ, BY_RIGIDITY);
    return least;
}

LEAST seating_ratio(const FLANGE_STATE& s, const RIGIDITY_LIMITS& limits) {
    if (s.type == BLIND) return {0.0f, BY_SEATING_STRESS + TANGENTIAL};
    const auto ratio = [&](StressPlace place) { return s.RATIO[SEATING][place]; };
    LEAST least = ring(s) ? least_of(RING_PLACES, BY_SEATING_STRESS, ratio)
                          : least_of(SEATING_PLACES, BY_SEATING_STRESS, ratio);
    least.of(limits.pJs, BY_RIGIDITY);
    return least;
}

// Pressure at which a line through (pSeat, low) and (Peq, high) reaches its limit.
void limit_on_line(const LOAD_STATE& s, Real pSeat, Real low, Real high, Real limit, LEAST& least,
                   Int by) {
    const Real slope = (high - low) / (s.Peq - pSeat);
    const Real cut = high - slope * s.Peq;
    if (slope > 0.0f) least.of((limit - cut) / slope, by);
}

// Above pSeat the bolts need more load than the gasket does. The seating stresses grow in
// proportion to that bolt load, linear in pressure.
LEAST seating_limit_beyond(const FLANGE_STATE& s, const RIGIDITY_LIMITS& limits, Real pSeat) {
    const Real SbAllow = s.ALLOWED[OPERATING][BOLTING];
    const Real SaAllow = s.ALLOWED[SEATING][BOLTING];
    const Real Wd = SbAllow * (s.Wm2 / SaAllow + s.Ab) / 2.0f;
    const Real Md = Wd * s.CF * split_multiplier(s.nSplits) * (s.C - s.G) / 2.0f;

    LEAST least{NOT_YET_LIMITED, HELD_BY_NOTHING};
    for (Int i = HUB; i < PLACES; ++i) {
        const Real sLow = s.STRESS[SEATING][i] * Md / s.Matm;
        limit_on_line(s, pSeat, sLow, s.STRESS[SEATING][i], s.ALLOWED[SEATING][i], least,
                      BY_SEATING_STRESS + i);
    }
    if (std::abs(Md) > 0.0001f && limits.seating) {
        const Real jLow = limits.pJs * s.Matm / Md;
        limit_on_line(s, pSeat, 1.0f / jLow, 1.0f / limits.pJs, 1.0f, least, BY_RIGIDITY);
    }
    return least;
}

} // namespace

void FLANGE_MAWP(FLANGE_STATE& s) {
    const Real dP = max(s.Peq - s.P, 0.0f);
    const RIGIDITY_LIMITS limits = rigidity_limits(s);

    const LEAST operating = operating_limit(s, limits, dP);
    s.MAWPop = cut_to_hundredths(max(operating.x - dP, 0.0f));
    s.MAWPopBy = operating.by;

    const Real perP = bolt_load_per_pressure(s);
    if (s.type == BLIND && s.WMaxOp > 0.0f && perP > 0.0f) {
        const Real pSeating = s.Peq < 0.001f ? 0.0f : (s.WMaxOp - s.extLoad) / perP;
        s.MAWPseat = cut_to_hundredths(pSeating);
        s.MAWPseatBy = s.WMaxOp == s.Ab * s.Sb ? BY_BOLTS : BY_SEATING_STRESS + TANGENTIAL;
        return;
    }

    // Where the seating and the operating bolt load meet.
    const Real pSeat = s.Wm2 / (2.0f * s.b * PI * s.G * s.m + PI * square(s.G) / 4.0f);
    if (s.Peq <= pSeat) {
        const auto [rs, by] = seating_ratio(s, limits);
        s.MAWPseat = rs <= 0.99999f ? 0.0f : rs * pSeat + (rs - 1.0f) * s.Pbolt;
        s.MAWPseatBy = by;
        return;
    }
    if (s.Matm >= -0.0001f && s.Matm <= 0.0001f) {
        s.MAWPseat = 0.0f;
        s.MAWPseatBy = HELD_BY_NOTHING;
        TEXT_LINE("Seating M.A.W.P. not Calculable due to 0.0 Gasket Seating Moment.");
        return;
    }

    auto [pSeating, by] = seating_limit_beyond(s, limits, pSeat);
    if (pSeating > 0.001f) pSeating = max(pSeating - dP, 0.0f);
    if (pSeating > 10000000.0f) {
        pSeating = 0.0f;
        by = HELD_BY_NOTHING;
    }
    s.MAWPseat = cut_to_hundredths(pSeating);
    s.MAWPseatBy = by;
}

void FLANGE_WEIGHT(Real bore, Real A, Real t, Real g1, Real Pi, Real go, Real h, Real& finished,
                   Real& forging, Real density) {
    const Real ring = Pi / 4.0f * (square(A) - square(bore));
    const Real hubRing = Pi / 4.0f * (square(bore + g1 + go) - square(bore));
    forging = (t + h) * ring * density;
    finished = (t * ring + h * hubRing) * density;
}

} // namespace tarvane
