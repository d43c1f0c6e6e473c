// The report of Appendix 1-4(f), line by line. The numbers were calculated separately, in double precision.
#include "thin_head.h"

namespace tarvane {
namespace {

using namespace shell_test;
using data_test::Line;
using Lines = std::vector<Line>;

class Appendix14fLines : public ShellTest {
  protected:
    Appendix14fLines() { IOUT = -1; }

    static Head worked(Int Mode) {
        Head h;
        h.t = 0.3f, h.c = 0.0625f, h.u = 0.0125f, h.Class = 1; // ts 0.225
        h.Mode = Mode;
        return h;
    }
    static Lines lines_of(Head h) {
        h.run();
        return reported();
    }
    static bool has(const Lines& lines, std::string_view text) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const Line& line) { return line.text == text; });
    }
};

// rc 7.2625, Lc 120.0625, D 120.125; Pe/Py 12.5
const Lines MAWP = {
    {"MAWP Calculation ( ts/L = 0.0019)", UNDERLINED_STYLE},
    {"Elastic Buckling Stress (Se):", HEADING_STYLE},
    {" = C1 * Et * (ts/r)"},
    {" = ( 0.477 * 28000000 * 0.031)"},
    {" = 413664.00 psi"},
    {"a    = 0.5 * D - r          = 52.8000 in."},
    {"b    = L - r                = 112.8000 in."},
    {"Beta = COS(A/B)             = 1.0837 rad"},
    {"Ph1  = SQRT(L*ts) / r       = 0.7157 rad"},
    {"c    = a / COS(Beta-Phi)    = 56.5889 in."},
    {"Re   = c + r                = 63.8514 in."},
    {"Buckling Internal Pressure (Pe):", HEADING_STYLE},
    {" = (Se * ts) / (C2 * Re * ((0.5 * Re / r) - 1))"},
    {" = (413664.0 * 0.225)/(1.25 * 63.851 * ((0.5 * 63.851/7.262) - 1))"},
    {" = 343.389 psig"},
    {"Yield Internal Pressure (Py):", HEADING_STYLE},
    {" = (Sy * ts) / (C2 * Re * ((0.5 * Re / r) - 1))"},
    {" = (33000.0 * 0.225)/(1.25 * 63.851 * ((0.5 * 63.851/7.262) - 1))"},
    {" = 27.394 psig"},
    {"Knuckle Failure Internal Pressure (Pck):", HEADING_STYLE},
    {" = 2.0 * Py"},
    {" = 2.0 * 27.394"},
    {" = 54.788 psig"},
    {"Maximum Allowable Working Pressure (MAWP):", HEADING_STYLE},
    {" = Pck / 1.5"},
    {" = 54.788/1.5"},
    {" = 36.525 psig"},
};

TEST_F(Appendix14fLines, Mawp) { EXPECT_EQ(lines_of(worked(RATE_REPORT)), MAWP); }

TEST_F(Appendix14fLines, MawpLessTheHydrostaticHead) {
    Head h = worked(RATE_REPORT);
    h.Hydro = 5.0f;
    Lines expected = MAWP;
    expected.pop_back();
    expected.push_back({"Less Operating Hydrostatic Head Pressure of 5.000 psig"});
    expected.push_back({" = 36.525 - 5.000 = 31.525 psig"});
    EXPECT_EQ(lines_of(h), expected);
    for (const Real none : {0.0f, -1.0f}) {
        h.Hydro = none;
        EXPECT_EQ(lines_of(h), MAWP);
    }
}

TEST_F(Appendix14fLines, NewAndCold) {
    Head h = worked(RATE_NEW_REPORT);
    h.Sy = 90000.0f; // Pe/Py 4.6
    h.Hydro = 5.0f;  // of the MAWP alone
    Lines expected = MAWP;
    expected[0].text = "New & Cold Calculation ( ts/L = 0.0019)";
    expected[17].text = " = (90000.0 * 0.225)/(1.25 * 63.851 * ((0.5 * 63.851/7.262) - 1))";
    expected[18].text = " = 74.710 psig";
    expected[20].text = " = 0.408 * Py + 0.192 * Pe";
    expected[21].text = " = 0.408 * 74.71 + 0.192 * 343.389";
    expected[22].text = " = 96.413 psig";
    expected[23].text = "Maximum Allowable Pressure (MAPNC):";
    expected[25].text = " = 96.413/1.5";
    expected[26].text = " = 64.275 psig";
    EXPECT_EQ(lines_of(h), expected);
}

