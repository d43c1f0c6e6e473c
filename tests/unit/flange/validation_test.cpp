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

TEST_F(Validation, NothingIsWrittenForSoundFlanges) {
    FLANGE_STATE s = sound();
    Int fatalCount = -7;
    EXPECT_TRUE(check(s, fatalCount).empty());
    EXPECT_EQ(fatalCount, 0);
    s = sound_blind();
    EXPECT_TRUE(check(s, fatalCount).empty());
    EXPECT_EQ(fatalCount, 0);
    EXPECT_TRUE(boxes.empty());
}

// One test from both sides of its boundary: the step of the list, the last input that passes, the
// first that fires, and the line that it prints.
struct Boundary {
    const char* step;
    bool fatal;
    std::string line;
    void (*passes)(S&);
    void (*fires)(S&);
};

const Boundary BOUNDARIES[] = {
    {"1 low", true, "ERROR - Flange Type,0., not recognized - must be 1 to 8.",
     [](S& s) { s.type = 1; }, [](S& s) { s.type = 0; }},
    {"1 high", true, "ERROR - Flange Type,10., not recognized - must be 1 to 8.",
     [](S& s) { s.type = 9; }, [](S& s) { s.type = 10; }},
    {"2 low", true, "ERROR - Analysis Type,0., not recognized - must be 0, 1 or 2.",
     [](S& s) { s.kind = 1; }, [](S& s) { s.kind = 0; }},
    {"2 high", true, "ERROR - Analysis Type,4., not recognized - must be 0, 1 or 2.",
     [](S& s) { s.kind = 3; }, [](S& s) { s.kind = 4; }},
    {"4", true, "ERROR - Inside Diameter,-0.0001, must be > 0.", [](S& s) { s.B = 0.0f; },
     [](S& s) { s.B = -0.0001f; }},
    {"9", true, "ERROR - Flange Stress,0., must be > 0, (Operating).",
     [](S& s) { s.Sfo = 1.0e-30f; }, [](S& s) { s.Sfo = 0.0f; }},
    {"10", true, "ERROR - Flange Stress,-17800., must be > 0, (Seating).",
     [](S& s) { s.Sfa = 1.0e-30f; }, [](S& s) { s.Sfa = -17800.0f; }},
    {"11", false, "ERROR - Bolt Stress,0., must be > 0 (Operating).", [](S& s) { s.Sb = 1.0e-30f; },
     [](S& s) { s.Sb = 0.0f; }},
    {"12", true, "ERROR - Bolt Stress,0., must be > 0, (Seating).", [](S& s) { s.Sa = 1.0e-30f; },
     [](S& s) { s.Sa = 0.0f; }},
    {"13, ring", true, "ERROR - Number of Splits,3., must be 0.0, 1.0, or 2.0.",
     [](S& s) { s.type = INTEGRAL_RING, s.nSplits = 2; },
     [](S& s) { s.type = INTEGRAL_RING, s.nSplits = 3; }},
    {"13, loose ring", true, "ERROR - Number of Splits,3., must be 0.0, 1.0, or 2.0.",
     [](S& s) { s.type = LAP_JOINT, s.nSplits = 3; },
     [](S& s) { s.type = LOOSE_RING, s.nSplits = 3; }},
    {"14", true, "ERROR - Young's Modulus,100000., must be > 0.0000 for channel covers.",
     [](S& s) {
         s = sound_blind();
         s.channelCover = "Y";
         s.Ecover = above(100000.0f);
     },
     [](S& s) {
         s = sound_blind();
         s.channelCover = "Yes";
         s.Ecover = 100000.0f;
     }},
    {"14, slot", true, "ERROR - Young's Modulus,0., must be > 0.0000 for channel covers.",
     [](S& s) {
         s = sound_blind();
         s.channelCover = "y";
     },
     [](S& s) {
         s = sound_blind();
         s.channelCover = "Y";
     }},
    {"15", true, "ERROR - Head reaction diameter is out of range ( Large End ).",
     [](S& s) {
         s = sound_blind();
         s.D = s.dS = 0.0f;
     },
     [](S& s) {
         s = sound_blind();
         s.D = -1.0f;
         s.dS = NOT_A_NUMBER; // silences the comparison with D
     }},
    {"16", true, "ERROR - Head reaction diameter is out of range ( Small End ).",
     [](S& s) {
         s = sound_blind();
         s.L = 90.0f;
     },
     [](S& s) {
         s = sound_blind();
         s.L = 90.0f;
         s.dS = -1.0f;
     }},
    {"17", true, "ERROR - Perimeter of Bolt circle must be defined.",
     [](S& s) {
         s = sound_blind();
         s.D = 20.0f, s.dS = 15.0f, s.L = above(0.001f);
     },
     [](S& s) {
         s = sound_blind();
         s.D = 20.0f, s.dS = 15.0f, s.L = 0.001f;
     }},
    {"17, spans", true, "ERROR - Perimeter of Bolt circle must be defined.",
     [](S& s) {
         s = sound_blind();
         s.D = s.dS = 15.0f;
     },
     [](S& s) {
         s = sound_blind();
         s.D = above(15.0f), s.dS = 15.0f;
     }},
    {"18", true, "ERROR - Large End Reaction diameter must be > small end diameter.",
     [](S& s) {
         s = sound_blind();
         s.D = s.dS = 15.0f, s.L = 90.0f;
     },
     [](S& s) {
         s = sound_blind();
         s.D = 15.0f, s.dS = above(15.0f), s.L = 90.0f;
     }},
    {"19", true, "ERROR - Bolt Circle 26.2500 must be > flange ID.",
     [](S& s) { s.C = above(s.B), s.nBolts = 2; }, [](S& s) { s.C = s.B, s.nBolts = 2; }},
    {"20, h", true, "Error - A zero length hub dimension was specified.",
     [](S& s) { s.type = INTEGRAL_SLIP_ON, s.h = 0.01f; },
     [](S& s) { s.type = INTEGRAL_SLIP_ON, s.h = below(0.01f); }},
    {"20, go", true, "Error - A zero length hub dimension was specified.",
     [](S& s) { s.ci = s.ce = 0.0f, s.go = 0.01f; },
     [](S& s) { s.ci = s.ce = 0.0f, s.go = below(0.01f); }},
    {"20, g1", true, "Error - A zero length hub dimension was specified.",
     [](S& s) { s.ci = s.ce = 0.0f, s.go = s.g1 = 0.01f; },
     [](S& s) { s.ci = s.ce = 0.0f, s.go = 0.01f, s.g1 = below(0.01f); }},
    {"20, sum", true, "Error - A zero length hub dimension was specified.",
     [](S& s) { s.go = s.g1 = 0.0f, s.h = 0.001f; },
     [](S& s) { s.go = s.g1 = 0.0f, s.h = above(0.001f); }},
    {"21", true, "ERROR - Number of Bolts, 1. must be > 2.", [](S& s) { s.nBolts = 2; },
     [](S& s) { s.nBolts = 1; }},
    {"22", true, "ERROR - Bolt Diameter, 3.3125 too large for flange dimensions.",
     [](S& s) { s.dh = 3.3125f, s.nBolts = 2; }, // (32.875 - 26.25) / 2, nearly
     [](S& s) { s.dh = above(3.3125f), s.nBolts = 2; }},
    {"23", false, "Warning - Flange Face ID, 26.2500 should be > Flange ID.",
     [](S& s) { s.Fid = s.B; }, [](S& s) { s.Fid = below(s.B); }},
    {"23, type", false, "Warning - Flange Face ID, 26.0000 should be > Flange ID.",
     [](S& s) { s.type = LAP_JOINT, s.Fid = 26.0f; },
     [](S& s) { s.type = LOOSE_SLIP_ON, s.Fid = 26.0f; }},
    {"24", true, "ERROR - Flange Face OD, 32.8750 must be < Flange OD.", [](S& s) { s.Fod = s.A; },
     [](S& s) { s.Fod = above(s.A); }},
    {"26", false, "Warning - Gasket ID, 26.2500 should be > Flange ID.", [](S& s) { s.Gi = s.B; },
     [](S& s) { s.Gi = below(s.B); }},
    {"26, type", false, "Warning - Gasket ID, 26.0000 should be > Flange ID.",
     [](S& s) { s.type = LOOSE_RING, s.Gi = 26.0f; },
     [](S& s) { s.type = REVERSE_WELD_NECK, s.Gi = 26.0f; }},
    {"27", true, "ERROR - Gasket OD, 32.8750 must be < Flange OD.", [](S& s) { s.Go = s.A; },
     [](S& s) { s.Go = above(s.A); }},
    {"29 low", true, "ERROR - Facing Sketch, 0. must be between 1 and 9.",
     [](S& s) { s.sketch = 1; }, [](S& s) { s.sketch = 0; }},
    {"29 high", true, "ERROR - Facing Sketch, 10. must be between 1 and 9.",
     [](S& s) { s.sketch = 9; }, [](S& s) { s.sketch = 10; }},
    {"30", true, "ERROR - Gasket Factor, -0.0100 must not be < 0.", [](S& s) { s.m = 0.0f; },
     [](S& s) { s.m = -0.01f; }},
    {"31", true, "ERROR - Gasket Stress, 2. must not be < 0.000.", // the factor, a tie
     [](S& s) { s.m = 2.5f, s.y = 0.0f; }, [](S& s) { s.m = 2.5f, s.y = -1.0f; }},
    {"32 low", true, "ERROR - Gasket Face Column,1. must be 1 or 2.", [](S& s) { s.column = 1.0f; },
     [](S& s) { s.column = below(1.0f); }},
    {"32 high", true, "ERROR - Gasket Face Column,2. must be 1 or 2.",
     [](S& s) { s.column = 2.0f; }, [](S& s) { s.column = above(2.0f); }},
    {"33", true, "ERROR - Mating flange load,-1000. must not be < 0 (Operating).",
     [](S& s) { s.matingLoads = "Y", s.Wmo = 0.0f; },
     [](S& s) { s.matingLoads = "Yes", s.Wmo = -1000.0f; }},
    {"33, slot", true, "ERROR - Mating flange load,-1000. must not be < 0 (Operating).",
     [](S& s) { s.matingLoads = "y", s.Wmo = -1000.0f; },
     [](S& s) { s.matingLoads = "Y", s.Wmo = -1000.0f; }},
    {"34", true, "ERROR - Mating flange load,-1000. must not be < 0 (Seating).",
     [](S& s) { s.matingLoads = "Y", s.Wms = 0.0f; },
     [](S& s) { s.matingLoads = "Yes", s.Wms = -1000.0f; }},
    {"35", true, "ERROR - Mating flange load,-1000. must not be < 0 (Design).",
     [](S& s) { s.matingLoads = "Y", s.Wmd = 0.0f; },
     [](S& s) { s.matingLoads = "Y", s.Wmd = -1000.0f; }},
    {"35, slot", true, "ERROR - Mating flange load,-1000. must not be < 0 (Design).",
     [](S& s) { s.matingLoads = "Yes", s.Wmd = -1000.0f; },
     [](S& s) { s.matingLoads = "Y", s.Wmd = -1000.0f; }},
    {"36", true, "ERROR - Corroded Gasket Width,0. must be > 0.",
     [](S& s) { s.Fid = below(29.875f); }, // + 2 * 0.0625 is the gasket's outside diameter
     [](S& s) { s.Fid = 29.875f; }},
    {"37", true, "Error - There seem to be too many bolts for this BCD.",
     [](S& s) { s.nBolts = 118; }, // 97.35 and 98.175 against 98.1747
     [](S& s) { s.nBolts = 119; }},
    {"38", false, "Note: The bolt circle diameter is greater than the Flange OD.",
     [](S& s) { s.C = s.A; }, [](S& s) { s.C = above(s.A); }},
    {"40", false, "Warning: Corrosion has not been considered for this flange analysis!",
     [](S& s) {
         s = sound_blind();
         s.useCorrosion = "n";
     },
     [](S& s) {
         s = sound_blind();
         s.useCorrosion = "No";
     }},
    {"40, type", false, "Warning: Corrosion has not been considered for this flange analysis!",
     [](S& s) { s.useCorrosion = "N"; },
     [](S& s) {
         s = sound_blind();
         s.useCorrosion = "N";
     }},
};

