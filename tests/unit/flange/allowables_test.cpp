// Stress limits by code and type, the factor k, ratios and the summary table.
#include "flange/allowables.h"
#include "shape_fixture.h"

#include <limits>

namespace tarvane {
namespace {

using shape_test::example_flange;
using stage_test::Lines;

class StressLimits : public shape_test::ShapeTest {};

constexpr Real BIG = 3.4e38f;

// A narrow faced flange of one code on a shell of one diameter.
FLANGE_STATE on_shell(Int code, Int type, Real Dshell) {
    FLANGE_STATE s = example_flange();
    s.code = code;
    s.type = type;
    s.Dshell = Dshell;
    s.GoC = 30.0f;
    FLANGE_ALLOWABLES(s);
    return s;
}

TEST_F(StressLimits, asme_limits) {
    const FLANGE_STATE s = on_shell(ASME_VIII_1, INTEGRAL_WELD_NECK, 60.0f);
    EXPECT_EQ(s.kf, 1.0f);
    const StressTable expected = {
        {26700.0f, 17800.0f, 17800.0f, 17800.0f, 25000.0f, 17800.0f, 17800.0f},
        {30000.0f, 20000.0f, 20000.0f, 20000.0f, 25000.0f, 20000.0f, 20000.0f}};
    for (int row = 0; row < 2; ++row)
        for (int place = 0; place < PLACES; ++place)
            EXPECT_EQ(s.ALLOWED[row][place], expected[row][place]) << row << " " << place;
}

TEST_F(StressLimits, factor_k_divides_every_flange_limit_but_not_the_bolts) {
    const FLANGE_STATE s = on_shell(EN_13445, INTEGRAL_RING, 60.0f);
    const double k = (60.0 / 78.74 + 1.0) * 2.0 / 3.0;
    EXPECT_CLOSE(s.kf, k, 1e-6);
    for (const int place : {RADIAL, TANGENTIAL, AVERAGE, REVERSE, FULL_FACE}) {
        EXPECT_CLOSE(s.ALLOWED[OPERATING][place], 17800.0 / k, 1e-6) << place;
        EXPECT_CLOSE(s.ALLOWED[SEATING][place], 20000.0 / k, 1e-6) << place;
    }
    EXPECT_CLOSE(s.ALLOWED[OPERATING][HUB], 26700.0 / k, 1e-6);
    EXPECT_CLOSE(s.ALLOWED[SEATING][HUB], 30000.0 / k, 1e-6);
    EXPECT_EQ(s.ALLOWED[OPERATING][BOLTING], 25000.0f);
    EXPECT_EQ(s.ALLOWED[SEATING][BOLTING], 25000.0f);
}

TEST_F(StressLimits, factor_k_begins_above_1000_mm_and_is_full_at_2000_mm) {
    EXPECT_EQ(on_shell(PD_5500, INTEGRAL_WELD_NECK, 39.37008f).kf, 1.0f);
    EXPECT_EQ(on_shell(PD_5500, INTEGRAL_WELD_NECK, 20.0f).kf, 1.0f);
    const Real just_above = std::nextafter(39.37008f, BIG);
    EXPECT_CLOSE(on_shell(PD_5500, INTEGRAL_WELD_NECK, just_above).kf, 1.0, 1e-5);
    EXPECT_GT(on_shell(PD_5500, INTEGRAL_WELD_NECK, 39.5f).kf, 1.0f);
    const Real just_below = std::nextafter(78.74016f, 0.0f);
    EXPECT_CLOSE(on_shell(PD_5500, INTEGRAL_WELD_NECK, just_below).kf, 4.0 / 3.0, 3e-6);
    EXPECT_EQ(on_shell(PD_5500, INTEGRAL_WELD_NECK, 78.74016f).kf, 1.3333334f);
    EXPECT_EQ(on_shell(PD_5500, INTEGRAL_WELD_NECK, 200.0f).kf, 1.3333334f);
}

TEST_F(StressLimits, factor_k_is_for_codes_three_and_four_and_no_cover) {
    EXPECT_EQ(on_shell(ASME_VIII_1, INTEGRAL_RING, 60.0f).kf, 1.0f);
    EXPECT_EQ(on_shell(ASME_VIII_2, INTEGRAL_RING, 60.0f).kf, 1.0f);
    EXPECT_GT(on_shell(PD_5500, INTEGRAL_RING, 60.0f).kf, 1.1f);
    EXPECT_GT(on_shell(EN_13445, REVERSE_WELD_NECK, 60.0f).kf, 1.1f);
    EXPECT_EQ(on_shell(EN_13445, BLIND, 60.0f).kf, 1.0f);
}

TEST_F(StressLimits, contact_on_the_bolt_circle_still_takes_the_factor) {
    FLANGE_STATE s = example_flange();
    s.code = EN_13445;
    s.Dshell = 60.0f;
    s.GoC = s.C;
    FLANGE_ALLOWABLES(s);
    EXPECT_GT(s.kf, 1.1f);
    s.GoC = s.C + 0.0001f;
    FLANGE_ALLOWABLES(s);
    EXPECT_EQ(s.kf, 1.0f);
    s.GoC = std::nextafter(s.C + 0.0001f, 0.0f);
    FLANGE_ALLOWABLES(s);
    EXPECT_GT(s.kf, 1.1f);
}

// ---- hub limit of the attached shell --------------------------------------------------------------

TEST_F(StressLimits, hub_limit_of_the_attached_shell_by_code_and_type) {
    // With weak shell allowables the factor shows; 0 means the plain limit.
    struct Row {
        Int code, type;
        Real factor;
    };
    constexpr Row rows[] = {
        {ASME_VIII_1, INTEGRAL_WELD_NECK, 2.5f},
        {ASME_VIII_1, INTEGRAL_SLIP_ON, 1.5f},
        {ASME_VIII_1, INTEGRAL_RING, 1.5f},
        {ASME_VIII_1, LOOSE_SLIP_ON, 0.0f},
        {ASME_VIII_1, LOOSE_RING, 0.0f},
        {ASME_VIII_1, LAP_JOINT, 0.0f},
        {ASME_VIII_1, BLIND, 0.0f},
        {ASME_VIII_1, REVERSE_WELD_NECK, 0.0f},
        {ASME_VIII_2, INTEGRAL_WELD_NECK, 2.5f},
        {ASME_VIII_2, INTEGRAL_SLIP_ON, 1.5f},
        {ASME_VIII_2, INTEGRAL_RING, 1.5f},
        {ASME_VIII_2, LOOSE_RING, 0.0f},
        {PD_5500, INTEGRAL_WELD_NECK, 0.0f},
        {PD_5500, INTEGRAL_SLIP_ON, 0.0f},
        {PD_5500, INTEGRAL_RING, 1.5f},
        {PD_5500, LOOSE_SLIP_ON, 0.0f},
        {PD_5500, LOOSE_RING, 1.5f},
        {PD_5500, LAP_JOINT, 0.0f},
        {EN_13445, INTEGRAL_WELD_NECK, 0.0f},
        {EN_13445, INTEGRAL_RING, 1.5f},
        {EN_13445, LOOSE_RING, 1.5f},
        {EN_13445, REVERSE_WELD_NECK, 0.0f},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "code " << row.code << ", type " << row.type);
        FLANGE_STATE s = example_flange();
        s.code = row.code;
        s.type = row.type;
        s.GoC = 30.0f;
        s.Dshell = 100.0f; // k of 4/3 under codes 3 and 4
        s.Sn = 8000.0f;
        s.Sna = 9000.0f;
        FLANGE_ALLOWABLES(s);
        const Real plain = 1.5f / s.kf;
        if (row.factor == 0.0f) {
            EXPECT_CLOSE(s.ALLOWED[OPERATING][HUB], static_cast<double>(plain * 17800.0f), 1e-6);
            EXPECT_CLOSE(s.ALLOWED[SEATING][HUB], static_cast<double>(plain * 20000.0f), 1e-6);
        } else {
            const Real factor = row.factor / s.kf;
            EXPECT_CLOSE(s.ALLOWED[OPERATING][HUB], static_cast<double>(factor * 8000.0f), 1e-6);
            EXPECT_CLOSE(s.ALLOWED[SEATING][HUB], static_cast<double>(factor * 9000.0f), 1e-6);
        }
        EXPECT_CLOSE(s.ALLOWED[OPERATING][RADIAL], 17800.0 / static_cast<double>(s.kf), 1e-6);
    }
}

TEST_F(StressLimits, strong_shell_leaves_the_plain_hub_limit) {
    FLANGE_STATE s = example_flange();
    s.Sn = s.Sna = 40000.0f;
    FLANGE_ALLOWABLES(s);
    EXPECT_EQ(s.ALLOWED[OPERATING][HUB], 26700.0f);
    EXPECT_EQ(s.ALLOWED[SEATING][HUB], 30000.0f);
}

TEST_F(StressLimits, shell_rule_needs_both_allowables) {
    FLANGE_STATE s = example_flange();
    s.Sn = 0.0005f;
    s.Sna = 9000.0f;
    FLANGE_ALLOWABLES(s);
    EXPECT_EQ(s.ALLOWED[OPERATING][HUB], 26700.0f);
    EXPECT_EQ(s.ALLOWED[SEATING][HUB], 30000.0f);
    s.Sn = 0.001f;
    FLANGE_ALLOWABLES(s);
    EXPECT_EQ(s.ALLOWED[OPERATING][HUB], 2.5f * 0.001f);
    EXPECT_EQ(s.ALLOWED[SEATING][HUB], 22500.0f);
    s.Sn = 8000.0f;
    s.Sna = 0.001f;
    FLANGE_ALLOWABLES(s);
    EXPECT_EQ(s.ALLOWED[OPERATING][HUB], 20000.0f);
    s.Sna = std::nextafter(0.001f, 0.0f);
    FLANGE_ALLOWABLES(s);
    EXPECT_EQ(s.ALLOWED[OPERATING][HUB], 26700.0f);
}

// ---- ratios and table -------------------------------------------------------------------------------

// The stresses of the published flange, rounded as printed.
FLANGE_STATE stressed_flange() {
    FLANGE_STATE s = example_flange();
    FLANGE_ALLOWABLES(s);
    const StressTable stress = {{17788.0f, 6154.0f, 5554.0f, 11971.0f, 8378.3f},
                                {17899.0f, 6192.0f, 5589.0f, 12046.0f, 10765.6f}};
    for (int row = 0; row < 2; ++row)
        for (int place = 0; place < PLACES; ++place)
            s.STRESS[row][place] = stress[row][place];
    return s;
}

constexpr const char* HEAD = "000002:Flange Stress Analysis Results: psi";
constexpr const char* COLUMNS_1 =
    "                                Operating |      Gasket Seating |";
constexpr const char* COLUMNS_2 =
    "                        Actual    Allowed |   Actual    Allowed |";
constexpr const char* RULE = "-----------------------------------------------------------------";

TEST_F(StressLimits, summary_table_of_the_published_flange) {
    FLANGE_STATE s = stressed_flange();
    STRESS_SUMMARY(s);
    EXPECT_CLOSE(s.RATIO[OPERATING][HUB], 26700.0 / 17788.0, 1e-6);
    EXPECT_CLOSE(s.RATIO[SEATING][BOLTING], 25000.0 / 10765.6, 1e-6);
    EXPECT_EQ(s.RATIO[OPERATING][REVERSE], 999.0f);
    EXPECT_EQ(written(), (Lines{
                             HEAD,
                             "",
                             COLUMNS_1,
                             COLUMNS_2,
                             RULE,
                             "Longitudinal Hub         17788.|    26700.|    17899.|    30000.|",
                             "Radial Flange             6154.|    17800.|     6192.|    20000.|",
                             "Tangential Flange         5554.|    17800.|     5589.|    20000.|",
                             "Maximum Average          11971.|    17800.|    12046.|    20000.|",
                             "Bolting                   8378.|    25000.|    10766.|    25000.|",
                         }));
}

TEST_F(StressLimits, blind_flange_shows_tangential_and_bolting_only) {
    FLANGE_STATE s = stressed_flange();
    s.type = BLIND;
    for (auto& row : s.STRESS)
        row[HUB] = row[RADIAL] = row[AVERAGE] = 0.0f;
    STRESS_SUMMARY(s);
    const Lines lines = written();
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[5], "Tangential Flange         5554.|    17800.|     5589.|    20000.|");
    EXPECT_EQ(lines[6], "Bolting                   8378.|    25000.|    10766.|    25000.|");
}

