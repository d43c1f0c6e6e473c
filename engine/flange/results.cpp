#include "flange/results.h"

#include "flange/driver.h"
#include "flange/kernel_rating.h"

namespace tarvane {

namespace {

constexpr FLANGE_RESULTS at_load() {
    FLANGE_RESULTS r{};
    r.version = FLANGE_RESULTS_VERSION;
    r.bytes = sizeof(FLANGE_RESULTS);
    return r;
}
constexpr FLANGE_RESULTS AT_LOAD = at_load();

// No result yet.
constexpr FLANGE_RESULTS no_results() {
    FLANGE_RESULTS r = AT_LOAD;
    for (Real& value : r.message_value)
        value = NO_VALUE;
    for (Real* value : {&r.P, &r.Peq, &r.T, &r.t_given, &r.t_used, &r.ci, &r.ce, &r.ct, &r.E_cold,
                        &r.E_hot, &r.kf})
        *value = NO_VALUE;
    for (Real* value : {&r.N, &r.bo, &r.b, &r.G, &r.b2, &r.bPrime, &r.bPart, &r.N_min})
        *value = NO_VALUE;
    for (Real* value : {&r.H, &r.Hd, &r.Ht, &r.Hp, &r.HpPrime, &r.HGY, &r.HG, &r.Wm1, &r.Wm2, &r.W,
                        &r.Am1, &r.Am2, &r.Am, &r.Ab, &r.Wext})
        *value = NO_VALUE;
    for (Real* value : {&r.hd, &r.ht, &r.hg, &r.hgPrime, &r.hgDouble, &r.Md, &r.Mt, &r.Mg, &r.Mr,
                        &r.Moe, &r.Mop, &r.Matm})
        *value = NO_VALUE;
    for (Real* value : {&r.bolt_spacing, &r.bolt_spacing_min, &r.bolt_spacing_max, &r.radial,
                        &r.radial_min, &r.edge, &r.edge_min, &r.CF})
        *value = NO_VALUE;
    for (Real* value :
         {&r.K,    &r.T_factor, &r.U,     &r.Y,      &r.Z,  &r.Yr,     &r.Alphar, &r.F,
          &r.V,    &r.f,        &r.e,     &r.d,      &r.ho, &r.hRatio, &r.gRatio, &r.alpha,
          &r.beta, &r.gamma,    &r.delta, &r.lambda, &r.I,  &r.Ip})
        *value = NO_VALUE;
    for (StressTable* table : {&r.stress, &r.allowed, &r.ratio})
        for (auto& row : *table)
            for (Real& value : row)
                value = NO_VALUE;
    for (auto* pair : {&r.J_given, &r.J_required, &r.lap_required, &r.t_required})
        (*pair)[0] = (*pair)[1] = NO_VALUE;
    for (Real* value : {&r.deflection, &r.deflection_allowed, &r.t_channel, &r.C_cover, &r.Z_cover,
                        &r.hub_required, &r.hub_mawp, &r.t_edge, &r.t_min, &r.t_stress, &r.t_rigid,
                        &r.t_req, &r.t_req_new, &r.t_req_new_cold})
        *value = NO_VALUE;
    for (Real* value : {&r.mawp_operating, &r.mawp_seating, &r.P_bolts, &r.mawp, &r.map_nc,
                        &r.failure_ca, &r.weight_finished, &r.weight_forging})
        *value = NO_VALUE;
    for (Real* value : {&r.shell_required, &r.shell_mawp, &r.shell_ratio, &r.stress_ratio,
                        &r.pwht_thickness, &r.opening_factor})
        *value = NO_VALUE;
    for (Int i = 0; i < OPENING_RULES; ++i)
        r.opening_found[i] = r.opening_limit[i] = NO_VALUE;
    return r;
}
constexpr FLANGE_RESULTS NO_RESULTS = no_results();

// ---- the final pass --------------------------------------------------------------------------------------

void keep_given(const FLANGE_STATE& s) {
    FOUND.full_face = s.fullFace;
    FOUND.non_circular = s.nonCircular();
    FOUND.rigidity = s.rigidity;
    FOUND.evaluations = NOTED.evaluations;
    FOUND.design_rounds = NOTED.designRounds;
    FOUND.thickness_rounds = NOTED.thicknessRounds;
    FOUND.converged = NOTED.converged;
    FOUND.modulus_status = NOTED.modulusSource;
    FOUND.P = s.P;
    FOUND.T = s.Tdesign;
    FOUND.ci = s.ci;
    FOUND.ce = s.ce;
    FOUND.ct = s.ct;
    FOUND.E_cold = s.Ecold;
    FOUND.E_hot = s.Ehot;
    FOUND.kf = s.kf;
    for (const StressRow row : {OPERATING, SEATING})
        for (Int place = 0; place < PLACES; ++place)
            FOUND.allowed[row][place] = s.ALLOWED[row][place];
}

void keep_loads(const FLANGE_STATE& s) {
    FOUND.Peq = s.Peq;
    FOUND.N = NOTED.N;
    FOUND.bo = NOTED.bo;
    FOUND.b = s.b;
    // A reverse flange with a full face gasket has no reaction diameter of its own.
    if (!s.reverseFullFace()) FOUND.G = s.G;
    if (s.fullFace && s.en_or_pd()) {
        if (s.reverseFullFace())
            FOUND.bPrime = s.bPrime;
        else
            FOUND.b2 = s.b2;
    }
    FOUND.bPart = s.bPart;
    FOUND.H = s.H;
    FOUND.Hd = s.Hd;
    FOUND.Ht = s.Ht;
    FOUND.Hp = s.Hp;
    FOUND.HpPrime = s.HpPrime;
    FOUND.HGY = s.HGY;
    FOUND.Wm1 = s.Wm1;
    FOUND.Wm2 = s.Wm2;
    FOUND.Am1 = s.Am1;
    FOUND.Am2 = s.Am2;
    FOUND.Am = s.Am;
    FOUND.Wext = s.Wext;
}

void keep_bolting(const FLANGE_STATE& s) {
    FOUND.Ab = s.Ab;
    FOUND.bolt_spacing = NOTED.Deltab;
    FOUND.bolt_spacing_min = s.Bmin;
    FOUND.bolt_spacing_max = NOTED.BsMax;
    if (s.type < BLIND) {
        FOUND.radial = NOTED.Ractual;
        FOUND.radial_min = s.Rmin;
    }
    FOUND.edge = NOTED.Eactual;
    FOUND.edge_min = s.Emin;
    FOUND.CF = NOTED.CF;
}

void keep_arms(const FLANGE_STATE& s) {
    FOUND.N_min = NOTED.Nmin;
    if (!s.reverseFullFace()) {
        FOUND.W = s.W;
        FOUND.HG = s.HG;
    }
    FOUND.hd = s.hd;
    FOUND.ht = s.ht;
    FOUND.hg = s.hg;
    FOUND.hgPrime = s.hgPrime;
    FOUND.hgDouble = s.hgDouble;
}

void keep_moments(const FLANGE_STATE& s) {
    // The lap of PD 5500 and EN 13445 has one moment only.
    if (!(s.en_or_pd() && s.type == LAP_JOINT && s.Peq > 0.0f)) {
        FOUND.Md = s.Md;
        FOUND.Mt = s.Mt;
    }
    FOUND.Mg = s.Mg;
    FOUND.Mr = s.Mr;
    FOUND.Moe = s.Moe;
    FOUND.Mop = NOTED.Mop;
    FOUND.Matm = NOTED.Matm;
    if (NEW_DIV_2_RULES && s.external_loads()) {
        FOUND.I = s.I;
        FOUND.Ip = s.Ip;
    }
}

void keep_factors(const FLANGE_STATE& s) {
    FOUND.ho = s.ho;
    FOUND.hRatio = s.hRatio;
    FOUND.gRatio = s.gRatio;
    FOUND.F = s.F;
    FOUND.V = s.V;
    FOUND.f = s.f;
    FOUND.d = s.d;
    FOUND.e = s.e;
    if (s.type == BLIND) return;
    FOUND.K = s.K;
    FOUND.T_factor = s.T;
    FOUND.U = s.U;
    FOUND.Y = s.Y;
    FOUND.Z = s.Z;
    if (s.type < REVERSE_WELD_NECK) return;
    FOUND.Yr = s.Yr;
    FOUND.Alphar = s.Alphar;
}

void keep_stresses(const FLANGE_STATE& s) {
    FOUND.t_used = NOTED.t;
    if (s.type != LOOSE_RING && s.type != BLIND) {
        FOUND.alpha = s.alpha;
        FOUND.beta = s.beta;
        FOUND.gamma = s.gamma;
        FOUND.delta = s.delta;
        FOUND.lambda = s.lambda;
    }
    for (const StressRow row : {OPERATING, SEATING}) {
        for (Int place = 0; place < PLACES; ++place) {
            FOUND.stress[row][place] = s.STRESS[row][place];
            FOUND.ratio[row][place] = s.RATIO[row][place];
            FOUND.exceeded[row][place] = STRESS_EXCEEDS(s, row, place);
        }
    }
    if (s.fullFace && s.en_or_pd()) FOUND.t_min = s.tMin;
    if (s.type != BLIND) return;
    FOUND.C_cover = s.Cf;
    FOUND.Z_cover = s.Zcover;
    if (s.channelCover(1) != 'Y') return;
    FOUND.deflection = s.dfActual;
    FOUND.deflection_allowed = NOTED.deflectionAllowed;
    FOUND.t_channel = s.tChannelMin;
}

void keep_rating(const RATING_STATE& s) {
    for (const StressRow row : {OPERATING, SEATING})
        FOUND.t_required[row] = NOTED.tCover[row];
    FOUND.t_edge = NOTED.tEdge;
    FOUND.t_stress = NOTED.tStress;
    FOUND.t_rigid = NOTED.tRigid;
    FOUND.P_bolts = s.Pbolt;
    FOUND.mawp_operating = s.MAWPop;
    FOUND.mawp_seating = s.MAWPseat;
    FOUND.mawp_operating_by = s.MAWPopBy;
    FOUND.mawp_seating_by = s.MAWPseatBy;
}

} // namespace

FLANGE_RESULTS FOUND = AT_LOAD;
KERNEL_NOTES NOTED;

void RESET_RESULTS() {
    FOUND = AT_LOAD;
    NOTED = KERNEL_NOTES{};
}

void BEGIN_RESULTS(const DRIVER_STATE& d) {
    const auto before = static_cast<std::uint32_t>(FOUND.serial);
    FOUND = NO_RESULTS;
    FOUND.serial = static_cast<Int>(before + 1u);
    FOUND.code = d.s->code;
    FOUND.module_code = moduleCode;
    FOUND.new_div2_rules = NEW_DIV_2_RULES;
    FOUND.a98 = CODE_A98_ADDENDA;
    FOUND.old_div2 = G_NUSE_OLD_DIV_2;
    FOUND.type = d.record.whole(2);
    FOUND.kind = d.record.whole(3);
    FOUND.loose_reverse = d.s->looseReverse;
    FOUND.external = d.s->P < 0.0f;
    FOUND.t_given = d.tGiven;
}

void NOTE_MESSAGE(Int number, Real value) {
    if (FOUND.messages >= MOST_MESSAGES) return;
    FOUND.message[FOUND.messages] = number;
    FOUND.message_value[FOUND.messages] = value;
    ++FOUND.messages;
}

void NOTE_STOP(Int fatalCode) {
    FOUND.status = STOPPED;
    FOUND.fatal_code = fatalCode;
}

void NOTE_OPENINGS(const OPENINGS_CALL& call) {
    KEEP_OPENINGS(FOUND, call.found);
    FOUND.opening_factor = call.coverFactor;
}

void NOTE_LAP(Real operating, Real seating) {
    FOUND.lap_required[OPERATING] = operating;
    FOUND.lap_required[SEATING] = seating;
}

Int HELD_BY(const RATING_STATE& s, Real pressure) {
    if (pressure == NO_VALUE) return HELD_BY_NOTHING;
    if (pressure == s.MAWPop) return s.MAWPopBy;
    return pressure == s.MAWPseat ? s.MAWPseatBy : HELD_BY_NOTHING;
}

void KEEP_FINAL_PASS(const FLANGE_STATE& s) {
    keep_given(s);
    if (NOTED.stage >= AT_LOADS) keep_loads(s);
    if (NOTED.stage >= AT_BOLTING) keep_bolting(s);
    if (NOTED.stage >= AT_ARMS) keep_arms(s);
    if (NOTED.stage >= AT_MOMENTS) keep_moments(s);
    if (NOTED.stage >= AT_FACTORS) keep_factors(s);
    if (NOTED.stage >= AT_STRESSES) keep_stresses(s);
    if (NOTED.rated) keep_rating(s);
    if (NOTED.stage < AT_END) return;
    FOUND.weight_finished = s.weightFinished;
    FOUND.weight_forging = s.weightForging;
}

void CLOSE_RESULTS(const DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    FOUND.mawp = *d.args->mawp;
    FOUND.map_nc = *d.args->mapNc;
    FOUND.mawp_by = d.mawpBy;
    FOUND.map_nc_by = d.mapNcBy;
    if (d.failureRow >= 0) {
        FOUND.failure_ca = d.failureCa;
        FOUND.failure_by = d.failsAlready ? FAILED_ALREADY : d.governing;
    }
    FOUND.status = CALCULATED;
    if (s.error == DESIGN_GAVE_UP) FOUND.status = GAVE_UP;
    if (s.error == BOLT_AREA_SHORT) {
        FOUND.status = AREA_SHORT;
        FOUND.Am = s.Am;
        FOUND.Ab = s.Ab;
    }
}

} // namespace tarvane