TEST_F(Validation, EachTestFiresOnItsSideOfTheBoundaryOnly) {
    for (const Boundary& b : BOUNDARIES) {
        SCOPED_TRACE(b.step);
        FLANGE_STATE s = sound();
        b.passes(s);
        EXPECT_EQ(joined(messages(s)), "");
        s = sound();
        b.fires(s);
        Int fatal = -7;
        EXPECT_EQ(joined(messages(s, &fatal)), b.line + "\n");
        EXPECT_EQ(fatal, b.fatal ? 1 : 0);
    }
}

// Tests whose failure makes another one fail.
struct Pair {
    const char* step;
    void (*passes)(S&);
    void (*fires)(S&);
    Lines lines;
};

const Pair PAIRS[] = {
    // A is the bore: the ring has no width for the bolts either.
    {"3",
     [](S& s) { s.A = above(s.B); },
     [](S& s) { s.A = s.B; },
     {"ERROR - Outside Diameter,26.2500, must be > Inside Diameter."}},
    {"5",
     [](S& s) { s.B = -2.0f, s.A = 0.0f; },
     [](S& s) { s.B = -2.0f, s.A = -0.5f; },
     {"ERROR - Outside Diameter,-0.5000, must be > 0."}},
    {"6",
     [](S& s) { s.go = 0.09375f; },
     [](S& s) { s.go = below(0.09375f); },
     {"ERROR - Corroded Hub Thickness, Small End, 0.0937, must be > 0."}},
    {"6, none",
     [](S& s) { s.go = 0.0f; },
     [](S& s) { s.go = -0.25f; },
     {"ERROR - Corroded Hub Thickness, Small End, -0.2500, must be > 0."}},
    {"7",
     [](S& s) { s.g1 = 0.09375f; },
     [](S& s) { s.g1 = below(0.09375f); },
     {"ERROR - Corroded Hub Thickness, Large End, 0.0937, must be > 0."}},
    {"8",
     [](S& s) { s.h = above(0.0001f); },
     [](S& s) { s.h = 0.0001f; },
     {"ERROR - Hub Length,.0001, must not be < 0."}},
    {"8, no hub",
     [](S& s) { s.h = s.go = s.g1 = 0.0f; },
     [](S& s) { s.h = s.go = 0.0f; },
     {"ERROR - Hub Length,.0000, must not be < 0."}},
    {"25",
     [](S& s) { s.Fid = below(s.Fod); },
     [](S& s) { s.Fid = s.Fod; },
     {"ERROR - Flange Face OD, 30.5000 must be > Flange Face ID."}},
    {"28",
     [](S& s) { s.Gi = below(s.Go); },
     [](S& s) { s.Gi = s.Go; },
     {"ERROR - Gasket OD, 30.0000 must be > Gasket ID."}},
};

