#include "catalogue/data_files_check.h"

#include "catalogue/data_search.h"
#include "catalogue/data_sources.h"
#include "values/bounded_file.h"
#include "values/decimal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tarvane::vessel {

namespace {

using Lines = std::vector<std::string_view>;
using Numbers = std::vector<double>;

// ---- text ------------------------------------------------------------------------------------------

bool is_text(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return (code < 0x20 && c != '\t' && c != '\n' && c != '\r') || code == 0x7F;
    });
}

// Lines without the blanks around them, cut to the columns that the engine reads.
Lines lines_of(std::string_view text, std::size_t width = std::string_view::npos) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, std::min(end, width));
        line.remove_prefix(std::min(line.find_first_not_of(" \t\r"), line.size()));
        lines.push_back(line.substr(0, line.find_last_not_of(" \t\r") + 1));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// The numbers at the beginning of a line, up to the first item that is none.
Numbers numbers_in(std::string_view line) {
    constexpr std::string_view GAPS = " \t\r,";
    Numbers numbers;
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(GAPS), line.size()));
        std::string item(line.substr(0, line.find_first_of(GAPS)));
        std::replace_if(
            item.begin(), item.end(), [](char c) { return c == 'D' || c == 'd'; }, 'E');
        std::string_view rest = item;
        const std::optional<double> value = take_decimal<double>(rest);
        if (!value || !rest.empty() || !std::isfinite(*value)) return numbers;
        numbers.push_back(*value);
        line.remove_prefix(item.size());
    }
}

bool line_holds(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

std::string bad_line(std::size_t index, const std::string& wanted) {
    return "damaged: line " + std::to_string(index + 1) + " lacks " + wanted;
}

const std::string NO_END = "damaged: its line [END] is missing";

using Fault = std::optional<std::string>;

// ---- the files ---------------------------------------------------------------------------------------

Fault check_ended(const Lines& lines) {
    const bool ends = std::any_of(lines.begin(), lines.end(),
                                  [](std::string_view line) { return line_holds(line, "[END]"); });
    return ends ? Fault() : NO_END;
}

// [NAME] and rows of at least `least` numbers; a line with ";" is a comment.
struct Rows {
    std::size_t least;
    bool ascending; // in their first number
};

Fault check_rows(const Lines& lines, const Rows& rows, const std::string& wanted) {
    bool section = false;
    double before = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = lines[i];
        if (line_holds(line, "[END]")) return section ? Fault() : "damaged: it has no sections";
        if (line.empty() || line_holds(line, ";")) continue;
        if (line.front() == '[') {
            section = true;
            before = -std::numeric_limits<double>::infinity();
            continue;
        }
        const Numbers numbers = numbers_in(line);
        if (!section || numbers.size() < rows.least) return bad_line(i, wanted);
        if (rows.ascending && !(numbers[0] > before)) return bad_line(i, "a greater first number");
        before = numbers[0];
    }
    return NO_END;
}

Fault check_bolts(std::string_view text) {
    constexpr std::size_t WIDTH = 100, FILE_LINES = 225;
    Lines lines = lines_of(text, WIDTH);
    lines.resize(std::min(lines.size(), FILE_LINES));
    if (Fault fault = check_rows(lines, {8, true}, "the 8 figures of a bolt size")) return fault;
    bool first = true; // of a section: its units
    for (std::size_t i = 0; i < lines.size() && !line_holds(lines[i], "[END]"); ++i) {
        if (lines[i].empty() || line_holds(lines[i], ";")) continue;
        if (lines[i].front() == '[') {
            first = true;
            continue;
        }
        const Numbers row = numbers_in(lines[i]);
        const bool sound = row[0] > 0.0 && row[1] > 0.0 &&
                           std::all_of(row.begin(), row.end(), [](double x) { return x >= 0.0; });
        if (!first && !sound) return bad_line(i, "a diameter and an area above 0");
        first = false;
    }
    return {};
}

Fault check_moduli(std::string_view text) {
    constexpr std::size_t WIDTH = 425, POINTS = 36, AXIS_FROM = 9, VALUES_FROM = 63;
    bool moduli = false, expansion = false, axis = false;
    std::size_t rows = 0, index = 0;
    for (std::string_view rest = text; !rest.empty(); ++index) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, std::min(end, WIDTH));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos || line_holds(line, ";"))
            continue;
        if (line_holds(line, "[END]")) break;
        if (line_holds(line, "[Emod]")) {
            moduli = true;
        } else if (line_holds(line, "[CoE]")) {
            expansion = moduli;
            break; // the rest decides nothing here
        } else if (line_holds(line, "[Temp]")) {
            axis = line.size() > AXIS_FROM && numbers_in(line.substr(AXIS_FROM)).size() >= POINTS;
            if (!axis) return bad_line(index, "36 temperatures");
        } else {
            const bool row = line.size() > VALUES_FROM &&
                             numbers_in(line.substr(0, 19)).size() >= 2 &&
                             numbers_in(line.substr(VALUES_FROM)).size() >= POINTS;
            if (!moduli || !axis || !row) return bad_line(index, "a reference and 36 values");
            ++rows;
        }
    }
    if (!moduli || rows == 0) return "damaged: it has no moduli";
    return expansion ? Fault() : "damaged: its section [CoE] is missing";
}

