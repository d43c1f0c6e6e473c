// TableGData.txt: factor A of cylinders under external pressure.
#include "data_kind.h"
#include "formatted.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

namespace tarvane::data {

namespace {

constexpr std::string_view FILE_NAME = "TableGData.txt";
constexpr std::string_view COLUMNS[] = {"do_t", "l_do", "a", "status", "source"};
constexpr std::size_t LINES = 470; // the engine keeps a file of exactly these
constexpr float LEAST_LENGTH = 0.05f, GREATEST_LENGTH = 50.0f;

// The engine's own list: each needs a section.
constexpr std::int32_t KEYS[] = {4,  5,   6,   8,   10,  15,  20,  25,  30,  40,  50,  60,
                                 80, 100, 125, 150, 200, 250, 300, 400, 500, 600, 800, 1000};

constexpr std::string_view HEAD = "; Table G: factor A\n"
                                  "; [Do/t], rows of\n"
                                  "; L/Do and A, from\n"
                                  "; table_g.csv; one\n"
                                  "; blank line before\n"
                                  "; the first row;\n"
                                  "; 470 lines in all\n";

struct Section {
    std::int32_t key;
    std::vector<const Row*> rows;
};

// Elastic buckling of a simply supported cylinder with pressure on its side and its ends: the strain
// p Do / (2 t E) by von Mises' equation (as in Windenburg and Trilling, Trans. ASME 56, 1934),
// Poisson's ratio 0.3, for n lobes.
double buckling_strain(double Do_t, double L_Do, double n) {
    constexpr double POISSON = 0.3;
    const double half_wave = std::numbers::pi / (2.0 * L_Do); // pi R / L
    const double a2 = half_wave * half_wave, n2 = n * n;
    const double t_R = 2.0 / Do_t;
    const double bending = t_R * t_R / (12.0 * (1.0 - POISSON * POISSON));
    const double membrane = a2 * a2 / ((a2 + n2) * (a2 + n2));
    return (membrane + bending * ((n2 + a2) * (n2 + a2) - 2.0 * n2 + 1.0)) / (n2 - 1.0 + 0.5 * a2);
}

// Table G is the least strain over the number of lobes from 2 on, whole or not, and ends at 0.1.
double factor_A(double Do_t, double L_Do) {
    constexpr double MOST_LOBES = 100.0, LIMIT = 0.1;
    double low = 2.0, high = MOST_LOBES;
    for (int i = 0; i < 100; ++i) { // the strain falls and then rises with the lobes
        const double a = low + (high - low) / 3.0, b = high - (high - low) / 3.0;
        if (buckling_strain(Do_t, L_Do, a) < buckling_strain(Do_t, L_Do, b))
            high = b;
        else
            low = a;
    }
    return std::min(buckling_strain(Do_t, L_Do, low), LIMIT);
}

double factor_A(const Row& row) {
    if (!row.blank("a")) return static_cast<double>(row.real("a"));
    if (!row.approximate()) row.fail("status", "no figure in a published row");
    return factor_A(static_cast<double>(row.real("do_t")), static_cast<double>(row.real("l_do")));
}

std::string header(const Section& section) {
    std::string text(1, '[');
    return text.append(std::to_string(section.key)) += ']';
}

std::string row_text(const Row& row) {
    std::string text = formatted("%g", row.real("l_do"));
    text.resize(8, ' ');
    return text + formatted("%.3e", factor_A(row)) + "\n";
}

std::vector<Section> by_key(const Table& table) {
    std::vector<Section> sections;
    for (const Row& row : table.rows()) {
        const std::int32_t key = row.whole("do_t");
        if (sections.empty() || sections.back().key != key) sections.push_back({key, {}});
        sections.back().rows.push_back(&row);
    }
    const auto key_of = [](const Section& section) { return section.key; };
    if (!std::ranges::equal(sections, KEYS, {}, key_of))
        throw DataError(table.file() + ": the values of do_t are not those of the table in order");
    return sections;
}

// A row for each end, so that no length is without an answer, and A falling with the length.
void check_order(const Section& section) {
    const std::vector<const Row*>& rows = section.rows;
    if (rows.front()->real("l_do") != LEAST_LENGTH)
        rows.front()->fail("l_do", "the first one is not 0.05");
    if (rows.back()->real("l_do") != GREATEST_LENGTH)
        rows.back()->fail("l_do", "the last one is not 50");
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (rows[i]->real("l_do") <= rows[i - 1]->real("l_do"))
            rows[i]->fail("l_do", "not above the one before");
        if (factor_A(*rows[i]) > factor_A(*rows[i - 1])) rows[i]->fail("a", "above the one before");
    }
}

// Follows the file as its reader does: the section's line, a blank line, the rows.
void check(const std::string& text, const std::vector<Section>& sections) {
    std::istringstream file(text);
    std::string line;
    for (const Section& section : sections) {
        while (std::getline(file, line) && line != header(section))
            continue;
        if (!std::getline(file, line) || !line.empty())
            section.rows.front()->fail("do_t", "no blank line before the first row");
        for (const Row* row : section.rows) {
            if (!std::getline(file, line)) row->fail("l_do", "not in the file");
            float length = 0.0f, A = 0.0f;
            std::istringstream(line) >> length >> A;
            row->expect("l_do", row->real("l_do"), length);
            if (row->blank("a") ? !within(A, factor_A(*row), 1.0e-3) : row->real("a") != A)
                row->fail("a", "read back as " + formatted("%g", A));
        }
    }
}

} // namespace

void build_table_g(Place& place) {
    const Table table(place.sources, "table_g.csv", "do_t", COLUMNS);
    const std::vector<Section> sections = by_key(table);
    std::string text(HEAD);
    for (const Section& section : sections) {
        check_order(section);
        text += header(section) + "\n\n";
        bool approximate = false;
        for (const Row* row : section.rows) {
            approximate |= row->approximate();
            place.note(std::string(FILE_NAME), std::to_string(section.key), *row);
            text += row_text(*row);
        }
        if (approximate)
            place.approximate[std::string(FILE_NAME)].push_back(std::to_string(section.key));
    }
    std::size_t lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    if (lines > LINES)
        throw DataError(table.file() + ": " + std::to_string(lines) + " lines, more than 470");
    for (; lines < LINES; ++lines)
        text += ";\n";
    write_file(place.out / FILE_NAME, text);
    check(text, sections);
}

} // namespace tarvane::data
