#include "frame/switches.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tarvane {
namespace {

TEST(Switches, ResetPutsBackTheStateAtLoad) {
    for (std::int32_t* const variable : {&FLAGS_mp_IINOSPECIAL,
                                         &FLAGS_mp_LBSAREA,
                                         &FLAGS_mp_LCHORD,
                                         &GLOBALS_mp_G_NUSE_TABLEG,
                                         &GLOBALS_mp_G_NUSE_CORRODEDK,
                                         &GLOBALS_mp_G_NUSE_OLD_DIV_2,
                                         &GLOBALS_mp_G_NUSE_CASE2286,
                                         &METRICCONSTANTS_mp_G_NMETRIC_CONSTANT,
                                         &G_USE_A5,
                                         &G_USE_A6,
                                         &G_USE_A7,
                                         &moduleCode,
                                         &CODE_A98_ADDENDA,
                                         &G_FAILURE_CORROSION,
                                         &G_PER_ELEMENT_RATIO,
                                         &G_MATL_METRIC,
                                         &G_FORCE_DIV1,
                                         &G_D2_CLASS,
                                         &G_MATL_YEAR,
                                         &G_OLD_EDITION})
        *variable = 7;
    NEW_DIV_2_RULES = G_CURRENT_DIV_2 = true;
    G_TOUGHNESS.Credit55 = 0;
    CHART_NAME = std::string_view("HA-1");
    CHART_YIELD = 30000.0f;
    for (SETUP_ELEMENT& element : SETUP)
        element.real = 1.0f;

    RESET_SWITCHES();

    for (const Int value :
         {FLAGS_mp_IINOSPECIAL, FLAGS_mp_LBSAREA, FLAGS_mp_LCHORD, GLOBALS_mp_G_NUSE_TABLEG,
          GLOBALS_mp_G_NUSE_CORRODEDK, GLOBALS_mp_G_NUSE_OLD_DIV_2, GLOBALS_mp_G_NUSE_CASE2286,
          METRICCONSTANTS_mp_G_NMETRIC_CONSTANT, G_USE_A5, G_USE_A6, G_USE_A7, moduleCode,
          CODE_A98_ADDENDA, G_FAILURE_CORROSION, G_PER_ELEMENT_RATIO, G_MATL_METRIC, G_FORCE_DIV1,
          G_MATL_YEAR, G_OLD_EDITION})
        EXPECT_EQ(value, 0);
    EXPECT_EQ(G_D2_CLASS, 1);
    EXPECT_FALSE(NEW_DIV_2_RULES);
    EXPECT_FALSE(G_CURRENT_DIV_2);
    EXPECT_EQ(G_TOUGHNESS.Credit55, 1);
    EXPECT_TRUE(CHART_NAME.blank());
    EXPECT_EQ(CHART_YIELD, 0.0f);
    for (const SETUP_ELEMENT& element : SETUP)
        EXPECT_EQ(element.whole, 0);
}

TEST(Switches, SetupElementsAreRealFrom41OnAndCutTowardsZero) {
    SETUP[0].whole = 4;
    EXPECT_EQ(setup_design_code(), 4);
    SETUP[42].real = 1.9f;
    EXPECT_EQ(setup_truncated(43), 1);
    SETUP[42].real = -0.9f;
    EXPECT_EQ(setup_truncated(43), 0);
    SETUP[42].whole = 1; // a whole 1 is almost 0 as a real
    EXPECT_EQ(setup_truncated(43), 0);
    SETUP[42].real = std::numeric_limits<Real>::quiet_NaN();
    EXPECT_EQ(setup_truncated(43), INT32_MIN);
    RESET_SWITCHES();
}

// A view of code numbers by the numbers from -1 to 6 that it holds for.
template <typename View>
std::vector<Int> codes_of(View view) {
    std::vector<Int> codes;
    for (Int code = -1; code <= 6; ++code)
        if (view(code)) codes.push_back(code);
    return codes;
}

TEST(Switches, ViewsOfADesignCodeDifferOutsideOneToFour) {
    EXPECT_EQ(codes_of(asme_viii), (std::vector<Int>{1, 2}));
    EXPECT_EQ(codes_of(pd_or_en), (std::vector<Int>{3, 4}));
    EXPECT_EQ(codes_of(up_to_asme_viii), (std::vector<Int>{-1, 0, 1, 2}));
    EXPECT_EQ(codes_of(from_pd_5500), (std::vector<Int>{3, 4, 5, 6}));
}

TEST(Switches, ViewsOfTheEditionGoByOneNumberEach) {
    for (const Int value : {-1, 0, 1, 2}) {
        GLOBALS_mp_G_NUSE_OLD_DIV_2 = value;
        EXPECT_EQ(older_division_2(), value == 1) << value;
        EXPECT_EQ(present_division_2(), value == 0) << value;
        CODE_A98_ADDENDA = value;
        EXPECT_EQ(a98_addenda(), value == 1) << value;
    }
    RESET_SWITCHES();
}

TEST(Switches, TheGNamesAreTheExportedVariables) {
    GLOBALS_mp_G_NUSE_OLD_DIV_2 = 1;
    EXPECT_EQ(G_NUSE_OLD_DIV_2, 1);
    G_NUSE_OLD_DIV_2 = 0;
    EXPECT_EQ(GLOBALS_mp_G_NUSE_OLD_DIV_2, 0);
}

} // namespace
} // namespace tarvane
