#include "external/external_fixture.h"

#include "tarvane/tarvane.h"

namespace tarvane::external_test {
namespace {

// The equations of the geometric chart in double precision.
double in_double(double dt, double ld) {
    const double x = 1.0 / dt;
    const double A1 = 1.3 * std::pow(x, 1.5) / (ld - 0.45 * std::sqrt(x));
    const double A2 = 1.3 * std::pow(x, 1.5) / std::pow(ld, 1.05);
    const double A3 = 1.1 * x * x;
    double A = std::fmax(A1, std::fmax(A2, A3));
    if (dt < 4.0) A = A3;
    return dt < 10.0 ? std::fmin(A, 0.1) : A;
}

TEST(FactorAFormula, FollowsTheEquations) {
    for (const Real dt : {0.5f, 3.9f, 4.0f, 9.9f, 10.0f, 50.0f, 258.7f, 1000.0f, 5000.0f})
        for (const Real ld : {0.3f, 0.7f, 1.0f, 2.5f, 15.0f, 50.0f}) {
            const double expected = in_double(static_cast<double>(dt), static_cast<double>(ld));
            EXPECT_NEAR(FACTOR_A_FORMULA(dt, ld), expected, 2e-6 * expected) << dt << " " << ld;
        }
}

TEST(FactorAFormula, ThickCylindersBelowFourTakeTheLastTermAlone) {
    EXPECT_FLOAT_EQ(FACTOR_A_FORMULA(4.0f, 0.6f), 0.1f); // 0.43 of the first term, limited
    EXPECT_FLOAT_EQ(FACTOR_A_FORMULA(std::nextafter(4.0f, 0.0f), 0.6f), 1.1f / 16.0f);
    EXPECT_FLOAT_EQ(FACTOR_A_FORMULA(2.0f, 0.6f), 0.1f); // 0.275, limited
}

TEST(FactorAFormula, IsHeldToATenthBelowTen) {
    EXPECT_FLOAT_EQ(FACTOR_A_FORMULA(std::nextafter(10.0f, 0.0f), 0.2f), 0.1f);
    EXPECT_GT(FACTOR_A_FORMULA(10.0f, 0.2f), 0.5f);
}

TEST(FactorAFormula, HasNoTermsWithoutAShape) {
    EXPECT_EQ(FACTOR_A_FORMULA(0.01f, 1.0f), 0.0f);
    EXPECT_EQ(FACTOR_A_FORMULA(-5.0f, 1.0f), 0.0f);
    // A length of next to nothing: the last term is left.
    EXPECT_FLOAT_EQ(FACTOR_A_FORMULA(100.0f, 0.001f), 1.1e-4f);
    EXPECT_GT(FACTOR_A_FORMULA(100.0f, 0.002f), 0.1f);
}

class FactorA : public ExternalTest {
  protected:
    Real dt = -1.0f, ld = -2.0f, A = -3.0f;
    void of(Int element, Real tc, Real Do, Real L = 60.0f, Real k = 2.0f) {
        A = -3.0f;
        ::FACTOR_A(&tc, &Do, &L, &k, &element, &dt, &ld, &A);
    }
};

TEST_F(FactorA, OfEachHead) {
    of(ELLIPTICAL, 0.375f, 97.0f); // K0 = 0.9 of a 2:1 head
    EXPECT_FLOAT_EQ(dt, 97.0f / 0.375f);
    EXPECT_EQ(ld, 0.0f);
    EXPECT_FLOAT_EQ(A, 0.125f / (0.9f * dt));
    of(ELLIPTICAL, 0.375f, 97.0f, 60.0f, 3.0f); // 0.93 + 0.16 + 0.27
    EXPECT_FLOAT_EQ(A, 0.125f / (1.36f * dt));
    of(SPHERE, 0.375f, 97.0f); // UG-28(d): 0.125 / (Ro / t)
    EXPECT_FLOAT_EQ(A, 0.125f / (48.5f / 0.375f));
    of(TORISPHERICAL, 0.375f, 97.0f);
    EXPECT_FLOAT_EQ(A, 0.125f / (97.0f / 0.375f));
    EXPECT_EQ(ld, 0.0f);
}

TEST_F(FactorA, OfACylinderAndAConeIsTheFormula) {
    for (const Int element : {CYLINDER, CONE}) {
        of(element, 0.375f, 97.0f);
        EXPECT_FLOAT_EQ(ld, 60.0f / 97.0f);
        EXPECT_EQ(A, FACTOR_A_FORMULA(dt, ld));
    }
}

TEST_F(FactorA, LengthIsHeldToTheChart) {
    of(CYLINDER, 0.375f, 97.0f, 97.0f * 50.0f);
    EXPECT_EQ(ld, 50.0f);
    of(CYLINDER, 0.375f, 97.0f, 97.0f * 60.0f);
    EXPECT_EQ(ld, 50.0f);
    EXPECT_EQ(A, FACTOR_A_FORMULA(dt, 50.0f));
    of(CYLINDER, 0.375f, 97.0f, 97.0f * 0.04f);
    EXPECT_EQ(ld, 0.05f);
    EXPECT_EQ(A, FACTOR_A_FORMULA(dt, 0.05f));
}

TEST_F(FactorA, ConesKeepTheirLengthForTheReport) {
    EXTERNAL.last.Lout = 1.0f;
    of(CYLINDER, 0.375f, 97.0f, 70.0f);
    EXPECT_EQ(EXTERNAL.last.Lout, 1.0f);
    of(CONE, 0.375f, 97.0f, 71.0f);
    EXPECT_EQ(EXTERNAL.last.Lout, 71.0f);
}

TEST_F(FactorA, AnotherElementHasNone) {
    for (const Int element : {0, 6, -1, INT32_MIN}) {
        of(element, 0.375f, 97.0f);
        EXPECT_EQ(A, -3.0f) << element;
        EXPECT_FLOAT_EQ(dt, 97.0f / 0.375f);
        EXPECT_EQ(ld, 0.0f);
    }
}

TEST_F(FactorA, ByTableGWhereItHasAnAnswer) {
    write_file("library", "TableGData.txt", "[800]\n0.1 0.07\n60 0.07\n[1000]\n0.1 0.07\n2 0.07\n");
    of(CYLINDER, 0.1f, 90.0f);              // D/t 900
    EXPECT_EQ(A, FACTOR_A_FORMULA(dt, ld)); // not asked for
    GLOBALS_mp_G_NUSE_TABLEG = 1;
    of(CYLINDER, 0.1f, 90.0f);
    EXPECT_NEAR(A, 0.07f, 1e-6f);
    of(CYLINDER, 0.1f, 90.0f, 270.0f); // L/D 3: the section of 1000 ends before
    EXPECT_EQ(A, FACTOR_A_FORMULA(dt, ld));
    of(CYLINDER, 0.0625f, 62.5f); // D/t 1000
    EXPECT_EQ(A, FACTOR_A_FORMULA(dt, ld));
}

} // namespace
} // namespace tarvane::external_test
