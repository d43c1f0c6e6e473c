#include "frame/numbers.h"

#include "../edge_numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace tarvane {
namespace {

constexpr Int UNSEEN = -12345;

// ---- PARSE_REAL --------------------------------------------------------------------------------

struct Read {
    const char* text;
    Real value;
    Int whole;
};

class ReadsANumber : public ::testing::TestWithParam<Read> {};

TEST_P(ReadsANumber, ValueAndWhole) {
    Real value = -1.0f;
    Int whole = UNSEEN;
    EXPECT_TRUE(PARSE_REAL(GetParam().text, value, whole));
    EXPECT_EQ(value, GetParam().value);
    EXPECT_EQ(whole, GetParam().whole);
}

INSTANTIATE_TEST_SUITE_P(
    FreeForm, ReadsANumber,
    ::testing::Values(
        // plain numbers
        Read{"1", 1.0f, 1}, Read{"  12.5  ", 12.5f, 12}, Read{"-12.5", -12.5f, -12},
        Read{"+3", 3.0f, 3}, Read{"5.", 5.0f, 5}, Read{".5", 0.5f, 0}, Read{"-.5", -0.5f, 0},
        Read{"007", 7.0f, 7}, Read{"\t8\t", 8.0f, 8},
        // what ends an item
        Read{"1,2", 1.0f, 1}, Read{"1 2", 1.0f, 1}, Read{"1/2", 1.0f, 1}, Read{"1;2", 1.0f, 1},
        Read{"1 abc", 1.0f, 1}, Read{"1,abc", 1.0f, 1},
        // exponents
        Read{"1d3", 1000.0f, 1000}, Read{"1D3", 1000.0f, 1000}, Read{"1e3", 1000.0f, 1000},
        Read{"1E+3", 1000.0f, 1000}, Read{"2.5e-1", 0.25f, 0}, Read{"1q2", 100.0f, 100},
        Read{"1+3", 1000.0f, 1000}, Read{"25-1", 2.5f, 2}, Read{".5e1", 5.0f, 5},
        // repeat counts
        Read{"3*4", 4.0f, 4}, Read{"1*-2.5", -2.5f, -2}, Read{"2*", 0.0f, 0},
        // null values
        Read{"/", 0.0f, 0}, Read{",", 0.0f, 0}, Read{" ,5", 0.0f, 0}, Read{"/7", 0.0f, 0},
        // beyond the range of a single
        Read{"1e40", UNBOUNDED, INT32_MIN}, Read{"-1e40", -UNBOUNDED, INT32_MIN},
        Read{"1e999999999999999999999", UNBOUNDED, INT32_MIN}, Read{"1e-60", 0.0f, 0},
        Read{"1e-999999999999999999999", 0.0f, 0}, Read{"0e999999999999", 0.0f, 0},
        Read{"3.4028235e38", std::numeric_limits<Real>::max(), INT32_MIN},
        Read{"3.4028236e38", UNBOUNDED, INT32_MIN}, // more than halfway to the next power
        Read{"1e-45", std::numeric_limits<Real>::denorm_min(), 0},
        // whole numbers beyond an INTEGER
        Read{"2147483520", 2147483520.0f, 2147483520}, Read{"2147483648", 2147483648.0f, INT32_MIN},
        Read{"-2147483648", -2147483648.0f, INT32_MIN}));

class ReadsNoNumber : public ::testing::TestWithParam<const char*> {};

TEST_P(ReadsNoNumber, BothResultsAreZero) {
    Real value = -1.0f;
    Int whole = UNSEEN;
    EXPECT_FALSE(PARSE_REAL(GetParam(), value, whole));
    EXPECT_EQ(value, 0.0f);
    EXPECT_EQ(whole, 0);
}

INSTANTIATE_TEST_SUITE_P(FreeForm, ReadsNoNumber,
                         ::testing::Values("", "    ", "12abc", "abc", "+", "-", ".", "-.", "1e",
                                           "1e+", "1.2.3", "--1", "+-1", "1e2.5", "0x10", "1_000",
                                           "1e ", "1e+ 5", "1d,2", "1-/2", "0*4 5", "3*4x", "3*4*5",
                                           "0*4", "*4", "nan", "inf", "1-", "$5", "1\xB0", "e5",
                                           "'1'"));

TEST(ParseReal, ANulIsNoBlank) {
    Real value = 1.0f;
    Int whole = 1;
    EXPECT_FALSE(PARSE_REAL(std::string_view("5\0", 2), value, whole));
    EXPECT_EQ(value, 0.0f);
}

TEST(ParseReal, ATextEndsWhereItEnds) {
    // The text is a part of a longer one, whose further characters do not count.
    const struct {
        std::string_view whole;
        std::size_t length;
        Real value;
    } numbers[] = {
        {"1234", 2, 12.0f},   {"1.55", 3, 1.5f},   {"1.55", 2, 1.0f}, {"1e22", 3, 100.0f},
        {"1e+22", 4, 100.0f}, {"1+22", 3, 100.0f}, {"3*45", 3, 4.0f}, {"12*4", 2, 12.0f},
        {"1e22", 1, 1.0f},    {"15.5", 2, 15.0f},  {" 1x", 2, 1.0f},  {"-5-5", 2, -5.0f},
        {"2*5", 2, 0.0f},
    };
    for (const auto& c : numbers) {
        Real value = -1.0f;
        Int whole = UNSEEN;
        EXPECT_TRUE(PARSE_REAL(c.whole.substr(0, c.length), value, whole)) << c.whole;
        EXPECT_EQ(value, c.value) << c.whole;
    }
    const struct {
        std::string_view whole;
        std::size_t length;
    } none[] = {{"-5", 1}, {".5", 1}, {"  7", 2}, {"1e5", 2}, {"1e+5", 3}, {"7", 0}, {"/", 0}};
    for (const auto& c : none) {
        Real value = -1.0f;
        Int whole = UNSEEN;
        EXPECT_FALSE(PARSE_REAL(c.whole.substr(0, c.length), value, whole)) << c.whole;
    }
    Real values[3] = {-1.0f, -1.0f, -1.0f};
    EXPECT_EQ(PARSE_REALS(std::string_view("5,,7").substr(0, 1), values, 3), 1);
    EXPECT_EQ(PARSE_REALS(std::string_view("5 ,,7").substr(0, 2), values, 3), 1);
    EXPECT_EQ(values[1], -1.0f);
}

TEST(ParseReal, TheNearestSingleOfAnyNumberOfDigits) {
    // Halfway between 1 and the next single, and a hair to both sides, far after the point.
    const std::string half = "1.000000059604644775390625";
    Real value = 0.0f;
    Int whole = 0;
    EXPECT_TRUE(PARSE_REAL(half, value, whole));
    EXPECT_EQ(value, 1.0f) << "a tie goes to the even neighbour";
    EXPECT_TRUE(PARSE_REAL(half + std::string(300, '0'), value, whole));
    EXPECT_EQ(value, 1.0f) << "zeros do not count, wherever they stand";
    EXPECT_TRUE(PARSE_REAL(half + std::string(300, '0') + "1", value, whole));
    EXPECT_EQ(value, std::nextafter(1.0f, 2.0f));
    EXPECT_TRUE(PARSE_REAL("1.00000005960464477539062499999999999999999999999", value, whole));
    EXPECT_EQ(value, 1.0f);
    EXPECT_TRUE(PARSE_REAL(std::string(400, '0') + "7", value, whole));
    EXPECT_EQ(value, 7.0f);
    EXPECT_TRUE(PARSE_REAL(std::string("7") + std::string(300, '0') + "e-300", value, whole));
    EXPECT_EQ(value, 7.0f);
    EXPECT_TRUE(PARSE_REAL(std::string("0.") + std::string(300, '0') + "7e301", value, whole));
    EXPECT_EQ(value, 7.0f);
}

TEST(ParseReal, EverySingleReadsBackFromItsDigits) {
    std::mt19937 random(20240607);
    std::uniform_int_distribution<std::uint32_t> any_bits;
    for (int i = 0; i < 20000; ++i) {
        const Real wanted = std::bit_cast<Real>(any_bits(random));
        if (!std::isfinite(wanted)) continue;
        char text[64];
        std::snprintf(text, sizeof text, i % 2 == 0 ? "%.9g" : "%.8E", static_cast<double>(wanted));
        Real value = 0.0f;
        Int whole = 0;
        ASSERT_TRUE(PARSE_REAL(text, value, whole)) << text;
        ASSERT_EQ(value, wanted) << text;
        ASSERT_EQ(whole, truncated(wanted)) << text;
    }
}

TEST(ParseReal, RoundsAsTheSystemLibraryDoes) {
    std::mt19937 random(99);
    std::uniform_int_distribution<int> length(1, 30), digit('0', '9'), power(-60, 60);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (int n = length(random); n > 0; --n)
            text += static_cast<char>(digit(random));
        text += '.';
        for (int n = length(random); n > 0; --n)
            text += static_cast<char>(digit(random));
        text += 'e';
        text += std::to_string(power(random));
        Real value = 0.0f;
        Int whole = 0;
        ASSERT_TRUE(PARSE_REAL(text, value, whole)) << text;
        ASSERT_EQ(value, std::strtof(text.c_str(), nullptr)) << text;
    }
}