TEST_F(StressLimits, row_is_marked_without_tolerance_and_by_sign) {
    FLANGE_STATE s = stressed_flange();
    s.ALLOWED[OPERATING][RADIAL] = 1000.0f;
    s.STRESS[OPERATING][RADIAL] = 1000.2f; // less than the kernel's 0.25 psi, but over
    s.STRESS[OPERATING][TANGENTIAL] = -30000.0f;
    s.STRESS[SEATING][AVERAGE] = 20000.5f; // shown as 20000, an exact tie, but over
    STRESS_SUMMARY(s);
    const Lines lines = written();
    EXPECT_EQ(lines[6], "000010:Radial Flange             1000.|     1000.|     6192.|    20000.|");
    EXPECT_EQ(lines[7], "Tangential Flange       -30000.|    17800.|     5589.|    20000.|");
    EXPECT_EQ(lines[8], "000010:Maximum Average          11971.|    17800.|    20000.|    20000.|");
    // The ratio goes by the absolute value all the same.
    EXPECT_CLOSE(s.RATIO[OPERATING][TANGENTIAL], 17800.0 / 30000.0, 1e-6);
    s.STRESS[OPERATING][RADIAL] = 1000.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written()[6], "Radial Flange             1000.|     1000.|     6192.|    20000.|");
}