TEST_F(Validation, TestsThatBringOthersWithThem) {
    for (const Pair& p : PAIRS) {
        SCOPED_TRACE(p.step);
        FLANGE_STATE s = sound();
        p.passes(s);
        Lines lines = messages(s);
        for (const std::string& line : p.lines) // whatever its value
            EXPECT_EQ(count_begun(lines, line.substr(0, line.find_first_of("-.0123456789", 7))), 0u)
                << joined(lines);
        s = sound();
        p.fires(s);
        lines = messages(s);
        for (const std::string& line : p.lines)
            EXPECT_EQ(count(lines, line), 1u) << joined(lines);
    }
}

TEST_F(Validation, BoltsThatJustFillTheCircle) {
    FLANGE_STATE s = sound();
    s.nBolts = 100;
    s.dh = 0.875f;
    s.C = 30.637352f;
    ASSERT_EQ(1.1f * s.dh * 100.0f, 3.14159012f * s.C);
    EXPECT_EQ(joined(messages(s)), "");
    s.dh = above(s.dh);
    EXPECT_EQ(joined(messages(s)), "Error - There seem to be too many bolts for this BCD.\n");
}

TEST_F(Validation, BoltDiameterIsTestedUpToABoltCircleOfTheOutsideDiameter) {
    FLANGE_STATE s = sound();
    s.nBolts = 2;
    s.dh = 3.5f;
    s.C = s.A;
    EXPECT_EQ(joined(messages(s)),
              "ERROR - Bolt Diameter, 3.5000 too large for flange dimensions.\n");
    s.C = above(s.A);
    EXPECT_EQ(joined(messages(s)),
              "Note: The bolt circle diameter is greater than the Flange OD.\n");
}

