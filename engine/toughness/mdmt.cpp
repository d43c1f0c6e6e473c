// MDMT_ELEMENT: the required temperature, the limit of thickness, and which rules apply.
#include "toughness/mdmt_stages.h"

#include "frame/element_tables.h"
#include "frame/numbers.h"
#include "frame/switches.h"
#include "toughness/impact_table.h"
#include "toughness/mdmt_div2.h"
#include "toughness/temperature_lines.h"
#include "toughness/ucs66_curves.h"

namespace tarvane {

MDMT_RESULTS MDMT_FOUND = MDMT_RESULTS_AT_LOAD;

namespace {

Real required_temperature(Int Element) {
    Int field = 0;
    if (G_TOUGHNESS.MdmtSkip == 0 && knows_own_temperatures())
        field = LIS_ELEMENT_HAS_OWN_MDMT(Element) || Element == -4 ? 1 : 2;
    Real T;
    Int whole;
    PARSE_REAL(HOST_RECORD.required_temperature[field].view(), T, whole);
    return T;
}

void prepare(MDMT_CALL& a) {
    a.Trequired = required_temperature(a.Element);
    a.Tmin = a.Mdmt = a.Tug20 = NO_TEMPERATURE;
    a.padRatio = a.Ratio;
    a.padReduction = a.Reduction;
    a.ratioKind = MDMT_CALL::no_ratio;
    a.Ratio = -1.0f;
    if (!ReductionsAllowed() || a.PadGoverns == 1) a.Reduction = 0.0f;
}

void beyond_limit_lines() {
    TEXT_LINE("Warning:", WARNING_STYLE);
    TEXT_LINE("The minimum metal temperature could not be computed because the", WARNING_STYLE);
    LinePieces line;
    line.text("governing thickness for this component was greater than ");
    line.bare(as_thickness(C_FOUR), 4).blanks(1).text(unit_label(Kind::thickness)).text(".");
    line.write(WARNING_STYLE);
    TEXT_LINE("This component must be impact tested.", WARNING_STYLE);
}

Int rules_of(const MDMT_CALL& a) {
    const bool division1 = G_FORCE_DIV1 != 0;
    if (G_CURRENT_DIV_2 && !division1) return BY_DIV2_3_11;
    return a.Code == ASME_VIII_2 && !division1 ? BY_AM_218 : BY_UCS_66;
}

void note_given(const MDMT_CALL& a) {
    MDMT_RESULTS& f = MDMT_FOUND;
    f.rules = rules_of(a);
    f.code = a.Code;
    f.element = a.Element;
    f.curve = f.curve_taken = a.Curve;
    f.reductions_allowed = ReductionsAllowed() ? 1 : 0;
    f.pad_governs = a.PadGoverns;
    f.required = a.Trequired;
    f.tg = a.Tg;
    f.tg_net = a.Tg - a.c - a.Cext;
    f.tg_limit = C_FOUR;
}

void division_2(MDMT_CALL& a) {
    MDMT_DIV2_CALL figures{.Sy = a.Sy,
                           .Estar = a.Estar,
                           .Tnom = a.Tg,
                           .Ci = a.c,
                           .Cext = a.Cext,
                           .Pwht = a.Pwht,
                           .Curve = a.Curve,
                           .Tr = a.Tr,
                           .Tuser = a.Trequired,
                           .EstarUsed = a.EstarUsed};
    MDMT_DIV2_STAGES(figures);
    a.Tmin = figures.Tcurve;
    a.Mdmt = figures.Mdmt;
    a.Ratio = figures.Sr;
    a.EstarUsed = figures.EstarUsed;
    if (a.Curve >= 1 && a.Trequired < a.Mdmt) COUNT_WARNING(a);
}

} // namespace

// ---- stages of more than one path ----------------------------------------------------------------

void COUNT_WARNING(MDMT_CALL& a) {
    a.Warnings = static_cast<Int>(static_cast<std::uint32_t>(a.Warnings) + 1u);
}

void TAKE_REDUCTION(MDMT_CALL& a) {
    if (a.PadGoverns == 1) {
        a.Ratio = a.padRatio;
        a.Reduction = a.padReduction;
    }
    if (!ReductionsAllowed()) a.Reduction = 0.0f;
    a.Mdmt = max(a.Tmin - a.Reduction, COLDEST);
}

void LIMIT_WITHOUT_LOW_RATIO(MDMT_CALL& a) {
    const bool low = a.Mdmt >= COLDEST && a.Mdmt < COLD;
    if (!(low && a.Ratio <= a.Lim)) a.Mdmt = max(a.Mdmt, COLD);
}

void MDMT_RATIO_FLOOR(MDMT_CALL& a) {
    a.floored = false;
    if (G_TOUGHNESS.FloorSwitch != 1 || !ReductionsAllowed()) return;
    if (G_OLD_EDITION == 1) {
        a.floored = a.Ratio <= 0.4f;
        if (a.floored) a.Mdmt = -150.0f;
    } else {
        a.floored = a.Ratio <= 0.35f;
        if (a.floored) a.Mdmt = COLDEST;
    }
}

bool CREDIT_TAKEN(const MDMT_CALL& a) { return a.Pwht == 1 && a.Credit == 1; }

// ---- what is found -------------------------------------------------------------------------------

namespace {

Real computed(Real T) { return T == NO_TEMPERATURE ? NO_VALUE : T; }

} // namespace

void NOTE_LOWEST(Real T, LOWEST_BY by) {
    MDMT_RESULTS& f = MDMT_FOUND;
    if (T == NO_TEMPERATURE || !(f.lowest_by == LOWEST_BY_NOTHING || T < f.lowest)) return;
    f.lowest = T;
    f.lowest_by = by;
}

void NOTE_RATIO(const MDMT_CALL& a) {
    MDMT_RESULTS& f = MDMT_FOUND;
    f.ratio_kind = a.ratioKind;
    if (a.ratioKind == MDMT_CALL::no_ratio) return;
    f.ratio = a.Ratio;
    f.ratio_limit = a.Lim;
    f.estar_used = std::fabs(a.EstarUsed);
    f.reduction = a.Reduction;
}

void NOTE_TEMPERATURES(const MDMT_CALL& a, LOWEST_BY by) {
    MDMT_RESULTS& f = MDMT_FOUND;
    f.status = MDMT_CALCULATED;
    f.t_min = computed(a.Tmin);
    f.mdmt = computed(a.Mdmt);
    NOTE_LOWEST(a.Tmin, by);
    NOTE_LOWEST(a.Mdmt, a.floored ? LOWEST_BY_LOW_RATIO : LOWEST_BY_REDUCTION);
}

void NOTE_TESTED_AS_REQUIRED(const MDMT_CALL& a) {
    MDMT_FOUND.status = MDMT_CALCULATED;
    MDMT_FOUND.t_curve_by = AS_REQUIRED;
    NOTE_LOWEST(a.Trequired, LOWEST_AS_REQUIRED);
}

// ---- lines of more than one path -----------------------------------------------------------------

void LOWERED_LINE(const MDMT_CALL& a, std::string_view label) {
    if (a.Mdmt < a.Tmin) TEMPERATURE_LINE(label, a.Mdmt);
}

void IMPACT_TESTED_MATERIAL_LINES(Real Tmin) {
    NOTE_LINE("Note:");
    NOTE_LINE("This Material was specified as being an Impact Tested (Low Temperature) Material.");
    TEMPERATURE_LINE("Impact Test Temperature provided per Specification  ", Tmin);
}

void IMPACT_TESTED_ELEMENT_NOTE() {
    NOTE_LINE("Note: This Element/Detail was specified as being Impact Tested.");
}

void USER_TEMPERATURE_LINE(Real Tmin) {
    TEMPERATURE_LINE("Impact Test Temperature entered by user             ", Tmin);
}

// ---- the routine -----------------------------------------------------------------------------------

void MDMT_ELEMENT(MDMT_CALL& call) {
    MDMT_CALL& a = call;
    BEGIN_MDMT_RESULTS();
    prepare(a);
    note_given(a);
    if (!(a.Tg - a.c - a.Cext <= C_FOUR) && a.Curve <= CURVE_D) {
        MDMT_FOUND.status = MDMT_BEYOND_LIMIT;
        MDMT_FOUND.impact_tests = 1;
        return beyond_limit_lines();
    }
    MDMT_FOUND.status = MDMT_NO_CURVE; // until a path finds something
    switch (MDMT_FOUND.rules) {
    case BY_DIV2_3_11:
        return division_2(a);
    case BY_AM_218:
        return MDMT_AM218(a);
    default:
        if (a.Curve >= CURVE_A && a.Curve <= IMPACT_TESTED_CURVE) return MDMT_UCS66(a);
        if (a.Curve == EXEMPT_CURVE) MDMT_FOUND.exempt = EXEMPT_BY_CURVE;
    }
}

} // namespace tarvane
