#include "flange/gasket.h"

#include "stage_fixture.h"

namespace tarvane::stage_test {
namespace {

class GasketTest : public StageTest {
  protected:
    // The main gasket of the state, its contact width to be computed; results as the state holds them.
    static GASKET_CALL main_gasket(const FLANGE_STATE& s) {
        return {.sketch = s.sketch,
                .column = s.column,
                .N = -1.0f,
                .m = s.m,
                .y = s.y,
                .partition = false,
                .b = s.b,
                .G = s.G,
                .b2 = s.b2,
                .bPrime = s.bPrime};
    }
    static GASKET_CALL widths(const FLANGE_STATE& s) {
        GASKET_CALL call = main_gasket(s);
        GASKET_WIDTH(s, call);
        return call;
    }
    static std::string report(const FLANGE_STATE& s) {
        widths(s);
        return joined(take_lines());
    }
    static bool shows(const FLANGE_STATE& s, std::string_view text) {
        return report(s).find(text) != std::string::npos;
    }

    // A flange of C = 20 whose gasket passes the bolt circle.
    static FLANGE_STATE full_face(Int code, Int type = INTEGRAL_WELD_NECK) {
        FLANGE_STATE s;
        s.code = code;
        s.type = type;
        s.fullFace = true;
        s.B = s.Bcor = 15.0f;
        s.C = 20.0f;
        s.dh = 0.875f;
        s.Gi = 15.5f;
        s.Go = 24.0f;
        s.GiC = 16.0f; // the face limits the contact
        s.GoC = 23.0f;
        s.m = 1.0f;
        s.y = 200.0f;
        s.sketch = 1;
        s.column = 2.0f;
        return s;
    }
};

class GasketWidth : public GasketTest {};

TEST_F(GasketWidth, JawadAndFarr) {
    const GASKET_CALL call = widths(jawad_farr_10_9());
    EXPECT_EQ(call.N, 1.0f);
    expect_close(call.b, 0.35355339);
    expect_close(call.G, 15.042893);
    EXPECT_EQ(joined(take_lines()),
              "Gasket Contact Width,       N = (Go - Gi) / 2          1.000  in.\n"
              "Basic Gasket Width,        bo = N / 2                        0.500  in.\n"
              "Effective Gasket Width,     b = sqrt(bo) / 2                 0.354  in.\n"
              "Gasket Reaction Diameter,   G = Go - 2 * b                  15.043  in.\n");
}

TEST_F(GasketWidth, AsmeExampleE4_16_1) {
    const GASKET_CALL call = widths(ptb3_e4_16_1());
    EXPECT_EQ(call.N, 0.5f);
    EXPECT_EQ(call.b, 0.203125f);
    EXPECT_EQ(call.G, 29.5f);
    EXPECT_EQ(joined(take_lines()),
              "Gasket Contact Width,       N = (Go - Gi) / 2          0.500  in.\n"
              "Basic Gasket Width,        bo = (w+3*N) / 8                  0.203  in.\n"
              "Effective Gasket Width,     b = bo                           0.203  in.\n"
              "Gasket Reaction Diameter,   G = (Go + Gi) / 2               29.500  in.\n");
}

// 12.5 x 11.31 in., scribd.com document 327905617: bo 0.2975; its G of 11.95 is cut from 11.9546.
TEST_F(GasketWidth, PublishedNps10Class300) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.sketch = 1;
    s.Go = s.GoC = 12.5f;
    s.Gi = s.GiC = 11.31f;
    s.Bcor = 10.0f;
    expect_close(widths(s).G, 11.9546, 1e-5);
    EXPECT_EQ(take_lines()[1],
              "Basic Gasket Width,        bo = N / 2                        0.297  in.");
}

// ---- contact width ------------------------------------------------------------------------------

TEST_F(GasketWidth, TheBoreLimitsTheContactOfFlangesThatHaveOne) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.Bcor = 29.25f; // beyond the inside of the gasket
    for (Int type = INTEGRAL_WELD_NECK; type <= REVERSE_WELD_NECK; ++type) {
        s.type = type;
        for (s.sketch = 1; s.sketch <= 2; ++s.sketch)
            EXPECT_EQ(widths(s).N, type < LAP_JOINT ? 0.375f : 0.5f) << type;
    }
    s.type = INTEGRAL_WELD_NECK;
    s.sketch = 1;
    s.Bcor = 28.0f;
    EXPECT_EQ(widths(s).N, 0.5f);
}

