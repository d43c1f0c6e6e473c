#include "catalogue/charts.h"

#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "drawing/chart_drawing.h"

#include "tarvane/tarvane.h"
#include "values/decimal.h"
#include "values/text.h"

#include <algorithm>

namespace tarvane::vessel {

namespace {

bool holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string listed(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i)
        list += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return list;
}

std::string no_chart(std::string_view given, const std::vector<std::string>& names) {
    if (const auto fault = data_file_fault(CHART_FILE))
        return std::string(CHART_FILE) + " is " + *fault;
    if (names.empty()) return std::string(CHART_FILE) + " has no charts";
    // The nearest name would be the chart of other materials, which is no suggestion.
    return "no chart " + echoed(given) + " in " + std::string(CHART_FILE) + ", which has " +
           listed(names) + "; " + own_chart_hint();
}

} // namespace

float ChartCurve::B(float A) const {
    float result = 0.0f;
    FACTOR_B(&A, &E, &Aelastic, &Amax, &Bmax, &c0, &c1, &c2, &result);
    return result;
}

ChartCurve read_curve(const std::string& name, float temperature, float yield) {
    ChartCurve c;
    float second = 0.0f;
    READ_CHART(name.data(), static_cast<std::int32_t>(name.size()), &temperature, &c.temperature,
               &c.E, &c.Aelastic, &second, &c.Amax, &c.Bmax, &c.c0, &c.c1, &c.c2, &yield);
    return c;
}

std::vector<std::string> chart_names() {
    std::vector<std::string> names;
    for (const FileSection& section : read_sections(CHART_FILE))
        names.push_back(section.name);
    return names;
}

std::vector<float> chart_temperatures(std::string_view name) {
    std::vector<float> temperatures;
    if (needs_yield(name)) return temperatures;
    for (const FileSection& section : read_sections(CHART_FILE)) {
        if (section.name != name) continue;
        for (std::string_view row : section.lines)
            temperatures.push_back(take_decimal<float>(row).value_or(0.0f));
    }
    return temperatures;
}

std::optional<std::string> chart_in_file(std::string_view given) {
    for (std::string& name : chart_names()) {
        if (folded(name) == folded(given)) return std::move(name);
    }
    return std::nullopt;
}

std::string unknown_chart(std::string_view given) { return no_chart(given, chart_names()); }

std::string missing_chart(std::string_view material, std::string_view chart) {
    if (chart_names().empty()) return unknown_chart(chart);
    if (chart.empty())
        return "the record of " + std::string(material) +
               " names no external pressure chart: chart is to be given; " +
               std::string(CHART_FILE) + " has " + listed(chart_names()) + "; " + own_chart_hint();
    return std::string(material) + " belongs to external pressure chart " + std::string(chart) +
           ", which " + std::string(CHART_FILE) + " does not have: it has " +
           listed(chart_names()) + "; " + own_chart_hint();
}

std::string own_chart_hint() {
    return "external pressure on a material of another chart needs one of your own, see tarvane "
           "data";
}

bool needs_yield(std::string_view chart) {
    return holds(chart, "CS-3") || chart.starts_with("NFA-11");
}

Figure chart_figure(const std::string& name, float temperature, float yield, std::optional<float> A,
                    const UnitSystem& units, bool decimal_comma, DrawnFor surroundings) {
    ChartDrawing drawing{name, {}, read_curve(name, temperature, yield), A, units, decimal_comma};
    for (const float row : chart_temperatures(name))
        drawing.curves.push_back(read_curve(name, row, yield));
    return framed(draw_chart(drawing), surroundings).figure;
}

std::string chart_svg(const std::string& name, float temperature, float yield,
                      std::optional<float> A, const UnitSystem& units, bool decimal_comma,
                      DrawnFor surroundings) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" +
           chart_figure(name, temperature, yield, A, units, decimal_comma, surroundings).svg;
}

} // namespace tarvane::vessel
