#include "bolting/bolt_tables.h"

#include "bolting/bolt_spacing.h"
#include "frame/files/data_files.h"
#include "frame/files/kept_files.h"
#include "frame/numbers.h"
#include "report/lines.h"

#include <cstring>

namespace tarvane {

namespace {

constexpr Int LINE_WIDTH = 100;
constexpr Int FILE_LINES = 225;
constexpr Int SERIES = 8;
constexpr Int SPECIAL_LAST_ROW = 21; // series 3 looks at the TEMA sizes only

constexpr Int INTEGRAL_RING = 3; // the ring flanges
constexpr Int LOOSE_RING = 5;

constexpr Real MM2 = 645.16f;

constexpr std::string_view SECTION_NAMES[SERIES] = {"[TEMA IMPERIAL]", "[UNC]",       "[Unused]",
                                                    "[TEMA METRIC]",   "[BS 3643]",   "[SABS 1700]",
                                                    "[3P M30 METRIC]", "[USER TABLE]"};

enum Column : Int { DIA, ROOT_AREA, BMIN, RMIN, RMIN_RING, EMIN, NUT_CORNERS, WRENCH_DIA, COL9 };

// The rows of a section, in the units of its file.
struct BOLT_TABLE {
    Real numbers[BOLT_ROWS * BOLT_COLUMNS] = {};

    Real at(Int row, Column column) const { return numbers[row * BOLT_COLUMNS + column]; }
    bool metric() const { return at(0, DIA) > 0.001f; }
    Real inches(Int row, Column column) const {
        return metric() ? at(row, column) / MM_PER_INCH : at(row, column);
    }
    Real square_inches(Real area) const { return metric() ? area / MM2 : area; }
};

// Lines and tables are used from their loading until RESET_BOLTING. What is in them then is used
// again if the file is the same at the next loading.
char file_lines[FILE_LINES][LINE_WIDTH];
Int file_line_count = 0;
bool file_loaded = false;
KEPT_FILE kept_file; // the file that the lines were read from

BOLT_TABLE tables[SERIES];
bool tables_filled = false;
bool tables_of_lines = false; // filled from the lines as they are

constexpr Int known_series(Int series) {
    return series >= 1 && series <= SERIES ? series : Int{TEMA_IMPERIAL};
}

std::string_view file_line(Int index) { return {file_lines[index], LINE_WIDTH}; }

void forget_file() {
    std::memset(file_lines, 0, sizeof file_lines);
    file_line_count = 0;
    kept_file = KEPT_FILE{};
    for (BOLT_TABLE& table : tables)
        table = {};
    tables_of_lines = false;
}

// Walks the data rows of a section.
class SectionRows {
  public:
    explicit SectionRows(Int series) {
        const std::string_view name = SECTION_NAMES[known_series(series) - 1];
        while (index < file_line_count)
            if (equal_padded(left_justified(file_line(index++)), name)) return;
    }

    // Columns that the next row doesn't have keep their values. False at the end of the section.
    bool next(Real* row) {
        while (index < file_line_count) {
            const std::string_view line = file_line(index++);
            if (trimmed(line).empty() || line.find(';') != std::string_view::npos) continue;
            if (line.find('[') != std::string_view::npos) {
                index = file_line_count;
                return false;
            }
            PARSE_REALS(line, row, BOLT_COLUMNS);
            return true;
        }
        return false;
    }

