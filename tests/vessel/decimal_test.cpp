// Decimals as the C library writes and reads them in its own locale.
#include "values/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace tarvane::vessel {

namespace {

std::string printed(const char* format, int precision, double value) {
    char text[512];
    std::snprintf(text, sizeof text, format, precision, value);
    return text;
}

TEST(Decimal, IsThatOfPrintf) {
    std::mt19937_64 chance(7);
    std::vector<double> values{0.0,
                               -0.0,
                               0.5,
                               1.5,
                               2.5,
                               0.125,
                               1e-5,
                               9.9995e5,
                               999999.5,
                               1e22,
                               -1e300,
                               std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::denorm_min(),
                               std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};
    std::uniform_real_distribution<double> exponent(-12, 12);
    for (int i = 0; i < 2000; ++i)
        values.push_back(static_cast<float>(std::pow(10.0, exponent(chance))));
    for (const double value : values) {
        for (const int precision : {0, 1, 2, 4, 6, 9}) {
            EXPECT_EQ(fixed_text(value, precision), printed("%.*f", precision, value));
            EXPECT_EQ(exponent_text(value, precision), printed("%.*e", precision, value));
            EXPECT_EQ(general_text(value, precision), printed("%.*g", precision, value));
        }
    }
}

TEST(Decimal, IsTakenFromTheBeginningOfAText) {
    std::string_view text = "  +1.50\t-2e3,7 1e400";
    EXPECT_EQ(take_decimal<double>(text), 1.5);
    EXPECT_EQ(take_decimal<float>(text), -2000.0f);
    EXPECT_EQ(text, ",7 1e400");
    EXPECT_EQ(take_decimal<double>(text), std::nullopt);
    EXPECT_EQ(text, ",7 1e400");
    text = " 1e400";
    EXPECT_EQ(take_decimal<double>(text), std::nullopt);
    for (const std::string_view none : {"", "  ", "+", "+-1", "x", ".", "- 1"}) {
        text = none;
        EXPECT_EQ(take_decimal<double>(text), std::nullopt) << none;
        EXPECT_EQ(text, none);
    }
}

} // namespace

} // namespace tarvane::vessel
