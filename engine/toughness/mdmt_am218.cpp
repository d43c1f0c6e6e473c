// AM-218 of the old Division 2.
#include "materials/material_record.h"
#include "toughness/impact_table.h"
#include "toughness/mdmt_stages.h"
#include "toughness/temperature_lines.h"
#include "toughness/ucs66_curves.h"

namespace tarvane {

namespace {

constexpr Int AM218_ROWS = 60; // with the row after them up to 4.0 in

void minimum_temperature(MDMT_CALL& a) {
    constexpr Real START[] = {-20.0f, -50.0f, -55.0f}; // curves B, C, D outside the table
    if (a.Curve == CURVE_A) {
        a.Tmin = max(UCS66_POLYNOMIAL(CURVE_A, a.Tg), 18.0f);
    } else if (has_curve(a.Curve)) {
        a.Tmin = START[a.Curve - CURVE_B];
        UCS66_NEARER_ROW(a.Curve, a.Tg, AM218_ROWS, a.Tmin);
    }
}

void form_ratio(MDMT_CALL& a) {
    if (a.Tr <= 0.0f) {
        a.Ratio = min(std::fabs(a.Tr), 1.0f);
        a.ratioKind = MDMT_CALL::stress_ratio;
    } else {
        a.Ratio = min(a.Tr / (a.Tg - a.c - a.Cext), 1.0f);
        a.ratioKind = MDMT_CALL::thickness_ratio;
        MDMT_FOUND.t_ratio = a.Tg - a.c - a.Cext;
    }
}

void note_test(const MDMT_CALL& a, TEMPERATURE_SOURCE source) {
    MDMT_FOUND.t_curve_by = source;
    MDMT_FOUND.impact_temperature = a.Tmin;
    NOTE_TEMPERATURES(a, LOWEST_BY_IMPACT_TEST);
}

void impact_tested(MDMT_CALL& a) {
    MATERIAL_RECORD record;
    Int status;
    READ_MATERIAL(a.Code, a.Spec, a.Index, status, record);
    if (record.impactTemperature < 1) {
        a.Tmin = a.Mdmt = static_cast<Real>(record.impactTemperature);
        note_test(a, OF_SPECIFICATION);
        IMPACT_TESTED_MATERIAL_LINES(a.Tmin);
        return;
    }
    if (!G_IMPACT.UserTable) {
        NOTE_TESTED_AS_REQUIRED(a);
        return IMPACT_TESTED_ELEMENT_NOTE();
    }
    Real T;
    IMPACT_TEST_TEMPERATURE(a.Spec, T, a.Kind);
    if (!(T < 99.0f)) return NOTE_TESTED_AS_REQUIRED(a);
    a.Tmin = a.Mdmt = T;
    note_test(a, OF_USER);
    USER_TEMPERATURE_LINE(a.Tmin);
}

void ratio_lines(const MDMT_CALL& a) {
    const Real tg = as_thickness(a.Tg), tr = as_thickness(a.Tr), c = as_thickness(a.c);
    const Real reduction = as_temperature_difference(a.Reduction);
    if (a.ratioKind == MDMT_CALL::stress_ratio) {
        NUMBER_LINE("Pressure Ratio = @3, Temperature Reduction = @0", {a.Ratio, reduction});
    } else {
        if (a.PadGoverns == 1)
            NUMBER_LINE("Govrn. thk, tg = @3 , c = @4", {tg, c});
        else
            NUMBER_LINE("Govrn. thk, tg = @3 , tr = @3 , c = @4", {tg, tr, c});
        NUMBER_LINE("Thickness Ratio = tr / (tg - c - cae) = @3, Temp. Reduction = @0",
                    {a.Ratio, reduction});
    }
    if (a.PadGoverns == 1)
        TEXT_LINE("Pad governing, Conservatively assuming Pad stress = Shell stress.");
}

void credit(MDMT_CALL& a) {
    if (!CREDIT_TAKEN(a)) return;
    MDMT_FOUND.credit = 1;
    if (a.Mdmt < a.Tmin) a.Mdmt = max(a.Mdmt - 30.0f, COLDEST);
    a.Tmin = a.Tmin - 30.0f;
    TEMPERATURE_LINE("Min Metal Temp per AM-218.1 and AM-218.4,PWHT credit", a.Tmin);
}

} // namespace

Real FIG_AM_218_3(Real Ratio) {
    Real reduction = 0.0f;
    if (Ratio >= 0.6f) reduction = 100.0f * (1.0f - Ratio);
    if (Ratio <= 0.6f)
        reduction = 1353.0f - 7043.2f * Ratio + 13129.0f * square(Ratio) - 8404.5f * cube(Ratio);
    return min(reduction, 200.0f);
}

void MDMT_AM218(MDMT_CALL& a) {
    a.EstarUsed = 1.0f;
    a.Lim = 0.3f;
    minimum_temperature(a);
    form_ratio(a);
    a.Reduction = MDMT_FOUND.reduction_by_ratio = FIG_AM_218_3(a.Ratio);
    TAKE_REDUCTION(a);
    NOTE_RATIO(a);
    LIMIT_WITHOUT_LOW_RATIO(a);
    if (a.Curve == IMPACT_TESTED_CURVE || a.Curve == EXEMPT_CURVE) impact_tested(a);
    if (!has_curve(a.Curve)) return;

    MDMT_FOUND.t_curve_by = a.Curve == CURVE_A ? OF_POLYNOMIAL : OF_CURVE_TABLE;
    MDMT_FOUND.t_curve = a.Tmin;
    ratio_lines(a);
    TEMPERATURE_LINE("Min Metal Temp. w/o impact per AM-218.1             ", a.Tmin);
    credit(a);
    MDMT_RATIO_FLOOR(a);
    NOTE_TEMPERATURES(a, MDMT_FOUND.credit == 1 ? LOWEST_BY_CREDIT : LOWEST_BY_CURVE);
    LOWERED_LINE(a, "Min Metal Temp. at Required thickness (AM-218.3)    ");
    if (a.Ratio <= a.Lim) {
        MDMT_FOUND.exempt = EXEMPT_BY_RATIO;
        TEXT_LINE("Impact testing of this element is not required if the material meets the");
        TEXT_LINE("provisions required in paragraph AM-213(a).");
    }
}

} // namespace tarvane
