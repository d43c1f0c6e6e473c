// The external pressure charts that are shipped, read back by the engine and compared with the points
// that they are made from, the moduli printed on the charts and the readings of published calculations.
#include "external/chart_method.h"
#include "materials/modulus.h"

#include "../data_folder.h"
#include "../source_table.h"
#include "test_paths.h"

#include <cmath>
#include <cstdio>

namespace tarvane {
namespace {

using data_test::source_table;
using data_test::SourceRow;

struct Reading {
    CHART_CURVE curve;

    double B(double A) const { return static_cast<double>(FACTOR_B(static_cast<Real>(A), curve)); }
};

class BuiltCharts : public data_test::DataTest {
  protected:
    BuiltCharts() { SET_SYSTEM_DIR(TARVANE_DATA_DIR); }

    static Reading at(const std::string& chart, Real T) {
        Reading r{};
        READ_CHART(chart, T, r.curve, 0.0f);
        EXPECT_GT(r.curve.E, 0.0f) << chart << " at " << T;
        return r;
    }
};

double number(const SourceRow& row, const char* column) { return std::stod(row.at(column)); }

TEST_F(BuiltCharts, TheCurvesRunThroughTheirPoints) {
    const auto points = source_table("chart_points.csv");
    for (const SourceRow& curve : source_table("charts.csv")) {
        const std::string& chart = curve.at("chart");
        const Reading r = at(chart, std::stof(curve.at("temperature")));
        const bool stated = !curve.at("tolerance").empty();
        const double bound = stated ? number(curve, "tolerance") : 1.0;
        if (stated) {
            EXPECT_FALSE(curve.at("note").empty()) << chart << ": a tolerance without a reason";
        }
        double worst = 0.0, worst_A = 0.0;
        int count = 0;
        for (const SourceRow& point : points) {
            if (point.at("chart") != chart || point.at("temperature") != curve.at("temperature"))
                continue;
            ++count;
            const double A = number(point, "a"), B = number(point, "b");
            const double deviation = 100.0 * (r.B(A) / B - 1.0);
            if (A <= static_cast<double>(r.curve.Aelastic)) {
                // Tables print two or three figures: B to half a unit of its last one.
                EXPECT_NEAR(r.B(A), B, std::max(0.006 * B, 5.0)) << chart << " at A = " << A;
            } else if (std::abs(deviation) > std::abs(worst)) {
                worst = deviation;
                worst_A = A;
            }
        }
        EXPECT_GE(count, 2) << chart;
        EXPECT_LE(std::abs(worst), bound) << chart << " at A = " << worst_A;
        std::printf("%-6s to %s F, %s: worst deviation %+.2f %% at A = %.3e of %d points\n",
                    chart.c_str(), curve.at("temperature").c_str(), curve.at("status").c_str(),
                    worst, worst_A, count);
    }
}

// The moduli as the charts print them, 10^6 psi, and as those of the metric edition do, MPa.
TEST_F(BuiltCharts, TheStraightPartHasTheModulusOfTheChart) {
    struct Printed {
        const char* chart;
        Real T;
        double E, metric;
    };
    const Printed printed[] = {{"CS-1", 300.0f, 29.0, 200.0e3},
                               {"CS-2", 300.0f, 29.0, 200.0e3},
                               {"CS-2", 500.0f, 27.0, 186.0e3},
                               {"CS-2", 700.0f, 24.5, 169.0e3}};
    for (const Printed& p : printed) {
        const Reading r = at(p.chart, p.T);
        const double end = static_cast<double>(r.curve.Aelastic);
        for (const double A : {1.0e-6, 1.0e-5, 0.3 * end, 0.99999 * end})
            EXPECT_NEAR(2.0 * r.B(A) / A, p.E * 1.0e6, 10.0) << p.chart << p.T << " at " << A;
        EXPECT_NEAR(p.metric * 145.038, p.E * 1.0e6, 0.003 * p.E * 1.0e6);
    }
    for (const SourceRow& curve : source_table("charts.csv"))
        EXPECT_TRUE(std::any_of(std::begin(printed), std::end(printed),
                                [&](const Printed& p) {
                                    return p.chart == curve.at("chart") &&
                                           p.T == std::stof(curve.at("temperature"));
                                }))
            << curve.at("chart") << " is not among the printed moduli above";
}

TEST_F(BuiltCharts, BRisesWithAToItsLevel) {
    for (const SourceRow& curve : source_table("charts.csv")) {
        const Reading r = at(curve.at("chart"), std::stof(curve.at("temperature")));
        double last = 0.0;
        for (double A = 1.0e-6; A < 1.0; A *= 1.01) {
            EXPECT_GE(r.B(A), last * (1.0 - 1.0e-5)) << curve.at("chart") << " at A = " << A;
            last = r.B(A);
        }
        EXPECT_EQ(last, static_cast<double>(r.curve.Bmax));
    }
}

// Between the temperatures the engine takes the end of the straight part and the coefficients in
// proportion each for itself: where the curve leaves the line there is a step of a few percent.
TEST_F(BuiltCharts, BFallsWithTheTemperature) {
    for (double A = 1.0e-5; A < 0.2; A *= 1.1) {
        double last = 1.0e9;
        for (Real T = 100.0f; T <= 700.0f; T += 20.0f) {
            const double B = at("CS-2", T).B(A);
            EXPECT_LE(B, 1.03 * last) << A << " at " << T;
            last = B;
        }
    }
    // The weaker steels have the lower chart.
    for (double A = 1.0e-5; A < 0.2; A *= 1.1)
        EXPECT_LE(at("CS-1", 300.0f).B(A), 1.0001 * at("CS-2", 300.0f).B(A)) << A;
}

// What published calculations read from the chart, with the exactness of a drawn chart; the curve of CS-2
// at 300 F is above none of its points, and so further below others.
TEST_F(BuiltCharts, PublishedReadings) {
    struct Published {
        const char* what;
        const char* chart;
        Real T;
        double A, B, tolerance;
    };
    const Published readings[] = {
        {"SA-516 70 shell, 19.5 MPa", "CS-2", 300.0f, 1.95e-4, 19.5 * 145.038, 0.01},
        {"head", "CS-2", 300.0f, 0.002669, 15927.0, 0.014},
        {"shell at 440 F", "CS-2", 440.0f, 3.0e-4, 4200.0, 0.02},
        {"2:1 head at 500 F", "CS-2", 500.0f, 4.5e-4, 6100.0, 0.01},
        {"VIII-1 L-3.1, SA-285 C", "CS-2", 700.0f, 5.0e-4, 6100.0, 0.01},
    };
    for (const Published& p : readings)
        EXPECT_NEAR(at(p.chart, p.T).B(p.A), p.B, p.tolerance * p.B) << p.what;
}

TEST_F(BuiltCharts, TheLastTemperatureIsTold) {
    EXPECT_EQ(at("CS-2", 700.0f).curve.t_used, 700.0f);
    EXPECT_EQ(at("CS-2", 701.0f).curve.t_used, 700.0f);
    EXPECT_EQ(at("CS-1", 300.0f).curve.t_used, 300.0f);
    EXPECT_EQ(at("CS-1", 301.0f).curve.t_used, 300.0f);
    EXPECT_TRUE(reported().empty());
}

TEST_F(BuiltCharts, AChartThatIsMissingIsReadAsCS2) {
    EXPECT_EQ(at("HA-1", 500.0f).curve.Bmax, at("CS-2", 500.0f).curve.Bmax);
}

} // namespace
} // namespace tarvane
