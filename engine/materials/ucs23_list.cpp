#include "materials/ucs23_list.h"

#include "frame/files/data_files.h"
#include "host/file_units.h"

namespace tarvane {

namespace {

constexpr Int LINE_WIDTH = 50;

bool holds(std::string_view line, std::string_view text) {
    return line.find(text) != std::string_view::npos;
}

bool stands_in(LineReader& file, std::string_view name) {
    char buffer[LINE_WIDTH];
    const std::string_view line(buffer, LINE_WIDTH);
    while (file.next(buffer, LINE_WIDTH)) {
        if (holds(line, "[END]")) return false;
        if (trimmed_length(line) == 0 || holds(line, ";") || holds(line, "[")) continue;
        if (equal_padded(line, name)) return true;
    }
    return false;
}

} // namespace

bool LIS_UCS23_MATERIAL(std::string_view name) {
    Int unit = 0;
    GETNEXTUNIT(unit);
    Text<260> path;
    Int path_len = 0;
    SYSTEM_FILE_PATH(path, path_len, "VIII-1_Matls_By_Table.txt");
    if (!open_unit_for_reading(unit, path.columns(1, path_len))) return false;
    LineReader file(unit);
    const bool found = stands_in(file, name);
    close_unit(unit);
    return found;
}

} // namespace tarvane
