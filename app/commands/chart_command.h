// `tarvane chart`: an external pressure chart as a table and a drawing.
#pragma once

#include "catalogue/units.h"
#include "components/element.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace tarvane::app {

using namespace vessel;

struct ChartOptions {
    std::string name;
    float temperature = 0.0f; // in the units of the option
    bool temperature_given = false;
    float yield = 0.0f;
    std::optional<float> A; // a point to mark
    std::string svg;        // the drawing; empty: none
    std::string data;       // folder of the data files; empty: the one that is found
    UnitSystem units = us_units();
};

// Writes the table of a chart, and the drawing when one is requested.
Status show_chart(const ChartOptions& options, std::ostream& out, std::ostream& err);

} // namespace tarvane::app
