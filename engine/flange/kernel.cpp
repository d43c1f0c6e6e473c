// ANALYZE_FLANGE: the order of the stages, their gates, and the three back edges: the design closure,
// the required-thickness loop, and the restart of kind 2 as kind 1.
#include "flange/kernel.h"

#include "bolting/bolt_spacing.h"
#include "flange/allowables.h"
#include "flange/blind.h"
#include "flange/bolt_loads.h"
#include "flange/covers.h"
#include "flange/design.h"
#include "flange/equivalent_pressure.h"
#include "flange/gasket.h"
#include "flange/geometry.h"
#include "flange/kernel_rating.h"
#include "flange/moment_arms.h"
#include "flange/moments.h"
#include "flange/results.h"
#include "flange/rigidity.h"
#include "flange/shape_factors.h"
#include "flange/stresses.h"
#include "host/services.h"
#include "materials/modulus.h"
#include "report/lines.h"

namespace tarvane {

namespace {

constexpr Int DESIGN_ROUNDS = 20;
constexpr Int THICKNESS_ROUNDS = 200;
constexpr Int FATAL_NO_RING = 25; // outside diameter not above the corroded inside diameter

enum class Next { go_on, to_design_entry, to_closure_entry, leave };

void moduli(FLANGE_STATE& s) {
    if (s.moduliHeld) return;
    if (s.en_or_pd()) {
        const Real chart_class = CHART_CLASS(s.chartName.columns(1, 5));
        MODULUS(chart_class, s.Ehot, s.Tdesign);
        MODULUS(chart_class, s.Ecold, AMBIENT);
    } else {
        SET_CHART(s.chartName.columns(1, 12));
        s.Ecold = ASMEMOD(AMBIENT, s.materialClass, s.code) * 1000000.0f;
        NOTED.modulusSource = MODULUS_CAME;
        s.Ehot = ASMEMOD(s.Tdesign, s.materialClass, s.code) * 1000000.0f;
        NOTED.modulusSource = max(NOTED.modulusSource, Int{MODULUS_CAME});
    }
}

void entry(FLANGE_STATE& s, KERNEL_STATE& k) {
    if (s.standardFlange == 1) s.kind = ANALYSE;
    s.noCorrection = setup_truncated(43);
    s.rigidityOut = 0.0f;
    s.extLoad = s.pressureArea = s.hpPerP = s.hpPrimePerP = s.dPeq = 0.0f;
    for (auto& row : s.STRESS)
        for (Real& stress : row)
            stress = 0.0f;
    s.MAWPop = s.MAWPseat = NO_VALUE;
    s.MAWPopBy = s.MAWPseatBy = HELD_BY_NOTHING;
    NOTED = KERNEL_NOTES{};

    moduli(s);

    s.tRequired = 0.0f;
    if (s.type == BLIND) k.tBlindStart = s.t;
    s.tOut = 0.0f;
    s.error = 0;
    s.J[0] = s.J[1] = s.jOp = s.jSeat = 0.0f;
    if (s.kind == THICKNESS) k.tStart = s.t;
    k.kindIsAnalysis = s.kind == ANALYSE;
}

void open_evaluation(FLANGE_STATE& s, KERNEL_STATE& k) {
    NOTED.evaluations = ++k.evaluations;
    NOTED.stage = AT_ENTRY;
    IWRITE = s.kind == ANALYSE ? s.reportKernel : 0;
    k.designRounds = 0;
    k.search.thicknessRounds = 0;
    s.dfActual = s.tChannelMin = 0.0f;
    s.dfAllowUsed = s.dfAllow > 0.0f ? s.dfAllow : 0.0f;
    if (s.type != LOOSE_RING && s.type != LAP_JOINT) s.nSplits = 0;
    s.GoC = min(s.Go, s.Fod);
    s.GiC = max(s.Gi, s.Fid);
    if (s.type == LAP_JOINT) s.GoC = min(s.GoC, s.LjOD);
    FLANGE_ALLOWABLES(s);
    s.Bcor = s.B + 2.0f * s.ci;
}

void design_entry(FLANGE_STATE& s, KERNEL_STATE& k) {
    k.search.converged = k.search.rigidityStage = false;
    s.fullFace = s.GoC > 0.001f && s.GoC > s.C + 0.0001f && s.C > 0.001f;
    if (!s.fullFace) return;
    s.rigidity = 0;
    if (s.type == BLIND) {
        s.B = s.Gi;
        s.Bcor = s.B + 2.0f * s.ci;
    }
}

void full_face_arms(FLANGE_STATE& s, const KERNEL_STATE& k) {
    if (!s.fullFace) return;
    FULL_FACE_ARMS(s);
    if (s.asme()) {
        COLUMN_LINE("Distance to Full Face Gasket ID Centroid  hg ", s.hg, Kind::diameter);
        COLUMN_LINE("Distance to Full Face Gasket OD Centroid h'g ", s.hgPrime, Kind::diameter);
    } else if (s.en_or_pd() && k.evaluations == 1) {
        s.dh = s.aNominal + (UNITS.diameter > 2.0f ? 0.11811024f : 0.125f);
    }
}

void partition_gasket(FLANGE_STATE& s) {
    s.bPart = 0.0f;
    if (s.partitionGasket(1) != 'Y') return;
    const Int gate = IWRITE;
    IWRITE = 0;
    CORRODED_DIMENSIONS(s);
    GASKET_CALL call{.sketch = s.sketchPart,
                     .column = s.columnPart,
                     .N = s.tp,
                     .m = s.mPart,
                     .y = s.yPart,
                     .partition = true,
                     .b = 0.0f,
                     .G = s.G,
                     .b2 = s.b2,
                     .bPrime = s.bPrime};
    GASKET_WIDTH(s, call);
    s.bPart = call.b;
    IWRITE = gate;
}

void gasket(FLANGE_STATE& s) {
    CORRODED_DIMENSIONS(s);
    GASKET_CALL call{.sketch = s.sketch,
                     .column = s.column,
                     .N = -1.0f,
                     .m = s.m,
                     .y = s.y,
                     .partition = false,
                     .b = s.b,
                     .G = s.G,
                     .b2 = s.b2,
                     .bPrime = s.bPrime};
    GASKET_WIDTH(s, call);
    s.b = call.b;
    s.G = call.G;
    s.b2 = call.b2;
    s.bPrime = call.bPrime;
    NOTED.N = call.N;
    NOTED.bo = call.bo;
}

// External loads as pressure, or, under the current Division 2 rules, as a load term of the stress
// routine (4.16.7).
void equivalent_pressure(FLANGE_STATE& s) {
    s.Peq = s.P;
    s.Wext = 0.0f;
    if (s.external_loads()) {
        if (s.code == ASME_VIII_2 && !older_division_2())
            s.Wext = 4.0f * std::fabs(12.0f * s.Mbend) / s.G;
        else
            EQUIVALENT_PRESSURE(s.Faxial, s.Mbend, s.G, PI, s.P, s.Peq);
    }
    s.dPeq = s.Peq - s.P;
}

// Design selection; returns where the kernel goes next.
Next design_selection(FLANGE_STATE& s, KERNEL_STATE& k) {
    if (s.kind != DESIGN) return Next::go_on;
    if (++k.designRounds > DESIGN_ROUNDS) {
        s.error = DESIGN_GAVE_UP;
        return Next::leave;
    }
    NOTED.designRounds = k.designRounds;
    const Real saved = s.C;
    IWRITE = 1;
    SELECT_FLANGE_GEOMETRY(s, k.designFlag);
    IWRITE = 0;
    if (k.designFlag > 0) return Next::to_design_entry;
    if (s.fullFace && std::fabs(saved - s.C) / saved > 0.01f) {
        TEXT_LINE("Full Face Flange Design - Iterating again for Bolt Circle closure");
        return Next::to_closure_entry;
    }
    return Next::go_on;
}

void bolt_spacing(FLANGE_STATE& s) {
    BOLT_SPACING_CALL call{.a = s.aNominal,
                           .series = s.series,
                           .n = s.nBolts,
                           .areaGiven = s.rootGiven,
                           .C = s.C,
                           .t = s.t,
                           .m = s.m,
                           .tw = s.tw,
                           .type = s.type,
                           .B = s.B,
                           .ct = s.ct,
                           .g1 = s.g1,
                           .go = s.go,
                           .A = s.A,
                           .ce = s.ce,
                           .Am = s.Am,
                           .noCorrection = s.noCorrection,
                           .code = s.code};
    BOLT_SPACING(call);
    s.aNominal = call.a;
    s.Ab = call.Ab;
    s.Bmin = call.Bmin;
    s.Rmin = call.Rmin;
    s.Emin = call.Emin;
    s.CF = call.CF;
    NOTED.CF = call.CF;
    NOTED.Deltab = call.Deltab;
    NOTED.BsMax = call.BsMax;
    NOTED.Ractual = call.Ractual;
    NOTED.Eactual = call.Eactual;
    NOTED.stage = AT_BOLTING;
}

// Gasket, loads and arms with the design closure; false when the kernel leaves with an error.
bool loads_and_arms(FLANGE_STATE& s, KERNEL_STATE& k) {
    design_entry(s, k);
    for (;;) {
        full_face_arms(s, k);
        partition_gasket(s);
        gasket(s);
        equivalent_pressure(s);
        if (s.fullFace && from_pd_5500(s.code)) MOMENT_ARMS_FULL_FACE(s);
        BOLT_LOADS(s);
        NOTED.stage = AT_LOADS;
        const Next next = design_selection(s, k);
        if (next == Next::leave) return false;
        if (next == Next::go_on) break;
        if (next == Next::to_design_entry) design_entry(s, k);
    }

    bolt_spacing(s);
    if (s.Am > s.Ab && s.kind == THICKNESS) {
        s.error = BOLT_AREA_SHORT;
        return false;
    }
    if (s.y > 0.001f && !s.fullFace) MIN_GASKET_WIDTH(s);
    FLANGE_DESIGN_BOLT_LOAD(s);
    if (!(s.fullFace && from_pd_5500(s.code))) MOMENT_ARMS(s);
    NOTED.stage = AT_ARMS;
    return true;
}

// The ring must be wider than its corroded bore: K above 1, or the factors have no meaning.
bool ring_exists(FLANGE_STATE& s) {
    if (!(s.A / s.Bcor <= 1.0f)) return true;
    s.stopped = true;
    NOTE_STOP(FATAL_NO_RING);
    FATAL_STOP(FATAL_NO_RING);
    return false;
}

// Shape factors; false after a fatal stop that returned.
bool shape_factors(FLANGE_STATE& s) {
    FLANGE_HUB_RATIOS(s);
    const bool hub = s.gRatio > 0.0f && s.type != LOOSE_RING;
    if (hub) {
        HUB_SOLUTION solution;
        HUB_COEFFICIENTS(s, solution);
        if (NEW_DIV_2_RULES)
            TABLE_4164_FACTORS(s);
        else
            FIGURE_FACTORS(s, solution);
    } else {
        s.F = s.V = s.f = 0.0f;
    }
    if (!ring_exists(s)) return false;
    if (s.type >= REVERSE_WELD_NECK) {
        REVERSE_FLANGE_FACTORS(s);
        if (s.gRatio > 0.0f && s.hRatio > 0.0f && !s.looseReverse)
            REVERSE_HUB_FACTORS(s);
        else
            s.d = s.e = 0.0f;
    } else {
        s.Alphar = 0.0f;
        if (s.type != BLIND) FLANGE_FACTORS(s);
        if (hub)
            HUB_FACTORS(s);
        else
            s.d = s.e = 0.0f;
    }
    return true;
}

void stress_factors(FLANGE_STATE& s) {
    if (s.gRatio > 0.0f && s.hRatio > 0.0f) {
        if (s.type != LOOSE_RING && s.type != BLIND) STRESS_FACTORS(s);
    } else {
        s.alpha = s.beta = s.gamma = s.delta = s.lambda = 0.0f;
    }
}

// Inertias that divide the external moment, Table 4.16.7; the factors they need are formed
// silently beforehand.
bool inertias(FLANGE_STATE& s) {
    s.I = s.Ip = 0.0f;
    if (!NEW_DIV_2_RULES || !s.external_loads()) return true;
    const Int gate = IWRITE;
    IWRITE = 0;
    const bool formed = shape_factors(s);
    if (formed) stress_factors(s);
    IWRITE = gate;
    if (formed) FLANGE_INERTIA(s);
    return formed;
}

void keep_moments(FLANGE_STATE& s, const KERNEL_STATE& k) {
    NOTED.Mop = s.Mop;
    NOTED.Matm = s.Matm;
    NOTED.stage = AT_MOMENTS;
    if (k.evaluations != 1) return;
    s.MopFirst = s.Mop;
    s.MatmFirst = s.Matm;
    s.CFFirst = s.CF;
}

void keep_first_factors(const FACTOR_STATE& s, KERNEL_STATE& k) {
    if (k.firstFactorsKept) return;
    k.firstFactors = FACTORS_IN_HAND(s);
    k.firstFactorsKept = true;
}

void stress_pass(FLANGE_STATE& s) {
    NOTED.t = s.t;
    NOTED.stage = AT_STRESSES;
    FLANGE_STRESSES(s);
    if (s.kind == ANALYSE) IWRITE = 1;
    STRESS_SUMMARY(s);
    if (s.type == BLIND && s.channelCover(1) == 'Y') TEMA_COVER_CHECK(s);
}

// Stresses, and under kind 2 the search for the thickness that just meets their limits.
void stress_loop(FLANGE_STATE& s, KERNEL_STATE& k) {
    for (;;) {
        stress_factors(s);
        keep_first_factors(s, k);
        // A thickness below one eighth of an inch is not pursued.
        if (s.kind == THICKNESS && k.tStart > s.t && s.t < 0.125f) return;
        stress_pass(s);
        if (s.kind != THICKNESS) return;
        THICKNESS_ROUND(s, k.search);
        if (k.search.converged) return;
        if (k.search.thicknessRounds >= THICKNESS_ROUNDS) return;
        IWRITE = 0;
    }
}

// Kind 2 has its thickness: the flange is evaluated again as an analysis.
void turn_to_analysis(FLANGE_STATE& s, const KERNEL_STATE& k) {
    s.tRequired = s.t;
    s.lambdaReq = s.lambda;
    NOTED.thicknessRounds = k.search.thicknessRounds;
    if (!k.search.converged)
        NOTED.converged =
            k.search.thicknessRounds >= THICKNESS_ROUNDS ? SEARCH_USED_UP : SEARCH_LEFT;
    NOTED.tStress = k.search.tStress;
    if (k.search.tRigid > 0.0f) NOTED.tRigid = k.search.tRigid;
    if (s.description(15) == ':' && k.tStart > 0.0f) s.t = k.tStart;
    s.kind = ANALYSE;
}

} // namespace

void ANALYZE_FLANGE(FLANGE_STATE& s) {
    KERNEL_STATE k;
    entry(s, k);
    for (;;) {
        open_evaluation(s, k);
        if (!loads_and_arms(s, k)) return;
        if (!inertias(s)) return;
        FLANGE_MOMENTS(s);
        keep_moments(s, k);
        if (s.kind == ANALYSE && s.standardFlange == 1) {
            TEXT_LINE("Note: User choose not to perform Stress Calculations on this Standard "
                      "Flange.");
            TEXT_LINE("Pressure rating of the flange will be used to check code compliance.");
            k.tStart = s.t;
            break;
        }
        if (!shape_factors(s)) return;
        NOTED.stage = AT_FACTORS;
        if (s.kind == DESIGN) s.kind = THICKNESS;
        stress_loop(s, k);
        if (s.kind != THICKNESS) {
            THICKNESS_LINES(s, k);
            RATE_FLANGE(s, k);
            break;
        }
        turn_to_analysis(s, k);
    }
    CLOSE_EVALUATION(s, k);
    NOTED.stage = AT_END;
}

} // namespace tarvane
