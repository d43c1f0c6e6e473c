#include "catalogue/bolt_sizes.h"

#include "catalogue/data_files_check.h"
#include "catalogue/data_folder.h"
#include "tarvane/tarvane.h"
#include "values/decimal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace tarvane::vessel {

namespace {

constexpr std::size_t ROWS = 27, NUMBERS = 9;
constexpr float MILLIMETRES = 25.4f; // in an inch
constexpr float PRESENT = 0.001f;    // a diameter above it counts
// How the engine compares, in the unit of the section: with a size, and with the ends of the series.
constexpr float NEAR = 0.01f, BEYOND = 0.0001f;

std::array<float, ThreadSeries::NUMBERS> numbers_of(std::string_view line) {
    std::array<float, ThreadSeries::NUMBERS> numbers{};
    for (float& number : numbers)
        number = take_decimal<float>(line).value_or(0.0f);
    return numbers;
}

} // namespace

std::vector<ThreadSeries> thread_series() {
    std::vector<ThreadSeries> all;
    for (const FileSection& section : read_sections(BOLT_FILE)) {
        ThreadSeries& series = all.emplace_back(ThreadSeries{section.name, false, {}});
        for (const std::string& line : section.lines)
            series.sizes.push_back(numbers_of(line));
        if (series.sizes.empty()) continue;
        // The first row tells the unit.
        series.metric = series.sizes.front()[0] > PRESENT;
        series.sizes.erase(series.sizes.begin());
    }
    return all;
}

BoltSizes::BoltSizes(int series) {
    if (series == TARVANE_SPECIAL_ROOT_AREA) return;
    const std::int32_t number = series;
    float diameters[ROWS] = {}, rows[ROWS * NUMBERS] = {};
    std::int32_t count = 0;
    BOLTHELPER(&number, diameters, rows, &count);
    if (diameters[0] > PRESENT) scale = MILLIMETRES;
    std::copy_if(std::begin(diameters) + 1, std::end(diameters), std::back_inserter(sizes),
                 [](float size) { return size > PRESENT; });
}

bool BoltSizes::lists(float diameter) const {
    if (empty()) return false;
    const float x = diameter * scale;
    if (x < sizes.front() - BEYOND || x > sizes.back() + BEYOND) return false;
    return std::any_of(sizes.begin(), sizes.end(),
                       [x](float size) { return std::fabs(x - size) <= NEAR; });
}

float BoltSizes::taken(float diameter) const {
    const float x = diameter * scale;
    const auto above = std::find_if(sizes.begin(), sizes.end(),
                                    [x](float size) { return size > x && size - x > NEAR; });
    return (above == sizes.begin() ? *above : *std::prev(above)) / scale;
}

std::vector<float> BoltSizes::neighbours(float diameter) const {
    const auto above = std::lower_bound(sizes.begin(), sizes.end(), diameter * scale);
    std::vector<float> next;
    if (above != sizes.begin()) next.push_back(*std::prev(above) / scale);
    if (above != sizes.end()) next.push_back(*above / scale);
    return next;
}

} // namespace tarvane::vessel
