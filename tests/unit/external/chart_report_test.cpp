// The report of SHLEXT by the charts. The numbers come from an evaluation of the equations, each
// operation rounded to single precision, outside this program.
#include "external/external_fixture.h"

namespace tarvane::external_test {
namespace {

class ChartReport : public ExternalTest {
  protected:
    static Line plain(const char* text) { return {text, PLAIN}; }
    static Line title(const char* text) { return {text, HEADING_STYLE}; }
    static Line note(const char* text) { return {text, NOTE_STYLE}; }
    static Line warning(const char* text) { return {text, WARNING_STYLE}; }
    static Line failure(const char* text) { return {text, ERROR_STYLE}; }

    static constexpr const char* MODULUS = "Elastic Modulus from Chart: CS-2 at 300 \xB0"
                                           "F : 29000000.00 psi";
    static constexpr const char* MAEP = "Results for Maximum Allowable External Pressure (MAEP):";
    static constexpr const char* TCA = "Results for Required Thickness (Tca):";
    static constexpr const char* SLEN = "Results for Maximum Stiffened Length (Slen):";
    static constexpr const char* CYLINDER_HEAD =
        "    Tca         OD        SLEN       D/t       L/D   Factor A        B";

    static std::vector<Line> report_of(Vessel element) {
        element.run();
        return reported();
    }
    // Lines of a report that begin with a text.
    static std::vector<Line> beginning(const std::vector<Line>& report, std::string_view text) {
        std::vector<Line> found;
        std::copy_if(report.begin(), report.end(), std::back_inserter(found),
                     [&](const Line& line) { return line.text.starts_with(text); });
        return found;
    }
};

TEST_F(ChartReport, OfACylinder) {
    const std::vector<Line> expected = {
        plain(MODULUS),
        title(MAEP),
        plain("EMAP = (4*B)/(3*(D/t)) = (4*7267.7676)/(3*258.6667) = 37.4627 psig"),
        plain(CYLINDER_HEAD),
        plain("   0.3750     97.000       60.00    258.67    0.6186  0.0005291    7267.77"),
        title(TCA),
        plain("EMAP = (4*B)/(3*(D/t)) = (4*4274.478)/(3*379.9375) = 15.0006 psig"),
        plain(CYLINDER_HEAD),
        plain("   0.2553     97.000       60.00    379.94    0.6186  0.0002948    4274.48"),
        title(SLEN),
        plain("EMAP = (4*B)/(3*(D/t)) = (4*2912.3525)/(3*258.6667) = 15.0121 psig"),
        plain(CYLINDER_HEAD),
        plain("   0.3750     97.000      153.63    258.67    1.5838  0.0002009    2912.35"),
    };
    EXPECT_EQ(report_of(Vessel(CYLINDER)), expected);
}

TEST_F(ChartReport, OfAnEllipticalHead) {
    const char* const head = "    Tca         OD         D/t    Factor A           B";
    const std::vector<Line> expected = {
        plain(MODULUS),
        title(MAEP),
        plain("EMAP = B/(K0*D/t) = 7272.3965/( 0.9 *258.6667 ) = 31.2388 psig"),
        plain(head),
        plain("   0.3750     97.000      258.67   0.0005369     7272.40"),
        title(TCA),
        plain("EMAP = B/(K0*D/t) = 5214.4058/( 0.9 *386.2164 ) = 15.0014 psig"),
        plain(head),
        plain("   0.2512     97.000      386.22   0.0003596     5214.41"),
    };
    EXPECT_EQ(report_of(Vessel(ELLIPTICAL)), expected);
}

TEST_F(ChartReport, OfATorisphericalHead) {
    const char* const head = "    Tca  Crown Rad        Ro/t    Factor A           B";
    const std::vector<Line> expected = {
        plain(MODULUS),
        title(MAEP),
        plain("EMAP = B/(Ro/t) = 7043.3936/257.3333 = 27.3707 psig"),
        plain(head),
        plain("   0.3750     96.500      257.33   0.0004858     7043.39"),
        title(TCA),
        plain("EMAP = B/(Ro/t) = 5214.3345/347.5995 = 15.001 psig"),
        plain(head),
        plain("   0.2776     96.500      347.60   0.0003596     5214.33"),
    };
    EXPECT_EQ(report_of(Vessel(TORISPHERICAL)), expected);
}

TEST_F(ChartReport, OfASphere) {
    const char* const head = "    Tca  Sphere OD         D/t    Factor A           B";
    const std::vector<Line> expected = {
        plain(MODULUS),
        title(MAEP),
        plain("EMAP = B/((D/t)/2) = 7491.3091/(258.6667/2 ) = 57.9225 psig"),
        plain(head),
        plain("   0.3750     97.000      258.67   0.0009665     7491.31"),
        title(TCA),
        plain("EMAP = B/((D/t)/2) = 5214.3896/(695.1916/2 ) = 15.0013 psig"),
        plain(head),
        plain("   0.1395     97.000      695.19   0.0003596     5214.39"),
    };
    EXPECT_EQ(report_of(Vessel(SPHERE)), expected);
}

TEST_F(ChartReport, OfACone) {
    const Line notes[] = {
        note("Note: The cone thickness used in the calculation has been modified"),
        note("      per UG-33(f), te = t * cos(alpha).")};
    const std::vector<Line> expected = {
        plain(MODULUS),
        title(MAEP),
        plain("EMAP = (4*B)/(3*(D/t)) = (4*6158.3403)/(3*299.1589) = 27.4474 psig"),
        plain(CYLINDER_HEAD),
        plain("   0.3248     97.155       60.00    299.16    0.6176  0.0004247    6158.34"),
        plain("                           60.00"),
        notes[0],
        notes[1],
        title(TCA),
        plain("EMAP = (4*B)/(3*(D/t)) = (4*4277.3516)/(3*380.1834) = 15.001 psig"),
        plain(CYLINDER_HEAD),
        plain("   0.2555     97.155       60.00    380.18    0.6176  0.0002950    4277.35"),
        plain("                           60.00"),
        notes[0],
        notes[1],
    };
    EXPECT_EQ(report_of(Vessel(CONE)), expected);
}

TEST_F(ChartReport, OfThickCylinders) {
    Vessel thick(CYLINDER);
    thick.D = 3.0f, thick.c = 0.0f;
    std::vector<Line> report = report_of(thick);
    EXPECT_EQ(report[2], plain("EMAP = (2.167/(D/t)-0.0833)*B = 1782.7294 psig"));
    EXPECT_EQ(report[4], plain("   0.5000      4.000       60.00      8.00   15.0000  0.0171875    "
                               "9504.09"));
    // The length is the one after its limit of 20 times; L/D shows its own.
    EXPECT_EQ(report.back(), plain("   0.5000      4.000     7130.92      8.00   50.0000  0.0171875"
                                   "    9504.09"));
    thick.S = 4000.0f;
    report = report_of(thick);
    EXPECT_EQ(report[2], plain("EMAP = 2*S/(D/t) * (1-1/(D/t)) = 1750.0 psig"));
}

TEST_F(ChartReport, PressureThatFallsShortMarksTheRows) {
    Vessel weak(CYLINDER);
    weak.P = 40.0f;
    std::vector<Line> report = report_of(weak);
    EXPECT_EQ(
        report[4],
        failure("   0.3750     97.000       60.00    258.67    0.6186  0.0005291    7267.77"));
    EXPECT_EQ(report[3], plain(CYLINDER_HEAD));
    EXPECT_EQ(report[8],
              plain("   0.3988     97.000       60.00    243.24    0.6186  0.0005811    7298.05"));
    EXPECT_EQ(report[12],
              plain("   0.3750     97.000       21.81    258.67    0.2249  0.0015870    7726.68"));

    Vessel cone(CONE);
    cone.P = 40.0f;
    report = report_of(cone);
    EXPECT_EQ(report[4].style, ERROR_STYLE);
    EXPECT_EQ(report[5], failure("                           60.00"));
    EXPECT_EQ(report[6].style, NOTE_STYLE);
    EXPECT_EQ(report[11].style, PLAIN);
    EXPECT_EQ(report[12].style, PLAIN);

    Vessel head(SPHERE);
    head.P = 60.0f;
    EXPECT_EQ(report_of(head)[4],
              failure("   0.3750     97.000      258.67   0.0009665     7491.31"));
}

TEST_F(ChartReport, FallingShortBeginsAThousandthAboveTheDesignPressure) {
    Vessel e(CYLINDER);
    const Real MAEP_given = quiet(e).MAEP;
    e.P = MAEP_given - 0.002f;
    EXPECT_EQ(report_of(e)[4].style, PLAIN);
    e.P = MAEP_given - 0.0005f;
    EXPECT_EQ(report_of(e)[4].style, ERROR_STYLE);
}

TEST_F(ChartReport, SlenderCylindersAreWarnedOfOnce) {
    Vessel slender(CYLINDER);
    slender.D = 500.0f;
    const std::vector<Line> report = report_of(slender);
    const std::vector<Line> first(report.begin() + 4, report.begin() + 9);
    const std::vector<Line> expected = {
        failure("   0.3750    501.000       60.00   1336.00    0.1198  0.0002478    3592.52"),
        warning("Warning: D/t was greater than 1000.  Factor A was based on information in"),
        warning("       the book, \"Theory and Design of Pressure Vessels\",  by Ferrand"),
        warning("       second edition.  Check this geometry carefully and see U-2(g)."),
        title(TCA)};
    EXPECT_EQ(first, expected);
    EXPECT_EQ(beginning(report, "Warning: D/t").size(), 1u);

    slender.D = 374.0f, slender.t = 0.5f; // Do / t = 375 / 0.375 = 1000
    EXPECT_TRUE(beginning(report_of(slender), "Warning").empty());
    Vessel cone(CONE);
    cone.D = 500.0f;
    const std::vector<Line> of_cone = report_of(cone);
    ASSERT_EQ(beginning(of_cone, "Warning: D/t").size(), 1u);
    EXPECT_EQ(of_cone[8].text.substr(0, 12), "Warning: D/t"); // after the cone's note
    Vessel sphere(SPHERE);
    sphere.D = 500.0f;
    EXPECT_TRUE(beginning(report_of(sphere), "Warning").empty());
}

TEST_F(ChartReport, LongLengthsTakeMoreRoom) {
    Vessel e(CYLINDER);
    e.Length = 3.0e6f;
    EXPECT_EQ(report_of(e)[4], failure("   0.3750     97.000     3000000.00    258.67   50.0000  "
                                       "0.0000164     238.39"));
    e.Length = 1.0e6f;
    EXPECT_EQ(report_of(e)[4], failure("   0.3750     97.000  1000000.00    258.67   50.0000  "
                                       "0.0000164     238.39"));
    // The length counts as shown; the second row of a cone always has its width.
    UNITS.diameter = 25.4f;
    e.Length = 100000.0f;
    EXPECT_EQ(report_of(e)[4], failure("   0.3750   2463.800     2540000.00    258.67   50.0000  "
                                       "0.0000164     238.39"));
    Vessel cone(CONE);
    cone.Length = 100000.0f;
    EXPECT_EQ(report_of(cone)[5], failure("                      2540000.00"));
}

TEST_F(ChartReport, LengthsOfLessThanFourAreNotShown) {
    Vessel e(CYLINDER);
    e.Length = 3.99f;
    EXPECT_TRUE(report_of(e).empty());
    Vessel cone(CONE);
    cone.Length = 3.99f;
    EXPECT_TRUE(report_of(cone).empty());
    Vessel sphere(SPHERE);
    sphere.Length = 0.0f;
    EXPECT_FALSE(report_of(sphere).empty());
    e.Length = 4.0f; // shown, except for the third stage
    EXPECT_EQ(beginning(report_of(e), "Results").size(), 2u);
}

TEST_F(ChartReport, YieldIsToldForTheChartsThatGoByIt) {
    const auto yield_lines = [](std::string_view chart, Real Temp) {
        Vessel e(CYLINDER, chart);
        e.Temp = Temp;
        return beginning(report_of(e), "Material Yield");
    };
    const std::vector<Line> told = {
        plain("Material Yield Stress                     : 33600.00 psi")};
    EXPECT_EQ(yield_lines("CS-3", 300.0f), told);
    EXPECT_TRUE(yield_lines("CS-3", 301.0f).empty());
    EXPECT_EQ(yield_lines("NFA-11", 200.0f), told);
    EXPECT_TRUE(yield_lines("CS-2", 300.0f).empty());
}

TEST_F(ChartReport, InTheUnitsOfTheReport) {
    UNITS.thickness = UNITS.diameter = 25.4f;
    UNITS.thickness_label = UNITS.diameter_label = "mm";
    UNITS.pressure = UNITS.stress = 0.00689476f;
    UNITS.pressure_label = UNITS.stress_label = "MPa";
    UNITS.temperature_offset = 32.0f, UNITS.temperature_scale = 1.8f;
    UNITS.temperature_label = "\xB0"
                              "C";
    const std::vector<Line> report = report_of(Vessel(CYLINDER));
    EXPECT_EQ(report[0], plain("Elastic Modulus from Chart: CS-2 at 149 \xB0"
                               "C : 199948.03 MPa"));
    EXPECT_EQ(report[2], plain("EMAP = (4*B)/(3*(D/t)) = (4*50.1095)/(3*258.6667) = 0.2583 MPa"));
    EXPECT_EQ(report[4],
              plain("   9.5250   2463.800     1524.00    258.67    0.6186  0.0005291      50.11"));
}

TEST_F(ChartReport, TemperatureAboveTheChart) {
    Vessel hot(CYLINDER);
    hot.Temp = 800.0f;
    const std::vector<Line> report = report_of(hot);
    const std::vector<Line> first(report.begin(), report.begin() + 7);
    const std::vector<Line> expected = {
        plain(""),
        warning("Warning - Temperature Violation for Chart : CS-2!"),
        warning("Maximum Allowed Temperature : 700 \xB0"
                "F"),
        warning("          This temperature value will be used in the calculation."),
        plain("Elastic Modulus from Chart: CS-2 at 800 \xB0"
              "F : 25000000.00 psi"),
        title(MAEP),
        plain("EMAP = (4*B)/(3*(D/t)) = (4*5080.5674)/(3*258.6667) = 26.1885 psig")};
    EXPECT_EQ(first, expected);
    hot.Temp = 700.0f;
    EXPECT_TRUE(beginning(report_of(hot), "Warning").empty());
}

TEST_F(ChartReport, OfAFlatCone) {
    Vessel flat(CONE);
    flat.Alpha = std::nextafter(60.0f, 90.0f);
    const std::vector<Line> expected = {
        plain("Since Alpha > 60 degrees, compute as a Flat Head per UG-34")};
    EXPECT_EQ(report_of(flat), expected);
    flat.Alpha = 60.0f;
    EXPECT_EQ(report_of(flat)[1], title(MAEP));
}

TEST_F(ChartReport, NeedsBothSwitches) {
    Vessel e(CYLINDER);
    for (const Int print : {0, 2, -1}) {
        e.Print = print;
        EXPECT_TRUE(report_of(e).empty()) << print;
    }
    e.Print = 1;
    SETUP[47].real = 0.9f; // truncated
    EXPECT_TRUE(report_of(e).empty());
    SETUP[47].real = -1.0f;
    EXPECT_FALSE(report_of(e).empty());
    IWRITE = 0;
    EXPECT_TRUE(report_of(e).empty());
}

TEST_F(ChartReport, IsNotForDivision2NorForTheCodeCase) {
    Vessel e(CYLINDER);
    SETUP[0].whole = ASME_VIII_2;
    G_NUSE_OLD_DIV_2 = 1;
    EXPECT_TRUE(report_of(e).empty());
    EXPECT_EQ(e.run().MAEP, quiet(Vessel(CYLINDER)).MAEP);
    reported();
    SETUP[0].whole = ASME_VIII_1;
    by_buckling_stress();
    e.Fy = 0.001f; // by the charts all the same, in silence
    EXPECT_TRUE(report_of(e).empty());
}

TEST_F(ChartReport, WithoutAPressureTheLengthShowsTheStageBefore) {
    Vessel e(CYLINDER);
    e.P = 0.0f;
    const std::vector<Line> report = report_of(e);
    ASSERT_EQ(report.size(), 9u);
    EXPECT_EQ(report[5], title(SLEN));
    EXPECT_EQ(report[8], report[4]);
}

} // namespace
} // namespace tarvane::external_test
