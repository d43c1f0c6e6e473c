// The bolt loads that two flanges share: the greater of both, until they stay.
#include "assembly/mates.h"
#include "catalogue/units.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarvane::app {

using namespace vessel;
namespace {

// Loads that grow for a number of rounds, then stay.
struct Growing {
    int rounds;
    int asked = 0;
    std::vector<MateLoads> put = {};

    std::optional<Unsettled> settle() {
        return settle_loads(
            [this] {
                const auto step = static_cast<float>(std::min(++asked, rounds));
                return std::optional(MateLoads{1000.0f, 2000.0f, 3000.0f + step});
            },
            [this](const MateLoads& loads) { put.push_back(loads); });
    }
};

TEST(SettledLoads, SettleWithinTenRounds) {
    for (const int rounds : {1, 2, 3, 8, 9}) {
        Growing loads{rounds};
        EXPECT_FALSE(loads.settle()) << rounds;
        EXPECT_EQ(loads.asked, rounds + 1);
        EXPECT_EQ(loads.put.size(), static_cast<std::size_t>(rounds));
        EXPECT_EQ(loads.put.back()[2], 3000.0f + static_cast<float>(rounds));
    }
}

TEST(SettledLoads, AreAFaultWhereTheTenthRoundStillChangesTheLoads) {
    for (const int rounds : {10, 11, 1000}) {
        Growing loads{rounds};
        const std::optional<Unsettled> found = loads.settle();
        ASSERT_TRUE(found) << rounds;
        EXPECT_EQ(loads.asked, 10);
        EXPECT_EQ(found->before, (MateLoads{1000.0f, 2000.0f, 3009.0f}));
        EXPECT_EQ(found->after, (MateLoads{1000.0f, 2000.0f, 3010.0f}));
        EXPECT_EQ(words_of(*found, "flange 1 (A)", "flange 2 (B)", us_units()),
                  "the bolt loads Wm1, Wm2 and W of flange 1 (A) and flange 2 (B) do not converge: "
                  "1000.00 lbf, 2000.00 lbf, 3009.00 lbf, then 1000.00 lbf, 2000.00 lbf, 3010.00 "
                  "lbf");
    }
}

// Without loads there is nothing to settle; the calculation says why.
TEST(SettledLoads, AreLeftWhereOneHasNone) {
    int asked = 0, put = 0;
    EXPECT_FALSE(settle_loads(
        [&]() -> std::optional<MateLoads> {
            ++asked;
            return std::nullopt;
        },
        [&](const MateLoads&) { ++put; }));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(put, 0);
}

} // namespace
} // namespace tarvane::app
