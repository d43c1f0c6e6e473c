// The cylinder above a flange against published examples, and its pressure as the inverse of its
// thickness.
#include "flange/attached_shell.h"
#include "shape_fixture.h"

namespace tarvane {
namespace {

class AttachedShell : public shape_test::ShapeTest {};

struct Shell {
    Int code = ASME_VIII_1;
    Real P = 100.0f, D = 96.0f, ca = 0.0f, ce = 0.0f, S = 20000.0f, E = 1.0f;
    Int external = 0;
    Real t = 1.0f;

    Real mawp = -7.0f;
    Real thickness() {
        return ATTACHED_SHELL_THICKNESS(code, P, D, ca, ce, S, E, external, t, mawp);
    }
};

TEST_F(AttachedShell, published_cylinders_of_division_1) {
    Shell ptb{.P = 356.0f, .D = 90.0f, .ca = 0.125f}; // E4.3.1: 0.8119 + 0.125
    EXPECT_CLOSE(ptb.thickness(), 0.811896 + 0.125, 1e-6);

    Shell shop{.P = 100.0f, .D = 96.0f, .ca = 0.125f, .S = 17500.0f, .E = 0.85f};
    EXPECT_CLOSE(shop.thickness(), 0.32484 + 0.125, 1e-5);

    Shell calc{.P = 455.0f, .D = 58.0f}; // ta 0.66888, PA 675.676 at 1 in.
    EXPECT_CLOSE(calc.thickness(), 0.66888, 1e-5);
    EXPECT_CLOSE(calc.mawp, 675.676, 1e-6);
}

TEST_F(AttachedShell, published_cylinder_of_division_2) {
    Shell ptb{.code = ASME_VIII_2, .P = 356.0f, .D = 90.25f, .S = 22400.0f};
    EXPECT_CLOSE(ptb.thickness(), 0.722894, 1e-5); // exp(x) - 1 loses two digits at x of 0.016
}

TEST_F(AttachedShell, outside_basis_gives_the_thickness_of_the_inside_basis) {
    // UG-27 and Appendix 1-1 are one equation in R and in Ro.
    Shell outside{.P = 455.0f, .D = 60.0f, .external = 1};
    const Real t = outside.thickness();
    Shell inside{.P = 455.0f, .D = 60.0f - 2.0f * t};
    EXPECT_CLOSE(inside.thickness(), static_cast<double>(t), 2e-6);
}

TEST_F(AttachedShell, pressure_of_the_required_thickness_is_the_pressure) {
    for (const Int code : {ASME_VIII_1, ASME_VIII_2, PD_5500, EN_13445}) {
        for (const Int external : {0, 1}) {
            for (const Real P : {50.0f, 400.0f, 2000.0f}) {
                SCOPED_TRACE(testing::Message() << code << " " << external << " " << P);
                Shell shell{.code = code, .P = P, .D = 60.0f, .ca = 0.125f, .E = 0.85f};
                shell.external = external;
                shell.t = shell.thickness();
                shell.thickness();
                // t - ca cancels part of t at low pressure.
                EXPECT_CLOSE(shell.mawp, static_cast<double>(P), 5e-5);
            }
        }
    }
}

TEST_F(AttachedShell, older_division_2_rules_leave_the_joint_efficiency_out) {
    G_NUSE_OLD_DIV_2 = 1;
    Shell shell{
        .code = ASME_VIII_2, .P = 400.0f, .D = 60.0f, .ca = 0.125f, .ce = 0.0625f, .E = 0.5f};
    EXPECT_CLOSE(shell.thickness(), 400.0 * 30.125 / (20000.0 - 200.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(shell.mawp, 20000.0 * 0.8125 / (30.125 + 0.40625), 1e-6);
    G_NUSE_OLD_DIV_2 = 0;
    EXPECT_CLOSE(shell.thickness(), 30.125 * (std::exp(400.0 / 10000.0) - 1.0) + 0.1875, 1e-5);
    EXPECT_CLOSE(shell.mawp, 10000.0 * std::log((0.8125 + 30.125) / 30.125), 1e-5);
}

TEST_F(AttachedShell, thick_cylinder_by_thickness_on_either_basis) {
    // tc against half the inside radius: at it the thin formula, above it the logarithm.
    Shell inside{.P = 100.0f, .D = 2.0f, .t = 0.5f};
    inside.thickness();
    EXPECT_CLOSE(inside.mawp, 20000.0 * 0.5 / 1.3, 1e-6);
    inside.t = std::nextafter(0.5f, 1.0f);
    EXPECT_CLOSE(inside.thickness(), std::exp(0.005) - 1.0, 3e-5);
    EXPECT_CLOSE(inside.mawp, 20000.0 * std::log(1.5), 1e-5);
    // tc against a quarter of D - 2 (t - ca): t of 0.5 at D of 3.
    Shell outside{.P = 100.0f, .D = 3.0f, .external = 1, .t = 0.5f};
    outside.thickness();
    EXPECT_CLOSE(outside.mawp, 20000.0 * 0.5 / (1.5 - 0.2), 1e-6);
    outside.t = 0.5001f;
    EXPECT_CLOSE(outside.thickness(), 1.5 * (1.0 - std::exp(-0.005)), 3e-5);
    EXPECT_CLOSE(outside.mawp, 20000.0 * std::log(1.5 / 0.9999), 1e-5);
}

TEST_F(AttachedShell, thick_cylinder_by_pressure) {
    Shell shell{.P = 7700.0f, .D = 20.0f}; // 0.385 S E
    EXPECT_CLOSE(shell.thickness(), 7700.0 * 10.0 / (20000.0 - 4620.0), 1e-6);
    shell.P = 7701.0f;
    EXPECT_CLOSE(shell.thickness(), 10.0 * (std::exp(7701.0 / 20000.0) - 1.0), 1e-5);
    EXPECT_CLOSE(shell.mawp, 20000.0 * std::log(1.1), 1e-5);
    shell.external = 1;
    EXPECT_CLOSE(shell.thickness(), 10.0 * (1.0 - std::exp(-7701.0 / 20000.0)), 1e-5);
    EXPECT_CLOSE(shell.mawp, 20000.0 * std::log(10.0 / 9.0), 1e-5);
}

TEST_F(AttachedShell, allowances_come_off_the_thickness_and_off_their_own_face) {
    Shell shell{.code = PD_5500, .P = 100.0f, .D = 40.0f, .ca = 0.125f, .ce = 0.0625f};
    EXPECT_CLOSE(shell.thickness(), 100.0 * 40.25 / (40000.0 - 100.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(shell.mawp, 40000.0 * 0.8125 / (40.25 + 0.8125), 1e-6);
    shell.external = 1;
    EXPECT_CLOSE(shell.thickness(), 100.0 * 39.875 / (40000.0 + 100.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(shell.mawp, 40000.0 * 0.8125 / (39.875 - 0.8125), 1e-6);
}

TEST_F(AttachedShell, thin_and_thick_division_1_with_both_allowances) {
    Shell thin{.P = 400.0f, .D = 40.0f, .ca = 0.125f, .ce = 0.0625f};
    EXPECT_CLOSE(thin.thickness(), 400.0 * 20.125 / (20000.0 - 240.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(thin.mawp, 20000.0 * 0.8125 / (20.125 + 0.6 * 0.8125), 1e-6);
    thin.external = 1;
    EXPECT_CLOSE(thin.thickness(), 400.0 * 39.875 / 2.0 / (20000.0 + 160.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(thin.mawp, 20000.0 * 0.8125 / (39.875 / 2.0 - 0.4 * 0.8125), 1e-6);

    Shell thick{.P = 9000.0f, .D = 10.0f, .ca = 0.125f, .ce = 0.0625f};
    EXPECT_CLOSE(thick.thickness(), 5.125 * (std::exp(0.45) - 1.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(thick.mawp, 20000.0 * std::log((5.125 + 0.8125) / 5.125), 2e-6);
    thick.external = 1;
    EXPECT_CLOSE(thick.thickness(), 4.9375 * (1.0 - std::exp(-0.45)) + 0.1875, 1e-6);
    EXPECT_CLOSE(thick.mawp, 20000.0 * std::log(4.9375 / (5.0 - 1.0 + 0.125)), 2e-6);
}

TEST_F(AttachedShell, thick_division_1_takes_the_joint_efficiency) {
    // 0.385 S E is 3850: thick at 4500 with half the efficiency.
    Shell shell{.P = 4500.0f, .D = 10.0f, .E = 0.5f};
    EXPECT_CLOSE(shell.thickness(), 5.0 * (std::exp(0.45) - 1.0), 1e-6);
    EXPECT_CLOSE(shell.mawp, 10000.0 * std::log(6.0 / 5.0), 2e-6);
    shell.external = 1;
    EXPECT_CLOSE(shell.thickness(), 5.0 * (1.0 - std::exp(-0.45)), 1e-6);
    EXPECT_CLOSE(shell.mawp, 10000.0 * std::log(5.0 / 4.0), 2e-6);
    shell.P = 3000.0f;
    EXPECT_CLOSE(shell.thickness(), 3000.0 * 5.0 / (10000.0 + 1200.0), 1e-6);
}

TEST_F(AttachedShell, outside_limit_of_thickness_takes_the_allowance_of_the_inside) {
    // tc = t - 0.5 against 0.25 (10 - 2 (t - 0.5)): both 5/3 at t of 13/6.
    Shell shell{.P = 100.0f, .D = 10.0f, .ca = 0.5f, .external = 1, .t = 2.16f};
    EXPECT_CLOSE(shell.thickness(), 500.0 / (20000.0 + 40.0) + 0.5, 1e-6);
    EXPECT_CLOSE(shell.mawp, 20000.0 * 1.66 / (5.0 - 0.4 * 1.66), 1e-6);
    shell.t = 2.17f;
    shell.thickness();
    EXPECT_CLOSE(shell.mawp, 20000.0 * std::log(5.0 / (5.0 - 2.17 + 0.5)), 1e-6);
}

TEST_F(AttachedShell, en_has_a_least_thickness_without_pressure) {
    Shell shell{.code = EN_13445, .P = 0.0001f, .D = 40.0f, .ca = 0.125f, .ce = 0.0625f};
    EXPECT_CLOSE(shell.thickness(), 0.001 * 42.0 + 0.1875, 1e-6);
    EXPECT_CLOSE(shell.mawp, 40000.0 * 0.8125 / (40.25 + 0.8125), 1e-6);
    shell.external = 1;
    EXPECT_CLOSE(shell.thickness(), 0.001 * 40.0 + 0.1875, 1e-6);
    shell.P = std::nextafter(0.0001f, 1.0f);
    EXPECT_CLOSE(shell.thickness(), 0.1875, 1e-5);
    shell.external = 0;
    EXPECT_CLOSE(shell.thickness(), 0.1875, 1e-5);
    shell.code = PD_5500;
    shell.P = 0.0f;
    EXPECT_EQ(shell.thickness(), 0.1875f);
}

TEST_F(AttachedShell, en_takes_the_joint_efficiency_and_pd_does_not) {
    Shell en{.code = EN_13445, .P = 100.0f, .D = 40.0f, .E = 0.5f};
    Shell pd{.code = PD_5500, .P = 100.0f, .D = 40.0f, .E = 0.5f};
    EXPECT_CLOSE(en.thickness(), 4000.0 / (20000.0 - 100.0), 1e-6);
    EXPECT_CLOSE(pd.thickness(), 4000.0 / (40000.0 - 100.0), 1e-6);
    EXPECT_CLOSE(en.mawp, 20000.0 / 41.0, 1e-6);
    en.external = 1;
    EXPECT_CLOSE(en.thickness(), 4000.0 / (20000.0 + 100.0), 1e-6);
    EXPECT_CLOSE(en.mawp, 20000.0 / 39.0, 1e-6);
    en.P = 0.0f;
    en.external = 0;
    en.t = 2.5f;
    EXPECT_CLOSE(en.thickness(), 0.001 * 45.0, 1e-6);
}

} // namespace
} // namespace tarvane
