// The report of SHLEXT by buckling stress. The numbers come from an evaluation of the equations, each
// operation rounded to single precision, outside this program.
#include "external/external_fixture.h"

namespace tarvane::external_test {
namespace {

class StressReport : public ExternalTest {
  protected:
    StressReport() { by_buckling_stress(); }

    static std::vector<std::string> report_of(Vessel element) {
        element.run();
        return texts();
    }
    static bool holds(const std::vector<std::string>& report, const std::string& text) {
        return std::find(report.begin(), report.end(), text) != report.end();
    }
    // A sphere of this outside diameter, 0.375 in. net.
    static Vessel sphere(Real Do) {
        Vessel e(SPHERE);
        e.D = Do - 1.0f;
        return e;
    }
    static Vessel cylinder(Real Do, Real Length) {
        Vessel e(CYLINDER);
        e.D = Do - 1.0f;
        e.Length = Length;
        return e;
    }
};

TEST_F(StressReport, OfACylinder) {
    const std::vector<std::string> expected = {
        "Maximum External Pressure per Code Case 2286 or Div. 2 Section 4.4",
        "Determine Parameter [Mx]:",
        " = L / sqrt( Ro * t )",
        " = 60.0/sqrt( 48.5 * 0.375 )",
        " = 14.0690",
        "Compute the Factor [Ch]:",
        " Since Mx > 13 and Mx < 2 * (Do/t)^(0.94), Ch = 1.12 * Mx^(-1.058)",
        " = 1.12 * 14.069^(-1.058)",
        " = 0.0683",
        "Elastic Hoop Compressive Membrane Failure Stress [Fhe]:",
        " = 1.6 * Ch * Ey * ( t / Do )",
        " = 1.6 * 0.068 * 28300000 * ( 0.375/97.0 )",
        " = 11954.18 psi",
        "Ratio of Elastic Hoop Compressive Membrane Failure Stress to Yield [Fr]:",
        " = Fhe / Fy",
        " = 0.3558",
        "Predicted Buckling Stress [Fic]:",
        " Since Fr <= 0.552, Fic = Fhe",
        " = 11954.18 psi",
        "Factor of Safety [FS]:",
        " Since Fic [11954.18] < 0.55 * 33600.0, FS = 2",
        "Allowable Circumferential Compressive Stress [Fha]:",
        " Since Fr <= 0.552, Fha = Fhe/FS",
        " = 5977.09 psi",
        "Allowable External Pressure at the given Thickness [Pa]:",
        " = 2 * Fha * ( t / Do )",
        " = 2 * 5977.092 * ( 0.375/97.0 )",
        " = 46.215 psig",
    };
    EXPECT_EQ(report_of(Vessel(CYLINDER)), expected);
}

TEST_F(StressReport, TitlesHaveTheHeadingStyle) {
    Vessel(CYLINDER).run();
    const std::vector<Line> report = reported();
    for (const Line& line : report) {
        const bool title = line.text.ends_with("]:") || line.text.starts_with("Maximum");
        EXPECT_EQ(line.style, title ? HEADING_STYLE : PLAIN) << line.text;
    }
    Vessel(SPHERE, "HA-1").run();
    for (const Line& line : reported()) {
        const bool title = line.text.ends_with("]:") || line.text.starts_with("Maximum");
        EXPECT_EQ(line.style, title ? HEADING_STYLE : PLAIN) << line.text;
    }
}

TEST_F(StressReport, OfACone) {
    std::vector<std::string> report = report_of(Vessel(CONE));
    EXPECT_EQ(report.size(), 28u);
    EXPECT_EQ(report[3], " = 48.0/sqrt( 42.236 * 0.375 )"); // slant length, mean radius
    EXPECT_EQ(report[4], " = 12.0610");
    EXPECT_EQ(report[6], " Since Mx > 1.5 and Mx < 13, Ch = 0.92 / ( Mx - 0.579 )");
    EXPECT_EQ(report[7], " = 0.92/( 12.061 - 0.579)");
    EXPECT_EQ(report[8], " = 0.0801");
    EXPECT_EQ(report[11], " = 1.6 * 0.08 * 28300000 * ( 0.375/84.472 )");
    EXPECT_EQ(report[12], " = 16106.27 psi");
    EXPECT_EQ(report[27], " = 71.501 psig");
}

TEST_F(StressReport, OfAnEllipticalHead) {
    const std::vector<std::string> expected = {
        "Maximum External Pressure per Code Case 2286 or Div. 2 Section 4.4",
        "Elastic Hoop Compressive Membrane Failure Stress [Fhe]:",
        " = 0.075 * Ey * ( t / Ro )",
        " = 0.075 * 28300000 * ( 0.375/86.467 )",
        " = 9205.06 psi",
        "Ratio of Elastic Hoop Compressive Membrane Failure Stress to Yield [Fr]:",
        " = Fhe / Sy",
        " = 0.2740",
        "Predicted Buckling Stress [Fic]:",
        " Since Fr <= 0.55, Fic = Fhe",
        " = 9205.06 psi",
        "Factor of Safety [FS]:",
        " Since Fic [9205.06] < 0.55 * 33600.0, FS = 2",
        " Since Fr <= 0.55, Fha = Fhe/FS",
        " = 9205.06/2.0",
        " = 4602.53 psi",
        "Allowable External Pressure at the given Thickness [Pa]:",
        " = 2 * Fha[t/Ro]",
        " = 2 * 4602.528[ 0.375/86.467]",
        " = 39.921 psig",
    };
    EXPECT_EQ(report_of(Vessel(ELLIPTICAL)), expected);
}

TEST_F(StressReport, OfATorisphericalHead) {
    const std::vector<std::string> report = report_of(Vessel(TORISPHERICAL));
    ASSERT_EQ(report.size(), 20u);
    EXPECT_EQ(report[3], " = 0.075 * 28300000 * ( 0.375/96.5 )");
    EXPECT_EQ(report[4], " = 8248.06 psi");
    EXPECT_EQ(report[19], " = 32.052 psig");
}

TEST_F(StressReport, OfASphereInEachRange) {
    std::vector<std::string> report = report_of(sphere(97.0f));
    EXPECT_EQ(report[3], " = 0.075 * 28300000 * ( 0.375/48.5 )");
    EXPECT_EQ(report[19], " = 126.890 psig");

    report = report_of(sphere(61.0f));
    const std::vector<std::string> third = {
        "Predicted Buckling Stress [Fic]:",
        " Since Fr > 0.55 and Fr <= 1.6, Fic = 0.18 * Fh + 0.45 * Fy",
        " = 0.18 * Fhe + 0.45 * Fy",
        " = 19817.34 psi",
        "Factor of Safety [FS]:",
        " Since Fic > 0.55 Fy and Fic < Fy",
        " = 2.407 - 0.741 * Fic / Fy",
        " = 2.407 - 0.741 * 19817.34/33600.0",
        " = 1.9700",
        " Since Fr > 0.55 and Fr < 1.6, Fha = ( 0.18 * Fh + 0.45 * Fy )/FS",
        " = ( 0.18 * 26096.31 + 0.45 * 33600.0 )/1.97",
        " = 10059.78 psi",
    };
    EXPECT_EQ(std::vector<std::string>(report.begin() + 8, report.begin() + 20), third);
    EXPECT_EQ(report.back(), " = 247.372 psig");

    report = report_of(sphere(21.0f));
    const std::vector<std::string> second = {
        " Since Fr > 1.6 and Fr < 6.25, Fic = 1.31 * Fy /( 1.15 + Sy/Fhe )",
        " = 1.31 * 33600.0/( 1.15 + 33600.0/75803.57 )",
        " = 27626.54 psi",
        "Factor of Safety [FS]:",
        " Since Fic > 0.55 Fy and Fic < Fy",
        " = 2.407 - 0.741 * Fic / Fy",
        " = 2.407 - 0.741 * 27626.54/33600.0",
        " = 1.7977",
        " Since Fr > 1.6 and Fr < 6.25, Fha = 1.31 * Fy / ( FS * (1.15 + Sy/Fhe) )",
        " = 1.31 * 33600.0/( 1.8 * (1.15 + 33600.0/75803.57) )",
        " = 15367.40 psi",
    };
    EXPECT_EQ(std::vector<std::string>(report.begin() + 9, report.begin() + 20), second);
    EXPECT_EQ(report.back(), " = 1097.672 psig");

    Vessel thick = sphere(11.0f);
    thick.t = 2.125f, thick.D = 6.75f; // 2 in. net of Do = 11
    report = report_of(thick);
    EXPECT_TRUE(holds(report, " Since Fr >= 6.25, Fic = Fy"));
    EXPECT_TRUE(holds(report, " Since Fic [33600.0] >= Fy[33600.0], FS = 1.667"));
    EXPECT_TRUE(holds(report, " Since Fr >= 6.25, Fha = Fy/FS"));
    EXPECT_TRUE(holds(report, " = 20155.97 psi"));
}

TEST_F(StressReport, OfACylinderInEachRange) {
    std::vector<std::string> report = report_of(cylinder(22.0f, 60.0f));
    EXPECT_TRUE(holds(report, " Since Fr > 0.552 and Fr < 2.439, Fic = 0.7 * Fy * Fr^(0.4)"));
    EXPECT_TRUE(holds(report, " Since Fr > 0.552 and Fr < 2.439, Fha = 0.7 * Fy/FS * Fr^(0.4)"));
    EXPECT_TRUE(holds(report, " = 20573.35 psi"));
    EXPECT_EQ(report.back(), " = 359.069 psig");
    report = report_of(cylinder(97.0f, 6000.0f));
    EXPECT_EQ(report.back(), " = 1.439 psig");
    EXPECT_EQ(report[6], " Since Mx > 2 * (Do/t)^(0.94), Ch = 0.55 / (Do/t)");
    EXPECT_EQ(report[7], " = 0.55 */( 97.0/0.375 )");
    EXPECT_EQ(report[8], " = 0.0021");
    report = report_of(cylinder(97.0f, 6.0f));
    EXPECT_EQ(report[4], " = 1.4069");
    EXPECT_EQ(report[6], " Since Mx <= 15, Ch = 1.0");
    EXPECT_EQ(report[7], "Elastic Hoop Compressive Membrane Failure Stress [Fhe]:");
    EXPECT_TRUE(holds(report, " Since Fr >= 2.439, Fic = Fy"));
    EXPECT_TRUE(holds(report, " Since Fr > 2.439, Fha = Fy/FS"));
    EXPECT_EQ(report.back(), " = 155.845 psig");
}

TEST_F(StressReport, OfAnotherSteel) {
    const std::vector<std::string> report = report_of(Vessel(CYLINDER, "HA-1"));
    const std::vector<std::string> expected = {
        " = 11264.25 psi",
        "For non-Carbon and Low Alloy Steel Materials re-compute [Fic]:",
        "Factor A [A]:",
        " = F/Emod, see 2286-6 Step 1",
        " = 11264.25/26666666",
        " = 0.0004224",
        "From the External Pressure Chart HA-1, determine the Stress [B]:",
        " = 4081.97 psi",
        "The Tangent Modulus from 3-D.5.2, [Et]:",
        " = 2B/A",
        " = 2 * 4081.97/0.00042",
        " = 19327094.00 psi",
        "Predicted Buckling Stress [Fic]:",
        " = ( F * Et )/( FS * Emod )",
        " = ( 11264.247 * 19327094 )/( 1 * 26666666 )",
        " = 8163.94 psi",
        "Factor of Safety [FS]:",
        " Since Fic [8163.94] < 0.55 * 33600.0, FS = 2",
    };
    ASSERT_EQ(report.size(), 43u);
    EXPECT_EQ(std::vector<std::string>(report.begin() + 18, report.begin() + 36), expected);
    EXPECT_EQ(report.back(), " = 43.547 psig");
}

TEST_F(StressReport, InTheUnitsOfTheReport) {
    UNITS.thickness = UNITS.diameter = 25.4f;
    UNITS.pressure = UNITS.stress = 0.00689476f;
    UNITS.pressure_label = UNITS.stress_label = "MPa";
    const std::vector<std::string> report = report_of(Vessel(SPHERE));
    EXPECT_EQ(report[3], " = 0.075 * 195122 * ( 9.525/1231.9 )"); // 28300000 psi
    EXPECT_EQ(report[4], " = 113.15 MPa");
    EXPECT_EQ(report[19], " = 0.875 MPa");
}

TEST_F(StressReport, PrintIsTheSwitchOfTheReport) {
    Vessel e(CYLINDER);
    e.Print = 0;
    EXPECT_TRUE(report_of(e).empty());
    SETUP[47].real = 0.0f; // only the tables by the charts depend on it
    e.Print = 1;
    EXPECT_EQ(report_of(e).size(), 28u);
    IWRITE = 0;
    EXPECT_EQ(report_of(e).size(), 28u);
    EXPECT_EQ(IWRITE, 1);
}

TEST_F(StressReport, TemperatureAboveTheChartIsWarnedOfHereToo) {
    Vessel hot(CYLINDER, "HA-1");
    hot.Temp = 401.0f;
    const std::vector<std::string> report = report_of(hot);
    EXPECT_EQ(report[1], "Warning - Temperature Violation for Chart : HA-1!");
    EXPECT_EQ(report[4], "Maximum External Pressure per Code Case 2286 or Div. 2 Section 4.4");
}

} // namespace
} // namespace tarvane::external_test