// ---- PARSE_REALS -------------------------------------------------------------------------------

struct Reads {
    const char* text;
    Int count; // asked for
    Int read;
    std::vector<Real> values; // over an array of -1
};

class ReadsNumbers : public ::testing::TestWithParam<Reads> {};

TEST_P(ReadsNumbers, CountAndValues) {
    const Reads& c = GetParam();
    std::vector<Real> values(c.values.size(), -1.0f);
    EXPECT_EQ(PARSE_REALS(c.text, values.data(), c.count), c.read) << c.text;
    EXPECT_EQ(values, c.values) << c.text;
}

INSTANTIATE_TEST_SUITE_P(
    FreeForm, ReadsNumbers,
    ::testing::Values(Reads{"1 2 3", 3, 3, {1, 2, 3}}, Reads{"1,2,3", 3, 3, {1, 2, 3}},
                      Reads{" 1 , 2 ;3 ", 3, 3, {1, 2, 3}}, Reads{"1 2 3 4", 3, 3, {1, 2, 3, -1}},
                      Reads{"1 2", 3, 2, {1, 2, -1}}, Reads{"1,2,", 3, 2, {1, 2, -1}},
                      Reads{"1 x 3", 3, 1, {1, -1, -1}}, Reads{"1 2x 3", 3, 1, {1, -1, -1}},
                      Reads{"1,,3", 3, 3, {1, -1, 3}}, Reads{",,3", 3, 3, {-1, -1, 3}},
                      Reads{"1 /", 3, 3, {1, -1, -1}}, Reads{"1/2", 3, 3, {1, -1, -1}},
                      Reads{"2*5 7", 3, 3, {5, 5, 7}}, Reads{"9*5", 3, 3, {5, 5, 5, -1}},
                      Reads{"2* 7", 3, 3, {-1, -1, 7}}, Reads{"2*x", 3, 0, {-1, -1, -1}},
                      Reads{"", 3, 0, {-1, -1, -1}}, Reads{"   ", 3, 0, {-1, -1, -1}},
                      Reads{"1 2", 0, 0, {-1, -1}}, Reads{"1 2", -1, 0, {-1, -1}},
                      Reads{"99999999999999999999*5", 2, 2, {5, 5}},
                      Reads{"0.5 .302 1.25", 3, 3, {0.5f, 0.302f, 1.25f}}));

