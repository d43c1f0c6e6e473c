// Random elements: the pressure at the required thickness is the design pressure, pressures rise with
// the thickness and fall with the diameter.
#include "shell_fixture.h"

#include <random>

namespace tarvane {
namespace {

using namespace shell_test;

class ShellIdentities : public ShellTest {
  protected:
    std::mt19937 generator{20240229};

    Real between(double low, double high) {
        const double at = double(generator()) / 4294967296.0;
        return Real(low + (high - low) * at);
    }
    Shell random_element(Int code, Int Outside) {
        Shell e = element(code);
        e.Outside = Outside;
        e.P = between(15, 1200), e.S = between(9000, 30000), e.Sa = e.S, e.E = between(0.6, 1);
        e.D = between(12, 160), e.t = between(0.2, 0.02 * double(e.D) + 1), e.c = between(0, 0.125);
        e.u = between(0, 0.03);
        e.k = code == CONE ? 0.0f : between(1.2, 3);
        e.L = between(0.7, 1) * e.D, e.r = between(0.06, 0.17) * e.D;
        e.alpha = between(5, 60), e.C = between(0.1, 0.5);
        e.D2 = generator() % 2 == 0 ? 0.0f : e.D * between(1, 3);
        return e;
    }
};

TEST_F(ShellIdentities, ThePressureAtTheRequiredThicknessIsTheDesignPressure) {
    int elements = 0, thick = 0;
    for (int i = 0; i < 1100; ++i) {
        for (const auto& [code, Outside] : {std::pair{CYLINDER, 0},
                                            {CYLINDER, 1},
                                            {ELLIPTICAL, 0},
                                            {ELLIPTICAL, 1},
                                            {TORISPHERICAL, 0},
                                            {SPHERE, 0},
                                            {SPHERE, 1},
                                            {CONE, 0},
                                            {CONE, 1},
                                            {FLAT_HEAD_ELEMENT, 0}}) {
            Shell e = random_element(code, Outside);
            const bool cylinder = code == CYLINDER, sphere = code == SPHERE;
            const Real limit = (cylinder ? 0.385f : 0.665f) * e.S * e.E;
            if (i % 10 == 0 && (cylinder || sphere)) e.P = between(1.01, 1.4) * limit;
            const bool thickForm = (cylinder || sphere) && e.P > limit;
            e.calculate();
            // A moderate pressure that requires a thick wall would be rated by the other form.
            if (!thickForm && (cylinder || sphere) && e.TreqRaw > 0.15f * e.D) continue;
            Shell at = e;
            at.t = e.TreqRaw + e.c + e.u;
            at.calculate();
            ++elements;
            thick += thickForm ? 1 : 0;
            // The last digits of t = Treq + c + u, of its differences, and of a logarithm near 0.
            const double tolerance = 4e-6 + 3e-6 * double(at.t) / double(e.TreqRaw);
            EXPECT_NEAR(at.MAWP, e.P, tolerance * double(e.P))
                << code << " " << Outside << " D " << e.D << " t " << e.TreqRaw;
        }
    }
    EXPECT_GT(elements, 10000);
    EXPECT_GT(thick, 400);
}

TEST_F(ShellIdentities, TheStressAtTheWorkingPressureIsTheAllowable) {
    for (int i = 0; i < 1000; ++i) {
        for (const Int code :
             {CYLINDER, ELLIPTICAL, TORISPHERICAL, SPHERE, CONE, FLAT_HEAD_ELEMENT}) {
            Shell e = random_element(code, 0);
            e.P = 15.0f; // only the wall selects the form
            e.calculate();
            EXPECT_NEAR(double(e.Stress) * double(e.MAWP) / 15, double(e.S), 2e-5 * double(e.S))
                << code;
        }
    }
}

TEST_F(ShellIdentities, PressuresRiseWithTheThicknessAndFallWithTheDiameter) {
    for (int i = 0; i < 1000; ++i) {
        for (const Int code :
             {CYLINDER, ELLIPTICAL, TORISPHERICAL, SPHERE, CONE, FLAT_HEAD_ELEMENT}) {
            for (const Int Outside : {0, 1}) {
                Shell e = random_element(code, Outside);
                e.P = 15.0f, e.D2 = 0.0f;
                e.calculate();
                const Shell thicker = e.at_thickness(e.t * 1.02f);
                EXPECT_GT(thicker.MAWP, e.MAWP) << code << " " << Outside;
                EXPECT_GT(thicker.MAPnc, e.MAPnc) << code << " " << Outside;
                Shell wider = e;
                wider.D = e.D * 1.02f, wider.L = e.L * 1.02f;
                wider.calculate();
                EXPECT_LT(wider.MAWP, e.MAWP) << code << " " << Outside;
                EXPECT_LT(wider.MAPnc, e.MAPnc) << code << " " << Outside;
                EXPECT_GT(wider.TreqRaw, e.TreqRaw) << code << " " << Outside;
            }
        }
    }
}

} // namespace
} // namespace tarvane
