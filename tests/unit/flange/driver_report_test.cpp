// What the driver does after its passes: bolt area failure, rigidity, attached shell, toughness,
// attachment welds, closing note.
#include "flange/driver_report.h"

#include "../material_file.h"
#include "bolting/bolt_spacing.h"
#include "driver_fixture.h"

#include <filesystem>

namespace tarvane::driver_test {
namespace {

constexpr std::string_view NOTE = "TARVANE is a trademark of Kessendale Lab.";

class DriverReport : public DriverTest {
  protected:
    Lines run_to_file() {
        report_to_file();
        IWRITE = 1;
        flange.run();
        return file_lines();
    }
    // One more call, on the unit that is open.
    Lines again() {
        flange.run();
        return file_lines();
    }
};

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

// ---- attached shell and toughness ----------------------------------------------------------------------

class Toughness : public DriverReport {
  protected:
    Toughness() {
        flange.at(71) = 0.375f;
        report_to_file();
    }
    // Whether the hook came to its end.
    bool judged() {
        FLANGE_STRESS_RATIO = 0.0f;
        FLANGE_SHELL_RATIO = 0.0f;
        flange.run();
        lines = file_lines();
        missing = has(lines, "Could not determine the MDMT for this flange, because an");
        return FLANGE_STRESS_RATIO != 0.0f;
    }
    Lines lines;
    bool missing = false;
};

TEST_F(Toughness, StressRatioIsThatOfTheAmbientPass) {
    ASSERT_TRUE(judged());
    const Real ratio = FLANGE_STRESS_RATIO;
    // The same pass by hand: ambient allowables, 70 F, the vessel's pressure, corroded.
    flange.set({{4, 135.0f}, {5, 70.0f}, {6, 20000.0f}});
    READ_FLANGE_RECORD(FLANGE, FLANGE_RECORD(flange.elements.data()), flange.text.data(),
                       TEXT_SLOT);
    FLANGE.Sb = FLANGE.Sa;
    ANALYZE_FLANGE(FLANGE);
    EXPECT_EQ(ratio, -(135.0f / FLANGE.MAWPop));
    flange.pOperating = 1.0e6f; // never beyond 1
    judged();
    EXPECT_EQ(FLANGE_STRESS_RATIO, -1.0f);
}

TEST_F(Toughness, OnlyUnderItsConditions) {
    EXPECT_TRUE(judged());
    flange.code = 2;
    EXPECT_TRUE(judged());
    for (const Int code : {3, 4}) {
        flange.code = code;
        EXPECT_FALSE(judged());
    }
    flange.code = 1;
    flange.standardFlange = 1;
    EXPECT_FALSE(judged());
    flange.standardFlange = 0;
    flange.at(4) = 0.0f;
    EXPECT_FALSE(judged());
    flange.at(4) = -15.0f;
    EXPECT_FALSE(judged());
    flange.at(4) = 135.0f;
    flange.pOperating = 0.0f; // no ambient pressure
    EXPECT_FALSE(judged());
    flange.pOperating = 135.0f;
    IOUT = -1;
    FLANGE_STRESS_RATIO = 0.0f;
    flange.run();
    EXPECT_EQ(FLANGE_STRESS_RATIO, 0.0f);
}

TEST_F(Toughness, RingsOnAThinShell) {
    for (const Real type : {3.0f, 5.0f}) {
        flange.at(2) = type;
        if (type == 5.0f) flange.set({{16, 0.0f}, {17, 0.0f}, {18, 0.0f}});
        for (const Real kind : {1.0f, 4.0f}) {
            flange.set({{70, kind}, {71, 1.4375f}}); // as thick as the flange
            EXPECT_FALSE(judged());
            flange.at(71) = std::nextafter(1.4375f, 2.0f);
            EXPECT_TRUE(judged());
            EXPECT_FALSE(missing);
        }
        for (const Real kind : {0.0f, 5.0f}) {
            flange.set({{70, kind}, {71, 0.001f}});
            EXPECT_FALSE(judged());
            EXPECT_TRUE(missing);
            flange.at(71) = std::nextafter(0.001f, 1.0f);
            EXPECT_TRUE(judged());
            EXPECT_FALSE(missing);
        }
    }
}

TEST_F(Toughness, SlipOnFlangesGoByTheirHub) {
    for (const Real type : {2.0f, 4.0f}) {
        flange.set({{2, type}, {70, 0.0f}, {71, 0.0005f}});
        EXPECT_FALSE(judged());
        EXPECT_TRUE(missing);
        flange.at(70) = 2.0f; // attached: no end for these types
        EXPECT_TRUE(judged());
        EXPECT_FALSE(missing);
    }
}

TEST_F(Toughness, WeldNeckFlangesGoByTheirHub) {
    for (const Real attachment : {0.0f, 1.0f}) {
        flange.set({{70, attachment}, {71, 0.0f}});
        EXPECT_TRUE(judged()); // the hub is there
        EXPECT_FALSE(missing);
    }
    flange.set({{16, 0.0f}, {17, 0.0f}, {18, 0.0f}, {70, 0.0f}, {71, 0.5f}});
    EXPECT_TRUE(judged());
    flange.at(71) = 0.0f;
    EXPECT_TRUE(judged()); // a missing cylinder is not reported for these types
    EXPECT_FALSE(missing);
    flange.set({{70, 1.0f}, {71, 1.4375f}});
    EXPECT_FALSE(judged());
    flange.at(71) = std::nextafter(1.4375f, 2.0f);
    EXPECT_TRUE(judged());
}

TEST_F(Toughness, CoversAndLapJointsGoByAQuarter) {
    flange.set({{2, 7.0f}, {71, 0.0f}, {70, 0.0f}});
    EXPECT_TRUE(judged());
    EXPECT_FALSE(missing);
    flange.set({{2, 6.0f}, {39, 28.0f}, {40, 30.0f}, {16, 0.0f}, {17, 0.0f}, {18, 0.0f}});
    EXPECT_TRUE(judged());
    EXPECT_FALSE(missing);
}

TEST_F(Toughness, MissingCylinderHasThreePlainLines) {
    flange.set({{2, 3.0f}, {71, 0.0f}, {70, 0.0f}});
    judged();
    const std::ptrdiff_t at = find(lines, "Could not determine the MDMT");
    ASSERT_GT(at, 0);
    const auto i = static_cast<std::size_t>(at);
    EXPECT_EQ(lines[i].text, "Could not determine the MDMT for this flange, because an");
    EXPECT_EQ(lines[i + 1].text, "adjoining cylinder was not attached. The MDMT calculation");
    EXPECT_EQ(lines[i + 2].text, "depends on the attached cylinder, please add one.");
    for (std::size_t k = 0; k < 3; ++k)
        EXPECT_EQ(lines[i + k].marks, "");
    EXPECT_EQ(lines[i + 4].text.substr(0, NOTE.size()), NOTE);
    moduleCode = 3;
    EXPECT_FALSE(judged());
    EXPECT_FALSE(missing);
    moduleCode = 0;
    judged();
    EXPECT_TRUE(missing);
}

TEST_F(Toughness, ShellRatioNeedsItsSwitchAndAShell) {
    ELEMENT_TABLES[0].joint_efficiency = 0.85f;
    judged();
    EXPECT_EQ(FLANGE_SHELL_RATIO, 0.0f);
    G_PER_ELEMENT_RATIO = 1;
    judged();
    // UG-27 at 0.85: S E t / (R + 0.6 t) with R = 13.125.
    const double shell = 20000.0 * 0.85 * 0.375 / (13.125 + 0.6 * 0.375);
    EXPECT_NEAR(FLANGE_SHELL_RATIO, -135.0 / shell, 1e-6);
    EXPECT_GT(FLANGE_SHELL_RATIO, FLANGE_STRESS_RATIO); // the smaller magnitude of the two

    ELEMENT_TABLES[0].joint_efficiency = 0.3f; // counts as 0.8
    judged();
    EXPECT_NEAR(FLANGE_SHELL_RATIO, -135.0 / (shell / 0.85 * 0.8), 1e-6);

    flange.at(74) = 0.0625f; // corroded
    judged();
    const double corroded = 20000.0 * 0.8 * 0.3125 / (13.1875 + 0.6 * 0.3125);
    EXPECT_NEAR(FLANGE_SHELL_RATIO, -135.0 / corroded, 1e-6);

    flange.at(61) = 0.001f; // a shell without strength: the flange decides
    judged();
    EXPECT_EQ(FLANGE_SHELL_RATIO, FLANGE_STRESS_RATIO);
    flange.set({{61, 20000.0f}, {71, -5.0f}}); // below 0.001
    EXPECT_TRUE(judged());
    EXPECT_EQ(FLANGE_SHELL_RATIO, 0.0f);
    flange.at(71) = 0.375f;
    flange.element = 0; // no row: no shell
    EXPECT_TRUE(judged());
    EXPECT_EQ(FLANGE_SHELL_RATIO, 0.0f);
    flange.element = 501; // beyond the rows: E of 0.8
    judged();
    EXPECT_NEAR(FLANGE_SHELL_RATIO, -135.0 / corroded, 1e-6);
    flange.element = 1;
    flange.at(2) = 7.0f;
    EXPECT_TRUE(judged());
    EXPECT_EQ(FLANGE_SHELL_RATIO, 0.0f);
}

TEST_F(Toughness, HeatTreatmentIsAskedOfAMaterialRow) {
    FLANGE_PWHT_REQUIRED = 7;
    flange.element = 0;
    EXPECT_TRUE(judged());
    EXPECT_EQ(FLANGE_PWHT_REQUIRED, 7); // no row, no lookup
    flange.element = 501;
    EXPECT_TRUE(judged());
    EXPECT_EQ(FLANGE_PWHT_REQUIRED, 7);
    flange.element = 500;
    ELEMENT_TABLES[499].material = "no such name";
    EXPECT_TRUE(judged());
    EXPECT_EQ(FLANGE_PWHT_REQUIRED, -1);
}

// A material of P-Number 3, group 1: heat treatment above 5/8 in., so that the answer shows on which
// side of it the governing thickness is.
class GoverningThickness : public Toughness {
  protected:
    GoverningThickness() : folder(testing::TempDir() + "tarvane_governing_thickness") {
        using namespace material_test;
        std::filesystem::create_directories(folder);
        std::ofstream(folder + "/MATFILE1.BIN", std::ios::binary)
            << material_file(1, 0, {Record("SA-387 11", 45).text(144, "3").put(152, Int{1})});
        MODULE_DIR = Text<256>(std::string_view(folder));
        MODULE_DIR_LENGTH = MODULE_DIR.trimmed_length();
        ELEMENT_TABLES[0].material = "SA-387 11";
        ELEMENT_TABLES[0].heat_treatment = "no. of  45.7    ";
    }
    ~GoverningThickness() override { std::filesystem::remove_all(folder); }
    Int required(std::initializer_list<std::pair<Int, Real>> values) {
        flange.set(values);
        FLANGE_PWHT_REQUIRED = 7;
        EXPECT_TRUE(judged());
        return FLANGE_PWHT_REQUIRED;
    }