TEST_F(Validation, OneHubDimensionAlone) {
    const std::string incomplete = "Error - A zero length hub dimension was specified.\n";
    for (Real S::*hub : {&S::go, &S::g1}) {
        FLANGE_STATE s = sound();
        s.ci = s.ce = 0.0f;
        s.h = s.go = s.g1 = 0.0f;
        s.*hub = 0.3f;
        EXPECT_EQ(joined(messages(s)), "ERROR - Hub Length,.0000, must not be < 0.\n" + incomplete);
        s.*hub = 0.002f; // however small
        EXPECT_EQ(joined(messages(s)), "ERROR - Hub Length,.0000, must not be < 0.\n" + incomplete);
    }
    FLANGE_STATE s = sound();
    s.go = s.g1 = 0.0f;
    EXPECT_EQ(joined(messages(s)), incomplete);
}

TEST_F(Validation, SmallHubsHaveTheirRemarksToo) {
    FLANGE_STATE s = sound();
    s.ci = s.ce = 0.0f;
    s.go = 0.005f;
    s.g1 = 0.0075f;
    s.h = 0.006f;
    const Lines lines = messages(s);
    EXPECT_EQ(count_begun(lines, "Note: Flange Hub Taper 0.4167"), 1u) << joined(lines);
    EXPECT_EQ(count_begun(lines, "Note: Flange Hub Length"), 1u) << joined(lines);
    s.h = 0.0f; // no hub to have proportions
    EXPECT_EQ(count_begun(messages(s), "Note: Flange Hub"), 0u);
}

