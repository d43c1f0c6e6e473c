#include "temperature_row.h"

namespace tarvane::data {

namespace {

constexpr float FIRST = 100.0f, STEP = 50.0f; // degrees F

float degrees(std::string_view column) { return std::stof(std::string(column)); }

// At a temperature in degrees F; 0 above the last figure.
float at(const TemperatureRow& row, float temperature) {
    const float steps = (temperature - FIRST) / STEP;
    const std::size_t below = static_cast<std::size_t>(steps);
    const float part = steps - static_cast<float>(below);
    if (part == 0.0f) return below < PLACES ? row[below] : 0.0f;
    if (below + 1 >= PLACES || row[below + 1] == 0.0f) return 0.0f;
    return row[below] + part * (row[below + 1] - row[below]);
}

} // namespace

void take_figures(const Row& row, std::span<const std::string_view> columns,
                  std::span<float> figures) {
    std::size_t last = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (row.blank(columns[i])) {
            if (i == 0) row.fail(columns[i], "no figure at the first temperature");
            continue;
        }
        figures[i] = row.positive(columns[i]);
        if (i > 0 && figures[i] > figures[last])
            row.fail(columns[i], "higher than the figure before: " + row.field(columns[i]));
        for (std::size_t k = last + 1; k < i; ++k)
            figures[k] = figures[last] + (figures[i] - figures[last]) *
                                             (degrees(columns[k]) - degrees(columns[last])) /
                                             (degrees(columns[i]) - degrees(columns[last]));
        last = i;
    }
}

TemperatureRow temperature_row(const Row& row) {
    TemperatureRow figures{};
    take_figures(row, TEMPERATURE_COLUMNS, figures);
    return figures;
}

float metric_temperature(std::size_t place) {
    constexpr float AXIS_START[] = {40.0f, 65.0f, 100.0f};
    return place < 3 ? AXIS_START[place] : 125.0f + 25.0f * static_cast<float>(place - 3);
}

TemperatureRow metric_row(const TemperatureRow& row) {
    TemperatureRow metric{};
    metric[0] = row[0] / KSI_OF_MPA;
    for (std::size_t i = 1; i < PLACES; ++i)
        metric[i] = at(row, metric_temperature(i) * 1.8f + 32.0f) / KSI_OF_MPA;
    return metric;
}

} // namespace tarvane::data