// In a groove the gasket's own diameters count, whatever the face and the bore are.
TEST_F(GasketWidth, FromSketch1cOnTheGasketsOwnDiametersCount) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.Bcor = 29.5f;
    s.GoC = 29.75f;
    s.GiC = 29.125f;
    for (const Int type : {INTEGRAL_WELD_NECK, LAP_JOINT, REVERSE_WELD_NECK}) {
        s.type = type;
        for (s.sketch = 1; s.sketch <= 9; ++s.sketch) {
            const Real face = type < LAP_JOINT ? 0.125f : 0.3125f;
            EXPECT_EQ(widths(s).N, s.sketch > 2 ? 0.5f : face) << type << " " << s.sketch;
        }
    }
}

TEST_F(GasketWidth, AContactWidthThatIsGivenStaysAndIsNotShown) {
    const FLANGE_STATE s = ptb3_e4_16_1();
    for (const Real given : {0.0f, 0.375f}) {
        GASKET_CALL call = main_gasket(s);
        call.N = given;
        GASKET_WIDTH(s, call);
        EXPECT_EQ(call.N, given);
        EXPECT_TRUE(take_lines()[0].starts_with("Basic Gasket Width,"));
    }
}

TEST_F(GasketWidth, WhichDiameterTheContactWidthNames) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.GoC = 29.75f; // the face ends before the gasket
    EXPECT_TRUE(shows(s, "Gasket Contact Width,       N = (Fod - Gi) / 2         0.500  in.\n"));
    s.GoC = s.Go;
    EXPECT_TRUE(shows(s, "Gasket Contact Width,       N = (Go - Gi) / 2          0.500  in.\n"));
}

// ---- basic width --------------------------------------------------------------------------------

struct SketchCase {
    Int sketch;
    Real column;
    double bo; // for w 0.5, N 0.625, thickness 0.125
    const char* symbol;
};

class BasicWidth : public GasketTest, public testing::WithParamInterface<SketchCase> {};

TEST_P(BasicWidth, TableOfSketches) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.w = 0.5f;
    s.tg = 0.125f;
    GASKET_CALL call = main_gasket(s);
    call.N = 0.625f;
    call.sketch = GetParam().sketch;
    call.column = GetParam().column;
    call.partition = false;
    GASKET_WIDTH(s, call);
    const double bo = GetParam().bo;
    expect_close(call.b, bo <= 0.25 ? bo : std::sqrt(bo) / 2);
    std::string line = "Basic Gasket Width,        bo = " + std::string(GetParam().symbol);
    line.resize(56, ' ');
    line += fixed_number(static_cast<Real>(bo), 10, 3).view();
    EXPECT_EQ(take_lines()[0], line + "  in.");
}

INSTANTIATE_TEST_SUITE_P(
    Sketches, BasicWidth,
    testing::Values(
        SketchCase{1, 1.0f, 0.3125, "N / 2"}, SketchCase{1, 2.0f, 0.3125, "N / 2"},
        SketchCase{2, 1.0f, 0.3125, "N / 2"}, SketchCase{2, 2.0f, 0.3125, "N / 2"},
        SketchCase{3, 1.0f, 0.28125, "(w+N) / 4"}, SketchCase{3, 2.0f, 0.28125, "(w+N) / 4"},
        SketchCase{4, 1.0f, 0.28125, "(w+N) / 4"}, SketchCase{4, 2.0f, 0.28125, "(w+N) / 4"},
        SketchCase{5, 1.0f, 0.28125, "(w+N) / 4"}, SketchCase{5, 2.0f, 0.296875, "(w+3*N) / 8"},
        SketchCase{6, 1.0f, 0.15625, "N / 4"}, SketchCase{6, 2.0f, 0.234375, "3 * N / 8"},
        SketchCase{7, 1.0f, 0.234375, "3 * N / 8"}, SketchCase{7, 2.0f, 0.2734375, "7 * N / 16"},
        SketchCase{8, 1.0f, 0.15625, "N / 4"}, SketchCase{8, 2.0f, 0.234375, "3 * N / 8"},
        SketchCase{9, 1.0f, 0.0625, "w / 8"}, SketchCase{9, 2.0f, 0.0625, "w / 8"},
        // no such sketch
        SketchCase{0, 1.0f, 0.0, ""}, SketchCase{10, 2.0f, 0.0, ""},
        // every column but 1.0 is Column II
        SketchCase{6, 0.0f, 0.234375, "3 * N / 8"}, SketchCase{6, 1.5f, 0.234375, "3 * N / 8"}));

