// The block of GETMDMTRESULTS: rules, ratio, reductions, UG-20(f), exemptions, and the rule of the lowest
// temperature.
#include "mdmt_fixture.h"

#include "tarvane/tarvane.h"
#include "toughness/material_notes.h"
#include "toughness/mdmt_div2.h"
#include "toughness/mdmt_stages.h"

#include <random>

namespace tarvane {
namespace {

using toughness_test::element_of;
using Found = TARVANE_MDMT_RESULTS;

class MdmtResults : public toughness_test::ToughnessTest {
  protected:
    MdmtResults() { RESET_MDMT_RESULTS(); }
    ~MdmtResults() override { RESET_MDMT_RESULTS(); }

    MDMT_CALL a;

    Found of(const MDMT_CALL& call) {
        a = call;
        MDMT_ELEMENT(a);
        return *::GETMDMTRESULTS();
    }
    Found of(Int Curve, Real Tg, Real Tr = -1.0f) { return of(element_of(Curve, Tg, Tr)); }
    static MDMT_CALL candidate(Int Curve, Real Tg) {
        MDMT_CALL call = element_of(Curve, Tg);
        call.Ug20Candidate = 1;
        return call;
    }
    static void am_218(MDMT_CALL& call) { call.Code = 2; }
};

TEST_F(MdmtResults, BeginAfresh) {
    Found zeros{};
    zeros.version = TARVANE_MDMT_RESULTS_VERSION;
    zeros.bytes = sizeof zeros;
    const Found* found = ::GETMDMTRESULTS();
    EXPECT_EQ(std::memcmp(found, &zeros, sizeof zeros), 0);
    of(CURVE_B, 1.0f, 0.5f);
    EXPECT_EQ(found->serial, 1);
    EXPECT_NE(found->t_curve, TARVANE_NO_VALUE);
    of(EXEMPT_CURVE, 1.0f);
    EXPECT_EQ(found->serial, 2);
    EXPECT_EQ(found->t_curve, TARVANE_NO_VALUE);
    ::RESET_ENGINE();
    EXPECT_EQ(std::memcmp(found, &zeros, sizeof zeros), 0);
}

TEST_F(MdmtResults, AreTheSameInSilenceAndAsReturned) {
    std::mt19937 random(3);
    const auto between = [&](Real low, Real high) {
        return std::uniform_real_distribution<Real>(low, high)(random);
    };
    const auto flip = [&] { return static_cast<Int>(random() % 2); };
    material(-50, -30);
    for (int i = 0; i < 2000; ++i) {
        MDMT_CALL call = element_of(1 + i % 6, between(0.2f, 4.2f), between(-0.5f, 2.0f));
        call.c = between(0.0f, 0.1f);
        call.Code = 1 + flip();
        call.Pwht = flip(), call.Credit = flip(), call.Ug20Candidate = flip();
        call.Sy = 38000.0f;
        G_CURRENT_DIV_2 = i % 5 == 0;
        G_TOUGHNESS.FloorSwitch = flip();
        G_USE_A6 = flip();
        impact_table(i % 3 == 0 ? "1111" : "0000");
        IWRITE = 1;
        Found loud = of(call);
        const MDMT_CALL reported = a;
        IWRITE = 0;
        of(call);
        IWRITE = 1;
        loud.serial = ::GETMDMTRESULTS()->serial;
        ASSERT_EQ(std::memcmp(&loud, ::GETMDMTRESULTS(), sizeof loud), 0) << i;
        EXPECT_TRUE(loud.t_min == TARVANE_NO_VALUE || loud.t_min == reported.Tmin) << i;
        EXPECT_TRUE(loud.mdmt == TARVANE_NO_VALUE || loud.mdmt == reported.Mdmt) << i;
        EXPECT_TRUE(loud.ratio == TARVANE_NO_VALUE || loud.ratio == reported.Ratio) << i;
        if (loud.status != TARVANE_MDMT_CALCULATED) {
            EXPECT_EQ(loud.lowest, TARVANE_NO_VALUE);
            continue;
        }
        // The lowest one of those that there are.
        if (loud.lowest_by == TARVANE_LOWEST_AS_REQUIRED) continue;
        Real lowest = loud.t_min;
        if (loud.mdmt != TARVANE_NO_VALUE) lowest = min(lowest, loud.mdmt);
        if (loud.ug20f == TARVANE_UG20F_APPLIES) lowest = min(lowest, reported.Tug20);
        EXPECT_EQ(loud.lowest, lowest) << i;
        const bool applies = call.Curve <= CURVE_D && loud.rules == TARVANE_MDMT_UCS_66 &&
                             reported.Tug20 != UG20_NOT_APPLICABLE;
        EXPECT_EQ(loud.ug20f == TARVANE_UG20F_APPLIES, applies) << i;
    }
}

// ---- rules -------------------------------------------------------------------------------------------

TEST_F(MdmtResults, Rules) {
    EXPECT_EQ(of(CURVE_B, 1.0f).rules, TARVANE_MDMT_UCS_66);
    MDMT_CALL call = element_of(CURVE_B, 1.0f);
    am_218(call);
    EXPECT_EQ(of(call).rules, TARVANE_MDMT_AM_218);
    G_CURRENT_DIV_2 = true;
    EXPECT_EQ(of(call).rules, TARVANE_MDMT_3_11);
    G_FORCE_DIV1 = 1;
    EXPECT_EQ(of(call).rules, TARVANE_MDMT_UCS_66);
}

TEST_F(MdmtResults, TooThick) {
    MDMT_CALL call = element_of(CURVE_B, 4.1f);
    call.c = 0.1f;
    EXPECT_EQ(of(call).status, TARVANE_MDMT_CALCULATED);
    call.Tg = 4.11f;
    const Found f = of(call);
    EXPECT_EQ(f.status, TARVANE_MDMT_BEYOND_LIMIT);
    EXPECT_EQ(f.impact_tests, 1);
    EXPECT_EQ(f.tg, 4.11f);
    EXPECT_EQ(f.tg_limit, 4.0f);
    EXPECT_NEAR(f.tg_net, 4.01f, 1e-5f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_NOTHING);
}

TEST_F(MdmtResults, WhereTheTemperatureCameFrom) {
    EXPECT_EQ(of(CURVE_B, 1.0f).t_curve_by, TARVANE_T_OF_POLYNOMIAL);
    G_TOUGHNESS.CurveTables = 1;
    const Found f = of(CURVE_B, 1.0f);
    EXPECT_EQ(f.t_curve_by, TARVANE_T_OF_CURVE_TABLE);
    EXPECT_EQ(f.t_curve, 31.0f);
    MDMT_CALL call = element_of(CURVE_A, 1.0f);
    am_218(call);
    EXPECT_EQ(of(call).t_curve_by, TARVANE_T_OF_POLYNOMIAL);
    call.Curve = CURVE_B;
    EXPECT_EQ(of(call).t_curve_by, TARVANE_T_OF_CURVE_TABLE);
}

TEST_F(MdmtResults, Division2) {
    G_CURRENT_DIV_2 = true;
    require_temperature("-10");
    MDMT_CALL call = element_of(CURVE_B, 1.0f, -0.6f);
    call.Sy = 38000.0f;
    Found f = of(call);
    EXPECT_EQ(f.t_curve_by, TARVANE_T_OF_FIGURE_3_7);
    EXPECT_EQ(f.t_curve, FIGURE_3_7(CURVE_B, 1.0f));
    EXPECT_EQ(f.ratio_kind, TARVANE_STRESS_RATIO);
    EXPECT_EQ(f.ratio, 0.6f);
    EXPECT_EQ(f.mdmt, f.t_min - f.reduction);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_REDUCTION);
    EXPECT_EQ(f.required, -10.0f);
    EXPECT_EQ(f.impact_tests, -10.0f < f.mdmt ? 1 : 0);
    require_temperature("-100");
    EXPECT_EQ(of(call).impact_tests, 1);
    require_temperature("50");
    EXPECT_EQ(of(call).impact_tests, 0);
    call.Pwht = 1;
    EXPECT_EQ(of(call).t_curve_by, TARVANE_T_OF_FIGURE_3_8);
    call.Curve = IMPACT_TESTED_CURVE;
    EXPECT_EQ(of(call).curve_taken, CURVE_A);
    EXPECT_EQ(of(call).curve, IMPACT_TESTED_CURVE);
    // The limit itself, and above it.
    call.Curve = CURVE_B;
    call.Tr = -0.24f;
    f = of(call);
    EXPECT_EQ(f.exempt, TARVANE_EXEMPT_BY_RATIO);
    EXPECT_EQ(f.t_curve_by, TARVANE_T_OF_LOW_RATIO);
    EXPECT_EQ(f.lowest, -155.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_LOW_RATIO);
    call.Tr = -0.241f;
    EXPECT_EQ(of(call).exempt, TARVANE_NOT_EXEMPT);
    call.Curve = 0;
    f = of(call);
    EXPECT_EQ(f.status, TARVANE_MDMT_NO_CURVE);
    EXPECT_EQ(f.exempt, TARVANE_EXEMPT_NO_CARBON_STEEL);
}

TEST_F(MdmtResults, TheFiguresAlone) {
    MDMT_DIV2_CALL call{.Sy = 38000.0f, .Estar = 1.0f, .Tnom = 1.0f, .Curve = CURVE_C, .Tr = 0.5f};
    MDMT_DIV2_FIGURES(call);
    const Found f = *::GETMDMTRESULTS();
    EXPECT_EQ(f.serial, 1);
    EXPECT_EQ(f.rules, TARVANE_MDMT_3_11);
    EXPECT_EQ(f.tg, 1.0f);
    EXPECT_EQ(f.t_min, call.Tcurve);
    EXPECT_EQ(f.mdmt, call.Mdmt);
    EXPECT_EQ(f.ratio_kind, TARVANE_THICKNESS_RATIO);
}

// ---- ratio, credit, floor ----------------------------------------------------------------------------

TEST_F(MdmtResults, RatioAndReduction) {
    MDMT_CALL call = element_of(CURVE_B, 1.5f, 0.9f);
    call.c = 0.1f, call.Cext = 0.05f, call.TgSr = 1.4f;
    Found f = of(call);
    EXPECT_EQ(f.ratio_kind, TARVANE_THICKNESS_RATIO);
    EXPECT_FLOAT_EQ(f.t_ratio, 1.25f);
    EXPECT_FLOAT_EQ(f.ratio, 0.72f);
    EXPECT_EQ(f.ratio_limit, 0.35f);
    EXPECT_EQ(f.reduction_by_ratio, FIG_UCS_66_1(f.ratio, 0));
    EXPECT_EQ(f.reduction, f.reduction_by_ratio);
    EXPECT_EQ(f.lowest, f.t_min - f.reduction);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_REDUCTION);
    SETUP[57].real = 1.0f;
    f = of(call);
    EXPECT_EQ(f.older_edition, 1);
    EXPECT_EQ(f.ratio_limit, 0.4f);
    SETUP[57].real = 0.0f;
    call.PadGoverns = 1;
    call.Ratio = 0.9f, call.Reduction = 12.0f;
    f = of(call);
    EXPECT_EQ(f.pad_governs, 1);
    EXPECT_EQ(f.ratio, 0.9f);
    EXPECT_EQ(f.reduction, 12.0f);
    G_USE_A6 = 0;
    f = of(call);
    EXPECT_EQ(f.reductions_allowed, 0);
    EXPECT_EQ(f.reduction, 0.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_CURVE);
    call.c = 2.0f; // nothing left for a ratio
    f = of(call);
    EXPECT_EQ(f.ratio_kind, TARVANE_NO_RATIO);
    EXPECT_EQ(f.ratio, TARVANE_NO_VALUE);
    EXPECT_EQ(f.mdmt, TARVANE_NO_VALUE);
    EXPECT_EQ(f.lowest, f.t_min);
}

