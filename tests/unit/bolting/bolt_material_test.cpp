// The bolt material check in the cases that need no material file.
#include "bolting/bolt_material.h"

#include "../data_folder.h"
#include "frame/switches.h"

namespace tarvane {
namespace {

class BoltMaterial : public data_test::DataTest {
  protected:
    Real minDia = 7.0f, maxDia = 7.0f;
    Int ok = 7;

    void check(Int code, Int metric = -1, Int forceDiv1 = -1, Int d2Class = -1) {
        minDia = maxDia = 7.0f;
        ok = 7;
        CHECK_BOLT_MATL_VS_DIAMETER("NO SUCH BOLT", 0, minDia, maxDia, ok, 0.75f, 1, code, metric,
                                    forceDiv1, d2Class);
    }
};

TEST_F(BoltMaterial, AMaterialWithoutARangeIsNotJudged) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2}) {
        check(code, 0);
        EXPECT_EQ(minDia, -1.0f);
        EXPECT_EQ(maxDia, -1.0f);
        EXPECT_EQ(ok, -1);
    }
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltMaterial, TheEuropeanCodesHaveNoRangeAndStoreNothing) {
    for (const Int code : {PD_5500, EN_13445}) {
        check(code, 1, 1, 1);
        EXPECT_EQ(minDia, -1.0f);
        EXPECT_EQ(maxDia, -1.0f);
        EXPECT_EQ(ok, 7); // as the caller has it
        EXPECT_EQ(G_MATL_METRIC, 0);
        EXPECT_EQ(G_FORCE_DIV1, 0);
    }
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltMaterial, SelectorsThatAreNotNegativeAreStoredAndStay) {
    check(ASME_VIII_1, 1, 2, 3);
    EXPECT_EQ(G_MATL_METRIC, 1);
    EXPECT_EQ(G_FORCE_DIV1, 2);
    EXPECT_EQ(G_D2_CLASS, 3);
    check(ASME_VIII_1, -1, -1, -1);
    EXPECT_EQ(G_MATL_METRIC, 1);
    EXPECT_EQ(G_FORCE_DIV1, 2);
    EXPECT_EQ(G_D2_CLASS, 3);
    check(ASME_VIII_2, 0, 0, 0);
    EXPECT_EQ(G_MATL_METRIC, 0);
    EXPECT_EQ(G_FORCE_DIV1, 0);
    EXPECT_EQ(G_D2_CLASS, 0);
}

} // namespace
} // namespace tarvane