TEST_F(GasketWidth, TheThicknessLimitsTheTongueOnlyWhereItIsLess) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.w = 0.25f;
    for (s.sketch = 3; s.sketch <= 4; ++s.sketch) {
        s.tg = 0.0625f; // 0.15625 against 0.1875
        EXPECT_EQ(widths(s).b, 0.15625f);
        EXPECT_EQ(take_lines()[1],
                  "Basic Gasket Width,        bo = (w+GKTHK) / 2                0.156  in.");
        for (const Real thickness : {0.125f, 0.25f}) { // the same, and more
            s.tg = thickness;
            EXPECT_EQ(widths(s).b, 0.1875f);
            EXPECT_EQ(take_lines()[1],
                      "Basic Gasket Width,        bo = (w+N) / 4                    0.188  in.");
        }
    }
}

TEST_F(GasketWidth, ARingJointWithoutWidth) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.sketch = 9;
    s.w = 0.0f;
    const GASKET_CALL call = widths(s);
    EXPECT_EQ(call.b, 0.0f);
    EXPECT_EQ(call.G, 29.5f);
}

// ---- effective width, reaction diameter ---------------------------------------------------------

TEST_F(GasketWidth, EffectiveWidthFromAQuarterInchOn) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.GiC = 28.5f;
    GASKET_CALL call = main_gasket(s);
    call.sketch = 1;
    call.N = 0.5f;
    GASKET_WIDTH(s, call);
    EXPECT_EQ(call.b, 0.25f);
    EXPECT_EQ(call.G, 29.25f);
    EXPECT_EQ(take_lines()[1],
              "Effective Gasket Width,     b = bo                           0.250  in.");

    call.N = std::nextafter(0.5f, 1.0f); // the curve meets the line, the diameter may jump
    GASKET_WIDTH(s, call);
    EXPECT_EQ(call.b, 0.25f);
    EXPECT_EQ(call.G, 29.5f);
    const Lines lines = take_lines();
    EXPECT_EQ(lines[1], "Effective Gasket Width,     b = sqrt(bo) / 2                 0.250  in.");
    EXPECT_EQ(lines[2], "Gasket Reaction Diameter,   G = Go - 2 * b                  29.500  in.");
}

TEST_F(GasketWidth, TheMetricLabelOfTheEffectiveWidth) {
    const FLANGE_STATE s = jawad_farr_10_9();
    UNITS.diameter = 25.4f;
    UNITS.diameter_label = "mm";
    for (const Real factor : {1.0f, 20.0f, 20.01f, 25.4f}) {
        UNITS.thickness = factor;
        expect_close(widths(s).b, 0.35355339); // always the inch form
        EXPECT_EQ(take_lines()[2],
                  factor > 20.0f
                      ? "Effective Gasket Width,     b = Cb sqrt(bo)                  8.980  mm"
                      : "Effective Gasket Width,     b = sqrt(bo) / 2                 8.980  mm");
    }
}

// Inside and outside of the contact, not of the gasket.
TEST_F(GasketWidth, TheReactionDiameterGoesByTheContact) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.sketch = 1;
    s.GoC = 29.75f;
    s.GiC = 29.125f;
    GASKET_CALL call = widths(s);
    EXPECT_EQ(call.N, 0.3125f);
    EXPECT_EQ(call.G, 29.4375f);
    s.GiC = 28.0f;
    call = widths(s);
    EXPECT_EQ(call.N, 0.875f);
    expect_close(call.G, 29.75 - std::sqrt(0.4375));
}

TEST_F(GasketWidth, ALapJointTakesTheMiddleOfItsContact) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.type = LAP_JOINT;
    s.LjID = 27.0f;
    s.LjOD = 29.5f;
    s.m = s.y = 0.0f; // before the self-energizing gasket
    EXPECT_EQ(widths(s).G, 28.25f);
    EXPECT_EQ(joined(take_lines()),
              "Gasket Contact Width,       N = (Go - Gi) / 2          0.500  in.\n"
              "Basic Gasket Width,        bo = (w+3*N) / 8                  0.203  in.\n"
              "Effective Gasket Width,     b = bo                           0.203  in.\n"
              "Gasket Reaction Diameter,   G = (LPODC+LPIDC) / 2           28.250  in.\n"
              "Note: For Lap Joints, the Flange Face OD cannot be greater than the\n"
              "lap joint contact OD.\n");
}

