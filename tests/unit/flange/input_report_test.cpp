#include "flange/input_report.h"

#include "flange/geometry.h"
#include "frame/element_tables.h"
#include "input_report_fixture.h"

#include <cstring>
#include <limits>

namespace tarvane {
namespace {

using stage_test::joined;
using stage_test::Lines;
using namespace input_report_test;

const Lines WELD_NECK_CODE_1 = {
    "",
    "Flange Input Data Values                         Description: Nozzle N1",
    "Item: Node 10 to 20",
    "Description of Flange Geometry (Type)     Integral Weld Neck",
    "Design Pressure                            P          135.00  psig",
    "Design Temperature                                       650  \xB0"
    "F",
    "Internal Corrosion Allowance              ci          0.0625  in.",
    "External Corrosion Allowance              ce          0.0312  in.",
    "Use Corrosion Allowance in Thickness Calcs.              Yes",
    "Flange Inside Diameter                     B          26.250  in.",
    "Flange Outside Diameter                    A          32.875  in.",
    "Flange Thickness                           t          1.4375  in.",
    "Thickness of Hub at Small End             go          0.3125  in.",
    "Thickness of Hub at Large End             g1          0.6875  in.",
    "Length of Hub                              h          2.1250  in.",
    "Flange Material                              SA-105",
    "Flange Allowable Stress At Temperature   Sfo        17800.00  psi",
    "Flange Allowable Stress At Ambient       Sfa        20000.00  psi",
    "Bolt Material                                SA-193 B7",
    "Bolt Allowable Stress At Temperature      Sb        25000.00  psi",
    "Bolt Allowable Stress At Ambient          Sa        25000.50  psi",
    "Diameter of Bolt Circle                    C          31.250  in.",
    "Nominal Bolt Diameter                      a          0.7500  in.",
    "Type of Threads                           TEMA Thread Series",
    "Number of Bolts                                           44",
    "Flange Face Outside Diameter             Fod          30.500  in.",
    "Flange Face Inside Diameter              Fid          28.500  in.",
    "Flange Facing Sketch                      2, Code Sketch 1b",
    "Gasket Outside Diameter                   Go          30.000  in.",
    "Gasket Inside Diameter                    Gi          29.000  in.",
    "Gasket Factor                              m          3.7500",
    "Gasket Design Seating Stress               y         7600.00  psi",
    "Column for Gasket Seating                  2, Code Column II",
    "</Image=Images\\Flanges\\WeldNeckFlange.bmp/>",
};

const Lines WELD_NECK_CODE_4 = {
    "",
    "Flange Input Data Values                         Description: Nozzle N1",
    "Item: Node 10 to 20",
    "Description of Flange Geometry (Type)     Integral Weld Neck",
    "Design Pressure                            P          135.00  psig",
    "Design Temperature                                       650  \xB0"
    "F",
    "Internal Corrosion Allowance              ci          0.0625  in.",
    "External Corrosion Allowance              ce          0.0312  in.",
    "Use Corrosion Allowance in Thickness Calcs.              Yes",
    "Flange Inside Diameter                     B          26.250  in.",
    "Flange Outside Diameter                    A          32.875  in.",
    "Flange Thickness                           e          1.4375  in.",
    "Thickness of Hub at Small End             go          0.3125  in.",
    "Thickness of Hub at Large End             g1          0.6875  in.",
    "Length of Hub                              h          2.1250  in.",
    "Flange Material                              SA-105",
    "Flange Allowable Stress At Temperature     f        17800.00  psi",
    "Flange Allowable Stress At Ambient        fa        20000.00  psi",
    "Bolt Material                                SA-193 B7",
    "Bolt Allowable Stress At Temperature      fb        25000.00  psi",
    "Bolt Allowable Stress At Ambient        fb,a        25000.50  psi",
    "Diameter of Bolt Circle                    C          31.250  in.",
    "Nominal Bolt Diameter                     db          0.7500  in.",
    "Diameter of Bolt Hole                     dh          0.8750  in.",
    "Type of Threads                           TEMA Thread Series",
    "Number of Bolts                                           44",
    "Flange Face Outside Diameter             Fod          30.500  in.",
    "Flange Face Inside Diameter              Fid          28.500  in.",
    "Flange Facing Sketch                      2, Code Sketch 1b",
    "Gasket Outside Diameter                   Go          30.000  in.",
    "Gasket Inside Diameter                    Gi          29.000  in.",
    "Gasket Factor                              m          3.7500",
    "Gasket Design Seating Stress               y         7600.00  psi",
    "Column for Gasket Seating                  2, Code Column II",
    "</Image=Images\\Flanges\\WeldNeckFlange.bmp/>",
};

TEST_F(InputReport, WeldNeckFlangeLineByLine) {
    ELEMENT_TABLES[2].from_node = "10";
    ELEMENT_TABLES[2].to_node = "20";
    FLANGE_STATE s = weld_neck();
    EXPECT_EQ(joined(echo(s)), joined(WELD_NECK_CODE_1));
    s.code = ASME_VIII_2;
    EXPECT_EQ(joined(echo(s)), joined(WELD_NECK_CODE_1));
    s.code = EN_13445;
    EXPECT_EQ(joined(echo(s)), joined(WELD_NECK_CODE_4));

    // PD 5500 differs from ASME in the bolt diameter's symbol and the hole only.
    Lines pd = WELD_NECK_CODE_1;
    const auto bolt = std::find(
        pd.begin(), pd.end(), "Nominal Bolt Diameter                      a          0.7500  in.");
    ASSERT_NE(bolt, pd.end());
    *bolt = "Nominal Bolt Diameter                     db          0.7500  in.";
    pd.insert(std::next(bolt), "Diameter of Bolt Hole                     dh          0.8750  in.");
    s.code = PD_5500;
    EXPECT_EQ(joined(echo(s)), joined(pd));
}

TEST_F(InputReport, DesignEchoesNothingThatItChooses) {
    FLANGE_STATE s = weld_neck();
    s.kind = DESIGN;
    const Lines lines = echo_of(s);
    for (const char* label : {"Flange Outside Diameter", "Flange Thickness", "Thickness of Hub",
                              "Length of Hub", "Diameter of Bolt Circle", "Nominal Bolt Diameter",
                              "Number of Bolts", "Flange Face Out", "Flange Face Ins"})
        EXPECT_EQ(line_with(lines, label), "") << label;
    for (const char* label : {"Flange Inside Diameter", "Type of Threads",
                              "Gasket Outside Diameter", "Flange Facing Sketch"})
        EXPECT_NE(line_with(lines, label), "") << label;
    s.code = EN_13445;
    EXPECT_EQ(line_with(echo_of(s), "Diameter of Bolt Hole"), "");
}

TEST_F(InputReport, ThicknessOfOtherKindsNeedsTheColon) {
    FLANGE_STATE s = weld_neck();
    s.kind = THICKNESS;
    EXPECT_EQ(line_with(echo_of(s), "Flange Thickness"), "");
    s.description = "12345678901234:";
    EXPECT_EQ(line_with(echo_of(s), "Flange Thickness"),
              "Flange Thickness                           t          1.4375  in.");
    s.kind = DESIGN;
    EXPECT_NE(line_with(echo_of(s), "Flange Thickness"), "");
    s.description = "1234567890123:";
    EXPECT_EQ(line_with(echo_of(s), "Flange Thickness"), "");
}

TEST_F(InputReport, IntegralRing) {
    FLANGE_STATE s = weld_neck();
    s.type = INTEGRAL_RING;
    Lines lines = echo_of(s);
    EXPECT_EQ(line_with(lines, "Flange Inside Diameter"), "");
    EXPECT_EQ(line_with(lines, "Attached Shell Inside"),
              "Attached Shell Inside Diameter             B         26.2500  in.");
    for (const Real t : {0.0f, 0.001f}) {
        s.tShell = t;
        EXPECT_EQ(line_with(echo_of(s), "Integral Ring Inside"), "");
    }
    s.tShell = std::nextafter(0.001f, 1.0f);
    EXPECT_NE(line_with(echo_of(s), "Integral Ring Inside"), "");
    s.tShell = 0.375f;
    lines = echo_of(s);
    EXPECT_EQ(line_with(lines, "Attached Shell Inside"),
              "Attached Shell Inside Diameter             B         26.2500  in.");
    EXPECT_EQ(line_with(lines, "Integral Ring Inside"),
              "Integral Ring Inside Diameter                        27.0000  in.");
}

TEST_F(InputReport, HubLinesGoByTheHubLength) {
    FLANGE_STATE s = weld_neck();
    s.h = 0.0f;
    EXPECT_EQ(line_with(echo_of(s), "Thickness of Hub"), "");
    s.h = -0.0f;
    EXPECT_EQ(line_with(echo_of(s), "Thickness of Hub"), "");
    s.h = std::numeric_limits<Real>::quiet_NaN();
    EXPECT_EQ(line_with(echo_of(s), "Length of Hub"),
              "Length of Hub                              h             NaN  in.");
}

struct TypeName {
    Int type;
    const char* name;
    const char* image;
};

TEST_F(InputReport, TypeNamesAndImages) {
    const TypeName names[] = {
        {1, "Integral Weld Neck", R"(</Image=Images\Flanges\WeldNeckFlange.bmp/>)"},
        {2, "Integral Slip On", R"(</Image=Images\Flanges\SlipOnFlangeWithHub.bmp/>)"},
        {3, "Integral Ring", R"(</Image=Images\Flanges\IntegralRingFlange.bmp/>)"},
        {4, "Loose Slip On", R"(</Image=Images\Flanges\LooseSlipOnFlangeWithHub.bmp/>)"},
        {5, "Loose Ring", R"(</Image=Images\Flanges\LooseRingFlange.bmp/>)"},
        {6, "Lap Joint", R"(</Image=Images\Flanges\LapJointFlange.bmp/>)"},
        {7, "Blind", R"(</Image=Images\Flanges\BlindFlange.bmp/>)"},
        {8, "Reverse Weld Neck", R"(</Image=Images\Flanges\IntegralReverse.bmp/>)"},
        {9, "Loose Reverse", R"(</Image=Images\Flanges\LooseReverse.bmp/>)"},
    };
    for (const TypeName& n : names) {
        FLANGE_STATE s = weld_neck();
        s.type = n.type;
        const Lines lines = echo_of(s);
        EXPECT_EQ(line_with(lines, "Description of Flange Geometry"),
                  std::string("Description of Flange Geometry (Type)     ") + n.name);
        EXPECT_EQ(lines.back(), n.image);
    }
    FLANGE_STATE s = weld_neck();
    for (const Int type : {0, 10, -1}) {
        s.type = type;
        EXPECT_TRUE(has(echo_of(s), "Description of Flange Geometry (Type)     UNKNOWN"));
    }
}

TEST_F(InputReport, LooseReverseShowsItsNameAlsoAsTypeEight) {
    FLANGE_STATE s = weld_neck();
    s.type = REVERSE_WELD_NECK;
    s.looseReverse = true;
    const Lines lines = echo_of(s);
    EXPECT_TRUE(has(lines, "Description of Flange Geometry (Type)     Loose Reverse"));
    EXPECT_EQ(lines.back(), R"(</Image=Images\Flanges\LooseReverse.bmp/>)");
}

TEST_F(InputReport, ChannelCoverIsNamedForBlindFlangesOnly) {
    FLANGE_STATE s = weld_neck();
    channel_cover(s);
    Lines lines = echo_of(s);
    EXPECT_TRUE(has(lines, "Description of Flange Geometry (Type)     Integral Weld Neck"));
    EXPECT_NE(line_with(lines, "Youngs Modulus"), "");
    blind(s);
    lines = echo_of(s);
    EXPECT_TRUE(has(lines, "Description of Flange Geometry (Type)     TEMA Channel Cover"));
    EXPECT_EQ(lines.back(), R"(</Image=Images\Flanges\BlindFlange.bmp/>)");
}

TEST_F(InputReport, ThreadSketchAndColumnNames) {
    const char* const threads[] = {"UNKNOWN",
                                   "TEMA Thread Series",
                                   "UNC Thread Series",
                                   "Special, Root Area",
                                   "TEMA Metric",
                                   "British 3643",
                                   "SABS 1700 1996",
                                   "3P M30 Metric",
                                   "User Defined Table",
                                   "UNKNOWN"};
    const char* const sketches[] = {"UNKNOWN",
                                    "1, Code Sketch 1a",
                                    "2, Code Sketch 1b",
                                    "3, Code Sketch 1c",
                                    "4, Code Sketch 1d",
                                    "5, Code Sketch 2",
                                    "6, Code Sketch 3",
                                    "7, Code Sketch 4",
                                    "8, Code Sketch 5",
                                    "9, Code Sketch 6",
                                    "UNKNOWN"};
    FLANGE_STATE s = weld_neck();
    for (Int i = 0; i < 10; ++i) {
        s.series = i;
        EXPECT_TRUE(has(echo_of(s),
                        std::string("Type of Threads                           ") + threads[i]));
    }
    for (Int i = 0; i < 11; ++i) {
        s.sketch = i;
        EXPECT_TRUE(has(echo_of(s),
                        std::string("Flange Facing Sketch                      ") + sketches[i]));
    }
    const std::pair<Real, const char*> columns[] = {
        {0.99f, "UNKNOWN"},          {1.0f, "1, Code Column I"}, {1.99f, "1, Code Column I"},
        {2.5f, "2, Code Column II"}, {3.0f, "UNKNOWN"},          {std::nanf(""), "UNKNOWN"}};
    for (const auto& [column, text] : columns) {
        s.column = column;
        EXPECT_TRUE(
            has(echo_of(s), std::string("Column for Gasket Seating                  ") + text));
    }
}

TEST_F(InputReport, UseOfCorrosionAcceptsBothCases) {
    FLANGE_STATE s = weld_neck();
    for (const char* slot : {"Y", "y", "Yes"}) {
        s.useCorrosion = slot;
        EXPECT_TRUE(
            has(echo_of(s), "Use Corrosion Allowance in Thickness Calcs.              Yes"));
    }
    for (const char* slot : {"N", "", " Y"}) {
        s.useCorrosion = slot;
        EXPECT_TRUE(has(echo_of(s), "Use Corrosion Allowance in Thickness Calcs.              No"));
    }
}

TEST_F(InputReport, LongMaterialNamesStandBesideTheShortOnes) {
    FLANGE_STATE s = weld_neck();
    SET_MATERIAL_ITEM_NAME(1, 3, "SA-105  Forgings 17"); // from 17 characters on
    SET_MATERIAL_ITEM_NAME(2, 4, "SA-193 B7 <= 2.5");    // 16
    Lines lines = echo_of(s);
    EXPECT_EQ(line_with(lines, "Flange Material"),
              "Flange Material                              SA-105  SA-105  Forgings 17");
    EXPECT_EQ(line_with(lines, "Bolt Material"),
              "Bolt Material                                SA-193 B7");
    SET_MATERIAL_ITEM_NAME(1, 3, "");
    SET_MATERIAL_ITEM_NAME(2, 4, "SA-193 B7 <= 2.5\"");
    lines = echo_of(s);
    EXPECT_EQ(line_with(lines, "Flange Material"),
              "Flange Material                              SA-105");
    EXPECT_EQ(line_with(lines, "Bolt Material"),
              "Bolt Material                                SA-193 B7  SA-193 B7 <= 2.5\"");
    // The longest names end in the last column of a line.
    s.flangeMaterial = "123456789012345";
    SET_MATERIAL_ITEM_NAME(1, 3, "1234567890123456789012345678901234567890");
    EXPECT_EQ(line_with(echo_of(s), "Flange Material"),
              "Flange Material                              123456789012345  "
              "12345678901234567890123456789012345678");
}

TEST_F(InputReport, NodeLineNeedsAVesselElementWithANode) {
    ELEMENT_TABLES[2].from_node = "  10";
    ELEMENT_TABLES[2].to_node.put(1, std::string_view("20\0\0\0", 5));
    FLANGE_STATE s = weld_neck();
    EXPECT_EQ(echo_of(s)[2], "Item: Node 10 to 20");
    s.element1 = 0;
    EXPECT_EQ(line_with(echo_of(s), "Item:"), "");
    s.element1 = -1;
    EXPECT_EQ(line_with(echo_of(s), "Item:"), "");
    s.element1 = 1;
    for (const Int row : {0, 501, 4}) {
        s.element = row;
        EXPECT_EQ(line_with(echo_of(s), "Item:"), "") << row;
    }
}

TEST_F(InputReport, ValuesAndLabelsInOtherUnits) {
    UNITS.thickness = UNITS.diameter = 25.4f;
    UNITS.thickness_label = UNITS.diameter_label = "mm";
    UNITS.pressure = UNITS.stress = 0.0068947f;
    UNITS.pressure_label = "MPa";
    UNITS.stress_label = "N/mm2 1234"; // ten characters; nine after the seating stress
    UNITS.force = 4.4482f;
    UNITS.force_label = "N";
    UNITS.moment = 1.3558f;
    UNITS.moment_label = "N-m";
    UNITS.temperature_offset = 32.0f;
    UNITS.temperature_scale = 1.8f;
    UNITS.temperature_label = "\xB0"
                              "C";
    FLANGE_STATE s = weld_neck();
    external(s);
    s.Tdesign = 650.3f; // 343.5 degrees Celsius
    s.code = PD_5500;
    const Lines lines = echo_of(s);
    for (const char* line :
         {"Design Pressure                            P            0.93  MPa",
          "Design Temperature                                       344  \xB0"
          "C",
          "Internal Corrosion Allowance              ci          1.5875  mm",
          "Flange Inside Diameter                     B         666.750  mm",
          "Flange Thickness                           t         36.5125  mm",
          "Flange Allowable Stress At Temperature   Sfo          122.73  N/mm2 1234",
          "Nominal Bolt Diameter                     db         19.0500  mm",
          "Diameter of Bolt Hole                     dh         22.0500  mm",
          "Gasket Design Seating Stress               y           52.40  N/mm2 123",
          "Axial Force on Flange                                4449.31  N",
          "Bending Moment on Flange                             3390.18  N-m"})
        EXPECT_TRUE(has(lines, line)) << line << "\n" << joined(lines);
    // Above a diameter factor of 2 the hole is 3 mm over the bolt, else 1/8 in.
    UNITS.diameter = 2.0f;
    EXPECT_EQ(line_with(echo_of(s), "Diameter of Bolt Hole"),
              "Diameter of Bolt Hole                     dh          1.7500  mm");
    UNITS.diameter = std::nextafter(2.0f, 3.0f);
    EXPECT_EQ(line_with(echo_of(s), "Diameter of Bolt Hole"),
              "Diameter of Bolt Hole                     dh          1.7362  mm");
    UNITS.diameter = 2.5f;
    EXPECT_EQ(line_with(echo_of(s), "Diameter of Bolt Hole"),
              "Diameter of Bolt Hole                     dh          2.1703  mm");
}

TEST_F(InputReport, TemperatureIsAWholeNumberHalvesAwayFromZero) {
    FLANGE_STATE s = weld_neck();
    const std::pair<Real, const char*> cases[] = {
        {650.5f, "Design Temperature                                       651  \xB0"
                 "F"},
        {650.49f, "Design Temperature                                       650  \xB0"
                  "F"},
        {-20.5f, "Design Temperature                                       -21  \xB0"
                 "F"},
        {-0.4f, "Design Temperature                                         0  \xB0"
                "F"}};
    for (const auto& [T, line] : cases) {
        s.Tdesign = T;
        EXPECT_TRUE(has(echo_of(s), line)) << line;
    }
}

TEST_F(InputReport, ValueTooWideForItsFieldGivesAsterisks) {
    FLANGE_STATE s = weld_neck();
    s.t = 1.0e12f;
    EXPECT_TRUE(
        has(echo_of(s), "Flange Thickness                           t ***************  in."));
}

TEST_F(InputReport, ClassAndGradeOfAStandardFlange) {
    FLANGE_STATE s = weld_neck();
    HOST_RECORD.flange_class = "150";
    HOST_RECORD.flange_grade = "1.1";
    EXPECT_EQ(line_with(echo_of(s), "Flange Class"), "");
    s.standardFlange = 1;
    Lines lines = echo_of(s);
    ASSERT_GE(lines.size(), 3u);
    // After the last line of the table, names from column 49 on.
    EXPECT_EQ(lines[lines.size() - 3], "Flange Class                                    150");
    EXPECT_EQ(lines[lines.size() - 2], "Flange Grade                                    1.1");
    HOST_RECORD.flange_class = "None";
    EXPECT_EQ(line_with(echo_of(s), "Flange"), "Flange Input Data Values                         "
                                               "Description: Nozzle N1");
    EXPECT_EQ(line_with(echo_of(s), "Flange Class"), "");
    EXPECT_EQ(line_with(echo_of(s), "Flange Grade"), "");
    HOST_RECORD.flange_class = ""; // blank is not "None"
    lines = echo_of(s);
    EXPECT_EQ(line_with(lines, "Flange Class"), "Flange Class");
    EXPECT_EQ(line_with(lines, "Flange Grade"),
              "Flange Grade                                    1.1");
}

TEST_F(InputReport, AllowancesAreSettledForTheCalculation) {
    for (Int type = 1; type <= 9; ++type) {
        FLANGE_STATE s = weld_neck();
        s.type = type;
        s.ct = -7.0f;
        SETTLE_ALLOWANCES(s);
        const bool no_ci = type >= 4 && type <= 6;
        EXPECT_EQ(s.ci, no_ci ? 0.0f : 0.0625f) << type;
        EXPECT_EQ(s.ct, type == LAP_JOINT ? 0.0f : 0.0625f + 2.0f * 0.03125f) << type;
        s = weld_neck();
        s.type = type;
        s.useCorrosion = "N";
        s.ct = -7.0f;
        SETTLE_ALLOWANCES(s);
        EXPECT_EQ(s.ct, 0.0f) << type;
    }
}

TEST_F(InputReport, TheEchoLeavesTheStateAsItIs) {
    for (const Int gate : {0, 1}) {
        IWRTFL = gate;
        for (Int type = 1; type <= 9; ++type) {
            FLANGE_STATE s = weld_neck();
            s.type = type;
            s.ct = -7.0f;
            const FLANGE_STATE before = s;
            EXPECT_EQ(echo(s).empty(), gate == 0);
            EXPECT_EQ(std::memcmp(&s, &before, sizeof s), 0) << type;
        }
    }
}

const Lines RIGIDITY_WARNING = {
    "Warning:", "The rigidity index calculation has been turned off and",
    "is required for ASME Code Stamped vessels (if Code Case 2547",
    "is not being cited). Please insure the check box is properly checked."};

TEST_F(InputReport, WarnsWhenTheRigidityIndexIsTurnedOff) {
    const auto warned = [](const FLANGE_STATE& state) { return has(echo_of(state), "Warning:"); };
    FLANGE_STATE s = weld_neck();
    s.rigidity = 0;
    FLANGE_INPUT_REPORT(s);
    for (Int i = 0; i < 4; ++i) {
        const Int k = LINE_COUNT - 3 + i;
        EXPECT_EQ(stored(k), RIGIDITY_WARNING[static_cast<std::size_t>(i)]);
        EXPECT_EQ(stored_marks(k), " 0 0 1 0 0 0");
    }
    take_lines();

    EXPECT_TRUE(warned(s));
    s.code = ASME_VIII_2;
    EXPECT_TRUE(warned(s));
    s.code = PD_5500;
    EXPECT_FALSE(warned(s));
    s.code = ASME_VIII_1;
    s.rigidity = 1;
    EXPECT_FALSE(warned(s));
    s.rigidity = 2;
    EXPECT_TRUE(warned(s));
    s.type = BLIND;
    EXPECT_FALSE(warned(s));
    s.type = LOOSE_RING;
    EXPECT_TRUE(warned(s));
    s.Go = s.C;
    EXPECT_FALSE(warned(s));
    s.Go = std::nextafter(s.C, 0.0f);
    EXPECT_TRUE(warned(s));
    CODE_A98_ADDENDA = 1;
    EXPECT_FALSE(warned(s));
}

TEST_F(InputReport, ExternalPressureOpensTheResults) {
    FLANGE_STATE s = weld_neck();
    s.P = -15.0f;
    FLANGE_INPUT_REPORT(s);
    EXPECT_EQ(stored(LINE_COUNT - 2), "");
    EXPECT_EQ(stored(LINE_COUNT - 1), "Bolted Flange Calculation Results:");
    EXPECT_EQ(stored_marks(LINE_COUNT - 1), " 0 0 0 0 0 2");
    EXPECT_EQ(stored(LINE_COUNT), "");
    take_lines();
    s.P = -0.001f;
    EXPECT_FALSE(has(echo_of(s), "Bolted Flange Calculation Results:"));
    s.P = -0.0011f;
    EXPECT_TRUE(has(echo_of(s), "Bolted Flange Calculation Results:"));
}

TEST_F(InputReport, LinesOfTheTableHaveNoMarks) {
    FLANGE_STATE s = weld_neck();
    s.standardFlange = 1;
    ELEMENT_TABLES[2].from_node = "10";
    FLANGE_INPUT_REPORT(s);
    for (Int k = 1; k <= LINE_COUNT; ++k)
        EXPECT_EQ(stored_marks(k), " 0 0 0 0 0 0") << stored(k);
}

TEST_F(InputReport, LabelsByNumberAndCode) {
    EXPECT_EQ(FLANGE_LABEL(1, 1070),
              "('Flange Thickness                           t ', F15.4, 2X, A3 )");
    EXPECT_EQ(FLANGE_LABEL(3, 1070), FLANGE_LABEL(1, 1070));
    EXPECT_EQ(FLANGE_LABEL(4, 1070),
              "('Flange Thickness                           e ', F15.4, 2X, A3 )");
    EXPECT_EQ(FLANGE_LABEL(3, 1270), FLANGE_LABEL(4, 1270));
    EXPECT_NE(FLANGE_LABEL(2, 1270), FLANGE_LABEL(4, 1270));
    for (const Int number : {0, 999, 1001, 1020, 1568, 100000})
        EXPECT_TRUE(FLANGE_LABEL(1, number).empty()) << number;
    Int labels = 0;
    for (Int number = 1000; number <= 1567; ++number) {
        const std::string_view format = FLANGE_LABEL(1, number);
        if (format.empty()) continue;
        ++labels;
        EXPECT_LE(format.size(), 98u);
        EXPECT_EQ(format.front(), '(');
        EXPECT_EQ(format.back(), ')');
    }
    EXPECT_EQ(labels, 61);
}

} // namespace
} // namespace tarvane
