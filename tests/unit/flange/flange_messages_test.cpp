// Messages of the input tests: values, texts, marks, boxes, and what ends the analysis.
#include "validation_fixture.h"

namespace tarvane {
namespace {

using stage_test::joined;
using validation_test::boxes;
using validation_test::Lines;
using validation_test::sound;
using validation_test::sound_blind;
using validation_test::Validation;
using S = FLANGE_STATE;

class Messages : public Validation {};

TEST_F(Messages, GasketWidthIsTheOverlapInReportUnits) {
    FLANGE_STATE s = sound();
    s.ci = 0.5f;
    s.go = s.g1 = s.h = 0.0f;
    s.Fid = 29.5f; // corroded 30.5, half an inch beyond the gasket: shown without decimals
    EXPECT_EQ(joined(messages(s)), "ERROR - Corroded Gasket Width,0. must be > 0.\n");
    UNITS.diameter = 25.4f;
    EXPECT_EQ(joined(messages(s)), "ERROR - Corroded Gasket Width,13. must be > 0.\n");
}

// Each value of a message by the factor of its kind.
TEST_F(Messages, EveryValueHasItsOwnFactor) {
    UNITS.diameter = 10.0f;
    UNITS.thickness = 100.0f;
    UNITS.stress = 2.0f;
    UNITS.force = 3.0f;
    UNITS.pressure = UNITS.moment = UNITS.area = UNITS.weight = 7.0f;
    const struct {
        void (*change)(S&);
        const char* line;
    } values[] = {
        {[](S& s) { s.A = 25.0f; },
         "ERROR - Outside Diameter,250.0000, must be > Inside Diameter."},
        {[](S& s) { s.B = -1.5f; }, "ERROR - Inside Diameter,-15.0000, must be > 0."},
        {[](S& s) { s.A = -1.5f; }, "ERROR - Outside Diameter,-15.0000, must be > 0."},
        {[](S& s) { s.go = 0.05f; },
         "ERROR - Corroded Hub Thickness, Small End, 5.0000, must be > 0."},
        {[](S& s) { s.g1 = 0.05f; },
         "ERROR - Corroded Hub Thickness, Large End, 5.0000, must be > 0."},
        {[](S& s) { s.h = -0.25f; }, "ERROR - Hub Length,-25.0000, must not be < 0."},
        {[](S& s) { s.Sfo = -5.0f; }, "ERROR - Flange Stress,-10., must be > 0, (Operating)."},
        {[](S& s) { s.Sfa = -5.0f; }, "ERROR - Flange Stress,-10., must be > 0, (Seating)."},
        {[](S& s) { s.Sb = -5.0f; }, "ERROR - Bolt Stress,-10., must be > 0 (Operating)."},
        {[](S& s) { s.Sa = -5.0f; }, "ERROR - Bolt Stress,-10., must be > 0, (Seating)."},
        {[](S& s) { s.C = 26.0f; }, "ERROR - Bolt Circle 260.0000 must be > flange ID."},
        {[](S& s) { s.dh = 3.5f; },
         "ERROR - Bolt Diameter, 35.0000 too large for flange dimensions."},
        {[](S& s) { s.Fid = 26.0f; }, "Warning - Flange Face ID, 260.0000 should be > Flange ID."},
        {[](S& s) { s.Fod = 33.0f; }, "ERROR - Flange Face OD, 330.0000 must be < Flange OD."},
        {[](S& s) { s.Fod = 28.0f; }, "ERROR - Flange Face OD, 280.0000 must be > Flange Face ID."},
        {[](S& s) { s.Gi = 26.0f; }, "Warning - Gasket ID, 260.0000 should be > Flange ID."},
        {[](S& s) { s.Go = 33.0f; }, "ERROR - Gasket OD, 330.0000 must be < Flange OD."},
        {[](S& s) { s.Go = 28.0f; }, "ERROR - Gasket OD, 280.0000 must be > Gasket ID."},
        {[](S& s) { s.m = -0.5f; }, "ERROR - Gasket Factor, -0.5000 must not be < 0."},
        {[](S& s) { s.y = -5.0f; }, "ERROR - Gasket Stress, 4. must not be < 0.000."},
        {[](S& s) { s.column = 3.0f; }, "ERROR - Gasket Face Column,3. must be 1 or 2."},
        {[](S& s) { s.matingLoads = "Y", s.Wmo = -5.0f; },
         "ERROR - Mating flange load,-15. must not be < 0 (Operating)."},
        {[](S& s) { s.matingLoads = "Y", s.Wms = -5.0f; },
         "ERROR - Mating flange load,-15. must not be < 0 (Seating)."},
        {[](S& s) { s.matingLoads = "Y", s.Wmd = -5.0f; },
         "ERROR - Mating flange load,-15. must not be < 0 (Design)."},
        {[](S& s) { s.Fid = 30.5f, s.Gi = 30.0f; },
         "ERROR - Corroded Gasket Width,6. must be > 0."},
        {[](S& s) { s = sound_blind(), s.channelCover = "Y", s.Ecover = 10.0f; },
         "ERROR - Young's Modulus,20., must be > 0.0000 for channel covers."},
        {[](S& s) { s.nBolts = 1; }, "ERROR - Number of Bolts, 1. must be > 2."},
        {[](S& s) { s.g1 = 1.3125f; },
         "Note: Flange Hub Taper 0.4706 is > 1:3. Check Fig. 2-4(6) of VIII-1 Appendix 2."},
    };
    for (const auto& value : values) {
        FLANGE_STATE s = sound();
        value.change(s);
        const Lines lines = messages(s);
        EXPECT_EQ(count(lines, value.line), 1u) << value.line << "\n" << joined(lines);
    }
}

TEST_F(Messages, Presentation) {
    FLANGE_STATE s = sound();
    s.Sfo = 0.0f;
    s.Sb = 0.0f;
    s.g1 = 1.3125f;
    s.tShell = 0.25f;
    Int fatalCount = -7;
    CHECK_FLANGE_INPUT(s, fatalCount);
    const std::pair<const char*, const char*> expected[] = {
        {"", " 0 0 0 0 0 0"},
        {"", " 0 0 0 0 0 0"},
        {"Warnings for Flange : Nozzle N1", " 0 0 0 0 0 1"},
        {"", " 0 0 0 0 0 0"},
        {"ERROR - Flange Stress,0., must be > 0, (Operating).", " 0 0 0 0 0 1"},
        {"ERROR - Bolt Stress,0., must be > 0 (Operating).", " 0 0 0 0 0 1"},
        {"Note: Flange Hub Taper 0.4706 is > 1:3. Check Fig. 2-4(6) of VIII-1 Appendix 2.",
         " 0 0 0 1 0 0"},
        {"This warning should not be considered for Standard Flanges as permitted by",
         " 0 0 0 0 0 0"},
        {"ASME VIII-1 in Table U-3 or for non-Code vessels.", " 0 0 0 0 0 0"},
        {"Warning: Flange small end hub thickness > attached shell thickness.", " 0 0 1 0 0 0"},
        {"Review the Code definition of g0 and change the small end hub", " 0 0 1 0 0 0"},
        {"thickness in the flange input to be the attached shell thickness.", " 0 0 1 0 0 0"},
        {"Number of fatal errors: 1. Analysis of this Flange will be ended.", " 0 0 0 0 0 1"}};
    ASSERT_EQ(LINE_COUNT, static_cast<Int>(std::size(expected)));
    for (Int k = 1; k <= LINE_COUNT; ++k) {
        EXPECT_EQ(stored(k), expected[k - 1].first);
        EXPECT_EQ(stored_marks(k), expected[k - 1].second) << stored(k);
    }
    EXPECT_EQ(fatalCount, 1);
}

TEST_F(Messages, FatalErrorsAreCountedInTheReportOnly) {
    FLANGE_STATE s = sound();
    s.Sfo = s.Sfa = 0.0f;
    Int fatalCount = -7;
    const Lines lines = check(s, fatalCount);
    EXPECT_EQ(lines.back(), "Number of fatal errors: 2. Analysis of this Flange will be ended.");
    EXPECT_EQ(fatalCount, 1);
}

TEST_F(Messages, StandAloneFormStopsAtTheFirstFatalMessage) {
    FLANGE_STATE s = sound();
    s.element1 = -1;
    s.Sb = 0.0f; // not fatal: the loop goes on
    s.Sa = 0.0f; // fatal
    s.m = -1.0f; // not reached
    Int fatalCount = -7;
    const Lines lines = check(s, fatalCount);
    EXPECT_EQ(lines.back(), "ERROR - Bolt Stress,0., must be > 0, (Seating).");
    EXPECT_EQ(lines.size(), 6u);
    EXPECT_EQ(fatalCount, 1);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(Messages, BoxesOfAVesselElement) {
    FLANGE_STATE s = sound();
    s.element1 = 5;
    s.B = 0.75f;
    s.C = 0.5f; // fatal, and without the zero before the point in the box
    s.nBolts = 2;
    s.dh = 0.25f;
    s.g1 = 1.3125f; // a remark
    s.tShell = 0.25f;
    Int fatalCount = -7;
    const Lines lines = check(s, fatalCount);
    EXPECT_EQ(count(lines, "ERROR - Bolt Circle 0.5000 must be > flange ID."), 1u);
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0].text, "ERROR - Bolt Circle .5000 must be > flange ID.   ");
    EXPECT_EQ(boxes[0].title, "Flange Error Message");
    EXPECT_EQ(boxes[1].text,
              "Number of fatal errors: 1. Analysis of this Flange will be ended.   ");