TEST(ParseReals, AnyBytesStayWithinTheirBounds) {
    std::mt19937 random(4711);
    std::uniform_int_distribution<int> any_byte(0, 255), length(0, 60), often(0, 2);
    const std::string_view likely = "0123456789.+-eEdD*,;/ \t";
    std::uniform_int_distribution<std::size_t> pick(0, likely.size() - 1);
    const Real CANARY = 1234.5f;
    for (int i = 0; i < 50000; ++i) {
        std::string text;
        for (int n = length(random); n > 0; --n)
            text += often(random) != 0 ? likely[pick(random)] : static_cast<char>(any_byte(random));
        const std::vector<char> bytes(text.begin(), text.end()); // nothing comes after them
        const std::string_view given(bytes.data(), bytes.size());
        Real values[5] = {CANARY, CANARY, CANARY, CANARY, CANARY};
        const Int read = PARSE_REALS(given, values, 4);
        ASSERT_GE(read, 0);
        ASSERT_LE(read, 4);
        for (Int k = read; k < 5; ++k)
            ASSERT_EQ(values[k], CANARY) << text;
        for (const Real value : values)
            ASSERT_FALSE(std::isnan(value)) << text;

        Real value = CANARY;
        Int whole = UNSEEN;
        const bool one = PARSE_REAL(given, value, whole);
        ASSERT_EQ(one, read > 0) << text;
        ASSERT_EQ(whole, truncated(value)) << text;
        if (!one) {
            ASSERT_EQ(value, 0.0f);
        }
    }
}