TEST_F(GasketWidth, ASelfEnergizingGasketSealsAtItsOutside) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.m = s.y = 0.0009f;
    EXPECT_EQ(widths(s).G, 30.0f);
    EXPECT_EQ(take_lines()[3],
              "Gasket Reaction Diameter,   G = Go (Self-Energizing)        30.000  in.");
    s.m = 0.001f;
    EXPECT_EQ(widths(s).G, 29.5f);
    s.m = 0.0f;
    s.y = 0.001f;
    EXPECT_EQ(widths(s).G, 29.5f);
    s.y = 0.0f;
    NEW_DIV_2_RULES = true;
    EXPECT_EQ(widths(s).G, 29.5f);
    NEW_DIV_2_RULES = false;
    s.GoC = 29.75f; // of the face
    EXPECT_EQ(widths(s).G, 29.75f);
}

// ---- full face ----------------------------------------------------------------------------------

TEST_F(GasketWidth, FullFaceByTheTaylorForgeBulletin) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2}) {
        FLANGE_STATE s = full_face(code);
        s.b2 = -3.0f;
        const GASKET_CALL call = widths(s);
        EXPECT_EQ(call.N, 3.5f);
        EXPECT_EQ(call.b, 1.0f);
        expect_close(call.G, 20.0 - 2.0 * 4.0 * 52.0 / (6.0 * 36.0)); // C less twice hG
        EXPECT_EQ(call.b2, -3.0f);
        EXPECT_EQ(joined(take_lines()),
                  "Basic Gasket Width,        bo = Full Face                    1.750  in.\n"
                  "Effective Gasket Width,     b = (C-Gi) / 4                   1.000  in.\n"
                  "Gasket Reaction Diameter,   G = C - 2 * HG                  18.074  in.\n"
                  "Note: The gasket extends beyond the Bolt circle diameter, this flange will\n"
                  "be designed as a full face flange per Taylor Forge bulletin 502.\n");
    }
    FLANGE_STATE other = full_face(ASME_VIII_1);
    other.sketch = 6; // another basic width is shown, the effective one stays
    EXPECT_EQ(widths(other).b, 1.0f);
    EXPECT_EQ(take_lines()[0],
              "Basic Gasket Width,        bo = Full Face                    1.594  in.");
}

TEST_F(GasketWidth, FullFaceOfAReverseFlangeUnderTheAsmeCodes) {
    EXPECT_EQ(widths(full_face(ASME_VIII_2, REVERSE_WELD_NECK)).b, 1.0f);
}

TEST_F(GasketWidth, FullFaceOfTheEuropeanCodes) {
    for (const Int code : {PD_5500, EN_13445}) {
        const GASKET_CALL call = widths(full_face(code));
        EXPECT_EQ(call.N, 3.5f);
        expect_close(call.b, 4.0 * std::sqrt(3.0 * 25.4) / 25.4); // b' of b'0 = 3
        EXPECT_EQ(call.b2, 0.196850389f);                         // 5 mm
        expect_close(call.G, 20.0 - 0.875 - 5.0 / 25.4);
        EXPECT_EQ(joined(take_lines()),
                  "Eff. Gask Pressure width  2b\" = 5 mm                   0.197  in.\n"
                  "Basic Gasket Width,        bo = Min(Go - C, C - Gi)          3.000  in.\n"
                  "Effective Gasket Width,     b = 4(b'0)                       1.375  in.\n"
                  "Gasket Reaction Diameter,   G = C - dh - 5mm                18.928  in.\n"
                  "Note: The gasket extends beyond the Bolt circle diameter, this flange will\n"
                  "be designed as a full face flange per code rules.\n");
    }
    for (const Int code : {PD_5500, EN_13445}) {
        FLANGE_STATE inner = full_face(code);
        inner.GiC = 18.0f; // now the inner side is the narrower one
        expect_close(widths(inner).b, 4.0 * std::sqrt(2.0 * 25.4) / 25.4);
        inner.GiC = 21.0f; // a gasket that begins outside the bolt circle
        take_lines();
        const GASKET_CALL outside = widths(inner);
        EXPECT_EQ(outside.b, 0.0f);
        EXPECT_FALSE(std::signbit(outside.b));
        const std::string lines = joined(take_lines());
        EXPECT_NE(lines.find("bo = Min(Go - C, C - Gi)          0.000  in."), lines.npos) << lines;
        EXPECT_NE(lines.find("b = 4(b'0)                       0.000  in."), lines.npos) << lines;
        inner.type = LAP_JOINT; // the rule comes before that of the lap joint
        expect_close(widths(inner).G, 20.0 - 0.875 - 5.0 / 25.4);
    }
}

