#include "bolting/bolt_material.h"

#include "../data_folder.h"
#include "../material_file.h"
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
        EXPECT_EQ(ok, 7); // unchanged
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

class BoltMaterialRange : public BoltMaterial {
  protected:
    void range(Real low, Real high) {
        write_file("system", "MATFILE1.BIN",
                   material_test::material_file(
                       1, 0, {material_test::Record("SA-193 B7", 4).put(364, low).put(368, high)}));
    }
    Int judge(Real dia, Int printFlag = 1, Int metric = 0) {
        CHECK_BOLT_MATL_VS_DIAMETER(std::string_view("SA-193 B7\0\0", 11), 4, minDia, maxDia, ok,
                                    dia, printFlag, ASME_VIII_1, metric, 0, 0);
        return ok;
    }
};

TEST_F(BoltMaterialRange, TheLowerLimitIsOutsideTheUpperInside) {
    range(2.5f, 4.0f);
    EXPECT_EQ(judge(2.5f), 0);
    EXPECT_EQ(minDia, 2.5f);
    EXPECT_EQ(maxDia, 4.0f);
    EXPECT_EQ(judge(std::nextafter(2.5f, 3.0f)), 1);
    EXPECT_EQ(judge(4.0f), 1);
    EXPECT_EQ(judge(std::nextafter(4.0f, 5.0f)), 0);
}

TEST_F(BoltMaterialRange, LimitsThatAreNotThere) {
    range(-1.0f, -1.0f);
    EXPECT_EQ(judge(1.0f), -1);
    range(-1.0f, 2.5f);
    EXPECT_EQ(judge(2.5f), 1);
    range(1.0f, -1.0f); // a lower limit alone refuses every diameter
    EXPECT_EQ(judge(0.5f), 0);
    EXPECT_EQ(judge(2.0f), 0);
}

TEST_F(BoltMaterialRange, AnotherReferenceIsAnotherMaterial) {
    range(2.5f, 4.0f);
    CHECK_BOLT_MATL_VS_DIAMETER("SA-193 B7", 5, minDia, maxDia, ok, 1.0f, 1, ASME_VIII_1, 0, 0, 0);
    EXPECT_EQ(ok, -1);
    EXPECT_EQ(minDia, -1.0f);
    EXPECT_EQ(maxDia, -1.0f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BoltMaterialRange, TheSelectorsOfTheCallChooseTheFile) {
    range(2.5f, 4.0f);
    CHECK_BOLT_MATL_VS_DIAMETER("SA-193 B7", 4, minDia, maxDia, ok, 3.0f, 1, ASME_VIII_2, 0, 0, 1);
    EXPECT_EQ(ok, -1); // there is no file of Division 2
    CHECK_BOLT_MATL_VS_DIAMETER("SA-193 B7", 4, minDia, maxDia, ok, 3.0f, 1, ASME_VIII_2, 0, 1, 1);
    EXPECT_EQ(ok, 1);
    // A metric file holds millimetres, the limits are returned in inches.
    write_file("system", "MATFILE1M.BIN",
               material_test::material_file(
                   1, 0, {material_test::Record("SA-193 B7", 4).put(364, 12.7f).put(368, 254.0f)}));
    EXPECT_EQ(judge(0.5f, 0, 1), 0);
    EXPECT_EQ(minDia, 0.5f);
    EXPECT_EQ(maxDia, 10.0f);
    EXPECT_EQ(judge(9.0f, 0, 1), 1);
}

TEST_F(BoltMaterialRange, TheWarning) {
    range(2.5f, 4.0f);
    judge(3.0f);
    EXPECT_TRUE(reported().empty());
    judge(1.0f, 0);
    EXPECT_TRUE(reported().empty());
    judge(1.0f, 1, -1); // a negative first selector silences it
    EXPECT_EQ(ok, 0);
    EXPECT_TRUE(reported().empty());
    judge(1.0f);
    const std::vector<data_test::Line> expected{
        {"Warning:", WARNING_STYLE},
        {"It seems as if the selected bolt material does not match the bolt diameter range",
         WARNING_STYLE},
        {"allowed per the material specification.  Please check the material selection",
         WARNING_STYLE},
        {"for the given nominal bolt diameter.", WARNING_STYLE}};
    EXPECT_EQ(reported(), expected);
}

} // namespace
} // namespace tarvane