Fault check_table_g(std::string_view text) {
    constexpr std::size_t WIDTH = 20, FILE_LINES = 470;
    constexpr double KEYS[] = {4,  5,   6,   8,   10,  15,  20,  25,  30,  40,  50,  60,
                               80, 100, 125, 150, 200, 250, 300, 400, 500, 600, 800, 1000};
    constexpr double LEAST = 0.05, MOST = 50.0; // L/Do
    Lines lines = lines_of(text, WIDTH);
    lines.resize(std::min(lines.size(), FILE_LINES));
    std::size_t key = 0;
    double last = MOST; // L/Do of the previous row
    std::size_t last_line = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = lines[i];
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            const Numbers name = numbers_in(line.substr(1, line.find(']') - 1));
            if (key == std::size(KEYS) || name.size() != 1 || name[0] != KEYS[key])
                return bad_line(i, "the next Do/t of the table");
            if (last < MOST) return bad_line(i, "the rows up to L/Do 50 before it");
            ++key;
            last = 0.0;
            continue;
        }
        const Numbers row = numbers_in(line);
        const bool sound = row.size() == 2 && row[0] > last && row[1] > 0.0 && row[1] < 1.0;
        if (key == 0 || !sound) return bad_line(i, "an L/Do above that before it and its A");
        // The engine looks at the line before: a blank one says that the table begins here.
        const bool joined = last == 0.0 ? lines[i - 1].empty() : last_line + 1 == i;
        if (!joined) return bad_line(i, "the line before it that belongs there");
        last_line = i;
        if (last == 0.0 && row[0] > LEAST) return bad_line(i, "the row of L/Do 0.05");
        last = row[0];
    }
    if (key < std::size(KEYS) || last < MOST)
        return "damaged: its rows end before Do/t 1000 and L/Do 50";
    return {};
}

Fault check_charts(std::string_view text) {
    return check_rows(lines_of(text), {10, true}, "the 10 figures of a curve");
}

Fault check_standard_flanges(std::string_view text) {
    return check_rows(lines_of(text), {17, false}, "the 17 figures of a size");
}

Fault check_list(std::string_view text) { return check_ended(lines_of(text)); }

// ---- records -------------------------------------------------------------------------------------------

constexpr std::size_t NAME_AT = 16, NAME_WIDTH = 16, TENSILE_AT = 164, STRENGTHS_AT = 188;
constexpr std::size_t STRENGTHS = 44;

Fault check_record(std::string_view record) {
    const std::string_view name = record.substr(NAME_AT, NAME_WIDTH);
    const bool has_name =
        name.find_first_not_of(std::string_view(" \0", 2)) != std::string_view::npos;
    if (!has_name || !is_text(name.substr(0, name.find('\0')))) return "name";
    std::vector<float> figures(STRENGTHS);
    std::memcpy(figures.data(), record.data() + STRENGTHS_AT, STRENGTHS * sizeof(float));
    figures.push_back(0.0f);
    std::memcpy(&figures.back(), record.data() + TENSILE_AT, sizeof(float));
    const bool sound = std::all_of(figures.begin(), figures.end(), [](float value) {
        return std::isfinite(value) && value >= -1.0f && value < 1e5f;
    });
    return sound ? Fault() : "strengths";
}

// Record 1 holds two counts, whose sum is the number of records after it.
Fault check_records(std::string_view bytes, std::size_t width) {
    if (bytes.size() < width) return "damaged: it has no first record";
    std::int32_t counts[2];
    std::memcpy(counts, bytes.data(), sizeof counts);
    const std::int64_t told = std::int64_t{counts[0]} + counts[1];
    const auto there = static_cast<std::int64_t>(bytes.size() / width) - 1;
    if (told < 1) return "damaged: it does not say how many materials it has";
    if (told > there)
        return "damaged: it says that it has " + std::to_string(told) + " materials, and has " +
               std::to_string(there);
    for (std::int64_t i = 1; i <= told; ++i) {
        const Fault fault = check_record(bytes.substr(static_cast<std::size_t>(i) * width, width));
        if (fault)
            return "damaged: material " + std::to_string(i) + " of it has no sound " + *fault;
    }
    return {};
}

Fault check_yields(std::string_view bytes) { return check_records(bytes, 364); }
Fault check_materials(std::string_view bytes) { return check_records(bytes, 414); }