TEST_F(MdmtResults, LowRatios) {
    EXPECT_EQ(of(CURVE_B, 1.0f, -0.351f).exempt, TARVANE_NOT_EXEMPT);
    Found f = of(CURVE_B, 1.0f, -0.35f);
    EXPECT_EQ(f.exempt, TARVANE_EXEMPT_BY_RATIO);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_REDUCTION);
    G_TOUGHNESS.FloorSwitch = 1;
    f = of(CURVE_B, 1.0f, -0.35f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_LOW_RATIO);
    EXPECT_EQ(f.lowest, -155.0f);
    EXPECT_EQ(of(CURVE_B, 1.0f, -0.351f).lowest_by, TARVANE_LOWEST_BY_REDUCTION);
    G_USE_A6 = 0;
    EXPECT_EQ(of(CURVE_B, 1.0f, -0.35f).exempt, TARVANE_NOT_EXEMPT);
}

TEST_F(MdmtResults, Credit) {
    MDMT_CALL call = element_of(CURVE_B, 1.0f);
    call.Pwht = 1;
    EXPECT_EQ(of(call).credit, 0);
    call.Credit = 1;
    const Found f = of(call);
    EXPECT_EQ(f.credit, 1);
    EXPECT_EQ(f.t_min, f.t_curve - 30.0f);
    EXPECT_EQ(f.lowest, f.t_min);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_CREDIT);
    am_218(call);
    EXPECT_EQ(of(call).credit, 1);
    EXPECT_EQ(of(call).lowest_by, TARVANE_LOWEST_BY_CREDIT);
}

