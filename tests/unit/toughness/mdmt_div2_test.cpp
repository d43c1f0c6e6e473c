// Figures 3.7 and 3.8 of the newer Division 2, the reductions of Figures 3.12 and 3.13, and their lines.
#include "mdmt_fixture.h"

#include "toughness/mdmt_div2.h"

namespace tarvane {
namespace {

using toughness_test::element_of;
using toughness_test::Line;
using toughness_test::metric_report;

class MdmtDiv2 : public toughness_test::ToughnessTest {
  protected:
    MDMT_DIV2_CALL a;

    // 1 in, curve B, at a ratio.
    static MDMT_DIV2_CALL part(Real Tr, Int Pwht = 0, Real Sy = 38000.0f) {
        return {.Sy = Sy, .Estar = 1.0f, .Tnom = 1.0f, .Pwht = Pwht, .Curve = 2, .Tr = Tr};
    }
    MDMT_DIV2_CALL& run(const MDMT_DIV2_CALL& call) {
        a = call;
        MDMT_DIV2_FIGURES(a);
        return a;
    }
    std::vector<Line> lines_of(const MDMT_DIV2_CALL& call) {
        reported();
        run(call);
        return reported();
    }
    Real reduction_of(const MDMT_DIV2_CALL& call) {
        run(call);
        return a.Tcurve - a.Mdmt;
    }
};

// ---- figures -----------------------------------------------------------------------------------------

// The formulas once more, in double precision.
double figure(bool treated, Int Curve, double t) {
    const auto quartic = [&](double a0, double a1, double a2, double a3, double a4) {
        return a0 + t * (a1 + t * (a2 + t * (a3 + t * a4)));
    };
    const double ua = std::pow(t, 0.36696097), ub = std::pow(t, 0.84060264);
    switch (Curve + (treated ? 4 : 0)) {
    case 1:
        return (11931.097 * ua + 3.4034836) / (ua + 124.50837);
    case 2:
        return (221.91199 * ub + 0.030345175) / (ub + 2.8998783);
    case 3:
        return quartic(-0.011307288, -91.4201, 257.67035, -197.36131, 50.91072);
    case 4:
        return quartic(-38.36959, -27.378216, 142.87444, -112.26541, 28.656994);
    case 5:
        return quartic(1.4648353, 95.17903, -43.11126, 10.291793, -0.9510204);
    case 6:
        return quartic(-36.535164, 95.17903, -43.11136, 10.291793, -0.9510204);
    case 7:
        return quartic(-74.535164, 95.17903, -43.11136, 10.291793, -0.9510204);
    default:
        return quartic(-97.12137, 88.53961, -38.691883, 9.075578, -0.8325761);
    }
}

TEST_F(MdmtDiv2, CurvesOfBothFigures) {
    for (Int Curve = 1; Curve <= 4; ++Curve)
        for (const Real t : {0.4f, 0.5f, 0.75f, 1.0f, 1.5f, 2.0f, 3.0f, 4.0f}) {
            EXPECT_NEAR(FIGURE_3_7(Curve, t),
                        std::min(figure(false, Curve, static_cast<double>(t)), 120.0), 2e-3)
                << Curve << " at " << t;
            EXPECT_NEAR(FIGURE_3_8(Curve, t),
                        std::min(figure(true, Curve, static_cast<double>(t)), 120.0), 2e-3)
                << Curve << " at " << t;
        }
    EXPECT_EQ(FIGURE_3_7(3, 4.0f), 120.0f) << "limited above";
}

TEST_F(MdmtDiv2, ThinPartsAreLevel) {
    const Real thin[2][4] = {{68.9f, 30.9f, -7.1f, -33.1f}, {33.2f, -4.8f, -42.8f, -55.0f}};
    for (Int Curve = 1; Curve <= 4; ++Curve)
        for (const Real t : {0.394f, 0.1f, 0.0f, -1.0f}) {
            EXPECT_EQ(FIGURE_3_7(Curve, t), thin[0][Curve - 1]) << t;
            EXPECT_EQ(FIGURE_3_8(Curve, t), thin[1][Curve - 1]) << t;
        }
    // Just above, the formulas begin where they begin: curve D of Figure 3.8 below its level.
    EXPECT_NEAR(FIGURE_3_8(4, 0.3941f), -67.7f, 0.05f);
    EXPECT_NE(FIGURE_3_7(1, 0.3941f), 68.9f);
}

TEST_F(MdmtDiv2, OtherNumbersTakeCurveA) {
    MDMT_DIV2_CALL call = part(-1.0f);
    call.Tuser = 200.0f;
    for (const Int Curve : {5, 6, 99, INT32_MAX}) {
        call.Curve = Curve;
        EXPECT_EQ(lines_of(call)[3].text, "The Curve for this Material is                : A");
        EXPECT_EQ(a.Tcurve, FIGURE_3_7(1, 1.0f)) << Curve;
    }
    EXPECT_EQ(FIGURE_3_8(5, 1.0f), FIGURE_3_8(1, 1.0f));
}

TEST_F(MdmtDiv2, BelowOneThereIsNoCalculation) {
    MDMT_DIV2_CALL call = part(-0.5f);
    call.EstarUsed = 7.0f;
    for (const Int Curve : {0, -5}) {
        call.Curve = Curve;
        EXPECT_EQ(
            lines_of(call),
            (std::vector<Line>{{"This is not a Carbon Steel - No MDMT Calculation Required"}}));
        EXPECT_EQ(a.Tcurve, 1.0101f);
        EXPECT_EQ(a.Mdmt, 1.0101f);
        EXPECT_EQ(a.Sr, -1.0f);
        EXPECT_EQ(a.EstarUsed, 7.0f);
    }
}

// ---- ratio ---------------------------------------------------------------------------------------------

TEST_F(MdmtDiv2, StressRatioOfTheNetThickness) {
    MDMT_DIV2_CALL call = part(0.5f);
    call.Ci = 0.125f;
    call.Cext = 0.0625f;
    call.Estar = 0.9f;
    EXPECT_EQ(run(call).Sr, 0.5f * 0.9f / (1.0f - 0.125f - 0.0625f));
    EXPECT_EQ(a.EstarUsed, 0.9f);
    EXPECT_EQ(a.Tcurve, FIGURE_3_7(2, 1.0f)) << "the figure takes the thickness without corrosion";
    call.Estar = 0.7f;
    EXPECT_EQ(run(call).EstarUsed, 0.8f);
    call.Estar = 1.2f;
    EXPECT_EQ(run(call).EstarUsed, 1.0f);
    call.Tr = 5.0f;
    EXPECT_EQ(run(call).Sr, 1.0f);
    EXPECT_EQ(run(part(-0.35f)).Sr, 0.35f);
    EXPECT_EQ(run(part(-1.5f)).Sr, 1.0f);
    EXPECT_EQ(run(part(0.0f)).Sr, 0.0f);
}

TEST_F(MdmtDiv2, NoReductionWhereNoneIsAllowed) {
    G_USE_A6 = 0;
    const std::vector<Line> lines = lines_of(part(-0.5f));
    EXPECT_EQ(a.Sr, 1.0f);
    EXPECT_EQ(a.Mdmt, a.Tcurve);
    EXPECT_EQ(a.EstarUsed, 1.0f);
    for (const Line& line : lines)
        EXPECT_EQ(line.text.find("Temperature reduction"), std::string::npos);
    EXPECT_EQ(run(part(-0.1f)).Sr, 1.0f) << "no low ratio either";
}

TEST_F(MdmtDiv2, LowRatiosReach155BelowByTheClass) {
    EXPECT_EQ(run(part(-0.24f)).Mdmt, -155.0f);
    EXPECT_EQ(a.Tcurve, -155.0f);
    EXPECT_NE(run(part(-0.25f)).Mdmt, -155.0f);
    G_D2_CLASS = 0;
    EXPECT_EQ(run(part(-0.3f)).Mdmt, -155.0f);
    EXPECT_NE(run(part(-0.31f)).Mdmt, -155.0f);
    G_D2_CLASS = 2;
    EXPECT_NE(run(part(-0.3f)).Mdmt, -155.0f);
}

// ---- reduction -----------------------------------------------------------------------------------------

TEST_F(MdmtDiv2, ReductionOfTheGraphs) {
    for (const Real r : {0.25f, 0.289f, 0.29f, 0.4f, 0.421f, 0.422f, 0.5f, 0.8f, 0.998f}) {
        const auto s = static_cast<double>(r);
        EXPECT_NEAR(reduction_of(part(-r, 0, 50000.0f)),
                    70.86496 - 68.53657 * s - 1.6457663 * s * s, 1e-3)
            << r;
        EXPECT_NEAR(reduction_of(part(-r, 0, 50001.0f)),
                    65.34682 - 77.32996 * s + 32.997993 * s * s - 20.923616 * s * s * s, 1e-3)
            << r;
        EXPECT_NEAR(reduction_of(part(-r, 1, 50000.0f)),
                    r <= 0.421f ? 95.2
                                : 802.63245 - 3613.8088 * s + 6604.8643 * s * s -
                                      5525.0117 * s * s * s + 1731.7124 * s * s * s * s,
                    2e-3)
            << r;
        EXPECT_NEAR(reduction_of(part(-r, 1, 50001.0f)),
                    r < 0.29f ? 94.2 : 60.7735 - 65.0266 * s + 4.364538 / (s * s), 1e-3)
            << r;
    }
}

TEST_F(MdmtDiv2, FullStressIsNotReduced) {
    for (const Int Pwht : {0, 1})
        for (const Real Sy : {38000.0f, 60000.0f}) {
            EXPECT_EQ(reduction_of(part(-1.0f, Pwht, Sy)), 0.0f);
            EXPECT_EQ(reduction_of(part(-0.9995f, Pwht, Sy)), 0.0f);
            EXPECT_NE(reduction_of(part(-0.998f, Pwht, Sy)), 0.0f);
        }
}

TEST_F(MdmtDiv2, GraphsUpTo65001TheFormulaAbove) {
    const double s = 0.5;
    const auto formula = [&](double Sy) {
        return (-27.20656 - 76.98828 * s + 103.0992 * s * s + 0.007433649 * Sy) /
               (1.0 - 1.986738 * s - 0.01758474 * Sy + 0.00006479033 * Sy * Sy);
    };
    const Real graph = reduction_of(part(-0.5f, 0, 60000.0f));
    EXPECT_EQ(reduction_of(part(-0.5f, 0, 65001.0f)), graph);
    EXPECT_NEAR(reduction_of(part(-0.5f, 0, 65002.0f)), formula(65002.0), 1e-4);
    EXPECT_NEAR(reduction_of(part(-0.5f, 1, 80000.0f)), formula(80000.0), 1e-4);
    EXPECT_EQ(reduction_of(part(-0.5f, 0, NAN)), 0.0f);
}

// ---- the report ------------------------------------------------------------------------------------------

TEST_F(MdmtDiv2, LinesOfAPartAsWelded) {
    MDMT_DIV2_CALL call = part(0.4f);
    call.Ci = 0.125f;
    call.Cext = 0.0625f;
    call.Tuser = -20.0f;
    EXPECT_EQ(lines_of(call),
              (std::vector<Line>{
                  {"This element is Not Post Weld Heat Treated"},
                  {"Computed Minimum Design Metal Temperature     :           20  \xB0"
                   "F"},
                  {"User entered Minimum Design Temperature       :          -20  \xB0"
                   "F"},
                  {"Warning: Impact Testing Is Mandatory!", HIGHLIGHT_STYLE},
                  {"The Curve for this Material is                : B"},
                  {"From Figure 3.7 - Non  PWHT, the MDMT is      :           57  \xB0"
                   "F"},
                  {"Temperature reduction per Graph 3.12          :           37  \xB0"
                   "F"},
                  {"Stress Ratio                                  :        0.492"},
                  {"The computed stress ratio [sr]:"},
                  {" = ( tr * E* ) / ( tnom - ci - cext )"},
                  {" = ( 0.4 * 1.0 )/( 1.0 - 0.125 - 0.062 )"},
                  {" = 0.4923"},
              }));
}

TEST_F(MdmtDiv2, LinesOfAHeatTreatedPartInCelsius) {
    metric_report();
    MDMT_DIV2_CALL call = part(-0.6f, 1);
    call.Tuser = 60.0f;
    call.Curve = 4;
    const double s = 0.6;
    const double reduction = 802.63245 - 3613.8088 * s + 6604.8643 * s * s - 5525.0117 * s * s * s +
                             1731.7124 * s * s * s * s;
    const double figure38 = figure(true, 4, 1.0);
    const auto degrees = [](double C) {
        std::string text = std::to_string(std::lround(C));
        return std::string(12 - text.size(), ' ') + text +
               "  \xB0"
               "C";
    };
    EXPECT_EQ(
        lines_of(call),
        (std::vector<Line>{
            {"This element is Post Weld Heat Treated PWHT"},
            {"Computed Minimum Design Metal Temperature     : " +
             degrees((figure38 - reduction - 32.0) / 1.8)},
            {"User entered Minimum Design Temperature       : " + degrees(28.0 / 1.8)},
            {"The Curve for this Material is                : D"},
            {"From Figure 3.8M- with PWHT, the MDMT is      : " + degrees((figure38 - 32.0) / 1.8)},
            {"Temperature reduction per Graph 3.13          : " + degrees(reduction / 1.8)},
            {"Stress Ratio                                  :        0.600"},
        }));
    call.Pwht = 0;
    EXPECT_EQ(lines_of(call)[4].text.substr(0, 48),
              "From Figure 3.7M- Non  PWHT, the MDMT is      : ");
    UNITS.temperature_scale = 1.5f;
    EXPECT_EQ(lines_of(call)[4].text.substr(0, 48),
              "From Figure 3.7 - Non  PWHT, the MDMT is      : ");
}

TEST_F(MdmtDiv2, LinesOfALowRatio) {
    MDMT_DIV2_CALL call = part(-0.2f);
    EXPECT_EQ(lines_of(call),
              (std::vector<Line>{
                  {"This element is Not Post Weld Heat Treated"},
                  {"Computed Minimum Design Metal Temperature     :         -155  \xB0"
                   "F"},
                  {"User entered Minimum Design Temperature       :            0  \xB0"
                   "F"},
                  {"The Curve for this Material is                : B"},
                  {"Stress ratio at most 0.2400, the MDMT is -155 \xB0"
                   "F"},
                  {"Stress Ratio                                  :        0.200"},
              }));
    G_D2_CLASS = 0;
    metric_report();
    EXPECT_EQ(lines_of(call)[4].text, "Stress ratio at most 0.3000, the MDMT is -104 \xB0"
                                      "C");
}

TEST_F(MdmtDiv2, LinesOfAStrongSteel) {
    EXPECT_EQ(lines_of(part(-0.5f, 0, 80000.0f)),
              (std::vector<Line>{
                  {"This element is Not Post Weld Heat Treated"},
                  {"Computed Minimum Design Metal Temperature     :           57  \xB0"
                   "F"},
                  {"User entered Minimum Design Temperature       :            0  \xB0"
                   "F"},
                  {"Warning: Impact Testing Is Mandatory!", HIGHLIGHT_STYLE},
                  {"The Curve for this Material is                : B"},
                  {"Temperature reduction per Graph 3.12          :            0  \xB0"
                   "F"},
                  {"Because the yield value is greatet than       :     65000.00  psi"},
                  {"The Temperature Reduction Temperature [Tr]:"},
                  {" = ( -27.20656 - 76.98828 * Sr + 103.0992 * Sr\xB2 + 0.007433649 * Sy ) /"},
                  {"( 1 - 1.986738 * Sr - 0.01758474 * Sy + 0.00006479033 * Sy\xB2 )"},
                  {" = ( -27.20656 - 76.98828 * 0.5 + 103.0992 * 0.5**2 + 0.007433649 * 80000.0)/"},
                  {"( 1 - 1.986738 * 0.5 - 0.01758474 * 80000.0 + 0.00006479033 * 80000.0**2 )"},
                  {" = 0 \xB0"
                   "F"},
              }));
}

TEST_F(MdmtDiv2, WhichLinesStandAroundTheLimitOfYield) {
    const auto shows = [&](Real Sy, const char* beginning) {
        for (const Line& line : lines_of(part(0.5f, 0, Sy)))
            if (line.text.rfind(beginning, 0) == 0) return true;
        return false;
    };
    struct {
        Real Sy;
        bool figure, formula;
    } const rows[] = {{65000.0f, true, false},
                      {65000.5f, true, true},
                      {65001.0f, false, true},
                      {65002.0f, false, true}};
    for (const auto& row : rows) {
        EXPECT_EQ(shows(row.Sy, "From Figure 3.7"), row.figure) << row.Sy;
        EXPECT_EQ(shows(row.Sy, "Stress Ratio"), row.figure) << row.Sy;
        EXPECT_EQ(shows(row.Sy, "The computed stress ratio"), row.figure) << row.Sy;
        EXPECT_EQ(shows(row.Sy, "Because the yield value"), row.formula) << row.Sy;
        EXPECT_TRUE(shows(row.Sy, "Temperature reduction per Graph 3.12")) << row.Sy;
    }
    EXPECT_EQ(lines_of(part(0.0011f)).back().text, " = 0.0011");
    EXPECT_EQ(lines_of(part(0.001f)).back().text,
              "Stress Ratio                                  :        0.001");
}

// ---- by way of the element ---------------------------------------------------------------------------------

TEST_F(MdmtDiv2, TheElementBringsItsArgumentsAndCountsTheWarning) {
    G_CURRENT_DIV_2 = true;
    require_temperature("-20");
    MDMT_CALL element = element_of(CURVE_B, 1.0f, 0.4f);
    element.Code = 2;
    element.c = 0.125f;
    element.Cext = 0.0625f;
    element.Sy = 38000.0f;
    element.Reduction = 12.0f;
    MDMT_ELEMENT(element);
    MDMT_DIV2_CALL same = part(0.4f);
    same.Ci = 0.125f;
    same.Cext = 0.0625f;
    run(same);
    EXPECT_EQ(element.Tmin, a.Tcurve);
    EXPECT_EQ(element.Mdmt, a.Mdmt);
    EXPECT_EQ(element.Ratio, a.Sr);
    EXPECT_EQ(element.EstarUsed, 1.0f);
    EXPECT_EQ(element.Tug20, 1.0101f);
    EXPECT_EQ(element.Reduction, 12.0f);
    EXPECT_EQ(element.Warnings, 1);
    require_temperature("40");
    MDMT_ELEMENT(element);
    EXPECT_EQ(element.Warnings, 1) << "warm enough";
    require_temperature("-200");
    element.Curve = 0;
    element.EstarUsed = 7.0f;
    MDMT_ELEMENT(element);
    EXPECT_EQ(element.Warnings, 1) << "no carbon steel";
    EXPECT_EQ(element.EstarUsed, 7.0f);
    EXPECT_EQ(element.Ratio, -1.0f);
    element.Curve = 6;
    MDMT_ELEMENT(element);
    EXPECT_EQ(element.Tmin, FIGURE_3_7(1, 1.0f));
    EXPECT_EQ(element.Warnings, 2);
    element.Warnings = INT32_MAX;
    MDMT_ELEMENT(element);
    EXPECT_EQ(element.Warnings, INT32_MIN);
}

} // namespace
} // namespace tarvane
