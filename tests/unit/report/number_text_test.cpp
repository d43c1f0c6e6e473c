#include "../edge_numbers.h"
#include "exact_decimal.h"
#include "report/renderer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace tarvane::report_test {
namespace {

std::string fixed_text(Real value, Int width, Int decimals) {
    return std::string(fixed_number(value, width, decimals).view());
}
std::string bare_text(Real value, Int decimals) {
    return std::string(bare_number(value, decimals).view());
}
std::string exponent_text(Real value, Int width, Int decimals) {
    return std::string(exponent_number(value, width, decimals).view());
}
std::string whole_text(Int value, Int width) {
    return std::string(whole_number(value, width).view());
}

// ---- the descriptors as the house describes them ------------------------------------------------

TEST(NumberText, BareFixedNotation) {
    EXPECT_EQ(bare_text(0.5f, 3), ".500");
    EXPECT_EQ(bare_text(-0.5f, 3), "-.500");
    EXPECT_EQ(bare_text(0.0f, 3), ".000");
    EXPECT_EQ(bare_text(12.25f, 1), "12.2");
    EXPECT_EQ(bare_text(123456.0f, 4), "123456.0000");
}

TEST(NumberText, FixedWidth) {
    EXPECT_EQ(fixed_text(0.5f, 6, 3), " 0.500");
    EXPECT_EQ(fixed_text(12.0f, 10, 1), "      12.0");
    EXPECT_EQ(fixed_text(-0.5f, 6, 3), "-0.500");
    EXPECT_EQ(fixed_text(-0.5f, 6, 4), "-.5000"); // the zero goes first
    EXPECT_EQ(fixed_text(0.5f, 4, 3), ".500");
    EXPECT_EQ(fixed_text(0.5f, 3, 3), "***");
    EXPECT_EQ(fixed_text(-0.5f, 4, 3), "****");
    EXPECT_EQ(fixed_text(99.96f, 4, 1), "****"); // rounds up into a fifth column
    EXPECT_EQ(fixed_text(99.94f, 4, 1), "99.9");
    EXPECT_EQ(fixed_text(9.9E+9f, 10, 2), "**********");
}

TEST(NumberText, ExponentForm) {
    EXPECT_EQ(exponent_text(12.3f, 10, 3), " 0.123E+02");
    EXPECT_EQ(exponent_text(0.00005f, 9, 3), "0.500E-04");
    EXPECT_EQ(exponent_text(-0.00005f, 9, 3), "-.500E-04");
    EXPECT_EQ(exponent_text(123456789.0f, 10, 5), ".12346E+09");
    EXPECT_EQ(exponent_text(-123456789.0f, 10, 5), "**********");
    EXPECT_EQ(exponent_text(123456.0f, 10, 1), "   0.1E+06");
    EXPECT_EQ(exponent_text(-600000.0f, 10, 1), "  -0.6E+06");
    EXPECT_EQ(exponent_text(0.0f, 10, 3), " 0.000E+00");
    EXPECT_EQ(exponent_text(999.96f, 10, 3), " 0.100E+04");
    EXPECT_EQ(exponent_text(0.1f, 10, 3), " 0.100E+00");
    EXPECT_EQ(exponent_text(0.09999f, 10, 3), " 0.100E+00");
    EXPECT_EQ(exponent_text(1.0E-45f, 10, 3), " 0.140E-44");
}

TEST(NumberText, WholeNumbersTakeHalvesAwayFromZero) {
    EXPECT_EQ(bare_text(12.5f, 0), "13");
    EXPECT_EQ(bare_text(13.5f, 0), "14");
    EXPECT_EQ(bare_text(-12.5f, 0), "-13");
    EXPECT_EQ(bare_text(0.5f, 0), "1");
    EXPECT_EQ(bare_text(0.49999997f, 0), "0");
    EXPECT_EQ(bare_text(-0.4f, 0), "0");
    EXPECT_EQ(bare_text(-0.5f, 0), "-1");
    EXPECT_EQ(bare_text(8388607.5f, 0), "8388608");
    EXPECT_EQ(bare_text(3.4028235E+38f, 0), "340282346638528859811704183484516925440");
    EXPECT_EQ(fixed_text(650.2f, 10, 0), "       650");
    EXPECT_EQ(fixed_text(650.2f, 2, 0), "**");
}

TEST(NumberText, PointWithoutDecimals) {
    const auto pointed = [](Real value, Int width) {
        return std::string(pointed_number(value, width).view());
    };
    EXPECT_EQ(pointed(15920.0f, 9), "   15920.");
    EXPECT_EQ(pointed(99999992.0f, 9), "99999992.");
    EXPECT_EQ(pointed(1.0E8f, 9), "*********"); // nine digits and the point
    EXPECT_EQ(pointed(-1234567.0f, 9), "-1234567.");
    EXPECT_EQ(pointed(-12345678.0f, 9), "*********");
    EXPECT_EQ(pointed(10.0f, 0), "10.");
    EXPECT_EQ(pointed(3.4028235E+38f, 0), "340282346638528859811704183484516925440.");
    // halves to the even digit, at least one digit
    EXPECT_EQ(pointed(0.5f, 0), "0.");
    EXPECT_EQ(pointed(std::nextafter(0.5f, 1.0f), 0), "1.");
    EXPECT_EQ(pointed(1.5f, 0), "2.");
    EXPECT_EQ(pointed(2.5f, 0), "2.");
    EXPECT_EQ(pointed(25000.5f, 9), "   25000.");
    EXPECT_EQ(pointed(25001.5f, 9), "   25002.");
    EXPECT_EQ(pointed(0.4f, 3), " 0.");
    // the sign as with decimals
    EXPECT_EQ(pointed(-0.5f, 0), "-0.");
    EXPECT_EQ(pointed(-0.0f, 0), "0.");
    EXPECT_EQ(pointed(NOT_A_NUMBER, 9), "      NaN");
    EXPECT_EQ(pointed(-UNBOUNDED, 9), "-Infinity");
}

TEST(NumberText, TiesGoToTheEvenDigit) {
    EXPECT_EQ(bare_text(0.125f, 2), ".12");
    EXPECT_EQ(bare_text(0.375f, 2), ".38");
    EXPECT_EQ(bare_text(0.625f, 2), ".62");
    EXPECT_EQ(bare_text(0.875f, 2), ".88");
    EXPECT_EQ(bare_text(2.5f, 1), "2.5");
    EXPECT_EQ(bare_text(0.0625f, 3), ".062");
    EXPECT_EQ(bare_text(0.1875f, 3), ".188");
    EXPECT_EQ(bare_text(4096.125f, 2), "4096.12");
    EXPECT_EQ(bare_text(131071.625f, 2), "131071.62");
    EXPECT_EQ(exponent_text(125.0f, 10, 2), "  0.12E+03");
    EXPECT_EQ(exponent_text(375.0f, 10, 2), "  0.38E+03");
    EXPECT_EQ(exponent_text(0.25f, 10, 1), "   0.2E+00");
    // no tie: the stored value is to one side
    EXPECT_EQ(bare_text(0.15f, 1), ".2"); // 0.1500000059...
    EXPECT_EQ(bare_text(0.35f, 1), ".3"); // 0.3499999940...
    EXPECT_EQ(bare_text(1.005f, 2), "1.00");
}

TEST(NumberText, SignsOfZero) {
    EXPECT_EQ(bare_text(-0.001f, 2), "-.00");
    EXPECT_EQ(fixed_text(-0.0001f, 8, 3), "  -0.000");
    EXPECT_EQ(bare_text(-0.0f, 2), ".00");
    EXPECT_EQ(fixed_text(-0.0f, 6, 2), "  0.00");
    EXPECT_EQ(fixed_text(-0.0f, 6, 0), "     0");
}

TEST(NumberText, StrangersKeepTheirNames) {
    EXPECT_EQ(bare_text(NOT_A_NUMBER, 3), "NaN");
    EXPECT_EQ(bare_text(-NOT_A_NUMBER, 0), "NaN");
    EXPECT_EQ(fixed_text(NOT_A_NUMBER, 6, 2), "   NaN");
    EXPECT_EQ(fixed_text(NOT_A_NUMBER, 2, 1), "**");
    EXPECT_EQ(exponent_text(NOT_A_NUMBER, 9, 3), "      NaN");
    EXPECT_EQ(bare_text(UNBOUNDED, 3), "Infinity");
    EXPECT_EQ(fixed_text(UNBOUNDED, 10, 0), "  Infinity");
    EXPECT_EQ(fixed_text(-UNBOUNDED, 10, 2), " -Infinity");
    EXPECT_EQ(fixed_text(-UNBOUNDED, 8, 2), "********");
    EXPECT_EQ(exponent_text(-UNBOUNDED, 10, 5), " -Infinity");
}

TEST(NumberText, WholeNumbersOfIntegers) {
    EXPECT_EQ(whole_text(0, 0), "0");
    EXPECT_EQ(whole_text(-7, 0), "-7");
    EXPECT_EQ(whole_text(42, 5), "   42");
    EXPECT_EQ(whole_text(100, 2), "**");
    EXPECT_EQ(whole_text(-9, 2), "-9");
    EXPECT_EQ(whole_text(-10, 2), "**");
    EXPECT_EQ(whole_text(std::numeric_limits<Int>::min(), 0), "-2147483648");
    EXPECT_EQ(whole_text(std::numeric_limits<Int>::max(), 12), "  2147483647");
}

TEST(NumberText, AnyWidthAndDecimalsStayInTheField) {
    for (const Int width : {-5, 0, 1, 63, 64, 65, 100000, std::numeric_limits<Int>::min(),
                            std::numeric_limits<Int>::max()}) {
        for (const Int decimals : {-3, 0, 1, 19, 20, 21, 149, std::numeric_limits<Int>::min(),
                                   std::numeric_limits<Int>::max()}) {
            for (const Real value : {0.0f, -3.4028235E+38f, 1.0E-45f, UNBOUNDED, NOT_A_NUMBER}) {
                for (const NumberText& text :
                     {fixed_number(value, width, decimals), bare_number(value, decimals),
                      exponent_number(value, width, decimals), whole_number(decimals, width)}) {
                    EXPECT_GT(text.length, 0);
                    EXPECT_LE(text.length, 64);
                }
            }
        }
    }
    EXPECT_EQ(bare_text(-3.4028235E+38f, 1000).size(), 1u + 39u + 1u + 20u);
    EXPECT_EQ(fixed_text(1.5f, 1000, 1), std::string(61, ' ') + "1.5");
}

// ---- against long arithmetic --------------------------------------------------------------------

void expect_exact(Real value) {
    const std::string sign = value < 0.0f ? "-" : "";
    for (Int decimals = 1; decimals <= 12; ++decimals) {
        const std::string digits = exact_fixed(value, static_cast<std::size_t>(decimals));
        EXPECT_EQ(bare_text(value, decimals), sign + digits);
        std::string wide = sign + (digits.starts_with('.') ? "0" : "") + digits;
        if (wide.size() <= 20) wide.insert(0, 20 - wide.size(), ' ');
        EXPECT_EQ(fixed_text(value, static_cast<Int>(wide.size()), decimals), wide);
    }
    const std::string whole = exact_fixed(value, 0, Tie::away);
    EXPECT_EQ(bare_text(value, 0), whole == "0" ? whole : sign + whole);
    for (Int digits = 1; digits <= 9; ++digits) {
        const std::string expected = sign + exact_exponent(value, static_cast<std::size_t>(digits));
        EXPECT_EQ(exponent_text(value, 0, digits), expected);
    }
}

TEST(NumberText, TheLongArithmeticItself) {
    EXPECT_EQ(exact_fixed(0.1f, 27), ".100000001490116119384765625");
    EXPECT_EQ(exact_fixed(16777216.0f, 1), "16777216.0");
    EXPECT_EQ(exact_fixed(0.125f, 2), ".12");
    EXPECT_EQ(exact_fixed(0.375f, 2), ".38");
    EXPECT_EQ(exact_fixed(999.96f, 1), "1000.0");
    EXPECT_EQ(exact_fixed(12.5f, 0, Tie::away), "13");
    EXPECT_EQ(exact_fixed(12.5f, 0), "12");
    EXPECT_EQ(exact_exponent(999.96f, 3), ".100E+04");
    EXPECT_EQ(exact_exponent(1.0E-45f, 5), ".14013E-44");
}

TEST(NumberText, AnyBitPattern) {
    std::mt19937 random(20240731);
    for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
        const Real value = std::bit_cast<Real>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(value)) expect_exact(value);
    }
}