TEST_F(MdmtResults, HeatTreatmentThatIsRequired) {
    require_temperature("-55");
    Found f = of(CURVE_D, 0.5f, -0.8f);
    EXPECT_EQ(f.pwht_required, 1);
    EXPECT_EQ(f.reduction, 0.0f);
    EXPECT_NE(f.reduction_by_ratio, 0.0f);
    EXPECT_EQ(f.estar_used, 1.0f);
    require_temperature("-54");
    EXPECT_EQ(of(CURVE_D, 0.5f, -0.8f).pwht_required, 0);
}

// ---- UG-20(f) ----------------------------------------------------------------------------------------

TEST_F(MdmtResults, Ug20f) {
    EXPECT_EQ(of(CURVE_A, 0.4f).ug20f, TARVANE_UG20F_NOT_ASKED);
    Found f = of(candidate(CURVE_A, 0.5f));
    EXPECT_EQ(f.ug20f, TARVANE_UG20F_APPLIES);
    EXPECT_EQ(f.t_ug20f, -20.0f);
    EXPECT_EQ(f.lowest, -20.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_UG_20F);
    f = of(candidate(CURVE_A, 0.51f));
    EXPECT_EQ(f.ug20f, TARVANE_UG20F_TOO_THICK);
    EXPECT_EQ(f.t_ug20f, TARVANE_NO_VALUE);
    EXPECT_EQ(of(candidate(CURVE_B, 1.0f)).ug20f, TARVANE_UG20F_APPLIES);
    EXPECT_EQ(of(candidate(CURVE_B, 1.01f)).ug20f, TARVANE_UG20F_TOO_THICK);
    MDMT_CALL hot = candidate(CURVE_A, 0.5f);
    hot.Tdesign = 650.9f;
    EXPECT_EQ(of(hot).ug20f, TARVANE_UG20F_APPLIES);
    hot.Tdesign = 651.0f;
    f = of(hot);
    EXPECT_EQ(f.ug20f, TARVANE_UG20F_TOO_HOT);
    EXPECT_EQ(f.lowest, f.t_min);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_CURVE);
    // As low as the curve, which then counts.
    f = of(candidate(CURVE_D, 0.5f));
    EXPECT_EQ(f.ug20f, TARVANE_UG20F_APPLIES);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_CURVE);
    // The credit brings the curve below it, above -20 F and below.
    MDMT_CALL treated = candidate(CURVE_B, 0.6f);
    treated.Pwht = treated.Credit = 1;
    f = of(treated);
    EXPECT_GT(f.t_curve, -20.0f);
    EXPECT_LT(f.t_min, -20.0f);
    EXPECT_EQ(f.ug20f, TARVANE_UG20F_APPLIES);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_CREDIT);
    G_TOUGHNESS.NoUg20f = 1;
    EXPECT_EQ(of(candidate(CURVE_A, 0.5f)).ug20f, TARVANE_UG20F_SWITCHED_OFF);
}

