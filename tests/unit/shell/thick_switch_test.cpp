// Cylinders and spheres: where the logarithmic forms replace the thin ones, and the results of both.
#include "shell_fixture.h"

namespace tarvane {
namespace {

using namespace shell_test;

class ThickSwitch : public ShellTest {};

// Results by the equations of the code, in double precision.
struct Expected {
    double Treq, MAWP, MAPnc, Stress;
};
void expect(const Shell& e, const Expected& by) {
    EXPECT_NEAR(e.TreqRaw, by.Treq, 4e-6 * std::fabs(by.Treq));
    EXPECT_NEAR(e.MAWP, by.MAWP, 4e-6 * std::fabs(by.MAWP));
    EXPECT_NEAR(e.MAPnc, by.MAPnc, 4e-6 * std::fabs(by.MAPnc));
    EXPECT_NEAR(e.Stress, by.Stress, 4e-6 * std::fabs(by.Stress));
}

// All values differ, so that none can be taken for another.
Shell some(Int code, Int Outside) {
    Shell e = element(code);
    e.P = 310.0f, e.Sa = 20000.0f, e.S = 17500.0f, e.E = 0.85f;
    e.D = 40.0f, e.t = 0.75f, e.c = 0.125f, e.u = 0.03125f;
    e.Outside = Outside;
    return e;
}
Shell some_thick(Int code, Int Outside) {
    Shell e = some(code, Outside);
    e.t = 11.0f, e.P = 4000.0f;
    return e;
}

TEST_F(ThickSwitch, ThinCylinder) {
    const double P = 310, Sa = 20000, S = 17500, E = 0.85, D = 40, t = 0.75, c = 0.125;
    const double u = 0.03125, tc = t - c - u, R = D / 2 + c, Ro = (D - 2 * u) / 2;
    expect(some(CYLINDER, 0).calculate(),
           {P * R / (S * E - 0.6 * P), S * E * tc / (R + 0.6 * tc), Sa * E * t / (20 + 0.6 * t),
            P * (R + 0.6 * tc) / (E * tc)});
    expect(some(CYLINDER, 1).calculate(),
           {P * Ro / (S * E + 0.4 * P), S * E * tc / (Ro - 0.4 * tc), Sa * E * t / (20 - 0.4 * t),
            P * (Ro - 0.4 * tc) / (E * tc)});
}

TEST_F(ThickSwitch, ThickCylinder) {
    const double P = 4000, Sa = 20000, S = 17500, E = 0.85, t = 11, c = 0.125, u = 0.03125;
    const double R = 20 + c, Ro = 20 - u, Ri = 20 - t + c;
    expect(some_thick(CYLINDER, 0).calculate(),
           {R * (std::exp(P / (S * E)) - 1), S * E * std::log((R + t - c - u) / R),
            Sa * E * std::log((20 + t) / 20), P / (E * std::log((20 + t - u) / R))});
    expect(some_thick(CYLINDER, 1).calculate(),
           {Ro * (1 - std::exp(-P / (S * E))), S * E * std::log(Ro / Ri),
            Sa * E * std::log(20 / (20 - t)), P / (E * std::log(Ro / Ri))});
}

TEST_F(ThickSwitch, ThinSphere) {
    const double P = 310, Sa = 20000, S = 17500, E = 0.85, D = 40, t = 0.75, c = 0.125;
    const double u = 0.03125, tc = t - c - u, R = D / 2 + c, Ro = (D - 2 * u) / 2;
    expect(some(SPHERE, 0).calculate(),
           {P * R / (2 * S * E - 0.2 * P), 2 * S * E * tc / (R + 0.2 * tc),
            2 * Sa * E * t / (20 + 0.2 * t), P * (R + 0.2 * tc) / (2 * E * tc)});
    expect(some(SPHERE, 1).calculate(),
           {P * Ro / (2 * S * E + 0.8 * P), 2 * S * E * tc / (Ro - 0.8 * tc),
            2 * Sa * E * t / (20 - 0.8 * t), P * (Ro - 0.8 * tc) / (2 * E * tc)});
}

TEST_F(ThickSwitch, ThickSphereHasHalfThePressureInItsStress) {
    const double P = 4000, Sa = 20000, S = 17500, E = 0.85, t = 11, c = 0.125, u = 0.03125;
    const double R = 20 + c, Rt = 20 + t - u, Ro = 20 - u, Ri = 20 - t + c;
    expect(some_thick(SPHERE, 0).calculate(),
           {R * (std::exp(P / (2 * S * E)) - 1), 2 * S * E * std::log(Rt / R),
            2 * Sa * E * std::log((20 + t) / 20), P / 2 / (E * std::log(Rt / R))});
    expect(some_thick(SPHERE, 1).calculate(),
           {Ro * (1 - std::exp(-P / (2 * S * E))), 2 * S * E * std::log(Ro / Ri),
            2 * Sa * E * std::log(20 / (20 - t)), P / 2 / (E * std::log(Ro / Ri))});
}

// MAPnc distinguishes the forms: the thin form of the element, and the thick one.
struct Switch {
    Int element, Outside;
    double thin_factor; // of t under Sa E t / (R ...)
    double stresses;    // 1 cylinder, 2 sphere
};
double thin_MAPnc(const Shell& e, const Switch& at) {
    return at.stresses * double(e.Sa) * double(e.E) * double(e.t) /
           (double(e.D) / 2 + at.thin_factor * double(e.t));
}
double thick_MAPnc(const Shell& e, const Switch& at) {
    const double R = double(e.D) / 2, t = double(e.t);
    return at.stresses * double(e.Sa) * double(e.E) *
           std::log(e.Outside == 0 ? (R + t) / R : R / (R - t));
}
constexpr Switch SWITCHES[] = {
    {CYLINDER, 0, 0.6, 1}, {CYLINDER, 1, -0.4, 1}, {SPHERE, 0, 0.2, 2}, {SPHERE, 1, -0.8, 2}};
void expect_thin(const Shell& e, const Switch& at) {
    EXPECT_NEAR(e.MAPnc, thin_MAPnc(e, at), 1e-6 * double(e.MAPnc));
    EXPECT_GT(std::fabs(double(e.MAPnc) - thick_MAPnc(e, at)), 1e-4 * double(e.MAPnc));
}
void expect_thick(const Shell& e, const Switch& at) {
    EXPECT_NEAR(e.MAPnc, thick_MAPnc(e, at), 2e-6 * double(e.MAPnc));
    EXPECT_GT(std::fabs(double(e.MAPnc) - thin_MAPnc(e, at)), 1e-4 * double(e.MAPnc));
}

TEST_F(ThickSwitch, ByPressureFromBothSides) {
    for (const Switch& at : SWITCHES) {
        SCOPED_TRACE(testing::Message() << "element " << at.element << " outside " << at.Outside);
        Shell e = element(at.element);
        e.Outside = at.Outside;
        e.S = 17500.0f, e.E = 0.85f, e.D = 40.0f, e.t = 4.0f;
        e.P = (at.element == CYLINDER ? 0.385f : 0.665f) * e.S * e.E; // exactly: thin
        expect_thin(e.calculate(), at);
        e.P = above(e.P);
        expect_thick(e.calculate(), at);
    }
}

TEST_F(ThickSwitch, ByThicknessFromBothSides) {
    // Thickness at the switch: R/2, a quarter of the inside diameter, 0.356 R.
    const Real exact[] = {10.0f, 40.0f / 6.0f, 0.356f * 20.0f, 0.0f};
    for (int i = 0; i < 4; ++i) {
        const Switch& at = SWITCHES[i];
        SCOPED_TRACE(testing::Message() << "element " << at.element << " outside " << at.Outside);
        Shell e = element(at.element);
        e.Outside = at.Outside;
        e.D = 40.0f;
        e.t = exact[i];
        if (e.Outside != 0) {
            // The largest thickness that is not above its own limit.
            const auto thick = [&](Real t) {
                return at.element == CYLINDER ? (40.0f - 2.0f * t) / 4.0f < t
                                              : 0.356f * (40.0f - 2.0f * t) / 2.0f < t;
            };
            if (e.t == 0.0f) e.t = 0.356f * 40.0f / 2.0f / 1.356f;
            while (thick(e.t))
                e.t = below(e.t);
            while (!thick(above(e.t)))
                e.t = above(e.t);
            EXPECT_NEAR(e.t, at.element == CYLINDER ? 20.0 / 3 : 0.356 * 20 / 1.356, 1e-5);
        }
        expect_thin(e.calculate(), at);
        e.t = above(e.t);
        expect_thick(e.calculate(), at);
    }
}

TEST_F(ThickSwitch, TheSwitchLooksAtTheCorrodedWall) {
    Shell e = element(CYLINDER);
    e.D = 39.5f, e.t = 10.25f, e.c = 0.25f; // R 20, tc 10 = R/2
    expect_thin(e.calculate(), SWITCHES[0]);
    e.u = -0.001f;
    expect_thick(e.calculate(), SWITCHES[0]);
    e.u = 0.001f;
    expect_thin(e.calculate(), SWITCHES[0]);
}

TEST_F(ThickSwitch, OutsideFormsAgreeWithInsideForms) {
    for (const Int code : {CYLINDER, SPHERE}) {
        for (const Real t : {0.25f, 1.0f, 9.0f}) {
            Shell inside = element(code), outside = element(code);
            inside.t = outside.t = t;
            inside.D = 40.0f, outside.D = 40.0f + 2.0f * t;
            outside.Outside = 1;
            inside.calculate(), outside.calculate();
            EXPECT_NEAR(inside.MAWP, outside.MAWP, 2e-6f * inside.MAWP);
            EXPECT_NEAR(inside.MAPnc, outside.MAPnc, 2e-6f * inside.MAPnc);
            EXPECT_NEAR(inside.Stress, outside.Stress, 2e-6f * inside.Stress);
            // Corrosion thins the wall from the inside, so it leaves the outside diameter alone.
            inside.c = outside.c = 0.0625f;
            inside.calculate(), outside.calculate();
            EXPECT_NEAR(inside.MAWP, outside.MAWP, 4e-6f * inside.MAWP);
            EXPECT_NEAR(inside.Stress, outside.Stress, 4e-6f * inside.Stress);
        }
    }
}

} // namespace
} // namespace tarvane