TEST_F(StressLimits, reverse_row_needs_type_8_and_both_stresses) {
    FLANGE_STATE s = stressed_flange();
    s.STRESS[OPERATING][REVERSE] = 5000.0f;
    s.STRESS[SEATING][REVERSE] = 6000.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 10u);
    s.type = REVERSE_WELD_NECK;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().at(10),
              "Reverse Flange            5000.|    17800.|     6000.|    20000.|");
    s.STRESS[SEATING][REVERSE] = 0.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 10u);
}

TEST_F(StressLimits, full_face_row_needs_the_gasket_and_a_positive_sum) {
    FLANGE_STATE s = stressed_flange();
    s.STRESS[OPERATING][FULL_FACE] = 7000.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 10u);
    s.fullFace = true;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().at(10),
              "Full Faced Gasket         7000.|    17800.|        0.|    20000.|");
    s.STRESS[OPERATING][FULL_FACE] = 0.0001f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 11u);
    s.STRESS[OPERATING][FULL_FACE] = std::nextafter(0.0001f, 0.0f);
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 10u);
    s.STRESS[OPERATING][FULL_FACE] = -7000.0f; // a sum, not a magnitude
    s.STRESS[SEATING][FULL_FACE] = 6999.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 10u);
    s.STRESS[SEATING][FULL_FACE] = 7001.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(written().size(), 11u);
}

