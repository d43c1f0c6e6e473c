#include "../material_file.h"
#include "shell/forming.h"
#include "shell_fixture.h"

namespace tarvane {
namespace {

using namespace shell_test;
using material_test::Record;

constexpr double PI_ = 3.14159265358979;

struct Formed {
    Int Element = CYLINDER, Outside = 0;
    Real D = 48.0f, t = 1.0f, Strain = UNTOUCHED;
    std::string Material = "SA-516 70";
    Real r = 8.16f, Dsmall = 24.0f, Alpha = 30.0f;
    Int Code = 1, Reference = 1, Class = -77;
    Real Thinning = UNTOUCHED, Area = UNTOUCHED, Dmax = UNTOUCHED, Dblank = UNTOUCHED;
    Real k = 2.0f, L = 43.2f, Straight = 0.25f;

    Formed& run() {
        FORMING_ARGUMENTS a{Element, Outside, D,    t,         Strain,  Material, r,
                            Dsmall,  Alpha,   Code, Reference, Class,   Thinning, Area,
                            Dmax,    Dblank,  k,    L,         Straight};
        FORMING_STRAIN(a);
        return *this;
    }
};

class Forming : public ShellTest {
  protected:
    Forming() {
        const auto material = [](std::string_view name, Int Class, std::string_view chart,
                                 std::string_view note = "") {
            return Record(name, 1).put(152, Class).text(172, chart).text(100, note);
        };
        const std::string file = material_test::material_file(
            9, 0,
            {material("SA-516 70", 1, "CS-2"), material("SA-240 304", 16, "HA-1"),
             material("SA-387 11", 4, "CS-2"), material("SB-1", 1, "NFA-1"),
             material("SB-2", 1, "NFN-2"), material("SB-3", 16, "NFN-2"),
             material("SB-4", 16, "NFN-2", "smls. tube"), material("SB-5", 16, "NFN-2", "TUBE"),
             material("SB-6", 16, "XCSX")});
        write_file("library", "MATFILE1.BIN", file);
        write_file("library", "MATFILE2.BIN", file);
    }
};

TEST_F(Forming, StrainByTheElement) {
    const double t = 1, Rf = 24.5;
    const struct {
        Int Element;
        double strain;
    } cases[] = {{CYLINDER, 50 * t / Rf},
                 {ELLIPTICAL, 75 * t / (0.17 * 48 + 0.5)},
                 {TORISPHERICAL, 75 * t / 8.66},
                 {SPHERE, 75 * t / Rf},
                 {6, 0},
                 {7, 0},
                 {0, 0}};
    for (const auto& given : cases) {
        Formed f;
        f.Element = given.Element;
        f.run();
        EXPECT_NEAR(f.Strain, given.strain, 1e-5) << given.Element;
        EXPECT_EQ(f.Class, 1);
        EXPECT_EQ(f.Thinning, 0.0f);
        EXPECT_EQ(f.Area, UNTOUCHED); // Division 1
    }
}

TEST_F(Forming, OutsideDiameters) {
    Formed f;
    f.Outside = 1, f.D = 50.0f;
    EXPECT_NEAR(f.run().Strain, 50 / 24.5, 1e-5);
    f.Element = ELLIPTICAL;
    EXPECT_NEAR(f.run().Strain, 75 / (0.17 * 48 + 0.5), 1e-5);
}

TEST_F(Forming, AConeGoesByItsSmallerEnd) {
    const double walls = 2 / std::cos(PI_ / 6);
    Formed f;
    f.Element = CONE;
    EXPECT_NEAR(f.run().Strain, 50 / ((24 + 24 + walls) / 4), 1e-5);
    f.Outside = 1;
    EXPECT_NEAR(f.run().Strain, 50 / ((24 + 24 - walls) / 4), 1e-5);
    f.Outside = 0, f.Dsmall = 90.0f;
    EXPECT_NEAR(f.run().Strain, 50 / ((48 + 48 + walls) / 4), 1e-5);
}

TEST_F(Forming, AClosedFormIsAHundredPerCent) {
    Formed f;
    f.D = 0.0f, f.t = 0.02f; // Rf 0.01
    EXPECT_EQ(f.run().Strain, 100.0f);
    f.t = 0.0201f;
    EXPECT_NEAR(f.run().Strain, 100.0, 0.01); // 50 t / (t/2), the same by the formula
    f.D = 0.019f, f.t = 0.0005f;
    EXPECT_EQ(f.run().Strain, 100.0f);
    f.D = 0.02f;
    EXPECT_NEAR(f.run().Strain, 50 * 0.0005 / 0.01025, 1e-3);
}

TEST_F(Forming, MaterialsThatCount) {
    const struct {
        const char* name;
        Int Class;
        bool counts;
    } cases[] = {{"SA-516 70", 1, true},  {"SA-240 304", 16, true},
                 {"SA-387 11", 4, false}, {"SB-1", 1, false},
                 {"SB-2", 1, true},       {"SB-3", 16, false},
                 {"SB-4", 16, true},      {"SB-5", 16, false},
                 {"SB-6", 16, true},      {"no such", 0, false},
                 {"", 0, false}};
    for (const auto& given : cases) {
        Formed f;
        f.Material = given.name;
        f.run();
        EXPECT_EQ(f.Class, given.Class) << given.name;
        EXPECT_EQ(f.Strain > 0.0f, given.counts) << given.name;
    }
}

TEST_F(Forming, OtherCodesHaveNoStrain) {
    for (const Int Code : {3, 4, 9}) {
        Formed f;
        f.Code = Code;
        f.run();
        EXPECT_EQ(f.Strain, 0.0f);
        EXPECT_EQ(f.Thinning, 0.0f);
        EXPECT_EQ(f.Class, -77);
    }
}

TEST_F(Forming, Division2HeadsByTheirBlank) {
    for (const Int Element : {ELLIPTICAL, TORISPHERICAL, SPHERE}) {
        Formed f;
        f.Code = 2, f.Element = Element;
        f.run();
        Real Area = 0, Dmax = 0;
        HEAD_AREA_ARGUMENTS h{48.0f, 1.0f, 1.0f, 43.2f, 8.16f, 0.25f, 2.0f, Element, Area, Dmax};
        HEAD_SURFACE_AREA(h);
        EXPECT_EQ(f.Area, Area);
        EXPECT_EQ(f.Dmax, 50.0f);
        EXPECT_NEAR(f.Dblank, std::sqrt(4 * double(Area) / PI_), 1e-4);
        EXPECT_NEAR(f.Thinning, 100 * std::log(double(f.Dblank) / 48), 1e-3);
        EXPECT_GT(f.Strain, 0.0f);
        f.Outside = 1, f.D = 50.0f; // the same head
        f.run();
        EXPECT_EQ(f.Area, Area);
        EXPECT_NEAR(f.Thinning, 100 * std::log(double(f.Dblank) / 48), 1e-3);
    }
    for (const Int Element : {CYLINDER, CONE}) {
        Formed f;
        f.Code = 2, f.Element = Element;
        f.run();
        EXPECT_GT(f.Strain, 0.0f);
        EXPECT_EQ(f.Thinning, 0.0f);
        EXPECT_EQ(f.Area, UNTOUCHED);
    }
}

// ---- area ----------------------------------------------------------------------------------------------

double area(Int Type, Real D, Real t, Real ts, Real L, Real r, Real k, Real Straight = 0.0f) {
    Real Area = UNTOUCHED, Dmax = UNTOUCHED;
    HEAD_AREA_ARGUMENTS h{D, t, ts, L, r, Straight, k, Type, Area, Dmax};
    HEAD_SURFACE_AREA(h);
    EXPECT_EQ(Dmax, D + 2.0f * std::max(t, ts));
    return double(Area);
}

// Half of a spheroid, by Simpson's rule over its meridian.
double spheroid(double R, double h) {
    constexpr int N = 2000;
    double sum = 0;
    for (int i = 0; i <= N; ++i) {
        const double at = PI_ / 2 * i / N;
        const double ring =
            2 * PI_ * R * std::cos(at) * std::hypot(R * std::sin(at), h * std::cos(at));
        sum += ring * (i == 0 || i == N ? 1 : i % 2 == 1 ? 4 : 2);
    }
    return sum * PI_ / 2 / N / 3;
}

TEST_F(Forming, AreaOfAnEllipse) {
    for (const Real k : {1.2f, 1.6f, 2.0f, 2.6f})
        EXPECT_NEAR(area(ELLIPTICAL, 48, 1, 0.5f, 0, 0, k), spheroid(25, 25 / double(k)), 0.05)
            << k;
    // A sphere has no eccentricity: 0.001 in its place.
    EXPECT_NEAR(area(ELLIPTICAL, 48, 1, 1, 0, 0, 1), 2 * PI_ * 625, 1.0);
}

TEST_F(Forming, AreaOfAHemisphereAndItsStraightFlange) {
    EXPECT_NEAR(area(SPHERE, 48, 0.5f, 1, 0, 0, 0), 2 * PI_ * 625, 1e-3);
    for (const Int Type : {ELLIPTICAL, TORISPHERICAL, SPHERE})
        EXPECT_NEAR(area(Type, 48, 1, 1, 43, 8, 2, 0.25f) - area(Type, 48, 1, 1, 43, 8, 2),
                    PI_ * 50 * 3, 1e-2);
}

TEST_F(Forming, AreaOfATorisphere) {
    // As a cap: h = L - sqrt((L - r)^2 - (D/2 - r)^2), pi Ro^2 (h^2/Ro^2 (2 - h/Ro) + 1)
    const double h = 48 - std::sqrt(45.0 * 45 - 21.0 * 21);
    const double cap = PI_ * (h * h * (2 - h / 25) + 625);
    EXPECT_NEAR(area(TORISPHERICAL, 48, 1, 1, 48, 3, 0), cap, 2e-2);
    // No such triangle: h = r/(2 L) D
    const double flat = 3.0 / 2 / 20 * 48;
    EXPECT_NEAR(area(TORISPHERICAL, 48, 1, 1, 20, 3, 0),
                PI_ * (flat * flat * (2 - flat / 25) + 625), 2e-2);
    EXPECT_NEAR(area(TORISPHERICAL, 48, 1, 1, 24, 3, 0), PI_ * (9 * (2 - 3.0 / 25) + 625), 2e-2);
}

TEST_F(Forming, OtherTypesHaveNoArea) {
    for (const Int Type : {1, 5, 6, 0})
        EXPECT_EQ(area(Type, 48, 1, 1, 48, 3, 2), double(UNTOUCHED));
}

} // namespace
} // namespace tarvane