// rc 120 (0.25 - 0.08) + 0.0625, Lc 120 * 0.9 + 0.0625; 50 psi at 0.15699 in.
const Lines REQUIRED = {
    {"Appendix 1-4(f) Calculations ( ts/L = 0.0021 )", HEADING_STYLE},
    {"Note: Please check the temperature limit given in Table 1-4.3 of the code.", NOTE_STYLE},
    {"    If the max. design temp. exceeds the temp. limit, see U-2(g).", NOTE_STYLE},
    {"Note: Calculation of L and r is from ASME VIII, Division 2, 4.3.7.1", NOTE_STYLE},
    {"r = D(0.5/k-0.08) and L = D(0.44k+0.02) k = D/2h"},
    {"L = 108.0625 : r = 20.4625 : r/D = 0.1703 : C1 = 0.7229 : C2 = 1.0171"},
    {"Required Thickness Calculation:", UNDERLINED_STYLE},
    {"Final iteration:"},
    {"Elastic Buckling Stress (Se):", HEADING_STYLE},
    {" = C1 * Et * (ts/r)"},
    {" = ( 0.723 * 28000000 * 0.008)"},
    {" = 155267.59 psi"},
    {"a    = 0.5 * D - r          = 39.6000 in."},
    {"b    = L - r                = 87.6000 in."},
    {"Beta = COS(A/B)             = 1.1017 rad"},
    {"Ph1  = SQRT(L*ts) / r       = 0.2013 rad"},
    {"c    = a / COS(Beta-Phi)    = 63.7421 in."},
    {"Re   = c + r                = 84.2046 in."},
    {"Buckling Internal Pressure (Pe):", HEADING_STYLE},
    {" = (Se * ts) / (C2 * Re * ((0.5 * Re / r) - 1))"},
    {" = (155267.6 * 0.157)/(1.017 * 84.205 * ((0.5 * 84.205/20.462) - 1))"},
    {" = 269.092 psig"},
    {"Yield Internal Pressure (Py):", HEADING_STYLE},
    {" = (Sy * ts) / (C2 * Re * ((0.5 * Re / r) - 1))"},
    {" = (33000.0 * 0.157)/(1.017 * 84.205 * ((0.5 * 84.205/20.462) - 1))"},
    {" = 57.192 psig"},
    {"Knuckle Failure Internal Pressure (Pck):", HEADING_STYLE},
    {" = 0.408 * Py + 0.192 * Pe"},
    {" = 0.408 * 57.192 + 0.192 * 269.092"},
    {" = 75.000 psig"},
    {"Allowable Pressure (Pa):", HEADING_STYLE},
    {" = Pck / 1.5"},
    {" = 75.0/1.5"},
    {" = 50.000 psig"},
    {"App 1-4(f) Calculated Required Thick. (TR)       : 0.1570 in."},
};

Head required() {
    Head h;
    h.t = 0.3f, h.c = 0.0625f, h.u = 0.0125f, h.Class = 1;
    h.Mode = SOLVE_THICKNESS_REPORT, h.Element = ELLIPTICAL, h.P = 50.0f, h.Temp = 700.0f;
    return h;
}

TEST_F(Appendix14fLines, RequiredThicknessOfAnEllipse) {
    EXPECT_EQ(lines_of(required()), REQUIRED);
}

TEST_F(Appendix14fLines, TheTitleGoesWithAPositiveClass) {
    Head h = required();
    for (const Int none : {0, -1}) {
        h.Class = none;
        EXPECT_EQ(lines_of(h), Lines(REQUIRED.begin() + 1, REQUIRED.end()));
    }
}

TEST_F(Appendix14fLines, TheTemperatureNoteStandsFromTheLimitOn) {
    constexpr std::string_view note =
        "Note: Please check the temperature limit given in Table 1-4.3 of the code.";
    Head h = required();
    h.Temp = 699.0f;
    EXPECT_FALSE(has(lines_of(h), note));
    h.Temp = 701.0f;
    EXPECT_TRUE(has(lines_of(h), note));
    h.Mode = RATE_REPORT;
    EXPECT_FALSE(has(lines_of(h), note));
}

TEST_F(Appendix14fLines, AnEllipseTellsItsRadiiInEachMode) {
    for (const Int Mode : {RATE_REPORT, RATE_NEW_REPORT}) {
        Head h = required();
        h.Mode = Mode;
        const Lines lines = lines_of(h);
        ASSERT_GT(lines.size(), 3u);
        EXPECT_EQ(lines[0], REQUIRED[3]);
        EXPECT_EQ(lines[1], REQUIRED[4]);
        EXPECT_FALSE(has(lines, REQUIRED[5].text));
    }
}

TEST_F(Appendix14fLines, ATorisphereNeedsNoRadiiInItsGeometry) {
    Head h = required();
    h.Element = TORISPHERICAL, h.TminLabel = 1, h.Tstart = 0.2f;
    const Lines lines = lines_of(h);
    ASSERT_GT(lines.size(), 4u);
    EXPECT_EQ(lines[3].text, "r/D = 0.0605 : C1 = 0.4769 : C2 = 1.2500");
    EXPECT_EQ(lines.back().text.substr(0, 51),
              "App 1-4(f) Calculated Required Thick. (TMINC)    : ");
}

