#include "flange/equivalent_pressure.h"

#include "stage_fixture.h"

namespace tarvane::stage_test {
namespace {

constexpr double PI_D = 3.14159265358979;

class EquivalentPressure : public StageTest {
  protected:
    static Real value(Real F, Real M, Real G, Real P) {
        Real Peq = -7.0f;
        EQUIVALENT_PRESSURE(F, M, G, PI, P, Peq);
        return Peq;
    }
};

// NPS 10 class 300 flange under 535469 lb-in and 100 lb, scribd.com document 327905617: 1882.15 psi
// sustained, 1084.02 psi with half the moment. The sheet carries G = 12.5 - 2 (0.5 sqrt(0.2975)).
TEST_F(EquivalentPressure, PublishedNps10Class300) {
    expect_close(value(100.0f, 535469.0f / 12.0f, 11.9546f, 285.0f), 1882.15, 2e-5);
    expect_close(value(100.0f, 535469.0f / 24.0f, 11.9546f, 285.0f), 1084.02, 2e-5);
}

TEST_F(EquivalentPressure, FormulaInDouble) {
    const double G = 23.4, F = 12345.0, M = 6789.0, P = 210.0;
    expect_close(value(12345.0f, 6789.0f, 23.4f, 210.0f),
                 P + 4 * F / (PI_D * G * G) + 16 * M * 12 / (PI_D * G * G * G));
}

// The last bits, computed outside with each operation rounded in the order of the formula.
TEST_F(EquivalentPressure, InTheOrderOfTheFormula) {
    EXPECT_EQ(value(7138.3f, 2210.2f, 12.81f, 113.1f), 232.746048f);
    EXPECT_EQ(value(7138.3f, 2210.2f, 12.81f, -113.1f), -232.746048f);
}

TEST_F(EquivalentPressure, LoadsMakeAnExternalPressureWorse) {
    const Real inside = value(5000.0f, 800.0f, 20.0f, 15.0f);
    const Real outside = value(5000.0f, 800.0f, 20.0f, -15.0f);
    EXPECT_GT(inside, 15.0f);
    EXPECT_EQ(outside, -inside);
}

TEST_F(EquivalentPressure, PressureOfZeroCountsAsInternal) {
    EXPECT_GT(value(5000.0f, 800.0f, 20.0f, 0.0f), 0.0f);
}

TEST_F(EquivalentPressure, NegativeAxialForceAddsNothingAndBringsTheNote) {
    EXPECT_EQ(value(-5000.0f, 0.0f, 20.0f, 100.0f), 100.0f);
    const Lines lines = take_lines();
    ASSERT_EQ(lines.size(), 16u);
    EXPECT_EQ(joined({lines.begin() + 11, lines.end()}),
              "\n"
              "Note:\n"
              "Compressive (negative) axial loads on the flange can reduce the design pressure.\n"
              "Only positive axial loads will be used to determine the equivalent pressure.\n"
              "\n");
}

TEST_F(EquivalentPressure, NegativeMomentCountsByItsAmountAndBringsTheNoteToo) {
    const Real positive = value(0.0f, 750.0f, 20.0f, 100.0f);
    EXPECT_EQ(take_lines().size(), 11u);
    EXPECT_EQ(value(0.0f, -750.0f, 20.0f, 100.0f), positive);
    EXPECT_EQ(take_lines().size(), 16u);
}

TEST_F(EquivalentPressure, NoGasketDiameterGivesInfinity) {
    EXPECT_EQ(value(100.0f, 10.0f, 0.0f, 50.0f), std::numeric_limits<Real>::infinity());
    EXPECT_EQ(value(100.0f, 10.0f, 0.0f, -50.0f), -std::numeric_limits<Real>::infinity());
    EXPECT_TRUE(std::isnan(value(100.0f, 0.0f, 0.0f, 50.0f))); // no moment: nothing over nothing
}

TEST_F(EquivalentPressure, NoLoadsGiveTheDesignPressureAndTheBlock) {
    EXPECT_EQ(value(0.0f, 0.0f, 20.0f, 123.45f), 123.45f);
    EXPECT_EQ(joined(take_lines()),
              "\n"
              "Original Design Pressure for Flange                      123.45  psig\n"
              "Axial Force Equiv. Pressure (4*max(F,0)/(pi*G^2))          0.00  psig\n"
              "Bending Moment Equiv. Pressure (16*abs(M)/(pi*G^3))        0.00  psig\n"
              "                                                     ----------\n"
              "Final Equivalent Design Pressure                         123.45  psig\n"
              "\n"
              "Note:\n"
              "Per ASME NC-3658.1(b), the equivalent pressure is used only\n"
              "to compute the Hydrostatic End Load H.  The original design\n"
              "pressure is used in the remaining calculations.\n");
}

TEST_F(EquivalentPressure, LinesShowPressureUnits) {
    UNITS.pressure = 0.0689476f;
    UNITS.pressure_label = "bars";
    value(0.0f, 0.0f, 20.0f, 1000.0f);
    EXPECT_EQ(take_lines()[1],
              "Original Design Pressure for Flange                       68.95  bars");
}

TEST_F(EquivalentPressure, LinesHaveNoMarks) {
    value(-1.0f, 0.0f, 20.0f, 100.0f);
    for (Int k = 1; k <= LINE_COUNT; ++k)
        EXPECT_EQ(stored_marks(k), " 0 0 0 0 0 0") << k;
}

TEST_F(EquivalentPressure, SilentPassHasTheSameResult) {
    const Real loud = value(100.0f, 200.0f, 20.0f, 100.0f);
    take_lines();
    IWRTFL = 0;
    EXPECT_EQ(value(100.0f, 200.0f, 20.0f, 100.0f), loud);
    EXPECT_EQ(LINE_COUNT, 0);
}

} // namespace
} // namespace tarvane::stage_test
