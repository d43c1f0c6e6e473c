#include "import.h"

#include "formatted.h"
#include "material_table.h"
#include "temperature_row.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <vector>

namespace tarvane::data {

namespace {

namespace fs = std::filesystem;

using Fields = std::vector<std::string>;

constexpr std::string_view MATERIALS_FILE = "materials_viii1.csv";

// The columns of a plain table beside its temperatures; those of materials_viii1.csv by their names there.
constexpr std::string_view NAME[] = {"material"};
constexpr std::string_view PROPERTIES[] = {"part",        "form",      "uns",
                                           "composition", "note",      "p_number",
                                           "group",       "curve",     "curve_normalized",
                                           "tensile",     "yield",     "chart",
                                           "modulus",     "expansion", "thickness_limit",
                                           "min_size",    "max_size",  "impact_temperature",
                                           "ucs66g",      "table"};
// And what stands for a property that neither the table nor a shipped material has.
const std::map<std::string_view, std::string_view> DEFAULTS = {
    {"form", "-"}, {"uns", "-"}, {"composition", "-"}, {"p_number", "-"}, {"table", "-"}};

constexpr int FIRST_NEW_REFERENCE = 1001;

struct Point {
    float temperature, figure; // F, ksi
};

std::string_view file_of(Figures figures) {
    switch (figures) {
    case Figures::division_2_class_1:
        return "materials_viii2_class1.csv";
    case Figures::division_2_class_2:
        return "materials_viii2_class2.csv";
    case Figures::yields:
        return "yields.csv";
    default:
        return MATERIALS_FILE;
    }
}

std::string quoted(const std::string& field) {
    if (field.find_first_of(",\"#") == std::string::npos) return field;
    std::string text = "\"";
    for (const char c : field) {
        if (c == '"') text += c;
        text += c;
    }
    text += '"';
    return text;
}

// The figures of a row from its first temperature to its last one; blanks between lie on the straight line.
std::vector<Point> points_of(const Row& row, const std::vector<std::string>& temperatures,
                             const ImportOptions& options) {
    std::vector<Point> points;
    for (const std::string& column : temperatures) {
        if (row.blank(column)) continue;
        const float degrees = std::stof(column);
        const float figure = row.positive(column) * (options.mpa ? KSI_OF_MPA : 1.0f);
        if (!points.empty() && figure > points.back().figure * 1.000001f)
            row.fail(column, "higher than the figure before: " + row.field(column));
        points.push_back({options.celsius ? degrees * 1.8f + 32.0f : degrees, figure});
    }
    if (points.empty()) row.fail(temperatures.front(), "no figure at any temperature");
    return points;
}

// At a temperature (F), the first figure below the first one; 0 above the last one.
float at(const std::vector<Point>& points, float temperature) {
    constexpr float ROUNDING = 0.01f; // of degrees C as F
    if (temperature <= points.front().temperature) return points.front().figure;
    if (temperature > points.back().temperature + ROUNDING) return 0.0f;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Point &low = points[i - 1], &high = points[i];
        if (temperature > high.temperature && i + 1 < points.size()) continue;
        const float part = (temperature - low.temperature) / (high.temperature - low.temperature);
        return low.figure + std::min(part, 1.0f) * (high.figure - low.figure);
    }
    return points.back().figure;
}

// A figure in ksi with five digits, which is finer than any table.
Fields figures_of(const Row& row, const std::vector<std::string>& temperatures,
                  const ImportOptions& options) {
    const std::vector<Point> points = points_of(row, temperatures, options);
    Fields figures;
    for (const std::string_view column : TEMPERATURE_COLUMNS) {
        const float figure = at(points, std::stof(std::string(column)));
        figures.push_back(figure > 0.0f ? formatted("%.5g", figure) : "");
    }
    return figures;
}

// Rows of a table of the folder that is being written: name, fields.
struct Written {
    std::string name;
    Fields fields;
};

Fields header_of(Figures figures) {
    Fields header{"reference", "name"};
    if (figures == Figures::division_1)
        header.insert(header.end(), std::begin(PROPERTIES), std::end(PROPERTIES));
    else
        header.emplace_back("table");
    header.emplace_back("edition");
    header.insert(header.end(), TEMPERATURE_COLUMNS.begin(), TEMPERATURE_COLUMNS.end());
    header.insert(header.end(), {"status", "source"});
    return header;
}

// The rows that an earlier import wrote.
std::vector<Written> earlier_rows(const fs::path& path, const Fields& header) {
    std::vector<Written> rows;
    std::error_code none;
    if (!fs::exists(path, none)) return rows;
    const std::vector<std::string_view> columns(header.begin(), header.end());
    const Table table(path, columns);
    for (const Row& row : table.rows()) {
        Written& written = rows.emplace_back();
        written.name = row.field("name");
        for (const std::string& column : header)
            written.fields.push_back(row.field(column));
    }
    return rows;
}

void write_rows(const fs::path& path, const Fields& header, const std::vector<Written>& rows) {
    std::string text = "# Made by `tarvane data import`.\n";
    text += table_line(header);
    for (const Written& row : rows)
        text += table_line(row.fields);
    replace_file(path, text);
}

// The record of the same place among those of a name: high and low stress rows follow each other.
const Row* place_of(const std::vector<const Row*>& rows, std::size_t place) {
    if (rows.empty()) return nullptr;
    return rows[std::min(place, rows.size() - 1)];
}

std::string property(const Row& row, const Row* shipped, std::string_view column,
                     const ImportOptions& options) {
    if (!row.blank(column)) {
        const bool strength = column == "tensile" || column == "yield";
        if (!strength || !options.mpa) return row.field(column);
        return formatted("%.5g", row.positive(column) * KSI_OF_MPA);
    }
    if (shipped != nullptr && !shipped->blank(column)) return shipped->field(column);
    if (shipped != nullptr) return {};
    if (column == "part") {
        const char kind = row.blank("uns") ? 'K' : row.field("uns").front();
        return kind == 'S' ? "UHA" : kind == 'N' || kind == 'A' ? "UNF" : "UCS";
    }
    const auto usual = DEFAULTS.find(column);
    if (usual != DEFAULTS.end()) return std::string(usual->second);
    if (column == "tensile" || column == "yield")
        row.fail("material", "a new one needs its " + std::string(column) + " strength: \"" +
                                 row.field("material") + "\"");
    return {};
}

std::vector<const Row*> of_name(const MaterialTable& materials, const std::string& name) {
    std::vector<const Row*> rows;
    for (const Material& material : materials.materials())
        if (name_key(material.row->field("name")) == name_key(name)) rows.push_back(material.row);
    return rows;
}

} // namespace

