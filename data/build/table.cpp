#include "table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>

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

} // namespace

// ---- a table ---------------------------------------------------------------------------------------

Table::Table(const std::filesystem::path& path, std::span<const std::string_view> expected,
             std::span<const std::string_view> optional)
    : name(path.filename().string()) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw DataError(name + ": cannot be opened");
    std::string line;
    std::vector<std::string> fields;
    for (int number = 1; std::getline(file, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::string_view content = trimmed(line);
        if (content.empty() || content.front() == '#') continue;
        if (!split(line, fields))
            throw DataError(place_of(name, number) + "quotation marks out of place in " + line);
        if (columns.empty()) {
            take_header(fields, expected, optional, number);
            continue;
        }
        if (fields.size() != columns.size())
            throw DataError(place_of(name, number) + std::to_string(fields.size()) +
                            " fields where the header has " + std::to_string(columns.size()));
        Row& row = lines.emplace_back();
        row.table = this;
        row.number = number;
        row.fields = fields;
    }
    if (file.bad()) throw DataError(name + ": cannot be read");
    if (columns.empty()) throw DataError(name + ": no line with the names of the columns");
    if (lines.empty()) throw DataError(name + ": no rows");
}

void Table::take_header(const std::vector<std::string>& fields,
                        std::span<const std::string_view> expected,
                        std::span<const std::string_view> optional, int line) {
    for (const std::string& column : fields) {
        if (std::count(fields.begin(), fields.end(), column) > 1)
            throw DataError(place_of(name, line) + column + ": the column stands twice");
        if (!holds(expected, column) && !holds(optional, column) && column != CHECKS_COLUMN &&
            column != EDITION_COLUMN)
            throw DataError(place_of(name, line) + column + ": no column of this table");
    }
    for (const std::string_view column : expected)
        if (!holds(fields, column))
            throw DataError(place_of(name, line) + std::string(column) + ": the column is missing");
    columns = fields;
}

std::size_t Table::place(std::string_view column) const {
    const auto found = std::find(columns.begin(), columns.end(), column);
    if (found == columns.end())
        throw std::logic_error(name + " has no column " + std::string(column));
    return static_cast<std::size_t>(found - columns.begin());
}

bool Table::has(std::string_view column) const { return holds(columns, column); }

// ---- a row -----------------------------------------------------------------------------------------

std::string_view status_word(Status status) {
    constexpr std::string_view WORDS[] = {"checked", "published", "approximate"};
    return WORDS[static_cast<std::size_t>(status)];
}

void Row::fail(std::string_view column, const std::string& what) const {
    throw DataError(place_of(table->name, number) + std::string(column) + ": " + what);
}

void Row::fail_again(std::string_view column, const Row& other) const {
    fail(column,
         in_quotes(field(column)) + " stands already in line " + std::to_string(other.number));
}

const std::string& Row::field(std::string_view column) const {
    return fields[table->place(column)];
}

bool Row::blank(std::string_view column) const {
    return !table->has(column) || field(column).empty();
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