TEST_F(Validation, HubTaper) {
    const auto taper = [](Real h) {
        FLANGE_STATE s = sound();
        s.g1 = 1.3125f; // 1 more than go
        s.h = h;
        return messages(s);
    };
    EXPECT_TRUE(taper(2.9999f).empty());
    const Lines lines = taper(2.5f);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0],
              "Note: Flange Hub Taper 0.4000 is > 1:3. Check Fig. 2-4(6) of VIII-1 Appendix 2.");
    EXPECT_EQ(lines[1],
              "This warning should not be considered for Standard Flanges as permitted by");
    EXPECT_EQ(lines[2], "ASME VIII-1 in Table U-3 or for non-Code vessels.");
    EXPECT_EQ(taper(below(2.9999f)).size(), 3u);

    FLANGE_STATE s = sound();
    s.g1 = 1.3125f;
    s.h = 2.5f;
    s.code = ASME_VIII_2;
    EXPECT_EQ(joined(messages(s)),
              "Note: Flange Hub Taper 0.4000 is > 1:3. Check Fig. 4.16.2 of VIII-2 Part 4.\n"
              "This warning should not be considered for Standard Flanges as permitted by\n"
              "ASME VIII-2 in Table 1-1 or for non-Code vessels.\n");
    s.code = PD_5500;
    EXPECT_TRUE(messages(s).empty());
    s.code = ASME_VIII_1;
    s.standardFlange = 1;
    EXPECT_TRUE(messages(s).empty());
    s.standardFlange = 0;
    s.type = INTEGRAL_SLIP_ON;
    EXPECT_TRUE(messages(s).empty());
    s.type = INTEGRAL_WELD_NECK;
    s.g1 = s.go; // no taper at all
    EXPECT_TRUE(messages(s).empty());
}

