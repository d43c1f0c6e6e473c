#include "frame/units.h"
#include "shell/failure_corrosion.h"
#include "shell_fixture.h"

#include <ctime>

namespace tarvane {
namespace {

using namespace shell_test;

struct Failing {
    Real P = 300.0f, D = 48.0f, E = 0.85f, S = 20000.0f, t = 0.625f, k = 2.0f, L = 48.0f, r = 4.0f;
    Real Alpha = 30.0f, C = 0.3f;
    Int Element = CYLINDER;
    Real FailCA = UNTOUCHED;
    Int Outside = 0;
    Real tk = 0.0f, FailCAK = UNTOUCHED;
    Real d1 = 0.0f, d2 = 0.0f, edge1 = 9.0f, edge2 = 9.0f, pitch = 9.0f, openingMaterial = 0.0f;
    Int Service = 0, CorrodedK = 0;

    Failing& run() {
        FAILURE_CA_ARGUMENTS a{P,       D,        E,  S,       t,      k,       L,
                               r,       Alpha,    C,  Element, FailCA, Outside, tk,
                               FailCAK, d1,       d2, edge1,   edge2,  pitch,   openingMaterial,
                               Service, CorrodedK};
        COMPUTE_FAILURE_CA_DIV1(a);
        return *this;
    }
    // Working pressure at a corrosion, by SHLINT; given thickness of the element.
    double pressure(double corrosion) const {
        Shell e = element(Element);
        e.P = P, e.D = D, e.E = E, e.S = S, e.t = t, e.L = L, e.r = r, e.alpha = Alpha, e.C = C;
        e.k = Element == ELLIPTICAL ? k : 0.0f;
        e.CorrodedK = CorrodedK, e.Outside = Outside, e.c = Real(corrosion);
        e.calculate();
        return double(e.MAWP);
    }
};

class FailureCorrosion : public ShellTest {
  protected:
    FailureCorrosion() { SET_METRIC_CONSTANTS(); }
};

TEST_F(FailureCorrosion, ThePressureThenHasFallenToTheDesignPressure) {
    for (const Int Element : {CYLINDER, ELLIPTICAL, TORISPHERICAL, SPHERE, FLAT_HEAD_ELEMENT}) {
        for (const Int CorrodedK : {0, 1}) {
            Failing f;
            f.Element = Element, f.CorrodedK = CorrodedK;
            if (Element == FLAT_HEAD_ELEMENT) f.t = 3.5f;
            if (Element == TORISPHERICAL) f.t = 0.9f;
            f.run();
            ASSERT_GT(f.FailCA, 0.002f) << Element;
            if (Element == CYLINDER) {
                EXPECT_NEAR(f.pressure(double(f.FailCA)), 300, 0.05);
            } else if (Element == SPHERE) {
                // The closed form leaves out 0.2 t, so it ends a little below P.
                const double closed = (34000 * 0.625 / 300 - 24) / (34000.0 / 300 + 0.8);
                EXPECT_NEAR(f.FailCA, closed, 2e-6);
                EXPECT_NEAR(f.pressure(closed), 300, 2);
            } else {
                // The first step at which it is not above P + 0.001.
                EXPECT_LE(f.pressure(double(f.FailCA)), 300.05);
                EXPECT_GT(f.pressure(double(f.FailCA) - 0.001), 300.0);
            }
            EXPECT_EQ(f.FailCAK, -1.0f);
        }
    }
}

TEST_F(FailureCorrosion, OutsideDiametersAreTakenToTheInside) {
    for (const Int Element : {CYLINDER, ELLIPTICAL, SPHERE, CONE}) {
        Failing inside;
        inside.Element = Element, inside.t = 1.0f;
        Failing outside = inside;
        outside.Outside = 1;
        outside.D = Element == CONE ? Real(48 + 2 / std::cos(3.14159265358979 / 6)) : 50.0f;
        EXPECT_NEAR(inside.run().FailCA, outside.run().FailCA, 2e-6) << Element;
        outside.Outside = 2; // only 1 counts
        EXPECT_NE(inside.FailCA, outside.run().FailCA) << Element;
    }
    for (const Int Element : {TORISPHERICAL, FLAT_HEAD_ELEMENT}) {
        Failing f;
        f.Element = Element, f.t = 3.0f;
        const Real inside = f.run().FailCA;
        f.Outside = 1;
        EXPECT_EQ(f.run().FailCA, inside) << Element;
    }
}

TEST_F(FailureCorrosion, ThickWallsWalkInSteps) {
    for (const Int Element : {CYLINDER, SPHERE}) {
        Failing f;
        f.Element = Element, f.D = 10.0f, f.t = 6.0f;
        f.P = Element == CYLINDER ? 7000.0f : 12000.0f;
        f.run();
        const double times = Element == CYLINDER ? 17000 : 34000;
        const auto pressure = [&](double Ca) { return times * std::log(11 / (5 + Ca)); };
        const double steps = double(f.FailCA) / 0.001;
        EXPECT_NEAR(steps, std::round(steps), 0.01 * steps);
        EXPECT_LE(pressure(double(f.FailCA) + 1e-4), double(f.P) + 0.001);
        EXPECT_GT(pressure(double(f.FailCA) - 1.1e-3), double(f.P));
    }
}

// A sphere is thick by 0.356 R below t or by 0.665 S E below P. Each of the two alone, on both sides of
// its limit: where the closed form would take off metal, the logarithmic one has none to spare.
class ThickSphere : public FailureCorrosion {
  protected:
    static Failing sphere(Real D, Real t, Real P) {
        Failing f;
        f.Element = SPHERE, f.D = D, f.t = t, f.P = P; // 2 S E = 34000, 0.665 S E = 11305
        return f;
    }
    static double closed_form(const Failing& f) {
        const double by_P = 34000 / double(f.P);
        return (by_P * double(f.t) - double(f.D) / 2) / (by_P + 0.8);
    }
};

TEST_F(ThickSphere, ByItsWallOnly) {
    const Real limit = 0.356f * 5.0f;
    Failing thin = sphere(10.0f, limit, 10500.0f), thick = thin;
    EXPECT_NEAR(thin.run().FailCA, closed_form(thin), 2e-6);
    EXPECT_GT(thin.FailCA, 0.1f);
    thick.t = above(limit);
    EXPECT_EQ(thick.run().FailCA, 0.0f); // 34000 ln(6.78 / 5) is below 10500

    Failing walks = sphere(10.0f, 3.0f, 11000.0f); // thick to its end
    const auto pressure = [](double Ca) { return 34000 * std::log(8 / (5 + Ca)); };
    const auto end = double(walks.run().FailCA);
    EXPECT_LE(pressure(end), 11000.0 + 0.05);
    EXPECT_GT(pressure(end - 0.001), 11000.0);
    EXPECT_LT(end, closed_form(walks) - 0.3);
}

TEST_F(ThickSphere, ByItsPressureOnly) {
    const Real limit = 0.665f * 20000.0f * 0.85f;
    Failing thin = sphere(48.0f, 5.0f, limit), thick = thin; // 0.356 R = 8.54
    EXPECT_NEAR(thin.run().FailCA, closed_form(thin), 1e-5);
    EXPECT_LT(thin.FailCA, -2.0f);
    thick.P = above(limit);
    EXPECT_EQ(thick.run().FailCA, 0.0f);
}

TEST_F(FailureCorrosion, AThickWallThatTurnsThinEndsInClosedForm) {
    // Thick by its wall, not by its pressure: at the step that makes it thin the closed form is used.
    Failing f;
    f.D = 10.0f, f.t = 2.6f, f.P = 3000.0f;
    f.run();
    const double closed =
        (-3000.0 * 5 + 2.6 * 17000 - 0.6 * 2.6 * 3000) / (3000 + 17000 - 0.6 * 3000);
    EXPECT_NEAR(f.FailCA, closed, 2e-3);
}

TEST_F(FailureCorrosion, ConeShellAndKnuckle) {
    Failing f;
    f.Element = CONE, f.t = 1.5f, f.tk = 1.5f, f.r = 6.0f;
    f.run();
    const double ca = std::cos(3.14159265358979 / 6), SE = 17000, P = 300;
    EXPECT_NEAR(f.FailCA,
                (2 * SE * 1.5 * ca - P * 48 - 1.2 * P * 1.5 * ca) /
                    (2 * P - 1.2 * P * ca + 2 * SE * ca),
                2e-6);
    const auto knuckle = [&](double Ck) {
        const double Lk = 48 / (2 * ca) + Ck, M = (std::sqrt(Lk / (6 + Ck)) + 3) / 4;
        return 2 * SE * (1.5 - Ck) / (M * Lk + 0.2 * (1.5 - Ck));
    };
    EXPECT_LE(knuckle(double(f.FailCAK)), P + 0.01);
    EXPECT_GT(knuckle(double(f.FailCAK) - 0.001), P);
    // The shell's thickness limits the knuckle's corrosion at the minimum.
    f.t = 0.7f;
    EXPECT_EQ(f.run().FailCAK, 0.7f - 0.0625f);
    // Without a knuckle, or one that does not fall to P within its thickness.
    f.r = 0.001f;
    EXPECT_EQ(f.run().FailCAK, -1.0f);
    f.r = 6.0f, f.tk = 0.001f;
    EXPECT_EQ(f.run().FailCAK, -1.0f);
    f.tk = 1.5f, f.P = -1.0f;
    EXPECT_EQ(f.run().FailCAK, -1.0f);
}

TEST_F(FailureCorrosion, AFlatHeadTakesOneStepAtLeast) {
    Failing f;
    f.Element = FLAT_HEAD_ELEMENT, f.t = 1.0f, f.P = 30000.0f;
    EXPECT_EQ(f.run().FailCA, 0.001f);
    f.t = 0.0005f; // no steps in it; limited to the minimum
    EXPECT_EQ(f.run().FailCA, 0.0005f - 0.0625f);
    f.t = 0.0f, C_ONE_SIXTEENTH = -1.0f; // code constants as they are
    EXPECT_EQ(f.run().FailCA, 0.001f);
}

TEST_F(FailureCorrosion, OpeningsWeakenAFlatHead) {
    Failing f;
    f.Element = FLAT_HEAD_ELEMENT, f.t = 9.0f;
    const auto at = [&](double C, double F) {
        // x^2 S E / C = P, x = (t - Ca)/(F (d + 2 Ca))
        const double x = F * std::sqrt(300 * C / 17000.0);
        return (9 - 48 * x) / (1 + 2 * x);
    };
    EXPECT_NEAR(f.run().FailCA, at(0.3, 1), 1.1e-3);
    f.d1 = 4.0f;
    for (const Int entry : {0, 1, 5}) {
        IWRITE = entry;
        EXPECT_NEAR(f.run().FailCA, at(0.6, 1), 1.1e-3);
        EXPECT_EQ(IWRITE, entry);
    }
    EXPECT_EQ(f.C, 0.3f);
    f.openingMaterial = 2.5f;
    EXPECT_NEAR(f.run().FailCA, at(0.5, 1), 1.1e-3);
    f.openingMaterial = 0.0f, f.d2 = 4.0f, f.pitch = 6.0f;
    EXPECT_NEAR(f.run().FailCA, at(0.6, std::sqrt(0.5 / (2.0 / 6))), 1.1e-3);
}

TEST_F(FailureCorrosion, TheMinimumThicknessHoldsTheCorrosion) {
    for (const auto& [Service, minimum] :
         {std::pair{0, 0.0625f}, {1, 0.09375f}, {2, 0.25f}, {3, 0.0625f}}) {
        Failing f;
        f.Service = Service, f.P = 1.0f;
        EXPECT_EQ(f.run().FailCA, 0.625f - minimum);
        f.t = 0.03f; // thinner than the minimum
        EXPECT_EQ(f.run().FailCA, 0.03f - minimum);
    }
    RESET_CODE_CONSTANTS(); // before the first SET_METRIC_CONSTANTS there is no minimum
    Failing f;
    f.P = 1.0f;
    f.run();
    EXPECT_GT(f.FailCA, 0.62f);
    EXPECT_LT(f.FailCA, 0.625f);
}

TEST_F(FailureCorrosion, AnUnknownElementHasNone) {
    for (const Int Element : {0, 7, -3}) {
        Failing f;
        f.Element = Element;
        EXPECT_EQ(f.run().FailCA, 0.0f);
        EXPECT_EQ(f.FailCAK, -1.0f);
        f.t = 0.05f;
        EXPECT_EQ(f.run().FailCA, 0.05f - 0.0625f);
    }
}

TEST_F(FailureCorrosion, NoPressureDividesTheSphereByZero) {
    Failing f;
    f.Element = SPHERE, f.P = 0.0f;
    EXPECT_TRUE(std::isnan(f.run().FailCA));
}

TEST_F(FailureCorrosion, StepsEndWithTheThickness) {
    Failing f;
    f.Element = ELLIPTICAL, f.P = -1.0f; // never reached
    RESET_CODE_CONSTANTS();
    EXPECT_NEAR(f.run().FailCA, 0.625f, 1e-4f);
    f.t = 0.0009f;
    EXPECT_EQ(f.run().FailCA, 0.0f); // not one step
    f.t = NOT_A_NUMBER;
    EXPECT_EQ(f.run().FailCA, 0.0f);
}

// A thickness that is not one: the passes end where a step no longer changes the corrosion.
TEST_F(FailureCorrosion, StepsThatChangeNothingTakeNoTime) {
    Failing f;
    f.Element = TORISPHERICAL, f.P = NOT_A_NUMBER, f.t = 2000000.0f;
    const std::clock_t begin = std::clock();
    EXPECT_EQ(f.run().FailCA, 32768.0f);
    EXPECT_LT(std::clock() - begin, 3 * CLOCKS_PER_SEC); // all of the passes take longer
}

} // namespace
} // namespace tarvane
