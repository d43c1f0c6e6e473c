// The plain layout of licensed tables, one row a material with temperatures as columns, made into a table of a
// user's folder.
#pragma once

#include "table.h"

#include <filesystem>
#include <span>
#include <string>

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

// Writes a file beside the path and then puts it in its place. Throws DataError, and the file that was there stays.
void replace_file(const std::filesystem::path& path, std::string_view text);

} // namespace tarvane::data
