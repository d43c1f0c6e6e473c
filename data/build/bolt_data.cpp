// BOLTDATA.TXT: the bolts of each thread series.
#include "data_kind.h"
#include "formatted.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <array>

namespace tarvane::data {

namespace {

constexpr std::string_view FILE_NAME = "BOLTDATA.TXT";
constexpr std::string_view COLUMNS[] = {"series",  "units",  "diameter", "root_area",
                                        "spacing", "hub",    "ring",     "edge",
                                        "flats",   "wrench", "status",   "source"};
constexpr std::size_t MOST_SIZES = 26, MOST_LINES = 225, ROW_NUMBERS = 9, TABLE_ROWS = 27;
constexpr double CORNERS_PER_FLATS = 1.1547005383792515; // of a hexagon

struct SeriesNumber {
    std::string_view name;
    std::int32_t number;
};
constexpr SeriesNumber SERIES[] = {{"TEMA IMPERIAL", 1}, {"UNC", 2},       {"TEMA METRIC", 4},
                                   {"BS 3643", 5},       {"SABS 1700", 6}, {"3P M30 METRIC", 7},
                                   {"USER TABLE", 8}};

constexpr std::string_view HEAD =
    "; Bolt data: one section a thread series, rows of nine numbers in ascending order of "
    "diameter,\n"
    "; made from the table bolts.csv. A line with a semicolon anywhere is a comment.\n"
    "; The first row of a section says its units: 0 inches and square inches, 1 mm and mm2.\n"
    ";\n"
    "; Column              Meaning\n"
    "; 1 bolt dia.         nominal diameter\n"
    "; 2 root area         root area of one bolt\n"
    "; 3 Bmin              least circumferential spacing, bolt to bolt\n"
    "; 4 Rmin hub          least radial distance, hub to bolt circle\n"
    "; 5 Rmin ring         the same for ring flanges; that of the hub where there is no figure\n"
    "; 6 Emin              least radial distance, bolt circle to flange edge\n"
    "; 7 nut corners       distance across the corners of the nut: across flats * 2/sqrt(3)\n"
    "; 8 wrench dia.       circular wrench end diameter, 0 where there is no figure\n"
    "; 9                   not used by the flange checks, 0\n"
    ";\n"
    "; Check the figures against your own copy of the standards before you rely on them.\n"
    ";\n"
    ";     bolt      root     Bmin     Rmin     Rmin     Emin       nut    wrench\n"
    ";     dia.      area               hub     ring            corners      dia.  col 9\n";

struct Series {
    std::string name;
    bool metric;
    std::vector<const Row*> sizes;
};

using Numbers = std::array<float, ROW_NUMBERS>;

// The width across the corners is rounded to the decimals of the file.
float corners(const Row& row, bool metric) {
    const double exact = static_cast<double>(row.real("flats")) * CORNERS_PER_FLATS;
    return std::stof(formatted(metric ? "%.2f" : "%.4f", exact));
}

Numbers numbers_of(const Row& row, bool metric) {
    const float hub = row.real("hub");
    return {row.real("diameter"),
            row.real("root_area"),
            row.real("spacing"),
            hub,
            row.real("ring", hub),
            row.real("edge"),
            corners(row, metric),
            row.real("wrench", 0.0f),
            0.0f};
}

std::string row_text(const Numbers& x, bool metric) {
    std::string text = formatted(metric ? "%10.2f" : "%10.4f", x[0]) + formatted("%10.3f", x[1]);
    for (std::size_t i = 2; i < 6; ++i)
        text += formatted(metric ? "%9.2f" : "%9.4f", x[i]);
    for (std::size_t i = 6; i < 8; ++i)
        text += formatted(metric ? "%10.2f" : "%10.4f", x[i]);
    return text + formatted("%7.1f", x[8]) + "\n";
}

std::vector<Series> by_series(const Table& table) {
    std::vector<Series> all;
    for (const Row& row : table.rows()) {
        const std::string& name = row.text("series");
        const std::string& units = row.text("units");
        if (units != "in" && units != "mm") row.fail("units", "neither \"in\" nor \"mm\"");
        const bool fresh = all.empty() || all.back().name != name;
        if (fresh) {
            for (const Series& other : all)
                if (other.name == name) row.fail("series", "its rows do not stand together");
            all.push_back({name, units == "mm", {}});
        }
        Series& series = all.back();
        if (series.metric != (units == "mm")) row.fail("units", "not those of the row before");
        if (!fresh && row.real("diameter") <= series.sizes.back()->real("diameter"))
            row.fail("diameter", "not above the one before");
        if (series.sizes.size() == MOST_SIZES) row.fail("series", "more than 26 sizes");
        series.sizes.push_back(&row);
    }
    return all;
}

std::int32_t number_of(const Series& series) {
    const auto found =
        std::find_if(std::begin(SERIES), std::end(SERIES),
                     [&](const SeriesNumber& known) { return known.name == series.name; });
    if (found == std::end(SERIES)) series.sizes.front()->fail("series", "no thread series");
    return found->number;
}

std::string section_text(const Series& series) {
    std::string text = "\n[" + series.name + "]\n";
    Numbers units{};
    if (series.metric) units[0] = 1.0f;
    text += row_text(units, series.metric);
    for (const Row* row : series.sizes)
        text += row_text(numbers_of(*row, series.metric), series.metric);
    return text;
}

void check(const Series& series) {
    constexpr std::string_view NAMES[ROW_NUMBERS - 1] = {
        "diameter", "root_area", "spacing", "hub", "ring", "edge", "flats", "wrench"};
    const std::int32_t number = number_of(series);
    float diameters[TABLE_ROWS], rows[TABLE_ROWS][ROW_NUMBERS];
    std::int32_t count = 0;
    BOLTHELPER(&number, diameters, rows[0], &count);
    series.sizes.front()->expect("units", series.metric ? 1.0f : 0.0f, rows[0][0]);
    if (static_cast<std::size_t>(count) != 1 + series.sizes.size())
        series.sizes.front()->fail("series", std::to_string(count - 1) + " sizes read back");
    for (std::size_t i = 0; i < series.sizes.size(); ++i) {
        const Numbers written = numbers_of(*series.sizes[i], series.metric);
        for (std::size_t k = 0; k < std::size(NAMES); ++k)
            series.sizes[i]->expect(NAMES[k], written[k], rows[i + 1][k]);
    }
}

} // namespace

void build_bolts(Place& place) {
    const Table table(place.sources, "bolts.csv", "series", COLUMNS);
    const std::vector<Series> all = by_series(table);
    std::string text(HEAD);
    for (const Series& series : all)
        text += section_text(series);
    text += "\n[END]\n";
    if (static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) > MOST_LINES)
        throw DataError(std::string(FILE_NAME) + ": more than 225 lines");
    write_file(place.out / FILE_NAME, text);

    for (const Series& series : all) {
        for (const Row* row : series.sizes)
            place.note(std::string(FILE_NAME), series.name, *row);
        const auto approximate = [](const Row* row) { return row->approximate(); };
        if (std::count_if(series.sizes.begin(), series.sizes.end(), approximate) > 0)
            place.approximate[std::string(FILE_NAME)].push_back(series.name);
        check(series);
    }
}

} // namespace tarvane::data