TEST_F(Validation, HubLength) {
    FLANGE_STATE s = sound();
    s.ci = s.ce = 0.0f;
    s.go = s.tShell = 1.0f;
    s.g1 = 1.25f;
    s.h = 1.5f;
    EXPECT_TRUE(messages(s).empty());
    s.h = below(1.5f);
    EXPECT_EQ(joined(messages(s)),
              "Note: Flange Hub Length is < 1.5 * go. Check Fig. 2-4(6) of VIII-1 Appendix 2.\n"
              "This warning should not be considered for Standard Flanges as permitted by\n"
              "ASME VIII-1 in Table U-3 or for non-Code vessels.\n");
    s.code = ASME_VIII_2;
    EXPECT_EQ(joined(messages(s)),
              "Note: Flange Hub Length is < 1.5 * go. Check Fig. 4.16.2 of VIII-2 Part 4\n"
              "This warning should not be considered for Standard Flanges as permitted by\n"
              "ASME VIII-2 in Table 1-1 or for non-Code vessels.\n");
    for (const Int code : {PD_5500, EN_13445}) {
        s.code = code;
        EXPECT_TRUE(messages(s).empty());
    }
    s.code = ASME_VIII_1;
    s.ci = 0.125f; // the corroded hub is what counts
    EXPECT_TRUE(messages(s).empty());
    s.ci = 0.0f;
    s.standardFlange = 2;
    EXPECT_TRUE(messages(s).empty());
    s.standardFlange = 0;
    s.type = INTEGRAL_SLIP_ON;
    EXPECT_TRUE(messages(s).empty());
}

TEST_F(Validation, SmallEndAgainstTheShell) {
    FLANGE_STATE s = sound();
    s.tShell = s.go - 0.00001f;
    s.go = s.tShell + 0.00001f;
    EXPECT_TRUE(messages(s).empty());
    s.go = above(s.go);
    const Lines warning = {"Warning: Flange small end hub thickness > attached shell thickness.",
                           "Review the Code definition of g0 and change the small end hub",
                           "thickness in the flange input to be the attached shell thickness."};
    EXPECT_EQ(messages(s), warning);
    s.code = ASME_VIII_2;
    EXPECT_EQ(messages(s), warning);
    s.code = PD_5500;
    EXPECT_TRUE(messages(s).empty());
    s.code = ASME_VIII_1;
    for (Int type = 1; type <= 9; ++type) {
        s.type = type;
        const bool counts = type < 4 || type > 7;
        EXPECT_EQ(count(messages(s), warning[0]), counts ? 1u : 0u) << type;
    }
    s.type = INTEGRAL_WELD_NECK;
    s.tShell = 0.0001f;
    EXPECT_TRUE(messages(s).empty());
    s.tShell = above(0.0001f);
    EXPECT_EQ(messages(s), warning);
}

TEST_F(Validation, DesignLeavesWhatItChoosesUntested) {
    FLANGE_STATE s = sound();
    s.kind = DESIGN;
    s.A = -1.0f;   // steps 3, 5, 24, 27
    s.g1 = 0.05f;  // 7
    s.C = -2.0f;   // 19
    s.nBolts = 0;  // 21
    s.dh = 100.0f; // 22, 37
    EXPECT_EQ(joined(messages(s)), "");
    s.Gi = s.Go; // 28 is tested all the same
    EXPECT_EQ(count(messages(s), "ERROR - Gasket OD, 30.0000 must be > Gasket ID."), 1u);
    // And so is the bolt circle against the outside diameter.
    s = sound();
    s.kind = DESIGN;
    s.A = 0.0f;
    EXPECT_EQ(joined(messages(s)),
              "Note: The bolt circle diameter is greater than the Flange OD.\n");
}

TEST_F(Validation, TheSameInputsFailInAnalysis) {
    FLANGE_STATE s = sound();
    s.A = -1.0f;
    s.g1 = 0.05f;
    s.C = -2.0f;
    s.nBolts = 0;
    s.dh = 100.0f;
    Int fatalCount = 0;
    const Lines lines = check(s, fatalCount);
    for (const char* line : {"ERROR - Outside Diameter,-1.0000, must be > Inside Diameter.",
                             "ERROR - Outside Diameter,-1.0000, must be > 0.",
                             "ERROR - Corroded Hub Thickness, Large End, 0.0500, must be > 0.",
                             "ERROR - Bolt Circle -2.0000 must be > flange ID.",
                             "ERROR - Number of Bolts, 0. must be > 2.",
                             "ERROR - Bolt Diameter, 100.0000 too large for flange dimensions.",
                             "ERROR - Flange Face OD, 30.5000 must be < Flange OD.",
                             "ERROR - Gasket OD, 30.0000 must be < Flange OD.",
                             "Error - There seem to be too many bolts for this BCD."})
        EXPECT_EQ(count(lines, line), 1u) << line << "\n" << joined(lines);
}

