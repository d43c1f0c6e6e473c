#include "flange/record.h"

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
    EXPECT_EQ(read().D1, 0.0f); // holes are those of a blind flange
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

} // namespace
} // namespace tarvane
