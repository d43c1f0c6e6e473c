// The small end of the hub by code and type, the lines that open the code part, the lap of a lap
// joint flange.
#include "flange/hub.h"
#include "shape_fixture.h"

namespace tarvane {
namespace {

using stage_test::Lines;

class HubSmallEnd : public shape_test::ShapeTest {
  protected:
    Real tHubReq = -7.0f, pHub = -7.0f;

    Lines small_end(FLANGE_STATE& s, Real ci = 0.0f, bool silent = false) {
        tHubReq = pHub = -7.0f;
        HUB_SMALL_END(s, ci, silent, tHubReq, pHub);
        return written();
    }
};

// Hub of the published shell D 96, P 100, S 17500, E 0.85, allowance 0.125: 0.32484 + 0.125.
constexpr Real CA = 0.125f;
FLANGE_STATE hub(Int code = ASME_VIII_1, Int type = INTEGRAL_WELD_NECK) {
    FLANGE_STATE s;
    s.code = code;
    s.type = type;
    s.P = 100.0f;
    s.B = 96.0f;
    s.go = 0.5f;
    s.Sfo = 17500.0f;
    s.jointE = 0.85f;
    s.Go = 98.0f;
    s.Gi = 97.0f;
    return s;
}

constexpr const char* EDITION_1 = "ASME Code, Section VIII Division 1, 2017";
constexpr const char* PD = "PD 5500:2018+A1:2018, Section 3.8";
constexpr const char* EN = "European Std: EN 13445-3:2014 Issue 4 + A3:2017 - Section 11";
constexpr const char* K_PD =
    "000002:Stress Augmentation Factor per PD:5500 paragraph 3.8.3.4.2 [k]:";
constexpr const char* K_EN =
    "000002:Gasket Augmentation Factor per EN 13445 paragraph 11.5.4.2 [k]:";
constexpr const char* K_FULL = "Because the Flange ID is >= 2000 mm, k = 1.333";
constexpr const char* K_NOTE =
    "000100:Note: For Evaluation of 'k', Metric dimensions are employed.";

TEST_F(HubSmallEnd, division_1_in_full) {
    FLANGE_STATE s = hub();
    const Lines lines = small_end(s, CA);
    EXPECT_CLOSE(tHubReq, 0.44984, 1e-5);
    EXPECT_CLOSE(pHub, 17500.0 * 0.85 * 0.375 / (48.125 + 0.225), 1e-6); // 115.370
    EXPECT_EQ(lines, (Lines{
                         EDITION_1,
                         "000002:Hub Small End Required Thickness due to Internal Pressure:",
                         " = (P*(D/2+Ca))/(S*E-0.6*P) per UG-27 (c)(1)",
                         " = ( 100.0 * ( 96.0/2 + 0.125 ))/( 17500.0 * 0.85 - 0.6 * 100.0 ) + Ca",
                         " = 0.4498 in.",
                         "000002:Hub Small End Hub MAWP:",
                         " = (S*E*t)/(R+0.6*t) per UG-27 (c)(1)",
                         " = (17500.0 * 0.85 * 0.375)/(48.125 + 0.6 * 0.375 )",
                         " = 115.370 psig",
                     }));
}

TEST_F(HubSmallEnd, thickness_above_the_hub_carries_the_warning) {
    FLANGE_STATE s = hub();
    s.go = 0.25f;
    const Lines lines = small_end(s, CA);
    EXPECT_EQ(lines[4],
              "000100: = 0.4498 in.  Warning: Less than specified Small End Hub thickness");
    s.go = tHubReq; // equal is enough
    EXPECT_EQ(small_end(s, CA)[4], " = 0.4498 in.");
}

TEST_F(HubSmallEnd, pressure_of_the_required_hub_is_the_design_pressure) {
    for (const Real P : {50.0f, 300.0f, 2500.0f}) {
        FLANGE_STATE s = hub();
        s.P = P;
        s.ce = 0.0625f;
        small_end(s, CA);
        s.go = tHubReq;
        small_end(s, CA);
        EXPECT_CLOSE(pHub, static_cast<double>(P), 5e-6) << P;
    }
}

TEST_F(HubSmallEnd, division_2_by_the_older_rules) {
    FLANGE_STATE s = hub(ASME_VIII_2);
    const Lines lines = small_end(s, CA);
    EXPECT_CLOSE(tHubReq, 100.0 * 48.125 / (17500.0 - 50.0) + 0.125, 1e-6); // 0.40079
    EXPECT_CLOSE(pHub, 17500.0 * 0.85 * std::log((0.75 + 96.25) / 96.25), 1e-4);
    EXPECT_EQ(lines, (Lines{
                         "ASME Code, Section VIII, Division 2, 2004, A-06",
                         "000002:Hub Small End Required Thickness due to Internal Pressure:",
                         " = (P*(D/2+Ca))/(S-0.5*P)",
                         " = ( 100.0 * ( 96.0/2 + 0.125 ))/( 17500.0 - 0.5 * 100.0 ) + Ca",
                         " = 0.4008 in.",
                     }));
}

TEST_F(HubSmallEnd, current_division_2_computes_without_lines) {
    NEW_DIV_2_RULES = true;
    FLANGE_STATE s = hub(ASME_VIII_2);
    s.ce = 0.0625f;
    EXPECT_EQ(small_end(s, CA), (Lines{"ASME Code, Section VIII Division 2, 2017"}));
    EXPECT_CLOSE(tHubReq, 100.0 * 48.125 / (17500.0 - 50.0) + 0.1875, 1e-6);
    EXPECT_CLOSE(pHub, 17500.0 * 0.85 * std::log((0.625 + 96.25) / 96.25), 1e-4);
}

TEST_F(HubSmallEnd, edition_of_1998) {
    CODE_A98_ADDENDA = 1;
    FLANGE_STATE s = hub(ASME_VIII_1, INTEGRAL_SLIP_ON);
    EXPECT_EQ(small_end(s), (Lines{"ASME Code, Section VIII Division 1, 1998, Code A-98 Addenda"}));
}

TEST_F(HubSmallEnd, slip_on_flange_has_its_thickness_but_no_rating_and_no_lines) {
    for (const Int type : {INTEGRAL_SLIP_ON, INTEGRAL_RING, LOOSE_SLIP_ON, LAP_JOINT}) {
        FLANGE_STATE s = hub(ASME_VIII_1, type);
        EXPECT_EQ(small_end(s, CA), (Lines{EDITION_1})) << type;
        EXPECT_CLOSE(tHubReq, 0.44984, 1e-5);
        EXPECT_EQ(pHub, 99999.0f);
    }
}

TEST_F(HubSmallEnd, external_pressure_leaves_the_default_and_no_line) {
    FLANGE_STATE s = hub(EN_13445);
    s.P = -0.5f;
    EXPECT_TRUE(small_end(s).empty());
    EXPECT_EQ(pHub, 99999.0f);
    EXPECT_EQ(tHubReq, -7.0f);
    s.P = 0.0f;
    EXPECT_FALSE(small_end(s).empty());
}

TEST_F(HubSmallEnd, shell_stress_in_use) {
    FLANGE_STATE s = hub();
    s.useShellStress = 1;
    EXPECT_EQ(small_end(s, CA), (Lines{EDITION_1})); // none given
    EXPECT_EQ(pHub, 99999.0f);
    EXPECT_EQ(tHubReq, -7.0f);
    s.Sn = 0.001f;
    EXPECT_EQ(small_end(s, CA).size(), 1u);
    s.Sn = std::nextafter(0.001f, 1.0f);
    EXPECT_EQ(small_end(s, CA).size(), 9u);
    s.Sn = 20000.0f;
    EXPECT_EQ(small_end(s, CA)[3],
              " = ( 100.0 * ( 96.0/2 + 0.125 ))/( 20000.0 * 0.85 - 0.6 * 100.0 ) + Ca");
    EXPECT_CLOSE(tHubReq, 100.0 * 48.125 / (17000.0 - 60.0) + 0.125, 1e-6);
    s.useShellStress = 0;
    small_end(s, CA);
    EXPECT_CLOSE(tHubReq, 0.44984, 1e-5);
}

TEST_F(HubSmallEnd, cover_and_missing_hub_are_not_rated) {
    FLANGE_STATE s = hub(ASME_VIII_1, BLIND);
    EXPECT_EQ(small_end(s), (Lines{EDITION_1}));
    EXPECT_EQ(tHubReq, -7.0f);
    s = hub();
    s.B = 0.001f;
    EXPECT_EQ(small_end(s), (Lines{EDITION_1}));
    s.B = std::nextafter(0.001f, 1.0f);
    EXPECT_EQ(small_end(s).size(), 9u);
    s = hub();
    s.go = 0.0001f;
    EXPECT_EQ(small_end(s), (Lines{EDITION_1}));
    s.go = std::nextafter(0.0001f, 1.0f);
    EXPECT_EQ(small_end(s).size(), 9u);
    s = hub(ASME_VIII_1, REVERSE_WELD_NECK); // needs a hub of its own too
    s.go = 0.001f;
    EXPECT_EQ(small_end(s), (Lines{EDITION_1}));
    s.go = std::nextafter(0.001f, 1.0f);
    EXPECT_EQ(small_end(s).size(), 9u);
    s = hub();
    s.ce = 0.375f;
    EXPECT_EQ(small_end(s, CA), (Lines{EDITION_1})); // go all corroded away
    EXPECT_EQ(pHub, 99999.0f);
}

TEST_F(HubSmallEnd, division_1_flange_prints_neither_k_nor_gasket_width_for_either_flag) {
    FLANGE_STATE s = hub();
    EXPECT_EQ(small_end(s, CA, true), small_end(s, CA, false));
}

// ---- PD 5500 and EN 13445 -------------------------------------------------------------------------

TEST_F(HubSmallEnd, reverse_flange_under_pd_has_the_factor_k_only) {
    FLANGE_STATE s = hub(PD_5500, REVERSE_WELD_NECK);
    EXPECT_EQ(small_end(s, CA), (Lines{PD, K_PD, K_FULL, K_NOTE}));
    EXPECT_EQ(tHubReq, -7.0f);
    EXPECT_EQ(pHub, 99999.0f);
    EXPECT_EQ(small_end(s, CA, true), (Lines{PD}));
}

TEST_F(HubSmallEnd, en_in_full) {
    FLANGE_STATE s = hub(EN_13445);
    const Lines lines = small_end(s, CA);
    EXPECT_CLOSE(tHubReq, 100.0 * 96.25 / (35000.0 - 100.0) + 0.125, 1e-6); // 0.40079
    EXPECT_EQ(pHub, 99999.0f);
    EXPECT_EQ(
        lines,
        (Lines{
            EN,
            "000002:Hub Small End Required Thickness due to Internal Pressure, per EN 13445 7.4.2:",
            " = P * ( Di + 2 * ci ) / ( 2 * f * z - P ) Note: Di = B",
            " = 100.0 * ( 96.0 + 2 * 0.125 )/( 2 * 17500.0 * 1.0 - 100.0 )",
            " = 0.4008 in.",
            K_EN,
            K_FULL,
            K_NOTE,
            "000002:Gasket Effective Width:",
            "N = ( Go - Gi ) / 4",
            "= (98.0 - 97.0)/4 = 0.25 in.",
            "b = bo = 0.25 in.",
        }));
    EXPECT_EQ(small_end(s, CA, true).size(), 5u); // the flag closes k and gasket width only
    EXPECT_CLOSE(tHubReq, 100.0 * 96.25 / (35000.0 - 100.0) + 0.125, 1e-6);
}

TEST_F(HubSmallEnd, en_hub_takes_the_flange_stress_even_with_the_shell_stress_in_use) {
    FLANGE_STATE s = hub(EN_13445);
    s.useShellStress = 1;
    s.Sn = 5000.0f;
    s.ce = 0.0625f;
    small_end(s, CA);
    EXPECT_CLOSE(tHubReq, 100.0 * 96.25 / (35000.0 - 100.0) + 0.1875, 1e-6);
    s.Sn = 0.0f;
    EXPECT_EQ(small_end(s, CA), (Lines{EN}));
}

TEST_F(HubSmallEnd, en_slip_on_with_a_hub_stops_before_k_and_without_one_does_not) {
    FLANGE_STATE s = hub(EN_13445, INTEGRAL_SLIP_ON);
    EXPECT_EQ(small_end(s, CA), (Lines{EN}));
    EXPECT_EQ(tHubReq, -7.0f);
    s.go = 0.0f;
    const Lines lines = small_end(s, CA);
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[1], K_EN);
    EXPECT_EQ(lines[4], "000002:Gasket Effective Width:");
}

TEST_F(HubSmallEnd, rules_of_division_2_left_on_take_the_en_lines_but_not_k) {
    NEW_DIV_2_RULES = true;
    FLANGE_STATE s = hub(EN_13445);
    const Lines lines = small_end(s, CA);
    EXPECT_EQ(lines[1], K_EN);
    EXPECT_EQ(tHubReq, -7.0f);
}

TEST_F(HubSmallEnd, factor_k_by_the_corroded_bore) {
    const auto k_lines = [this](Real B, Real ci) {
        FLANGE_STATE s = hub(PD_5500, BLIND);
        s.B = B;
        const Lines lines = small_end(s, ci);
        return Lines(lines.begin() + 2, lines.end());
    };
    const Lines one{"Because the Flange ID is <= 1000 mm, k = 1.0", K_NOTE};
    const Lines full{K_FULL, K_NOTE};
    EXPECT_EQ(k_lines(39.37008f, 0.0f), one);
    EXPECT_EQ(k_lines(78.74016f, 0.0f), full);
    EXPECT_EQ(k_lines(78.5f, 0.125f), full);
    // 40.25 in. is 1022.35 mm; the millimetres are shown in every unit system.
    const Lines between{" = (2/3)(1 + B/2000)    Because 1000 mm < Flange ID < 2000 mm:",
                        " = (2/3)(1 + 1022.35/2000)", " = 1.007", K_NOTE};
    EXPECT_EQ(k_lines(40.0f, 0.125f), between);
    metric_report();
    EXPECT_EQ(k_lines(40.0f, 0.125f), between);
    EXPECT_EQ(k_lines(std::nextafter(39.37008f, 40.0f), 0.0f).size(), 4u);
    EXPECT_EQ(k_lines(std::nextafter(78.74016f, 40.0f), 0.0f).size(), 4u);
}

TEST_F(HubSmallEnd, effective_gasket_width) {
    const auto width_lines = [this](Real Go, Real Gi) {
        FLANGE_STATE s = hub(EN_13445, BLIND);
        s.Go = Go;
        s.Gi = Gi;
        const Lines lines = small_end(s);
        return Lines(lines.end() - 2, lines.end());
    };
    // 0.5 * bo below 0.5, so bo below 1
    EXPECT_EQ(width_lines(30.0f, 26.0f)[0], "= (30.0 - 26.0)/4 = 1.0 in.");
    EXPECT_EQ(width_lines(30.0f, 26.0f)[1], "Cb * sqrt(bo) = 0.5 * sqrt(1.0) = 0.5 in.");
    EXPECT_EQ(width_lines(30.0f, 26.0625f)[1], "b = bo = 0.9844 in.");
    EXPECT_EQ(width_lines(30.0f, 26.015625f)[1], "b = bo = 0.9961 in.");
    EXPECT_EQ(width_lines(34.0f, 26.0f)[1], "Cb * sqrt(bo) = 0.5 * sqrt(2.0) = 0.7071 in.");
    metric_report(); // 0.5 * sqrt(25.4) = 2.52; 0.7071 in. = 17.9605 mm
    EXPECT_EQ(width_lines(34.0f, 26.0f)[0], "= (863.6 - 660.4)/4 = 50.8 mm");
    EXPECT_EQ(width_lines(34.0f, 26.0f)[1], "Cb * sqrt(bo) = 2.52 * sqrt(50.8) = 17.9605 mm");
}

TEST_F(HubSmallEnd, hub_lines_in_report_units) {
    metric_report();
    FLANGE_STATE s = hub();
    const Lines lines = small_end(s, CA);
    // 96 * 25.4 is just short of 2438.4 in single precision.
    EXPECT_EQ(lines[3], " = ( 0.69 * ( 2438.3999/2 + 3.175 ))/( 120.66 * 0.85 - 0.6 * 0.69 ) + Ca");
    EXPECT_EQ(lines[4], " = 11.4259 mm");
    EXPECT_EQ(lines[7], " = (120.66 * 0.85 * 9.525)/(1222.375 + 0.6 * 9.525 )");
    EXPECT_EQ(lines[8], " = 0.795 MPa");
}

// 96 in. of bore, 0.125 in. of allowance, 100 psi: 960 di, 0.25 th, 50 pr; 17500 psi are 4375 st.
TEST_F(HubSmallEnd, each_value_goes_through_the_factor_of_its_kind) {
    report_in_kinds();
    FLANGE_STATE s = hub();
    Lines lines = small_end(s, CA);
    EXPECT_EQ(lines[3], " = ( 50.0 * ( 960.0/2 + 0.25 ))/( 4375.0 * 0.85 - 0.6 * 50.0 ) + Ca");
    EXPECT_EQ(lines[4], " = 0.8997 th"); // 0.44984
    EXPECT_EQ(lines[7], " = (4375.0 * 0.85 * 0.75)/(481.25 + 0.6 * 0.75 )");
    EXPECT_EQ(lines[8], " = 57.685 pr"); // 115.370
    s.go = 0.25f;
    EXPECT_EQ(small_end(s, CA)[4],
              "000100: = 0.8997 th  Warning: Less than specified Small End Hub thickness");

    s = hub(ASME_VIII_2);
    EXPECT_EQ(small_end(s, CA)[3], " = ( 50.0 * ( 960.0/2 + 0.25 ))/( 4375.0 - 0.5 * 50.0 ) + Ca");

    s = hub(EN_13445);
    lines = small_end(s, CA);
    EXPECT_EQ(lines[3], " = 50.0 * ( 960.0 + 2 * 0.25 )/( 2 * 4375.0 * 1.0 - 50.0 )");
    EXPECT_EQ(lines[4], " = 0.8016 th");                  // 0.40079
    EXPECT_EQ(lines[10], "= (980.0 - 970.0)/4 = 0.5 th"); // 98, 97, 0.25
    EXPECT_EQ(lines[11], "b = bo = 0.5 th");
    s.Go = 105.0f;
    EXPECT_EQ(small_end(s, CA)[11], // 0.5 * sqrt(2), a width of 2 and 0.5 * sqrt(2)
              "Cb * sqrt(bo) = 0.71 * sqrt(4.0) = 1.4142 th");
}

// ---- lap joint --------------------------------------------------------------------------------------

FLANGE_STATE lap() {
    FLANGE_STATE s;
    s.type = LAP_JOINT;
    s.Wm1 = 125000.0f;
    s.W = 250000.0f;
    s.GiC = 20.0f;
    s.Sn = 10000.0f;
    s.Sna = 20000.0f;
    return s;
}

TEST_F(HubSmallEnd, lap_in_operation_and_seating) {
    LAP_JOINT_THICKNESS(lap());
    // 125000 / (3.14159 * 20 * 8000) = 0.24868, seating the same
    EXPECT_EQ(written(), (Lines{
                             "000002:Required Lap Thickness Calculations for Lap Joint Flanges:",
                             "000002:Required Lap Thickness due to Shear Stress, Operating [trlo]:",
                             " = Wm1 / ( pi * Gid * 0.8 * So )",
                             " = 125000.0/( pi * 20.0 * 8000.0 )",
                             " = 0.249 in.",
                             "000002:Required Lap Thickness due to Shear Stress, Seating [trla]:",
                             " = W / ( pi * Gid * 0.8 * Sa )",
                             " = 250000.0/( pi * 20.0 * 16000.0 )",
                             " = 0.249 in.",
                         }));
}

TEST_F(HubSmallEnd, lap_in_the_units_of_its_values) {
    report_in_kinds();
    LAP_JOINT_THICKNESS(lap());
    const Lines lines = written();
    EXPECT_EQ(lines[3], " = 500000.0/( pi * 200.0 * 2000.0 )");
    EXPECT_EQ(lines[4], " = 0.497 th"); // 0.24868
    EXPECT_EQ(lines[7], " = 1000000/( pi * 200.0 * 4000.0 )");
    EXPECT_EQ(lines[8], " = 0.497 th");
}

TEST_F(HubSmallEnd, lap_without_an_operating_allowable_has_the_seating_thickness_only) {
    FLANGE_STATE s = lap();
    s.Sn = 0.001f;
    LAP_JOINT_THICKNESS(s);
    const Lines lines = written();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[1], "000002:Required Lap Thickness due to Shear Stress, Seating [trla]:");
    s.Sn = s.Sna = std::nextafter(0.001f, 1.0f);
    LAP_JOINT_THICKNESS(s);
    EXPECT_EQ(written().size(), 9u);
    s.Sn = s.Sna = 0.001f;
    LAP_JOINT_THICKNESS(s);
    EXPECT_EQ(written(),
              (Lines{"000002:Required Lap Thickness Calculations for Lap Joint Flanges:"}));
}

TEST_F(HubSmallEnd, only_a_lap_joint_has_a_lap) {
    for (Int type = INTEGRAL_WELD_NECK; type <= LOOSE_REVERSE; ++type) {
        FLANGE_STATE s = lap();
        s.type = type;
        LAP_JOINT_THICKNESS(s);
        EXPECT_EQ(written().empty(), type != LAP_JOINT) << type;
    }
}

} // namespace
} // namespace tarvane
