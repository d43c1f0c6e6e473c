// ElastAlp07.txt: moduli of elasticity and coefficients of thermal expansion by reference number.
#include "data_kind.h"
#include "formatted.h"

#include "tarvane/tarvane.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <sstream>

namespace tarvane::data {

namespace {

constexpr std::string_view FILE_NAME = "ElastAlp07.txt";
constexpr std::size_t POINTS = 36; // temperatures of an axis
constexpr std::size_t VALUES_FROM = 63;
constexpr std::size_t IDENTIFIER_WIDTH = 7, DESCRIPTION_WIDTH = 36;
constexpr std::int32_t LAST_REFERENCE = 230; // a higher one counts as a wrong one

constexpr std::string_view MODULUS_COLUMNS[] = {
    "reference", "table", "description", "-325", "-200", "-100",   "70",    "200",
    "300",       "400",   "500",         "600",  "700",  "800",    "900",   "1000",
    "1100",      "1200",  "1300",        "1400", "1500", "status", "source"};
constexpr std::string_view EXPANSION_COLUMNS[] = {
    "reference", "table", "description", "70",   "100",  "150",    "200",   "250",
    "300",       "350",   "400",         "450",  "500",  "550",    "600",   "650",
    "700",       "750",   "800",         "850",  "900",  "950",    "1000",  "1050",
    "1100",      "1150",  "1200",        "1250", "1300", "status", "source"};
constexpr std::size_t LEADING = 3, TRAILING = 2; // columns that are no temperatures

constexpr std::string_view HEAD =
    "; Moduli of elasticity and coefficients of thermal expansion by reference number, made from\n"
    "; the tables moduli.csv and expansion.csv.\n"
    ";\n"
    "; A line with a semicolon is a comment. Two sections, moduli (10^6 psi) and coefficients "
    "(10^-6\n"
    "; per degree F); in each an axis line has the 36 temperatures, degrees F, of the rows below "
    "it\n"
    "; from column 10 on, 0 behind the last one. Rows: reference number and a second number from\n"
    "; column 1, table of ASME Section II Part D in columns 20 to 26, description in 28 to 63, 36\n"
    "; values from column 64 on; 0 where there is none.\n"
    ";\n"
    "; Reference 1 is carbon steel: it stands in for a reference that is not in the file.\n"
    "; Check the figures against the edition of the code that you use before you rely on them.\n";

using Columns = std::span<const std::string_view>;
using Values = std::array<float, POINTS>;

std::span<const std::string_view> temperatures(Columns columns) {
    return columns.subspan(LEADING, columns.size() - LEADING - TRAILING);
}

struct Property {
    const Row* source;
    std::size_t first, count; // temperatures with a value
};

Property with_values(const Row& row, Columns axis) {
    const auto filled = [&](std::string_view t) { return !row.blank(t); };
    const auto first = std::find_if(axis.begin(), axis.end(), filled);
    const auto end = std::find_if_not(first, axis.end(), filled);
    if (first == axis.end()) row.fail("description", "no values");
    const auto further = std::find_if(end, axis.end(), filled);
    if (further != axis.end()) row.fail(*further, "a gap before this value");
    for (auto t = first; t != end; ++t)
        if (row.real(*t) <= 0.001f) row.fail(*t, "too small");
    const std::int32_t reference = row.whole("reference");
    if (reference < 1 || reference > LAST_REFERENCE)
        row.fail("reference", "not between 1 and " + std::to_string(LAST_REFERENCE));
    return {&row, static_cast<std::size_t>(first - axis.begin()),
            static_cast<std::size_t>(end - first)};
}

// Rows with the longest axis first: an axis limits the temperature to its ends for the rows after it,
// too.
std::vector<Property> by_axis(const Table& table, Columns axis) {
    std::vector<Property> rows;
    for (const Row& row : table.rows()) {
        for (const Property& other : rows)
            if (other.source->whole("reference") == row.whole("reference"))
                row.fail("reference", "given twice");
        rows.push_back(with_values(row, axis));
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Property& a, const Property& b) { return a.first < b.first; });
    return rows;
}

std::string left(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string numbers_text(const Values& values) {
    std::string text;
    for (const float value : values)
        text += formatted("%10.2f", value);
    return text;
}

// The axis from its `first` temperature on.
std::string axis_text(Columns axis, std::size_t first) {
    Values values{};
    for (std::size_t i = first; i < axis.size(); ++i)
        values[i - first] = std::stof(std::string(axis[i]));
    return left("[Temp]", VALUES_FROM) + numbers_text(values) + "\n";
}

std::string row_text(const Property& property, Columns axis) {
    const Row& row = *property.source;
    Values values{};
    for (std::size_t i = 0; i < property.count; ++i)
        values[i] = row.real(axis[property.first + i]);
    std::string text = formatted("%4.0f", row.real("reference")) + "   0.0";
    text = left(text, 19) + row.text("table", IDENTIFIER_WIDTH);
    text = left(text, 27) + row.text("description", DESCRIPTION_WIDTH);
    return left(text, VALUES_FROM) + numbers_text(values) + "\n";
}

std::string section_text(std::string_view marker, const std::vector<Property>& rows, Columns axis) {
    std::string text(1, '\n'), source;
    text.append(marker) += '\n';
    std::size_t first = axis.size(); // of the current axis
    for (const Property& property : rows) {
        const std::string from = property.source->field("status") +
                                 (property.source->blank(EDITION_COLUMN)
                                      ? ""
                                      : ", edition " + property.source->field(EDITION_COLUMN)) +
                                 ": " + property.source->field("source");
        if (from != source) text.append("; ").append(from) += '\n';
        source = from;
        if (first != property.first) text += axis_text(axis, property.first);
        first = property.first;
        text += row_text(property, axis);
    }
    return text;
}

// The numbers of each row of a section, by reference.
std::map<std::int32_t, Values> rows_of(const std::string& text, std::string_view marker) {
    std::map<std::int32_t, Values> rows;
    bool inside = false;
    std::istringstream file(text);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("[") && !line.starts_with("[Temp]")) inside = line == marker;
        if (!inside || line.size() < VALUES_FROM || line[0] == ';' || line[0] == '[') continue;
        Values& values = rows[std::stoi(line)];
        std::istringstream numbers(line.substr(VALUES_FROM));
        for (float& value : values)
            numbers >> value;
    }
    return rows;
}

