// Lines of the echo that are there under a condition only.
#include "input_report_fixture.h"

namespace tarvane {
namespace {

using stage_test::joined;
using namespace input_report_test;

// A line that is not in every echo: when it is there, and what removes it.
struct ConditionalLine {
    const char* line;
    void (*with)(FLANGE_STATE&);
    void (*without)(FLANGE_STATE&);
};

void ring(S& s) { s.type = INTEGRAL_RING; }
void loose_ring(S& s) { s.type = LOOSE_RING; }
void lap_joint(S& s) { s.type = LAP_JOINT; }
void weld_neck_type(S& s) { s.type = INTEGRAL_WELD_NECK; }
void design(S& s) { s.kind = DESIGN; }
void channel_cover_en(S& s) {
    channel_cover(s);
    s.code = EN_13445;
}
void no_channel_cover(S& s) { s.channelCover = "y"; }
void partition(S& s) {
    s.partitionGasket = "Y";
    s.lp = 28.0f;
    s.tp = 0.375f;
    s.mPart = 2.5f;
    s.yPart = 4500.0f;
}
void no_partition(S& s) {
    s.partitionGasket = "N";
    s.lp = 0.0f;
}
void mating(S& s) {
    s.matingLoads = "Yes";
    s.Wmo = 111329.5f;
    s.Wms = 143052.5f;
    s.Wmd = 237626.0f;
}
void no_mating(S& s) { s.matingLoads = "y"; }
void no_external(S& s) { s.externalLoads = "Yes"; }
void holes(S& s) {
    s.patternedHoles = 1;
    s.D1 = 4.0f;
    s.D2 = 3.0f;
    s.edge1 = 1.5f;
    s.edge2 = 2.5f;
    s.pitch = 7.25f;
}
void holes_declined(S& s) {
    holes(s);
    s.patternedHoles = 0;
}
void code_2(S& s) { s.code = ASME_VIII_2; }
void pd(S& s) { s.code = PD_5500; }

const ConditionalLine CONDITIONAL[] = {
    {"Attached Shell Inside Diameter             B         26.2500  in.", ring, weld_neck_type},
    {"Flange Inside Diameter                     B          26.250  in.", weld_neck_type, ring},
    {"Flange Outside Diameter                    A          32.875  in.", weld_neck_type, design},
    {"Flange Thickness                           t          1.4375  in.", weld_neck_type, design},
    {"Flange Thickness                           e          1.4375  in.",
     [](S& s) { s.code = EN_13445; }, design},
    {"Thickness of Hub at Small End             go          0.3125  in.", weld_neck_type, design},
    {"Thickness of Hub at Large End             g1          0.6875  in.", weld_neck_type,
     [](S& s) { s.h = 0.0f; }},
    {"Length of Hub                              h          2.1250  in.", weld_neck_type, design},
    {"Length of Weld Leg at Back of Ring        tw          0.2500  in.",
     [](S& s) { ring(s), s.tw = 0.25f; }, lap_joint},
    {"Length of Weld Leg at Back of Ring        tw          0.2500  in.",
     [](S& s) { loose_ring(s), s.tw = 0.25f; }, blind},
    {"Number of Splits in Ring Flange            n               2",
     [](S& s) { loose_ring(s), s.nSplits = 2; }, lap_joint},
    {"Number of Splits in Ring Flange            n               1",
     [](S& s) { ring(s), s.nSplits = 1; }, weld_neck_type},
    {"Lap Joint Contact ID                    LjID         28.2500  in.",
     [](S& s) { lap_joint(s), s.LjID = 28.25f; }, loose_ring},
    {"Lap Joint Contact OD                    LjOD         30.1250  in.",
     [](S& s) { lap_joint(s), s.LjOD = 30.125f; }, loose_ring},
    {"Diameter of the Load Reaction, Long  Span  D          27.500  in.", blind, lap_joint},
    {"Diameter of the Load Reaction, Short Span  d          20.250  in.", blind,
     [](S& s) { s.type = REVERSE_WELD_NECK; }},
    {"Perimeter along the Center of the Bolts    L          98.175  in.", blind, lap_joint},
    {"Youngs Modulus for Blind Flange Matl.     Sy     29000000.00  psi", channel_cover,
     no_channel_cover},
    {"Elastic Modulus for Blind Flange Matl.    fy     29000000.00  psi", channel_cover_en,
     no_channel_cover},
    {"Allowed Channel Cover Deflection     dfAllow          0.0300  in.", channel_cover,
     no_channel_cover},
    {"Diameter of Bolt Circle                    C          31.250  in.", weld_neck_type, design},
    {"Nominal Bolt Diameter                      a          0.7500  in.", code_2, design},
    {"Nominal Bolt Diameter                     db          0.7500  in.", pd, design},
    {"Diameter of Bolt Hole                     dh          0.8750  in.", pd, code_2},
    {"Diameter of Bolt Hole                     dh          0.8750  in.",
     [](S& s) { pd(s), s.dh = 3.0f; }, design},
    {"Root Area of a Single Bolt                            0.3020  in\xB2",
     [](S& s) { s.series = 3, s.rootGiven = 0.302f; }, [](S& s) { s.series = 8; }},
    {"Number of Bolts                                           44", weld_neck_type, design},
    {"Flange Face Outside Diameter             Fod          30.500  in.", weld_neck_type, design},
    {"Flange Face Inside Diameter              Fid          28.500  in.", weld_neck_type, design},
    {"Gasket Thickness                          tg          0.0625  in.",
     [](S& s) { s.tg = 0.0625f; }, [](S& s) { s.tg = 0.0f; }},
    {"Flange Face Nubbin Width                   w          0.1250  in.",
     [](S& s) { s.w = 0.125f; }, [](S& s) { s.w = 0.0f; }},
    {"Length of Partition Gasket                lp         28.0000  in.", partition, no_partition},
    {"Width  of Partition Gasket                tp          0.3750  in.", partition, no_partition},
    {"Partition Gasket Factor                mPart          2.5000", partition, no_partition},
    {"Partition Gasket Design Seating Stress yPart         4500.00  psi", partition, no_partition},
    {"Mating Flange Operating Bolt Load                  111329.50  lbf", mating, no_mating},
    {"Mating Flange Seating Bolt Load                    143052.50  lbf", mating, no_mating},
    {"Mating Flange Design Bolt Load                     237626.00  lbf", mating, no_mating},
    {"Axial Force on Flange                                1000.25  lbf", external, no_external},
    {"Bending Moment on Flange                             2500.50  ft-lbs", external, no_external},
    {"Evaluate Patterned Holes in Blind Cover                  Yes", holes, code_2},
    {"Evaluate Patterned Holes in Blind Cover                  No", holes_declined, pd},
    {"Hole Diameter D1                                       4.000  in.", holes, code_2},
    {"Hole Diameter D2                                       3.000  in.", holes, code_2},
    {"Edge Distance to D1                                    1.500  in.", holes, code_2},
    {"Edge Distance to D2                                    2.500  in.", holes, code_2},
    {"Pitch Distance                                         7.250  in.", holes, pd},
};

TEST_F(InputReport, EachConditionalLineStandsUnderItsConditionOnly) {
    for (const ConditionalLine& c : CONDITIONAL) {
        SCOPED_TRACE(c.line);
        FLANGE_STATE s = weld_neck();
        c.with(s);
        const Lines lines = echo_of(s);
        EXPECT_EQ(std::count(lines.begin(), lines.end(), c.line), 1) << joined(lines);
        c.without(s);
        EXPECT_EQ(line_with(echo_of(s), std::string_view(c.line).substr(0, 45)), "");
    }
}

TEST_F(InputReport, TheOptionalLinesKeepTheirOrder) {
    // Each of these types with all its options: the labels come in the order of the table.
    const auto labels = [](FLANGE_STATE s) {
        partition(s);
        mating(s);
        external(s);
        holes(s);
        s.tg = 0.0625f;
        s.w = 0.125f;
        s.series = 3;
        s.tShell = 0.375f;
        Lines found;
        for (const std::string& line : echo_of(s))
            found.push_back(line.substr(0, 42));
        return found;
    };
    const auto in_order = [](const Lines& found, const Lines& expected) {
        auto at = found.begin();
        for (const std::string& label : expected) {
            at = std::find(at, found.end(), label);
            if (at == found.end()) return label;
        }
        return std::string();
    };
    FLANGE_STATE s = weld_neck();
    s.type = INTEGRAL_RING;
    EXPECT_EQ(in_order(labels(s), {"Use Corrosion Allowance in Thickness Calcs",
                                   "Attached Shell Inside Diameter            ",
                                   "Integral Ring Inside Diameter             ",
                                   "Flange Outside Diameter                   ",
                                   "Length of Hub                             ",
                                   "Bolt Allowable Stress At Ambient          ",
                                   "Length of Weld Leg at Back of Ring        ",
                                   "Number of Splits in Ring Flange           ",
                                   "Diameter of Bolt Circle                   ",
                                   "Type of Threads                           ",
                                   "Root Area of a Single Bolt                ",
                                   "Number of Bolts                           ",
                                   "Column for Gasket Seating                 ",
                                   "Gasket Thickness                          ",
                                   "Flange Face Nubbin Width                  ",
                                   "Length of Partition Gasket                ",
                                   "Width  of Partition Gasket                ",
                                   "Partition Gasket Factor                mPa",
                                   "Partition Gasket Design Seating Stress yPa",
                                   "Mating Flange Operating Bolt Load         ",
                                   "Mating Flange Seating Bolt Load           ",
                                   "Mating Flange Design Bolt Load            ",
                                   "Axial Force on Flange                     ",
                                   "Bending Moment on Flange                  ",
                                   "Evaluate Patterned Holes in Blind Cover   ",
                                   "Hole Diameter D1                          ",
                                   "Hole Diameter D2                          ",
                                   "Edge Distance to D1                       ",
                                   "Edge Distance to D2                       ",
                                   "Pitch Distance                            "}),
              "");
    s.type = LAP_JOINT;
    EXPECT_EQ(in_order(labels(s), {"Bolt Allowable Stress At Ambient          ",
                                   "Lap Joint Contact ID                    Lj",
                                   "Lap Joint Contact OD                    Lj",
                                   "Diameter of Bolt Circle                   "}),
              "");
    blind(s);
    channel_cover(s);
    EXPECT_EQ(in_order(labels(s), {"Bolt Allowable Stress At Ambient          ",
                                   "Diameter of the Load Reaction, Long  Span ",
                                   "Diameter of the Load Reaction, Short Span ",
                                   "Perimeter along the Center of the Bolts   ",
                                   "Youngs Modulus for Blind Flange Matl.     ",
                                   "Allowed Channel Cover Deflection     dfAll",
                                   "Diameter of Bolt Circle                   "}),
              "");
}

TEST_F(InputReport, AnyOneHoleValueBringsTheHoleLines) {
    for (Real S::*value : {&S::D1, &S::D2, &S::edge1, &S::edge2, &S::pitch}) {
        FLANGE_STATE s = weld_neck();
        s.*value = 0.001f;
        EXPECT_NE(line_with(echo_of(s), "Pitch Distance "), "");
        s.*value = -0.5f;
        EXPECT_EQ(line_with(echo_of(s), "Pitch Distance "), "");
    }
}

TEST_F(InputReport, PartitionLinesComeByLengthAlone) {
    FLANGE_STATE s = weld_neck();
    s.partitionGasket = "y";
    EXPECT_EQ(line_with(echo_of(s), "Length of Partition"), "");
    s.lp = -0.5f;
    EXPECT_EQ(line_with(echo_of(s), "Length of Partition"),
              "Length of Partition Gasket                lp         -0.5000  in.");
    s.lp = 0.0f;
    s.partitionGasket = "Yes";
    EXPECT_EQ(line_with(echo_of(s), "Length of Partition"),
              "Length of Partition Gasket                lp          0.0000  in.");
}

} // namespace
} // namespace tarvane