TEST(NumberText, ValuesOfAReport) {
    std::mt19937 random(411);
    std::uniform_real_distribution<Real> power(-8.0f, 10.0f);
    for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
        const Real value = std::pow(10.0f, power(random));
        expect_exact(i % 2 == 0 ? value : -value);
    }
}

TEST(NumberText, ExactTies) {
    std::mt19937 random(8);
    for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
        // odd multiples of 2^-k are halfway between decimals of k - 1 places
        const Int k = static_cast<Int>(random() % 12) + 1;
        const Int odd = static_cast<Int>(random() % 0x7FFFFF) | 1;
        expect_exact(std::ldexp(static_cast<Real>(odd), -k));
    }
}

TEST(NumberText, EdgesOfTheFormat) {
    for (const Real value :
         {0.0f, -0.0f, 1.0E-45f, 1.1754942E-38f, 1.17549435E-38f, 3.4028235E+38f, 16777215.0f,
          16777216.0f, 9.2233715E+18f, 9.223372E+18f, 1.8446743E+19f, 1.8446744E+19f, 0.99999994f,
          1.0f, 1.0000001f, 9.9999999E-7f, 0.0001f}) {
        expect_exact(value);
        expect_exact(-value);
    }
}

} // namespace
} // namespace tarvane::report_test
