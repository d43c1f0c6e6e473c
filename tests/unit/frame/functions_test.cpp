// The functions of single precision: the single nearest to the exact value, on every platform.
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "frame/types.h"
#include "test_paths.h"

using namespace tarvane;

namespace {

static_assert(std::numeric_limits<long double>::digits >= 64, "needs a wider format to judge by");

// Arguments over every magnitude, both signs.
Real any_real(std::mt19937& random) {
    return std::bit_cast<Real>(static_cast<std::uint32_t>(random()));
}

Real between(std::mt19937& random, Real low, Real high) {
    return std::uniform_real_distribution<Real>(low, high)(random);
}

template <typename Single, typename Wide>
void expect_nearest(const char* name, Single single, Wide wide, Real low, Real high) {
    std::mt19937 random(20);
    for (int i = 0; i < 100000; ++i) {
        const Real x = i % 2 == 0 ? between(random, low, high) : any_real(random);
        // Widened functions reduce angles of this size no further than their own digits.
        if (std::fabs(x) > 1e15f) continue;
        const Real got = single(x), nearest = static_cast<Real>(wide(static_cast<long double>(x)));
        if (std::isnan(nearest))
            ASSERT_TRUE(std::isnan(got)) << name << "(" << x << ")";
        else
            ASSERT_EQ(got, nearest) << name << "(" << x << ")";
    }
}

} // namespace

#define EXPECT_NEAREST(name, low, high)                                                            \
    expect_nearest(                                                                                \
        #name, [](Real x) { return tarvane::name(x); },                                            \
        [](long double x) { return std::name(x); }, low, high)

TEST(Functions, GiveTheNearestSingle) {
    EXPECT_NEAREST(log, 1.0f, 3.0f);
    EXPECT_NEAREST(log10, 1.0f, 3.0f);
    EXPECT_NEAREST(exp, -3.0f, 3.0f);
    EXPECT_NEAREST(sin, 0.0f, 1.5f);
    EXPECT_NEAREST(cos, 0.0f, 1.5f);
    EXPECT_NEAREST(acos, -1.0f, 1.0f);
    EXPECT_NEAREST(cbrt, 0.01f, 12.0f);
    std::mt19937 random(21);
    for (int i = 0; i < 100000; ++i) {
        const Real x = between(random, 0.01f, 4000.0f), y = between(random, -3.0f, 3.0f);
        ASSERT_EQ(tarvane::pow(x, y), static_cast<Real>(std::pow(static_cast<long double>(x),
                                                                 static_cast<long double>(y))))
            << x << " to the " << y;
    }
}

TEST(Functions, KeepToTheEdges) {
    constexpr Real infinity = std::numeric_limits<Real>::infinity();
    EXPECT_EQ(tarvane::log(0.0f), -infinity);
    EXPECT_EQ(tarvane::log10(0.0f), -infinity);
    EXPECT_TRUE(std::isnan(tarvane::log(-1.0f)));
    EXPECT_EQ(tarvane::log10(1000.0f), 3.0f);
    EXPECT_EQ(tarvane::exp(100.0f), infinity);
    EXPECT_EQ(tarvane::exp(-infinity), 0.0f);
    EXPECT_TRUE(std::isnan(tarvane::acos(1.5f)));
    EXPECT_EQ(tarvane::cbrt(-27.0f), -3.0f);
    EXPECT_EQ(tarvane::pow(4.0f, 0.5f), 2.0f);
    EXPECT_TRUE(std::isnan(tarvane::pow(-4.0f, 0.5f)));
    EXPECT_EQ(tarvane::pow(1e30f, 2.5f), infinity);
    // Halfway between a subnormal and the next, one rounding decides.
    EXPECT_EQ(tarvane::exp(-103.0f), static_cast<Real>(std::exp(-103.0L)));
}

// A call of the C library's own single function would differ between platforms.
TEST(Functions, AreTheOnlyOnesInTheEngine) {
    const std::set<std::string_view> of_std = {
        "log", "log2", "log10", "log1p", "exp",   "exp2", "expm1", "pow",  "sin",  "cos",
        "tan", "asin", "acos",  "atan",  "atan2", "sinh", "cosh",  "tanh", "cbrt", "hypot"};
    const std::set<std::string_view> single = {"logf", "log10f", "expf",  "powf",
                                               "sinf", "cosf",   "acosf", "cbrtf"};
    // The first such name that is called.
    const auto call = [&](std::string_view source) -> std::string_view {
        constexpr std::string_view STD = "std::";
        const auto is_of_a_name = [](char c) {
            return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
        };
        for (std::size_t end = source.find('('); end != source.npos;
             end = source.find('(', end + 1)) {
            std::size_t begin = end;
            while (begin > 0 && is_of_a_name(source[begin - 1]))
                --begin;
            const std::string_view name = source.substr(begin, end - begin);
            if (single.contains(name) ||
                (of_std.contains(name) && source.substr(0, begin).ends_with(STD)))
                return name;
        }
        return {};
    };
    for (const char* bad : {"x = std::log(y);", "std::hypot(", "(expf(", "2.0f * powf(a, b)"})
        EXPECT_NE(call(bad), "") << bad;
    for (const char* good :
         {"log(y)", "std::logb(y)", "tarvane::pow(a, b)", "std::max(expf)", "myexpf(x)"})
        EXPECT_EQ(call(good), "") << good;
    int files = 0;
    namespace fs = std::filesystem;
    for (const auto& entry :
         fs::recursive_directory_iterator(fs::path(TARVANE_SOURCE_DIR) / "engine")) {
        if (!entry.is_regular_file() || entry.path().filename() == "types.h") continue;
        std::ifstream file(entry.path());
        std::stringstream text;
        text << file.rdbuf();
        const std::string source = text.str();
        EXPECT_EQ(call(source), "") << entry.path();
        ++files;
    }
    EXPECT_GT(files, 100);
}