// ---- impact tests, exemptions ------------------------------------------------------------------------

TEST_F(MdmtResults, ImpactTestOfTheSpecification) {
    material(-50, -30);
    impact_table("1100");
    Found f = of(IMPACT_TESTED_CURVE, 1.0f, -0.8f);
    EXPECT_EQ(f.t_curve_by, TARVANE_T_OF_SPECIFICATION);
    EXPECT_EQ(f.impact_temperature, -50.0f);
    EXPECT_EQ(f.reduction_66g, 30.0f);
    EXPECT_NEAR(f.reduction_by_ratio, 20.0f, 1e-4f);
    EXPECT_EQ(f.reduction, 30.0f);
    EXPECT_EQ(f.ug20f, TARVANE_UG20F_IMPACT_TESTED);
    EXPECT_EQ(f.lowest, -80.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_REDUCTION);
    impact_table("0000");
    f = of(IMPACT_TESTED_CURVE, 1.0f, -0.8f);
    EXPECT_EQ(f.reduction_66g, TARVANE_NO_VALUE);
    EXPECT_EQ(f.lowest, -50.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_IMPACT_TEST);
    MDMT_CALL call = element_of(IMPACT_TESTED_CURVE, 1.0f);
    am_218(call);
    f = of(call);
    EXPECT_EQ(f.t_curve_by, TARVANE_T_OF_SPECIFICATION);
    EXPECT_EQ(f.lowest, -50.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_IMPACT_TEST);
}