  private:
    std::string folder;
};

TEST_F(GoverningThickness, ByType) {
    // Weld neck: the small end of the hub, whatever ring and shell are.
    EXPECT_EQ(required({{71, 2.0f}, {17, 1.5f}, {18, 2.5f}, {16, 0.624f}}), 0);
    EXPECT_EQ(required({{16, 0.626f}}), 1);
    EXPECT_EQ(required({{71, 0.1f}}), 1);
    // Without a hub the lesser of ring and shell.
    EXPECT_EQ(required({{16, 0.0f}, {17, 0.0f}, {18, 0.0f}, {71, 0.624f}}), 0);
    EXPECT_EQ(required({{71, 0.626f}}), 1);
    EXPECT_EQ(required({{71, 9.0f}}), 1);
    for (const Real type : {3.0f, 5.0f}) {
        EXPECT_EQ(required({{2, type}, {16, 0.0f}, {71, 0.624f}}), 0);
        EXPECT_EQ(required({{71, 0.626f}}), 1);
    }
    for (const Real type : {2.0f, 4.0f}) { // a hub in place of the ring
        EXPECT_EQ(required({{2, type}, {16, 0.0f}, {17, 0.0f}, {18, 0.0f}, {71, 0.624f}}), 0);
        EXPECT_EQ(required({{71, 0.626f}}), 1);
        EXPECT_EQ(required({{16, 0.624f}, {17, 0.9f}, {18, 2.0f}, {71, 2.0f}}), 0);
        EXPECT_EQ(required({{16, 0.626f}}), 1);
        EXPECT_EQ(required({{71, 0.624f}}), 0);
    }
    flange.set({{16, 0.0f}, {17, 0.0f}, {18, 0.0f}});
    for (const Real type : {6.0f, 7.0f}) { // a quarter of the flange
        EXPECT_EQ(required({{2, type}, {39, 28.0f}, {40, 30.0f}, {8, 2.49f}}), 0);
        EXPECT_EQ(required({{8, 2.51f}}), 1);
    }
}

TEST_F(GoverningThickness, MaterialAndFlagsOfTheRow) {
    flange.set({{17, 1.5f}, {18, 2.5f}});
    EXPECT_EQ(required({{16, 0.5f}}), 0);
    EXPECT_EQ(FLANGE_P_NUMBER_ONE, 0);
    EXPECT_EQ(FLANGE_GROUP_CODE, -1);
    ELEMENT_TABLES[0].first_flag = '1'; // required
    EXPECT_EQ(required({}), 1);
    ELEMENT_TABLES[0].first_flag = 'Y';
    EXPECT_EQ(required({}), 0);
    ELEMENT_TABLES[0].heat_treatment = "       46"; // another material of the name
    EXPECT_EQ(required({}), -1);
    ELEMENT_TABLES[0].heat_treatment = "   45";
    EXPECT_EQ(required({}), -1); // columns 8 to 15 only
    ELEMENT_TABLES[0].heat_treatment = "       45";
    EXPECT_EQ(required({}), 0);
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