// ---- interpolation -----------------------------------------------------------------------------

TEST(LinearInterp, EndsAndMiddle) {
    EXPECT_EQ(LINEAR_INTERP(1.0f, 1.0f, 3.0f, 10.0f, 20.0f), 10.0f);
    EXPECT_EQ(LINEAR_INTERP(1.0f, 3.0f, 3.0f, 10.0f, 20.0f), 20.0f);
    EXPECT_EQ(LINEAR_INTERP(1.0f, 2.0f, 3.0f, 10.0f, 20.0f), 15.0f);
    EXPECT_EQ(LINEAR_INTERP(1.0f, 4.0f, 3.0f, 10.0f, 20.0f), 25.0f) << "beyond the end";
}

TEST(LinearInterp, MultipliesBeforeItDivides) {
    // (y2 - y1) * (x - x1) passes the range of a single, though the result would not.
    EXPECT_EQ(LINEAR_INTERP(0.0f, 1e20f, 2e20f, 0.0f, 1e20f), UNBOUNDED);
    const volatile Real dy = 0.3f, dx = 0.7f, w = 1.1f;
    const volatile Real product = dy * dx;
    EXPECT_EQ(LINEAR_INTERP(0.0f, 0.7f, 1.1f, 0.0f, 0.3f), product / w);
}

TEST(LinearInterp, EqualAbscissasDivideByZero) {
    EXPECT_EQ(LINEAR_INTERP(1.0f, 2.0f, 1.0f, 0.0f, 5.0f), UNBOUNDED);
    EXPECT_TRUE(std::isnan(LINEAR_INTERP(1.0f, 1.0f, 1.0f, 0.0f, 5.0f)));
}

TEST(LogInterp, APowerLawIsALine) {
    // y = x^2 between 10 and 1000
    EXPECT_NEAR(LOG_INTERP(10.0f, 100.0f, 1000.0f, 1e2f, 1e6f), 1e4f, 1e-2f);
    EXPECT_NEAR(LOG_INTERP(1.0f, 2.0f, 4.0f, 1.0f, 16.0f), 4.0f, 1e-5f);
    EXPECT_TRUE(std::isnan(LOG_INTERP(1.0f, -2.0f, 4.0f, 1.0f, 16.0f)));
}

TEST(LogInterp, OneSinglePowerOfTheLinearForm) {
    const auto log10 = [](Real x) { return static_cast<Real>(std::log10(static_cast<double>(x))); };
    std::mt19937 random(7);
    std::uniform_real_distribution<Real> positive(0.01f, 1000.0f);
    for (int i = 0; i < 1000; ++i) {
        const Real x1 = positive(random), x = positive(random), x2 = positive(random);
        const Real y1 = positive(random), y2 = positive(random);
        const volatile Real rise = log10(y2) - log10(y1);
        const volatile Real run = log10(x) - log10(x1);
        const volatile Real width = log10(x2) - log10(x1);
        const volatile Real product = rise * run;
        const volatile Real share = product / width;
        const volatile Real exponent = log10(y1) + share;
        ASSERT_EQ(LOG_INTERP(x1, x, x2, y1, y2),
                  static_cast<Real>(std::pow(10.0, static_cast<double>(exponent))));
    }
}