std::string table_line(const std::vector<std::string>& fields) {
    std::string text;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) text += ',';
        text += quoted(fields[i]);
    }
    text += '\n';
    return text;
}

void replace_file(const fs::path& path, std::string_view text) {
    fs::path draft = path;
    draft += ".new";
    const auto fail = [&] {
        std::error_code none;
        fs::remove(draft, none);
        throw DataError(path.filename().string() + ": cannot be written");
    };
    std::ofstream file(draft, std::ios::binary);
    file << text;
    file.close();
    if (!file) fail();
    std::error_code fault;
    fs::rename(draft, path, fault);
    if (fault) fail();
}

ImportReport import_table(const ImportOptions& options, std::span<const ShippedTable> shipped) {
    std::vector<std::string_view> optional(std::begin(PROPERTIES), std::end(PROPERTIES));
    optional.emplace_back("source");
    const Table table(options.table, NAME, optional, Table::Numbers::any);
    const std::vector<std::string> temperatures = table.number_columns();
    if (temperatures.empty())
        throw DataError(table.file() + ": no column of a temperature, \"100\" for example");

    const bool division_1 = options.figures == Figures::division_1;
    const Fields header = header_of(options.figures);
    const fs::path path = options.folder / file_of(options.figures);
    std::vector<Written> rows = earlier_rows(path, header);
    std::set<std::string> names;
    for (const Row& row : table.rows())
        names.insert(name_key(row.text("material")));
    std::erase_if(rows, [&](const Written& row) { return names.contains(name_key(row.name)); });
    int reference = FIRST_NEW_REFERENCE;
    for (const Written& row : rows)
        reference = std::max(reference, std::atoi(row.fields[0].c_str()) + 1);

    // A first import goes by the shipped materials alone; the others by those of the folder, too.
    const MaterialTable materials(
        Sources{.folder = division_1 ? fs::path() : options.folder, .shipped = shipped});
    ImportReport report{.file = path.filename().string()};
    report.materials = table.rows().size();
    std::map<std::string, std::size_t> places;
    for (const Row& row : table.rows()) {
        const std::vector<const Row*> known = of_name(materials, row.field("material"));
        // A material that is known keeps its spelling.
        const std::string& name = known.empty() ? row.field("material") : known[0]->field("name");
        const std::size_t place = places[name_key(name)]++;
        const Row* like = place_of(known, place);
        if (!division_1 && place >= known.size())
            row.fail("material", "not in " + std::string(MATERIALS_FILE) +
                                     ": import its stresses of Division 1 first: \"" + name + "\"");
        Written& written = rows.emplace_back();
        written.name = name;
        const bool new_one = place >= known.size();
        report.new_names += new_one && place == 0;
        written.fields = {new_one ? std::to_string(reference++) : like->field("reference"), name};
        if (division_1) {
            for (const std::string_view column : PROPERTIES)
                written.fields.push_back(property(row, like, column, options));
        } else {
            written.fields.push_back(row.blank("table") ? "-" : row.field("table"));
        }
        written.fields.push_back(options.edition);
        const Fields figures = figures_of(row, temperatures, options);
        written.fields.insert(written.fields.end(), figures.begin(), figures.end());
        written.fields.emplace_back("published");
        written.fields.push_back(row.blank("source") ? options.edition : row.field("source"));
    }
    fs::create_directories(options.folder);
    write_rows(path, header, rows);
    return report;
}

} // namespace tarvane::data
