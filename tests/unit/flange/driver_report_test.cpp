// What the driver does after its passes: bolt area failure, rigidity, attachment welds, closing note.
#include "flange/driver_report.h"

#include "bolting/bolt_spacing.h"
#include "driver_report_fixture.h"

namespace tarvane::driver_test {
namespace {

// ---- bolt area ---------------------------------------------------------------------------------------

class BoltArea : public DriverReport {
  protected:
    BoltArea() { flange.set({{3, 2.0f}, {24, 8.0f}}); }
};

TEST_F(BoltArea, VesselElementGetsTheInputAndTheProblem) {
    const Lines lines = run_to_file();
    EXPECT_EQ(FLANGE.error, BOLT_AREA_SHORT);
    const std::ptrdiff_t at = find(lines, "Flange Bolt Area Problem Encountered for Sample");
    ASSERT_GT(at, 0);
    EXPECT_TRUE(has(lines, "Design Pressure"));
    char text[120];
    std::snprintf(text, sizeof text, "The req'd bolt area (%.3f in\xB2) is > than the actual",
                  static_cast<double>(FLANGE.Am));
    const auto next = [&](int k) { return lines[static_cast<std::size_t>(at + k)]; };
    EXPECT_EQ(next(1).text, text);
    std::snprintf(text, sizeof text, "bolt area (%.3f in\xB2) for this flange design. Increase",
                  static_cast<double>(FLANGE.Ab));
    EXPECT_EQ(next(2).text, text);
    EXPECT_EQ(next(3).text, "the number or size of bolts and attempt the analysis again.");
    for (int k = 0; k < 4; ++k)
        EXPECT_EQ(next(k).marks, "");
    EXPECT_EQ(next(4).text, "");
    EXPECT_EQ(next(5).text.substr(0, NOTE.size()), NOTE); // no rigidity, no report pass
    // The results are those of no pass, except where a silent one left them.
    EXPECT_EQ(flange.tReq, -7.0f);
    EXPECT_EQ(flange.at(200), 0.0f);
    EXPECT_EQ(flange.at(120), 0.0f);
    EXPECT_EQ(flange.mawp, NO_VALUE);
    EXPECT_EQ(flange.mapNc, NO_VALUE);
    EXPECT_EQ(IWRITE, 1);
    EXPECT_EQ(IWRTFL, 1);
}

TEST_F(BoltArea, WithoutAVesselTheAreasComeBack) {
    for (const Real element : {0.0f, -1.0f}) {
        SCOPED_TRACE(element);
        flange.set({{1, element}, {200, 0.0f}});
        const Lines lines = element == 0.0f ? run_to_file() : again(); // -1.0: the line store
        EXPECT_EQ(flange.tReq, -FLANGE.Am);
        EXPECT_EQ(flange.at(200), FLANGE.Ab);
        EXPECT_GT(FLANGE.Am, FLANGE.Ab);
        EXPECT_FALSE(has(lines, "Flange Bolt Area Problem"));
    }
}

TEST_F(BoltArea, LineStoreOfAVesselLeavesBeforeTheLines) {
    flange.run();
    EXPECT_EQ(FLANGE.error, BOLT_AREA_SHORT);
    EXPECT_TRUE(store_lines().empty());
    EXPECT_EQ(flange.tReq, -7.0f);
    EXPECT_EQ(flange.at(200), 0.0f);
    EXPECT_EQ(IWRTFL, 0);
}

TEST_F(BoltArea, AnAnalysisIsNotStopped) {
    flange.at(3) = 1.0f;
    const Lines lines = run_to_file();
    EXPECT_EQ(FLANGE.error, 0);
    EXPECT_FALSE(has(lines, "Flange Bolt Area Problem"));
    EXPECT_GT(flange.at(127), flange.at(126));
}

// ---- rigidity ------------------------------------------------------------------------------------------

class DriverRigidity : public DriverReport {
  protected:
    DriverRigidity() { flange.rigidity = 1; }
    static constexpr std::string_view REQUIRED =
                                          "Flange Rigidity Based on Required Thickness [ASME]:",
                                      GIVEN = "Flange Rigidity Based on Given Thickness [ASME]:",
                                      NONE = "Warning: No rigidity calculation possible for this "
                                             "geometry. Check hub and other dimensions.";
};

TEST_F(DriverRigidity, AnAnalysisHasNoRequiredThickness) {
    const Lines lines = run_to_file();
    // lambda of the required thickness is 0 after an analysis: no index, and the warning.
    const std::ptrdiff_t at = find(lines, REQUIRED);
    ASSERT_GT(at, 0);
    const auto line_at = [&](std::ptrdiff_t k) { return lines[static_cast<std::size_t>(at + k)]; };
    EXPECT_EQ(line_at(0).marks, marks(HEADING_STYLE));
    EXPECT_EQ(line_at(1), (Line{std::string(NONE), ""}));
    EXPECT_EQ(line_at(2).text, "");
    EXPECT_EQ(line_at(3), (Line{std::string(GIVEN), marks(HEADING_STYLE)}));
    EXPECT_EQ(line_at(4).text, "Flange Rigidity Index, Seating (rotation check) per APP. 2 [Js]:");
    EXPECT_EQ(count(lines, NONE), 1);
}

TEST_F(DriverRigidity, AThicknessSearchHasBoth) {
    flange.at(3) = 2.0f;
    const Lines lines = run_to_file();
    EXPECT_EQ(count(lines, NONE), 0);
    EXPECT_EQ(count(lines, "Flange Rigidity Index, Seating (rotation check)"), 2);
    EXPECT_GT(FLANGE.lambdaReq, 0.0f);
    EXPECT_LT(find(lines, REQUIRED), find(lines, GIVEN));
}

TEST_F(DriverRigidity, OnlyWhereItIsAskedForAndCounts) {
    EXPECT_TRUE(has(run_to_file(), GIVEN));
    flange.rigidity = 0;
    EXPECT_FALSE(has(again(), GIVEN));
    flange.rigidity = 2;
    EXPECT_FALSE(has(again(), GIVEN));
    flange.rigidity = 1;
    for (const Int standard : {1, 2}) {
        flange.standardFlange = standard;
        EXPECT_FALSE(has(again(), GIVEN));
    }
    flange.standardFlange = 0;
    flange.at(2) = 7.0f;
    EXPECT_FALSE(has(again(), GIVEN));
    flange.at(2) = 1.0f;
    IOUT = -1;
    flange.run();
    EXPECT_FALSE(has(store_lines(), GIVEN)); // never in the line store
    EXPECT_TRUE(has(store_lines(), NOTE));
}

TEST_F(DriverRigidity, FullFaceGasketKeepsTheSecondHeadingOnly) {
    flange.set({{12, 32.8f}, {14, 32.8f}, {15, 26.5f}});
    const Lines lines = run_to_file();
    EXPECT_EQ(flange.rigidity, 0);
    EXPECT_FALSE(has(lines, REQUIRED));
    EXPECT_TRUE(has(lines, GIVEN));
    EXPECT_FALSE(has(lines, NONE));
}

// A wide spacing, so that the factor is above 1 in each form.
TEST_F(DriverRigidity, CorrectionFactorOfTheStep) {
    flange.at(24) = 16.0f;
    flange.at(25) = 0.5f; // m: the forms of 1 and 3 differ by 2a + t and 2a + 6t
    report_to_file();
    Real Deltab, cfDen;
    const auto factor = [&](Int form) {
        return BOLT_CORRECTION_FACTOR(form, 31.25f, 16, 0.75f, flange.at(8), 0.0f, 0.5f, Deltab,
                                      cfDen);
    };
    ASSERT_GT(factor(1), 1.0f);
    ASSERT_NE(factor(1), factor(3));
    flange.run();
    EXPECT_EQ(FLANGE.CF, factor(1));
    SETUP[42].real = 1.0f;
    flange.run();
    EXPECT_EQ(FLANGE.CF, 1.0f);
    SETUP[42].real = 2.0f; // turned off in the kernel, but not 1
    flange.run();
    EXPECT_EQ(FLANGE.CF, factor(1));
    CODE_A98_ADDENDA = 1;
    flange.run();
    EXPECT_EQ(FLANGE.CF, factor(1));
    SETUP[42].real = 0.0f;
    flange.run();
    EXPECT_EQ(FLANGE.CF, factor(3));
    CODE_A98_ADDENDA = 0;
    moduleCode = 0; // counts as 1, and has no form of its own to turn off
    SETUP[42].real = 1.0f;
    flange.run();
    EXPECT_EQ(FLANGE.CF, factor(1));
}

TEST_F(DriverRigidity, CurrentDivision2RulesAreInForceForTheStepOnly) {
    moduleCode = 2;
    flange.code = 2;
    Lines lines = run_to_file();
    EXPECT_TRUE(has(lines, "Flange Rigidity Criterion, Seating per Table 4.16.10 [Jg]:"));
    EXPECT_FALSE(NEW_DIV_2_RULES);
    G_NUSE_OLD_DIV_2 = 1;
    lines = again();
    EXPECT_FALSE(has(lines, "Flange Rigidity Criterion"));
    EXPECT_TRUE(has(lines, "Flange Rigidity Index, Seating"));
    NEW_DIV_2_RULES = true; // left by a stand-alone call
    lines = again();
    EXPECT_TRUE(has(lines, "Flange Rigidity Index, Seating"));
    EXPECT_TRUE(NEW_DIV_2_RULES);
}

TEST_F(DriverRigidity, ModuliGoByTheModuleCode) {
    flange.at(5) = 600.0f;
    report_to_file();
    flange.run();
    EXPECT_FLOAT_EQ(FLANGE.Ecold, 29.4e6f);
    EXPECT_FLOAT_EQ(FLANGE.Ehot, 26.5e6f);
    flange.code = 4; // the kernel uses the code, this step that of the module
    flange.run();
    EXPECT_FLOAT_EQ(FLANGE.Ehot, 26.5e6f);
    moduleCode = 4;
    flange.code = 1;
    flange.run();
    EXPECT_NE(FLANGE.Ehot, 26.5e6f);
    EXPECT_GT(FLANGE.Ehot, 20.0e6f);
    EXPECT_GT(FLANGE.Ecold, FLANGE.Ehot);
}

// ---- attachment welds ----------------------------------------------------------------------------------

class Welds : public DriverReport {
  protected:
    Welds() { flange.set({{2, 2.0f}, {71, 0.5f}, {74, 0.125f}, {16, 0.4375f}, {17, 0.75f}}); }
    // The lines of the welds, from the title up to the closing note's blank line.
    std::vector<std::string> welds() {
        IOUT = -1;
        flange.run();
        const Lines lines = store_lines();
        std::ptrdiff_t at = find(lines, "Required Fillet Weld Leg size");
        if (at < 0) at = find(lines, "Minimum Attachment Weld Size");
        std::vector<std::string> found;
        if (at < 0) return found;
        EXPECT_EQ(lines[static_cast<std::size_t>(at)].marks, marks(HEADING_STYLE));
        for (auto i = static_cast<std::size_t>(at); i + 2 < lines.size(); ++i) {
            if (!lines[i].text.ends_with("]:") && i > static_cast<std::size_t>(at)) {
                EXPECT_EQ(lines[i].marks, "") << lines[i].text;
            }
            found.push_back(lines[i].text);
        }
        return found;
    }
    using Text = std::vector<std::string>;
    static constexpr const char *TITLE = "Required Fillet Weld Leg size for Slip on Flanges:",
                                *XMIN = "Minimum Attachment Weld Size for Slip on Flanges, UW-21, "
                                        "[xmin]:",
                                *YMIN = "Minimum Attachment Weld Size for Slip on Flanges, UW-21, "
                                        "[ymin]:",
                                *OPTIONAL = "For Slip on Flanges designed as Optional per 2-4 "
                                            "sketches (8-10a):",
                                *OPTIONAL_LEG = "= min( ( max( min( tn, tx ),( 6 mm or 1/4 inch ) "
                                                ")/0.7 ), g0 )",
                                *INTEGRAL = "For Slip on Flanges designed as Integral per 2-4 "
                                            "sketch (7):",
                                *INTEGRAL_LEG = "= max( 0.25( g0 - ci ), ( 6 mm or 1/4 inch ) )",
                                *NO_HUB = "= max( tn, ( 6 mm or 1/4 inch ) )  no hub size given",
                                *WARNING = "Warning - Check the attached shell thickness and g0, "
                                           "they are different.";
    void no_hub() { flange.set({{16, 0.0f}, {17, 0.0f}, {18, 0.0f}}); }
};

TEST_F(Welds, OptionalSlipOn) {
    // tn 0.375: 0.375/0.7 is above go.
    EXPECT_EQ(welds(), (Text{TITLE, OPTIONAL, OPTIONAL_LEG, " = 0.4375 in."}));
    flange.at(71) = 0.425f; // tn 0.3
    EXPECT_EQ(welds(), (Text{TITLE, OPTIONAL, OPTIONAL_LEG, " = 0.4286 in."}));
    flange.at(71) = 0.2f; // tn 0.075: the least leg
    EXPECT_EQ(welds(), (Text{TITLE, OPTIONAL, OPTIONAL_LEG, " = 0.3571 in."}));
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS(); // 6 mm
    EXPECT_EQ(welds(), (Text{TITLE, OPTIONAL, OPTIONAL_LEG, " = 0.3375 in."}));
    flange.at(71) = 0.1255f; // tn at most 0.001: the title alone
    EXPECT_EQ(welds(), (Text{TITLE}));
}

TEST_F(Welds, HubTwiceAsThickIsTheLimit) {
    flange.set({{16, 0.13f}, {17, 0.26f}}); // 2 go below tn; go itself is the least
    EXPECT_EQ(welds(), (Text{TITLE, OPTIONAL, OPTIONAL_LEG, " = 0.1300 in."}));
}

TEST_F(Welds, IntegralRingHasBoth) {
    flange.set({{2, 3.0f}, {16, 0.5f}, {71, 0.51f}}); // tn 0.385, within 0.01 of go
    EXPECT_EQ(welds(), (Text{TITLE, OPTIONAL, OPTIONAL_LEG, " = 0.5000 in.", INTEGRAL, INTEGRAL_LEG,
                             " = 0.2500 in."}));
    flange.at(71) = 0.5105f;
    EXPECT_EQ(welds().back(), WARNING);
    flange.set({{16, 2.0f}, {17, 2.5f}, {9, 0.25f}, {71, 0.125f}}); // tn 0
    EXPECT_EQ(welds(), (Text{TITLE, INTEGRAL, INTEGRAL_LEG, " = 0.4375 in.", WARNING}));
}

TEST_F(Welds, WithoutAHubTheIntegralLegStaysTheShell) {
    no_hub();
    for (const Real type : {2.0f, 3.0f}) {
        flange.set({{2, type}, {71, 0.2f}}); // tn 0.075 stays below the least leg
        EXPECT_EQ(welds(), (Text{TITLE, NO_HUB, " = 0.0750 in."}));
    }
    for (const Real type : {4.0f, 5.0f}) {
        flange.set({{2, type}, {71, 0.2f}});
        EXPECT_EQ(welds(), (Text{TITLE, NO_HUB, " = 0.2500 in."}));
        flange.at(71) = 0.5f;
        EXPECT_EQ(welds(), (Text{TITLE, NO_HUB, " = 0.3750 in."}));
    }
}

TEST_F(Welds, LooseFlangesWithAHubGoByItsRequiredThickness) {
    constexpr const char* LEG = "= max( min( tn, 2 * cyl reqd thk), (6 mm or 1/4 inch ) )";
    flange.set({{2, 4.0f}, {4, 260.0f}, {60, 17800.0f}});
    flange.pOperating = 260.0f;
    // Hub: P R / (S E - 0.6 P) = 260 * 13.125 / (17800 - 156) = 0.19341; twice that is above tn.
    EXPECT_EQ(welds(), (Text{TITLE, LEG, " = 0.3750 in."}));
    flange.at(74) = 0.0f; // tn 0.5
    EXPECT_EQ(welds(), (Text{TITLE, LEG, " = 0.3868 in."}));
    flange.set({{4, 100.0f}});
    EXPECT_EQ(welds(), (Text{TITLE, LEG, " = 0.2500 in."}));
}

TEST_F(Welds, StandardFlange) {
    flange.standardFlange = 1;
    constexpr const char *GO = "= min( 1.4 * tn, G0 )", *Y = "= min( tn, (6 mm or 1/4 inch ))",
                         *NONE = "= max( 1.4 * tn, (6 mm or 1/4 inch ) )  no hub size given";
    EXPECT_EQ(welds(), (Text{XMIN, GO, " = 0.4375 in.", YMIN, Y, " = 0.2500 in."}));
    flange.at(71) = 0.325f; // tn 0.2
    EXPECT_EQ(welds(), (Text{XMIN, GO, " = 0.2800 in.", YMIN, Y, " = 0.2000 in."}));
    no_hub();
    EXPECT_EQ(welds(), (Text{XMIN, NONE, " = 0.2800 in.", YMIN, Y, " = 0.2000 in."}));
    flange.at(71) = 0.225f;
    EXPECT_EQ(welds(), (Text{XMIN, NONE, " = 0.2500 in.", YMIN, Y, " = 0.1000 in."}));
    flange.standardFlange = 2; // any other value: as without
    EXPECT_EQ(welds(), (Text{TITLE, NO_HUB, " = 0.1000 in."}));
}

TEST_F(Welds, AllowanceOfTheShellComesAsTheHostGaveIt) {
    no_hub();
    flange.at(74) = NO_VALUE; // read before it is cleared
    EXPECT_EQ(welds(), (Text{TITLE, NO_HUB, " = 1.5101 in."}));
    EXPECT_EQ(flange.at(74), 0.0f);
    EXPECT_EQ(welds(), (Text{TITLE, NO_HUB, " = 0.5000 in."}));
}

TEST_F(Welds, OnlyWhereThereAreAny) {
    EXPECT_FALSE(welds().empty());
    for (const Real type : {1.0f, 6.0f, 7.0f}) {
        flange.at(2) = type;
        EXPECT_TRUE(welds().empty()) << type;
    }
    flange.at(2) = 2.0f;
    for (const Int code : {2, 3, 4}) {
        flange.code = code;
        EXPECT_TRUE(welds().empty()) << code;
    }
    flange.code = 1;
    flange.at(71) = 0.0f;
    EXPECT_TRUE(welds().empty());
    flange.at(71) = 0.5f;
    flange.at(4) = 0.0f;
    EXPECT_TRUE(welds().empty());
    flange.set({{4, 135.0f}, {1, 0.0f}});
    EXPECT_TRUE(welds().empty());
}

// ---- closing note ----------------------------------------------------------------------------------------

TEST_F(DriverReport, ClosingNoteEndsAnOpenReport) {
    const Lines lines = run_to_file();
    ASSERT_GT(lines.size(), 2u);
    EXPECT_EQ(lines.back().marks, marks(HEADING_STYLE));
    EXPECT_EQ(lines.back().text,
              std::string(NOTE) + std::string(60 - NOTE.size(), ' ') + "Version 7.0");
    EXPECT_EQ(lines[lines.size() - 2].text, "");
    EXPECT_EQ(count(lines, NOTE), 1);
    flange.writeCase = 0;
    EXPECT_TRUE(again().empty());
}

TEST_F(DriverReport, InputErrorHasNoClosingNote) {
    flange.at(6) = 0.0f;
    const Lines lines = run_to_file();
    EXPECT_TRUE(has(lines, "ERROR"));
    EXPECT_FALSE(has(lines, NOTE));
}

} // namespace
} // namespace tarvane::driver_test
