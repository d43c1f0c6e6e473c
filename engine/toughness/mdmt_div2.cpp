#include "toughness/mdmt_div2.h"

#include "frame/switches.h"
#include "toughness/mdmt_stages.h"
#include "toughness/temperature_lines.h"
#include "toughness/ucs66_curves.h"

namespace tarvane {

namespace {

// ---- figures -------------------------------------------------------------------------------------

constexpr Real THIN = 0.394f; // in: up to here each curve is level
constexpr Real WARMEST = 120.0f;

Real quartic(Real t, Real a0, Real a1, Real a2, Real a3, Real a4) {
    return a0 + a1 * t + a2 * square(t) + a3 * cube(t) + a4 * fourth(t);
}

// Curve of a figure: the level of thin parts, and the formula after it.
struct FIGURE_CURVE {
    Real thin;
    Real (*formula)(Real t);
};

// In the order A to D.
constexpr FIGURE_CURVE NOT_HEAT_TREATED[] = {
    {68.9f,
     [](Real t) {
         const Real u = pow(t, 0.36696097f);
         return (11931.097f * u + 3.4034836f) / (u + 124.50837f);
     }},
    {30.9f,
     [](Real t) {
         const Real u = pow(t, 0.84060264f);
         return (221.91199f * u + 0.030345175f) / (u + 2.8998783f);
     }},
    {-7.1f,
     [](Real t) {
         return quartic(t, -0.011307288f, -91.4201f, 257.67035f, -197.36131f, 50.91072f);
     }},
    {-33.1f,
     [](Real t) {
         return quartic(t, -38.36959f, -27.378216f, 142.87444f, -112.26541f, 28.656994f);
     }},
};
constexpr FIGURE_CURVE HEAT_TREATED[] = {
    {33.2f,
     [](Real t) { return quartic(t, 1.4648353f, 95.17903f, -43.11126f, 10.291793f, -0.9510204f); }},
    {-4.8f,
     [](Real t) {
         return quartic(t, -36.535164f, 95.17903f, -43.11136f, 10.291793f, -0.9510204f);
     }},
    {-42.8f,
     [](Real t) {
         return quartic(t, -74.535164f, 95.17903f, -43.11136f, 10.291793f, -0.9510204f);
     }},
    {-55.0f,
     [](Real t) { return quartic(t, -97.12137f, 88.53961f, -38.691883f, 9.075578f, -0.8325761f); }},
};

// Numbers without a curve of their own take curve A.
Int curve_or_a(Int Curve) { return has_curve(Curve) ? Curve : CURVE_A; }

Real figure(const FIGURE_CURVE (&curves)[4], Int Curve, Real t) {
    const FIGURE_CURVE& curve = curves[curve_or_a(Curve) - CURVE_A];
    return t <= THIN ? curve.thin : min(curve.formula(t), WARMEST);
}

// ---- stress ratio and reduction ------------------------------------------------------------------

constexpr Real FIRST_GRAPH_LINE = 50001.0f; // yield stress, psi: below it the first line of a graph
constexpr Real GRAPH_LIMIT = 65001.0f;      // up to here by the graphs, above by the formula

// The upper limit first.
Real estar_used(Real Estar) { return max(min(Estar, 1.0f), 0.8f); }

Real stress_ratio(const MDMT_DIV2_CALL& a) {
    Real Sr = a.Tr <= 0.0f ? std::fabs(a.Tr) : a.Tr * a.EstarUsed / (a.Tnom - a.Ci - a.Cext);
    Sr = min(Sr, 1.0f);
    return ReductionsAllowed() ? Sr : 1.0f;
}

// Up to this ratio a part is good for -155 F.
Real ratio_limit() { return G_D2_CLASS == 0 ? 0.3f : 0.24f; }

Real graph_3_12(Real Sr, Real Sy) {
    if (std::fabs(Sr - 1.0f) < 0.001f) return 0.0f;
    if (Sy < FIRST_GRAPH_LINE) return 70.86496f - 68.53657f * Sr - 1.6457663f * square(Sr);
    return 65.34682f - 77.32996f * Sr + 32.997993f * square(Sr) - 20.923616f * cube(Sr);
}

Real graph_3_13(Real Sr, Real Sy) {
    if (std::fabs(Sr - 1.0f) < 0.001f) return 0.0f;
    if (Sy < FIRST_GRAPH_LINE) {
        if (Sr <= 0.421f) return 95.2f;
        return 802.63245f - 3613.8088f * Sr + 6604.8643f * square(Sr) - 5525.0117f * cube(Sr) +
               1731.7124f * fourth(Sr);
    }
    if (Sr < 0.29f) return 94.2f;
    return 60.7735f - 65.0266f * Sr + 4.364538f / square(Sr);
}

// Reduction of strong steels, [Tr]. The yield stress goes in as it is, in psi.
Real strong_steel_reduction(Real Sr, Real Sy) {
    return (-27.20656f - 76.98828f * Sr + 103.0992f * square(Sr) + 0.007433649f * Sy) /
           (1.0f - 1.986738f * Sr - 0.01758474f * Sy + 0.00006479033f * square(Sy));
}

Real reduction(const MDMT_DIV2_CALL& a) {
    if (a.Sy <= GRAPH_LIMIT) return a.Pwht == 1 ? graph_3_13(a.Sr, a.Sy) : graph_3_12(a.Sr, a.Sy);
    if (a.Sy > GRAPH_LIMIT) return strong_steel_reduction(a.Sr, a.Sy);
    return 0.0f; // a yield stress that is not a number
}

// ---- report --------------------------------------------------------------------------------------

std::string_view degree_label() { return UNITS.temperature_label.trimmed(); }

void figure_line(const MDMT_DIV2_CALL& a) {
    const bool metric = UNITS.temperature_scale > 1.5f;
    std::string_view label;
    if (a.Pwht == 1)
        label = metric ? "From Figure 3.8M- with PWHT, the MDMT is      : "
                       : "From Figure 3.8 - with PWHT, the MDMT is      : ";
    else
        label = metric ? "From Figure 3.7M- Non  PWHT, the MDMT is      : "
                       : "From Figure 3.7 - Non  PWHT, the MDMT is      : ";
    TEMPERATURE_LINE(label, a.Tcurve, degree_label());
}

void strong_steel_lines(const MDMT_DIV2_CALL& a) {
    COLUMN_LINE("Because the yield value is greatet than       : ", 65000.0f, Kind::stress);
    TEXT_LINE("The Temperature Reduction Temperature [Tr]: ");
    TEXT_LINE(" = ( -27.20656 - 76.98828 * Sr + 103.0992 * Sr\xB2 + 0.007433649 * Sy ) /");
    TEXT_LINE("( 1 - 1.986738 * Sr - 0.01758474 * Sy + 0.00006479033 * Sy\xB2 )");
    const Real Sy = as_stress(a.Sy);
    NUMBER_LINE(" = ( -27.20656 - 76.98828 * @3 + 103.0992 * @3**2 + 0.007433649 * @3) /",
                {a.Sr, a.Sr, Sy});
    NUMBER_LINE("( 1 - 1.986738 * @3 - 0.01758474 * @3 + 0.00006479033 * @3**2 )", {a.Sr, Sy, Sy});
    VALUE_LINE_IN(as_temperature_difference(strong_steel_reduction(a.Sr, a.Sy)), 0, degree_label());
}

void low_ratio_line(Real Lsr) {
    LinePieces line;
    line.text("Stress ratio at most ").bare(Lsr, 4).text(", the MDMT is ");
    line.bare(as_temperature(-155.0f), 0).blanks(1).text(degree_label());
    line.write();
}

void ratio_lines(const MDMT_DIV2_CALL& a) {
    COLUMN_LINE("Stress Ratio                                  : ", a.Sr, Kind::factor);
    if (!(a.Tr > 0.001f)) return;
    TEXT_LINE("The computed stress ratio [sr]: ");
    TEXT_LINE(" = ( tr * E* ) / ( tnom - ci - cext )");
    NUMBER_LINE(" = ( @3 * @2 ) / ( @3 - @3 - @3 )",
                {as_thickness(a.Tr), a.EstarUsed, as_thickness(a.Tnom), as_thickness(a.Ci),
                 as_thickness(a.Cext)});
    VALUE_LINE(a.Sr, Kind::factor);
}

void report(const MDMT_DIV2_CALL& a, Real Lsr, Real reduction) {
    const bool reduced = a.Sr > Lsr;
    TEXT_LINE(a.Pwht == 1 ? "This element is Post Weld Heat Treated PWHT"
                          : "This element is Not Post Weld Heat Treated");
    TEMPERATURE_LINE("Computed Minimum Design Metal Temperature     : ", a.Mdmt, degree_label());
    TEMPERATURE_LINE("User entered Minimum Design Temperature       : ", a.Tuser, degree_label());
    if (a.Tuser < a.Mdmt) TEXT_LINE("Warning: Impact Testing Is Mandatory!", HIGHLIGHT_STYLE);
    const char letter = static_cast<char>('A' + curve_or_a(a.Curve) - CURVE_A);
    LinePieces line;
    line.text("The Curve for this Material is                : ").text({&letter, 1}).write();
    if (reduced && a.Sy < GRAPH_LIMIT) figure_line(a);
    if (reduced && ReductionsAllowed())
        DIFFERENCE_LINE(a.Pwht == 1 ? "Temperature reduction per Graph 3.13          : "
                                    : "Temperature reduction per Graph 3.12          : ",
                        reduction, degree_label());
    if (reduced && a.Sy > 65000.0f) strong_steel_lines(a);
    if (a.Sr <= Lsr) low_ratio_line(Lsr);
    if (a.Sy < GRAPH_LIMIT) ratio_lines(a);
}

} // namespace

Real FIGURE_3_7(Int Curve, Real t) { return figure(NOT_HEAT_TREATED, Curve, t); }
Real FIGURE_3_8(Int Curve, Real t) { return figure(HEAT_TREATED, Curve, t); }

namespace {

void note_given(const MDMT_DIV2_CALL& a) {
    MDMT_RESULTS& f = MDMT_FOUND;
    f.rules = BY_DIV2_3_11;
    f.curve = a.Curve;
    f.reductions_allowed = ReductionsAllowed() ? 1 : 0;
    f.required = a.Tuser;
    f.tg = a.Tnom;
    f.tg_net = a.Tnom - a.Ci - a.Cext;
}

void note(const MDMT_DIV2_CALL& a, Real Lsr, Real lowered) {
    MDMT_RESULTS& f = MDMT_FOUND;
    const bool low = a.Sr <= Lsr;
    f.status = MDMT_CALCULATED;
    f.curve_taken = curve_or_a(a.Curve);
    f.t_curve_by = low ? OF_LOW_RATIO : a.Pwht == 1 ? OF_FIGURE_3_8 : OF_FIGURE_3_7;
    f.t_curve = a.Tcurve;
    f.ratio_kind = a.Tr <= 0.0f ? MDMT_CALL::stress_ratio : MDMT_CALL::thickness_ratio;
    if (!(a.Tr <= 0.0f)) f.t_ratio = a.Tnom - a.Ci - a.Cext;
    f.ratio = a.Sr;
    f.ratio_limit = Lsr;
    f.estar_used = a.EstarUsed;
    f.reduction_by_ratio = f.reduction = lowered;
    f.impact_tests = a.Tuser < a.Mdmt ? 1 : 0;
    if (low) f.exempt = EXEMPT_BY_RATIO;
    f.t_min = a.Tcurve;
    f.mdmt = a.Mdmt;
    NOTE_LOWEST(a.Tcurve, low ? LOWEST_BY_LOW_RATIO : LOWEST_BY_CURVE);
    NOTE_LOWEST(a.Mdmt, LOWEST_BY_REDUCTION);
}

} // namespace

void MDMT_DIV2_FIGURES(MDMT_DIV2_CALL& call) {
    BEGIN_MDMT_RESULTS();
    note_given(call);
    MDMT_DIV2_STAGES(call);
}

void MDMT_DIV2_STAGES(MDMT_DIV2_CALL& call) {
    MDMT_DIV2_CALL& a = call;
    a.Tcurve = a.Mdmt = NO_TEMPERATURE;
    a.Sr = -1.0f;
    if (a.Curve < 1) {
        MDMT_FOUND.status = MDMT_NO_CURVE;
        MDMT_FOUND.exempt = EXEMPT_NO_CARBON_STEEL;
        TEXT_LINE("This is not a Carbon Steel - No MDMT Calculation Required");
        return;
    }
    const Real Tbase = a.Pwht == 1 ? FIGURE_3_8(a.Curve, a.Tnom) : FIGURE_3_7(a.Curve, a.Tnom);
    a.EstarUsed = estar_used(a.Estar);
    a.Sr = stress_ratio(a);
    const Real Lsr = ratio_limit();
    Real lowered = 0.0f;
    if (a.Sr <= Lsr) {
        a.Mdmt = a.Tcurve = -155.0f;
    } else {
        lowered = reduction(a);
        a.Mdmt = Tbase - lowered;
        a.Tcurve = Tbase;
    }
    note(a, Lsr, lowered);
    report(a, Lsr, lowered);
}

} // namespace tarvane
