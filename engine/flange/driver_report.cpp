#include "flange/driver_report.h"

#include "bolting/bolt_spacing.h"
#include "flange/attached_shell.h"
#include "flange/results.h"
#include "flange/rigidity.h"
#include "frame/element_tables.h"
#include "frame/numbers.h"
#include "materials/modulus.h"
#include "report/lines.h"
#include "toughness/pwht.h"

namespace tarvane {

Real FLANGE_STRESS_RATIO = 0.0f, FLANGE_SHELL_RATIO = 0.0f;
Int FLANGE_PWHT_REQUIRED = 0, FLANGE_P_NUMBER_ONE = 0, FLANGE_GROUP_CODE = 0;

namespace {

// A template with the trimmed area label in it.
void area_line(std::string_view before, std::string_view behind, Real area) {
    LinePieces text;
    text.text(before).blanks(1).text(unit_label(Kind::area)).text(behind);
    NUMBER_LINE(text.view(), {as_area(area)});
}

// ---- rigidity --------------------------------------------------------------------------------------

void rigidity_moduli(FLANGE_STATE& s) {
    if (up_to_asme_viii(moduleCode)) {
        SET_CHART(s.chartName.columns(1, 12));
        s.Ecold = ASMEMOD(AMBIENT, s.materialClass, moduleCode) * 1000000.0f;
        s.Ehot = ASMEMOD(s.Tdesign, s.materialClass, moduleCode) * 1000000.0f;
    } else {
        const Real chart_class = CHART_CLASS(s.chartName.columns(1, 5));
        MODULUS(chart_class, s.Ecold, AMBIENT);
        MODULUS(chart_class, s.Ehot, s.Tdesign);
    }
}

Real rigidity_correction(const DRIVER_STATE& d, Real t) {
    const FLANGE_STATE& s = *d.s;
    if (asme_viii(moduleCode) && d.setupNoCorrection == 1) return 1.0f;
    const Int form = a98_addenda() && d.setupNoCorrection == 0 ? PD_5500 : moduleCode;
    Real Deltab, cfDen;
    return BOLT_CORRECTION_FACTOR(form, s.C, s.nBolts, s.aNominal, t, s.ct, s.m, Deltab, cfDen);
}

// The factors of the two blocks.
RIGIDITY_CALL at_required_thickness(const DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    RIGIDITY_FACTORS factors = FACTORS_IN_HAND(s);
    factors.lambda = s.lambdaReq;
    return RIGIDITY_ARGUMENTS(s, factors, s.t, rigidity_correction(d, s.t));
}
RIGIDITY_CALL at_given_thickness(const DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    RIGIDITY_CALL call =
        RIGIDITY_ARGUMENTS(s, FACTORS_IN_HAND(s), d.tGiven, rigidity_correction(d, d.tGiven));
    call.Mop = s.MopFirst;
    call.Matm = s.MatmFirst;
    return call;
}

void keep_indices(const FLANGE_STATE& s, Real (&J)[2]) {
    if (s.fullFace) return;
    J[OPERATING] = s.J[1];
    J[SEATING] = s.J[0];
}

void rigidity_block(FLANGE_STATE& s, RIGIDITY_CALL call, Real (&J)[2]) {
    s.CF = call.CF;
    RIGIDITY_INDEX(s, call, RIGIDITY_FULL);
    keep_indices(s, J);
    if (call.Jmax <= 0.001f && !s.fullFace)
        TEXT_LINE("Warning: No rigidity calculation possible for this geometry. Check hub and "
                  "other dimensions.");
}

bool rigidity_asked(const DRIVER_STATE& d) {
    return d.s->type != BLIND && d.rigidityWanted && d.s->standardFlange == 0;
}

void rigidity_step(DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    if (!rigidity_asked(d)) return;
    rigidity_moduli(s);
    const bool rules = NEW_DIV_2_RULES;
    NEW_DIV_2_RULES = d.rigidityDiv2;
    if (!s.fullFace) HEADING("Flange Rigidity Based on Required Thickness [ASME]:");
    rigidity_block(s, at_required_thickness(d), FOUND.J_required);
    BLANK_LINE();
    HEADING("Flange Rigidity Based on Given Thickness [ASME]:");
    rigidity_block(s, at_given_thickness(d), FOUND.J_given);
    NEW_DIV_2_RULES = rules;
}

// The indices with the moduli of the final pass. They are those of the step when code and moduleCode
// select the same tables.
void rigidity_values(const DRIVER_STATE& d) {
    FLANGE_STATE& s = *d.s;
    if (!rigidity_asked(d) || up_to_asme_viii(moduleCode) != s.asme()) return;
    const Real kept[] = {s.J[0], s.J[1]};
    RIGIDITY_CALL required = at_required_thickness(d), given = at_given_thickness(d);
    RIGIDITY_INDEX(s, required, RIGIDITY_SILENT);
    keep_indices(s, FOUND.J_required);
    RIGIDITY_INDEX(s, given, RIGIDITY_SILENT);
    keep_indices(s, FOUND.J_given);
    s.J[0] = kept[0];
    s.J[1] = kept[1];
}

// ---- attached shell and toughness --------------------------------------------------------------------

// Ratio of the vessel's pressure to the MAWP of the attached shell; 0.0 when there is none.
Real attached_shell_ratio(const DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    const bool none = s.type == LOOSE_RING || s.type == LAP_JOINT || s.type == BLIND;
    if (none || s.element <= 0) return 0.0f;
    const Real E = max(element_row(s.element).joint_efficiency, 0.8f);
    Real shellMAWP = 0.0f;
    FOUND.shell_required = ATTACHED_SHELL_THICKNESS(
        s.code, *d.args->pOperating, s.Dshell, d.caShell, 0.0f, s.Sna, E, 0, d.tShell, shellMAWP);
    FOUND.shell_mawp = shellMAWP;
    FOUND.shell_ratio = min(*d.args->pOperating / shellMAWP, 1.0f);
    return FOUND.shell_ratio;
}

// Governing thickness for heat treatment; false when there is none to judge by.
bool governing_thickness(const DRIVER_STATE& d, Real& thickness, bool& noCylinder) {
    const FLANGE_STATE& s = *d.s;
    const bool attached = s.attachment >= 1 && s.attachment <= 4;
    const Real ring = min(d.tGiven, d.tShell);
    switch (s.type) {
    case LAP_JOINT:
    case BLIND:
        thickness = d.tGiven * 0.25f;
        return true;
    case INTEGRAL_SLIP_ON:
    case INTEGRAL_RING:
    case LOOSE_SLIP_ON:
    case LOOSE_RING:
        thickness = ring;
        if ((s.type == INTEGRAL_SLIP_ON || s.type == LOOSE_SLIP_ON) && s.go > 0.0001f)
            thickness = min(s.go, d.tShell);
        if (attached)
            return !((s.type == INTEGRAL_RING || s.type == LOOSE_RING) && d.tShell <= d.tGiven);
        if (thickness <= 0.001f) {
            noCylinder = true;
            return false;
        }
        return true;
    default:
        thickness = s.go;
        if (!(s.go <= 0.001f)) return true;
        thickness = ring;
        return !(attached && d.tShell <= d.tGiven);
    }
}

// The values for the toughness routines; false when there are none to pass on.
bool toughness_values(const DRIVER_STATE& d, Real& thickness, bool& noCylinder) {
    const FLANGE_STATE& s = *d.s;
    if (from_pd_5500(s.code) || !(s.P > 0.0f) || !(d.mapAmbient > 0.0f) || s.standardFlange != 0)
        return false;
    if (!governing_thickness(d, thickness, noCylinder)) return false;
    FOUND.pwht_thickness = thickness;
    FOUND.stress_ratio = min(*d.args->pOperating / d.mapAmbient, 1.0f);
    return true;
}

void toughness_hook(DRIVER_STATE& d, Real shellRatio) {
    const FLANGE_STATE& s = *d.s;
    Real thickness;
    if (!toughness_values(d, thickness, d.noCylinder)) return;
    if (s.element >= 1 && s.element <= ELEMENT_ROWS) {
        const ELEMENT_ROW& row = element_row(s.element);
        Real number;
        Int pNumber;
        PARSE_REAL(row.heat_treatment.columns(8, 15), number, pNumber);
        const Int forced = row.first_flag == '1' ? 1 : 0;
        const Int preheat = row.second_flag == '1' ? 1 : 0;
        PWHT_NEEDED(row.material.view(), pNumber, s.code, forced, thickness, FLANGE_PWHT_REQUIRED,
                    FLANGE_P_NUMBER_ONE, preheat, FLANGE_GROUP_CODE);
    }
    FLANGE_STRESS_RATIO = -FOUND.stress_ratio;
    if (shellRatio >= 0.001f && shellRatio <= 1.0f && G_PER_ELEMENT_RATIO == 1)
        FLANGE_SHELL_RATIO = -min(*d.args->pOperating / d.mapAmbient, shellRatio);
}

// ---- attachment welds ----------------------------------------------------------------------------------

constexpr std::string_view NO_HUB_SIZE =
    "= max( 1.4 * tn, (6 mm or 1/4 inch ) )  no hub size given";
constexpr std::string_view NO_HUB_LEG = "= max( tn, ( 6 mm or 1/4 inch ) )  no hub size given";

void leg_lines(std::string_view symbol, Real leg) {
    TEXT_LINE(symbol);
    VALUE_LINE(leg, Kind::thickness);
}

// UW-21: minimum welds of a rated slip on flange.
void standard_flange_welds(const FLANGE_GIVEN& s, Real tn, Real Lmin) {
    HEADING("Minimum Attachment Weld Size for Slip on Flanges, UW-21, [xmin]:");
    if (s.go > 0.001f)
        leg_lines("= min( 1.4 * tn, G0 )", min(1.4f * tn, s.go));
    else
        leg_lines(NO_HUB_SIZE, max(1.4f * tn, Lmin));
    HEADING("Minimum Attachment Weld Size for Slip on Flanges, UW-21, [ymin]:");
    leg_lines("= min( tn, (6 mm or 1/4 inch ))", min(tn, Lmin));
}

// Figure 2-4, sketches (7) and (8) to (10a).
void integral_welds(const FLANGE_GIVEN& s, Real tShell, Real tn, Real Lmin) {
    if (!(s.go > 0.001f)) {
        leg_lines(NO_HUB_LEG, tn); // no maximum is taken here, whatever the line says
        return;
    }
    if (tn > 0.001f) {
        TEXT_LINE("For Slip on Flanges designed as Optional per 2-4 sketches (8-10a):");
        leg_lines("= min( ( max( min( tn, tx ),( 6 mm or 1/4 inch ) )/0.7 ), g0 )",
                  min(max(min(tn, 2.0f * s.go), Lmin) / 0.7f, s.go));
    }
    if (s.type != INTEGRAL_RING) return;
    TEXT_LINE("For Slip on Flanges designed as Integral per 2-4 sketch (7):");
    leg_lines("= max( 0.25( g0 - ci ), ( 6 mm or 1/4 inch ) )", max(0.25f * (s.go - s.ci), Lmin));
    if (std::fabs(s.go - tShell) > 0.01f && tShell > 0.001f)
        TEXT_LINE("Warning - Check the attached shell thickness and g0, they are different.");
}

void loose_welds(const FLANGE_GIVEN& s, Real tn, Real Lmin, Real hubRequired) {
    if (s.go <= 0.001f)
        leg_lines(NO_HUB_LEG, max(tn, Lmin));
    else
        leg_lines("= max( min( tn, 2 * cyl reqd thk), (6 mm or 1/4 inch ) )",
                  max(min(tn, 2.0f * hubRequired), Lmin));
}

} // namespace

void BOLT_AREA_RESULTS(DRIVER_STATE& d) {
    *d.args->tReq = -d.s->Am;
    d.record(200) = d.s->Ab;
}

void BOLT_AREA_FAILURE(DRIVER_STATE& d) {
    IWRITE = IWRTFL = 1;
    if (d.element1 <= 0) {
        BOLT_AREA_RESULTS(d);
        return;
    }
    REREAD_WITH_INPUT_REPORT(d);
    LinePieces line;
    line.text("Flange Bolt Area Problem Encountered for").blanks(1);
    line.text(d.s->description.view()).write();
    area_line("The req'd bolt area (@3", ") is > than the actual", d.s->Am);
    area_line("bolt area (@3", ") for this flange design.  Increase", d.s->Ab);
    TEXT_LINE("the number or size of bolts and attempt the analysis again.");
}

void RIGIDITY_AND_SHELL_STEPS(DRIVER_STATE& d) {
    rigidity_step(d);
    toughness_hook(d, attached_shell_ratio(d));
}

void RIGIDITY_AND_SHELL_VALUES(const DRIVER_STATE& d) {
    rigidity_values(d);
    attached_shell_ratio(d);
    Real thickness;
    bool noCylinder = false;
    toughness_values(d, thickness, noCylinder);
}

void MISSING_CYLINDER_LINES(const DRIVER_STATE& d) {
    if (!d.noCylinder || from_pd_5500(moduleCode)) return;
    TEXT_LINE("Could not determine the MDMT for this flange, because an");
    TEXT_LINE("adjoining cylinder was not attached. The MDMT calculation");
    TEXT_LINE("depends on the attached cylinder, please add one.");
}

void ATTACHMENT_WELDS(const DRIVER_STATE& d) {
    const FLANGE_STATE& s = *d.s;
    const bool welded = s.type >= INTEGRAL_SLIP_ON && s.type <= LOOSE_RING;
    if (s.code != ASME_VIII_1 || !(d.tShell > 0.0f) || !welded || !(s.P > 0.0f) || d.element1 <= 0)
        return;
    const Real tn = d.tShell - d.caShell;
    const Real Lmin = C_ONE_QUARTER;
    if (s.standardFlange == 1) {
        standard_flange_welds(s, tn, Lmin);
        return;
    }
    HEADING("Required Fillet Weld Leg size for Slip on Flanges:");
    if (s.type == INTEGRAL_SLIP_ON || s.type == INTEGRAL_RING)
        integral_welds(s, d.tShell, tn, Lmin);
    else
        loose_welds(s, tn, Lmin, d.hubRequired);
}

void RESET_DRIVER_REPORT() {
    FLANGE_STRESS_RATIO = FLANGE_SHELL_RATIO = 0.0f;
    FLANGE_PWHT_REQUIRED = FLANGE_P_NUMBER_ONE = FLANGE_GROUP_CODE = 0;
}

} // namespace tarvane
