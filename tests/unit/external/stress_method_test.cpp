#include "external/external_fixture.h"

#include "external/stress_method.h"

namespace tarvane::external_test {
namespace {

// The equations in double precision.
double Ch_of(double Mx, double Dot) {
    if (Mx >= 2.0 * std::pow(Dot, 0.94)) return 0.55 / Dot;
    if (Mx > 13.0) return 1.12 * std::pow(Mx, -1.058);
    if (Mx > 1.5) return 0.92 / (Mx - 0.579);
    return 1.0;
}
double FS_of_stress(double Fic, double Fy) {
    if (Fic <= 0.55 * Fy) return 2.0;
    return Fic < Fy ? 2.407 - 0.741 * Fic / Fy : 1.667;
}
double cylinder_Fic(double Fhe, double Fy) {
    const double Fr = Fhe / Fy;
    return Fr >= 2.439 ? Fy : Fr > 0.552 ? 0.7 * Fy * std::pow(Fr, 0.4) : Fhe;
}
double head_Fic(double Fhe, double Fy) {
    const double Fr = Fhe / Fy;
    if (Fr >= 6.25) return Fy;
    if (Fr > 1.6) return 1.31 * Fy / (1.15 + Fy / Fhe);
    return Fr > 0.55 ? 0.18 * Fhe + 0.45 * Fy : Fhe;
}

class BucklingStress : public ExternalTest {
  protected:
    BucklingStress() { use_chart("CS-2"); }
    static void use_chart(std::string_view name) {
        EXTERNAL.chart = name;
        EXTERNAL.CarbonChart = name.find("CS") != std::string_view::npos;
        EXTERNAL.Temp = 300.0f;
        EXTERNAL.Emod = 26.666666e6f;
    }
    static bool reports(std::string_view text) {
        const std::vector<std::string> lines = stored_lines();
        return std::find(lines.begin(), lines.end(), text) != lines.end();
    }
    static Real FS_of_carbon(Real Fic, Real Fy) { return CC2286_FS(5000.0f, Fic, Fy); }
};

// ---- factor of safety ----------------------------------------------------------------------------

TEST_F(BucklingStress, FactorOfSafetyByTheStress) {
    const Real Fy = 40000.0f; // 0.55 Fy = 22000
    EXPECT_EQ(FS_of_carbon(5000.0f, Fy), 2.0f);
    EXPECT_EQ(FS_of_carbon(0.55f * Fy, Fy), 2.0f);
    EXPECT_NEAR(FS_of_carbon(std::nextafter(0.55f * Fy, Fy), Fy), 2.407f - 0.741f * 0.55f, 1e-5f);
    EXPECT_NEAR(FS_of_carbon(30000.0f, Fy), 2.407f - 0.741f * 0.75f, 1e-5f);
    EXPECT_NEAR(FS_of_carbon(std::nextafter(Fy, 0.0f), Fy), 1.666f, 1e-4f);
    EXPECT_EQ(FS_of_carbon(Fy, Fy), 1.667f);
    EXPECT_EQ(FS_of_carbon(50000.0f, Fy), 1.667f);
}

TEST_F(BucklingStress, CarbonSteelKeepsItsStressAndWritesTheFactorAlone) {
    Real Fic = 30000.0f;
    CC2286_FS(31000.0f, Fic, 40000.0f);
    EXPECT_EQ(Fic, 30000.0f);
    const std::vector<std::string> expected = {
        "Factor of Safety [FS]:", " Since Fic > 0.55 Fy and Fic < Fy",
        " = 2.407 - 0.741 * Fic / Fy", " = 2.407 - 0.741 * 30000.0/40000.0", " = 1.8513"};
    EXPECT_EQ(texts(), expected);
    Fic = 12345.67f;
    CC2286_FS(31000.0f, Fic, 40000.0f);
    EXPECT_EQ(texts().back(), " Since Fic [12345.67] < 0.55 * 40000.0, FS = 2");
    Fic = 40000.5f;
    CC2286_FS(31000.0f, Fic, 40000.0f);
    EXPECT_EQ(texts().back(), " Since Fic [40000.5] >= Fy[40000.0], FS = 1.667");
}

TEST_F(BucklingStress, OtherSteelTakesItsStressFromTheTangentModulus) {
    use_chart("HA-1");
    Real Fic = 20000.0f;
    const Real FS = CC2286_FS(16000.0f, Fic, 30000.0f);
    // At 300 degrees, a third of the way from 400 back: c0 = 11886.2, c1 = 4000, c2 = 500.
    const double A = 16000.0 / 26.666666e6;
    const double x = std::log10(A);
    const double B = 11886.2 + 4000.0 * x + 500.0 * x * x;
    const double tangent = 16000.0 * (2.0 * B / A) / 26.666666e6;
    EXPECT_NEAR(Fic, tangent, 1e-3 * tangent);
    EXPECT_NEAR(FS, FS_of_stress(tangent, 30000.0), 1e-3);
}

TEST_F(BucklingStress, WithoutAnElasticStressItStartsFromThePredictedOne) {
    use_chart("HA-1");
    const auto tangent = [](Real F, Real Fic) {
        CC2286_FS(F, Fic, 30000.0f);
        return Fic;
    };
    // 4000: on the straight line 2 B / A is the chart's modulus itself.
    EXPECT_NEAR(tangent(0.0f, 4000.0f), 4000.0f, 0.01f);
    EXPECT_EQ(tangent(100.0f, 4000.0f), tangent(0.0f, 4000.0f));
    EXPECT_NEAR(tangent(101.0f, 4000.0f), 101.0f, 0.01f);
    reported();
    tangent(100.0f, 4000.0f);
    EXPECT_TRUE(reports(" = ( Fic * Et )/( FS * Emod )"));
    EXPECT_FALSE(reports(" = ( F * Et )/( FS * Emod )"));
}

TEST_F(BucklingStress, TheChartsTemperatureIsThatOfTheLastCall) {
    use_chart("HA-1");
    const auto at = [](Real T) {
        EXTERNAL.Temp = T;
        Real Fic = 0.0f;
        CC2286_FS(16000.0f, Fic, 30000.0f);
        return Fic;
    };
    EXPECT_GT(at(100.0f), at(300.0f));
    EXPECT_EQ(at(400.0f), at(900.0f)); // beyond the chart its last row
    // The curve of the call before stays as it was.
    EXPECT_EQ(EXTERNAL.curve.E, 0.0f);
}

TEST_F(BucklingStress, WithoutAChartFileTheCurveOfTheLastCallStands) {
    const auto at_16000 = [](Real& Fic) {
        Fic = 20000.0f;
        return CC2286_FS(16000.0f, Fic, 30000.0f);
    };
    quiet(Vessel(CYLINDER, "HA-1"));
    Real with_file = 0.0f, without = 0.0f;
    const Real FS = at_16000(with_file);
    ASSERT_LT(with_file, 15000.0f);
    remove_file("system", "ExtChartData.txt");
    RESET_MATERIALS();
    EXPECT_EQ(at_16000(without), FS);
    EXPECT_EQ(without, with_file);
    // Never a chart: no modulus and no stress. A not-a-number is not below the yield.
    RESET_EXTERNAL();
    EXPECT_EQ(at_16000(without), 1.667f);
    EXPECT_TRUE(std::isnan(without));
}

// ---- cylinder ------------------------------------------------------------------------------------

Real length_for(Real Mx, Real Do, Real t) { return Mx * std::sqrt(Do / 2.0f * t); }

TEST_F(BucklingStress, CylinderThroughoutItsRanges) {
    for (const Real Dot : {20.0f, 60.0f, 150.0f, 400.0f, 1000.0f})
        for (const Real Mx : {0.5f, 1.4f, 1.6f, 5.0f, 12.9f, 13.1f, 40.0f, 90.0f, 3000.0f})
            for (const Real Fy : {20000.0f, 38000.0f, 90000.0f}) {
                const Real Do = Dot * 0.5f, Ey = 28.3e6f;
                const BUCKLING_CYLINDER shell =
                    CC2286_CYLINDER(Do, length_for(Mx, Do, 0.5f), 0.5f, Ey, Fy);
                const double d = wide(Dot), Sy = wide(Fy);
                const double Fhe = 1.6 * Ch_of(wide(Mx), d) * 28.3e6 / d;
                const double Fic = cylinder_Fic(Fhe, Sy);
                const double Fha = Fic / FS_of_stress(Fic, Sy);
                EXPECT_NEAR(shell.Fhe, Fhe, 1e-5 * Fhe) << Dot << " " << Mx;
                EXPECT_NEAR(shell.FS, FS_of_stress(Fic, Sy), 2e-5);
                EXPECT_NEAR(shell.Fha, Fha, 2e-5 * Fha);
                EXPECT_NEAR(shell.Pa, 2.0 * Fha / d, 4e-5 * Fha / d);
            }
}

// Ch from the stress that is calculated with it.
Real Ch_at(Real Mx) {
    // Ro t = 1: the length is Mx itself.
    const Real Do = 20.0f, t = 0.1f;
    return CC2286_CYLINDER(Do, Mx, t, 1.0e6f, 1.0e9f).Fhe / (1.6f * 1.0e6f / (Do / t));
}

TEST_F(BucklingStress, LimitsOfTheLengthParameter) {
    EXPECT_FLOAT_EQ(Ch_at(1.5f), 1.0f);
    EXPECT_TRUE(reports(" Since Mx <= 15, Ch = 1.0"));
    EXPECT_NEAR(Ch_at(std::nextafter(1.5f, 2.0f)), 0.92f / 0.921f, 1e-5f);
    EXPECT_NEAR(Ch_at(13.0f), 0.92f / 12.421f, 1e-6f);
    EXPECT_NEAR(Ch_at(13.001f), 1.12 * std::pow(13.001, -1.058), 1e-6);
    const Real x2 = 2.0f * std::pow(200.0f, 0.94f);
    EXPECT_NEAR(Ch_at(x2), 0.55f / 200.0f, 1e-8f);
    EXPECT_NEAR(Ch_at(std::nextafter(x2, 0.0f)), 1.12 * std::pow(x2, -1.058), 1e-7);
    EXPECT_NEAR(Ch_at(std::nanf("")), 0.55f / 200.0f, 1e-8f); // not below
}

// A yield stress that makes Fr exactly one of the limits, if singles have it.
Real yield_for(Real Fhe, Real Fr) {
    Real Fy = Fhe / Fr;
    for (int i = 0; i < 8 && Fhe / Fy > Fr; ++i)
        Fy = std::nextafter(Fy, 2.0f * Fy);
    for (int i = 0; i < 8 && Fhe / Fy < Fr; ++i)
        Fy = std::nextafter(Fy, 0.0f);
    return Fy;
}

// A stress whose ratio to some yield is exactly the limit: one of many thicknesses has it.
template <typename Evaluate>
bool at_ratio(Real limit, Evaluate evaluate) {
    for (int i = 0; i < 200; ++i) {
        const Real t = 0.5f + 0.001f * static_cast<Real>(i);
        const Real Fhe = evaluate(t, 1.0e9f);
        const Real Fy = yield_for(Fhe, limit);
        if (Fhe / Fy != limit) continue;
        OPEN_LINE_STORE();
        evaluate(t, Fy);
        return true;
    }
    return false;
}

Real cylinder_Fhe(Real t, Real Fy) { return CC2286_CYLINDER(97.0f, 60.0f, t, 28.3e6f, Fy).Fhe; }

TEST_F(BucklingStress, LimitsOfACylindersStressRatio) {
    ASSERT_TRUE(at_ratio(2.439f, cylinder_Fhe));
    EXPECT_TRUE(reports(" Since Fr >= 2.439, Fic = Fy"));
    EXPECT_TRUE(reports(" Since Fr > 2.439, Fha = Fy/FS"));
    ASSERT_TRUE(at_ratio(std::nextafter(2.439f, 0.0f), cylinder_Fhe));
    EXPECT_TRUE(reports(" Since Fr > 0.552 and Fr < 2.439, Fic = 0.7 * Fy * Fr^(0.4)"));
    EXPECT_TRUE(reports(" Since Fr > 0.552 and Fr < 2.439, Fha = 0.7 * Fy/FS * Fr^(0.4)"));
    ASSERT_TRUE(at_ratio(0.552f, cylinder_Fhe));
    EXPECT_TRUE(reports(" Since Fr <= 0.552, Fic = Fhe"));
    EXPECT_TRUE(reports(" Since Fr <= 0.552, Fha = Fhe/FS"));
}

// ---- heads ---------------------------------------------------------------------------------------

TEST_F(BucklingStress, HeadsThroughoutTheirRanges) {
    for (const Real Rot : {15.0f, 40.0f, 100.0f, 300.0f, 900.0f})
        for (const Real Fy : {20000.0f, 38000.0f, 90000.0f}) {
            const Real Ro = Rot * 0.5f;
            const double d = wide(Rot), Sy = wide(Fy);
            const double Fhe = 0.075 * 28.3e6 / d;
            const double Fic = head_Fic(Fhe, Sy);
            const double Fha = Fic / FS_of_stress(Fic, Sy);
            const Real kO = 1.9f;
            const Real Ko = 0.25346f + 0.13995f * 1.9f + 0.12238f * 3.61f - 0.015297f * 6.859f;
            for (const auto& [element, Do] :
                 {std::pair{TORISPHERICAL, Ro}, {SPHERE, 2.0f * Ro}, {ELLIPTICAL, Ro / Ko}}) {
                const BUCKLING_HEAD head =
                    CC2286_HEAD(element, Do, 28.3e6f, 0.5f, Fy, -1.0f, -1.0f, kO);
                EXPECT_NEAR(head.Fha, Fha, 3e-5 * Fha) << element << " " << Rot;
                EXPECT_NEAR(head.Pa, 2.0 * Fha / d, 6e-5 * Fha / d);
                EXPECT_EQ(head.Fa, 0.0f);
                EXPECT_EQ(head.Fb, 0.0f);
            }
        }
}

Real head_Fhe(Real t, Real Fy) {
    CC2286_HEAD(TORISPHERICAL, 97.0f, 28.3e6f, t, Fy, -1.0f, -1.0f, 0.0f);
    return 0.075f * 28.3e6f / (97.0f / t);
}

TEST_F(BucklingStress, LimitsOfAHeadsStressRatio) {
    ASSERT_TRUE(at_ratio(6.25f, head_Fhe));
    EXPECT_TRUE(reports(" Since Fr >= 6.25, Fic = Fy"));
    EXPECT_TRUE(reports(" Since Fr >= 6.25, Fha = Fy/FS"));
    ASSERT_TRUE(at_ratio(1.6f, head_Fhe));
    EXPECT_TRUE(reports(" Since Fr > 0.55 and Fr <= 1.6, Fic = 0.18 * Fh + 0.45 * Fy"));
    EXPECT_TRUE(reports(" Since Fr > 0.55 and Fr < 1.6, Fha = ( 0.18 * Fh + 0.45 * Fy )/FS"));
    ASSERT_TRUE(at_ratio(std::nextafter(1.6f, 2.0f), head_Fhe));
    EXPECT_TRUE(reports(" Since Fr > 1.6 and Fr < 6.25, Fic = 1.31 * Fy /( 1.15 + Sy/Fhe )"));
    ASSERT_TRUE(at_ratio(0.55f, head_Fhe));
    EXPECT_TRUE(reports(" Since Fr <= 0.55, Fic = Fhe"));
    EXPECT_TRUE(reports(" Since Fr <= 0.55, Fha = Fhe/FS"));
}

TEST_F(BucklingStress, UnequalCompressionAllowsTwoStresses) {
    const BUCKLING_HEAD equal = CC2286_HEAD(SPHERE, 100.0f, 28e6f, 0.5f, 4e4f, -3.0f, -3.0f, 0.0f);
    const BUCKLING_HEAD head = CC2286_HEAD(SPHERE, 100.0f, 28e6f, 0.5f, 4e4f, -2.0f, -4.0f, 0.0f);
    EXPECT_EQ(head.Fha, equal.Fha);
    EXPECT_EQ(equal.Fa, 0.0f);
    // min / max = -4 / -2 = 2: 0.6 / (1 - 0.8) = 3.
    EXPECT_FLOAT_EQ(head.Fa, 3.0f * head.Fha);
    EXPECT_FLOAT_EQ(head.Fb, 6.0f * head.Fha);
}

TEST_F(BucklingStress, MixedStressesWriteNothing) {
    const Real Sigma2 = 4000.0f;
    for (const Real Rot : {100.0f, 621.0f, 622.0f, 900.0f}) {
        const Real Ro = 0.5f * Rot;
        const BUCKLING_HEAD head =
            CC2286_HEAD(TORISPHERICAL, Ro, 28e6f, 0.5f, 4e4f, -1000.0f, Sigma2, 0.0f);
        const double d = wide(Rot), Ci = Rot >= 622.0f ? 0.125 : 102.2 / (d + 195.0);
        const double Cc = 4000.0 * d / 28e6;
        const double Cd = 1.06 / (1.0 / Cc + 3.24);
        const double Fic = head_Fic((Ci + Cd) * 28e6 / d, 4e4);
        EXPECT_NEAR(head.Fha, Fic / FS_of_stress(Fic, 4e4), 0.5) << Rot;
        EXPECT_EQ(head.Fa, head.Fha);
        EXPECT_EQ(head.Pa, 0.0f);
        EXPECT_EQ(head.Fb, 0.0f);
    }
    EXPECT_EQ(LINE_COUNT, 0);
    EXPECT_EQ(IWRITE, 1);
}

TEST_F(BucklingStress, MixedStressesAtTheirGapGiveNothing) {
    // Without the other stress only Ci is left: Fhe = Ci Ey / Rot, Fr = Fhe / Fy.
    const Real Rot = 700.0f;
    const Real Fhe = 0.125f * 28e6f / Rot; // 5000
    const auto Fha_at = [&](Real Fy) {
        return CC2286_HEAD(TORISPHERICAL, 350.0f, 28e6f, 0.5f, Fy, 1e-10f, -1e-10f, 0.0f).Fha;
    };
    const Real Fy = yield_for(Fhe, 1.6f);
    ASSERT_EQ(Fhe / Fy, 1.6f);
    EXPECT_EQ(Fha_at(Fy), 0.0f);
    EXPECT_GT(Fha_at(Fy * 1.001f), 0.0f);
    EXPECT_GT(Fha_at(Fy * 0.999f), 0.0f);
}

TEST_F(BucklingStress, NoHeadNoStress) {
    for (const Int element : {0, 1, 5, 6, -3}) {
        const BUCKLING_HEAD head =
            CC2286_HEAD(element, 100.0f, 28e6f, 0.5f, 4e4f, -1.0f, -1.0f, 2.0f);
        EXPECT_EQ(head.Fha, 0.0f);
        EXPECT_EQ(head.Pa, 0.0f);
    }
    // Tension both ways, or none.
    EXPECT_EQ(CC2286_HEAD(SPHERE, 100.0f, 28e6f, 0.5f, 4e4f, 1.0f, 2.0f, 2.0f).Fha, 0.0f);
    EXPECT_EQ(CC2286_HEAD(SPHERE, 100.0f, 28e6f, 0.5f, 4e4f, 0.0f, 0.0f, 2.0f).Fha, 0.0f);
    EXPECT_EQ(LINE_COUNT, 0);
}

} // namespace
} // namespace tarvane::external_test
