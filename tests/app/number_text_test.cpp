// Numbers with units of their own, as they may be written in a request: a table of spellings, right and wrong.
#include "components/read_value.h"
#include "values/number_text.h"

#include "app_fixture.h"

#include <cstdint>
#include <cstring>

namespace tarvane::app {

using namespace vessel;
namespace {

using enum Quantity;

struct Spelling {
    const char* text;
    Quantity quantity;
    float wanted;           // in the engine's units
    const char* fault = ""; // a part of the message; empty: the spelling is accepted
};

constexpr float PSI_BAR = 0.0689475729f, ATMOSPHERE = 14.696f;

// In an SI file: what has no unit is in mm, MPa, degrees C.
constexpr Spelling SPELLINGS[] = {
    // ---- numbers ----
    {"3", number, 3.0f},
    {"2.75", number, 2.75f},
    {"-2.75", number, -2.75f},
    {"+2.75", number, 2.75f},
    {".5", number, 0.5f},
    {"5.", number, 5.0f},
    {"1.5e-3", number, 1.5e-3f},
    {"1.5E3", number, 1500.0f},
    {"1e+2", number, 100.0f},
    {"  7  ", number, 7.0f},
    {"7/8", number, 0.875f},
    {"1/3", number, 1.0f / 3.0f},
    {"9/8", number, 1.125f},
    {"-7/8", number, -0.875f},
    {"1 1/2", number, 1.5f},
    {"1  1/2", number, 1.5f},
    {"1\u00A01/2", number, 1.5f},
    {"-1 1/2", number, -1.5f},
    {"12345 1/3", number, 37036.0f / 3.0f},
    {"16777217", number, 16777216.0f},
    {"0.1", number, 0.1f},
    {"1.000000059604644775390625", number, 1.0f},
    {"24", whole, 24.0f},
    {"2.5e1", whole, 25.0f},
    // ---- lengths ----
    {"7/8", thickness, 0.875f / 25.4f},
    {"7/8 in", thickness, 0.875f},
    {"7/8in", thickness, 0.875f},
    {"7/8\"", thickness, 0.875f},
    {"1 1/2 in.", thickness, 1.5f},
    {"1 1/2 inches", diameter, 1.5f},
    {"1 inch", diameter, 1.0f},
    {"90 in", diameter, 90.0f},
    {"2' 6 1/2\"", diameter, 30.5f},
    {"2'6 1/2\"", diameter, 30.5f},
    {"2' 6.5\"", diameter, 30.5f},
    {"2' 1/2\"", diameter, 24.5f},
    {"2' 0\"", diameter, 24.0f},
    {"-2' 6\"", diameter, -30.0f},
    {"2'", diameter, 24.0f},
    {"2 ft", diameter, 24.0f},
    {"2 1/2 feet", diameter, 30.0f},
    {"1 foot", diameter, 12.0f},
    {"25.4 mm", diameter, 25.4f / 25.4f},
    {"10 mm", thickness, 10.0f / 25.4f},
    {"10 cm", diameter, 10.0f / 2.54f},
    {"1.5 m", diameter, 1.5f / 0.0254f},
    // ---- pressures and stresses ----
    {"150 psig", pressure, 150.0f},
    {"150 psi", pressure, 150.0f},
    {"150 PSIG", pressure, 150.0f},
    {"10 bar", pressure, 10.0f / PSI_BAR},
    {"10 barg", pressure, 10.0f / PSI_BAR},
    {"10 bara", pressure, 10.0f / PSI_BAR - ATMOSPHERE},
    {"150 psia", pressure, 150.0f - ATMOSPHERE},
    {"0 psia", pressure, -ATMOSPHERE},
    {"1\u202F000e0 psi", pressure, 0.0f, "no mark of thousands"},
    {"500 mbar", pressure, 500.0f / 68.9475729f},
    {"1.6 MPa", pressure, 1.6f / 0.00689475729f},
    {"1.6", pressure, 1.6f / 0.00689475729f},
    {"1600 kPa", pressure, 1600.0f / 6.89475729f},
    {"16 kgf/cm2", pressure, 16.0f / 0.070306958f},
    {"20 ksi", stress, 20.0f / 0.001f},
    {"20000 psi", stress, 20000.0f},
    {"138 MPa", stress, 138.0f / 0.00689475729f},
    {"138 N/mm2", stress, 138.0f / 0.00689475729f},
    {"138 N/mm²", stress, 138.0f / 0.00689475729f},
    {"200 GPa", stress, 200.0f / 0.00000689475729f},
    {"full vacuum", pressure, 0.0f, "full vacuum is a P_external"},
    // ---- forces, moments, areas, masses, densities ----
    {"1000 lbf", force, 1000.0f},
    {"1000 lb", force, 1000.0f},
    {"5 kip", force, 5.0f / 0.001f},
    {"5 kN", force, 5.0f / 0.00444822162f},
    {"100 ft-lb", moment, 100.0f},
    {"1200 in-lb", moment, 100.0f},
    {"100 N-m", moment, 100.0f / 1.35581795f},
    {"100 Nm", moment, 100.0f / 1.35581795f},
    {"2 kN·m", moment, 2.0f / 0.00135581795f},
    {"0.302 in2", area, 0.302f},
    {"0.302 sq in", area, 0.302f},
    {"195 mm²", area, 195.0f / 645.16f},
    {"10 lb", weight, 10.0f},
    {"10 kg", weight, 10.0f / 0.45359237f},
    {"62.4 lb/ft3", density, 62.4f / 1728.0f},
    {"0.2836 lb/in3", density, 0.2836f},
    {"1000 kg/m3", density, 1000.0f / 27679.9047f},
    {"7.85 g/cm³", density, 7.85f / 27.6799047f},
    // ---- temperatures ----
    {"300 F", temperature, 300.0f},
    {"300 °F", temperature, 300.0f},
    {"-20 deg F", temperature, -20.0f},
    {"150 C", temperature, 302.0f},
    {"150", temperature, 302.0f},
    {"150 °C", temperature, 302.0f},
    {"300 K", temperature, 300.0f * 1.8f + -459.67f},
    {"20 F", temperature_scale, 20.0f},
    {"20 C", temperature_scale, 20.0f * 1.8f},
    {"20 K", temperature_scale, 20.0f * 1.8f},
    // ---- no numbers ----
    {"", thickness, 0.0f, "a number in mm is expected, not the text \"\""},
    {"ten", thickness, 0.0f, "a number in mm is expected, not the text \"ten\""},
    {"in", thickness, 0.0f, "a number in mm is expected"},
    {"1,5 mm", thickness, 0.0f, "numbers have a decimal point and no mark of thousands: 1.5, 1500"},
    {"1,500", thickness, 0.0f, "no mark of thousands"},
    {",5", thickness, 0.0f, "decimal point"},
    {"1 500 mm", thickness, 0.0f, "no mark of thousands"},
    {"1-1/2 in", thickness, 0.0f, "a fraction has whole numbers"},
    {"1 3/2 in", thickness, 0.0f, "below 1 after a whole number: 1 1/2"},
    {"1.5/2", thickness, 0.0f, "a fraction has whole numbers"},
    {"1/0", thickness, 0.0f, "a fraction has whole numbers"},
    {"1/2/3", thickness, 0.0f, "a fraction has whole numbers"},
    {"1/2.5", thickness, 0.0f, "a fraction has whole numbers"},
    {"1.5 1/2", thickness, 0.0f, "a fraction has whole numbers"},
    {"123456/7", thickness, 0.0f, "up to 5 digits"},
    {"2' 6", diameter, 0.0f, "feet with inches are written as 2' 6 1/2\""},
    {"2' 12\"", diameter, 0.0f, "the inches below 12"},
    {"2.5' 6\"", diameter, 0.0f, "the feet whole"},
    {"2' 6\" 3", diameter, 0.0f, "feet with inches"},
    {"1.2.3", number, 0.0f, "a number is expected"},
    {"3-4", number, 0.0f, "a number is expected"},
    {"--3", number, 0.0f, "a number is expected"},
    {"- 3", number, 0.0f, "a number is expected"},
    {"1e999", number, 0.0f, "too great"},
    {"1e39", number, 0.0f, "a number is expected"},
    {"nan", number, 0.0f, "a number is expected"},
    {"inf", number, 0.0f, "a number is expected"},
    {"0x10", number, 0.0f, "a number without a unit is expected"},
    {"2.5", whole, 0.0f, "a whole number is expected"},
    {"true", flag, 0.0f, "true or false is expected"},
    {"1", flag, 0.0f, "true or false is expected"},
    // ---- wrong units ----
    {"10 mm", pressure, 0.0f,
     "a pressure in one of psi, ksi, psig, psia, bar, barg, bara, mbar, Pa, kPa, MPa, GPa, N/mm2, "
     "kgf/cm2 is expected, not the text \"10 mm\" (the value); mm is a unit of a length"},
    {"10 bar", thickness, 0.0f,
     "a length in one of in, ft, mm, cm, m is expected, not the text \"10 bar\" (the value); bar "
     "is "
     "a unit of a pressure or stress"},
    {"150 psig", stress, 0.0f, "psig is a unit of a gauge pressure"},
    {"150 psia", stress, 0.0f, "psia is a unit of an absolute pressure"},
    {"-1 psia", pressure, 0.0f, "an absolute pressure that is not below 0 is expected"},
    {"300 F", pressure, 0.0f, "F is a unit of a temperature"},
    {"-500 F", temperature, 0.0f, "a temperature from absolute zero on"},
    {"10 lb", density, 0.0f, "a density in one of lb/ft3, lb/in3, kg/m3, g/cm3 is expected"},
    {"3 in", number, 0.0f, "a number without a unit is expected, not the text \"3 in\""},
    {"12 in", whole, 0.0f, "a number without a unit is expected"},
    {"10 barr", pressure, 0.0f, "barr is not a unit, the nearest is bar"},
    {"10 mpa", pressure, 0.0f, "mpa is not a unit, the nearest is MPa"},
    {"10 Mm", thickness, 0.0f, "Mm is not a unit, the nearest is mm"},
    {"10 full vacuum", pressure, 0.0f, "full vacuum is not a unit"},
    {"full vacuum", thickness, 0.0f, "a number in mm is expected"},
};
static_assert(std::size(SPELLINGS) >= 100);

std::uint32_t bits(float value) {
    std::uint32_t word;
    std::memcpy(&word, &value, sizeof word);
    return word;
}

Taken<float> taken(const Value& value, Quantity quantity, std::string_view name = "x") {
    const Key key{name, Place::setting, 0, quantity, "the value"};
    return take_number(value, key, si_units());
}

TEST(NumberText, TakesTheSpellingsOfTheTable) {
    for (const Spelling& spelling : SPELLINGS) {
        const Taken<float> found = taken(spelling.text, spelling.quantity);
        if (*spelling.fault == '\0') {
            ASSERT_TRUE(found.value) << spelling.text << ": " << found.fault;
            EXPECT_EQ(bits(*found.value), bits(spelling.wanted))
                << spelling.text << ": " << *found.value << ", not " << spelling.wanted;
        } else {
            EXPECT_FALSE(found.value) << spelling.text;
            EXPECT_NE(found.fault.find(spelling.fault), std::string::npos)
                << spelling.text << ": " << found.fault;
        }
    }
}

// A fraction is one division of whole numbers in double precision, rounded once to single: the nearest
// single, as a division of two singles that hold the whole numbers gives it.
TEST(NumberText, RoundsFractionsOnce) {
    std::mt19937 chance(5);
    for (int i = 0; i < 2000; ++i) {
        const auto whole = chance() % 1000u, below = chance() % 4095u + 2u,
                   above = chance() % below;
        const std::string text =
            std::to_string(whole) + ' ' + std::to_string(above) + '/' + std::to_string(below);
        const Taken<float> found = taken(text.c_str(), Quantity::number);
        ASSERT_TRUE(found.value) << text << found.fault;
        EXPECT_EQ(bits(*found.value),
                  bits(static_cast<float>(whole * below + above) / static_cast<float>(below)))
            << text;
    }
}

// A text in the file's own unit is the number itself.
TEST(NumberText, InTheUnitOfTheFileIsTheNumber) {
    std::mt19937 chance(3);
    const std::pair<Quantity, const char*> units[] = {
        {thickness, " mm"}, {pressure, " MPa"},  {stress, " N/mm2"},
        {force, " N"},      {moment, " N-m"},    {area, " mm2"},
        {weight, " kg"},    {density, " kg/m3"}, {temperature, " C"}};
    for (int i = 0; i < 900; ++i) {
        const std::string digits = std::to_string(chance() % 3000) + '.' + std::to_string(chance());
        const auto& [quantity, unit] = units[static_cast<std::size_t>(i) % std::size(units)];
        const Value value(std::strtod(digits.c_str(), nullptr));
        EXPECT_EQ(bits(*taken((digits + unit).c_str(), quantity).value),
                  bits(*taken(value, quantity).value))
            << digits << unit;
    }
}

TEST(NumberText, OfFullVacuumIsAnExternalPressure) {
    for (const char* text : {"full vacuum", "Full vacuum"}) {
        EXPECT_EQ(*taken(text, Quantity::pressure, "P_external").value, 15.0f);
        EXPECT_FALSE(taken(text, Quantity::pressure, "P").value);
    }
}

// An absolute pressure does not say what is on the other side of the wall.
TEST(NumberText, IsNoAbsolutePressureOutside) {
    for (const char* text : {"15 psia", "0 psia", "1 bara"}) {
        const Taken<float> refused = taken(text, Quantity::pressure, "P_external");
        EXPECT_FALSE(refused.value) << text;
        EXPECT_NE(refused.fault.find("the pressure outside above that inside, in psi or bar, is "
                                     "expected"),
                  std::string::npos)
            << refused.fault;
        EXPECT_TRUE(taken(text, Quantity::pressure, "P").value) << text;
    }
    EXPECT_EQ(*taken("15 psig", Quantity::pressure, "P_external").value, 15.0f);
    EXPECT_EQ(*taken("15 psi", Quantity::pressure, "P_external").value, 15.0f);
}

TEST(NumberText, StandsForANumberInAFile) {
    std::string toml = FLANGE_TOML + "bolt_size = \"nearest\"\n";
    const FlangeInput plain = flange_of(toml);
    for (const auto& [key, line] :
         {std::pair("P", "P = \"150 psig\""), std::pair("T", "T = \"300 °F\""),
          std::pair("B", "B = \"1'\""), std::pair("t", "t = \"1.19 in\""),
          std::pair("g0", "g0 = '3/8\"'"), std::pair("h", "h = \"3 1/4\""),
          std::pair("Sfo", "Sfo = \"20 ksi\""), std::pair("n", "n = \"12\""),
          std::pair("m", "m = \"3\"")})
        toml = with(key, line, toml);
    const FlangeInput texts = flange_of(toml);
    EXPECT_EQ(texts.record, plain.record);
    const std::vector<std::string> faults =
        fault_lines(with("P", "P = \"10 mm\"", with("t", "t = \"1,19 in\"")));
    ASSERT_EQ(faults.size(), 2u);
    EXPECT_EQ(faults[0],
              "f:4: P: a pressure in one of psi, ksi, psig, psia, bar, barg, bara, mbar, Pa, kPa, "
              "MPa, GPa, N/mm2, kgf/cm2 is expected, not the text \"10 mm\" (design pressure, "
              "negative for external pressure); mm is a unit of a length");
    EXPECT_EQ(faults[1],
              "f:8: t: a number in in. is expected, not the text \"1,19 in\" (flange thickness); "
              "numbers have a decimal point and no mark of thousands: 1.5, 1500");
}

} // namespace
} // namespace tarvane::app