TEST_F(GasketWidth, FullFaceOfAReverseFlangeHasNoReactionDiameter) {
    for (const Int code : {PD_5500, EN_13445}) {
        FLANGE_STATE s = full_face(code, REVERSE_WELD_NECK);
        s.G = 17.0f;
        s.b2 = 0.5f;
        GASKET_CALL call = main_gasket(s);
        call.N = 9.0f; // calculated again all the same
        GASKET_WIDTH(s, call);
        EXPECT_EQ(call.N, 2.0f);
        EXPECT_EQ(call.b, 0.5f);
        expect_close(call.bPrime, 0.79365 * std::sqrt(3.0));
        EXPECT_EQ(call.G, 17.0f);
        EXPECT_EQ(call.b2, 0.5f);
        EXPECT_EQ(joined(take_lines()),
                  "Gasket Contact Width,       N = (C - g1) / 2           2.000  in.\n"
                  "Basic Gasket Width,        bo = N / 2                  1.000  in.\n"
                  "Effective Gasket Width,     b = min(b0,0.5  *sqrt(b0))     0.500  in.\n"
                  "Distance to Gasket OD,    b'0 = Go - C                     3.000  in.\n"
                  "Effective distance,        b' = 0.793*sqrt(b'0)            1.375  in.\n"
                  "Note: The gasket extends beyond the Bolt circle diameter, this flange will\n"
                  "be designed as a full face flange per code rules.\n");
    }
    FLANGE_STATE narrow = full_face(EN_13445, REVERSE_WELD_NECK);
    narrow.GiC = 19.5f; // bo = 0.125 is less than half its root
    EXPECT_EQ(widths(narrow).b, 0.125f);
    narrow.GiC = 17.0f;
    expect_close(widths(narrow).b, 0.5 * std::sqrt(0.75));
}

TEST_F(GasketWidth, MetricFormsOfAFullFaceReverseFlange) {
    const FLANGE_STATE s = full_face(EN_13445, REVERSE_WELD_NECK);
    UNITS.thickness = 2.0f;
    EXPECT_TRUE(shows(s, "0.5  *sqrt(b0)"));
    EXPECT_TRUE(shows(s, "0.793*sqrt(b'0)"));
    UNITS.thickness = 2.001f;
    EXPECT_TRUE(
        shows(s, "Effective Gasket Width,     b = min(b0,2.52*sqrt(b0))      0.500  in.\n"));
    EXPECT_TRUE(
        shows(s, "Effective distance,        b' = 4*sqrt(b'0)                1.375  in.\n"));
    expect_close(widths(s).bPrime, 0.79365 * std::sqrt(3.0));
}

// The last bits, computed outside with each operation rounded in the order of the formula.
TEST_F(GasketWidth, FullFaceDiametersInTheOrderOfTheFormula) {
    FLANGE_STATE s = full_face(ASME_VIII_1);
    s.C = 28.66f;
    s.GiC = 25.24f;
    EXPECT_EQ(widths(s).G, 26.986166f);
    s = full_face(EN_13445);
    s.C = 27.23f;
    s.dh = 1.036f;
    EXPECT_EQ(widths(s).G, 25.9971504f);
}

// ---- partition gasket ---------------------------------------------------------------------------

// A width only: no lines, no full face rules, the width given.
TEST_F(GasketWidth, APartitionGasket) {
    for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
        for (const Int type : {INTEGRAL_WELD_NECK, LAP_JOINT, REVERSE_WELD_NECK}) {
            for (const bool beyond : {false, true}) {
                FLANGE_STATE s = full_face(code, type);
                s.fullFace = beyond;
                GASKET_CALL call = main_gasket(s);
                call.partition = true;
                call.N = 0.375f;
                call.b2 = -2.0f;
                call.bPrime = -4.0f;
                GASKET_WIDTH(s, call);
                EXPECT_EQ(call.b, 0.1875f);
                EXPECT_EQ(call.N, 0.375f);
                EXPECT_EQ(call.b2, -2.0f);
                EXPECT_EQ(call.bPrime, -4.0f);
                call.N = -1.0f; // computed, and not shown either
                GASKET_WIDTH(s, call);
                EXPECT_EQ(call.N, 3.5f);
                EXPECT_EQ(LINE_COUNT, 0);
            }
        }
    }
}