TEST_F(Validation, BlindFlangeLosesHubAndBoreFirst) {
    FLANGE_STATE s = sound();
    s.type = BLIND;
    s.go = -1.0f;
    s.h = 0.005f;
    s.B = 40.0f;
    EXPECT_EQ(joined(messages(s)), "");
    Int fatalCount = -7;
    check(s, fatalCount);
    EXPECT_EQ(s.go, 0.0f);
    EXPECT_EQ(s.g1, 0.0f);
    EXPECT_EQ(s.h, 0.0f);
    EXPECT_EQ(s.B, 0.0f);
}

TEST_F(Validation, ShortHubFailsTwice) {
    FLANGE_STATE s = sound();
    s.type = INTEGRAL_SLIP_ON;
    s.h = 0.00005f;
    EXPECT_EQ(joined(messages(s)), "ERROR - Hub Length,.0000, must not be < 0.\n"
                                   "Error - A zero length hub dimension was specified.\n");
    s.h = 0.005f; // above 0.0001: the first of the two is silent
    EXPECT_EQ(joined(messages(s)), "Error - A zero length hub dimension was specified.\n");
    s.h = 2.0f;
    s.g1 = 0.0f;
    EXPECT_EQ(joined(messages(s)), "Error - A zero length hub dimension was specified.\n");
}

TEST_F(Validation, MatingLoadsAreClearedUnlessAskedFor) {
    for (const char* slot : {"N", "y", "", " Y"}) {
        FLANGE_STATE s = sound();
        s.matingLoads = slot;
        s.Wmo = -1.0f;
        s.Wms = 2.0f;
        s.Wmd = 3.0f;
        Int fatalCount = -7;
        EXPECT_TRUE(check(s, fatalCount).empty());
        EXPECT_EQ(s.Wmo, 0.0f);
        EXPECT_EQ(s.Wms, 0.0f);
        EXPECT_EQ(s.Wmd, 0.0f);
    }
    FLANGE_STATE s = sound();
    s.matingLoads = "Y";
    s.Wmo = 1.0f;
    Int fatalCount = -7;
    check(s, fatalCount);
    EXPECT_EQ(s.Wmo, 1.0f);
}

TEST_F(Validation, NotANumberFiresNothing) {
    for (Real S::*item : {&S::A, &S::C, &S::dh, &S::Fid, &S::Fod, &S::Gi, &S::Go, &S::m, &S::y,
                          &S::column, &S::Sfo, &S::Sfa, &S::Sb, &S::Sa, &S::B, &S::tShell}) {
        FLANGE_STATE s = sound();
        s.*item = NOT_A_NUMBER;
        EXPECT_EQ(joined(messages(s)), "");
    }
    FLANGE_STATE s = sound();
    s.go = s.g1 = s.h = NOT_A_NUMBER;
    EXPECT_EQ(joined(messages(s)), "");
}

TEST_F(Validation, AllFailuresTogetherFitTheList) {
    FLANGE_STATE s = sound();
    s.type = 10;
    s.kind = 0;
    s.B = -1.0f;
    s.A = -2.0f;
    s.C = -3.0f;
    s.go = s.g1 = -0.5f;
    s.h = 0.0f;
    s.Sfo = s.Sfa = s.Sb = s.Sa = 0.0f;
    s.nBolts = 1;
    s.dh = 9.0f;
    s.Fid = -4.0f, s.Fod = -5.0f;
    s.Gi = -6.0f, s.Go = -7.0f;
    s.sketch = 0;
    s.m = s.y = -1.0f;
    s.column = 0.0f;
    s.matingLoads = "Y";
    s.Wmo = s.Wms = s.Wmd = -1.0f;
    Int fatalCount = 0;
    const Lines lines = check(s, fatalCount);
    EXPECT_EQ(lines.back(), "Number of fatal errors: 23. Analysis of this Flange will be ended.");
    EXPECT_EQ(fatalCount, 1);
}

} // namespace
} // namespace tarvane
