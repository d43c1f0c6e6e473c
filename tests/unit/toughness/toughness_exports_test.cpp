// The toughness routines as a host calls them: each argument arrives in its place.
#include "mdmt_fixture.h"

#include "tarvane/tarvane.h"
#include "toughness/mdmt_div2.h"

#include <functional>

namespace tarvane {
namespace {

using toughness_test::element_of;
using toughness_test::material_file;
using toughness_test::Record;

class ToughnessSurface : public toughness_test::ToughnessTest {
  protected:
    // The element through the library's entry, and what it returned.
    static MDMT_CALL through(const MDMT_CALL& given) {
        MDMT_CALL a = given;
        a.Tmin = a.Mdmt = a.Tug20 = 7.0f;
        ::MDMT_ELEMENT(&given.Curve, &given.Tg, &a.Tmin, &a.Mdmt, &a.Tug20, &given.Estar, &given.c,
                       &given.Tdesign, &given.Tr, &a.Warnings, &given.Code, &a.Ratio, &given.Pwht,
                       &given.Credit, &given.Cext, &given.Ug20Candidate, &given.Sy, &a.EstarUsed,
                       given.Spec.data(), static_cast<Int>(given.Spec.size()), &given.Index,
                       &given.Kind, &a.Reduction, &given.PadGoverns, &given.TgSr, &given.Element);
        return a;
    }
};

// The sixth switch of SET_GLOBALS_FROM_TVN and the first one of SET_TOUGHNESS_SWITCHES are one variable.
TEST_F(ToughnessSurface, TheReductionIsAllowedByOneAloneThroughEitherRoutine) {
    const auto globals = [](Int use_a6) {
        const Int off = 0;
        ::SET_GLOBALS_FROM_TVN(&off, &off, &off, &off, &off, &use_a6, &off);
    };
    const auto toughness = [](Int reductions) {
        const Int keep = -1;
        ::SET_TOUGHNESS_SWITCHES(&reductions, &keep, &keep, &keep, &keep, &keep, &keep);
    };
    const auto expect_reduction = [](bool allowed, const char* steps) {
        const Int on = 1;
        METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
        ::SET_METRIC_CONSTANTS();
        ::SET_MODULE_CODE(&on);
        MDMT_CALL element = element_of(CURVE_B, 1.0f, 0.5f);
        element.Sy = 38000.0f, element.Spec = "SA-516 70", element.Index = 0;
        element.Element = 1;
        const MDMT_CALL found = through(element);
        EXPECT_EQ(found.Tmin, 31.0474854f) << steps;
        EXPECT_EQ(found.Mdmt, allowed ? -27.2711182f : 31.0474854f) << steps;
        EXPECT_EQ(found.Reduction, allowed ? 58.3186035f : 0.0f) << steps;

        const Real Sy = 38000.0f, one = 1.0f, none = 0.0f, Tr = 0.5f, Tuser = -20.0f;
        const Int off = 0, curve = CURVE_B;
        Real Tcurve = 0.0f, Mdmt = 0.0f, Sr = 0.0f, EstarUsed = 0.0f;
        ::MDMT_DIV2_FIGURES(&Sy, &one, &one, &none, &none, &off, &curve, &Tr, &Tcurve, &Mdmt,
                            &Tuser, &Sr, &EstarUsed);
        EXPECT_EQ(Mdmt, allowed ? 20.7248344f : 56.9100685f) << steps;
        EXPECT_EQ(Sr, allowed ? 0.5f : 1.0f) << steps;
    };
    const struct {
        const char* steps;
        bool allowed;
        std::function<void()> take;
    } rows[] = {
        {"at load", false, [] {}},
        {"G(1)", true, [&] { globals(1); }},
        {"T(1)", true, [&] { toughness(1); }},
        {"T(0) G(1)", true, [&] { toughness(0), globals(1); }},
        {"G(1) T(-1)", true, [&] { globals(1), toughness(-1); }},
        {"G(0)", false, [&] { globals(0); }},
        {"G(2)", false, [&] { globals(2); }},
        {"G(-1)", false, [&] { globals(-1); }},
        {"T(2)", false, [&] { toughness(2); }},
        {"G(1) T(0)", false, [&] { globals(1), toughness(0); }},
        {"T(1) G(0)", false, [&] { toughness(1), globals(0); }},
        {"G(1), reset", false, [&] { globals(1), ::RESET_ENGINE(); }},
    };
    for (const auto& row : rows) {
        ::RESET_ENGINE();
        row.take();
        expect_reduction(row.allowed, row.steps);
    }
    ::RESET_ENGINE();
}

TEST_F(ToughnessSurface, EveryArgumentOfAnElementCounts) {
    METRICCONSTANTS_mp_G_NMETRIC_CONSTANT = 0;
    ::SET_METRIC_CONSTANTS();
    HOST_RECORD.version_mark = "-24";
    HOST_RECORD.own_mdmt[0] = "01";
    HOST_RECORD.required_temperature[1] = "-60";
    MDMT_CALL base = element_of(CURVE_B, 0.9f, 0.5f);
    base.Ug20Candidate = 1;
    base.Estar = 0.9f;
    base.c = 0.1f;
    base.Element = 3;

    const auto check = [&](const char* what, auto change) {
        MDMT_CALL given = base;
        change(given);
        MDMT_CALL direct = given;
        MDMT_ELEMENT(direct);
        const MDMT_CALL back = through(given);
        EXPECT_EQ(back.Tmin, direct.Tmin) << what;
        EXPECT_EQ(back.Mdmt, direct.Mdmt) << what;
        EXPECT_EQ(back.Tug20, direct.Tug20) << what;
        EXPECT_EQ(back.Warnings, direct.Warnings) << what;
        EXPECT_EQ(back.Ratio, direct.Ratio) << what;
        EXPECT_EQ(back.EstarUsed, direct.EstarUsed) << what;
        EXPECT_EQ(back.Reduction, direct.Reduction) << what;
    };
    check("as it is", [](MDMT_CALL&) {});
    check("curve", [](MDMT_CALL& a) { a.Curve = CURVE_D; });
    check("thickness", [](MDMT_CALL& a) { a.Tg = 2.0f; });
    check("efficiency", [](MDMT_CALL& a) { a.Estar = 0.85f; });
    check("corrosion", [](MDMT_CALL& a) { a.c = 0.2f; });
    check("design temperature", [](MDMT_CALL& a) { a.Tdesign = 700.0f; });
    check("required thickness", [](MDMT_CALL& a) { a.Tr = -0.4f; });
    check("warnings", [](MDMT_CALL& a) { a.Warnings = 40; });
    check("code", [](MDMT_CALL& a) { a.Code = 2; });
    check("pad", [](MDMT_CALL& a) { a.PadGoverns = 1, a.Ratio = 0.77f, a.Reduction = 23.0f; });
    check("credit", [](MDMT_CALL& a) { a.Pwht = a.Credit = 1; });
    check("heat treatment alone", [](MDMT_CALL& a) { a.Pwht = 1; });
    check("external corrosion", [](MDMT_CALL& a) { a.Cext = 0.3f; });
    check("no candidate", [](MDMT_CALL& a) { a.Ug20Candidate = 0; });
    check("no ratio", [](MDMT_CALL& a) { a.c = 1.0f, a.EstarUsed = 0.5f, a.Reduction = 3.0f; });
    check("ratio thickness", [](MDMT_CALL& a) { a.TgSr = 1.7f; });
    check("element", [](MDMT_CALL& a) { a.Element = 2, a.Curve = CURVE_D; });
    EXPECT_LT(through([&] {
                  MDMT_CALL a = base;
                  a.Element = 2;
                  return a;
              }())
                  .EstarUsed,
              0.0f)
        << "the element's own -60";

    const auto impact = [](MDMT_CALL& a) { a.Curve = IMPACT_TESTED_CURVE, a.Element = 0; };
    material(-50);
    check("material", impact);
    check("another index", [&](MDMT_CALL& a) { impact(a), a.Index = 4; });
    check("another name", [&](MDMT_CALL& a) { impact(a), a.Spec = "SA-350 LF3"; });
    impact_table("0001", "SA-350 LF2", "-80");
    EXPECT_EQ(through([&] {
                  MDMT_CALL a = base;
                  impact(a);
                  return a;
              }())
                  .Tmin,
              -80.0f);
    check("another kind", [&](MDMT_CALL& a) { impact(a), a.Kind = 2; });
    G_CURRENT_DIV_2 = true;
    check("yield stress", [](MDMT_CALL& a) { a.Sy = 60000.0f; });
    check("strong steel", [](MDMT_CALL& a) { a.Sy = 80000.0f; });
}

TEST_F(ToughnessSurface, FiguresOfDivision2) {
    MDMT_DIV2_CALL a{.Sy = 60000.0f,
                     .Estar = 0.9f,
                     .Tnom = 1.25f,
                     .Ci = 0.125f,
                     .Cext = 0.0625f,
                     .Pwht = 1,
                     .Curve = 3,
                     .Tr = 0.6f,
                     .Tuser = -500.0f};
    Real t_curve = 7.0f, mdmt = 7.0f, sr = 7.0f, estar_used = 7.0f;
    ::MDMT_DIV2_FIGURES(&a.Sy, &a.Estar, &a.Tnom, &a.Ci, &a.Cext, &a.Pwht, &a.Curve, &a.Tr,
                        &t_curve, &mdmt, &a.Tuser, &sr, &estar_used);
    EXPECT_EQ(reported()[3].text, "Warning: Impact Testing Is Mandatory!")
        << "the user's temperature";
    MDMT_DIV2_FIGURES(a);
    EXPECT_EQ(t_curve, a.Tcurve);
    EXPECT_EQ(mdmt, a.Mdmt);
    EXPECT_EQ(sr, a.Sr);
    EXPECT_EQ(estar_used, 0.9f);
    a.Curve = 0;
    estar_used = 7.0f;
    ::MDMT_DIV2_FIGURES(&a.Sy, &a.Estar, &a.Tnom, &a.Ci, &a.Cext, &a.Pwht, &a.Curve, &a.Tr,
                        &t_curve, &mdmt, &a.Tuser, &sr, &estar_used);
    EXPECT_EQ(t_curve, TARVANE_NO_TEMPERATURE);
    EXPECT_EQ(sr, -1.0f);
    EXPECT_EQ(estar_used, 7.0f);
}

TEST_F(ToughnessSurface, CurveImpactTableAndNotes) {
    write_file("system", "MATFILE1.BIN",
               material_file(1, 0, {Record("SA-516 70", 5).put(156, Int{2}).put(160, Int{4})}));
    const Int five = 5, one = 1, two = 2, zero = 0;
    Int curve = 7;
    ::GETUCSCURVE("SA-516 70xx", 9, &five, &one, &zero, &curve);
    EXPECT_EQ(curve, TARVANE_CURVE_B);
    ::GETUCSCURVE("SA-516 70", 9, &five, &one, &one, &curve);
    EXPECT_EQ(curve, TARVANE_CURVE_D);
    ::GETUCSCURVE("SA-516 70", 9, &five, &two, &one, &curve);
    EXPECT_EQ(curve, -1);

    HOST_RECORD.impact_switches = "0001";
    HOST_RECORD.impact_counts[1] = "1";
    HOST_RECORD.impact_names[1][0] = "SA-350 LF2";
    HOST_RECORD.impact_numbers[1][0] = "-50";
    ::READ_IMPACT_TABLE();
    Real T = 7.0f, R = 7.0f;
    ::IMPACT_TEST_TEMPERATURE("SA-350 LF2zz", 10, &T, &two);
    EXPECT_EQ(T, -50.0f);
    ::IMPACT_TEST_TEMPERATURE("SA-350 LF2", 10, &T, &one);
    EXPECT_EQ(T, 100.0f);
    const Real yield = 50.0f;
    ::UG84_REDUCTION(&R, &yield);
    EXPECT_EQ(R, 5.0f);

    EXPECT_EQ(::LIS_EXEMPT_SS(&one, "SA-240 304", 10), 1);
    EXPECT_EQ(::LIS_EXEMPT_SS(&one, "SA-240 309", 10), 0);
    EXPECT_EQ(::LIS_EXEMPT_SS(&two, "SA-240 304", 10), 0);
    Real r[5] = {};
    ::UHA51_NOTE(&one, "SA-240 304", 10, &r[0], &r[1], &r[2], &r[3], &r[4]);
    EXPECT_EQ(std::vector<Real>(r, r + 5),
              (std::vector<Real>{-320.0f, -320.0f, 1.0101f, 1.0f, 1.0f}));
    const Real thick = 0.75f;
    reported();
    ::UCS6_NOTE("SA/CSA-G40.21", 13, &thick, &one, &one);
    EXPECT_EQ(reported().size(), 2u);
    ::UCS6_NOTE("SA/CSA-G40.21", 13, &thick, &one, &zero);
    EXPECT_TRUE(reported().empty());
    ::UCS6_NOTE(nullptr, 0, &thick, &one, &one);
    ::UCS6_NOTE("SA-36", -3, &thick, &one, &one);
    EXPECT_TRUE(reported().empty());
}

TEST_F(ToughnessSurface, ResetTurnsTheImpactTableOff) {
    impact_table("1111");
    ::RESET_ENGINE();
    Real T = 7.0f, R = 7.0f;
    IMPACT_TEST_TEMPERATURE("SA-350 LF2", T, 1);
    UG84_REDUCTION(R, 30.0f);
    EXPECT_EQ(T, 100.0f);
    EXPECT_EQ(R, 0.0f);
    EXPECT_FALSE(G_IMPACT.Ucs66g || G_IMPACT.Ucs66_1 || G_IMPACT.Ug84);
}

} // namespace
} // namespace tarvane