// ---- notes --------------------------------------------------------------------------------------

TEST_F(GasketWidth, AReactionDiameterBeyondTheBolts) {
    constexpr std::string_view warning =
        "Warning: Gasket reaction diameter is beyond the bolt circle and\n"
        "this is not a full face gasket. Please Check the input.\n";
    FLANGE_STATE s = ptb3_e4_16_1();
    s.C = 29.5f;
    EXPECT_FALSE(shows(s, "Warning"));
    s.C = 29.49991f;
    EXPECT_FALSE(shows(s, "Warning"));
    s.C = 29.4998f;
    EXPECT_TRUE(report(s).ends_with(warning));
    s.fullFace = true;
    EXPECT_FALSE(shows(s, "Warning"));
}

TEST_F(GasketWidth, LinesHaveNoMarks) {
    for (const Int type : {LAP_JOINT, REVERSE_WELD_NECK}) {
        widths(full_face(EN_13445, type));
        FLANGE_STATE beyond = ptb3_e4_16_1();
        beyond.C = 20.0f;
        widths(beyond);
        ASSERT_GT(LINE_COUNT, 10);
        for (Int k = 1; k <= LINE_COUNT; ++k)
            EXPECT_EQ(stored_marks(k), " 0 0 0 0 0 0") << k;
    }
}

TEST_F(GasketWidth, SilentPassesHaveTheSameWidths) {
    const FLANGE_STATE flanges[] = {jawad_farr_10_9(), full_face(EN_13445),
                                    full_face(PD_5500, REVERSE_WELD_NECK)};
    for (const FLANGE_STATE& s : flanges) {
        const GASKET_CALL loud = widths(s);
        take_lines();
        IWRITE = 0;
        const GASKET_CALL silent = widths(s);
        EXPECT_EQ(LINE_COUNT, 0);
        EXPECT_EQ(silent.b, loud.b);
        EXPECT_EQ(silent.N, loud.N);
        EXPECT_EQ(silent.bPrime, loud.bPrime);
        IWRITE = 1;
    }
}

// ---- minimum width ------------------------------------------------------------------------------

class MinimumWidth : public GasketTest {
  protected:
    MinimumWidth() { SET_METRIC_CONSTANTS(); }
    static std::string report(const FLANGE_STATE& s) {
        MIN_GASKET_WIDTH(s);
        return joined(take_lines());
    }
};

// 13.288 * 25000 / (7600 * Pi * 59) = 0.23582, half an inch is there.
TEST_F(MinimumWidth, BrownellYoung) {
    EXPECT_EQ(report(ptb3_e4_16_1()),
              "Min. Gasket Contact Width (Brownell Young) [Not an ASME Calc] [Nmin]:\n"
              "= Ab * Sa/( y * Pi * (Go + Gi) )\n"
              "= 13.288 * 25000.0/(7600.0 * 3.14 * (30.0 + 29.0) )\n"
              " = 0.2358 in.\n"
              "Note: Recommended Min. Width for Sheet and Composite Gaskets per table 2-4 :\n"
              " = 1.0000 in.  [Note: Exceeds actual gasket width, 0.5000]\n");
    MIN_GASKET_WIDTH(ptb3_e4_16_1());
    EXPECT_EQ(stored_marks(1), " 0 0 0 0 0 2");
    for (Int k = 2; k <= LINE_COUNT; ++k)
        EXPECT_EQ(stored_marks(k), " 0 0 0 0 0 0") << k;
}

TEST_F(MinimumWidth, HeadingsOfTheCodes) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.code = ASME_VIII_2;
    EXPECT_TRUE(report(s).starts_with("Min. Gasket Contact Width (Brownell Young) [Not an ASME "
                                      "Calc] [Nmin]:\n= Ab * Sa/( y * Pi * (Go + Gi) )\n"));
    s.code = PD_5500;
    EXPECT_TRUE(report(s).starts_with("Min. Gasket Contact Width (Brownell Young) [Not an ASME "
                                      "Calc] [Nmin]:\n= Ab * Sa/( y * Pi * (Go + Gi) )\n"));
    s.code = EN_13445;
    EXPECT_TRUE(report(s).starts_with("Min. Gasket Contact Width (Brownell Young) [Not an EN 13445 "
                                      "Calc] [Nmin]:\n= Ab * fb,a / ( y * Pi * (Go + Gi) )\n"));
}

