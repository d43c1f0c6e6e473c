// A number of a request becomes a single in one way: read as a double, rounded once, then its unit's factor in
// single precision. Results go out as the shortest decimal that reads back to the same single.
#include "components/read_value.h"
#include "vessel_fixture.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tarvane::vessel {

namespace {

std::uint32_t bits(float value) {
    std::uint32_t word;
    std::memcpy(&word, &value, sizeof word);
    return word;
}

// "-12.3456789e-3" and its like, up to more digits than a double holds.
std::string random_decimal(std::mt19937& chance) {
    const auto drawn = [&](unsigned below) { return static_cast<unsigned>(chance() % below); };
    std::string text = drawn(4) == 0 ? "-" : "";
    text += std::to_string(drawn(10000));
    const unsigned digits = drawn(22);
    for (unsigned i = 0; i < digits; ++i)
        text += (i == 0 ? "." : "") + std::to_string(drawn(10));
    if (drawn(2) == 0) text += 'e' + std::to_string(static_cast<int>(drawn(31)) - 15);
    return text;
}

TEST(Numbers, OfRandomDecimalsAreRoundedOnceAndThenScaled) {
    std::mt19937 chance(20240917);
    const UnitSystem systems[] = {us_units(), si_units()};
    const Quantity quantities[] = {Quantity::thickness, Quantity::pressure,    Quantity::stress,
                                   Quantity::force,     Quantity::moment,      Quantity::area,
                                   Quantity::weight,    Quantity::temperature, Quantity::density,
                                   Quantity::number};
    for (int i = 0; i < 200; ++i) {
        const std::string text = random_decimal(chance);
        const UnitSystem& units = systems[i % 2];
        const Quantity quantity = quantities[static_cast<std::size_t>(i) % std::size(quantities)];
        const Key key{"x", Place::setting, 0, quantity, "a number"};
        Faults faults;
        const auto tree = read_json(text, faults);
        ASSERT_TRUE(tree) << text;
        const auto single = static_cast<float>(std::strtod(text.c_str(), nullptr));
        float wanted = single;
        if (quantity == Quantity::temperature) {
            // degrees F = degrees C * 1.8f + 32.0f
            wanted = single * (i % 2 == 0 ? 1.0f : 1.8f);
            wanted += i % 2 == 0 ? 0.0f : 32.0f;
            if (below_absolute_zero(wanted)) continue;
        } else {
            wanted /= units.factor(quantity);
        }
        const Taken<float> taken = take_number(*tree, key, units);
        ASSERT_EQ(taken.value.has_value(), std::isfinite(wanted)) << text << taken.fault;
        EXPECT_EQ(bits(taken.value.value_or(0.0f)), bits(taken.value ? wanted : 0.0f)) << text;
    }
}

// Halfway between two singles as a decimal, and just above: once through double, not straight to single.
TEST(Numbers, AreRoundedThroughDouble) {
    for (const char* text : {"1.00000005960464477540", "1.000000059604644775390625",
                             "1.000000059604644775390625000000000001", "16777217", "16777219"}) {
        const Key key{"x", Place::setting, 0, Quantity::number, "a number"};
        Faults faults;
        const Taken<float> taken = take_number(*read_json(text, faults), key, us_units());
        EXPECT_EQ(bits(*taken.value), bits(static_cast<float>(std::strtod(text, nullptr)))) << text;
    }
}

TEST(Numbers, ComeBackAsTheyWereGiven) {
    const Handle handle;
    std::mt19937 chance(7);
    for (int i = 0; i < 30; ++i) {
        const std::string text = "0." + std::to_string(1000000 + chance() % 9000000);
        const Answer answer = handle.calculate(request_of(
            flange_json(R"(, "ce": )" + text), i % 2 == 0 ? R"("units": {"base": "US", "thickness":
            {"factor": 25.4, "label": "mm"}}, )"
                                                          : ""));
        ASSERT_EQ(answer.status, TARVANE_OK) << text << text_at(answer.error, "[0].reason");
        const auto single = static_cast<float>(std::strtod(text.c_str(), nullptr));
        const double shown = *at(answer.result, "flange[0].inputs.ce.value").number();
        EXPECT_EQ(bits(static_cast<float>(shown)), bits(single)) << text;
    }
}

TEST(Numbers, WithUnitsOfTheirOwnComeBackInThoseOfTheRequest) {
    const Handle handle;
    const Answer answer =
        handle.calculate(request_of(flange_json(R"(, "ce": "1/2 mm", "rating": "30 bar")")));
    ASSERT_EQ(answer.status, TARVANE_OK) << text_at(answer.error, "[0].reason");
    EXPECT_EQ(text_at(answer.result, "flange[0].inputs.ce.given"), "1/2 mm");
    EXPECT_EQ(text_at(answer.result, "flange[0].inputs.ce.from"), "file");
    EXPECT_EQ(bits(static_cast<float>(*at(answer.result, "flange[0].inputs.ce.value").number())),
              bits(0.5f / 25.4f));
    EXPECT_EQ(
        bits(static_cast<float>(*at(answer.result, "flange[0].inputs.rating.value").number())),
        bits(30.0f / 0.0689475729f));
}

TEST(Numbers, AreWrittenShortest) {
    const auto written = [](float value) {
        JsonWriter json;
        json.single(value);
        return json.take();
    };
    EXPECT_EQ(written(0.1f), "0.1");
    EXPECT_EQ(written(25.4f), "25.4");
    EXPECT_EQ(written(16777216.0f), "16777216");
    EXPECT_EQ(written(1.0f / 3.0f), "0.33333334");
    EXPECT_EQ(written(std::nextafter(1.0f, 2.0f)), "1.0000001");
    EXPECT_EQ(written(-0.0f), "-0");
    EXPECT_EQ(written(std::numeric_limits<float>::infinity()), "null");
    EXPECT_EQ(written(std::nanf("")), "null");
    std::mt19937 chance(11);
    for (int i = 0; i < 2000; ++i) {
        const auto word = static_cast<std::uint32_t>(chance());
        float value;
        std::memcpy(&value, &word, sizeof value);
        if (!std::isfinite(value) || value == 0.0f) continue;
        Faults faults;
        const auto tree = read_json(written(value), faults);
        ASSERT_TRUE(tree && tree->number()) << written(value);
        EXPECT_EQ(bits(static_cast<float>(*tree->number())), word) << value;
    }
}

} // namespace
} // namespace tarvane::vessel