// ---- Newton's method ---------------------------------------------------------------------------

double starts[3];
int calls_of_f = 0;

TEST(NewtonSolve, FindsARoot) {
    Int count = -1;
    double x = 0.0;
    NEWTON_SOLVE([](double v) { return v * v - 2.0; }, [](double v) { return 2.0 * v; }, 1.0, 1e-12,
                 count, x);
    EXPECT_NEAR(x, std::sqrt(2.0), 1e-15);
    EXPECT_GT(count, 3);
    EXPECT_LT(count, 10);
}

TEST(NewtonSolve, AStartOfZeroBecomesOne) {
    Int count = 0;
    double x = 0.0;
    const auto f = [](double v) {
        if (calls_of_f < 3) starts[calls_of_f] = v;
        ++calls_of_f;
        return v - 5.0;
    };
    const auto df = [](double) { return 1.0; };
    calls_of_f = 0;
    NEWTON_SOLVE(f, df, 0.0, 1e-9, count, x);
    EXPECT_EQ(starts[0], 1.0);
    calls_of_f = 0;
    NEWTON_SOLVE(f, df, -0.0, 1e-9, count, x);
    EXPECT_EQ(starts[0], 1.0);
    EXPECT_EQ(x, 5.0);
    EXPECT_EQ(count, 2) << "the step that arrives and one that stays";
}

TEST(NewtonSolve, AStepOfExactlyTheToleranceEndsIt) {
    Int count = 0;
    double x = 0.0;
    const auto f = [](double) { return 0.25; };
    const auto df = [](double) { return 1.0; };
    NEWTON_SOLVE(f, df, 8.0, 0.25, count, x);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(x, 7.75);
    NEWTON_SOLVE(f, df, 8.0, 0.2499, count, x);
    EXPECT_EQ(count, 501);
    EXPECT_EQ(x, 8.0 - 501 * 0.25);
}

TEST(NewtonSolve, NotANumberRunsToTheLimit) {
    Int count = 0;
    double x = 0.0;
    NEWTON_SOLVE([](double) { return std::nan(""); }, [](double) { return 1.0; }, 3.0, 1e-9, count,
                 x);
    EXPECT_EQ(count, 501);
    EXPECT_TRUE(std::isnan(x));
}

// ---- SQUEEZE_TEXT ------------------------------------------------------------------------------

std::string squeezed(std::string_view source, Int target_len, Int keep) {
    std::string target(static_cast<std::size_t>(target_len) + 1, '#');
    SQUEEZE_TEXT(source, target.data(), target_len, keep);
    EXPECT_EQ(target.back(), '#') << "nothing behind the target";
    target.pop_back();
    return target;
}

TEST(SqueezeText, KeepsTheFirstColumnsAndDropsBlanksBehindThem) {
    EXPECT_EQ(squeezed("  a b  c d  ", 12, 6), "  a b cd    ");
    EXPECT_EQ(squeezed("a b c", 8, 0), "abc     ");
    EXPECT_EQ(squeezed("a b c", 8, 99), "a b c   ");
    EXPECT_EQ(squeezed("a b c", 8, -1), "abc     ");
}

TEST(SqueezeText, ABlankSourceBlanksTheTarget) {
    EXPECT_EQ(squeezed("", 5, 3), "     ");
    EXPECT_EQ(squeezed("     ", 5, 3), "     ");
}

TEST(SqueezeText, StopsAtColumn73AndAtTheTargetsEnd) {
    const std::string source(200, 'x');
    EXPECT_EQ(squeezed(source, 100, 0), std::string(73, 'x') + std::string(27, ' '));
    EXPECT_EQ(squeezed(source, 100, 200), std::string(73, 'x') + std::string(27, ' '));
    EXPECT_EQ(squeezed(source, 10, 0), std::string(10, 'x'));
    EXPECT_EQ(squeezed(source, 0, 0), "");
}

} // namespace
} // namespace tarvane