struct KnownFile {
    std::string_view name;
    bool text;
    Fault (*check)(std::string_view bytes);
};
constexpr KnownFile KNOWN_FILES[] = {
    {APPROXIMATE_FILE, true, check_list},
    {SOURCES_FILE, true, check_list},
    {BOLT_FILE, true, check_bolts},
    {MODULUS_FILE, true, check_moduli},
    {TABLE_G_FILE, true, check_table_g},
    {"ExtChartData.txt", true, check_charts},
    {"ANSIFlangeDimensions.txt", true, check_standard_flanges},
    {UCS_23_FILE, true, check_list},
    {YIELD_FILE, false, check_yields},
    {"YIELDSTRM.BIN", false, check_yields},
    {"MATFILE1.BIN", false, check_materials},
    {"MATFILE1M.BIN", false, check_materials},
    {"MATFILE2.BIN", false, check_materials},
    {"MATFILE2M.BIN", false, check_materials},
    {"MatFileD2C1.BIN", false, check_materials},
    {"MatFileD2C1M.BIN", false, check_materials},
};

constexpr std::size_t LONGEST_LINE = 65536; // of the engine's reader

const KnownFile* find_file(std::string_view name) {
    const auto* known = std::find_if(std::begin(KNOWN_FILES), std::end(KNOWN_FILES),
                                     [&](const KnownFile& file) { return file.name == name; });
    return known == std::end(KNOWN_FILES) ? nullptr : known;
}

// Why there is nothing to read.
Fault absence(const std::string& path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path_of(path), ignored);
    if (!std::filesystem::exists(status)) return "missing";
    return std::filesystem::is_regular_file(status) ? Fault() : "not a regular file";
}

Fault content_fault(const KnownFile& known, const std::string& path) {
    std::string bytes;
    try {
        bytes = read_regular(path, LARGEST_DATA_FILE);
    } catch (const std::exception&) {
        return "unreadable";
    }
    if (bytes.size() > LARGEST_DATA_FILE) return "too large for a data file";
    if (known.text) {
        if (!is_text(bytes)) return "damaged: it has characters that are not text";
        for (const std::string_view line : lines_of(bytes)) {
            if (line.size() > LONGEST_LINE) return "damaged: it has a line without an end";
        }
    }
    return known.check(bytes);
}

// The fault and where the file was looked for.
Fault with_place(const Fault& fault) {
    if (!fault) return fault;
    const char* gap = *fault == "missing" ? " " : ", ";
    return *fault + gap + "in the data folder " + described(data_folder());
}

// A folder that another program or an earlier version made has no list of sources.
Fault with_remedy(std::string_view name, const Fault& fault) {
    if (!fault || name != SOURCES_FILE || !fault->starts_with("missing")) return fault;
    return *fault + "; data files of earlier versions do not have it: make them anew by tarvane "
                    "data build, or write it with the one line [END], which names no source";
}

} // namespace

std::optional<std::string> data_file_fault(std::string_view name) {
    const KnownFile* known = find_file(name);
    if (known == nullptr) return std::nullopt;
    const std::string path = data_file_path(name);
    const Fault absent = absence(path);
    return with_remedy(name, with_place(absent ? absent : content_fault(*known, path)));
}

bool is_data_file(std::string_view name) { return find_file(name) != nullptr; }

std::vector<std::string> missing_data_files() {
    std::vector<std::string> faults;
    for (const KnownFile& file : KNOWN_FILES) {
        if (const auto fault =
                with_remedy(file.name, with_place(absence(data_file_path(file.name)))))
            faults.push_back(std::string(file.name) + " is " + *fault);
    }
    return faults;
}

void require_data_file(std::string_view name) {
    if (const auto fault = data_file_fault(name))
        throw std::runtime_error(std::string(name) + " is " + *fault);
}

DataFilesCheck::Answer& DataFilesCheck::answer(std::string_view name) {
    const auto known = answers.find(name);
    if (known != answers.end()) return known->second;
    return answers.emplace(name, Answer{data_file_fault(name)}).first->second;
}

std::optional<std::string> DataFilesCheck::first_fault(std::string_view name) {
    Answer& file = answer(name);
    if (std::exchange(file.told, true)) return std::nullopt;
    return file.fault;
}

void DataFilesCheck::tell_again() {
    for (auto& [name, answer] : answers)
        answer.told = false;
}

bool DataFilesCheck::approximate(const std::string& file, const std::string& item) {
    const auto known = approximates.find({file, item});
    if (known != approximates.end()) return known->second;
    return approximates.emplace(std::pair(file, item), is_approximate(file, item)).first->second;
}

bool DataFilesCheck::sound(std::string_view name) { return !answer(name).fault; }

} // namespace tarvane::vessel
