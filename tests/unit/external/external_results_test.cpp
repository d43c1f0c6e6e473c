// The block of GETEXTERNALRESULTS: what the report and the arguments show, and why.
#include "external/external_fixture.h"

#include "external/stress_method.h"
#include "materials/table_g.h"
#include "tarvane/tarvane.h"

#include <random>

namespace tarvane::external_test {
namespace {

constexpr int GIVEN = TARVANE_AT_GIVEN, THICKNESS = TARVANE_AT_THICKNESS,
              LENGTH = TARVANE_AT_LENGTH;
using Found = TARVANE_EXTERNAL_RESULTS;

class ExternalResults : public ExternalTest {
  protected:
    // What was found of an element that is calculated in silence.
    static Found of(const Vessel& element) {
        quiet(element);
        return *::GETEXTERNALRESULTS();
    }
    static Vessel with_length(Real Length) {
        Vessel e(CYLINDER);
        e.Length = Length;
        return e;
    }
    // A cylinder of this D/t without allowances.
    static Vessel thick(Real dt) {
        Vessel e(CYLINDER);
        e.D = 10.0f, e.DoGiven = 1, e.t = 10.0f / dt, e.c = 0.0f, e.Length = 20.0f;
        return e;
    }
    static std::string text(const char (&field)[8]) {
        return std::string(trimmed({field, sizeof field}));
    }
};

TEST_F(ExternalResults, BeginAfresh) {
    Found zeros{};
    zeros.version = TARVANE_EXTERNAL_RESULTS_VERSION;
    zeros.bytes = sizeof zeros;
    ::RESET_ENGINE();
    const Found* found = ::GETEXTERNALRESULTS();
    EXPECT_EQ(std::memcmp(found, &zeros, sizeof zeros), 0);
    SETUP[0].whole = ASME_VIII_1;
    quiet(Vessel(CYLINDER));
    EXPECT_EQ(found->serial, 1);
    EXPECT_NE(found->slen, TARVANE_NO_VALUE);
    EXPECT_EQ(found->k0, TARVANE_NO_VALUE);
    quiet(Vessel(ELLIPTICAL));
    EXPECT_EQ(found->serial, 2);
    EXPECT_EQ(found->slen, TARVANE_NO_VALUE);
    EXPECT_EQ(found->evaluations[LENGTH], 0);
    EXPECT_EQ(found->pressure[LENGTH], TARVANE_NO_VALUE);
    EXPECT_EQ(found->k0, ELLIPSE_K0(2.0f));
    ::RESET_ENGINE();
    EXPECT_EQ(std::memcmp(found, &zeros, sizeof zeros), 0);
}

TEST_F(ExternalResults, AreTheSameInSilence) {
    std::mt19937 random(5);
    const auto between = [&](Real low, Real high) {
        return std::uniform_real_distribution<Real>(low, high)(random);
    };
    for (int i = 0; i < 200; ++i) {
        Vessel e(1 + i % 6, i % 3 == 0 ? "HA-1" : "CS-2");
        GLOBALS_mp_G_NUSE_CASE2286 = i / 6 % 2;
        e.t = between(0.2f, 8.0f), e.Length = between(2.0f, 400.0f);
        e.P = between(-1.0f, 60.0f), e.Alpha = between(5.0f, 80.0f),
        e.Temp = between(70.0f, 900.0f);
        IWRITE = 1;
        e.Print = 1;
        const Vessel reported = Vessel(e).run();
        Found loud = *::GETEXTERNALRESULTS();
        ExternalTest::reported();
        IWRITE = 0;
        const Vessel silent = quiet(e);
        loud.serial = ::GETEXTERNALRESULTS()->serial;
        EXPECT_EQ(std::memcmp(&loud, ::GETEXTERNALRESULTS(), sizeof loud), 0) << i;
        EXPECT_EQ(reported.MAEP, silent.MAEP);
    }
}

// ---- rules, chart ------------------------------------------------------------------------------------

TEST_F(ExternalResults, MethodAndRules) {
    const struct {
        Int code, older, case_2286, element;
        Real Fy;
        int method, rules;
    } cases[] = {
        {1, 0, 0, CYLINDER, 3e4f, TARVANE_METHOD_CHART, TARVANE_RULES_UG_28},
        {1, 1, 0, CYLINDER, 3e4f, TARVANE_METHOD_CHART, TARVANE_RULES_UG_28},
        {1, 0, 0, SPHERE, 3e4f, TARVANE_METHOD_CHART, TARVANE_RULES_UG_33},
        {1, 0, 0, CONE, 3e4f, TARVANE_METHOD_CHART, TARVANE_RULES_UG_33},
        {1, 0, 1, CYLINDER, 3e4f, TARVANE_METHOD_BUCKLING, TARVANE_RULES_CASE_2286},
        {1, 0, 1, CYLINDER, 0.0f, TARVANE_METHOD_CHART, TARVANE_RULES_UG_28},
        {2, 0, 0, CYLINDER, 3e4f, TARVANE_METHOD_BUCKLING, TARVANE_RULES_4_4},
        {2, 0, 1, CYLINDER, 3e4f, TARVANE_METHOD_BUCKLING, TARVANE_RULES_4_4},
        {2, 1, 0, CYLINDER, 3e4f, TARVANE_METHOD_CHART, TARVANE_RULES_AD_300},
        {2, 1, 1, CYLINDER, 3e4f, TARVANE_METHOD_BUCKLING, TARVANE_RULES_CASE_2286},
        {2, 0, 0, CYLINDER, 0.0f, TARVANE_METHOD_CHART, TARVANE_RULES_AD_300},
    };
    for (const auto& c : cases) {
        SETUP[0].whole = c.code;
        G_NUSE_OLD_DIV_2 = c.older;
        GLOBALS_mp_G_NUSE_CASE2286 = c.case_2286;
        Vessel e(c.element);
        e.Fy = c.Fy;
        const Found f = of(e);
        EXPECT_EQ(f.status, 1);
        EXPECT_EQ(f.method, c.method) << c.code << c.older << c.case_2286 << c.Fy;
        EXPECT_EQ(f.rules, c.rules) << c.code << c.older << c.case_2286 << c.Fy;
        EXPECT_EQ(f.code, c.code);
        EXPECT_EQ(f.older_division_2, c.older);
        EXPECT_EQ(f.case_2286, c.case_2286);
        EXPECT_EQ(f.factor_b[GIVEN] != TARVANE_NO_VALUE, c.method == TARVANE_METHOD_CHART);
        EXPECT_EQ(f.fs[GIVEN] != TARVANE_NO_VALUE, c.method == TARVANE_METHOD_BUCKLING);
    }
}

TEST_F(ExternalResults, CodesThatAreNotCalculated) {
    SETUP[0].whole = EN_13445;
    const Found f = of(Vessel(CYLINDER));
    EXPECT_EQ(f.status, 2);
    EXPECT_EQ(f.code, EN_13445);
    EXPECT_EQ(f.method, TARVANE_NO_METHOD);
    for (const float value : {f.maep, f.tca, f.slen, f.fail_ca, f.d_o, f.pressure[GIVEN]})
        EXPECT_EQ(value, TARVANE_NO_VALUE);
}

TEST_F(ExternalResults, FlatCone) {
    Vessel cone(CONE);
    cone.Alpha = 60.0f;
    EXPECT_EQ(of(cone).method, TARVANE_METHOD_CHART);
    cone.Alpha = 60.1f;
    const Found f = of(cone);
    const Vessel flat = quiet(cone);
    EXPECT_EQ(f.method, TARVANE_METHOD_FLAT_HEAD);
    EXPECT_EQ(f.rules, TARVANE_RULES_UG_34);
    EXPECT_EQ(f.maep, flat.MAEP);
    EXPECT_EQ(f.tca, flat.Tca);
    EXPECT_EQ(f.d_o, flat.Do);
    EXPECT_EQ(f.evaluations[GIVEN], 0);
    EXPECT_EQ(f.fail_ca_by, 0);
}

TEST_F(ExternalResults, ChartThatWasTaken) {
    EXPECT_EQ(text(of(Vessel(CYLINDER, "HA-1")).chart_taken), "HA-1");
    Found f = of(Vessel(CYLINDER, "XY-9"));
    EXPECT_EQ(text(f.chart), "XY-9");
    EXPECT_EQ(text(f.chart_taken), "CS-2");
    EXPECT_EQ(f.carbon_steel, 0);
    EXPECT_EQ(of(Vessel(CYLINDER)).carbon_steel, 1);
    Vessel hot(CYLINDER, "CS-3"); // above 300 degrees that of CS-2
    hot.Temp = 301.0f;
    f = of(hot);
    EXPECT_EQ(text(f.chart_taken), "CS-2");
    EXPECT_EQ(f.temp_curve, 301.0f);
    remove_file("system", "ExtChartData.txt");
    RESET_MATERIALS();
    EXPECT_EQ(text(of(Vessel(CYLINDER)).chart_taken), "");
}

TEST_F(ExternalResults, TemperatureOfTheCurve) {
    Vessel e(CYLINDER);
    e.Temp = 700.0f;
    EXPECT_EQ(of(e).above_chart, 0);
    EXPECT_EQ(of(e).modulus_status, TARVANE_MODULUS_OF_CHART);
    e.Temp = 700.5f;
    const Found f = of(e);
    EXPECT_EQ(f.above_chart, 1);
    EXPECT_EQ(f.temp, 700.5f);
    EXPECT_EQ(f.temp_curve, 700.0f);
    EXPECT_EQ(f.modulus, 25.0e6f);
    EXPECT_EQ(f.modulus_status, TARVANE_MODULUS_BEYOND_CHART);
    by_buckling_stress();
    e.Temp = 300.0f;
    EXPECT_FLOAT_EQ(of(e).modulus, 28.3e6f); // that of the table
    EXPECT_EQ(of(e).modulus_status, TARVANE_MODULUS_OF_TABLE);
}

// ---- values of the stages ----------------------------------------------------------------------------

TEST_F(ExternalResults, StagesByTheCharts) {
    for (const Int element : {CYLINDER, ELLIPTICAL, TORISPHERICAL, SPHERE, CONE}) {
        Vessel e(element);
        e.Ut = 0.02f;
        const Found f = of(e);
        const Vessel r = quiet(e);
        EXPECT_EQ(f.maep, r.MAEP);
        EXPECT_EQ(f.tca, r.Tca);
        EXPECT_EQ(f.d_o, r.Do);
        EXPECT_EQ(f.fail_ca, r.FailCA);
        EXPECT_EQ(f.factor_a[GIVEN], r.FactorA);
        EXPECT_EQ(f.factor_b[GIVEN], r.FactorB);
        EXPECT_EQ(f.pressure[GIVEN], r.MAEP);
        EXPECT_EQ(f.evaluations[GIVEN], 1);
        EXPECT_EQ(f.search[GIVEN], TARVANE_NO_SEARCH);
        EXPECT_EQ(f.search[THICKNESS], TARVANE_SEARCH_FOUND);
        EXPECT_GT(f.evaluations[THICKNESS], 2);
        EXPECT_NEAR(f.pressure[THICKNESS], e.P, 3e-3f);
        EXPECT_NEAR(f.thickness[THICKNESS] / f.cos_alpha, r.Tca - e.c - e.Ut, 1e-5f);
        EXPECT_FLOAT_EQ(f.tc, e.t - e.c - e.Ut);
        EXPECT_FLOAT_EQ(f.thickness[GIVEN], f.tc * f.cos_alpha);
        for (const int stage : {GIVEN, THICKNESS}) {
            Real dt = 0.0f, ld = 0.0f, A = 0.0f;
            FACTOR_A(f.thickness[stage], f.diameter[stage], f.length[stage], e.k, element, dt, ld,
                     A);
            EXPECT_EQ(f.d_over_t[stage], dt);
            EXPECT_EQ(f.l_over_d[stage], ld);
            EXPECT_EQ(f.factor_a[stage], A);
            EXPECT_EQ(f.factor_b[stage], FACTOR_B(A, EXTERNAL.curve));
        }
        EXPECT_EQ(f.d_small != TARVANE_NO_VALUE, element == CONE);
    }
}

TEST_F(ExternalResults, StagesByBucklingStress) {
    by_buckling_stress();
    const Vessel e(CYLINDER);
    const Found f = of(e);
    const Vessel r = quiet(e);
    for (const int stage : {GIVEN, THICKNESS, LENGTH}) {
        const BUCKLING_CYLINDER alone = CC2286_CYLINDER(f.diameter[stage], f.length[stage],
                                                        f.thickness[stage], f.modulus, e.Fy);
        EXPECT_EQ(f.fhe[stage], alone.Fhe);
        EXPECT_EQ(f.fic[stage], alone.Fic);
        EXPECT_EQ(f.fs[stage], alone.FS);
        EXPECT_EQ(f.fha[stage], alone.Fha);
        EXPECT_EQ(f.pressure[stage], alone.Pa);
        EXPECT_EQ(f.d_over_t[stage], f.diameter[stage] / f.thickness[stage]);
    }
    EXPECT_EQ(f.fha[GIVEN], r.Fha);
    EXPECT_EQ(f.maep, r.MAEP);
    EXPECT_EQ(f.slen, r.Slen);
    EXPECT_NEAR(f.length[LENGTH], r.Slen, 0.05f);
    EXPECT_EQ(f.search[THICKNESS], TARVANE_SEARCH_FOUND);
    EXPECT_EQ(f.search[LENGTH], TARVANE_SEARCH_FOUND);

    Vessel cone(CONE);
    const Found c = of(cone);
    EXPECT_FLOAT_EQ(c.diameter[GIVEN], (c.d_o + c.d_small) / 2.0f / c.cos_alpha);
    EXPECT_FLOAT_EQ(c.length[GIVEN], cone.ConeLength / c.cos_alpha);
}

TEST_F(ExternalResults, WithoutAPressure) {
    Vessel e(CYLINDER);
    e.P = 0.001f;
    Found f = of(e);
    EXPECT_EQ(f.evaluations[THICKNESS], 0);
    EXPECT_EQ(f.tca, TARVANE_NO_VALUE);
    EXPECT_EQ(f.search[LENGTH], TARVANE_NO_SEARCH);
    EXPECT_EQ(f.slen, 0.0f);
    e.P = 0.0f;
    EXPECT_EQ(of(e).fail_ca, TARVANE_NO_VALUE);
    by_buckling_stress();
    EXPECT_EQ(of(e).slen, TARVANE_NO_VALUE);
    EXPECT_GT(of(e).maep, 0.0f);
    // An element without a formula: every value is the caller's own.
    f = of(Vessel(6));
    EXPECT_EQ(f.maep, TARVANE_NO_VALUE);
    EXPECT_EQ(f.evaluations[GIVEN], 0);
}

// ---- what governed ----------------------------------------------------------------------------------

TEST_F(ExternalResults, WhereFactorACameFrom) {
    write_file("library", "TableGData.txt", "[100]\n0.1 0.07\n60 0.07\n[400]\n0.1 0.07\n60 0.07\n");
    RESET_MATERIALS();
    EXPECT_EQ(of(Vessel(CYLINDER)).a_by[GIVEN], TARVANE_A_OF_CYLINDER);
    EXPECT_EQ(of(Vessel(SPHERE)).a_by[GIVEN], TARVANE_A_OF_SPHERE);
    GLOBALS_mp_G_NUSE_TABLEG = 1;
    Vessel e(CYLINDER); // D/t 258, then 776, for which the table has no answer
    EXPECT_EQ(of(e).table_g, 1);
    for (const Real tc : {0.375f, 0.125f}) {
        e.t = tc + e.c;
        Real answer = -1.0f;
        const Found f = of(e);
        tarvane::TABLE_G_FACTOR_A(f.d_over_t[GIVEN], f.l_over_d[GIVEN], answer);
        EXPECT_EQ(f.a_by[GIVEN], answer == -1.0f ? TARVANE_A_OF_CYLINDER : TARVANE_A_OF_TABLE_G);
    }
    EXPECT_EQ(of(Vessel(6)).a_by[GIVEN], TARVANE_NO_A);
}

TEST_F(ExternalResults, PartOfTheCurve) {
    const CHART_CURVE curve{.E = 29.0f,
                            .Aelastic = 5e-4f,
                            .Amax = 0.1f,
                            .Bmax = 11506.0f,
                            .c0 = 15006.0f,
                            .c1 = 4000.0f,
                            .c2 = 500.0f};
    EXPECT_EQ(CURVE_AT(5e-4f, curve).by, B_ELASTIC);
    EXPECT_EQ(CURVE_AT(std::nextafter(5e-4f, 1.0f), curve).by, B_OF_CURVE);
    EXPECT_EQ(CURVE_AT(0.05f, curve).by, B_OF_CURVE);
    EXPECT_EQ(CURVE_AT(0.11f, curve).by, B_AT_END);
    CHART_CURVE low = curve; // the quadratic passes Bmax before Amax
    low.Bmax = 9000.0f;
    EXPECT_EQ(CURVE_AT(0.05f, low).by, B_AT_END);
    EXPECT_EQ(CURVE_AT(0.05f, low).B, 9000.0f);
    EXPECT_EQ(of(with_length(400.0f)).b_by[GIVEN], TARVANE_B_ELASTIC);
    EXPECT_EQ(of(with_length(10.0f)).b_by[GIVEN], TARVANE_B_OF_CURVE);
    Vessel ball = thick(2.2f);
    ball.Element = SPHERE;
    EXPECT_EQ(of(ball).b_by[GIVEN], TARVANE_B_AT_END);
}

TEST_F(ExternalResults, ThickCylinders) {
    EXPECT_EQ(of(thick(10.0f)).thick_by[GIVEN], 0);
    Vessel e = thick(9.0f);
    e.S = 1.0e6f;
    EXPECT_EQ(of(e).thick_by[GIVEN], TARVANE_THICK_BY_B);
    e.S = 100.0f;
    const Found f = of(e);
    EXPECT_EQ(f.thick_by[GIVEN], TARVANE_THICK_BY_STRESS);
    EXPECT_EQ(f.maep, THICK_PRESSURES(f.d_over_t[GIVEN], f.factor_b[GIVEN], e.S).Pa2);
    Vessel sphere(SPHERE);
    sphere.D = 10.0f, sphere.t = 2.0f;
    EXPECT_EQ(of(sphere).thick_by[GIVEN], 0);
}

TEST_F(ExternalResults, RangeOfTheBucklingStress) {
    by_buckling_stress();
    const auto range_of = [](Vessel e, Real low, Real high) {
        const Found f = of(e);
        const Real Fr = f.fhe[GIVEN] / e.Fy;
        const int expected = Fr >= high ? TARVANE_FIC_YIELD
                             : Fr > low ? TARVANE_FIC_INELASTIC
                                        : TARVANE_FIC_ELASTIC;
        EXPECT_EQ(f.fic_by[GIVEN], expected) << Fr;
        return f.fic_by[GIVEN];
    };
    std::map<int, int> shells, heads;
    for (Real t = 0.2f; t < 8.0f; t += 0.05f) {
        Vessel shell(CYLINDER), head(SPHERE);
        shell.t = head.t = t;
        ++shells[range_of(shell, 0.552f, 2.439f)];
        ++heads[range_of(head, 0.55f, 6.25f)];
    }
    for (const int range : {TARVANE_FIC_ELASTIC, TARVANE_FIC_INELASTIC, TARVANE_FIC_YIELD}) {
        EXPECT_GT(shells[range], 0);
        EXPECT_GT(heads[range], 0);
    }
}

TEST_F(ExternalResults, EndOfASearch) {
    Vessel e(CYLINDER);
    EXPECT_EQ(of(e).search[LENGTH], TARVANE_SEARCH_FOUND);
    e.P = 0.5f; // no length is too long
    Found f = of(e);
    EXPECT_EQ(f.search[LENGTH], TARVANE_SEARCH_AT_LIMIT);
    EXPECT_GT(f.slen, 20.0f * e.Length);
    by_buckling_stress();
    f = of(e);
    EXPECT_EQ(f.search[LENGTH], TARVANE_SEARCH_AT_LIMIT);
    EXPECT_EQ(f.slen, 999999.0f);
    GLOBALS_mp_G_NUSE_CASE2286 = 0;
    e.P = 1.0e9f; // no thickness is enough
    f = of(e);
    EXPECT_NE(f.search[THICKNESS], TARVANE_SEARCH_FOUND);
    EXPECT_EQ(f.evaluations[THICKNESS], 102);
}

TEST_F(ExternalResults, EndOfTheCorrosion) {
    Vessel e(CYLINDER);
    Found f = of(e);
    EXPECT_EQ(f.fail_ca_by, TARVANE_FAILS_BY_THICKNESS);
    EXPECT_EQ(f.t_least, 0.0625f);
    EXPECT_FLOAT_EQ(f.fail_ca, e.t - f.tca + e.c);
    e.Service = 2; // 1/4 in.
    e.P = 1.0f;
    f = of(e);
    EXPECT_EQ(f.fail_ca_by, TARVANE_FAILS_BY_UG_16);
    EXPECT_EQ(f.fail_ca, 0.25f);
    e.Service = 0;
    e.P = 1000.0f;
    f = of(e);
    EXPECT_EQ(f.fail_ca_by, 0);
    EXPECT_EQ(f.fail_ca, TARVANE_NO_VALUE);
}

} // namespace
} // namespace tarvane::external_test