TEST_F(MinimumWidth, TheRecommendedWidthIsOfTheAsmeCodes) {
    FLANGE_STATE s = ptb3_e4_16_1();
    for (Int code = ASME_VIII_1; code <= EN_13445; ++code) {
        s.code = code;
        EXPECT_EQ(report(s).find("Recommended") != std::string::npos, code < PD_5500) << code;
    }
    s.code = ASME_VIII_1;
    s.B = 20.0f;
    EXPECT_EQ(report(s).find("Recommended"), std::string::npos);
    s.B = 26.25f;
    RESET_CODE_CONSTANTS(); // not set yet: no width to recommend
    EXPECT_EQ(report(s).find("Recommended"), std::string::npos);
}

TEST_F(MinimumWidth, TheRemarkOfANarrowGasket) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.code = EN_13445;
    s.Ab *= 3.0f;
    EXPECT_TRUE(
        report(s).ends_with("\n = 0.7075 in.  [Note: Exceeds actual gasket width, 0.5000]\n"));
    std::swap(s.GoC, s.GiC); // the amount counts
    EXPECT_TRUE(
        report(s).ends_with("\n = 0.7075 in.  [Note: Exceeds actual gasket width, 0.5000]\n"));
    UNITS.diameter = 25.4f;
    UNITS.diameter_label = "mm";
    EXPECT_TRUE(
        report(s).ends_with("\n = 17.9696 mm  [Note: Exceeds actual gasket width, 12.7000]\n"));
    UNITS = UNIT_CONSTANTS{};

    s = ptb3_e4_16_1(); // as wide as recommended
    s.GoC = 31.0f;
    EXPECT_TRUE(report(s).ends_with("per table 2-4 :\n = 1.0000 in.\n"));
    s.GoC = 30.99f;
    EXPECT_TRUE(
        report(s).ends_with(" = 1.0000 in.  [Note: Exceeds actual gasket width, 0.9950]\n"));
}

TEST_F(MinimumWidth, ContactDiametersAndTheStressAtAmbient) {
    FLANGE_STATE s = ptb3_e4_16_1();
    s.code = EN_13445;
    s.Go = 33.0f;
    s.Gi = 28.0f;
    s.Sb = 20000.0f;
    MIN_GASKET_WIDTH(s);
    EXPECT_EQ(stored_marks(1), " 0 0 0 0 0 2");
    const Lines lines = take_lines();
    EXPECT_EQ(lines[2], "= 13.288 * 25000.0/(7600.0 * 3.14 * (30.0 + 29.0) )");
    EXPECT_EQ(lines[3], " = 0.2358 in.");
}

TEST_F(MinimumWidth, UnitsOfTheNumberLine) {
    UNITS.area = 2.0f;
    UNITS.stress = 3.0f;
    UNITS.diameter = 4.0f;
    MIN_GASKET_WIDTH(ptb3_e4_16_1());
    EXPECT_EQ(take_lines()[2], "= 26.576 * 75000.0/(22800.0 * 3.14 * (120.0 + 116.0) )");
}

TEST_F(MinimumWidth, TableByTheBore) {
    const auto table = [](Real B) { return MIN_GASKET_WIDTH_TABLE(B); };
    EXPECT_EQ(table(0.0f), 0.0f);
    EXPECT_EQ(table(std::nextafter(23.999f, 0.0f)), 0.0f);
    EXPECT_EQ(table(23.999f), 1.0f);
    EXPECT_EQ(table(36.0001f), 1.0f);
    EXPECT_EQ(table(std::nextafter(36.0001f, 40.0f)), 1.25f);
    EXPECT_EQ(table(std::nextafter(60.0f, 0.0f)), 1.25f);
    EXPECT_EQ(table(60.0f), 1.5f);
    EXPECT_EQ(table(1000.0f), 1.5f);
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 1;
    SET_METRIC_CONSTANTS();
    EXPECT_EQ(table(24.0f), 0.984251976f);
    EXPECT_EQ(table(48.0f), 1.25984251f);
    EXPECT_EQ(table(60.0f), 1.49606299f);
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
}

} // namespace
} // namespace tarvane::stage_test