TEST_F(StressLimits, zero_stress_gives_999_and_not_a_number_stays_visible) {
    FLANGE_STATE s = stressed_flange();
    s.STRESS[OPERATING][HUB] = s.STRESS[SEATING][HUB] = -0.0f;
    s.STRESS[OPERATING][RADIAL] = std::numeric_limits<Real>::quiet_NaN();
    s.STRESS[SEATING][RADIAL] = 0.0f;
    STRESS_SUMMARY(s);
    EXPECT_EQ(s.RATIO[OPERATING][HUB], 999.0f);
    EXPECT_TRUE(std::isnan(s.RATIO[OPERATING][RADIAL]));
    const Lines lines = written();
    EXPECT_EQ(lines[5], "Radial Flange               NaN|    17800.|        0.|    20000.|");
    EXPECT_EQ(lines.size(), 9u);
}

TEST_F(StressLimits, table_in_report_units) {
    metric_report();
    UNITS.pressure = 1.0f; // the factor of stresses alone counts
    FLANGE_STATE s = stressed_flange();
    STRESS_SUMMARY(s);
    const Lines lines = written();
    EXPECT_EQ(lines[0], "000002:Flange Stress Analysis Results: MPa");
    // 17788 psi is 122.64 MPa, 26700 184.09, 17899 123.41, 30000 206.84.
    EXPECT_EQ(lines[5], "Longitudinal Hub           123.|      184.|      123.|      207.|");
}

TEST_F(StressLimits, silent_summary_forms_the_ratios) {
    close_report();
    FLANGE_STATE s = stressed_flange();
    STRESS_SUMMARY(s);
    EXPECT_CLOSE(s.RATIO[OPERATING][HUB], 26700.0 / 17788.0, 1e-6);
    EXPECT_TRUE(written().empty());
}

} // namespace
} // namespace tarvane
