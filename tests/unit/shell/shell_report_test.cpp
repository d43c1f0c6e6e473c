// SHELL_REPORT and GETSHELLRESULTS: gates, silence, the lines of a formula, the exported arguments.
#include "shell_fixture.h"

#include "tarvane/tarvane.h"

#include "frame/switches.h"
#include "frame/units.h"
#include "report/channel.h"
#include "shell/elements.h"
#include "shell/shell_report.h"

namespace tarvane {
namespace {

using namespace shell_test;

class ShellReport : public ShellTest {
  protected:
    ShellReport() {
        IWRITE = IWRTFL = 1;
        IOUT = -1;
        OPEN_LINE_STORE();
    }
    ~ShellReport() override {
        RESET_REPORT();
        UNITS = {};
        G_USE_A5 = 0;
    }
    // The lines since the last call of it, without marks.
    static std::vector<std::string> lines() {
        std::vector<std::string> result;
        for (Int i = 0; i < LINE_COUNT; ++i)
            result.emplace_back(trimmed(std::string_view(LINESCOM[i], 100)));
        OPEN_LINE_STORE();
        return result;
    }
    static std::vector<std::string> report(Shell e, const CONVEX_REPORT* convex = nullptr) {
        SHLINT_ARGUMENTS arguments = e.arguments();
        SHELL_REPORT(arguments, 0.0f, convex);
        return lines();
    }
    static bool has(const std::vector<std::string>& all, const std::string& part) {
        return std::any_of(all.begin(), all.end(), [&](const std::string& line) {
            return line.find(part) != std::string::npos;
        });
    }
};

Shell thin_head() {
    Shell e = element(TORISPHERICAL);
    e.t = 0.07f, e.P = 15.0f, e.Sy = 30000.0f;
    return e;
}

TEST_F(ShellReport, WritesWhatSHLINTCalculates) {
    const auto page = report(element(CYLINDER));
    for (const char* line : {"Corroded Thickness       tc = t - c                   0.5000  in.",
                             " = P * R / ( S * E - 0.6 * P ) per UG-27 (c)(1)",
                             " = 100.0 * 24.0/( 20000.0 * 1.0 - 0.6 * 100.0 )", " = 0.1204 in."})
        EXPECT_TRUE(has(page, line)) << line;
}

TEST_F(ShellReport, SHLINTWritesNothingWhateverTheGates) {
    for (const Int gate : {0, 1}) {
        IWRITE = gate;
        for (const Int code : {CYLINDER, ELLIPTICAL, TORISPHERICAL, SPHERE, CONE})
            element(code).calculate();
        thin_head().calculate();
        EXPECT_EQ(IWRITE, gate);
        Shell flat = element(FLAT_HEAD_ELEMENT);
        flat.d1 = 2.0f, flat.edge1 = 0.1f;
        flat.calculate();
        IWRITE = 1;
        EXPECT_TRUE(lines().empty());
    }
}

TEST_F(ShellReport, KeepsGatesAndResults) {
    Shell flat = element(FLAT_HEAD_ELEMENT);
    flat.d1 = 2.0f, flat.edge1 = 0.1f;
    Shell solutionless = thin_head();
    solutionless.Element = ELLIPTICAL, solutionless.k = 1.1f; // almost a hemisphere
    solutionless.D = 100.0f, solutionless.t = 0.1f, solutionless.P = 4.0f;
    for (const Shell& e : {element(CYLINDER), thin_head(), flat, solutionless}) {
        Shell silent = e;
        silent.calculate();
        const SHELL_RESULTS found = SHELL;
        IWRITE = IWRTFL = 1;
        const auto page = report(e);
        EXPECT_FALSE(page.empty());
        EXPECT_EQ(IWRITE, 1);
        EXPECT_EQ(SHELL.serial, found.serial + 1);
        SHELL.serial = found.serial;
        EXPECT_EQ(std::memcmp(&SHELL, &found, sizeof found), 0);
        // Nothing at all with the report off.
        for (Int* gate : {&IWRITE, &IWRTFL, &IOUT}) {
            const Int on = *gate;
            *gate = 0;
            EXPECT_TRUE(report(e).empty());
            EXPECT_EQ(*gate, 0);
            EXPECT_EQ(SHELL.serial, found.serial);
            *gate = on;
        }
    }
    EXPECT_TRUE(has(report(flat), "UG-39(e)(5) Dist. to edge"));
    EXPECT_TRUE(has(report(solutionless), "Appendix 1-4(f) has no solution"));
}

TEST_F(ShellReport, ShowsAppendix14fWhereItHolds) {
    const auto page = report(thin_head());
    EXPECT_TRUE(has(page, "App 1-4(f) Calculated Required Thick. (TR)"));
    EXPECT_TRUE(has(page, "MAWP Calculation ( ts/L"));
    EXPECT_TRUE(has(page, "New & Cold Calculation ( ts/L"));
    EXPECT_TRUE(has(page, " = min( MAWP, Pa ) per "));
    Shell thick = thin_head();
    thick.t = 0.5f;
    EXPECT_FALSE(has(report(thick), "ts/L"));
    Shell newOnly = thin_head(); // thin when it is corroded
    newOnly.t = 0.12f, newOnly.c = 0.05f;
    const auto corroded = report(newOnly);
    EXPECT_TRUE(has(corroded, "MAWP Calculation ( ts/L"));
    EXPECT_FALSE(has(corroded, "New & Cold Calculation"));
}

TEST_F(ShellReport, BreaksNumberLinesOfManyValues) {
    Shell e = element(ELLIPTICAL);
    e.Outside = 1;
    const auto page = report(e);
    const auto at = std::find_if(page.begin(), page.end(), [](const std::string& line) {
        return line.find(" = P * Do * Kc") != std::string::npos;
    });
    ASSERT_NE(at, page.end());
    EXPECT_TRUE(at[1].ends_with(" = 100.0 * 48.0 * 1.0")) << at[1];
    EXPECT_TRUE(at[2].ends_with("   /( 2 * 20000.0 * 1.0 + 2 * 100.0 * ( 1.0 - 0.1 ) )")) << at[2];
    EXPECT_TRUE(at[3].ends_with(" = 0.1195 in.")) << at[3];
}

// Pressures and stresses in the unit of the result, so that the line can be recalculated.
TEST_F(ShellReport, ShowsOneUnitOfPressureInALine) {
    UNITS.pressure = 0.5f;
    const auto page = report(element(CYLINDER));
    EXPECT_TRUE(has(page, "Note: in the formulas stresses and pressures both stand in the unit"));
    EXPECT_TRUE(has(page, " = 50.0 * 24.0/( 10000.0 * 1.0 - 0.6 * 50.0 )"));
    EXPECT_TRUE(has(page, " = 100.0 * ( 24.0 + 0.6 * 0.5 )/( 1.0 * 0.5 )"));
    UNITS.pressure = 1.0f;
    EXPECT_FALSE(has(report(element(CYLINDER)), "Note:"));
}

TEST_F(ShellReport, ConvexHeadShowsThePressureInside) {
    Shell e = element(ELLIPTICAL);
    e.P = 100.2f;
    const CONVEX_REPORT rated{.P = 0.0f, .MAEP = 50.0f, .Tca = 0.25f},
        designed{.P = 60.0f, .MAEP = 50.0f, .Tca = 0.25f};
    const auto page = report(e, &designed);
    EXPECT_TRUE(has(page, " = Pi * Dc * Kc / ( 2 * S * E - 0.2 * Pi ) per UG-32 (d)"));
    EXPECT_TRUE(has(page, " = 1.67 * 60.0"));
    EXPECT_TRUE(has(page, "[MAEPg]:"));
    EXPECT_TRUE(has(page, "[Tg]:"));
    EXPECT_FALSE(has(page, "[MAPNC]:"));
    const auto without = report(e, &rated);
    EXPECT_TRUE(has(without, "[MAEPg]:"));
    EXPECT_FALSE(has(without, "[Pi]:"));
    EXPECT_FALSE(has(without, "[tr]:"));
    EXPECT_FALSE(has(without, "[Tg]:"));
}

// A head whose K keeps the column of the previous call shows what SHLINT gave.
TEST_F(ShellReport, KeepsTheColumnOfK) {
    G_USE_A5 = 1;
    Shell tight = element(TORISPHERICAL), wide = tight;
    tight.t = wide.t = 0.9f, tight.P = wide.P = 300.0f;
    wide.S = tight.S = 60000.0f;
    wide.r = 9.5f, wide.c = 0.25f; // r/D 0.198 new, above 0.20 corroded
    const auto fresh = report(wide);
    tight.calculate();
    wide.calculate(); // begins with the column of the other head, ends with its own
    const Real found = SHELL.mawp;
    const Int column = K_COLUMN;
    const auto page = report(wide);
    EXPECT_EQ(SHELL.mawp, found);
    EXPECT_EQ(K_COLUMN, column);
    EXPECT_NE(page, fresh);
}

// ---- the block of results ----------------------------------------------------------------------------

TEST_F(ShellReport, ResultsBeginAfresh) {
    RESET_SHELLS();
    const TARVANE_SHELL_RESULTS* found = ::GETSHELLRESULTS();
    TARVANE_SHELL_RESULTS zeros{};
    zeros.version = TARVANE_SHELL_RESULTS_VERSION;
    zeros.bytes = sizeof zeros;
    EXPECT_EQ(std::memcmp(found, &zeros, sizeof zeros), 0);
    Shell cone = element(CONE);
    cone.r = 3.0f, cone.k = 0.4f;
    cone.calculate();
    EXPECT_EQ(found->serial, 1);
    EXPECT_EQ(found->status, 1);
    EXPECT_EQ(found->knuckle, 1);
    EXPECT_NE(found->stress_knuckle, TARVANE_NO_VALUE);
    Shell cylinder = element(CYLINDER);
    cylinder.calculate();
    EXPECT_EQ(found->serial, 2);
    EXPECT_EQ(found->knuckle, 0);
    EXPECT_EQ(found->stress_knuckle, TARVANE_NO_VALUE);
    EXPECT_EQ(found->mawp, cylinder.MAWP);
    EXPECT_EQ(found->t_req, cylinder.Treq);
    EXPECT_EQ(found->formula, TARVANE_UG_27_C_1);
    Shell unknown = element(7);
    unknown.calculate();
    EXPECT_EQ(found->serial, 3);
    EXPECT_EQ(found->status, 2);
    EXPECT_EQ(found->element, 7);
    EXPECT_EQ(found->mawp, TARVANE_NO_VALUE);
    ::RESET_ENGINE();
    EXPECT_EQ(std::memcmp(found, &zeros, sizeof zeros), 0);
}

TEST_F(ShellReport, ExportedArguments) {
    Shell e = element(TORISPHERICAL);
    e.Sa = 19000.0f, e.E = 0.9f, e.D = 47.0f, e.t = 0.08f, e.c = 0.005f, e.L = 46.0f, e.r = 4.0f;
    e.Temp = 250.0f, e.P = 14.0f, e.Service = 2, e.Sy = 31000.0f, e.SyCold = 33000.0f;
    e.u = 0.002f;
    const Real limit = 100.0f, P = 11.0f, maep = 12.0f, tca = 0.3f;
    const auto call = [&](Shell x, Int convex) {
        ::SHELL_REPORT(&x.P, &x.Sa, &x.S, &x.E, &x.Element, &x.D, &x.t, &x.c, &x.k, &x.L, &x.r,
                       &x.alpha, &x.C, &x.D2, &x.Material, &x.Temp, &x.Service, &x.Outside, &x.Sy,
                       &x.SyCold, &x.u, &x.Skip14f, &x.d1, &x.d2, &x.edge1, &x.edge2, &x.pitch,
                       &x.openingMaterial, &x.CorrodedK, x.MaterialName.data(),
                       static_cast<Int>(x.MaterialName.size()), &limit, &convex, &P, &maep, &tca);
        return lines();
    };
    const auto direct = [&](Shell x, const CONVEX_REPORT* convex) {
        SHLINT_ARGUMENTS arguments = x.arguments();
        SHELL_REPORT(arguments, limit, convex);
        return lines();
    };
    Shell cone = element(CONE);
    cone.r = 3.0f, cone.k = 0.4f, cone.Outside = 1, cone.u = 0.01f;
    Shell flat = element(FLAT_HEAD_ELEMENT);
    flat.D2 = 50.0f, flat.d1 = 2.0f, flat.d2 = 3.0f, flat.edge1 = 4.0f, flat.edge2 = 5.0f;
    flat.pitch = 4.0f, flat.openingMaterial = 2.0f;
    Shell ellipse = element(ELLIPTICAL);
    ellipse.CorrodedK = 1, ellipse.k = 1.9f, ellipse.Skip14f = 1, ellipse.c = 0.1f;
    for (const Shell& x : {e, cone, flat, ellipse})
        EXPECT_EQ(call(x, 0), direct(x, nullptr));
    const CONVEX_REPORT convex{.P = P, .MAEP = maep, .Tca = tca};
    EXPECT_EQ(call(e, 1), direct(e, &convex));
    EXPECT_TRUE(has(call(e, 0), "Table 1-4.3"));

    const Real raw = 0.2f, required = 0.25f, mawp = 30.0f;
    Real Pi, inside, maep_i, maep_g, t_g;
    ::CONVEX_HEAD(&P, &maep, &tca, &raw, &required, &mawp, &Pi, &inside, &maep_i, &maep_g, &t_g);
    EXPECT_EQ(Pi, 1.67f * P);
    EXPECT_EQ(inside, required);
    EXPECT_EQ(maep_i, mawp / 1.67f);
    EXPECT_EQ(maep_g, maep);
    EXPECT_EQ(t_g, tca);
}

} // namespace
} // namespace tarvane
