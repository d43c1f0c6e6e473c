// FLANGE_CALC: prepares the passes of the kernel, harvests the silent ones, opens the report for the
// one that the engineer reads, and collects the results.
#include "flange/driver.h"

#include "flange/driver_loops.h"
#include "flange/driver_report.h"
#include "flange/geometry.h"
#include "flange/hub.h"
#include "flange/input_report.h"
#include "flange/kernel.h"
#include "flange/results.h"
#include "flange/shape_factors.h"
#include "flange/validation.h"
#include "frame/element_tables.h"
#include "frame/units.h"
#include "host/file_identity.h"
#include "materials/modulus.h"
#include "openings/flat_head_openings.h"
#include "report/furniture.h"
#include "report/lines.h"

namespace tarvane {

namespace {

void entry(DRIVER_STATE& d) {
    FLANGE_ARGUMENTS& args = *d.args;
    FLANGE_STATE& s = *d.s;
    s.looseReverse = s.stopped = s.moduliHeld = false;
    DECIMAL_COMMA = (*args.decimalComma & 1) != 0;
    OPEN_LINE_STORE();
    s.code = *args.code;
    G_CURRENT_DIV_2 = s.code == ASME_VIII_2 && present_division_2();
    s.MAWPopFixed = s.MAWPseatFixed = -1.0f;
    d.setupNoCorrection = setup_truncated(43);
    d.rigidityDiv2 = moduleCode == ASME_VIII_2 && present_division_2();

    d.element1 = d.record.whole(1);
    d.ciGiven = d.record(9);
    d.tGiven = d.record(8);
    d.tShell = d.record(71);
    d.caShell = d.record(74);

    for (Int i = 120; i <= 128; ++i)
        d.record(i) = 0.0f;
    s.lambdaReq = 0.0f;
    *args.mapNc = *args.mawp = NO_VALUE;
    s.extLoad = s.pressureArea = s.hpPerP = s.hpPrimePerP = s.dPeq = 0.0f;

    s.element1 = d.element1;
    s.reportKernel = *args.reportKernel;
    s.quietOverstress = *args.quietOverstress;
    s.rigidity = *args.rigidity;
    s.corrodedRigidity = *args.corrodedRigidity;
    s.standardFlange = *args.standardFlange;
    s.element = *args.element;
    s.boltRow = *args.boltRow;
    s.boltReference = d.record.whole(75);
    s.jointE = *args.jointE;
    s.coverFactor = 1.0f;
    s.coverFlag = 0;
}

void read_units(const FLANGE_RECORD& record, const char* text) {
    UNITS.thickness = record(100);
    UNITS.pressure = record(101);
    UNITS.diameter = record(102);
    UNITS.stress = record(103);
    UNITS.further = record(104);
    UNITS.force = record(105);
    UNITS.moment = record(106);
    UNITS.area = record(107);
    UNITS.temperature_offset = record(108);
    UNITS.temperature_scale = record(109);
    UNITS.weight = record(110);

    UNITS.thickness_label = std::string_view(text + 285, 3);
    UNITS.pressure_label = std::string_view(text + 300, 10);
    UNITS.diameter_label = std::string_view(text + 315, 3);
    UNITS.stress_label = std::string_view(text + 330, 10);
    UNITS.further_label = std::string_view(text + 345, 10);
    UNITS.force_label = std::string_view(text + 360, 3);
    UNITS.moment_label = std::string_view(text + 375, 6);
    UNITS.area_label = std::string_view(text + 390, 6);
    UNITS.temperature_label = "\xB0";
    UNITS.temperature_label(2) = text[405];
    UNITS.weight_label = std::string_view(text + 420, 3);
}

// A not-a-number in the first element becomes a negative number, too, but such a record promises no
// text beyond the slots of every form.
bool is_stand_alone(const DRIVER_STATE& d) { return d.element1 < 0 && d.record(1) < 0.0f; }

// The stand-alone form brings its own units, switches and destination.
void stand_alone_form(DRIVER_STATE& d) {
    NEW_DIV_2_RULES = d.s->code == ASME_VIII_2 && *d.args->div2Edition == 0;
    d.rigidityDiv2 = NEW_DIV_2_RULES;
    IOUT = -1;
    if (*d.args->element == 1) CODE_A98_ADDENDA = 1;
    read_units(d.record, d.args->text);
    SETUP[42].real = d.record(74);
    d.setupNoCorrection = setup_truncated(43);
    G_MATL_METRIC = d.record.whole(76);
    G_FORCE_DIV1 = d.record.whole(77);
    G_D2_CLASS = d.record.whole(78);
}

void ambient_allowables(FLANGE_GIVEN& s) {
    s.Sfo = s.Sfa;
    s.Sb = s.Sa;
}

void as_new(FLANGE_GIVEN& s) { s.ci = s.ct = 0.0f; }

void patterned_openings(FLANGE_GIVEN& s) {
    if (s.type != BLIND || s.patternedHoles != 1) return;
    OPENINGS_CALL call{.kind = BLIND_COVER,
                       .headDia = s.C,
                       .d1 = s.D1,
                       .d2 = s.D2,
                       .edge1 = s.edge1,
                       .edge2 = s.edge2,
                       .pitch = s.pitch,
                       .material = 10,
                       .Cin = 0.0f};
    PATTERNED_OPENINGS(call);
    NOTE_OPENINGS(call);
    s.coverFactor = call.coverFactor;
    s.coverFlag = call.coverFlag;
}

// A design begins with a hub that holds its pressure. The length of the new hub is scaled by a value
// that nothing assigns, so h becomes the not-a-number of 0/0, here and in the record.
void thicken_hub(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    const bool hub = s.type == INTEGRAL_WELD_NECK || s.type == INTEGRAL_SLIP_ON ||
                     s.type == LOOSE_SLIP_ON || s.type == REVERSE_WELD_NECK;
    if (s.kind != DESIGN || !hub) return;
    const Int gates[] = {IWRITE, IOUT};
    IWRITE = IOUT = 0;
    HUB_SMALL_END(s, d.ciGiven, true, d.hubRequired, d.pHub);
    if (s.go < d.hubRequired) {
        s.go = d.hubRequired;
        s.g1 = s.go > 1.5f ? 1.5f * s.go : 2.0f * s.go;
        static volatile Real scale = 0.0f;
        const Real factor = scale;
        const Real length = 3.0f * (s.g1 - s.go) + s.go + 0.0626f;
        s.h = static_cast<Real>(truncated(factor * length)) / factor;
        d.record(16) = s.go;
        d.record(17) = s.g1;
        d.record(18) = s.h;
    }
    IWRITE = gates[0];
    IOUT = gates[1];
}

// Ambient allowables at the vessel's pressure, corroded.
bool ambient_pass(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    ambient_allowables(s);
    s.t = d.tGiven;
    const Real designP = s.P;
    s.P = *d.args->pOperating;
    s.Tdesign = AMBIENT;
    if (!RUN_KERNEL(d)) return false;
    s.P = designP;
    d.mapAmbient = s.MAWPop;
    return true;
}

// Output 6, one of the two pressures of the latest pass.
void give_new_and_cold(DRIVER_STATE& d, Real pressure) {
    *d.args->mapNc = pressure;
    d.mapNcBy = HELD_BY(*d.s, pressure);
}

bool new_and_cold_pass(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    REREAD(d);
    as_new(s);
    ambient_allowables(s);
    s.t = d.tGiven;
    if (!RUN_KERNEL(d)) return false;
    *d.args->tReqNewCold = FOUND.t_req_new_cold = s.tOut;
    if (s.type == BLIND && s.standardFlange == 0) {
        if (s.fullFace && from_pd_5500(s.code))
            give_new_and_cold(d, s.MAWPseat);
        else
            NEW_AND_COLD_ITERATION(d);
    } else {
        give_new_and_cold(d, NEW_AND_COLD_PRESSURE(s.MAWPop, s.MAWPseat));
    }
    return !s.stopped;
}

bool new_at_design_pass(DRIVER_STATE& d) {
    if (d.element1 <= 0) return true;
    REREAD(d);
    as_new(*d.s);
    if (!RUN_KERNEL(d)) return false;
    *d.args->tReqNew = FOUND.t_req_new = d.s->tRequired;
    return true;
}

void internal_pressure_outputs(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    FLANGE_ARGUMENTS& args = *d.args;
    const FLANGE_RECORD& record = d.record;
    if (s.MAWPop > 0.01f && s.MAWPseat > 0.01f)
        *args.mawp = min(s.MAWPop, s.MAWPseat);
    else if (s.MAWPseat < 0.01f && s.MAWPop > 0.01f)
        *args.mawp = s.MAWPop;
    if (*args.mapNc <= 0.0001f) give_new_and_cold(d, min(s.MAWPop, s.MAWPseat));
    d.mawpBy = d.pHub < *args.mawp ? BY_HUB : HELD_BY(s, *args.mawp);
    *args.mawp = min(*args.mawp, d.pHub);
    *args.tReq = FOUND.t_req = s.tRequired;

    record(120) = s.W;
    record(121) = s.Wm1;
    record(122) = s.Wm2;
    record(123) = s.G;
    record(124) = s.Mop;
    record(125) = s.Matm;
    record(126) = s.Ab;
    record(127) = s.Am;
    record(128) = s.HG;
    LAP_JOINT_THICKNESS(s);
    record(137) = s.extLoad;
    record(138) = s.pressureArea;
    record(139) = s.hpPerP;
    record(140) = s.hpPrimePerP;
    record(141) = s.dPeq;
    if (d.kindGiven != DESIGN) return;
    record(130) = static_cast<Real>(s.nBolts);
    record(131) = s.dh;
    record(132) = s.C;
    record(133) = s.g1;
    record(134) = s.go;
    record(135) = s.h;
    record(136) = s.A;
    record(142) = s.Fod;
    record(143) = s.Fid;
    record(144) = s.Go;
    record(145) = s.Gi;
}

// Writes its lines; what it does not calculate stays as it was.
void hub_small_end(DRIVER_STATE& d) {
    Real required = NO_VALUE;
    HUB_SMALL_END(*d.s, d.ciGiven, false, required, d.pHub);
    FOUND.hub_required = required;
    if (required != NO_VALUE) d.hubRequired = required;
    if (d.pHub != HUB_NOT_RATED) FOUND.hub_mawp = d.pHub;
}

// The pass that the engineer reads.
bool report_pass(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    if (*d.args->writeCase == 1) IWRTFL = 1;
    REREAD_WITH_INPUT_REPORT(d);
    patterned_openings(s);
    hub_small_end(d);
    if (d.failureRow >= 0) FAILURE_TABLE[d.failureRow].hubRequired = d.hubRequired;

    if (s.Wmo > 1.0f && s.Wmo > s.Wm1 - 0.5f && s.P > 0.001f && d.element1 > 0) {
        MATING_LOAD_ITERATIONS(d);
        if (s.stopped) return false;
    } else if (s.Wm1 > s.Wmo && s.matingLoads(1) == 'Y') {
        s.matingLoads = "N";
    }
    if (!RUN_KERNEL(d)) return false;
    KEEP_FINAL_PASS(s);
    internal_pressure_outputs(d);
    return true;
}

bool internal_pressure(DRIVER_STATE& d) {
    if (!ambient_pass(d)) return false;
    if (!new_and_cold_pass(d)) return false;
    if (!new_at_design_pass(d)) return false;
    if (d.s->error == BOLT_AREA_SHORT) return true;
    return report_pass(d);
}

bool external_pressure(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    if (*d.args->writeCase == 2) IWRTFL = 1;
    FLANGE_INPUT_REPORT(s);
    SETTLE_ALLOWANCES(s);
    if (!RUN_KERNEL(d)) return false;
    KEEP_FINAL_PASS(s);
    *d.args->mawp = s.MAWPop;
    d.mawpBy = HELD_BY(s, s.MAWPop);
    *d.args->tReq = FOUND.t_req = s.t;
    d.record(123) = s.G;
    LAP_JOINT_THICKNESS(s);
    return true;
}

// The passes; false after a fatal stop that returned.
bool calculate(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    patterned_openings(s);
    d.rigidityWanted = s.rigidity == 1;
    const bool hubbed = s.type <= INTEGRAL_RING || s.type >= BLIND;
    if (s.standardFlange == 0 && s.P > 0.0f && d.element1 > 0 && hubbed &&
        G_FAILURE_CORROSION == 1) {
        FAILURE_CORROSION_LOOP(d);
        if (s.stopped) return false;
    }
    thicken_hub(d);
    if (!(s.P < 0.0f ? external_pressure(d) : internal_pressure(d))) return false;
    FAILURE_CORROSION_REPORT(d);

    if (IOUT <= 0) {
        if (d.element1 <= 0 && s.error > 0) BOLT_AREA_RESULTS(d);
    } else if (s.error == BOLT_AREA_SHORT) {
        BOLT_AREA_FAILURE(d);
    } else {
        RIGIDITY_AND_SHELL_STEPS(d);
    }
    if (IOUT <= 0 && s.error != BOLT_AREA_SHORT) RIGIDITY_AND_SHELL_VALUES(d);
    CLOSE_RESULTS(d);
    return !s.stopped;
}

// All of FLANGE_CALC but the report gates, which it restores.
void flange_steps(FLANGE_ARGUMENTS& arguments) {
    FLANGE_STATE& s = FLANGE;
    DRIVER_STATE d{.args = &arguments, .s = &s, .record = FLANGE_RECORD(arguments.record)};
    entry(d);
    if (is_stand_alone(d)) stand_alone_form(d);

    REREAD(d);
    BEGIN_RESULTS(d);
    s.error = 0;
    IWRTFL = 1;
    d.kindGiven = s.kind;
    CHECK_FLANGE_INPUT(s, s.error);
    IWRTFL = 0;
    if (s.error != 0) FOUND.status = REFUSED;
    if (s.error == 0 && !calculate(d)) return;

    MISSING_CYLINDER_LINES(d);
    if (d.element1 <= 0) {
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = UNITS.diameter > 1.5f ? 1 : 0;
        SET_METRIC_CONSTANTS();
    }
    ATTACHMENT_WELDS(d);
    CLOSING_NOTE();
}

} // namespace

void REREAD(DRIVER_STATE& d) {
    READ_FLANGE_RECORD(*d.s, d.record, d.args->text, TEXT_SLOT);
    REWRITE_LOOSE_REVERSE(*d.s);
}

void REREAD_WITH_INPUT_REPORT(DRIVER_STATE& d) {
    READ_FLANGE_RECORD(*d.s, d.record, d.args->text, TEXT_SLOT);
    FLANGE_INPUT_REPORT(*d.s);
    SETTLE_ALLOWANCES(*d.s);
    REWRITE_LOOSE_REVERSE(*d.s);
}

bool RUN_KERNEL(DRIVER_STATE& d) {
    ANALYZE_FLANGE(*d.s);
    *d.args->rigidity = d.s->rigidity;
    return !d.s->stopped;
}

Real NEW_AND_COLD_PRESSURE(Real MAWPop, Real MAWPseat) {
    Real pressure = min(MAWPop, MAWPseat);
    if (MAWPseat > 1.0f && MAWPop > 10.0f * MAWPseat) pressure = MAWPseat;
    if (pressure > -1.0f && pressure < 1.0f) pressure = NO_VALUE;
    return pressure;
}

void FLANGE_CALC(FLANGE_ARGUMENTS& arguments) {
    const Int gates[] = {IWRITE, IOUT};
    const LOOKS_ARE for_all_passes(Looks::shared);
    flange_steps(arguments);
    IWRITE = gates[0];
    IOUT = gates[1];
}

void RESET_FLANGE() {
    FLANGE = FLANGE_STATE{};
    const Int rows = FAILURE_TABLE_GIVEN ? ELEMENT_ROWS : FAILURE_ROWS;
    for (Int i = 0; i < rows; ++i)
        FAILURE_TABLE[i] = FAILURE_ROW{};
    FAILURE_ROWS = 0;
    UG39_VIOLATION = false;
    RESET_RESULTS();
    RESET_DRIVER_REPORT();
}

} // namespace tarvane