  private:
    Int index = 0;
};

// The last row that lists a size, 0 in an empty table.
Int last_row(const BOLT_TABLE& table, Column column, Real given_above) {
    Int last = 0;
    for (Int i = 1; i < BOLT_ROWS; ++i)
        if (table.at(i, column) > given_above) last = i;
    return last;
}

// The first row i with x from row i to row i + 1, both included.
Int lower_row(const BOLT_TABLE& table, Column column, Int last, Real x) {
    for (Int i = 1; i < last; ++i)
        if (x >= table.at(i, column) && x <= table.at(i + 1, column)) return i;
    return 1;
}

// The minimum radial distance of ring flanges has a column of its own.
Column radial_column(Int type) {
    return type == INTEGRAL_RING || type == LOOSE_RING ? RMIN_RING : RMIN;
}

// "Warning: Nominal Bolt Dia.  0.400 in. is Smaller than Min of  0.500 in."
void WARN_OF_LIMIT(Real a, std::string_view comparison, Real limit) {
    const std::string_view unit = unit_label(Kind::diameter);
    LinePieces line;
    line.text("Warning: Nominal Bolt Dia.").fixed(as_diameter(a), 7, 3).blanks(1).text(unit);
    line.text(comparison).fixed(as_diameter(limit), 7, 3).blanks(1).text(unit);
    BLANK_LINE();
    line.write(ERROR_STYLE);
    BLANK_LINE();
}

// "Warning: bolt dia. 1.050 not found in database, using 1.000 in."
void WARN_OF_NEXT_SIZE(Real a, Real used) {
    LinePieces line;
    line.text("Warning: bolt dia.").blanks(1).bare(as_diameter(a), 3);
    line.text(" not found in database, using").blanks(1).bare(as_diameter(used), 3);
    line.blanks(1).text(unit_label(Kind::diameter));
    line.write(ERROR_STYLE);
}

// Series 3 takes its area from the record and the distances of the TEMA size that holds `a`.
BOLT_ROW SPECIAL_BOLT_ROW(Real a, Int type, Real areaGiven, Int n) {
    const BOLT_TABLE& table = tables[TEMA_IMPERIAL - 1];
    BOLT_ROW row;
    row.boltDia = a;
    row.rootArea = areaGiven;
    row.totalArea = areaGiven * static_cast<Real>(n);
    for (Int i = 1; i <= SPECIAL_LAST_ROW; ++i) {
        if (!(table.at(i, DIA) >= a)) continue;
        row.Bmin = table.at(i, BMIN);
        row.Rmin = table.at(i, radial_column(type));
        row.Emin = table.at(i, EMIN);
        row.nutCorners = table.at(i, NUT_CORNERS);
        row.wrenchDia = table.at(i, WRENCH_DIA);
        row.boltCol9 = table.at(i, COL9);
        break;
    }
    return row;
}

} // namespace

void LOAD_BOLT_FILE() {
    if (file_loaded) return;
    bool same = false;
    file_loaded = READ_KEPT_TABLE("BOLTDATA.TXT", &file_lines[0][0], LINE_WIDTH, FILE_LINES,
                                  file_line_count, kept_file, same);
    if (!same) tables_of_lines = false;
}

void LOAD_BOLT_TABLES(Int force) {
    if (tables_filled && force != 1) return;
    LOAD_BOLT_FILE();
    tables_filled = file_loaded;
    if (tables_of_lines && force != 1) return;
    tables_of_lines = file_loaded;
    for (BOLT_TABLE& table : tables)
        table = {};
    if (!file_loaded) return;
    for (Int series = 1; series <= SERIES; ++series) {
        if (series == SPECIAL_ROOT_AREA) continue;
        Real diameters[BOLT_ROWS];
        Int count = 0;
        BOLTHELPER(series, diameters, tables[series - 1].numbers, count);
    }
}

void BOLTHELPER(Int series, Real* diameters, Real* rows, Int& count) {
    for (Int i = 0; i < BOLT_ROWS * BOLT_COLUMNS; ++i)
        rows[i] = 0.0f;
    for (Int i = 0; i < BOLT_ROWS; ++i)
        diameters[i] = 0.0f;
    count = 0;
    LOAD_BOLT_FILE();
    SectionRows section(series);
    // The table ends at its 27th row, whatever follows in the section.
    while (count < BOLT_ROWS && section.next(rows + count * BOLT_COLUMNS)) {
        diameters[count] = rows[count * BOLT_COLUMNS];
        ++count;
    }
}

void GETBOLTDATA(Real dia, Int series, Real* row, Int& found) {
    found = 0;
    LOAD_BOLT_FILE();
    SectionRows section(series);
    while (found == 0 && section.next(row))
        if (std::abs(row[0] - dia) <= 0.001f) found = 1;
}

BOLT_ROW BOLT_TABLE_ROW(Real& a, Int type, Int series, Real areaGiven, Int n) {
    LOAD_BOLT_TABLES(0);
    if (series == SPECIAL_ROOT_AREA) return SPECIAL_BOLT_ROW(a, type, areaGiven, n);

    const BOLT_TABLE& table = tables[known_series(series) - 1];
    BOLT_ROW row;
    const Int last = last_row(table, DIA, 0.001f);
    if (last == 0) return row;

    const Real given = a;
    const Real x = table.metric() ? a * MM_PER_INCH : a;
    const Real smallest = table.at(1, DIA);
    const Real largest = table.at(last, DIA);
    Int i = 1;
    if (last > 1 && x > smallest) i = x >= largest ? last - 1 : lower_row(table, DIA, last, x);
    const Int next = min(i + 1, last);

    // A diameter between two sizes takes the smaller one.
    const Real beyond = x - table.at(next, DIA);
    const Int used = std::abs(beyond) <= 0.01f || beyond > 0.01f ? next : i;
    row.boltDia = table.inches(used, DIA);
    row.rootArea = table.square_inches(table.at(used, ROOT_AREA));
    row.totalArea = table.square_inches(table.at(used, ROOT_AREA) * static_cast<Real>(n));
    row.Bmin = table.inches(used, BMIN);
    row.Rmin = table.inches(used, radial_column(type));
    row.Emin = table.inches(used, EMIN);
    row.nutCorners = table.inches(used, NUT_CORNERS);
    row.wrenchDia = table.inches(used, WRENCH_DIA);
    row.boltCol9 = table.inches(used, COL9);
    a = row.boltDia;

    if (smallest - x > 0.0001f)
        WARN_OF_LIMIT(given, " is Smaller than Min of", table.inches(1, DIA));
    else if (x - largest > 0.0001f)
        WARN_OF_LIMIT(given, " is Larger than Max of", table.inches(last, DIA));
    else if (std::abs(x - table.at(i, DIA)) > 0.01f && std::abs(beyond) > 0.01f)
        WARN_OF_NEXT_SIZE(given, table.inches(i, DIA));
    return row;
}

BOLT_ROW BOLT_SIZE_FOR_AREA(Int series, Real area, Int type) {
    LOAD_BOLT_TABLES(0);
    if (series == SPECIAL_ROOT_AREA) series = TEMA_IMPERIAL;
    const BOLT_TABLE& table = tables[known_series(series) - 1];
    BOLT_ROW row;
    const Int last = last_row(table, ROOT_AREA, 0.0001f);
    if (last == 0) return row;

    const Real x = table.metric() ? area * MM2 : area;
    Int i = 1;
    if (x > table.at(1, ROOT_AREA))
        i = x >= table.at(last, ROOT_AREA) ? last : lower_row(table, ROOT_AREA, last, x) + 1;
    row.boltDia = table.inches(i, DIA);
    row.rootArea = table.square_inches(table.at(i, ROOT_AREA));
    row.Bmin = table.inches(i, BMIN);
    row.Rmin = table.inches(i, radial_column(type));
    row.Emin = table.inches(i, EMIN);
    row.boltCol9 = table.inches(i, COL9);
    return row;
}

// The content of the file stays: the next loading checks that it is still that of the file.
void RESET_BOLTING() {
    file_loaded = false;
    tables_filled = false;
    if (!kept_file.is_known()) forget_file();
    QUIET_BOLT_AREA = QUIET_BOLT_DISTANCES = 0;
}

} // namespace tarvane
