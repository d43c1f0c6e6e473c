// A chart drawn like the figures of the code: stress B over factor A, both logarithmic.
#pragma once

#include "catalogue/charts.h"
#include "drawing/frame.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvane::vessel {

struct ChartDrawing {
    std::string name;
    std::vector<ChartCurve> curves; // those of the chart, by rising temperature
    ChartCurve asked;               // drawn in colour
    std::optional<float> A;         // a point of the asked curve
    UnitSystem units;
    bool decimal_comma = false;
};

Draft draw_chart(const ChartDrawing& chart);

} // namespace tarvane::vessel
