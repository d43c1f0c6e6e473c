#include "frame/switches.h"
#include "frame/units.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace tarvane {
namespace {

struct Row {
    const char* name;
    const Real* constant;
    Real inch;
    double millimetres;
    Real metric;
};

const Row rows[] = {
    {"C_ONE_SIXTEENTH", &C_ONE_SIXTEENTH, 1.0f / 16, 1.5, 0.05905512f},
    {"C_ONE_THIRTYSECOND", &C_ONE_THIRTYSECOND, 1.0f / 32, 0.8, 0.031496063f},
    {"C_ONE_EIGHTH", &C_ONE_EIGHTH, 1.0f / 8, 3, 0.11811024f},
    {"C_THREE_EIGHTHS", &C_THREE_EIGHTHS, 3.0f / 8, 10, 0.39370078f},
    {"C_FIVE_EIGHTHS", &C_FIVE_EIGHTHS, 5.0f / 8, 16, 0.62992126f},
    {"C_ONE_QUARTER", &C_ONE_QUARTER, 1.0f / 4, 6, 0.23622048f},
    {"C_ONE_HALF", &C_ONE_HALF, 1.0f / 2, 13, 0.511811f},
    {"C_ONE", &C_ONE, 1.0f, 25, 0.984252f},
    {"C_ONE_AND_QUARTER", &C_ONE_AND_QUARTER, 1.25f, 32, 1.2598425f},
    {"C_ONE_AND_HALF", &C_ONE_AND_HALF, 1.5f, 38, 1.496063f},
    {"C_THREE_THIRTYSECONDS", &C_THREE_THIRTYSECONDS, 3.0f / 32, 2.5, 0.098425195f},
    {"C_THREE_QUARTERS", &C_THREE_QUARTERS, 0.75f, 19, 0.7480315f},
    {"C_FOUR", &C_FOUR, 4.0f, 100, 3.937008f},
    {"C_SIX", &C_SIX, 6.0f, 150, 5.905512f},
    {"C_TWENTY", &C_TWENTY, 20.0f, 510, 20.078741f},
    {"C_THIRTY", &C_THIRTY, 30.0f, 760, 29.92126f},
    {"C_FORTY", &C_FORTY, 40.0f, 1020, 40.157482f},
    {"C_SIXTY", &C_SIXTY, 60.0f, 1520, 59.84252f},
};

std::int64_t bits(Real x) { return std::bit_cast<std::int32_t>(x); }

class CodeConstants : public ::testing::Test {
  protected:
    CodeConstants() : units(UNITS) { RESET_CODE_CONSTANTS(); }
    ~CodeConstants() override {
        UNITS = units;
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
        RESET_CODE_CONSTANTS();
    }

    static void fill(Int selector, Real factor) {
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = selector;
        UNITS.thickness = factor;
        SET_METRIC_CONSTANTS();
    }
    static void expect_inch() {
        for (const Row& row : rows)
            EXPECT_EQ(*row.constant, row.inch) << row.name;
    }
    static void expect_metric() {
        for (const Row& row : rows)
            EXPECT_EQ(*row.constant, row.metric) << row.name;
    }

  private:
    UNIT_CONSTANTS units;
};

TEST_F(CodeConstants, AreZeroUntilFilled) {
    for (const Row& row : rows)
        EXPECT_EQ(*row.constant, 0.0f) << row.name;
}

TEST_F(CodeConstants, SelectorZeroIsInchWhateverTheUnits) {
    fill(0, 1.0f);
    expect_inch();
    fill(0, 25.4f);
    expect_inch();
}

TEST_F(CodeConstants, SelectorOneIsMetricWhateverTheUnits) {
    fill(1, 1.0f);
    expect_metric();
    fill(1, 25.4f);
    expect_metric();
}

TEST_F(CodeConstants, OtherSelectorsGoByTheThicknessFactor) {
    for (const Int selector : {2, -1, 100}) {
        fill(selector, 25.4f);
        expect_metric();
        fill(selector, 1.0f);
        expect_inch();
        fill(selector, 1.1f);
        expect_inch();
        fill(selector, std::nextafter(1.1f, 2.0f));
        expect_metric();
    }
}

TEST_F(CodeConstants, MetricValuesAreTheMillimetresOfTheCodesInInches) {
    fill(1, 1.0f);
    for (const Row& row : rows) {
        const std::int64_t off =
            bits(*row.constant) - bits(static_cast<Real>(row.millimetres / 25.4));
        // The digits of 760 and 1520 mm end one bit above the rounded quotient.
        EXPECT_LE(off < 0 ? -off : off, 1) << row.name;
    }
}

TEST_F(CodeConstants, OneMovesDownAndOneAndAQuarterUp) {
    fill(1, 1.0f);
    EXPECT_LT(C_ONE, 1.0f);
    EXPECT_GT(C_ONE_AND_QUARTER, 1.25f);
}

TEST(UnitConstants, AtLoadAreInchesAndPounds) {
    const UNIT_CONSTANTS units;
    EXPECT_EQ(units.thickness, 1.0f);
    EXPECT_EQ(units.moment, 1.0f);
    EXPECT_EQ(units.temperature_offset, 0.0f);
    EXPECT_EQ(units.temperature_scale, 1.0f);
    EXPECT_EQ(units.thickness_label.view(), "in.");
    EXPECT_EQ(units.pressure_label.view(), "psig      ");
    EXPECT_EQ(units.further_label.view(), "          ");
    EXPECT_EQ(units.moment_label.view(), "ft-lbs");
    EXPECT_EQ(units.area_label.view(), "in\xB2   ");
    EXPECT_EQ(units.temperature_label.view(), "\xB0"
                                              "F   ");
    EXPECT_EQ(units.weight_label.view(), "lbm");
}

TEST_F(CodeConstants, ShownValuesPassThroughTheirFactors) {
    UNITS.temperature_offset = 32.0f;
    UNITS.temperature_scale = 1.8f;
    UNITS.moment = 1.355818f;
    EXPECT_EQ(as_temperature(212.0f), 180.0f / 1.8f);
    EXPECT_EQ(as_temperature(32.0f), 0.0f);
    EXPECT_EQ(as_moment(24.0f), 24.0f / 12.0f * 1.355818f);
}

} // namespace
} // namespace tarvane
