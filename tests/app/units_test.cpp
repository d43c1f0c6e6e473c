#include "catalogue/units.h"

#include "app_fixture.h"

namespace tarvane::app {

using namespace vessel;
namespace {

// SI value of one engine unit, from the definitions of inch, pound and gravity.
constexpr double INCH = 25.4;                                     // mm
constexpr double POUND_FORCE = 0.45359237 * 9.80665;              // N
constexpr double PSI = POUND_FORCE / (INCH * INCH);               // MPa
constexpr double FOOT_POUND = POUND_FORCE * 12.0 * INCH / 1000.0; // N-m

TEST(SiUnits, AreTheDefinitions) {
    const UnitSystem si = si_units();
    const struct {
        Quantity quantity;
        double factor;
        const char* label;
    } rows[] = {{Quantity::thickness, INCH, "mm"},
                {Quantity::diameter, INCH, "mm"},
                {Quantity::pressure, PSI, "MPa"},
                {Quantity::stress, PSI, "MPa"},
                {Quantity::force, POUND_FORCE, "N"},
                {Quantity::moment, FOOT_POUND, "N-m"},
                {Quantity::area, INCH * INCH, "mm\xB2"},
                {Quantity::weight, 0.45359237, "kg"},
                {Quantity::density, 0.45359237 / (INCH * INCH * INCH) * 1e9, "kg/m\xB3"}};
    for (const auto& row : rows) {
        EXPECT_EQ(si.factor(row.quantity), static_cast<float>(row.factor)) << row.label;
        EXPECT_EQ(si.label(row.quantity), row.label);
    }
    EXPECT_EQ(si.label(Quantity::temperature), "\xB0"
                                               "C");
}

TEST(SiUnits, DivideInSinglePrecision) {
    const UnitSystem si = si_units();
    EXPECT_EQ(si.to_engine(485.0f, Quantity::diameter), 485.0f / 25.4f);
    EXPECT_EQ(si.to_engine(1.6f, Quantity::pressure), 1.6f / 0.00689475729f);
    EXPECT_EQ(si.to_engine(150.0f, Quantity::temperature), 302.0f);
    EXPECT_EQ(si.to_engine(-40.0f, Quantity::temperature), -40.0f);
    EXPECT_EQ(si.to_file(302.0f, Quantity::temperature), 150.0f);
    EXPECT_EQ(si.to_engine(2.75f, Quantity::number), 2.75f);
}

TEST(UsUnits, AreTheEngines) {
    const UnitSystem us = us_units();
    for (int q = 0; q <= static_cast<int>(Quantity::text); ++q) {
        const auto quantity = static_cast<Quantity>(q);
        if (quantity == Quantity::temperature_scale) continue;
        EXPECT_EQ(us.to_engine(123.456f, quantity), 123.456f) << q;
    }
    EXPECT_FALSE(us.metric());
    EXPECT_TRUE(si_units().metric());
}

TEST(UnitsTable, OverridesItsBaseFactorByFactor) {
    const ReadResult result = read_input(std::string(R"(
[units]
base = "SI"
pressure = { factor = 0.0689475729, label = "bar" }
temperature = { offset = -459.67, scale = 1.8, label = "K" }
weight = { factor = 0.00045359237, label = "t" }
density = { factor = 27.6799047, label = "g/cm³" }
)") + FLANGE_TOML + "bolt_size = \"nearest\"\n");
    ASSERT_TRUE(result.faults.empty());
    const UnitSystem& units = result.request.units;
    EXPECT_EQ(units.factor(Quantity::pressure), 0.0689475729f);
    EXPECT_EQ(units.label(Quantity::pressure), "bar");
    EXPECT_EQ(units.factor(Quantity::stress), si_units().factor(Quantity::stress));
    EXPECT_EQ(units.label(Quantity::stress), "MPa");
    EXPECT_EQ(units.label(Quantity::temperature), "K");
    EXPECT_NEAR(units.to_engine(273.15f, Quantity::temperature), 32.0f, 1e-4f);
    EXPECT_EQ(units.label(Quantity::weight), "t");
    EXPECT_EQ(units.factor(Quantity::weight), 0.00045359237f);
    EXPECT_EQ(units.label(Quantity::density), "g/cm\xB3");
    EXPECT_EQ(flanges_of(result.request)[0]->record[4], 150.0f / 0.0689475729f);
    EXPECT_TRUE(result.request.metric_constants);
}

TEST(UnitsTable, NamesItsFaults) {
    const std::vector<std::string> faults = fault_lines(std::string(R"([units]
base = "metric"
presure = 1
pressure = { factor = -1, label = "more than ten" }
temperature = { ofset = 1, scale = 0 }
force = "N"
area = { factor = "x", label = 3 }
)") + FLANGE_TOML);
    const std::vector<std::string> wanted = {
        R"(f:2: units.base: "US" or "SI" is expected, not the text "metric")",
        "f:3: presure: unknown key; the nearest is pressure",
        "f:4: units.pressure.factor: a number above 0 is expected, not -1",
        "f:4: units.pressure.label: a text of up to 10 characters is expected, not the text \"more "
        "than ten\"",
        "f:5: units.temperature.scale: a number above 0 is expected, not 0",
        "f:5: ofset: unknown key; the nearest is offset",
        "f:6: units.force: a table of factor and label is expected, not the text \"N\"",
        "f:7: units.area.factor: a number above 0 is expected, not the text \"x\"",
        "f:7: units.area.label: a text of up to 6 characters is expected, not 3"};
    EXPECT_EQ(faults, wanted);
}

} // namespace
} // namespace tarvane::app
