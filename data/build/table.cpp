#include "table.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tarvane::data {

namespace {

constexpr std::string_view BLANKS = " \t";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

std::string place_of(const std::string& file, int line) {
    return file + ":" + std::to_string(line) + ": ";
}

std::string in_quotes(std::string_view text) { return std::string(1, '"').append(text) += '"'; }

std::string number_text(float value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return {buffer, end};
}

// One field from `at` on, which moves past the comma or to the end. False when a quotation mark
// does not close, or something follows it.
bool take_field(std::string_view line, std::size_t& at, std::string& field) {
    field.clear();
    const std::size_t start = std::min(line.find_first_not_of(BLANKS, at), line.size());
    if (start == line.size() || line[start] != '"') {
        const std::size_t comma = std::min(line.find(',', at), line.size());
        field = trimmed(line.substr(at, comma - at));
        at = comma;
        return field.find('"') == std::string::npos;
    }
    for (at = start + 1; at < line.size(); ++at) {
        if (line[at] != '"') {
            field += line[at];
        } else if (at + 1 < line.size() && line[at + 1] == '"') {
            field += line[++at];
        } else {
            at = std::min(line.find_first_not_of(BLANKS, at + 1), line.size());
            return at == line.size() || line[at] == ',';
        }
    }
    return false;
}

// The fields of a line; false when its quotation marks are wrong.
bool split(std::string_view line, std::vector<std::string>& fields) {
    fields.clear();
    for (std::size_t at = 0;; ++at) {
        if (!take_field(line, at, fields.emplace_back())) return false;
        if (at >= line.size()) return true;
    }
}

bool holds(const auto& list, std::string_view item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

template <typename Number>
bool parse(const std::string& text, Number& value) {
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc{} && result.ptr == end;
}

bool is_number(const std::string& text) {
    float value = 0.0f;
    return parse(text, value) && std::isfinite(value);
}

} // namespace

std::string name_key(std::string_view name) {
    std::string key;
    for (const char c : name)
        if (c != ' ' && c != '.' && c != '/' && c != '-')
            key += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return key;
}

// ---- a table ---------------------------------------------------------------------------------------

Table::Table(const std::filesystem::path& path, std::span<const std::string_view> expected,
             std::span<const std::string_view> optional, Numbers numbers)
    : name(path.filename().string()) {
    read(path, {expected, optional, numbers});
    if (lines.empty()) throw DataError(name + ": no rows");
}

Table::Table(const Sources& sources, std::string_view file, std::string_view key,
             std::span<const std::string_view> expected, std::span<const std::string_view> optional)
    : name(file) {
    const Columns columns{expected, optional};
    const auto shipped =
        std::find_if(sources.shipped.begin(), sources.shipped.end(),
                     [&](const ShippedTable& table) { return table.file == file; });
    const bool stands_in = shipped != sources.shipped.end();
    const std::filesystem::path path = sources.folder / name;
    std::error_code none;
    if (!stands_in || std::filesystem::exists(path, none)) read(path, columns);
    if (stands_in) {
        std::vector<Row> own;
        own.swap(lines);
        std::istringstream text{std::string(shipped->text)};
        take(text, parts.emplace_back(TablePart{.name = name, .columns = {}, .shipped = true}),
             columns);
        std::erase_if(lines, [&](const Row& row) {
            return std::any_of(own.begin(), own.end(), [&](const Row& other) {
                return key == "name" ? name_key(other.field(key)) == name_key(row.field(key))
                                     : other.field(key) == row.field(key);
            });
        });
        lines.insert(lines.end(), std::make_move_iterator(own.begin()),
                     std::make_move_iterator(own.end()));
    }
    if (lines.empty()) throw DataError(name + ": no rows");
}

void Table::read(const std::filesystem::path& path, const Columns& columns) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw DataError(name + ": cannot be opened");
    take(file, parts.emplace_back(TablePart{.name = name, .columns = {}, .shipped = false}),
         columns);
    if (file.bad()) throw DataError(name + ": cannot be read");
}