    // Silenced, the report stays the same.
    boxes.clear();
    SET_NO_DIALOG(true);
    EXPECT_EQ(joined(check(s, fatalCount)), joined(lines));
    EXPECT_TRUE(boxes.empty());
    SET_NO_DIALOG(false);

    // A flange without vessel has no boxes, and the same report.
    s.element1 = 0;
    EXPECT_EQ(joined(check(s, fatalCount)), joined(lines));
    EXPECT_TRUE(boxes.empty());

    // The boxes do not depend on the report.
    s.element1 = 5;
    IOUT = 0;
    EXPECT_TRUE(check(s, fatalCount).empty());
    EXPECT_EQ(boxes.size(), 2u);
    EXPECT_EQ(fatalCount, 1);
}

struct MessageText {
    Int number;
    bool fatal;
    const char* line; // with the value 2.5
};

TEST_F(Messages, MessagesByNumber) {
    const MessageText texts[] = {
        {1, true, "ERROR - Flange Type,2., not recognized - must be 1 to 8."},
        {2, true, "ERROR - Analysis Type,2., not recognized - must be 0, 1 or 2."},
        {3, true, "ERROR - Outside Diameter,2.5000, must be > Inside Diameter."},
        {4, true, "ERROR - Inside Diameter,2.5000, must be > 0."},
        {5, false, "ERROR - Outside Diameter,2.5000, must be > 0."},
        {6, true, "ERROR - Corroded Hub Thickness, Small End, 2.5000, must be > 0."},
        {7, true, "ERROR - Corroded Hub Thickness, Large End, 2.5000, must be > 0."},
        {8, true, "ERROR - Hub Length,2.5000, must not be < 0."},
        {9, true, "ERROR - Flange Stress,2., must be > 0, (Operating)."},
        {10, true, "ERROR - Flange Stress,2., must be > 0, (Seating)."},
        {11, false, "ERROR - Bolt Stress,2., must be > 0 (Operating)."},
        {12, true, "ERROR - Bolt Stress,2., must be > 0, (Seating)."},
        {13, true, "ERROR - Number of Splits,2., must be 0.0, 1.0, or 2.0."},
        {14, true, "ERROR - Young's Modulus,2., must be > 0.0000 for channel covers."},
        {15, true, "ERROR - Head reaction diameter is out of range ( Large End )."},
        {16, true, "ERROR - Head reaction diameter is out of range ( Small End )."},
        {17, true, "ERROR - Bolt Circle 2.5000 must be > flange ID."},
        {18, true, "Error - A zero length hub dimension was specified."},
        {19, true, "ERROR - Number of Bolts, 2. must be > 2."},
        {20, true, "ERROR - Bolt Diameter, 2.5000 too large for flange dimensions."},
        {21, false, "Warning - Flange Face ID, 2.5000 should be > Flange ID."},
        {22, true, "ERROR - Flange Face OD, 2.5000 must be < Flange OD."},
        {23, true, "ERROR - Flange Face OD, 2.5000 must be > Flange Face ID."},
        {24, false, "Warning - Gasket ID, 2.5000 should be > Flange ID."},
        {25, true, "ERROR - Gasket OD, 2.5000 must be < Flange OD."},
        {26, true, "ERROR - Gasket OD, 2.5000 must be > Gasket ID."},
        {27, true, "ERROR - Facing Sketch, 2. must be between 1 and 9."},
        {28, true, "ERROR - Gasket Factor, 2.5000 must not be < 0."},
        {29, true, "ERROR - Gasket Stress, 2. must not be < 0.000."},
        {30, true, "ERROR - Gasket Face Column,2. must be 1 or 2."},
        {31, true, "ERROR - Mating flange load,2. must not be < 0 (Operating)."},
        {32, true, "ERROR - Mating flange load,2. must not be < 0 (Seating)."},
        {33, true, "ERROR - Mating flange load,2. must not be < 0 (Design)."},
        {34, true, "ERROR - Corroded Gasket Width,2. must be > 0."},
        {35, true, "ERROR - Perimeter of Bolt circle must be defined."},
        {36, true, "ERROR - Large End Reaction diameter must be > small end diameter."},
        {39, true, "Error - There seem to be too many bolts for this BCD."},
        {40, true, "Number of fatal errors: 2. Analysis of this Flange will be ended."},
        {41, false, "Note: The bolt circle diameter is greater than the Flange OD."},
        {42, false,
         "Note: Flange Hub Taper 0.4000 is > 1:3. Check Fig. 2-4(6) of VIII-1 Appendix 2."},
        {43, false, "Warning: Corrosion has not been considered for this flange analysis!"},
        {44, false,
         "Note: Flange Hub Length is < 1.5 * go. Check Fig. 2-4(6) of VIII-1 Appendix 2."},
        {45, false, "Warning: Flange small end hub thickness > attached shell thickness."},
        {37, true, "UNIDENTIFIED ERROR, 2. is the value that triggered the error."},
        {38, true, "UNIDENTIFIED ERROR, 2. is the value that triggered the error."},
        {0, true, "UNIDENTIFIED ERROR, 2. is the value that triggered the error."},
        {46, true, "UNIDENTIFIED ERROR, 2. is the value that triggered the error."},
        {-1, true, "UNIDENTIFIED ERROR, 2. is the value that triggered the error."},
    };
    for (const MessageText& text : texts) {
        Int fatal = -7;
        FLANGE_MESSAGE(text.number, 2.5f, fatal, 1, ASME_VIII_1);
        EXPECT_EQ(take_lines().at(0), text.line) << text.number;
        EXPECT_EQ(fatal, text.fatal ? 1 : 0) << text.number;
        const bool remark = text.number >= 41 && text.number <= 45;
        EXPECT_EQ(boxes.size(), remark ? 0u : 1u) << text.number;
        boxes.clear();
    }
}

} // namespace
} // namespace tarvane
