// Design mode: geometry from bore and pressure, thickness from the stress ratios and the rigidity
// index.
#include "flange/design.h"

#include "bolting/bolt_spacing.h"
#include "bolting/bolt_tables.h"
#include "flange/rigidity.h"
#include "report/lines.h"

namespace tarvane {

namespace {

constexpr Int LAST_DESIGN_FLAG = 30; // gasket and full face diameters are fixed from here on
constexpr Int THICKNESS_ROUNDS = 200;

// Bolts come in fours. The product wraps as a 32-bit INTEGER does.
Int times_four(Int n) { return static_cast<Int>(static_cast<std::uint32_t>(n) * 4u); }
Int plus(Int n, Int m) {
    return static_cast<Int>(static_cast<std::uint32_t>(n) + static_cast<std::uint32_t>(m));
}

Real to_sixteenth(Real x) { return ROUND_TO_FRACTION(x, 16); }

// Hub small end from the hoop stress in the bore, large end and length at a slope of 1 in 3.
void select_hub(FLANGE_STATE& s) {
    if (s.type == INTEGRAL_SLIP_ON || s.type == LOOSE_SLIP_ON) {
        const Real gs = to_sixteenth(s.Peq * s.B / s.Sfo);
        s.go = gs + s.ci;
    }
    if (s.type == INTEGRAL_WELD_NECK || s.type == INTEGRAL_SLIP_ON || s.type == LOOSE_SLIP_ON ||
        s.type == REVERSE_WELD_NECK) {
        s.g1 = s.go > 1.5f ? 1.5f * s.go : 2.0f * s.go;
        s.h = to_sixteenth(3.0f * (s.g1 - s.go));
    }
}

// Size and number of bolts: enough area in multiples of four, and no spacing above the largest.
BOLT_ROW select_bolts(FLANGE_STATE& s) {
    const Int base = s.C > 38.0f ? 3 : 2;
    const Int nTrial = times_four(plus(truncated(s.B / 3.6f), base));
    const Real rootTrial = s.Am / static_cast<Real>(nTrial);
    if (s.series == SPECIAL_ROOT_AREA) {
        TEXT_LINE("Bolt type for DESIGN must be TEMA or UNC - Using TEMA chart.");
        s.series = TEMA_IMPERIAL;
    }
    const BOLT_ROW bolt = BOLT_SIZE_FOR_AREA(s.series, rootTrial, s.type);
    s.dh = s.aNominal = bolt.boltDia;

    const Int nRoot = times_four(truncated(s.Am / (4.0f * bolt.rootArea) + 1.0f));
    const Real Cfirst = to_sixteenth(s.B + 2.0f * s.g1 + 2.0f * bolt.Rmin);
    const Real Bmax = 2.0f * s.dh + 6.0f * s.t / (s.m + 0.5f);
    const Int nSpace = times_four(truncated(2.0f * PI * Cfirst / (4.0f * Bmax)));
    s.nBolts = max(nRoot, nSpace);
    s.Ab = bolt.rootArea * static_cast<Real>(s.nBolts);
    return bolt;
}

// Gasket between its least width for the bolts and the room that the hub leaves.
void select_gasket(FLANGE_STATE& s, Int& designFlag) {
    Real Nmin = 0.0f;
    if (s.y > 0.001f) Nmin = s.Ab * s.Sa / (s.y * PI * (s.GoC + s.GiC));
    if (designFlag >= LAST_DESIGN_FLAG) return;
    const Real Nuse = max(Nmin, (s.GoC - s.GiC) / 2.0f);
    const Real Nbolt = (s.B + 2.0f * s.g1 - s.GiC) / 2.0f;
    const Real Nnew = max(Nuse, (Nuse + Nbolt) / 2.0f);
    s.Go = to_sixteenth(s.Gi + 2.0f * Nnew);
    s.Fod = s.Fid + (s.Go - s.Gi);
    s.GoC = min(s.Go, s.Fod);
    if (s.Gi > s.Fod) s.Gi = s.Fid;
    if (!s.fullFace) ++designFlag;
}

// Bolt circle: outside hub and gasket, wide enough for the wrenches.
void select_bolt_circle(FLANGE_STATE& s, const BOLT_ROW& bolt) {
    const Real Chub = to_sixteenth(s.B + 2.0f * s.g1 + 2.0f * bolt.Rmin);
    const Real Cgasket = max(s.Go, s.Fod) + s.dh + 0.125f;
    const Real Cspace = to_sixteenth(static_cast<Real>(s.nBolts) * bolt.Bmin / PI);
    const Real Cod = s.A - 2.0f * bolt.Emin;
    const Real Cring = to_sixteenth(s.B + 2.0f * s.tw + 2.0f * bolt.Rmin);
    if (s.fullFace)
        s.C = max(Chub, Cspace);
    else if (s.type == INTEGRAL_RING || s.type == LOOSE_RING)
        s.C = max(Cgasket, Cspace, Cring);
    else if (s.type == BLIND)
        s.C = max(Cgasket, Cspace);
    else if (s.type == REVERSE_WELD_NECK)
        s.C = min(Cod, max(Cgasket, Cspace));
    else
        s.C = max(Chub, Cgasket, Cspace);
}

void report_selection(const FLANGE_GIVEN& s) {
    LinePieces().text("Number of Bolts Selected for Flange          ").whole(s.nBolts, 15).write();
    COLUMN_LINE("Diameter of Bolts Selected for Flange        ", s.dh, Kind::diameter);
    COLUMN_LINE("Bolt Circle Diameter Selected for Flange     ", s.C, Kind::diameter);
    if (s.go > 0.0001f && s.g1 > 0.0001f && s.h > 0.0001f) {
        COLUMN_LINE("Hub Thickness, Large End, Selected for Flange", s.g1, Kind::thickness);
        COLUMN_LINE("Hub Thickness, Small End, Selected for Flange", s.go, Kind::thickness);
        COLUMN_LINE("Length of Hub Selected for Flange            ", s.h, Kind::thickness);
    }
    COLUMN_LINE("Outside Diameter Selected for Flange         ", s.A, Kind::diameter);
    COLUMN_LINE("Initial Thickness Given for Flange           ", s.t, Kind::thickness);
}

// Correction factor for the thickness t, and whether the bolts are further apart than its limit.
struct SPACING {
    Real CF;
    bool exceeded;
};
SPACING spacing_at(const FLANGE_STATE& s, Real t) {
    const Int form = s.asme() && a98_addenda() ? PD_5500 : s.code;
    Real Deltab = 0.0f, cfDen = 0.0f;
    const Real CF =
        BOLT_CORRECTION_FACTOR(form, s.C, s.nBolts, s.aNominal, t, s.ct, s.m, Deltab, cfDen);
    return {CF, Deltab > cfDen && s.noCorrection == 0};
}

void scale_moments(FLANGE_STATE& s, Real CF) {
    s.Matm = s.Matm * CF / s.CF;
    s.Mop = s.Mop * CF / s.CF;
    s.CF = CF;
}

// The larger rigidity index at the thickness in hand, with the given factors.
Real rigidity_with(FLANGE_STATE& s, const RIGIDITY_FACTORS& factors) {
    RIGIDITY_CALL call = RIGIDITY_ARGUMENTS(s, factors, s.t, s.CF);
    RIGIDITY_INDEX(s, call, RIGIDITY_SILENT);
    return call.Jmax;
}

// The stresses are within their limits: now the rigidity index decides, with this thickness as floor.
void enter_rigidity_stage(FLANGE_STATE& s, THICKNESS_SEARCH& search) {
    if (s.fullFace && s.en_or_pd()) s.t = max(s.t, s.tMin);
    s.t = ROUND_UP_DECIMALS(s.t, 3);
    search.tStress = s.t;
    search.rigidityStage = true;
    search.factors = FACTORS_IN_HAND(s);
}

// One step of t towards an index of 1; the step shrinks whenever the index passes 1.
void rigidity_round(FLANGE_STATE& s, THICKNESS_SEARCH& search, Real J) {
    if (s.rigidity != 1 || !(J > 0.001f)) {
        search.converged = true;
        return;
    }
    const Real previousJ = search.previousJ;
    const bool crossed = (previousJ > 1.0f && J < 1.0f) || (previousJ < 1.0f && J > 1.0f);
    if (!search.firstRigidityRound && crossed) search.step = search.step * 0.675f;
    search.firstRigidityRound = false;
    search.previousJ = J;

    if (J > 1.0001f) {
        s.t = s.t + search.step;
    } else if (J < 0.99995f) {
        s.t = s.t - search.step;
    } else {
        search.converged = true;
        s.t = ROUND_UP_DECIMALS(s.t, 3);
        search.tRigid = s.t;
    }
    if (s.t < search.tStress) {
        s.t = search.tStress;
        RESCALE_FIRST_MOMENTS(s, s.t);
        if (rigidity_with(s, search.factors) <= 0.99995f) search.converged = true;
    }
}

} // namespace

Real ROUND_TO_FRACTION(Real x, Int n) {
    const Real parts = static_cast<Real>(n);
    return static_cast<Real>(truncated(x * parts + 0.99f)) / parts;
}

Real ROUND_UP_DECIMALS(Real x, Int k) {
    Real power = 1.0f;
    for (Int i = 0; i < k; ++i)
        power = power * 10.0f;
    return static_cast<Real>(truncated(x * power + 1.0f)) / power;
}

void SELECT_FLANGE_GEOMETRY(FLANGE_STATE& s, Int& designFlag) {
    HEADING("Geometry Selection for Flange Design Option:");
    select_hub(s);
    const BOLT_ROW bolt = select_bolts(s);
    select_gasket(s, designFlag);
    select_bolt_circle(s, bolt);
    if (s.type != REVERSE_WELD_NECK) s.A = s.C + 2.0f * bolt.Emin;
    if (s.fullFace && designFlag < LAST_DESIGN_FLAG) {
        s.Go = s.Fod = s.GoC = s.A;
        ++designFlag;
    }
    if (s.type == REVERSE_WELD_NECK) s.B = s.GiC;
    report_selection(s);
}

void NEXT_FLANGE_THICKNESS(FLANGE_STATE& s, bool& converged) {
    const Real tc = s.t - s.ct;
    Real tReq[PLACES];
    for (Int i = 0; i < PLACES; ++i)
        tReq[i] = max(tc / std::sqrt(s.RATIO[OPERATING][i]), tc / std::sqrt(s.RATIO[SEATING][i]));

    Real next;
    if (s.type == LOOSE_RING || s.type == BLIND) {
        next = tReq[TANGENTIAL];
        if (s.tChannelMin != 0.0f) next = max(next, s.tChannelMin);
    } else {
        next = max(tReq[HUB], tReq[RADIAL], tReq[TANGENTIAL], tReq[AVERAGE]);
    }
    if (s.type == REVERSE_WELD_NECK) next = max(next, tReq[REVERSE]);
    if (s.fullFace) next = max(next, tReq[FULL_FACE]);

    next = next + s.ct;
    const Real ratio = next / s.t;
    converged = ratio >= 0.9999f && ratio <= 1.00001f;
    if (!converged) s.t = next;
}

void RESCALE_FIRST_MOMENTS(FLANGE_STATE& s, Real t) {
    s.Mop = s.MopFirst;
    s.Matm = s.MatmFirst;
    s.CF = s.CFFirst;
    const SPACING spacing = spacing_at(s, t);
    if (spacing.exceeded) scale_moments(s, spacing.CF);
}

void THICKNESS_ROUND(FLANGE_STATE& s, THICKNESS_SEARCH& search) {
    ++search.thicknessRounds;
    if (!search.rigidityStage) {
        bool stressesMet = false;
        NEXT_FLANGE_THICKNESS(s, stressesMet);
        if (stressesMet) enter_rigidity_stage(s, search);
    }
    RESCALE_FIRST_MOMENTS(s, s.t);
    const Real J = rigidity_with(s, FACTORS_IN_HAND(s));
    if (search.rigidityStage) rigidity_round(s, search, J);
    if (search.converged) return;

    if (search.thicknessRounds >= THICKNESS_ROUNDS) {
        TEXT_LINE("Warning - Thickness selection failed to converge.");
        TEXT_LINE("Please select new initial thickness/bolt size and try again.");
        return;
    }
    IWRITE = 0;
    const SPACING spacing = spacing_at(s, s.t);
    if (spacing.exceeded) {
        scale_moments(s, spacing.CF);
    } else {
        s.Mop = s.Mop / s.CF;
        s.Matm = s.Matm / s.CF;
        s.CF = 1.0f;
    }
}

} // namespace tarvane
