#include "standards/flange_dimensions.h"

#include "frame/files/data_files.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "host/file_units.h"

#include <cmath>

namespace tarvane {

namespace {

constexpr std::string_view FILE_NAME = "ANSIFlangeDimensions.txt";
constexpr Int LINE_WIDTH = 254;
constexpr Int LIST_WIDTH = FLANGE_SIZE_WIDTH; // the list of sizes looks at the first columns only
constexpr Int ROW_NUMBERS = 17;

constexpr Real TAN_7_DEGREES = 0.12278456f;
constexpr Real SERIES_FROM = 26.0f;   // smallest size with a choice of series
constexpr Real BORE_TABLE_TO = 14.0f; // sizes below it take the bore of the standard wall
constexpr Int LOW_CLASSES_TO = 301;   // classes below it: raised face of 0.06 in.
constexpr Real LOW_FACE = 0.06f, HIGH_FACE = 0.25f;
constexpr Real STANDARD_WALL = 0.375f;

struct CLASS_NAME {
    Int number;
    std::string_view text;
};
constexpr CLASS_NAME INCH_CLASSES[] = {{75, "75"},   {150, "150"}, {300, "300"},   {400, "400"},
                                       {600, "600"}, {900, "900"}, {1500, "1500"}, {2500, "2500"}};
constexpr CLASS_NAME METRIC_CLASSES[] = {
    {2, "PN2.5"}, {6, "PN6"},     {10, "PN10"},   {16, "PN16"},   {25, "PN25"},   {40, "PN40"},
    {63, "PN63"}, {100, "PN100"}, {160, "PN160"}, {250, "PN250"}, {320, "PN320"}, {400, "PN400"}};

template <std::size_t N>
std::string_view class_text(const CLASS_NAME (&classes)[N], Int number) {
    for (const CLASS_NAME& entry : classes)
        if (entry.number == number) return entry.text;
    return {};
}

// The number 400 is both an inch class and a metric one.
std::string_view class_text(Int number, Int ansi, bool& metric) {
    const std::string_view inch = class_text(INCH_CLASSES, number);
    const std::string_view pn = class_text(METRIC_CLASSES, number);
    metric = !pn.empty() && (inch.empty() || ansi != 0);
    return metric ? pn : inch;
}

// One row, columns numbered as in the file.
class ROW {
  public:
    // False when the line does not hold all the numbers of a row.
    bool read(std::string_view line) {
        for (Real& number : numbers)
            number = 0.0f;
        return PARSE_REALS(line, numbers, ROW_NUMBERS) == ROW_NUMBERS;
    }
    Real operator()(Int column) const { return numbers[column - 1]; }
    Real size() const { return numbers[0]; }
    Int series() const { return truncated(numbers[1]); }
    void from_millimetres() {
        for (Int column = 3; column <= ROW_NUMBERS; ++column)
            if (column != NUMBER_OF_BOLTS) numbers[column - 1] /= MM_PER_INCH;
    }

  private:
    static constexpr Int NUMBER_OF_BOLTS = 11;
    Real numbers[ROW_NUMBERS] = {};
};

// The dimension file, open while the object lives.
class DIMENSION_FILE {
  public:
    DIMENSION_FILE() {
        Text<260> path;
        Int path_len = 0;
        SYSTEM_FILE_PATH(path, path_len, FILE_NAME);
        GETNEXTUNIT(unit);
        is_open = path_len > 0 && open_unit_for_reading(unit, path.columns(1, path_len));
    }
    DIMENSION_FILE(const DIMENSION_FILE&) = delete;
    DIMENSION_FILE& operator=(const DIMENSION_FILE&) = delete;
    ~DIMENSION_FILE() {
        if (is_open) close_unit(unit);
    }
    bool opened() const { return is_open; }
    Int number() const { return unit; }

  private:
    Int unit = 0;
    bool is_open = false;
};

// Lines of one width, left-justified, without comment lines where that is asked for.
class LINES {
  public:
    LINES(const DIMENSION_FILE& file, Int line_width) : reader(file.number()), width(line_width) {}

    // False at the end of the file; blank lines are passed over.
    bool next(std::string_view& line) {
        while (reader.next(buffer, width)) {
            line = left_justified(trimmed({buffer, static_cast<std::size_t>(width)}));
            if (!line.empty()) return true;
        }
        return false;
    }

    // Goes past the line of a section; false when there is none before the end of the data.
    bool find_section(std::string_view name) {
        std::string_view line;
        while (next(line)) {
            if (line.front() != '[') continue;
            const std::string_view inside = line.substr(1, line.size() > 1 ? line.size() - 2 : 0);
            if (equal_padded(inside, name)) return true;
            if (inside == "END") return false;
        }
        return false;
    }

