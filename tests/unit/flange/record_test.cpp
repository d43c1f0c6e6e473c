#include "flange/record.h"

#include "materials/modulus.h"
#include "sample_flange.h"

#include <gtest/gtest.h>

namespace tarvane {
namespace {

class Record : public testing::Test {
  protected:
    void SetUp() override { fresh_engine(); }
    FLANGE_STATE& read() {
        READ_FLANGE_RECORD(s, FLANGE_RECORD(flange.elements.data()), flange.text.data(), TEXT_SLOT);
        return s;
    }
    SampleFlange flange;
    FLANGE_STATE s;
};

TEST_F(Record, ThicknessThatIsNotPositiveBecomesTwo) {
    for (const Real t : {0.0f, -1.0f, std::nanf("")}) {
        flange.at(8) = t;
        EXPECT_EQ(read().t, 2.0f);
    }
    flange.at(8) = 1.0e-6f;
    EXPECT_EQ(read().t, 1.0e-6f);
}

TEST_F(Record, NoValueIsClearedInTheHostsRecordByItsBits) {
    flange.at(9) = NO_VALUE;
    flange.at(199) = NO_VALUE;
    flange.at(200) = std::nextafter(NO_VALUE, 0.0f);
    read();
    EXPECT_EQ(flange.at(9), 0.0f);
    EXPECT_EQ(flange.at(199), 0.0f);
    EXPECT_NE(flange.at(200), 0.0f);
    EXPECT_EQ(s.ci, 0.0f);
}

TEST_F(Record, ExternalLoadsNeedUpperCaseAndBlanksBehind) {
    flange.set({{48, 100.0f}, {50, 200.0f}});
    flange.put(45, "Y");
    EXPECT_EQ(read().Faxial, 100.0f);
    EXPECT_EQ(s.Mbend, 200.0f);
    for (const char* slot : {"y", "Yes", " Y", ""}) {
        flange.put(45, slot);
        EXPECT_EQ(read().Faxial, 0.0f) << slot;
        EXPECT_EQ(s.Mbend, 0.0f) << slot;
    }
}

TEST_F(Record, AllowanceInThicknessAcceptsBothCases) {
    flange.set({{9, 0.125f}, {63, 0.0625f}});
    for (const char* slot : {"Y", "y"}) {
        flange.put(90, slot);
        EXPECT_EQ(read().ct, 0.25f) << slot; // ci + 2 ce
    }
    flange.put(90, "N");
    EXPECT_EQ(read().ct, 0.0f);
}

TEST_F(Record, PartitionGasketAcceptsUpperCaseOnly) {
    flange.set({{31, 20.0f}, {52, 0.5f}, {55, 2.0f}, {56, 1600.0f}});
    flange.put(105, "Y");
    EXPECT_EQ(read().lp, 20.0f);
    flange.put(105, "y");
    read();
    EXPECT_EQ(s.lp, 0.0f);
    EXPECT_EQ(s.tp, 0.0f);
    EXPECT_EQ(s.mPart, 0.0f);
    EXPECT_EQ(s.yPart, 0.0f);
}

TEST_F(Record, RootAreaCountsAboveSeriesTwo) {
    flange.at(51) = 0.302f;
    for (const Real series : {1.0f, 2.0f}) {
        flange.at(23) = series;
        EXPECT_EQ(read().rootGiven, 0.0f);
        EXPECT_EQ(s.dh, 0.75f);
    }
    flange.at(23) = 3.0f;
    read();
    EXPECT_EQ(s.rootGiven, 0.302f);
    EXPECT_EQ(s.dh, 2.0f * std::sqrt(0.302f / 3.14159012f));
    EXPECT_EQ(s.aNominal, 0.75f);
    flange.at(23) = 4.9f; // truncated
    EXPECT_EQ(read().series, 4);
    EXPECT_EQ(s.dh, 0.75f);
}

TEST_F(Record, DeflectionLimitDefaultsByBoltCircle) {
    flange.at(37) = 0.00001f;
    flange.at(21) = 24.0f;
    EXPECT_EQ(read().dfAllow, 0.03f);
    flange.at(21) = 32.0f;
    EXPECT_EQ(read().dfAllow, 32.0f / 800.0f);
    flange.at(37) = 0.000011f;
    EXPECT_EQ(read().dfAllow, 0.000011f);
}

TEST_F(Record, BlindFlangeHasNoHubAndGetsItsPerimeter) {
    flange.set({{2, 7.0f}, {64, 1.5f}});
    read();
    EXPECT_EQ(s.go, 0.0f);
    EXPECT_EQ(s.g1, 0.0f);
    EXPECT_EQ(s.h, 0.0f);
    EXPECT_EQ(s.L, 3.14159274f * 31.25f);
    EXPECT_EQ(s.D1, 1.5f);
    flange.at(38) = 90.0f;
    EXPECT_EQ(read().L, 90.0f);
    flange.set({{38, 0.0f}, {35, 30.0f}, {36, 20.0f}});
    EXPECT_EQ(read().L, 0.0f);
    flange.at(2) = 1.0f;
    EXPECT_EQ(read().D1, 0.0f); // only a blind flange has holes
}

TEST_F(Record, ChannelCoverTakesTheModulusFromElementTenOrTheTable) {
    flange.set({{2, 7.0f}, {10, 27000000.0f}});
    flange.put(75, "Y");
    EXPECT_EQ(read().Ecover, 27000000.0f);
    EXPECT_EQ(s.B, 0.0f);
    flange.at(10) = 10000000.0f; // not above: a lookup at the design temperature
    EXPECT_FLOAT_EQ(read().Ecover, 26.0e6f);
    flange.put(75, "y");
    EXPECT_EQ(read().B, 10000000.0f);
}

TEST_F(Record, LooseReverseIsRewrittenInTheStateOnly) {
    flange.set({{2, 9.0f}, {71, 0.5f}});
    REWRITE_LOOSE_REVERSE(read());
    EXPECT_EQ(s.type, REVERSE_WELD_NECK);
    EXPECT_EQ(s.go, 0.5f);
    EXPECT_EQ(s.g1, 0.5f);
    EXPECT_EQ(s.h, 10.0f);
    EXPECT_TRUE(s.looseReverse);
    EXPECT_EQ(flange.at(2), 9.0f);
}

TEST_F(Record, NulsOfTheChartNameBecomeBlanks) {
    flange.put(120, std::string_view("CS-2\0\0", 6));
    EXPECT_EQ(read().chartName.view(), "CS-2           ");
}

TEST_F(Record, ValuesThatNoIntegerHoldsAreDefined) {
    for (const Real x : {1.0e20f, -1.0e20f, std::nanf(""), INFINITY}) {
        flange.at(24) = x;
        EXPECT_EQ(read().nBolts, INT32_MIN);
    }
}

// Each element at its own place: a record whose element i holds 1000 + i, or i where it is counted.
TEST_F(Record, EachElementReachesItsMember) {
    for (Int i = 1; i <= 200; ++i)
        flange.at(i) = 1000.0f + static_cast<Real>(i);
    flange.set({{2, 6.9f}, {3, 2.9f}}); // whole numbers are cut
    flange.put(45, "Y");
    flange.put(105, "Y");
    read();

    struct MEMBER {
        Int element;
        Real FLANGE_STATE::*member;
    };
    static constexpr MEMBER REALS[] = {
        {4, &FLANGE_STATE::P},           {5, &FLANGE_STATE::Tdesign},
        {6, &FLANGE_STATE::Sfo},         {7, &FLANGE_STATE::Sfa},
        {8, &FLANGE_STATE::t},           {9, &FLANGE_STATE::ci},
        {10, &FLANGE_STATE::B},          {11, &FLANGE_STATE::A},
        {12, &FLANGE_STATE::Fod},        {13, &FLANGE_STATE::Fid},
        {14, &FLANGE_STATE::Go},         {15, &FLANGE_STATE::Gi},
        {16, &FLANGE_STATE::go},         {17, &FLANGE_STATE::g1},
        {18, &FLANGE_STATE::h},          {19, &FLANGE_STATE::Sb},
        {20, &FLANGE_STATE::Sa},         {21, &FLANGE_STATE::C},
        {22, &FLANGE_STATE::aNominal},   {22, &FLANGE_STATE::dh},
        {25, &FLANGE_STATE::m},          {26, &FLANGE_STATE::y},
        {28, &FLANGE_STATE::column},     {29, &FLANGE_STATE::tg},
        {30, &FLANGE_STATE::w},          {31, &FLANGE_STATE::lp},
        {35, &FLANGE_STATE::D},          {36, &FLANGE_STATE::dS},
        {37, &FLANGE_STATE::dfAllow},    {38, &FLANGE_STATE::L},
        {39, &FLANGE_STATE::LjID},       {40, &FLANGE_STATE::LjOD},
        {42, &FLANGE_STATE::tw},         {44, &FLANGE_STATE::Wmo},
        {45, &FLANGE_STATE::Wms},        {46, &FLANGE_STATE::Wmd},
        {48, &FLANGE_STATE::Faxial},     {50, &FLANGE_STATE::Mbend},
        {51, &FLANGE_STATE::rootGiven},  {52, &FLANGE_STATE::tp},
        {53, &FLANGE_STATE::density},    {54, &FLANGE_STATE::Dshell},
        {55, &FLANGE_STATE::mPart},      {56, &FLANGE_STATE::yPart},
        {58, &FLANGE_STATE::columnPart}, {60, &FLANGE_STATE::Sn},
        {61, &FLANGE_STATE::Sna},        {63, &FLANGE_STATE::ce},
        {71, &FLANGE_STATE::tShell},     {74, &FLANGE_STATE::caShell}};
    for (const MEMBER& m : REALS)
        EXPECT_EQ(s.*m.member, 1000.0f + static_cast<Real>(m.element)) << m.element;

    struct COUNT {
        Int element;
        Int FLANGE_STATE::*member;
    };
    static constexpr COUNT WHOLE[] = {
        {23, &FLANGE_STATE::series},         {24, &FLANGE_STATE::nBolts},
        {27, &FLANGE_STATE::sketch},         {34, &FLANGE_STATE::materialClass},
        {41, &FLANGE_STATE::nSplits},        {57, &FLANGE_STATE::sketchPart},
        {69, &FLANGE_STATE::patternedHoles}, {70, &FLANGE_STATE::attachment},
        {72, &FLANGE_STATE::useShellStress}, {73, &FLANGE_STATE::seatRule}};
    for (const COUNT& m : WHOLE)
        EXPECT_EQ(s.*m.member, 1000 + m.element) << m.element;
    EXPECT_EQ(s.type, 6);
    EXPECT_EQ(s.kind, 2);

    flange.set({{2, 7.0f}});
    read();
    Int element = 64;
    for (Real FLANGE_STATE::*hole : {&FLANGE_STATE::D1, &FLANGE_STATE::D2, &FLANGE_STATE::edge1,
                                     &FLANGE_STATE::edge2, &FLANGE_STATE::pitch})
        EXPECT_EQ(s.*hole, 1000.0f + static_cast<Real>(element++));
}

TEST_F(Record, EachTextSlotAtItsOffset) {
    static constexpr Text<15> FLANGE_STATE::*SLOTS[] = {
        &FLANGE_STATE::flangeMaterial, &FLANGE_STATE::boltMaterial,    &FLANGE_STATE::description,
        &FLANGE_STATE::externalLoads,  &FLANGE_STATE::matingLoads,     &FLANGE_STATE::channelCover,
        &FLANGE_STATE::useCorrosion,   &FLANGE_STATE::partitionGasket, &FLANGE_STATE::chartName};
    for (int i = 0; i < 9; ++i)
        flange.put(15 * i, "slot " + std::to_string(i) + " 9 12 15:");
    read();
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ((s.*SLOTS[i]).view(), "slot " + std::to_string(i) + " 9 12 15:");
}

TEST_F(Record, SplitsStayAsGivenForEveryType) {
    flange.at(41) = 2.0f;
    for (const Real type : {1.0f, 5.0f, 7.0f}) {
        flange.at(2) = type;
        EXPECT_EQ(read().nSplits, 2);
    }
}

TEST_F(Record, MatingLoadsAreTakenWhateverTheirSwitchSays) {
    flange.set({{44, 1.0f}, {45, 2.0f}, {46, 3.0f}});
    for (const char* slot : {"Y", "N", ""}) {
        flange.put(60, slot);
        read();
        EXPECT_EQ(s.Wmo + s.Wms + s.Wmd, 6.0f) << slot;
    }
}

TEST_F(Record, PerimeterNeedsEqualSpansAndNoLengthOfItsOwn) {
    flange.set({{2, 7.0f}, {35, 20.0f}, {36, 20.0f}, {38, 0.001f}});
    EXPECT_EQ(read().L, 3.14159274f * 31.25f);
    flange.at(38) = std::nextafter(0.001f, 1.0f);
    EXPECT_EQ(read().L, flange.at(38));
    flange.set({{36, std::nextafter(20.0f, 30.0f)}, {38, 0.0f}});
    EXPECT_EQ(read().L, 0.0f);
    flange.set({{2, 1.0f}, {36, 20.0f}});
    EXPECT_EQ(read().L, 0.0f); // of a blind flange only
}

TEST_F(Record, ModulusOfAChannelCoverGoesByTheModuleCode) {
    flange.set({{2, 7.0f}, {10, 0.0f}, {5, 70.0f}});
    flange.put(75, "Yes"); // the first character decides
    moduleCode = 1;
    EXPECT_FLOAT_EQ(read().Ecover, 29.4e6f);
    EXPECT_EQ(CHART_NAME.view(), "CS-2    ");
    moduleCode = 4;
    Real built_in = ASMEMOD(70.0f, 1, 4) * 1000000.0f;
    EXPECT_EQ(read().Ecover, built_in);
    EXPECT_NE(built_in, 29.4e6f);
    // Any other type keeps its bore.
    flange.set({{2, 1.0f}, {10, 26.25f}});
    EXPECT_EQ(read().B, 26.25f);
}

TEST_F(Record, LooseReverseTakesTheShellThicknessOfItsOwnRecord) {
    flange.set({{2, 9.0f}, {71, NO_VALUE}, {16, 0.5f}});
    REWRITE_LOOSE_REVERSE(read());
    EXPECT_EQ(s.go, 0.0f);
    flange.at(2) = 8.0f;
    s.looseReverse = false;
    REWRITE_LOOSE_REVERSE(read());
    EXPECT_EQ(s.go, 0.5f);
    EXPECT_FALSE(s.looseReverse);
}

} // namespace
} // namespace tarvane