TEST_F(MdmtResults, ImpactTestByTheUser) {
    material(100);
    require_temperature("-35");
    for (const Int code : {1, 2}) {
        MDMT_CALL call = element_of(IMPACT_TESTED_CURVE, 1.0f, -0.8f);
        call.Code = code;
        impact_table("0001");
        Found f = of(call);
        EXPECT_EQ(f.t_curve_by, TARVANE_T_OF_USER);
        EXPECT_EQ(f.impact_temperature, -50.0f);
        EXPECT_EQ(f.lowest, -50.0f);
        for (const char* switches : {"0000", "0001"}) { // no table; no such name in it
            impact_table(switches, "SA-333 6");
            f = of(call);
            EXPECT_EQ(f.t_curve_by, TARVANE_T_AS_REQUIRED) << code << switches;
            EXPECT_EQ(f.lowest, -35.0f);
            EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_AS_REQUIRED);
            EXPECT_EQ(f.impact_temperature, TARVANE_NO_VALUE);
        }
    }
    impact_table("0011");
    const Found f = of(IMPACT_TESTED_CURVE, 1.0f, -0.8f);
    EXPECT_EQ(f.reduction_ug84, 10.0f);
    EXPECT_EQ(f.lowest, -60.0f);
}

TEST_F(MdmtResults, ExemptByCurveAndByGrade) {
    Found f = of(EXEMPT_CURVE, 1.0f);
    EXPECT_EQ(f.status, TARVANE_MDMT_NO_CURVE);
    EXPECT_EQ(f.exempt, TARVANE_EXEMPT_BY_CURVE);
    EXPECT_EQ(of(7, 1.0f).exempt, TARVANE_NOT_EXEMPT);
    Real Tmin, Mdmt, Ratio, one, two;
    UHA51_NOTE(1, "SA-516 70", Tmin, Mdmt, Ratio, one, two);
    EXPECT_EQ(::GETMDMTRESULTS()->serial, 2) << "nothing is done";
    UHA51_NOTE(1, "SA-240 304", Tmin, Mdmt, Ratio, one, two);
    f = *::GETMDMTRESULTS();
    EXPECT_EQ(f.serial, 3);
    EXPECT_EQ(f.rules, TARVANE_MDMT_UHA_51);
    EXPECT_EQ(f.exempt, TARVANE_EXEMPT_BY_UHA_51);
    EXPECT_EQ(f.lowest, -320.0f);
    EXPECT_EQ(f.lowest_by, TARVANE_LOWEST_BY_UHA_51);
}

} // namespace
} // namespace tarvane
