// The member checks: their equations once more in double precision, and their limits.
#include "external/external_fixture.h"

#include "external/members.h"
#include "tarvane/tarvane.h"

namespace tarvane::external_test {
namespace {

double FS_of_member(double Fic, double Fy) {
    if (Fic <= 0.55 * Fy) return 2.0;
    return Fic < Fy ? 2.407 - 0.741 * Fic / Fy : 1.667;
}

class Members : public ExternalTest {
  protected:
    Members() { steel(true); }
    static void steel(bool carbon) {
        EXTERNAL.chart = carbon ? "CS-2" : "HA-1";
        EXTERNAL.CarbonChart = carbon ? 1 : 0;
        EXTERNAL.Temp = 300.0f;
        EXTERNAL.Emod = 26.666666e6f;
    }

    struct Axial {
        Real FSc = -1, Lambda = -2, Fxa = -3, FSe = -4, Fxe = -5, Fca = -6;
    };
    static Axial axial(Real Do, Real L, Real t, Real Ku = 1.0f, Real Lu = 0.0f,
                       Real Fy = 38000.0f) {
        Axial a;
        const Real Ey = 28.3e6f;
        ::CC2286_AXIAL(&Do, &L, &t, &Ey, &Fy, &Ku, &Lu, &a.FSc, &a.Lambda, &a.Fxa, &a.FSe, &a.Fxe,
                       &a.Fca);
        return a;
    }
    static Real bending(Real Dot, Real Fy) {
        const Real t = 0.5f, Do = Dot * t, Ey = 28.0e6f, FS = 2.0f, Fxa = 1234.0f;
        Real Fba = -1.0f;
        ::CC2286_BENDING(&Do, &t, &Ey, &Fy, &FS, &Fxa, &Fba);
        return Fba;
    }
    struct Shear {
        Real Fva = -1, Cv = -2;
    };
    // Ro t = 1, so that the length is Mx.
    static Shear shear(Real Mx, Real Dot, Real Fy = 38000.0f) {
        const Real t = std::sqrt(2.0f / Dot), Do = Dot * t, Ey = 28.3e6f;
        Shear s;
        ::CC2286_SHEAR(&Do, &Mx, &t, &Ey, &Fy, &s.Fva, &s.Cv);
        return s;
    }
    struct Interaction {
        Real Fxha = -1, Fhxa = -2, Fxha2 = -3;
    };
    static Interaction interaction(Real P, Real Fa, Real Fb, Real Lambda) {
        const Real D = 100.0f, t = 0.5f, Fha = 5000.0f, Fxa = 8000.0f, FSh = 2.0f, FSx = 1.9f;
        const Real Fy = 38000.0f, Ej = 0.85f, Fxa2 = 7000.0f, FSx2 = 2.0f;
        Interaction i;
        ::CC2286_INTERACTION(&P, &D, &t, &Fa, &Fb, &Lambda, &Fha, &Fxa, &FSh, &FSx, &Fy, &Ej, &Fxa2,
                             &FSx2, &i.Fxha, &i.Fhxa, &i.Fxha2);
        return i;
    }
};

TEST_F(Members, AxialCompressionOfCarbonSteel) {
    for (const Real Dot : {100.0f, 136.0f, 300.0f, 599.0f, 601.0f, 1200.0f, 1300.0f})
        for (const Real Mx : {1.0f, 1.6f, 8.0f, 14.9f, 15.1f, 60.0f}) {
            const Real t = 0.5f, Do = Dot * t;
            const Axial a = axial(Do, Mx * std::sqrt(Do / 2.0f * t), t);
            const double d = wide(Dot), Fy = 38000.0;
            const double Ca = Mx <= 1.5f ? 2.64 : Mx < 15.0f ? 3.13 / std::pow(Mx, 0.42) : 1.0;
            const double Cc = d < 1247.0 ? std::fmin(409.0 * Ca / (d + 389.0), 0.9) : 0.25 * Ca;
            const double Fxe = Cc * 28.3e6 / d;
            const double Fxc = d <= 135.0 ? Fy : d < 600.0 ? 466.0 * Fy / (d + 331.0) : 0.5 * Fy;
            EXPECT_NEAR(a.Fxe, Fxe, 2e-5 * Fxe) << Dot << " " << Mx;
            EXPECT_NEAR(a.FSe, FS_of_member(Fxe, Fy), 1e-4);
            EXPECT_NEAR(a.FSc, FS_of_member(Fxc, Fy), 1e-4);
            const double Fxa = std::fmin(Fxe / FS_of_member(Fxe, Fy), Fxc / FS_of_member(Fxc, Fy));
            EXPECT_NEAR(a.Fxa, Fxa, 1e-4 * Fxa);
            EXPECT_EQ(a.Lambda, 0.0f); // no column
            EXPECT_EQ(a.Fca, 1000000.0f);
        }
    EXPECT_FLOAT_EQ(axial(135.0f, 50.0f, 1.0f).FSc, 1.667f); // yields at 135 itself
    EXPECT_EQ(LINE_COUNT, 0);
    EXPECT_EQ(IWRITE, 1);
}

TEST_F(Members, ColumnBucklingByItsSlenderness) {
    const Axial stub = axial(50.0f, 100.0f, 0.5f);
    const double rg = 0.25 * std::sqrt(50.0 * 50.0 + 49.0 * 49.0);
    const double Fxa = wide(stub.Fxa), FSc = wide(stub.FSc);
    const auto Lambda_of = [&](double Lu) {
        return 2.0 * Lu * std::sqrt(Fxa * FSc / 28.3e6) / (3.14159265 * rg);
    };
    for (const Real Lu : {100.0f, 400.0f, 800.0f, 1100.0f, 1400.0f}) {
        const Axial a = axial(50.0f, 100.0f, 0.5f, 2.0f, Lu);
        const double Lambda = Lambda_of(wide(Lu));
        EXPECT_NEAR(a.Lambda, Lambda, 1e-5 * Lambda);
        EXPECT_EQ(a.Fxa, stub.Fxa);
        double Fca = 1.0e6;
        if (Lambda > 0.15 && 2.0 * wide(Lu) / rg < 200.0)
            Fca = Lambda < 1.147 ? Fxa * std::pow(1.0 - 0.74 * (Lambda - 0.15), 0.3)
                                 : 0.88 * Fxa / (Lambda * Lambda);
        EXPECT_NEAR(a.Fca, Fca, 1e-4 * Fca) << Lu;
    }
    // The range holds every case: too slight, between, beyond 1.147, beyond 200.
    EXPECT_LT(Lambda_of(20.0), 0.15);
    EXPECT_EQ(axial(50.0f, 100.0f, 0.5f, 2.0f, 20.0f).Fca, 1000000.0f);
    EXPECT_GT(Lambda_of(1400.0), 1.147);
    EXPECT_EQ(axial(50.0f, 100.0f, 0.5f, 2.0f, 101.0f * static_cast<Real>(rg)).Fca, 1000000.0f);
}

TEST_F(Members, AxialCompressionOfAnotherSteelHasOneStress) {
    const Axial carbon = axial(250.0f, 100.0f, 0.5f, 1.0f, 300.0f);
    steel(false);
    const Axial a = axial(250.0f, 100.0f, 0.5f, 1.0f, 300.0f);
    EXPECT_EQ(a.FSc, -1.0f);
    EXPECT_LT(a.Fxe, 0.9f * carbon.Fxe); // by the tangent modulus
    EXPECT_FLOAT_EQ(a.Fxa, a.Fxe / a.FSe);
    const double rg = 0.25 * std::sqrt(250.0 * 250.0 + 249.0 * 249.0);
    const double Fxa = wide(a.Fxa), FSe = wide(a.FSe);
    EXPECT_NEAR(a.Lambda, 300.0 * std::sqrt(Fxa * FSe / 28.3e6) / (3.14159265 * rg), 1e-5);
    EXPECT_EQ(LINE_COUNT, 0);
}

TEST_F(Members, BendingByDiameterAndYield) {
    EXPECT_EQ(bending(135.0f, 38000.0f), 1234.0f);
    EXPECT_FLOAT_EQ(bending(std::nextafter(135.0f, 0.0f), 38000.0f), 466.0f * 38000.0f / 932.0f);
    EXPECT_FLOAT_EQ(bending(100.0f, 38000.0f), 466.0f * 38000.0f / (2.0f * 431.0f));
    // gamma = Fy Dot / Ey: 0.127 of 99, 0.0679 of 50.
    EXPECT_FLOAT_EQ(bending(99.0f, 36000.0f), 1.081f * 36000.0f / 2.0f);
    EXPECT_NEAR(bending(50.0f, 38000.0f), (1.4 - 2.9 * 38000.0 * 50.0 / 28e6) * 19000.0, 0.05);
    steel(false);
    EXPECT_EQ(bending(50.0f, 38000.0f), 1234.0f);
}

TEST_F(Members, ShearThroughoutItsRanges) {
    for (const Real Dot : {60.0f, 200.0f, 500.0f, 501.0f, 900.0f})
        for (const Real Mx : {1.0f, 1.6f, 10.0f, 25.9f, 26.1f, 100.0f, 5000.0f}) {
            const Shear s = shear(Mx, Dot);
            const double d = wide(Dot), m = wide(Mx), Fy = 38000.0;
            double Cv = m <= 1.5   ? 4.454
                        : m < 26.0 ? 9.64 / (m * m) * std::sqrt(1.0 + 0.0239 * m * m * m)
                                   : 1.492 / std::sqrt(m);
            if (m >= 4.347 * d) Cv = 0.716 * std::sqrt(1.0 / d);
            EXPECT_NEAR(s.Cv, Cv, 2e-5 * Cv) << Dot << " " << Mx;
            const double AlphaV = d <= 500.0 ? 0.8 : 1.389 - 0.218 * std::log10(d);
            const double Fve = AlphaV * Cv * 28.3e6 / d, r = Fve / Fy;
            const double Eta = r <= 0.48 ? 1.0 : r < 1.7 ? 0.43 / r + 0.1 : 0.6 / r;
            const double Fva = Eta * Fve / FS_of_member(Eta * Fve, Fy);
            EXPECT_NEAR(s.Fva, Fva, 1e-4 * Fva);
        }
    EXPECT_EQ(LINE_COUNT, 0);
}

TEST_F(Members, AShortThickShellTakesTheLongFormOfShear) {
    // Mx = 20 is below 26, and above 4.347 times 4.
    EXPECT_FLOAT_EQ(shear(20.0f, 4.0f).Cv, 0.716f * 0.5f);
    EXPECT_FLOAT_EQ(shear(17.0f, 4.0f).Cv, (9.64f / 289.0f) * std::sqrt(1.0f + 0.0239f * 4913.0f));
}

TEST_F(Members, ShearOfAnotherSteelDividesTheStressAsItWas) {
    const Shear carbon = shear(10.0f, 200.0f);
    steel(false);
    const Shear other = shear(10.0f, 200.0f);
    EXPECT_EQ(other.Cv, carbon.Cv);
    // Between FS of 1.667 and 2 of the same stress.
    EXPECT_GE(other.Fva, carbon.Fva * 1.666f / 2.0f);
    EXPECT_LE(other.Fva, carbon.Fva * 2.0f / 1.666f);
}

TEST_F(Members, AxialAndHoopStressTogether) {
    const double C1 = (std::fmin(8000.0 * 1.9, 7000.0 * 2.0) + 5000.0 * 2.0) / 38000.0 - 1.0;
    const double h = 15.0 * 100.0 / (2.0 * 0.5 * 0.85);
    for (const double Lambda : {0.1, 0.15, 0.16, 0.8, 1.19}) {
        const Interaction i = interaction(15.0f, -2000.0f, 900.0f, static_cast<Real>(Lambda));
        const bool column = Lambda > 0.155;
        const double C2 = (column ? 2000.0 : 2900.0) / h;
        const double Fxha = 1.0 / std::sqrt(1.0 / (8000.0 * 8000.0) - C1 / (C2 * 8000.0 * 5000.0) +
                                            1.0 / (C2 * C2 * 5000.0 * 5000.0));
        EXPECT_NEAR(i.Fxha, Fxha, 1e-4 * Fxha) << Lambda;
        EXPECT_NEAR(i.Fhxa, Fxha / C2, 1e-4 * Fxha / C2);
        const double Fxha2 =
            Fxha * std::pow(1.0 - 0.74 * (Lambda - 0.15), 0.3) * (1.0 - 900.0 / 38000.0);
        EXPECT_NEAR(i.Fxha2, column ? Fxha2 : -3.0, 1e-3) << Lambda;
    }
}

TEST_F(Members, WithoutBothStressesNothingIsFormed) {
    for (const Interaction& i :
         {interaction(15.0f, 0.0f, 0.0f, 0.5f), interaction(0.0f, 2000.0f, 0.0f, 0.5f),
          interaction(-15.0f, 2000.0f, 0.0f, 0.5f), interaction(15.0f, 2000.0f, 0.0f, 1.2f)}) {
        EXPECT_EQ(i.Fxha, -1.0f);
        EXPECT_EQ(i.Fhxa, -2.0f);
        EXPECT_EQ(i.Fxha2, -3.0f);
    }
}

// No range of Mx applies, and the factor is the caller's.
TEST_F(Members, ShearWithoutAParameterKeepsItsFactor) {
    const Real Do = 48.0f, L = 60.0f, t = -0.5f, Ey = 28.0e6f, Fy = 30000.0f; // root of a negative
    for (const Real given : {-7.0f, 0.25f, 1.0f}) {
        Shear s{.Fva = -1.0f, .Cv = given};
        ::CC2286_SHEAR(&Do, &L, &t, &Ey, &Fy, &s.Fva, &s.Cv);
        EXPECT_EQ(s.Cv, given);
        // Fve = 0.8 Cv Ey / Dot uses it further; r = Fve / Fy up to 0.48 has Eta 1.
        const double Fve = 0.8 * wide(given) * 28.0e6 / -96.0, r = Fve / 30000.0;
        const double Eta = r <= 0.48 ? 1.0 : r < 1.7 ? 0.43 / r + 0.1 : 0.6 / r;
        const double stress = Eta * Fve;
        const double FS = stress <= 16500.0  ? 2.0
                          : stress < 30000.0 ? 2.407 - 0.741 * stress / 30000.0
                                             : 1.667;
        EXPECT_NEAR(s.Fva, stress / FS, 1e-5 * std::fabs(stress)) << given;
    }
}

} // namespace
} // namespace tarvane::external_test
