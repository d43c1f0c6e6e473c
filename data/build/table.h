// Tables of data/sources: comma-separated text that a person can read and review.
//
//   # a comment: a line whose first character that is not blank is "#"
//   name,reference,tensile,note          the first other line names the columns
//   SA-516 70,1,70.0,"quoted, with a ""comma"""
//
// A field is between quotation marks when it holds a comma or one of them (then doubled). Blanks
// around a field without quotation marks don't count. Every line has a field for each column.
// Whatever is wrong is reported as "FILE:LINE: column: what and the value".
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvane::data {

// What is wrong with a source, or with what was made from it.
struct DataError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// How well the figures of a row are known, the surest first.
enum class Status { checked, published, approximate };
std::string_view status_word(Status status);

// Optional columns of every table: the sources that confirm a checked row, and the edition of the standard.
inline constexpr std::string_view CHECKS_COLUMN = "checks", EDITION_COLUMN = "edition";

class Table;

// One line of a table. Valid only as long as its table.
class Row {
  public:
    // The field as it is; `text` refuses an empty one.
    const std::string& field(std::string_view column) const;
    const std::string& text(std::string_view column) const;
    // The same, at most `width` characters, all of them printable ASCII.
    const std::string& text(std::string_view column, std::size_t width) const;
    const std::string& field(std::string_view column, std::size_t width) const;
    // Also without the field: an optional column that the table does not have.
    bool blank(std::string_view column) const;

    // A number; the second form takes an empty field as `otherwise`.
    float real(std::string_view column) const;
    float real(std::string_view column, float otherwise) const;
    float positive(std::string_view column) const; // above 0
    std::int32_t whole(std::string_view column) const;
    std::int32_t whole(std::string_view column, std::int32_t otherwise) const;

    // Each row names its `source` and a status; a checked one names what confirms it in `checks`.
    Status status() const;
    bool approximate() const { return status() == Status::approximate; }
    // The word of a status in a column of its own, without `checks`.
    Status status_of(std::string_view column) const;

    // Refuses the row: "FILE:LINE: column: what".
    [[noreturn]] void fail(std::string_view column, const std::string& what) const;
    // Refuses the row for a key that another row has already.
    [[noreturn]] void fail_again(std::string_view column, const Row& other) const;
    // Refuses a number or a text that was not read back as it was written.
    void expect(std::string_view column, float written, float read) const;
    void expect(std::string_view column, std::int32_t written, std::int32_t read) const;
    void expect(std::string_view column, std::string_view written, std::string_view read) const;

    int line() const { return number; }

  private:
    friend class Table;
    const Table* table = nullptr;
    int number = 0;
    std::vector<std::string> fields;
};

class Table {
  public:
    // Reads the file. It must have all of `columns` and may have those of `optional`, `checks` and
    // `edition`, in any order, and no others.
    Table(const std::filesystem::path& path, std::span<const std::string_view> columns,
          std::span<const std::string_view> optional = {});
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    const std::string& file() const { return name; } // without its folder
    const std::vector<Row>& rows() const { return lines; }
    bool has(std::string_view column) const;

  private:
    friend class Row;
    std::size_t place(std::string_view column) const;
    void take_header(const std::vector<std::string>& fields,
                     std::span<const std::string_view> expected,
                     std::span<const std::string_view> optional, int line);

    std::string name;
    std::vector<std::string> columns;
    std::vector<Row> lines;
};

} // namespace tarvane::data
