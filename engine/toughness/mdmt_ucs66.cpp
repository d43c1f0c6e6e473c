// UCS-66: curves A to D, reduction of Fig. UCS-66.1, credit of UCS-68(c), exemption of UG-20(f).
#include "frame/switches.h"
#include "toughness/mdmt_stages.h"
#include "toughness/temperature_lines.h"
#include "toughness/ucs66_curves.h"

namespace tarvane {

namespace {

// ---- temperature from the curve ------------------------------------------------------------------

Real curve_temperature(Int Curve, Real Tg) {
    Real T = NO_TEMPERATURE;
    if (G_TOUGHNESS.CurveTables != 0)
        UCS66_INTERPOLATED(Curve, Tg, T);
    else
        T = UCS66_POLYNOMIAL(Curve, Tg);
    return T;
}

// The figure ends below: 18 F for curve A, -20 F for B, -55 F for C and D, which thin parts keep.
Real within_figure(Int Curve, Real Tg, Real T) {
    switch (Curve) {
    case CURVE_A:
        return max(T, 18.0f);
    case CURVE_B:
        return max(T, -20.0f);
    case CURVE_C:
        return Tg <= 0.375f ? COLD : max(T, COLD);
    default:
        return Tg <= 0.5625f ? COLD : max(T, COLD);
    }
}

void minimum_temperature(MDMT_CALL& a) {
    if (!has_curve(a.Curve)) {
        a.Tmin = a.Trequired;
        return;
    }
    a.Tmin = within_figure(a.Curve, a.Tg, curve_temperature(a.Curve, a.Tg));
    MDMT_FOUND.t_curve_by = G_TOUGHNESS.CurveTables != 0 ? OF_CURVE_TABLE : OF_POLYNOMIAL;
    MDMT_FOUND.t_curve = a.Tmin;
}

// UG-20(f): thin parts, 1/2 in for curve A, 1 in for the others.
void ug_20_f(MDMT_CALL& a) {
    MDMT_RESULTS& f = MDMT_FOUND;
    a.Tug20 = UG20_NOT_APPLICABLE;
    if (a.Ug20Candidate != 1) return;
    f.ug20f = UG20F_SWITCHED_OFF;
    if (G_TOUGHNESS.NoUg20f != 0) return;
    f.ug20f = UG20F_TOO_THICK;
    if (!(a.Tg <= (a.Curve == CURVE_A ? C_ONE_HALF : C_ONE))) return;
    f.ug20f = UG20F_APPLIES;
    f.t_ug20f = a.Tug20 = min(a.Tmin, -20.0f);
}

// ---- ratio and reduction -------------------------------------------------------------------------

void take_edition(MDMT_CALL& a) {
    G_OLD_EDITION = setup_truncated(58) == 1 ? 1 : 0;
    a.Lim = G_OLD_EDITION == 1 ? 0.4f : 0.35f;
    MDMT_FOUND.older_edition = G_OLD_EDITION;
}

// False when corrosion leaves nothing to form a ratio of.
bool form_ratio(MDMT_CALL& a) {
    const Real Tsr = a.TgSr > 0.001f ? a.TgSr : a.Tg;
    const Real net = Tsr - a.c - a.Cext;
    if (!(net > 0.0f)) return false;
    a.EstarUsed = max(a.Estar, 0.8f);
    if (a.Tr <= 0.0f) {
        a.Ratio = std::fabs(a.Tr);
        a.ratioKind = MDMT_CALL::stress_ratio;
    } else {
        a.Ratio = min(a.Tr * a.EstarUsed / net, 1.0f);
        a.ratioKind = MDMT_CALL::thickness_ratio;
        MDMT_FOUND.t_ratio = net;
    }
    return true;
}

void reduce(MDMT_CALL& a) {
    if (!form_ratio(a)) {
        if (a.Curve == IMPACT_TESTED_CURVE) a.Reduction = 0.0f;
        return;
    }
    a.Reduction = MDMT_FOUND.reduction_by_ratio = FIG_UCS_66_1(a.Ratio, G_OLD_EDITION);
    TAKE_REDUCTION(a);
    if (has_curve(a.Curve)) LIMIT_WITHOUT_LOW_RATIO(a);
    MDMT_RATIO_FLOOR(a);
}

// ---- credit, exemption, heat treatment -----------------------------------------------------------

void credit(MDMT_CALL& a) {
    if (!CREDIT_TAKEN(a)) return;
    MDMT_FOUND.credit = 1;
    if (a.ratioKind != MDMT_CALL::no_ratio && a.Mdmt < a.Tmin)
        a.Mdmt = max(a.Mdmt - 30.0f, G_TOUGHNESS.Credit55 == 1 ? COLDEST : COLD);
    a.Tmin = a.Tmin - 30.0f;
    TEMPERATURE_LINE("Min Metal Temp per UCS-66 and UCS-68(c),PWHT credit ", a.Tmin);
}

void at_required_thickness(MDMT_CALL& a) {
    if (a.ratioKind == MDMT_CALL::no_ratio) return;
    MDMT_RATIO_FLOOR(a);
    if (a.Tmin - a.Mdmt > 0.1f)
        TEMPERATURE_LINE("Min Metal Temp. at Required thickness (UCS 66.1)    ", a.Mdmt);
}

void ug_20_f_exemption(MDMT_CALL& a) {
    const bool warm = truncated(a.Tdesign) <= 650;
    if (warm && a.Tug20 < a.Tmin) {
        COUNT_WARNING(a);
        TEMPERATURE_LINE("Min Metal Temp. w/o impact per UG-20(f)             ", a.Tug20);
    } else if (warm && a.Tug20 <= -20.0f && a.Tmin <= -20.0f) {
        COUNT_WARNING(a);
    } else {
        a.Tug20 = UG20_NOT_APPLICABLE;
        if (MDMT_FOUND.ug20f == UG20F_APPLIES)
            MDMT_FOUND.ug20f = warm ? UG20F_NO_LOWER : UG20F_TOO_HOT;
    }
}

// UCS-68(b): heat treatment below -55 F.
void cold_heat_treatment(MDMT_CALL& a) {
    if (!(a.Trequired <= COLD && a.Ratio >= a.Lim)) return;
    NOTE_LINE("Note:");
    LinePieces because;
    because.text("Because the required MDMT of ").bare(as_temperature(a.Trequired), 0);
    because.text(" was less than ").bare(as_temperature(COLD), 0).text(" and because");
    because.write(NOTE_STYLE);
    LinePieces ratio;
    ratio.text("the thickness ratio of ").bare(a.Ratio, 4);
    ratio.text(" was greater than ").bare(a.Lim, 4);
    ratio.text(", PWHT is required (see UCS-68(b)).").write(NOTE_STYLE);
    a.Reduction = 0.0f;
    a.EstarUsed = -a.EstarUsed;
    MDMT_FOUND.pwht_required = 1;
}

void note_low_ratio(const MDMT_CALL& a) {
    const bool low = a.ratioKind != MDMT_CALL::no_ratio && a.Ratio <= a.Lim;
    if (low && ReductionsAllowed()) MDMT_FOUND.exempt = EXEMPT_BY_RATIO;
}

void curve_line(const MDMT_CALL& a) {
    Text<46> label = "Min Metal Temp. w/o impact per UCS-66, Curve ";
    label(46) = static_cast<char>(a.Curve + 64);
    TEMPERATURE_LINE(label.view(), a.Tmin);
}

} // namespace

Real FIG_UCS_66_1(Real Ratio, Int Edition) {
    const bool old = Edition == 1;
    const Real knee = old ? 0.4f : 0.38f;
    if (Ratio > 0.6f && Ratio <= 1.0f) return 100.0f * (1.0f - Ratio);
    if (Ratio > knee && Ratio <= 0.6f)
        return old ? 10.937f * pow(Ratio, -2.503f) : 14.61f * pow(Ratio, -1.997f);
    if (Ratio <= knee) return old ? 110.0f : min(606.67f - 1333.3f * Ratio, 140.0f);
    return 0.0f;
}

void UCS66_RATIO_LINES(const MDMT_CALL& a) {
    const Real tg = as_thickness(a.Tg), tr = as_thickness(a.Tr), c = as_thickness(a.c);
    const Real reduction = as_temperature_difference(a.Reduction);
    const bool separate = a.TgSr > 0.001f;
    if (a.ratioKind == MDMT_CALL::stress_ratio) {
        NUMBER_LINE("Stress Ratio = @3, Temperature Reduction per Fig. UCS 66.1 = @0",
                    {a.Ratio, reduction});
    } else if (separate) {
        NUMBER_LINE("tg = @3 , tg_sr = @3 , tr = @3 , c = @3 , E* = @2",
                    {tg, as_thickness(a.TgSr), tr, c, a.EstarUsed});
        NUMBER_LINE("Thickness Ratio = tr * (E*) / (tg_sr - c)  = @3, Temp. Reduction = @0",
                    {a.Ratio, reduction});
    } else {
        if (a.PadGoverns == 1)
            NUMBER_LINE("Govrn. thk, tg = @3 , c = @4 , E* = @2", {tg, c, a.EstarUsed});
        else
            NUMBER_LINE("Govrn. thk, tg = @3 , tr = @3 , c = @4 , E* = @2",
                        {tg, tr, c, a.EstarUsed});
        NUMBER_LINE("Thickness Ratio = tr * (E*) / (tg - c)  = @3, Temp. Reduction = @0",
                    {a.Ratio, reduction});
    }
    if (a.PadGoverns == 1)
        TEXT_LINE(
            "Pad governing, Conservatively assuming Pad stress = Shell stress(Div. 1 L-9.3).");
}

void MDMT_UCS66(MDMT_CALL& a) {
    minimum_temperature(a);
    ug_20_f(a);
    take_edition(a);
    reduce(a);
    note_low_ratio(a);
    if (a.Curve == IMPACT_TESTED_CURVE) return MDMT_IMPACT_TESTED(a);

    if (a.ratioKind != MDMT_CALL::no_ratio) UCS66_RATIO_LINES(a);
    curve_line(a);
    credit(a);
    at_required_thickness(a);
    ug_20_f_exemption(a);
    cold_heat_treatment(a);
    NOTE_RATIO(a);
    NOTE_TEMPERATURES(a, MDMT_FOUND.credit == 1 ? LOWEST_BY_CREDIT : LOWEST_BY_CURVE);
    if (MDMT_FOUND.ug20f == UG20F_APPLIES) NOTE_LOWEST(a.Tug20, LOWEST_BY_UG_20F);
}

} // namespace tarvane
