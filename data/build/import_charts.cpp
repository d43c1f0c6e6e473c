// The points of external pressure charts, one row each, made into the two chart tables of a user's folder.
#include "import.h"

#include "formatted.h"
#include "temperature_row.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>

namespace tarvane::data {

namespace {

namespace fs = std::filesystem;

using Fields = std::vector<std::string>;

constexpr std::string_view PLAIN[] = {"chart", "temperature", "modulus", "a", "b"};
constexpr std::string_view PLAIN_OPTIONAL[] = {"tolerance", "fit", "source", "note"};
constexpr std::string_view CURVES[] = {"chart",  "temperature", "modulus", "tolerance", "fit",
                                       "status", "edition",     "source",  "note"};
constexpr std::string_view POINTS[] = {"chart", "temperature", "a", "b", "source"};
constexpr std::string_view HEAD = "# Made by `tarvane data import`.\n";

// The curves of these are told apart by hundredths of a degree F, which stand for yield stresses.
bool by_yield(const std::string& chart) {
    return chart.starts_with("CS-3") || chart.starts_with("NFA-11");
}

// A number of the table in another unit.
std::string scaled(const Row& row, std::string_view column, double factor, const char* format) {
    const float value = row.positive(column);
    if (factor == 1.0) return row.field(column);
    return formatted(format, static_cast<double>(value) * factor);
}

std::string fahrenheit(const Row& row, const ChartImportOptions& options) {
    const float degrees = row.real("temperature");
    if (!options.celsius) return row.field("temperature");
    if (by_yield(row.field("chart")))
        row.fail("temperature", "the curves of " + row.field("chart") +
                                    " are given in degrees F: 300.4 for a yield of 40 ksi");
    return formatted("%.6g", static_cast<double>(degrees) * 1.8 + 32.0);
}

// The text of a table of the folder without the rows of some charts; its head alone where there is none.
template <std::size_t N>
std::string without(const fs::path& path, const std::string_view (&columns)[N],
                    const std::set<std::string>& charts) {
    std::string text = std::string(HEAD) + table_line({std::begin(columns), std::end(columns)});
    std::error_code none;
    if (!fs::exists(path, none)) return text;
    std::vector<std::string_view> needed(std::begin(columns), std::end(columns));
    std::erase(needed, EDITION_COLUMN); // a table written by hand may lack it
    const Table table(path, needed);
    for (const Row& row : table.rows()) {
        if (charts.contains(row.field("chart"))) continue;
        Fields fields;
        for (const std::string_view column : columns)
            fields.push_back(row.blank(column) ? "" : row.field(column));
        text += table_line(fields);
    }
    return text;
}

std::optional<std::string> text_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// Both or none.
void replace_both(const fs::path& points, const std::string& points_text, const fs::path& curves,
                  const std::string& curves_text) {
    const std::optional<std::string> earlier = text_of(points);
    replace_file(points, points_text);
    try {
        replace_file(curves, curves_text);
    } catch (const DataError&) {
        std::error_code none;
        if (earlier)
            replace_file(points, *earlier);
        else
            fs::remove(points, none);
        throw;
    }
}

} // namespace

ChartImportReport import_charts(const ChartImportOptions& options) {
    const Table table(options.table, PLAIN, PLAIN_OPTIONAL);
    const bool mpa = options.unit == ChartUnit::mpa;
    const double ksi_of_mpa = static_cast<double>(KSI_OF_MPA);
    const double of_B = mpa ? 1000.0 * ksi_of_mpa : options.unit == ChartUnit::ksi ? 1000.0 : 1.0;
    std::set<std::string> charts;
    for (const Row& row : table.rows())
        charts.insert(row.text("chart"));

    const fs::path curves_path = options.folder / "charts.csv",
                   points_path = options.folder / "chart_points.csv";
    std::string curves = without(curves_path, CURVES, charts),
                points = without(points_path, POINTS, charts);
    ChartImportReport report{table.rows().size(), 0, charts.size()};
    std::string before; // chart and temperature of the row before
    for (const Row& row : table.rows()) {
        const std::string& chart = row.field("chart");
        const std::string temperature = fahrenheit(row, options);
        const std::string& source = row.blank("source") ? options.edition : row.field("source");
        const auto optional = [&](std::string_view column) {
            return row.blank(column) ? std::string() : row.field(column);
        };
        if (chart + ' ' + temperature != before) {
            curves += table_line({chart, temperature,
                                  scaled(row, "modulus", mpa ? ksi_of_mpa : 1.0, "%.3f"),
                                  optional("tolerance"), optional("fit"), "published",
                                  options.edition, source, optional("note")});
            ++report.curves;
        }
        before = chart + ' ' + temperature;
        row.positive("a");
        points += table_line(
            {chart, temperature, row.field("a"), scaled(row, "b", of_B, "%.6g"), source});
    }
    fs::create_directories(options.folder);
    replace_both(points_path, points, curves_path, curves);
    return report;
}

} // namespace tarvane::data
