// Ground of the tests of factors, limits, rigidity, covers and hub: every line with its marks,
// comparison within a relative tolerance, the published integral flange through its factors.
#pragma once

#include "flange/shape_factors.h"
#include "stage_fixture.h"

namespace tarvane::shape_test {

using stage_test::Lines;

inline testing::AssertionResult close_to(const char* actual_text, const char*, const char*,
                                         Real actual, double expected, double relative) {
    const double a = static_cast<double>(actual);
    if (std::fabs(a - expected) <= relative * std::fabs(expected))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << actual_text << " is " << a << ", expected " << expected
                                       << " within " << relative << " of it";
}
#define EXPECT_CLOSE(actual, expected, relative)                                                   \
    EXPECT_PRED_FORMAT3(::tarvane::shape_test::close_to, actual, expected, relative)

class ShapeTest : public stage_test::StageTest {
  protected:
    static void open_report() {
        report_to_store();
        LINE_COUNT = 0;
    }
    static void close_report() { IWRTFL = 0; }
    static void metric_report() {
        UNITS.thickness = UNITS.diameter = 25.4f;
        UNITS.thickness_label = UNITS.diameter_label = "mm";
        UNITS.pressure = UNITS.stress = 0.00689476f;
        UNITS.pressure_label = UNITS.stress_label = "MPa";
        UNITS.force = 4.44822f;
        UNITS.force_label = "N";
        UNITS.moment = 1.35582f;
        UNITS.moment_label = "N-m";
    }
    // A factor and a label of its own for each kind of value.
    static void report_in_kinds() {
        UNITS.thickness = 2.0f;
        UNITS.thickness_label = "th";
        UNITS.diameter = 10.0f;
        UNITS.diameter_label = "di";
        UNITS.pressure = 0.5f;
        UNITS.pressure_label = "pr";
        UNITS.stress = 0.25f;
        UNITS.stress_label = "st";
        UNITS.force = 4.0f;
        UNITS.force_label = "fo";
        UNITS.moment = 8.0f;
        UNITS.moment_label = "mo";
    }

    // Lines written since the last call; one that carries marks begins with the six and a colon.
    static Lines written() {
        Lines lines;
        for (Int k = 1; k <= LINE_COUNT; ++k) {
            std::string marks;
            for (const char c : stored_marks(k))
                if (c != ' ') marks += c;
            lines.push_back(marks == "000000" ? stored(k) : marks + ":" + stored(k));
        }
        LINE_COUNT = 0;
        return lines;
    }
};

inline FLANGE_STATE example_flange() {
    FLANGE_STATE s = stage_test::ptb3_e4_16_1();
    s.jointE = 1.0f;
    return s;
}

inline HUB_SOLUTION through_figures(FLANGE_STATE& s) {
    HUB_SOLUTION hub;
    FLANGE_HUB_RATIOS(s);
    HUB_COEFFICIENTS(s, hub);
    FIGURE_FACTORS(s, hub);
    return hub;
}

} // namespace tarvane::shape_test