  private:
    LineReader reader;
    Int width;
    char buffer[LINE_WIDTH];
};

// The row of a size and series. Without one `next_size` is the first size above, -1.0 if there is none:
// of all rows for the sizes without a choice of series, of the own series from 26 on. A row that can't be
// read ends the search.
bool find_row(LINES& lines, Real size, Int series, ROW& row, Real& next_size) {
    std::string_view line;
    next_size = -1.0f;
    while (lines.next(line) && line.front() != '[') {
        if (line.front() == ';') continue;
        if (!row.read(line)) return false;
        const bool own_series = row.series() == series;
        if (own_series && row.size() == size) return true;
        if (row.size() > size && (own_series || size < SERIES_FROM)) {
            next_size = row.size();
            return false;
        }
    }
    return false;
}

// One flange in the making; symbols of the flange report.
struct FLANGE {
    Real bore = 0.0f, t = 0.0f, h = 0.0f, g0 = 0.0f, g1 = 0.0f;
};

// The slope of 7 degrees, drawn back from the ring over L to the length h, ends at the small end.
Real slope_end(Real x, Real g1, Real least) {
    return x <= g1 && x >= least ? x : max(x - 0.125f, least);
}

void slip_on_hub(const ROW& row, Int hubform, bool low_class, Real wall, FLANGE& f) {
    f.bore = row(15);
    f.h = row(14) - f.t;
    if (low_class) f.h = f.h + LOW_FACE;
    const Real s = std::fabs(row(7) - row(15)) / 2.0f;
    const Real L = s / TAN_7_DEGREES;
    switch (hubform) {
    case WALL_ADDED:
        f.g1 = s + wall;
        f.g0 = slope_end((L - f.h) * TAN_7_DEGREES + wall, f.g1, wall);
        break;
    case STRAIGHT:
        f.g1 = s;
        f.g0 = f.g1;
        break;
    case SLOPE_ONLY:
        f.g1 = s;
        f.g0 = slope_end((L - f.h) * TAN_7_DEGREES, f.g1, 0.0f);
        break;
    default:
        break;
    }
}

} // namespace

void GET_FLANGE_SIZES(std::string_view class_name, char* sizes, Int& count) {
    const DIMENSION_FILE file;
    if (!file.opened()) return;
    count = 0;
    for (Int i = 0; i < MOST_FLANGE_SIZES * FLANGE_SIZE_WIDTH; ++i)
        sizes[i] = ' ';

    Text<16> wanted(class_name);
    for (Int column = 1; column <= wanted.width(); ++column)
        if (wanted(column) == '\0') wanted(column) = ' ';

    LINES lines(file, LIST_WIDTH);
    if (!lines.find_section(left_justified(wanted.view()))) return;
    std::string_view line;
    Int previous = INT32_MIN;
    while (count < MOST_FLANGE_SIZES && lines.next(line)) {
        if (line.find_first_of("[;") != std::string_view::npos) return;
        const std::string_view word = line.substr(0, line.find(' '));
        Real value = 0.0f;
        Int whole = 0;
        PARSE_REAL(word, value, whole);
        if (whole < previous) return;
        previous = whole;
        char* const entry = sizes + count * FLANGE_SIZE_WIDTH;
        Int column = 0;
        while (column < FLANGE_SIZE_WIDTH - 1 && column < static_cast<Int>(word.size())) {
            entry[column] = word[static_cast<std::size_t>(column)];
            ++column;
        }
        entry[column] = '\0';
        ++count;
    }
}

void GET_FLANGE_DIMENSIONS(Real& size, Int flange_class, Real* result, bool& notfound, Int& series,
                           Real& wall, Int blind, Int slipon, Int hubform, Int ansi) {
    for (Int i = 0; i < FLANGE_RESULTS; ++i)
        result[i] = -1.0f;
    if (flange_class == 0) return;

    bool metric = false;
    const std::string_view name = class_text(flange_class, ansi, metric);
    notfound = false;
    if (name.empty()) return;
    if (size < SERIES_FROM || metric) series = 0;

    const DIMENSION_FILE file;
    notfound = true;
    if (!file.opened()) return;
    LINES lines(file, LINE_WIDTH);
    if (!lines.find_section(name)) return;
    ROW row;
    if (!find_row(lines, size, series, row, result[LAST_COLUMN])) return;
    notfound = false;

    if (metric) {
        row.from_millimetres();
        size /= MM_PER_INCH;
    }
    if (wall <= 0.0001f) wall = STANDARD_WALL;

    const bool low_class = flange_class < LOW_CLASSES_TO;
    FLANGE f;
    f.bore = size - 2.0f * wall;
    if (f.bore < 0.0001f) f.bore = size;
    if (low_class && blind == 0 && slipon == 0 && size < BORE_TABLE_TO) f.bore = row(13);
    f.t = row(4);
    f.g0 = wall;
    f.g1 = std::fabs(row(7) - row(8)) / 2.0f + wall;
    f.h = row(6) - row(4);
    result[HALF_RING_WIDTH] = (row(9) - f.bore) / 4.0f;

    if (blind != 0) {
        f.t = row(5);
        f.h = f.g0 = f.g1 = 0.0f;
    }
    if (slipon != 0) slip_on_hub(row, hubform, low_class, wall, f);
    // The tabulated thickness of the small sizes includes the raised face.
    if (!metric && blind == 0 && slipon == 0 && series != 0) {
        const Real face = low_class ? LOW_FACE : HIGH_FACE;
        f.t = f.t - face;
        f.h = f.h - face;
    }

    result[FLANGE_BORE] = f.bore;
    result[FLANGE_THICKNESS] = f.t;
    result[FLANGE_CLASS] = static_cast<Real>(flange_class);
    result[BOLT_HOLE] = row(10);
    result[BOLT_COUNT] = row(11);
    result[BOLT_SIZE] = row(12);
    result[BOLT_CIRCLE] = row(9);
    result[FLANGE_OUTSIDE] = row(3);
    result[HUB_SMALL_END] = f.g0;
    result[HUB_LARGE_END] = f.g1;
    result[HUB_LENGTH] = f.h;
    result[FACE_DIAMETER] = row(16);
    result[LAST_COLUMN] = row(17);
}

} // namespace tarvane