void Table::take(std::istream& text, TablePart& part, const Columns& columns) {
    std::string line;
    std::vector<std::string> fields;
    for (int number = 1; std::getline(text, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::string_view content = trimmed(line);
        if (content.empty() || content.front() == '#') continue;
        if (!split(line, fields))
            throw DataError(place_of(name, number) + "quotation marks out of place in " + line);
        if (part.columns.empty()) {
            take_header(fields, part, columns, number);
            continue;
        }
        if (fields.size() != part.columns.size())
            throw DataError(place_of(name, number) + std::to_string(fields.size()) +
                            " fields where the header has " + std::to_string(part.columns.size()));
        Row& row = lines.emplace_back();
        row.part = &part;
        row.number = number;
        row.fields = fields;
    }
    if (part.columns.empty()) throw DataError(name + ": no line with the names of the columns");
}

void Table::take_header(const std::vector<std::string>& fields, TablePart& part,
                        const Columns& columns, int line) {
    for (const std::string& column : fields) {
        if (std::count(fields.begin(), fields.end(), column) > 1)
            throw DataError(place_of(part.name, line) + column + ": the column stands twice");
        const bool number = columns.numbers == Numbers::any && is_number(column);
        if (!number && !holds(columns.expected, column) && !holds(columns.optional, column) &&
            column != CHECKS_COLUMN && column != EDITION_COLUMN)
            throw DataError(place_of(part.name, line) + column + ": no column of this table");
    }
    for (const std::string_view column : columns.expected)
        if (!holds(fields, column))
            throw DataError(place_of(part.name, line) + std::string(column) +
                            ": the column is missing");
    part.columns = fields;
}

std::vector<std::string> Table::number_columns() const {
    std::vector<std::string> numbers;
    for (const TablePart& part : parts)
        std::copy_if(part.columns.begin(), part.columns.end(), std::back_inserter(numbers),
                     is_number);
    std::sort(numbers.begin(), numbers.end(), [](const std::string& a, const std::string& b) {
        return std::stof(a) < std::stof(b);
    });
    return numbers;
}

bool TablePart::has(std::string_view column) const { return holds(columns, column); }

// ---- a row -----------------------------------------------------------------------------------------

std::string_view status_word(Status status) {
    constexpr std::string_view WORDS[] = {"checked", "published", "approximate"};
    return WORDS[static_cast<std::size_t>(status)];
}

std::size_t Row::place(std::string_view column) const {
    const auto found = std::find(part->columns.begin(), part->columns.end(), column);
    if (found == part->columns.end())
        throw std::logic_error(part->name + " has no column " + std::string(column));
    return static_cast<std::size_t>(found - part->columns.begin());
}

void Row::fail(std::string_view column, const std::string& what) const {
    throw DataError(place_of(part->name, number) + std::string(column) + ": " + what);
}

void Row::fail_again(std::string_view column, const Row& other) const {
    fail(column,
         in_quotes(field(column)) + " stands already in line " + std::to_string(other.number) +
             (other.shipped() && !shipped() ? " of the table that comes with the program" : ""));
}

const std::string& Row::field(std::string_view column) const { return fields[place(column)]; }

bool Row::blank(std::string_view column) const {
    return !part->has(column) || field(column).empty();
}

const std::string& Row::text(std::string_view column) const {
    const std::string& value = field(column);
    if (value.empty()) fail(column, "empty");
    return value;
}

const std::string& Row::field(std::string_view column, std::size_t width) const {
    const std::string& value = field(column);
    if (value.size() > width)
        fail(column, "longer than " + std::to_string(width) + " characters: " + in_quotes(value));
    if (!std::all_of(value.begin(), value.end(), [](char c) { return c >= ' ' && c <= '~'; }))
        fail(column, "characters other than printable ASCII in " + in_quotes(value));
    return value;
}

const std::string& Row::text(std::string_view column, std::size_t width) const {
    text(column);
    return field(column, width);
}

float Row::real(std::string_view column) const {
    float value = 0.0f;
    if (!parse(text(column), value) || !std::isfinite(value))
        fail(column, "not a number: " + in_quotes(field(column)));
    return value;
}

float Row::real(std::string_view column, float otherwise) const {
    return blank(column) ? otherwise : real(column);
}

float Row::positive(std::string_view column) const {
    const float value = real(column);
    if (!(value > 0.0f)) fail(column, "not above 0: " + field(column));
    return value;
}

std::int32_t Row::whole(std::string_view column) const {
    std::int32_t value = 0;
    if (!parse(text(column), value))
        fail(column, "not a whole number: " + in_quotes(field(column)));
    return value;
}

std::int32_t Row::whole(std::string_view column, std::int32_t otherwise) const {
    return blank(column) ? otherwise : whole(column);
}

Status Row::status_of(std::string_view column) const {
    const std::string& word = text(column);
    for (const Status status : {Status::published, Status::checked, Status::approximate})
        if (word == status_word(status)) return status;
    fail(column, "neither \"published\", \"checked\" nor \"approximate\": " + in_quotes(word));
}

Status Row::status() const {
    text("source");
    const Status status = status_of("status");
    if (status == Status::checked && blank(CHECKS_COLUMN))
        fail("status", "checked, but the column checks names no source");
    return status;
}

void Row::expect(std::string_view column, float written, float read) const {
    if (!(written == read))
        fail(column, "written as " + number_text(written) + ", read back as " + number_text(read));
}

void Row::expect(std::string_view column, std::int32_t written, std::int32_t read) const {
    if (written != read)
        fail(column,
             "written as " + std::to_string(written) + ", read back as " + std::to_string(read));
}

void Row::expect(std::string_view column, std::string_view written, std::string_view read) const {
    const auto bare = [](std::string_view text) {
        return text.substr(0, text.find_last_not_of(' ') + 1); // blank-padded texts are equal
    };
    if (bare(written) != bare(read))
        fail(column, "written as " + in_quotes(written) + ", read back as " + in_quotes(read));
}

} // namespace tarvane::data
