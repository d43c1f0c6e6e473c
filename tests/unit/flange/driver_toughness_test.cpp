// Attached shell and toughness, after the passes of the driver.
#include "flange/driver_report.h"

#include "../material_file.h"
#include "driver_report_fixture.h"

#include <filesystem>

namespace tarvane::driver_test {
namespace {

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

} // namespace
} // namespace tarvane::driver_test