void check_rows(const std::vector<Property>& rows, Columns axis,
                const std::map<std::int32_t, Values>& written) {
    for (const auto& [row, first, count] : rows)
        for (std::size_t i = 0; i < count; ++i)
            row->expect(axis[first + i], row->real(axis[first + i]),
                        written.at(row->whole("reference"))[i]);
}

// The moduli as the engine gives them; between the temperatures it interpolates, so that a value may
// differ in its last bits.
void check_moduli(const std::vector<Property>& rows) {
    const Columns axis = temperatures(MODULUS_COLUMNS);
    const std::int32_t code = 1;
    for (const auto& [row, first, count] : rows) {
        const std::int32_t reference = row->whole("reference");
        for (std::size_t i = first; i < first + count; ++i) {
            const float T = std::stof(std::string(axis[i])), E = row->real(axis[i]);
            const float read = ASMEMOD(&T, &reference, &code);
            if (!within(read, E, 1.0e-6)) row->expect(axis[i], E, read);
        }
    }
}

void mark(Place& place, const std::vector<Property>& rows, const std::string& what) {
    for (const Property& property : rows) {
        const std::string item = what + " " + property.source->field("reference");
        place.note(std::string(FILE_NAME), item, *property.source);
        if (property.source->approximate())
            place.approximate[std::string(FILE_NAME)].push_back(item);
    }
}

} // namespace

void build_moduli(Place& place) {
    const Table modulus_table(place.sources, "moduli.csv", "reference", MODULUS_COLUMNS);
    const Table expansion_table(place.sources, "expansion.csv", "reference", EXPANSION_COLUMNS);
    const Columns modulus_axis = temperatures(MODULUS_COLUMNS);
    const Columns expansion_axis = temperatures(EXPANSION_COLUMNS);
    const auto moduli = by_axis(modulus_table, modulus_axis);
    const auto expansions = by_axis(expansion_table, expansion_axis);
    if (std::none_of(moduli.begin(), moduli.end(),
                     [](const Property& p) { return p.source->whole("reference") == 1; }))
        throw DataError("moduli.csv: no reference 1, which stands in for a missing one");

    const std::string text = std::string(HEAD) + section_text("[Emod]", moduli, modulus_axis) +
                             section_text("[CoE]", expansions, expansion_axis);
    write_file(place.out / FILE_NAME, text);
    mark(place, moduli, "modulus");
    mark(place, expansions, "expansion");

    check_rows(moduli, modulus_axis, rows_of(text, "[Emod]"));
    check_rows(expansions, expansion_axis, rows_of(text, "[CoE]"));
    check_moduli(moduli);
}

} // namespace tarvane::data
