// External pressure charts of the data files: curves by temperature, stress B by factor A.
#pragma once

#include "catalogue/units.h"
#include "drawing/figure.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::vessel {

// A chart at a temperature. Stresses in psi.
struct ChartCurve {
    float temperature = 0.0f; // of the curve (F)
    float E = 0.0f;           // modulus (millions of psi); 0: there is no chart
    float Aelastic = 0.0f;    // end of the straight line
    float Amax = 0.0f, Bmax = 0.0f;
    float c0 = 0.0f, c1 = 0.0f, c2 = 0.0f;

    float B(float A) const;
};

ChartCurve read_curve(const std::string& name, float temperature, float yield);

// The text file of the charts.
inline constexpr std::string_view CHART_FILE = "ExtChartData.txt";

// The name of a chart as the chart file writes it; nothing when it has no such chart.
std::optional<std::string> chart_in_file(std::string_view given);
// The message about a name without a chart: the charts that there are, or that the file is missing.
std::string unknown_chart(std::string_view given);
// The same about the chart that the record of a material names, empty where it names none.
std::string missing_chart(std::string_view material, std::string_view chart);
// "external pressure needs a chart of your own (tarvane data)": what to do without a chart.
std::string own_chart_hint();
// A chart whose one curve depends on the yield stress.
bool needs_yield(std::string_view chart);

// The chart as a drawing with the curve of a temperature (F) and a point of it.
Figure chart_figure(const std::string& name, float temperature, float yield, std::optional<float> A,
                    const UnitSystem& units, bool decimal_comma, DrawnFor surroundings);
// The same as a text of its own.
std::string chart_svg(const std::string& name, float temperature, float yield,
                      std::optional<float> A, const UnitSystem& units, bool decimal_comma,
                      DrawnFor surroundings);

// The charts that the chart file has.
std::vector<std::string> chart_names();
// The temperatures of the curves of a chart. None for a chart whose one curve depends on the yield
// stress, and for one that the file does not have.
std::vector<float> chart_temperatures(std::string_view name);

} // namespace tarvane::vessel
