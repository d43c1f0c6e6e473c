// The plain layouts of licensed tables made into tables of a user's folder: one row a material with temperatures as
// columns, and one row a point of an external pressure chart.
#pragma once

#include "table.h"

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace tarvane::data {

// What the figures of a plain table are.
enum class Figures { division_1, division_2_class_1, division_2_class_2, yields };

struct ImportOptions {
    std::filesystem::path table, folder;
    Figures figures = Figures::division_1;
    bool mpa = false, celsius = false;
    std::string edition;
};

struct ImportReport {
    std::string file; // of the folder
    std::size_t materials = 0, new_names = 0;
};

// Adds the rows to the file of the folder, in place of those of the same names. A material that is shipped gives the
// properties that the table does not have.
ImportReport import_table(const ImportOptions& options, std::span<const ShippedTable> shipped);

enum class ChartUnit { psi, ksi, mpa };

struct ChartImportOptions {
    std::filesystem::path table, folder;
    // Of B. With MPa the modulus is in 10^3 MPa, else in 10^6 psi: as the charts print it.
    ChartUnit unit = ChartUnit::psi;
    bool celsius = false;
    std::string edition;
};

struct ChartImportReport {
    std::size_t points = 0, curves = 0, charts = 0;
};

// Adds the charts to charts.csv and chart_points.csv of the folder, in place of those of the same names.
ChartImportReport import_charts(const ChartImportOptions& options);

// A line of a table, with the quotation marks that its fields need.
std::string table_line(const std::vector<std::string>& fields);

// Writes a file beside the path and then puts it in its place. Throws DataError, and the file that was there stays.
void replace_file(const std::filesystem::path& path, std::string_view text);

} // namespace tarvane::data
