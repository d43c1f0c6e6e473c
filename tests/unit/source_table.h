// The tables of data/sources as a test reads them: rows of fields by the name of their column.
#pragma once

#include "test_paths.h"

#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace tarvane::data_test {

using SourceRow = std::map<std::string, std::string>;

// The fields of a line; a field between quotation marks may hold commas, but no quotation marks.
inline std::vector<std::string> source_fields(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

inline std::vector<SourceRow> source_table(const std::string& name) {
    std::ifstream file(std::string(TARVANE_SOURCE_DIR) + "/data/sources/" + name);
    std::vector<std::string> columns;
    std::vector<SourceRow> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        const std::vector<std::string> fields = source_fields(line);
        if (columns.empty()) {
            columns = fields;
            continue;
        }
        SourceRow& row = rows.emplace_back();
        for (std::size_t i = 0; i < columns.size() && i < fields.size(); ++i)
            row[columns[i]] = fields[i];
    }
    return rows;
}

} // namespace tarvane::data_test
