#include "flange/geometry.h"

#include "stage_fixture.h"

namespace tarvane::stage_test {
namespace {

class CorrodedDimensions : public StageTest {
  protected:
    // The published flange with an allowance inside.
    static FLANGE_STATE corroding(Int type, Real ci = 0.125f, Real ce = 0.0f) {
        FLANGE_STATE s = ptb3_e4_16_1();
        s.type = type;
        s.ci = ci;
        s.ce = ce;
        s.ct = ci + 2.0f * ce;
        s.useCorrosion = "Y";
        return s;
    }
    static std::string report(const FLANGE_STATE& s) {
        CORRODED_DIMENSIONS(s);
        return joined(take_lines());
    }
    static bool shows(const FLANGE_STATE& s, std::string_view text) {
        return report(s).find(text) != std::string::npos;
    }
};

TEST_F(CorrodedDimensions, IntegralFlange) {
    for (const Int type : {INTEGRAL_WELD_NECK, INTEGRAL_SLIP_ON, INTEGRAL_RING})
        EXPECT_EQ(report(corroding(type)),
                  "Corroded Flange Thickness, tc = T-ci                    1.3125  in.\n"
                  "Corroded Flange ID,      Bcor = B+2*Fcor                26.500  in.\n"
                  "Corroded Large Hub,     g1Cor = g1-ci                   0.5625  in.\n"
                  "Corroded Small Hub,     g0Cor = go-ci                   0.1875  in.\n"
                  "Code R Dimension,           R = ((C-Bcor)/2)-g1cor      1.8125  in.\n"
                  "\n");
}

TEST_F(CorrodedDimensions, LooseFlangesShowNoBoreAndNoHub) {
    for (const Int type : {LOOSE_SLIP_ON, LOOSE_RING, LAP_JOINT})
        EXPECT_EQ(report(corroding(type)),
                  "Corroded Flange Thickness, tc = T-ci                    1.3125  in.\n"
                  "Code R Dimension,           R = ((C-Bcor)/2)-g1cor      1.8125  in.\n"
                  "\n");
}

TEST_F(CorrodedDimensions, ABlindFlangeShowsABlankLine) {
    EXPECT_EQ(report(corroding(BLIND)), "\n");
}

// The shell's bore is measured from the outside; R goes by the flange's own bore.
TEST_F(CorrodedDimensions, ReverseFlange) {
    EXPECT_EQ(report(corroding(REVERSE_WELD_NECK, 0.125f, 0.0625f)),
              "Corroded Flange Thickness, tc = T-ci                    1.1875  in.\n"
              "Corroded Flange ID,     B'cor = B'+2*ci                 26.500  in.\n"
              "Corroded Shell ID,       Bcor = A+2(ci - go - ce)       32.375  in.\n"
              "Corroded Large Hub,     g1Cor = g1-ci                   0.5000  in.\n"
              "Corroded Small Hub,     g0Cor = go-ci                   0.1250  in.\n"
              "Code R Dimension,           R = ((C-Bcor)/2)-g1cor      1.8750  in.\n"
              "\n");
}

TEST_F(CorrodedDimensions, TheThicknessIsShownWhereItCorrodes) {
    FLANGE_STATE s = corroding(INTEGRAL_WELD_NECK);
    s.useCorrosion = "y";
    EXPECT_TRUE(shows(s, "tc = "));
    s.useCorrosion = "yes";
    EXPECT_TRUE(shows(s, "tc = "));
    for (const char* no : {"N", "", " Y"}) {
        s.useCorrosion = no;
        EXPECT_FALSE(shows(s, "tc = ")) << no;
    }
    s.useCorrosion = "Y";
    s.ct = 0.0f;
    EXPECT_FALSE(shows(s, "tc = "));
}

TEST_F(CorrodedDimensions, TextOfRWithoutAllowances) {
    constexpr std::string_view uncorroded =
        "Code R Dimension,           R = (C-B)/2 - g1            1.8125  in.\n";
    EXPECT_TRUE(shows(corroding(INTEGRAL_WELD_NECK, 0.0f), uncorroded));
    EXPECT_TRUE(shows(corroding(INTEGRAL_WELD_NECK, 0.0f, 0.0001f), "(C-B)/2 - g1 "));
    EXPECT_TRUE(shows(corroding(INTEGRAL_WELD_NECK, 0.0f, 0.00011f), "((C-Bcor)/2)-g1cor "));
    EXPECT_TRUE(shows(corroding(INTEGRAL_WELD_NECK, 1e-6f, 0.0f), "((C-Bcor)/2)-g1cor "));
}

TEST_F(CorrodedDimensions, AFullFaceGasketOfTheEuropeanCodesHasNoR) {
    FLANGE_STATE s = corroding(INTEGRAL_WELD_NECK);
    for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
        s.code = code;
        s.fullFace = false;
        EXPECT_TRUE(shows(s, "Code R Dimension")) << code;
        s.fullFace = true;
        EXPECT_EQ(shows(s, "Code R Dimension"), code < PD_5500) << code;
    }
}

// Both allowances together decide whether a hub is left; only the inner one comes off what enters R.
TEST_F(CorrodedDimensions, AHubThatBothAllowancesUseUp) {
    FLANGE_STATE s = corroding(INTEGRAL_WELD_NECK, 0.25f, 0.0625f);
    s.go = 0.3125f; // nothing is left, nothing is missing
    s.g1 = 0.25f;
    EXPECT_EQ(corroded_hub(s.go, s), 0.0625f);
    EXPECT_EQ(corroded_hub(s.g1, s), 0.0f);
    EXPECT_EQ(bolt_circle_to_hub(s), (31.25f - 26.75f) / 2.0f + 0.0625f);
    const std::string text = report(s);
    EXPECT_NE(text.find("g1Cor = g1-ci                   0.0000  in."), std::string::npos) << text;
    EXPECT_NE(text.find("g0Cor = go-ci                   0.0000  in."), std::string::npos) << text;
    EXPECT_NE(text.find("((C-Bcor)/2)-g1cor      2.3125  in."), std::string::npos) << text;

    s.ce = 0.0f; // a hub that takes the inner allowance alone
    EXPECT_EQ(corroded_hub(s.go, s), 0.0625f);
    EXPECT_EQ(corroded_hub(s.g1, s), 0.0f);
    s.ci = 0.375f;
    EXPECT_EQ(corroded_hub(s.go, s), 0.0f);
}

TEST_F(CorrodedDimensions, TheExternalAllowanceComesOffTheShownHubAndIsAddedToR) {
    const FLANGE_STATE s = corroding(INTEGRAL_WELD_NECK, 0.125f, 0.0625f);
    const std::string text = report(s);
    EXPECT_NE(text.find("g1Cor = g1-ci                   0.5000  in."), std::string::npos) << text;
    EXPECT_NE(text.find("g0Cor = go-ci                   0.1250  in."), std::string::npos) << text;
    EXPECT_NE(text.find("R = ((C-Bcor)/2)-g1cor      1.8750  in."), std::string::npos) << text;
    EXPECT_EQ(corroded_hub(s.g1, s), 0.5625f);
}

TEST_F(CorrodedDimensions, ShellOfAReverseFlange) {
    FLANGE_STATE s = corroding(REVERSE_WELD_NECK, 0.125f, 0.0625f);
    EXPECT_EQ(reverse_shell_diameter(s), 32.375f);
    s.ci = s.go; // no hub is left
    EXPECT_EQ(reverse_shell_diameter(s), 32.75f);
    s.ci = 2.0f * s.go; // more than the hub: the diameter grows no further
    EXPECT_EQ(reverse_shell_diameter(s), 32.75f);
}

// Thickness, hub and R go as small lengths, bores as diameters.
TEST_F(CorrodedDimensions, UnitsOfTheLines) {
    UNITS.thickness = 2.0f;
    UNITS.thickness_label = "mm";
    UNITS.diameter = 3.0f;
    UNITS.diameter_label = "cm";
    EXPECT_EQ(report(corroding(INTEGRAL_WELD_NECK)),
              "Corroded Flange Thickness, tc = T-ci                    2.6250  mm\n"
              "Corroded Flange ID,      Bcor = B+2*Fcor                79.500  cm\n"
              "Corroded Large Hub,     g1Cor = g1-ci                   1.1250  mm\n"
              "Corroded Small Hub,     g0Cor = go-ci                   0.3750  mm\n"
              "Code R Dimension,           R = ((C-Bcor)/2)-g1cor      3.6250  mm\n"
              "\n");
    EXPECT_TRUE(shows(corroding(REVERSE_WELD_NECK), "A+2(ci - go - ce)       97.500  cm\n"));
    EXPECT_TRUE(shows(corroding(REVERSE_WELD_NECK), "B'+2*ci                 79.500  cm\n"));
}

TEST_F(CorrodedDimensions, NoMarks) {
    CORRODED_DIMENSIONS(corroding(REVERSE_WELD_NECK));
    ASSERT_EQ(LINE_COUNT, 7);
    for (Int k = 1; k <= LINE_COUNT; ++k)
        EXPECT_EQ(stored_marks(k), " 0 0 0 0 0 0") << k;
}

} // namespace
} // namespace tarvane::stage_test
