// The results of a flange from within: when the block is written, what leads to it, and the setters
// beside it.
#define TARVANE_STATIC
#include "flange/results.h"

#include "driver_fixture.h"
#include "materials/modulus.h"
#include "report/renderer.h"

#include <cstring>

namespace tarvane {
namespace {

using driver_test::DriverTest;

class Results : public DriverTest {
  protected:
    const TARVANE_FLANGE_RESULTS& found = *::GETFLANGERESULTS();
};

TEST_F(Results, AddressStaysAndTheBlockBeginsAfresh) {
    EXPECT_EQ(&found, ::GETFLANGERESULTS());
    EXPECT_EQ(found.status, TARVANE_NOT_CALCULATED);
    flange.run();
    EXPECT_EQ(found.status, TARVANE_CALCULATED);
    EXPECT_EQ(found.serial, 1);
    EXPECT_EQ(found.messages, 0);
    const float hub = found.stress[TARVANE_OPERATING][TARVANE_HUB_STRESS];
    EXPECT_EQ(hub, FLANGE.STRESS[OPERATING][HUB]);
    flange.at(15) = 30.0f; // Gi at Go: refused
    flange.run();
    EXPECT_EQ(found.status, TARVANE_REFUSED);
    EXPECT_EQ(found.serial, 2);
    EXPECT_GT(found.messages, 0);
    EXPECT_EQ(found.stress[TARVANE_OPERATING][TARVANE_HUB_STRESS], TARVANE_NO_VALUE);
    RESET_ENGINE();
    EXPECT_EQ(found.serial, 0);
    EXPECT_EQ(found.status, TARVANE_NOT_CALCULATED);
    EXPECT_EQ(found.version, TARVANE_FLANGE_RESULTS_VERSION);
    EXPECT_EQ(found.bytes, static_cast<int>(sizeof found));
}

// The host may never return from its stop service: the block has been filled before.
TEST_F(Results, StopIsToldBeforeTheHostIsAsked) {
    static Int status, code;
    status = code = -1;
    HOST_SERVICES services;
    services.version = HOST_SERVICES_VERSION;
    services.stop = [](void*, Int) {
        status = ::GETFLANGERESULTS()->status;
        code = ::GETFLANGERESULTS()->fatal_code;
    };
    tarvane::SET_HOST_SERVICES(&services);
    flange.set({{2, 7.0f}, {10, 40.0f}}); // a cover: the input check does not test the bore
    flange.run();
    EXPECT_EQ(status, TARVANE_STOPPED);
    EXPECT_EQ(code, 25);
    EXPECT_EQ(found.status, TARVANE_STOPPED);
}

TEST_F(Results, DesignThatGivesUpSaysSo) {
    flange.set(
        {{3, 3.0f}, {4, 50.0f}, {12, 32.8f}, {14, 32.8f}, {15, 26.5f}, {25, 1.0f}, {26, 200.0f}});
    flange.pOperating = 50.0f;
    flange.run();
    ASSERT_EQ(FLANGE.error, DESIGN_GAVE_UP);
    EXPECT_EQ(found.status, TARVANE_DESIGN_GAVE_UP);
    EXPECT_EQ(found.design_rounds, 20);
    EXPECT_EQ(found.kind, TARVANE_DESIGN);
    EXPECT_GT(found.Wm1, 0.0f);             // it got as far as the loads
    EXPECT_EQ(found.Mop, TARVANE_NO_VALUE); // and no further
}

TEST_F(Results, RoundsOfTheSearch) {
    flange.run();
    EXPECT_EQ(found.evaluations, 1);
    EXPECT_EQ(found.thickness_rounds, 0);
    EXPECT_EQ(found.t_used, flange.at(8));
    flange.at(3) = 2.0f;
    flange.run();
    EXPECT_EQ(found.evaluations, 2);
    EXPECT_GT(found.thickness_rounds, 1);
    EXPECT_EQ(found.converged, 1);
    EXPECT_EQ(found.t_used, flange.tReq);
    EXPECT_EQ(found.t_req, flange.tReq);
    EXPECT_EQ(found.t_given, flange.at(8));
}

// A reverse flange with a full face gasket leaves members of the state as an earlier flange set them.
TEST_F(Results, TellsNothingThatAnotherFlangeLeft) {
    flange.run();
    EXPECT_GT(found.G, 0.0f);
    EXPECT_GT(found.lambda, 0.0f);
    flange.set({{2, 5.0f}, {16, 0.0f}, {17, 0.0f}, {18, 0.0f}}); // a ring has no stress factors
    flange.run();
    EXPECT_NE(FLANGE.K, 0.0f);
    EXPECT_EQ(found.lambda, TARVANE_NO_VALUE);
    EXPECT_EQ(found.Yr, TARVANE_NO_VALUE);
    EXPECT_EQ(found.t_channel, TARVANE_NO_VALUE);
}

// ---- modulus -------------------------------------------------------------------------------------------

TEST_F(Results, ModulusStatus) {
    const auto status_of = [](std::string_view chart, Real temperature, Int reference) {
        SET_CHART(chart);
        ASMEMOD(temperature, reference, ASME_VIII_1);
        int32_t status = -1;
        ::MODULUS_STATUS(&status);
        return status;
    };
    EXPECT_EQ(status_of("CS-2", 300.0f, 1), TARVANE_MODULUS_OF_TABLE);
    EXPECT_EQ(status_of("CS-2", 300.0f, 0), TARVANE_MODULUS_OF_CHART);
    EXPECT_EQ(status_of("CS-2", 2000.0f, 0), TARVANE_MODULUS_BEYOND_CHART);
    EXPECT_EQ(status_of("", 300.0f, 0), TARVANE_MODULUS_CARBON_STEEL);
    EXPECT_EQ(status_of("CS-2", 300.0f, 231), TARVANE_MODULUS_CARBON_STEEL);
    MODULE_DIR = Text<256>("/nowhere");
    SYSTEM_DIR = Text<260>("/nowhere");
    MODULE_DIR_LENGTH = SYSTEM_DIR_LENGTH = 8;
    RESET_MATERIALS();
    EXPECT_EQ(status_of("", 300.0f, 1), TARVANE_NO_MODULUS);
    fresh_engine();
    int32_t status = -1;
    ::MODULUS_STATUS(&status);
    EXPECT_EQ(status, TARVANE_MODULUS_OF_TABLE);
}

// The worse of the two temperatures counts.
TEST_F(Results, ModulusOfTheFinalPass) {
    flange.run();
    EXPECT_EQ(found.modulus_status, TARVANE_MODULUS_OF_TABLE);
    EXPECT_EQ(found.E_hot, FLANGE.Ehot);
    flange.at(34) = 231.0f;
    flange.run();
    EXPECT_EQ(found.modulus_status, TARVANE_MODULUS_CARBON_STEEL);
}

// ---- openings ------------------------------------------------------------------------------------------

struct Opening {
    Real d1, d2, edge1, edge2, pitch; // in a head of 40 in.
    Int state;
    std::vector<Int> rules;
};

TEST_F(Results, OpeningsByEachRuleOfUG39) {
    // Each limit from both sides; the tolerance of the rules is between them.
    const Opening openings[] = {
        {4.0f, 0.0f, 1.0f, 0.0f, 0.0f, TARVANE_OPENINGS_APART, {}},
        {20.0f, 0.0f, 5.0f, 0.0f, 0.0f, TARVANE_OPENINGS_APART, {}},
        {20.01f, 0.0f, 5.1f, 0.0f, 0.0f, TARVANE_OPENINGS_IN_VIOLATION, {TARVANE_OPENING_D1_LARGE}},
        {4.0f,
         0.0f,
         0.99f,
         0.0f,
         0.0f,
         TARVANE_OPENINGS_IN_VIOLATION,
         {TARVANE_OPENING_D1_AT_EDGE}},
        {4.0f, 4.0f, 1.0f, 1.0f, 8.0f, TARVANE_OPENINGS_APART, {}},
        {4.0f, 4.0f, 1.0f, 1.0f, 7.99f, TARVANE_OPENINGS_BY_FACTOR, {}},
        {4.0f, 4.0f, 1.0f, 1.0f, 5.0f, TARVANE_OPENINGS_BY_FACTOR, {}},
        {4.0f,
         4.0f,
         1.0f,
         0.99f,
         5.0f,
         TARVANE_OPENINGS_IN_VIOLATION,
         {TARVANE_OPENING_D2_AT_EDGE}},
        {4.0f, 4.0f, 1.0f, 0.99f, 8.0f, TARVANE_OPENINGS_APART, {}},
        {4.0f,
         4.0f,
         1.0f,
         1.0f,
         4.99f,
         TARVANE_OPENINGS_IN_VIOLATION,
         {TARVANE_OPENINGS_NEAR, TARVANE_OPENING_LIGAMENT}},
        {9.9f, 10.2f, 5.0f, 5.0f, 30.0f, TARVANE_OPENINGS_IN_VIOLATION, {TARVANE_OPENINGS_LARGE}},
        {1.0f,
         21.0f,
         5.0f,
         6.0f,
         30.0f,
         TARVANE_OPENINGS_IN_VIOLATION,
         {TARVANE_OPENING_D2_LARGE, TARVANE_OPENINGS_LARGE}},
        {30.0f,
         30.0f,
         0.0f,
         0.0f,
         31.0f,
         TARVANE_OPENINGS_IN_VIOLATION,
         {TARVANE_OPENING_D1_LARGE, TARVANE_OPENING_D2_LARGE, TARVANE_OPENINGS_LARGE,
          TARVANE_OPENINGS_NEAR, TARVANE_OPENING_LIGAMENT, TARVANE_OPENING_D1_AT_EDGE,
          TARVANE_OPENING_D2_AT_EDGE}},
    };
    for (const Opening& o : openings) {
        for (const Int gate : {0, 1}) {
            IWRITE = gate;
            OPENINGS_CALL call{.kind = BLIND_COVER,
                               .headDia = 40.0f,
                               .d1 = o.d1,
                               .d2 = o.d2,
                               .edge1 = o.edge1,
                               .edge2 = o.edge2,
                               .pitch = o.pitch,
                               .material = 10,
                               .Cin = 0.0f};
            PATTERNED_OPENINGS(call);
            EXPECT_EQ(call.found.state, o.state) << o.d1 << ' ' << o.pitch;
            std::vector<Int> rules;
            for (Int i = 0; i < call.found.violations; ++i)
                rules.push_back(call.found.rule[i]);
            EXPECT_EQ(rules, o.rules) << o.d1 << ' ' << o.pitch;
        }
    }
}

TEST_F(Results, OpeningsOfACoverWithTheirFigures) {
    flange.set({{2, 7.0f}, {64, 3.0f}, {65, 3.0f}, {66, 0.5f}, {67, 2.0f}, {68, 5.0f}, {69, 1.0f}});
    flange.run();
    EXPECT_EQ(found.openings, TARVANE_OPENINGS_IN_VIOLATION);
    ASSERT_EQ(found.opening_violations, 1);
    EXPECT_EQ(found.opening_rule[0], TARVANE_OPENING_D1_AT_EDGE);
    EXPECT_EQ(found.opening_found[0], 0.5f);
    EXPECT_EQ(found.opening_limit[0], 0.75f);
    EXPECT_EQ(found.opening_found[1], TARVANE_NO_VALUE);
    EXPECT_EQ(found.opening_factor, FLANGE.coverFactor);
    flange.at(69) = 0.0f;
    flange.run();
    EXPECT_EQ(found.openings, TARVANE_NO_OPENINGS);
    EXPECT_EQ(found.opening_factor, TARVANE_NO_VALUE);
}

// ---- setters -------------------------------------------------------------------------------------------

TEST_F(Results, EditionIsSetWithoutAFlange) {
    const auto set = [](int32_t rules, int32_t a98) { ::SET_EDITION(&rules, &a98); };
    const auto are = [](bool rules, Int a98) {
        EXPECT_EQ(NEW_DIV_2_RULES, rules);
        EXPECT_EQ(CODE_A98_ADDENDA, a98);
    };
    are(false, 0);
    set(1, -1);
    are(true, 0);
    set(-1, 1);
    are(true, 1);
    set(-1, -1);
    are(true, 1);
    set(0, 0);
    are(false, 0);
    set(1, 1);
    RESET_ENGINE();
    are(false, 0);
}

// The same as a stand-alone call that is refused leaves, and with the same results.
TEST_F(Results, EditionByItsSetterIsThatOfAStandAloneCall) {
    flange.code = 2;
    moduleCode = 2;
    const int32_t on = 1, as_it_is = -1;
    ::SET_EDITION(&on, &as_it_is);
    flange.run();
    const TARVANE_FLANGE_RESULTS by_setter = found;
    EXPECT_EQ(by_setter.new_div2_rules, 1);

    fresh_engine();
    moduleCode = 2;
    SampleFlange empty;
    empty.elements.fill(0.0f);
    empty.at(1) = -1.0f;
    for (Real& factor : empty.units())
        factor = 1.0f;
    empty.code = 2;
    empty.element = 0;
    empty.run();
    EXPECT_EQ(found.status, TARVANE_REFUSED);
    IWRITE = IWRTFL = 1;
    flange.run();
    TARVANE_FLANGE_RESULTS by_call = found;
    by_call.serial = by_setter.serial;
    EXPECT_EQ(std::memcmp(&by_call, &by_setter, sizeof by_call), 0);

    // A stand-alone call sets them again.
    empty.div2Edition = 1;
    empty.run();
    EXPECT_FALSE(NEW_DIV_2_RULES);
}

TEST_F(Results, DecimalCommaIsSetWithoutAFlange) {
    const auto shown = [] {
        std::string line = "P 12.5 psig";
        ::REPLACE_DECIMALS_WITH_COMMAS(line.data(), static_cast<int32_t>(line.size()));
        return line;
    };
    const int32_t on = 1, off = 0, low_bit_off = 2;
    EXPECT_EQ(shown(), "P 12.5 psig");
    ::SET_DECIMAL_COMMA(&on);
    EXPECT_EQ(shown(), "P 12,5 psig");
    ::SET_DECIMAL_COMMA(&low_bit_off);
    EXPECT_EQ(shown(), "P 12.5 psig");
    ::SET_DECIMAL_COMMA(&on);
    flange.run(); // a flange without commas
    EXPECT_EQ(shown(), "P 12.5 psig");
    ::SET_DECIMAL_COMMA(&on);
    ::SET_DECIMAL_COMMA(&off);
    EXPECT_EQ(shown(), "P 12.5 psig");
    ::SET_DECIMAL_COMMA(&on);
    RESET_ENGINE();
    EXPECT_EQ(shown(), "P 12.5 psig");
}

} // namespace
} // namespace tarvane