TEST_F(Appendix14fLines, AnOpenRadiusAndTheElasticForm) {
    Head h; // Phi 0.682 above Beta 0.263; Pe/Py 0.188
    h.L = 62.0f, h.D = 120.0f, h.r = 4.0f, h.t = 0.12f, h.Sy = 1.0e6f, h.Mode = RATE_REPORT;
    const Lines lines = lines_of(h);
    EXPECT_TRUE(has(lines, "c    = a                    = 56.0000 in."));
    EXPECT_TRUE(has(lines, " = 0.6 * Pe"));
    EXPECT_TRUE(has(lines, " = 0.6 * 46.385"));
}

// The radius is a in both forms there, and the line shows which one was taken.
TEST_F(Appendix14fLines, PhiOfExactlyBetaTakesTheOpenRadius) {
    Head h;
    h.L = 62.0f, h.D = 120.0f, h.r = 8.0f, h.Mode = RATE_REPORT;
    const Real Beta = acos(52.0f / 54.0f);
    const auto Phi = [&] { return std::sqrt(h.L * h.t) / h.r; };
    h.t = square(Beta * h.r) / h.L;
    while (Phi() < Beta)
        h.t = above(h.t);
    while (Phi() > Beta)
        h.t = below(h.t);
    ASSERT_EQ(Phi(), Beta);
    constexpr std::string_view open = "c    = a                    = 52.0000 in.";
    constexpr std::string_view closed = "c    = a / COS(Beta-Phi)    = 52.0000 in.";
    const Lines at = lines_of(h);
    EXPECT_TRUE(has(at, open));
    EXPECT_FALSE(has(at, closed));
    while (!(Phi() < Beta))
        h.t = below(h.t);
    EXPECT_TRUE(has(lines_of(h), closed));
}

TEST_F(Appendix14fLines, WithoutSolutionTheTailTellsSo) {
    Head h = required();
    h.P = NOT_A_NUMBER;
    EXPECT_EQ(lines_of(h),
              (Lines{{"App 1-4(f) Calculated Required Thick. (TR)       : NaN in."},
                     {"Error on Appendix 14(f) calculation, the solution could not", ERROR_STYLE},
                     {"converge after 1000 trys. Contact Kessendale for support.", ERROR_STYLE}}));
}

TEST_F(Appendix14fLines, AFailedGeometryWritesNothing) {
    for (const Int Mode : {1, 2, 3}) {
        Head h = worked(Mode);
        h.r = 55.0f;
        EXPECT_EQ(lines_of(h), Lines{});
    }
}

TEST_F(Appendix14fLines, QuietModesWriteNothingAndEveryModePutsTheSwitchBack) {
    for (const Int Mode : {-1, 0, 1, 2, 3, 4, 5, 6}) {
        for (const Int entry : {0, 1, 9}) {
            IWRITE = entry;
            const Lines lines = lines_of(worked(Mode));
            EXPECT_EQ(lines.empty(), Mode < 1 || Mode > 3) << Mode;
            EXPECT_EQ(IWRITE, entry);
        }
    }
}

TEST_F(Appendix14fLines, ValuesGoThroughTheirUnits) {
    UNITS.thickness = UNITS.diameter = 25.4f;
    UNITS.pressure = 0.06894757f, UNITS.stress = 0.006894757f;
    UNITS.thickness_label = UNITS.diameter_label = "mm";
    UNITS.pressure_label = "bar", UNITS.stress_label = "MPa";
    Head h = worked(RATE_REPORT);
    h.Hydro = 5.0f;
    Lines lines = lines_of(h);
    EXPECT_EQ(lines[3].text, " = ( 0.477 * 193053.203 * 0.031)");
    EXPECT_EQ(lines[4].text, " = 2852.11 MPa");
    EXPECT_EQ(lines[5].text, "a    = 0.5 * D - r          = 1341.1200 mm");
    EXPECT_EQ(lines[7].text, "Beta = COS(A/B)             = 1.0837 rad");
    EXPECT_EQ(lines[13].text,
              " = (2852.1 * 5.715)/(1.25 * 1621.826 * ((0.5 * 1621.826/184.467) - 1))");
    EXPECT_EQ(lines[14].text, " = 23.676 bar");
    EXPECT_EQ(lines[26].text, "Less Operating Hydrostatic Head Pressure of 0.345 bar");
    EXPECT_EQ(lines[27].text, " = 2.518 - 0.345 = 2.174 bar");
    lines = lines_of(required());
    EXPECT_EQ(lines[5].text,
              "L = 2744.7874 : r = 519.7475 : r/D = 0.1703 : C1 = 0.7229 : C2 = 1.0171");
    EXPECT_EQ(lines.back().text, "App 1-4(f) Calculated Required Thick. (TR)       : 3.9870 mm");
}

} // namespace
} // namespace tarvane
